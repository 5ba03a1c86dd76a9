// Any sheet over a page, and the same sheet again after changes: what an update resolves is what a new pass over all
// would give.
#include <cstdint>
#include <string>

#include "document/document.h"
#include "document/widths.h"
#include "support/require.h"

using namespace ht;

static const char kPage[] =
    "<html><body id=b class=x><h1 title=t>1</h1><p class='a b'>2<b>3<i>4</i></b><a href=#>5</a></p>"
    "<ul class=a><li>6<li id=l style='color:var(--x);padding:var(--y, 2px) 1em'>7</ul><table "
    "border=1><tr><td>8<td "
    "align=right>9</table><div><p><p class=a></div></body></html>";

static void CheckGenerated(const TDocumentNode& node, const TStyledHTMLNode* generated) {
  if (!generated) return;
  Require(generated->GetParent() == &node && generated->FStyle && generated->GetCount() == 1);
}

// What the getters of all elements say, in a sum.
static double Read(TDocument& page) {
  double sum = 0;
  for (THtNode* node = &page; node; node = node->NextNodeBelow(&page)) {
    auto& element = static_cast<TDocumentNode&>(*node);
    if (!element.IsElement()) continue;
    TDocumentStyle& style = *element.Style();
    Require(element.Container && element.Flags.Contains(efStyleCalculated) && style.FLastProps.empty());
    Require(style.IntFontSize == style.IntFontSize && element.InnerWidth == element.InnerWidth);
    CheckGenerated(element, element.Before);
    CheckGenerated(element, element.After);
    CheckGenerated(element, element.Marker());
    TMeasure width, line;
    style.Width(width);
    style.LineHeight(line);
    for (double value :
         {double{style.IntFontSize}, double{style.MarginLeftPx()}, double{style.PaddingTopPx()},
          double{style.BorderTopWidthPx()}, double{width.GetFPixels()}, double{line.GetFPixels()},
          double(style.TextColor()), double(style.BackgroundColor()), double(style.FDisplay),
          double(style.TextAlign()), double(style.Visibility), double(style.ZIndex)})
      sum += value;
  }
  return sum;
}

static void Change(TDocument& page) {
  const TIntf<IHtNodeList> nodes = page.JQuery(u".a"_hs);
  for (int32_t i = 0; i < nodes->GetCount(); ++i) {
    auto& node = static_cast<TDocumentNode&>(*nodes->GetNode(i));
    node.ToggleClass(u"x"_hs);
    node.SetPseudoClass(pcHover, i % 2 == 0);
    node.SetAttribute(u"style"_hs, i % 2 == 0 ? u"--y:3px"_hs : u""_hs);
    node.AddHTML(u"<i class=b>n</i>"_hs);
  }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const hstring sheet = HtFromUtf8({reinterpret_cast<const char*>(data), size});
  TDocument page;
  page.Parse(HtFromUtf8(kPage));
  page.Sheets().Loader = [](const hstring& address) { return address; };
  page.Sheets().Add(sheet, u"a/b"_hs);
  page.UpdateStyles();
  HtCalcWidths(page);
  Read(page);

  Change(page);
  page.UpdateStyles();
  Require(page.UpdateStyles().Resolved == 0);
  HtCalcWidths(page);
  const double updated = Read(page);
  page.SheetsChanged();
  page.UpdateStyles();
  HtCalcWidths(page);
  Require(Read(page) == updated);
  return 0;
}
