// Conversions of THtBitmapData between depths, and its masks.

#include <array>
#include <cstring>

#include "htcanvas/bitmapdata.h"
#include "htcanvas/bitmaprows.h"
#include "htruntime/exception.h"
#include "htruntime/format.h"

namespace ht {

namespace {

constexpr uint32_t kOpaque = 0xFF000000;

uint32_t PixelAt(const uint8_t* bytes) {
  uint32_t pixel;
  std::memcpy(&pixel, bytes, 4);
  return pixel;
}
void PutPixel(uint8_t* bytes, uint32_t pixel) { std::memcpy(bytes, &pixel, 4); }

// Asks for a colour only where it differs from the one before, as it seldom does.
template <class TConvert>
class TLastColor {
 public:
  explicit TLastColor(const TConvert& convert) : FConvert(convert) {}

  uint32_t operator()(uint32_t value) {
    if (FKnown && value == FValue) return FColor;
    FKnown = true;
    FValue = value;
    return FColor = FConvert(value);
  }

 private:
  const TConvert& FConvert;
  bool FKnown = false;
  uint32_t FValue = 0, FColor = 0;
};

// Three fields of 5 bits, the lowest first, to bytes that are nearest to v x 255 / 31.
uint32_t Spread5(uint32_t value) {
  const auto field = [value](int shift) { return ((value >> shift & 31) * 527 + 23) >> 6; };
  return kOpaque | field(0) | field(5) << 8 | field(10) << 16;
}

uint32_t Spread4(uint32_t value) {
  return ((value & 0xF) | (value & 0xF0) << 4 | (value & 0xF00) << 8 | (value & 0xF000) << 12) * 17;
}

uint32_t Value16(const uint8_t* bytes) { return bytes[0] | uint32_t{bytes[1]} << 8; }

void Convert16(const uint8_t* from, uint8_t* to, int32_t count, const THtColorSpace* colorSpace) {
  if (!colorSpace) {
    for (; count > 0; --count, from += 2, to += 4) PutPixel(to, Spread5(Value16(from)));
    return;
  }
  const bool four = colorSpace->OutComponentCount() == 4;
  const auto convert = [&](uint32_t value) {
    return colorSpace->ConvertColor(four ? Spread4(value) : Spread5(value));
  };
  TLastColor last(convert);
  for (; count > 0; --count, from += 2, to += 4) PutPixel(to, last(Value16(from)));
}

}  // namespace

// Gives each row of the new depth to `convert`, with the row it comes from.
template <class TConvert>
void THtBitmapData::ConvertRows(int32_t bits, const TConvert& convert) {
  THtBitmapData converted(FWidth, FHeight, bits);
  for (int32_t y = 0; y < FHeight; ++y) convert(GetScanLine(y), converted.GetScanLine(y));
  TakeData(converted);
}

void THtBitmapData::Convertto32(const THtColorSpace* colorSpace) {
  if (colorSpace && colorSpace->IsIdentity()) colorSpace = nullptr;
  const detail::TBitmapRows& rows = detail::HtBitmapRows();
  const int32_t width = FWidth;
  switch (FBits) {
    case 1: {
      const uint32_t zero = colorSpace ? colorSpace->ConvertColor(0) : kOpaque;
      const uint32_t one = colorSpace ? colorSpace->ConvertColor(1) : 0xFFFFFFFF;
      return ConvertRows(
          32, [&](const uint8_t* from, uint8_t* to) { rows.Bits1To32(from, to, width, zero, one); });
    }
    case 2:
    case 4: {
      const uint32_t highest = (1u << FBits) - 1;
      std::array<uint32_t, 16> colors{};
      for (uint32_t value = 0; value <= highest; ++value)
        colors[value] =
            colorSpace ? colorSpace->ConvertColor(value) : kOpaque | value * (255 / highest) * 0x10101;
      FBits == 4 ? Convert4to8() : Convert2to8();
      return ConvertRows(32, [&](const uint8_t* from, uint8_t* to) {
        for (int32_t x = 0; x < width; ++x, to += 4) PutPixel(to, colors[from[x] & highest]);
      });
    }
    case 8: return Convert8to32(colorSpace);
    case 16:
      return ConvertRows(32,
                         [&](const uint8_t* from, uint8_t* to) { Convert16(from, to, width, colorSpace); });
    case 24:
      if (!colorSpace)
        return ConvertRows(32, [&](const uint8_t* from, uint8_t* to) { rows.Rgb24To32(from, to, width); });
      return ConvertRows(32, [&](const uint8_t* from, uint8_t* to) {
        const auto convert = [&](uint32_t color) { return colorSpace->ConvertColor(color); };
        TLastColor last(convert);
        for (int32_t x = 0; x < width; ++x, from += 3, to += 4)
          PutPixel(to, last(kOpaque | from[0] | uint32_t{from[1]} << 8 | uint32_t{from[2]} << 16));
      });
    case 32:
      if (colorSpace) ApplyColorSpace32(*colorSpace);
      return;
    default: throw EHtException(u"Bitness not supported");
  }
}

void THtBitmapData::Convert8to32(const THtColorSpace* colorSpace) {
  const int32_t width = FWidth;
  if (!colorSpace)
    return ConvertRows(
        32, [width](const uint8_t* from, uint8_t* to) { detail::HtBitmapRows().Gray8To32(from, to, width); });
  THtBitmapData converted(FWidth, FHeight, 32);
  auto* target = reinterpret_cast<uint32_t*>(converted.FData.Data());
  if (FData.Empty() || colorSpace->Convert8to32(FData.Data(), target, FStride, FHeight, FWidth))
    return TakeData(converted);
  std::array<uint32_t, 256> colors;
  for (uint32_t value = 0; value < colors.size(); ++value)
    colors[value] = colorSpace->ConvertColor(value * 0x01010101);
  ConvertRows(32, [&](const uint8_t* from, uint8_t* to) {
    for (int32_t x = 0; x < width; ++x, to += 4) PutPixel(to, colors[from[x]]);
  });
}

void THtBitmapData::ApplyColorSpace32(const THtColorSpace& colorSpace) {
  const auto convert = [&](uint32_t color) { return colorSpace.ConvertColor(color); };
  TLastColor last(convert);
  ConvertRows(32, [&](const uint8_t* from, uint8_t* to) {
    for (int32_t x = 0; x < FWidth; ++x, from += 4, to += 4) PutPixel(to, last(PixelAt(from)));
  });
}

void THtBitmapData::Convertto8(const THtColorSpace*) {
  if (FBits != 32) throw EHtException(u"Bitness not supported");
  const int32_t width = FWidth;
  ConvertRows(8, [width](const uint8_t* from, uint8_t* to) {
    for (int32_t x = 0; x < width; ++x) to[x] = from[4 * int64_t{x} + 3];
  });
}

void THtBitmapData::ConverttoMask() {
  if (FBits != 32) throw EAssertionFailed(u"A mask is made of 32 bits a pixel");
  Convertto8();
}

void THtBitmapData::Convert4to8() {
  if (FBits != 4) return;
  const int32_t width = FWidth;
  ConvertRows(8, [width](const uint8_t* from, uint8_t* to) {
    for (int32_t x = 0; x < width; ++x) to[x] = from[x / 2] >> x % 2 * 4 & 0xF;
  });
}

void THtBitmapData::Convert2to8() {
  if (FBits != 2) return;
  const int32_t width = FWidth;
  ConvertRows(8, [width](const uint8_t* from, uint8_t* to) {
    for (int32_t x = 0; x < width; ++x) to[x] = from[x / 4] >> (6 - x % 4 * 2) & 3;
  });
}

void THtBitmapData::Convertto32Mask(const THtBitmapData& mask) {
  if (FBits == 24 && mask.FBits != 1 && mask.FBits != 8)
    throw EHtException(HtFormat(u"Mask bits %d", mask.FBits));
  if (FBits != 24 || mask.FWidth != FWidth || mask.FHeight != FHeight) return ApplyMask(mask);
  // Each row is masked while it is still in the cache.
  const detail::TBitmapRows& rows = detail::HtBitmapRows();
  THtBitmapData converted(FWidth, FHeight, 32);
  for (int32_t y = 0; y < FHeight; ++y) {
    uint8_t* to = converted.GetScanLine(y);
    rows.Rgb24To32(GetScanLine(y), to, FWidth);
    (mask.FBits == 8 ? rows.Mask8 : rows.Mask1)(mask.GetScanLine(y), to, FWidth);
  }
  TakeData(converted);
}

void THtBitmapData::ApplyMask(const THtBitmapData& mask) {
  THtBitmapData fitting;  // shares the bytes of the mask as long as nothing is to be changed
  fitting.FData = mask.FData;
  fitting.FWidth = mask.FWidth;
  fitting.FHeight = mask.FHeight;
  fitting.FBits = mask.FBits;
  fitting.FStride = mask.FStride;
  fitting.Convert2to8();
  fitting.Resize(FWidth, FHeight);
  fitting.Convert4to8();
  Convertto32();
  if (fitting.FWidth == FWidth && fitting.FHeight == FHeight) MaskRows(fitting);
}

// Both have one size, and this bitmap has 32 bits.
void THtBitmapData::MaskRows(const THtBitmapData& mask) {
  const detail::TBitmapRows& rows = detail::HtBitmapRows();
  for (int32_t y = 0; y < FHeight; ++y) {
    const uint8_t* from = mask.GetScanLine(y);
    uint8_t* to = GetScanLine(y);
    if (mask.FBits == 1)
      rows.Mask1(from, to, FWidth);
    else if (mask.FBits == 8)
      rows.Mask8(from, to, FWidth);
    else if (mask.FBits == 32)
      for (int32_t x = 0; x < FWidth; ++x) to[4 * int64_t{x} + 3] = from[4 * int64_t{x}];
  }
}

void THtBitmapData::ApplyColorMask(uint32_t color) {
  THtBitmapData colored(FWidth, FHeight, 32);
  colored.Clear(color);
  colored.ApplyMask(*this);
  TakeData(colored);
}

void THtBitmapData::ApplyColorRangeMask(uint8_t low3, uint8_t high3, uint8_t low2, uint8_t high2,
                                        uint8_t low1, uint8_t high1) {
  if (FData.Empty()) return;
  Convertto32();
  const auto within = [](uint8_t byte, uint8_t low, uint8_t high) { return byte >= low && byte <= high; };
  for (int32_t y = 0; y < FHeight; ++y) {
    uint8_t* pixel = GetScanLine(y);
    for (int32_t x = 0; x < FWidth; ++x, pixel += 4)
      if (within(pixel[2], low3, high3) && within(pixel[1], low2, high2) && within(pixel[0], low1, high1))
        pixel[3] = 0;
  }
}

}  // namespace ht
