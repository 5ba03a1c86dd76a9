#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace ht {

/// An array that several owners share: copying is one increment, and all copies see the same items, also when one of
/// them changes an item. Changing the number of items gives the owner that asks an array of its own first.
///
///   TSharedArray<TCSSToken> tokens;
///   tokens.Append(token);
///   TSharedArray<TCSSToken> same = tokens;   // same.Data() == tokens.Data()
///
/// One pointer wide; null when empty. The count is thread-safe, the items are not.
template <class T>
class TSharedArray {
 public:
  TSharedArray() = default;
  explicit TSharedArray(std::vector<T> items)
      : FItems(items.empty() ? nullptr : new TItems{{1}, std::move(items)}) {}
  TSharedArray(const TSharedArray& other) noexcept : FItems(other.FItems) {
    if (FItems) FItems->RefCount.fetch_add(1, std::memory_order_relaxed);
  }
  TSharedArray(TSharedArray&& other) noexcept : FItems(std::exchange(other.FItems, nullptr)) {}
  ~TSharedArray() {
    if (FItems && FItems->RefCount.fetch_sub(1, std::memory_order_acq_rel) == 1) delete FItems;
  }
  TSharedArray& operator=(TSharedArray other) noexcept {
    std::swap(FItems, other.FItems);
    return *this;
  }

  int32_t Count() const { return FItems ? static_cast<int32_t>(FItems->List.size()) : 0; }
  bool Empty() const { return Count() == 0; }
  /// Null when empty.
  T* Data() const { return FItems ? FItems->List.data() : nullptr; }
  /// The index is not checked.
  T& operator[](int32_t index) const { return FItems->List[static_cast<size_t>(index)]; }
  T* begin() const { return Data(); }
  T* end() const { return Data() + Count(); }
  bool SameStorage(const TSharedArray& other) const { return FItems == other.FItems; }

  void Append(T item) { Own().push_back(std::move(item)); }
  void SetLength(int32_t count) {
    if (count != Count()) Own().resize(static_cast<size_t>(count));
  }
  void Clear() { *this = {}; }

 private:
  struct TItems {
    std::atomic<int32_t> RefCount;
    std::vector<T> List;
  };

  std::vector<T>& Own() {
    if (!FItems)
      FItems = new TItems{{1}, {}};
    else if (FItems->RefCount.load(std::memory_order_acquire) != 1)
      *this = TSharedArray(new TItems{{1}, FItems->List});
    return FItems->List;
  }
  explicit TSharedArray(TItems* items) : FItems(items) {}

  TItems* FItems = nullptr;
};

}  // namespace ht
