#pragma once

#include <memory>

#include "htruntime/hstring.h"

namespace ht {

/// A hash for tables of CSS words, cheap at any length: the length and the four units at either end tell nearly all
/// words of a sheet apart. A THtStringHashFunc.
uint32_t HtWordHash(const char16_t* chars, int32_t length) noexcept;

/// The texts of the tokens of one sheet. A sheet says the same few hundred words over and over: one said lately is
/// found again, so that most tokens cost no allocation. A new text comes from the arena in force.
class TCSSTokenTexts {
 public:
  /// A short sheet does without the memory of words.
  explicit TCSSTokenTexts(size_t sheetLength);

  hstring Of(const char16_t* chars, size_t length);
  /// The text of a character below 256; it is not counted.
  static hstring OfChar(char16_t c);

 private:
  static constexpr size_t kShortSheet = 128;
  static constexpr size_t kLongestWord = 32;  // longer texts are hardly ever said twice
  static constexpr int kPlaceBits = 9;

  std::unique_ptr<hstring[]> FWords;  // by the upper bits of HtWordHash
};

}  // namespace ht
