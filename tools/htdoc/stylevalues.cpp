#include "stylevalues.h"

#include <algorithm>
#include <bit>

#include "htmlcss/cssproptable.h"
#include "htmlpars/lower.h"
#include "htruntime/format.h"
#include "htutils/numbers.h"
#include "json.h"

using namespace ht;

namespace {

using S = TDocumentStyle;

constexpr int kDecimals = 3;

hstring Quoted(std::u16string_view text) { return TJson().Text(text).GetAsString(); }
hstring Number(double value) { return JsonNumber(value, kDecimals); }

// Keywords. The names of an enumeration have a prefix and capitals where the words of CSS have hyphens, mostly.

hstring KeywordOf(std::u16string_view name) {
  static constexpr std::pair<std::u16string_view, std::u16string_view> kOther[] = {
      {u"base-line", u"baseline"},     {u"contentbox", u"content-box"}, {u"borderbox", u"border-box"},
      {u"paddingbox", u"padding-box"}, {u"cross-hair", u"crosshair"},   {u"over-line", u"overline"},
      {u"lower-case", u"lowercase"},   {u"upper-case", u"uppercase"},   {u"foot-note", u"footnote"},
      {u"plain-text", u"plaintext"},   {u"xcenter", u"xcenter"},        {u"reverse", u"wrap-reverse"},
  };
  hstring word;
  bool afterSmall = false;
  for (char16_t c :
       name.substr(std::min(name.find_first_not_of(u"abcdefghijklmnopqrstuvwxyz"), name.size()))) {
    if (HtIsAsciiUpper(c) && afterSmall) word += u"-";
    word += hstring(1, HtAsciiLower(c));
    afterSmall = !HtIsAsciiUpper(c);
  }
  for (const auto& [ours, theirs] : kOther)
    if (word == ours) return theirs;
  return word;
}

template <class TEnum>
hstring Keyword(TEnum value) {
  return Quoted(KeywordOf(HtEnumOf<TEnum>().NameOf(value)));
}
template <auto Getter>
hstring Word(S& style) {
  return Keyword((style.*Getter)());
}
template <auto Field>
hstring FieldWord(S& style) {
  return Keyword(style.*Field);
}
template <class TEnum, TCSSProperty Prop>
hstring PlainKeyword(S& style) {
  const TCSSValue* value = style.FindProp(Prop, CSSPropOf(Prop).Inherited);
  const uint32_t word = value && !value->Tokens.Empty() ? value->Tokens[0].Color() : 0;
  return Keyword(static_cast<TEnum>(word < static_cast<uint32_t>(HtEnumCount(TEnum{})) ? word : 0));
}

// Lengths

hstring Pixels(double value) { return Quoted(Number(value) + u"px"); }
hstring Length(TMeasure& measure) {
  return measure.GetAuto() ? Quoted(u"auto") : Pixels(measure.GetFPixels());
}
template <auto Getter>
hstring Length(S& style) {
  TMeasure measure;
  (style.*Getter)(measure);
  return Length(measure);
}
template <auto Getter>
hstring Radius(S& style) {
  TMeasure x, y;
  (style.*Getter)(x, y);
  const hstring across = Number(x.GetFPixels()) + u"px", down = Number(y.GetFPixels()) + u"px";
  return Quoted(across == down ? across : across + u" " + down);
}
template <TCSSProperty Prop>
hstring PlainLength(S& style) {
  const float none = 0;
  TMeasure measure;
  style.GetMeasureProp(Prop, measure, &none, true, CSSPropOf(Prop).Inherited);
  return Length(measure);
}

// Colours

hstring Color(uint32_t color) {
  const uint32_t rgb = color & 0xFFFFFF, alpha = color >> 24;
  hstring digits = HtFormat(u"#%.6x", static_cast<int>(rgb));
  if (alpha != 0xFF) digits += HtFormat(u"%.2x", static_cast<int>(alpha));
  hLower(digits);
  return Quoted(digits);
}
template <auto Getter>
hstring Color(S& style) {
  return Color((style.*Getter)());
}

// Numbers

template <auto Getter>
hstring Number(S& style) {
  return Number(static_cast<double>((style.*Getter)()));
}

// As declared

hstring Declared(const TCSSValue* value) {
  if (!value) return Quoted({});
  const hstring text = CSSValuetoString(*value);
  std::u16string_view tokens = text;
  tokens.remove_prefix(std::min(tokens.find(u':') + 1, tokens.size()));
  while (!tokens.empty() && (tokens.back() == u';' || tokens.back() == u' ')) tokens.remove_suffix(1);
  return Quoted(HtTrim(tokens));
}
template <TCSSProperty Prop>
hstring Declared(S& style) {
  return Declared(style.FindProp(Prop, CSSPropOf(Prop).Inherited));
}
template <auto Getter>
hstring Text(S& style) {
  return Quoted((style.*Getter)());
}

// What is not kept as it is declared

hstring FontSize(S& style) { return Pixels(style.IntFontSize); }
hstring FontStyle(S& style) {
  return Quoted(style.CalculatedTextStyle.Contains(hfsItalic) ? u"italic" : u"normal");
}
hstring FontWeight(S& style) {
  static constexpr std::pair<THtFontStyle, std::u16string_view> kWeights[] = {
      {hfsBlack, u"900"},      {hfsBold, u"\"bold\""}, {hfsSemibold, u"600"},
      {hfsUltraLight, u"200"}, {hfsLight, u"300"},
  };
  for (const auto& [bit, weight] : kWeights)
    if (style.CalculatedTextStyle.Contains(bit)) return weight;
  return Quoted(u"normal");
}
// The text style has what adds up from the parents.
hstring TextDecorationLine(S& style) {
  const bool under = style.CalculatedTextStyle.Contains(hfsUnderline);
  const bool through = style.CalculatedTextStyle.Contains(hfsStrikeOut);
  if (under && through) return Quoted(u"underline line-through");
  return Quoted(under ? u"underline" : through ? u"line-through" : u"none");
}
hstring BackgroundColor(S& style) { return Color(style.BackgroundColor()); }
hstring BorderSpacing(S& style) {
  TMeasure x, y;
  style.BorderSpacingX(x);
  style.BorderSpacingY(y);
  if (x.GetAuto()) return Pixels(0);
  const hstring across = Number(x.GetFPixels()) + u"px";
  return Quoted(y.GetAuto() ? across : across + u" " + Number(y.GetFPixels()) + u"px");
}
hstring Clear(S& style) {
  const bool left = style.Clear.Contains(ecLeft), right = style.Clear.Contains(ecRight);
  return Quoted(left && right ? u"both" : left ? u"left" : right ? u"right" : u"none");
}
hstring ZIndex(S& style) {
  return style.PropertySet.Contains(cspZIndex) ? Number(style.ZIndex) : Quoted(u"auto");
}
hstring Zoom(S& style) { return Number(style.Zoom); }
hstring ContentEditable(S& style) { return Quoted(style.ContentEditable() ? u"true" : u"false"); }
hstring OutlineWidth(S& style) { return Pixels(style.OutlineWidthPx()); }

// In the order of the property table.
constexpr TStyleProperty kProperties[] = {
    // clang-format off
    {cspDisplay,                 FieldWord<&S::FDisplay>},
    {cspFloat,                   Word<&S::Float>},
    {cspPage,                    Number<&S::Page>},
    {cspPointerEvents,           Word<&S::PointerEvents>},
    {cspSize,                    Text<&S::PageSize>},
    {cspPosition,                FieldWord<&S::FPosition>},
    {cspColumnRule,              Declared<cspColumnRule>},
    {cspColumnGap,               Length<&S::ColumnGap>},
    {cspColumnWidth,             Length<&S::ColumnWidth>},
    {cspColumnCount,             Number<&S::ColumnCount>},
    {cspTransition,              Declared<cspTransition>},
    {cspTransitionDelay,         Number<&S::TransitionDelay>},
    {cspContentEditable,         ContentEditable},
    {cspAppearance,              Word<&S::Appearance>},
    {cspMinWidth,                Length<&S::MinWidth>},
    {cspMaxWidth,                Length<&S::MaxWidth>},
    {cspMinHeight,               Length<&S::MinHeight>},
    {cspMaxHeight,               Length<&S::MaxHeight>},
    {cspLineHeight,              Length<&S::LineHeight>},
    {cspFontSize,                FontSize},
    {cspFontFamily,              Text<&S::FontFamily>},
    {cspFontStyle,               FontStyle},
    {cspFontWeight,              FontWeight},
    {cspTextIndent,              Length<&S::TextIndent>},
    {cspLetterSpacing,           Length<&S::LetterSpacing>},
    {cspWordSpacing,             Length<&S::WordSpacing>},
    {cspBorderSpacing,           BorderSpacing},
    {cspLeft,                    Length<&S::Left>},
    {cspTop,                     Length<&S::Top>},
    {cspRight,                   Length<&S::Right>},
    {cspBottom,                  Length<&S::Bottom>},
    {cspMarginLeft,              Length<&S::MarginLeft>},
    {cspMarginTop,               Length<&S::MarginTop>},
    {cspMarginRight,             Length<&S::MarginRight>},
    {cspMarginBottom,            Length<&S::MarginBottom>},
    {cspPaddingLeft,             Length<&S::PaddingLeft>},
    {cspPaddingTop,              Length<&S::PaddingTop>},
    {cspPaddingRight,            Length<&S::PaddingRight>},
    {cspPaddingBottom,           Length<&S::PaddingBottom>},
    {cspWidth,                   Length<&S::Width>},
    {cspHeight,                  Length<&S::Height>},
    {cspTableLayout,             Word<&S::TableLayout>},
    {cspTextOverflow,            Word<&S::TextOverflow>},
    {cspDraggable,               Word<&S::Draggable>},
    {cspResize,                  Word<&S::Resize>},
    {cspColor,                   Color<&S::TextColor>},
    {cspPageBreakBefore,         Word<&S::PageBreakBefore>},
    {cspPageBreakAfter,          Word<&S::PageBreakAfter>},
    {cspPageBreakInside,         Word<&S::PageBreakInside>},
    {cspBoxReflect,              Declared<cspBoxReflect>},
    {cspBorderTopLeftradius,     Radius<&S::BorderTopLeftRadius>},
    {cspBorderTopRightRadius,    Radius<&S::BorderTopRightRadius>},
    {cspBorderBottomLeftRadius,  Radius<&S::BorderBottomLeftRadius>},
    {cspBorderBottomRightRadius, Radius<&S::BorderBottomRightRadius>},
    {cspBorderTopColor,          Color<&S::BorderTopColor>},
    {cspBorderRightColor,        Color<&S::BorderRightColor>},
    {cspBorderBottomColor,       Color<&S::BorderBottomColor>},
    {cspBorderLeftColor,         Color<&S::BorderLeftColor>},
    {cspBorderTopWidth,          Length<&S::BorderTopWidth>},
    {cspBorderRightWidth,        Length<&S::BorderRightWidth>},
    {cspBorderBottomWidth,       Length<&S::BorderBottomWidth>},
    {cspBorderLeftWidth,         Length<&S::BorderLeftWidth>},
    {cspBorderTopStyle,          Word<&S::BorderTopStyle>},
    {cspBorderRightStyle,        Word<&S::BorderRightStyle>},
    {cspBorderBottomStyle,       Word<&S::BorderBottomStyle>},
    {cspBorderLeftStyle,         Word<&S::BorderLeftStyle>},
    {cspBoxShadow,               Declared<cspBoxShadow>},
    {cspTextShadow,              Declared<cspTextShadow>},
    {cspFlexDirection,           Word<&S::FlexDirection>},
    {cspJustifyContent,          Word<&S::JustifyContent>},
    {cspAlignItems,              Word<&S::AlignItems>},
    {cspAlignSelf,               Word<&S::AlignSelf>},
    {cspFlexBasis,               Length<&S::FlexBasis>},
    {cspFlexGrow,                Number<&S::FlexGrow>},
    {cspFlexShrink,              Number<&S::FlexShrink>},
    {cspFlexWrap,                Word<&S::FlexWrap>},
    {cspTextTransform,           Word<&S::TextTransform>},
    {cspCursor,                  Word<&S::Cursor>},
    {cspBorderCollapse,          Word<&S::BorderCollapse>},
    {cspTextAlign,               Word<&S::TextAlign>},
    {cspOpacity,                 Number<&S::Opacity>},
    {cspListStyleType,           Word<&S::ListStyleType>},
    {cspListStylePosition,       Word<&S::ListStylePosition>},
    {cspBoxSizing,               Word<&S::BoxSizing>},
    {cspTextDecorationStyle,     Word<&S::TextDecorationStyle>},
    {cspTextDecorationColor,     Color<&S::TextDecorationColor>},
    {cspTextDecorationLine,      TextDecorationLine},
    {cspVerticalAlign,           Word<&S::VerticalAlign>},
    {cspOverflowX,               Word<&S::OverflowX>},
    {cspOverflowY,               Word<&S::OverflowY>},
    {cspBackgroundColor,         BackgroundColor},
    {cspBackgroundImage,         Declared<cspBackgroundImage>},
    {cspBackgroundPositionX,     Length<&S::BackgroundPositionX>},
    {cspbackgroundPositionY,     Length<&S::BackgroundPositionY>},
    {cspBackgroundRepeat,        Word<&S::BackgroundRepeat>},
    {cspBackgroundAttachment,    Word<&S::BackgroundAttachment>},
    {cspBackgroundOrigin,        Word<&S::BackgroundOrigin>},
    {cspBackgroundSize,          Declared<cspBackgroundSize>},
    {cspContent,                 Declared<cspContent>},
    {cspTransform,               Declared<cspTransform>},
    {cspTransformOrigin,         Declared<cspTransformOrigin>},
    {cspVisibility,              FieldWord<&S::Visibility>},
    {cspZIndex,                  ZIndex},
    {cspDirection,               FieldWord<&S::CalculatedDirection>},
    {cspWordWrap,                Word<&S::WordWrap>},
    {cspWordBreak,               FieldWord<&S::CalculatedWordBreak>},
    {cspWhiteSpace,              FieldWord<&S::WhiteSpace>},
    {cspZoom,                    Zoom},
    {cspFilter,                  Declared<cspFilter>},
    {cspHyphens,                 Word<&S::Hyphens>},
    {cspTabStops,                Declared<cspTabStops>},
    {cspTabInterval,             Length<&S::TabInterval>},
    {cspBreakAfter,              Word<&S::BreakAfter>},
    {cspWritingMode,             Word<&S::WritingMode>},
    {cspAnimation,               Declared<cspAnimation>},
    {cspAnimationName,           Declared<cspAnimationName>},
    {cspAnimationDuration,       Declared<cspAnimationDuration>},
    {cspAnimationTimingFunction, Declared<cspAnimationTimingFunction>},
    {cspClear,                   Clear},
    {cspCounterReset,            Declared<cspCounterReset>},
    {cspCounterIncrement,        Declared<cspCounterIncrement>},
    {cspTransitionDuration,      Declared<cspTransitionDuration>},
    {cspMaskImage,               Declared<cspMaskImage>},
    {cspOutlineColor,            Color<&S::OutlineColor>},
    {cspOutlineStyle,            Word<&S::OutlineStyle>},
    {cspOutlineWidth,            OutlineWidth},
    {cspOutlineOffset,           PlainLength<cspOutlineOffset>},
    {cspFontFeatureSettings,     Declared<cspFontFeatureSettings>},
    {cspFontKerning,             PlainKeyword<TFontKerningMode, cspFontKerning>},
    {cspUnicodeBidi,             Word<&S::UnicodeBidi>},
    // clang-format on
};

}  // namespace

std::span<const TStyleProperty> StyleProperties() { return kProperties; }

hstring StyleValue(TDocumentStyle& style, std::u16string_view name) {
  const TCSSPropRec* prop = FindCSSProp(name);
  if (!prop) return {};
  const auto row = std::find_if(std::begin(kProperties), std::end(kProperties),
                                [prop](const TStyleProperty& p) { return p.Prop == prop->Prop; });
  if (row != std::end(kProperties)) return row->Value(style);
  hstring parts;
  for (const TCSSPropRec* part : prop->SubProps) {
    const hstring value = StyleValue(style, part->Name);
    const bool quoted = value.View().starts_with(u'"');
    if (!parts.Empty()) parts += u" ";
    parts += quoted ? value.View().substr(1, value.Size() - 2) : value.View();
  }
  return u"\"" + parts + u"\"";
}
