#include "htmlcss/csstransform.h"
#include "htmlcss/elementshadow.h"
#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlpars/colors.h"
#include "htmlpars/lower.h"

namespace ht {

namespace {

// An animated part of a transform, by the key of its transition.
struct TAnimatedPart {
  std::u16string_view Key;
  TMeasure* (TTransform::*Value)(bool create);
  bool Pixels;
};
constexpr TAnimatedPart kAnimatedParts[] = {
    {u"transform.x", &TTransform::TranslateX, true}, {u"transform.y", &TTransform::TranslateY, true},
    {u"transform.r", &TTransform::Rotate, false},    {u"transform.sx", &TTransform::ScaleX, false},
    {u"transform.sy", &TTransform::ScaleY, false},   {u"transform.rx", &TTransform::RotateX, false},
};

bool SaysNone(PCSSValue value) {
  return !value || value->Tokens.Empty() || HtSameAscii(value->Tokens[0].Name, u"none");
}

void InitShadow(TElementShadow& shadow, TBaseElementStyle& style) {
  for (TMeasure* measure : {&shadow.X, &shadow.Y, &shadow.Blur}) measure->Init(&style);
  shadow.Reset();
  if (style.FElement) shadow.X.Parent = shadow.Y.Parent = &style.FElement->InnerWidth;
}

}  // namespace

uint32_t TBaseElementStyle::BackgroundColor(bool useTransition) {
  uint32_t color = 0;
  if (GeneralProps.Contains(cgBackground)) GetColorProp(cspBackgroundColor, color, useTransition, false);
  return color;
}

bool TBaseElementStyle::BackgroundPresent() {
  return GeneralProps.Contains(cgBackground) && BackgroundColor() != kColorNone;
}

float TBaseElementStyle::Opacity() const {
  float opacity;
  return GetTransitionNumber(cspOpacity, opacity) ? opacity : OwnNumber(cspOpacity, 1);
}

bool TBaseElementStyle::NoShadow() { return SaysNone(FindProp(cspBoxShadow, false)) || Opacity() == 0; }
bool TBaseElementStyle::NoTextShadow() { return SaysNone(FindInherited(cspTextShadow)) || Opacity() == 0; }

void TBaseElementStyle::BoxShadow(TElementShadow& shadow) {
  InitShadow(shadow, *this);
  if (const PCSSValue value = FindProp(cspBoxShadow, false)) {
    TCSSTokenSequence sequence(&value->Tokens);
    shadow.Parse(sequence);
  }
}

void TBaseElementStyle::TextShadow(TElementShadow& shadow) {
  InitShadow(shadow, *this);
  if (const PCSSValue value = FindInherited(cspTextShadow)) {
    TCSSTokenSequence sequence(&value->Tokens);
    shadow.ParseTextShadow(sequence);
  }
}

void TBaseElementStyle::GetTransform(TTransform& transform, bool withAnimation) {
  transform.Style = this;
  transform.Reset();
  for (TMeasure* origin : {&transform.OriginX, &transform.OriginY}) origin->Flags = {mfNotAuto, mfCenter};
  if (!withAnimation && !PropertySet.Contains(cspTransform)) return;
  if (const PCSSValue value = FindProp(cspTransform, false)) {
    TCSSTokenSequence sequence(&value->Tokens);
    transform.Decode(sequence);
  }
  if (const PCSSValue value = FindProp(cspTransformOrigin, false)) {
    TCSSTokenSequence sequence(&value->Tokens);
    transform.DecodeOrigin(sequence);
  }
  for (int32_t i = 0; withAnimation && Transitions && i < Transitions->GetCount(); ++i) {
    const TCSSTransition& transition = Transitions->Transition(i);
    if (!transition.Active) continue;
    for (const TAnimatedPart& part : kAnimatedParts) {
      if (Transitions->Get(i) != part.Key) continue;
      TMeasure& value = *(transform.*part.Value)(true);
      part.Pixels ? value.SetFPixels(transition.Number) : value.SetValue(transition.Number);
    }
  }
}

bool TBaseElementStyle::HasTransform() const {
  return PropertySet.Contains(cspTransform) || ActiveTransition(cspTransform);
}

}  // namespace ht
