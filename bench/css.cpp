// Style sheets as text: tokens, rules, and text again. Inputs: a generated sheet of 10,000 rules and, where it was
// fetched (bench/fetch-sheets), a sheet of the web. Bytes are those of the UTF-8 text.

#include <benchmark/benchmark.h>
#include <fstream>
#include <iterator>
#include <string>

#include "htmlcss/cssparser.h"
#include "htmlcss/stylesheet.h"
#ifdef HT_PEER_MYCSS
#include <mycss/entry.h>
#include <mycss/mycss.h>
#include <mycss/stylesheet.h>
#endif
#include "support/litehtmlpage.h"

using namespace ht;

namespace {

std::string GenerateSheet() {
  const char* const kTags[] = {"div", "p", "a", "td", "ul", "h1"};
  std::string text;
  for (int i = 0; i < 10000; ++i) {
    const std::string n = std::to_string(i);
    text += std::string(kTags[i % 6]) + ".c" + n + (i % 3 ? " > .inner a:hover" : ", #id" + n) + " {\n";
    text += "  color: #" + std::to_string(100000 + i % 900000).substr(0, 6) +
            ";\n  margin: " + std::to_string(i % 40) + "px auto;\n";
    if (i % 2) text += "  font: italic bold " + std::to_string(8 + i % 20) + "px/1.5 Arial, sans-serif;\n";
    if (i % 4 == 0)
      text += "  background: url(img/" + n + ".png) no-repeat rgba(1, 2, 3, .5);\n  display: inline-block;\n";
    text += "  border-bottom: 1px solid red;\n  width: 50%;\n}\n";
  }
  return text;
}

const std::string& Sheet(bool web) {
  static const std::string generated = GenerateSheet();
  static const std::string fetched = [] {
    std::ifstream file(HT_BENCH_SHEET, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }();
  return web ? fetched : generated;
}

bool Skips(benchmark::State& state) {
  if (!Sheet(state.range(0)).empty()) return false;
  state.SkipWithError("not fetched: bench/fetch-sheets");
  return true;
}

template <class TWork>
void Run(benchmark::State& state, TWork work) {
  if (Skips(state)) return;
  const std::string& bytes = Sheet(state.range(0));
  for (auto _ : state) work(bytes);
  state.SetBytesProcessed(static_cast<int64_t>(bytes.size()) * state.iterations());
}

void Tokenize(benchmark::State& state) {
  const hstring text = HtFromUtf8(Sheet(state.range(0)));
  Run(state, [&](const std::string&) {
    TCSSTokenizer tokenizer(text, true);
    int64_t count = 0;
    while (tokenizer.NextToken()) ++count;
    benchmark::DoNotOptimize(count);
  });
}

void ParseText(benchmark::State& state) {
  const hstring text = HtFromUtf8(Sheet(state.range(0)));
  Run(state, [&](const std::string&) {
    TCSSStyleSheet sheet;
    sheet.Parse(text);
    benchmark::DoNotOptimize(sheet.GetSection(0));
  });
}

// With the conversion from UTF-8, as the peers read it.
void ParseBytes(benchmark::State& state) {
  Run(state, [](const std::string& bytes) {
    TCSSStyleSheet sheet;
    sheet.Parse(HtFromUtf8(bytes));
    benchmark::DoNotOptimize(sheet.GetSection(0));
  });
}

void AsString(benchmark::State& state) {
  TCSSStyleSheet sheet;
  sheet.Parse(HtFromUtf8(Sheet(state.range(0))));
  Run(state, [&](const std::string&) { benchmark::DoNotOptimize(sheet.AsString()); });
}

void Minify(benchmark::State& state) {
  TCSSStyleSheet sheet;
  sheet.Parse(HtFromUtf8(Sheet(state.range(0))));
  Run(state, [&](const std::string&) { sheet.Minify(); });
}

#define HT_BENCH(name) BENCHMARK(name)->ArgName("web")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond)
HT_BENCH(Tokenize);
HT_BENCH(ParseText);
HT_BENCH(ParseBytes);
HT_BENCH(AsString);
HT_BENCH(Minify);

#ifdef HT_PEER_MYCSS
void MyCSS(benchmark::State& state) {
  Run(state, [](const std::string& bytes) {
    mycss_t* css = mycss_create();
    mycss_init(css);
    mycss_entry_t* entry = mycss_entry_create();
    mycss_entry_init(css, entry);
    mycss_parse(entry, MyENCODING_UTF_8, bytes.data(), bytes.size());
    benchmark::DoNotOptimize(mycss_entry_stylesheet(entry));
    mycss_stylesheet_destroy(mycss_entry_stylesheet(entry), true);
    mycss_entry_destroy(entry, true);
    mycss_destroy(css, true);
  });
}
HT_BENCH(MyCSS);
#endif

#ifdef HT_PEER_LITEHTML
void LiteHtml(benchmark::State& state) {
  Run(state, [](const std::string& bytes) {
    litehtml::css sheet;
    sheet.parse_stylesheet(bytes.c_str(), nullptr, nullptr, nullptr);
    benchmark::DoNotOptimize(sheet.selectors().size());
  });
}
HT_BENCH(LiteHtml);
#endif

}  // namespace
