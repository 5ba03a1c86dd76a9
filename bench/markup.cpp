// Parsing, printing, text and queries, beside other readers of HTML where they are installed. All start from the same
// UTF-8 bytes; bytes a second are those of the page (parsing, text, queries) or of the UTF-16 text written (printing).

#include <benchmark/benchmark.h>

#include "htmlpars/htmlpars.h"
#include "htruntime/numformat.h"
#include "htutils/faststring.h"
#include "support/pages.h"

#ifdef HT_PEER_GUMBO
#include <gumbo.h>
#endif
#ifdef HT_PEER_LIBXML2
#include <libxml/HTMLparser.h>
#include <libxml/HTMLtree.h>
#endif
#ifdef HT_PEER_MYHTML
#include <myhtml/api.h>
#endif

using namespace ht;

namespace {

enum TPage { pgOneMegabyte, pgTenMegabytes, pgReal };

const std::string& Page(int64_t which) {
  static const std::string kPages[] = {bench::GeneratePage(1 << 20), bench::GeneratePage(10 << 20),
                                       bench::RealPage()};
  return kPages[which];
}

bool Begin(benchmark::State& state) {
  if (Page(state.range(0)).empty()) state.SkipWithError("no real page here");
  return !Page(state.range(0)).empty();
}

void End(benchmark::State& state, size_t bytes) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
}

#define HT_EVERY_PAGE \
  ArgName("page")->Arg(pgOneMegabyte)->Arg(pgTenMegabytes)->Arg(pgReal)->Unit(benchmark::kMicrosecond)

// --- parsing ---

void BM_ParseAndFree(benchmark::State& state) {
  if (!Begin(state)) return;
  const std::string& bytes = Page(state.range(0));
  for (auto _ : state) {
    THtmlNode root;
    root.Parse(HtFromUtf8(bytes), true);
    benchmark::DoNotOptimize(root.GetCount());
  }
  End(state, bytes.size());
}
BENCHMARK(BM_ParseAndFree)->HT_EVERY_PAGE;

void BM_ParseAndFreeUtf16(benchmark::State& state) {
  if (!Begin(state)) return;
  const hstring text = HtFromUtf8(Page(state.range(0)));
  for (auto _ : state) {
    THtmlNode root;
    root.Parse(text, true);
    benchmark::DoNotOptimize(root.GetCount());
  }
  End(state, Page(state.range(0)).size());
}
BENCHMARK(BM_ParseAndFreeUtf16)->HT_EVERY_PAGE;

void BM_ParseOnly(benchmark::State& state) {
  if (!Begin(state)) return;
  const std::string& bytes = Page(state.range(0));
  for (auto _ : state) {
    auto root = std::make_unique<THtmlNode>();
    root->Parse(HtFromUtf8(bytes), true);
    state.PauseTiming();
    root.reset();
    state.ResumeTiming();
  }
  End(state, bytes.size());
}
BENCHMARK(BM_ParseOnly)->HT_EVERY_PAGE;

#ifdef HT_PEER_GUMBO
void BM_GumboParseAndFree(benchmark::State& state) {
  if (!Begin(state)) return;
  const std::string& bytes = Page(state.range(0));
  for (auto _ : state)
    gumbo_destroy_output(&kGumboDefaultOptions,
                         gumbo_parse_with_options(&kGumboDefaultOptions, bytes.data(), bytes.size()));
  End(state, bytes.size());
}
BENCHMARK(BM_GumboParseAndFree)->HT_EVERY_PAGE;
#endif

#ifdef HT_PEER_LIBXML2
constexpr int kLibXml2Options =
    HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_RECOVER | HTML_PARSE_NONET;

void BM_LibXml2ParseAndFree(benchmark::State& state) {
  if (!Begin(state)) return;
  const std::string& bytes = Page(state.range(0));
  for (auto _ : state)
    xmlFreeDoc(
        htmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, "UTF-8", kLibXml2Options));
  End(state, bytes.size());
}
BENCHMARK(BM_LibXml2ParseAndFree)->HT_EVERY_PAGE;
#endif

#ifdef HT_PEER_MYHTML
void BM_MyHtmlParseAndFree(benchmark::State& state) {
  if (!Begin(state)) return;
  const std::string& bytes = Page(state.range(0));
  for (auto _ : state) {
    myhtml_t* html = myhtml_create();
    myhtml_init(html, MyHTML_OPTIONS_PARSE_MODE_SINGLE, 1, 0);
    myhtml_tree_t* tree = myhtml_tree_create();
    myhtml_tree_init(tree, html);
    myhtml_parse(tree, MyENCODING_UTF_8, bytes.data(), bytes.size());
    myhtml_tree_destroy(tree);
    myhtml_destroy(html);
  }
  End(state, bytes.size());
}
BENCHMARK(BM_MyHtmlParseAndFree)->HT_EVERY_PAGE;
#endif

// --- printing and text ---

template <class TPrint>
void RunPrint(benchmark::State& state, const TPrint& print) {
  if (!Begin(state)) return;
  THtmlNode root;
  root.Parse(HtFromUtf8(Page(state.range(0))), true);
  size_t bytes = 0;
  for (auto _ : state) bytes = print(root).Size() * sizeof(char16_t);
  End(state, bytes);
}

void BM_Print(benchmark::State& state) {
  RunPrint(state, [](THtmlNode& root) { return root.GetOuterHTML(); });
}
BENCHMARK(BM_Print)->HT_EVERY_PAGE;

void BM_PrintFormatted(benchmark::State& state) {
  RunPrint(state, [](THtmlNode& root) {
    TFastString builder(65500);
    bool newLine = false;
    root.FastFormattedHTML(builder, 0, 2, newLine);
    return builder.GetAsString();
  });
}
BENCHMARK(BM_PrintFormatted)->HT_EVERY_PAGE;

