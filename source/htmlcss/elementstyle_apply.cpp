#include <algorithm>

#include "htmlcss/cssproptable.h"
#include "htmlcss/csssection.h"
#include "htmlcss/elementbackground.h"
#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/styletokens.h"
#include "htruntime/numformat.h"

namespace ht {

namespace {

constexpr uint32_t kInheritMarker = 888;  // in place of a colour or keyword
constexpr THtFontStyles kDecorations{hfsUnderline, hfsStrikeOut};
constexpr double kHighestZIndex = 1e8;

void ApplyDecorationLine(TBaseElementStyle& style, const TBaseElementStyle* parent, const TCSSToken& token) {
  THtFontStyles& text = style.CalculatedTextStyle;
  switch (token.Color()) {
    case kInheritMarker:
      if (parent && parent->CalculatedTextStyle.Contains(hfsUnderline)) text.Include(hfsUnderline);
      break;
    case tlNone: text = text - kDecorations; break;
    case tlUnderline: text.Include(hfsUnderline); break;
    case tlLineThrough: text.Include(hfsStrikeOut); break;
    default: break;
  }
}

void ApplyDecoration(TBaseElementStyle& style, const TBaseElementStyle* parent, const TCSSToken& token) {
  THtFontStyles& text = style.CalculatedTextStyle;
  text = text - kDecorations;
  if (token.Color() == kInheritMarker) {
    if (parent) text = parent->CalculatedTextStyle;
    return;
  }
  for (const THtFontStyle line : {hfsUnderline, hfsStrikeOut})
    if (token.Color() & 1u << line) text.Include(line);
}

void ApplyBackgroundPosition(TElementBackground& background, TCSSTokenSequence& sequence) {
  const std::u16string_view word = sequence.T->Name;
  const bool vertical = sequence.T->CType == ctIdent && (word == u"top" || word == u"bottom");
  TMeasure& first = vertical ? background.PositionY : background.PositionX;
  TMeasure& second = vertical ? background.PositionX : background.PositionY;
  first.Decode(sequence);
  if (sequence.Next()) second.Decode(sequence);
}

void ApplyBackgroundSize(TElementBackground& background, TCSSTokenSequence& sequence) {
  if (sequence.T->Name == u"cover") {
    background.SizeMode = bsCover;
  } else if (sequence.T->Name == u"contain") {
    background.SizeMode = bsContain;
  } else {
    background.SizeMode = bsSize;
    background.SizeX.Decode(sequence);
    if (sequence.Next()) background.SizeY.Decode(sequence);
  }
}

void ApplyClear(TSet<TElementClear>& clear, std::u16string_view word) {
  if (word == u"left") clear = {ecLeft};
  if (word == u"right") clear = {ecRight};
  if (word == u"both") clear = {ecLeft, ecRight};
}

template <class TEnum>
void SetWord(TEnum& field, const TCSSToken& token) {
  const uint32_t word = token.Color() & 0xFF;
  if (word < static_cast<uint32_t>(HtEnumCount(TEnum{}))) field = static_cast<TEnum>(word);
}

bool IsTiming(const TCSSTokenSequence& sequence, TCSSTiming& timing) {
  return sequence.T && sequence.T->CType == ctIdent && IsEnum2(u"tm", sequence.T->Name, timing);
}

// A word that is no timing gives the name; stops at the first time.
void ReadName(TCSSTokenSequence& sequence, hstring& name, TCSSTiming& timing) {
  for (; sequence.T && sequence.T->CType == ctIdent; sequence.Next())
    if (!IsTiming(sequence, timing)) name = sequence.T->Name;
}

bool ReadTime(TCSSTokenSequence& sequence, int32_t& time) {
  if (!sequence.T || sequence.T->CType != ctDimension) return false;
  time = Milliseconds(*sequence.T);
  sequence.Next();
  return true;
}

bool ReadDuration(TCSSTokenSequence& sequence, int32_t& duration) {
  if (!ReadTime(sequence, duration)) return false;
  duration = std::min(duration, kLongestAnimation);
  return true;
}

}  // namespace

void TBaseElementStyle::DoApplyDisplay(TCSSValue&, TCSSTokenSequence& sequence) {
  if (!sequence.T) return;
  if (sequence.T->Color() == kInheritMarker) {
    const TBaseElementStyle* parent = ParentStyle();
    FDisplay = parent ? parent->FDisplay : dsInline;
  } else {
    SetWord(FDisplay, *sequence.T);
  }
}

void TBaseElementStyle::DoApplyBackground(TCSSValue&, TCSSTokenSequence& sequence) {
  GetBackground().Parse(sequence);
}

void TBaseElementStyle::DoApplyWhiteSpace(TCSSValue&, TCSSTokenSequence& sequence) {
  if (sequence.T) SetWord(WhiteSpace, *sequence.T);
}

void TBaseElementStyle::DoApplyFontWeight(TCSSValue&, TCSSTokenSequence& sequence) {
  if (!sequence.T) return;
  const TCSSToken& token = *sequence.T;
  if (token.CType == ctIdent) {
    const bool bold = token.Color() == fwBold || token.Color() == fwBolder;
    bold ? CalculatedTextStyle.Include(hfsBold) : CalculatedTextStyle.Exclude(hfsBold);
    if (token.Color() == fwLighter) CalculatedTextStyle.Include(hfsLight);
    return;
  }
  int32_t weight;
  if (token.CType != ctNumber || !HtTryStrToInt(token.Name, weight)) return;
  if (weight > 700) return CalculatedTextStyle.Include(hfsBlack);
  if (weight > 600) return CalculatedTextStyle.Include(hfsBold);
  if (weight > 500) return CalculatedTextStyle.Include(hfsSemibold);
  CalculatedTextStyle.Exclude(hfsBold);
  if (weight < 400) CalculatedTextStyle.Include(weight < 300 ? hfsUltraLight : hfsLight);
}

void TBaseElementStyle::DoApplyValue(TCSSValue& value, TCSSTokenSequence& sequence) {
  if (value.Name.Size() < 2 || !sequence.T) return;
  if (IsVariable(*sequence.T)) GetCSSVariable(sequence);
  if (!sequence.T) return;
  const TCSSToken& token = *sequence.T;
  switch (value.Prop->Prop) {
    case cspPosition:
      SetWord(FPosition, token);
      if (FPosition == epSticky) FPosition = epStatic;
      break;
    case cspTransition: AddTransition(sequence); break;
    case cspTextDecoration: ApplyDecoration(*this, ParentStyle(), token); break;
    case cspTextDecorationLine: ApplyDecorationLine(*this, ParentStyle(), token); break;
    case cspFontStyle:
      token.Name == u"italic" ? CalculatedTextStyle.Include(hfsItalic)
                              : CalculatedTextStyle.Exclude(hfsItalic);
      break;
    case cspBackgroundColor:
      if (FBackground) FBackground->Gradient.Stops.clear();
      break;
    case cspBackgroundImage:
      GetBackground().Parse(sequence);
      if (value.Section) FBackground->BaseURL = value.Section->URL;
      break;
    case cspBackgroundPositionX: GetBackground().PositionX.Decode(sequence); break;
    case cspbackgroundPositionY: GetBackground().PositionY.Decode(sequence); break;
    case cspBackgroundPosition: ApplyBackgroundPosition(GetBackground(), sequence); break;
    case cspBackgroundAttachment: IsEnum2(u"ba", token.Name, GetBackground().Attachment); break;
    case cspBackgroundSize: ApplyBackgroundSize(GetBackground(), sequence); break;
    case cspVisibility: SetWord(Visibility, token); break;
    case cspZIndex:
      if (token.CType == ctNumber)
        ZIndex = RoundToInt(std::min(static_cast<double>(token.AsFloat()), kHighestZIndex));
      break;
    case cspDirection: SetWord(CalculatedDirection, token); break;
    case cspWordWrap:
      if ((token.Color() & 0xFF) == wwBreakWord) CalculatedWordBreak = wbBreakWord;
      break;
    case cspWordBreak: SetWord(CalculatedWordBreak, token); break;
    case cspZoom:
      if (IsLengthToken(token)) Zoom = token.CType == ctPercentage ? token.AsFloat() / 100 : token.AsFloat();
      break;
    case cspHyphens:
      if ((token.Color() & 0xFF) == chAuto) CalculatedWordBreak = wbHyphens;
      break;
    case cspAnimation: AddAnimation(sequence); break;
    case cspAnimationName: CreateAnimation().Name = token.Name; break;
    case cspAnimationDuration:
      CreateAnimation().Duration = IsLengthToken(token) ? Milliseconds(token) : 0;
      break;
    case cspAnimationTimingFunction: IsEnum2(u"tm", token.Name, CreateAnimation().Timing); break;
    case cspClear: ApplyClear(Clear, token.Name); break;
    case cspCounterReset: {
      const hstring name = token.Name;
      const bool hasValue = sequence.Next() && sequence.T->CType == ctNumber;
      if (FElement) FElement->ResetCSSCounter(name, hasValue ? RoundToInt(sequence.T->AsFloat()) : 0);
      break;
    }
    case cspCounterIncrement:
      if (FElement) FElement->IncrementCSSCounter(token.Name);
      break;
    case cspTransitionDuration:
      for (int32_t i = 0; IsLengthToken(token) && Transitions && i < Transitions->GetCount(); ++i)
        Transitions->Transition(i).Duration = RoundToInt(token.AsFloat());
      break;
    default: break;
  }
}

void TBaseElementStyle::AddTransition(TCSSTokenSequence& sequence) {
  while (sequence.T) {
    hstring name = u"all"_hs;
    TCSSTransition read;
    ReadName(sequence, name, read.Timing);
    if (!ReadDuration(sequence, read.Duration)) return;
    if (IsTiming(sequence, read.Timing)) sequence.Next();
    ReadTime(sequence, read.Delay);
    if (!Transitions) Transitions = std::make_unique<TCSSTransitions>();
    const auto store = [&](const hstring& property) {
      auto transition = std::make_unique<TCSSTransition>();
      read.Prop = FindCSSProp(property);
      transition->Assign(read);
      Transitions->Replace(property, std::move(transition));
    };
    int32_t index;
    const bool isKnown = Transitions->Find(name, index);
    if (name == u"background") {
      store(u"background-color"_hs);
      store(u"background-image"_hs);
    } else if (!isKnown) {
      store(name);
    }
    const bool comma = sequence.T && sequence.T->CType == ctComma;
    if (comma) sequence.Next();
    if (!comma && !isKnown) return;
  }
}

TCSSAnimation& TBaseElementStyle::CreateAnimation() {
  if (!Animation) Animation = std::make_unique<TCSSAnimation>();
  Animation->Active = true;
  return *Animation;
}

void TBaseElementStyle::AddAnimation(TCSSTokenSequence& sequence) {
  auto read = std::make_unique<TCSSAnimation>();
  ReadName(sequence, read->Name, read->Timing);
  ReadDuration(sequence, read->Duration);
  if (IsTiming(sequence, read->Timing)) sequence.Next();
  if (sequence.T && sequence.T->Name == u"infinite")
    read->Iterations = -1;
  else
    ReadTime(sequence, read->Delay);
  if (!Animation) Animation = std::move(read);
  Animation->Active = true;
}

}  // namespace ht
