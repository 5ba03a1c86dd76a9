#include "htcanvas/metapath.h"

#include "htcanvas/custompath.h"

namespace ht {

THtMetaPath::THtMetaPath(const THtPath& path) : FPath(path.Clone()) {
  if (FPath && FPath->FCustomPath) FPath->FCustomPath->Unshare();
}

}  // namespace ht
