// Headers of BMP images, and pixels of any depth with masks: a bitmap or an exception comes out, and what is there can be
// read to its last byte. Vector code says the same as plain code.
#include <algorithm>
#include <cstdint>

#include "htcanvas/bitmapdata.h"
#include "htruntime/exception.h"
#include "htruntime/stream.h"
#include "support/require.h"

using namespace ht;

// Every pixel is there.
static uint64_t Sum(const THtBitmapData& bitmap) {
  Require(bitmap.FData.Count() >= int64_t{bitmap.FStride} * bitmap.FHeight);
  Require(bitmap.FStride == THtBitmapData::CalcStride(bitmap.FWidth, bitmap.FBits));
  uint64_t sum = 0;
  for (const uint8_t byte : bitmap.FData) sum += byte;
  if (bitmap.FWidth > 0 && bitmap.FHeight > 0) sum += bitmap.GetPixel(bitmap.FWidth - 1, bitmap.FHeight - 1);
  return sum;
}

template <class TCall>
static void Try(const TCall& call) {
  try {
    call();
  } catch (const EHtException&) {}
}

static void LoadImage(const THtBytes& bytes, uint8_t choice) {
  constexpr int32_t kDepths[] = {8, 24, 32, 1};
  TBytesStream stream(bytes);
  THtBitmapData bitmap;
  Try([&] { bitmap.LoadfromDIB(stream, {}, kDepths[choice & 3], (choice & 4) != 0); });
  Sum(bitmap);
  Try([&] { bitmap.Convertto32(); });
  Sum(bitmap);
}

// The first bytes say what is done, the rest are pixels.
static void Transform(const uint8_t* data, size_t size) {
  static constexpr int32_t kDepths[] = {1, 2, 4, 8, 16, 24, 32, 48};
  if (size < 10) return;
  const THtBitmapBytes pixels = THtBitmapBytes::Copied({data + 10, size - 10});
  const auto load = [&pixels](THtBitmapData& bitmap, uint8_t width, uint8_t height, uint8_t depth) {
    // Whoever gives pixels has to see that there are enough.
    const int32_t bits = kDepths[depth & 7], rows = height % 32;
    if (rows > 0 && pixels.Count() / rows >= (width % 64 * bits + 7) / 8)
      bitmap.SetData(THtBitmapBytes::Copied({pixels.Data(), static_cast<size_t>(pixels.Count())}), width % 64,
                     rows, bits);
  };
  THtBitmapData bitmap, other;
  load(bitmap, data[0], data[1], data[2]);
  load(other, data[3], data[4], data[5]);
  const auto near = [data](int i) { return static_cast<int8_t>(data[i]); };
  for (int step = 6; step < 10; ++step) {
    Try([&] {
      switch (data[step] % 14) {
        case 0: return bitmap.ApplyMask(other);
        case 1: return bitmap.Convertto32Mask(other);
        case 2: return bitmap.ApplyColorMask(0x80FF00FF);
        case 3: return bitmap.ApplyColorRangeMask(0, 100, 50, 200, 0, 255);
        case 4: return bitmap.Crop({near(0), near(1), near(3), near(4)});
        case 5: return bitmap.Resize(near(4), near(3));
        case 6: return bitmap.BGRtoRGB();
        case 7: return bitmap.CMYKtoRGBA();
        case 8: return bitmap.Convertto8();
        case 9: return bitmap.FlipVertical();
        case 10: return bitmap.Convert4to8();
        case 11: return bitmap.Convert2to8();
        case 12:
          if (bitmap.FBits == other.FBits)
            bitmap.Combine(other, near(3), near(4), static_cast<THtPixelOperation>(data[5] % 5));
          return;
        default: return bitmap.Convertto32();
      }
    });
    Sum(bitmap);
    Sum(other);
  }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  if (data[0] & 1)
    LoadImage(THtBytes(data + 1, data + size), data[0] >> 1);
  else
    Transform(data + 1, size - 1);
  return 0;
}
