#include "htmlpars/attributes.h"

#include <algorithm>

#include "htmlpars/lower.h"

namespace ht {

int THtAttributes::CompareNames(const hstring& a, const hstring& b) const {
  if (CaseSensitive) {
    if (a[0] != b[0]) return a[0] < b[0] ? -1 : 1;
    return a.SameStorage(b) ? 0 : HtCompareStr(a, b);
  }
  const char16_t x = HtAsciiLower(a[0]);
  const char16_t y = HtAsciiLower(b[0]);
  if (x != y) return x < y ? -1 : 1;
  return a.SameStorage(b) ? 0 : HtCompareText(a, b);
}

bool THtAttributes::Find(const hstring& name, int32_t& index) const {
  int32_t low = 0;
  int32_t high = name.Empty() ? -1 : Count - 1;
  bool found = false;
  while (low <= high) {
    const int32_t middle = low + (high - low) / 2;
    const int order = CompareNames(GetName(middle), name);
    if (order < 0) {
      low = middle + 1;
    } else {
      high = middle - 1;
      found |= order == 0;
    }
  }
  index = low;
  return found;
}

int32_t THtAttributes::Indexof(const hstring& name) const {
  int32_t index;
  return Find(name, index) ? index : -1;
}

hstring THtAttributes::GetAttribute(const hstring& name) const {
  int32_t index;
  return Find(name, index) ? GetValue(index) : hstring();
}

void THtAttributes::InsertAt(int32_t index, THtAttribute&& attribute) {
  if (static_cast<size_t>(Count) == List.size() && index == Count) {
    List.push_back(std::move(attribute));
  } else {
    if (static_cast<size_t>(Count) == List.size()) List.emplace_back();
    const auto at = List.begin() + index;
    std::move_backward(at, List.begin() + Count, List.begin() + Count + 1);
    *at = std::move(attribute);
  }
  ++Count;
}

void THtAttributes::Add(hstring name, hstring value) {
  if (!CaseSensitive) hLower(name);
  int32_t index;
  Find(name, index);
  InsertAt(index, {std::move(name), std::move(value)});
}

bool THtAttributes::SetAttributeEx(const hstring& name, const hstring& value) {
  int32_t index;
  if (!Find(name, index)) {
    hstring stored = name;
    if (!CaseSensitive) hLower(stored);
    InsertAt(index, {std::move(stored), value});
    return true;
  }
  if (GetValue(index) == value) return false;
  SetValue(index, value);
  return true;
}

void THtAttributes::ClearAttr(const hstring& name) {
  int32_t index;
  if (!Find(name, index)) return;
  const auto at = List.begin() + index;
  std::rotate(at, at + 1, List.begin() + Count);
  List[static_cast<size_t>(--Count)] = {};
}

void THtAttributes::Merge(TParsed& parsed) {
  int32_t index = 0;
  if (Count == 0 || !Find(parsed.Attribute.Name, index))
    InsertAt(index, std::move(parsed.Attribute));
  else if (parsed.Bare)
    SetValue(index, parsed.Attribute.Value);
}

void THtAttributes::AddParsed(std::vector<TParsed>& batch) {
  constexpr size_t kMergeOneByOne = 64;  // above this, moving entries costs more than one sort
  List.reserve(static_cast<size_t>(Count) + batch.size());
  if (batch.size() <= kMergeOneByOne || Count > 0) {
    for (TParsed& parsed : batch) Merge(parsed);
    return;
  }
  std::stable_sort(batch.begin(), batch.end(), [this](const TParsed& a, const TParsed& b) {
    return CompareNames(a.Attribute.Name, b.Attribute.Name) < 0;
  });
  for (TParsed& parsed : batch) {
    if (Count > 0 && CompareNames(GetName(Count - 1), parsed.Attribute.Name) == 0) {
      if (parsed.Bare) SetValue(Count - 1, parsed.Attribute.Value);
    } else {
      InsertAt(Count, std::move(parsed.Attribute));
    }
  }
}

}  // namespace ht
