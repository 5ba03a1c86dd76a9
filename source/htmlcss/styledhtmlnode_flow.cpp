// How a node stands in the flow of its document.

#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htutils/strsearch.h"

namespace ht {

namespace {

using TDisplays = TSet<TDisplayStyle>;
using TPositions = TSet<TElementPosition>;

constexpr TDisplays kBlocks{dsBlock, dsTable, dsTableRow, dsTableRowGroup, dsListItem, dsFlex};
constexpr TDisplays kInlineOrHidden{dsInline, dsNone, dsInlineFlex};
constexpr TDisplays kContainers{dsInlineBlock, dsTable,      dsTableRow,   dsTableCell,
                                dsFlex,        dsInlineFlex, dsInlineTable};
constexpr TDisplays kCollapsing{dsBlock, dsTableRow, dsTableRowGroup, dsListItem};
constexpr TPositions kOutOfFlow{epAbsolute, epFixed, epRunning};
constexpr TPositions kRunning{epFixed, epRunning};
constexpr TPositions kPositioned{epRelative, epAbsolute, epFixed, epRunning};
constexpr TPositions kUnpositioned{epStatic, epSticky};

bool Floats(const TStyledHTMLNode& node) { return node.FStyle->Float() != fNone; }

bool HasContent(const TStyledHTMLNode& node) {
  return !node.IsText() || (node.Visible() && !BlankString(node.GetContent()));
}

}  // namespace

bool TStyledHTMLNode::OutofFlow() const {
  return FStyle && (kOutOfFlow.Contains(FStyle->FPosition) || Floats(*this));
}

bool TStyledHTMLNode::HasPositionAround(TSet<TElementPosition> positions) const {
  for (const TStyledHTMLNode* node = this; node; node = node->OuterContainer())
    if (node->FStyle && positions.Contains(node->FStyle->FPosition)) return true;
  return false;
}

bool TStyledHTMLNode::IsRunning() const { return HasPositionAround(kRunning); }
bool TStyledHTMLNode::IsAbsoluteOrRunning() const { return HasPositionAround(kOutOfFlow); }

bool TStyledHTMLNode::IsTransformed() const {
  for (const TStyledHTMLNode* node = this; node; node = node->GetParent())
    if (node->FStyle && node->FStyle->HasTransform()) return true;
  return false;
}

bool TStyledHTMLNode::IsBlock() const { return !IsText() && FStyle && kBlocks.Contains(FStyle->FDisplay); }

bool TStyledHTMLNode::IsBlockOrInlineBlock() const {
  return !IsText() && FStyle && !kInlineOrHidden.Contains(FStyle->FDisplay);
}

bool TStyledHTMLNode::IsBlockContainer() const {
  if (IsText()) return false;
  if (!FParent || FTagId == tgBody) return true;
  return FStyle && (kContainers.Contains(FStyle->FDisplay) || OutofFlow() ||
                    FStyle->OverflowX() != eoVisible || FStyle->OverflowY() != eoVisible);
}

bool TStyledHTMLNode::IsAbsoluteContainer() const {
  if (IsText()) return false;
  if (!FParent) return true;
  return FStyle && (!kUnpositioned.Contains(FStyle->FPosition) || Floats(*this) || FStyle->HasTransform());
}

TStyledHTMLNode* TStyledHTMLNode::NearestBlockParent() const {
  TStyledHTMLNode* node = GetParent();
  while (node && (!node->FStyle || node->FStyle->FDisplay == dsInline)) node = node->GetParent();
  return node;
}

TStyledHTMLNode* TStyledHTMLNode::AbsoluteParent() {
  for (TStyledHTMLNode* node = GetParent(); node; node = node->GetParent())
    if (node->FStyle && (kPositioned.Contains(node->FStyle->FPosition) || Floats(*node))) return node;
  return static_cast<TStyledHTMLNode*>(Root());
}

TStyledHTMLNode* TStyledHTMLNode::BlockContainer() const {
  TStyledHTMLNode* node = Container;
  while (node && !node->IsBlockContainer()) node = node->OuterContainer();
  return node;
}

bool TStyledHTMLNode::MarginCollapsible(int32_t side) const {
  if (!FStyle || IsText() || OutofFlow() || !kCollapsing.Contains(FStyle->FDisplay)) return false;
  TMeasure margin;
  if (side == 0) {
    FStyle->MarginTop(margin);
    return FStyle->BorderTopStyle() == lsNone && !margin.GetAuto() && PaddingTop == 0;
  }
  if (side == 2) {
    FStyle->MarginBottom(margin);
    return FStyle->BorderBottomStyle() == lsNone && !margin.GetAuto() && PaddingBottom == 0;
  }
  return true;
}

bool TStyledHTMLNode::MarginCollapsibleSibling(int32_t side) const {
  if (!IsBlock() || OutofFlow() || FStyle->FDisplay == dsTable) return false;
  TMeasure margin;
  switch (side) {
    case 0: FStyle->MarginTop(margin); break;
    case 1: FStyle->MarginRight(margin); break;
    case 2: FStyle->MarginBottom(margin); break;
    case 3: FStyle->MarginLeft(margin); break;
    default: return false;
  }
  return !margin.GetAuto();
}

TStyledHTMLNode* TStyledHTMLNode::PreviousMarginElement() const {
  THtNode* sibling = PreviousSibling();
  return sibling ? static_cast<TStyledHTMLNode*>(sibling) : GetParent();
}

bool TStyledHTMLNode::SameLine(const TStyledHTMLNode& node) const {
  return node.Container == Container && (node.StartLine() > EndLine() || node.EndLine() < StartLine());
}

TStyledHTMLNode* TStyledHTMLNode::FirstNonEmptyChild() const {
  THtNode* child = FirstChild();
  while (child && !HasContent(static_cast<TStyledHTMLNode&>(*child))) child = child->NextSibling();
  return static_cast<TStyledHTMLNode*>(child);
}

TStyledHTMLNode* TStyledHTMLNode::LastNonEmptyChild() const {
  for (int32_t i = GetCount(); i-- > 0;)
    if (HasContent(*GetNode(i))) return GetNode(i);
  return nullptr;
}

}  // namespace ht
