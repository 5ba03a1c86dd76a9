// Shorthands taken apart, rules as text, and style sets.

#include <gtest/gtest.h>

#include "htmlcss/cssparser.h"
#include "htmlcss/cssproptable.h"
#include "htmlcss/csssection.h"
#include "htmlcss/cssstyleset.h"

namespace ht {
namespace {

std::unique_ptr<TCSSSection> Parse(const hstring& rule) {
  TCSSParser parser(rule);
  parser.NextSection();
  return std::move(parser.Section);
}

std::string Compiled(const hstring& declarations) {
  std::string text;
  const std::unique_ptr<TCSSSection> section = Parse(u"a{" + declarations + u"}");
  for (const TCSSValue& value : section->CompiledValues) text += HtToUtf8(CSSValuetoString(value));
  return text;
}

TEST(CSSSection, Shorthands) {
  const struct {
    const char16_t* Declarations;
    const char* Compiled;
  } cases[] = {
      // clang-format off
      {u"margin:1px", "margin-top:1px;margin-right:1px;margin-bottom:1px;margin-left:1px;"},
      {u"margin:1px 2px", "margin-top:1px;margin-right:2px;margin-bottom:1px;margin-left:2px;"},
      {u"padding:1px 2px 3px", "padding-top:1px;padding-right:2px;padding-bottom:3px;padding-left:2px;"},
      {u"margin:1px 2px 3px 4px!important", "margin-top:1px!important;margin-right:2px!important;margin-bottom:3px!important;margin-left:4px!important;"},
      {u"margin:calc(1px + 2px) 0", "margin-top:calc( 1px + 2px);margin-right:0;margin-bottom:calc( 1px + 2px);margin-left:0;"},
      {u"border-radius:1px 2px", "border-top-left-radius:1px;border-top-right-radius:2px;border-bottom-right-radius:1px;border-bottom-left-radius:2px;"},
      {u"overflow:hidden", "overflow-x:hidden;overflow-y:hidden;"}, {u"overflow:hidden scroll", "overflow-x:hidden;overflow-y:scroll;"},
      {u"border:1px solid red", "border-width:1px;border-top-style:solid;border-right-style:solid;border-bottom-style:solid;border-left-style:solid;border-color:red;"},
      {u"border:solid", "border-top-style:solid;border-right-style:solid;border-bottom-style:solid;border-left-style:solid;"},
      {u"border:rgb(1,2,3) 2px", "border-color:rgb;border-width:2px;"}, {u"border-radius:1px / 2px", "border-radius:1px / 2px;"},
      {u"margin:1px max((2px), 3px) 4px", "margin-top:1px;margin-right:max(( 2px), 3px);margin-bottom:4px;margin-left:max(( 2px), 3px);"},
      {u"border:thick #123", "border-width:thick;border-color: #123;"},
      {u"background:url(x.png) no-repeat red", "background-image:url('x.png');background-repeat:no-repeat;background-color:red;"},
      {u"background:red", "background-color:red;background-image:none;"}, {u"background:none", "background-color:none;background-image:none;"},
      {u"background:50% 50% url(x.png)", "background-image:url('x.png');"}, {u"background:center 5px", "background-position-x:center;background-position-y:5px;background-image:none;"},
      {u"background:fixed border-box", "background-attachment:fixed;background-origin:border-box;background-image:none;"},
      {u"background:linear-gradient(red,blue)", "background-image:linear-gradient( red, blue);"},
      {u"font:italic bold 12px/14px Arial", "font-style:italic;font-weight:bold;font-size:12px;line-height:14px;font-family:Arial;"},
      {u"font:12px serif", "font-size:12px;font-family:serif;font-style:normal;font-weight:normal;"},
      {u"flex:1 1 auto", "flex-grow:1;flex-shrink:1;"}, {u"flex:1 1 10px", "flex-grow:1;flex-shrink:1;flex-basis:10px;"}, {u"flex:10px", "flex-basis:10px;"},
      {u"outline:solid red 1px", "outline-style:solid;outline-color:red;outline-width:1px;"}, {u"list-style:square inside", "list-style-type:square;"},
      {u"text-decoration:underline dotted #123", "text-decoration-line:underline;text-decoration-style:dotted;text-decoration-color: #123;"},
      {u"-webkit-foo:1;foo:1;color:inherit", "color:inherit;"}, {u"border-color:red", "border-top-color:red;border-right-color:red;border-bottom-color:red;border-left-color:red;"},
      {u"border-style:solid nonsense", "border-top-style:solid;border-bottom-style:solid;"},
      // clang-format on
  };
  for (const auto& c : cases) EXPECT_EQ(Compiled(c.Declarations), c.Compiled) << HtToUtf8(c.Declarations);
}

TEST(CSSSection, Text) {
  const struct {
    const char16_t* Rule;
    const char *Text, *Inline;
  } cases[] = {
      {u"a , b>c{color:red;margin:0 1px}", "a, b>c\r\n{  color:red;\r\n  margin:0 1px;\r\n}",
       "color:red;margin:0 1px;"},
      {u"a{}", "a\r\n{}", ""},
      {u"a{background:url(x y.png) #fff;content:'x y'!important}",
       "a\r\n{  background:url('x y.png') #fff;\r\n  content:'x y'!important;\r\n}",
       "background:url('x y.png') #fff;content:'x y'!important;"},
      {u"a{x:f(1,2):[b];y:#123}", "a\r\n{  x:f( 1, 2):[ b];\r\n  y: #123;\r\n}", "x:f( 1, 2):[ b];y: #123;"},
  };
  for (const auto& c : cases) {
    const std::unique_ptr<TCSSSection> section = Parse(hstring(c.Rule));
    EXPECT_EQ(HtToUtf8(section->AsString()), c.Text);
    EXPECT_EQ(HtToUtf8(section->AsInlineString()), c.Inline);
  }
}

TEST(CSSSection, Minify) {
  const struct {
    const char16_t* Declarations;
    const char* Minified;
  } cases[] = {{u"border-top:1px solid;border-right:1px solid;border-bottom:1px solid;border-left:1px solid",
                "border:1px solid;"},
               {u"border-top:1px;border-right:1px;border-bottom:1px;border-left:2px",
                "border-top:1px;border-right:1px;border-bottom:1px;border-left:2px;"},
               {u"border-top:1px;border-right:1px;border-bottom:1px;border-left:1px;border:0",
                "border-top:1px;border-right:1px;border-bottom:1px;border-left:1px;border:0;"},
               {u"color:red;padding-left:1px;padding-top:1px;padding-right:1px;padding-bottom:1px",
                "color:red;padding:1px;"},
               {u"margin-left:1px;margin-top:1px;margin-right:1px;margin-bottom:1px",
                "margin-left:1px;margin-top:1px;margin-right:1px;margin-bottom:1px;"},
               {u"padding-top:1px;padding-right:1px;padding-bottom:1px",
                "padding-top:1px;padding-right:1px;padding-bottom:1px;"}};
  for (const auto& c : cases) {
    const std::unique_ptr<TCSSSection> section = Parse(u"a{" + hstring(c.Declarations) + u"}");
    section->Minify();
    EXPECT_EQ(HtToUtf8(section->AsInlineString()), c.Minified);
  }
}

TEST(CSSSection, ValuesByName) {
  const std::unique_ptr<TCSSSection> section = Parse(u"a{Color:red;margin:1px;foo:x}"_hs);
  EXPECT_EQ(section->ValuebyName(u"color")[0].Name, u"red");
  EXPECT_EQ(section->CompiledValuebyName(u"MARGIN-left")[0].Name, u"1px");
  EXPECT_TRUE(section->CompiledValuebyName(u"foo").Empty());
  EXPECT_EQ(section->ItembyName(u"none"), nullptr);
  section->DeleteValue(1);
  EXPECT_EQ(section->CompiledValues.size(), 1u);
  EXPECT_EQ(section->ItembyName(u"FOO")->Hash(), ~0x8CDC1683u);  // the library leaves the final inversion out
}

TEST(CSSStyleSet, Operations) {
  TCSSStyleSet a, b;
  a.SetAsString(u"width:10px;color:red;margin:1px 2px"_hs);
  EXPECT_EQ(HtToUtf8(a.GetAsString()), "color:red;margin:1px 2px;width:10px;");
  a.SetValue(u"empty"_hs, {});
  a.SetValue(u"color"_hs, u" "_hs);  // blank: kept, not written
  EXPECT_EQ(a.Count(), 3);
  EXPECT_EQ(HtToUtf8(a.AsStyleAttr()), " style=\"margin:1px 2px;width:10px;\"");
  a.AddString(u"color:blue;");
  b.AddString(u"color:green");
  b.AddString(u"height:2in");
  TCSSStyleSet override, inherited, both;
  override.Assign(a);
  override.AddOverride(b);
  EXPECT_EQ(HtToUtf8(override.GetAsString()), "color:green;height:2in;margin:1px 2px;width:10px;");
  inherited.Assign(a);
  inherited.AddInherited(b);
  EXPECT_EQ(HtToUtf8(inherited.GetAsString()), "color:blue;height:2in;margin:1px 2px;width:10px;");
  inherited.IntersectWith(b);
  EXPECT_EQ(HtToUtf8(inherited.GetAsString()), "color:blue;margin:1px 2px;width:10px;");
  EXPECT_EQ(override.GetPixels(u"height"), 192);
  EXPECT_EQ(override.GetPixels(u"none"), 0);
  b.SetValue(u"height"_hs, u"50%"_hs);
  EXPECT_EQ(b.GetPixels(u"height"), 0);
  EXPECT_TRUE(b.CheckValue(u"color", u"green") && !b.HasProperty(u"colo") && both.AsStyleAttr().Empty());
}

}  // namespace
}  // namespace ht
