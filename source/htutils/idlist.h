#pragma once

#include <vector>

#include "htruntime/object.h"

namespace ht {

/// One entry of a TIDList.
struct TIDItem {
  int32_t FID = 0;
  TObject* FObject = nullptr;
  intptr_t FTag = 0;  // free for the owner of the list
};

/// An ordered list of 32-bit keys, each with an object that it carries: the twin of a string list.
///
///   TIDList list(16);                 // sorted from the start
///   list.AddObject(75, section);      // equal keys keep the order of arrival
///   int32_t index;
///   if (list.Find(75, index)) …       // the first entry with that key
///
/// Indexes count from 0. Objects are freed by FreeObjects only. Raises EStringListError:
///   "SListIndexError" for an index outside the list, and for a negative capacity;
///   "SSortedListError" for Put, Insert and Exchange on a sorted list;
///   "SDuplicateString" for a known key added to a sorted list in duplicates mode 2.
class TIDList : public TObject {
  HT_CLASS(TIDList, TObject)

 public:
  virtual TObject* GetObject(int32_t index) const;
  /// Replaces a key.
  virtual void Put(int32_t index, int32_t id);
  virtual void PutObject(int32_t index, TObject* object);
  /// Entries beyond the capacity are dropped.
  virtual void SetCapacity(int32_t capacity);
  /// An empty list that is sorted.
  explicit TIDList(int32_t capacity) { TIDList::SetCapacity(capacity); }
  /// The index of the new entry: the end of an unsorted list, or behind the equals of a sorted one.
  virtual int32_t Add(int32_t id);
  virtual void Clear();
  virtual void Delete(int32_t index);
  virtual void Exchange(int32_t i, int32_t j);
  /// Bisection in a list sorted by signed keys: true and the first entry of that key, or false and the place for it.
  virtual bool Find(int32_t id, int32_t& index) const;
  /// The same in a list sorted by unsigned keys, as Sort leaves it.
  virtual bool FindCardinal(uint32_t id, int32_t& index) const;
  /// The first entry of that key; -1 if there is none.
  virtual int32_t IndexOf(int32_t id) const;
  /// `index` may be the count.
  virtual void Insert(int32_t index, int32_t id);
  /// Sorts an unsorted list by unsigned keys. Equal keys may change their order.
  virtual void Sort();

  int32_t Get(int32_t index) const;
  int32_t AddObject(int32_t id, TObject* object);
  void InsertObject(int32_t index, int32_t id, TObject* object);
  /// Frees all objects; the keys stay.
  void FreeObjects();
  /// -1 if the list has no such object.
  int32_t IndexOfObject(const TObject* object) const;

  int32_t GetCount() const { return static_cast<int32_t>(FItems.size()); }
  int32_t GetCapacity() const { return static_cast<int32_t>(FItems.capacity()); }
  bool GetSorted() const { return FSorted; }
  /// Setting the flag sorts the list first.
  void SetSorted(bool sorted);
  /// 0 and 1 accept equal keys, 2 refuses them. 0 at the start.
  int32_t GetDuplicates() const { return FDuplicates; }
  void SetDuplicates(int32_t mode) { FDuplicates = mode; }

  /// Free for the owner of the list.
  int32_t Tag = 0;

 private:
  template <class TKey>
  bool Bisect(TKey id, int32_t& index) const;
  void QuickSort(int32_t left, int32_t right);
  void InsertItem(int32_t index, int32_t id);
  void CheckIndex(int32_t index, int32_t limit) const;
  void CheckUnsorted() const;

  std::vector<TIDItem> FItems;
  bool FSorted = true;
  int32_t FDuplicates = 0;
};

}  // namespace ht
