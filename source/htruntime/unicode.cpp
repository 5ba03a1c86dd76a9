#include "htruntime/unicode.h"

#include <algorithm>

namespace ht {

namespace {

#include "htruntime/unicode_tables.inc"

}  // namespace

bool HtIsLetter(char16_t c) noexcept { return kLetterBlocks[kLetterIndex[c >> 6]] >> (c & 63) & 1; }
bool HtIsNumber(char16_t c) noexcept { return kNumberBlocks[kNumberIndex[c >> 6]] >> (c & 63) & 1; }

char16_t detail::LowerOf(char16_t c) noexcept {
  return static_cast<char16_t>(c + kLowerBlocks[kLowerIndex[c >> 6] * 64 + (c & 63)]);
}

char16_t detail::UpperOf(char16_t c) noexcept {
  return static_cast<char16_t>(c + kUpperBlocks[kUpperIndex[c >> 6] * 64 + (c & 63)]);
}

hstring HtUpperCase(hstring text) {
  if (std::all_of(text.begin(), text.end(), [](char16_t c) { return HtToUpper(c) == c; })) return text;
  char16_t* units = text.Unique();
  std::transform(units, units + text.Size(), units, HtToUpper);
  return text;
}

int HtCompareText(std::u16string_view a, std::u16string_view b) noexcept {
  const size_t shorter = std::min(a.size(), b.size());
  for (size_t i = 0; i < shorter; ++i) {
    if (a[i] == b[i]) continue;
    const int difference = HtToLower(a[i]) - HtToLower(b[i]);
    if (difference != 0) return difference;
  }
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

}  // namespace ht
