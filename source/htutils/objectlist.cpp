#include "htutils/objectlist.h"

namespace ht {

THtObjectList::~THtObjectList() { THtObjectList::Clear(); }

void THtObjectList::Clear() {
  // The places are emptied first, so that TList reports nothing that is freed already.
  if (FOwnsObjects)
    for (int32_t i = 0; i < FCount; ++i) delete static_cast<TObject*>(std::exchange(FItems[i], nullptr));
  TList::Clear();
}

void THtObjectList::Notify(void* item, TAction action) {
  if (FOwnsObjects && action == laDeleted) delete static_cast<TObject*>(item);
}

}  // namespace ht
