#include "htutils/platformcolors.h"

#include <array>

namespace ht {

namespace {

// clang-format off
// The classic desktop's colours by index, 0x00BBGGRR.
constexpr std::array<uint32_t, 31> kClassicColors = {
    0xC8D0D4,  //  0 scroll bar
    0xA56E3A,  //  1 desktop
    0x6A240A,  //  2 active caption
    0x808080,  //  3 inactive caption
    0xC8D0D4,  //  4 menu
    0xFFFFFF,  //  5 window
    0x000000,  //  6 window frame
    0x000000,  //  7 menu text
    0x000000,  //  8 window text
    0xFFFFFF,  //  9 caption text
    0xC8D0D4,  // 10 active border
    0xC8D0D4,  // 11 inactive border
    0x808080,  // 12 application work space
    0x6A240A,  // 13 highlight
    0xFFFFFF,  // 14 highlighted text
    0xC8D0D4,  // 15 button face
    0x808080,  // 16 button shadow
    0x808080,  // 17 grey text
    0x000000,  // 18 button text
    0xC8D0D4,  // 19 inactive caption text
    0xFFFFFF,  // 20 button highlight
    0x404040,  // 21 dark shadow of three-dimensional elements
    0xC8D0D4,  // 22 light of three-dimensional elements
    0x000000,  // 23 text of hints
    0xE1FFFF,  // 24 background of hints
    0x000000,  // 25 not assigned
    0x800000,  // 26 hot-tracked item
    0xF0CAA6,  // 27 right end of an active caption
    0xC0C0C0,  // 28 right end of an inactive caption
    0x6A240A,  // 29 highlighted menu item
    0xC8D0D4,  // 30 menu bar
};
// clang-format on

}  // namespace

uint32_t HtPlatformSysColor(uint32_t index) {
  return index < kClassicColors.size() ? kClassicColors[index] : 0;
}

}  // namespace ht
