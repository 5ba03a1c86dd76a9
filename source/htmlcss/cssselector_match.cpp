#include "htmlcss/cssselector.h"
#include "htmlcss/styledhtmlnode.h"

namespace ht {

namespace {

// The pseudo-classes that TestPCClass does not ask for.
constexpr TCSSPseudo kAmongSiblings{pcFirstChild, pcLastChild,   pcNthChild,
                                    pcNthOfType,  pcFirstOfType, pcLastOfType};

// " word " occurs in " text ".
bool HasWord(std::u16string_view text, std::u16string_view word) {
  for (size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) {
    const size_t end = at + word.size();
    if ((at == 0 || text[at - 1] == u' ') && (end == text.size() || text[end] == u' ')) return true;
  }
  return false;
}

bool IsOrStartsWithDash(std::u16string_view text, std::u16string_view start) {
  return text.starts_with(start) && (text.size() == start.size() || text[start.size()] == u'-');
}

bool ConditionPasses(const TCSSCondition& condition, const hstring& value) {
  const std::u16string_view text = value, wanted = condition.Value;
  switch (condition.Compare) {
    case acMatch: return wanted.empty() || value == condition.Value;
    case acStarts: return !wanted.empty() && text.starts_with(wanted);
    case acEnds: return !wanted.empty() && text.ends_with(wanted);
    case acContains: return !wanted.empty() && text.find(wanted) != text.npos;
    case acWord: return HasWord(text, wanted);
    case acStarts2: return IsOrStartsWithDash(text, wanted);
    case acNotEq: return value != condition.Value;
  }
  return false;
}

}  // namespace

bool TCSSSelector::TestUniversal(TStyledHTMLNode&, TCSSPseudo) const { return true; }

bool TCSSSelector::TestTag(TStyledHTMLNode& element, TCSSPseudo) const { return TagMatches(element); }

bool TCSSSelector::TestID(TStyledHTMLNode& element, TCSSPseudo) const {
  return element.GetAttributes() && element.HasAttributeValue(u"id"_hs, ID);
}

bool TCSSSelector::TestCondition(TStyledHTMLNode& element, TCSSPseudo) const {
  return element.GetAttributes() && XTestCondition(element);
}

bool TCSSSelector::TestClass(TStyledHTMLNode& element, TCSSPseudo) const {
  return element.FClassHashes.Count() >= Classes.Count() && ClassesMatch(element);
}

bool TCSSSelector::TestTagClass(TStyledHTMLNode& element, TCSSPseudo) const {
  return element.FClassHashes.Count() >= Classes.Count() && TagMatches(element) && ClassesMatch(element);
}

bool TCSSSelector::TestPCCondition(TStyledHTMLNode& element, TCSSPseudo pseudos) const {
  if (!element.GetAttributes()) return false;
  const bool pseudosMatch =
      Pseudos.Contains(pcNthChild) ? NthMatches(element, pseudos, pcNthChild) : Pseudos <= pseudos;
  return pseudosMatch && XTestCondition(element);
}

bool TCSSSelector::TestPCClass(TStyledHTMLNode& element, TCSSPseudo pseudos) const {
  return element.FClassHashes.Count() >= Classes.Count() && Pseudos <= pseudos + kAmongSiblings &&
         ClassesMatch(element) && (!Pseudos.Contains(pcNthChild) || IndexMatches(element, pcNthChild));
}

bool TCSSSelector::TestAll(TStyledHTMLNode& element, TCSSPseudo pseudos) const {
  if (!Tag.Empty() && !Universal && !TagMatches(element)) return false;
  if (!ID.Empty() && !TestID(element, pseudos)) return false;
  if (!Classes.Empty() && !TestClass(element, pseudos)) return false;
  if (Pseudos.Contains(pcNthChild)) {
    if (!NthMatches(element, pseudos, pcNthChild)) return false;
  } else if (Pseudos.Contains(pcNthOfType)) {
    if (!NthMatches(element, pseudos, pcNthOfType)) return false;
  } else if (!(Pseudos <= pseudos)) {
    return false;
  }
  return Condition.Empty() || TestCondition(element, pseudos);
}

bool TCSSSelector::XTestCondition(TStyledHTMLNode& element) const {
  const THtAttributes* attributes = element.GetAttributes();
  for (const TCSSCondition& condition : Conditions) {
    int32_t index;
    if (!attributes || !attributes->Find(condition.Name, index)) return condition.Compare == acNotEq;
    if (!ConditionPasses(condition, attributes->GetValue(index))) return false;
  }
  return true;
}

bool TCSSSelector::TagMatches(const TStyledHTMLNode& element) const {
  return (TagHash == 0 || element.GetTagHash() == TagHash) && element.GetTag() == Tag;
}

// The element has no fewer classes than there are here.
bool TCSSSelector::ClassesMatch(const TStyledHTMLNode& element) const {
  const TClassesArray& classes = element.FClassHashes;
  if (!element.Flags.Contains(efMultiClass)) return Classes.Empty() || classes[0] == Classes[0];
  for (const TCSSClassRec& wanted : Classes) {
    const TCSSClassRec* at = classes.begin();
    while (at != classes.end() && !(*at == wanted)) ++at;
    if (at == classes.end()) return false;
  }
  return true;
}

// For a number no more siblings are counted than it says.
bool TCSSSelector::IndexMatches(const TStyledHTMLNode& element, TCSSPseudoClass among) const {
  const bool anyTag = among == pcNthChild;
  if (NthIndex < 0) {
    const int32_t before = anyTag ? element.ChildIndex() : element.TagIndex();
    return (before & 1) == (NthIndex == -2);
  }
  int32_t index = 1;
  const THtNode* parent = element.THtNode::GetParent();
  const THtNode* node = parent ? parent->FirstChild() : &element;
  for (; node && node != &element && index <= NthIndex; node = node->NextSibling())
    index += anyTag ? !node->GetTag().Empty() : node->GetTag() == element.GetTag();
  return index == NthIndex;
}

bool TCSSSelector::NthMatches(const TStyledHTMLNode& element, TCSSPseudo pseudos,
                              TCSSPseudoClass among) const {
  if (NthIndex >= 0 && !(Pseudos <= pseudos + TCSSPseudo{among})) return false;
  return IndexMatches(element, among);
}

}  // namespace ht
