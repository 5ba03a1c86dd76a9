// The host: which sheets a document has and what they come to, custom properties, generated content, and what a change
// asks for. Pages are written so that the value of a color, or of a length, tells which declaration has won.

#include "document/document.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

#include "document/widths.h"
#include "htruntime/format.h"

namespace ht {
namespace {

using TFiles = std::map<std::string, std::string>;

struct TPage : TDocument {
  TPage(const std::string& text, TFiles files = {}, const TDocumentView& view = {}) {
    BaseURL = u"http://a/b/page.html"_hs;
    SetView(view);
    Sheets().Loader = [this, files](const hstring& address) {
      ++Loads[HtToUtf8(address)];
      const auto file = files.find(HtToUtf8(address));
      return HtFromUtf8(file == files.end() ? "" : file->second);
    };
    Parse(HtFromUtf8(text));
    QueriedPseudos = kFoundPseudos;
    UpdateStyles();
  }
  TDocumentNode& Find(const std::string& selector) {
    const TIntf<IHtNodeList> nodes = JQuery(HtFromUtf8(selector));
    if (nodes->GetCount() == 0) throw EHtException(u"not found: " + HtFromUtf8(selector));
    return static_cast<TDocumentNode&>(*nodes->GetNode(0));
  }
  uint32_t Color(const std::string& selector) { return Find(selector).Style()->TextColor() & 0xFFFFFF; }

