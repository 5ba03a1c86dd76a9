// The colours of four inks.

#include <array>
#include <cstring>

#include "htcanvas/bitmapdata.h"

namespace ht {

namespace {

// In ten-thousandths; the index of a corner has the bits of cyan, magenta, yellow and black from the highest on.
constexpr uint32_t kUnit = 10000;
using TCorners = std::array<uint16_t, 16>;
constexpr std::array<TCorners, 3> kCorners{{
    {10000, 1373, 10000, 1098, 9255, 1412, 9294, 1333, 0, 0, 0, 0, 1804, 0, 2118, 0},
    {10000, 1216, 9490, 1020, 0, 0, 1098, 0, 6784, 588, 6510, 745, 1922, 0, 2119, 0},
    {10000, 1255, 0, 0, 5490, 0, 1412, 0, 9373, 1412, 3137, 0, 5725, 78, 2235, 0},
}};

// How much each mixture of two inks takes part, in parts of 255 x 255: neither, the second, the first, both.
using TShares = std::array<uint32_t, 4>;

TShares SharesOf(uint32_t first, uint32_t second) {
  return {(255 - first) * (255 - second), (255 - first) * second, first * (255 - second), first * second};
}

// In whole numbers, so that truncating never falls to the last bit of a float. The sum over yellow and black fits in 32
// bits. One function a channel: corners that are known leave half of the products out.
template <size_t kChannel>
uint32_t Channel(const TShares& cyanMagenta, const TShares& yellowBlack) {
  constexpr const TCorners& corners = kCorners[kChannel];
  uint64_t sum = 0;
  for (size_t i = 0; i < 4; ++i) {
    uint32_t part = 0;
    for (size_t j = 0; j < 4; ++j) part += corners[4 * i + j] * yellowBlack[j];
    sum += uint64_t{part} * cyanMagenta[i];
  }
  return static_cast<uint32_t>(sum / (uint64_t{kUnit} * 255 * 255 * 255));
}

}  // namespace

uint32_t CMYKtoARGB(uint32_t value) {
  const TShares cm = SharesOf(value & 255, value >> 8 & 255), yk = SharesOf(value >> 16 & 255, value >> 24);
  return 0xFF000000 | Channel<0>(cm, yk) << 16 | Channel<1>(cm, yk) << 8 | Channel<2>(cm, yk);
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
