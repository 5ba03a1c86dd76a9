#pragma once

#include <span>
#include <vector>

#include "htmlcss/cssvalue.h"

namespace ht {

/// A declaration that applies to an element, with its place in the cascade.
struct TCSSWeightItem {
  PCSSValue FObject;
  uint32_t FID;  // the cascade key: the selector's weight, the top byte 255 if the value is important
  int32_t FTag;  // the selector's order
};

/// The declarations that apply to one element, the weakest first: ascending by key, and within a key by order. Under one
/// key a value stands once. Filled by queries of several sheets, consumed by TBaseElementStyle::ApplyValue; a list that
/// is used again after Clear allocates nothing.
///
///   TCSSWeightList list;
///   HTML4StyleSheet().GetElementSelectors(element, list, &HTML4StyleSheet().Main, {});
///   sheet.GetElementSelectors(element, list, &sheet.Main, {});
///   element.FStyle->ApplyValue(list, false);
///
/// It borrows the values. Indexes count from 0 and are not checked.
class TCSSWeightList {
 public:
  /// The key of a value under a selector's weight.
  static uint32_t KeyOf(int32_t weight, const TCSSValue& value) {
    return static_cast<uint32_t>(weight) | (value.Important ? 0xFF000000u : 0);
  }

  int32_t GetCount() const { return static_cast<int32_t>(FItems.size()); }
  const TCSSWeightItem& operator[](int32_t index) const { return FItems[static_cast<size_t>(index)]; }
  PCSSValue GetValue(int32_t index) const { return (*this)[index].FObject; }
  auto begin() const { return FItems.begin(); }
  auto end() const { return FItems.end(); }
  void Clear() { FItems.clear(); }

  /// Behind the entries of this key with the same or a lower order. A value that stands under the key already is not
  /// added again.
  void AddValue(uint32_t key, int32_t order, PCSSValue value);
  /// AddValue for all values of a rule.
  void AddValues(int32_t weight, int32_t order, std::span<TCSSValue> values);

 private:
  using TItems = std::vector<TCSSWeightItem>;

  bool FindPlace(uint32_t key, int32_t order, std::span<TCSSValue> values, TItems::iterator& place);

  TItems FItems;
};

}  // namespace ht
