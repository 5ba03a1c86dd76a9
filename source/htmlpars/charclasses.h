#pragma once

#include <algorithm>
#include <array>

#include "htruntime/enums.h"
#include "htruntime/hstring.h"
#include "htruntime/unicode.h"

namespace ht {

/// A character of a CJK script: 0x4E00 to 0x9FFF, 0xF900 to 0xFA00, or a high byte of 0x30.
constexpr bool IsCJK(char16_t c) {
  return (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0xF900 && c <= 0xFA00) || (c >> 8) == 0x30;
}

/// A high byte in 0x4E to 0x9F, 0xF9 to 0xFA, or 0x30. Lines may break before and behind such a character.
constexpr bool IsChinese(char16_t c) {
  const int high = c >> 8;
  return (high >= 0x4E && high <= 0x9F) || (high >= 0xF9 && high <= 0xFA) || high == 0x30;
}

/// The text holds a character that IsChinese, other than the symbols and kana with a high byte of 0x30.
bool HasChinese(std::u16string_view text) noexcept;

/// The Unicode categories L* and N* of one UTF-16 unit. A surrogate is neither.
inline bool IsLetter(char16_t c) { return HtIsLetter(c); }
inline bool IsNumber(char16_t c) { return HtIsNumber(c); }

constexpr bool IsHighSurrogate(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }

/// How a character takes part in the direction of a text run.
HT_ENUM(THtTextRunBidi, uint8_t, bdLTR, bdNeutral, bdWeakLRT, bdRTL);

/// Code points from First to Last, both included.
struct THtCodeRange {
  char32_t First, Last;
};

/// The blocks of the Arabic script.
inline constexpr std::array<THtCodeRange, 6> ArabicSymbols{{
    {0x600, 0x6FF},
    {0x750, 0x77F},
    {0x8A0, 0x8FF},
    {0xFB50, 0xFDFF},
    {0xFE70, 0xFEFF},
    {0x10E60, 0x10E7F},
}};

/// The vowel signs that join the Arabic letter before them.
inline constexpr std::array<char16_t, 9> ArabicModifiers{0x64B, 0x64C, 0x64D, 0x64E, 0x64F,
                                                         0x650, 0x651, 0x652, 0x653};

namespace detail {

constexpr std::array<THtTextRunBidi, 128> MakeAsciiBidi() {
  std::array<THtTextRunBidi, 128> classes{};
  for (size_t c = 0; c < 127; ++c) {
    const size_t letter = c | 32;
    classes[c] = letter >= 'a' && letter <= 'z' ? bdLTR : c >= '0' && c <= '9' ? bdWeakLRT : bdNeutral;
  }
  return classes;
}

inline constexpr std::array<THtTextRunBidi, 128> kAsciiBidi = MakeAsciiBidi();

}  // namespace detail

/// The direction class of one UTF-16 unit: ASCII letters bdLTR, digits bdWeakLRT, other ASCII below 127
/// bdNeutral; Hebrew and Arabic bdRTL; everything else up to 8192 bdLTR, above it bdNeutral.
constexpr THtTextRunBidi CharBidi(char16_t c) {
  // Splitting a text asks this for every unit: one look or a few comparisons decide nearly all.
  if (c < 128) return detail::kAsciiBidi[c];
  if (c < 1424) return bdLTR;
  if (c > 0x8FF && c < 64285) return c > 8192 ? bdNeutral : bdLTR;
  if (c <= 1535 || (c >= 64285 && c <= 64335)) return bdRTL;
  for (const THtCodeRange& range : ArabicSymbols)
    if (c >= range.First && c <= range.Last) return bdRTL;
  return c > 8192 ? bdNeutral : bdLTR;
}

constexpr bool IsCharModifier(char16_t c) {
  return c >= ArabicModifiers.front() && c <= ArabicModifiers.back();
}

}  // namespace ht
