#include "htmlpars/syscolors.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "htmlpars/lowername.h"

namespace ht {

namespace {

struct TSystemColor {
  std::u16string_view Name;
  uint8_t Index;
};

// Sorted by name, for bisection.
// clang-format off
constexpr TSystemColor kSystemColors[] = {
    {u"activeborder", 10},
    {u"activecaption", 2},
    {u"appworkspace", 12},
    {u"background", 1},
    {u"btnface", 15},
    {u"btnhighlight", 20},
    {u"btnshadow", 16},
    {u"btntext", 18},
    {u"buttonface", 15},
    {u"buttontext", 18},
    {u"c3ddkshadow", 21},
    {u"c3dface", 15},
    {u"c3dhighlight", 20},
    {u"c3dhilight", 20},
    {u"c3dlight", 22},
    {u"c3dshadow", 16},
    {u"canvas", 5},
    {u"canvastext", 8},
    {u"captiontext", 9},
    {u"desktop", 1},
    {u"field", 5},
    {u"fieldtext", 8},
    {u"gradientactivecaption", 27},
    {u"gradientinactivecaption", 28},
    {u"graytext", 17},
    {u"highlight", 13},
    {u"highlight2", 130},
    {u"highlighttext", 14},
    {u"hotlight", 26},
    {u"inactiveborder", 11},
    {u"inactivecaption", 3},
    {u"inactivecaptiontext", 19},
    {u"infobk", 24},
    {u"infotext", 23},
    {u"menu", 4},
    {u"menubar", 30},
    {u"menuhighlight", 29},
    {u"menutext", 7},
    {u"scrollbar", 0},
    {u"window", 5},
    {u"windowframe", 6},
    {u"windowtext", 8},
};

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

constexpr bool ByName(const TSystemColor& a, const TSystemColor& b) { return a.Name < b.Name; }
static_assert(std::is_sorted(std::begin(kSystemColors), std::end(kSystemColors), ByName));

uint32_t PlatformThemeColor(uint32_t index) {
  const uint32_t c = HtPlatformSysColor(index);
  return 0xFF000000 | (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF);
}

constinit TThemeColorProc themeColorProc = PlatformThemeColor;

}  // namespace

TThemeColorProc HtThemeColorProc() { return themeColorProc; }
void HtSetThemeColorProc(TThemeColorProc proc) { themeColorProc = proc ? proc : PlatformThemeColor; }

uint32_t HtPlatformSysColor(uint32_t index) {
  return index < kClassicColors.size() ? kClassicColors[index] : 0;
}

uint32_t HtStringtoSysColor(std::u16string_view name) {
  const THtLowerName lower(name);
  const auto row =
      std::lower_bound(std::begin(kSystemColors), std::end(kSystemColors), TSystemColor{lower, 0}, ByName);
  return row != std::end(kSystemColors) && row->Name == lower.View() ? themeColorProc(row->Index) : 0;
}

}  // namespace ht
