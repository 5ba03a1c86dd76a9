#pragma once

#include <functional>
#include <utility>

#include "htruntime/object.h"

namespace ht {

/// The ordered list of pointers that the object and node lists build on. Indexes count from 0; an index
/// outside the list raises EListError "List index out of bounds (%d)". Owns nothing itself.
class TList : public TObject {
  HT_CLASS(TList, TObject)

 public:
  TList() = default;
  ~TList() override;

  int32_t GetCount() const { return FCount; }
  int32_t GetCapacity() const { return FCapacity; }
  /// Shortening drops entries from the end without a notification.
  void SetCapacity(int32_t capacity);

  void* Get(int32_t index) const {
    CheckIndex(index, FCount);
    return FItems[index];
  }
  /// Replaces an entry; the old one is reported as deleted when it differs.
  void Put(int32_t index, void* item);
  /// Returns the index of the new entry.
  int32_t Add(void* item);
  /// `index` may be the count.
  void Insert(int32_t index, void* item);
  void Delete(int32_t index);
  /// Removes the first entry equal to `item`; its former index, or -1.
  int32_t Remove(void* item);
  /// As Remove, but reported as extracted, so that an owning list does not free it. Null if absent.
  void* Extract(void* item);
  void Exchange(int32_t a, int32_t b);
  void Move(int32_t from, int32_t to);
  int32_t IndexOf(const void* item) const;
  virtual void Clear();
  /// Null for an empty list.
  void* FirstItem() const { return FCount ? FItems[0] : nullptr; }
  void* LastItem() const { return FCount ? FItems[FCount - 1] : nullptr; }
  /// Sorts by a comparison that gives below 0, 0 or above 0. Equal entries keep their order.
  void Sort(const std::function<int(void*, void*)>& compare);

  /// The entries as they lie in memory; valid until the list changes.
  void* const* Items() const { return FItems; }

 protected:
  /// For a list with room for its first entries in itself: `place` lives as long as the list.
  TList(void** place, int32_t capacity) : FItems(place), FCapacity(capacity), FInPlace(true) {}

  enum TAction { laAdded, laExtracted, laDeleted };

  /// Told of every entry that comes or goes.
  virtual void Notify(void* item, TAction action);

  static void CheckIndex(int32_t index, int32_t limit) {
    if (static_cast<uint32_t>(index) >= static_cast<uint32_t>(limit)) RaiseIndex(index);
  }
  [[noreturn]] static void RaiseIndex(int32_t index);
  /// Room for one more entry: 4 at first, doubling up to 16, then by a quarter.
  void Grow();
  /// List steps without a notification, for lists that do their own bookkeeping.
  void RawInsert(int32_t index, void* item);
  void RawDelete(int32_t index);

  void** FItems = nullptr;
  int32_t FCount = 0;
  int32_t FCapacity = 0;

 private:
  bool FInPlace = false;  // FItems is not from the heap
};

}  // namespace ht
