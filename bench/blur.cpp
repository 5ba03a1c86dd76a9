// Blurring 1920 x 1080 pixels, whatever the radius. Bytes are those of the pixels; a copy of them shows what memory gives.

#include <benchmark/benchmark.h>
#include <cstring>
#include <vector>

#include "htcanvas/fastblur.h"

namespace {

constexpr int32_t kWidth = 1920, kHeight = 1080, kStride = kWidth * 4;

std::vector<uint8_t> Pixels() {
  std::vector<uint8_t> pixels(static_cast<size_t>(kStride) * kHeight);
  for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<uint8_t>(i * 2654435761u >> 13);
  return pixels;
}

void Blur(benchmark::State& state) {
  std::vector<uint8_t> pixels = Pixels();
  for (auto _ : state)
    ht::FastBlur(pixels.data(), kWidth, kHeight, kStride, {0, 0, kWidth, kHeight},
                 static_cast<int32_t>(state.range(0)));
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(pixels.size()));
}
BENCHMARK(Blur)->Arg(1)->Arg(4)->Arg(16)->Arg(64)->Arg(256)->ArgName("radius")->Unit(benchmark::kMillisecond);

void Copy(benchmark::State& state) {
  const std::vector<uint8_t> pixels = Pixels();
  std::vector<uint8_t> target(pixels.size());
  for (auto _ : state) {
    std::memcpy(target.data(), pixels.data(), pixels.size());
    benchmark::DoNotOptimize(target.data());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(pixels.size()));
}
BENCHMARK(Copy)->Unit(benchmark::kMillisecond);

}  // namespace
