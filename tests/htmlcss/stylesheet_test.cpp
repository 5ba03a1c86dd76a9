#include "htmlcss/stylesheet.h"

#include <gtest/gtest.h>

#include "htmlcss/csssection.h"
#include "htmlcss/elementstyle.h"
#include "styledtree.h"

namespace ht {
namespace {

std::string ListOf(const TCSSWeightList& list) {
  std::string text;
  for (const TCSSWeightItem& item : list) {
    text += (text.empty() ? "" : " ") + HtToUtf8(item.FObject->NameToken.Name) + ":";
    for (const TCSSToken& token : item.FObject->Tokens) text += HtToUtf8(token.Name);
    if (item.FObject->Important) text += "!";
  }
  return text;
}

struct TSheet : TCSSStyleSheet {
  explicit TSheet(const hstring& text, int32_t weight = -1) { Parse(text, weight); }

  std::string For(TStyledHTMLNode& element) { return For(element, &Main, {}); }
  std::string For(TStyledHTMLNode& element, const TCSSStyleMaps* maps, TCSSPseudo pseudos) {
    TCSSWeightList list;
    GetElementSelectors(element, list, maps, pseudos);
    return ListOf(list);
  }
  std::string All() const {
    TCSSWeightList list;
    GetAllSelectors(list);
    return ListOf(list);
  }
  std::string Written() const { return HtToUtf8(AsString()); }
};

const char16_t kPage[] =
    u"<body id=body><div id=d class='a b'><p id=p class=c title=t></p><p id=q><a id=x "
    u"href='#'>a</a></p></div></body>";

// The declarations of a sheet that apply to an element, the weakest first.
const struct {
  const char16_t* Sheet;
  const char16_t* Id;
  const char* Declarations;
} kCascades[] = {
    // clang-format off
    {u"", u"x", ""}, {u"  ", u"x", ""}, {u"a{}", u"x", ""}, {u"{color:red}", u"x", ""},
    {u"a{color:red} a{color:blue}", u"x", "color:red color:blue"},
    {u"#x{color:red} a{color:blue !important}", u"x", "color:red color:blue!"},
    {u"a{color:blue !important} #x{color:red; width:1px !important}", u"x", "color:red color:blue! width:1px!"},
    {u"a{color:red;width:1px} #x{color:blue} [href]{color:lime} a[href]{color:navy} *{color:tan}", u"x",
     "color:tan color:red width:1px color:lime color:navy color:blue"},
    // Within a weight by place in the sheet, whatever the bucket.
    {u"*{width:1px} .a{width:2px} .b{width:3px} .a{width:4px}", u"d", "width:1px width:2px width:3px width:4px"},
    {u".b{width:1px}[id]{width:2px}.a{width:3px}", u"d", "width:1px width:2px width:3px"},
    {u".a.b{width:1px} .b.a{width:2px} .a.c{width:3px} .a.b.c{width:4px}", u"d", "width:1px width:2px"},
    // One rule by several ways: once in each weight.
    {u".a,.b{width:1px}", u"d", "width:1px"}, {u"div,.a,.b,#d{width:1px}", u"d", "width:1px width:1px width:1px"},
    {u".a{width:1px}.b{width:2px}.a,.b{width:3px;height:3px}", u"d", "width:1px width:2px width:3px height:3px"},
    {u".b,.c{width:3px}.a{width:4px}", u"d", "width:3px width:4px"},
    // What is compiled is what counts.
    {u"a{margin:1px 2px;-x-y:1;foo:2;--z:3;color:red}", u"x",
     "margin-top:1px margin-right:2px margin-bottom:1px margin-left:2px color:red"},
    {u"p a{width:1px} div>p>a{width:2px} div>a{width:3px} .c~p a{width:4px}", u"x", "width:1px width:2px width:4px"},
    {u":nth-child(1){width:1px} :nth-of-type(1){width:2px} :first-child{width:3px}", u"p", "width:1px width:2px"},
    {u":hover{width:1px} :focus{width:2px} :foo{width:3px}", u"x", "width:1px"},
    {u"div>:nth-child(1){width:1px} a>:nth-child(1){width:2px} div.b>p:nth-child(odd){width:3px} body>:nth-child(1){width:4px}",
     u"p", "width:1px width:3px"},
    {u":not(.a){width:1px} ::before{width:2px} p::before{width:3px} p{width:4px}", u"p", "width:4px"},
    // Attributes: also those that must not be there, or are written otherwise.
    {u"[TITLE=t]{width:1px}[title]{width:2px}[x!=1]{width:3px}[x]{width:4px}[class=c][title]{width:5px}", u"p",
     "width:1px width:2px width:3px width:5px"},
    {u"[title]{width:1px}", u"x", ""},
    // Rules with a tag, by what else they ask for.
    {u"p.c{width:1px} p#p{width:2px} P[Title]{width:3px} p[x!=1]{width:4px} p.c.b{width:5px} p#d{width:6px} "
     u"p[x]{width:7px} *.c{width:8px} *#p{width:9px} *[title]{width:10px} p{width:11px}", u"p",
     "width:11px width:8px width:10px width:1px width:3px width:4px width:9px width:2px"},
    {u".a>*{width:1px} .b>*:not(.c){width:2px} .b.a > *{width:3px} .c>*{width:4px} .a *{width:5px} div.a>*{width:6px}",
     u"p", "width:1px width:5px width:6px width:3px"},
    {u"@font-face{font-family:f;src:url(u)format('woff')} @page{size:a4} @keyframes k{a{width:1px}} a{width:2px}", u"x",
     "width:2px"},
    // clang-format on
};

TEST(StyleSheet, Cascade) {
  TTestNode root(kPage);
  ById(root, u"x").FStyle->CurrentPC = {pcHover};
  for (const auto& c : kCascades)
    EXPECT_EQ(TSheet(c.Sheet).For(ById(root, c.Id)), c.Declarations) << HtToUtf8(c.Sheet);
}

TEST(StyleSheet, CascadeAcrossSheets) {
  TTestNode root(kPage);
  TStyledHTMLNode& link = ById(root, u"x");
  TSheet user(u"a{width:1px}#x{width:2px}", 0), own(u"*{width:3px} *{height:3px !important}", kCSSSelfWeight),
      author(u"a{width:4px}#x{width:5px;height:5px !important}");
  TCSSWeightList list;
  for (TSheet* sheet : {&own, &author, &user}) sheet->GetElementSelectors(link, list, &sheet->Main, {});
  EXPECT_EQ(ListOf(list), "width:1px width:2px width:4px width:5px width:3px height:3px! height:5px!");
  author.GetElementSelectors(link, list, &author.Main, {});
  EXPECT_EQ(list.GetCount(), 7);  // nothing twice
}

TEST(StyleSheet, GeneratedContent) {
  TTestNode root(kPage);
  TSheet sheet(
      u"p::before{width:1px} .c:after:hover{width:2px} *{width:3px} li::marker{width:4px} p{width:5px}");
  TStyledHTMLNode& p = ById(root, u"p");
  EXPECT_EQ(sheet.For(p), "width:3px width:5px");
  EXPECT_EQ(sheet.For(p, sheet.Before.get(), {pcBefore}), "width:1px");
  EXPECT_EQ(sheet.For(p, sheet.After.get(), {pcAfter}), "");
  EXPECT_EQ(sheet.For(p, sheet.After.get(), {pcAfter, pcHover}), "width:2px");
  EXPECT_EQ(sheet.For(p, &sheet.Main, {pcBefore}), "");
  EXPECT_EQ(sheet.For(p, nullptr, {}), "");
  for (const auto& [id, expected] :
       {std::pair{u"p", TCSSPseudo{pcBefore, pcAfter}}, {u"q", {pcBefore}}, {u"d", {}}}) {
    TCSSPseudo pseudos;
    sheet.GetElementPseudoClasses(ById(root, id), pseudos);
    EXPECT_TRUE(pseudos == expected) << HtToUtf8(id);
  }
  // Only the right-most compound is asked.
  TSheet chains(u"x p.c::before{top:0} .x>*::after{top:0} p#q::marker{top:0}");
  for (const auto& [id, expected] :
       {std::pair{u"p", TCSSPseudo{pcBefore, pcAfter}}, {u"q", {pcAfter, pcMarker}}, {u"d", {pcAfter}}}) {
    TCSSPseudo pseudos;
    chains.GetElementPseudoClasses(ById(root, id), pseudos);
    EXPECT_TRUE(pseudos == expected) << HtToUtf8(id);
  }
}

TEST(StyleSheet, MergesRulesForAll) {
  TSheet sheet(u"*{color:red;width:1px} *{COLOR:blue;height:calc(1px + 2px)} *{Width:2px}");
  EXPECT_EQ(sheet.All(), "color:blue width:2px height:calc(1px+2px)");
  EXPECT_EQ(sheet.Main.Tags->FindList(u"*")->GetCount(), 1);
  EXPECT_EQ(HtToUtf8(sheet.AsInlineString()), "color:blue;width:2px;height:calc( 1px + 2px);");
  sheet.ParseValues(u"color:lime;top:3px", -1);
  EXPECT_EQ(sheet.All(), "color:lime width:2px height:calc(1px+2px) top:3px");
  sheet.ClearProp(u"WIDTH");
  sheet.AddInlineValue(u"left"_hs, u"4px 5px"_hs);
  sheet.AddInlineValue(u"nothing"_hs, u"4px"_hs);
  EXPECT_EQ(sheet.All(), "color:lime height:calc(1px+2px) top:3px");
  EXPECT_EQ(HtToUtf8(sheet.ValuebyName(u"LEFT")[0].Name), "4px");
  EXPECT_EQ(sheet.ValuebyName(u"left").Count(), 1);
  sheet.ParseValues(u"bottom:1px", 7);
  EXPECT_EQ(sheet.Main.Tags->FindList(u"*")->GetCount(), 2);
  sheet.ParseValues(u"color:tan", 0);
  EXPECT_EQ(sheet.All(), "color:tan height:calc(1px+2px) top:3px left:4px");
  sheet.ParseValues(u" ", -1);
  sheet.ParseValues(u"nothing here", -1);

  // Rules for some elements, for some media, in company, and of another weight stay apart.
  TSheet apart(
      u"*{top:1px} *.a{top:2px} *:hover{top:3px} @media print{*{top:4px}} *,a{top:5px} *>*{top:6px}");
  EXPECT_EQ(apart.All(), "top:1px");
  EXPECT_EQ(apart.fSections.GetCount(), 6);
}

TEST(StyleSheet, Media) {
  TTestNode root(kPage);
  TSheet sheet(
      u"a{width:1px} @media print{a{width:2px}} @media screen and (min-width:600px){a{width:3px}}"
      u"@media (max-device-width:500px){a{width:4px}}");
  EXPECT_TRUE(sheet.HasMediaQueries && sheet.HasMediaSizeQueries);
  const struct {
    TCSSMedia Media;
    int32_t Width, DeviceWidth;
    bool Changed;
    const char* Declarations;
  } cases[] = {
      {cmScreen, 800, 0, true, "width:1px width:3px"},
      {cmScreen, 800, 900, false, "width:1px width:3px"},
      {cmScreen, 599, 600, true, "width:1px"},
      {cmPrint, 400, 0, true, "width:1px width:2px width:4px"},
      {cmPrint, 900, 500, false, "width:1px width:2px width:4px"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(sheet.TestMediaSets(c.Media, c.Width, c.DeviceWidth), c.Changed);
    EXPECT_EQ(sheet.For(ById(root, u"x")), c.Declarations);
  }
  EXPECT_EQ(static_cast<TCSSMediaSet*>(sheet.MediaSets.Get(0))->MaxDeviceWidth, 500);  // the last first
  EXPECT_FALSE(TSheet(u"@media all{a{top:0}}").HasMediaQueries);
  EXPECT_TRUE(TSheet(u"@media tv{a{top:0}}").HasMediaQueries);
}

TEST(StyleSheet, Text) {
  TSheet sheet(
      u"a,b>c{color:red;top:0} @media/**/print{p{top:1px}q{top:2px}} @media/**/tv{u{top:3px}} .x:hover{--v:4}"
      u"@keyframes k{from{top:5px}}");
  EXPECT_EQ(sheet.Written(),
            "a, b>c\r\n{  color:red;\r\n  top:0;\r\n}\r\n@media print{\r\np\r\n{  top:1px;\r\n}\r\n"
            "q\r\n{  top:2px;\r\n}\r\n}\r\n@media tv{\r\nu\r\n{  top:3px;\r\n}\r\n}\r\n"
            ".x:Hover\r\n{  --v:4;\r\n}\r\n");
  sheet.ClearSection(u"a");
  sheet.ClearSection(u"p");
  sheet.ClearSection(u".x:Hover");
  EXPECT_EQ(sheet.Written(),
            "@media print{\r\nq\r\n{  top:2px;\r\n}\r\n}\r\n@media tv{\r\nu\r\n{  top:3px;\r\n}\r\n}\r\n");
  sheet.ClearSection(u"q");
  TTestNode root(u"<q id=q class=x></q><a id=a></a>");
  EXPECT_EQ(sheet.For(ById(root, u"q")) + sheet.For(ById(root, u"a")), "");
  sheet.Clear();
  EXPECT_EQ(sheet.Written(), "");
  EXPECT_EQ(sheet.KeyFrames->GetCount(), 0);

  THtStringList classes(31, false), ids(31, false);
  TSheet names(u".a.b #c>.d:not(.no) p{top:0}.a,#e.f,[x].g{top:0}.h::before{top:0}");
  names.GetAllClasses(classes);
  names.GetAllIds(ids);
  EXPECT_EQ(classes.GetCount(), 5);
  EXPECT_EQ(ids.GetCount(), 2);
  for (const char16_t* name : {u"a", u"b", u"d", u"f", u"g"}) EXPECT_TRUE(classes.HasKey(name));
  for (const char16_t* name : {u"c", u"e"}) EXPECT_TRUE(ids.HasKey(name));
}

TEST(StyleSheet, KeyFrames) {
  TSheet sheet(
      u"@keyframes k{from{top:0} 50%{top:1px} 12.5%,62.6%{top:2px;margin:1px} to{top:3px} x{top:4px} "
      u"101%{top:5px}"
      u" -1%{top:6px}} @keyframes one{40%{top:7px}} @keyframes none{}");
  std::vector<int32_t> steps{7};
  sheet.GetAnimationSteps(u"K", steps);
  EXPECT_EQ(steps, (std::vector<int32_t>{7}));
  sheet.GetAnimationSteps(u"k", steps);
  EXPECT_EQ(steps, (std::vector<int32_t>{0, 12, 50, 63, 100}));
  const struct {
    const char16_t* Name;
    double Percent;
    const char* Declarations;
  } cases[] = {
      {u"k", -1, "top:0"},
      {u"k", -0.5, "top:2px margin:1px"},
      {u"k", 0, "top:2px margin:1px"},
      {u"k", 12.4, "top:2px margin:1px"},
      {u"k", 12.6, "top:1px"},
      {u"k", 50, "top:1px"},
      {u"k", 60, "top:2px margin:1px"},
      {u"k", 64, "top:3px"},
      {u"k", 150, "top:3px"},
      {u"one", -9, "top:7px"},
      {u"one", 0, "top:7px"},
      {u"one", 99, "top:7px"},
      {u"none", 0, ""},
      {u"?", 0, ""},
  };
  for (const auto& c : cases) {
    TCSSWeightList list;
    sheet.GetAnimationSelectors(c.Name, c.Percent, list);
    EXPECT_EQ(ListOf(list), c.Declarations) << c.Percent;
    for (const TCSSWeightItem& item : list) EXPECT_TRUE(item.FID == 0xFF000000 && item.FTag == 0);
  }
}

TEST(StyleSheet, ImportsAndVariables) {
  TCSSStyleSheet sheet;
  sheet.URL = u"http://h/css/a.css"_hs;
  sheet.Parse(u"@import 'b.css'; @import url(/c.css) print; p{--A:1px;--b:2px 3px;top:0} q{--A:4px}");
  EXPECT_EQ(HtToUtf8(sheet.Imports().GetText()), "http://h/css/b.css\r\nhttp://h/c.css\r\n");
  EXPECT_EQ(HtToUtf8(sheet.GetSection(0)->URL), "http://h/css/a.css");
  EXPECT_EQ(sheet.FindVariable(u"a"), nullptr);
  EXPECT_EQ(sheet.FindVariable(u"b")->Tokens.Count(), 2);
  EXPECT_EQ(sheet.FindVariable(u"A")->Tokens[0].AsFloat(), 4);
  ASSERT_EQ(sheet.FindVariable(u"A")->Earlier.size(), 1u);
  EXPECT_EQ(sheet.FindVariable(u"A")->Earlier[0][0].AsFloat(), 1);
  EXPECT_FALSE(sheet.GetSection(0)->Custom);
  sheet.Parse(u"u{top:0}", -1, true);
  EXPECT_TRUE(sheet.GetSection(2)->Custom);
}

TEST(StyleSheet, Assign) {
  TTestNode root(kPage);
  TSheet given(
      u"*{top:1px} #x{top:2px} @media print{a{top:3px}} @font-face{font-family:F;src:url(u) format('woff')}"
      u"@keyframes k{from{top:0}} p{--v:1}");
  {
    TSheet sheet(u"a{top:4px} *{top:5px}");
    sheet.Assign(given);
    sheet.Parse(u"*{top:6px}");
    EXPECT_EQ(sheet.For(ById(root, u"x")), "top:5px top:1px top:6px top:4px top:3px top:2px");
    EXPECT_TRUE(sheet.TestMediaSets(cmScreen, 100, 0));
    EXPECT_EQ(sheet.For(ById(root, u"x")), "top:5px top:1px top:6px top:4px top:2px");
    EXPECT_TRUE(sheet.HasMediaQueries && sheet.FindVariable(u"v") && sheet.KeyFrames->GetKeyFrameList(u"k"));
    EXPECT_NE(sheet.CustomFonts->Get<TCSSCustomFontFamily>(u"f"),
              given.CustomFonts->Get<TCSSCustomFontFamily>(u"f"));
  }
  EXPECT_EQ(given.All(), "top:1px");
  // A low place is kept, a high one is given anew.
  TCSSStyleSheet low;
  low.SelectorCounter = 5;
  low.Parse(u"a{top:0}", 0);
  TSheet sheet(u"b{top:0}");
  sheet.Assign(low);
  sheet.Assign(given);
  EXPECT_EQ(low.GetSection(0)->Selectors.GetSelector(0)->Order, 6);
  EXPECT_EQ(given.GetSection(0)->Selectors.GetSelector(0)->Order, 10003);
}

TEST(StyleSheet, DefaultSheets) {
  TTestNode root(
      u"<table><tr><td id=td><p id=p></p></td></tr></table><ul><li id=li>a<ul><li><ul "
      u"id=ul></ul></li></ul></li></ul>"
      u"<h2 id=h2></h2><p id=note class=footnote></p><button id=button disabled></button>");
  TCSSStyleSheet& sheet = HTML4StyleSheet();
  TCSSStyleSheet& quirks = HTML4QuirkStyleSheet();
  EXPECT_EQ(&sheet, &HTML4StyleSheet());
  EXPECT_EQ(sheet.fSections.GetCount(), 83);  // "table-column" is no display, so two say nothing
  EXPECT_EQ(quirks.fSections.GetCount(), 4);
  const auto defaultsFor = [&](const char16_t* id) {
    TCSSWeightList list;
    sheet.GetElementSelectors(ById(root, id), list, &sheet.Main, {});
    quirks.GetElementSelectors(ById(root, id), list, &quirks.Main, {});
    for (const TCSSWeightItem& item : list) EXPECT_EQ(item.FID & 0xFFFFFF, 0u);
    return ListOf(list);
  };
  EXPECT_EQ(defaultsFor(u"li"), "display:list-item min-height:1em");
  EXPECT_EQ(defaultsFor(u"td"), "display:table-cell background-color:inherit vertical-align:inherit");
  EXPECT_EQ(defaultsFor(u"h2"),
            "display:block font-size:1.5em margin-top:.75em margin-right:0 margin-bottom:.75em margin-left:0 "
            "font-weight:bold");
  EXPECT_EQ(defaultsFor(u"ul"),
            "display:block margin-top:1em margin-bottom:1em padding-left:40px margin-top:0 margin-bottom:0 "
            "list-style-type:disc list-style-type:circle list-style-type:square");
  TCSSPseudo pseudos;
  sheet.GetElementPseudoClasses(ById(root, u"note"), pseudos);
  EXPECT_TRUE(pseudos == (TCSSPseudo{pcBefore, pcAfter}));
  TSheet author(u"*{top:0}");
  EXPECT_GT(author.GetSection(0)->Selectors.GetSelector(0)->Order, quirks.SelectorCounter);
}

TEST(StyleSheet, LightToDark) {
  // Computed with the HSL conversions of Python's colorsys.
  const struct {
    const char16_t* Light;
    const char* Dark;
  } cases[] = {
      {u"color:black", "color: #f2f2f2;"},
      {u"color:#f00", "color: #e05252;"},
      {u"border-left-color:rgb(255,0,0)", "border-left-color: #e05252;"},
      {u"border-color:#c0ffee", "border-color: #52e0ba;"},
      {u"color:inherit", "color:inherit;"},
      {u"color:transparent", "color:transparent;"},
      {u"color:var(--x)", "color:var( --x);"},
      {u"background-color:white", "background-color:transparent;"},
      {u"background-color:#369", "background-color: #6699cc;"},
      {u"background-color:black", "background-color: #ffffff;"},
      {u"background:#c0ffee", "background: #004c38;"},
      {u"background:navy", "background: #7f7fff;"},
      {u"background:none", "background:none;"},
      {u"background:url(x.png)", "background:url('x.png');"},
      {u"background:url(x.png) no-repeat White", "background:url('x.png') no-repeat transparent;"},
      {u"background:linear-gradient(#369, blue)", "background:linear-gradient( #6699cc, #0000ff);"},
      {u"text-shadow:1px 1px #369", "text-shadow:1px 1px #369;"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(HtToUtf8(TCSSStyleSheet::LighttoDark(u"p{" + hstring(c.Light) + u"}")),
              std::string("p\r\n{  ") + c.Dark + "\r\n}\r\n");
}

}  // namespace
}  // namespace ht
