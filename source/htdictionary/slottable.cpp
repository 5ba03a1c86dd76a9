#include "htdictionary/slottable.h"

#include <algorithm>
#include <new>

#if __has_include(<sys/mman.h>)
#include <sys/mman.h>
#endif

namespace ht {

namespace {

constexpr uint32_t kMinSize = 4;
constexpr int32_t kDenseAbove =
    100000;  // above this many entries 87.5 % of the slots are used instead of 75 %

// Large tables ask for huge pages: a random access then misses no page table, and fresh memory comes in a
// hundredth of the page faults, which were a third of the cost of filling a table of a million entries.
void* NewBlock(size_t bytes) {
  void* block = nullptr;
#ifdef MADV_HUGEPAGE
  constexpr size_t kHugePage = size_t{1} << 21;
  if (bytes >= 2 * kHugePage) {
    bytes = (bytes + kHugePage - 1) & ~(kHugePage - 1);
    block = std::aligned_alloc(kHugePage, bytes);
    if (block) madvise(block, bytes, MADV_HUGEPAGE);  // advice: a refusal changes nothing
  } else
#endif
    block = std::malloc(bytes);
  if (!block) throw std::bad_alloc();
  return block;
}

}  // namespace

int32_t THtSlotTable::LimitOf(uint32_t size) const {
  if (size == kMaxSize) return static_cast<int32_t>(size - 1);
  return static_cast<int32_t>(size - (size >> (FCount <= kDenseAbove ? 2 : 3)));
}

uint32_t THtSlotTable::SizeFor(int32_t capacity) const {
  const auto wanted = static_cast<uint32_t>(std::max(capacity, FCount));
  if (wanted > kMaxSize) throw std::bad_alloc();
  const int shift = FCount <= kDenseAbove ? 2 : 3;
  uint32_t size = kMinSize;
  while (wanted >= size - (size >> shift) && size < kMaxSize) size *= 2;
  return size;
}

void THtSlotTable::SetCapacity(int32_t capacity) {
  const uint32_t size = SizeFor(capacity);
  const bool fresh = !FBlock;
  if (fresh || size > GetSize() || (size < GetSize() && FCount == 0)) Rebuild(size);
  if (size == GetSize()) FGrowLimit = LimitOf(size);
}

bool THtSlotTable::Grow() {
  const uint32_t before = GetSize();
  SetCapacity(0);
  if (FCount >= FGrowLimit) throw std::bad_alloc();  // 2^30 - 1 entries
  return GetSize() != before;
}

void THtSlotTable::Rebuild(uint32_t size) {
  std::unique_ptr<void, TFree> block(NewBlock(size * (sizeof(void*) + sizeof(uint32_t))));
  void** values = static_cast<void**>(block.get());
  auto* keys = reinterpret_cast<uint32_t*>(values + size);
  const uint32_t mask = size - 1;
  for (uint32_t slot = 0; slot < size; slot += 4) {  // four at a time: a vector store
    keys[slot] = slot;
    keys[slot + 1] = slot + 1;
    keys[slot + 2] = slot + 2;
    keys[slot + 3] = slot + 3;
  }

  if (FCount > 0) {
    // In probe order, from behind an empty slot, entries come sorted by home and need no shifting.
    uint32_t start = FMask;
    while (IsLive(start)) --start;
    for (uint32_t i = 1; i <= FMask; ++i) {
      const uint32_t from = (start + i) & FMask;
      if (!IsLive(from)) continue;
      uint32_t to = (FKeys[from] + 1) & mask;
      while (keys[to] != to) to = (to + 1) & mask;
      keys[to] = FKeys[from];
      values[to] = FValues[from];
    }
  }

  FBlock = std::move(block);
  FValues = values;
  FKeys = keys;
  FMask = mask;
}

void* THtSlotTable::Remove(int32_t place) {
  auto slot = static_cast<uint32_t>(place);
  void* removed = FValues[slot];
  for (;;) {
    const uint32_t next = (slot + 1) & FMask;
    const uint32_t key = FKeys[next];
    if (Displacement(next, key) < 2) break;
    FKeys[slot] = key;
    FValues[slot] = FValues[next];
    slot = next;
  }
  FKeys[slot] = slot;
  --FCount;
  return removed;
}

}  // namespace ht
