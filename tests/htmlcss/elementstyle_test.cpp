// Every getter: a declaration of the element and of its parent, and what comes out. The parent is a block of 200 x 100
// pixels with a font of 20 pixels, the element an inline one of 50 x 40 with a font of 10; the view is 640 x 480.

#include "htmlcss/elementstyle.h"

#include <gtest/gtest.h>

#include "htmlcss/cssproptable.h"
#include "htmlcss/csstransform.h"
#include "htmlcss/elementbackground.h"
#include "htmlcss/elementshadow.h"
#include "htmlcss/weightlist.h"
#include "htruntime/format.h"
#include "htutils/numbers.h"
#include "styledtree.h"

namespace ht {
namespace {

struct TTree {
  explicit TTree(const char16_t* parent, const char16_t* own)
      : Root(u"<div id=p style='" + std::u16string(parent) + u"'><span id=e style='" + own +
             u"'>x</span></div>"),
        Parent(ById(Root, u"p"_hs)),
        Element(ById(Root, u"e"_hs)) {
    Resolve();
  }
  void Resolve() {
    ResolveStyles(Root);
    Root.InnerWidth = 1000;
    Parent.InnerWidth = 200;
    Parent.InnerHeight = 100;
    Parent.FStyle->IntFontSize = 20;
    Element.InnerWidth = 50;
    Element.InnerHeight = 40;
    Element.OuterRect = {0, 0, 60, 50};
    Element.FStyle->IntFontSize = 10;
  }
  TBaseElementStyle& Style() { return *Element.FStyle; }

