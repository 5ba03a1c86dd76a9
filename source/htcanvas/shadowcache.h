#pragma once

#include "htcanvas/bitmap.h"
#include "htcanvas/shadowprops.h"

namespace ht {

/// The blurred square that a canvas cuts large shadows from, and what it was made for.
class THtShadowCache : public TObject {
  HT_CLASS(THtShadowCache, TObject)

 public:
  std::unique_ptr<THtBitmap> B;
  THtShadowProps Props;

  /// Whether the bitmap serves for these, whatever their box.
  bool Serves(const THtShadowProps& props) const;
};

}  // namespace ht
