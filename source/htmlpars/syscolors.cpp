#include "htmlpars/syscolors.h"

#include <algorithm>
#include <iterator>

#include "htmlpars/lowername.h"
#include "htutils/colorarith.h"

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
// clang-format on

constexpr bool ByName(const TSystemColor& a, const TSystemColor& b) { return a.Name < b.Name; }
static_assert(std::is_sorted(std::begin(kSystemColors), std::end(kSystemColors), ByName));

uint32_t PlatformThemeColor(uint32_t index) {
  return Win2Color(static_cast<int32_t>(HtPlatformSysColor(index)));
}

constinit TThemeColorProc themeColorProc = PlatformThemeColor;

}  // namespace

TThemeColorProc HtThemeColorProc() { return themeColorProc; }
void HtSetThemeColorProc(TThemeColorProc proc) { themeColorProc = proc ? proc : PlatformThemeColor; }

uint32_t HtStringtoSysColor(std::u16string_view name) {
  const THtLowerName lower(name);
  const auto row =
      std::lower_bound(std::begin(kSystemColors), std::end(kSystemColors), TSystemColor{lower, 0}, ByName);
  return row != std::end(kSystemColors) && row->Name == lower.View() ? themeColorProc(row->Index) : 0;
}

}  // namespace ht
