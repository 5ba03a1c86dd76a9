#pragma once

#include "htruntime/list.h"
#include "htruntime/stringlist.h"

namespace ht {

/// Frees every object of a list whose entries are TObject pointers. The entries stay and are not to be used.
void FreeListObjects(const TList& list);
void FreeStringListObjects(const TStringList& list);

}  // namespace ht
