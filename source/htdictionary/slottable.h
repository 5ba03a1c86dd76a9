#pragma once

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <memory>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace ht {

/// The open-addressed table that every dictionary of the library stands on: Robin Hood hashing (Pedro Celis,
/// 1986) with linear probing, without tombstones and without a state word a slot.
///
/// An entry is a 32-bit hash and a pointer. The home of hash h is slot h + 1, masked. The displacement of slot s
/// is (s - key) & mask: 1 at home, one more for each slot beyond it. An empty slot holds its own index as key,
/// which makes its displacement 0 and cannot be mistaken for an entry, since no entry is ever at distance 0.
/// Along a run the entries stay ordered by home, so a search ends at the first entry closer to home than itself.
///
/// Searches give a slot (>= 0), or the complement of the slot where the entry belongs (< 0). Slots are valid
/// until the next insertion, removal or growth. Searching writes nothing, so a table that no longer changes may
/// be searched from any thread.
///
/// Keys and pointers lie in two arrays: probing touches 4 bytes a slot, a third of an interleaved layout, and the
/// load of the pointer does not wait for the key (measured twice as quick at a million entries).
class THtSlotTable {
 public:
  static constexpr uint32_t kMaxSize = uint32_t{1} << 30;

  /// Raises std::bad_alloc for a capacity above 2^30, as SetCapacity and Clear do.
  explicit THtSlotTable(int32_t capacity) { SetCapacity(capacity); }
  THtSlotTable(const THtSlotTable&) = delete;
  THtSlotTable& operator=(const THtSlotTable&) = delete;

  int32_t GetCount() const { return FCount; }
  /// The number of slots: a power of two, 4 to 2^30.
  uint32_t GetSize() const { return FMask + 1; }
  /// The table grows before an insertion that meets this count.
  int32_t GetGrowLimit() const { return FGrowLimit; }
  bool IsLive(uint32_t slot) const { return FKeys[slot] != slot; }
  uint32_t KeyAt(int32_t slot) const { return FKeys[slot]; }
  void*& ValueAt(int32_t slot) { return FValues[slot]; }
  void* ValueAt(int32_t slot) const { return FValues[slot]; }

  int32_t Find(uint32_t hash) const {
    return Find(hash, [](const void*) { return true; });
  }

  /// `matches(value)` tells entries of equal hash apart.
  template <class TMatches>
  int32_t Find(uint32_t hash, const TMatches& matches) const {
    uint32_t slot = (hash + 1) & FMask;
#ifdef __SSE2__
    // Most entries are at home. Taken by guess, this branch lets the load of the pointer go ahead of the key's.
    if (FKeys[slot] == hash && matches(FValues[slot])) [[likely]]
      return static_cast<int32_t>(slot);
    // Then four slots a step: how far a search goes is chance, and a loop that ends by chance costs a missed branch.
    const __m128i hashes = _mm_set1_epi32(static_cast<int32_t>(hash));
    const __m128i homes = _mm_set1_epi32(static_cast<int32_t>(hash + 1));
    const __m128i masks = _mm_set1_epi32(static_cast<int32_t>(FMask));
    __m128i distances = _mm_setr_epi32(1, 2, 3, 4);
    for (; slot + 4 <= FMask; slot += 4) {
      const __m128i keys = _mm_loadu_si128(reinterpret_cast<const __m128i*>(FKeys + slot));
      for (uint32_t found = Lanes(_mm_cmpeq_epi32(keys, hashes)); found; found &= found - 1) {
        const uint32_t at = slot + static_cast<uint32_t>(std::countr_zero(found));
        if (matches(FValues[at])) return static_cast<int32_t>(at);
      }
      // An entry is closer to home when its home lies 1 to `distance` slots behind ours.
      const __m128i behind = _mm_and_si128(_mm_sub_epi32(keys, homes), masks);
      const uint32_t closer = Lanes(_mm_cmpgt_epi32(distances, behind));
      if (closer) return ~static_cast<int32_t>(slot + static_cast<uint32_t>(std::countr_zero(closer)));
      distances = _mm_add_epi32(distances, _mm_set1_epi32(4));
    }
#endif
    for (uint32_t distance = (slot - hash) & FMask;; ++distance) {
      const uint32_t key = FKeys[slot];
      // The slot whose index is the hash itself is reached last; it can only be empty, whatever its key says.
      if (key == hash && distance <= FMask && matches(FValues[slot])) return static_cast<int32_t>(slot);
      if (distance > Displacement(slot, key)) return ~static_cast<int32_t>(slot);
      slot = (slot + 1) & FMask;
    }
  }

  /// The complement of the slot behind all entries of this hash.
  int32_t FindEnd(uint32_t hash) const {
    return Find(hash, [](const void*) { return false; });
  }

  /// Makes room for one more entry if the count has met the limit; true when slots have moved. To be called
  /// before the search for the place of an insertion.
  bool GrowIfFull() { return FCount >= FGrowLimit && Grow(); }

  /// Puts a new entry at the complement of `place`, as a search gave it, and returns its slot. The run from
  /// there to the next empty slot moves on by one.
  int32_t Insert(int32_t place, uint32_t hash, void* value) {
    ++FCount;
    ShiftPointerItems(static_cast<uint32_t>(~place), hash, value);
    return ~place;
  }

  /// Takes an entry out, moves the rest of its run back by one, and returns the pointer.
  void* Remove(int32_t slot);

  /// Fits the table to max(capacity, count) entries. A table with entries never shrinks.
  void SetCapacity(int32_t capacity);

  /// Empties the table, handing each pointer to `dispose`, and fits it to `capacity`.
  template <class TDispose>
  void Clear(int32_t capacity, TDispose dispose) {
    for (uint32_t slot = 0; FCount > 0; ++slot) {
      if (!IsLive(slot)) continue;
      FKeys[slot] = slot;
      --FCount;
      dispose(FValues[slot]);
    }
    SetCapacity(capacity);
  }

  /// The first entry at or after slot `index`, which moves past it; -1 at the end.
  int32_t NextSlot(int32_t& index) const {
    while (static_cast<uint32_t>(index) <= FMask) {
      const int32_t slot = index++;
      if (IsLive(static_cast<uint32_t>(slot))) return slot;
    }
    return -1;
  }

 private:
  struct TFree {
    void operator()(void* block) const { std::free(block); }
  };

#ifdef __SSE2__
  static uint32_t Lanes(__m128i bits) {
    return static_cast<uint32_t>(_mm_movemask_ps(_mm_castsi128_ps(bits)));
  }
#endif
  uint32_t Displacement(uint32_t slot, uint32_t key) const { return (slot - key) & FMask; }

  // Carries the entry along: each slot takes what the one before it held, up to the first empty one.
  void ShiftPointerItems(uint32_t slot, uint32_t key, void* value) {
    uint32_t next;
    while ((next = FKeys[slot]) != slot) {
      void* nextValue = FValues[slot];
      FKeys[slot] = key;
      FValues[slot] = value;
      key = next;
      value = nextValue;
      slot = (slot + 1) & FMask;
    }
    FKeys[slot] = key;
    FValues[slot] = value;
  }

  int32_t LimitOf(uint32_t size) const;
  uint32_t SizeFor(int32_t capacity) const;
  bool Grow();
  void Rebuild(uint32_t size);

  std::unique_ptr<void, TFree> FBlock;  // the pointers, then the keys
  void** FValues = nullptr;
  uint32_t* FKeys = nullptr;
  int32_t FCount = 0;
  int32_t FGrowLimit = 0;
  uint32_t FMask = 0;
};

}  // namespace ht