  std::map<std::string, int> Loads;
};

TEST(Document, SheetsInTheOrderOfTheCascade) {
  const TFiles files{
      {"http://a/b/1.css", "p{color:#000001}"},
      {"http://a/b/sub/2.css", "@import url(3.css);@import '../1.css' screen; i{color:#000009}"},
      {"http://a/b/sub/3.css", "@import '2.css'; p{color:#000003} p{background:url(x.png)}"},
      {"http://a/b/print.css", "@import '1.css' print; i{color:#000009}"},
      {"http://c/4.css", "p{color:#000004}"},
  };
  struct TCase {
    const char* Head;
    uint32_t Color;  // of the paragraph
  };
  const TCase kCases[] = {
      {"", 0},
      {"<style>p{color:#000001}</style><style>p{color:#000002}</style>", 2},
      {"<style>p{color:#000001} body p{color:#000003}</style><style>p{color:#000002}</style>", 3},
      {"<style>i{} i{} i{} p{color:#000001}</style><style>p{color:#000002}</style>", 2},
      {"<style>p{color:#000001}</style><style>p{color:#000002}</style><style>p{color:#000001}</style>", 1},
      {"<link rel=stylesheet href=1.css><style>p{color:#000002}</style>", 2},
      {"<style>p{color:#000002}</style><link rel='x StyleSheet' href=1.css>", 1},
      {"<link rel='alternate stylesheet' href=1.css>", 0},
      {"<link rel=stylesheet type=text/plain href=1.css><link rel=next href=1.css>", 0},
      {"<link rel=stylesheet disabled href=1.css><link rel=stylesheet href=none.css>", 0},
      {"<base href='http://c/x/'><link rel=stylesheet href=../4.css>", 4},
      {"<link rel=stylesheet href=sub/3.css>", 3},
      {"<link rel=stylesheet href=sub/2.css>", 1},  // 3 imports it in turn
      {"<link rel=stylesheet href=sub/2.css><style>@import 'sub/3.css';</style>", 3},
      {"<link rel=stylesheet href=print.css>", 0},
      {"<link rel=stylesheet media=print href=1.css>", 0},
      {"<link rel=stylesheet media='print, screen' href=1.css>", 1},
      {"<link rel=stylesheet media='screen and (min-width: 2000px)' href=1.css>", 0},
      {"<style media='{'>p{color:#000001}</style>", 0},
      {"<style>@media print{p{color:#000001}} @media (max-width:1024px){p{color:#000002}}</style>", 2},
      {"<style>p{color:#000001!important} #x{color:#000002}</style>", 1},
  };
  for (const auto& [head, color] : kCases) {
    TPage page(std::string("<!doctype html><html><head>") + head + "</head><body><p id=x>", files);
    EXPECT_EQ(page.Color("p"), color) << head;
    for (const auto& [address, count] : page.Loads) EXPECT_EQ(count, 1) << head << address;
  }
}

TEST(Document, OwnDeclarations) {
  struct TCase {
    const char *Css, *Element;
    uint32_t Color;
  };
  for (const auto& [css, element, color] : {
           TCase{"#x{color:#000001}", "<p id=x style='color:#000002'>", 2},
           TCase{"p{color:#000001!important}", "<p style='color:#000002'>", 1},
           TCase{"p{color:#000001}", "<p color=#000003>", 3},
           TCase{"", "<p style='color:#000002' color=#000003>", 3},
           TCase{"", "<p style='} p{color:#000002'>", 0},
           TCase{"", "<p style='color:nonsense;color:#000002'>", 2},
       })
    EXPECT_EQ(TPage(std::string("<style>") + css + "</style>" + element).Color("p"), color) << element;

  // One sheet serves all that declare the same.
  TPage page("<p align=right>1</p><p align=right>2</p><p align=left>3</p>");
  TCSSStyleSheet* shared = page.Find("p").SelfStyleSheet;
  EXPECT_EQ(page.Find("p:nth-child(2)").SelfStyleSheet, shared);
  EXPECT_NE(page.Find("p:nth-child(3)").SelfStyleSheet, shared);
  page.Find("p").CSS(u"color:#000007"_hs);
  page.UpdateStyles();
  EXPECT_NE(page.Find("p").SelfStyleSheet, shared);
  EXPECT_EQ(page.Color("p"), 7u);
  EXPECT_EQ(page.Find("p").Style()->TextAlign(), thRight);
  EXPECT_EQ(page.Color("p:nth-child(2)"), 0u);
}

TEST(Document, WhatIsInherited) {
  TPage page(
      "<!doctype html><style>body{font-size:20px;color:#000005;visibility:hidden} .em{font-size:1.5em} "
      ".plain{font-weight:normal} .half{font-size:50%;margin-left:2em} "
      ".vw{margin-left:10vw}"
      ".shown{visibility:visible}</style>"
      "<body><div class=em><p class=em id=a><b id=b>x<i class=plain id=c></i></b></p></div>"
      "<p class=half id=d><u id=e class=shown>u<b id=f></b></u></p><p class=vw id=g></p>");
  struct TCase {
    const char* Selector;
    float FontSize, MarginLeft;
    THtFontStyles Styles;
    TCSSVisibility Visibility;
  };
  for (const auto& [selector, size, margin, styles, visibility] : {
           TCase{"#a", 45, 0, {}, cvHidden},
           TCase{"#b", 45, 0, {hfsBold}, cvHidden},
           TCase{"#c", 45, 0, {hfsItalic}, cvHidden},
           TCase{"#d", 10, 20, {}, cvHidden},
           TCase{"#e", 10, 0, {hfsUnderline}, cvVisible},
           TCase{"#f", 10, 0, {hfsUnderline, hfsBold}, cvVisible},
           TCase{"#g", 20, 102.4f, {}, cvHidden},
       }) {
    TDocumentStyle& style = *page.Find(selector).Style();
    EXPECT_EQ(style.IntFontSize, size) << selector;
    EXPECT_FLOAT_EQ(style.MarginLeftPx(), margin) << selector;
    EXPECT_EQ(style.CalculatedTextStyle, styles) << selector;
    EXPECT_EQ(style.Visibility, visibility) << selector;
    EXPECT_EQ(style.TextColor(), 0xFF000005) << selector;
  }
  TPage rem(
      "<!doctype html><html style='font-size:10px'><body style='font-size:2rem'><p "
      "style='margin-left:3rem'>");
  EXPECT_EQ(rem.Find("body").Style()->IntFontSize, 20);
  EXPECT_EQ(rem.Find("p").Style()->MarginLeftPx(), 30);
  for (const auto& [doctype, size] :
       {std::pair("", 16), {"<!DOCTYPE html>", 20}, {"<!-- a --> <!doctype x>", 20}})
    EXPECT_EQ(TPage(std::string(doctype) + "<body style='font-size:20px'><table>")
                  .Find("table")
                  .Style()
                  ->IntFontSize,
              size);
}

TEST(Document, CustomProperties) {
  const std::string page = "</style><div id=d><p class=c id=p>x<b></b></p></div>";
  struct TCase {
    const char* Css;
    uint32_t Color;
    float Padding;  // on the left
  };
  std::string doubling = "p{--a0:1px;color:var(--a40,#000006)";
  for (int i = 1; i <= 40; ++i)
    doubling += ";--a" + std::to_string(i) + ":var(--a" + std::to_string(i - 1) + ") var(--a" +
                std::to_string(i - 1) + ")";
  const TCase kCases[] = {
      {":root{--c:#000001} p{color:var(--c)}", 1, 0},
      {":root{--c:#000001} [theme=dark]{--c:#000002} p{color:var(--c)}", 1, 0},
      {":root #d{--c:#000001} p{color:var(--c)}", 1, 0},
      {":foo{--c:#000001} p{color:var(--c,#000002)}", 2, 0},
      {":rooted{--c:#000001} :root:foo{--c:#000001} p{color:var(--c,#000002)}", 2, 0},
      {":root[lang]{--c:#000001} :root:not(.x) p{color:var(--c,#000002)}", 2, 0},
      {"div{--c:#000001} .c{--c:#000003} p{--c:#000002;color:var(--c)}", 3, 0},
      {"div{--c:#000001} p{color:var(--C,#000004)}", 4, 0},
      {"p{color:var(--x,var(--y,#000005))}", 5, 0},
      {"div{color:#000007} p{color:#000001} #p{color:var(--x)}", 7, 0},
      {"div{color:#000007} p{color:var(--x)} #p{color:#000001}", 1, 0},
      {"p{--a:var(--b);--b:var(--a);color:var(--a,#000002)}", 2, 0},
      {"p{--a:var(--a);color:var(--a,#000002)}", 2, 0},
      {"div{--a:#000001} p{--a:initial;color:var(--a,#000002)}", 2, 0},
      {"div{--a:#000001} p{--a:inherit;color:var(--a,#000002)}", 1, 0},
      {"div{--b:#000001;--a:var(--b)} p{--b:#000002;color:var(--a)}", 1, 0},
      {"p{--r:1,2;color:rgba(0,var(--r),1)}", 0x000102, 0},
      {"p{--y:1px;--x:7px;padding:var(--y) var(--x)}", 0, 7},
      {"p{--x:7px;padding-left:var(--x);padding-left:8px}", 0, 8},
      {"p{--x:7px;padding:1px;padding-left:calc(var(--x) + 2px)}", 0, 9},
      {"p{--x:7px;padding:1px} #p{padding:var(--none)}", 0, 0},
      {"p{--x:3px;border:var(--x) solid;padding-left:2em;font-size:var(--x)}", 0, 6},
      {"p{color:#000002;color:var()} p{color:var(1)} p{padding:var(--x", 0, 0},
      {doubling.c_str(), 0, 0},
  };
  for (const auto& [css, color, padding] : kCases) {
    TPage styled("<!doctype html><html><body><style>" + std::string(css) + page);
    EXPECT_EQ(styled.Color("p"), color) << css;
    EXPECT_FLOAT_EQ(styled.Find("p").Style()->PaddingLeftPx(), padding) << css;
  }
  TPage own("<style>p{color:var(--c,#000001)}</style><div style='--c:#000002'><p>");
  EXPECT_EQ(own.Color("p"), 2u);
  own.Find("div").SetAttribute(u"style"_hs, u"--c:#000003"_hs);
  EXPECT_EQ(own.UpdateStyles().Repaint, std::vector{&own.Find("p")});
  EXPECT_EQ(own.Color("p"), 3u);
}

std::string TextOf(const TStyledHTMLNode* node) { return node ? HtToUtf8(node->TextContent()) : "-"; }

TEST(Document, GeneratedContent) {
  struct TCase {
    const char *Css, *Body, *Selector;
    std::string Before, After;
  };
  const TCase kCases[] = {
      {"p::before{content:'a' \"b\"} p:after{content:none}", "<p>", "p", "ab", "-"},
      {"p::before{color:red} p::after{content:normal}", "<p>", "p", "-", "-"},
      {"p::before{content:''} p::after{content:\\25B8}", "<p>", "p", "", "\xE2\x96\xB8"},
      {"p::before{content:attr(title) ': '} p::after{content:open-quote 'x' close-quote}", "<p title=T>", "p",
       "T: ", "\xE2\x80\x9Cx\xE2\x80\x9D"},
      {"body{counter-reset:c 4} p{counter-increment:c} p::before{content:counter(c) '.'}", "<p><p id=x>",
       "#x", "6.", "-"},
      {"ol{counter-reset:c} li{counter-increment:c} li::before{content:counters(c,'.') ' ' "
       "counter(c,upper-roman)}",
       "<ol><li><li><ol><li><li id=x></ol></ol>", "#x", "2.2 II", "-"},
      {"p::after{content:counter(none)}", "<p>", "p", "-", "0"},
      {"#x::before{content:'x'} p::after{content:var(--t)}", "<div style='--t:\"v\"'><p>", "p", "-", "v"},
      {"p:hover::before{content:'x'}", "<p>", "p", "-", "-"},
      {"", "<details open><summary>s</summary></details>", "summary", "\xE2\x96\xBE", "-"},
      {"", "<details><summary>s</summary></details>", "summary", "\xE2\x96\xB8", "-"},
  };
  for (const auto& [css, body, selector, before, after] : kCases) {
    TPage page("<!doctype html><html><head><style>" + std::string(css) + "</style></head><body>" + body);
    const TDocumentNode& node = page.Find(selector);
    EXPECT_EQ(TextOf(node.Before), before) << css;
    EXPECT_EQ(TextOf(node.After), after) << css;
  }
  TPage page(
      "<style>li::marker{color:#000001} ol{color:#000002;font-size:30px}</style>"
      "<ol type=i start=3><li><li id=x></ol><ul><li id=u></ul><p id=p>");
  EXPECT_EQ(TextOf(page.Find("#x").Marker()), "iv.");
  EXPECT_EQ(page.Find("#x").Marker()->Style()->TextColor(), 0xFF000001);
  EXPECT_EQ(page.Find("#x").Marker()->Style()->IntFontSize, 30);
  EXPECT_EQ(TextOf(page.Find("#u").Marker()), "\xE2\x80\xA2");
  EXPECT_EQ(page.Find("#p").Marker(), nullptr);
}

TEST(Document, PseudoClasses) {
  TPage page(
      "<body><p id=a></p>text<i id=b>x</i><p id=c><!-- c --></p><p id=d> </p><a id=e></a><a id=f href></a>"
      "<div id=g><input id=h checked></div>");
  struct TCase {
    const char *Selector, *Ids;
  };
  for (const auto& [selector, ids] : {
           TCase{"body > *:first-child", "a"},
           TCase{"body > *:last-child", "g"},
           TCase{"*:only-child", "h"},
           TCase{"p:first-of-type", "a"},
           TCase{"p:last-of-type", "d"},
           TCase{"body > *:only-of-type", "bg"},
           TCase{"*:empty", "aceh"},
           TCase{"a:link", "f"},
           TCase{"*:checked", "h"},
       }) {
    std::string found;
    const TIntf<IHtNodeList> nodes = page.JQuery(HtFromUtf8(selector));
    for (int32_t i = 0; i < nodes->GetCount(); ++i)
      found += HtToUtf8(static_cast<TDocumentNode*>(nodes->GetNode(i))->GetId());
    if (std::string(selector) == "*:empty") std::erase(found, 'f');
    EXPECT_EQ(found, ids) << selector;
  }
}

TEST(Document, WhatAChangeAsksFor) {
  const std::string text =
      "<!doctype html><html><body><style>.r{color:#000001} .l{width:9px} .x i{color:#000002} .y + "
      "p{color:#000003}"
      "p:hover b{width:8px} p:last-child{color:#000004} [data-k=v]{width:7px} .g::before{content:'x'} "
      ".e{font-size:40px}</style>"
      "<div id=d><p id=p><b id=b>x<i id=i>y</i></b></p><p id=q>z</p><p id=s></p></div>";
  struct TCase {
    const char* What;
    void (*Change)(TPage& page);
    std::string Layout, Repaint;
    int32_t Most;  // elements resolved
  };
  const TCase kCases[] = {
      {"nothing", [](TPage&) {}, "", "", 0},
      {"a class that no rule knows", [](TPage& p) { p.Find("#p").AddClass(u"none"_hs); }, "", "", 5},
      {"a color", [](TPage& p) { p.Find("#i").AddClass(u"r"_hs); }, "", "i", 1},
      {"a width", [](TPage& p) { p.Find("#i").AddClass(u"l"_hs); }, "i", "", 1},
      {"below", [](TPage& p) { p.Find("#d").AddClass(u"x"_hs); }, "", "i", 6},
      {"behind", [](TPage& p) { p.Find("#p").AddClass(u"y"_hs); }, "", "q", 5},
      {"the pointer", [](TPage& p) { p.Find("#p").SetPseudoClass(pcHover, true); }, "b", "", 6},
      {"an attribute", [](TPage& p) { p.Find("#q").SetAttribute(u"data-k"_hs, u"v"_hs); }, "q", "", 3},
      {"a font size", [](TPage& p) { p.Find("#b").AddClass(u"e"_hs); }, "b", "", 2},
      {"generated content", [](TPage& p) { p.Find("#q").AddClass(u"g"_hs); }, "::before", "", 3},
      {"an element removed", [](TPage& p) { p.Find("#d").DeleteChild(&p.Find("#s")); }, "", "q", 2},
      {"an element added", [](TPage& p) { p.Find("#d").AddHTML(u"<u></u>"_hs); }, "u", "s", 3},
      {"own style", [](TPage& p) { p.Find("#q").CSS(u"width:1px;color:#000009"_hs); }, "q", "", 3},
      {"there and back",
       [](TPage& p) {
         p.Find("#q").AddClass(u"l"_hs);
         p.Find("#q").RemoveClass(u"l"_hs);
       },
       "", "", 3},
      {"a sheet",
       [](TPage& p) {
         p.Find("style").SetContent(u"#i{height:3px}"_hs);
         p.SheetsChanged();
       },
       "i", "s", 99},
      {"the view",
       [](TPage& p) {
         p.SetView({cmPrint, 100, 100, 0});
       },
       "", "", 99},
  };
  const auto names = [](const std::vector<TDocumentNode*>& nodes) {
    std::string result;
    for (TDocumentNode* node : nodes)
      result += HtToUtf8(node->GetId().Empty() ? node->GetTag() : node->GetId());
    return result;
  };
  for (const auto& [what, change, layout, repaint, most] : kCases) {
    TPage page(text);
    change(page);
    const TStyleChanges changes = page.UpdateStyles();
    EXPECT_EQ(names(changes.Layout), layout) << what;
    EXPECT_EQ(names(changes.Repaint), repaint) << what;
    EXPECT_LE(changes.Resolved, most) << what;
    EXPECT_TRUE(page.UpdateStyles().Empty()) << what;
  }
}

TEST(Document, SheetsMayGo) {
  TPage page(
      "<!doctype "
      "html><html><head><style>p{color:#000001;width:var(--w)}</style></head><body><div><p>x</div>");
  TDocumentNode& body = page.Find("body");
  TDocumentNode& taken = page.Find("div");
  body.GetNodes()->RemoveItem(&taken);
  page.Find("style").SetContent(u"p{color:#000002}"_hs);
  page.SheetsChanged();
  page.UpdateStyles();
  body.AddNode(std::unique_ptr<THtNode>(&taken));
  EXPECT_EQ(page.UpdateStyles().Layout.size(), 2u);
  EXPECT_EQ(page.Color("p"), 2u);

  // A pass that is broken off is made up for.
  page.Find("style").SetContent(u"@import 'x'; p{color:#000003}"_hs);
  const TDocumentSheets::TLoader loader = page.Sheets().Loader;
  page.Sheets().Loader = [](const hstring&) -> hstring { throw EHtException(u"no"); };
  page.SheetsChanged();
  EXPECT_THROW(page.UpdateStyles(), EHtException);
  EXPECT_THROW(page.UpdateStyles(), EHtException);
  page.Sheets().Loader = loader;
  EXPECT_EQ(page.UpdateStyles().Repaint.size(), 1u);
  EXPECT_EQ(page.Color("p"), 3u);
}

TEST(Document, Widths) {
  TPage page(
      "<!doctype html><html><body><style>#a{width:50%;padding:10px;border:5px solid} #b{margin:0 10%} "
      "#c{box-sizing:border-box;width:100px;padding:0 10px} #d{width:90%;max-width:60px} "
      "#e{width:50%}</style>"
      "<div id=a><p id=b></p><p id=c></p><p id=d><span><b id=e style='display:block'></b></span></p></div>",
      {}, {cmScreen, 800, 600, 0});
  HtCalcWidths(page);
  for (const auto& [id, width] :
       {std::pair("#a", 400), {"#b", 320}, {"#c", 80}, {"#d", 60}, {"span", 60}, {"#e", 30}})
    EXPECT_EQ(page.Find(id).InnerWidth, width) << id;
}

TEST(Document, DeepTrees) {
  TPage page("<p>");
  THtNode* node = &page.Find("p");
  for (int i = 0; i < 3000; ++i) node = static_cast<TDocumentNode*>(node)->AddHTML(u"<div></div>"_hs);
  EXPECT_EQ(page.UpdateStyles().Layout.size(), 3000u);
}

}  // namespace
}  // namespace ht
