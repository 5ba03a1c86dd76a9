#include "htmlcss/styleindexer.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "htutils/faststring.h"

namespace ht {
namespace {

TCSSStyleSet SetOf(std::initializer_list<std::pair<const char16_t*, const char16_t*>> values) {
  TCSSStyleSet set;
  for (const auto& [name, value] : values) set.SetValue(name, value);
  return set;
}

TEST(StyleIndexer, OneClassAStyle) {
  TStyleIndexer indexer;
  EXPECT_EQ(HtToUtf8(indexer.GenerateCSS()), "");
  const struct {
    TCSSStyleSet Set;
    bool Svg;
    const char *Class, *Left;
  } cases[] = {
      {SetOf({{u"top", u"1px"}}), false, "", "top:1px;"},
      {SetOf({{u"color", u"red"}, {u"font-family", u"Arial"}}), false, "f0", ""},
      {SetOf({{u"color", u"red"}, {u"font-family", u"Arial"}, {u"top", u"1px"}}), false, "f0", "top:1px;"},
      {SetOf({{u"color", u"red"}}), false, "f1", ""},
      {SetOf({{u"fill", u"red"}, {u"color", u"tan"}}), true, "f1", "color:tan;"},  // the key is the same text
      {SetOf({{u"font-size", u"9pt"}, {u"background-color", u"tan"}, {u"line-height", u"2"}}), false, "f2",
       ""},
      {SetOf({{u"font-family", u"A"},
              {u"font-size", u"1"},
              {u"fill", u"b"},
              {u"font-weight", u"c"},
              {u"font-style", u"d"}}),
       true, "f3", ""},
  };
  for (const auto& c : cases) {
    TCSSStyleSet set = c.Set;
    hstring className = u"old"_hs;
    if (c.Svg)
      indexer.GetSVGClass(set, className);
    else
      indexer.GetClass(set, className);
    EXPECT_EQ(HtToUtf8(className), c.Class);
    EXPECT_EQ(HtToUtf8(set.GetAsString()), c.Left);
  }
  hstring name;
  indexer.GetClass(u"a:b"_hs, u"mine"_hs, name);
  EXPECT_TRUE(name == u"mine");
  indexer.GetClass(u"c:d"_hs, {}, name);
  EXPECT_TRUE(name == u"f5");  // the named one took a number, too
  indexer.GetClass(u"a:b"_hs, u"yours"_hs, name);
  EXPECT_TRUE(name == u"mine");
  EXPECT_TRUE(indexer.FindStyleClass(u"yours") == u"mine" && indexer.FindStyleClass(u"f1") == u"f1" &&
              indexer.FindStyleClass({}) == u"");

  std::vector<std::string> lines;
  std::string css = HtToUtf8(indexer.GenerateCSS());
  for (size_t end; (end = css.find("\r\n")) != css.npos; css.erase(0, end + 2))
    lines.push_back(css.substr(0, end));
  std::sort(lines.begin(), lines.end());
  EXPECT_EQ(lines,
            (std::vector<std::string>{".f0{font-family: Arial;color:red;}", ".f1{color:red;}",
                                      ".f2{font-size:9pt;background-color:tan;line-height:2;}",
                                      ".f3{font-family: A;font-size:1;fill:b;font-weight:c;font-style:d;}",
                                      ".f5{c:d}", ".mine{a:b}"}));
}

}  // namespace
}  // namespace ht
