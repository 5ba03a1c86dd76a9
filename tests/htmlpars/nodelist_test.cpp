#include "htmlpars/nodelist.h"

#include <gtest/gtest.h>
#include <thread>

#include "htmlpars/xpath.h"
#include "htruntime/exception.h"
#include "treenotation.h"

namespace ht {
namespace {

std::string Ids(const THtNodeList& list) {
  std::string ids;
  for (const THtNode* node : list)
    ids += node ? HtToUtf8(node->GetAttribute(u"id") + node->GetContent()) : "null";
  return ids;
}

// A node that counts itself, records what is asked of it, and compares as it is told.
class TCountedNode : public THtmlNode {
  HT_CLASS(TCountedNode, THtmlNode)

 public:
  static inline int Living = 0, Comparisons = 0, RaiseAfter = -1;
  static inline std::function<int32_t(THtNode*, THtNode*)> Order;

  TCountedNode() { ++Living; }
  ~TCountedNode() override { --Living; }
  void Note(const hstring& text) { SetAttr(u"log", GetAttribute(u"log") + text); }
  void CSS(const hstring& text) override { Note(u"{" + text + u"}"); }
  void AddClass(const hstring& text) override { Note(u"+" + text); }
  void RemoveClass(const hstring& text) override { Note(u"-" + text); }
  bool HasClass(const hstring& text) override { return GetAttribute(u"id") == text; }
  void CallScriptFunction(TObject* function) override { Note(function->ClassName()); }
  int32_t ScriptCompare(TObject*, THtNode* other) override {
    if (++Comparisons == RaiseAfter) throw EHtException(u"stop");
    return Order(this, other);
  }
};

class NodeListTest : public testing::Test {
 protected:
  void Parse(std::u16string_view html) { FPage.Parse(html); }
  THtNodeList& Find(std::u16string_view path) {
    FFound = FPage.XPath(path);
    return static_cast<THtNodeList&>(*FFound);
  }
  ~NodeListTest() override {
    EXPECT_TRUE(IsWellLinked(FPage));
    FPage.DeleteAllChildren();
    EXPECT_EQ(TCountedNode::Living, 1);
  }
  TCountedNode FPage;
  TIntf<IHtNodeList> FFound;
};

TEST_F(NodeListTest, EveryChangeKeepsTheLinks) {
  const std::pair<std::function<void(THtNodeList&)>, std::string> kChanges[] = {
      // clang-format off
      {[](THtNodeList& l) { l.Delete(0); }, "234"}, {[](THtNodeList& l) { l.Delete(1); }, "134"},
      {[](THtNodeList& l) { l.Delete(3); }, "123"}, {[](THtNodeList& l) { l.Exchange(0, 1); }, "2134"},
      {[](THtNodeList& l) { l.Exchange(3, 0); }, "4231"}, {[](THtNodeList& l) { l.Exchange(2, 2); }, "1234"},
      {[](THtNodeList& l) { l.MoveLastBefore(l.GetNode(1)); }, "1423"},
      {[](THtNodeList& l) { l.MoveLastBefore(l.GetNode(3)); }, "1234"},
      {[](THtNodeList& l) { std::unique_ptr<THtNode> out(l.GetNode(2)); l.RemoveItem(out.get()); }, "124"},
      {[](THtNodeList& l) { std::unique_ptr<THtNode> out(l.GetNode(3)); l.RemoveItem(out.get()); }, "123"},
      {[](THtNodeList& l) { THtNode* n = l.GetNode(3); l.RemoveItem(n); l.Insert(0, n); }, "4123"},
      {[](THtNodeList& l) { THtNode* n = l.GetNode(0); l.RemoveItem(n); l.Insert(3, n); }, "2341"},
      {[](THtNodeList& l) { THtNode* n = l.GetNode(0); l.RemoveItem(n); l.Insert(1, n); }, "2134"},
      {[](THtNodeList& l) { THtNode* n = l.GetNode(1); l.RemoveItem(n); EXPECT_EQ(l.Add(n), 3); }, "1342"},
      {[](THtNodeList& l) { EXPECT_THROW(l.Insert(5, nullptr), EListError); }, "1234"},
      {[](THtNodeList& l) { EXPECT_THROW(l.Delete(4), EListError); }, "1234"},
      // clang-format on
  };
  for (size_t i = 0; i < std::size(kChanges); ++i) {
    Parse(u"<p id=1><p id=2><p id=3><p id=4>");
    kChanges[i].first(*FPage.GetNodes());
    EXPECT_EQ(Ids(*FPage.GetNodes()), kChanges[i].second) << i;
    EXPECT_TRUE(IsWellLinked(FPage)) << i;
  }
}

TEST_F(NodeListTest, EveryNode) {
  Parse(u"<a id=1>x</a><i></i><b id=1>y<u>z</u></b><i></i>");
  TObject function;
  THtNodeList& list = Find(u"*");
  EXPECT_EQ(list.GetAttr(u"id"), u"1,,1,");
  EXPECT_EQ(&list.on(u"click", u"f()").AddClass(u"k").RemoveClass(u"r").ToggleClass(u"1").Each(&function),
            &list);
  EXPECT_EQ(&list.Attribute(u"t", u"v").Style(u"color", u"red"), &list);
  list.SetCSS(u"a", u"b");
  EXPECT_TRUE(list.AddClass2(u"x") == &list && list.RemoveClass2(u"y") == &list &&
              list.ToggleClass2(u"z") == &list);
  EXPECT_EQ(HtToUtf8(list.GetAttr(u"log")),
            "+k-r-1TObject{color: red}{a: b}+x-y+z,+k-r+1TObject{color: red}{a: b}+x-y+z,"
            "+k-r-1TObject{color: red}{a: b}+x-y+z,+k-r+1TObject{color: red}{a: b}+x-y+z");
  EXPECT_EQ(list.GetAttr(u"onclick"), u"f(),f(),f(),f()");
  EXPECT_EQ(list.GetText(), u"xyz");
  EXPECT_TRUE(list.GetHTML() == u"x" && list.GetCSS(u"color").Empty());
  list.SetHTML(u"q<i></i>");
  EXPECT_EQ(list.GetText(), u"qqqq");
  THtNodeListEnumerator at = list.GetEnumerator();
  int count = 0;
  for (; at.MoveNext(); ++count) EXPECT_EQ(at.GetCurrent(), list.GetNode(count));
  EXPECT_TRUE(count == 4 && !at.MoveNext() && !THtNodeListEnumerator().MoveNext());
  THtNodeList& none = Find(u"none");
  EXPECT_TRUE(none.GetHTML().Empty() && none.GetText().Empty() && !none.FirstNode() &&
              !none.GetEnumerator().MoveNext());
}

TEST_F(NodeListTest, OperationsThatReplaceTheEntries) {
  Parse(u"<ul id=a><li id=1></li><li id=2></li></ul><ul id=b><li id=3></li></ul>");
  EXPECT_EQ(Ids(Find(u"none").First().Last()), "");
  EXPECT_EQ(Ids(Find(u"ul[0]").First().Last()), "a");
  EXPECT_EQ(Ids(Find(u"//li").First()), "1");
  EXPECT_EQ(Ids(Find(u"//li").Last()), "3");
  EXPECT_EQ(Ids(Find(u"//li").Parent()), "aab");
  EXPECT_EQ(Ids(Find(u"ul").Children()), "123");
  EXPECT_EQ(Ids(Find(u"ul").Children().Children()), "");
  THtNodeList root(false, false);
  EXPECT_EQ(root.AddNode(&FPage), &FPage);
  EXPECT_EQ(Ids(root.Parent()), "null");
  THtNodeList& list = Find(u"ul").Append(u"li");
  list.SetText(u"x");
  EXPECT_EQ(Ids(list), "xx");
  EXPECT_EQ(Notation(FPage), "body(ul[id=a](li[id=1], li[id=2], li('x')), ul[id=b](li[id=3], li('x')))");
}

TEST_F(NodeListTest, RemoveFromTheTree) {
  constexpr std::pair<std::u16string_view, std::string_view> kCases[] = {
      // clang-format off
      {u"none", "body(p[id=1](b[id=2](i[id=3])), q[id=4])"}, {u"//*", "body"},
      {u"//*/..", "body(q[id=4])"},  // the root, which stays, and others twice
      {u"//i", "body(p[id=1](b[id=2]), q[id=4])"}, {u"p/b/..", "body(q[id=4])"},
      // clang-format on
  };
  for (const auto& [path, left] : kCases) {
    Parse(u"<p id=1><b id=2><i id=3></i></b></p><q id=4></q>");
    THtNodeList& list = Find(path);
    if (path == u"//*/..")
      list.Insert(0, FPage.FindNode(u"i"));  // a node behind its ancestors, and before them
    list.Remove();
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(Notation(FPage), left) << HtToUtf8(path);
  }
}

TEST_F(NodeListTest, SortbyAttr) {
  constexpr struct {
    std::u16string_view Keys;
    THtSortCompareType Type;
    bool Ascending;
    std::string_view Order;
  } kCases[] = {
      // clang-format off
      {u"name", scCaseSensitive, true, "3124"}, {u"name", scCaseSensitive, false, "4213"},
      {u"name,id", scCaseInsensitive, true, "1324"}, {u"^name,id", scCaseInsensitive, true, "4213"},
      {u"^name,id", scCaseInsensitive, false, "3124"}, {u"age,^id", scFloat, true, "4312"},
      {u"age,^id", scFloat, false, "2134"}, {u"date", scDate, true, "2413"},
      {u"none,^id", scFloat, true, "4321"},
      // clang-format on
  };
  for (const auto& c : kCases) {
    Parse(
        u"<p id=1 name=a age=9 date=2024-03-01><p id=2 name=b age=10,5 date=''>"
        u"<p id=3 name=A age=9.0 date=2024-03-02><p id=4 name=c age=x date=1999-12-31>");
    FPage.GetNodes()->SortbyAttr(c.Keys, c.Type, c.Ascending);
    EXPECT_EQ(Ids(*FPage.GetNodes()), c.Order) << HtToUtf8(c.Keys);
    EXPECT_TRUE(IsWellLinked(FPage));
    EXPECT_EQ(TCountedNode::Living, 5);
  }
  FPage.GetNode(0)->SetAttr(u"date", u"31.13.2020");
  EXPECT_THROW(FPage.GetNodes()->SortbyAttr(u"date", scDate, true), EConvertError);
  EXPECT_TRUE(FPage.GetNodes()->GetOwnsObjects());
}

TEST_F(NodeListTest, SortElements) {
  std::u16string html;
  for (int i = 0; i < 300; ++i)
    html += u"<p id=" + std::u16string(1, static_cast<char16_t>(u'a' + i * 7 % 26)) + u">";
  const auto byId = [](THtNode* a, THtNode* b) {
    return HtCompareStr(a->GetAttribute(u"id"), b->GetAttribute(u"id"));
  };
  const auto sorted = [](const std::string& ids) { return std::is_sorted(ids.begin(), ids.end()); };
  TCountedNode::Order = byId;
  Parse(html);
  FPage.GetNodes()->SortElements(nullptr, false);
  EXPECT_TRUE(sorted(Ids(*FPage.GetNodes())) && IsWellLinked(FPage));
  // The order of a result goes over to the document, among the places of its nodes.
  Parse(html);
  const TIntf<IHtNodeList> result = FPage.XPath(u"p[@id!='c']");
  auto& some = static_cast<THtNodeList&>(*result);
  some.SortElements(nullptr, true);
  EXPECT_TRUE(sorted(Ids(some)));
  EXPECT_EQ(Ids(some), Ids(Find(u"p[@id!='c']")));
  EXPECT_EQ(FPage.GetNode(4)->GetAttribute(u"id"), u"c");
  // Comparisons that contradict themselves, or raise at any moment, lose no node.
  for (int32_t answer : {1, -1}) {
    TCountedNode::Order = [answer](THtNode*, THtNode*) { return answer; };
    FPage.GetNodes()->SortElements(nullptr, false);
  }
  TCountedNode::Order = [](THtNode*, THtNode*) { return TCountedNode::Comparisons * 7 % 5 - 2; };
  FPage.GetNodes()->SortElements(nullptr, false);
  TCountedNode::Order = byId;
  for (int after : {1, 10, 500}) {
    TCountedNode::Comparisons = 0;
    TCountedNode::RaiseAfter = after;
    EXPECT_THROW(FPage.GetNodes()->SortElements(nullptr, false), EHtException);
    TCountedNode::RaiseAfter = -1;
    EXPECT_TRUE(FPage.GetNodes()->GetOwnsObjects() && IsWellLinked(FPage));
    EXPECT_EQ(TCountedNode::Living, 301);
  }
}

TEST(NodeList, References) {
  auto* list = new THtNodeList(false, true);
  TIntf<IHtNodeList> first(list);
  EXPECT_EQ(list->_AddRef(), 2);
  EXPECT_EQ(list->_Release(), 1);
  void* found = nullptr;
  EXPECT_EQ(list->QueryInterface(IHtNodeList::kGuid, &found), kInterfaceFound);
  EXPECT_EQ(found, first.Get());
  try {
    list->Free();
    FAIL();
  } catch (const EInvalidPointer& error) {
    EXPECT_EQ(error.Message, u"THtNodeList");
  }
  EXPECT_EQ(list->_Release(), 1);
  EXPECT_EQ(list->QueryInterface(TGuid{1, 2, 3, {}}, &found), static_cast<int32_t>(0x80004002));
  EXPECT_EQ(found, nullptr);
  std::thread([moved = std::move(first)] {}).join();

  auto* scratch = new THtNodeList(false, false);
  EXPECT_EQ(scratch->_AddRef() + scratch->_Release(), 0);
  scratch->Free();
}

}  // namespace
}  // namespace ht
