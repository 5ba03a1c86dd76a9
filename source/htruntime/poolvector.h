#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <type_traits>
#include <utility>

#include "htruntime/arena.h"

namespace ht {

/// A vector with the interface of std::vector, as far as it goes, for records of which there are very many:
///
///   struct TRecord { static constexpr bool kRelocatable = true; … };
///   THtPoolVector<TRecord> records;
///
/// Its memory comes from the arena in force, and growing moves the items as bytes, without constructors and destructors.
/// A type says by kRelocatable that this is right for it, as it is for texts, shared arrays and plain values.
template <class T>
class THtPoolVector {
  static_assert(T::kRelocatable && alignof(T) <= 16);

 public:
  using value_type = T;
  using iterator = T*;
  using const_iterator = const T*;

  THtPoolVector() = default;
  THtPoolVector(const THtPoolVector& other) {
    reserve(other.size());
    for (const T& item : other) push_back(item);
  }
  THtPoolVector(THtPoolVector&& other) noexcept { swap(other); }
  THtPoolVector& operator=(THtPoolVector other) noexcept {
    swap(other);
    return *this;
  }
  ~THtPoolVector() {
    clear();
    HtPoolFree(FItems);
  }

  T* data() { return FItems; }
  const T* data() const { return FItems; }
  T* begin() { return FItems; }
  T* end() { return FItems + FCount; }
  const T* begin() const { return FItems; }
  const T* end() const { return FItems + FCount; }
  size_t size() const { return FCount; }
  size_t capacity() const { return FCapacity; }
  bool empty() const { return FCount == 0; }
  T& operator[](size_t index) { return FItems[index]; }
  const T& operator[](size_t index) const { return FItems[index]; }
  T& front() { return FItems[0]; }
  T& back() { return FItems[FCount - 1]; }

  void reserve(size_t capacity) {
    if (capacity > FCapacity) SetCapacity(capacity);
  }
  template <class... TArgs>
  T& emplace_back(TArgs&&... args) {
    if (FCount == FCapacity) SetCapacity(std::max<size_t>(4, FCount + FCount / 2));
    T* item = new (static_cast<void*>(FItems + FCount)) T(std::forward<TArgs>(args)...);
    ++FCount;
    return *item;
  }
  void push_back(T item) { emplace_back(std::move(item)); }
  void pop_back() { FItems[--FCount].~T(); }
  T* erase(const T* at) { return erase(at, at + 1); }
  T* erase(const T* from, const T* to) {
    T* first = FItems + (from - FItems);
    std::destroy(first, FItems + (to - FItems));
    std::memmove(static_cast<void*>(first), to, static_cast<size_t>(end() - to) * sizeof(T));
    FCount -= static_cast<uint32_t>(to - from);
    return first;
  }
  template <class TPredicate>
  size_t EraseIf(TPredicate isGone) {
    T* kept = std::remove_if(begin(), end(), isGone);
    const auto gone = static_cast<size_t>(end() - kept);
    erase(kept, end());
    return gone;
  }
  void clear() {
    std::destroy(begin(), end());
    FCount = 0;
  }
  void swap(THtPoolVector& other) noexcept {
    std::swap(FItems, other.FItems);
    std::swap(FCount, other.FCount);
    std::swap(FCapacity, other.FCapacity);
  }
  /// Moves all items to a vector with room for just these; this one stays empty, and keeps its room.
  THtPoolVector TakeExact() {
    THtPoolVector taken;
    if (empty()) return taken;
    taken.reserve(FCount);
    taken.FCount = static_cast<uint32_t>(TakeTo(taken.FItems));
    return taken;
  }
  /// Moves all items to memory with room for them; their number.
  int32_t TakeTo(T* place) {
    if (FCount) std::memcpy(static_cast<void*>(place), FItems, FCount * sizeof(T));
    return static_cast<int32_t>(std::exchange(FCount, 0));
  }

 private:
  void SetCapacity(size_t capacity) {
    auto* items = static_cast<T*>(HtPoolAllocate(capacity * sizeof(T)));
    if (FCount) std::memcpy(static_cast<void*>(items), FItems, FCount * sizeof(T));
    HtPoolFree(FItems);
    FItems = items;
    FCapacity = static_cast<uint32_t>(capacity);
  }

  T* FItems = nullptr;
  uint32_t FCount = 0;
  uint32_t FCapacity = 0;
};

}  // namespace ht
