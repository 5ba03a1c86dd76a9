#include "htutils/idlist.h"

#include <algorithm>

#include "htruntime/exception.h"

namespace ht {

void TIDList::CheckIndex(int32_t index, int32_t limit) const {
  if (index < 0 || index >= limit) throw EStringListError(u"SListIndexError"_hs);
}

void TIDList::CheckUnsorted() const {
  if (FSorted) throw EStringListError(u"SSortedListError"_hs);
}

int32_t TIDList::Get(int32_t index) const {
  CheckIndex(index, GetCount());
  return FItems[index].FID;
}

TObject* TIDList::GetObject(int32_t index) const {
  CheckIndex(index, GetCount());
  return FItems[index].FObject;
}

void TIDList::Put(int32_t index, int32_t id) {
  CheckUnsorted();
  CheckIndex(index, GetCount());
  FItems[index].FID = id;
}

void TIDList::PutObject(int32_t index, TObject* object) {
  CheckIndex(index, GetCount());
  FItems[index].FObject = object;
}

void TIDList::SetCapacity(int32_t capacity) {
  CheckIndex(capacity, INT32_MAX);
  std::vector<TIDItem> items;
  items.reserve(static_cast<size_t>(capacity));
  items.assign(FItems.begin(), FItems.begin() + std::min(capacity, GetCount()));
  FItems.swap(items);
}

void TIDList::InsertItem(int32_t index, int32_t id) {
  const int32_t capacity = GetCapacity();
  if (GetCount() == capacity) SetCapacity(capacity + (capacity > 64 ? capacity / 4 : capacity > 8 ? 16 : 4));
  FItems.insert(FItems.begin() + index, TIDItem{id, nullptr, 0});
}

int32_t TIDList::Add(int32_t id) {
  int32_t index = GetCount();
  if (FSorted && index > 0) {
    if (id < FItems.front().FID) {
      index = 0;
    } else if (id <= FItems.back().FID) {
      if (Find(id, index) && FDuplicates == 2) throw EStringListError(u"SDuplicateString"_hs);
      while (index < GetCount() && FItems[index].FID == id) ++index;
    }
  }
  InsertItem(index, id);
  return index;
}

int32_t TIDList::AddObject(int32_t id, TObject* object) {
  const int32_t index = Add(id);
  PutObject(index, object);
  return index;
}

void TIDList::Insert(int32_t index, int32_t id) {
  CheckUnsorted();
  CheckIndex(index, GetCount() + 1);
  InsertItem(index, id);
}

void TIDList::InsertObject(int32_t index, int32_t id, TObject* object) {
  Insert(index, id);
  PutObject(index, object);
}

void TIDList::Clear() { std::vector<TIDItem>().swap(FItems); }

void TIDList::Delete(int32_t index) {
  CheckIndex(index, GetCount());
  FItems.erase(FItems.begin() + index);
}

void TIDList::Exchange(int32_t i, int32_t j) {
  const int32_t id = Get(i);
  TObject* object = GetObject(i);
  Put(i, Get(j));
  PutObject(i, GetObject(j));
  Put(j, id);
  PutObject(j, object);
}

template <class TKey>
bool TIDList::Bisect(TKey id, int32_t& index) const {
  const auto before = [](const TIDItem& item, TKey key) { return static_cast<TKey>(item.FID) < key; };
  const auto place = std::lower_bound(FItems.begin(), FItems.end(), id, before);
  index = static_cast<int32_t>(place - FItems.begin());
  return place != FItems.end() && static_cast<TKey>(place->FID) == id;
}

bool TIDList::Find(int32_t id, int32_t& index) const { return Bisect(id, index); }

bool TIDList::FindCardinal(uint32_t id, int32_t& index) const { return Bisect(id, index); }

int32_t TIDList::IndexOf(int32_t id) const {
  int32_t index;
  if (FSorted) return Find(id, index) ? index : -1;
  const auto found =
      std::find_if(FItems.begin(), FItems.end(), [id](const TIDItem& item) { return item.FID == id; });
  return found == FItems.end() ? -1 : static_cast<int32_t>(found - FItems.begin());
}

int32_t TIDList::IndexOfObject(const TObject* object) const {
  const auto found = std::find_if(FItems.begin(), FItems.end(),
                                  [object](const TIDItem& item) { return item.FObject == object; });
  return found == FItems.end() ? -1 : static_cast<int32_t>(found - FItems.begin());
}

void TIDList::FreeObjects() {
  for (TIDItem& item : FItems) delete std::exchange(item.FObject, nullptr);
}

void TIDList::SetSorted(bool sorted) {
  if (sorted) Sort();
  FSorted = sorted;
}

void TIDList::Sort() {
  if (!FSorted && GetCount() > 1) QuickSort(0, GetCount() - 1);
}

// C. A. R. Hoare's quicksort around the middle key. The shorter part is sorted first by a call, so that the calls
// nest no deeper than the logarithm of the count.
void TIDList::QuickSort(int32_t left, int32_t right) {
  const auto key = [this](int32_t index) { return static_cast<uint32_t>(FItems[index].FID); };
  while (left < right) {
    const uint32_t pivot = key(left + (right - left) / 2);
    int32_t i = left, j = right;
    do {
      while (key(i) < pivot) ++i;
      while (key(j) > pivot) --j;
      if (i <= j) std::swap(FItems[i++], FItems[j--]);
    } while (i <= j);
    if (j - left < right - i) {
      QuickSort(left, j);
      left = i;
    } else {
      QuickSort(i, right);
      right = j;
    }
  }
}

}  // namespace ht
