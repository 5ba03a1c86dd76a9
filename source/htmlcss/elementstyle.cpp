#include "htmlcss/elementstyle.h"

#include <algorithm>
#include <cmath>

#include "htmlcss/elementbackground.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/styletokens.h"
#include "htmlcss/weightlist.h"
#include "htmlpars/lower.h"

namespace ht {

namespace {

constexpr TCSSproperties kMarginProps{cspMargin, cspMarginLeft, cspMarginTop, cspMarginRight,
                                      cspMarginBottom};

bool StartsWithFunction(const TCSSValue& value) {
  return !value.Tokens.Empty() && value.Tokens[0].CType == ctFunction;
}

// A stronger `auto` makes the property count as not set; a margin is the exception.
bool UnsetsProperty(const TCSSValue& value) {
  return value.Prop->PropType == cptLength && value.Value1.GetAuto() && !StartsWithFunction(value) &&
         !kMarginProps.Contains(value.Prop->Prop);
}

}  // namespace

TBaseElementStyle::TBaseElementStyle() = default;
TBaseElementStyle::~TBaseElementStyle() = default;

TBaseElementStyle* TBaseElementStyle::ParentStyle() const {
  const TStyledHTMLNode* parent = FElement ? FElement->GetParent() : nullptr;
  return parent ? parent->Style() : nullptr;
}

const float* TBaseElementStyle::ContainerWidth() const {
  return FElement && FElement->Container ? &FElement->Container->InnerWidth : nullptr;
}

const float* TBaseElementStyle::ContainerHeight() const {
  return FElement && FElement->Container ? &FElement->Container->InnerHeight : nullptr;
}

TElementBackground& TBaseElementStyle::GetBackground() {
  if (!FBackground) FBackground = std::make_unique<TElementBackground>(*this);
  return *FBackground;
}

void TBaseElementStyle::Inherit(TBaseElementStyle& parent) {
  if (parent.Zoom != 1) Zoom = parent.Zoom;
  CalculatedDirection = parent.CalculatedDirection;
  if (FElement && FElement->IsDocumentTable() && HtSameAscii(FElement->GetTag(), u"table")) return;
  WhiteSpace = parent.WhiteSpace;
  CalculatedWordBreak = parent.CalculatedWordBreak;
  CalculatedTextStyle = parent.CalculatedTextStyle;
}

void TBaseElementStyle::Reset(bool clearLast) {
  if (FBackground) FBackground->Reset();
  FDisplay = dsInline;
  FPosition = epStatic;
  ZIndex = 0;
  Clear = {};
  CalculatedTextStyle = {};
  Zoom = 1;
  WhiteSpace = wsNormal;
  CalculatedWordBreak = wbNormal;
  CalculatedDirection = cdLTR;
  CalculatedOpacity = 0;
  if (Animation) Animation->Active = false;
  PropertySet = {};
  FProps.clear();
  if (clearLast) FLastProps.clear();
}

bool TBaseElementStyle::Same(const TBaseElementStyle& other, bool withState) const {
  return FProps == other.FProps && PropertySet == other.PropertySet &&
         (!withState || CurrentPC == other.CurrentPC);
}

void TBaseElementStyle::ApplyValue(const TCSSWeightList& list, bool add) {
  const auto count = static_cast<size_t>(list.GetCount());
  if (add) {
    FProps.insert(FProps.begin(), count, nullptr);
  } else {
    PropertySet = {};
    FProps.resize(count);
  }
  size_t taken = 0;
  for (int32_t i = list.GetCount() - 1; i >= 0; --i) {
    const PCSSValue value = list.GetValue(i);
    const TCSSProperty prop = value->Prop->Prop;
    if (!add && PropertySet.Contains(prop)) continue;
    FProps[taken++] = value;
    PropertySet.Include(prop);
  }
  if (!add) FProps.resize(taken);
  for (const TCSSWeightItem& item : list) ApplyOne(*item.FObject);
  CalcGeneralProps();
}

void TBaseElementStyle::ApplyOne(TCSSValue& value) {
  if (UnsetsProperty(value))
    PropertySet.Exclude(value.Prop->Prop);
  else
    PropertySet.Include(value.Prop->Prop);
  if (const TCSSValueProc apply = value.ApplyProc()) {
    TCSSTokenSequence sequence(&value.Tokens);
    (this->*apply)(value, sequence);
  }
}

bool TBaseElementStyle::ApplyPseudoClass(TCSSPseudoClass pseudo, bool on) {
  if (CurrentPC.Contains(pseudo) == on) return false;
  on ? CurrentPC.Include(pseudo) : CurrentPC.Exclude(pseudo);
  if (FElement) {
    if (FElement->GetParent()) FElement->GetParent()->StyleChanged(false);
    FElement->StyleChanged(false);
  }
  return true;
}

void TBaseElementStyle::CalcGeneralProps() {
  constexpr TCSSproperties kBorderShorthands{cspBorder, cspBorderTop, cspBorderRight, cspBorderBottom,
                                             cspBorderLeft};
  GeneralProps = RelativeProps = {};
  const auto add = [this](TCSSGeneralProperty group, const TMeasureValue& length) {
    GeneralProps.Include(group);
    if (length.FMUnit == muPercent || length.FMUnit == muEM) RelativeProps.Include(group);
  };
  for (const PCSSValue value : FProps) {
    const TMeasureValue& length = value->Value1;
    switch (value->Prop->Prop) {
      case cspBorderStyle:
      case cspBorderTopStyle:
      case cspBorderRightStyle:
      case cspBorderBottomStyle:
      case cspBorderLeftStyle:
        if (!value->Tokens.Empty() && (value->Tokens[0].Color() & 0xFF) != lsNone)
          GeneralProps.Include(cgBorder);
        break;
      case cspBorderRadius: GeneralProps.Include(cgBorder); break;
      case cspMarginTop:
      case cspMarginRight:
      case cspMarginBottom:
      case cspMarginLeft:
        if (!length.Flags.Contains(mfZero) || length.Calc) add(cgMargin, length);
        break;
      case cspPaddingTop:
      case cspPaddingRight:
      case cspPaddingBottom:
      case cspPaddingLeft:
        if ((!length.GetAuto() && (!length.Flags.Contains(mfZero) || length.Calc)) ||
            StartsWithFunction(*value))
          add(cgPadding, length);
        break;
      case cspBackgroundColor:
        if (const TBaseElementStyle* parent = ParentStyle();
            !value->Inherit || (parent && parent->GeneralProps.Contains(cgBackground)))
          GeneralProps.Include(cgBackground);
        break;
      case cspBackgroundImage: GeneralProps.Include(cgBackground); break;
      default: break;
    }
  }
  if ((PropertySet * kBorderShorthands).Empty()) return;
  for (int32_t side = 0; side < 4; ++side) {
    TMeasure width;
    BorderWidth(side, width);
    if (width.GetFPixels() != 0) GeneralProps.Include(cgBorder);
  }
}

void TBaseElementStyle::DeleteProps(const TCSSproperties& props) {
  std::erase_if(FProps, [&](PCSSValue value) { return props.Contains(value->Prop->Prop); });
  PropertySet = PropertySet - props;
}

PCSSValue TBaseElementStyle::InternalFindProp(TCSSProperty prop) const {
  for (const PCSSValue value : FProps)
    if (value->Prop->Prop == prop) return value;
  return nullptr;
}

PCSSValue TBaseElementStyle::FindInParents(TCSSProperty prop) const {
  for (const TBaseElementStyle* style = ParentStyle(); style; style = style->ParentStyle())
    if (style->PropertySet.Contains(prop)) return style->InternalFindProp(prop);
  return nullptr;
}

void TBaseElementStyle::ReadMeasureProp(TCSSProperty prop, TMeasure& measure, const float* parent,
                                        bool useTransition, bool inherit) {
  measure.Parent = parent;
  if (useTransition && GetTransitionMeasure(prop, measure)) return;
  if (const PCSSValue value = inherit ? FindProp(prop, true) : InternalFindProp(prop))
    measure.SetDecoded(value->Value1);
}

float TBaseElementStyle::GetMeasurePx(TCSSProperty prop) {
  constexpr float kLargestPixels = 1e30f;  // as a measure has it
  float number;
  if (GetTransitionNumber(prop, number)) return number;
  const PCSSValue value = InternalFindProp(prop);
  if (!value) return 0;
  const TMeasureValue& length = value->Value1;
  const bool isVariable = !value->Tokens.Empty() && IsVariable(value->Tokens[0]);
  if (!length.Calc && !isVariable) {
    if (length.FValue == 0) return 0;
    if (length.FMUnit == muPX || length.FMUnit == muNone || length.FMUnit == muEM)
      return std::clamp(length.FMUnit == muEM ? length.FValue * IntFontSize : length.FValue, -kLargestPixels,
                        kLargestPixels);
  }
  TMeasure measure;
  measure.Init(this);
  measure.SetDecoded(length);
  measure.Parent = ContainerWidth();
  if (isVariable) DecodeToken(*value, 0, measure);
  return measure.GetFPixels();
}

PCSSValue TBaseElementStyle::FindInherited(TCSSProperty prop) const {
  for (const TBaseElementStyle* style = this; style; style = style->ParentStyle())
    if (style->PropertySet.Contains(prop))
      if (const PCSSValue value = style->InternalFindProp(prop); value && !value->Inherit) return value;
  return nullptr;
}

PCSSValue TBaseElementStyle::FindOwnOrInherit(TCSSProperty prop) const {
  for (const TBaseElementStyle* style = this; style; style = style->ParentStyle()) {
    const PCSSValue value = style->FindProp(prop, false);
    if (!value || !value->Inherit) return value;
  }
  return nullptr;
}

bool TBaseElementStyle::FindSource(TCSSProperty prop, bool useTransition, bool inherit, TSource& source) {
  if (!inherit && !PropertySet.Contains(prop)) return false;
  for (TBaseElementStyle* style = this; style; style = style->ParentStyle()) {
    source = {style, useTransition ? style->ActiveTransition(prop) : nullptr, nullptr};
    if (source.Transition) return true;
    if (style->PropertySet.Contains(prop)) {
      source.Value = style->InternalFindProp(prop);
      if (source.Value && !source.Value->Inherit && !source.Value->Tokens.Empty()) return true;
      inherit = true;
    }
    if (!inherit) break;
  }
  return false;
}

bool TBaseElementStyle::OpenValue(const TCSSValue& value, TCSSTokenSequence& sequence) {
  sequence.Init(&value.Tokens);
  if (sequence.T && IsVariable(*sequence.T)) GetCSSVariable(sequence);
  return sequence.T && !IsVariable(*sequence.T);
}

bool TBaseElementStyle::GetColorProp(TCSSProperty prop, uint32_t& color, bool useTransition, bool inherit) {
  TSource source;
  if (FindSource(prop, useTransition, inherit, source)) {
    if (source.Transition) {
      color = source.Transition->Color;
    } else if (IsVariable(source.Value->Tokens[0])) {
      TCSSTokenSequence sequence;
      color = 0;
      if (source.Style->OpenValue(*source.Value, sequence)) sequence.ReadColor(color);
    } else {
      color = source.Value->Tokens[0].Color();
    }
    return true;
  }
  if (prop != cspColor || !(inherit || PropertySet.Contains(prop))) return false;
  color = FElement ? FElement->GetDefaultTextColor() : 0xFF000000;
  return true;
}

bool TBaseElementStyle::GetNumberProp(TCSSProperty prop, float& number, bool useTransition, bool inherit) {
  TSource source;
  if (!FindSource(prop, useTransition, inherit, source)) return false;
  TCSSTokenSequence sequence;
  if (source.Transition)
    number = source.Transition->Number;
  else
    number = source.Style->OpenValue(*source.Value, sequence) ? sequence.T->AsFloat() : 0;
  if (!std::isfinite(number)) number = 0;  // the bits of a colour may be those of no number
  return true;
}

const float* TBaseElementStyle::GetPropParent(const TCSSPropRec& prop) const {
  switch (prop.ParentType) {
    case cpptWidth: return FElement ? &FElement->InnerWidth : nullptr;
    case cpptHeight: return FElement ? &FElement->InnerHeight : nullptr;
    case cpptFontSize: return &IntFontSize;
    case cpptContainerWidth: return ContainerWidth();
    case cpptContainerHeight: return ContainerHeight();
  }
  return nullptr;
}

float TBaseElementStyle::OwnNumber(TCSSProperty prop, float otherwise) const {
  const PCSSValue value = FindProp(prop, false);
  if (!value || value->Tokens.Empty() || value->Inherit) return otherwise;
  const TCSSToken& token = value->Tokens[0];
  if (token.CType == ctPercentage) return token.AsFloat() / 100;
  return token.CType == ctNumber ? token.AsFloat() : otherwise;
}

bool TBaseElementStyle::DecodeToken(const TCSSValue& value, int32_t index, TMeasure& m) {
  TCSSTokenSequence sequence(&value.Tokens);
  if (index > 0 && !sequence.Next(index)) return false;
  const bool isVariable = IsVariable(*sequence.T);
  if (isVariable) GetCSSVariable(sequence);
  if (!sequence.T || IsVariable(*sequence.T)) {
    m.SetFPixels(0);
    return false;
  }
  m.Decode(sequence);
  if (isVariable && m.Calc) ToPixels(m);  // its tokens go with the sequence
  return true;
}

}  // namespace ht
