#include "htmlcss/jqueryprocessor.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/stylesheet.h"

namespace ht {

namespace {

bool MeetsAny(TStyledHTMLNode& node, const TCSSSelectors& selectors) {
  for (const TCSSSelector* selector : selectors)
    if (TCSSStyleSheet::TestElement(node, *selector, {})) return true;
  return false;
}

}  // namespace

TIntf<IHtNodeList> TStyledHTMLNode::GetJQueryList(const hstring& selector, bool stopAtFirst) {
  auto* list = new THtNodeList(false, true);
  TIntf<IHtNodeList> result = list;
  const TJQueryProcessor query(selector);
  if (query.Section) InternalJQuery(query.Section->Selectors, *list, stopAtFirst);
  return result;
}

TIntf<IHtNodeList> TStyledHTMLNode::JQuery(const hstring& selector, bool stopAtFirst) {
  return GetJQueryList(selector, stopAtFirst);
}

void TStyledHTMLNode::JQuery(const hstring& selector, const THtNodeProcRef& proc) {
  const TJQueryProcessor query(selector);
  if (query.Section) InternalJQueryRef(query.Section->Selectors, proc);
}

// With `stopAtFirst` the walk ends at the first child behind which there are entries; what lies below a child is searched
// in whole.
void TStyledHTMLNode::InternalJQuery(const TCSSSelectors& selectors, THtNodeList& list, bool stopAtFirst) {
  for (THtNode* child = FirstChild(); child; child = child->NextSibling()) {
    for (THtNode* node = child; node; node = node->NextNodeBelow(child)) {
      auto& styled = static_cast<TStyledHTMLNode&>(*node);
      if (MeetsAny(styled, selectors) && styled.FStyle) list.Add(node);
      if (stopAtFirst && node == child && list.GetCount() > 0) return;
    }
  }
}

bool TStyledHTMLNode::InternalJQueryRef(const TCSSSelectors& selectors, const THtNodeProcRef& proc) {
  bool goOn = true;
  for (THtNode* node = NextNodeBelow(this); node && goOn; node = node->NextNodeBelow(this))
    if (MeetsAny(static_cast<TStyledHTMLNode&>(*node), selectors)) proc(node, goOn);
  return goOn;
}

}  // namespace ht
