#pragma once

#include "htmlcss/cssselector.h"
#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"

namespace ht {

/// The pseudo-classes that the element has now; none while it has no style.
inline TCSSPseudo HtCurrentPseudos(const TStyledHTMLNode& element) {
  return element.FStyle ? element.FStyle->CurrentPC : TCSSPseudo();
}

/// What counts as present on an element for a compound and its negations, where `pseudos` count as present on all. The style
/// is looked at only for those that ask.
inline TCSSPseudo HtPseudosFor(const TCSSSelector& compound, const TStyledHTMLNode& element,
                               TCSSPseudo pseudos) {
  return compound.Pseudos.Empty() && compound.Nots.empty() ? pseudos : HtCurrentPseudos(element) + pseudos;
}

/// The index of a node in its parent; -1 for generated content. Quick where nodes are asked in document order.
int32_t HtIndexInParent(const TStyledHTMLNode& node, const THtNode& parent);

/// What TCSSStyleSheet::TestElement asks of an element that meets the right-most compound: no negation applies to it,
/// and the compounds to the left are met. `current` is what counts as present on the element, `pseudos` on all.
bool HtMeetsRest(TStyledHTMLNode& element, const TCSSSelector& selector, TCSSPseudo current,
                 TCSSPseudo pseudos);

}  // namespace ht
