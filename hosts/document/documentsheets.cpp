#include "document/documentsheets.h"

#include <algorithm>

#include "document/variables.h"
#include "htmlcss/cssparser.h"
#include "htmlpars/lower.h"
#include "htutils/urls.h"

namespace ht {

namespace {

constexpr int32_t kMaxImportDepth = 50;

// Takes "x/../" and "./" out of the path, so that a sheet has one address.
hstring WithoutDots(std::u16string_view address) {
  constexpr std::u16string_view kSite = u"://";
  const size_t site = address.find(kSite);
  const size_t path =
      site == address.npos ? 0 : std::min(address.find(u'/', site + kSite.size()), address.size());
  const size_t end = std::min(address.find_first_of(u"?#", path), address.size());
  std::vector<std::u16string_view> steps;
  for (size_t start = path; start <= end;) {
    const size_t next = std::min(address.find(u'/', start), end);
    const std::u16string_view step = address.substr(start, next - start);
    if (step == u".." && !steps.empty() && steps.back() != u".." && !steps.back().empty())
      steps.pop_back();
    else if (step != u".")
      steps.push_back(step);
    start = next + 1;
  }
  hstring result = address.substr(0, path);
  for (size_t i = 0; i < steps.size(); ++i) result += (i > 0 ? u"/" : u"") + hstring(steps[i]);
  return result + address.substr(end);
}

bool HasScheme(std::u16string_view address) {
  const size_t colon = address.find_first_of(u":/?#");
  return colon != address.npos && colon > 0 && address[colon] == u':';
}

hstring Resolved(const hstring& base, const hstring& address) {
  const bool alone = HasScheme(address) || base.View().find(u'/') == base.View().npos;
  return WithoutDots(alone ? address : CombineUrl(base, address));
}

bool HasWord(std::u16string_view words, std::u16string_view word) {
  while (!(words = HtTrim(words)).empty()) {
    const size_t end = std::min(words.find_first_of(u" \t\r\n\f"), words.size());
    if (HtSameAscii(words.substr(0, end), word)) return true;
    words.remove_prefix(end);
  }
  return false;
}

hstring Joined(const TCSSTokens& tokens) {
  hstring text;
  for (const TCSSToken& token : tokens) text += token.Name + u" ";
  return text;
}

// Whether the text of a selector begins with `:root`, of which the library knows no more than of `:foo`. Negations and
// conditions may follow in the compound, but no other pseudo-class.
bool BeginsWithRoot(std::u16string_view selector) {
  constexpr std::u16string_view kRoot = u":root", kNegation = u":not(";
  if (!selector.starts_with(kRoot)) return false;
  selector.remove_prefix(kRoot.size());
  const std::u16string_view rest = selector.substr(0, selector.find_first_of(u" \t\r\n\f>+~,{"));
  if (rest.empty() || rest.starts_with(kNegation)) return true;
  return std::u16string_view(u".#[").find(rest[0]) != rest.npos && rest.find(u':') == rest.npos;
}

// Makes it the element "html", with the weight of a pseudo-class.
void FindRoot(TCSSSelector& selector, std::u16string_view source) {
  const auto start = static_cast<size_t>(std::max(selector.StartPos, 1)) - 1;
  if (start >= source.size() || !BeginsWithRoot(source.substr(start))) return;
  TCSSSelector* first = &selector;
  while (first->Parent) first = first->Parent.get();
  if (!first->Tag.Empty() || !first->Pseudos.Contains(pcUnknown)) return;
  first->Tag = u"html"_hs;
  first->Pseudos.Exclude(pcUnknown);
  if (first->Pseudo == pcUnknown) first->Pseudo = pcNone;
  selector.DetermineTestProc();
}

}  // namespace

void TDocumentSheets::Add(const hstring& text, const hstring& baseURL) { FAdded.emplace_back(text, baseURL); }

void TDocumentSheets::Collect(const THtNode& root, const hstring& baseURL, const TDocumentView& view) {
  FView = view;
  FBefore.merge(FSheets);
  FTaken.clear();
  FAuthor = std::make_unique<TCSSStyleSheet>();
  FHasVariables = FHasSiblingRules = false;
  FUsedPseudos = {};

  std::vector<TSheet*> named, lastFirst;
  hstring base = baseURL;
  for (const THtNode* node = &root; node; node = node->NextNodeBelow(&root)) {
    if (node->GetTagId() == tgBase && base == baseURL)
      base = Resolved(baseURL, node->GetAttribute(u"href"_hs));
    AddElement(*node, base, named);
  }
  for (const auto& [text, url] : FAdded) named.push_back(&Embedded(text, url));

  // From the last to the first, the imports of a sheet behind it: what is met again stands at a later place already.
  std::reverse(named.begin(), named.end());
  for (TSheet* sheet : named) AddWithImports(*sheet, lastFirst, 0);
  std::reverse(lastFirst.begin(), lastFirst.end());
  for (TSheet* sheet : lastFirst) File(*sheet);
}

void TDocumentSheets::AddElement(const THtNode& node, const hstring& baseURL, std::vector<TSheet*>& named) {
  const bool isStyle = node.TagType == htStyle;
  if (!isStyle && node.GetTagId() != tgLink) return;
  const hstring rel = node.GetAttribute(u"rel"_hs), type = node.GetAttribute(u"type"_hs);
  if (!isStyle && (!HasWord(rel, u"stylesheet") || HasWord(rel, u"alternate"))) return;
  if (!type.Empty() && !HtSameAscii(type, u"text/css")) return;
  if (node.HasAttribute(u"disabled"_hs) || !MediaHold(node.GetAttribute(u"media"_hs))) return;
  named.push_back(isStyle ? &Embedded(node.GetContent(), baseURL)
                          : &Linked(Resolved(baseURL, node.GetAttribute(u"href"_hs))));
}

void TDocumentSheets::AddWithImports(TSheet& sheet, std::vector<TSheet*>& lastFirst, int32_t depth) {
  if (!FTaken.insert(&sheet).second) return;
  lastFirst.push_back(&sheet);
  if (depth == kMaxImportDepth) return;
  for (auto import = sheet.Imports.rbegin(); import != sheet.Imports.rend(); ++import)
    if (MediaHold(import->Media)) AddWithImports(Linked(import->Address), lastFirst, depth + 1);
}

void TDocumentSheets::File(TSheet& sheet) {
  FAuthor->Assign(sheet.Rules);
  FHasVariables |= sheet.HasVariables;
  for (int32_t i = 0; i < sheet.Rules.fSections.GetCount(); ++i)
    for (const TCSSSelector* selector : sheet.Rules.GetSection(i)->Selectors) NoteSelector(*selector);
}

void TDocumentSheets::NoteSelector(const TCSSSelector& selector) {
  for (const TCSSSelector* part = &selector; part; part = part->Parent.get()) {
    FUsedPseudos = FUsedPseudos + part->Pseudos;
    for (const auto& negated : part->Nots) FUsedPseudos = FUsedPseudos + negated->Pseudos;
    FHasSiblingRules |= part->Parent && part->Position >= spSibling;
  }
}

TDocumentSheets::TSheet& TDocumentSheets::Embedded(const hstring& text, const hstring& baseURL) {
  const hstring key = u"\n" + baseURL + u"\n" + text;
  TSheet* known = Known(key);
  return known ? *known : Read(key, text, baseURL);
}

TDocumentSheets::TSheet& TDocumentSheets::Linked(const hstring& address) {
  if (TSheet* known = Known(address)) return *known;
  return Read(address, Loader && !address.Empty() ? Loader(address) : hstring(), address);
}

TDocumentSheets::TSheet* TDocumentSheets::Known(std::u16string_view key) {
  if (auto before = FBefore.extract(key)) return FSheets.insert(std::move(before)).position->second.get();
  const auto found = FSheets.find(key);
  return found == FSheets.end() ? nullptr : found->second.get();
}

TDocumentSheets::TSheet& TDocumentSheets::Read(const hstring& key, const hstring& text, const hstring& url) {
  auto sheet = std::make_unique<TSheet>();
  TSheet& result = *sheet;
  result.Key = key;
  TCSSStyleSheet& rules = result.Rules;
  rules.URL = url;
  rules.Parse(text);
  for (int32_t i = 0; i < rules.fSections.GetCount(); ++i)
    for (TCSSSelector* selector : rules.GetSection(i)->Selectors) FindRoot(*selector, text);
  result.HasVariables = HtPrepareVariables(rules);

  // The media of an import are known only to the parser.
  if (const int32_t count = rules.Imports().GetCount(); count > 0) {
    TCSSParser parser(text);
    while (parser.Imports.size() < static_cast<size_t>(count) && parser.NextSection()) {}
    for (const TCSSImport& import : parser.Imports)
      result.Imports.push_back({Resolved(url, import.Address.Name), Joined(import.Media)});
  }
  FSheets.emplace(result.Key, std::move(sheet));
  return result;
}

bool TDocumentSheets::MediaHold(const hstring& media) const {
  if (HtTrim(media).empty()) return true;
  if (media.View().find_first_of(u"{};") != media.View().npos) return false;
  TCSSStyleSheet probe;
  probe.Parse(u"@media " + media + u"{*{top:0}}");
  probe.TestMediaSets(FView.Media, static_cast<int32_t>(FView.Width), FView.DeviceWidth);
  return probe.MediaSets.GetCount() > 0 && !static_cast<TCSSMediaSet*>(probe.MediaSets.Get(0))->Disabled;
}

}  // namespace ht
