#include "document/documentnode.h"

#include "document/document.h"

namespace ht {

TDocumentNode::~TDocumentNode() = default;

TDocumentStyle* TDocumentNode::Style() const { return static_cast<TDocumentStyle*>(FStyle.get()); }

TDocument* TDocumentNode::Document() const {
  return dynamic_cast<TDocument*>(const_cast<TDocumentNode*>(this)->Root());
}

const TClass* TDocumentNode::GetStyleClass() const { return IsElement() ? TDocumentStyle::Class() : nullptr; }

TStyledHTMLNode* TDocumentNode::RootNodeElement() {
  return FTagId == tgHtml ? this : TStyledHTMLNode::RootNodeElement();
}

const TRectF* TDocumentNode::GetDrawRect() const {
  const TDocument* document = Document();
  return document ? &document->OuterRect : &OuterRect;
}

const float& TDocumentNode::GetViewPortWidth() const {
  const TDocument* document = Document();
  return document ? document->View().Width : TStyledHTMLNode::GetViewPortWidth();
}

const float& TDocumentNode::GetViewPortHeight() const {
  const TDocument* document = Document();
  return document ? document->View().Height : TStyledHTMLNode::GetViewPortHeight();
}

// Queries ask elements with a style only, so that they get one as soon as they are read.
void TDocumentNode::ParseAttributes(THtmlParser& parser) {
  TStyledHTMLNode::ParseAttributes(parser);
  if (!FStyle) CreateStyle();
}

void TDocumentNode::AfterParse() {
  TStyledHTMLNode::AfterParse();
  if (!FStyle) CreateStyle();
}

// Changes

void TDocumentNode::ChildrenChanged() {
  for (TDocumentNode* node = this; node && !node->FChangesBelow; node = node->GetParent())
    node->FChangesBelow = true;
}

void TDocumentNode::StyleChanged(bool propagate) {
  TStyledHTMLNode::StyleChanged(propagate);
  FStyleBelow |= propagate;
  if (FParent) GetParent()->ChildrenChanged();
}

// Any attribute may stand in a condition of a rule for this node or for others.
bool TDocumentNode::SetAttribute(const hstring& name, const hstring& value) {
  if (!TStyledHTMLNode::SetAttribute(name, value)) return false;
  StyleChanged(true);
  return true;
}

void TDocumentNode::SetParent(THtNode* parent) {
  TStyledHTMLNode::SetParent(parent);
  if (!parent) return;
  ForgetStyles();
  StyleChanged(true);
}

// A subtree that comes from elsewhere may have declarations of sheets that are no longer there.
void TDocumentNode::ForgetStyles() {
  for (THtNode* node = this; node; node = node->NextNodeBelow(this)) {
    auto& joining = static_cast<TDocumentNode&>(*node);
    if (!joining.Container) continue;
    joining.ResetStyle(true);
    joining.Flags.Exclude(efStyleCalculated);
    joining.Container = joining.Before = joining.After = nullptr;
    joining.FGenerated.reset();
  }
}

THtNode* TDocumentNode::InternalAddChild(const THtNodeClass* nodeClass) {
  ChildrenChanged();
  return TStyledHTMLNode::InternalAddChild(nodeClass);
}

void TDocumentNode::DeleteChild(THtNode* node) {
  TStyledHTMLNode::DeleteChild(node);
  ChildrenChanged();
}

void TDocumentNode::DeleteAllChildren() {
  TStyledHTMLNode::DeleteAllChildren();
  ChildrenChanged();
}

void TDocumentNode::SetPseudoClass(TCSSPseudoClass pseudo, bool on) {
  if (FStyle && FStyle->ApplyPseudoClass(pseudo, on)) StyleChanged(true);
}

}  // namespace ht
