#pragma once

#include <vector>

#include "htmlcss/measure.h"
#include "htmlcss/tokensequence.h"

namespace ht {

HT_ENUM(TGradientDirection, uint8_t, gsTop, gsLeft, gsRight, gsBottom, gsTopLeft, gsTopRight, gsBottomLeft,
        gsBottomRight);

/// The angle of a direction in degrees, clockwise from the top.
float GradientAngle(TGradientDirection direction);

/// One colour of a gradient; the position is `auto` until it is placed.
struct TGradientStop {
  TMeasure Position;
  uint32_t Color = 0;
};

/// A colour gradient as CSS tells it. Lengths refer to the box it is drawn in.
struct TGradient {
  bool Radial = false;
  TMeasure CenterX, CenterY;  // of a radial one
  TGradientDirection Direction = gsTop;
  float Angle = 0;  // degrees
  std::vector<TGradientStop> Stops;

  /// Read a function, on whose name the sequence stands, up to its closing parenthesis. False at what is no colour where
  /// one should stand; the stops read so far are kept, and not placed.
  bool DecodeLinear(TCSSTokenSequence& sequence, TBaseElementStyle* style);
  bool DecodeRadial(TCSSTokenSequence& sequence, TBaseElementStyle* style);
  /// Colours, each with or without a position.
  bool DecodeStops(TCSSTokenSequence& sequence, TBaseElementStyle* style);
  /// Has the lengths belong to another style.
  void SetStyle(TBaseElementStyle* style);

 private:
  void DecodeDirection(TCSSTokenSequence& sequence);
  void DecodeCenter(TCSSTokenSequence& sequence);
  void PlaceStops(size_t divisor);
};

}  // namespace ht
