#include "htruntime/arena.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace ht {

namespace {

constexpr size_t kAlign = 16;
constexpr size_t kSmallestBlock = 2048;
constexpr size_t kHugePage = size_t{2} << 20;
constexpr size_t kLongestText = 128;  // in units; a longer one has a heap block of its own
constexpr int64_t kReserve = int64_t{1} << 40;

// With a sanitizer each object stands alone, so that it is seen where the object ends and when it dies.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSeparate = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kSeparate = true;
#else
constexpr bool kSeparate = false;
#endif
#else
constexpr bool kSeparate = false;
#endif

constexpr size_t TextBlockFor(size_t expectedBytes) {
  return std::bit_ceil(std::clamp<size_t>(expectedBytes / 2048, 1024, 65536));
}

constexpr size_t RoundUp(size_t bytes, size_t to) { return (bytes + to - 1) / to * to; }

// The last few large blocks that were released wait here for the next parse: 8 MB at most.
std::array<std::atomic<void*>, 4> gSpareBlocks;

void* TakeSpareBlock() noexcept {
  for (std::atomic<void*>& spare : gSpareBlocks)
    if (void* block = spare.exchange(nullptr, std::memory_order_acquire)) return block;
  return nullptr;
}

bool KeepSpareBlock(void* block) noexcept {
  for (std::atomic<void*>& spare : gSpareBlocks) {
    void* none = nullptr;
    if (spare.compare_exchange_strong(none, block, std::memory_order_release, std::memory_order_relaxed))
      return true;
  }
  return false;
}

// Fresh pages cost more than what is written into them, so a large block is one huge page where the system has them,
// and few are given back to the system.
void* MapHugePage() {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
  if (void* spare = TakeSpareBlock()) return spare;
  void* area = mmap(nullptr, 2 * kHugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (area == MAP_FAILED) return nullptr;
  auto* start = static_cast<char*>(area);
  char* page = start + (kHugePage - reinterpret_cast<uintptr_t>(start) % kHugePage) % kHugePage;
  if (page > start) munmap(start, static_cast<size_t>(page - start));
  munmap(page + kHugePage, static_cast<size_t>(start + kHugePage - page));
  madvise(page, kHugePage, MADV_HUGEPAGE);
  return page;
#else
  return nullptr;
#endif
}

}  // namespace

THtBlockChain::THtBlockChain(size_t firstBlock, size_t largestBlock, size_t alignment)
    : FAlignment(alignment), FBlockSize(firstBlock), FLargestBlock(largestBlock) {}

THtBlockChain::TBlock* THtBlockChain::NewBlock(size_t bytes) {
  if (bytes == kHugePage)
    if (void* page = MapHugePage()) return new (page) TBlock{{kReserve}, kHugePage};
  void* memory = std::malloc(bytes);
  if (!memory) throw std::bad_alloc();
  return new (memory) TBlock{{kReserve}, 0};
}

void THtBlockChain::Release(TBlock* block, int64_t objects) noexcept {
  if (HT_SINGLE_THREADED) {
    const int64_t left = block->Living.load(std::memory_order_relaxed) - objects;
    block->Living.store(left, std::memory_order_relaxed);
    if (left > 0) return;
  } else if (block->Living.fetch_sub(objects, std::memory_order_acq_rel) > objects) {
    return;
  }
#if defined(__linux__)
  if (const size_t mapped = block->Mapped) {
    if (!KeepSpareBlock(block)) munmap(static_cast<void*>(block), mapped);
    return;
  }
#endif
  std::free(static_cast<void*>(block));
}

// The reserve stands for all objects that the block may still get, so that cutting one off counts nothing shared.
void THtBlockChain::CloseBlock() noexcept {
  if (FBlock) Release(FBlock, kReserve - FObjects);
  FBlock = nullptr;
  FNext = FEnd = nullptr;
}

void* THtBlockChain::AllocateInNewBlock(size_t bytes) {
  const size_t start = RoundUp(sizeof(TBlock) + kHeader, FAlignment) - kHeader;
  const size_t size = std::max(FBlockSize, start + RoundUp(kHeader + bytes, FAlignment));
  CloseBlock();
  FBlock = NewBlock(size);
  FObjects = 0;
  FNext = reinterpret_cast<char*>(FBlock) + start;
  FEnd = reinterpret_cast<char*>(FBlock) + size;
  FBlockSize = std::min(FBlockSize * 2, FLargestBlock);
  return Allocate(bytes);
}

constinit thread_local THtArena* THtArena::FCurrent = nullptr;

THtArena::THtArena(size_t expectedBytes)
    : FObjects(std::clamp(RoundUp(expectedBytes, kSmallestBlock), kSmallestBlock, kHugePage), kHugePage,
               kAlign),
      FTexts(TextBlockFor(expectedBytes), TextBlockFor(expectedBytes), alignof(THtStringHeader*)),
      FOuter(FCurrent) {
  if (!kSeparate) FCurrent = this;
}

hstring THtArena::NewText(std::u16string_view text) {
  if (text.empty() || text.size() > kLongestText || kSeparate) return text;
  return hstring::InPool(FTexts.Allocate(hstring::BytesFor(text.size())), text);
}

hstring HtPoolText(std::u16string_view text) {
  return THtArena::FCurrent ? THtArena::FCurrent->NewText(text) : hstring(text);
}

void* detail::HeapAllocate(size_t bytes) {
  auto* memory = static_cast<char*>(std::malloc(kAlign + bytes));
  if (!memory) throw std::bad_alloc();
  void* object = memory + kAlign;
  static_cast<void**>(object)[-1] = nullptr;
  return object;
}

void HtPoolFree(void* object) noexcept {
  if (!object) return;
  if (static_cast<void**>(object)[-1])
    THtBlockChain::Free(object);
  else
    std::free(static_cast<char*>(object) - kAlign);
}

}  // namespace ht