  TTestNode Root;
  TStyledHTMLNode& Parent;
  TStyledHTMLNode& Element;
};

std::string Number(double value) { return HtToUtf8(HtFormatDecimal(value, 3)); }
std::string Hex(uint32_t color) { return HtToUtf8(HtFormat(u"%.8x", static_cast<int64_t>(color))); }
std::string Show(TMeasure& m) { return m.GetAuto() ? "auto" : Number(m.GetFPixels()); }
std::string Show(const hstring& text) { return HtToUtf8(text); }
std::string Show(bool value) { return value ? "yes" : "no"; }
std::string Show(float value) { return Number(value); }
std::string Show(int32_t value) { return std::to_string(value); }
template <class TEnum>
std::string Show(TEnum value) requires std::is_enum_v<TEnum> {
  return HtToUtf8(HtEnumOf<TEnum>().NameOf(value));
}

using TQuery = std::string (*)(TBaseElementStyle&);
#define LENGTH(name)         \
  [](TBaseElementStyle& s) { \
    TMeasure m;              \
    s.name(m);               \
    return Show(m);          \
  }
#define VALUE(name) [](TBaseElementStyle& s) { return Show(s.name()); }
#define COLOR(name) [](TBaseElementStyle& s) { return Hex(s.name()); }
#define PAIR(name)                  \
  [](TBaseElementStyle& s) {        \
    TMeasure x, y;                  \
    s.name(x, y);                   \
    return Show(x) + " " + Show(y); \
  }

std::string TextStyle(TBaseElementStyle& s) {
  std::string text;
  for (int i = 0; i < HtEnumCount(THtFontStyle{}); ++i)
    if (s.CalculatedTextStyle.Contains(static_cast<THtFontStyle>(i)))
      text += (text.empty() ? "" : " ") + Show(static_cast<THtFontStyle>(i)).substr(3);
  return text;
}

std::string Shadow(TElementShadow& shadow) {
  return shadow.NoShadow() ? "none"
                           : Show(shadow.X) + " " + Show(shadow.Y) + " " + Show(shadow.Blur) + " " +
                                 Hex(shadow.Color) + (shadow.Inset ? " inset" : "");
}
std::string BoxShadow(TBaseElementStyle& s) {
  TElementShadow shadow;
  s.BoxShadow(shadow);
  return Shadow(shadow);
}
std::string TextShadow(TBaseElementStyle& s) {
  TElementShadow shadow;
  s.TextShadow(shadow);
  return Shadow(shadow);
}

std::string Gradient(const TGradient& gradient) {
  std::string text =
      gradient.Radial ? "radial" : Show(gradient.Direction).substr(2) + " " + Number(gradient.Angle);
  for (const TGradientStop& stop : gradient.Stops)
    text += " " + Hex(stop.Color) + "@" + (stop.Position.GetAuto() ? "auto" : Number(stop.Position.FValue));
  return text;
}
std::string Background(TBaseElementStyle& s) {
  if (!s.FBackground) return "none";
  TElementBackground& b = *s.FBackground;
  return (b.Present() ? "" : "absent ") + Show(b.Image) + "|" + Gradient(b.Gradient) + "|" +
         Show(b.PositionX) + " " + Show(b.PositionY) + "|" + Show(b.SizeMode) + " " + Show(b.SizeX) + " " +
         Show(b.SizeY) + "|" + Show(b.Repeat) + " " + Show(b.Origin) + " " + Show(b.Attachment);
}
std::string GradientOf(TBaseElementStyle& s) {
  return s.FBackground ? Gradient(s.FBackground->Gradient) : "none";
}

std::string Transform(TBaseElementStyle& s) {
  TTransform transform;
  s.GetTransform(transform, true);
  std::string text = s.HasTransform() ? "" : "none ";
  for (TTransformItem& item : transform.Items) {
    text += Show(item.TransformType).substr(2) + "(";
    for (TMeasure& value : item.Values)
      text += (&value == item.Values.data() ? "" : ",") + Number(value.FValue);
    text += ") ";
  }
  for (const TMeasure* origin : {&transform.OriginX, &transform.OriginY})
    for (const TMeasureFlag flag : {mfLeft, mfRight, mfCenter, mfTop, mfBottom})
      if (origin->Flags.Contains(flag))
        text += Show(flag).substr(2) + (origin == &transform.OriginX ? "/" : "");
  return text;
}

std::string ColumnRule(TBaseElementStyle& s) {
  TCSSColumnRule rule;
  s.ColumnRule(rule);
  return Show(rule.Width) + " " + Show(rule.Style) + " " + Hex(rule.Color);
}

struct TCase {
  TQuery Query;
  const char16_t *Parent, *Own;
  const char* Expected;
};

// clang-format off
const TCase kKeywords[] = {
    {VALUE(Float), u"float:left", u"", "fNone"}, {VALUE(Float), u"", u"float:right", "fRight"},
    {VALUE(Float), u"float:left", u"float:inherit", "fNone"},
    {VALUE(AlignSelf), u"", u"", "aiInherit"}, {VALUE(AlignSelf), u"", u"align-self:flex-end", "aiFlexEnd"},
    {VALUE(FlexDirection), u"", u"flex-direction:column-reverse", "fdColumnReverse"},
    {VALUE(Direction), u"direction:rtl", u"", "cdRTL"}, {VALUE(Cursor), u"cursor:pointer", u"", "ecPointer"},
    {VALUE(ListStyleType), u"", u"", "lstDisc"}, {VALUE(ListStyleType), u"list-style-type:lower-roman", u"", "lstLowerRoman"},
    {VALUE(PointerEvents), u"pointer-events:none", u"", "peAuto"}, {VALUE(PointerEvents), u"", u"pointer-events:none", "peNone"},
    {VALUE(UnicodeBidi), u"unicode-bidi:isolate", u"", "ubNormal"}, {VALUE(BreakAfter), u"", u"break-after:avoid-column", "cbaAvoidColumn"},
    {VALUE(Cursor), u"cursor:pointer", u"cursor:inherit", "ecPointer"}, {VALUE(Cursor), u"", u"cursor:inherit", "ecAuto"}, {VALUE(TextTransform), u"", u"text-transform:inherit", "cttNone"},
    {VALUE(BoxSizing), u"box-sizing:border-box", u"", "bsContentbox"}, {VALUE(BoxSizing), u"box-sizing:border-box", u"box-sizing:inherit", "bsBorderbox"},
    {VALUE(TextTransform), u"text-transform:uppercase", u"", "cttUpperCase"}, {VALUE(TextTransform), u"text-transform:uppercase", u"text-transform:none", "cttNone"},
    {VALUE(TextDecorationLine), u"text-decoration-line:underline", u"", "tlNone"},
    {VALUE(TextDecorationLine), u"text-decoration-line:underline", u"text-decoration-line:inherit", "tlUnderline"},
    {VALUE(PageBreakInside), u"page-break-inside:avoid", u"", "pbAvoid"},
    {VALUE(OverflowX), u"", u"overflow:hidden", "eoHidden"}, {VALUE(OverflowY), u"", u"overflow:hidden;overflow-y:scroll", "eoScroll"},
    {VALUE(OverflowX), u"overflow:hidden", u"", "eoVisible"},
    {VALUE(VerticalAlign), u"", u"vertical-align:middle", "vaMiddle"}, {VALUE(VerticalAlign), u"vertical-align:super", u"", "vaBaseLine"},
    {VALUE(VerticalAlign), u"display:inline;vertical-align:super", u"", "vaSuper"},
    {VALUE(VerticalAlign), u"display:inline;vertical-align:top", u"", "vaBaseLine"},
    {VALUE(VerticalAlign), u"vertical-align:top", u"vertical-align:inherit", "vaTop"}, {VALUE(VerticalAlign), u"", u"vertical-align:inherit", "vaBaseLine"},
    {VALUE(TextAlign), u"", u"", "thLeft"}, {VALUE(TextAlign), u"text-align:center", u"", "thCenter"}, {VALUE(TextAlign), u"text-align:end", u"", "thRight"},
    {VALUE(TextAlign), u"text-align:xcenter", u"display:table", "thLeft"}, {VALUE(TextAlign), u"text-align:xcenter", u"", "thXCenter"},
    {VALUE(TextAlign), u"text-align:center", u"display:table", "thCenter"}, {VALUE(TextAlign), u"", u"direction:rtl", "thRight"},
    {VALUE(TextAlign), u"", u"direction:rtl;text-align:start", "thRight"}, {VALUE(TextAlign), u"", u"direction:rtl;text-align:end", "thLeft"},
};
const TCase kLengths[] = {
    {LENGTH(Left), u"", u"", "auto"}, {LENGTH(Left), u"left:5px", u"", "auto"}, {LENGTH(Left), u"", u"left:10%", "20"}, {LENGTH(Top), u"", u"top:10%", "10"},
    {LENGTH(Width), u"", u"width:50%", "100"}, {LENGTH(Width), u"", u"width:10px;width:auto", "auto"}, {LENGTH(Width), u"", u"width:calc(50% - 1em)", "90"},
    {LENGTH(Height), u"", u"height:50%", "50"}, {LENGTH(MinWidth), u"", u"min-width:10%", "20"},
    {LENGTH(MinWidth), u"", u"position:fixed;min-width:10%", "100"}, {LENGTH(MinHeight), u"", u"min-height:10%", "10"},
    {LENGTH(MaxHeight), u"height:30px", u"max-height:10%", "10"}, {LENGTH(FlexBasis), u"", u"flex-basis:10%", "20"},
    {LENGTH(TextIndent), u"text-indent:10%", u"", "5"}, {LENGTH(LetterSpacing), u"letter-spacing:2px", u"", "2"}, {LENGTH(WordSpacing), u"", u"word-spacing:50%", "5"},
    {LENGTH(BorderSpacingX), u"", u"border-spacing:10% 3px", "4"}, {LENGTH(BorderSpacingY), u"", u"border-spacing:10% 3px", "3"},
    {LENGTH(BorderSpacingY), u"", u"border-spacing:7px", "7"}, {LENGTH(ColumnWidth), u"", u"column-width:10%", "5"},
    {LENGTH(ColumnGap), u"", u"", "10"}, {LENGTH(ColumnGap), u"", u"column-gap:4px", "4"}, {LENGTH(BackgroundPositionY), u"", u"background-position-y:50%", "20"},
    {[](TBaseElementStyle& s) { return Show(s.MarginTopPx() == 1e30f); }, u"", u"margin-top:9e37em", "yes"}, {LENGTH(LetterSpacing), u"letter-spacing:2px", u"letter-spacing:inherit", "2"}, {LENGTH(Width), u"width:9px", u"width:inherit", "auto"},
    {LENGTH(MarginTop), u"", u"", "0"}, {LENGTH(MarginTop), u"", u"margin-top:10%", "20"}, {LENGTH(MarginLeft), u"", u"margin-left:auto", "auto"},
    {VALUE(MarginTopPx), u"", u"margin-top:10%", "20"}, {VALUE(MarginLeftPx), u"", u"margin:1px 2em", "20"}, {VALUE(MarginLeftPx), u"margin:3px", u"", "0"},
    {LENGTH(PaddingTop), u"", u"padding-top:10%", "20"}, {LENGTH(PaddingLeft), u"", u"padding:1px 2px", "2"}, {VALUE(PaddingRightPx), u"", u"padding:1px 2px 3px 4px", "2"},
    {VALUE(PaddingLeftPx), u"", u"padding-left:calc(1px + 10%)", "21"}, {VALUE(PaddingBottomPx), u"", u"padding-bottom:1in", "96"},
    {LENGTH(FontSize), u"", u"", "20"}, {LENGTH(FontSize), u"", u"font-size:2em", "40"}, {LENGTH(FontSize), u"", u"font-size:50%", "10"},
    {LENGTH(FontSize), u"font-size:33px", u"font-size:inherit", "20"}, {LENGTH(FontSize), u"", u"font:italic 12px/2 Arial", "12"},
    {LENGTH(LineHeight), u"", u"", "auto"}, {LENGTH(LineHeight), u"line-height:2", u"", "20"}, {LENGTH(LineHeight), u"", u"line-height:normal", "12"},
    {LENGTH(LineHeight), u"", u"line-height:150%", "15"}, {LENGTH(LineHeight), u"", u"display:block", "12"}, {LENGTH(LineHeight), u"", u"line-height:30px", "30"},
};
const TCase kBorders[] = {
    {VALUE(BorderTopStyle), u"", u"", "lsNone"}, {VALUE(BorderTopStyle), u"", u"border:1px dashed red", "lsDashed"},
    {VALUE(BorderLeftStyle), u"", u"border-style:solid dotted", "lsDotted"}, {VALUE(BorderLeftStyle), u"", u"border-left:2px double;border-top-style:solid", "lsDouble"},
    {VALUE(BorderTopWidthPx), u"", u"border-top-style:dotted", "3"}, {VALUE(BorderTopWidthPx), u"", u"border-top:none", "0"},
    {LENGTH(BorderTopWidth), u"", u"border-top:none", "0"}, {VALUE(BorderTopWidthPx), u"", u"border-top:thick solid", "5"},
    {VALUE(BorderLeftWidthPx), u"", u"border:2px solid;border-left-width:7px", "7"}, {VALUE(BorderTopWidthPx), u"", u"border-top-width:7px", "0"},
    {VALUE(BorderTopWidthPx), u"border:2px solid", u"", "0"}, {VALUE(BorderTopWidthPx), u"", u"border-top:.5em hidden", "0"},
    {COLOR(BorderTopColor), u"", u"", "FF808080"}, {COLOR(BorderTopColor), u"", u"border:1px solid #123456", "FF123456"},
    {COLOR(BorderRightColor), u"", u"border-color:red lime", "FF00FF00"}, {COLOR(BorderTopColor), u"border-color:red", u"border-color:inherit", "FFFF0000"},
    {VALUE(BorderPresent), u"", u"border:1px solid", "yes"}, {VALUE(BorderPresent), u"", u"border:none", "no"},
    {VALUE(BorderOneStyle), u"", u"", "yes"}, {VALUE(BorderOneStyle), u"", u"border:1px solid red", "yes"},
    {VALUE(BorderOneStyle), u"", u"border:1px solid;border-left-width:2px", "no"}, {VALUE(BorderOneStyle), u"", u"border:1px solid;border-left-color:red", "no"},
    {PAIR(BorderTopLeftRadius), u"", u"", "0 0"}, {PAIR(BorderTopLeftRadius), u"", u"border-radius:10%", "5 4"},
    {PAIR(BorderTopLeftRadius), u"", u"border-radius:4px / 10%", "4 4"}, {PAIR(BorderTopLeftRadius), u"", u"border-top-left-radius:calc(10% + 1px)", "6 5"},
    {PAIR(BorderTopRightRadius), u"", u"border-top-right-radius:3px", "3 3"}, {PAIR(BorderTopRightRadius), u"border-radius:5px", u"", "0 0"},
    {VALUE(MaxBorderRadius), u"", u"border-radius:1px;border-top-left-radius:9px", "9"},
    {[](TBaseElementStyle& s) { return Show(s.BorderOneRadius(3, 3, 5)); }, u"", u"border-radius:3.05px", "yes"},
    {[](TBaseElementStyle& s) { return Show(s.BorderOneRadius(3, 3, 3)); }, u"", u"border-radius:30px", "yes"},
    {[](TBaseElementStyle& s) { return Show(s.BorderOneRadius(3, 3, 5)); }, u"", u"border-radius:3px;border-top-left-radius:4px", "no"},
    {[](TBaseElementStyle& s) { return Show(s.BorderOneRadius(0, 0, 5)); }, u"", u"", "yes"},
    {VALUE(OutlineWidthPx), u"", u"outline:solid blue 2px", "2"}, {COLOR(OutlineColor), u"", u"outline:solid blue 2px", "FF0000FF"},
    {VALUE(OutlineStyle), u"", u"outline-style:dotted", "lsDotted"}, {VALUE(OutlineWidthPx), u"", u"outline-style:dotted", "3"}, {VALUE(OutlineWidthPx), u"", u"outline-width:4px", "0"},
};
const TCase kOthers[] = {
    {TextStyle, u"", u"font-weight:650", "Bold"}, {TextStyle, u"", u"font-weight:550", "Semibold"}, {TextStyle, u"", u"font-weight:250", "UltraLight"},
    {TextStyle, u"font-weight:bold", u"font-weight:400", ""}, {TextStyle, u"font-weight:bold", u"font-weight:350", "Light"}, {TextStyle, u"", u"font-weight:900", "Black"},
    {TextStyle, u"font-weight:bold", u"", "Bold"}, {TextStyle, u"font-weight:bold", u"font-weight:lighter", "Light"}, {TextStyle, u"font-weight:bold", u"font-weight:normal", ""},
    {TextStyle, u"font-style:italic", u"font-style:oblique", ""}, {TextStyle, u"font-style:italic", u"text-decoration:underline", "Italic Underline"},
    {TextStyle, u"text-decoration:line-through", u"text-decoration:none", ""}, {TextStyle, u"text-decoration:line-through", u"text-decoration:inherit", "StrikeOut"},
    {TextStyle, u"text-decoration:underline", u"text-decoration-line:line-through", "Underline StrikeOut"}, {TextStyle, u"text-decoration:underline", u"text-decoration-line:none", ""},
    {[](TBaseElementStyle& s) { return Show(s.FDisplay); }, u"display:table", u"display:inherit", "dsTable"}, {[](TBaseElementStyle& s) { return Show(s.FDisplay); }, u"", u"display:flex", "dsFlex"},
    {[](TBaseElementStyle& s) { return Show(s.FPosition); }, u"", u"position:sticky", "epStatic"}, {[](TBaseElementStyle& s) { return Show(s.FPosition); }, u"", u"position:running(head)", "epRunning"},
    {VALUE(RunningBlock), u"", u"position:running(head)", "head"},
    {[](TBaseElementStyle& s) { return Show(s.ZIndex); }, u"", u"z-index:1e9", "100000000"}, {[](TBaseElementStyle& s) { return Show(s.ZIndex); }, u"", u"z-index:-2.5", "-2"},
    {[](TBaseElementStyle& s) { return Show(s.Zoom); }, u"", u"zoom:150%", "1.5"}, {[](TBaseElementStyle& s) { return Show(s.Zoom); }, u"zoom:2", u"", "2"},
    {[](TBaseElementStyle& s) { return Show(s.WhiteSpace); }, u"white-space:pre", u"", "wsPre"}, {[](TBaseElementStyle& s) { return Show(s.Visibility); }, u"", u"visibility:hidden", "cvHidden"},
    {[](TBaseElementStyle& s) { return Show(s.CalculatedWordBreak); }, u"", u"word-wrap:break-word", "wbBreakWord"}, {[](TBaseElementStyle& s) { return Show(s.CalculatedWordBreak); }, u"hyphens:auto", u"", "wbHyphens"},
    {[](TBaseElementStyle& s) { return Show(s.Clear.Contains(ecLeft)) + Show(s.Clear.Contains(ecRight)); }, u"", u"clear:both", "yesyes"},
    {COLOR(TextColor), u"", u"", "FF000000"}, {COLOR(TextColor), u"color:red", u"", "FFFF0000"}, {COLOR(TextColor), u"color:red", u"color:inherit", "FFFF0000"},
    {COLOR(TextColor), u"", u"color:inherit", "FF000000"}, {COLOR(TextColor), u"color:red", u"color:var(--none)", "00000000"},
    {COLOR(TextDecorationColor), u"text-decoration-color:lime;color:blue", u"", "FF0000FF"},
    {COLOR(BackgroundColor), u"background-color:red", u"", "00000000"}, {COLOR(BackgroundColor), u"background-color:red", u"background-color:inherit", "FFFF0000"},
    {VALUE(BackgroundPresent), u"", u"background-color:red", "yes"}, {VALUE(BackgroundPresent), u"", u"background-color:none", "no"}, {VALUE(BackgroundPresent), u"", u"background-color:inherit", "no"},
    {VALUE(Opacity), u"", u"opacity:40%", ".4"}, {VALUE(Opacity), u"", u"opacity:red", "1"}, {VALUE(Opacity), u"opacity:.5", u"", "1"}, {VALUE(Opacity), u"", u"opacity:.5", ".5"},
    {VALUE(ColumnCount), u"", u"column-count:2.5", "2"}, {VALUE(ColumnCount), u"column-count:3", u"", "1"}, {VALUE(FlexShrink), u"", u"", "1"}, {VALUE(FlexGrow), u"", u"flex-grow:2", "2"},
    {ColumnRule, u"", u"column-rule:thick dashed red", "5 lsDashed FFFF0000"}, {ColumnRule, u"", u"column-rule:2px solid", "2 lsSolid 00000000"},
    {VALUE(FontFamily), u"font-family:\"Two Words\", serif", u"", "Two Words"}, {VALUE(FontFamily), u"font-family:Arial Black", u"", "Arial Black"},
    {VALUE(ContentEditable), u"", u"", "yes"}, {VALUE(ContentEditable), u"contenteditable:false", u"", "no"},
    {VALUE(Page), u"", u"page:last", "-9991"}, {VALUE(Page), u"", u"page:3", "3"}, {VALUE(Page), u"", u"page:3 n", "-3"}, {VALUE(Page), u"", u"page:x", "0"}, {VALUE(PageSize), u"", u"size:A4 landscape", "A4 landscape"},
    {VALUE(TransitionDelay), u"", u"transition-delay:1.5s", "1500"},
    {BoxShadow, u"", u"", "none"}, {BoxShadow, u"", u"box-shadow:1px 10% 2px 3px red", "1 5 2 FFFF0000"}, {BoxShadow, u"", u"box-shadow:inset 1px 1px 2px red", "1 1 2 FFFF0000 inset"}, {BoxShadow, u"", u"box-shadow:NONE", "none"},
    {VALUE(NoShadow), u"", u"box-shadow:1px 1px 2px red;opacity:0", "yes"}, {VALUE(NoShadow), u"", u"box-shadow:1px 1px 2px red", "no"},
    {TextShadow, u"text-shadow:red 1px 1px 2px", u"", "1 1 2 FFFF0000"}, {TextShadow, u"", u"text-shadow:1px 1px 2px red", "1 1 2 FFFF0000"}, {VALUE(NoTextShadow), u"text-shadow:1px 1px 2px red", u"", "no"},
    {GradientOf, u"", u"background:linear-gradient(red, blue)", "Bottom 180 FFFF0000@0 FF0000FF@100"}, {GradientOf, u"", u"background:linear-gradient(to right, red 10%, blue)", "Right 90 FFFF0000@10 FF0000FF@100"},
    {GradientOf, u"", u"background:linear-gradient(45deg, red, lime, blue)", "Bottom 45 FFFF0000@0 FF00FF00@50 FF0000FF@100"}, {GradientOf, u"", u"background-image:linear-gradient(to top left, red, blue)", "TopLeft -45 FFFF0000@0 FF0000FF@100"},
    {Background, u"", u"background-image:-webkit-linear-gradient(red,blue)", "absent |Top 0|auto auto|bsAuto auto auto|brRepeat boPaddingBox baScroll"},
    {Background, u"", u"background-image:url(a%20b.png);background-position:right top", "a b.png|Top 0|50 0|bsAuto auto auto|brRepeat boPaddingBox baScroll"},
    {Background, u"", u"background-image:url(a.png);background-position:top 5px;background-size:20% 3px;background-attachment:fixed", "a.png|Top 0|0 5|bsSize 10 3|brRepeat boPaddingBox baFixed"},
    {Transform, u"", u"", "none Center/Center"}, {Transform, u"", u"transform:translate(10px) scale(2) rotate(30deg)", "Translate(10,0) Scale(2,2) Rotate(30) Center/Center"},
    {Transform, u"", u"transform:scaleX(3);transform-origin:top left", "ScaleX(3) Left/Top"}, {Transform, u"transform:scale(2)", u"", "none Center/Center"},
};
// clang-format on

void Check(std::span<const TCase> cases) {
  for (const TCase& c : cases) {
    TTree tree(c.Parent, c.Own);
    EXPECT_EQ(c.Query(tree.Style()), c.Expected) << HtToUtf8(c.Parent) << " { " << HtToUtf8(c.Own) << " }";
  }
}

TEST(ElementStyle, Keywords) { Check(kKeywords); }
TEST(ElementStyle, Lengths) { Check(kLengths); }
TEST(ElementStyle, Borders) { Check(kBorders); }
TEST(ElementStyle, Others) { Check(kOthers); }

TEST(ElementStyle, AutoTakesTheBitAway) {
  TTree tree(u"", u"width:10px;width:auto;margin-left:auto");
  EXPECT_FALSE(tree.Style().PropertySet.Contains(cspWidth));
  EXPECT_TRUE(tree.Style().InternalFindProp(cspWidth) && !tree.Style().FindProp(cspWidth, false));
  EXPECT_TRUE(tree.Style().PropertySet.Contains(cspMarginLeft));
}

TEST(ElementStyle, Transitions) {
  TTree tree(u"",
             u"transition:color 200000ms ease-in 1s, all 2s linear, background .5s, x; width:40px; zoom:2");
  TCSSTransitions& list = *tree.Style().Transitions;
  std::string text;
  for (int32_t i = 0; i < list.GetCount(); ++i) {
    const TCSSTransition& t = list.Transition(i);
    text += Show(list.Get(i)) + " " + std::to_string(t.Duration) + " " + std::to_string(t.Delay) + " " +
            Show(t.Timing) + (t.Prop ? ";" : "?;");
  }
  EXPECT_EQ(text,
            "all 2000 -1 tmLinear?;background-color 500 -1 tmEase;background-image 500 -1 tmEase;"
            "color 100000 1000 tmEaseIn;");
  TCSSTransition& color = list.Demand(u"color"_hs);
  color.Color = 0xFF112233;
  EXPECT_EQ(Hex(tree.Style().TextColor()), "FF000000");
  color.Active = true;
  EXPECT_EQ(Hex(tree.Style().TextColor()), "FF112233");
  TCSSTransition& width = list.Demand(u"width"_hs);
  width.Prop = FindCSSProp(u"width");
  width.Number = 60;
  width.Active = true;
  TMeasure m;
  tree.Style().Width(m);
  EXPECT_EQ(Show(m), "30");
  TCSSTransition& turn = list.Demand(u"transform.r"_hs);
  turn.Number = 15;
  turn.Active = true;
  EXPECT_EQ(Transform(tree.Style()), "none Rotate(15) Center/Center");
  tree.Resolve();  // transitions outlive a restyle
  EXPECT_EQ(Hex(tree.Style().TextColor()), "FF112233");
}

TEST(ElementStyle, Changes) {
  const struct {
    const char16_t *Before, *After;
    const char* Expected;  // changed, layout, repaint
  } cases[] = {{u"", u"", "---"},
               {u"color:red", u"color:red", "---"},
               {u"color:red", u"color:blue", "c-r"},
               {u"width:1px", u"width:2px", "clr"},
               {u"width:1px", u"width:1.00001px", "---"},
               {u"color:red", u"", "--r"},
               {u"width:1px", u"", "clr"},
               {u"", u"color:red", "c-r"},
               {u"color:red;width:1px", u"color:red", "clr"},
               {u"content:a", u"content:b", "---"},
               {u"opacity:.5", u"opacity:.6", "c-r"},
               {u"font-size:medium", u"font-size:medium", "---"},
               {u"transition-duration:#fff", u"transition-duration:#fff", "---"},
               {u"float:left", u"float:right", "c-r"},
               {u"width:var(--a)", u"width:var(--b)", "clr"},
               {u"filter:a", u"filter:b", "c-r"}};
  for (const auto& c : cases) {
    TTree tree(u"", c.Before), other(u"", c.After);
    tree.Style().SaveLastProps();
    tree.Style().FProps = other.Style().FProps;
    bool layout, repaint;
    const bool changed = tree.Style().StyleChanged(layout, repaint);
    EXPECT_EQ(std::string(changed ? "c" : "-") + (layout ? "l" : "-") + (repaint ? "r" : "-"), c.Expected)
        << HtToUtf8(c.Before) << " > " << HtToUtf8(c.After);
  }
}

// A style that knows the variables --c, a color, and --l, a length.
class TVariableStyle final : public TBaseElementStyle {
  HT_CLASS(TVariableStyle, TBaseElementStyle)

