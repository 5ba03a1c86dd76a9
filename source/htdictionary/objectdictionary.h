#pragma once

#include "htdictionary/stringkeys.h"

namespace ht {

/// Text to object, where the text is a field of the object itself.
///
///   struct TColorName : TObject { hstring Name; uint32_t Color; };
///   THtObjectDictionary colors(142, true, HtNameOffset(&TColorName::Name), RSHash);
///   colors.AddObject(new TColorName(…));
///   TColorName* color;
///   if (colors.Find(u"navy", color)) …
///
/// Frees its objects only when created as owning. Any number of threads may read it while none changes it.
class THtObjectDictionary : public THtStringKeyed<THtIdObjectDictionary, TObject> {
  HT_CLASS(THtObjectDictionary, THtIdObjectDictionary)

 public:
  /// `nameOffset` is that of an hstring, from HtNameOffset. Without a hash function: ShaPerfectHash.
  THtObjectDictionary(int32_t capacity, bool ownsObjects, intptr_t nameOffset,
                      THtStringHashFunc hash = nullptr)
      : THtStringKeyed(kkText, nameOffset, hash ? hash : ShaPerfectHash, capacity, ownsObjects) {}

  /// Add with the object's own text.
  int32_t AddObject(TObject* object) { return AddItem(object); }
};

}  // namespace ht
