#pragma once

#include <bit>
#include <cstdint>

namespace ht {

// Colours are 0xAARRGGBB. Results are held within 0 to 255 a channel.

/// A pixel in memory, which on a little-endian machine is a colour.
struct TRGBA {
  uint8_t b = 0, g = 0, r = 0, a = 0;

  friend constexpr bool operator==(const TRGBA&, const TRGBA&) = default;
};
using TRGBTriple = TRGBA;
static_assert(sizeof(TRGBA) == 4);

struct THSBColor {
  double Hue = 0;         // 0 to 360
  double Saturation = 0;  // 0 to 100
  double Brightness = 0;  // 0 to 100
};

/// Moves red, green and blue towards white, or black, by a percentage of the way. Alpha stays.
uint32_t Lighter(uint32_t color, float percent);
uint32_t Darker(uint32_t color, float percent);
/// Multiplies alpha. An opacity that is the same as 1 leaves the colour as it is.
uint32_t AddOpacity(uint32_t color, float opacity);

/// A grey has hue 300. Alpha does not count.
THSBColor RGBToHSB(TRGBA rgba);
/// The colour with alpha 0. Hue is taken in sixths of a degree.
uint32_t HSVToRGB(const THSBColor& hsb);
uint32_t HSBtoRGBColor(double hue, double saturation, double brightness);

/// 0x00BBGGRR.
constexpr uint32_t Color2Win(uint32_t color) {
  return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}
/// The opaque colour of 0x00BBGGRR; of a negative value, the platform's system colour of the index in its low byte.
uint32_t Win2Color(int32_t value);

/// One of `count` words differs from the value. False for a null pointer and for no words.
bool OneColor(const uint32_t* words, uint32_t value, int32_t count);

}  // namespace ht
