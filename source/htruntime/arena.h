#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "htruntime/hstring.h"

namespace ht {

/// Memory cut from blocks, one object behind the other. A block is released when the last object in it is freed; the
/// objects outlive the chain. Allocating belongs to one thread, freeing may happen on any.
class THtBlockChain {
 public:
  /// The first block has `firstBlock` bytes, each further one twice as many, up to `largestBlock`.
  THtBlockChain(size_t firstBlock, size_t largestBlock, size_t alignment);
  ~THtBlockChain() { CloseBlock(); }
  THtBlockChain(const THtBlockChain&) = delete;
  THtBlockChain& operator=(const THtBlockChain&) = delete;

  /// Raises std::bad_alloc.
  void* Allocate(size_t bytes) {
    const size_t taken = (kHeader + bytes + FAlignment - 1) & ~(FAlignment - 1);
    if (static_cast<size_t>(FEnd - FNext) < taken) [[unlikely]]
      return AllocateInNewBlock(bytes);
    void* object = FNext + kHeader;
    static_cast<TBlock**>(object)[-1] = FBlock;
    FNext += taken;
    ++FObjects;
    return object;
  }
  /// Frees what Allocate of any chain gave.
  static void Free(void* object) noexcept { Release(BlockOf(object), 1); }

 private:
  friend class THtArena;

  struct TBlock {
    std::atomic<int64_t> Living;  // objects, and the chain's own reserve while it fills the block
    size_t Mapped;                // bytes mapped, 0 for a block from malloc
  };

  static constexpr size_t kHeader = sizeof(TBlock*);  // an object's block stands right before it

  static TBlock*& BlockOf(void* object) { return static_cast<TBlock**>(object)[-1]; }
  void* AllocateInNewBlock(size_t bytes);
  void CloseBlock() noexcept;
  static TBlock* NewBlock(size_t bytes);
  static void Release(TBlock* block, int64_t objects) noexcept;

  char* FNext = nullptr;
  char* FEnd = nullptr;
  TBlock* FBlock = nullptr;
  int64_t FObjects = 0;  // allocated in FBlock
  size_t FAlignment;
  size_t FBlockSize;
  size_t FLargestBlock;
};

/// Memory for the many small objects and texts that one parse makes.
///
///   THtArena arena(expectedBytes);           // in force on this thread until it is destroyed
///   auto* node = new THtmlNode;              // classes marked HT_POOLED take their memory from it
///   hstring text = arena.NewText(u"…");
///   …
///   delete node;                             // any time later, on any thread
///
/// Arenas nest; they are destroyed in the reverse order of their creation, on the thread that made them. Objects lie in
/// few large blocks, since they nearly always die together: one that outlives the others keeps its block. Texts are
/// often kept, so theirs are small: a kept text keeps a two-thousandth of what the arena was made for, and 1 KB at least.
class THtArena {
 public:
  /// `expectedBytes` is a guess at what all objects will take.
  explicit THtArena(size_t expectedBytes);
  ~THtArena() { FCurrent = FOuter; }
  THtArena(const THtArena&) = delete;
  THtArena& operator=(const THtArena&) = delete;

  /// A text in the arena's blocks when it is short, else on the heap. It is used like any other.
  hstring NewText(std::u16string_view text);

 private:
  friend void* HtPoolAllocate(size_t bytes);
  friend hstring HtPoolText(std::u16string_view text);

  static constexpr size_t kLargestObject = size_t{256} << 10;
  static constinit thread_local THtArena* FCurrent;

  THtBlockChain FObjects;
  THtBlockChain FTexts;
  THtArena* FOuter;
};

namespace detail {
void* HeapAllocate(size_t bytes);
}

/// Memory for an object, from the arena in force or else from malloc, aligned to 16 bytes. Raises std::bad_alloc.
inline void* HtPoolAllocate(size_t bytes) {
  THtArena* arena = THtArena::FCurrent;
  return arena && bytes <= THtArena::kLargestObject ? arena->FObjects.Allocate(bytes)
                                                    : detail::HeapAllocate(bytes);
}
/// Frees what HtPoolAllocate gave; null does nothing. Any thread.
void HtPoolFree(void* object) noexcept;

/// A text from the arena in force, when it is short, or else from the heap. It is used like any other.
hstring HtPoolText(std::u16string_view text);

/// HtPoolAllocate for the containers of pooled classes.
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
#define HT_POOLED                                                                 \
  static void* operator new(size_t bytes) { return ::ht::HtPoolAllocate(bytes); } \
  static void* operator new(size_t, void* place) noexcept { return place; }       \
  static void operator delete(void* object) noexcept { ::ht::HtPoolFree(object); }

}  // namespace ht
