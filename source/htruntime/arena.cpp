#include "htruntime/arena.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif
#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

namespace ht {

namespace {

constexpr size_t kAlign = 16;
constexpr size_t kHeader = 8;  // the block of an object, or null, stands right before it
constexpr size_t kMinBlock = 2048;
constexpr size_t kHugePage = size_t{2} << 20;
constexpr int64_t kReserve = int64_t{1} << 40;

// Each object on its own, so that the sanitizer sees where it ends and when it dies.
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

constexpr size_t RoundUp(size_t bytes, size_t to) { return (bytes + to - 1) / to * to; }

template <class T>
T*& HeaderOf(void* object) {
  return static_cast<T**>(object)[-1];
}

// Fresh pages cost more than what is written into them, so a large block is one huge page where the system has them.
void* MapHugePage() {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
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

thread_local THtArena* THtArena::FCurrent = nullptr;

THtArena::THtArena(size_t expectedBytes)
    : FBlockSize(std::clamp(RoundUp(expectedBytes, kMinBlock), kMinBlock, kHugePage)), FOuter(FCurrent) {
  FCurrent = this;
}

THtArena::~THtArena() {
  CloseBlock();
  FCurrent = FOuter;
}

THtArena::TBlock* THtArena::NewBlock(size_t bytes) {
  if (bytes == kHugePage)
    if (void* page = MapHugePage()) return new (page) TBlock{{kReserve}, kHugePage};
  void* memory = std::malloc(bytes);
  if (!memory) throw std::bad_alloc();
  return new (memory) TBlock{{kReserve}, 0};
}

void THtArena::Release(TBlock* block, int64_t objects) noexcept {
#if __has_include(<sys/single_threaded.h>)
  if (__libc_single_threaded) {
    const int64_t left = block->Living.load(std::memory_order_relaxed) - objects;
    block->Living.store(left, std::memory_order_relaxed);
    if (left > 0) return;
  } else
#endif
      if (block->Living.fetch_sub(objects, std::memory_order_acq_rel) > objects)
    return;
#if defined(__linux__)
  if (block->Mapped) {
    munmap(static_cast<void*>(block), block->Mapped);
    return;
  }
#endif
  std::free(static_cast<void*>(block));
}

// The reserve stands for all objects that the block may still get, so that cutting one off counts nothing shared.
void THtArena::CloseBlock() noexcept {
  if (FBlock) Release(FBlock, kReserve - FObjects);
  FBlock = nullptr;
}

void* THtArena::AllocateInNewBlock(size_t bytes) {
  constexpr size_t kStart = RoundUp(sizeof(TBlock) + kHeader, kAlign) - kHeader;
  const size_t size = std::max(FBlockSize, kStart + RoundUp(kHeader + bytes, kAlign));
  CloseBlock();
  FNext = FEnd = nullptr;
  FBlock = NewBlock(size);
  FObjects = 0;
  FNext = reinterpret_cast<char*>(FBlock) + kStart;
  FEnd = reinterpret_cast<char*>(FBlock) + size;
  FBlockSize = std::min(FBlockSize * 2, kHugePage);
  return Allocate(bytes);
}

void* THtArena::Allocate(size_t bytes) {
  const size_t taken = RoundUp(kHeader + bytes, kAlign);
  if (static_cast<size_t>(FEnd - FNext) < taken) return AllocateInNewBlock(bytes);
  void* object = FNext + kHeader;
  HeaderOf<TBlock>(object) = FBlock;
  FNext += taken;
  ++FObjects;
  return object;
}

void* HtPoolAllocate(size_t bytes) {
  THtArena* arena = THtArena::FCurrent;
  if (arena && !kSeparate && bytes <= kHugePage / 8) return arena->Allocate(bytes);
  auto* memory = static_cast<char*>(std::malloc(kAlign + bytes));
  if (!memory) throw std::bad_alloc();
  void* object = memory + kAlign;
  HeaderOf<THtArena::TBlock>(object) = nullptr;
  return object;
}

void HtPoolFree(void* object) noexcept {
  if (!object) return;
  if (THtArena::TBlock* block = HeaderOf<THtArena::TBlock>(object))
    THtArena::Release(block, 1);
  else
    std::free(static_cast<char*>(object) - kAlign);
}

}  // namespace ht
