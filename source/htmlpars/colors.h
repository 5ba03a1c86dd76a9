#pragma once

#include "htdictionary/pointerdictionary.h"
#include "htmlpars/syscolors.h"
#include "htruntime/hstring.h"

namespace ht {

// Colours are 0xAARRGGBB; alpha 255 is opaque.

constexpr uint32_t kColorBlack = 0xFF000000;
constexpr uint32_t kColorTransparent = 0x00FFFFFF;
constexpr uint32_t kColorNone = 0x1FFFFFFF;
/// What the decoders give for a text that is no colour.
constexpr uint32_t kColorInvalid = 1;

/// A named colour.
struct THtColorName {
  hstring Name;    // in lower case
  uint32_t Value;  // 0xRRGGBB
};

/// Lower-cased name to THtColorName: 142 names of the CSS colour standard. Of the "grey" spellings it knows
/// "grey" and "lightgrey". Built at the first call, from any thread, and only read afterwards.
const THtPointerDictionary& GlobalColorDictionary();

/// The colour of a name; 0 if there is none. The case of ASCII letters does not count.
uint32_t HtStringtoColor(std::u16string_view name);

/// The colour of an attribute or style value; kColorInvalid if it is none.
///
///   htmlHextoColor(u"Red");               // 0xFFFF0000
///   htmlHextoColor(u"#1234");             // 0x44112233: also #RGB, #RRGGBB, #RRGGBBAA, and without "#"
///   htmlHextoColor(u"rgba(1,2,3,0.5)");   // 0x80010203: also rgba(red, 0.5)
///
/// An empty text is opaque black; "transparent" and "none", in lower case, are kColorTransparent and
/// kColorNone. The numbers of rgba() are not checked against their ranges.
uint32_t htmlHextoColor(std::u16string_view text);

/// The colour of the hexadecimal digits that stand behind "#"; kColorInvalid if they are none.
uint32_t htmlDigitstoColor(std::u16string_view digits);

/// As htmlHextoColor without rgba() and #RGBA; `isSystemColor` tells that the colour is a system colour,
/// whose value changes with the theme.
uint32_t htmlHextoColorSys(std::u16string_view text, bool& isSystemColor);

/// Six lower-case digits RRGGBB, without number sign; alpha is dropped.
hstring htmlColortoHex(uint32_t color);
/// "#rrggbb" for an opaque colour, else "#rrggbbaa".
hstring htmlColortoStr(uint32_t color);

}  // namespace ht
