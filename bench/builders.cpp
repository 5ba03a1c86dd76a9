// Appending to the text builders, beside std::u16string and std::string. Each round builds about a million units and
// takes the whole text at the end; rates are units (or numbers) a second.

#include <benchmark/benchmark.h>
#include <random>
#include <string>
#include <vector>

#include "htutils/fastrawstring.h"
#include "htutils/faststring.h"

using namespace ht;

namespace {

constexpr int32_t kChunk = 65535;
constexpr size_t kUnits = 1 << 20;

// Pieces of `least` to `most` units, about kUnits together.
std::vector<std::u16string> Pieces(size_t least, size_t most) {
  std::mt19937 random(1);
  std::vector<std::u16string> pieces;
  for (size_t total = 0; total < kUnits; total += pieces.back().size())
    pieces.emplace_back(least + random() % (most - least + 1), static_cast<char16_t>(u'a' + random() % 26));
  return pieces;
}

struct TOurs {
  TFastString S{kChunk};
  void Add(std::u16string_view text) { S.Add(text); }
  void AddChar(char16_t c) { S.AddChar(c); }
  hstring Result() { return S.GetAsString(); }
};

struct TStd {
  std::u16string S;
  void Add(std::u16string_view text) { S.append(text); }
  void AddChar(char16_t c) { S.push_back(c); }
  std::u16string Result() { return S; }
};

template <class TBuilder>
void Texts(benchmark::State& state) {
  const auto pieces = Pieces(static_cast<size_t>(state.range(0)), static_cast<size_t>(state.range(1)));
  for (auto _ : state) {
    TBuilder builder;
    for (const std::u16string& piece : pieces) builder.Add(piece);
    benchmark::DoNotOptimize(builder.Result());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kUnits));
}
BENCHMARK_TEMPLATE(Texts, TOurs)->Args({1, 4})->Args({1, 16})->Args({50, 500});
BENCHMARK_TEMPLATE(Texts, TStd)->Args({1, 4})->Args({1, 16})->Args({50, 500});

template <class TBuilder>
void Chars(benchmark::State& state) {
  const std::u16string text(kUnits, u'x');
  for (auto _ : state) {
    TBuilder builder;
    for (char16_t c : text) builder.AddChar(c);
    benchmark::DoNotOptimize(builder.Result());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kUnits));
}
BENCHMARK_TEMPLATE(Chars, TOurs);
BENCHMARK_TEMPLATE(Chars, TStd);

// A tag with a literal, a name and a number, as a serializer writes them.
template <class TBuilder>
void Markup(benchmark::State& state) {
  const std::u16string name = u"section";
  for (auto _ : state) {
    TBuilder builder;
    for (size_t i = 0; i < kUnits / 16; ++i) {
      builder.AddChar(u'<');
      builder.Add(name);
      builder.Add(u" id=\"");
      builder.AddChar(u'1');
      builder.Add(u"\">");
    }
    benchmark::DoNotOptimize(builder.Result());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kUnits));
}
BENCHMARK_TEMPLATE(Markup, TOurs);
BENCHMARK_TEMPLATE(Markup, TStd);

void Integers(benchmark::State& state) {
  for (auto _ : state) {
    TFastString s(kChunk);
    for (int64_t i = 0; i < 100000; ++i) s.Add(i * 7919);
    benchmark::DoNotOptimize(s.GetTotalLen());
  }
  state.SetItemsProcessed(state.iterations() * 100000);
}
BENCHMARK(Integers);

void Doubles(benchmark::State& state) {
  for (auto _ : state) {
    TFastString s(kChunk);
    for (int i = 0; i < 100000; ++i) s.Add(i * 0.37, 2, true);
    benchmark::DoNotOptimize(s.GetTotalLen());
  }
  state.SetItemsProcessed(state.iterations() * 100000);
}
BENCHMARK(Doubles);

void Utf8(benchmark::State& state) {
  // Latin with some accents; Cyrillic; CJK.
  const std::u16string_view texts[] = {u"The naïve café serves a crème brûlée. ",
                                       u"Съешь же ещё этих мягких булок. ", u"いろはにほへとちりぬるを"};
  std::u16string text;
  while (text.size() < kUnits) text += texts[state.range(0)];
  for (auto _ : state) {
    TFastRawString s(kChunk);
    s.AddUTF8(text);
    benchmark::DoNotOptimize(s.GetTotalLen());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(Utf8)->DenseRange(0, 2);

}  // namespace
