#include "htmlcss/cssselector.h"

#include <algorithm>

#include "htmlcss/csssection.h"
#include "htmlpars/lower.h"
#include "htmlpars/tags.h"
#include "htruntime/rounding.h"
#include "htutils/enumlookup.h"
#include "htutils/faststring.h"

namespace ht {

namespace {

constexpr char16_t kConditionSeparator = u'\1';
constexpr int32_t kLargestWeight = 0xFFFFFF;

hstring LowerTrimmed(const hstring& text) {
  const std::u16string_view trimmed = HtTrim(text);
  hstring result = trimmed.size() == text.Size() ? text : hstring(trimmed);
  hLower(result);
  return result;
}

// A number is rounded; one below 1, and what is no number, is no element's index.
int32_t NthIndexOf(const TCSSToken& argument) {
  if (HtSameAscii(argument.Name, u"odd")) return -1;
  if (HtSameAscii(argument.Name, u"even")) return -2;
  const float value = argument.AsFloat();
  if (!(value > 0)) return 0;
  return value < 0x1p31f ? static_cast<int32_t>(HtRoundEven(value)) : INT32_MAX;
}

// The comparison that the character before "=" asks for; it is cut off the name.
TAttrCompare TakeCompare(std::u16string_view& name) {
  constexpr std::u16string_view kSigns = u"^$*~|!";
  const size_t sign = name.empty() ? kSigns.npos : kSigns.find(name.back());
  if (sign == kSigns.npos) return acMatch;
  name.remove_suffix(1);
  return static_cast<TAttrCompare>(acStarts + sign);
}

TCSSCondition ReadCondition(std::u16string_view text) {
  const size_t equals = text.find(u'=');
  if (equals == text.npos) return {text, {}, acMatch};
  std::u16string_view name = HtTrim(text.substr(0, equals));
  const TAttrCompare compare = TakeCompare(name);
  return {name, HtTrim(text.substr(equals + 1)), compare};
}

}  // namespace

// The compounds and negations below this one are linked into one chain, so that no destructor calls itself.
TCSSSelector::~TCSSSelector() {
  std::unique_ptr<TCSSSelector> pending = std::move(Parent);
  const auto takeNots = [&pending](TCSSSelector& selector) {
    for (auto& negation : selector.Nots) {
      TCSSSelector* last = negation.get();
      while (last->Parent) last = last->Parent.get();
      last->Parent = std::move(pending);
      pending = std::move(negation);
    }
    selector.Nots.clear();
  };
  takeNots(*this);
  while (pending) {
    const std::unique_ptr<TCSSSelector> selector = std::move(pending);
    pending = std::move(selector->Parent);
    takeNots(*selector);
  }
}

void TCSSSelector::AddClass(const hstring& name) { Classes.Append(TCSSClassRec(LowerTrimmed(name))); }

void TCSSSelector::AddPseudo(std::u16string_view name, const TCSSToken* argument) {
  TCSSPseudoClass pseudo = pcUnknown;
  IsEnum2(u"pc", name, pseudo);
  if (Pseudos.Contains(pseudo)) return;
  Pseudos.Include(pseudo);
  ++PseudoCount;
  if (Pseudo == pcNone) Pseudo = pseudo;
  if (argument) NthIndex = NthIndexOf(*argument);
}

void TCSSSelector::ParseCondition() {
  Conditions.Clear();
  std::u16string_view rest = Condition;
  for (;;) {
    const size_t end = rest.find(kConditionSeparator);
    Conditions.Append(ReadCondition(rest.substr(0, end)));
    if (end == rest.npos) return;
    rest.remove_prefix(end + 1);
  }
}

TCSSSelectorTestProc TCSSSelector::ChooseTestProc() const {
  constexpr unsigned kUniversal = 1, kTag = 2, kID = 4, kCondition = 8, kClasses = 16, kPseudo = 32;
  unsigned parts = 0;
  if (Universal)
    parts |= kUniversal;
  else if (!Tag.Empty())
    parts |= kTag;
  if (!ID.Empty()) parts |= kID;
  if (!Condition.Empty()) parts |= kCondition;
  if (!Classes.Empty()) parts |= kClasses;
  if (HasPseudoClasses()) parts |= kPseudo;
  switch (parts) {
    case kUniversal: return &TCSSSelector::TestUniversal;
    case kTag: return &TCSSSelector::TestTag;
    case kID: return &TCSSSelector::TestID;
    case kClasses: return &TCSSSelector::TestClass;
    case kTag | kClasses: return &TCSSSelector::TestTagClass;
    case kCondition | kPseudo: return &TCSSSelector::TestPCCondition;
    case kCondition: return &TCSSSelector::TestCondition;
    case kClasses | kPseudo: return &TCSSSelector::TestPCClass;
    default: return &TCSSSelector::TestAll;
  }
}

// A known tag gets the text that elements have, so that one look tells that both are the same.
void TCSSSelector::FindTag() {
  if (Tag.Empty()) return;
  Universal |= Tag == u"*";
  TagHash = RSHash(Tag.Data(), Tag.Length());
  const THtTagId known = HtFindTagId(Tag, TagHash);
  if (known > tgOther) Tag = HtTagName(known);
}

void TCSSSelector::DetermineTestProc() {
  for (TCSSSelector* compound = this; compound; compound = compound->Parent.get()) {
    compound->FindTag();
    if (!compound->Condition.Empty()) compound->ParseCondition();
    for (const auto& negation : compound->Nots)
      if (!negation->Condition.Empty()) negation->ParseCondition();
    compound->Test = compound->ChooseTestProc();
  }
}

int32_t TCSSSelector::CalcWeight() const {
  int64_t weight = 0;
  for (const TCSSSelector* compound = this; compound; compound = compound->Parent.get()) {
    weight += 16 * (int64_t{compound->Classes.Count()} + compound->PseudoCount);
    if (!compound->Tag.Empty() && !compound->Universal) weight += 1;
    if (!compound->Condition.Empty()) weight += 16;
    if (!compound->ID.Empty()) weight += 256;
  }
  return static_cast<int32_t>(std::min<int64_t>(weight, kLargestWeight));
}

namespace {

constexpr char16_t kCombinators[] = {u' ', u'>', u'+', u'~'};

// A compound up to its negations, behind the combinator that joins it to the one on its left.
void WriteCompound(const TCSSSelector& compound, TFastString& text) {
  if (compound.Parent) text.AddChar(kCombinators[compound.Position]);
  text.Add(compound.Tag);
  if (!compound.ID.Empty()) text.AddChar(u'#').Add(compound.ID);
  for (const TCSSClassRec& name : compound.Classes) text.AddChar(u'.').Add(name.s);
  if (!compound.Condition.Empty()) {
    text.AddChar(u'[');
    for (char16_t c : compound.Condition)
      if (c == kConditionSeparator)
        text.Add(u"][");
      else
        text.AddChar(c);
    text.AddChar(u']');
  }
  const THtEnumInfo& names = HtEnumOf<TCSSPseudoClass>();
  for (int pseudo = 0; pseudo < names.Count(); ++pseudo)
    if (compound.Pseudos.Contains(static_cast<TCSSPseudoClass>(pseudo)))
      text.AddChar(u':').Add(names.NameOf(pseudo).substr(2));
}

// What remains to be written, the next last: compounds, and the brackets around negations.
class TSelectorWriter {
 public:
  explicit TSelectorWriter(TFastString& text) : FText(text) {}

