#include "document/variables.h"

#include <algorithm>
#include <span>

#include "document/documentnode.h"
#include "document/documentstyle.h"
#include "htmlcss/cssparser.h"

namespace ht {

namespace {

bool IsReference(const TCSSToken& token) { return token.CType == ctFunction && token.Name == u"var"; }
bool IsDefinition(const TCSSValue& value) {
  return value.Vendor && value.NameToken.Name.View().starts_with(u"--");
}
bool HasReference(const TCSSValue& value) {
  return std::any_of(value.Tokens.begin(), value.Tokens.end(), IsReference);
}
bool IsWord(const TCSSTokens& tokens, std::u16string_view word) {
  return tokens.Count() == 1 && tokens[0].CType == ctIdent && tokens[0].Name == word;
}

struct TDefinition {
  const TDocumentNode* Element = nullptr;
  const TCSSTokens* Tokens = nullptr;  // null: there is none
};

const TCSSTokens* OwnDefinition(const TDocumentNode& element, const hstring& name) {
  constexpr size_t kDashes = 2;
  if (element.SelfStyleSheet)
    if (const TCSSVariable* own = element.SelfStyleSheet->FindVariable(name.View().substr(kDashes)))
      return &own->Tokens;
  if (!element.Style()) return nullptr;
  const std::vector<PCSSValue>& variables = element.Style()->Variables;
  const auto found = std::find_if(variables.rbegin(), variables.rend(),
                                  [&](PCSSValue value) { return value->NameToken.Name == name; });
  return found == variables.rend() ? nullptr : &(*found)->Tokens;
}

TDefinition FindDefinition(const TDocumentNode& from, const hstring& name) {
  if (!name.View().starts_with(u"--")) return {};
  for (const TDocumentNode* element = &from; element; element = element->GetParent()) {
    const TCSSTokens* tokens = OwnDefinition(*element, name);
    if (!tokens || IsWord(*tokens, u"inherit") || IsWord(*tokens, u"unset")) continue;
    if (IsWord(*tokens, u"initial")) break;
    return {element, tokens};
  }
  return {};
}

// Writes tokens out with their references replaced. A value that doubles itself again and again comes to an end at
// kMostSteps, and a chain of definitions at kDeepest.
class TResolver {
 public:
  bool Append(const TDocumentNode& element, std::span<const TCSSToken> tokens) {
    for (size_t i = 0; i < tokens.size(); ++i) {
      if (++FSteps > kMostSteps) return false;
      if (!IsReference(tokens[i])) {
        FResult.push_back(tokens[i]);
        continue;
      }
      const size_t end = EndOfFunction(tokens, i);
      if (!AppendReference(element, tokens.subspan(i, end - i))) return false;
      i = end;
    }
    return true;
  }
  TCSSTokens TakeResult() { return TCSSTokens::Taken(FResult); }

 private:
  static constexpr int32_t kMostSteps = 20000;
  static constexpr size_t kDeepest = 100;

  // The index of the parenthesis that closes the function, or the end.
  static size_t EndOfFunction(std::span<const TCSSToken> tokens, size_t index) {
    for (int32_t depth = 0; index < tokens.size(); ++index) {
      if (tokens[index].CType == ctOpenPar) ++depth;
      if (tokens[index].CType == ctClosePar && --depth <= 0) break;
    }
    return index;
  }

  // The reference without its closing parenthesis: var ( name , fallback
  bool AppendReference(const TDocumentNode& element, std::span<const TCSSToken> reference) {
    constexpr size_t kName = 2, kComma = 3, kFallback = 4;
    if (reference.size() <= kName) return false;
    const TDefinition found = FindDefinition(element, reference[kName].Name);
    if (found.Tokens && AppendDefinition(found)) return true;
    return reference.size() > kComma && reference[kComma].CType == ctComma &&
           Append(element, reference.subspan(kFallback));
  }

  bool AppendDefinition(const TDefinition& definition) {
    if (FOpen.size() == kDeepest || std::find(FOpen.begin(), FOpen.end(), definition.Tokens) != FOpen.end())
      return false;
    const size_t before = FResult.size();
    FOpen.push_back(definition.Tokens);
    const TCSSTokens& tokens = *definition.Tokens;
    const bool resolved = Append(*definition.Element, {tokens.Data(), static_cast<size_t>(tokens.Count())});
    FOpen.pop_back();
    while (!resolved && FResult.size() > before) FResult.pop_back();
    return resolved;
  }

