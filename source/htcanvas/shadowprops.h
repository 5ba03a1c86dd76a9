#pragma once

#include "htutils/geometry.h"

namespace ht {

/// The shadow of a box. Lengths are pixels, colours 0xAARRGGBB.
struct THtShadowProps {
  TRectF R;  // the box
  float MaxBorderRadius = 0;
  bool OneBorderRadius = false;  // all corners have the same
  float HOffset = 0, VOffset = 0;
  float Blur = 0;
  uint32_t Color = 0;
  uint32_t BackgroundColor = 0;  // of the box, if HasBackground
  uint8_t Opacity = 0;           // 255 is opaque
  bool Inset = false;
  bool HasBackground = false;

  /// All but the background.
  static THtShadowProps CreateShadowProps(const TRectF& rect, float maxBorderRadius, bool oneBorderRadius,
                                          float hOffset, float vOffset, float blur, uint32_t color,
                                          uint8_t opacity, bool inset) {
    return {rect, maxBorderRadius, oneBorderRadius, hOffset, vOffset, blur, color, 0, opacity, inset, false};
  }
};

}  // namespace ht
