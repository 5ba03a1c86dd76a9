#include "htmlpars/xpath.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "treenotation.h"

namespace ht {
namespace {

const char16_t kPage[] =
    u"<div id=d1 k=1><p id=p1>one<b id=b1>bold<i id=i1>x</i></b></p>-<p id=p2 title='a/b'>two</p>"
    u"<q id=q1><n id=n1>5</n><m>abc</m></q></div>"
    u"<div id=d2><p id=p3><b id=b2><b id=b3>z</b></b></p></div><x id=x1 y=3><n>4</n><n>7</n></x>";

// The ids (or texts) of nodes, each followed by a blank.
void AppendName(std::string& out, const THtNode* node) {
  const hstring id = node->GetAttribute(u"id");
  const hstring name = node->GetTag().Empty() ? u"'" + node->GetContent() + u"'" : node->GetTag();
  out += (out.empty() ? "" : " ") + HtToUtf8(id.Empty() ? name : id);
}

std::string ListOf(THtNode& start, const hstring& path, bool firstOnly = false) {
  std::string names;
  const TIntf<IHtNodeList> list = start.XPath(path, firstOnly);
  for (int32_t i = 0; i < list->GetCount(); ++i) AppendName(names, list->GetNode(i));
  return names;
}

std::string CallbackOf(THtNode& start, const hstring& path, int most = 1000) {
  std::string names;
  start.XPath(path, [&](THtNode* node, bool& goOn) {
    AppendName(names, node);
    goOn = --most > 0;
  });
  return names;
}

std::string Sorted(std::string names) {
  std::sort(names.begin(), names.end());
  return names;
}

struct TCase {
  std::u16string_view Path;
  std::string_view List, Value;
};

const TCase kPaths[] = {
    // clang-format off
    {u"", "", ""}, {u"/", "", ""}, {u"div", "d1 d2", "oneboldx-two5abc"}, {u"div/p", "p1 p2 p3", "oneboldx"},
    {u"/div/p/b", "b1 b2", "boldx"}, {u"./div", "d1 d2", "oneboldx-two5abc"}, {u"/./x", "x1", "47"},
    {u"DIV", "", ""}, {u"div/*", "p1 '-' p2 q1 p3", "oneboldx"}, {u"div/text()", "'-'", "-"},
    {u"*/*/n", "n1", "5"}, {u"x/n/text()", "'4' '7'", "4"}, {u"//b", "b1 b2 b3", "boldx"},
    {u"div//b", "b1 b2 b3", "boldx"}, {u"//p//b", "b1 b2 b3", "boldx"}, {u"//b//b", "b3", "z"},
    {u"div/p/b//text()", "'bold' 'x' 'z'", "bold"},
    {u"div//", "'one' 'bold' 'x' '-' 'two' '5' 'abc' 'z'", "one"}, {u"div///b", "", ""},
    {u"//n/..", "q1 x1 x1", "5abc"}, {u"x/n/../@y", "x1 x1", "3"}, {u"..", "", ""}, {u"../x", "", ""},
    {u"div/@k", "d1", "1"}, {u"//@title", "", ""}, {u"//p/@title", "p2", "a/b"}, {u"div/@k/b", "d1", "1"},
    // Positions count from 0 among the siblings that have a tag.
    {u"div[0]", "d1", "oneboldx-two5abc"}, {u"x[0]", "", ""}, {u"x[2]", "x1", "47"},
    {u"div/p[1]", "p2", "two"}, {u"div/text()[1]", "'-'", "-"}, {u"x[last()]", "x1", "47"},
    {u"x[LAST()]/n[last()]", "n", "7"}, {u"div[last()]", "", ""}, {u"//b[0]", "b1 b2 b3", "boldx"},
    // Existence
    {u"div[@k]", "d1", "oneboldx-two5abc"}, {u"div[@k='']", "d1", "oneboldx-two5abc"},
    {u"div[@K]", "d1", "oneboldx-two5abc"}, {u"div[q]", "d1", "oneboldx-two5abc"}, {u"div[p/b/b]", "d2", "z"},
    {u"div[.//i]", "d1", "oneboldx-two5abc"}, {u"//*[text()]/n", "n1 n n", "5"},
    {u"div['x']", "d1 d2", "oneboldx-two5abc"}, {u"div['']", "", ""}, {u"div[]", "d1 d2", "oneboldx-two5abc"},
    {u"div[ ]", "", ""},
    // Comparisons
    {u"//p[@id='p2']", "p2", "two"}, {u"//p[@id=\"p2\"]", "p2", "two"}, {u"//p[ 'p2' = @id ]", "p2", "two"},
    {u"//p[text()='two']", "p2", "two"}, {u"//p[@title='a/b']/..", "d1", "oneboldx-two5abc"},
    {u"div[p/b/@id!='b1']", "d2", "z"}, {u"//n[../@y=3]", "n n", "4"}, {u"x[n>3]", "x1", "47"},
    {u"x[n>=4 and n<=4]", "x1", "47"}, {u"x[n<4 or n>4]", "", ""}, {u"x[@y<n]", "x1", "47"},
    {u"div/q[m>3]", "", ""}, {u"div/q[m<=3]", "", ""}, {u"div/q[n!3]", "q1", "5abc"},
    // Joined from left to right
    {u"x[@y=3 or @y=4 and @y=5]", "", ""}, {u"x[@y=5 and @y=4 or @y=3]", "x1", "47"},
    {u"x[@y=3 and not m]", "x1", "47"}, {u"x[not m]", "x1", "47"}, {u"x[not @y=3]", "", ""},
    {u"x[@y=3 or not n]", "x1", "47"},  // "not" is a child's name here
    {u"x[@y=3 or not m]", "", ""}, {u"x[@y=3 And n]", "", ""}, {u"x[and n]", "x1", "47"},
    {u"x[@y='3' aND n]", "x1", "47"},
    // "current" is the node that the walk began at.
    {u"div/current/x", "x1 x1", "47"}, {u"//q[n=current/x/n]", "", ""},
    {u"//n[text()=CURRENT/div/q/n]", "n1", "5"},
    // An open bracket: the rest but its last character is the condition. What makes no sense finds nothing.
    {u"div[", "d1 d2", "oneboldx-two5abc"}, {u"x[@y=3", "x1", "47"}, {u"x[@y=3][@y=9]", "", ""},
    {u"x['a/n", "x1", "47"}, {u"x[=]", "", ""}, {u"x[!]", "", ""}, {u"x[<>]", "", ""}, {u"x[(]", "", ""},
    {u"]x", "", ""},
    // clang-format on
};

TEST(XPath, ListsValuesAndCallbacks) {
  THtmlNode page;
  page.Parse(kPage);
  for (const TCase& row : kPaths) {
    const std::string list = ListOf(page, row.Path);
    EXPECT_EQ(list, row.List) << HtToUtf8(row.Path);
    EXPECT_EQ(HtToUtf8(page.XPathValue(row.Path)), row.Value) << HtToUtf8(row.Path);
    const std::string first = ListOf(page, row.Path, true);
    EXPECT_TRUE(list.starts_with(first) && first.empty() == list.empty()) << HtToUtf8(row.Path) << first;
    // The callback knows neither attributes nor "current" as a step.
    if (row.Path.find(u"/@") != row.Path.npos || row.Path.find(u"/current") != row.Path.npos) continue;
    EXPECT_EQ(Sorted(CallbackOf(page, row.Path)), Sorted(list)) << HtToUtf8(row.Path);
  }
}

TEST(XPath, WhereAndHowWalksGo) {
  THtmlNode page;
  page.Parse(kPage);
  THtNode& q = *page.FindNode(u"q");
  THtNode& div = *q.GetParent();
  // Only the list walk starts at the node in spite of a "/".
  EXPECT_EQ(ListOf(q, u"/n"), "n1");
  EXPECT_EQ(ListOf(q, u"/x"), "");
  EXPECT_EQ(CallbackOf(q, u"/x"), "x1");
  EXPECT_EQ(q.XPathValue(u"/x/@y"), u"3");
  EXPECT_EQ(ListOf(q, u"../p"), "p1 p2");
  EXPECT_EQ(ListOf(q, u"../../x/n[1]"), "n");
  // The list has a match before what is inside it, the callback behind.
  EXPECT_EQ(ListOf(page, u"//b"), "b1 b2 b3");
  EXPECT_EQ(CallbackOf(page, u"//b"), "b1 b3 b2");
  EXPECT_EQ(CallbackOf(page, u"//b", 2), "b1 b3");
  EXPECT_EQ(CallbackOf(page, u"//n/..", 1), "q1");
  EXPECT_EQ(CallbackOf(page, u"div/@k") + CallbackOf(page, u"div/current"), "");
  // A value walk for any descendant ends with the innermost of the first match.
  page.FindNodebyAttr(u"", u"id", u"b2")->AddChild(THtmlNode::Class())->SetContent(u"y");
  EXPECT_EQ(div.NextSibling()->XPathValue(u"p/b"), u"zy");
  EXPECT_EQ(div.NextSibling()->XPathValue(u"p//b"), u"z");
  // A given node for "current".
  EXPECT_EQ(page.XPath(u"x[@y=current/@k]", false, &div)->GetCount(), 0);
  div.SetAttr(u"k", u"3");
  EXPECT_EQ(page.XPath(u"x[@y=current/@k]", false, &div)->GetCount(), 1);
  EXPECT_EQ(page.XPathValue(u"div/p/current/@id", &q), u"q1");
  // A node without a parent has no position.
  TXPathProcessor path(u"body[0]"), last(u"body[last()]"), any(u"body[div]");
  EXPECT_FALSE(page.EvaluateCondition(*path.FirstStep()) || page.EvaluateCondition(*last.FirstStep()));
  EXPECT_TRUE(page.EvaluateCondition(*any.FirstStep()));
}

// Conditions in conditions end as deep walks do, and not with the stack.
TEST(XPath, NestedConditions) {
  THtmlNode page;
  page.Parse(u"<a></a>");
  for (int levels : {10, 1000, 4000}) {
    std::u16string path;
    for (int i = 0; i < levels; ++i) path += u"a[../";
    path += u"a";
    path.append(static_cast<size_t>(levels), u']');
    try {
      EXPECT_EQ(page.XPath(path)->GetCount(), 1) << levels;
      EXPECT_LT(levels, 4000);
    } catch (const EHtException&) {
      EXPECT_GT(levels, 1000);
    }
  }
}

}  // namespace
}  // namespace ht
