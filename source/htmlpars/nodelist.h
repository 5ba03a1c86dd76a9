#pragma once

#include <atomic>

#include "htmlpars/sorttype.h"
#include "htruntime/arena.h"
#include "htruntime/interface.h"
#include "htutils/objectlist.h"

namespace ht {

class THtNode;
class THtNodeList;

/// Walks the nodes of a list: `for (THtNode* node : *list)`, or MoveNext and GetCurrent by hand.
class THtNodeListEnumerator {
 public:
  int32_t FIndex = -1;
  THtNodeList* FList = nullptr;

  /// False when there is no list or no next node.
  bool MoveNext();
  THtNode* GetCurrent() const;
};

/// The result of a query: a list of nodes that dies with its last reference. It never owns the nodes.
class IHtNodeList : public IHtInterface {
 public:
  static constexpr TGuid kGuid{0xAEEFC0DB, 0x4582, 0x447D, {0x99, 0xCD, 0x80, 0xB6, 0x39, 0x9C, 0xC6, 0x3D}};

  virtual THtNode* GetNode(int32_t index) const = 0;
  virtual int32_t GetCount() const = 0;
  virtual THtNodeListEnumerator GetEnumerator() = 0;
  virtual THtNode* AddNode(THtNode* node) = 0;
  virtual hstring GetAttr(const hstring& name) const = 0;
  virtual void SetAttr(const hstring& name, const hstring& value) = 0;
  virtual hstring GetCSS(const hstring& name) const = 0;
  virtual void SetCSS(const hstring& name, const hstring& value) = 0;
  virtual hstring GetHTML() const = 0;
  virtual void SetHTML(const hstring& text) = 0;
  virtual hstring GetText() const = 0;
  virtual void SetText(const hstring& text) = 0;
  virtual TIntf<IHtNodeList> AddClass2(const hstring& name) = 0;
  virtual TIntf<IHtNodeList> RemoveClass2(const hstring& name) = 0;
  virtual TIntf<IHtNodeList> ToggleClass2(const hstring& name) = 0;
  virtual THtNode* FirstNode() const = 0;
  virtual void Remove() = 0;

 protected:
  ~IHtNodeList() = default;
};

/// A list of nodes: the owning child list of a node, or the result of a query.
///
///   TIntf<IHtNodeList> links = page.XPath(u"//a[@href]", false, nullptr);
///   for (int32_t i = 0; i < links->GetCount(); ++i) links->GetNode(i)->…
///
/// An owning list frees its nodes and keeps their sibling links in step with its order; any other list leaves
/// the nodes alone. A reference-counted list is held through TIntf<IHtNodeList>; the count is thread-safe, the
/// rest belongs to the thread of the tree. Operations that work on every node do so in list order, and those
/// that give the list back give this object, so that calls can be chained. Indexes count from 0; one outside
/// the list raises EListError. An entry may be null only where Parent says so, and the bulk operations are not
/// defined on it.
class THtNodeList final : public THtObjectList, public IHtNodeList {
  HT_CLASS(THtNodeList, THtObjectList)

 public:
  HT_POOLED

  THtNodeList(bool ownsNodes, bool refCounted);
  /// Frees a list that was made by `new` and is not held by references. Raises EInvalidPointer with the class
  /// name, and frees nothing, while it is still referenced.
  void Free();

  // Maintenance. On an owning list each keeps the sibling links of the nodes.

  /// The index of the new entry.
  int32_t Add(THtNode* node);
  void Insert(int32_t index, THtNode* node);
  void Delete(int32_t index);
  void Exchange(int32_t a, int32_t b);
  /// Takes the node out without freeing it, also from an owning list; nothing if it is not in the list.
  void RemoveItem(THtNode* node);
  /// Moves the last node to stand directly before `node`.
  void MoveLastBefore(const THtNode* node);
  /// Moves all entries of another list, of the same ownership, in at `index`; it is left empty.
  void TakeAll(int32_t index, THtNodeList& other);
  /// Relinks the whole chain; for use after entries were moved directly.
  void SetSiblings();

