#include "htmlpars/nodelist.h"

#include <algorithm>

#include "htmlpars/node.h"
#include "htruntime/exception.h"

namespace ht {

bool THtNodeListEnumerator::MoveNext() {
  if (!FList || FIndex >= FList->GetCount() - 1) return false;
  ++FIndex;
  return true;
}

THtNode* THtNodeListEnumerator::GetCurrent() const { return FList->GetNode(FIndex); }

// No interface is taken during construction, so the count may start at 0.
THtNodeList::THtNodeList(bool ownsNodes, bool refCounted)
    : THtObjectList(ownsNodes, FPlaces, kPlaces), FRefCounted(refCounted) {}

void THtNodeList::Free() {
  if (FRefCount.load(std::memory_order_relaxed) != 0) throw EInvalidPointer(ClassName());
  delete this;
}

int32_t THtNodeList::QueryInterface(const TGuid& id, void** result) {
  const bool known = id == IHtNodeList::kGuid || id == IHtInterface::kGuid;
  *result = known ? static_cast<IHtNodeList*>(this) : nullptr;
  if (known) _AddRef();
  return known ? kInterfaceFound : kNoInterface;
}

int32_t THtNodeList::_AddRef() {
  return FRefCounted ? FRefCount.fetch_add(1, std::memory_order_relaxed) + 1 : 0;
}

int32_t THtNodeList::_Release() {
  if (!FRefCounted) return 0;
  const int32_t left = FRefCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
  if (left == 0) delete this;
  return left;
}

// Links the node before `index`, and the node there, to what follows them now.
void THtNodeList::Relink(int32_t index) {
  const auto at = [this](int32_t i) { return i < FCount ? GetNode(i) : nullptr; };
  if (index > 0) GetNode(index - 1)->FNextSibling = at(index);
  if (index < FCount) GetNode(index)->FNextSibling = at(index + 1);
}

int32_t THtNodeList::Add(THtNode* node) {
  if (GetOwnsObjects()) {
    node->FNextSibling = nullptr;
    if (FCount > 0) LastNode()->FNextSibling = node;
  }
  RawInsert(FCount, node);
  return FCount - 1;
}

THtNode* THtNodeList::AddNode(THtNode* node) {
  Add(node);
  return node;
}

void THtNodeList::Insert(int32_t index, THtNode* node) {
  CheckIndex(index, FCount + 1);
  RawInsert(index, node);
  if (GetOwnsObjects()) Relink(index);
}

void THtNodeList::Delete(int32_t index) {
  THtNode* node = GetNode(index);
  RawDelete(index);
  if (!GetOwnsObjects()) return;
  if (index > 0) GetNode(index - 1)->FNextSibling = index < FCount ? GetNode(index) : nullptr;
  delete node;
}

// The tree builder takes out and moves what it added last.
int32_t THtNodeList::IndexFromEnd(const THtNode* node) const {
  int32_t index = FCount;
  while (index-- > 0 && FItems[index] != node) {}
  return index;
}

void THtNodeList::MoveLastBefore(const THtNode* node) {
  const int32_t index = IndexFromEnd(node);
  if (index < 0 || index == FCount - 1) return;
  std::rotate(FItems + index, FItems + FCount - 1, FItems + FCount);
  if (!GetOwnsObjects()) return;
  Relink(index);
  LastNode()->FNextSibling = nullptr;
}

void THtNodeList::TakeAll(int32_t index, THtNodeList& other) {
  CheckIndex(index, FCount + 1);
  const int32_t count = other.FCount;
  if (count == 0) return;
  SetCapacity(std::max(FCapacity, FCount + count));
  std::move_backward(FItems + index, FItems + FCount, FItems + FCount + count);
  std::copy(other.FItems, other.FItems + count, FItems + index);
  FCount += count;
  other.FCount = 0;
  if (!GetOwnsObjects()) return;
  Relink(index);
  if (count > 1) Relink(index + count - 1);
}

void THtNodeList::RemoveItem(THtNode* node) {
  const int32_t index = IndexFromEnd(node);
  if (index < 0) return;
  RawDelete(index);
  if (GetOwnsObjects() && index > 0)
    GetNode(index - 1)->FNextSibling = index < FCount ? GetNode(index) : nullptr;
}

void THtNodeList::Exchange(int32_t a, int32_t b) {
  THtObjectList::Exchange(a, b);
  if (!GetOwnsObjects()) return;
  Relink(a);
  Relink(b);
}

void THtNodeList::SetSiblings() {
  if (!GetOwnsObjects()) return;
  for (int32_t i = 0; i < FCount; ++i) GetNode(i)->FNextSibling = i + 1 < FCount ? GetNode(i + 1) : nullptr;
}

}  // namespace ht
