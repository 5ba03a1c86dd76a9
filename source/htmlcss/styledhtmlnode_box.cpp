// The arithmetic of the box.

#include <cmath>

#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htutils/samevalue.h"

namespace ht {

namespace {

constexpr TSet<TDisplayStyle> kWithoutMargins{dsTableRow, dsTableRowGroup, dsTableCell};

bool Has(const TStyledHTMLNode& node, TCSSGeneralProperty group) {
  return node.FStyle && node.FStyle->GeneralProps.Contains(group);
}

bool IsRelative(const TStyledHTMLNode& node, TCSSGeneralProperty group) {
  return node.FStyle->RelativeProps.Contains(group);
}

void ReadPaddings(TStyledHTMLNode& node) {
  TBaseElementStyle& style = *node.FStyle;
  node.PaddingTop = style.PaddingTopPx();
  node.FPaddingRight = style.PaddingRightPx();
  node.PaddingBottom = style.PaddingBottomPx();
  node.FPaddingLeft = style.PaddingLeftPx();
}

void ReadBorders(TStyledHTMLNode& node) {
  TBaseElementStyle& style = *node.FStyle;
  const auto width = [](float pixels) { return SameValue(pixels, 0) ? 0 : pixels; };
  node.BorderTop = width(style.BorderTopWidthPx());
  node.BorderRight = width(style.BorderRightWidthPx());
  node.BorderBottom = width(style.BorderBottomWidthPx());
  node.BorderLeft = width(style.BorderLeftWidthPx());
}

// A vertical box is laid out as a horizontal one that is turned.

void TurnMargins(TStyledHTMLNode& node) {
  std::swap(node.MarginTop, node.MarginLeft);
  std::swap(node.MarginBottom, node.MarginRight);
}

void TurnPaddings(TStyledHTMLNode& node) {
  std::swap(node.PaddingTop, node.FPaddingLeft);
  std::swap(node.PaddingBottom, node.FPaddingRight);
}

void TurnBorders(TStyledHTMLNode& node) {
  std::swap(node.BorderTop, node.BorderLeft);
  std::swap(node.BorderBottom, node.BorderRight);
}

}  // namespace

void TStyledHTMLNode::CalcNonRelativeProps() {
  if (!FStyle) return;
  TBaseElementStyle& style = *FStyle;
  if (!Has(*this, cgMargin)) {
    MarginRight = MarginLeft = 0;
  } else if (!IsRelative(*this, cgMargin) && !kWithoutMargins.Contains(style.FDisplay)) {
    MarginRight = style.MarginRightPx();
    MarginLeft = style.MarginLeftPx();
  }
  if (Has(*this, cgPadding) && !IsRelative(*this, cgPadding))
    ReadPaddings(*this);
  else
    PaddingTop = FPaddingRight = PaddingBottom = FPaddingLeft = 0;
  if (Has(*this, cgBorder) && !IsRelative(*this, cgBorder))
    ReadBorders(*this);
  else
    BorderTop = BorderRight = BorderBottom = BorderLeft = 0;
  if (!Flags.Contains(efVertical)) return;
  TurnMargins(*this);
  TurnPaddings(*this);
  TurnBorders(*this);
}

void TStyledHTMLNode::CalcRelativeProps() {
  if (!FStyle) return;
  if (IsRelative(*this, cgPadding)) {
    ReadPaddings(*this);
    if (Flags.Contains(efVertical)) TurnPaddings(*this);
  }
  if (IsRelative(*this, cgBorder)) {
    ReadBorders(*this);
    if (Flags.Contains(efVertical)) TurnBorders(*this);
  }
}

void TStyledHTMLNode::CalcRects() {
  InnerWidth = OuterRect.Width() - VScrollBarWidth();
  InnerHeight = OuterRect.Height() - HScrollBarHeight();
  if (!FStyle) return;
  if (Has(*this, cgMargin) && FStyle->FDisplay != dsTableCell) {
    InnerWidth -= MarginLeft + MarginRight;
    InnerHeight -= MarginTop + MarginBottom;
  }
  if (Has(*this, cgPadding)) {
    InnerWidth -= FPaddingLeft + FPaddingRight;
    InnerHeight -= PaddingTop + PaddingBottom;
  }
  if (Has(*this, cgBorder)) {
    InnerWidth -= BorderLeft + BorderRight;
    InnerHeight -= BorderTop + BorderBottom;
  }
}

bool TStyledHTMLNode::RightToLeft() const { return FStyle && FStyle->CalculatedDirection == cdRTL; }

float TStyledHTMLNode::PaddingLeft() const { return RightToLeft() ? FPaddingRight : FPaddingLeft; }
float TStyledHTMLNode::PaddingRight() const { return RightToLeft() ? FPaddingLeft : FPaddingRight; }

float TStyledHTMLNode::LeftDelta() const { return PaddingLeft() + MarginLeft + BorderLeft; }
float TStyledHTMLNode::TopDelta() const { return PaddingTop + MarginTop + BorderTop; }
float TStyledHTMLNode::RightDelta() const {
  return VScrollBarWidth() + PaddingRight() + MarginRight + BorderRight;
}
float TStyledHTMLNode::BottomDelta() const {
  return HScrollBarHeight() + PaddingBottom + MarginBottom + BorderBottom;
}

TRectF TStyledHTMLNode::BorderRect() const {
  return {OuterRect.Left + MarginLeft, OuterRect.Top + MarginTop, OuterRect.Right - MarginRight,
          OuterRect.Bottom - MarginBottom};
}

TRectF TStyledHTMLNode::PaddingRect() const {
  const TRectF r = BorderRect();
  return {r.Left + BorderLeft, r.Top + BorderTop, r.Right - BorderRight, r.Bottom - BorderBottom};
}

TRectF TStyledHTMLNode::InnerRect() const {
  return {OuterRect.Left + LeftDelta(), OuterRect.Top + TopDelta(), OuterRect.Right - RightDelta(),
          OuterRect.Bottom - BottomDelta()};
}

TRectF TStyledHTMLNode::Rects(int32_t) const { return BorderRect(); }

float TStyledHTMLNode::InnerDeltaX() const {
  if (Flags.Contains(efText)) return 0;
  return VScrollBarWidth() + (Has(*this, cgPadding) ? FPaddingLeft + FPaddingRight : 0);
}

float TStyledHTMLNode::InnerDeltaY() const {
  if (Flags.Contains(efText)) return 0;
  return HScrollBarHeight() + (Has(*this, cgPadding) ? PaddingTop + PaddingBottom : 0);
}

float TStyledHTMLNode::OuterDeltaX() const {
  if (Flags.Contains(efText)) return 0;
  return (Has(*this, cgMargin) ? MarginLeft + MarginRight : 0) +
         (Has(*this, cgBorder) ? BorderLeft + BorderRight : 0);
}

float TStyledHTMLNode::OuterDeltaY() const {
  if (Flags.Contains(efText) || (FStyle && FStyle->FDisplay == dsInline)) return 0;
  return (Has(*this, cgMargin) ? MarginTop + MarginBottom : 0) +
         (Has(*this, cgBorder) ? BorderTop + BorderBottom : 0);
}

void TStyledHTMLNode::RTLInc(float& value, float delta) const { value += RightToLeft() ? -delta : delta; }

int32_t TStyledHTMLNode::ColumnCount() const {
  if (!FStyle) return 1;
  const int32_t count = FStyle->ColumnCount();
  if (count >= 2) return count;
  TMeasure width, gap;
  FStyle->ColumnWidth(width);
  if (width.GetAuto()) return 1;
  FStyle->ColumnGap(gap);
  const float gapPixels = gap.GetFPixels();
  const float fitting = (InnerWidth + gapPixels) / (width.GetFPixels() + gapPixels);
  constexpr float kMostColumns = 65535;
  return fitting > 1 ? static_cast<int32_t>(std::min(fitting, kMostColumns)) : 1;
}

TBlockFloats& TStyledHTMLNode::GetFloatMap() {
  if (!FFloatMap) FFloatMap = std::make_unique<TBlockFloats>(*this);
  return *FFloatMap;
}

}  // namespace ht
