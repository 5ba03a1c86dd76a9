#pragma once

#include "htruntime/hstring.h"

namespace ht {

// Properties of single UTF-16 units by the Unicode Character Database. A half of a surrogate pair has none.

/// A letter of any script: the categories Lu, Ll, Lt, Lm and Lo.
bool HtIsLetter(char16_t c) noexcept;
/// A number of any script: the categories Nd, Nl and No.
bool HtIsNumber(char16_t c) noexcept;

namespace detail {
char16_t LowerOf(char16_t c) noexcept;
char16_t UpperOf(char16_t c) noexcept;
}  // namespace detail

/// The lower-case form by the simple mapping: one unit for one unit, the same in every language.
inline char16_t HtToLower(char16_t c) noexcept {
  if (c < 128) return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
  return detail::LowerOf(c);
}
/// The upper-case form in the same way. A letter whose only upper-case form is longer, as that of U+00DF, stays.
inline char16_t HtToUpper(char16_t c) noexcept {
  if (c < 128) return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c;
  return detail::UpperOf(c);
}
hstring HtUpperCase(hstring text);

}  // namespace ht
