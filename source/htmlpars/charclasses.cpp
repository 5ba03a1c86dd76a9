#include "htmlpars/charclasses.h"

namespace ht {

bool HasChinese(std::u16string_view text) noexcept {
  return std::any_of(text.begin(), text.end(), [](char16_t c) { return (c >> 8) != 0x30 && IsChinese(c); });
}

}  // namespace ht
