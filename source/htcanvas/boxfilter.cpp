#include "htcanvas/boxfilter.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "htutils/cpufeatures.h"

#if defined(__x86_64__)
#define HT_BOX_AVX2 1
#include <immintrin.h>
#endif

namespace ht::detail {

namespace {

constexpr int32_t kChannels = 4;

// Channels that lie side by side go through the same steps: `lanes` of them.
inline void Add(uint32_t* sums, const uint8_t* item, size_t lanes) {
  for (size_t i = 0; i < lanes; ++i) sums[i] += item[i];
}

// Writes the means and moves the windows on by one item.
inline void Step(uint32_t* sums, const uint8_t* leaves, const uint8_t* enters, uint8_t* target, size_t lanes,
                 const TBoxMean& mean) {
  for (size_t i = 0; i < lanes; ++i) {
    target[i] = mean.Of(sums[i]);
    sums[i] += static_cast<uint32_t>(enters[i]) - leaves[i];
  }
}

void RowPlain(const uint8_t* from, uint8_t* to, int32_t width, const TBoxMean& mean) {
  const auto radius = static_cast<int32_t>(mean.Radius);
  std::array<uint32_t, kChannels> sums{};
  const auto pixel = [from, width](int32_t x) {
    return from + kChannels * ptrdiff_t{std::clamp(x, 0, width - 1)};
  };
  for (int32_t x = -radius; x <= radius; ++x) Add(sums.data(), pixel(x), sums.size());
  for (int32_t x = 0; x < width; ++x, to += kChannels)
    Step(sums.data(), pixel(x - radius), pixel(x + radius + 1), to, sums.size(), mean);
}

void RowsPlain(const TPixelRows& from, const TPixelRows& to, int32_t width, int32_t height,
               const TBoxMean& mean) {
  for (int32_t y = 0; y < height; ++y) RowPlain(from.At(y), to.At(y), width, mean);
}

// All columns go down together, so that memory is read row by row. `add` and `step` are Add and Step, or do the same.
template <class TAdd, class TStep>
void ColumnsWith(const TPixelRows& from, const TPixelRows& to, int32_t width, int32_t height,
                 const TBoxMean& mean, const TAdd& add, const TStep& step) {
  const auto radius = static_cast<int32_t>(mean.Radius);
  const size_t lanes = static_cast<size_t>(width) * kChannels;
  std::vector<uint32_t> sums(lanes);
  const auto row = [&from, height](int32_t y) { return from.At(std::clamp(y, 0, height - 1)); };
  for (int32_t y = -radius; y <= radius; ++y) add(sums.data(), row(y), lanes);
  for (int32_t y = 0; y < height; ++y)
    step(sums.data(), row(y - radius), row(y + radius + 1), to.At(y), lanes, mean);
}

void ColumnsPlain(const TPixelRows& from, const TPixelRows& to, int32_t width, int32_t height,
                  const TBoxMean& mean) {
  ColumnsWith(from, to, width, height, mean, Add, Step);
}

}  // namespace

// The smallest factor that makes up for the shift; the error stays below one in 2^Shift for sums of 255 a channel.
TBoxMean::TBoxMean(int32_t radius) : Radius(static_cast<uint32_t>(radius)) {
  const uint64_t window = 2 * uint64_t{Radius} + 1;
  Shift = 30 + static_cast<int>(std::bit_width(window));
  Factor = static_cast<uint32_t>(((uint64_t{1} << Shift) + window - 1) / window);
}

const TBoxFilter kPlainBoxFilter{RowsPlain, ColumnsPlain};

#ifdef HT_BOX_AVX2

namespace {

#define HT_AVX2 __attribute__((target("avx2")))

HT_AVX2 inline __m256i Load8(const uint8_t* from) {
  return _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from)));
}

HT_AVX2 void AddVector(uint32_t* sums, const uint8_t* item, size_t lanes) {
  size_t i = 0;
  for (; i + 8 <= lanes; i += 8) {
    auto* place = reinterpret_cast<__m256i*>(sums + i);
    _mm256_storeu_si256(place, _mm256_add_epi32(_mm256_loadu_si256(place), Load8(item + i)));
  }
  Add(sums + i, item + i, lanes - i);
}

