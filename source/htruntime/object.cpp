#include "htruntime/object.h"

namespace ht {

bool TClass::InheritsFrom(const TClass* ancestor) const {
  for (const TClass* c = this; c; c = c->Parent())
    if (c == ancestor) return true;
  return false;
}

const TClass* TObject::Class() {
  static constexpr TClassOf<TObject> kClass(u"TObject", []() -> const TClass* { return nullptr; });
  return &kClass;
}

}  // namespace ht
