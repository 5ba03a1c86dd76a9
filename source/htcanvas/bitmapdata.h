#pragma once

#include "htcanvas/colorspace.h"
#include "htruntime/enums.h"
#include "htruntime/sharedarray.h"
#include "htutils/geometry.h"

namespace ht {

class TStream;

HT_ENUM(THtPixelOperation, uint8_t, poOr, poAnd, poXor, poNXor, poCopy);

/// The bytes of a bitmap. Several bitmaps may share them, and then all see what one of them changes in place.
using THtBitmapBytes = TSharedArray<uint8_t>;

/// A raster in memory, for code that decodes, converts and masks image data without a canvas.
///
///   THtBitmapData picture;
///   picture.SetData(rows, 640, 480, 24);
///   picture.Convertto32Mask(mask);            // now four bytes a pixel, alpha last
///
/// Rows follow one another at FStride, row 0 first; a row begins at a multiple of 4 bytes. A pixel of 1 bit lies at bit
/// 7 - (x and 7) of its byte, one of 2 bits likewise from the top; of two pixels of 4 bits the first is the low half. A
/// pixel of 24 bits has three bytes, one of 32 bits the same three and alpha; as numbers they are 0xRRGGBB and 0xAARRGGBB
/// if the first byte is blue. Conversions keep the order of the bytes.
///
/// Raises EAssertionFailed for what is the caller's fault: a depth outside 1 to 48, SetData with too few bytes, Combine of
/// two depths; and ERangeError for a bitmap of 2 GB or more. One thread at a time.
class THtBitmapData : public TObject {
  HT_CLASS(THtBitmapData, TObject)

 public:
  THtBitmapData() = default;
  THtBitmapData(int32_t width, int32_t height, int32_t bits) { THtBitmapData::Create(width, height, bits); }
  /// A new raster of zeros. A size below 0 counts as 0.
  virtual void Create(int32_t width, int32_t height, int32_t bits);

  int32_t FWidth = 0, FHeight = 0;
  THtBitmapBytes FData;
  int32_t FBits = 32;  // a pixel: 1, 2, 4, 8, 16, 24 or 32
  int32_t FStride = 0;
  bool IsClear = false;  // for decoders: there is nothing on it

  /// The bytes of a row: whole bytes, rounded up to a multiple of 4.
  static int32_t CalcStride(int32_t width, int32_t bits);
  void SetWidth(int32_t width);
  void SetHeight(int32_t height);
  /// Null outside the bitmap.
  uint8_t* GetScanLine(int32_t row) const;
  int32_t GetPixelBytes() const { return FBits / 8; }
  /// Both of 1, 8, 24 and 32 bits; of another depth, and outside the bitmap, GetPixel is 0 and SetPixel does nothing.
  uint32_t GetPixel(int32_t x, int32_t y) const;
  void SetPixel(int32_t x, int32_t y, uint32_t value);
  /// Fills 1, 8 and 32 bits. Of 1 bit each value but 0 is 1.
  void Clear(uint32_t value);

  /// Takes rows over. Their stride follows from the number of bytes; where it fits, the array is shared, otherwise rows are
  /// copied as far as they go. `bits` may also be 48, three components of 16 bits: the high bytes are taken, and the fourth
  /// byte is 0.
  void SetData(const THtBitmapBytes& data, int32_t width, int32_t height, int32_t bits);
  /// Reads a BMP header with its palette and pixels, from the header on (behind a file header). `data` are the pixels if
  /// the header does not give their size, or empty. An image with a palette comes out in `outBits`, 8, 24 or 32.
  /// `bottomUp` turns the rows round. Raises EStreamError "Stream read error" when bytes are missing, EHtException
  /// "Bitness not supported" and "Compression not supported".
  void LoadfromDIB(TStream& stream, const THtBitmapBytes& data, int32_t outBits, bool bottomUp);

  void FlipVertical();
  /// Keeps what lies in the rectangle; its right and bottom are outside.
  void Crop(const TRect& rect);
  /// All components, alpha included.
  void InvertComponents();
  /// Exchanges the first and the third byte of pixels of 24 and 32 bits.
  void BGRtoRGB();
  /// All pixels have one colour, as in an empty bitmap. Raises EHtException "Only 32 bit image is supported".
  bool IsSingleColor() const;
  /// To the nearest pixel, without interpolation, in 1, 4, 8 and 32 bits. A size of 0 leaves the bitmap as it is.
  void Resize(int32_t width, int32_t height);

  // What makes new data. Without a colour space, null, the values are gray or direct colours, and alpha becomes 255.

  /// To 32 bits. A colour space that is no identity gets 0 or 1 for 1 bit, the value for 4 bits, the value in all four
  /// bytes for 8 bits; for 16 bits three fields of 5 bits, or with four components four of 4 bits, spread to bytes; for 24
  /// and 32 bits the pixel.
  void Convertto32(const THtColorSpace* colorSpace = nullptr);
  /// Takes the alpha of 32 bits. The colour space is not asked. Raises EHtException "Bitness not supported".
  void Convertto8(const THtColorSpace* colorSpace = nullptr);
  /// The same for what is known to have 32 bits.
  void ConverttoMask();
  /// Unpack 4 or 2 bits to a byte each, without scaling.
  void Convert4to8();
  void Convert2to8();
  /// To 32 bits, with the mask as in ApplyMask. Raises EHtException "Mask bits 4" if this bitmap has 24 bits and the mask
  /// neither 1 nor 8.
  void Convertto32Mask(const THtBitmapData& mask);

  // Masks. A mask of another size counts as if it were resized.

  /// To 32 bits, with alpha from the mask: its values of 2, 4 and 8 bits, or the first byte of its 32 bits. With 1 bit
  /// alpha becomes 0 where the bit is 0.
  void ApplyMask(const THtBitmapData& mask);
  /// Becomes the colour in 32 bits, with this bitmap as its mask.
  void ApplyColorMask(uint32_t color);
  /// Makes pixels transparent whose third, second and first bytes lie in these ranges, ends included.
  void ApplyColorRangeMask(uint8_t low3, uint8_t high3, uint8_t low2, uint8_t high2, uint8_t low1,
                           uint8_t high1);

  /// Each pixel of 32 bits through CMYKtoARGB. Other depths stay as they are.
  void CMYKtoRGBA();
  /// Puts `source` with its left top corner at (x, y): each pixel becomes what the operation gives of it and the source's
  /// pixel. Both have one depth; 1 and 24 bits are combined, others stay as they are.
  void Combine(const THtBitmapData& source, int32_t x, int32_t y, THtPixelOperation operation);

 private:
  void TakeData(THtBitmapData& other);
  template <class TConvert>
  void ConvertRows(int32_t bits, const TConvert& convert);
  void Convert8to32(const THtColorSpace* colorSpace);
  void ApplyColorSpace32(const THtColorSpace& colorSpace);
  void MaskRows(const THtBitmapData& mask);
};

/// The colour of four inks: cyan in the lowest byte, then magenta, yellow and black. Interpolates between the colours that
/// the sixteen full mixtures have in print.
uint32_t CMYKtoARGB(uint32_t value);

}  // namespace ht
