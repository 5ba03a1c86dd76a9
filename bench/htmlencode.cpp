// Escaping of text content into a builder. Bytes a second are those of the UTF-16 text read.

#include <benchmark/benchmark.h>

#include "htmlpars/htmlpars.h"
#include "htutils/htutils.h"

using namespace ht;

namespace {

// A megabyte of a short text, over and over.
hstring Repeated(std::u16string_view piece) {
  std::u16string text;
  while (text.size() < 500000) text += piece;
  return hstring(std::u16string_view(text));
}

void BM_AppendEncoded(benchmark::State& state, std::u16string_view piece) {
  const hstring text = Repeated(piece);
  for (auto _ : state) {
    TFastString builder(65535);
    HtAppendEncoded(builder, text);
    benchmark::DoNotOptimize(builder.GetTotalLen());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.Size() * sizeof(char16_t)));
}
BENCHMARK_CAPTURE(BM_AppendEncoded, latin, u"A sentence without anything to escape; there are many. ");
BENCHMARK_CAPTURE(BM_AppendEncoded, cyrillic,
                  u"\u041F\u0440\u0435\u0434\u043B\u043E\u0436\u0435\u043D\u0438\u0435. ");
BENCHMARK_CAPTURE(BM_AppendEncoded, chinese, u"\u4E2D\u6587\u53E5\u5B50\uFF0C\u5F88\u591A\u3002");
BENCHMARK_CAPTURE(BM_AppendEncoded, code, u"if (a < b && c->d > 0) return f(a, b) & mask;\n");
BENCHMARK_CAPTURE(BM_AppendEncoded, symbols, u"x \u2192 y \u2264 z, \u221A2 \u2260 \u00BD \u2026 ");

// The same with the search for units to escape alone.
void BM_Overhead(benchmark::State& state) {
  const hstring text = Repeated(u"A sentence without anything to escape; there are many. ");
  for (auto _ : state) benchmark::DoNotOptimize(HtmlEncodeNodeOverhead(text));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.Size() * sizeof(char16_t)));
}
BENCHMARK(BM_Overhead);

}  // namespace
