#pragma once

#include "htdictionary/objectdictionary.h"

namespace ht {

/// A text and a number.
struct THtSingleRec : TObject {
  THtSingleRec(const hstring& name, float value) : Name(name), Value(value) {}

  const hstring Name;
  float Value;
};

/// Text to 32-bit float, as a cache of measured widths needs it. Owns its records.
class THtSingleList : public THtObjectDictionary {
  HT_CLASS(THtSingleList, THtObjectDictionary)

 public:
  THtSingleList() : THtObjectDictionary(16, true, HtNameOffset(&THtSingleRec::Name)) {}

  /// The slot of the new record. A text that is there keeps its value, and the complement of its slot comes back.
  int32_t AddWidth(const hstring& text, float value) {
    return AddNew(text, [&] { return new THtSingleRec(text, value); });
  }
  /// -1 for an absent text.
  float GetWidth(std::u16string_view text) const {
    const auto* rec = Get<THtSingleRec>(text);
    return rec ? rec->Value : -1;
  }
};

}  // namespace ht
