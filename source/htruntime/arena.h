#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace ht {

/// Memory for the many small objects that one parse makes: they are cut from a few large blocks, one behind the
/// other, and a block is released when the last object in it is freed.
///
///   THtArena arena(expectedBytes);           // in force on this thread until it is destroyed
///   auto* node = new THtmlNode;              // classes that use HtPoolAllocate take their memory from it
///   …
///   delete node;                             // any time later, on any thread
///
/// Objects outlive the arena. Without an arena in force HtPoolAllocate is malloc. Arenas nest; they are destroyed in
/// the reverse order of their creation, on the thread that made them. An object that outlives the rest of its parse
/// keeps its block; that is why texts, which are often kept, are not taken from here.
class THtArena {
 public:
  explicit THtArena(size_t expectedBytes);
  ~THtArena();
  THtArena(const THtArena&) = delete;
  THtArena& operator=(const THtArena&) = delete;

 private:
  friend void* HtPoolAllocate(size_t bytes);
  friend void HtPoolFree(void* object) noexcept;

  struct TBlock {
    std::atomic<int64_t> Living;  // objects, and the arena's own reserve while it fills the block
    size_t Mapped;                // bytes mapped, 0 for a block from malloc
  };

  void* Allocate(size_t bytes);
  void* AllocateInNewBlock(size_t bytes);
  void CloseBlock() noexcept;
  static TBlock* NewBlock(size_t bytes);
  static void Release(TBlock* block, int64_t objects) noexcept;

  static thread_local THtArena* FCurrent;

  char* FNext = nullptr;
  char* FEnd = nullptr;
  TBlock* FBlock = nullptr;
  int64_t FObjects = 0;  // allocated in FBlock
  size_t FBlockSize;
  THtArena* FOuter;
};

/// Memory for an object of a class that lives in trees, aligned to 16 bytes. Raises std::bad_alloc.
void* HtPoolAllocate(size_t bytes);
/// Frees what HtPoolAllocate gave; null does nothing. Any thread.
void HtPoolFree(void* object) noexcept;

/// HtPoolAllocate for the containers of such classes.
template <class T>
struct THtPoolAllocator {
  using value_type = T;

  THtPoolAllocator() = default;
  template <class U>
  THtPoolAllocator(const THtPoolAllocator<U>&) {}
  T* allocate(size_t count) { return static_cast<T*>(HtPoolAllocate(count * sizeof(T))); }
  void deallocate(T* items, size_t) noexcept { HtPoolFree(items); }
  friend bool operator==(const THtPoolAllocator&, const THtPoolAllocator&) { return true; }
};

/// Stands in a class whose instances, and those of its descendants, come from HtPoolAllocate.
#define HT_POOLED                                                                     \
  static void* operator new(size_t bytes) { return ::ht::HtPoolAllocate(bytes); }     \
  static void* operator new(size_t, void* place) noexcept { return place; }           \
  static void operator delete(void* object) noexcept { ::ht::HtPoolFree(object); }

}  // namespace ht
