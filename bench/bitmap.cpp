// Conversions of bitmaps, in bytes of the result a second; fills and copies of the same size say what memory gives.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstring>

#include "htcanvas/bitmapdata.h"
#include "htcanvas/bitmaprows.h"

using namespace ht;

namespace {

constexpr int32_t kWidth = 1920, kHeight = 1080;
constexpr int64_t kResult = int64_t{kWidth} * kHeight * 4;

THtBitmapBytes Noise(int32_t bits) {
  THtBitmapBytes bytes;
  bytes.SetLength(THtBitmapData::CalcStride(kWidth, bits) * kHeight);
  uint32_t x = 1;
  for (uint8_t& byte : bytes) byte = static_cast<uint8_t>((x = x * 1664525 + 1013904223) >> 24);
  return bytes;
}

// From a shared array to a new one, as decoders do it: fresh memory is part of the price.
template <class TOperation>
void Run(benchmark::State& state, int32_t bits, const TOperation& operation) {
  const THtBitmapBytes source = Noise(bits);
  for (auto _ : state) {
    THtBitmapData bitmap;
    bitmap.SetData(source, kWidth, kHeight, bits);
    operation(bitmap);
    benchmark::DoNotOptimize(bitmap.FData.Data());
  }
  state.SetBytesProcessed(state.iterations() * kResult);
}

void BM_To32(benchmark::State& state) {
  Run(state, static_cast<int32_t>(state.range(0)), [](THtBitmapData& bitmap) { bitmap.Convertto32(); });
}
BENCHMARK(BM_To32)->Arg(1)->Arg(4)->Arg(8)->Arg(16)->Arg(24);

void BM_To32WithMask(benchmark::State& state) {
  THtBitmapData mask;
  const auto bits = static_cast<int32_t>(state.range(0));
  mask.SetData(Noise(bits), kWidth, kHeight, bits);
  Run(state, 24, [&mask](THtBitmapData& bitmap) { bitmap.Convertto32Mask(mask); });
}
BENCHMARK(BM_To32WithMask)->Arg(1)->Arg(8);

void BM_SwapInPlace(benchmark::State& state) {
  Run(state, static_cast<int32_t>(state.range(0)), [](THtBitmapData& bitmap) { bitmap.BGRtoRGB(); });
}
BENCHMARK(BM_SwapInPlace)->Arg(24)->Arg(32);

void BM_CMYKNoise(benchmark::State& state) {
  Run(state, 32, [](THtBitmapData& bitmap) { bitmap.CMYKtoRGBA(); });
}
BENCHMARK(BM_CMYKNoise);

void BM_Clear(benchmark::State& state) {
  Run(state, 32, [](THtBitmapData& bitmap) { bitmap.Clear(0xFF102030); });
}
BENCHMARK(BM_Clear);

// Into memory that is there already: the routines of rows alone.
void BM_Rows24To32(benchmark::State& state) {
  const auto& rows = state.range(0) ? detail::HtBitmapRows() : detail::kPlainBitmapRows;
  const THtBitmapBytes source = Noise(24), target = Noise(32);
  for (auto _ : state) {
    rows.Rgb24To32(source.Data(), target.Data(), kWidth * kHeight);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kResult);
}
BENCHMARK(BM_Rows24To32)->ArgName("vector")->Arg(0)->Arg(1);

void BM_Memcpy(benchmark::State& state) {
  const THtBitmapBytes source = Noise(32), target = Noise(32);
  for (auto _ : state) {
    std::memcpy(target.Data(), source.Data(), kResult);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kResult);
}
BENCHMARK(BM_Memcpy);

}  // namespace
