// THtBitmapData::LoadfromDIB: the headers, palettes and pixels of BMP files.

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#include "htcanvas/bitmapdata.h"
#include "htruntime/exception.h"
#include "htruntime/stream.h"

namespace ht {

namespace {

// As in BITMAPCOREHEADER, of 12 bytes, and in the longer headers.
struct THeader {
  uint32_t Size = 0;
  int64_t Width = 0, Height = 0;  // absolute
  int32_t Bits = 0;
  uint32_t Compression = 0, ImageSize = 0, ColorsUsed = 0;

  bool Core() const { return Size == kCoreSize; }

  static constexpr uint32_t kCoreSize = 12, kReadSize = 40;
};

uint32_t Number(const uint8_t* at, int bytes) {
  uint32_t value = 0;
  for (int i = bytes; i-- > 0;) value = value << 8 | at[i];
  return value;
}

int64_t Absolute(uint32_t value) {
  const int64_t number = static_cast<int32_t>(value);
  return number < 0 ? -number : number;
}

[[noreturn]] void RaiseTooShort() { throw EStreamError(u"Stream read error"); }

THeader ReadHeader(TStream& stream) {
  std::array<uint8_t, THeader::kReadSize> bytes{};
  const int64_t count = stream.Read(bytes.data(), bytes.size());
  const uint8_t* at = bytes.data();
  THeader header;
  header.Size = Number(at, 4);
  if (count < (header.Core() ? THeader::kCoreSize : THeader::kReadSize)) RaiseTooShort();
  if (header.Core()) {
    header.Width = Number(at + 4, 2);
    header.Height = Number(at + 6, 2);
    header.Bits = static_cast<int32_t>(Number(at + 10, 2));
    return header;
  }
  header.Width = Absolute(Number(at + 4, 4));
  header.Height = Absolute(Number(at + 8, 4));
  header.Bits = static_cast<int32_t>(Number(at + 14, 2));
  header.Compression = Number(at + 16, 4);
  header.ImageSize = Number(at + 20, 4);
  header.ColorsUsed = Number(at + 32, 4);
  return header;
}

void CheckHeader(const THeader& header) {
  constexpr int32_t kDepths[] = {1, 2, 4, 8, 16, 24, 32};
  constexpr uint32_t kPlain = 0, kBitFields = 3;
  if (std::ranges::find(kDepths, header.Bits) == std::end(kDepths))
    throw EHtException(u"Bitness not supported");
  if (header.Compression != kPlain && header.Compression != kBitFields)
    throw EHtException(u"Compression not supported");
}

int64_t Remaining(TStream& stream) { return std::max<int64_t>(stream.GetSize() - stream.GetPosition(), 0); }

using TPalette = std::array<uint32_t, 256>;

// As colours 0xFFRRGGBB. A palette may have more entries than pixels can name, or fewer.
TPalette ReadPalette(TStream& stream, const THeader& header) {
  const int64_t entryBytes = header.Core() ? 3 : 4;
  const int64_t count = header.ColorsUsed ? int64_t{header.ColorsUsed} : int64_t{1} << header.Bits;
  const int64_t start = stream.GetPosition();
  if (Remaining(stream) < count * entryBytes) RaiseTooShort();
  TPalette palette;
  palette.fill(0xFF000000);
  std::array<uint8_t, 4> entry{};
  for (int64_t i = 0; i < std::min<int64_t>(count, static_cast<int64_t>(palette.size())); ++i) {
    stream.ReadBuffer(entry.data(), entryBytes);
    palette[static_cast<size_t>(i)] = 0xFF000000 | Number(entry.data(), 3);
  }
  stream.SetPosition(start + count * entryBytes);
  return palette;
}

// The bytes of the image. What the header promises must be there before anything is allocated.
THtBitmapBytes ReadPixels(TStream& stream, const THeader& header, const THtBitmapBytes& given) {
  const int64_t rowBytes = (header.Width * header.Bits + 7) / 8;
  const int64_t stride = (rowBytes + 3) / 4 * 4;
  THtBitmapBytes pixels = THtBitmapBytes::Copied({given.Data(), static_cast<size_t>(given.Count())});
  if (header.ImageSize != 0 || given.Empty()) {
    if (stride != 0 && header.Height > std::numeric_limits<int32_t>::max() / stride)
      throw ERangeError(u"The bitmap is too large");
    const int64_t count = header.ImageSize != 0 ? int64_t{header.ImageSize} : stride * header.Height;
    if (count > Remaining(stream) || count > std::numeric_limits<int32_t>::max()) RaiseTooShort();
    THtBitmapBytes read;
    read.SetLength(static_cast<int32_t>(count));
    stream.ReadBuffer(read.Data(), count);
    pixels.Swap(read);
  }
  if (header.Height != 0 && pixels.Count() / header.Height < rowBytes) RaiseTooShort();
  // What pads the end is not part of the rows.
  if (pixels.Count() > stride * header.Height) pixels.SetLength(static_cast<int32_t>(stride * header.Height));
  return pixels;
}

// In a BMP the first pixel of a byte is in its highest bits, at every depth.
uint32_t IndexAt(const uint8_t* row, int32_t x, int32_t bits) {
  const int32_t perByte = 8 / bits;
  return row[x / perByte] >> (8 - bits - x % perByte * bits) & ((1u << bits) - 1);
}

}  // namespace

void THtBitmapData::LoadfromDIB(TStream& stream, const THtBitmapBytes& data, int32_t outBits, bool bottomUp) {
  const int64_t start = stream.GetPosition();
  THeader header = ReadHeader(stream);
  CheckHeader(header);
  if (header.Width == 0) header.Height = 0;  // rows of nothing are not worth walking
  const bool indexed = header.Bits <= 8;
  if (indexed && outBits != 8 && outBits != 24 && outBits != 32) throw EHtException(u"Bitness not supported");
  // Bit fields of a plain header follow it, before the pixels.
  constexpr int64_t kMaskBytes = 12;
  const bool masks = header.Compression == 3 && header.Size == THeader::kReadSize;
  stream.SetPosition(start + header.Size + (masks ? kMaskBytes : 0));
  TPalette palette;
  if (indexed) palette = ReadPalette(stream, header);

  const THtBitmapBytes pixels = ReadPixels(stream, header, data);
  THtBitmapData source;
  if (header.Width > std::numeric_limits<int32_t>::max() ||
      header.Height > std::numeric_limits<int32_t>::max())
    throw ERangeError(u"The bitmap is too large");
  source.SetData(pixels, static_cast<int32_t>(header.Width), static_cast<int32_t>(header.Height),
                 header.Bits);
  if (!indexed) {
    if (header.Bits == 32)
      for (int32_t i = 3; i < source.FData.Count(); i += 4) source.FData[i] = 255;
    if (bottomUp) source.FlipVertical();
    return TakeData(source);
  }
  THtBitmapData colored(source.FWidth, source.FHeight, outBits);
  const auto pixelBytes = static_cast<size_t>(outBits / 8);
  for (int32_t y = 0; y < source.FHeight; ++y) {
    const uint8_t* from = source.GetScanLine(y);
    uint8_t* to = colored.GetScanLine(bottomUp ? source.FHeight - 1 - y : y);
    for (int32_t x = 0; x < source.FWidth; ++x, to += pixelBytes)
      std::memcpy(to, &palette[IndexAt(from, x, header.Bits)], pixelBytes);
  }
  TakeData(colored);
}

}  // namespace ht
