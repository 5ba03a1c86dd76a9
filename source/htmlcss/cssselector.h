#pragma once

#include <memory>
#include <vector>

#include "htmlcss/cssclassrec.h"
#include "htmlcss/cssenums.h"
#include "htmlcss/csstoken.h"
#include "htutils/objectlist.h"

namespace ht {

class TCSSSection;
class TCSSSelector;
class TStyledHTMLNode;

/// How a compound relates to the one on its left.
HT_ENUM(TSelectorPosition, uint8_t, spDescendant, spChild, spSibling, spAllSiblings);
HT_ENUM(TAttrCompare, uint8_t, acMatch, acStarts, acEnds, acContains, acWord, acStarts2, acNotEq);

/// `[name]`, `[name=value]`, `[name^=value]` …
struct TCSSCondition {
  hstring Name;
  hstring Value;
  TAttrCompare Compare = acMatch;
};

/// Whether an element meets a compound. The set is what the element is at the moment, as pcHover, together with what
/// the caller counts as present.
using TCSSSelectorTestProc = bool (TCSSSelector::*)(TStyledHTMLNode& element, TCSSPseudo pseudos) const;

/// One compound selector, as `div.a#b[c=d]:hover`. A complex selector is a chain of them: a section holds the right-most
/// compound, and Parent leads to the one on its left.
///
///   auto list = std::make_unique<TCSSSelector>();                       // ul.x > li:nth-child(odd)
///   list->Tag = u"ul"_hs;
///   list->AddClass(u"x");
///   auto item = std::make_unique<TCSSSelector>(std::move(list));
///   item->Tag = u"li"_hs;
///   item->Position = spChild;
///   item->AddPseudo(u"nth-child", &token);
///   item->DetermineTestProc();                                          // once all is said
///   item->Matches(element, {});                                         // this compound only
///
/// Whole chains are matched by TCSSStyleSheet::TestElement. Tests only read, so a selector that is finished may be used
/// from any thread. A chain may be of any length: nothing here calls itself along it.
class TCSSSelector final : public TObject {
  HT_CLASS(TCSSSelector, TObject)

 public:
  HT_POOLED

  // What a query reads stands together.

  /// The cheapest procedure that tests this compound; TestAll until DetermineTestProc chooses one.
  TCSSSelectorTestProc Test = &TCSSSelector::TestAll;
  /// The rule; set by TCSSSection::AddSelector.
  TCSSSection* Section = nullptr;
  /// In the order in which they are written.
  TClassesArray Classes;
  /// The element name in lower case; or `*`, the keyword of `@page` and `@font-face`, or a key frame's `50%`.
  hstring Tag;
  /// RSHash of Tag, which DetermineTestProc works out; 0 as long as it is not known.
  uint32_t TagHash = 0;
  /// All pseudo-classes and pseudo-elements.
  TCSSPseudo Pseudos;
  /// Specificity, or what the sheet was told to take instead.
  int32_t Weight = 0;
  /// The place among the selectors of its sheet.
  int32_t Order = 0;
  /// Of `:nth-child()` or `:nth-of-type()`, from 1; -1 for `odd`, -2 for `even`.
  int32_t NthIndex = 0;
  TSelectorPosition Position = spDescendant;
  /// Tag is `*`.
  bool Universal = false;
  /// The first pseudo-class added: the key under which the selector is filed if it has nothing better.
  TCSSPseudoClass Pseudo = pcNone;
  /// How many different pseudo-classes were added.
  int32_t PseudoCount = 0;

  /// As written.
  hstring ID;
  /// The attribute conditions as written, without brackets; U+0001 between two.
  hstring Condition;
  /// What ParseCondition made of Condition.
  TSharedArray<TCSSCondition> Conditions;
  /// The compound to the left, or null.
  std::unique_ptr<TCSSSelector> Parent;
  /// The arguments of `:not()`.
  std::vector<std::unique_ptr<TCSSSelector>, THtPoolAllocator<std::unique_ptr<TCSSSelector>>> Nots;
  /// The span of the whole selector in the source, from 1.
  int32_t StartPos = 0;
  int32_t EndPos = 0;

