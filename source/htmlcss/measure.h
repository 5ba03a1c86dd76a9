#pragma once

#include "htmlcss/csstoken.h"

namespace ht {

class TBaseElementStyle;
class TCSSTokenSequence;

HT_ENUM(TMeasureFlag, uint8_t, mfNotAuto, mfInherit, mfInitial, mfLeft, mfRight, mfCenter, mfTop, mfBottom,
        mfChanged, mfZero);
using TMeasureFlags = TSet<TMeasureFlag>;

/// A CSS length: a number and a unit, with what is needed to turn it into pixels at the moment of use. A declaration
/// holds a decoded prototype; a getter copies it and fills in Style and Parent. Copied by value; it owns nothing.
struct TMeasure {
  float FValue = 0;
  TMeasureUnit FMUnit = muNone;
  /// Without mfNotAuto the measure is `auto`. mfZero: exactly 0. mfLeft to mfBottom: the keyword that gave a position.
  TMeasureFlags Flags;
  /// For font size, zoom and the element's view; may be null.
  TBaseElementStyle* Style = nullptr;
  /// What a percentage refers to and a bare number multiplies; may be null.
  const float* Parent = nullptr;
  /// The tokens of a `calc()`, evaluated at each use; else null.
  const TCSSTokens* Calc = nullptr;

  void Init(TBaseElementStyle* style);
  /// Copies all but Style.
  void Assign(const TMeasure& other);
  /// Reads the current token of the sequence; the cursor is not moved.
  void Decode(TCSSTokenSequence& sequence);
  /// Reads plain text, as of an attribute. An empty text, and one without a number, changes nothing.
  void Parse(const hstring& text);

  bool GetAuto() const { return !Flags.Contains(mfNotAuto); }
  void SetAuto(bool isAuto);
  /// A value equal to the present one changes nothing at all.
  void SetValue(float value);
  void SetPixels(int32_t value) { SetFPixels(static_cast<float>(value)); }
  void SetFPixels(float value);
  /// Zoomed and rounded to whole pixels.
  int32_t GetPixels() const;
  /// In pixels, without zoom.
  float GetFPixels() const;
  /// The unit is percent, or the measure is `auto` or a `calc()`.
  bool Relative() const { return FMUnit == muPercent || GetAuto() || Calc; }
  hstring AsString() const;
  /// Evaluates the `calc()` into FValue, in pixels.
  void DecodeCalc();
};

struct TMeasure2 {
  TMeasure Value1, Value2;
};

}  // namespace ht
