#pragma once

#include "htruntime/hstring.h"

namespace ht {

constexpr bool HtIsAsciiUpper(char16_t c) { return c >= u'A' && c <= u'Z'; }
constexpr bool HtIsAsciiLetter(char16_t c) { return (c >= u'a' && c <= u'z') || HtIsAsciiUpper(c); }
constexpr bool HtIsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
constexpr char16_t HtAsciiLower(char16_t c) { return HtIsAsciiUpper(c) ? static_cast<char16_t>(c + 32) : c; }

/// Equal but for the case of ASCII letters.
bool HtSameAscii(std::u16string_view a, std::u16string_view b) noexcept;

/// Lower-cases the ASCII letters of a text and touches nothing else. A text that is shared is copied only at
/// the first letter that changes.
void hLower(hstring& text);
/// As hLower, but the text is made unique first, in any case.
void vLower(hstring& text);

}  // namespace ht
