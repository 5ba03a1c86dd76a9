// Which sizes are known before layout, and the limits of sizes.

#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"

namespace ht {

namespace {

using TDisplays = TSet<TDisplayStyle>;
using TPositions = TSet<TElementPosition>;

constexpr TDisplays kSized{dsBlock,    dsInlineBlock, dsTable,      dsTableCell,
                           dsListItem, dsFlex,        dsInlineFlex, dsInlineTable};
constexpr TDisplays kRows{dsTableRow, dsTableRowGroup};
constexpr TDisplays kFillingContainer{dsBlock, dsListItem, dsFlex};
constexpr TDisplays kShrinkToFit{dsInlineBlock, dsInlineFlex, dsInlineTable};
constexpr TPositions kInPlace{epStatic, epRelative};
constexpr TPositions kOffPlace{epAbsolute, epFixed};
constexpr TCSSproperties kSideSpaces{cspMarginLeft, cspMarginRight, cspPaddingLeft, cspPaddingRight};
constexpr TCSSproperties kVerticalSpaces{cspMarginTop, cspMarginBottom, cspPaddingTop, cspPaddingBottom};

constexpr TCSSSizeFlags kWidth{sfFixedWidth, sfDefiniteWidth};
constexpr TCSSSizeFlags kHeight{sfFixedHeight, sfDefiniteHeight};
constexpr TCSSSizeFlags kMinWidth{sfFixedMinWidth, sfDefiniteMinWidth};
constexpr TCSSSizeFlags kMaxWidth{sfFixedMaxWidth, sfDefiniteMaxWidth};
constexpr TCSSSizeFlags kMinHeight{sfFixedMinHeight, sfDefiniteMinHeight};
constexpr TCSSSizeFlags kMaxHeight{sfFixedMaxHeight, sfDefiniteMaxHeight};
constexpr TCSSSizeFlags kOuterDelta{sfFixedOuterDelta, sfDefiniteOuterDelta};
constexpr TCSSSizeFlags kOuterVDelta{sfFixedOuterVDelta, sfDefiniteOuterVDelta};
constexpr TCSSSizeFlags kDefinite{sfDefiniteWidth,      sfDefiniteHeight,     sfDefiniteMinWidth,
                                  sfDefiniteMaxWidth,   sfDefiniteMinHeight,  sfDefiniteMaxHeight,
                                  sfDefiniteOuterDelta, sfDefiniteOuterVDelta};

using TMeasureGetter = void (TBaseElementStyle::*)(TMeasure&);

TMeasure Measure(const TStyledHTMLNode& node, TMeasureGetter getter) {
  TMeasure measure;
  (node.FStyle.get()->*getter)(measure);
  return measure;
}

// A calc() may hold percentages.
bool InPercent(const TMeasure& m) { return m.FMUnit == muPercent || m.Calc; }
bool SameLength(const TMeasure& a, const TMeasure& b) {
  return a.FMUnit == b.FMUnit && a.FValue == b.FValue && a.Calc == b.Calc;
}

// One direction of CalcSizeFlags.
class TSizeFlagsStep {
 public:
  TSizeFlagsStep(TStyledHTMLNode& node, bool containerIsDefinite)
      : FNode(node), FStyle(*node.FStyle), FDisplay(FStyle.FDisplay), FDefinite(containerIsDefinite) {
    if (FDisplay == dsInline && node.IsReplacedElement()) FDisplay = dsInlineBlock;
  }

  void AddWidths() {
    if (kRows.Contains(FDisplay)) {
      if (FNode.Container) FNode.SizeFlags = FNode.Container->SizeFlags;
      return;
    }
    bool relative = false;
    if (FDisplay == dsInline) {
      Add(kWidth);
      relative = HasSidesInPercent();
    } else if (kSized.Contains(FDisplay)) {
      AddSizedWidths();
      relative = HasRelativeSides();
    }
    AddBy(relative, kOuterDelta);
  }

  void AddHeights() {
    if (FDisplay == dsInline) {
      Add(kHeight + kMinHeight + kMaxHeight);
      AddBy(IsPercent(&TBaseElementStyle::MarginTop) || IsPercent(&TBaseElementStyle::MarginBottom) ||
                IsPercent(&TBaseElementStyle::PaddingTop) || IsPercent(&TBaseElementStyle::PaddingBottom),
            kOuterVDelta);
    } else if (kSized.Contains(FDisplay)) {
      AddSizedHeights();
      AddBy(HasUnknownVerticalSpace(), kOuterVDelta);
    }
  }

