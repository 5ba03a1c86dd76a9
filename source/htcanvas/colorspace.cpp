#include "htcanvas/colorspace.h"

namespace ht {

namespace {

// A component beyond its range takes the end of the range; what is no number is 0.
uint32_t ByteOf(float component) {
  const float value = component * 255 + 0.5f;
  return value >= 255 ? 255 : value > 0 ? static_cast<uint32_t>(value) : 0;
}

}  // namespace

uint32_t THtColorSpace::ConvertFloat(float a, float b, float c, float) const {
  return ByteOf(a) | ByteOf(b) << 8 | ByteOf(c) << 16;
}

bool THtColorSpace::Convert8to32(const uint8_t*, uint32_t*, int32_t, int32_t, int32_t) const { return false; }

}  // namespace ht
