#pragma once

#include "htdictionary/stringkeys.h"

namespace ht {

/// Text to pointer, where the text is a field of the record that the pointer points to. Owns nothing.
///
///   struct TEntity { hstring Name; char32_t Value; };
///   THtPointerDictionary entities(2125, HtNameOffset(&TEntity::Name), RSHash);
///   for (TEntity& row : kEntities) entities.AddPointer(&row);
class THtPointerDictionary : public THtStringKeyed<THtIdPointerDictionary, void> {
  HT_CLASS(THtPointerDictionary, THtIdPointerDictionary)

 public:
  /// `nameOffset` is that of an hstring, from HtNameOffset. Without a hash function: ShaPerfectHashAsm.
  explicit THtPointerDictionary(int32_t capacity, intptr_t nameOffset, THtStringHashFunc hash = nullptr)
      : THtPointerDictionary(kkText, capacity, nameOffset, hash) {}

  /// Add with the record's own text.
  int32_t AddPointer(void* item) { return AddItem(item); }

 protected:
  THtPointerDictionary(TKeyKind kind, int32_t capacity, intptr_t nameOffset, THtStringHashFunc hash)
      : THtStringKeyed(kind, nameOffset, hash ? hash : ShaPerfectHashAsm, capacity) {}
};

/// Text to pointer, where the text is a THtTextSlice of the record: a piece of a text that lives elsewhere. No
/// string is ever built.
class THtVirtualStringDictionary : public THtPointerDictionary {
  HT_CLASS(THtVirtualStringDictionary, THtPointerDictionary)

 public:
  /// `nameOffset` is that of the slice's `Chars`: HtSliceOffset(&TRecord::Slice).
  explicit THtVirtualStringDictionary(int32_t capacity, intptr_t nameOffset, THtStringHashFunc hash = nullptr)
      : THtPointerDictionary(kkSlice, capacity, nameOffset, hash) {}

  int32_t FindHashedVirtual(uint32_t hash, const char16_t* chars, int32_t length) const {
    return FindHashed(hash, chars, length);
  }
  /// Puts `item` where FindHashedVirtual said: a slot gets its item replaced, a complement a new entry (searched
  /// again only when the table has to grow first). The slot of the item.
  int32_t AddHashedVirtual(uint32_t hash, int32_t index, void* item) {
    if (FSlots.GrowIfFull()) index = FindHashed(hash, KeyOf(item));
    return PutAt(index, hash, item);
  }
};

/// The NameOffset of a slice in a record.
template <class T, class TSlice>
intptr_t HtSliceOffset(TSlice T::*slice) {
  static_assert(std::is_same_v<std::remove_const_t<TSlice>, THtTextSlice>);
  return HtNameOffset(slice) + static_cast<intptr_t>(offsetof(THtTextSlice, Chars));
}

}  // namespace ht
