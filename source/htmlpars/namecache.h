#pragma once

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace ht {

/// Whether two short texts of `count` units are equal: four units a step.
inline bool HtSameShortText(const char16_t* a, const char16_t* b, size_t count) {
  const auto four = [](const char16_t* p) {
    uint64_t units;
    std::memcpy(&units, p, sizeof units);
    return units;
  };
  if (count < 4) return std::equal(a, a + count, b);
  for (size_t i = 0; i + 4 < count; i += 4)
    if (four(a + i) != four(b + i)) return false;
  return four(a + count - 4) == four(b + count - 4);
}

/// The names met last, in front of a dictionary: a document says the same few dozen names over and over. TRec has the
/// name as `Value`; an entry is found by its exact spelling.
template <class TRec>
class THtNameCache {
 public:
  const TRec* Find(std::u16string_view name) const {
    const TRec* rec = FRecs[Place(name)];
    if (!rec || rec->Value.Size() != name.size()) return nullptr;
    return HtSameShortText(rec->Value.Data(), name.data(), name.size()) ? rec : nullptr;
  }
  void Store(const TRec* rec) { FRecs[Place(rec->Value)] = rec; }

 private:
  static constexpr size_t kPlaces = 64;

  static size_t Place(std::u16string_view name) {
    return name.empty() ? 0 : (name.front() * 5u + name.back() * 3u + name.size()) % kPlaces;
  }

  std::array<const TRec*, kPlaces> FRecs{};
};

}  // namespace ht
