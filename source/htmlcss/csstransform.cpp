#include "htmlcss/csstransform.h"

#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htutils/enumlookup.h"

namespace ht {

// Where a value stands: in which argument of which function.
struct TTransform::TPlace {
  TTransformType Type;
  size_t Argument;
};

void TTransform::Reset() {
  Items.clear();
  for (TMeasure* origin : {&OriginX, &OriginY}) {
    origin->Style = Style;
    static_cast<TMeasureValue&>(*origin) = {};
  }
}

void TTransform::Decode(TCSSTokenSequence& sequence) {
  constexpr TSet<TTransformType> kTwoArguments{ttTranslate, ttTranslate3d, ttScale};
  Items.clear();
  TTransformType type;
  while (sequence.T && IsEnum2(u"tt", sequence.T->Name, type)) {
    TTransformItem item{type, {}};
    if (sequence.Next() && sequence.T->CType == ctOpenPar) sequence.Next();
    for (; sequence.T && sequence.T->CType != ctClosePar; sequence.Next()) {
      if (sequence.T->CType == ctComma || sequence.T->CType == ctSpace) continue;
      TMeasure value;
      value.Init(Style);
      value.Decode(sequence);
      item.Values.push_back(value);
    }
    if (kTwoArguments.Contains(type) && item.Values.size() == 1) {
      item.Values.push_back(item.Values[0]);
      if (type != ttScale) {
        item.Values[1].FValue = 0;
        item.Values[1].Calc = nullptr;
      }
    }
    Items.push_back(std::move(item));
    sequence.Next();
  }
}

void TTransform::DecodeOrigin(TCSSTokenSequence& sequence) {
  if (!sequence.T) return;
  OriginX.Decode(sequence);
  const bool vertical = OriginX.Flags.Contains(mfTop) || OriginX.Flags.Contains(mfBottom);
  if (!sequence.Next()) return;
  if (vertical) OriginY.SetDecoded(OriginX);
  (vertical ? OriginX : OriginY).Decode(sequence);
}

TMeasure* TTransform::Find(std::initializer_list<TPlace> places, bool create, float neutral) {
  for (TTransformItem& item : Items)
    for (const TPlace& place : places)
      if (item.TransformType == place.Type && place.Argument < item.Values.size())
        return &item.Values[place.Argument];
  if (!create) return nullptr;
  TMeasure value;
  value.Init(Style);
  value.SetFPixels(neutral);
  const TPlace& own = *(places.end() - 1);
  Items.push_back({own.Type, {value}});
  return &Items.back().Values[0];
}

// The border box of the element.
void TTransform::TakeBox() {
  if (!Style || !Style->FElement) return;
  const TStyledHTMLNode& element = *Style->FElement;
  RefWidth = element.OuterRect.Width() - element.MarginLeft - element.MarginRight;
  RefHeight = element.OuterRect.Height() - element.MarginTop - element.MarginBottom;
}

TMeasure* TTransform::TranslateX(bool create) {
  TMeasure* value = Find({{ttTranslate, 0}, {ttTranslate3d, 0}, {ttTranslateX, 0}}, create, 0);
  TakeBox();
  if (value) value->Parent = &RefWidth;
  return value;
}

TMeasure* TTransform::TranslateY(bool create) {
  TMeasure* value = Find({{ttTranslate, 1}, {ttTranslate3d, 1}, {ttTranslateY, 0}}, create, 0);
  TakeBox();
  if (value) value->Parent = &RefHeight;
  return value;
}

TMeasure* TTransform::ScaleX(bool create) { return Find({{ttScale, 0}, {ttScaleX, 0}}, create, 1); }
TMeasure* TTransform::ScaleY(bool create) { return Find({{ttScale, 1}, {ttScaleY, 0}}, create, 1); }
TMeasure* TTransform::Rotate(bool create) { return Find({{ttRotate, 0}}, create, 0); }
TMeasure* TTransform::RotateX(bool create) { return Find({{ttRotateX, 0}}, create, 0); }

}  // namespace ht
