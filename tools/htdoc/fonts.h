#pragma once

#include <string_view>

/// The option of commands that draw.
#define HTDOC_FONTS_HELP                                                                    \
  "  --fixed-fonts    measure every character half as wide as the font is high, whatever\n" \
  "                   fonts are installed\n"

/// Sets the canvas class that knows the fonts. Raises EUsage in a build without fonts, unless they are `fixed`.
void UseFonts(bool fixed);
