#pragma once

#include "htruntime/enums.h"

namespace ht {

/// What distinguishes the faces of a font family, and how a text is drawn with one.
HT_ENUM(THtFontStyle, uint8_t, hfsBold, hfsItalic, hfsUnderline, hfsStrikeOut, hfsLight, hfsUltraLight,
        hfsBlack, hfsSemibold);
using THtFontStyles = TSet<THtFontStyle>;

/// The numeric weight of a style: 900 for black, else 700 for bold, 300 for light, 200 for ultra light, 400 for others.
constexpr int32_t HtFontWeight(THtFontStyles styles) {
  if (styles.Contains(hfsBlack)) return 900;
  if (styles.Contains(hfsBold)) return 700;
  if (styles.Contains(hfsLight)) return 300;
  return styles.Contains(hfsUltraLight) ? 200 : 400;
}

}  // namespace ht
