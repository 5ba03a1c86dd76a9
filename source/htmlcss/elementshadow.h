#pragma once

#include "htmlcss/measure.h"
#include "htmlcss/tokensequence.h"

namespace ht {

/// One shadow of a box or of a text.
struct TElementShadow {
  TMeasure X, Y, Blur;
  uint32_t Color = 0;
  float Opacity = 0;
  bool Inset = false;

  /// Reads the first shadow of a `box-shadow`: the spread is passed over. What ends early has the opacity 0.
  void Parse(TCSSTokenSequence& sequence);
  /// Of a `text-shadow`: the color in front or behind.
  void ParseTextShadow(TCSSTokenSequence& sequence);
  /// There is nothing to draw.
  bool NoShadow() const { return X.GetAuto() || Y.GetAuto() || Blur.GetAuto() || Opacity == 0; }
  /// An empty shadow of the same style.
  void Reset();

 private:
  bool ParseLengths(TCSSTokenSequence& sequence);
};

}  // namespace ht
