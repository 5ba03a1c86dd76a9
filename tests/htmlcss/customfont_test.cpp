#include "htmlcss/customfont.h"

#include <gtest/gtest.h>

#include "htmlcss/cssextension.h"
#include "htruntime/exception.h"
#include "styledtree.h"

namespace ht {
namespace {

TEST(CustomFont, SplitsNames) {
  const struct {
    const char16_t *Name, *Family, *Word;
  } cases[] = {
      {u"Arial Bold", u"Arial", u"bold"},
      {u"Arial Bold Italic", u"Arial Bold", u"italic"},
      {u"Bold", u"Bold", u""},
      {u"", u"", u""},
      {u"Gill ULTRALight", u"Gill", u"ultralight"},
      {u"Gill Ultra Light", u"Gill Ultra", u"light"},
      {u" Fat", u"", u"fat"},
      {u"Semibold Sans", u"Semibold Sans", u""},
      {u"Xbold", u"Xbold", u""},
      {u"Foo ExtraBlack", u"Foo", u"extrablack"},
  };
  for (const auto& c : cases) {
    hstring family = u"old"_hs, word = u"old"_hs;
    EXPECT_EQ(ParseFontFamilyName(c.Name, family, word), *c.Word != 0);
    EXPECT_TRUE(family == hstring(c.Family) && word == hstring(c.Word)) << HtToUtf8(c.Name);
  }
}

TEST(CustomFont, Normalises) {
  const struct {
    const char16_t *Style, *Weight;
    int32_t Number;
    TCSSFontWeight Class;
    TCSSFontStyle FontStyle;
    THtFontStyles Styles;
  } cases[] = {
      {u"", u"", 400, fwNormal, cfsNormal, {}},
      {u"Italic", u"BOLD", 700, fwBold, cfsItalic, {hfsBold, hfsItalic}},
      {u"oblique 10deg", u"normal", 400, fwNormal, cfsOblique, {}},
      {u"slanted", u"100", 100, fw100, cfsNormal, {}},
      {u"", u"200", 200, fw200, cfsNormal, {hfsUltraLight}},
      {u"", u"300", 300, fw300, cfsNormal, {hfsLight}},
      {u"", u"500", 500, fw500, cfsNormal, {}},
      {u"", u"600", 600, fw600, cfsNormal, {}},
      {u"", u"800", 800, fwNormal, cfsNormal, {}},
      {u"", u"900", 900, fw900, cfsNormal, {hfsBlack}},
      {u"", u"5000", 1000, fwNormal, cfsNormal, {}},
      {u"", u"-5", 400, fwNormal, cfsNormal, {}},
      {u"", u"heavy", 400, fwNormal, cfsNormal, {}},
      {u"", u"99999999999", 400, fwNormal, cfsNormal, {}},
  };
  for (const auto& c : cases) {
    const TCSSCustomFont font(u"ARIAL", u"U", {}, c.Style, c.Weight);
    EXPECT_EQ(font.Weight, c.Number) << HtToUtf8(c.Weight);
    EXPECT_TRUE(font.FontWeight == c.Class && font.FontStyle == c.FontStyle && font.Styles == c.Styles &&
                font.Family == u"arial" && font.URL == u"U")
        << HtToUtf8(c.Weight);
  }
}

TEST(CustomFont, PicksFaces) {
  constexpr std::u16string_view kPlain[] = {u"400", u"i400"},
                                kAll[] = {u"400", u"700", u"300", u"i900", u"i200"};
  const struct {
    std::span<const std::u16string_view> Faces;
    THtFontStyles Styles;
    int32_t Index;
  } cases[] = {
      {kPlain, {hfsBold, hfsItalic}, 1},
      {kPlain, {hfsUnderline, hfsStrikeOut}, 0},
      {kPlain, {hfsItalic, hfsUnderline}, 1},
      {kPlain, {hfsLight}, 0},
      {kAll, {hfsBold}, 1},
      {kAll, {hfsBlack}, 1},
      {kAll, {hfsBold, hfsItalic}, 3},
      {kAll, {hfsUltraLight}, 2},
      {kAll, {hfsLight, hfsItalic}, 4},
      {kAll, {hfsItalic}, 3},
      {kAll, {hfsLight, hfsBold}, 1},
      {kAll, {hfsSemibold}, 0},
      {kAll, {hfsSemibold, hfsBlack}, 0},
      {{}, {hfsBold}, -1},
  };
  for (const auto& c : cases) {
    TCSSCustomFontFamily family(u"F");
    for (std::u16string_view face : c.Faces) {
      const bool italic = face[0] == u'i';
      family.AddFont(std::make_unique<TCSSCustomFont>(u"F", u"u", hstring(), italic ? u"italic" : u"",
                                                      face.substr(italic)));
    }
    const TCSSCustomFont* expected = c.Index < 0 ? nullptr : family.GetFontByIndex(c.Index);
    EXPECT_EQ(family.GetFont(c.Styles), expected) << &c - cases;
  }
  TCSSCustomFontFamily family(u"F"), copy(u"G");
  family.AddFont(std::make_unique<TCSSCustomFont>(u"F", u"u", u"woff"_hs, u"italic"_hs, u"bold"_hs));
  family.Fonts[0]->LocalNames = u"a;b"_hs;
  family.Fonts[0]->Weight = 650;
  copy.Assign(family);
  const TCSSCustomFont& font = *copy.GetFontByIndex(0);
  EXPECT_TRUE(copy.Name == u"f" && copy.Count() == 1 && font.Weight == 650 && font.FontWeight == fwBold &&
              font.Format == u"woff" && font.LocalNames == u"a;b");
  for (int32_t index : {-1, 1}) {
    try {
      copy.GetFontByIndex(index);
      ADD_FAILURE();
    } catch (const ERangeError& e) {
      EXPECT_EQ(HtToUtf8(e.Message), "Font index out of range");
    }
  }
}

TEST(CustomFont, ReadsFontFace) {
  const struct {
    const char16_t* Face;
    const char* Font;  // family, address, local names, style, weight; empty: none
  } cases[] = {
      {u"font-family:'My Font';src:url(a) format('woff')", "my font|a||normal|400"},
      {u"font-family:F;src:url(a), url(b) format('woff'), url(c) format(\"truetype\")", "f|c||normal|400"},
      {u"font-family:F;src:url(a) format('woff2')", ""},
      {u"font-family:F;src:local('A')", ""},
      {u"font-family:inherit;src:url(a) format('woff')", ""},
      {u"font-family:F;src:local('A'), local(\"B C\"), url(a) format('opentype')", "f|a|A;B C|normal|400"},
      {u"font-family:F;src:local('A');src:url(a) format('woff'), local('B')", "f|a|A;B|normal|400"},
      {u"font-family:F;src:url(a);src:format('woff')", ""},
      {u"font-family:F;src:url(a) format('woff');font-style:normal italic;font-weight:bold",
       "f|a||italic|700"},
      {u"font-family:F;src:url(a) format('woff');font-style:italic;font-style:oblique;font-weight:300",
       "f|a||italic|300"},
      {u"font-family:F;font-family:G;src:url(a) format('woff')", "g|a||normal|400"},
  };
  for (const auto& c : cases) {
    TCSSStyleSheet sheet;
    sheet.Parse(u"@font-face{" + hstring(c.Face) + u"}");
    EXPECT_EQ(sheet.fSections.GetCount(), 1);
    std::string text;
    if (sheet.CustomFonts) {
      int32_t i = 0;
      const TCSSCustomFont& font = *sheet.CustomFonts->GetNext<TCSSCustomFontFamily>(i)->GetFontByIndex(0);
      text = HtToUtf8(font.Family + u"|" + font.URL + u"|" + font.LocalNames + u"|" + font.StyleName + u"|" +
                      font.WeightName);
    }
    EXPECT_EQ(text, c.Font) << HtToUtf8(c.Face);
  }
  TCSSStyleSheet sheet;
  sheet.Parse(
      u"@font-face{font-family:F;src:url(a) format('woff')}@font-face{font-family:f;src:url(b) "
      u"format('woff')}");
  EXPECT_EQ(sheet.CustomFonts->Get<TCSSCustomFontFamily>(u"f")->Count(), 2);
}

TEST(CSSExtension, IsSwitchedOnByClasses) {
  TTestNode root(u"<p id=p class='chart map'></p>");
  THtStringList classes(31, false);
  classes.AddKey(u"map"_hs);
  TCSSStyleSheet none;
  TCSSExtension::AddExtensions(classes, none);
  EXPECT_EQ(none.SelectorCounter, 10000);

  const hstring keys[] = {u"chart"_hs, u"map"_hs}, others[] = {u"other"_hs};
  TCSSExtension::RegisterExtension(keys, u".chart{top:1px}.map{top:2px}"_hs);
  TCSSExtension::RegisterExtension(others, u".map{top:3px}"_hs);
  TCSSExtension::RegisterExtension(keys, u".map{top:4px}"_hs);
  for (int round = 0; round < 2; ++round) {
    TCSSStyleSheet sheet;
    TCSSExtension::AddExtensions(classes, sheet);
    TCSSWeightList list;
    sheet.GetElementSelectors(ById(root, u"p"), list, &sheet.Main, {});
    ASSERT_EQ(list.GetCount(), 3);
    EXPECT_EQ(list.GetValue(2)->Tokens[0].AsFloat(), 4);
  }
  classes.Add(u"chart"_hs, nullptr);
  TCSSStyleSheet once;
  TCSSExtension::AddExtensions(classes, once);
  EXPECT_EQ(once.SelectorCounter, 10003);
}

}  // namespace
}  // namespace ht
