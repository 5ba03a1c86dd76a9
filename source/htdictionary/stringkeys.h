#pragma once

#include <cstring>
#include <string_view>

#include "htdictionary/fieldoffset.h"
#include "htdictionary/hash.h"
#include "htdictionary/iddictionary.h"

namespace ht {

/// A key that is a piece of a larger text, as it lies in an item of a THtVirtualStringDictionary.
struct THtTextSlice {
  intptr_t Length = 0;
  const char16_t* Chars = nullptr;

  std::u16string_view View() const { return {Chars, static_cast<size_t>(Length)}; }
};

/// The operations of the dictionaries whose key is a text inside the item: no copy of it is kept, and the item
/// must not change it while it is in the dictionary. A text given beside an item must equal the item's own.
/// Items are never null.
///
/// The `…Hashed` operations take the hash from the caller, who may reuse it; it must be what Hash() gives.
/// No search allocates.
template <class TBase, class TItem>
class THtStringKeyed : public TBase {
 public:
  template <class T>
  static constexpr bool kHolds = TBase::template kHolds<T>;

  uint32_t Hash(std::u16string_view text) const {
    return FHash(text.data(), static_cast<int32_t>(text.size()));
  }

  /// Sets `item` to null and is false if the text is absent.
  template <class T>
    requires kHolds<T>
  bool Find(std::u16string_view text, T*& item) const {
    return this->FoundAt(FindHashed(Hash(text), text), item);
  }
  template <class T>
    requires kHolds<T>
  bool Find(const char16_t* chars, int32_t length, T*& item) const { return Find(View(chars, length), item); }
  /// The slot, for GetAt, or the complement of the slot where the text belongs.
  int32_t FindHashed(uint32_t hash, std::u16string_view text) const {
    return this->FSlots.Find(hash, [this, text](const void* item) { return Same(KeyOf(item), text); });
  }
  int32_t FindHashed(uint32_t hash, const char16_t* chars, int32_t length) const {
    return FindHashed(hash, View(chars, length));
  }

  /// The slot of the new entry. A text that is there keeps its item, and the complement of its slot comes back.
  int32_t Add(std::u16string_view text, TItem* item) { return AddHashed(Hash(text), text, item); }
  int32_t AddHashed(uint32_t hash, std::u16string_view text, TItem* item) {
    this->FSlots.GrowIfFull();
    return this->AddAt(FindHashed(hash, text), hash, item);
  }
  /// Adds, or replaces the item of the text.
  void Put(std::u16string_view text, TItem* item) { PutHashed(Hash(text), text, item); }
  void PutHashed(uint32_t hash, std::u16string_view text, TItem* item) {
    this->FSlots.GrowIfFull();
    this->PutAt(FindHashed(hash, text), hash, item);
  }
  /// Null if the text is absent.
  template <class T = TItem>
  requires kHolds<T> T* Get(std::u16string_view text) const { return GetHashed<T>(Hash(text), text); }
  template <class T = TItem>
  requires kHolds<T> T* GetHashed(uint32_t hash, std::u16string_view text) const {
    return this->template GetAt<T>(FindHashed(hash, text));
  }
  bool ContainsKey(std::u16string_view text) const { return FindHashed(Hash(text), text) >= 0; }
  /// Takes the item out without freeing it; null if the text is absent.
  TItem* Extract(std::u16string_view text) { return ExtractHashed(Hash(text), text); }
  TItem* ExtractHashed(uint32_t hash, std::u16string_view text) {
    return this->ExtractAt(FindHashed(hash, text));
  }
  /// Takes the item out, and frees it if the dictionary owns its items. False if the text is absent.
  bool Remove(std::u16string_view text) { return RemoveHashed(Hash(text), text); }
  bool RemoveHashed(uint32_t hash, std::u16string_view text) {
    return this->RemoveAt(FindHashed(hash, text));
  }

  /// Calls `callback(data, item)` for every item, in slot order. It must not add or remove entries.
  template <class T = TItem>
  void Traverse(void* data, void (*callback)(void* data, T* item)) const {
    for (int32_t i = 0, slot; (slot = this->FSlots.NextSlot(i)) >= 0;)
      callback(data, this->template GetAt<T>(slot));
  }

 protected:
  // What lies at NameOffset: an hstring, or the Chars of a THtTextSlice.
  enum TKeyKind : uint8_t { kkText, kkSlice };

  template <class... TArgs>
  THtStringKeyed(TKeyKind kind, intptr_t nameOffset, THtStringHashFunc hash, TArgs... args)
      : TBase(args...), FHash(hash), FNameOffset(nameOffset), FKind(kind) {}

  std::u16string_view KeyOf(const void* item) const {
    const auto* field = static_cast<const std::byte*>(item) + FNameOffset;
    if (FKind == kkText) return reinterpret_cast<const hstring*>(field)->View();
    return reinterpret_cast<const THtTextSlice*>(field - offsetof(THtTextSlice, Chars))->View();
  }
  int32_t AddItem(TItem* item) { return Add(KeyOf(item), item); }
  /// Add of what `make()` gives, which is called only when the text is absent.
  template <class TMake>
  int32_t AddNew(std::u16string_view text, TMake make) {
    this->FSlots.GrowIfFull();
    const uint32_t hash = Hash(text);
    const int32_t place = FindHashed(hash, text);
    if (place >= 0) return ~place;
    TItem* item = make();
    return this->FSlots.Insert(place, hash, item);
  }

 private:
  static std::u16string_view View(const char16_t* chars, int32_t length) {
    return {chars, length > 0 ? static_cast<size_t>(length) : 0};
  }
  // Interned names share their storage, so the pointers tell most of the time.
  static bool Same(std::u16string_view a, std::u16string_view b) {
    if (a.size() != b.size()) return false;
    return a.data() == b.data() || a.empty() ||
           std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0;
  }

  const THtStringHashFunc FHash;
  const intptr_t FNameOffset;
  const TKeyKind FKind;
};

}  // namespace ht
