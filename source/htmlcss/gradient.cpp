#include "htmlcss/gradient.h"

#include <algorithm>

#include "htmlpars/colors.h"
#include "htutils/enumlookup.h"

namespace ht {

namespace {

constexpr int32_t kToFirstArgument = 2;  // over the name and "("

constexpr float kAngles[] = {0, -90, 90, 180, -45, 45, -135, 135};
static_assert(std::size(kAngles) == static_cast<size_t>(HtEnumCount(TGradientDirection{})));

struct TCorner {
  TGradientDirection First, Second, Both;
};
constexpr TCorner kCorners[] = {
    {gsTop, gsLeft, gsTopLeft},       {gsTop, gsRight, gsTopRight},       {gsLeft, gsTop, gsTopLeft},
    {gsLeft, gsBottom, gsBottomLeft}, {gsRight, gsTop, gsTopRight},       {gsRight, gsBottom, gsBottomRight},
    {gsBottom, gsLeft, gsBottomLeft}, {gsBottom, gsRight, gsBottomRight},
};

bool IsDirection(const TCSSTokenSequence& sequence, TGradientDirection& direction) {
  return sequence.T && sequence.T->CType == ctIdent && IsEnum2(u"gs", sequence.T->Name, direction);
}

// Over the arguments of the function on which the sequence stands, to its closing parenthesis.
void PassArguments(TCSSTokenSequence& sequence) {
  for (int depth = 0; sequence.Next();) {
    if (sequence.T->CType == ctOpenPar) ++depth;
    if (sequence.T->CType == ctClosePar && --depth == 0) return;
  }
}

// Whether the current token is a colour; one that is resolved later leaves `color` as it is. The sequence ends on the
// last token of a function.
bool DecodeColor(TCSSTokenSequence& sequence, uint32_t& color) {
  const bool isWord = sequence.T->CType == ctIdent;
  uint32_t read = kColorInvalid;
  if (!sequence.ReadColor(read) || (isWord && read == kColorInvalid)) return false;
  if (read != kColorInvalid) color = read;
  if (sequence.T && sequence.T->CType == ctFunction) PassArguments(sequence);
  return true;
}

void SetPercent(TMeasure& measure, float percent) {
  measure.SetFPixels(percent);
  measure.FMUnit = muPercent;
}

}  // namespace

float GradientAngle(TGradientDirection direction) { return kAngles[direction]; }

// A side, or two that name a corner. A "from" word counts as the opposite only for the top.
void TGradient::DecodeDirection(TCSSTokenSequence& sequence) {
  const bool to = sequence.T->CType == ctIdent && sequence.T->Name == u"to";
  if (to && !sequence.Next()) return;
  TGradientDirection direction;
  if (!IsDirection(sequence, direction)) {
    if (sequence.T->CType == ctDimension && sequence.T->MUnit == muDeg) {
      Angle = sequence.T->AsFloat();
      sequence.Next();
    }
    return;
  }
  sequence.Next();
  if (direction == gsTop && !to) direction = gsBottom;
  TGradientDirection second;
  if (IsDirection(sequence, second)) {
    sequence.Next();
    for (const TCorner& corner : kCorners)
      if (corner.First == direction && corner.Second == second) {
        direction = corner.Both;
        break;
      }
  }
  Direction = direction;
  Angle = GradientAngle(direction);
}

bool TGradient::DecodeLinear(TCSSTokenSequence& sequence, TBaseElementStyle* style) {
  Radial = false;
  Angle = 180;
  Direction = gsBottom;
  Stops.clear();
  if (!sequence.Next(kToFirstArgument)) return true;
  DecodeDirection(sequence);
  if (!DecodeStops(sequence, style)) return false;
  if (Stops.size() > 1) PlaceStops(Stops.size() - 1);
  return true;
}

// Up to the first comma: shape and size, which are not kept, and the centre behind "at".
void TGradient::DecodeCenter(TCSSTokenSequence& sequence) {
  const auto ends = [&] {
    return !sequence.T || sequence.T->CType == ctComma || sequence.T->CType == ctClosePar;
  };
  while (!ends()) {
    const bool at = sequence.T->CType == ctIdent && sequence.T->Name == u"at";
    sequence.Next();
    if (!at) continue;
    for (TMeasure* center : {&CenterX, &CenterY}) {
      if (ends()) return;
      center->Decode(sequence);
      sequence.Next();
    }
  }
}

bool TGradient::DecodeRadial(TCSSTokenSequence& sequence, TBaseElementStyle* style) {
  Radial = true;
  Stops.clear();
  for (TMeasure* center : {&CenterX, &CenterY}) {
    center->Init(style);
    SetPercent(*center, 50);
  }
  if (!sequence.Next(kToFirstArgument)) return true;
  const int32_t first = sequence.Index;
  uint32_t color;
  const bool startsWithColor = DecodeColor(sequence, color);
  sequence.Next(first - sequence.Index);
  if (!startsWithColor) DecodeCenter(sequence);
  if (!DecodeStops(sequence, style)) return false;
  if (!Stops.empty()) PlaceStops(std::max<size_t>(Stops.size() - 1, 1));
  return true;
}

bool TGradient::DecodeStops(TCSSTokenSequence& sequence, TBaseElementStyle* style) {
  for (; sequence.T && sequence.T->CType != ctClosePar; sequence.Next()) {
    switch (sequence.T->CType) {
      case ctIdent:
      case ctHash:
      case ctFunction: {
        TGradientStop stop;
        if (!DecodeColor(sequence, stop.Color)) return false;
        stop.Position.Init(style);
        Stops.push_back(stop);
        break;
      }
      case ctPercentage:
      case ctDimension:
        if (!Stops.empty()) Stops.back().Position.Decode(sequence);
        break;
      default: break;
    }
    if (sequence.Eof) break;
  }
  return true;
}

void TGradient::SetStyle(TBaseElementStyle* style) {
  CenterX.Style = CenterY.Style = style;
  for (TGradientStop& stop : Stops) stop.Position.Style = style;
}

// Those without a position stand at equal distances.
void TGradient::PlaceStops(size_t divisor) {
  for (size_t i = 0; i < Stops.size(); ++i)
    if (Stops[i].Position.GetAuto())
      SetPercent(Stops[i].Position, 100 * static_cast<float>(i) / static_cast<float>(divisor));
}

}  // namespace ht
