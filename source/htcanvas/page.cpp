#include "htcanvas/page.h"

#include <algorithm>
#include <cmath>

#include "htruntime/exception.h"
#include "htruntime/rounding.h"

namespace ht {

namespace {

constexpr double kMMPerInch = 25.4;

[[noreturn]] void RaiseNoMetafile(const THtPage& page) {
  throw EHtException(u"Metafile is not implemented for class "_hs + page.ClassName());
}

}  // namespace

int32_t HtPixelsOfMM(float mm, int32_t dpi) {
  const double pixels = HtRoundEven(dpi * double{mm} / kMMPerInch);
  return std::isfinite(pixels) ? static_cast<int32_t>(std::clamp<double>(pixels, INT32_MIN, INT32_MAX)) : 0;
}

const THtPageClass* THtPage::Class() {
  static constexpr TClassOf<THtPage> kClass(u"THtPage", []() -> const TClass* { return TObject::Class(); });
  return &kClass;
}

std::unique_ptr<THtPage> THtPageClass::Create(float widthMM, float heightMM, int32_t number,
                                              int32_t dpi) const {
  std::unique_ptr<THtPage> page(static_cast<THtPage*>(NewInstance().release()));
  if (page) page->Create(widthMM, heightMM, number, dpi);
  return page;
}

void THtPage::Create(float widthMM, float heightMM, int32_t number, int32_t dpi) {
  Number = number;
  WidthMM = widthMM;
  HeightMM = heightMM;
  DPI = dpi;
  WidthPx = HtPixelsOfMM(widthMM, dpi);
  HeightPx = HtPixelsOfMM(heightMM, dpi);
  Orientation = widthMM <= heightMM ? coPortrait : coLandscape;
}

std::unique_ptr<THtImage> THtPage::AsImage(int32_t) { return nullptr; }
THtBytes THtPage::AsMetaFileBytes() { RaiseNoMetafile(*this); }
std::unique_ptr<TObject> THtPage::AsMetaFile() { RaiseNoMetafile(*this); }

}  // namespace ht
