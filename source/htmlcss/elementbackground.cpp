#include "htmlcss/elementbackground.h"

#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/styletokens.h"
#include "htutils/urls.h"

namespace ht {

// The tokens that give the position, by their index; -1 where there is none.
struct TElementBackground::TPosition {
  int32_t X = -1, Y = -1;

  void Add(int32_t index) { (X < 0 ? X : Y) = index; }
};

TElementBackground::TElementBackground(TBaseElementStyle& style) : FStyle(&style) {
  const TStyledHTMLNode* element = style.FElement;
  for (TMeasure* measure : {&SizeX, &SizeY, &PositionX, &PositionY, &Gradient.CenterX, &Gradient.CenterY})
    measure->Init(&style);
  if (!element) return;
  SizeX.Parent = PositionX.Parent = &element->InnerWidth;
  SizeY.Parent = PositionY.Parent = &element->InnerHeight;
}

void TElementBackground::Assign(const TElementBackground& other) {
  Image = other.Image;
  Second = other.Second;
  Gradient = other.Gradient;
  Repeat = other.Repeat;
  Origin = other.Origin;
  Attachment = other.Attachment;
  SizeMode = other.SizeMode;
  BaseURL = other.BaseURL;
  SizeX.Assign(other.SizeX);
  SizeY.Assign(other.SizeY);
  PositionX.Assign(other.PositionX);
  PositionY.Assign(other.PositionY);
  Gradient.CenterX.Style = Gradient.CenterY.Style = FStyle;
  for (TGradientStop& stop : Gradient.Stops) stop.Position.Style = FStyle;
}

void TElementBackground::Reset() {
  Image = {};
  Second = {};
  Gradient.Stops.clear();
}

void TElementBackground::DecodeRadialGradient(TCSSTokenSequence& sequence) {
  Gradient.DecodeRadial(sequence, FStyle);
}

void TElementBackground::ParseWord(TCSSTokenSequence& sequence, TPosition& position) {
  const std::u16string_view word = sequence.T->Name;
  if (word == u"left" || word == u"right") {
    position.X = sequence.Index;
  } else if (word == u"top" || word == u"bottom") {
    position.Y = sequence.Index;
  } else if (word == u"middle" || word == u"center") {
    position.Add(sequence.Index);
  } else if (!IsEnum2(u"bs", word, SizeMode) && !IsEnum2(u"br", word, Repeat) &&
             !IsEnum2(u"bo", word, Origin) && !IsEnum2(u"ba", word, Attachment)) {
    uint32_t color;
    sequence.ReadColor(color);
  }
}

// False at a gradient with something that is no colour.
bool TElementBackground::ParseFunction(TCSSTokenSequence& sequence) {
  const std::u16string_view name = sequence.T->Name;
  if (name == u"linear-gradient") return Gradient.DecodeLinear(sequence, FStyle);
  if (name == u"radial-gradient") return Gradient.DecodeRadial(sequence, FStyle);
  if (name == u"blur") return true;
  if (name.starts_with(u"rgb")) {
    uint32_t color;
    sequence.ReadColor(color);
    return true;
  }
  while (sequence.Next() && sequence.T->CType != ctClosePar) continue;
  return true;
}

bool TElementBackground::ParseToken(TCSSTokenSequence& sequence, TPosition& position) {
  const TCSSToken& token = *sequence.T;
  uint32_t color;
  switch (token.CType) {
    case ctIdent:
      if (token.Name == u"none") {
        Image = {};
        return false;
      }
      ParseWord(sequence, position);
      return true;
    case ctHash: sequence.ReadColor(color); return true;
    case ctNumber:
    case ctDimension:
    case ctPercentage: position.Add(sequence.Index); return true;
    case ctURI:
      Image = token.Name.View().starts_with(u"data:") ? token.Name : HTTPDecode(token.Name);
      return true;
    case ctFunction: return ParseFunction(sequence);
    default: return true;
  }
}

void TElementBackground::Parse(TCSSTokenSequence& sequence) {
  if (!sequence.T || sequence.T->Name.View().starts_with(u"-")) return;
  const TCSSTokens& tokens = *sequence.Tokens();
  Gradient.Stops.clear();
  TPosition position;
  for (; sequence.T && sequence.T->CType != ctComma; sequence.Next())
    if (!ParseToken(sequence, position)) return;
  const auto decode = [&](int32_t index, TMeasure& measure) {
    if (index < 0) return;
    if (tokens[index].CType == ctNumber)
      return measure.SetFPixels(static_cast<float>(RoundToInt(tokens[index].AsFloat())));
    if (tokens[index].Name == u"middle") {
      measure.Parse(u"center");
      return;
    }
    TCSSTokenSequence one(&tokens);
    one.Next(index);
    measure.Decode(one);
  };
  decode(position.X, PositionX);
  decode(position.Y, PositionY);
}

}  // namespace ht
