#pragma once

#include "htmlcss/styledhtmlnode.h"

namespace ht {

/// Calls `visit` for a node and those below it in document order, without recursion. Where it answers false, what is
/// below the node is passed over.
template <class TVisit>
void HtVisitSubtree(TStyledHTMLNode& top, TVisit visit) {
  THtNode* node = &top;
  while (node) {
    const bool enter = visit(static_cast<TStyledHTMLNode&>(*node));
    if (enter && node->FirstChild()) {
      node = node->FirstChild();
      continue;
    }
    while (node != &top && !node->NextSibling()) node = node->GetParent();
    node = node == &top ? nullptr : node->NextSibling();
  }
}

}  // namespace ht
