// Splitting 1 MB of text in several scripts into runs.
#include <benchmark/benchmark.h>

#include "htcanvas/splitstring.h"

using namespace ht;

namespace {

constexpr std::u16string_view kLatin =
    u"The quick brown fox, 12.5 km/h, doesn't jump over 3 lazy dogs (again). ";
constexpr std::u16string_view kMixed =
    u"The quick brown fox, 12.5 km/h. \u0411\u044B\u0441\u0442\u0440\u0430\u044F "
    u"\u043B\u0438\u0441\u0430-\u4E2D\u6587\u5B57\u7B26\u3002\u5929\u6C14\u5F88\u597D\uFF0C "
    u"\u05E9\u05DC\u05D5\u05DD \u0645\u0631\u062D\u0628\u0627 100%\r\n";

void BM_SplitString(benchmark::State& state) {
  constexpr size_t kUnits = 1 << 19;  // 1 MB
  const std::u16string_view line = state.range(0) ? kMixed : kLatin;
  std::u16string text;
  while (text.size() < kUnits) text += line;
  const hstring whole = text;
  int64_t count = 0;
  for (auto _ : state) {
    THtTextRuns runs;
    HtSplitString(whole, runs);
    count = runs.GetCount();
    benchmark::DoNotOptimize(runs.GetRun(0));
  }
  state.SetBytesProcessed(state.iterations() * whole.Length() * 2);
  state.counters["runs"] = static_cast<double>(count);
}
BENCHMARK(BM_SplitString)->ArgName("mixed")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
