#pragma once

#include "htruntime/object.h"

namespace ht {

/// Stands between the values of a source format and the colours of a 32-bit bitmap. This one changes nothing; a decoder
/// derives its own for indexed, gray or four-component values.
class THtColorSpace : public TObject {
  HT_CLASS(THtColorSpace, TObject)

 public:
  /// The colour for a value of the source. What the value holds depends on the depth: see THtBitmapData::Convertto32.
  virtual uint32_t ConvertColor(uint32_t color) const { return color; }
  /// The colour for components from 0 to 1: `a` becomes the lowest byte, `b` and `c` the next. `d` is not used here.
  virtual uint32_t ConvertFloat(float a, float b, float c, float d) const;
  virtual int32_t InComponentCount() const { return 3; }
  virtual int32_t OutComponentCount() const { return InComponentCount(); }
  virtual bool IsIdentity() const { return true; }
  /// Converts a whole 8-bit bitmap with rows of `stride` bytes to rows of `width` pixels. False if the colour space has
  /// no quicker way than ConvertColor, as here; then `target` is left alone.
  virtual bool Convert8to32(const uint8_t* source, uint32_t* target, int32_t stride, int32_t height,
                            int32_t width) const;
};

}  // namespace ht
