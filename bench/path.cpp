// The path data of an icon set (bench/fetch-icons): read, written, made of lines, turned, asked for points. Bytes are those
// of the data, items are paths.

#include <benchmark/benchmark.h>
#include <fstream>
#include <string>

#include "htcanvas/custompath.h"

using namespace ht;

namespace {

struct TIcons {
  std::vector<hstring> Data;
  std::vector<THtCustomPath> Paths;
  int64_t Bytes = 0;

  TIcons() {
    std::ifstream file(HT_BENCH_ICONS, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
      Data.push_back(HtFromUtf8(line));
      Bytes += static_cast<int64_t>(line.size());
    }
    Paths = std::vector<THtCustomPath>(Data.size());
    for (size_t i = 0; i < Data.size(); ++i) Paths[i].Parse(Data[i]);
  }
};

TIcons& Icons() {
  static TIcons icons;
  return icons;
}

template <class TWork>
void Run(benchmark::State& state, TWork work) {
  TIcons& icons = Icons();
  if (icons.Data.empty()) return state.SkipWithError("not fetched: bench/fetch-icons");
  for (auto _ : state)
    for (size_t i = 0; i < icons.Data.size(); ++i) work(icons.Data[i], icons.Paths[i]);
  state.SetBytesProcessed(icons.Bytes * state.iterations());
  state.SetItemsProcessed(static_cast<int64_t>(icons.Data.size()) * state.iterations());
}

void Parse(benchmark::State& state) {
  Run(state, [](const hstring& data, const THtCustomPath&) {
    THtCustomPath path;
    path.Parse(data);
    benchmark::DoNotOptimize(path.Count());
  });
}

void Print(benchmark::State& state) {
  Run(state, [](const hstring&, const THtCustomPath& path) { benchmark::DoNotOptimize(path.AsString()); });
}

void Flatten(benchmark::State& state) {
  Run(state, [](const hstring&, const THtCustomPath& path) {
    THtCustomPath lines;
    path.Flatten(.1f, lines);
    benchmark::DoNotOptimize(lines.Count());
  });
}

void Transform(benchmark::State& state) {
  THtMatrixData matrix;
  matrix.Rotate(30);
  Run(state, [&](const hstring&, const THtCustomPath& path) {
    THtCustomPath turned;
    turned.AddPath(path);
    turned.Transform(matrix);
    benchmark::DoNotOptimize(turned.Count());
  });
}

void HitTest(benchmark::State& state) {
  Run(state,
      [](const hstring&, const THtCustomPath& path) { benchmark::DoNotOptimize(path.ContainsPoint(8, 8)); });
}

BENCHMARK(Parse)->Unit(benchmark::kMicrosecond);
BENCHMARK(Print)->Unit(benchmark::kMicrosecond);
BENCHMARK(Flatten)->Unit(benchmark::kMicrosecond);
BENCHMARK(Transform)->Unit(benchmark::kMicrosecond);
BENCHMARK(HitTest)->Unit(benchmark::kMicrosecond);

}  // namespace
