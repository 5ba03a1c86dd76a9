#pragma once

#include <array>

#include "htutils/colorarith.h"

namespace ht {

/// The half width of a kernel, 0 to kLargestKernelSize.
using TKernelSize = int32_t;
constexpr TKernelSize kLargestKernelSize = 30;

/// The weights of a row blur. Those of the offsets -Size to Size count; the weight of offset n stands at
/// n + kLargestKernelSize.
struct TKernel {
  TKernelSize Size = 0;
  std::array<float, 2 * kLargestKernelSize + 1> Weights{};
  /// The same in 24-bit fixed point, rounded up.
  std::array<uint32_t, 2 * kLargestKernelSize + 1> IWeights{};
};

/// The Gaussian bell with `radius` for its standard deviation. Its tails are cut where they weigh less than half of
/// `granularity` in `maxData`, for values that run up to `maxData` in steps of `granularity`.
///
/// Raises EAssertionFailed unless the radius lies between 0.1 and 1000.
void MakeGaussianKernel(TKernel& kernel, double radius, double maxData, double granularity);

/// Blurs one row of pixels, all four channels: the columns `left` to `right`, beyond which the pixels at these columns
/// count. `high` is the last column of both rows; they do not overlap.
///
/// In the target the columns from left - Size to right + Size change: those that are not blurred are copied. With
/// `skipTo` of 0 or more the columns from `skipFrom` to `skipTo` are only copied, too, unless they lie within Size of
/// either end. The sum of the weights is at most 2^24 + Size * 2, as that of MakeGaussianKernel is; sums wrap round.
void BlurRow(const TRGBA* source, int32_t high, const TKernel& kernel, TRGBA* target, int32_t left,
             int32_t right, int32_t skipFrom, int32_t skipTo);

}  // namespace ht
