#pragma once

#include <string>
#include <vector>

#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/stylesheet.h"

namespace ht {

/// A node of a tree in which every element has a style from the start, and texts have none.
class TTestNode final : public TStyledHTMLNode {
  HT_CLASS(TTestNode, TStyledHTMLNode)

 public:
  TTestNode() = default;
  explicit TTestNode(std::u16string_view html) {
    CreateStyle();
    Parse(html);
  }
  using TStyledHTMLNode::ParseAttributes;
  void ParseAttributes(THtmlParser& parser) override {
    CreateStyle();
    TStyledHTMLNode::ParseAttributes(parser);
  }
  const TClass* GetStyleClass() const override { return TBaseElementStyle::Class(); }
};

inline TStyledHTMLNode& ById(THtNode& root, const hstring& id) {
  return static_cast<TStyledHTMLNode&>(*root.FindNodebyAttr({}, u"id"_hs, id));
}

/// What the default sheet and the node's own declarations say.
inline void ApplySelfStyle(TStyledHTMLNode& node) {
  TCSSWeightList list;
  HTML4StyleSheet().GetElementSelectors(node, list, &HTML4StyleSheet().Main, {});
  if (!node.SelfStyleSheet) node.SelfStyleSheet = node.NewSelfStyleSheet().release();
  node.SelfStyleSheet->GetAllSelectors(list);
  node.ResetStyle(false);
  node.FStyle->IntFontSize = 16;
  if (TStyledHTMLNode* parent = node.GetParent(); parent && parent->FStyle)
    node.FStyle->Inherit(*parent->FStyle);
  node.FStyle->ApplyValue(list, false);
}

/// The same for a whole tree, with the numbers and flags that need no layout.
inline void ResolveStyles(TStyledHTMLNode& root) {
  for (THtNode* next = &root; next; next = next->NextNodeBelow(&root)) {
    auto& node = static_cast<TStyledHTMLNode&>(*next);
    if (node.FStyle) ApplySelfStyle(node);
    node.FindContainer();
    node.CalcNonRelativeProps();
    node.CalcSizeFlags(true);
  }
}

/// The ids of nodes with a blank between them; the tag of a node without one.
inline std::string IdsOf(const std::vector<THtNode*>& nodes) {
  std::string ids;
  for (const THtNode* node : nodes) {
    const hstring id = node->GetAttribute(u"id"_hs);
    ids += (ids.empty() ? "" : " ") + HtToUtf8(id.Empty() ? node->GetTag() : id);
  }
  return ids;
}

inline std::string IdsOf(const TIntf<IHtNodeList>& list) {
  std::vector<THtNode*> nodes;
  for (int32_t i = 0; i < list->GetCount(); ++i) nodes.push_back(list->GetNode(i));
  return IdsOf(nodes);
}

}  // namespace ht
