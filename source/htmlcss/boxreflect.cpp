#include "htmlcss/boxreflect.h"

#include "htmlcss/styletokens.h"

namespace ht {

namespace {

constexpr int32_t kToFirstArgument = 2;  // over the name and "("

// The first colour stands at the start and each other one at the end, unless a position follows it.
void DecodeMask(TCSSTokenSequence& sequence, TGradient& mask, TBaseElementStyle* style) {
  mask.Stops.clear();
  if (!sequence.Next(kToFirstArgument)) return;
  if (sequence.T->Name == u"to" && !sequence.Next()) return;
  if (sequence.T->CType == ctIdent && IsEnum2(u"gs", sequence.T->Name, mask.Direction)) {
    mask.Angle = GradientAngle(mask.Direction);
    sequence.Next();
  }
  mask.DecodeStops(sequence, style);
  for (size_t i = 0; i < mask.Stops.size(); ++i) {
    TMeasure& position = mask.Stops[i].Position;
    if (!position.GetAuto()) continue;
    position.SetFPixels(i == 0 ? 0 : 100);
    position.FMUnit = muPercent;
  }
}

}  // namespace

void TBoxReflect::Decode(TCSSTokenSequence& sequence) {
  if (!sequence.T || !IsEnum2(u"br", sequence.T->Name, Kind)) return;
  while (sequence.Next()) {
    if (IsLengthToken(*sequence.T))
      Offset.Decode(sequence);
    else if (sequence.T->CType == ctFunction && sequence.T->Name == u"linear-gradient")
      DecodeMask(sequence, Mask, Offset.Style);
  }
}

void TBoxReflect::Assign(const TBoxReflect& other) {
  Kind = other.Kind;
  Offset.Assign(other.Offset);
  Mask = other.Mask;
  Mask.SetStyle(Offset.Style);
}

}  // namespace ht
