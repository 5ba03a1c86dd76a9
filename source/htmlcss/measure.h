#pragma once

#include "htmlcss/csstoken.h"

namespace ht {

class TBaseElementStyle;
class TCSSTokenSequence;

HT_ENUM(TMeasureFlag, uint8_t, mfNotAuto, mfInherit, mfInitial, mfLeft, mfRight, mfCenter, mfTop, mfBottom,
        mfChanged, mfZero);
using TMeasureFlags = TSet<TMeasureFlag>;

/// A CSS length as it is written: a number and a unit, a keyword, or a `calc()`. This is what a declaration holds;
/// TMeasure adds what is needed to turn it into pixels. Copied by value; it owns nothing.
struct TMeasureValue {
  float FValue = 0;
  TMeasureUnit FMUnit = muNone;
  /// Without mfNotAuto the measure is `auto`. mfZero: exactly 0. mfLeft to mfBottom: the keyword that gave a position.
  TMeasureFlags Flags;
  /// The tokens of a `calc()`, evaluated at each use; else null.
  const TCSSTokens* Calc = nullptr;

  /// Reads the current token of the sequence; the cursor is not moved.
  void Decode(const TCSSTokenSequence& sequence);
  /// Reads plain text, as of an attribute. An empty text, and one without a number, changes nothing.
  void Parse(std::u16string_view text);

  bool GetAuto() const { return !Flags.Contains(mfNotAuto); }
  void SetAuto(bool isAuto);
  /// A value equal to the present one changes nothing at all.
  void SetValue(float value);
  void SetPixels(int32_t value) { SetFPixels(static_cast<float>(value)); }
  void SetFPixels(float value);
  /// The unit is percent, or the measure is `auto` or a `calc()`.
  bool Relative() const { return FMUnit == muPercent || GetAuto() || Calc; }
  hstring AsString() const;

 private:
  void DecodeWord(std::u16string_view word);
};

/// The two lengths of a declaration, as of `10px / 5px`.
struct TMeasure2 {
  TMeasureValue Value1, Value2;
};

/// A length with the two references that make it resolvable. A getter of the element style takes the value out of a
/// declaration and fills them in:
///
///   TMeasure width;
///   width.Init(&style);
///   width.SetDecoded(value.Value1);
///   width.Parent = &containerWidth;
///   width.GetPixels();
///
/// The references are borrowed, as Calc is. No operation raises; what cannot be resolved is 0.
struct TMeasure : TMeasureValue {
  /// For font size, zoom and the element's view; may be null.
  TBaseElementStyle* Style = nullptr;
  /// What a percentage refers to and a bare number multiplies; may be null.
  const float* Parent = nullptr;

  /// An empty measure of the style.
  void Init(TBaseElementStyle* style);
  /// Copies all but Style.
  void Assign(const TMeasure& other);
  /// Takes what a declaration holds; Style and Parent stay.
  void SetDecoded(const TMeasureValue& value) { static_cast<TMeasureValue&>(*this) = value; }

  /// Zoomed and rounded to whole pixels. A bare number is rounded only.
  int32_t GetPixels();
  /// In pixels, without zoom.
  float GetFPixels();
  /// Evaluates the `calc()` into FValue, in pixels. Calc stays, so that the next use evaluates it anew.
  void DecodeCalc();

 private:
  double Pixels(bool wholePixels) const;
};

}  // namespace ht
