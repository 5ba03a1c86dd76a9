#include <algorithm>
#include <unordered_map>
#include <vector>

#include "htmlpars/htmlnode.h"
#include "htutils/faststring.h"

namespace ht {

namespace {

// Nodes of other trees have no classes, styles or inner HTML, and are passed over.
template <class TAction>
void ForEachHtml(const THtNodeList& list, const TAction& action) {
  for (THtNode* node : list)
    if (auto* html = dynamic_cast<THtmlNode*>(node)) action(*html);
}

int32_t DepthOf(const THtNode* node) {
  int32_t depth = 0;
  while ((node = node->GetParent())) ++depth;
  return depth;
}

}  // namespace

THtNodeList& THtNodeList::on(const hstring& event, const hstring& script) {
  return Attribute(u"on" + event, script);
}

THtNodeList& THtNodeList::AddClass(const hstring& name) {
  ForEachHtml(*this, [&](THtmlNode& node) { node.AddClass(name); });
  return *this;
}

THtNodeList& THtNodeList::RemoveClass(const hstring& name) {
  ForEachHtml(*this, [&](THtmlNode& node) { node.RemoveClass(name); });
  return *this;
}

THtNodeList& THtNodeList::ToggleClass(const hstring& name) {
  ForEachHtml(*this, [&](THtmlNode& node) { node.ToggleClass(name); });
  return *this;
}

TIntf<IHtNodeList> THtNodeList::AddClass2(const hstring& name) { return &AddClass(name); }
TIntf<IHtNodeList> THtNodeList::RemoveClass2(const hstring& name) { return &RemoveClass(name); }
TIntf<IHtNodeList> THtNodeList::ToggleClass2(const hstring& name) { return &ToggleClass(name); }

THtNodeList& THtNodeList::Each(TObject* function) {
  for (THtNode* node : *this) node->CallScriptFunction(function);
  return *this;
}

void THtNodeList::SetAttr(const hstring& name, const hstring& value) {
  for (THtNode* node : *this) node->SetAttribute(name, value);
}

THtNodeList& THtNodeList::Attribute(const hstring& name, const hstring& value) {
  SetAttr(name, value);
  return *this;
}

void THtNodeList::SetCSS(const hstring& name, const hstring& value) {
  const hstring declaration = name + u": " + value;
  ForEachHtml(*this, [&](THtmlNode& node) { node.CSS(declaration); });
}

THtNodeList& THtNodeList::Style(const hstring& name, const hstring& value) {
  SetCSS(name, value);
  return *this;
}

void THtNodeList::SetHTML(const hstring& text) {
  ForEachHtml(*this, [&](THtmlNode& node) { node.SetInnerHTML(text); });
}

hstring THtNodeList::GetAttr(const hstring& name) const {
  TFastString values(128);
  for (THtNode* node : *this) {
    if (values.GetTotalLen() > 0) values.AddChar(u',');
    values.Add(node->GetAttribute(name));
  }
  return values.GetAsString();
}

hstring THtNodeList::GetCSS(const hstring&) const { return {}; }

hstring THtNodeList::GetHTML() const {
  auto* first = dynamic_cast<THtmlNode*>(FirstNode());
  return first ? first->GetInnerHTML() : hstring();
}

hstring THtNodeList::GetText() const {
  TFastString text(1024);
  ForEachHtml(*this, [&](THtmlNode& node) { text.Add(node.GetInnerText()); });
  return text.GetAsString();
}

// Operations that replace the entries

THtNodeList& THtNodeList::First() {
  while (FCount > 1) Delete(FCount - 1);
  return *this;
}

THtNodeList& THtNodeList::Last() {
  if (FCount < 2) return *this;
  THtNode* last = LastNode();
  RawDelete(FCount - 1);
  Clear();
  Add(last);
  return *this;
}

THtNodeList& THtNodeList::Parent() {
  for (int32_t i = 0; i < FCount; ++i) PutNode(i, GetNode(i)->GetParent());
  return *this;
}

THtNodeList& THtNodeList::Children() {
  const std::vector<THtNode*> nodes(begin(), end());
  Clear();
  for (THtNode* node : nodes)
    for (THtNode* child = node->FirstChild(); child; child = child->NextSibling()) Add(child);
  return *this;
}

THtNodeList& THtNodeList::Append(const hstring& tag) {
  const std::vector<THtNode*> nodes(begin(), end());
  Clear();
  for (THtNode* node : nodes) {
    const THtNodeClass* nodeClass = node->GetElementClass(tag, nullptr);
    if (!nodeClass) continue;
    THtNode* child = node->AddChild(nodeClass);
    child->SetTag(tag);
    Add(child);
  }
  return *this;
}

void THtNodeList::SetText(const hstring& text) {
  Append({});
  for (THtNode* node : *this) node->SetContent(text);
}

// Deeper nodes go first, so that none is deleted with an ancestor before its turn, whatever the order of the list
// and however often a node stands in it.
void THtNodeList::Remove() {
  std::vector<std::pair<int32_t, THtNode*>> nodes;
  for (int32_t i = FCount; i-- > 0;) nodes.emplace_back(DepthOf(GetNode(i)), GetNode(i));
  while (FCount > 0) RawDelete(FCount - 1);
  std::stable_sort(nodes.begin(), nodes.end(),
                   [](const auto& a, const auto& b) { return a.first > b.first; });
  std::unordered_map<const THtNode*, bool> seen;
  for (const auto& [depth, node] : nodes)
    if (seen.emplace(node, true).second && node->GetParent()) node->GetParent()->DeleteChild(node);
}

}  // namespace ht
