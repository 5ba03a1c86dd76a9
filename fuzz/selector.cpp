// Any text gives selectors whose text reads back as the same, and that the walks over a tree and the maps of a sheet
// answer alike.
#include <algorithm>
#include <cstdint>
#include <vector>

#include "htmlcss/cssparser.h"
#include "htmlcss/elementstyle.h"
#include "htmlcss/jqueryprocessor.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/stylesheet.h"
#include "support/require.h"

using namespace ht;

namespace {

class TNode final : public TStyledHTMLNode {
  HT_CLASS(TNode, TStyledHTMLNode)

 public:
  TNode() { TNode::CreateStyle(); }
  const TClass* GetStyleClass() const override { return TBaseElementStyle::Class(); }
};

struct TPage {
  TNode Root;
  std::vector<TStyledHTMLNode*> Nodes;

  TPage() {
    Root.Parse(
        u"<body id=a class='x y'>t<p id=b class=x title='a b'>t<b class=y lang=en-US></b><i></i></p><p x=1 "
        u"class=z>"
        u"<a href=c class='x z'>t</a></p><ul><li><li class=y id=d><li y='' class=X></ul><div><div class=x><p>"
        u"<b></b></p></div></div></body>");
    for (THtNode* node = &Root; node; node = node->NextNodeBelow(&Root)) {
      Nodes.push_back(static_cast<TStyledHTMLNode*>(node));
      Nodes.back()->FStyle->CurrentPC =
          Nodes.size() % 3 == 0 ? TCSSPseudo{pcHover, pcFirstChild} : TCSSPseudo();
    }
  }
};

TPage& Page() {
  static TPage page;
  return page;
}

bool IsNameChar(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }

bool IsName(std::u16string_view text) { return std::all_of(text.begin(), text.end(), IsNameChar); }

bool SaysAnything(const TCSSSelector& compound) {
  return !(compound.Tag.Empty() && compound.ID.Empty() && compound.Classes.Empty() &&
           compound.Pseudos.Empty() && compound.Nots.empty());
}

// A selector without escapes, strings and numbers, so that its text says all about it.
bool IsPlain(const TCSSSelector& selector) {
  for (const TCSSSelector* compound = &selector; compound; compound = compound->Parent.get()) {
    const auto isPlainName = [](const TCSSClassRec& rec) { return IsName(rec.s) && !rec.s.Empty(); };
    if (!SaysAnything(*compound) || !(IsName(compound->Tag) || compound->Tag == u"*") ||
        !IsName(compound->ID) || !compound->Condition.Empty() ||
        !std::all_of(compound->Classes.begin(), compound->Classes.end(), isPlainName))
      return false;
    for (const auto& negation : compound->Nots)
      if (!IsPlain(*negation)) return false;
  }
  return true;
}

int32_t LengthOf(const TCSSSelector& selector) {
  int32_t length = 0;
  for (const TCSSSelector* compound = &selector; compound; compound = compound->Parent.get()) ++length;
  return length;
}

void CheckText(const TCSSSelector& selector) {
  const hstring text = selector.AsString();
  const TJQueryProcessor again(text);
  Require(selector.CalcWeight() >= 0 && selector.CalcWeight() <= 0xFFFFFF);
  if (!IsPlain(selector)) return;
  Require(again.Section && again.Section->Selectors.GetCount() == 1);
  const TCSSSelector& same = *again.Section->Selectors.GetSelector(0);
  Require(same.AsString() == text);
  Require(same.CalcWeight() == selector.CalcWeight() && LengthOf(same) == LengthOf(selector));
}

bool IsFiledByPart(const TCSSSelector& selector) {
  return !selector.Tag.Empty() || !selector.ID.Empty() || !selector.Classes.Empty() ||
         !selector.Condition.Empty();
}

bool IsFiled(const TCSSSelector& selector) { return IsFiledByPart(selector) || selector.HasPseudoClasses(); }

// What the sheet answers, against a look at every selector.
void CheckQueries(const TCSSSelectors& selectors, const TCSSStyleSheet& sheet) {
  TCSSWeightList list;
  for (TStyledHTMLNode* node : Page().Nodes) {
    bool met = false, mayMore = false, before = false;
    for (const TCSSSelector* selector : selectors) {
      const bool forElement = (selector->Pseudos * kPseudoElements).Empty();
      if (forElement && TCSSStyleSheet::TestElement(*node, *selector, {}))
        (IsFiledByPart(*selector) ? met : mayMore) = true;
      before |= selector->Pseudos.Contains(pcBefore) && IsFiled(*selector) &&
                selector->Matches(*node, selector->Pseudos);
    }
    list.Clear();
    sheet.GetElementSelectors(*node, list, &sheet.Main, {});
    Require(met ? list.GetCount() > 0 : mayMore || list.GetCount() == 0);
    TCSSPseudo pseudos;
    sheet.GetElementPseudoClasses(*node, pseudos);
    Require(pseudos.Contains(pcBefore) == before);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const hstring text = HtFromUtf8({reinterpret_cast<const char*>(data), size});
  const TJQueryProcessor query(text);
  if (!query.Section) return 0;
  TCSSSelectors& selectors = query.Section->Selectors;
  for (const TCSSSelector* selector : selectors) CheckText(*selector);

  std::vector<THtNode*> listed, called;
  const TIntf<IHtNodeList> list = Page().Root.JQuery(text);
  for (int32_t i = 0; i < list->GetCount(); ++i) listed.push_back(list->GetNode(i));
  Page().Root.JQuery(text, [&called](THtNode* node, bool&) { called.push_back(node); });
  Require(listed == called);

  TCSSParser parser(u"a{top:0}", true);
  Require(parser.NextSection());
  query.Section->AddValue(parser.Section->Values[0]);
  query.Section->Compile();
  TCSSStyleSheet sheet;
  for (TCSSSelector* selector : selectors) sheet.AddSelector(selector);
  CheckQueries(selectors, sheet);
  return 0;
}
