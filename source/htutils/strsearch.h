#pragma once

#include "htruntime/hstring.h"

namespace ht {

// Searching and testing short texts. All of it is case-sensitive and compares UTF-16 units or bytes.

namespace detail {

/// The first `size` bytes agree; `size` is above 0. Quicker than memcmp for short stretches.
bool SameBytes(const void* a, const void* b, size_t size) noexcept;

/// The index of the first `c` in `count` units, or `count`.
size_t FindUnit(const char16_t* units, size_t count, char16_t c) noexcept;

}  // namespace detail

/// False for an empty prefix.
inline bool AnsiStartsWith(std::u16string_view text, std::u16string_view prefix) noexcept {
  return !prefix.empty() && text.size() >= prefix.size() && text[0] == prefix[0] &&
         detail::SameBytes(text.data(), prefix.data(), prefix.size() * sizeof(char16_t));
}
inline bool AnsiStartsWith(std::string_view text, std::string_view prefix) noexcept {
  return !prefix.empty() && text.size() >= prefix.size() && text[0] == prefix[0] &&
         detail::SameBytes(text.data(), prefix.data(), prefix.size());
}

/// True for an empty suffix.
inline bool AnsiEndsWith(std::u16string_view text, std::u16string_view suffix) noexcept {
  return text.ends_with(suffix);
}

/// The position of `c` at or behind `start`, or 0. Positions count from 1; a start below 1 is 1.
int32_t FindChar(char16_t c, std::u16string_view text, int32_t start = 1) noexcept;
int32_t FindChar(char c, std::string_view text, int32_t start = 1) noexcept;

/// The text equals one of the entries at indexes 0 to `high`. False for a `high` below 0.
bool StrIn(std::u16string_view text, const hstring* array, int32_t high) noexcept;
bool StrIn(std::u16string_view text, const std::u16string_view* array, int32_t high) noexcept;

/// 0, 1 or -1.
constexpr int32_t CompCardinal(uint32_t a, uint32_t b) noexcept { return a == b ? 0 : a > b ? 1 : -1; }

/// low <= value <= high.
constexpr bool Between(int32_t value, int32_t low, int32_t high) noexcept {
  return low <= value && value <= high;
}
constexpr bool Between(float value, float low, float high) noexcept { return low <= value && value <= high; }

/// The first of the two that is not empty.
inline const hstring& Coalesce(const hstring& a, const hstring& b) noexcept { return a.Empty() ? b : a; }

/// Appends separator and item; an empty text just becomes the item.
void AddStr(hstring& text, const hstring& item, std::u16string_view separator);

/// A to Z lower-cased, all else as it is.
constexpr char16_t CharLower(char16_t c) noexcept {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}
constexpr char AnsiCharLower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

/// Empty, or nothing but characters of 32 and below.
bool BlankString(std::u16string_view text) noexcept;
bool BlankString(std::string_view text) noexcept;
/// Empty, or nothing but the characters 9, 10, 13, 32 and 160.
bool BlankOrNBSP(std::u16string_view text) noexcept;

/// Takes the first token from a text, where `delimiters` is a set of characters.
///
///   hstring list = u",a,b"_hs;
///   Q_StrTok(list, u",", true);    // "a", and the list is "b"
///
/// With `removeDelimiters` the token is the first stretch without delimiters, and the text loses it, what stands in front
/// and the one delimiter behind it. Without, the token has its leading delimiters, and the text goes on with the
/// delimiter behind it. Of a text of delimiters alone nothing is left; they are the token unless they are removed.
/// An empty set gives an empty token and leaves the text.
hstring Q_StrTok(hstring& text, std::u16string_view delimiters, bool removeDelimiters);
/// The same without a copy: token and text are parts of the same storage.
std::u16string_view Q_StrTok(std::u16string_view& text, std::u16string_view delimiters,
                             bool removeDelimiters);

}  // namespace ht
