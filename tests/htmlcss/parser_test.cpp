// Sheets in, rules out: what is read, what is skipped, and what a declaration comes to.

#include <gtest/gtest.h>

#include "htmlcss/cssparser.h"
#include "htmlcss/cssproptable.h"
#include "htmlcss/elementstyle.h"

namespace ht {
namespace {

std::string Names(const TCSSTokens& tokens) {
  std::string text;
  for (const TCSSToken& token : tokens) text += (text.empty() ? "" : " ") + HtToUtf8(token.Name);
  return text;
}

// Each rule as "selectors{name:tokens;...}", with what it stands in.
std::string Rules(const std::u16string& sheet) {
  TCSSParser parser{hstring(sheet)};
  std::string text;
  while (parser.NextSection()) {
    const TCSSSection& section = *parser.Section;
    if (!parser.KeyFrameName.Empty()) text += "@" + HtToUtf8(parser.KeyFrameName) + " ";
    for (int32_t i = 0; i < section.Selectors.GetCount(); ++i)
      text += (i ? "," : "") + HtToUtf8(section.Selectors.GetSelector(i)->AsString());
    text += "{";
    for (const TCSSValue& value : section.Values)
      text += HtToUtf8(value.NameToken.Name) + ":" + Names(value.Tokens) + (value.Important ? "!" : "") + ";";
    text += "}";
  }
  return text;
}

TEST(CSSParser, RulesAndRecovery) {
  const struct {
    const char16_t* Sheet;
    const char* Rules;
  } cases[] = {
      // clang-format off
      {u"", ""}, {u"  ", ""}, {u"h1 { }", "h1{}"}, {u"{ color: red }", "{color:red;}"}, {u"a{color:red", "a{color:red;}"}, {u"a", "a{}"},
      {u"a,,b { }", "a,b{}"}, {u"a { color: red; color: notacolor }", "a{color:red;}"}, {u"a { color: red; color: blue }", "a{color:blue;}"},
      {u"a{color:red;width:1px;color:blue}", "a{width:1px;color:blue;}"}, {u"a{color:red;COLOR:blue}", "a{color:red;COLOR:blue;}"},
      {u"a{margin:1px !important}", "a{margin:1px!;}"}, {u"a{margin:1px !IMPORTANT;}", "a{margin:1px!;}"}, {u"a{margin:1px ! important}", "a{margin:1px   important;}"},
      {u"a{margin:1px !x}", "a{margin:1px x;}"}, {u"a{*zoom:1;color:red}", "a{color:red;}"}, {u"a{color red;margin:0}", "a{margin:0;}"},
      {u"a{color:red;;;/**/margin:0}", "a{color:red;margin:0;}"}, {u"a{5px:1;color:red}", "a{color:red;}"}, {u"a{color /**/:red;margin :0}", "a{margin:0;}"}, {u"a{x:1{y}b:2}", "a{}"},
      {u"a{x:1@k;y:2}", "a{y:2;}"}, {u"a{:1;b:2}", "a{b:2;}"}, {u"a{b:}c{d:1}", "a{}c{d:1;}"}, {u"a{b:1 2/*x*/3}", "a{b:1 2 3;}"},
      {u"; a{b:c} d{e:f}", "d{e:f;}"}, {u"\"x\" a{b:c} d{e:f}", "d{e:f;}"}, {u"a;b{c:d}e{f:g}", "e{f:g;}"},
      {u"@unknown { a { b: c } } d { e: f }", "d{e:f;}"}, {u"@media print { a { b: c } } x { y: z }", "a{b:c;}x{y:z;}"},
      {u"@keyframes k { from { left: 0 } 50% { left: 1px } }", "@k from{left:0;}@k 50%{left:1px;}"}, {u"@font-face{src:a;src:b}", "@font-face{src:a;src:b;}"},
      {u"@page{margin:0}", "@page{margin:0;}"}, {u"@charset 'x'; a{b:c}", "a{b:c;}"}, {u"<!-- a{b:c}", "-- a{b:c;}"}, {u"!a{b:c}", "a{b:c;}"},
      {u"a{color:#zzz;width:1px}", "a{width:1px;}"}, {u"a{display:nothing;width:1px}", "a{width:1px;}"}, {u"a{font-weight:odd}", "a{font-weight:odd;}"},
      // clang-format on
  };
  for (const auto& c : cases) EXPECT_EQ(Rules(c.Sheet), c.Rules) << HtToUtf8(c.Sheet);
}

// The span of a rule that the end of the text cuts off reaches to that end.
TEST(CSSParser, Positions) {
  const struct {
    const char16_t* Sheet;
    int32_t Start, End, SelectorsEnd;
  } cases[] = {
      {u" a , b.c {d:e} ", 2, 14, 8}, {u"a{b:c /**/ ", 1, 11, 1}, {u"{b:c}", 1, 5, 0}, {u"a  ", 1, 3, 1}};
  for (const auto& c : cases) {
    TCSSParser parser{hstring(c.Sheet)};
    ASSERT_TRUE(parser.NextSection());
    EXPECT_EQ(parser.Section->BlockStartPos, c.Start) << HtToUtf8(c.Sheet);
    EXPECT_EQ(parser.Section->BlockEndPos, c.End) << HtToUtf8(c.Sheet);
    EXPECT_EQ(parser.Section->Selectors.EndPos, c.SelectorsEnd) << HtToUtf8(c.Sheet);
  }
}

// Long rules find their doubles by a table, which names that differ in the middle only must not slow down.
TEST(CSSParser, LastOfManyValues) {
  std::u16string rule = u"a{";
  for (int i = 0; i < 30000; ++i)
    rule += u"name" + hstring(HtFromUtf8(std::to_string(10000 + i % 20000))) + u"name:1;";
  TCSSParser parser{hstring(rule)};
  ASSERT_TRUE(parser.NextSection());
  const TCSSValues& values = parser.Section->Values;
  ASSERT_EQ(values.size(), 20000u);
  EXPECT_EQ(values[0].NameToken.Name, u"name20000name");
  EXPECT_EQ(values[19999].NameToken.Name, u"name19999name");
}

// Behind a slash stands a second length; one inside a calc is no such slash.
TEST(CSSParser, SecondLength) {
  const struct {
    const char16_t* Value;
    const char* Value2;
  } cases[] = {{u"1px", "auto"},
               {u"1px/2px", "2px"},
               {u"1px 2px", "auto"},
               {u"calc(1px/2)/3px", "3px"},
               {u"calc((4px)/2)", "auto"}};
  for (const auto& c : cases) {
    TCSSParser parser{u"a{border-top-left-radius:" + hstring(c.Value) + u"}"};
    ASSERT_TRUE(parser.NextSection());
    EXPECT_EQ(HtToUtf8(parser.Section->Values[0].Value2.AsString()), c.Value2) << HtToUtf8(c.Value);
  }
}

TEST(CSSParser, AtRules) {
  TCSSParser parser(
      u"@charset \"utf-8\"; @import url(a.css) screen, print; @import 'b.css'; @import; a{b:c}"_hs);
  ASSERT_TRUE(parser.NextSection());
  EXPECT_EQ(parser.Charset, u"utf-8");
  ASSERT_EQ(parser.Imports.size(), 2u);
  EXPECT_EQ(HtToUtf8(parser.Imports[0].Address.Name) + " " + Names(parser.Imports[0].Media),
            "a.css screen print");
  EXPECT_EQ(HtToUtf8(parser.Imports[1].Address.Name) + Names(parser.Imports[1].Media), "b.css");
}

TEST(CSSParser, Media) {
  const struct {
    const char16_t* Query;
    TCSSMedias Medias;
    int64_t MinWidth, MaxWidth;
    bool Screen800;  // applies to a screen of 800 pixels
  } cases[] = {{u"print", {cmPrint}, 0, 0, false},
               {u"screen, print", {cmScreen, cmPrint}, 0, 0, true},
               {u"only screen and (min-width:600.5px)", {cmScreen}, 600, 0, true},
               {u"(max-width: 700px)", {cmAll}, 0, 700, false},
               {u"not screen", {cmScreen}, 0, 0, true},
               {u"foo", {cmUnknown}, 0, 0, false},
               {u"screen and (color) and (min-width:900px)", {cmScreen}, 900, 0, false},
               {u"all and (min-width:1px) and (max-width:800px)", {cmAll}, 1, 800, true},
               {u"", {cmAll}, 0, 0, true}};
  for (const auto& c : cases) {
    TCSSParser parser{u"@media " + hstring(c.Query) + u"{a{b:c}} d{e:f}"};
    ASSERT_TRUE(parser.NextSection());
    const std::unique_ptr<TCSSSection> inside = std::move(parser.Section);
    ASSERT_TRUE(parser.NextSection());
    TCSSMediaSet& set = *inside->MediaSet;
    set.HasSizeQuery = set.MinWidth || set.MaxWidth;  // which is the sheet's to tell
    EXPECT_EQ(set.Medias, c.Medias) << HtToUtf8(c.Query);
    EXPECT_EQ(set.MinWidth, c.MinWidth);
    EXPECT_EQ(set.MaxWidth, c.MaxWidth);
    EXPECT_EQ(set.CheckMedia(cmScreen, 800, 0), c.Screen800) << HtToUtf8(c.Query);
    EXPECT_NE(parser.Section->MediaSet, inside->MediaSet);
    EXPECT_EQ(parser.Section->MediaSet->Medias, TCSSMedias{cmAll});
  }
}

TEST(CSSParser, PreparedValues) {
  const struct {
    const char16_t* Declaration;
    const char* Value1;  // of a length
    uint32_t Color;      // of the first token
    bool Applied;
  } cases[] = {{u"width:10px", "10px", 0x41200000, false},
               {u"width:calc(1px + 2px)", "0", 0, false},
               {u"line-height:1.5", "1.5", 0x3FC00000, false},
               {u"line-height:150%", "150%", 0x43160000, false},
               {u"font-size:medium", "18px", 0, false},
               {u"color:inherit", "auto", 888, false},
               {u"color:red", "auto", 0xFFFF0000, false},
               {u"color:#123", "auto", 0xFF112233, false},
               {u"color:rgba(#336699, .5)", "auto", 0x80336699, false},
               {u"color:rgba(red, .5)", "auto", 0x80FF0000, false},
               {u"display:inline-block", "auto", dsInlineBlock, true},
               {u"float:FOOT-NOTE", "auto", fFootNote, false},
               {u"font-weight:odd", "auto", 999, true},
               {u"contenteditable:true", "auto", 0, false},
               {u"text-decoration:underline", "auto", 4, true},
               {u"text-decoration:'underline line-through'", "auto", 12, true},
               {u"z-index:2", "auto", 0x40000000, true},
               {u"-x-y:1", "auto", 0x3F800000, false}};
  for (const auto& c : cases) {
    TCSSParser parser{u"a{" + hstring(c.Declaration) + u"}"};
    ASSERT_TRUE(parser.NextSection() && parser.Section->Values.size() == 1) << HtToUtf8(c.Declaration);
    const TCSSValue& value = parser.Section->Values[0];
    EXPECT_EQ(HtToUtf8(value.Value1.AsString()), c.Value1) << HtToUtf8(c.Declaration);
    EXPECT_EQ(value.Tokens[0].Color(), c.Color) << HtToUtf8(c.Declaration);
    EXPECT_EQ(value.ApplyProc() != nullptr, c.Applied) << HtToUtf8(c.Declaration);
    EXPECT_EQ(value.Inherit, c.Color == 888);
    EXPECT_EQ(value.Vendor, c.Declaration[0] == u'-');
  }
}

TEST(CSSParser, PropertyTable) {
  EXPECT_EQ(CSSPropDictionary().GetCount(), 150);
  EXPECT_EQ(HtEnumCount(TCSSProperty{}), 166);
  EXPECT_EQ(CSSPropByName(u"no-such").Prop, cspUnknown);
  EXPECT_EQ(FindCSSProp(u"no-such"), nullptr);
  const struct {
    const char16_t* Name;
    TCSSProperty Prop;
    TCSSPropertyType Type;
    TCSSPropertyParentType Parent;
    bool Inherited, Layout;
    size_t Longhands;
  } cases[] = {{u"letter-spacing", cspLetterSpacing, cptLength, cpptWidth, false, true, 0},
               {u"padding-top", cspPaddingTop, cptLength, cpptContainerWidth, false, true, 0},
               {u"height", cspHeight, cptLength, cpptContainerHeight, false, true, 0},
               {u"font", cspFont, cptComplex, cpptFontSize, false, true, 4},
               {u"background-position-y", cspbackgroundPositionY, cptLength, cpptHeight, false, false, 0},
               {u"text-shadow", cspTextShadow, cptComplex, cpptWidth, true, false, 0},
               {u"border-top-left-radius", cspBorderTopLeftradius, cptLength, cpptWidth, false, false, 0},
               {u"overflow", cspOverflow, cptEnum, cpptWidth, false, true, 2},
               {u"border-top-color", cspBorderTopColor, cptColor, cpptWidth, false, false, 0}};
  for (const auto& c : cases) {
    const TCSSPropRec& row = CSSPropByName(c.Name);
    EXPECT_EQ(row.Prop, c.Prop) << HtToUtf8(c.Name);
    EXPECT_EQ(row.PropType, c.Type) << HtToUtf8(c.Name);
    EXPECT_EQ(row.ParentType, c.Parent) << HtToUtf8(c.Name);
    EXPECT_EQ(row.Inherited, c.Inherited) << HtToUtf8(c.Name);
    EXPECT_EQ(row.Layout, c.Layout) << HtToUtf8(c.Name);
    EXPECT_EQ(row.SubProps.size(), c.Longhands) << HtToUtf8(c.Name);
    EXPECT_EQ(row.Default, 0u);
  }
  EXPECT_EQ(CSSPropByName(u"zoom").Default, 0x3F800000u);
}

}  // namespace
}  // namespace ht
