#include "htmlpars/lower.h"

#include <algorithm>

namespace ht {

bool HtSameAscii(std::u16string_view a, std::u16string_view b) noexcept {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return HtAsciiLower(x) == HtAsciiLower(y); });
}

void hLower(hstring& text) {
  if (std::any_of(text.begin(), text.end(), HtIsAsciiUpper)) vLower(text);
}

void vLower(hstring& text) {
  char16_t* units = text.Unique();
  std::transform(units, units + text.Length(), units, HtAsciiLower);
}

}  // namespace ht
