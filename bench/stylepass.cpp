// From the texts of a page and a sheet to the style of every element: a page of 1 MB with a web site's sheet embedded in
// it, by default Bootstrap as bench/fetch-sheets gets it; HTCORE_BENCH_SHEET names another. Items are elements; all
// start from the same UTF-8 bytes. bench/stylepass-chromium does the same in a headless Chromium with the page that
// goes to the file HTCORE_BENCH_WRITE.

#include <benchmark/benchmark.h>

#include "document/document.h"
#include "support/litehtmlpage.h"
#include "support/pages.h"

using namespace ht;

namespace {

const std::string& Sheet() {
  static const std::string kSheet = [] {
    const char* name = std::getenv("HTCORE_BENCH_SHEET");
    return bench::ReadFile(name ? name : HT_BENCH_SHEET);
  }();
  return kSheet;
}

// The sheet, and `times` - 1 times as many rules of the same kinds for classes that no page has.
std::string SheetAmongOthers(int64_t times) {
  std::string sheet = Sheet();
  const auto rules = static_cast<int64_t>(std::count(sheet.begin(), sheet.end(), '{'));
  for (int64_t i = 0; i < rules * (times - 1); ++i) {
    const std::string n = std::to_string(i);
    static constexpr const char* kKinds[] = {".gen-%>.item", "p.gen-%", "#gen-%", ".gen-%:hover",
                                             ".para .gen-%"};
    std::string rule = kKinds[i % 5];
    sheet += rule.replace(rule.find('%'), 1, n) + "{color:#369;margin:1px 2px}\n";
  }
  return sheet;
}

std::string PageWith(const std::string& sheet) {
  std::string page = bench::GeneratePage(1 << 20);
  return page.insert(page.find("</head>"), "<style>" + sheet + "</style>");
}
const std::string& Page() {
  static const std::string kPage = [] {
    const char* copy = std::getenv("HTCORE_BENCH_WRITE");
    std::string page = PageWith(Sheet());
    if (copy) std::ofstream(copy, std::ios::binary) << page;
    return page;
  }();
  return kPage;
}

bool Begin(benchmark::State& state) {
  if (Sheet().empty()) state.SkipWithError("no sheet: bench/fetch-sheets");
  return !Sheet().empty();
}

template <class TVisit>
int64_t ForElements(TDocument& document, const TVisit& visit) {
  int64_t count = 0;
  for (THtNode* node = &document; node; node = node->NextNodeBelow(&document))
    if (auto* element = static_cast<TDocumentNode*>(node); element->IsElement()) {
      visit(*element->Style());
      ++count;
    }
  return count;
}

template <auto... Getters>
void ReadLengths(TDocumentStyle& style, float& sum) {
  TMeasure measure;
  ((style.*Getters)(measure), ...);
  sum += measure.FValue;
}

// Of all sorts: set and unset, inherited and not.
void ReadTwenty(TDocumentStyle& style, float& sum) {
  using S = TDocumentStyle;
  ReadLengths<&S::Width, &S::Height, &S::MarginTop, &S::MarginRight, &S::PaddingLeft, &S::LineHeight,
              &S::TextIndent, &S::BorderTopWidth, &S::MaxWidth>(style, sum);
  sum += style.IntFontSize + style.Opacity() + static_cast<float>(style.ZIndex);
  sum += static_cast<float>(style.TextColor() + style.BackgroundColor());
  for (int word : {int{style.TextAlign()}, int{style.FDisplay}, int{style.Float()}, int{style.Cursor()},
                   int{style.VerticalAlign()}, int{style.BoxSizing()}})
    sum += static_cast<float>(word);
}

void Read(TDocumentStyle& style, int64_t properties, float& sum) {
  if (properties == 1) sum += static_cast<float>(style.TextColor());
  if (properties == 20) ReadTwenty(style, sum);
}

void BM_TextsToStyles(benchmark::State& state) {
  if (!Begin(state)) return;
  int64_t elements = 0;
  float sum = 0;
  for (auto _ : state) {
    TDocument document;
    document.Parse(HtFromUtf8(Page()), true);
    document.UpdateStyles();
    elements = ForElements(document, [&](TDocumentStyle& style) { Read(style, state.range(0), sum); });
  }
  benchmark::DoNotOptimize(sum);
  state.SetItemsProcessed(state.iterations() * elements);
}
BENCHMARK(BM_TextsToStyles)->ArgName("properties")->Arg(1)->Arg(20)->Unit(benchmark::kMillisecond);

#ifdef HT_PEER_LITEHTML
constexpr const char* kTwenty[] = {
    "color",        "width",       "height",      "margin-top",       "margin-right",
    "padding-left", "line-height", "text-indent", "border-top-width", "max-width",
    "font-size",    "opacity",     "z-index",     "background-color", "text-align",
    "display",      "float",       "cursor",      "vertical-align",   "box-sizing"};

int64_t ReadAll(const litehtml::element::ptr& element, int64_t properties, size_t& sum) {
  int64_t count = 1;
  for (int64_t i = 0; i < properties; ++i)
    if (const char* value = element->get_style_property(kTwenty[i], true))
      sum += static_cast<unsigned char>(*value);
  const int children = static_cast<int>(element->get_children_count());
  for (int i = 0; i < children; ++i)
    if (const auto child = element->get_child(i); child->get_tagName() && *child->get_tagName())
      count += ReadAll(child, properties, sum);
  return count;
}

void BM_TextsToStylesLiteHtml(benchmark::State& state) {
  if (!Begin(state)) return;
  int64_t elements = 0;
  size_t sum = 0;
  for (auto _ : state) {
    const bench::TLiteHtmlPage page(Page());
    elements = ReadAll(page.Root(), state.range(0), sum);
  }
  benchmark::DoNotOptimize(sum);
  state.SetItemsProcessed(state.iterations() * elements);
}
BENCHMARK(BM_TextsToStylesLiteHtml)->ArgName("properties")->Arg(1)->Arg(20)->Unit(benchmark::kMillisecond);
#endif

// The pass alone: all elements, among `times` as many rules.
void BM_Pass(benchmark::State& state) {
  if (!Begin(state)) return;
  TDocument document;
  document.Parse(HtFromUtf8(PageWith(SheetAmongOthers(state.range(0)))), true);
  document.UpdateStyles();
  int64_t elements = 0;
  for (auto _ : state) {
    document.StyleChanged(true);
    elements += document.UpdateStyles().Resolved;
  }
  state.SetItemsProcessed(elements);
}
BENCHMARK(BM_Pass)->ArgName("times")->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

// One class of one element in the middle, there and back.
void BM_OneChange(benchmark::State& state) {
  if (!Begin(state)) return;
  TDocument document;
  document.Parse(HtFromUtf8(Page()), true);
  document.UpdateStyles();
  const TIntf<IHtNodeList> paragraphs = document.JQuery(u"p"_hs);
  auto* element = static_cast<TDocumentNode*>(paragraphs->GetNode(paragraphs->GetCount() / 2));
  for (auto _ : state) {
    element->ToggleClass(u"text-muted"_hs);
    benchmark::DoNotOptimize(document.UpdateStyles().Resolved);
  }
}
BENCHMARK(BM_OneChange)->Unit(benchmark::kMicrosecond);

void BM_ReadUnset(benchmark::State& state) {
  if (!Begin(state)) return;
  TDocument document;
  document.Parse(HtFromUtf8(Page()), true);
  document.UpdateStyles();
  int64_t elements = 0;
  float sum = 0;
  for (auto _ : state)
    elements +=
        ForElements(document, [&](TDocumentStyle& style) { sum += static_cast<float>(style.TableLayout()); });
  benchmark::DoNotOptimize(sum);
  state.SetItemsProcessed(elements);
}
BENCHMARK(BM_ReadUnset)->Unit(benchmark::kMicrosecond);

}  // namespace
