#include "htcanvas/textrun.h"

namespace ht {

const THtTextRunClass* THtTextRun::Class() {
  static constexpr TClassOf<THtTextRun> kClass(u"THtTextRun",
                                               []() -> const TClass* { return TObject::Class(); });
  return &kClass;
}

}  // namespace ht
