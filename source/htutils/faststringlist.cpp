#include "htutils/faststringlist.h"

#include <algorithm>
#include <utility>

namespace ht {

TFastStringList::~TFastStringList() { TFastStringList::Clear(); }

bool TFastStringList::FindPChar(const char16_t* chars, int32_t length, int32_t& index) const {
  const std::u16string_view key(chars, length > 0 ? static_cast<size_t>(length) : 0);
  const TStringItem* const begin = FList.get();
  const TStringItem* const end = begin + FCount;
  // The first unit decides most steps without a call.
  const auto before = [](const TStringItem& item, std::u16string_view text) {
    const char16_t a = item.Text[0], b = text.empty() ? u'\0' : text[0];
    return a != b ? a < b : HtCompareStr(item.Text, text) < 0;
  };
  const TStringItem* place = std::lower_bound(begin, end, key, before);
  index = static_cast<int32_t>(place - begin);
  return place != end && place->Text == key;
}

void TFastStringList::FreeListObjects() {
  for (int32_t i = 0; i < FCount; ++i) delete std::exchange(FList[i].Object, nullptr);
}

void TFastStringList::Delete(int32_t index) {
  TObject* object = OwnsObjects ? GetObject(index) : nullptr;
  TStringList::Delete(index);
  delete object;
}

void TFastStringList::Clear() {
  if (OwnsObjects) FreeListObjects();
  TStringList::Clear();
}

}  // namespace ht