  void Write(const TCSSSelector& selector) {
    PushChain(selector);
    while (!FPending.empty()) {
      const TPiece piece = FPending.back();
      FPending.pop_back();
      FText.Add(piece.Text);
      if (!piece.Compound) continue;
      WriteCompound(*piece.Compound, FText);
      const auto& nots = piece.Compound->Nots;
      for (size_t i = nots.size(); i-- > 0;) {
        FPending.push_back({u")", nullptr});
        PushChain(*nots[i]);
        FPending.push_back({u":not(", nullptr});
      }
    }
  }

 private:
  struct TPiece {
    std::u16string_view Text;
    const TCSSSelector* Compound;
  };

  void PushChain(const TCSSSelector& selector) {
    for (const TCSSSelector* compound = &selector; compound; compound = compound->Parent.get())
      FPending.push_back({{}, compound});
  }

  TFastString& FText;
  std::vector<TPiece> FPending;
};

}  // namespace

hstring TCSSSelector::AsString() const {
  TFastString text(128);
  TSelectorWriter(text).Write(*this);
  return text.GetAsString();
}

namespace {

// Decoded lengths point to the tokens of their `calc()`, which the section that holds the value keeps alive.
void KeepCalcs(TCSSValue& value, TCSSSection& section) {
  for (TMeasureValue* measure : {&value.Value1, &value.Value2})
    if (measure->Calc) measure->Calc = section.KeepCalc(*measure->Calc);
}

// Hands what `from` says about the value's property over, and takes it out of `from`.
void TakeNewValue(TCSSValue& value, TCSSSection& section, TCSSValues& from) {
  from.EraseIf([&](TCSSValue& newValue) {
    if (!HtSameAscii(newValue.NameToken.Name, value.NameToken.Name)) return false;
    value.Tokens = std::move(newValue.Tokens);
    value.Value1 = newValue.Value1;
    KeepCalcs(value, section);
    return true;
  });
}

}  // namespace

void TCSSSelectors::DistinctAdd(TCSSSelector* selector) {
  TCSSSelector* first = FirstItem<TCSSSelector>();
  if (!first || first->Weight != selector->Weight) {
    Add(selector);
    return;
  }
  TCSSSection& section = *first->Section;
  TCSSValues& newValues = selector->Section->Values;
  for (size_t i = section.Values.size(); i-- > 0 && !newValues.empty();)
    TakeNewValue(section.Values[i], section, newValues);
  for (const TCSSValue& value : newValues) {
    section.AddValue(value);
    KeepCalcs(section.Values.back(), section);
  }
  newValues.clear();
  section.Compile();
}

}  // namespace ht
