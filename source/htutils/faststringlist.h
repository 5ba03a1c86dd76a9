#pragma once

#include "htruntime/stringlist.h"

namespace ht {

/// A string list that is ordered by unit value, without case and locale, and can be searched without building a
/// string.
///
///   TFastStringList names;
///   names.OwnsObjects = true;
///   names.SetSorted(true);
///   names.AddObject(u"PNG"_hs, new TDecoder);
///   int32_t index;
///   if (names.FindPChar(chars, length, index)) …
class TFastStringList : public TStringList {
  HT_CLASS(TFastStringList, TStringList)

 public:
  ~TFastStringList() override;

  /// Objects are freed with their entries: on Delete, Clear and destruction.
  bool OwnsObjects = false;

  /// Bisection in a sorted list: true and the first entry equal to the text, else false and the place for it.
  bool FindPChar(const char16_t* chars, int32_t length, int32_t& index) const;
  /// Frees all objects, owned or not; the texts stay.
  void FreeListObjects();
  /// The entries, with their `Text` and `Object`, as they lie in memory; valid until the list changes.
  const TStringItem* GetList() const { return FList.get(); }

  void Delete(int32_t index) override;
  void Clear() override;
  int CompareStrings(std::u16string_view a, std::u16string_view b) const override {
    return HtCompareStr(a, b);
  }
};

}  // namespace ht
