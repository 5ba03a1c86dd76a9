#pragma once

#include <string_view>

#include "htdictionary/fieldoffset.h"
#include "htdictionary/hash.h"
#include "htdictionary/iddictionary.h"

namespace ht {

/// UTF-8 text to pointer, where the text lies in the record that the pointer points to: its bytes at an offset,
/// and their number, 0 to 255, in the one byte before them. Owns nothing.
///
///   struct TWord { float Width; uint8_t Length; char Text[27]; };
///   THtUTF8Dictionary words(1000, HtNameOffset(&TWord::Text));
///   words.Add(&word);
///   TWord* known = words.Get<TWord>("fi");
///
/// The `…Hashed` operations take the hash from the caller, who may reuse it: ShaPerfectHashANSI of the bytes.
class THtUTF8Dictionary : public THtIdPointerDictionary {
  HT_CLASS(THtUTF8Dictionary, THtIdPointerDictionary)

 public:
  THtUTF8Dictionary(int32_t capacity, intptr_t nameOffset)
      : THtIdPointerDictionary(capacity), FNameOffset(nameOffset) {}

  /// The slot of the new entry. A key that is there keeps its item, and the complement of its slot comes back.
  int32_t Add(void* item) { return AddHashed(Hash(KeyOf(item)), item); }
  int32_t AddHashed(uint32_t hash, void* item) {
    FSlots.GrowIfFull();
    return AddAt(FindHashed(hash, KeyOf(item)), hash, item);
  }
  /// Adds the item even if its key is there, behind its equals. Its slot.
  int32_t AddUnique(void* item) {
    const uint32_t hash = Hash(KeyOf(item));
    FSlots.GrowIfFull();
    return FSlots.Insert(FSlots.FindEnd(hash), hash, item);
  }
  /// Add at the complement that FindHashed gave for the key; searches again only when the table has to grow first.
  int32_t AddWithIndex(uint32_t hash, int32_t index, void* item, int32_t length, const char* key) {
    if (FSlots.GrowIfFull()) index = FindHashed(hash, key, length);
    return AddAt(index, hash, item);
  }

  /// Sets `item` to null and is false if the key is absent.
  template <class T>
  bool Find(std::string_view key, T*& item) const {
    return FoundAt(FindHashed(Hash(key), key), item);
  }
  /// The slot, for GetAt, or the complement of the slot where the key belongs.
  int32_t FindHashed(uint32_t hash, std::string_view key) const {
    return FSlots.Find(hash, [this, key](const void* item) { return KeyOf(item) == key; });
  }
  int32_t FindHashed(uint32_t hash, const char* key, int32_t length) const {
    return FindHashed(hash, {key, length > 0 ? static_cast<size_t>(length) : 0});
  }

  /// Adds, or replaces the item of the key.
  void Put(void* item) { PutHashed(Hash(KeyOf(item)), item); }
  void PutHashed(uint32_t hash, void* item) {
    FSlots.GrowIfFull();
    PutAt(FindHashed(hash, KeyOf(item)), hash, item);
  }
  /// Null if the key is absent.
  template <class T = void>
  T* Get(std::string_view key) const {
    return GetHashed<T>(Hash(key), key);
  }
  template <class T = void>
  T* GetHashed(uint32_t hash, std::string_view key) const {
    return GetAt<T>(FindHashed(hash, key));
  }
  /// Calls `callback(data, item)` for every item, in slot order. It must not add or remove entries.
  template <class T = void>
  void Traverse(void* data, void (*callback)(void* data, T* item)) const {
    for (int32_t i = 0, slot; (slot = FSlots.NextSlot(i)) >= 0;) callback(data, GetAt<T>(slot));
  }

 private:
  static uint32_t Hash(std::string_view key) {
    return ShaPerfectHashANSI(key.data(), static_cast<int32_t>(key.size()));
  }
  std::string_view KeyOf(const void* item) const {
    const char* text = static_cast<const char*>(item) + FNameOffset;
    return {text, static_cast<unsigned char>(text[-1])};
  }

  const intptr_t FNameOffset;
};

}  // namespace ht
