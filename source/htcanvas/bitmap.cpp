#include "htcanvas/bitmap.h"

#include "htcanvas/shadowcache.h"
#include "htruntime/exception.h"
#include "htutils/samevalue.h"

namespace ht {

const THtBitmapClass* THtBitmap::Class() {
  static constexpr TClassOf<THtBitmap> kClass(u"THtBitmap",
                                              []() -> const TClass* { return TObject::Class(); });
  return &kClass;
}

std::unique_ptr<THtBitmap> THtBitmapClass::Create(int32_t width, int32_t height, bool alpha) const {
  std::unique_ptr<THtBitmap> bitmap(static_cast<THtBitmap*>(NewInstance().release()));
  if (bitmap) bitmap->Create(width, height, alpha);
  return bitmap;
}

void* THtBitmap::GetBuffer() { throw EHtException(u"HtBitmap buffer not implemented"_hs); }
void THtBitmap::Create(int32_t, int32_t, bool) {}
void THtBitmap::FillRect(const TRect&, uint32_t) {}
void THtBitmap::CopyFromCanvas(THtCanvas&, const TRect&) {}

bool THtShadowCache::Serves(const THtShadowProps& props) const {
  return Props.Color == props.Color && SameValue(Props.MaxBorderRadius, props.MaxBorderRadius) &&
         SameValue(Props.HOffset, props.HOffset) && SameValue(Props.VOffset, props.VOffset) &&
         SameValue(Props.Blur, props.Blur);
}

}  // namespace ht
