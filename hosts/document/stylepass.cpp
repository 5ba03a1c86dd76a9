#include "document/stylepass.h"

#include <algorithm>
#include <utility>

#include "document/generatedcontent.h"

namespace ht {

namespace {

constexpr TCSSPseudo kByType{pcFirstOfType, pcLastOfType, pcOnlyOfType};

TDocumentNode* ElementFrom(THtNode* node) {
  while (node && !static_cast<TDocumentNode*>(node)->IsElement()) node = node->NextSibling();
  return static_cast<TDocumentNode*>(node);
}
TDocumentNode* FirstElement(const THtNode& parent) { return ElementFrom(parent.FirstChild()); }
TDocumentNode* ElementBehind(const THtNode& node) { return ElementFrom(node.NextSibling()); }

bool IsEmpty(const TDocumentNode& element) {
  if (FirstElement(element) || !element.GetContent().Empty()) return false;
  for (THtNode* node = element.FirstChild(); node; node = node->NextSibling())
    if (node->GetTag().Empty() && !node->GetContent().Empty()) return false;
  return true;
}

std::unique_ptr<TStylePass::TTagCounts> CountTags(const THtNode& parent) {
  auto tags = std::make_unique<TStylePass::TTagCounts>();
  for (TDocumentNode* child = FirstElement(parent); child; child = ElementBehind(*child))
    ++(*tags)[child->GetTag()].All;
  return tags;
}

bool IsContent(const TCSSWeightItem& item) { return item.FObject->Prop->Prop == cspContent; }

const TCSSStyleMaps* MapsOf(const TCSSStyleSheet& sheet, TCSSPseudoClass kind) {
  switch (kind) {
    case pcBefore: return sheet.Before.get();
    case pcAfter: return sheet.After.get();
    case pcMarker: return sheet.Marker.get();
    default: return &sheet.Main;
  }
}

}  // namespace

TStylePass::TStylePass(TDocument& document) : FDocument(document) {
  FUsed = document.FSheets.UsedPseudos() + document.QueriedPseudos + TCSSPseudo{pcLink, pcChecked};
  FSheets.push_back(&HTML4StyleSheet());
  if (document.Quirks()) {
    FSheets.push_back(&HTML4QuirkStyleSheet());
    FUsed = FUsed + TCSSPseudo{pcFirstChild, pcLastChild};
  }
  FSheets.push_back(&document.FSheets.Author());
}

TStyleChanges TStylePass::Run(bool all) {
  Visit(FDocument, all);
  return std::move(FChanges);
}

// Parents come before children: what is inherited is there. Counters go by document order, too.
void TStylePass::Visit(TDocumentNode& element, bool all) {
  const TTreeDepthGuard guard;
  const bool resolve = all || !element.Flags.Contains(efStyleCalculated);
  bool below = all || element.FStyleBelow;
  TCSSPseudo generated;
  if (resolve) {
    below |= Resolve(element);
    generated = GeneratedKinds(element);
    Generate(element, pcMarker, generated);
    Generate(element, pcBefore, generated);
  }
  const bool visit = below || element.FChangesBelow;
  element.FStyleBelow = element.FChangesBelow = false;
  if (visit) VisitChildren(element, below);
  if (resolve) Generate(element, pcAfter, generated);
}

void TStylePass::VisitChildren(TDocumentNode& parent, bool all) {
  const std::unique_ptr<TTagCounts> tags = (FUsed * kByType).Empty() ? nullptr : CountTags(parent);
  bool isFirst = true;
  for (TDocumentNode *child = FirstElement(parent), *next = nullptr; child; child = next) {
    next = ElementBehind(*child);
    UpdatePseudoClasses(*child, isFirst, !next, tags.get());
    isFirst = false;
    const bool behind = child->FStyleBelow && FDocument.FSheets.HasSiblingRules();
    Visit(*child, all);
    all |= behind;
  }
}

// Pseudo-classes

void TStylePass::UpdatePseudoClasses(TDocumentNode& element, bool isFirst, bool isLast, TTagCounts* tags) {
  TCSSPseudo now = PseudoClassesOfItself(element);
  if (isFirst) now.Include(pcFirstChild);
  if (isLast) now.Include(pcLastChild);
  if (isFirst && isLast) now.Include(pcOnlyChild);
  if (tags) {
    TTagCount& tag = (*tags)[element.GetTag()];
    if (++tag.Seen == 1) now.Include(pcFirstOfType);
    if (tag.Seen == tag.All) now.Include(pcLastOfType);
    if (tag.All == 1) now.Include(pcOnlyOfType);
  }
  if (!element.FStyle) element.CreateStyle();
  TCSSPseudo& present = element.FStyle->CurrentPC;
  now = now * FUsed;
  if (present * kFoundPseudos == now) return;
  present = (present - kFoundPseudos) + now;
  element.Flags.Exclude(efStyleCalculated);
  element.FStyleBelow = true;
}

TCSSPseudo TStylePass::PseudoClassesOfItself(const TDocumentNode& element) const {
  TCSSPseudo result;
  const auto has = [&element](const hstring& name) { return element.HasAttribute(name); };
  switch (element.GetTagId()) {
    case tgA:
      if (has(u"href"_hs)) result.Include(pcLink);
      break;
    case tgInput:
      if (has(u"checked"_hs)) result.Include(pcChecked);
      break;
    case tgDetails:
      if (has(u"open"_hs)) result.Include(pcChecked);
      break;
    case tgOther:
      if (element.GetTag() == u"option" && has(u"selected"_hs)) result.Include(pcChecked);
      break;
    default: break;
  }
  if (FUsed.Contains(pcEmpty) && IsEmpty(element)) result.Include(pcEmpty);
  return result;
}

// One element. Whether what is below is to be resolved as well.
bool TStylePass::Resolve(TDocumentNode& element) {
  if (!element.FStyle) element.CreateStyle();
  TDocumentStyle& style = *element.Style();
  const bool isNew = !element.Container;
  if (!isNew && style.FLastProps.empty()) style.SaveLastProps();
  const std::vector<PCSSValue> variables = std::move(style.Variables);

  FindDeclarations(element, pcNone);
  if (!element.Flags.Contains(efSelfStyleProcessed)) FDocument.FSelfSheets.Give(element);
  if (element.SelfStyleSheet) element.SelfStyleSheet->GetAllSelectors(FList);
  Apply(element);
  return Note(element, isNew) || style.Variables != variables;
}

void TStylePass::FindDeclarations(TDocumentNode& element, TCSSPseudoClass kind) {
  FList.Clear();
  if (element.GetTag().Empty()) return;  // the root above "html"
  const TCSSPseudo asked = kind == pcNone ? TCSSPseudo{} : TCSSPseudo{kind};
  for (const TCSSStyleSheet* sheet : FSheets)
    sheet->GetElementSelectors(element, FList, MapsOf(*sheet, kind), asked);
}

void TStylePass::Apply(TDocumentNode& element) {
  TDocumentStyle& style = *element.Style();
  element.ResetStyle(false);
  element.Flags.Exclude(efHasCounters);
  // First what is inherited, since declarations add to it: `font-weight: normal` takes a bit away. The same goes for the
  // font size, to which `em` refers.
  style.IntFontSize = FDocument.FontSize;
  if (const TDocumentNode* parent = element.GetParent()) {
    style.Inherit(*parent->Style());
    style.IntFontSize = parent->Style()->IntFontSize;
  }
  TCSSproperties unset;
  if (FDocument.FSheets.HasVariables() || element.SelfStyleSheet)
    FDocument.FVariables.Substitute(element, FList, unset);
  style.ApplyValue(FList, false);
  if (!unset.Empty()) style.DeleteProps(unset);
  if (element.Flags.Contains(efHasCounters) && element.FParent)
    element.GetParent()->FChildrenHaveCounters = true;
  if (element.GetTag().Empty()) style.FDisplay = dsBlock;
  TMeasure size;
  style.FontSize(size);
  style.IntFontSize = size.GetFPixels();
  element.FindContainer();
  element.Flags.Include(efStyleCalculated);
  ++FChanges.Resolved;
}

// Whether the style has changed.
bool TStylePass::Note(TDocumentNode& element, bool isNew) {
  bool layout = isNew, repaint = isNew;
  if (!isNew) element.Style()->StyleChanged(layout, repaint);
  element.Style()->FLastProps.clear();
  if (layout || repaint) (layout ? FChanges.Layout : FChanges.Repaint).push_back(&element);
  return layout || repaint;
}

// Generated content

TCSSPseudo TStylePass::GeneratedKinds(TDocumentNode& element) const {
  TCSSPseudo kinds;
  if (element.GetTag().Empty()) return kinds;
  for (const TCSSStyleSheet* sheet : FSheets) sheet->GetElementPseudoClasses(element, kinds);
  if (element.Style()->FDisplay != dsListItem) kinds.Exclude(pcMarker);
  return kinds;
}

void TStylePass::Generate(TDocumentNode& element, TCSSPseudoClass kind, TCSSPseudo kinds) {
  bool wanted = kinds.Contains(kind);
  if (wanted) {
    FindDeclarations(element, kind);
    wanted = kind == pcMarker || std::any_of(FList.begin(), FList.end(), IsContent);
  }
  if (!wanted && !element.FGenerated) return;
  if (!element.FGenerated) element.FGenerated = std::make_unique<TDocumentNode::TGenerated>();
  TDocumentNode::TGenerated& generated = *element.FGenerated;
  std::unique_ptr<TDocumentNode>& node = kind == pcBefore  ? generated.Before
                                         : kind == pcAfter ? generated.After
                                                           : generated.Marker;
  const bool existed = node != nullptr;
  if (wanted && !existed) node = NewGenerated(element, kind);
  if (!wanted || !ResolveGenerated(*node)) node.reset();
  if (existed && !node) FChanges.Layout.push_back(&element);
  element.Before = generated.Before.get();
  element.After = generated.After.get();
}

std::unique_ptr<TDocumentNode> TStylePass::NewGenerated(TDocumentNode& element, TCSSPseudoClass kind) {
  auto node = std::make_unique<TDocumentNode>();
  node->SetTag(kind == pcBefore ? u"::before"_hs : kind == pcAfter ? u"::after"_hs : u"::marker"_hs);
  node->FParent = &element;
  node->CreateStyle();
  node->TStyledHTMLNode::InternalAddChild(TDocumentNode::Class());
  return node;
}

// From the declarations found. Whether there is something to show.
bool TStylePass::ResolveGenerated(TDocumentNode& node) {
  const bool isNew = !node.Container;
  if (!isNew) node.Style()->SaveLastProps();
  Apply(node);
  hstring text;
  if (!HtGeneratedText(node, text)) return false;
  const bool same = !isNew && node.FirstChild()->GetContent() == text;
  if (!same) node.FirstChild()->SetContent(text);
  if (!Note(node, isNew) && !same) FChanges.Layout.push_back(&node);
  return true;
}

}  // namespace ht
