#include "htmlpars/node.h"

#include <algorithm>
#include <vector>

#include "htdictionary/hash.h"
#include "htmlpars/lower.h"
#include "htmlpars/tokenizer.h"
#include "htruntime/format.h"
#include "htutils/faststring.h"

namespace ht {

thread_local int32_t TTreeDepthGuard::FDepth = 0;

void TTreeDepthGuard::Raise() {
  --FDepth;
  throw EHtException(u"Tree is nested too deeply");
}

const THtNodeClass* THtNode::Class() {
  static constexpr TClassOf<THtNode> kClass(u"THtNode", TObject::Class);
  return &kClass;
}

std::unique_ptr<THtNode> THtNodeClass::NewNode() const {
  return std::unique_ptr<THtNode>(static_cast<THtNode*>(NewInstance().release()));
}

// The subtree is unlinked into a chain, so that a node has no children when it is deleted and no destructor
// calls itself.
THtNode::~THtNode() {
  THtNode* pending = nullptr;
  const auto unlinkChildren = [&pending](THtNode& node) {
    if (!node.FNodes) return;
    THtNodeList& nodes = *node.FNodes;
    for (int32_t i = nodes.FCount; i-- > 0;) {
      THtNode* child = nodes.GetNode(i);
      child->FParent = nullptr;
      child->FNextSibling = pending;
      pending = child;
    }
    nodes.FCount = 0;
  };
  unlinkChildren(*this);
  while (pending) {
    THtNode* node = pending;
    pending = node->FNextSibling;
    unlinkChildren(*node);
    delete node;
  }
}

THtNodeList* THtNode::GetNodes() {
  if (!FNodes) FNodes = std::make_unique<THtNodeList>(true, false);
  return FNodes.get();
}

void THtNode::SetParent(THtNode* parent) { FParent = parent; }
void THtNode::SetContent(const hstring& text) { FContent = text; }
void THtNode::CallScriptFunction(TObject*) {}
int32_t THtNode::ScriptCompare(TObject*, THtNode*) { return 0; }
TIntf<IHtNodeList> THtNode::GetJQueryList(const hstring&, bool) { return nullptr; }

const THtNodeClass* THtNode::GetElementClass(const hstring& tag, THtNode* root) {
  if (root) return root->GetElementClass(tag, nullptr);
  if (FParent) return Root()->GetElementClass(tag, nullptr);
  return NodeClass();
}

void THtNode::SetTag(const hstring& tag) { AssignTag(THtTagRec(tag)); }

// An interned tag: nothing is computed.
void THtNode::AssignTag(const THtTagRec& rec) {
  FTag = rec.Value;
  FTagHash = rec.Hash;
  FTagId = rec.Id;
}

// Structure

THtNode* THtNode::Adopt(std::unique_ptr<THtNode> node) {
  THtNode* child = node.get();
  GetNodes()->Add(child);
  return node.release();
}

THtNode* THtNode::InternalAddChild(const THtNodeClass* nodeClass) {
  std::unique_ptr<THtNode> node = nodeClass->NewNode();
  node->FParent = this;
  return Adopt(std::move(node));
}

THtNode* THtNode::AddChild(const THtNodeClass* nodeClass) { return AddNode(nodeClass->NewNode()); }

THtNode* THtNode::AddNode(std::unique_ptr<THtNode> node) {
  node->SetParent(this);
  return Adopt(std::move(node));
}

void THtNode::DeleteChild(THtNode* node) {
  const int32_t index = FNodes ? FNodes->IndexFromEnd(node) : -1;
  if (index < 0) throw EHtException(u"Child node not found");
  FNodes->Delete(index);
}

void THtNode::DeleteAllChildren() {
  if (FNodes) FNodes->Clear();
}

THtNode* THtNode::GetNode(int32_t index) const {
  if (!FNodes) throw EListError(HtFormat(u"List index out of bounds (%d)", index));
  return FNodes->GetNode(index);
}

THtNode* THtNode::Root() {
  THtNode* node = this;
  while (node->FParent) node = node->FParent;
  return node;
}

hstring THtNode::Path() const {
  std::vector<const THtNode*> chain;
  for (const THtNode* node = this; node; node = node->FParent) chain.push_back(node);
  TFastString path(128);
  for (size_t i = chain.size(); i-- > 0;) {
    path.Add(chain[i]->FTag);
    if (i > 0) path.AddChar(u'/');
  }
  return path.GetAsString();
}

bool THtNode::HasAsParent(const THtNode* node) const {
  for (const THtNode* parent = FParent; parent; parent = parent->FParent)
    if (parent == node) return true;
  return false;
}

THtNode* THtNode::UpTo(const hstring& tag) const { return UpTo(std::span(&tag, 1)); }

THtNode* THtNode::UpTo(std::span<const hstring> tags) const {
  THtNode* node = FParent;
  while (node && std::find(tags.begin(), tags.end(), node->FTag) == tags.end()) node = node->FParent;
  return node;
}

int32_t THtNode::NodeIndex() const {
  return FParent && FParent->FNodes ? FParent->FNodes->IndexOf(this) : -1;
}

int32_t THtNode::ChildIndex() const {
  int32_t count = 0;
  for (const THtNode* node = FParent ? FParent->FirstChild() : this; node && node != this;
       node = node->FNextSibling)
    count += !node->FTag.Empty();
  return count;
}

int32_t THtNode::TagIndex() const {
  int32_t count = 0;
  for (const THtNode* node = FParent ? FParent->FirstChild() : this; node && node != this;
       node = node->FNextSibling)
    count += node->FTag == FTag;
  return count;
}

int32_t THtNode::Countof(const hstring& tag) const {
  int32_t count = 0;
  for (const THtNode* node = FirstChild(); node; node = node->FNextSibling) count += node->FTag == tag;
  return count;
}

// Walking

THtNode* THtNode::PreviousSibling() const {
  const int32_t index = NodeIndex();
  return index > 0 ? FParent->GetNode(index - 1) : nullptr;
}

THtNode* THtNode::NextNodeBelow(const THtNode* top) const {
  if (THtNode* child = FirstChild()) return child;
  for (const THtNode* node = this; node && node != top; node = node->FParent)
    if (node->FNextSibling) return node->FNextSibling;
  return nullptr;
}

THtNode* THtNode::NextNode() const { return NextNodeBelow(nullptr); }

THtNode* THtNode::PreviousNode() const {
  THtNode* previous = PreviousSibling();
  return previous ? previous->Last() : FParent;
}

THtNode* THtNode::Last() {
  THtNode* node = this;
  while (THtNode* child = node->LastChild()) node = child;
  return node;
}

THtNode* THtNode::FirstChildTag() const {
  THtNode* node = FirstChild();
  while (node && (node->FTag.Empty() || node->TagType == htComment)) node = node->FNextSibling;
  return node;
}

THtNode* THtNode::LastChildTag() const {
  for (int32_t i = GetCount(); i-- > 0;)
    if (THtNode* node = FNodes->GetNode(i); !node->FTag.Empty()) return node;
  return nullptr;
}

hstring THtNode::TextContent() const {
  if (GetCount() == 0) return FContent;
  TTreeDepthGuard guard;
  TFastString text(128);
  text.Add(FContent);
  for (const THtNode* node = FirstChild(); node; node = node->FNextSibling)
    text.Add(node->FTag.Empty() ? node->FContent : node->TextContent());
  return text.GetAsString();
}

}  // namespace ht
