#include "htcanvas/bitmapdata.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

#include "htcanvas/bitmaprows.h"
#include "htruntime/exception.h"
#include "htutils/fill.h"

namespace ht {

namespace {

int32_t Fitting(int64_t bytes) {
  if (bytes > std::numeric_limits<int32_t>::max()) throw ERangeError(u"The bitmap is too large");
  return static_cast<int32_t>(bytes);
}

int64_t PackedBytes(int32_t width, int32_t bits) { return (int64_t{width} * bits + 7) / 8; }

// The pixel of the source that a pixel of the target shows: round(source x at / target), ties to even.
int32_t NearestIndex(int32_t at, int32_t source, int32_t target) {
  const int64_t product = int64_t{source} * at;
  int64_t index = product / target;
  const int64_t twice = product % target * 2;
  if (twice > target || (twice == target && index % 2 != 0)) ++index;
  return static_cast<int32_t>(std::min<int64_t>(index, source - 1));
}

bool Bit(const uint8_t* row, int32_t x) { return (row[x >> 3] >> (7 - (x & 7)) & 1) != 0; }

void SetBit(uint8_t* row, int32_t x, bool on) {
  const auto bit = static_cast<uint8_t>(0x80 >> (x & 7));
  row[x >> 3] = static_cast<uint8_t>(on ? row[x >> 3] | bit : row[x >> 3] & ~bit);
}

// A pixel from one row to another, which holds zeros there.
void CopyPixel(const uint8_t* source, int32_t from, uint8_t* target, int32_t to, int32_t bits) {
  if (bits >= 8) {
    const auto bytes = static_cast<size_t>(bits / 8);
    std::memcpy(target + static_cast<size_t>(to) * bytes, source + static_cast<size_t>(from) * bytes, bytes);
    return;
  }
  // Halves of a byte count from the low end, smaller pixels from the high end.
  const auto shift = [bits](int32_t x) {
    const int32_t place = x % (8 / bits) * bits;
    return bits == 4 ? place : 8 - bits - place;
  };
  const int32_t pixel = source[int64_t{from} * bits / 8] >> shift(from) & ((1 << bits) - 1);
  target[int64_t{to} * bits / 8] |= static_cast<uint8_t>(pixel << shift(to));
}

}  // namespace

int32_t THtBitmapData::CalcStride(int32_t width, int32_t bits) {
  return Fitting((PackedBytes(width, bits) + 3) / 4 * 4);
}

void THtBitmapData::Create(int32_t width, int32_t height, int32_t bits) {
  if (bits < 1 || bits > 48) throw EAssertionFailed(u"A bitmap has 1 to 48 bits a pixel");
  width = std::max(width, 0);
  height = std::max(height, 0);
  const int32_t stride = CalcStride(width, bits);
  THtBitmapBytes data;
  data.SetLength(Fitting(int64_t{stride} * height));
  FData.Swap(data);
  FWidth = width;
  FHeight = height;
  FBits = bits;
  FStride = stride;
}

void THtBitmapData::SetWidth(int32_t width) {
  width = std::max(width, 0);
  const int32_t stride = CalcStride(width, FBits);
  FData.SetLength(Fitting(int64_t{stride} * FHeight));
  FWidth = width;
  FStride = stride;
}

void THtBitmapData::SetHeight(int32_t height) {
  height = std::max(height, 0);
  FStride = CalcStride(FWidth, FBits);
  FData.SetLength(Fitting(int64_t{FStride} * height));
  FHeight = height;
}

uint8_t* THtBitmapData::GetScanLine(int32_t row) const {
  if (row < 0 || row >= FHeight) return nullptr;
  return FData.Data() + static_cast<size_t>(row) * static_cast<size_t>(FStride);
}

uint32_t THtBitmapData::GetPixel(int32_t x, int32_t y) const {
  if (x < 0 || x >= FWidth || y < 0 || y >= FHeight) return 0;
  const uint8_t* row = GetScanLine(y);
  if (FBits == 1) return Bit(row, x);
  if (FBits != 8 && FBits != 24 && FBits != 32) return 0;
  const auto bytes = static_cast<size_t>(GetPixelBytes());
  uint32_t value = 0;
  std::memcpy(&value, row + static_cast<size_t>(x) * bytes, bytes);
  return value;
}

void THtBitmapData::SetPixel(int32_t x, int32_t y, uint32_t value) {
  if (x < 0 || x >= FWidth || y < 0 || y >= FHeight) return;
  uint8_t* row = GetScanLine(y);
  if (FBits == 1) return SetBit(row, x, value != 0);
  if (FBits != 8 && FBits != 24 && FBits != 32) return;
  const auto bytes = static_cast<size_t>(GetPixelBytes());
  std::memcpy(row + static_cast<size_t>(x) * bytes, &value, bytes);
}

void THtBitmapData::Clear(uint32_t value) {
  if (FBits == 1)
    std::ranges::fill(FData, static_cast<uint8_t>(value == 0 ? 0 : 255));
  else if (FBits == 8)
    std::ranges::fill(FData, static_cast<uint8_t>(value));
  else if (FBits == 32 && !FData.Empty())
    HtFillLong(value, reinterpret_cast<uint32_t*>(FData.Data()), FData.Count() / 4);
}

void THtBitmapData::TakeData(THtBitmapData& other) {
  FData.Swap(other.FData);
  FWidth = other.FWidth;
  FHeight = other.FHeight;
  FBits = other.FBits;
  FStride = other.FStride;
}

void THtBitmapData::SetData(const THtBitmapBytes& data, int32_t width, int32_t height, int32_t bits) {
  THtBitmapData taken;
  if (height <= 0 || width <= 0) {
    taken.Create(width, height, std::min(bits, 32));
    return TakeData(taken);
  }
  if (bits < 1 || (bits > 32 && bits != 48)) throw EAssertionFailed(u"A bitmap has 1 to 48 bits a pixel");
  int64_t stride = data.Count() / height;
  if (stride > int64_t{4} * width) stride = PackedBytes(width, bits);
  if (stride * height > data.Count() || (bits > 32 && stride < PackedBytes(width, bits)))
    throw EAssertionFailed(u"There are fewer bytes than the rows of the bitmap have");
  if (bits <= 32 && stride == CalcStride(width, bits)) {
    FData = data;
    FWidth = width;
    FHeight = height;
    FBits = bits;
    FStride = static_cast<int32_t>(stride);
    return;
  }
  taken.Create(width, height, std::min(bits, 32));
  for (int32_t y = 0; y < height; ++y) {
    const uint8_t* from = data.Data() + y * stride;
    uint8_t* to = taken.GetScanLine(y);
    if (bits <= 32) {
      std::copy_n(from, std::min<int64_t>(stride, taken.FStride), to);
      continue;
    }
    for (int32_t x = 0; x < width; ++x, from += 6, to += 4)
      for (int32_t i = 0; i < 3; ++i) to[i] = from[2 * i + 1];
  }
  TakeData(taken);
}

void THtBitmapData::FlipVertical() {
  for (int32_t top = 0, bottom = FHeight - 1; top < bottom; ++top, --bottom)
    std::swap_ranges(GetScanLine(top), GetScanLine(top) + FStride, GetScanLine(bottom));
}

void THtBitmapData::Crop(const TRect& rect) {
  const TRect kept = RIntersect(rect, TRect{0, 0, FWidth, FHeight});
  THtBitmapData cropped(kept.Right > kept.Left ? kept.Width() : 0, kept.Bottom > kept.Top ? kept.Height() : 0,
                        FBits);
  if (cropped.FData.Empty()) return TakeData(cropped);
  const int64_t firstBit = int64_t{kept.Left} * FBits;
  for (int32_t y = 0; y < cropped.FHeight; ++y) {
    const uint8_t* from = GetScanLine(kept.Top + y);
    uint8_t* to = cropped.GetScanLine(y);
    if (FBits >= 8) {
      std::copy_n(from + firstBit / 8, PackedBytes(cropped.FWidth, FBits), to);
      continue;
    }
    for (int32_t x = 0; x < cropped.FWidth; ++x) CopyPixel(from, kept.Left + x, to, x, FBits);
  }
  TakeData(cropped);
}

void THtBitmapData::InvertComponents() {
  for (uint8_t& byte : FData) byte = static_cast<uint8_t>(~byte);
}

void THtBitmapData::BGRtoRGB() {
  if (FBits != 24 && FBits != 32) return;
  const detail::TBitmapRows& rows = detail::HtBitmapRows();
  for (int32_t y = 0; y < FHeight; ++y) (FBits == 24 ? rows.Swap24 : rows.Swap32)(GetScanLine(y), FWidth);
}

bool THtBitmapData::IsSingleColor() const {
  if (FBits != 32) throw EHtException(u"Only 32 bit image is supported");
  // All are the same if each is the same as the one before it.
  const auto bytes = static_cast<size_t>(FWidth) * 4 * static_cast<size_t>(FHeight);
  return bytes == 0 || std::memcmp(FData.Data(), FData.Data() + 4, bytes - 4) == 0;
}

void THtBitmapData::Resize(int32_t width, int32_t height) {
  if (width <= 0 || height <= 0 || FWidth <= 0 || FHeight <= 0 || (width == FWidth && height == FHeight))
    return;
  if (FBits != 1 && FBits != 4 && FBits != 8 && FBits != 32) return;
  THtBitmapData resized(width, height, FBits);
  if (FBits == 32 && IsSingleColor()) {
    resized.Clear(GetPixel(0, 0));
    return TakeData(resized);
  }
  std::vector<int32_t> column(static_cast<size_t>(width));
  for (int32_t x = 0; x < width; ++x) column[static_cast<size_t>(x)] = NearestIndex(x, FWidth, width);
  for (int32_t y = 0; y < height; ++y) {
    const uint8_t* from = GetScanLine(NearestIndex(y, FHeight, height));
    uint8_t* to = resized.GetScanLine(y);
    if (FBits == 32)
      for (int32_t x = 0; x < width; ++x)
        std::memcpy(to + 4 * int64_t{x}, from + 4 * int64_t{column[static_cast<size_t>(x)]}, 4);
    else
      for (int32_t x = 0; x < width; ++x) CopyPixel(from, column[static_cast<size_t>(x)], to, x, FBits);
  }
  TakeData(resized);
}

}  // namespace ht
