#pragma once

#include "htcanvas/font.h"
#include "htmlcss/cssenums.h"

namespace ht {

/// How a text is drawn, apart from its font. Colours are 0xAARRGGBB, lengths pixels. A plain value.
struct THtTextStyle {
  float WordSpacing = 0, LetterSpacing = 0;  // what each is widened by
  float Opacity = 1;                         // 0 to 1
  TCSSTextOverflow Overflow = toClip;
  bool Shadow = false;
  bool RTL = false;
  bool EditorMode = false;  // the text belongs to an editing surface
  uint32_t Color = 0;
  uint32_t ShadowColor = 0, DecorationColor = 0;
  TCSSTextDecorationStyle DecorationStyle = tsSolid;
  float ShadowX = 0, ShadowY = 0, ShadowBlur = 0;
  TCSSWritingMode WritingMode = wmHorizontalTB;
  TCSSUnicodeBidi UnicodeBidi = ubNormal;
  THtFontOpentypeFeatures FontFeatures;

  void Reset() { *this = {}; }
  void Assign(const THtTextStyle& other) { *this = other; }
  static THtTextStyle Default() { return {}; }
};
using PHtTextStyle = THtTextStyle*;

/// The style that a host draws with when it has no other. It may be set before anything is drawn.
extern THtTextStyle HtDefaultTextStyle;

}  // namespace ht
