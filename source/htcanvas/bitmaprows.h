#pragma once

#include <cstdint>

namespace ht::detail {

/// What bitmaps do to a row of pixels. `count` is pixels, or bytes where it says so; rows need no alignment, and nothing
/// is read or written beyond them.
struct TBitmapRows {
  /// Three bytes to four, alpha 255.
  void (*Rgb24To32)(const uint8_t* source, uint8_t* target, int32_t count);
  /// One byte to three equal ones, alpha 255.
  void (*Gray8To32)(const uint8_t* source, uint8_t* target, int32_t count);
  /// One bit, the highest first, to one of two pixels.
  void (*Bits1To32)(const uint8_t* source, uint8_t* target, int32_t count, uint32_t zero, uint32_t one);
  /// In place: the first and the third byte of a pixel exchanged.
  void (*Swap24)(uint8_t* pixels, int32_t count);
  void (*Swap32)(uint8_t* pixels, int32_t count);
  /// In place: alpha from a mask, and alpha 0 where a bit of a mask is clear.
  void (*Mask8)(const uint8_t* mask, uint8_t* pixels, int32_t count);
  void (*Mask1)(const uint8_t* mask, uint8_t* pixels, int32_t count);
};

extern const TBitmapRows kPlainBitmapRows;
/// With vector code; null on a processor without it.
const TBitmapRows* HtVectorBitmapRows();
/// The quickest of this processor.
const TBitmapRows& HtBitmapRows();

}  // namespace ht::detail
