#pragma once

#include <concepts>
#include <type_traits>

#include "htdictionary/slottable.h"
#include "htruntime/object.h"

namespace ht {

/// What the two dictionaries with integer keys share, and all others build on. TItem is TObject, or void for
/// pointers of any kind. Keys are used as hashes as they are.
///
/// Any number of threads may read a dictionary that no thread changes.
template <class TItem>
class THtIdDictionary : public TObject {
 public:
  /// A type that results may be asked as; that the dictionary holds such items is the caller's word.
  template <class T>
  static constexpr bool kHolds = std::is_void_v<TItem> || std::derived_from<T, TObject>;

  ~THtIdDictionary() override { DisposeAll(); }

  int32_t GetCount() const { return FSlots.GetCount(); }
  /// Fits the table to `capacity` entries; it never shrinks while it has entries. Raises std::bad_alloc above 2^30.
  void SetCapacity(int32_t capacity) { FSlots.SetCapacity(capacity); }
  /// Empties the dictionary and fits the table to `capacity`.
  void Clear(int32_t capacity = 0) {
    FSlots.Clear(capacity, [this](void* item) { Dispose(item); });
  }

  /// The slot of the new entry. A key that is there keeps its item, and the complement of its slot comes back.
  int32_t Add(uint32_t key, TItem* item) {
    FSlots.GrowIfFull();
    return AddAt(FSlots.Find(key), key, item);
  }
  /// Adds, or replaces the item of the key.
  void Put(uint32_t key, TItem* item) {
    FSlots.GrowIfFull();
    PutAt(FSlots.Find(key), key, item);
  }
  /// Null if the key is absent.
  template <class T = TItem>
  requires kHolds<T> T* Get(uint32_t key) const { return GetAt<T>(FSlots.Find(key)); }
  /// Sets `item` to null and is false if the key is absent.
  template <class T>
    requires kHolds<T>
  bool TryGetValue(uint32_t key, T*& item) const { return FoundAt(FSlots.Find(key), item); }
  bool ContainsKey(uint32_t key) const { return FSlots.Find(key) >= 0; }
  /// Takes the item out without freeing it; null if the key is absent.
  TItem* Extract(uint32_t key) { return ExtractAt(FSlots.Find(key)); }
  /// Takes the item out, and frees it if the dictionary owns its items. False if the key is absent.
  bool Remove(uint32_t key) { return RemoveAt(FSlots.Find(key)); }

  /// The next item at or behind slot `index`, which moves past it; null at the end. In no particular order:
  ///
  ///   for (int32_t i = 0; TObject* item = dictionary.GetNext(i);) …
  template <class T = TItem>
  requires kHolds<T> T* GetNext(int32_t& index) const { return GetAt<T>(FSlots.NextSlot(index)); }
  /// The item in a slot that a search has found; null for a negative slot.
  template <class T = TItem>
  requires kHolds<T> T* GetAt(int32_t slot) const { return slot < 0 ? nullptr : static_cast<T*>(Item(slot)); }

 protected:
  THtIdDictionary(int32_t capacity, bool ownsItems) : FSlots(capacity), FOwnsItems(ownsItems) {}

  // The second half of each operation, from the result of a search.

  int32_t AddAt(int32_t slot, uint32_t hash, TItem* item) {
    return slot >= 0 ? ~slot : FSlots.Insert(slot, hash, item);
  }
  int32_t PutAt(int32_t slot, uint32_t hash, TItem* item) {
    if (slot < 0) return FSlots.Insert(slot, hash, item);
    void* old = FSlots.ValueAt(slot);
    FSlots.ValueAt(slot) = item;
    if (old != item) Dispose(old);
    return slot;
  }
  template <class T>
  bool FoundAt(int32_t slot, T*& item) const {
    item = GetAt<T>(slot);
    return slot >= 0;
  }
  TItem* ExtractAt(int32_t slot) { return slot < 0 ? nullptr : static_cast<TItem*>(FSlots.Remove(slot)); }
  bool RemoveAt(int32_t slot) {
    if (slot < 0) return false;
    Dispose(FSlots.Remove(slot));
    return true;
  }
  TItem* Item(int32_t slot) const { return static_cast<TItem*>(FSlots.ValueAt(slot)); }

  THtSlotTable FSlots;
  const bool FOwnsItems;

 private:
  void Dispose([[maybe_unused]] void* item) const {
    if constexpr (!std::is_void_v<TItem>)
      if (FOwnsItems) delete static_cast<TItem*>(item);
  }
  void DisposeAll() {
    if (!FOwnsItems || GetCount() == 0) return;
    for (int32_t i = 0, slot; (slot = FSlots.NextSlot(i)) >= 0;) Dispose(FSlots.ValueAt(slot));
  }
};

/// Integer key to object. Frees its objects only when created as owning.
///
///   THtIdObjectDictionary glyphs(255, true);
///   glyphs.Add(id, new TGlyph(id));
///   TGlyph* glyph = glyphs.Get<TGlyph>(id);
class THtIdObjectDictionary : public THtIdDictionary<TObject> {
  HT_CLASS(THtIdObjectDictionary, TObject)

 public:
  /// `capacity` entries fit before the table grows.
  THtIdObjectDictionary(int32_t capacity, bool ownsObjects) : THtIdDictionary(capacity, ownsObjects) {}

  bool GetOwnsObjects() const { return FOwnsItems; }
};

/// Integer key to pointer. Owns nothing.
class THtIdPointerDictionary : public THtIdDictionary<void> {
  HT_CLASS(THtIdPointerDictionary, TObject)

 public:
  explicit THtIdPointerDictionary(int32_t capacity) : THtIdDictionary(capacity, false) {}
};

}  // namespace ht
