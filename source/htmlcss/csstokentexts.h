#pragma once

#include <array>
#include <cstring>
#include <memory>

#include "htmlpars/namecache.h"
#include "htruntime/arena.h"

namespace ht {

/// A hash for tables of CSS words, cheap at any length: the length and the four units at either end tell nearly all
/// words of a sheet apart. A THtStringHashFunc.
inline uint32_t HtWordHash(const char16_t* chars, int32_t length) noexcept {
  const auto fourUnits = [](const char16_t* p) {
    uint64_t units;
    std::memcpy(&units, p, sizeof units);
    return units;
  };
  if (length < 1) return 0;
  const uint64_t head = length >= 4 ? fourUnits(chars) : chars[0] | uint64_t{chars[length / 2]} << 16;
  const uint64_t tail = length >= 4 ? fourUnits(chars + length - 4) : chars[length - 1];
  const uint64_t mixed =
      (head * 0x9E3779B97F4A7C15 ^ (tail + static_cast<uint64_t>(length))) * 0xD6E8FEB86659FD93;
  return static_cast<uint32_t>(mixed >> 32);
}

namespace detail {
/// The texts of the characters below 256.
extern const std::array<THtStringLiteral<2>, 256> kCharTexts;
}  // namespace detail

/// The texts of the tokens of one sheet. A sheet says the same few hundred words over and over: one said lately is
/// found again, so that most tokens cost no allocation. A new text comes from the arena in force.
class TCSSTokenTexts {
 public:
  /// A short sheet does without the memory of words.
  explicit TCSSTokenTexts(size_t sheetLength);

  hstring Of(std::u16string_view text) {
    if (text.size() == 1 && text[0] < 256) return hstring::OfLiteral(detail::kCharTexts[text[0]].Header);
    if (text.empty() || text.size() > kLongestWord || !FWords) return HtPoolText(text);
    hstring& word = FWords[HtWordHash(text.data(), static_cast<int32_t>(text.size())) >> (32 - kPlaceBits)];
    const bool isSame = word.Size() == text.size() && HtSameShortText(word.Data(), text.data(), text.size());
    return isSame ? word : Learn(word, text);
  }

 private:
  static constexpr size_t kShortSheet = 128;
  static constexpr size_t kLongestWord = 32;  // longer texts are hardly ever said twice
  static constexpr int kPlaceBits = 9;

  static hstring Learn(hstring& word, std::u16string_view text);

  std::unique_ptr<hstring[]> FWords;  // by the upper bits of HtWordHash
};

}  // namespace ht