  THtPoolVector<TCSSToken> FResult;
  std::vector<const TCSSTokens*> FOpen;  // the definitions being written out
  int32_t FSteps = 0;
};

bool SameTokens(const TCSSTokens& a, const TCSSTokens& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const TCSSToken& x, const TCSSToken& y) {
    return x.CType == y.CType && x.Name == y.Name;
  });
}

// The compiled declarations of a rule, but those that have to do with custom properties as they are written.
void PrepareSection(TCSSSection& section) {
  TCSSValues values, compiled;
  values.swap(section.Values);
  for (const TCSSValue& value : values) {
    if (IsDefinition(value) || HasReference(value)) {
      compiled.push_back(value);
      continue;
    }
    section.Values.clear();
    section.Values.push_back(value);
    section.Compile();
    for (const TCSSValue& part : section.CompiledValues) compiled.push_back(part);
  }
  section.Values.swap(values);
  section.CompiledValues.swap(compiled);
}

}  // namespace

bool HtPrepareVariables(TCSSStyleSheet& sheet) {
  bool found = false;
  for (int32_t i = 0; i < sheet.fSections.GetCount(); ++i) {
    TCSSSection& section = *sheet.GetSection(i);
    const auto concerns = [](const TCSSValue& value) { return IsDefinition(value) || HasReference(value); };
    if (!std::any_of(section.Values.begin(), section.Values.end(), concerns)) continue;
    PrepareSection(section);
    found = true;
  }
  return found;
}

bool TVariables::Resolve(const TDocumentNode& element, const TCSSTokens& tokens, TCSSTokens& result) {
  TResolver resolver;
  if (!resolver.Append(element, {tokens.Data(), static_cast<size_t>(tokens.Count())})) return false;
  result = resolver.TakeResult();
  return true;
}

void TVariables::Substitute(TDocumentNode& element, TCSSWeightList& list, TCSSproperties& unset) {
  const auto concerns = [](const TCSSWeightItem& item) {
    return IsDefinition(*item.FObject) || HasReference(*item.FObject);
  };
  if (std::none_of(list.begin(), list.end(), concerns)) return;
  for (const TCSSWeightItem& item : list)
    if (IsDefinition(*item.FObject)) element.Style()->Variables.push_back(item.FObject);

  FList.Clear();
  FFailed.clear();
  for (const TCSSWeightItem& item : list) {
    if (IsDefinition(*item.FObject)) continue;
    if (!HasReference(*item.FObject)) {
      FList.AddValue(item.FID, item.FTag, item.FObject);
      continue;
    }
    TCSSTokens tokens;
    TCSSValues* compiled = nullptr;
    if (Resolve(element, item.FObject->Tokens, tokens) && !tokens.Empty())
      compiled = &Compiled(*item.FObject, tokens);
    if (compiled && !compiled->empty()) {
      FList.AddValues(static_cast<int32_t>(item.FID), item.FTag, {compiled->data(), compiled->size()});
    } else {
      FList.AddValue(item.FID, item.FTag, item.FObject);
      FFailed.push_back(item.FObject);
    }
  }
  std::swap(list, FList);
  if (FFailed.empty()) return;

  TCSSproperties decided;
  for (int32_t i = list.GetCount(); i-- > 0;) {
    PCSSValue value = list.GetValue(i);
    TCSSproperties own{value->Prop->Prop};
    for (const TCSSPropRec* part : value->Prop->SubProps) own.Include(part->Prop);
    if (std::find(FFailed.begin(), FFailed.end(), value) != FFailed.end()) unset = unset + (own - decided);
    decided = decided + own;
  }
}

TCSSValues& TVariables::Compiled(const TCSSValue& value, const TCSSTokens& tokens) {
  std::vector<TOutcome>& outcomes = FCompiled[&value];
  for (TOutcome& outcome : outcomes)
    if (outcome.Name == value.Name && outcome.Important == value.Important &&
        SameTokens(outcome.Tokens, tokens))
      return outcome.Section->CompiledValues;
  auto section = std::make_unique<TCSSSection>();
  section->URL = value.Section->URL;
  section->MediaSet = value.Section->MediaSet;
  // Preparing writes into the tokens, so that the section gets its own.
  TCSSValue own(value.NameToken, TCSSTokens::Copied({tokens.Data(), static_cast<size_t>(tokens.Count())}),
                section.get());
  own.Important = value.Important;
  if (TCSSParser::PrepareValue(own, *section)) section->AddValue(own);
  section->Compile();
  outcomes.push_back({value.Name, tokens, value.Important, std::move(section)});
  return outcomes.back().Section->CompiledValues;
}

}  // namespace ht