 private:
  void Add(TCSSSizeFlags flags) { FNode.SizeFlags = FNode.SizeFlags + flags; }
  // What refers to the container is as definite as that.
  void AddBy(bool relative, TCSSSizeFlags flags) {
    if (!relative)
      Add(flags);
    else if (FDefinite)
      Add(flags * kDefinite);
  }

  TMeasure Get(TMeasureGetter getter) const { return Measure(FNode, getter); }
  bool IsPercent(TMeasureGetter getter) const { return InPercent(Get(getter)); }
  bool IsAutoOrPercent(TMeasureGetter getter) const {
    const TMeasure m = Get(getter);
    return m.GetAuto() || InPercent(m);
  }
  bool Has(TCSSProperty prop) const { return FStyle.PropertySet.Contains(prop); }
  bool HasRelativeSpace(TCSSproperties sides) const {
    return (FStyle.RelativeProps.Contains(cgMargin) || FStyle.RelativeProps.Contains(cgPadding)) &&
           !(FStyle.PropertySet * sides).Empty();
  }

  bool HasSidesInPercent() const {
    return (FStyle.GeneralProps.Contains(cgMargin) &&
            (IsPercent(&TBaseElementStyle::MarginLeft) || IsPercent(&TBaseElementStyle::MarginRight))) ||
           (FStyle.RelativeProps.Contains(cgPadding) &&
            (IsPercent(&TBaseElementStyle::PaddingLeft) || IsPercent(&TBaseElementStyle::PaddingRight)));
  }

  bool HasRelativeSides() const {
    return HasRelativeSpace(kSideSpaces) &&
           (IsAutoOrPercent(&TBaseElementStyle::MarginLeft) ||
            IsAutoOrPercent(&TBaseElementStyle::MarginRight) || IsPercent(&TBaseElementStyle::PaddingLeft) ||
            IsPercent(&TBaseElementStyle::PaddingRight));
  }

  bool HasUnknownVerticalSpace() const {
    return HasRelativeSpace(kVerticalSpaces) &&
           (!Has(cspMarginTop) || !Has(cspMarginBottom) || IsAutoOrPercent(&TBaseElementStyle::MarginTop) ||
            IsAutoOrPercent(&TBaseElementStyle::MarginBottom) || IsPercent(&TBaseElementStyle::PaddingTop) ||
            IsPercent(&TBaseElementStyle::PaddingBottom));
  }

  void AddSizedWidths() {
    TMeasure min, max, width;
    if (Has(cspMinWidth)) FStyle.MinWidth(min);
    if (Has(cspMaxWidth)) FStyle.MaxWidth(max);
    if (Has(cspWidth)) FStyle.Width(width);
    const bool isAuto = width.GetAuto();
    if (!isAuto)
      AddBy(width.Relative() || FDisplay == dsTableCell, kWidth);
    else if (!min.GetAuto() && !max.GetAuto() && SameLength(min, max))
      AddBy(InPercent(min), kWidth);

    if (isAuto && FillsContainer()) {
      Add({sfDefiniteWidth});
      if (FNode.Container->SizeFlags.Contains(sfFixedWidth)) Add({sfFixedWidth});
    } else if (FDefinite && kOffPlace.Contains(FStyle.FPosition) && Has(cspLeft) && Has(cspRight)) {
      Add({sfDefiniteWidth});
    } else if (FStyle.FPosition == epRunning) {
      FNode.SizeFlags = kWidth;
    }

    if (!min.GetAuto()) AddBy(InPercent(min), kMinWidth);
    if (!max.GetAuto()) AddBy(InPercent(max), kMaxWidth);
  }

  bool FillsContainer() const {
    return FDefinite && kFillingContainer.Contains(FStyle.FDisplay) && FStyle.Float() == fNone &&
           kInPlace.Contains(FStyle.FPosition) &&
           !(FNode.Container->FStyle && FNode.Container->FStyle->FDisplay == dsFlex);
  }

  void AddSizedHeights() {
    const TMeasure height = Get(&TBaseElementStyle::Height);
    const TMeasure min = Get(&TBaseElementStyle::MinHeight);
    const TMeasure max = Get(&TBaseElementStyle::MaxHeight);
    if (!height.GetAuto()) AddBy(InPercent(height), kHeight);
    if (!min.GetAuto() && !max.GetAuto() && SameLength(min, max)) AddBy(InPercent(min), kHeight);
    if (FDefinite && kOffPlace.Contains(FStyle.FPosition) && !Get(&TBaseElementStyle::Top).GetAuto() &&
        !Get(&TBaseElementStyle::Bottom).GetAuto())
      Add({sfDefiniteHeight});
    if (!min.GetAuto()) AddBy(InPercent(min), kMinHeight);
    if (!max.GetAuto()) AddBy(InPercent(max), kMaxHeight);
  }

