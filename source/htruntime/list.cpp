#include "htruntime/list.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "htruntime/exception.h"
#include "htruntime/format.h"

namespace ht {

TList::~TList() {
  if (!FInPlace) std::free(FItems);
}

void TList::RaiseIndex(int32_t index) { throw EListError(HtFormat(u"List index out of bounds (%d)", index)); }

void TList::Notify(void*, TAction) {}

void TList::SetCapacity(int32_t capacity) {
  if (capacity < 0) RaiseIndex(capacity);
  if (capacity == FCapacity) return;
  void** old = FInPlace ? nullptr : FItems;
  void** items = nullptr;
  if (capacity == 0) {
    std::free(old);
  } else {
    items = static_cast<void**>(std::realloc(old, static_cast<size_t>(capacity) * sizeof(void*)));
    if (!items) throw std::bad_alloc();
    if (FInPlace) std::copy_n(FItems, std::min(FCount, capacity), items);
  }
  FItems = items;
  FInPlace = false;
  FCapacity = capacity;
  FCount = std::min(FCount, capacity);
}

void TList::Grow() {
  SetCapacity(FCapacity < 4 ? 4 : FCapacity < 16 ? FCapacity * 2 : FCapacity + FCapacity / 4);
}

void TList::RawInsert(int32_t index, void* item) {
  if (FCount == FCapacity) Grow();
  if (index < FCount)
    std::memmove(FItems + index + 1, FItems + index, static_cast<size_t>(FCount - index) * sizeof(void*));
  FItems[index] = item;
  ++FCount;
}

void TList::RawDelete(int32_t index) {
  --FCount;
  std::memmove(FItems + index, FItems + index + 1, static_cast<size_t>(FCount - index) * sizeof(void*));
}

void TList::Put(int32_t index, void* item) {
  CheckIndex(index, FCount);
  void* old = std::exchange(FItems[index], item);
  if (old == item) return;
  if (old) Notify(old, laDeleted);
  if (item) Notify(item, laAdded);
}

int32_t TList::Add(void* item) {
  RawInsert(FCount, item);
  if (item) Notify(item, laAdded);
  return FCount - 1;
}

void TList::Insert(int32_t index, void* item) {
  CheckIndex(index, FCount + 1);
  RawInsert(index, item);
  if (item) Notify(item, laAdded);
}

void TList::Delete(int32_t index) {
  CheckIndex(index, FCount);
  void* old = FItems[index];
  RawDelete(index);
  if (old) Notify(old, laDeleted);
}

int32_t TList::Remove(void* item) {
  const int32_t index = IndexOf(item);
  if (index >= 0) Delete(index);
  return index;
}

void* TList::Extract(void* item) {
  const int32_t index = IndexOf(item);
  if (index < 0) return nullptr;
  RawDelete(index);
  if (item) Notify(item, laExtracted);
  return item;
}

void TList::Exchange(int32_t a, int32_t b) {
  CheckIndex(a, FCount);
  CheckIndex(b, FCount);
  std::swap(FItems[a], FItems[b]);
}

void TList::Move(int32_t from, int32_t to) {
  CheckIndex(from, FCount);
  CheckIndex(to, FCount);
  void* item = FItems[from];
  RawDelete(from);
  RawInsert(to, item);
}

int32_t TList::IndexOf(const void* item) const {
  void** end = FItems + FCount;
  void** found = std::find(FItems, end, item);
  return found == end ? -1 : static_cast<int32_t>(found - FItems);
}

void TList::Clear() {
  while (FCount > 0) {
    void* item = FItems[--FCount];
    if (item) Notify(item, laDeleted);
  }
  SetCapacity(0);
}

void TList::Sort(const std::function<int(void*, void*)>& compare) {
  std::stable_sort(FItems, FItems + FCount, [&](void* a, void* b) { return compare(a, b) < 0; });
}

}  // namespace ht