  explicit TCSSSelector(std::unique_ptr<TCSSSelector> parent = nullptr) : Parent(std::move(parent)) {}
  ~TCSSSelector() override;

  void AddClass(const hstring& name);
  /// A name that is not known is pcUnknown, which no element has. The argument is that of `:nth-child()`.
  void AddPseudo(std::u16string_view name, const TCSSToken* argument = nullptr);
  /// Makes Conditions from Condition.
  void ParseCondition();
  /// Chooses Test for the whole chain, and parses the conditions of all compounds.
  void DetermineTestProc();
  /// The specificity of the chain, within 24 bits: 1 a tag, 16 a class, pseudo-class or condition, 256 an id.
  int32_t CalcWeight() const;
  /// The chain as text. Arguments of `:nth-child()` are not written.
  hstring AsString() const;

  bool Matches(TStyledHTMLNode& element, TCSSPseudo pseudos) const { return (this->*Test)(element, pseudos); }
  /// Pseudos holds more than pseudo-elements.
  bool HasPseudoClasses() const { return !(Pseudos - kPseudoElements).Empty(); }

  // The procedures. `:not()` is not looked at.

  bool TestUniversal(TStyledHTMLNode& element, TCSSPseudo pseudos) const;
  bool TestTag(TStyledHTMLNode& element, TCSSPseudo pseudos) const;
  bool TestID(TStyledHTMLNode& element, TCSSPseudo pseudos) const;
  bool TestCondition(TStyledHTMLNode& element, TCSSPseudo pseudos) const;
  bool TestClass(TStyledHTMLNode& element, TCSSPseudo pseudos) const;
  bool TestTagClass(TStyledHTMLNode& element, TCSSPseudo pseudos) const;
  bool TestPCCondition(TStyledHTMLNode& element, TCSSPseudo pseudos) const;
  /// Lets the six pseudo-classes that speak of the place among siblings pass, but for `:nth-child()`.
  bool TestPCClass(TStyledHTMLNode& element, TCSSPseudo pseudos) const;
  bool TestAll(TStyledHTMLNode& element, TCSSPseudo pseudos) const;
  /// The conditions alone, on an element that has attributes.
  bool XTestCondition(TStyledHTMLNode& element) const;

 private:
  TCSSSelectorTestProc ChooseTestProc() const;
  void FindTag();
  bool TagMatches(const TStyledHTMLNode& element) const;
  bool ClassesMatch(const TStyledHTMLNode& element) const;
  bool IndexMatches(const TStyledHTMLNode& element, TCSSPseudoClass among) const;
  bool NthMatches(const TStyledHTMLNode& element, TCSSPseudo pseudos, TCSSPseudoClass among) const;
};

/// An ordered list of selectors: those of a section, which owns them, or one bucket of a style map.
class TCSSSelectors : public THtObjectList {
  HT_CLASS(TCSSSelectors, THtObjectList)

 public:
  int32_t StartPos = 0;
  int32_t EndPos = 0;
  /// The key in a map.
  hstring Key;

  explicit TCSSSelectors(bool ownsSelectors) : THtObjectList(ownsSelectors, FPlace, 1) {}

  TCSSSelector* GetSelector(int32_t index) const { return Get<TCSSSelector>(index); }
  /// Adds a selector; but if the first in the list has the same weight, the values of its section go into that one's
  /// section instead, where they replace those of their names, and its own section is left without values.
  void DistinctAdd(TCSSSelector* selector);

  /// The entries as they lie in memory; valid until the list changes.
  TCSSSelector* const* begin() const { return reinterpret_cast<TCSSSelector* const*>(FItems); }
  TCSSSelector* const* end() const { return begin() + FCount; }

 private:
  void* FPlace[1];  // most rules, and most buckets, have one selector
};

}  // namespace ht