  THtNode* GetNode(int32_t index) const override {
    CheckIndex(index, FCount);
    return begin()[index];
  }
  int32_t GetCount() const override { return FCount; }
  THtNodeListEnumerator GetEnumerator() override { return {-1, this}; }
  /// Null for an empty list.
  THtNode* FirstNode() const override { return FCount ? begin()[0] : nullptr; }
  THtNode* LastNode() const { return FCount ? end()[-1] : nullptr; }
  /// Adds and returns the node.
  THtNode* AddNode(THtNode* node) override;
  /// AddNode as a callback for walks.
  void AddProc(THtNode* node) { Add(node); }

  THtNode* const* begin() const { return reinterpret_cast<THtNode* const*>(FItems); }
  THtNode* const* end() const { return begin() + FCount; }

  // Every node of the list.

  /// Sets the attribute "on" + event.
  THtNodeList& on(const hstring& event, const hstring& script);
  THtNodeList& AddClass(const hstring& name);
  THtNodeList& RemoveClass(const hstring& name);
  THtNodeList& ToggleClass(const hstring& name);
  /// CallScriptFunction(function) on each node.
  THtNodeList& Each(TObject* function);
  THtNodeList& Attribute(const hstring& name, const hstring& value);
  THtNodeList& Style(const hstring& name, const hstring& value);
  void SetAttr(const hstring& name, const hstring& value) override;
  void SetCSS(const hstring& name, const hstring& value) override;
  void SetHTML(const hstring& text) override;
  /// The values of all nodes joined by ","; leading empty ones vanish.
  hstring GetAttr(const hstring& name) const override;
  /// Empty at this level.
  hstring GetCSS(const hstring& name) const override;
  /// The inner HTML of the first node; empty for an empty list.
  hstring GetHTML() const override;
  /// The inner text of all nodes, with nothing between.
  hstring GetText() const override;
  TIntf<IHtNodeList> AddClass2(const hstring& name) override;
  TIntf<IHtNodeList> RemoveClass2(const hstring& name) override;
  TIntf<IHtNodeList> ToggleClass2(const hstring& name) override;

  // Operations that replace the entries, for lists that do not own them.

  /// At most the first, or the last, entry is left.
  THtNodeList& First();
  THtNodeList& Last();
  /// Each entry becomes its parent: null for a root, and the same parent as often as it has entries here.
  THtNodeList& Parent();
  /// The children of all nodes, in order.
  THtNodeList& Children();
  /// A new last child of that tag for each node; the list holds the new nodes.
  THtNodeList& Append(const hstring& tag);
  /// A new text child for each node; the list holds the new nodes.
  void SetText(const hstring& text) override;
  /// From the last to the first, each node is taken out of this list and deleted from its parent.
  void Remove() override;

  /// Sorts by attribute values. `attributes` is a list of names separated by ","; "^" before a name turns its
  /// direction round. Nodes that compare equal may change places.
  void SortbyAttr(const hstring& attributes, THtSortCompareType compareType, bool ascending);
  /// Sorts by `a.ScriptCompare(comparer, b)`. Nodes of one parent change places in the parent too. `flag`
  /// changes nothing in the order.
  void SortElements(TObject* comparer, bool flag);

  int32_t QueryInterface(const TGuid& id, void** result) override;
  /// Both do nothing and return 0 on a list that is not reference counted.
  int32_t _AddRef() override;
  int32_t _Release() override;

 private:
  friend class THtNode;

  // Most elements have no more children than this, and so need no second block.
  static constexpr int32_t kPlaces = 3;

  std::atomic<int32_t> FRefCount{0};
  bool FRefCounted;
  void* FPlaces[kPlaces];

  void Relink(int32_t index);
  int32_t IndexFromEnd(const THtNode* node) const;
  void PutNode(int32_t index, THtNode* node) { FItems[index] = node; }
  template <class TCompare, class TSwap>
  void QuickSort(int32_t low, int32_t high, const TCompare& compare, const TSwap& swap);
  template <class TCompare, class TSwap>
  void SortNodes(const TCompare& compare, const TSwap& swap);
};

}  // namespace ht
