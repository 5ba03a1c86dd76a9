#include "htmlcss/elementbackground.h"

#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/styletokens.h"
#include "htutils/urls.h"

namespace ht {

namespace {

void DecodePosition(const TCSSTokens& tokens, int32_t index, TMeasure& measure) {
  if (index < 0) return;
  if (tokens[index].CType == ctNumber) {
    measure.SetDecoded({});
    measure.SetPixels(RoundToInt(tokens[index].AsFloat()));
    return;
  }
  TCSSTokenSequence sequence(&tokens);
  sequence.Next(index);
  measure.Decode(sequence);
}

}  // namespace

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
  for (const auto member : {&TElementBackground::SizeX, &TElementBackground::SizeY,
                            &TElementBackground::PositionX, &TElementBackground::PositionY}) {
    TMeasure& own = this->*member;
    own.SetDecoded(other.*member);
    if (!FStyle) own.Parent = (other.*member).Parent;
  }
  Gradient.SetStyle(FStyle);
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
  while (sequence.Next() && sequence.T->CType != ctCloseBr) continue;
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
    case ctDimension: position.Add(sequence.Index); return true;
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
  DecodePosition(tokens, position.X, PositionX);
  DecodePosition(tokens, position.Y, PositionY);
  if (position.Y >= 0 && tokens[position.Y].Name == u"middle")
    PositionY.SetDecoded({50, muPercent, {mfNotAuto, mfCenter}, nullptr});
}

}  // namespace ht
