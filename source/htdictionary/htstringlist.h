#pragma once

#include "htdictionary/objectdictionary.h"

namespace ht {

/// A text and the object that goes by it.
class THtNameObjectPair : public TObject {
  HT_CLASS(THtNameObjectPair, TObject)

 public:
  THtNameObjectPair(const hstring& name, TObject* object, bool ownsObject)
      : FOwnsObject(ownsObject), Name(name), Object(object) {}
  ~THtNameObjectPair() override {
    if (FOwnsObject) delete Object;
  }

  /// Where Name lies, for the constructor of a dictionary.
  static intptr_t NameOffset() { return HtNameOffset(&THtNameObjectPair::Name); }

 private:
  const bool FOwnsObject;

 public:
  const hstring Name;
  TObject* const Object;
};

/// A set of texts, each with an object or none.
///
///   THtStringList names(31, true);           // owns what it is given
///   names.Add(u"total"_hs, new TCounter);
///   TCounter* counter = names.GetObject<TCounter>(u"total");
///
/// It is a dictionary of THtNameObjectPair, which it owns; whether a pair owns its object is told once for all.
class THtStringList : public THtObjectDictionary {
  HT_CLASS(THtStringList, THtObjectDictionary)

 public:
  THtStringList(int32_t capacity, bool ownsPairObjects)
      : THtObjectDictionary(capacity, true, THtNameObjectPair::NameOffset()),
        FOwnsPairObjects(ownsPairObjects) {}

  /// The slot of the new pair. A text that is there keeps its object, `object` stays the caller's, and the
  /// complement of the slot comes back.
  int32_t Add(const hstring& text, TObject* object) {
    return AddNew(text, [&] { return new THtNameObjectPair(text, object, FOwnsPairObjects); });
  }
  int32_t AddKey(const hstring& text) { return Add(text, nullptr); }
  /// Null for an absent text and for one without an object.
  template <class T = TObject>
  T* GetObject(std::u16string_view text) const {
    const auto* pair = Get<THtNameObjectPair>(text);
    return pair ? static_cast<T*>(pair->Object) : nullptr;
  }
  bool HasKey(std::u16string_view text) const { return ContainsKey(text); }

 private:
  const bool FOwnsPairObjects;
};

}  // namespace ht
