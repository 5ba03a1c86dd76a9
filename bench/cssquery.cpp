// What a query costs: the declarations for every element of a page of 1 MB, from a sheet and from the same sheet among
// ten and a hundred times as many rules that no element meets; and selectors over the whole tree. Items are elements.
// `allocs` counts the allocations of one pass. The sheet of the web is what bench/fetch-sheets gets, or HTCORE_BENCH_SHEET.

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <new>

#include "htmlcss/elementstyle.h"
#include "htmlcss/htmlcss.h"
#include "htmlcss/styledhtmlnode.h"
#include "support/pages.h"

using namespace ht;

namespace {
int64_t allocations = 0;
}

// Where these are expanded in place, g++ takes the pair of new and free for a fault.
[[gnu::noinline]] void* operator new(size_t bytes) {
  ++allocations;
  if (void* block = std::malloc(bytes)) return block;
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete(void* block, size_t) noexcept { std::free(block); }

namespace {

class TPageNode final : public TStyledHTMLNode {
  HT_CLASS(TPageNode, TStyledHTMLNode)

 public:
  TPageNode() { TPageNode::CreateStyle(); }
  const TClass* GetStyleClass() const override { return TBaseElementStyle::Class(); }
};

struct TPage {
  TPageNode Root;
  std::vector<TStyledHTMLNode*> Elements;

  TPage() {
    Root.Parse(HtFromUtf8(bench::GeneratePage(1 << 20)), true);
    for (THtNode* node = &Root; node; node = node->NextNodeBelow(&Root))
      if (!node->GetTag().Empty()) Elements.push_back(static_cast<TStyledHTMLNode*>(node));
  }
};

TPage& Page() {
  static TPage page;
  return page;
}

// Rules by class, tag and class, id, attribute and chains, for names that no page has.
std::string OtherRules(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    const std::string n = std::to_string(i);
    switch (i % 5) {
      case 0: text += ".gen-" + n + " > .item"; break;
      case 1: text += "p.gen-" + n; break;
      case 2: text += "#gen-" + n; break;
      case 3: text += "[data-gen-" + n + "=x]"; break;
      case 4: text += ".para .gen-" + n + ":hover"; break;
    }
    text += "{color:#336699;margin:1px 2px}\n";
  }
  return text;
}

const char kPlainRules[] =
    "p{color:black}a{color:blue}li{margin:1px}td{padding:2px}.para{text-indent:1em}.section{margin-left:3px}"
    ".reference{text-decoration:none}.internal{color:navy}table.docutils{border:solid "
    "1px}#s7{color:red}#s99{top:1px}";

int32_t SelectorCount(const TCSSStyleSheet& sheet) {
  return sheet.SelectorCounter < 10000 ? sheet.SelectorCounter : sheet.SelectorCounter - 10000;
}

void RunPass(benchmark::State& state, const TCSSStyleSheet& sheet) {
  TPage& page = Page();
  TCSSWeightList list;
  int64_t met = 0, found = 0, allocated = 0;
  for (auto _ : state) {
    met = found = 0;
    const int64_t before = allocations;
    for (TStyledHTMLNode* element : page.Elements) {
      list.Clear();
      sheet.GetElementSelectors(*element, list, &sheet.Main, {});
      met += list.GetCount() > 0;
      found += list.GetCount();
    }
    allocated = allocations - before;
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * page.Elements.size()));
  state.counters["selectors"] = SelectorCount(sheet);
  state.counters["met"] = static_cast<double>(met);
  state.counters["found"] = static_cast<double>(found);
  state.counters["allocs"] = static_cast<double>(allocated);
}

// `base` among `factor` times as many rules.
void RunAmongOthers(benchmark::State& state, const std::string& base) {
  TCSSStyleSheet sheet;
  sheet.Parse(HtFromUtf8(base));
  const auto others = static_cast<int>(SelectorCount(sheet) * (state.range(0) - 1));
  sheet.Parse(HtFromUtf8(OtherRules(others)));
  RunPass(state, sheet);
}

void BM_Plain(benchmark::State& state) { RunAmongOthers(state, kPlainRules); }
BENCHMARK(BM_Plain)->ArgName("times")->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

void BM_WebSheet(benchmark::State& state) {
  const char* name = std::getenv("HTCORE_BENCH_SHEET");
  const std::string sheet = bench::ReadFile(name ? name : HT_BENCH_SHEET);
  if (sheet.empty()) return state.SkipWithError("no sheet: run bench/fetch-sheets");
  RunAmongOthers(state, sheet);
}
BENCHMARK(BM_WebSheet)->ArgName("times")->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);

void BM_DefaultSheet(benchmark::State& state) { RunPass(state, HTML4StyleSheet()); }
BENCHMARK(BM_DefaultSheet)->Unit(benchmark::kMicrosecond);

void BM_NothingFound(benchmark::State& state) {
  TCSSStyleSheet sheet;
  sheet.Parse(HtFromUtf8(OtherRules(static_cast<int>(state.range(0)))));
  RunPass(state, sheet);
}
BENCHMARK(BM_NothingFound)->ArgName("rules")->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);

const char16_t* const kQueries[] = {u"p",
                                    u".para",
                                    u"#s500",
                                    u"div.section",
                                    u"table td",
                                    u"ul > li",
                                    u"a[href]",
                                    u"a.reference code",
                                    u"h2 + p",
                                    u"h2 ~ ul",
                                    u"li:nth-child(2)",
                                    u"td:nth-child(odd)",
                                    u"p:not(.para)",
                                    u"*",
                                    u"[title=Go]",
                                    u".level1 .para a",
                                    u"div > table.docutils tr > td > i",
                                    u"h2, h3, h4",
                                    u".none .such",
                                    u"body b"};

void BM_JQuery(benchmark::State& state) {
  const hstring query = kQueries[state.range(0)];
  Page();
  int64_t found = 0;
  for (auto _ : state) found = Page().Root.JQuery(query)->GetCount();
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * Page().Elements.size()));
  state.counters["found"] = static_cast<double>(found);
  state.SetLabel(HtToUtf8(query));
}
BENCHMARK(BM_JQuery)->DenseRange(0, std::size(kQueries) - 1)->Unit(benchmark::kMicrosecond);

void BM_JQueryAll(benchmark::State& state) {
  Page();
  for (auto _ : state)
    for (const char16_t* query : kQueries) benchmark::DoNotOptimize(Page().Root.JQuery(query)->GetCount());
}
BENCHMARK(BM_JQueryAll)->Unit(benchmark::kMicrosecond);

}  // namespace
