#pragma once

#include <algorithm>
#include <array>

#include "htmlpars/lower.h"

namespace ht {

/// A short name with its ASCII letters in lower case, for a look-up without allocation. A name that is longer
/// than any of the tables' becomes empty, which no table holds.
class THtLowerName {
 public:
  explicit THtLowerName(std::u16string_view name) : FLength(name.size() <= FUnits.size() ? name.size() : 0) {
    std::transform(name.begin(), name.begin() + FLength, FUnits.begin(), HtAsciiLower);
  }

  std::u16string_view View() const { return {FUnits.data(), FLength}; }
  operator std::u16string_view() const { return View(); }

 private:
  std::array<char16_t, 32> FUnits;
  size_t FLength;
};

}  // namespace ht
