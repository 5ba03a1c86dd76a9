#pragma once

#include <cstdint>

#include "htutils/geometry.h"

namespace ht {

/// Blurs a rectangle of four-byte pixels in place: two rounds of a box filter of 2 * radius + 1 pixels over the rows and over
/// the columns, which come near a Gaussian bell. The time does not depend on the radius.
///
/// `data` is the first row, `stride` the signed distance of rows in bytes. The rectangle is clipped to the bitmap, and
/// the pixels at its edges stand for what lies beyond. The radius is limited to half of the rectangle's smaller side, less one;
/// below 1 nothing happens. Takes scratch memory for the rectangle.
void FastBlur(uint8_t* data, int32_t width, int32_t height, int32_t stride, const TRect& rect,
              int32_t radius);

}  // namespace ht
