// Chains of compounds: the search against the same rules written as plain recursion, and on trees and selectors that
// recursion cannot finish.

#include <gtest/gtest.h>
#include <random>

#include "htmlcss/jqueryprocessor.h"
#include "htmlcss/stylesheet.h"
#include "styledtree.h"

namespace ht {
namespace {

using TNode = TStyledHTMLNode;

TNode* ParentOf(const TNode& node) { return static_cast<TNode*>(node.THtNode::GetParent()); }
TNode* SiblingAt(const TNode& node, int32_t index) {
  return static_cast<TNode*>(ParentOf(node)->THtNode::GetNode(index));
}
TNode* PreviousTag(const TNode& node) {
  if (!ParentOf(node)) return nullptr;
  for (int32_t i = node.NodeIndex(); --i >= 0;)
    if (!SiblingAt(node, i)->GetTag().Empty()) return SiblingAt(node, i);
  return nullptr;
}

bool PassesWithoutNots(const TCSSSelector& s, TNode& node, bool& notApplies) {
  if (!s.Matches(node, {})) return false;
  notApplies = false;
  for (const auto& negation : s.Nots) notApplies |= negation->Matches(node, {});
  return true;
}

bool TestAncestor(const TCSSSelector& s, TNode* node, TSelectorPosition position) {
  for (; node; node = ParentOf(*node)) {
    bool notApplies;
    if (PassesWithoutNots(s, *node, notApplies)) {
      if (notApplies) return false;
      if (!s.Parent) return true;
      if (ParentOf(*node) && (s.Position == spDescendant || s.Position == spChild) &&
          TestAncestor(*s.Parent, ParentOf(*node), s.Position))
        return true;
    } else if (position == spChild) {
      return false;
    }
    if (s.Parent && s.Position == spSibling) return TestAncestor(*s.Parent, PreviousTag(*node), spSibling);
    if (s.Parent && s.Position == spAllSiblings) {
      for (int32_t i = node->NodeIndex(); i >= 0; --i)
        if (!SiblingAt(*node, i)->GetTag().Empty() &&
            TestAncestor(*s.Parent, SiblingAt(*node, i), s.Position))
          return true;
      return false;
    }
  }
  return false;
}

bool TestElement(TNode& node, const TCSSSelector& s) {
  bool notApplies;
  if (!PassesWithoutNots(s, node, notApplies) || notApplies) return false;
  if (!s.Parent) return true;
  if (s.Position == spSibling) return TestAncestor(*s.Parent, PreviousTag(node), s.Position);
  if (s.Position != spAllSiblings) return TestAncestor(*s.Parent, ParentOf(node), s.Position);
  for (int32_t i = node.NodeIndex(); --i >= 0;)
    if (TestAncestor(*s.Parent, SiblingAt(node, i), s.Position)) return true;
  return false;
}

class TRandomText {
 public:
  explicit TRandomText(uint32_t seed) : FRandom(seed) {}

  std::u16string Tree(int depth) {
    std::u16string text;
    for (int i = Below(5); i-- > 0;) {
      const std::u16string tag(Pick({u"i", u"b", u"u"}));
      text.append(Pick({u"", u"", u"text"})).append(u"<" + tag);
      text.append(Pick({u"", u" class=x", u" class='y x'"})).append(u">");
      if (depth > 0) text.append(Tree(depth - 1));
      text.append(u"</" + tag + u">");
    }
    return text;
  }

  std::u16string Selector() {
    std::u16string text;
    for (int i = Below(5) + 1; i-- > 0;) {
      const std::u16string part(Pick({u"", u"", u":not(.x)", u":not(.y)", u".x"}));
      text.append(Pick({u"i", u"b", u"*", part.empty() ? u"u" : u""})).append(part);
      if (i > 0) text.append(Pick({u" ", u" ", u">", u"+", u"~"}));
    }
    return text;
  }

 private:
  int Below(int n) { return static_cast<int>(FRandom() % static_cast<unsigned>(n)); }
  std::u16string_view Pick(std::initializer_list<std::u16string_view> of) {
    return of.begin()[Below(static_cast<int>(of.size()))];
  }

  std::mt19937 FRandom;
};

TEST(Chain, SameAsRecursion) {
  int met = 0;
  for (uint32_t seed = 0; seed < 400; ++seed) {
    TRandomText random(seed);
    TTestNode root(random.Tree(4));
    for (int i = 0; i < 20; ++i) {
      const hstring text = random.Selector();
      const TJQueryProcessor query(text);
      const TCSSSelector& selector = *query.Section->Selectors.GetSelector(0);
      for (THtNode* node = &root; node; node = node->NextNodeBelow(&root)) {
        auto& element = static_cast<TNode&>(*node);
        const bool expected = TestElement(element, selector);
        met += expected;
        ASSERT_EQ(TCSSStyleSheet::TestElement(element, selector, {}), expected)
            << HtToUtf8(text) << " at " << HtToUtf8(node->Path()) << " " << node->NodeIndex() << " seed "
            << seed;
      }
    }
  }
  EXPECT_GT(met, 10000);
}

std::u16string Repeated(int count, std::u16string_view text) {
  std::u16string result;
  while (count-- > 0) result.append(text);
  return result;
}

// Trees in which every compound but the left-most is met everywhere.
TEST(Chain, NoExplosion) {
  const std::u16string deep = Repeated(60, u"<div>") + u"<b id=b></b>";
  const std::u16string wide = Repeated(200, u"<div></div>text") + u"<b id=b></b>";
  const struct {
    const std::u16string& Tree;
    std::u16string Selector;
    int Found;
  } cases[] = {
      {deep, u"x " + Repeated(30, u"div ") + u"b", 0},
      {deep, u"x " + Repeated(30, u"div:not(.x) ") + u"b", 0},
      {deep, u"x>" + Repeated(30, u"div>") + u"b", 0},
      {deep, u"x>" + Repeated(15, u"div div>") + u"b", 0},
      {deep, u"body>" + Repeated(15, u"div div>") + u"b", 1},
      {deep, u"body " + Repeated(60, u"div ") + u"b", 1},
      {deep, u"body " + Repeated(61, u"div ") + u"b", 0},
      {wide, u"x~" + Repeated(30, u"div~") + u"b", 0},
      {wide, u"x~" + Repeated(30, u"div:not(.x)~") + u"b", 0},
      {wide, u"div~" + Repeated(30, u"div:not(.x)~") + u"b", 1},
      {wide, u"x+" + Repeated(30, u"div+") + u"b", 0},
      {wide, u"x " + Repeated(30, u"div+div~") + u"b", 0},
      {wide, u"x~" + Repeated(3000, u"div:not(.x)~") + u"b", 0},
  };
  for (const auto& c : cases) {
    TTestNode root(c.Tree);
    EXPECT_EQ(root.JQuery(c.Selector)->GetCount(), c.Found) << HtToUtf8(c.Selector.substr(0, 60));
  }
}

}  // namespace
}  // namespace ht
