#pragma once

#include "htdictionary/iddictionary.h"

namespace ht {

using THtVirtualHashFunc = uint32_t (*)(const void* item);
using THtVirtualCompareFunc = bool (*)(const void* a, const void* b);

/// A set of pointers whose keys are whatever two callbacks say: one hashes an item, one tells whether two items
/// of equal hash are the same. Owns nothing.
///
///   THtVirtualDictionary points(HashOfPoint, SamePoint);
///   points.Add(&point);
///   void* known = points.GetAt(points.Find(&sample));   // null if absent
class THtVirtualDictionary : public THtIdPointerDictionary {
  HT_CLASS(THtVirtualDictionary, THtIdPointerDictionary)

 public:
  THtVirtualDictionary(THtVirtualHashFunc hash, THtVirtualCompareFunc same)
      : THtIdPointerDictionary(0), FHash(hash), FSame(same) {}

  /// The slot of the new entry. An item that is there stays, and the complement of its slot comes back.
  int32_t Add(void* item) {
    const uint32_t hash = FHash(item);
    FSlots.GrowIfFull();
    return AddAt(FindHashed(hash, item), hash, item);
  }
  /// The slot of the same item, or the complement of the slot where it belongs.
  int32_t Find(const void* item) const { return FindHashed(FHash(item), item); }
  /// The same with the hash that the callback would give.
  int32_t FindHashed(uint32_t hash, const void* item) const {
    return FSlots.Find(hash, [this, item](const void* other) { return FSame(other, item); });
  }

 private:
  const THtVirtualHashFunc FHash;
  const THtVirtualCompareFunc FSame;
};

}  // namespace ht
