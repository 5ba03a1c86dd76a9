#pragma once

#include "htmlcss/cssenums.h"
#include "htmlcss/csstoken.h"
#include "htmlcss/measure.h"
#include "htruntime/rounding.h"
#include "htutils/enumlookup.h"

namespace ht {

// What the getters of a style ask of single tokens.

inline bool IsVariable(const TCSSToken& token) { return token.CType == ctFunction && token.Name == u"var"; }

inline bool IsLengthToken(const TCSSToken& token) {
  return token.CType == ctNumber || token.CType == ctPercentage || token.CType == ctDimension;
}

/// What a border, a rule or an outline is as wide as by a word, in pixels.
struct TLineWidthWord {
  std::u16string_view Word;
  float Pixels;
};
constexpr float kMediumLine = 3;
constexpr TLineWidthWord kLineWidths[] = {{u"thin", 1}, {u"medium", kMediumLine}, {u"thick", 5}};

/// Null where the token is none of the words.
inline const TLineWidthWord* FindLineWidth(const TCSSToken& token) {
  for (const TLineWidthWord& row : kLineWidths)
    if (token.CType == ctIdent && row.Word == token.Name) return &row;
  return nullptr;
}

inline bool FindLineStyle(const TCSSToken& token, TLineStyle& style) {
  return token.CType == ctIdent && IsEnum2(u"ls", token.Name, style);
}

/// Makes a measure what it comes to now, free of what it refers to.
inline void ToPixels(TMeasure& m) {
  const float pixels = m.GetFPixels();
  m.Calc = nullptr;
  m.SetFPixels(pixels);
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
