#include "htmlcss/weightlist.h"

#include <algorithm>
#include <functional>

namespace ht {

namespace {

constexpr size_t kUsualCount = 32;  // enough for most elements

// Whether the value is one of the range, which is laid out in one piece.
bool IsAmong(PCSSValue value, std::span<TCSSValue> values) {
  constexpr std::less<const TCSSValue*> before;
  return !before(value, values.data()) && before(value, values.data() + values.size());
}

}  // namespace

// Finds the place for values of this key and order; false if one of them stands under the key already.
bool TCSSWeightList::FindPlace(uint32_t key, int32_t order, std::span<TCSSValue> values,
                               TItems::iterator& place) {
  place = FItems.end();
  if (FItems.empty() || FItems.back().FID < key) return true;
  auto at = std::lower_bound(FItems.begin(), FItems.end(), key,
                             [](const TCSSWeightItem& item, uint32_t id) { return item.FID < id; });
  // The whole group is looked at: an entry behind the place counts as well as one before it.
  bool passed = false;
  for (; at != FItems.end() && at->FID == key; ++at) {
    if (IsAmong(at->FObject, values)) return false;
    if (!passed && at->FTag > order) {
      place = at;
      passed = true;
    }
  }
  if (!passed) place = at;
  return true;
}

void TCSSWeightList::AddValue(uint32_t key, int32_t order, PCSSValue value) {
  TItems::iterator place;
  if (FindPlace(key, order, {value, 1}, place)) FItems.insert(place, {value, key, order});
}

// Nearly always the values of a rule come as a whole: all of one key, none of them there.
void TCSSWeightList::AddValues(int32_t weight, int32_t order, std::span<TCSSValue> values) {
  if (values.empty()) return;
  if (FItems.capacity() == 0) FItems.reserve(kUsualCount);
  const uint32_t key = KeyOf(weight, values[0]);
  const auto hasKey = [=](const TCSSValue& value) { return KeyOf(weight, value) == key; };
  TItems::iterator place;
  if (std::all_of(values.begin() + 1, values.end(), hasKey) && FindPlace(key, order, values, place)) {
    place = FItems.insert(place, values.size(), {&values[0], key, order});
    for (TCSSValue& value : values) (place++)->FObject = &value;
    return;
  }
  for (TCSSValue& value : values) AddValue(KeyOf(weight, value), order, &value);
}

}  // namespace ht
