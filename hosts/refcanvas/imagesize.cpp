#include "refcanvas/imagesize.h"

#include <cstdlib>
#include <limits>
#include <span>

#include "htcanvas/image.h"

namespace ht {

namespace {

using TSize = struct { int64_t Width, Height; };
constexpr TSize kNone{0, 0};

int64_t LittleEndian(std::span<const uint8_t> bytes) {
  int64_t value = 0;
  for (size_t i = bytes.size(); i-- > 0;) value = value << 8 | bytes[i];
  return value;
}
int64_t BigEndian(std::span<const uint8_t> bytes) {
  int64_t value = 0;
  for (const uint8_t byte : bytes) value = value << 8 | byte;
  return value;
}

// The first chunk is IHDR, behind the mark of 8 bytes.
TSize SizeOfPNG(std::span<const uint8_t> bytes) {
  if (bytes.size() < 24) return kNone;
  return {BigEndian(bytes.subspan(16, 4)), BigEndian(bytes.subspan(20, 4))};
}

TSize SizeOfGIF(std::span<const uint8_t> bytes) {
  if (bytes.size() < 10) return kNone;
  return {LittleEndian(bytes.subspan(6, 2)), LittleEndian(bytes.subspan(8, 2))};
}

// A height below 0 says that the rows are stored from the top.
TSize SizeOfBMP(std::span<const uint8_t> bytes) {
  constexpr size_t kHeader = 14;
  if (bytes.size() < kHeader + 12) return kNone;
  if (LittleEndian(bytes.subspan(kHeader, 4)) == 12)
    return {LittleEndian(bytes.subspan(kHeader + 4, 2)), LittleEndian(bytes.subspan(kHeader + 6, 2))};
  const auto height = static_cast<int32_t>(LittleEndian(bytes.subspan(kHeader + 8, 4)));
  return {LittleEndian(bytes.subspan(kHeader + 4, 4)), std::abs(int64_t{height})};
}

// The size is in the frame header: the first marker from C0 to CF that is no table (C4, CC) and no extension (C8).
TSize SizeOfJPEG(std::span<const uint8_t> bytes) {
  const auto hasNoLength = [](uint8_t marker) { return marker == 1 || (marker >= 0xD0 && marker <= 0xD9); };
  for (size_t at = 2; at + 4 <= bytes.size();) {
    if (bytes[at] != 0xFF) return kNone;
    const uint8_t marker = bytes[at + 1];
    if (marker == 0xFF) {  // padding
      ++at;
    } else if (hasNoLength(marker)) {
      at += 2;
    } else if ((marker & 0xF0) == 0xC0 && marker != 0xC4 && marker != 0xC8 && marker != 0xCC) {
      if (at + 9 > bytes.size()) return kNone;
      return {BigEndian(bytes.subspan(at + 7, 2)), BigEndian(bytes.subspan(at + 5, 2))};
    } else {
      at += 2 + static_cast<size_t>(BigEndian(bytes.subspan(at + 2, 2)));
    }
  }
  return kNone;
}

}  // namespace

bool ReadImageSize(const THtBytes& bytes, int32_t& width, int32_t& height) {
  const TSize size = THtImage::IsPNG(bytes)    ? SizeOfPNG(bytes)
                     : THtImage::IsJPEG(bytes) ? SizeOfJPEG(bytes)
                     : THtImage::IsGIF(bytes)  ? SizeOfGIF(bytes)
                     : THtImage::IsBMP(bytes)  ? SizeOfBMP(bytes)
                                               : kNone;
  constexpr int64_t kMost = std::numeric_limits<int32_t>::max();
  if (size.Width <= 0 || size.Height <= 0 || size.Width > kMost || size.Height > kMost) return false;
  width = static_cast<int32_t>(size.Width);
  height = static_cast<int32_t>(size.Height);
  return true;
}

}  // namespace ht
