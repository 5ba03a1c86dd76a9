#include <gtest/gtest.h>

#include "htmlpars/parser.h"
#include "treenotation.h"

namespace ht {
namespace {

struct TCase {
  std::u16string_view html;
  std::string_view tree;
};

std::u16string Repeat(std::u16string_view text, int count) {
  std::u16string result;
  while (count-- > 0) result += text;
  return result;
}

int32_t DepthOf(const THtNode& root) {
  int32_t deepest = 0;
  for (const THtNode* node = &root; node; node = node->NextNodeBelow(&root)) {
    int32_t depth = 0;
    for (const THtNode* up = node; up->GetParent(); up = up->GetParent()) ++depth;
    deepest = std::max(deepest, depth);
  }
  return deepest;
}

const TCase kTrees[] = {
    // The document and its items
    {u"", "body"},
    {u"a<!--c--><?p?><![CDATA[d]]>b", "body('a', !'c', ?'p', #'d', 'b')"},
    {u"<!DOCTYPE html><html><head><title>t</title></head><body>x</body></html>",
     "(html(head(title('t')), body('x')))"},
    {u"<body>x</body>y", "(body('x'), 'y')"},
    {u"<p>x</p>", "body(p('x'))"},
    {u"<DIV Class=A>x</dIV>", "body(div[class=A]('x'))"},
    {u"<br>a<br/>b</br>c<img src=x>", "body(br, 'a', br, 'b', 'c', img[src=x])"},
    {u"<x/>a<y>b</y>", "body(x, 'a', y('b'))"},
    {u"<title>a<b>c</title><textarea><i>t</i></textarea>", "body(title('a', b('c')), b(textarea(i('t'))))"},
    {u"<script a=b>if (x<y) '</p>'</script>z<style> s </style>",
     "body(script[a=b]('if (x<y) '</p>''), 'z', style(' s '))"},
    {u"<script>end", "body(script('end'))"},
    {u"<style>p{}", "body(style('p{}'))"},
    {u"x<p", "body('x')"},
    {u"x</ p>y</>z", "body('x', 'y', 'z')"},

    // Order of elements
    {u"<p>a<div>b</div>", "body(p('a'), div('b'))"},
    {u"<p>a<p>b", "body(p('a'), p('b'))"},
    {u"<p><b>a<ul><li>c</ul>", "body(p(b('a')), ul(li('c')))"},
    {u"<ul><li>a<ul><li>b</ul><li>c</ul>", "body(ul(li('a', ul(li('b'))), li('c')))"},
    {u"<ul><li><b>a<li>b</ul>", "body(ul(li(b('a')), li('b')))"},
    {u"<dl><dt>a<dd>b<dt>c<dd>d</dl>", "body(dl(dt('a'), dd('b'), dt('c'), dd('d')))"},
    {u"<dd>a<dd>b", "body(dd('a'), dd('b'))"},
    {u"<a href=1>x<a href=2>y", "body(a[href=1]('x'), a[href=2]('y'))"},
    {u"<head><meta a=b><div>x</div>", "body(head(meta[a=b]), div('x'))"},
    {u"<head><title>t</title><body>x", "(head(title('t')), body('x'))"},

    // Close tags
    {u"<b><i>x</b>y</i>", "body(b(i('x')), i('y'))"},
    {u"<b><i a=1><u>x</b>y", "body(b(i[a=1](u('x'))), i[a=1](u('y')))"},
    {u"<p><b>x</p><p>y", "body(p(b('x')), b(p('y')))"},
    {u"<b><i>x</b></i>y", "body(b(i('x')), 'y')"},
    {u"<span><div>x</span>y</div>z", "body(span(div('x', 'y'), 'z'))"},
    {u"<html><body><p></body>x</html>", "(html(body(p('x'))))"},
    {u"<i>x</b>y", "body(i('x', 'y'))"},

    // Tables
    {u"<table><tr><td>a<td>b</table>", "body(table(tr(td('a'), td('b'))))"},
    {u"<table><tr><th>a<td>b<tr><td>c</table>d", "body(table(tr(th('a'), td('b')), tr(td('c'))), 'd')"},
    {u"<table><tbody><td>x<tbody><tr><td>y</table>", "body(table(tbody(tr(td('x'))), tbody(tr(td('y')))))"},
    {u"<table><td>x</table>", "body(table(tr(td('x'))))"},
    {u"<table><p>x</table>y", "body(table(tr(td(p('x')))), 'y')"},
    {u"<table><tr><b>x</b><td>y", "body(table(tr), b('x'), td('y'))"},
    {u"<table><tr><td>a</td><div>b</div></tr></table>", "body(table(tr(td('a', div('b')))))"},
    {u"<table><tr><div>x</div></tr></table>", "body(table(tr), div('x'))"},
    {u"<table><b>x</b><tr><td>y</table>", "body(table(tr(td('y'))), b('x'))"},
    {u"<table><tbody><br><img><tr><td>y</table>", "body(br, img, table(tbody(tr(td('y')))))"},
    {u"<table><tr><td><p>a<table><tr><td>b</table>c", "body(table(tr(td(p('a', table(tr(td('b'))), 'c')))))"},
    {u"<table><tr><td><table></td>x", "body(table(tr(td(table('x')))))"},
    {u"<table><tr><td><b>x</td><td>y</b></table>", "body(table(tr(td(b('x')), b, td('y'))))"},
    {u"<table><table><tr><td>x", "body(table, table(tr(td('x'))))"},
    // The implied cell has no frame of its row above it; the table goes on.
    {u"<table><p>x</p><td>y", "body(table(tr(td(p('x'))), tr(td('y'))))"},
};

TEST(TreeBuilder, Trees) {
  for (const TCase& row : kTrees) EXPECT_EQ(TreeOf(row.html), row.tree) << HtToUtf8(row.html);
}

TEST(TreeBuilder, LinksAreKept) {
  for (const TCase& row : kTrees) {
    THtmlNode root;
    root.Parse(row.html);
    EXPECT_TRUE(IsWellLinked(root)) << HtToUtf8(row.html);
  }
}

TEST(TreeBuilder, PrintedTreesReadBackEqual) {
  // What is printed is not repaired again, but for markup that HTML cannot hold: text that merges, a root without tag.
  for (const TCase& row : kTrees) {
    THtmlNode first, second, third;
    first.Parse(row.html);
    second.Parse(first.GetOuterHTML());
    third.Parse(second.GetOuterHTML());
    EXPECT_EQ(Notation(second), Notation(third)) << HtToUtf8(row.html);
  }
}

TEST(TreeBuilder, KindsOfNodes) {
  THtmlNode root;
  root.Parse(u"<table><td>x</table><script>s</script><!--c--><?d?><![CDATA[e]]>");
  const auto kindOf = [&root](const hstring& tag) { return root.FindNode(tag)->TagType; };
  EXPECT_EQ(root.TagType, htUnknown);
  EXPECT_EQ(kindOf(u"table"), htIdent);
  EXPECT_EQ(kindOf(u"tr"), htUnknown);
  EXPECT_EQ(kindOf(u"td"), htIdent);
  EXPECT_EQ(kindOf(u"script"), htScript);
  EXPECT_EQ(kindOf(u"!"), htComment);
  EXPECT_EQ(kindOf(u"?"), htDirective);
  EXPECT_EQ(root.LastChild()->TagType, htCData);
  EXPECT_EQ(root.FindNode(u"td")->FirstChild()->TagType, htUnknown);
}

TEST(TreeBuilder, NamesOfOneDocumentAreShared) {
  THtmlNode root;
  root.Parse(u"<div title=x></div><DIV TITLE=y></DIV>");
  const THtNode* a = root.GetNode(0);
  const THtNode* b = root.GetNode(1);
  EXPECT_TRUE(a->GetTag().SameStorage(b->GetTag()));
  EXPECT_TRUE(a->GetAttributes()->GetName(0).SameStorage(b->GetAttributes()->GetName(0)));
}

TEST(TreeBuilder, DepthIsBounded) {
  for (std::u16string_view html : {u"<div>", u"<b>", u"<span>x", u"<table><tr><td>", u"<ul><li>", u"<a><b>",
                                   u"<table>", u"<table><tr><div>", u"<div><table><p>", u"<b></div><i>"}) {
    THtmlNode root;
    root.Parse(Repeat(html, 3000));
    EXPECT_LE(DepthOf(root), 400) << HtToUtf8(html);  // an implied row counts as no level
    EXPECT_TRUE(IsWellLinked(root)) << HtToUtf8(html);
  }
}

// Around the depth limit every repair ends, and no text is lost.
TEST(TreeBuilder, RepairsAtTheLimitEnd) {
  const std::u16string_view tails[] = {u"<table><p>x",     u"<table><tr><td>c</td><div>x",
                                       u"<table><td>x",    u"<table><tr><span>x",
                                       u"<p><b>1</p><i>x", u"<table><tbody><tr><td></td><ul><li>x"};
  for (int depth = 248; depth < 262; ++depth)
    for (std::u16string_view tail : tails) {
      THtmlNode root;
      root.Parse(Repeat(u"<div>", depth) + std::u16string(tail));
      EXPECT_NE(HtToUtf8(root.TextContent()).find('x'), std::string::npos) << depth << HtToUtf8(tail);
      EXPECT_LE(DepthOf(root), 400);
    }
}

TEST(TreeBuilder, CloseTagOfTheTopLosesNothing) {
  THtmlNode page;
  page.Parse(u"first");
  page.Parse(u"<p>a</p></body>b");  // the root is the "body" now
  EXPECT_EQ(Notation(page), "body(p('a'), 'b')");
  THtmlNode element(u"div");
  element.Parse(u"a</div>b");
  EXPECT_EQ(Notation(element), "body('a', 'b')");
}

// Hosts enter by these: a class for each tag, no nodes of some tags, the finished node.
class THostNode : public THtmlNode {
  HT_CLASS(THostNode, THtmlNode)

