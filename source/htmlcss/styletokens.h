#pragma once

#include "htmlcss/csstoken.h"
#include "htruntime/rounding.h"
#include "htutils/enumlookup.h"

namespace ht {

// What the getters of a style ask of single tokens.

inline bool IsVariable(const TCSSToken& token) { return token.CType == ctFunction && token.Name == u"var"; }

inline bool IsLengthToken(const TCSSToken& token) {
  return token.CType == ctNumber || token.CType == ctPercentage || token.CType == ctDimension;
}

/// To the nearest whole number, of two the even one, within the range of the type.
inline int32_t RoundToInt(double value) {
  constexpr double kLowest = INT32_MIN, kHighest = INT32_MAX;
  return static_cast<int32_t>(HtRoundEven(value < kLowest ? kLowest : value > kHighest ? kHighest : value));
}

/// The milliseconds of a time.
inline int32_t Milliseconds(const TCSSToken& token) {
  return RoundToInt(static_cast<double>(token.AsFloat()) * (token.MUnit == muS ? 1000 : 1));
}

}  // namespace ht