void BM_Text(benchmark::State& state) {
  RunPrint(state, [](THtmlNode& root) { return root.GetInnerText(); });
}
BENCHMARK(BM_Text)->HT_EVERY_PAGE;

void BM_FlatText(benchmark::State& state) {
  RunPrint(state, [](THtmlNode& root) {
    TFastString builder(65500);
    root.FastInnerText(builder);
    return builder.GetAsString();
  });
}
BENCHMARK(BM_FlatText)->HT_EVERY_PAGE;

#ifdef HT_PEER_LIBXML2
void BM_LibXml2Print(benchmark::State& state) {
  if (!Begin(state)) return;
  const std::string& bytes = Page(state.range(0));
  htmlDocPtr doc =
      htmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, "UTF-8", kLibXml2Options);
  int size = 0;
  for (auto _ : state) {
    xmlChar* text = nullptr;
    htmlDocDumpMemoryFormat(doc, &text, &size, 0);
    xmlFree(text);
  }
  xmlFreeDoc(doc);
  End(state, static_cast<size_t>(size));
}
BENCHMARK(BM_LibXml2Print)->HT_EVERY_PAGE;
#endif

#ifdef HT_PEER_MYHTML
void BM_MyHtmlPrint(benchmark::State& state) {
  if (!Begin(state)) return;
  const std::string& bytes = Page(state.range(0));
  myhtml_t* html = myhtml_create();
  myhtml_init(html, MyHTML_OPTIONS_PARSE_MODE_SINGLE, 1, 0);
  myhtml_tree_t* tree = myhtml_tree_create();
  myhtml_tree_init(tree, html);
  myhtml_parse(tree, MyENCODING_UTF_8, bytes.data(), bytes.size());
  size_t size = 0;
  for (auto _ : state) {
    mycore_string_raw_t text = {nullptr, 0, 0};
    myhtml_serialization_tree_buffer(myhtml_tree_get_document(tree), &text);
    size = text.length;
    mycore_string_raw_destroy(&text, false);
  }
  myhtml_tree_destroy(tree);
  myhtml_destroy(html);
  End(state, size);
}
BENCHMARK(BM_MyHtmlPrint)->HT_EVERY_PAGE;
#endif

// --- queries ---

constexpr const char16_t* kPaths[] = {u"//a",          u"//td[0]",      u"//a[@title='Go']/code",
                                      u"//li[last()]", u"//tr[td='1']", u"//*[@id and not x]"};

void BM_XPathList(benchmark::State& state) {
  THtmlNode root;
  root.Parse(HtFromUtf8(Page(pgOneMegabyte)), true);
  const hstring path = kPaths[state.range(0)];
  state.SetLabel(HtToUtf8(path));
  for (auto _ : state) benchmark::DoNotOptimize(root.XPath(path, false, nullptr)->GetCount());
  End(state, Page(pgOneMegabyte).size());
}
BENCHMARK(BM_XPathList)->DenseRange(0, 5)->Unit(benchmark::kMicrosecond);

void BM_XPathValue(benchmark::State& state) {
  THtmlNode root;
  root.Parse(HtFromUtf8(Page(pgOneMegabyte)), true);
  for (auto _ : state) benchmark::DoNotOptimize(root.XPathValue(u"//p[@class='none']/@class", nullptr));
  End(state, Page(pgOneMegabyte).size());
}
BENCHMARK(BM_XPathValue)->Unit(benchmark::kMicrosecond);

void BM_XPathCallback(benchmark::State& state) {
  THtmlNode root;
  root.Parse(HtFromUtf8(Page(pgOneMegabyte)), true);
  for (auto _ : state) {
    int count = 0;
    root.XPath(u"//a", [&count](THtNode*, bool&) { ++count; });
    benchmark::DoNotOptimize(count);
  }
  End(state, Page(pgOneMegabyte).size());
}
BENCHMARK(BM_XPathCallback)->Unit(benchmark::kMicrosecond);

// --- shapes that are meant to hurt: time grows with the size, not with its square ---

const std::u16string& HostileShape(int64_t which) {
  const auto repeat = [](std::u16string_view text, size_t count) {
    std::u16string result;
    for (; count > 0; --count) result += text;
    return result;
  };
  const auto attributes = [](int count) {
    std::u16string tag = u"<p";
    for (int i = count; i > 0; --i) tag += u" a" + std::u16string(hstring(HtIntToStr(i)).View()) + u"=1";
    return tag + u">";
  };
  static const std::u16string kShapes[] = {repeat(u"<b>", 100000),
                                           repeat(u"<p>", 1000000),
                                           u"<p a=\"" + std::u16string(10 << 20, u'x') + u"\">",
                                           attributes(100000),
                                           repeat(u"<table>", 10000),
                                           std::u16string(10 << 20, u'<'),
                                           std::u16string(10 << 20, u'&'),
                                           repeat(u"</", 5 << 20)};
  return kShapes[which];
}

constexpr const char* kShapeNames[] = {"100,000 <b>",        "1,000,000 <p>",  "attribute of 10 MB",
                                       "100,000 attributes", "10,000 <table>", "10 MB of <",
                                       "10 MB of &",         "10 MB of </"};

void BM_Hostile(benchmark::State& state) {
  const hstring text = HostileShape(state.range(0));
  state.SetLabel(kShapeNames[state.range(0)]);
  for (auto _ : state) {
    THtmlNode root;
    root.Parse(text, true);
    benchmark::DoNotOptimize(root.GetCount());
  }
  End(state, text.Size());
}
BENCHMARK(BM_Hostile)->DenseRange(0, 7)->Unit(benchmark::kMillisecond);

}  // namespace
