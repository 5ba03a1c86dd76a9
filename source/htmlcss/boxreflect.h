#pragma once

#include "htmlcss/gradient.h"
#include "htruntime/object.h"

namespace ht {

HT_ENUM(TCSSBoxReflect, uint8_t, brNone, brBelow, brAbove, brLeft, brRight);

/// A mirror image of a box at one of its sides.
class TBoxReflect : public TObject {
  HT_CLASS(TBoxReflect, TObject)

 public:
  /// Reads a `box-reflect`. Without a side in front nothing happens.
  void Decode(TCSSTokenSequence& sequence);
  void Assign(const TBoxReflect& other);

  TCSSBoxReflect Kind = brNone;
  TMeasure Offset;
  TGradient Mask;
};

}  // namespace ht
