#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/styletokens.h"

namespace ht {

namespace {

constexpr float kNormalLineHeight = 1.2f;

int32_t FindToken(const TCSSTokens& tokens, TCSSTokenType type) {
  for (int32_t i = 0; i < tokens.Count(); ++i)
    if (tokens[i].CType == type) return i;
  return -1;
}

// The names of the tokens up to the first comma, with blanks between.
hstring JoinNames(const TCSSTokens& tokens) {
  hstring text;
  for (const TCSSToken& token : tokens) {
    if (token.CType == ctComma) break;
    if (token.Name.Empty()) continue;
    if (!text.Empty()) text += u' ';
    text += token.Name;
  }
  return text;
}

bool TakesLinesOfBlock(const TBaseElementStyle& style) {
  return style.FDisplay == dsInline && style.Float() == fNone;
}

}  // namespace

// The declaration that says it; null where the size is that of the parent.
PCSSValue TBaseElementStyle::FontSizeValue() const {
  if (!PropertySet.Contains(cspFontSize) && !PropertySet.Contains(cspFont)) return nullptr;
  for (const PCSSValue value : FProps)
    if (value->Prop->Prop == cspFontSize || value->Prop->Prop == cspFont) return value;
  return nullptr;
}

void TBaseElementStyle::FontSize(TMeasure& m) {
  TBaseElementStyle* style = this;
  TBaseElementStyle* parent = ParentStyle();
  PCSSValue value = FontSizeValue();
  for (; value && value->Inherit && parent; parent = style->ParentStyle()) {
    style = parent;
    value = style->FontSizeValue();
  }
  TBaseElementStyle* reference = parent ? parent : style;
  m.Init(reference);
  m.Parent = &reference->IntFontSize;
  m.SetFPixels(reference->IntFontSize);
  if (!value || value->Inherit || value->Tokens.Empty()) return;
  const TCSSTokens& tokens = value->Tokens;
  if (value->Prop->Prop == cspFontSize) {
    m.SetDecoded(value->Value1);
    if (IsVariable(tokens[0])) DecodeToken(*value, 0, m);
    return;
  }
  for (int32_t i = 0; i < tokens.Count() && tokens[i].CType != ctSlash; ++i)
    if (IsLengthToken(tokens[i])) {
      DecodeToken(*value, i, m);
      return;
    }
}

// Of this element only.
bool TBaseElementStyle::OwnLineHeight(TMeasure& m) {
  if (!PropertySet.Contains(cspLineHeight) && !PropertySet.Contains(cspFont)) return false;
  for (const PCSSValue value : FProps) {
    if (value->Inherit || value->Tokens.Empty()) continue;
    if (value->Prop->Prop == cspLineHeight) {
      m.SetDecoded(value->Value1);
      if (IsVariable(value->Tokens[0])) DecodeToken(*value, 0, m);
      return true;
    }
    if (value->Prop->Prop != cspFont) continue;
    const int32_t slash = FindToken(value->Tokens, ctSlash);
    if (slash < 0 || slash + 1 == value->Tokens.Count()) continue;
    DecodeToken(*value, slash + 1, m);
    if (value->Tokens[slash + 1].CType == ctNumber) m.FMUnit = muNone;
    return true;
  }
  return false;
}

void TBaseElementStyle::LineHeight(TMeasure& m) {
  constexpr TMeasureFlags kNormal{mfNotAuto, mfInitial};
  m.Init(this);
  m.Parent = &IntFontSize;
  m.FMUnit = muNone;
  m.Flags = {mfInitial};
  const bool isInline = TakesLinesOfBlock(*this);
  bool found = false;
  TBaseElementStyle* style = this;
  for (; style; style = style->ParentStyle()) {
    found = style->OwnLineHeight(m);
    if (found || (isInline && !TakesLinesOfBlock(*style))) break;
  }
  if ((!found && (!style || !style->ParentStyle())) || (found && kNormal <= m.Flags)) {
    m.SetValue(kNormalLineHeight);
    m.FMUnit = muNone;
  }
  m.Style = this;
  m.Parent = &IntFontSize;
}

hstring TBaseElementStyle::FontFamily() {
  const PCSSValue value = FindProp(cspFontFamily, true);
  hstring family = value && !value->Inherit ? JoinNames(value->Tokens) : hstring();
  if (family.Empty() && FElement) family = FElement->DefaultFontFamily();
  return family;
}

uint32_t TBaseElementStyle::TextColor() {
  uint32_t color = 0;
  GetColorProp(cspColor, color, true, true);
  return color;
}

uint32_t TBaseElementStyle::TextDecorationColor() {
  uint32_t color;
  return GetColorProp(cspTextDecorationColor, color, true, false) ? color : TextColor();
}

bool TBaseElementStyle::ContentEditable() const {
  const PCSSValue value = FindInherited(cspContentEditable);
  return !value || value->Tokens.Empty() || value->Tokens[0].Name != u"false";
}

// Keywords with rules of their own

TCSSPageBreak TBaseElementStyle::PageBreakInside() const {
  for (const TBaseElementStyle* style = this; style; style = style->ParentStyle()) {
    if (style->FElement && style->FElement->FIgnorePageBreakInside) return pbAuto;
    const PCSSValue value = style->FindProp(cspPageBreakInside, false);
    if (value && !value->Inherit) return Word(value, pbAuto);
  }
  return pbAuto;
}

TElementOverflow TBaseElementStyle::Overflow(TCSSProperty prop) const {
  for (const PCSSValue value : FProps)
    if (value->Prop->Prop == prop || value->Prop->Prop == cspOverflow) {
      TElementOverflow overflow = eoVisible;
      if (!value->Tokens.Empty()) IsEnum2(u"eo", value->Tokens[0].Name, overflow);
      return overflow;
    }
  return eoVisible;
}

TVAlign TBaseElementStyle::VerticalAlign() const {
  if (PropertySet.Contains(cspVerticalAlign)) return Word<TVAlign>(FindOwnOrInherit(cspVerticalAlign));
  for (const TBaseElementStyle* style = ParentStyle(); style && style->FDisplay == dsInline;
       style = style->ParentStyle()) {
    const PCSSValue value = style->FindProp(cspVerticalAlign, false);
    if (!value) continue;
    const TVAlign align = Word<TVAlign>(value);
    return align == vaSub || align == vaSuper ? align : vaBaseLine;
  }
  return vaBaseLine;
}

THAlign TBaseElementStyle::TextAlign() const {
  THAlign align = thInherit;
  bool insideTable = false;
  for (const TBaseElementStyle* style = this; style && align == thInherit; style = style->ParentStyle()) {
    const PCSSValue value = style->FindProp(cspTextAlign, false);
    if (value && !value->Inherit) align = Word(value, thInherit);
    if (align == thXCenter && insideTable) align = thInherit;
    if (style->FDisplay == dsTable) insideTable = true;
  }
  const THAlign byDefault = FElement ? FElement->DefaultTextAlign() : thStart;
  if (align == thInherit) align = byDefault;
  const bool rightToLeft = CalculatedDirection == cdRTL;
  if (align == thStart)
    align = rightToLeft ? thRight : byDefault;
  else if (align == thEnd)
    align = rightToLeft ? byDefault : thRight;
  return align == thStart ? thLeft : align == thEnd ? thRight : align;
}

// Pages and columns

int32_t TBaseElementStyle::Page() const {
  struct TPageWord {
    std::u16string_view Word;
    int32_t Page;
  };
  constexpr TPageWord kWords[] = {
      {u"first", 1}, {u"last", -9991}, {u"last-", -9994}, {u"odd", -9992}, {u"even", -9993}};
  const PCSSValue value = FindProp(cspPage, false);
  if (!value || value->Tokens.Empty()) return 0;
  const TCSSToken& token = value->Tokens[0];
  if (token.CType == ctNumber) {
    const int32_t page = RoundToInt(token.AsFloat());
    return value->Tokens.Count() > 1 ? RoundToInt(-static_cast<double>(page)) : page;
  }
  for (const TPageWord& row : kWords)
    if (row.Word == token.Name) return row.Page;
  return 0;
}

hstring TBaseElementStyle::PageSize() const {
  const PCSSValue value = FindProp(cspSize, false);
  return value ? JoinNames(value->Tokens) : hstring();
}

hstring TBaseElementStyle::RunningBlock() const {
  constexpr int32_t kName = 2;  // running ( name )
  const PCSSValue value = FindProp(cspPosition, false);
  return value && value->Tokens.Count() > kName ? value->Tokens[kName].Name : hstring();
}

int32_t TBaseElementStyle::TransitionDelay() const {
  const PCSSValue value = FindProp(cspTransitionDelay, false);
  return value && !value->Tokens.Empty() && IsLengthToken(value->Tokens[0]) ? Milliseconds(value->Tokens[0])
                                                                            : 0;
}

int32_t TBaseElementStyle::ColumnCount() const { return RoundToInt(OwnNumber(cspColumnCount, 1)); }

void TBaseElementStyle::ColumnRule(TCSSColumnRule& rule) {
  rule = {};
  rule.Width.Init(this);
  const PCSSValue value = FindProp(cspColumnRule, false);
  if (!value) return;
  TCSSTokenSequence sequence(&value->Tokens);
  for (; sequence.T && sequence.T->CType != ctComma; sequence.Next()) {
    const TCSSToken& token = *sequence.T;
    if (FindLineStyle(token, rule.Style)) continue;
    if (const TLineWidthWord* word = FindLineWidth(token))
      rule.Width.SetFPixels(word->Pixels);
    else if (IsLengthToken(token))
      rule.Width.Decode(sequence);
    else
      sequence.ReadColor(rule.Color);
  }
}

}  // namespace ht
