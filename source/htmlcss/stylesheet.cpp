#include "htmlcss/stylesheet.h"

#include "htmlcss/cssparser.h"
#include "htmlcss/cssproptable.h"
#include "htmlpars/lowername.h"
#include "htutils/strsearch.h"
#include "htutils/urls.h"

namespace ht {

namespace {

constexpr int32_t kFirstOwnOrder = 10000;  // of sheets that do not start low

bool HasSizeLimits(const TCSSMediaSet& set) {
  return set.MinWidth != 0 || set.MaxWidth != 0 || set.MinDeviceWidth != 0 || set.MaxDeviceWidth != 0;
}

TCSSStyleMaps& Needed(std::unique_ptr<TCSSStyleMaps>& maps) {
  if (!maps) maps = std::make_unique<TCSSStyleMaps>();
  return *maps;
}

}  // namespace

void TCSSStyleSheet::Parse(const hstring& text, int32_t weight, bool custom) {
  if (BlankString(text)) return;
  TCSSParser parser(text, true);
  while (parser.NextSection()) AddSection(std::move(parser.Section), parser.KeyFrameName, weight, custom);
  TakeImports(parser);
  TakeMediaSets(parser);
}

void TCSSStyleSheet::ParseValues(const hstring& text, int32_t weight) {
  TCSSParser parser(text, true);
  parser.Section = std::make_unique<TCSSSection>();
  parser.ReadSectionValues();
  std::unique_ptr<TCSSSection> section = std::move(parser.Section);
  if (section->Values.empty()) return;
  section->MediaSet = TCSSMediaSet::Default();
  section->Compile();
  auto all = std::make_unique<TCSSSelector>();
  all->Tag = u"*"_hs;
  all->DetermineTestProc();
  section->AddSelector(all.release());
  FileSection(std::move(section), weight);
}

void TCSSStyleSheet::AddSection(std::unique_ptr<TCSSSection> section, const hstring& keyFrameName,
                                int32_t weight, bool custom) {
  if (section->Values.empty()) return;
  section->URL = URL;
  if (section->FontFace) {
    AddFont(*section);
    fSections.Add(section.release());
  } else if (!keyFrameName.Empty()) {
    if (!KeyFrames) KeyFrames = std::make_unique<TCSSKeyFrameMap>();
    KeyFrames->AddSection(keyFrameName, section.release());
  } else {
    section->Custom = custom;
    for (const TCSSValue& value : section->Values) {
      const std::u16string_view name = value.NameToken.Name;
      if (name.starts_with(u"--")) AddVariable(name.substr(2), value.Tokens);
    }
    FileSection(std::move(section), weight);
  }
}

// A section whose values all went into an earlier one is of no use, unless lengths of that one point to tokens here.
void TCSSStyleSheet::FileSection(std::unique_ptr<TCSSSection> section, int32_t weight) {
  for (TCSSSelector* selector : section->Selectors) {
    selector->Weight = weight == -1 ? selector->CalcWeight() : weight;
    AddSelector(selector);
  }
  if (!section->Values.empty() || section->FCalcValues) fSections.Add(section.release());
}

void TCSSStyleSheet::TakeImports(const TCSSParser& parser) {
  for (const TCSSImport& import : parser.Imports) {
    const hstring& address = import.Address.Name;
    Imports().Add(URL.Empty() ? address : CombineUrl(URL, address));
  }
}

void TCSSStyleSheet::TakeMediaSets(TCSSParser& parser) {
  if (!parser.MediaSets) return;
  parser.MediaSets->SetOwnsObjects(false);
  for (int32_t i = parser.MediaSets->GetCount(); i-- > 0;) {
    auto* set = parser.MediaSets->Get<TCSSMediaSet>(i);
    FOwnMediaSets.Add(set);
    MediaSets.Add(set);
    set->HasSizeQuery |= HasSizeLimits(*set);
    HasMediaSizeQueries |= set->HasSizeQuery;
    HasMediaQueries |= set->HasSizeQuery || set->Medias != TCSSMedias{cmAll};
  }
  parser.MediaSets.reset();
}

TStringList& TCSSStyleSheet::Imports() {
  if (!FImports) FImports = std::make_unique<TStringList>();
  return *FImports;
}

TCSSStyleMaps& TCSSStyleSheet::MapsFor(const TCSSSelector& selector) {
  if (selector.Pseudos.Contains(pcBefore)) return Needed(Before);
  if (selector.Pseudos.Contains(pcAfter)) return Needed(After);
  return selector.Pseudos.Contains(pcMarker) ? Needed(Marker) : Main;
}

void TCSSStyleSheet::AddSelector(TCSSSelector* selector) {
  ++SelectorCounter;
  if (selector->Order == 0 || selector->Order >= kFirstOwnOrder) selector->Order = SelectorCounter;
  MapsFor(*selector).AddSelector(selector, !FHasForeignRules);
}

void TCSSStyleSheet::AddVariable(const hstring& name, const TCSSTokens& tokens) {
  if (!Variables)
    Variables = std::make_unique<THtObjectDictionary>(16, true, HtNameOffset(&TCSSVariable::Name));
  if (auto* known = Variables->Get<TCSSVariable>(name)) {
    known->Earlier.push_back(std::move(known->Tokens));
    known->Tokens = tokens;
  } else {
    Variables->AddObject(new TCSSVariable(name, tokens));
  }
}

void TCSSStyleSheet::AddInlineValue(const hstring& name, const hstring& value) {
  if (fSections.GetCount() == 0 || !CSSPropDictionary().ContainsKey(THtLowerName(name))) return;
  TCSSTokenizer tokenizer(value, true);
  if (!tokenizer.NextToken()) return;
  TCSSValue added;
  added.NameToken.CType = ctIdent;
  added.NameToken.Name = name;
  added.Tokens.Append(std::move(tokenizer.Token));
  TCSSSection& section = *GetSection(0);
  section.AddValue(added);
  TCSSParser::PrepareValue(section.Values.back(), section);
}

void TCSSStyleSheet::Assign(const TCSSStyleSheet& other) {
  FHasForeignRules = true;
  for (int32_t i = 0; i < other.fSections.GetCount(); ++i)
    for (TCSSSelector* selector : other.GetSection(i)->Selectors) AddSelector(selector);
  HasMediaQueries |= other.HasMediaQueries;
  HasMediaSizeQueries |= other.HasMediaSizeQueries;
  for (int32_t i = other.MediaSets.GetCount(); i-- > 0;) MediaSets.Add(other.MediaSets.Get(i));
  if (other.CustomFonts) AddFonts(*other.CustomFonts);
  if (other.KeyFrames) {
    if (!KeyFrames) KeyFrames = std::make_unique<TCSSKeyFrameMap>();
    KeyFrames->Assign(*other.KeyFrames);
  }
  if (other.Variables)
    for (int32_t i = 0; const auto* variable = other.Variables->GetNext<TCSSVariable>(i);)
      AddVariable(variable->Name, variable->Tokens);
}

template <class TVisit>
void TCSSStyleSheet::VisitMaps(TVisit visit) {
  visit(Main);
  for (const auto& maps : {Before.get(), After.get(), Marker.get()})
    if (maps) visit(*maps);
}

void TCSSStyleSheet::Clear() {
  VisitMaps([](TCSSStyleMaps& maps) { maps.Clear(); });
  fSections.Clear();
  FHasForeignRules = false;
  if (KeyFrames) KeyFrames->Clear();
}

void TCSSStyleSheet::ClearProp(std::u16string_view name) {
  for (int32_t i = 0; i < fSections.GetCount(); ++i) {
    TCSSSection& section = *GetSection(i);
    const auto isNamed = [name](const TCSSValue& value) { return HtSameAscii(value.NameToken.Name, name); };
    if (section.Values.EraseIf(isNamed) > 0) section.Compile();
  }
}

void TCSSStyleSheet::ClearSection(std::u16string_view selectorText) {
  for (int32_t i = fSections.GetCount(); i-- > 0;) {
    TCSSSection* section = GetSection(i);
    if (section->Selectors.GetCount() == 0 || section->Selectors.GetSelector(0)->AsString() != selectorText)
      continue;
    section->Values.clear();
    VisitMaps([section](TCSSStyleMaps& maps) { maps.RemoveSection(section); });
    fSections.Delete(i);
  }
}

}  // namespace ht
