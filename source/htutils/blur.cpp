#include "htutils/blur.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "htruntime/exception.h"
#include "htutils/blurpaths.h"
#include "htutils/cpufeatures.h"

#ifdef HT_BLUR_AVX2
#include <immintrin.h>
#endif

namespace ht {

namespace {

// In fixed point the weights have so many bits behind the point.
constexpr int kWeightBits = 24;

size_t WeightAt(int32_t offset) { return static_cast<size_t>(offset + kLargestKernelSize); }

struct TChannelSums {
  uint32_t B = 0, G = 0, R = 0, A = 0;

  void Add(const TRGBA& pixel, uint32_t weight) {
    B += pixel.b * weight;
    G += pixel.g * weight;
    R += pixel.r * weight;
    A += pixel.a * weight;
  }
  TRGBA Pixel() const {
    const auto channel = [](uint32_t sum) { return static_cast<uint8_t>(sum >> kWeightBits); };
    return {channel(B), channel(G), channel(R), channel(A)};
  }
};

// Columns near an end: what lies beyond is the pixel at the end.
void BlurColumnsClamped(const TRGBA* source, const TKernel& kernel, TRGBA* target, int32_t from, int32_t to,
                        int32_t left, int32_t right) {
  for (int32_t x = from; x < to; ++x) {
    TChannelSums sums;
    for (int32_t n = -kernel.Size; n <= kernel.Size; ++n)
      sums.Add(source[std::clamp(x + n, left, right)], kernel.IWeights[WeightAt(n)]);
    target[x] = sums.Pixel();
  }
}

void BlurColumns(const TRGBA* source, const TKernel& kernel, TRGBA* target, int32_t from, int32_t to) {
#ifdef HT_BLUR_AVX2
  static const bool kHasAVX2 = HtCPUFeatures().AVX2;
  if (kHasAVX2) from = detail::BlurColumnsAVX2(source, kernel, target, from, to);
#endif
  detail::BlurColumnsPlain(source, kernel, target, from, to);
}

}  // namespace

void MakeGaussianKernel(TKernel& kernel, double radius, double maxData, double granularity) {
  if (!(radius > 0.1 && radius < 1000))
    throw EAssertionFailed(u"The radius of a blur lies between 0.1 and 1000");
  kernel = {};
  double sum = 0;
  for (int32_t n = -kLargestKernelSize; n <= kLargestKernelSize; ++n) {
    float& weight = kernel.Weights[WeightAt(n)];
    weight = static_cast<float>(std::exp(-(n / radius) * (n / radius) / 2));
    sum += static_cast<double>(weight);
  }
  for (float& weight : kernel.Weights) weight = static_cast<float>(static_cast<double>(weight) / sum);

  const double tails = granularity / (2 * maxData);
  kernel.Size = kLargestKernelSize;
  for (double cut = 0; cut < tails && kernel.Size > 1; --kernel.Size)
    cut += 2 * static_cast<double>(kernel.Weights[WeightAt(kernel.Size)]);

  sum = 0;
  for (int32_t n = -kernel.Size; n <= kernel.Size; ++n)
    sum += static_cast<double>(kernel.Weights[WeightAt(n)]);
  for (int32_t n = -kLargestKernelSize; n <= kLargestKernelSize; ++n) {
    float& weight = kernel.Weights[WeightAt(n)];
    if (std::abs(n) > kernel.Size) {
      weight = 0;
      continue;
    }
    const double share = static_cast<double>(weight) / sum;
    kernel.IWeights[WeightAt(n)] = static_cast<uint32_t>(std::ceil(share * ((1 << kWeightBits) - 1)));
    weight = static_cast<float>(share);
  }
}

void BlurRow(const TRGBA* source, int32_t high, const TKernel& kernel, TRGBA* target, int32_t left,
             int32_t right, int32_t skipFrom, int32_t skipTo) {
  left = std::max(left, 0);
  right = std::min(right, high);
  if (left > right) return;
  const int32_t size = kernel.Size;
  const int32_t copyFrom = std::max(left - size, 0);
  const int32_t copyTo = right < high - size ? right + size : high;
  std::copy(source + copyFrom, source + copyTo + 1, target + copyFrom);

  const int32_t columns = right - left + 1;
  const int32_t middle = left + std::min(size, columns);
  const int32_t middleEnd = std::max(middle, right - size + 1);
  BlurColumnsClamped(source, kernel, target, left, middle, left, right);
  if (skipTo < 0) {
    BlurColumns(source, kernel, target, middle, middleEnd);
  } else {
    BlurColumns(source, kernel, target, middle, std::min(skipFrom, middleEnd));
    if (skipTo < middleEnd) BlurColumns(source, kernel, target, std::max(middle, skipTo + 1), middleEnd);
  }
  BlurColumnsClamped(source, kernel, target, middleEnd, right + 1, left, right);
}

void detail::BlurColumnsPlain(const TRGBA* source, const TKernel& kernel, TRGBA* target, int32_t from,
                              int32_t to) {
  const uint32_t* weights = kernel.IWeights.data() + WeightAt(-kernel.Size);
  for (int32_t x = from; x < to; ++x) {
    TChannelSums sums;
    const TRGBA* pixel = source + (x - kernel.Size);
    for (int32_t n = 0; n <= 2 * kernel.Size; ++n) sums.Add(pixel[n], weights[n]);
    target[x] = sums.Pixel();
  }
}

#ifdef HT_BLUR_AVX2

namespace {

// The multiplication at hand takes pairs of 16-bit numbers, so that a weight goes in as two halves, and two offsets at a
// time.
constexpr int kLowBits = 12;

struct TWeightPair {
  int32_t Low, High;
};

struct TWeightPairs {
  std::array<TWeightPair, kLargestKernelSize + 1> Pairs;
  bool Fit = true;  // the halves are 16-bit numbers