// The means of eight sums as eight bytes.
HT_AVX2 inline __m128i Means8(__m256i sums, __m256i radius, __m256i factor, __m128i shift) {
  const __m256i rounded = _mm256_add_epi32(sums, radius);
  const __m256i even = _mm256_srl_epi64(_mm256_mul_epu32(rounded, factor), shift);
  const __m256i odd = _mm256_srl_epi64(_mm256_mul_epu32(_mm256_srli_epi64(rounded, 32), factor), shift);
  const __m256i means = _mm256_or_si256(even, _mm256_slli_epi64(odd, 32));
  const __m128i words = _mm_packus_epi32(_mm256_castsi256_si128(means), _mm256_extracti128_si256(means, 1));
  return _mm_packus_epi16(words, words);
}

HT_AVX2 void StepVector(uint32_t* sums, const uint8_t* leaves, const uint8_t* enters, uint8_t* target,
                        size_t lanes, const TBoxMean& mean) {
  const __m256i radius = _mm256_set1_epi32(static_cast<int32_t>(mean.Radius));
  const __m256i factor = _mm256_set1_epi32(static_cast<int32_t>(mean.Factor));
  const __m128i shift = _mm_cvtsi32_si128(mean.Shift);
  size_t i = 0;
  for (; i + 8 <= lanes; i += 8) {
    auto* place = reinterpret_cast<__m256i*>(sums + i);
    const __m256i sum = _mm256_loadu_si256(place);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(target + i), Means8(sum, radius, factor, shift));
    _mm256_storeu_si256(place, _mm256_sub_epi32(_mm256_add_epi32(sum, Load8(enters + i)), Load8(leaves + i)));
  }
  Step(sums + i, leaves + i, enters + i, target + i, lanes - i, mean);
}

void ColumnsVector(const TPixelRows& from, const TPixelRows& to, int32_t width, int32_t height,
                   const TBoxMean& mean) {
  ColumnsWith(from, to, width, height, mean, AddVector, StepVector);
}

// One pixel of each of two rows.
HT_AVX2 inline __m256i LoadPair(const uint8_t* a, const uint8_t* b) {
  int32_t first, second;
  std::memcpy(&first, a, sizeof first);
  std::memcpy(&second, b, sizeof second);
  return _mm256_cvtepu8_epi32(_mm_insert_epi32(_mm_cvtsi32_si128(first), second, 1));
}

HT_AVX2 void TwoRows(const TPixelRows& from, const TPixelRows& to, int32_t y, int32_t width,
                     const TBoxMean& mean) {
  const __m256i radius = _mm256_set1_epi32(static_cast<int32_t>(mean.Radius));
  const __m256i factor = _mm256_set1_epi32(static_cast<int32_t>(mean.Factor));
  const __m128i shift = _mm_cvtsi32_si128(mean.Shift);
  const uint8_t *a = from.At(y), *b = from.At(y + 1);
  uint8_t *toA = to.At(y), *toB = to.At(y + 1);
  const auto r = static_cast<int32_t>(mean.Radius);
  __m256i sums = _mm256_setzero_si256();
  for (int32_t x = -r; x <= r; ++x) {
    const ptrdiff_t at = kChannels * ptrdiff_t{std::max(x, 0)};
    sums = _mm256_add_epi32(sums, LoadPair(a + at, b + at));
  }
  for (int32_t x = 0; x < width; ++x) {
    const ptrdiff_t leaves = kChannels * ptrdiff_t{std::max(x - r, 0)};
    const ptrdiff_t enters = kChannels * ptrdiff_t{std::min(x + r + 1, width - 1)};
    const __m128i means = Means8(sums, radius, factor, shift);
    const int32_t meanA = _mm_cvtsi128_si32(means), meanB = _mm_extract_epi32(means, 1);
    std::memcpy(toA + kChannels * ptrdiff_t{x}, &meanA, sizeof meanA);
    std::memcpy(toB + kChannels * ptrdiff_t{x}, &meanB, sizeof meanB);
    sums = _mm256_add_epi32(sums, LoadPair(a + enters, b + enters));
    sums = _mm256_sub_epi32(sums, LoadPair(a + leaves, b + leaves));
  }
}

void RowsVector(const TPixelRows& from, const TPixelRows& to, int32_t width, int32_t height,
                const TBoxMean& mean) {
  int32_t y = 0;
  for (; y + 2 <= height; y += 2) TwoRows(from, to, y, width, mean);
  if (y < height) RowPlain(from.At(y), to.At(y), width, mean);
}

constexpr TBoxFilter kVectorBoxFilter{RowsVector, ColumnsVector};

}  // namespace

const TBoxFilter* HtVectorBoxFilter() { return HtCPUFeatures().AVX2 ? &kVectorBoxFilter : nullptr; }

#else

const TBoxFilter* HtVectorBoxFilter() { return nullptr; }

#endif

}  // namespace ht::detail
