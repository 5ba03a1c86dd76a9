#include "htmlpars/node.h"

#include <gtest/gtest.h>
#include <vector>

#include "treenotation.h"

namespace ht {
namespace {

const char16_t kPage[] =
    u"<div id=a class=x>t<p>one</p><p id=b>two<br></p><!--c--></div><p "
    u"class=x>three</p><ul><li>1<li>2</ul>tail";

std::string TagOrText(const THtNode* node) {
  return node ? HtToUtf8(node->GetTag().Empty() ? u"'" + node->GetContent() + u"'" : node->GetTag()) : "-";
}

// Every walk and index agrees with what the order of the nodes says.
TEST(Node, WalksAgree) {
  THtmlNode root;
  root.Parse(kPage);
  std::vector<THtNode*> order;
  const std::function<void(THtNode*)> collect = [&](THtNode* node) {
    order.push_back(node);
    for (int32_t i = 0; i < node->GetCount(); ++i) collect(node->GetNode(i));
  };
  collect(&root);
  ASSERT_EQ(order.size(), 17u);
  EXPECT_EQ(root.Last(), order.back());
  int32_t tags = 0;
  for (size_t i = 0; i < order.size(); ++i) {
    THtNode* node = order[i];
    EXPECT_EQ(node->NextNode(), i + 1 < order.size() ? order[i + 1] : nullptr);
    EXPECT_EQ(node->PreviousNode(), i > 0 ? order[i - 1] : nullptr);
    EXPECT_EQ(node->Root(), &root);
    EXPECT_EQ(static_cast<THtmlNode*>(node)->AbsoluteTagIndex(), tags);
    tags += !node->GetTag().Empty();
    int32_t children = 0, same = 0;
    for (int32_t k = 0; k < node->NodeIndex(); ++k) {
      const THtNode* earlier = node->GetParent()->GetNode(k);
      children += !earlier->GetTag().Empty();
      same += earlier->GetTag() == node->GetTag();
    }
    EXPECT_EQ(node->ChildIndex(), children);
    EXPECT_EQ(node->TagIndex(), same);
    if (node == &root) continue;
    EXPECT_EQ(node->GetParent()->GetNode(node->NodeIndex()), node);
    EXPECT_EQ(node->PreviousSibling(),
              node->NodeIndex() ? node->GetParent()->GetNode(node->NodeIndex() - 1) : nullptr);
    EXPECT_EQ(node->GetParent()->NodebyNameIndex(node->GetTag(), same), node);
    EXPECT_GT(node->GetParent()->Countof(node->GetTag()), same);
  }
  EXPECT_EQ(root.NodeIndex(), -1);
}

TEST(Node, Search) {
  THtmlNode root;
  root.Parse(kPage);
  const THtNode* div = root.GetNode(0);
  const THtNode* br = root.FindNode(u"br");
  EXPECT_EQ(HtToUtf8(br->Path()), "body/div/p/br");
  EXPECT_TRUE(br->HasAsParent(&root) && br->HasAsParent(div) && !br->HasAsParent(br));
  EXPECT_TRUE(br->HasParentTag(u"div") && !br->HasParentTag(u"br") && !br->HasParentTag(u"ul"));
  const hstring kTags[] = {u"body"_hs, u"div"_hs};
  const std::pair<const THtNode*, std::string> kFound[] = {
      // clang-format off
      {br->UpTo(u"body"), "body"}, {br->UpTo(kTags), "div"}, {div->FirstChildTag(), "p"},
      {div->LastChildTag(), "!"}, {div->LastChild(), "!"}, {root.LastChildTag(), "ul"},
      {root.NodebyName(u"div/p/br"), "-"},  // the first "p" has none
      {root.NodebyName(u"ul/li"), "li"}, {root.NodebyName(u"ul/li/"), "'1'"},
      {root.NodebyName(u""), "'tail'"}, {root.NodebyName(u"li"), "-"}, {root.NodebyNameIndex(u"p", 1), "-"},
      {root.NodebyNameIndex(u"p", -1), "-"}, {root.FindNode(u"BR"), "-"},
      {root.NodebyAttr(u"class", u"x"), "div"}, {root.NodebyAttr(u"id", u"b"), "-"},
      {root.NodebyAttr(u"none", u""), "div"}, {root.NodebyNameAttr(u"p", u"CLASS", u"x"), "p"},
      {root.FindNodebyAttr(u"", u"id", u"b"), "p"}, {root.FindNodebyAttr(u"ul", u"id", u"b"), "-"},
      {br->FindNodebyAttr(u"", u"x", u""), "-"},
      // clang-format on
  };
  for (size_t i = 0; i < std::size(kFound); ++i) EXPECT_EQ(TagOrText(kFound[i].first), kFound[i].second) << i;
  THtmlNode comments;
  comments.Parse(u"x<!--c--><?d?><b>");
  EXPECT_EQ(TagOrText(comments.FirstChildTag()), "?");
  EXPECT_THROW(comments.GetNode(4), EListError);
  EXPECT_THROW(THtmlNode().GetNode(0), EListError);
}

TEST(Node, Attributes) {
  THtmlNode node(u"p");
  EXPECT_EQ(node.TagType, htIdent);
  EXPECT_FALSE(node.SetAttribute(u"a", u""));
  EXPECT_EQ(node.GetAttributes(), nullptr);
  EXPECT_TRUE(node.SetAttribute(u"B", u"1") && node.SetAttribute(u"a", u""));
  EXPECT_TRUE(!node.SetAttribute(u"b", u"1") && node.SetAttribute(u"b", u"2"));
  EXPECT_TRUE(node.HasAttribute(u"A") && !node.HasAttribute(u"c") && !node.HasAttribute(u""));
  EXPECT_TRUE(node.HasAttributeValue(u"c", u"") && node.HasAttributeValue(u"b", u"2") &&
              !node.HasAttributeValue(u"b", u""));
  THtmlNode other;
  other.ParseAttributes(u"b='3' c d=\"x>y\"");
  other.CopyAttributesFrom(&node);
  EXPECT_EQ(Notation(other), "[a=][b=2][c=c][d=x>y]");
  node.SetStyleClass(u"k");
  node.SetStyleClass(u"");
  node.SetStyleClass(u"");
  node.SetId(u"i");
  node.SetSelfStyle(u"s");
  EXPECT_EQ(Notation(node), "p[a=][b=2][id=i][style=s]");

  THtAttributes list;
  list.CaseSensitive = true;
  for (std::u16string_view name : {u"b", u"B", u"a", u"\u00E9", u"b"}) list.Add(name, name);
  EXPECT_EQ(HtToUtf8(list.AsString()), "B=\"B\" a=\"a\" b=\"b\" b=\"b\" é=\"é\"");
  int32_t index;
  EXPECT_TRUE(!list.Find(u"aa", index) && index == 2);
  list.ClearAttr(u"b");
  list.ClearAttr(u"none");
  EXPECT_EQ(list.Count, 4);
  list.Clear();
  EXPECT_TRUE(!list.Find(u"a", index) && index == 0);
  list.SetAttribute(u"z", u"1");
  EXPECT_EQ(list.AsString(), u"z=\"1\"");
}

TEST(Node, TypedAttributes) {
  THtmlNode node;
  const auto text = [&](const auto& set) {
    set();
    return HtToUtf8(node.GetAttribute(u"x"));
  };
  const TDateTime time = 45351.75 + 1.0 / 24 / 60;  // 2024-02-29 18:01
  EXPECT_EQ(node.GetAttrI(u"x") + node.GetAttrF(u"x") + node.GetDate(u"x") + node.GetTime(u"x"), 0);
  EXPECT_EQ(text([&] { node.SetAttrI(u"x", -12); }), "-12");
  EXPECT_EQ(node.GetAttrI(u"x"), -12);
  EXPECT_EQ(text([&] { node.SetAttrF(u"x", -1.505); }), "-1.5");
  EXPECT_EQ(text([&] { node.SetFloat(u"x", 0.125); }), "0.125");
  EXPECT_EQ(node.GetFloat(u"x"), 0.125);
  EXPECT_THROW(node.GetAttrI(u"x"), EConvertError);
  EXPECT_EQ(text([&] { node.SetDate(u"x", time); }), "2024-02-29");
  EXPECT_EQ(node.GetDate(u"x"), 45351);
  EXPECT_EQ(text([&] { node.SetTime(u"x", time); }), "18:01:00");
  EXPECT_NEAR(node.GetTime(u"x"), time - 45351, 1e-9);
  EXPECT_EQ(text([&] { node.SetDateTime(u"x", time); }), "2024-02-29T18:01:00");
  EXPECT_NEAR(node.GetDateTime(u"x"), time, 1e-9);
  EXPECT_EQ(text([&] { node.SetAttrB(u"x", true); }), "1");
  const auto reads = [&](const hstring& value) { return node.SetAttr(u"x", value), node.GetAttrB(u"x"); };
  EXPECT_TRUE(reads(u"1") && reads(u"true") && reads(u"on"));
  EXPECT_FALSE(reads(u"0") || reads(u"True") || reads(u"yes") || reads(u""));
}

// What a change leaves of `body(p[id=1]('a', b('c')), q)`; every link is right afterwards.
TEST(Node, Changes) {
  using TPage = THtmlNode;
  const auto p = [](TPage& page) { return page.GetNode(0); };
  const std::pair<std::function<void(TPage&)>, std::string_view> kChanges[] = {
      // clang-format off
      {[&](TPage& n) { p(n)->SetInnerHTML(u"x<i>y</i><td>z"); }, "body(p[id=1]('x', i('y'), td('z')), q)"},
      {[&](TPage& n) { p(n)->SetInnerHTML(u""); }, "body(p[id=1], q)"},
      {[&](TPage& n) { p(n)->SetInnerHTML(u"<p>x<LI>y"); }, "body(p[id=1](p('x', li('y'))), q)"},
      {[&](TPage& n) { p(n)->SetOuterHTML(u"<!DOCTYPE x> <U k=v>x<b>y</u>z"); }, "body(u[k=v]('x', b('y')), q)"},
      {[&](TPage& n) { p(n)->SetOuterHTML(u"x<b>y"); }, "body('x', q)"},
      {[&](TPage& n) { p(n)->SetOuterHTML(u"<br>z"); }, "body(br, q)"},
      {[&](TPage& n) { p(n)->SetInnerText(u"<x>"); }, "body(p[id=1]('<x>'), q)"},
      {[&](TPage& n) { n.SetInnerText(u"x"); }, "body('x')"},
      {[&](TPage& n) { EXPECT_EQ(TagOrText(n.AddHTML(u"<i>x</i>y")), "i"); }, "body(p[id=1]('a', b('c')), q, i('x'), 'y')"},
      {[&](TPage& n) { EXPECT_EQ(n.AddHTML(u""), nullptr); }, "body(p[id=1]('a', b('c')), q)"},
      {[&](TPage& n) { p(n)->MoveChildrentoParent(true); }, "body('a', b('c'), p[id=1], q)"},
      {[&](TPage& n) { p(n)->MoveChildrentoParent(false); }, "body(p[id=1], 'a', b('c'), q)"},
      {[&](TPage& n) { p(n)->MoveChildrento(n.GetNode(1), -1); }, "body(p[id=1], q('a', b('c')))"},
      {[&](TPage& n) { p(n)->MoveChildrento(&n, 1); }, "body(p[id=1], 'a', b('c'), q)"},
      {[&](TPage& n) { p(n)->MoveChildrento(p(n)->GetNode(1), 0); }, "body(p[id=1](b('a', 'c')), q)"},
      {[&](TPage& n) { n.MoveNode(n.GetNode(1), p(n)); }, "body(q, p[id=1]('a', b('c')))"},
      {[&](TPage& n) { n.MoveNode(p(n), n.GetNode(1)); }, "body(q, p[id=1]('a', b('c')))"},
      {[&](TPage& n) { n.Exchange(0, 1); }, "body(q, p[id=1]('a', b('c')))"},
      {[&](TPage& n) { n.DeleteChild(n.GetNode(1)); }, "body(p[id=1]('a', b('c')))"},
      {[&](TPage& n) { n.DeleteAllChildren(); }, "body"},
      {[&](TPage& n) { n.AddNode(std::make_unique<THtmlNode>(u"i"))->AddChild(THtmlNode::Class())->SetContent(u"x"); }, "body(p[id=1]('a', b('c')), q, i('x'))"},
      {[&](TPage& n) { n.EnumerateElements(); }, "body[_id=0](p[_id=1][id=1]('a', b[_id=2]('c')), q[_id=3])"},
      {[&](TPage& n) { p(n)->SetOuterHTML(u"<datapacket><!--c--><datapacket id=k>"); n.EnumerateElements(); }, "body[_id=0](datapacket[_id=1][id=1](!'c', datapacket[_id=2][id=k]), q[_id=3])"},
      // clang-format on
  };
  for (size_t i = 0; i < std::size(kChanges); ++i) {
    THtmlNode page;
    page.Parse(u"<p id=1>a<b>c</b></p><q>");
    kChanges[i].first(page);
    EXPECT_EQ(Notation(page), kChanges[i].second) << i;
    EXPECT_TRUE(IsWellLinked(page)) << i;
  }
  THtmlNode table(u"table");
  table.SetInnerHTML(u"<td>x<tr><td>y");
  EXPECT_EQ(Notation(table), "table(tr(td('x')), tr(td('y')))");
  THtmlNode stranger;
  try {
    table.DeleteChild(&stranger);
    FAIL();
  } catch (const EHtException& error) {
    EXPECT_EQ(error.Message, u"Child node not found");
  }
  EXPECT_EQ(THtmlNode::HTMLtoText(u"a<p>b &amp; c"), u"a\r\nb & c");
}

// A chain of `levels` elements with a text at its end.
void MakeDeep(THtmlNode& root, int32_t levels) {
  THtNode* node = &root;
  for (int32_t i = 1; i < levels; ++i) (node = node->AddChild(THtmlNode::Class()))->SetTag(u"i");
  node->AddChild(THtmlNode::Class())->SetContent(u"x");
}

TEST(Node, WalksOfAnyDepth) {
  THtmlNode root;
  MakeDeep(root, 200000);
  EXPECT_EQ(root.Last()->Path().Size(), 2 * 199999u + 1);
  EXPECT_EQ(root.FindNode(u"x"), nullptr);
  EXPECT_EQ(static_cast<THtmlNode*>(root.Last())->AbsoluteTagIndex(), 199999);
  root.EnumerateElements();
  root.ChangeEncoding(heUTF8, 0);
  EXPECT_EQ(root.Last()->GetContent(), u"x");
}

TEST(Node, RecursiveWalksStopAtTheLimit) {
  const std::pair<const char*, std::function<int64_t(THtmlNode&)>> kWalks[] = {
      // clang-format off
      {"outer", [](THtmlNode& n) { return n.GetOuterHTML().Length(); }},
      {"inner", [](THtmlNode& n) { return n.GetInnerHTML().Length(); }},
      {"formatted", [](THtmlNode& n) { TFastString builder(4096); bool newLine = false; n.FastFormattedHTML(builder, 0, 0, newLine); return builder.GetTotalLen(); }},
      {"flat text", [](THtmlNode& n) { TFastString builder(4096); n.FastInnerText(builder); return builder.GetTotalLen(); }},
      {"text", [](THtmlNode& n) { return n.GetInnerText().Length(); }},
      {"raw text", [](THtmlNode& n) { return n.GetRawInnerText().Length() + 1; }},
      {"content", [](THtmlNode& n) { return n.TextContent().Length(); }},
      {"list", [](THtmlNode& n) { return n.XPath(u"//text()[..]")->GetCount(); }},
      {"value", [](THtmlNode& n) { return n.XPathValue(u"//text()").Length(); }},
      {"callback", [](THtmlNode& n) { int64_t count = 0; n.XPath(u"//text()", [&](THtNode*, bool&) { ++count; }); return count; }},
      // clang-format on
  };
  THtmlNode below, above;
  MakeDeep(below, kMaxTreeDepth - 5);
  MakeDeep(above, kMaxTreeDepth + 5);
  for (const auto& [name, walk] : kWalks) {
    EXPECT_THROW(walk(above), EHtException) << name;
    EXPECT_GT(walk(below), 0) << name;
  }
}

}  // namespace
}  // namespace ht