 public:
  TVariableStyle() {
    FSheet.Parse(u"a{left:calc(10% + 1em);color:lime}");
    FElement = &FNode;
    FNode.InnerWidth = 200;
    FNode.Container = &FNode;
    IntFontSize = 10;
  }
  void GetCSSVariable(TCSSTokenSequence& sequence) override {
    const TCSSTokens& tokens = *sequence.Tokens();
    const hstring name = tokens.Count() > 2 ? tokens[2].Name : hstring();
    if (name == u"--l")
      sequence.InitStore(FSheet.GetSection(0)->ValuebyName(u"left"));
    else if (name == u"--c")
      sequence.InitStore(FSheet.GetSection(0)->ValuebyName(u"color"));
    else
      sequence.Next(sequence.Count);
  }

 private:
  TCSSStyleSheet FSheet;
  TStyledHTMLNode FNode;
};

TEST(ElementStyle, Variables) {
  TCSSStyleSheet sheet;
  sheet.Parse(
      u"*{margin-left:var(--l);line-height:var(--l);font-size:var(--l);color:var(--c);"
      u"border-top-left-radius:var(--l);margin-top:var(--none);background-color:var(--none)}");
  TVariableStyle style;
  TCSSWeightList list;
  sheet.GetAllSelectors(list);
  style.ApplyValue(list, false);
  EXPECT_EQ(style.MarginLeftPx(), 30);
  EXPECT_EQ(style.MarginTopPx(), 0);
  EXPECT_EQ((LENGTH(LineHeight))(style), "11");
  EXPECT_EQ((LENGTH(FontSize))(style), "11");
  EXPECT_EQ((PAIR(BorderTopLeftRadius))(style), "30 10");
  EXPECT_EQ(Hex(style.TextColor()) + Hex(style.BackgroundColor()), "FF00FF0000000000");
}

TEST(ElementStyle, LastValues) {
  TTree tree(u"color:red;opacity:.25", u"width:10%");
  for (TStyledHTMLNode* node : {&tree.Parent, &tree.Element}) node->FStyle->SaveLastProps();
  TBaseElementStyle& style = tree.Style();
  float number = 0;
  EXPECT_EQ(Hex(style.GetLastColorProp(cspColor, true)), "FFFF0000");
  EXPECT_EQ(Hex(style.GetLastColorProp(cspColor, false)), "FF000000");
  EXPECT_TRUE(style.GetLastNumberProp(cspOpacity, number, true) && number == .25f);
  EXPECT_FALSE(style.GetLastNumberProp(cspOpacity, number, false));
  style.SetLastPropValue(u"width"_hs, 33);
  style.SetLastPropValue(u"opacity"_hs, 33);  // the element has none
  style.SetLastPropValue(u"nothing"_hs, 33);
  EXPECT_TRUE(style.GetLastNumberProp(cspWidth, number, false) && number == 33);
  EXPECT_EQ(style.FLastProps.size(), 1u);
}

TEST(ElementStyle, PseudoClasses) {
  TTree tree(u"", u"");
  tree.Element.Flags.Include(efStyleCalculated);
  tree.Parent.Flags.Include(efStyleCalculated);
  EXPECT_TRUE(tree.Style().ApplyPseudoClass(pcHover, true));
  EXPECT_FALSE(tree.Element.Flags.Contains(efStyleCalculated) ||
               tree.Parent.Flags.Contains(efStyleCalculated));
  EXPECT_FALSE(tree.Style().ApplyPseudoClass(pcHover, true));
  tree.Resolve();
  EXPECT_TRUE(tree.Style().CurrentPC.Contains(pcHover));
}

TEST(ElementStyle, RulesAddedLater) {
  TTree tree(u"", u"color:red;width:1px"), more(u"", u"color:lime;width:auto");
  TCSSWeightList list;
  more.Element.SelfStyleSheet->GetAllSelectors(list);
  tree.Style().ApplyValue(list, true);
  EXPECT_EQ(tree.Style().FProps.size(), 4u);
  EXPECT_EQ(Hex(tree.Style().TextColor()), "FF00FF00");
  EXPECT_FALSE(tree.Style().PropertySet.Contains(cspWidth));
  tree.Style().DeleteProps({cspColor});
  EXPECT_EQ(tree.Style().FProps.size(), 2u);
  EXPECT_EQ(Hex(tree.Style().TextColor()), "FF000000");
}

TEST(ElementStyle, KeyFrameAnimation) {
  TTree tree(u"", u"animation:blink 2s linear infinite");
  TCSSAnimation& a = *tree.Style().Animation;
  EXPECT_TRUE(a.Active && a.Name == u"blink" && a.Duration == 2000 && a.Timing == tmLinear &&
              a.Iterations == -1);
  EXPECT_FALSE(a.Step(10));  // no key frames
  a.Duration = 1000;
  a.Steps = {0, 50, 100};
  a.Iterations = 1;
  std::string text;
  for (int i = 0; i < 7; ++i) {
    text += a.Step(200) ? '!' : '-';
    text += std::to_string(a.GetFrameIndex());
    text += ":" + std::to_string(a.StepTime) + "@" + std::to_string(a.Position) + " ";
  }
  // Before the first step; towards 50 %; from 600 ms on towards the end; over after 1000 ms, and back at the start.
  EXPECT_EQ(text, "!0:0@199 !1:500@399 -1:500@599 !2:500@799 -2:500@999 -0:0@-1 !0:0@199 ");
}

}  // namespace
}  // namespace ht