 public:
  static inline int Living = 0;
  static inline std::string Log;

  THostNode() { ++Living; }
  ~THostNode() override { --Living; }

  const THtNodeClass* GetElementClass(const hstring& tag, THtNode* root) override {
    if (tag == u"em") return nullptr;
    if (tag == u"b") return THtmlNode::Class();
    return THtmlNode::GetElementClass(tag, root);
  }
  THtNode* InternalParse(THtmlParser& parser) override {
    THtNode* result = THtmlNode::InternalParse(parser);
    Log += HtToUtf8(GetTag()) + ";";
    return result;
  }
  void AfterParse() override { Log += "~"; }
};

TEST(TreeBuilder, HostClasses) {
  {
    THostNode root;
    THostNode::Log.clear();
    root.Parse(u"<div><em>x<b>y</b></em><br></div>");
    EXPECT_EQ(Notation(root), "body(div('x', b('y'), br))");
    EXPECT_EQ(THostNode::Log, "br;~div;~;");
    EXPECT_TRUE(root.FindNode(u"div")->InheritsFrom(THostNode::Class()));
    EXPECT_FALSE(root.FindNode(u"b")->InheritsFrom(THostNode::Class()));
    EXPECT_EQ(THostNode::Living, 5);  // root, div, br and both texts
    root.Parse(u"");
    EXPECT_EQ(THostNode::Living, 1);
  }
  EXPECT_EQ(THostNode::Living, 0);
}

}  // namespace
}  // namespace ht
