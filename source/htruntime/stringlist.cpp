#include "htruntime/stringlist.h"

#include <algorithm>

#include "htruntime/codepage.h"
#include "htruntime/exception.h"
#include "htruntime/filestream.h"
#include "htruntime/format.h"

namespace ht {

void TStringList::RaiseIndex(int32_t index) {
  throw EStringListError(HtFormat(u"List index out of bounds (%d)", index));
}

void TStringList::CheckUnsorted() const {
  if (FSorted) throw EStringListError(u"Operation not allowed on sorted list");
}

const hstring& TStringList::Get(int32_t index) const {
  CheckIndex(index, FCount);
  return FList[index].Text;
}

void TStringList::Put(int32_t index, const hstring& text) {
  CheckUnsorted();
  CheckIndex(index, FCount);
  FList[index].Text = text;
}

TObject* TStringList::GetObject(int32_t index) const {
  CheckIndex(index, FCount);
  return FList[index].Object;
}

void TStringList::PutObject(int32_t index, TObject* object) {
  CheckIndex(index, FCount);
  FList[index].Object = object;
}

void TStringList::InsertItem(int32_t index, const hstring& text, TObject* object) {
  TStringItem item{text, object};  // a copy first: `text` may be an entry of this list
  TStringItem* place = FList.get() + index;
  if (FCount == FCapacity) {
    const int32_t capacity = FCapacity < 8 ? 8 : FCapacity + FCapacity / 2;
    auto list = std::make_unique<TStringItem[]>(static_cast<size_t>(capacity));
    std::move(FList.get(), place, list.get());
    std::move(place, FList.get() + FCount, list.get() + index + 1);
    FList = std::move(list);
    FCapacity = capacity;
  } else {
    std::move_backward(place, FList.get() + FCount, FList.get() + FCount + 1);
  }
  FList[index] = std::move(item);
  ++FCount;
}

int32_t TStringList::AddObject(const hstring& text, TObject* object) {
  int32_t index = FCount;
  if (FSorted) {
    if (FDuplicates != dupAccept && Find(text, index)) {
      if (FDuplicates == dupIgnore) return index;
      throw EStringListError(u"String list does not allow duplicates");
    }
    index = Bisect([&](const hstring& entry) { return CompareStrings(entry, text) <= 0; });
  }
  InsertItem(index, text, object);
  return index;
}

void TStringList::InsertObject(int32_t index, const hstring& text, TObject* object) {
  CheckUnsorted();
  CheckIndex(index, FCount + 1);
  InsertItem(index, text, object);
}

void TStringList::Delete(int32_t index) {
  CheckIndex(index, FCount);
  std::move(FList.get() + index + 1, FList.get() + FCount, FList.get() + index);
  FList[--FCount] = TStringItem();
}

void TStringList::Exchange(int32_t a, int32_t b) {
  CheckUnsorted();
  CheckIndex(a, FCount);
  CheckIndex(b, FCount);
  std::swap(FList[a], FList[b]);
}

void TStringList::Clear() {
  FList.reset();
  FCount = FCapacity = 0;
}

int TStringList::CompareStrings(std::u16string_view a, std::u16string_view b) const {
  return FCaseSensitive ? HtCompareStr(a, b) : HtCompareText(a, b);
}

// The index of the first entry for which `before` is false.
template <class TBefore>
int32_t TStringList::Bisect(TBefore before) const {
  const TStringItem* start = FList.get();
  const auto* found =
      std::partition_point(start, start + FCount, [&](const TStringItem& item) { return before(item.Text); });
  return static_cast<int32_t>(found - start);
}

bool TStringList::Find(std::u16string_view text, int32_t& index) const {
  index = Bisect([&](const hstring& entry) { return CompareStrings(entry, text) < 0; });
  return index < FCount && CompareStrings(FList[index].Text, text) == 0;
}

int32_t TStringList::IndexOf(std::u16string_view text) const {
  int32_t index = 0;
  if (FSorted) return Find(text, index) ? index : -1;
  for (; index < FCount; ++index)
    if (CompareStrings(FList[index].Text, text) == 0) return index;
  return -1;
}

void TStringList::Sort() {
  if (FSorted) return;
  std::stable_sort(FList.get(), FList.get() + FCount, [this](const TStringItem& a, const TStringItem& b) {
    return CompareStrings(a.Text, b.Text) < 0;
  });
}

void TStringList::SetSorted(bool sorted) {
  if (sorted) Sort();
  FSorted = sorted;
}

void TStringList::SetCaseSensitive(bool caseSensitive) {
  if (caseSensitive == FCaseSensitive) return;
  FCaseSensitive = caseSensitive;
  if (!std::exchange(FSorted, false)) return;
  SetSorted(true);
}

hstring TStringList::GetName(int32_t index) const {
  const std::u16string_view entry = Get(index);
  const size_t separator = entry.find(FSeparator);
  return separator == entry.npos ? hstring() : hstring(entry.substr(0, separator));
}

hstring TStringList::GetValueFromIndex(int32_t index) const {
  const std::u16string_view entry = Get(index);
  const size_t separator = entry.find(FSeparator);
  return separator == entry.npos ? hstring() : hstring(entry.substr(separator + 1));
}

int32_t TStringList::IndexOfName(std::u16string_view name) const {
  for (int32_t i = 0; i < FCount; ++i) {
    const std::u16string_view entry = FList[i].Text;
    const size_t separator = entry.find(FSeparator);
    if (separator != entry.npos && CompareStrings(entry.substr(0, separator), name) == 0) return i;
  }
  return -1;
}

hstring TStringList::GetValue(std::u16string_view name) const {
  const int32_t index = IndexOfName(name);
  return index < 0 ? hstring() : GetValueFromIndex(index);
}

void TStringList::SetValue(std::u16string_view name, std::u16string_view value) {
  const int32_t index = IndexOfName(name);
  if (value.empty()) {
    if (index >= 0) Delete(index);
    return;
  }
  const hstring entry = hstring(name) + std::u16string_view(&FSeparator, 1) + value;
  if (index < 0)
    Add(entry);
  else
    Put(index, entry);
}

hstring TStringList::GetText() const {
  size_t size = 0;
  for (int32_t i = 0; i < FCount; ++i) size += FList[i].Text.Size() + 2;
  hstring result = hstring::Uninitialized(size);
  char16_t* out = result.Unique();
  for (int32_t i = 0; i < FCount; ++i) {
    out = std::copy(FList[i].Text.begin(), FList[i].Text.end(), out);
    *out++ = u'\r';
    *out++ = u'\n';
  }
  return result;
}

void TStringList::SetText(std::u16string_view text) {
  const hstring kept(text);  // `text` may be an entry of this list
  std::u16string_view rest = kept;
  Clear();
  while (!rest.empty()) {
    const size_t end = std::min(rest.find_first_of(u"\r\n"), rest.size());
    Add(rest.substr(0, end));
    const size_t lineEnd = rest.substr(end, 2) == u"\r\n" ? 2 : 1;
    rest.remove_prefix(std::min(end + lineEnd, rest.size()));
  }
}

void TStringList::LoadFromStream(TStream& stream) { SetText(HtDecodeText(stream.ReadToEnd())); }

void TStringList::SaveToStream(TStream& stream) const {
  const std::string bytes = "\xEF\xBB\xBF" + HtToUtf8(GetText());
  stream.WriteBuffer(bytes.data(), static_cast<int64_t>(bytes.size()));
}

void TStringList::LoadFromFile(const hstring& fileName) {
  TFileStream file(fileName, fmOpenRead);
  LoadFromStream(file);
}

void TStringList::SaveToFile(const hstring& fileName) const {
  TFileStream file(fileName, fmCreate);
  SaveToStream(file);
}

}  // namespace ht
