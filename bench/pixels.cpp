// Rows of pixels: the blur against its plain form, and fills against the standard library's.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <bit>
#include <vector>

#include "htutils/blur.h"
#include "htutils/fill.h"

using namespace ht;

namespace {

constexpr int32_t kWidth = 2000;

std::vector<TRGBA> Row() {
  std::vector<TRGBA> row(kWidth);
  uint32_t x = 1;
  for (TRGBA& pixel : row) pixel = std::bit_cast<TRGBA>(x = x * 1664525 + 1013904223);
  return row;
}

TKernel KernelOfSize(int32_t size) {
  TKernel kernel;
  for (double radius = 0.2; kernel.Size < size; radius += 0.1) MakeGaussianKernel(kernel, radius, 255, 1);
  return kernel;
}

void BM_BlurRow(benchmark::State& state) {
  const std::vector<TRGBA> source = Row();
  std::vector<TRGBA> target(source.size());
  const TKernel kernel = KernelOfSize(static_cast<int32_t>(state.range(0)));
  for (auto _ : state) {
    BlurRow(source.data(), kWidth - 1, kernel, target.data(), 0, kWidth - 1, -1, -1);
    benchmark::DoNotOptimize(target.data());
  }
  state.SetItemsProcessed(state.iterations() * kWidth);
}
BENCHMARK(BM_BlurRow)->Arg(2)->Arg(10)->Arg(29);

void BM_BlurRowPlain(benchmark::State& state) {
  const std::vector<TRGBA> source = Row();
  std::vector<TRGBA> target(source.size());
  const TKernel kernel = KernelOfSize(static_cast<int32_t>(state.range(0)));
  for (auto _ : state) {
    for (int32_t x = kernel.Size; x < kWidth - kernel.Size; ++x) {
      uint32_t b = 0, g = 0, r = 0, a = 0;
      for (int32_t n = -kernel.Size; n <= kernel.Size; ++n) {
        const TRGBA& pixel = source[static_cast<size_t>(x + n)];
        const uint32_t weight = kernel.IWeights[static_cast<size_t>(n + kLargestKernelSize)];
        b += pixel.b * weight, g += pixel.g * weight, r += pixel.r * weight, a += pixel.a * weight;
      }
      target[static_cast<size_t>(x)] = {static_cast<uint8_t>(b >> 24), static_cast<uint8_t>(g >> 24),
                                        static_cast<uint8_t>(r >> 24), static_cast<uint8_t>(a >> 24)};
    }
    benchmark::DoNotOptimize(target.data());
  }
  state.SetItemsProcessed(state.iterations() * kWidth);
}
BENCHMARK(BM_BlurRowPlain)->Arg(2)->Arg(10)->Arg(29);

template <class TFill>
void Fill(benchmark::State& state, TFill fill) {
  const auto count = static_cast<int32_t>(state.range(0));
  std::vector<uint32_t> words(static_cast<size_t>(count));
  uint32_t value = 0;
  for (auto _ : state) {
    fill(++value, words.data(), count);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * count * 4);
}

void BM_HtFillLong(benchmark::State& state) { Fill(state, HtFillLong); }
void BM_StdFill(benchmark::State& state) {
  Fill(state, [](uint32_t value, uint32_t* words, int32_t count) { std::fill_n(words, count, value); });
}
BENCHMARK(BM_HtFillLong)->Arg(3)->Arg(31)->Arg(200)->Arg(10000);
BENCHMARK(BM_StdFill)->Arg(3)->Arg(31)->Arg(200)->Arg(10000);

}  // namespace
