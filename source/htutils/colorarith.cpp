#include "htutils/colorarith.h"

#include <algorithm>
#include <cmath>

#include "htruntime/rounding.h"
#include "htutils/platformcolors.h"
#include "htutils/samevalue.h"

namespace ht {

namespace {

// To the nearest, ties to even; what is no number is 0.
uint32_t ToChannel(double value) {
  return value > 0 ? static_cast<uint32_t>(HtRoundEven(std::min(value, 255.0))) : 0;
}

uint32_t Channel(uint32_t color, int shift) { return color >> shift & 0xFF; }

uint32_t ToColor(uint32_t r, uint32_t g, uint32_t b) { return r << 16 | g << 8 | b; }

template <class TChange>
uint32_t ChangeChannels(uint32_t color, TChange change) {
  const auto changed = [&](int shift) {
    return ToChannel(change(static_cast<double>(Channel(color, shift))));
  };
  return (color & 0xFF000000) | ToColor(changed(16), changed(8), changed(0));
}

}  // namespace

uint32_t Lighter(uint32_t color, float percent) {
  return ChangeChannels(color, [percent](double c) { return c + (255 - c) * percent / 100; });
}

uint32_t Darker(uint32_t color, float percent) {
  return ChangeChannels(color, [percent](double c) { return c - c * percent / 100; });
}

uint32_t AddOpacity(uint32_t color, float opacity) {
  if (SameValue(opacity, 1)) return color;
  const uint32_t alpha = ToChannel(Channel(color, 24) * static_cast<double>(opacity));
  return (color & 0x00FFFFFF) | alpha << 24;
}

THSBColor RGBToHSB(TRGBA rgba) {
  const double r = rgba.r, g = rgba.g, b = rgba.b;
  const double max = std::max({r, g, b});
  const double delta = max - std::min({r, g, b});
  double hue = -1;
  if (delta > 0) {
    if (r == max)
      hue = (g - b) / delta;
    else if (g == max)
      hue = 2 + (b - r) / delta;
    else
      hue = 4 + (r - g) / delta;
  }
  hue *= 60;
  if (hue < 0) hue += 360;
  return {hue, max > 0 ? 100 * delta / max : 0, max * 100 / 255};
}

uint32_t HSVToRGB(const THSBColor& hsb) {
  const uint32_t v = ToChannel(hsb.Brightness * 255 / 100);
  if (hsb.Saturation == 0) return ToColor(v, v, v);
  constexpr int32_t kSector = 360;
  constexpr double kLargest = 1e6;
  const double sixths = std::isnan(hsb.Hue) ? 0 : std::clamp(hsb.Hue * 6, -kLargest, kLargest);
  const auto t = static_cast<int32_t>(HtRoundEven(sixths));
  const double f = t % kSector;
  const auto channel = [&](double part) {
    return ToChannel((100 - part * hsb.Saturation / kSector) * 2.55 * hsb.Brightness / 100);
  };
  const uint32_t p = channel(kSector), q = channel(f), u = channel(kSector - f);
  switch (t / kSector) {
    case 0: return ToColor(v, u, p);
    case 1: return ToColor(q, v, p);
    case 2: return ToColor(p, v, u);
    case 3: return ToColor(p, q, v);
    case 4: return ToColor(u, p, v);
    default: return ToColor(v, p, q);
  }
}

uint32_t HSBtoRGBColor(double hue, double saturation, double brightness) {
  return HSVToRGB({hue, saturation, brightness});
}

uint32_t Win2Color(int32_t value) {
  const auto word = static_cast<uint32_t>(value);
  return 0xFF000000 | Color2Win(value < 0 ? HtPlatformSysColor(word & 0xFF) : word);
}

// A block without a branch in it becomes vector code.
bool OneColor(const uint32_t* words, uint32_t value, int32_t count) {
  constexpr int32_t kBlock = 16;
  if (!words) return false;
  for (; count >= kBlock; count -= kBlock, words += kBlock) {
    uint32_t difference = 0;
    for (int32_t i = 0; i < kBlock; ++i) difference |= words[i] ^ value;
    if (difference) return true;
  }
  return count > 0 && std::any_of(words, words + count, [value](uint32_t word) { return word != value; });
}

}  // namespace ht
