#include <algorithm>
#include <cmath>

#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/styletokens.h"
#include "htutils/numbers.h"

namespace ht {

namespace {

// What is known of one side of the border, and the sets of properties that can say its style, colour and width. Sides
// count from the top, clockwise.
struct TSide {
  constexpr TSide(TCSSProperty shorthand, TCSSProperty style, TCSSProperty color, TCSSProperty width,
                  float TStyledHTMLNode::*nodeWidth)
      : Shorthand(shorthand),
        Style(style),
        Color(color),
        Width(width),
        NodeWidth(nodeWidth),
        Styles{style, cspBorderStyle, shorthand, cspBorder},
        Colors{color, cspBorderColor, shorthand, cspBorder},
        Widths{width, cspBorderWidth, shorthand, cspBorder} {}

  TCSSProperty Shorthand, Style, Color, Width;
  float TStyledHTMLNode::*NodeWidth;
  TCSSproperties Styles, Colors, Widths;
};

constexpr TSide kSides[] = {
    {cspBorderTop, cspBorderTopStyle, cspBorderTopColor, cspBorderTopWidth, &TStyledHTMLNode::BorderTop},
    {cspBorderRight, cspBorderRightStyle, cspBorderRightColor, cspBorderRightWidth,
     &TStyledHTMLNode::BorderRight},
    {cspBorderBottom, cspBorderBottomStyle, cspBorderBottomColor, cspBorderBottomWidth,
     &TStyledHTMLNode::BorderBottom},
    {cspBorderLeft, cspBorderLeftStyle, cspBorderLeftColor, cspBorderLeftWidth, &TStyledHTMLNode::BorderLeft},
};

constexpr TCSSProperty kCorners[] = {cspBorderTopLeftradius, cspBorderTopRightRadius,
                                     cspBorderBottomLeftRadius, cspBorderBottomRightRadius};

TStyledHTMLNode* TableOf(const TStyledHTMLNode& node) {
  constexpr TSet<TDisplayStyle> kTables{dsTable, dsInlineTable};
  for (TStyledHTMLNode* around = node.GetParent(); around; around = around->GetParent())
    if (around->Style() && kTables.Contains(around->Style()->FDisplay)) return around;
  return nullptr;
}

// The width among the tokens of a shorthand. "none" leaves the measure `auto`.
void ReadBorderWidth(const TCSSTokens& tokens, TMeasure& m) {
  TCSSTokenSequence sequence(&tokens);
  for (; sequence.T; sequence.Next()) {
    const TCSSToken& token = *sequence.T;
    if (token.CType == ctNumber || token.CType == ctDimension) return m.Decode(sequence);
    if (token.CType == ctIdent && token.Name == u"none") return m.SetAuto(true);
    if (const TLineWidthWord* word = FindLineWidth(token)) return m.SetFPixels(word->Pixels);
  }
}

}  // namespace

void TBaseElementStyle::Width(TMeasure& m) {
  const float* reference = nullptr;
  if (PropertySet.Contains(cspWidth) && FElement)
    reference = FElement->RootNodeElement() == FElement ? &FElement->GetViewPortWidth() : ContainerWidth();
  GetMeasureProp(cspWidth, m, reference, true, false);
}

void TBaseElementStyle::Height(TMeasure& m) {
  const float* reference = nullptr;
  if (PropertySet.Contains(cspHeight) && FElement) {
    const TStyledHTMLNode* table = FDisplay == dsTableCell ? TableOf(*FElement) : nullptr;
    if (FPosition == epFixed || FElement->RootNodeElement() == FElement)
      reference = &FElement->GetViewPortHeight();
    else
      reference = table ? &table->InnerHeight : ContainerHeight();
  }
  GetMeasureProp(cspHeight, m, reference, true, false);
}

void TBaseElementStyle::LimitWidth(TCSSProperty prop, TMeasure& m) {
  const float* reference = nullptr;
  if (PropertySet.Contains(prop) && FElement)
    reference = FPosition == epFixed ? &FElement->RootNodeElement()->InnerWidth : ContainerWidth();
  GetMeasureProp(prop, m, reference, true, false);
}

void TBaseElementStyle::MaxHeight(TMeasure& m) {
  const float* reference = nullptr;
  if (PropertySet.Contains(cspMaxHeight) && FElement) {
    const TStyledHTMLNode* container = FElement->Container;
    while (container && !container->SizeFlags.Contains(sfDefiniteHeight) && container->Container != container)
      container = container->Container;
    if (container) reference = &container->InnerHeight;
  }
  GetMeasureProp(cspMaxHeight, m, reference, true, false);
}

void TBaseElementStyle::OwnWidthProp(TCSSProperty prop, TMeasure& m, bool inherit) {
  GetMeasureProp(prop, m, FElement ? &FElement->InnerWidth : nullptr, true, inherit);
}

void TBaseElementStyle::OwnHeightProp(TCSSProperty prop, TMeasure& m) {
  GetMeasureProp(prop, m, FElement ? &FElement->InnerHeight : nullptr, true, false);
}

void TBaseElementStyle::BorderSpacingY(TMeasure& m) {
  OwnHeightProp(cspBorderSpacing, m);
  const PCSSValue value = FindProp(cspBorderSpacing, false);
  if (value && value->Tokens.Count() == 2 && IsLengthToken(value->Tokens[0])) DecodeToken(*value, 1, m);
}

void TBaseElementStyle::ColumnGap(TMeasure& m) {
  OwnWidthProp(cspColumnGap, m, false);
  if (!m.GetAuto()) return;
  m.SetFPixels(1);
  m.FMUnit = muEM;
}

// A side that is not set is 0; across the line, exactly so.
void TBaseElementStyle::Side(TCSSProperty prop, TMeasure& m) {
  constexpr TCSSproperties kAcross{cspMarginLeft, cspMarginRight, cspPaddingLeft, cspPaddingRight};
  GetMeasureProp(prop, m, ContainerWidth(), true, false);
  if (PropertySet.Contains(prop)) return;
  m.Flags = {mfNotAuto, mfInitial};
  if (kAcross.Contains(prop)) m.Flags.Include(mfZero);
}

void TBaseElementStyle::HorizontalPadding(TCSSProperty prop, int32_t side, TMeasure& m) {
  Side(prop, m);
  if (!PropertySet.Contains(prop)) PaddingOfShorthand(side, m);
}

// With two tokens the second, with four that of the side.
bool TBaseElementStyle::PaddingOfShorthand(int32_t side, TMeasure& m) {
  const PCSSValue value = FindProp(cspPadding, false);
  if (!value || value->Tokens.Empty()) return false;
  const int32_t count = value->Tokens.Count();
  m.Parent = ContainerWidth();
  return DecodeToken(*value, count == 2 ? 1 : count == 4 ? side : 0, m);
}

float TBaseElementStyle::HorizontalPaddingPx(TCSSProperty prop, int32_t side) {
  if (!GeneralProps.Contains(cgPadding)) return 0;
  if (PropertySet.Contains(prop)) return GetMeasurePx(prop);
  TMeasure m;
  m.Init(this);
  return PaddingOfShorthand(side, m) ? m.GetFPixels() : 0;
}

// Borders

TLineStyle TBaseElementStyle::BorderSideStyle(int32_t side) const {
  const TSide& row = kSides[side];
  if ((PropertySet * row.Styles).Empty()) {
    const TStyledHTMLNode* table = FDisplay == dsTableCell && FElement ? TableOf(*FElement) : nullptr;
    return table && table->*row.NodeWidth != 0 ? lsSolid : lsNone;
  }
  for (const PCSSValue value : FProps) {
    const TCSSProperty prop = value->Prop->Prop;
    if (value->Tokens.Empty()) continue;
    if (prop == row.Style) return Word(value, lsNone);
    TLineStyle style = lsNone;
    if (prop == cspBorderStyle) {
      FindLineStyle(value->Tokens[side % value->Tokens.Count()], style);
      return style;
    }
    if (prop == row.Shorthand || prop == cspBorder) {
      for (const TCSSToken& token : value->Tokens)
        if (FindLineStyle(token, style)) break;
      return style;
    }
  }
  return lsNone;
}

// The first token that is neither a line style nor a width.
void TBaseElementStyle::ReadBorderColor(const TCSSValue& value, uint32_t& color) {
  TCSSTokenSequence sequence;
  TLineStyle style;
  for (OpenValue(value, sequence); sequence.T; sequence.Next())
    if (!FindLineStyle(*sequence.T, style) && !FindLineWidth(*sequence.T) && sequence.ReadColor(color))
      return;
}

uint32_t TBaseElementStyle::BorderSideColor(int32_t side) {
  const TSide& row = kSides[side];
  uint32_t color = FElement ? FElement->DefaultBorderColor() : 0;
  bool inherit = true;
  for (TBaseElementStyle* style = this; inherit && style; style = style->ParentStyle()) {
    if (style->GetTransitionColor(cspBorderColor, color) || style->GetTransitionColor(row.Color, color))
      return color;
    const auto found = std::find_if(style->FProps.begin(), style->FProps.end(),
                                    [&](PCSSValue value) { return row.Colors.Contains(value->Prop->Prop); });
    inherit = found != style->FProps.end() && (*found)->Inherit;
    if (found != style->FProps.end() && !inherit) style->ReadBorderColor(**found, color);
  }
  return color;
}

void TBaseElementStyle::BorderSideWidth(int32_t side, TMeasure& m) {
  const TSide& row = kSides[side];
  m.Init(this);
  m.FMUnit = muPX;
  m.Flags = {mfInitial};
  m.Parent = ContainerWidth();
  if (GetTransitionMeasure(cspBorderWidth, m) || GetTransitionMeasure(row.Width, m)) return;
  if ((PropertySet * row.Widths).Empty()) return;
  for (const PCSSValue value : FProps) {
    const TCSSProperty prop = value->Prop->Prop;
    if (prop == row.Width || prop == cspBorderWidth) return m.SetDecoded(value->Value1);
    if (prop == row.Shorthand || prop == cspBorder) return ReadBorderWidth(value->Tokens, m);
  }
}

void TBaseElementStyle::BorderWidth(int32_t side, TMeasure& m) {
  BorderSideWidth(side, m);
  if (BorderSideStyle(side) < lsSolid)
    m.SetFPixels(0);
  else if (m.GetAuto())
    m.SetFPixels(kMediumLine);
}

float TBaseElementStyle::BorderWidthPx(int32_t side) {
  const TSide& row = kSides[side];
  if ((PropertySet * row.Styles).Empty()) return 0;
  TMeasure width;
  BorderWidth(side, width);
  return width.GetFPixels();
}

bool TBaseElementStyle::BorderPresent() const {
  if (!GeneralProps.Contains(cgBorder)) return false;
  for (int32_t side = 0; side < 4; ++side)
    if (BorderSideStyle(side) != lsNone) return true;
  return false;
}

bool TBaseElementStyle::BorderOneStyle() {
  constexpr TCSSproperties kColors{cspBorderColor, cspBorderTopColor, cspBorderRightColor,
                                   cspBorderBottomColor, cspBorderLeftColor};
  if (!GeneralProps.Contains(cgBorder)) return true;
  const TLineStyle style = BorderSideStyle(0);
  for (int32_t side = 1; side < 4; ++side)
    if (BorderSideStyle(side) != style) return false;
  const float width = BorderWidthPx(0);
  for (int32_t side = 1; side < 4; ++side)
    if (BorderWidthPx(side) != width) return false;
  if ((PropertySet * kColors).Empty()) return true;
  const uint32_t color = BorderSideColor(0);
  for (int32_t side = 1; side < 4; ++side)
    if (BorderSideColor(side) != color) return false;
  return true;
}

// Radii

// What is relative refers to the border box and becomes pixels at once.
void TBaseElementStyle::Radius(TCSSProperty corner, TMeasure& x, TMeasure& y) {
  const auto clear = [this](TMeasure& m) {
    m.Init(this);
    m.FMUnit = muPX;
    m.Flags = {mfNotAuto, mfInitial};
  };
  clear(x);
  clear(y);
  if (GetTransitionMeasure(cspBorderRadius, x) || GetTransitionMeasure(corner, x)) {
    y = x;
    return;
  }
  if ((PropertySet * TCSSproperties{corner, cspBorderRadius}).Empty() || !FElement) return;
  const float width = FElement->InnerWidth + FElement->PaddingLeft() + FElement->PaddingRight() +
                      FElement->BorderLeft + FElement->BorderRight;
  const float height = FElement->InnerHeight + FElement->PaddingTop + FElement->PaddingBottom +
                       FElement->BorderTop + FElement->BorderBottom;
  const auto read = [this](const TCSSValue& value, int32_t index, float reference, TMeasure& m) {
    TMeasure length = m;
    length.Parent = &reference;
    DecodeToken(value, index, length);
    if (length.Relative()) ToPixels(length);
    length.Parent = nullptr;
    m = length;
  };
  for (const PCSSValue value : FProps) {
    if ((value->Prop->Prop != corner && value->Prop->Prop != cspBorderRadius) || value->Tokens.Empty())
      continue;
    const TCSSTokens& tokens = value->Tokens;
    // Inside of a function a slash divides.
    int32_t slash = tokens[0].CType == ctFunction ? tokens.Count() : 1;
    while (slash < tokens.Count() && tokens[slash].CType != ctSlash) ++slash;
    read(*value, 0, width, x);
    read(*value, slash + 1 < tokens.Count() ? slash + 1 : 0, height, y);
    break;
  }
}

void TBaseElementStyle::MaxBorderRadiusXY(float& x, float& y) {
  x = y = 0;
  for (const TCSSProperty corner : kCorners) {
    TMeasure cornerX, cornerY;
    Radius(corner, cornerX, cornerY);
    x = std::max(x, cornerX.GetFPixels());
    y = std::max(y, cornerY.GetFPixels());
  }
}

float TBaseElementStyle::MaxBorderRadius() {
  float x, y;
  MaxBorderRadiusXY(x, y);
  return std::max(x, y);
}

bool TBaseElementStyle::BorderOneRadius(float x, float y, float limit) {
  constexpr TCSSproperties kRadii{cspBorderRadius, cspBorderTopLeftradius, cspBorderTopRightRadius,
                                  cspBorderBottomLeftRadius, cspBorderBottomRightRadius};
  constexpr float kTolerance = 0.1f;
  if (x == 0 && y == 0 && (PropertySet * kRadii).Empty()) return true;
  for (const TCSSProperty corner : kCorners) {
    TMeasure cornerX, cornerY;
    Radius(corner, cornerX, cornerY);
    if (std::fabs(std::min(limit, cornerX.GetFPixels()) - x) > kTolerance ||
        std::fabs(std::min(limit, cornerY.GetFPixels()) - y) > kTolerance)
      return false;
  }
  return true;
}

// Outlines

TLineStyle TBaseElementStyle::OutlineStyle() const {
  for (const PCSSValue value : FProps) {
    TLineStyle style = lsNone;
    if (value->Prop->Prop == cspOutlineStyle) return Word(value, lsNone);
    if (value->Prop->Prop != cspOutline) continue;
    for (const TCSSToken& token : value->Tokens)
      if (FindLineStyle(token, style)) break;
    return style;
  }
  return lsNone;
}

uint32_t TBaseElementStyle::OutlineColor() {
  uint32_t color = FElement ? FElement->DefaultBorderColor() : 0;
  if (GetTransitionColor(cspOutlineColor, color)) return color;
  for (const PCSSValue value : FProps) {
    if (value->Prop->Prop != cspOutlineColor && value->Prop->Prop != cspOutline) continue;
    ReadBorderColor(*value, color);
    break;
  }
  return color;
}

float TBaseElementStyle::OutlineWidthPx() {
  const TLineStyle style = OutlineStyle();
  if (style < lsSolid) return 0;
  TMeasure m;
  m.Init(this);
  m.FMUnit = muPX;
  m.Parent = ContainerWidth();
  if (!GetTransitionMeasure(cspOutlineWidth, m))
    for (const PCSSValue value : FProps) {
      if (value->Prop->Prop == cspOutlineWidth) m.SetDecoded(value->Value1);
      if (value->Prop->Prop == cspOutline) ReadBorderWidth(value->Tokens, m);
      if (value->Prop->Prop == cspOutlineWidth || value->Prop->Prop == cspOutline) break;
    }
  if (m.GetAuto()) m.SetFPixels(kMediumLine);
  return m.GetFPixels();
}

TRect TBaseElementStyle::ScaleRect(const TRectF& rect) const {
  const double scale = FElement ? FElement->ScaleFactor() : 1;
  const auto side = [scale](float value) {
    return static_cast<int32_t>(std::clamp<int64_t>(MathRound(value * scale), INT32_MIN, INT32_MAX));
  };
  return {side(rect.Left), side(rect.Top), side(rect.Right), side(rect.Bottom)};
}

}  // namespace ht
