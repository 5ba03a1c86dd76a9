// The colours of four inks.

#include <algorithm>
#include <array>
#include <cstring>

#include "htcanvas/bitmapdata.h"

namespace ht {

namespace {

// In ten-thousandths; the index of a corner has the bits of cyan, magenta, yellow and black from the highest on.
constexpr int kUnit = 10000;
using TCorners = std::array<int16_t, 16>;
constexpr std::array<TCorners, 3> kCorners{{
    {10000, 1373, 10000, 1098, 9255, 1412, 9294, 1333, 0, 0, 0, 0, 1804, 0, 2118, 0},
    {10000, 1216, 9490, 1020, 0, 0, 1098, 0, 6784, 588, 6510, 745, 1922, 0, 2119, 0},
    {10000, 1255, 0, 0, 5490, 1412, 1412, 0, 9373, 1412, 3137, 0, 5725, 78, 2235, 0},
}};

// In whole numbers, so that truncating never falls to the last bit of a float. Each step takes one ink away: half as
// many corners are left, 255 times as large.
uint32_t Channel(const TCorners& corners, const std::array<int64_t, 4>& inks) {
  std::array<int64_t, 16> values;
  std::ranges::copy(corners, values.begin());
  size_t left = values.size();
  for (const int64_t ink : inks) {
    left /= 2;
    for (size_t i = 0; i < left; ++i) values[i] = values[i] * (255 - ink) + values[i + left] * ink;
  }
  return static_cast<uint32_t>(values[0] / (int64_t{kUnit} * 255 * 255 * 255));
}

}  // namespace

uint32_t CMYKtoARGB(uint32_t value) {
  const std::array<int64_t, 4> inks{value & 255, value >> 8 & 255, value >> 16 & 255, value >> 24};
  return 0xFF000000 | Channel(kCorners[0], inks) << 16 | Channel(kCorners[1], inks) << 8 |
         Channel(kCorners[2], inks);
}

void THtBitmapData::CMYKtoRGBA() {
  if (FBits != 32) return;
  uint32_t last = 0, color = CMYKtoARGB(last);
  for (int32_t y = 0; y < FHeight; ++y) {
    uint8_t* pixel = GetScanLine(y);
    for (int32_t x = 0; x < FWidth; ++x, pixel += 4) {
      uint32_t value;
      std::memcpy(&value, pixel, 4);
      if (value != last) color = CMYKtoARGB(last = value);
      std::memcpy(pixel, &color, 4);
    }
  }
}

}  // namespace ht