  TStyledHTMLNode& FNode;
  TBaseElementStyle& FStyle;
  TDisplayStyle FDisplay;
  const bool FDefinite;  // the container's size in this direction is
};

}  // namespace

void TStyledHTMLNode::CalcSizeFlags(bool reset) {
  if (!FStyle || FStyle->FDisplay == dsNone) return;
  CalcRelativeProps();
  const bool own = Container == this;
  if (reset) SizeFlags = own ? kWidth : TCSSSizeFlags();
  if (GetUserWidth() != 0) SizeFlags = SizeFlags + kWidth;
  TSizeFlagsStep(*this, Container && Container->SizeFlags.Contains(sfDefiniteWidth)).AddWidths();
  TSizeFlagsStep(*this, own || (Container && Container->SizeFlags.Contains(sfDefiniteHeight))).AddHeights();
}

void TStyledHTMLNode::GrowtoContainer() {
  for (TStyledHTMLNode* node = this; node; node = node->OuterContainer()) {
    node->SizeFlags.Include(sfGrowToContainer);
    if (node->SizeFlags.Contains(sfFixedWidth)) break;
  }
}

bool TStyledHTMLNode::RelativeWidth() const {
  if (!FParent || !FStyle) return false;
  bool hasWidth = false;
  if (FStyle->PropertySet.Contains(cspWidth)) {
    const TMeasure width = Measure(*this, &TBaseElementStyle::Width);
    hasWidth = !width.GetAuto();
    if (hasWidth && !width.Relative()) return false;
  }
  if (!hasWidth && (OutofFlow() || kShrinkToFit.Contains(FStyle->FDisplay))) return true;
  TTreeDepthGuard guard;
  const TStyledHTMLNode* outer = OuterContainer();
  return outer && outer->RelativeWidth();
}

bool TStyledHTMLNode::RelativeHeight() const {
  if (!FParent || !FStyle) return false;
  const TMeasure height = Measure(*this, &TBaseElementStyle::Height);
  if (height.GetAuto()) return true;
  if (height.FMUnit != muPercent) return false;
  TTreeDepthGuard guard;
  const TStyledHTMLNode* outer = OuterContainer();
  return outer && outer->RelativeHeight();
}

float TStyledHTMLNode::StyleHeight() const {
  return FStyle ? static_cast<float>(Measure(*this, &TBaseElementStyle::Height).GetPixels()) : 0;
}

float TStyledHTMLNode::MinWidth() const {
  if (!FStyle) return 0;
  int32_t width = 0;
  if (FStyle->PropertySet.Contains(cspMinWidth))
    width = Measure(*this, &TBaseElementStyle::MinWidth).GetPixels();
  if (FStyle->FDisplay == dsTable && SizeFlags.Contains(sfFixedWidth))
    width = std::max(width, Measure(*this, &TBaseElementStyle::Width).GetPixels());
  return static_cast<float>(width);
}

float TStyledHTMLNode::MaxWidth() const {
  if (!FStyle || !FStyle->PropertySet.Contains(cspMaxWidth)) return kUnlimitedSize;
  TMeasure width = Measure(*this, &TBaseElementStyle::MaxWidth);
  const bool known = Container && Container->SizeFlags.Contains(sfDefiniteWidth);
  if (width.GetAuto() || (width.Relative() && !known)) return kUnlimitedSize;
  return static_cast<float>(width.GetPixels());
}

float TStyledHTMLNode::MinHeight() const {
  if (!FStyle || !FStyle->PropertySet.Contains(cspMinHeight)) return 0;
  return static_cast<float>(Measure(*this, &TBaseElementStyle::MinHeight).GetPixels());
}

float TStyledHTMLNode::MaxHeight() const {
  if (!FStyle || !FStyle->PropertySet.Contains(cspMaxHeight)) return kUnlimitedSize;
  TMeasure height = Measure(*this, &TBaseElementStyle::MaxHeight);
  return height.GetAuto() ? kUnlimitedSize : static_cast<float>(height.GetPixels());
}

}  // namespace ht
