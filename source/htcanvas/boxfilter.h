#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace ht::detail {

/// The mean of a window of 2 * Radius + 1 channels by a multiplication: exact, rounded, for windows below 2^21.
struct TBoxMean {
  explicit TBoxMean(int32_t radius);

  uint8_t Of(uint32_t sum) const { return static_cast<uint8_t>(uint64_t{sum + Radius} * Factor >> Shift); }

  uint32_t Radius, Factor;
  int Shift;
};

/// Pixels of four bytes: `stride` bytes from one row to the next.
struct TPixelRows {
  uint8_t* At(int32_t row) const { return Data + row * static_cast<ptrdiff_t>(Stride); }

  uint8_t* Data;
  ptrdiff_t Stride;
};

/// A box filter over all rows, or all columns, of `width` times `height` pixels, from one place to another. Both sides are
/// longer than the window's radius.
struct TBoxFilter {
  void (*Rows)(const TPixelRows& from, const TPixelRows& to, int32_t width, int32_t height,
               const TBoxMean& mean);
  void (*Columns)(const TPixelRows& from, const TPixelRows& to, int32_t width, int32_t height,
                  const TBoxMean& mean);
};

extern const TBoxFilter kPlainBoxFilter;
/// With vector code; null on a processor without it.
const TBoxFilter* HtVectorBoxFilter();

}  // namespace ht::detail
