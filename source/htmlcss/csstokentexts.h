#pragma once

#include <cstring>
#include <memory>

#include "htruntime/hstring.h"

namespace ht {

/// The texts of the tokens of one sheet. A sheet says the same few hundred words over and over: one said lately is
/// found again, so that most tokens cost no allocation. A new text comes from the arena in force.
class TCSSTokenTexts {
 public:
  /// A short sheet does without the memory of words.
  explicit TCSSTokenTexts(size_t sheetLength);

  hstring Of(std::u16string_view text);

 private:
  static constexpr size_t kShortSheet = 128;
  static constexpr size_t kLongestWord = 32;  // longer texts are hardly ever said twice
  static constexpr size_t kPlaceBits = 9;

  static size_t PlaceOf(std::u16string_view text);

  std::unique_ptr<hstring[]> FWords;  // by PlaceOf
};

}  // namespace ht
