#pragma once

#include <optional>

#include "htdictionary/slottable.h"

namespace ht {

/// A set of 32-bit integers, each with a word that the caller may use.
///
///   TShaIntegerBox colors(256, true);
///   int32_t slot = colors.Add(color);
///   if (slot >= 0) colors.SetValue(slot, index);
///
/// With `mix`, keys are scattered by a reversible function before they are stored: for keys that come in steps of
/// a large power of two, which would all share a home otherwise. Slots are valid until the next change.
class TShaIntegerBox {
 public:
  TShaIntegerBox(int32_t capacity, bool mix) : FSlots(capacity), FMix(mix) {}

  int32_t GetCount() const { return FSlots.GetCount(); }
  /// Fits the box to `capacity` keys; it never shrinks while it has keys. Raises std::bad_alloc above 2^30.
  void SetCapacity(int32_t capacity) { FSlots.SetCapacity(capacity); }
  /// Empties the box and fits it to `capacity`.
  void Clear(int32_t capacity = 0) {
    FSlots.Clear(capacity, [](void*) {});
  }

  /// False, and 0, if the key is absent.
  bool Find(uint32_t key, intptr_t& value) const {
    const int32_t slot = FSlots.Find(Mixed(key));
    value = slot < 0 ? 0 : GetValue(slot);
    return slot >= 0;
  }
  /// The slot of the new key, whose value is 0 until SetValue; the complement of the slot of a key that is there.
  int32_t Add(uint32_t key) {
    FSlots.GrowIfFull();
    const int32_t slot = FSlots.Find(Mixed(key));
    return slot >= 0 ? ~slot : FSlots.Insert(slot, Mixed(key), nullptr);
  }
  /// False if the key is absent.
  bool Remove(uint32_t key) {
    const int32_t slot = FSlots.Find(Mixed(key));
    if (slot >= 0) FSlots.Remove(slot);
    return slot >= 0;
  }

  /// The next key at or behind slot `index`, which moves past it; nothing at the end. In no particular order.
  std::optional<uint32_t> GetNext(int32_t& index) const {
    const int32_t slot = FSlots.NextSlot(index);
    if (slot < 0) return std::nullopt;
    return FMix ? Unmix(FSlots.KeyAt(slot)) : FSlots.KeyAt(slot);
  }

  intptr_t GetValue(int32_t slot) const { return reinterpret_cast<intptr_t>(FSlots.ValueAt(slot)); }
  void SetValue(int32_t slot, intptr_t value) { FSlots.ValueAt(slot) = reinterpret_cast<void*>(value); }

 private:
  uint32_t Mixed(uint32_t key) const { return FMix ? Mix(key) : key; }
  static uint32_t Mix(uint32_t x) {
    x *= 0x560CED27;
    x ^= x >> 16;
    x ^= x >> 8;
    return x * 0x90C03487;
  }
  // The factors are the inverses of Mix's, and one shift by 8 undoes both of its shifts.
  static uint32_t Unmix(uint32_t x) {
    x *= 0xB4BA5137;
    x ^= x >> 8;
    return x * 0x258DB297;
  }

  THtSlotTable FSlots;
  const bool FMix;
};

}  // namespace ht
