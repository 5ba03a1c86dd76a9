#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <utility>

#include "htruntime/poolvector.h"

namespace ht {

/// An array that several owners share: copying is one increment, and all copies see the same items, also when one of
/// them changes an item. Changing the number of items gives the owner that asks an array of its own first.
///
///   TSharedArray<TCSSToken> tokens;
///   tokens.Append(token);
///   TSharedArray<TCSSToken> same = tokens;   // same.Data() == tokens.Data()
///
/// One pointer wide; null when empty. Count and items lie in one block, from the arena in force if there is one. The
/// count of owners is thread-safe, the items are not.
template <class T>
class TSharedArray {
 public:
  TSharedArray() = default;
  TSharedArray(const TSharedArray& other) noexcept : FBlock(other.FBlock) { AddRef(); }
  TSharedArray(TSharedArray&& other) noexcept : FBlock(std::exchange(other.FBlock, nullptr)) {}
  ~TSharedArray() { Release(); }
  TSharedArray& operator=(const TSharedArray& other) noexcept { return *this = TSharedArray(other); }
  TSharedArray& operator=(TSharedArray&& other) noexcept {
    std::swap(FBlock, other.FBlock);
    return *this;
  }

  /// An array of copies of these items.
  static TSharedArray Copied(std::span<const T> items) {
    TSharedArray result = WithRoom(items.size());
    if (items.empty()) return result;
    std::uninitialized_copy(items.begin(), items.end(), Items(result.FBlock));
    result.FBlock->Count = static_cast<int32_t>(items.size());
    return result;
  }
  /// An array of just the items of a vector, which is left empty.
  static TSharedArray Taken(THtPoolVector<T>& items) {
    TSharedArray result = WithRoom(items.size());
    if (!items.empty()) result.FBlock->Count = items.TakeTo(Items(result.FBlock));
    return result;
  }

  int32_t Count() const { return FBlock ? FBlock->Count : 0; }
  bool Empty() const { return Count() == 0; }
  /// Null when empty.
  T* Data() const { return FBlock ? Items(FBlock) : nullptr; }
  /// The index is not checked.
  T& operator[](int32_t index) const { return Items(FBlock)[index]; }
  T* begin() const { return Data(); }
  T* end() const { return Data() + Count(); }
  bool SameStorage(const TSharedArray& other) const { return FBlock == other.FBlock; }

  void Append(T item) {
    const int32_t count = Count();
    Own(count + 1);
    new (Items(FBlock) + count) T(std::move(item));
    ++FBlock->Count;
  }
  void SetLength(int32_t count) {
    if (count == Count()) return;
    if (count <= 0) return Clear();
    Own(count);
    T* items = Items(FBlock);
    if (count > FBlock->Count)
      std::uninitialized_value_construct(items + FBlock->Count, items + count);
    else
      std::destroy(items + count, items + FBlock->Count);
    FBlock->Count = count;
  }
  void Clear() { TSharedArray().Swap(*this); }
  void Swap(TSharedArray& other) noexcept { std::swap(FBlock, other.FBlock); }

 private:
  struct TBlock {
    std::atomic<int32_t> RefCount;
    int32_t Count;
    int32_t Capacity;
  };
  static constexpr size_t kItemsAt = (sizeof(TBlock) + alignof(T) - 1) / alignof(T) * alignof(T);
  static_assert(alignof(T) <= 16);

  static T* Items(TBlock* block) {
    return std::launder(reinterpret_cast<T*>(reinterpret_cast<std::byte*>(block) + kItemsAt));
  }
  static TBlock* NewBlock(int32_t capacity) {
    void* memory = HtPoolAllocate(kItemsAt + static_cast<size_t>(capacity) * sizeof(T));
    return new (memory) TBlock{{1}, 0, capacity};
  }

  static TSharedArray WithRoom(size_t count) {
    TSharedArray result;
    if (count) result.FBlock = NewBlock(static_cast<int32_t>(count));
    return result;
  }

  /// Makes this the only owner of a block with room for `count` items.
  void Own(int32_t count) {
    if (!FBlock) {
      FBlock = NewBlock(count);
      return;
    }
    const bool alone = FBlock->RefCount.load(std::memory_order_acquire) == 1;
    if (alone && count <= FBlock->Capacity) return;
    TSharedArray grown;
    grown.FBlock = NewBlock(std::max(count, count > Count() ? Count() + Count() / 2 : 0));
    const int32_t kept = std::min(count, Count());
    if (alone)
      std::uninitialized_move_n(Items(FBlock), kept, Items(grown.FBlock));
    else
      std::uninitialized_copy_n(Items(FBlock), kept, Items(grown.FBlock));
    grown.FBlock->Count = kept;
    grown.Swap(*this);
  }

  // Counting is not locked in a program of one thread, and the last release is a plain read.
  void AddRef() const noexcept {
    if (!FBlock) return;
    if (HT_SINGLE_THREADED)
      FBlock->RefCount.store(FBlock->RefCount.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    else
      FBlock->RefCount.fetch_add(1, std::memory_order_relaxed);
  }
  void Release() noexcept {
    if (!FBlock) return;
    const int32_t now = FBlock->RefCount.load(std::memory_order_acquire);
    if (now != 1) {
      if (HT_SINGLE_THREADED) {
        FBlock->RefCount.store(now - 1, std::memory_order_relaxed);
        return;
      }
      if (FBlock->RefCount.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    }
    std::destroy_n(Items(FBlock), FBlock->Count);
    HtPoolFree(FBlock);
  }

  TBlock* FBlock = nullptr;
};

}  // namespace ht
