#include "htutils/listobjects.h"

namespace ht {

void FreeListObjects(const TList& list) {
  for (int32_t i = 0; i < list.GetCount(); ++i) delete static_cast<TObject*>(list.Get(i));
}

void FreeStringListObjects(const TStringList& list) {
  for (int32_t i = 0; i < list.GetCount(); ++i) delete list.GetObject(i);
}

}  // namespace ht
