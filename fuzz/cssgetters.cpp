// Any declarations of an element, and of the one around it after a "|": every getter answers, and no length, number or
// box that comes out is infinite or none. What is applied twice says the same.
#include <cmath>
#include <cstdint>

#include "htmlcss/boxreflect.h"
#include "htmlcss/csstransform.h"
#include "htmlcss/elementbackground.h"
#include "htmlcss/elementshadow.h"
#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/stylesheet.h"
#include "support/require.h"

using namespace ht;

namespace {

class TNode final : public TStyledHTMLNode {
  HT_CLASS(TNode, TStyledHTMLNode)

 public:
  TNode() { TNode::CreateStyle(); }
  const TClass* GetStyleClass() const override { return TBaseElementStyle::Class(); }
};

using TStyle = TBaseElementStyle;
using TLength = void (TStyle::*)(TMeasure&);
using TPair = void (TStyle::*)(TMeasure&, TMeasure&);
using TFloat32 = float (TStyle::*)();

constexpr TLength kLengths[] = {
    &TStyle::Left,
    &TStyle::Right,
    &TStyle::Top,
    &TStyle::Bottom,
    &TStyle::Width,
    &TStyle::Height,
    &TStyle::MinWidth,
    &TStyle::MaxWidth,
    &TStyle::MinHeight,
    &TStyle::MaxHeight,
    &TStyle::TextIndent,
    &TStyle::LetterSpacing,
    &TStyle::WordSpacing,
    &TStyle::BorderSpacingX,
    &TStyle::BorderSpacingY,
    &TStyle::ColumnWidth,
    &TStyle::TabInterval,
    &TStyle::BackgroundPositionX,
    &TStyle::BackgroundPositionY,
    &TStyle::FlexBasis,
    &TStyle::ColumnGap,
    &TStyle::MarginTop,
    &TStyle::MarginRight,
    &TStyle::MarginBottom,
    &TStyle::MarginLeft,
    &TStyle::PaddingTop,
    &TStyle::PaddingRight,
    &TStyle::PaddingBottom,
    &TStyle::PaddingLeft,
    &TStyle::FontSize,
    &TStyle::LineHeight,
    &TStyle::BorderTopWidth,
    &TStyle::BorderRightWidth,
    &TStyle::BorderBottomWidth,
    &TStyle::BorderLeftWidth,
};
constexpr TPair kPairs[] = {&TStyle::BorderTopLeftRadius, &TStyle::BorderTopRightRadius,
                            &TStyle::BorderBottomLeftRadius, &TStyle::BorderBottomRightRadius};
constexpr TFloat32 kPixels[] = {
    &TStyle::MarginTopPx,        &TStyle::MarginRightPx,       &TStyle::MarginBottomPx,
    &TStyle::MarginLeftPx,       &TStyle::PaddingTopPx,        &TStyle::PaddingRightPx,
    &TStyle::PaddingBottomPx,    &TStyle::PaddingLeftPx,       &TStyle::BorderTopWidthPx,
    &TStyle::BorderRightWidthPx, &TStyle::BorderBottomWidthPx, &TStyle::BorderLeftWidthPx,
    &TStyle::OutlineWidthPx,     &TStyle::MaxBorderRadius,
};

double sum;  // so that nothing is left out

void Take(double value) {
  Require(std::isfinite(value));
  sum += value;
}

void Take(TMeasure& m) {
  Require(std::isfinite(m.FValue) && !m.AsString().Empty());
  Take(m.GetFPixels());
  Take(m.GetPixels());
}

template <class... T>
void TakeWords(T... words) {
  ((sum += static_cast<int>(words)), ...);
}

void TakeGradient(TGradient& gradient) {
  Take(gradient.Angle);
  Take(gradient.CenterX);
  Take(gradient.CenterY);
  for (TGradientStop& stop : gradient.Stops) Take(stop.Position);
}

void TakeDecoration(TStyle& s) {
  TElementShadow shadow;
  for (auto get : {&TStyle::BoxShadow, &TStyle::TextShadow}) {
    (s.*get)(shadow);
    Take(shadow.X);
    Take(shadow.Y);
    Take(shadow.Blur);
    Take(shadow.Opacity);
  }
  TTransform transform;
  s.GetTransform(transform, true);
  Take(transform.OriginX);
  Take(transform.OriginY);
  for (TTransformItem& item : transform.Items)
    for (TMeasure& value : item.Values) Take(value);
  TElementBackground& background = s.GetBackground();
  for (TMeasure* m : {&background.PositionX, &background.PositionY, &background.SizeX, &background.SizeY})
    Take(*m);
  TakeGradient(background.Gradient);
  TCSSColumnRule rule;
  s.ColumnRule(rule);
  Take(rule.Width);
  if (const PCSSValue value = s.BoxReflect()) {
    TBoxReflect reflect;
    TCSSTokenSequence sequence(&value->Tokens);
    reflect.Decode(sequence);
    Take(reflect.Offset);
    TakeGradient(reflect.Mask);
  }
}

void TakeKeywords(TStyle& s) {
  TakeWords(s.Float(), s.Appearance(), s.Resize(), s.TableLayout(), s.TextOverflow(), s.Draggable(),
            s.TextDecorationStyle(), s.PageBreakBefore(), s.PageBreakAfter(), s.PageBreakInside(),
            s.JustifyContent(), s.AlignItems(), s.AlignSelf(), s.FlexDirection(), s.FlexWrap(),
            s.BackgroundRepeat(), s.BackgroundAttachment(), s.BackgroundOrigin(), s.UnicodeBidi(),
            s.BreakAfter(), s.Direction(), s.WordWrap(), s.WordBreak(), s.Hyphens(), s.Cursor(),
            s.WritingMode(), s.BorderCollapse(), s.ListStylePosition(), s.ListStyleType(), s.PointerEvents(),
            s.BoxSizing(), s.TextDecorationLine(), s.TextTransform(), s.OverflowX(), s.OverflowY(),
            s.VerticalAlign(), s.TextAlign(), s.BorderTopStyle(), s.BorderRightStyle(), s.BorderBottomStyle(),
            s.BorderLeftStyle(), s.OutlineStyle(), s.BorderPresent(), s.BorderOneStyle(),
            s.BorderOneRadius(1, 1, 4), s.BackgroundPresent(), s.HasTransform(), s.NoShadow(),
            s.NoTextShadow(), s.ContentEditable());
}

void TakeAll(TStyle& s) {
  for (const TLength get : kLengths) {
    TMeasure m;
    (s.*get)(m);
    Take(m);
  }
  for (const TPair get : kPairs) {
    TMeasure x, y;
    (s.*get)(x, y);
    Take(x);
    Take(y);
  }
  for (const TFloat32 get : kPixels) Take((s.*get)());
  for (const double value :
       {double{s.Opacity()}, double{s.FlexGrow()}, double{s.FlexShrink()}, double{s.Zoom}, double(s.ZIndex),
        double(s.ColumnCount()), double(s.Page()), double(s.TransitionDelay()), double(s.TextColor()),
        double(s.TextDecorationColor()), double(s.BackgroundColor()), double(s.BorderTopColor()),
        double(s.BorderRightColor()), double(s.BorderBottomColor()), double(s.BorderLeftColor()),
        double(s.OutlineColor()), double(s.FontFamily().Size()), double(s.PageSize().Size()),
        double(s.RunningBlock().Size())})
    Take(value);
  for (int prop = 0; prop < HtEnumCount(TCSSProperty{}); ++prop) {
    float number = 0;
    if (s.GetNumberProp(static_cast<TCSSProperty>(prop), number, true, true)) Take(number);
  }
  TakeKeywords(s);
  TakeDecoration(s);
}

void Apply(TStyledHTMLNode& node, const hstring& declarations) {
  if (!node.SelfStyleSheet) node.AddCSS(declarations, false);
  TCSSWeightList list;
  node.SelfStyleSheet->GetAllSelectors(list);
  node.ResetStyle(false);
  node.FStyle->IntFontSize = 16;
  if (node.GetParent()) node.FStyle->Inherit(*node.GetParent()->FStyle);
  node.FStyle->ApplyValue(list, false);
  node.FindContainer();
  node.CalcNonRelativeProps();
  node.CalcRelativeProps();
  node.CalcSizeFlags(true);
  node.CalcRects();
  Take(node.InnerDeltaX() + node.InnerDeltaY() + node.OuterDeltaX() + node.OuterDeltaY());
  Take(node.MinWidth() + node.MaxWidth() + node.MinHeight() + node.MaxHeight());
  Take(node.CalcWidth() + node.CalcHeight() + node.InnerWidth + node.InnerHeight);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const hstring text = HtFromUtf8({reinterpret_cast<const char*>(data), size});
  const std::u16string_view view = text;
  const size_t bar = view.find(u'|');
  TNode root;
  root.Parse(u"<div><span>x</span></div>");
  auto& outer = *root.GetNode(0);
  auto& inner = *outer.GetNode(0);
  for (int pass = 0; pass < 2; ++pass) {
    root.OuterRect = {0, 0, 640, 480};
    Apply(root, {});
    outer.OuterRect = {0, 0, 200, 100};
    Apply(outer, bar == view.npos ? hstring() : hstring(view.substr(bar + 1)));
    inner.OuterRect = {0, 0, 60, 50};
    Apply(inner, hstring(view.substr(0, bar)));
    if (pass == 0) {
      TakeAll(*inner.FStyle);
      TakeAll(*outer.FStyle);
      for (TStyledHTMLNode* node : {&outer, &inner}) node->FStyle->SaveLastProps();
    }
  }
  bool layout = false, repaint = false;
  Require(!inner.FStyle->StyleChanged(layout, repaint) && !layout && !repaint);
  Require(!outer.FStyle->StyleChanged(layout, repaint));
  return 0;
}
