#include <algorithm>
#include <bit>

#include "htmlcss/cssproptable.h"
#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/styletokens.h"
#include "htutils/samevalue.h"

namespace ht {

namespace {

template <class TRecords>
auto FindRecord(TRecords& records, const TCSSPropRec* prop) {
  return std::find_if(records.begin(), records.end(),
                      [prop](const auto& record) { return record.Prop == prop; });
}

// The name of the variable in `var ( --name )`.
bool SameVariable(const TCSSValue& a, const TCSSValue& b) {
  constexpr int32_t kName = 2;
  return a.Tokens.Count() == b.Tokens.Count() && a.Tokens[kName].Name == b.Tokens[kName].Name;
}

const TBaseElementStyle* ParentOf(const TBaseElementStyle* style) {
  const TStyledHTMLNode* parent = style->FElement ? style->FElement->GetParent() : nullptr;
  return parent ? parent->Style() : nullptr;
}

// The last shown state of a property, here or on the nearest element around that has one.
const TCSSPropValueRec* FindLast(const TBaseElementStyle* style, TCSSProperty prop, bool inherit) {
  for (; style; style = inherit ? ParentOf(style) : nullptr)
    for (const TCSSPropValueRec& record : style->FLastProps)
      if (record.Prop->Prop == prop) return &record;
  return nullptr;
}

}  // namespace

TCSSPropValueRec TBaseElementStyle::RecordOf(PCSSValue value) {
  TCSSPropValueRec record{value, 0, 0, value->Prop};
  if (value->Prop->PropType == cptComplex) {
    record.Number = value->Hash();
  } else if (value->Tokens.Empty()) {
    return record;
  } else if (value->Prop->PropType == cptLength) {
    TMeasure length;
    length.Init(this);
    length.Parent = GetPropParent(*value->Prop);
    length.SetDecoded(value->Value1);
    if (IsVariable(value->Tokens[0])) DecodeToken(*value, 0, length);
    record.Raw = length.FValue;
    record.Number = std::bit_cast<uint32_t>(length.GetFPixels());
  } else if (value->Prop->PropType != cptString) {
    record.Number = value->Tokens[0].Color();
  }
  return record;
}

void TBaseElementStyle::SaveLastProps() {
  FLastProps.clear();
  FLastProps.reserve(FProps.size());
  for (const PCSSValue value : FProps) FLastProps.push_back(RecordOf(value));
}

bool TBaseElementStyle::Changed(PCSSValue value, const TCSSPropValueRec& last) {
  constexpr int32_t kVariableTokens = 3;
  const TCSSTokens& tokens = value->Tokens;
  switch (value->Prop->PropType) {
    case cptLength:
      if (tokens.Count() >= kVariableTokens && IsVariable(tokens[0]))
        return !last.Value || !SameVariable(*value, *last.Value);
      return !value->Value1.Calc && !SameValue(value->Value1.FValue, last.Raw);
    case cptNumber:
      return !tokens.Empty() && tokens[0].Color() != last.Number &&
             !SameValue(tokens[0].AsFloat(), std::bit_cast<float>(last.Number));
    case cptColor:
    case cptEnum: return !tokens.Empty() && tokens[0].Color() != last.Number;
    case cptComplex: return value != last.Value || value->Hash() != last.Number;
    case cptString: return false;
  }
  return false;
}

bool TBaseElementStyle::StyleChanged(bool& needLayout, bool& needRepaint) {
  needLayout = needRepaint = false;
  if (FProps.empty()) {
    if (FLastProps.empty()) return false;
    needRepaint = true;
    needLayout = std::any_of(FLastProps.begin(), FLastProps.end(),
                             [](const TCSSPropValueRec& last) { return last.Prop->Layout; });
    return needLayout;
  }
  bool changed = false;
  // Whether the rest no longer matters.
  const auto note = [&](const TCSSPropRec& prop) {
    changed = needRepaint = true;
    return needLayout = prop.Layout;
  };
  TCSSproperties seen;
  for (const PCSSValue value : FProps) {
    const TCSSPropRec& prop = *value->Prop;
    if (prop.Prop == cspUnknown || seen.Contains(prop.Prop)) continue;
    seen.Include(prop.Prop);
    const auto last = FindRecord(FLastProps, &prop);
    if ((last == FLastProps.end() || Changed(value, *last)) && note(prop)) return true;
  }
  for (const TCSSPropValueRec& last : FLastProps)
    if (last.Prop->Prop != cspUnknown && !seen.Contains(last.Prop->Prop) && note(*last.Prop)) return true;
  return changed;
}

void TBaseElementStyle::SetLastPropValue(const hstring& name, double value) {
  const TCSSPropRec* prop = FindCSSProp(name);
  if (!prop) return;
  auto last = FindRecord(FLastProps, prop);
  if (last == FLastProps.end()) {
    const PCSSValue present = InternalFindProp(prop->Prop);
    if (!present) return;
    last = FLastProps.insert(last, {present, 0, 0, prop});
  }
  if (prop->PropType == cptColor) {
    last->Number =
        static_cast<uint32_t>(static_cast<int64_t>(std::clamp(value, -2147483648.0, 4294967295.0)));
  } else {
    last->Raw = static_cast<float>(value);
    last->Number = std::bit_cast<uint32_t>(last->Raw);
  }
}

uint32_t TBaseElementStyle::GetLastColorProp(TCSSProperty prop, bool inherit) const {
  if (const TCSSPropValueRec* last = FindLast(this, prop, inherit)) return last->Number;
  return prop == cspColor && FElement ? FElement->GetDefaultTextColor() : 0;
}

bool TBaseElementStyle::GetLastNumberProp(TCSSProperty prop, float& number, bool inherit) const {
  const TCSSPropValueRec* last = FindLast(this, prop, inherit);
  if (last) number = std::bit_cast<float>(last->Number);
  return last != nullptr;
}

bool TBaseElementStyle::GetTransitionColor(TCSSProperty prop, uint32_t& color) const {
  const TCSSTransition* transition = ActiveTransition(prop);
  if (transition) color = transition->Color;
  return transition != nullptr;
}

bool TBaseElementStyle::GetTransitionNumber(TCSSProperty prop, float& number) const {
  const TCSSTransition* transition = ActiveTransition(prop);
  if (transition) number = transition->Number;
  return transition != nullptr;
}

bool TBaseElementStyle::GetTransitionMeasure(TCSSProperty prop, TMeasure& measure) const {
  float number;
  if (!GetTransitionNumber(prop, number)) return false;
  measure.SetFPixels(Zoom != 0 ? number / Zoom : number);
  return true;
}

}  // namespace ht