  explicit TWeightPairs(const TKernel& kernel) {
    const auto weight = [&](int32_t n) { return n > kernel.Size ? 0 : kernel.IWeights[WeightAt(n)]; };
    for (int32_t i = 0; i <= kernel.Size; ++i) {
      const uint32_t a = weight(2 * i - kernel.Size), b = weight(2 * i - kernel.Size + 1);
      constexpr uint32_t kLow = (1u << kLowBits) - 1;
      Fit &= ((a | b) >> (kLowBits + 15)) == 0;
      Pairs[static_cast<size_t>(i)] = {static_cast<int32_t>((a & kLow) | (b & kLow) << 16),
                                       static_cast<int32_t>(a >> kLowBits | b >> kLowBits << 16)};
    }
  }
};

__attribute__((target("avx2"))) __m256i JoinedSum(__m256i high, __m256i low) {
  return _mm256_srli_epi32(_mm256_add_epi32(_mm256_slli_epi32(high, kLowBits), low), kWeightBits);
}

}  // namespace

// Eight columns a step. The last weight of an odd number has a partner of 0, for which a pixel more is read.
__attribute__((target("avx2"))) int32_t detail::BlurColumnsAVX2(const TRGBA* source, const TKernel& kernel,
                                                                TRGBA* target, int32_t from, int32_t to) {
  constexpr int32_t kColumns = 8;
  if (to - from <= kColumns) return from;
  const TWeightPairs weights(kernel);
  if (!weights.Fit) return from;
  const __m256i zero = _mm256_setzero_si256();
  for (; from + kColumns < to; from += kColumns) {
    // Written out, since the compiler keeps sums in registers only so.
    __m256i low0 = zero, low1 = zero, low2 = zero, low3 = zero;
    __m256i high0 = zero, high1 = zero, high2 = zero, high3 = zero;
    const TRGBA* pixel = source + (from - kernel.Size);
    for (int32_t i = 0; i <= kernel.Size; ++i, pixel += 2) {
      const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixel));
      const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixel + 1));
      const __m256i ab0 = _mm256_unpacklo_epi8(a, b), ab1 = _mm256_unpackhi_epi8(a, b);
      const __m256i pair0 = _mm256_unpacklo_epi8(ab0, zero), pair1 = _mm256_unpackhi_epi8(ab0, zero);
      const __m256i pair2 = _mm256_unpacklo_epi8(ab1, zero), pair3 = _mm256_unpackhi_epi8(ab1, zero);
      const TWeightPair& weight = weights.Pairs[static_cast<size_t>(i)];
      const __m256i lowWeight = _mm256_set1_epi32(weight.Low), highWeight = _mm256_set1_epi32(weight.High);
      low0 = _mm256_add_epi32(low0, _mm256_madd_epi16(pair0, lowWeight));
      low1 = _mm256_add_epi32(low1, _mm256_madd_epi16(pair1, lowWeight));
      low2 = _mm256_add_epi32(low2, _mm256_madd_epi16(pair2, lowWeight));
      low3 = _mm256_add_epi32(low3, _mm256_madd_epi16(pair3, lowWeight));
      high0 = _mm256_add_epi32(high0, _mm256_madd_epi16(pair0, highWeight));
      high1 = _mm256_add_epi32(high1, _mm256_madd_epi16(pair1, highWeight));
      high2 = _mm256_add_epi32(high2, _mm256_madd_epi16(pair2, highWeight));
      high3 = _mm256_add_epi32(high3, _mm256_madd_epi16(pair3, highWeight));
    }
    const __m256i sum01 = _mm256_packs_epi32(JoinedSum(high0, low0), JoinedSum(high1, low1));
    const __m256i sum23 = _mm256_packs_epi32(JoinedSum(high2, low2), JoinedSum(high3, low3));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(target + from), _mm256_packus_epi16(sum01, sum23));
  }
  return from;
}

#endif

}  // namespace ht
