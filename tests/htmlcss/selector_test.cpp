#include <gtest/gtest.h>

#include "htmlcss/cssselector.h"
#include "htmlcss/jqueryprocessor.h"
#include "htmlcss/stylesheet.h"
#include "styledtree.h"

namespace ht {
namespace {

const TCSSSelector& First(const TJQueryProcessor& query) { return *query.Section->Selectors.GetSelector(0); }

const char16_t kPage[] =
    u"<body id=body>text<ul id=u class='List a'><li id=l1 class=x>1</li><li id=l2 class='x y'>2</li>"
    u"<li id=l3 lang=en-US>3</li></ul>text<h1 id=h title='a b c'>H</h1><p id=p1 lang=english>1</p>"
    u"<p id=p2 class=x data-k=abc>2<b id=b1>b</b></p><div id=d1><div id=d2 class=y><p id=p3 x=2 lang=en>3</p>"
    u"</div></div></body>";

struct TQuery {
  const char16_t* Selector;
  const char* Ids;
};

const TQuery kQueries[] = {
    // clang-format off
    {u"", ""}, {u"li", "l1 l2 l3"}, {u"LI", "l1 l2 l3"}, {u"#l2", "l2"}, {u"#L2", ""}, {u"li#p1", ""},
    {u".x", "l1 l2 p2"}, {u".X", "l1 l2 p2"}, {u".x.y", "l2"}, {u".y.x", "l2"}, {u"li.x", "l1 l2"}, {u"p.x.y", ""},
    {u".list", "u"}, {u"*.y", "l2 d2"}, {u"p, b,.y", "l2 p1 p2 b1 d2 p3"},
    // Attributes.
    {u"[lang]", "l3 p1 p3"}, {u"[LANG=en]", "p3"}, {u"[lang=\"en\"]", "p3"}, {u"[lang|=en]", "l3 p3"},
    {u"[title~=b]", "h"}, {u"[title~='a b']", "h"}, {u"[title~=d]", ""}, {u"[title^=a]", "h"}, {u"[title$=c]", "h"},
    {u"[title*=' b ']", "h"}, {u"[title^='']", ""}, {u"[title*='']", ""}, {u"[lang][id=l3]", "l3"},
    {u"b[x!=1]", "b1"}, {u"p[x!=2]", "p1 p2"}, {u"[data-k=abc].x", "p2"}, {u"[nothing]", ""},
    // Only what is the first of several conditions is looked at when its attribute is missing.
    {u"p[x!=1][lang=en]", "p1 p2 p3"}, {u"p[lang=en][x!=1]", "p3"},
    // The place among siblings; texts do not count.
    {u"li:nth-child(1)", "l1"}, {u"li:nth-child(odd)", "l1 l3"}, {u"li:nth-child(EVEN)", "l2"},
    {u"li:nth-child(2n+1)", ""}, {u"li:nth-child(-1)", ""}, {u"li:nth-child(0)", ""}, {u"li:nth-child", ""},
    {u"li:nth-child(99999999999999)", ""}, {u"p:nth-child(3)", "p1"}, {u"p:nth-of-type(2)", "p2"},
    {u"p:nth-of-type(odd)", "p1 p3"}, {u"[lang]:nth-child(3)", "l3 p1"}, {u".x:nth-child(2)", "l2"},
    {u".x:first-child", "l1 l2 p2"}, {u".x:last-child", "l1 l2 p2"}, {u"li:first-child", ""},
    {u"li:hover", ""}, {u".x:hover", ""}, {u"li:foo", ""}, {u"*:hover", ""}, {u"li::before", "l1 l2 l3"},
    // Negations: any part but a tag, and none of their own.
    {u"li:not(.x)", "l3"}, {u"li:not(#l1)", "l2 l3"}, {u"li:not([lang])", "l1 l2"}, {u"li:not([lang=fr])", "l1 l2 l3"},
    {u"li:not(.x):not(#l3)", ""}, {u".x:not(.y)", "l1 p2"}, {u"ul :not(.x)", "l3"}, {u"li:not(:hover)", "l1 l2 l3"},
    // Combinators.
    {u"ul li", "l1 l2 l3"}, {u"ul>li", "l1 l2 l3"}, {u"body > p", "p1 p2"}, {u"body p", "p1 p2 p3"},
    {u"div div p", "p3"}, {u"div > p", "p3"}, {u"h1 + p", "p1"}, {u"p + p", "p2"}, {u"h1 ~ p", "p1 p2"},
    {u"li.x + li:not(.x)", "l3"}, {u"* > b", "b1"}, {u"#u > .x ~ li", "l2 l3"}, {u"#d1 .y > p", "p3"},
    {u"ul p", ""}, {u"#d2 > div p", ""}, {u"html p", ""}, {u"> p", "p1 p2 p3"}, {u"p >", "b1"}, {u"..x", "l1 l2 p2"},
    {u"p::", "p1 p2 p3"}, {u"{", ""}, {u"}p", "p1 p2 p3"}, {u"p}q", ""},
    // clang-format on
};

TEST(Selector, Matches) {
  TTestNode root(kPage);
  for (const TQuery& c : kQueries) EXPECT_EQ(IdsOf(root.JQuery(c.Selector)), c.Ids) << HtToUtf8(c.Selector);
}

TEST(Selector, QueryForms) {
  TTestNode root(u"<div id=a><p id=b></p><div id=c><p id=d></p></div></div><p id=e></p><p id=f></p>");
  const auto firstOf = [&root](const hstring& selector) { return IdsOf(root.JQuery(selector, true)); };
  EXPECT_EQ(firstOf(u"p"), "b d e");  // the first child behind which there is something is looked at, too
  EXPECT_EQ(firstOf(u"#d"), "d");
  EXPECT_EQ(firstOf(u"#f"), "f");
  EXPECT_EQ(firstOf(u"div,p"), "a");
  EXPECT_EQ(IdsOf(ById(root, u"a").JQuery(u"div")), "c");
  EXPECT_EQ(ById(root, u"c").GetJQueryList(u"#c", false)->GetCount(), 0);

  std::vector<THtNode*> nodes;
  const auto collect = [&nodes](size_t most) {
    nodes.clear();
    return THtNodeProcRef([&nodes, most](THtNode* node, bool& goOn) {
      nodes.push_back(node);
      goOn = nodes.size() < most;
    });
  };
  root.JQuery(u"p", collect(9));
  EXPECT_EQ(IdsOf(nodes), "b d e f");
  root.JQuery(u"p", collect(2));
  EXPECT_EQ(IdsOf(nodes), "b d");
  root.JQuery(u"", collect(9));
  EXPECT_TRUE(nodes.empty());

  ById(root, u"d").FStyle.reset();
  EXPECT_EQ(IdsOf(root.JQuery(u"p")), "b e f");  // without a style only the walk with a callback asks
  root.JQuery(u"#c p", collect(9));
  EXPECT_EQ(IdsOf(nodes), "d");
}

struct TChoice {
  const char16_t* Selector;
  TCSSSelectorTestProc Test;
  int32_t Weight;
  const char* Text;
};

const TChoice kChoices[] = {
    // clang-format off
    {u"*", &TCSSSelector::TestUniversal, 0, "*"}, {u"P", &TCSSSelector::TestTag, 1, "p"},
    {u"#a", &TCSSSelector::TestID, 256, "#a"}, {u".A", &TCSSSelector::TestClass, 16, ".a"},
    {u".a.b", &TCSSSelector::TestClass, 32, ".a.b"}, {u"p.a", &TCSSSelector::TestTagClass, 17, "p.a"},
    {u"[a][b]", &TCSSSelector::TestCondition, 16, "[a][b]"},
    {u"[a='b c']:hover", &TCSSSelector::TestPCCondition, 32, "[a=b c]:Hover"},
    {u".a:hover", &TCSSSelector::TestPCClass, 32, ".a:Hover"}, {u"*:hover", &TCSSSelector::TestAll, 16, "*:Hover"},
    {u"a:hover:hover", &TCSSSelector::TestAll, 17, "a:Hover"}, {u"a::before", &TCSSSelector::TestTag, 17, "a:Before"},
    {u".a::after", &TCSSSelector::TestClass, 32, ".a:After"}, {u"a#b", &TCSSSelector::TestAll, 257, "a#b"},
    {u":not(.a)", &TCSSSelector::TestAll, 0, ":not(.a)"}, {u"a:foo", &TCSSSelector::TestAll, 17, "a:Unknown"},
    {u"p:not(.a:not(#b)):not([c])", &TCSSSelector::TestTag, 1, "p:not(.a:not(#b)):not([c])"},
    {u"#a .b c", &TCSSSelector::TestTag, 273, "#a .b c"}, {u"a>b+ c ~d", &TCSSSelector::TestTag, 4, "a>b+c~d"},
    {u"li:focus:nth-child(2):active", &TCSSSelector::TestAll, 49, "li:Active:Focus:NthChild"},
    // clang-format on
};

TEST(Selector, ChoosesTestAndWeight) {
  for (const TChoice& c : kChoices) {
    const TJQueryProcessor query(c.Selector);
    const TCSSSelector& selector = First(query);
    EXPECT_TRUE(selector.Test == c.Test) << c.Text;
    EXPECT_EQ(selector.CalcWeight(), c.Weight) << c.Text;
    EXPECT_EQ(HtToUtf8(selector.AsString()), c.Text);
  }
  const TJQueryProcessor query(u"* > p.x::before:hover"_hs);
  EXPECT_TRUE(First(query).Parent->Universal);
  EXPECT_EQ(First(query).Pseudo, pcBefore);
  EXPECT_EQ(First(query).PseudoCount, 2);
}

TEST(Selector, AsksForPseudoClassesAtHand) {
  TTestNode root(kPage);
  TStyledHTMLNode& item = ById(root, u"l2");
  const struct {
    const char16_t* Selector;
    TCSSPseudo Now, Asked;
    bool Meets;
  } cases[] = {
      {u"li:hover", {pcHover, pcFocus}, {}, true},
      {u"li:hover:focus", {pcHover}, {}, false},
      {u".x:hover", {pcHover}, {}, true},
      {u".x:hover:first-child", {pcHover}, {}, true},
      {u"li:hover", {}, {pcHover}, true},
      {u"li", {}, {pcBefore}, false},
      {u"li::before", {}, {pcBefore}, true},
      {u"li:hover::before", {}, {pcBefore}, false},
      {u"li:hover::before", {pcHover}, {pcBefore}, true},
      {u"li:hover:nth-child(2)", {}, {}, false},
      {u"li:hover:nth-child(even)", {}, {}, true},
      {u"li:not(:hover)", {pcHover}, {}, false},
      {u"ul:hover li", {pcHover}, {}, false},
      {u"ul:hover li:hover", {}, {pcHover}, true},
      {u"[id=l2]:hover", {pcHover}, {}, true},
      {u"[id=l2]:hover", {pcFocus}, {}, false},
  };
  for (const auto& c : cases) {
    const TJQueryProcessor query(c.Selector);
    item.FStyle->CurrentPC = c.Now;
    EXPECT_EQ(TCSSStyleSheet::TestElement(item, First(query), c.Asked), c.Meets) << HtToUtf8(c.Selector);
  }
}

// Chains and negations of any length are built, weighed, written, matched and freed without a stack.
TEST(Selector, AnyLength) {
  constexpr int kLength = 100000;
  TTestNode root(u"<b><b><b></b></b></b>");
  for (const char16_t* combinator : {u" ", u">", u"+", u"~"}) {
    std::u16string text = u"b";
    for (int i = 1; i < kLength; ++i) text.append(combinator).append(u"b");
    const TJQueryProcessor query(text);
    EXPECT_EQ(First(query).CalcWeight(), kLength);
    EXPECT_TRUE(First(query).AsString() == text);
    EXPECT_EQ(root.JQuery(text)->GetCount(), 0) << HtToUtf8(combinator);
  }
  auto selector = std::make_unique<TCSSSelector>();
  for (int i = 0; i < kLength; ++i) {
    auto outer = std::make_unique<TCSSSelector>();
    outer->AddClass(u"verylongclassname");
    outer->Nots.push_back(std::move(selector));
    selector = std::move(outer);
  }
  EXPECT_EQ(selector->AsString().Length(), kLength * 24);
  for (int i = 0; i < kLength; ++i) selector = std::make_unique<TCSSSelector>(std::move(selector));
  selector->ID = u"x"_hs;
  selector->Parent->ID = u"y"_hs;
  for (int i = 0; i < kLength; ++i) {
    selector = std::make_unique<TCSSSelector>(std::move(selector));
    selector->ID = u"z"_hs;
  }
  EXPECT_EQ(selector->CalcWeight(), 0xFFFFFF);  // no weight reaches into the byte of importance
}

}  // namespace
}  // namespace ht
