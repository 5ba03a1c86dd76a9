#include "htcanvas/stripecache.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "htruntime/rounding.h"
#include "htutils/samevalue.h"

namespace ht {

namespace {

constexpr double kMostWidths = 1.5;  // a stripe is no wider than so many views
constexpr int32_t kMostStripes = 1 << 16;
constexpr double kSlack = 1.0 / 64;  // pixels, which places in single precision may be off by

// What is no number is 0.
int32_t Rounded(double value) {
  using TLimits = std::numeric_limits<int32_t>;
  if (std::isnan(value)) return 0;
  return static_cast<int32_t>(std::clamp<double>(HtRoundEven(value), TLimits::min(), TLimits::max()));
}
int32_t RoundedUp(double value) { return Rounded(std::ceil(value)); }

float UsableScale(float scale) { return scale > 0 && std::isfinite(scale) ? scale : 1; }

}  // namespace

int32_t THtStripeCache::StripesIn(double pixels) const {
  return std::clamp(RoundedUp(pixels / StripeHeight), 0, kMostStripes - 1);
}

// The index, counted from the document's top, of the stripe with that place.
int32_t THtStripeCache::StripeAt(double docY, double scale) const {
  return Rounded(docY * scale) / StripeHeight;
}

void THtStripeCache::Init(int32_t screenWidth, int32_t screenHeight, int32_t stripeHeight, int32_t docWidth,
                          int32_t docHeight, float scale) {
  FFilled = false;
  const int32_t oldWidth = StripeWidth, oldHeight = StripeHeight;
  ScreenWidth = screenWidth;
  ScreenHeight = screenHeight;
  StripeHeight = std::max(stripeHeight, 1);
  DocWidth = docWidth;
  DocHeight = docHeight;
  DocScale = StripeScale = UsableScale(scale);
  StripeWidth = RoundedUp(double{DocScale} * docWidth);
  if (screenWidth <= StripeWidth) StripeWidth = std::min(StripeWidth, Rounded(screenWidth * kMostWidths));
  StripeWidth = std::max(StripeWidth, 0);

  const int32_t count = std::min(StripesIn(screenHeight), StripesIn(double{DocScale} * docHeight)) + 1;
  FSized = StripeWidth == oldWidth && StripeHeight == oldHeight ? std::min(FSized, count) : 0;
  while (Count() < count) Stripes.push_back(CreateStripe());
  Stripes.resize(static_cast<size_t>(count));
  for (; FSized < count; ++FSized) UpdateStripeSize(FSized);
  TotalStripeHeight = Rounded(static_cast<double>(count) * StripeHeight);
}

void THtStripeCache::CheckStripes(THtCanvas&, int32_t, int32_t) {}

TRectF THtStripeCache::StripeDocRect(int32_t index) const {
  const float height = static_cast<float>(StripeHeight) / StripeScale;
  return {StripesDocLeft, StripesDocTop + height * static_cast<float>(index),
          StripesDocLeft + static_cast<float>(StripeWidth) / StripeScale,
          StripesDocTop + height * static_cast<float>(index + 1)};
}

void THtStripeCache::ShiftStripes(int32_t n) {
  if (Stripes.empty()) return;
  const int32_t count = Count();
  std::rotate(Stripes.begin(), Stripes.end() - (n % count + count) % count, Stripes.end());
}

void THtStripeCache::Update(THtCanvas& canvas, int32_t screenWidth, int32_t screenHeight,
                            int32_t stripeHeight, int32_t docWidth, int32_t docHeight, float scale, float x,
                            float y) {
  const bool sameSizes = screenWidth == ScreenWidth && screenHeight == ScreenHeight &&
                         std::max(stripeHeight, 1) == StripeHeight && docWidth == DocWidth &&
                         docHeight == DocHeight;
  scale = UsableScale(scale);
  // Whatever ends the painting early leaves a ring that is not filled.
  if (std::exchange(FFilled, false) && sameSizes && Holds(-x, -y) && Turn(canvas, scale, -y)) {
    FFilled = true;
    return;
  }
  Init(screenWidth, screenHeight, stripeHeight, docWidth, docHeight, scale);
  Rebuild(canvas, -x, -y);
}

// Whether the ring reaches to where the view is now, which may be lower than a stripe, or begin left of the document.
bool THtStripeCache::Holds(float left, float top) const {
  const double stripe = static_cast<double>(StripeHeight) / DocScale,
               view = static_cast<double>(ScreenHeight) / DocScale;
  const double first = StripesDocTop, last = first + stripe * (Count() - 1);
  const double covered = first + static_cast<double>(TotalStripeHeight) / StripeScale - top;
  const double inView =
      std::min((static_cast<double>(DocWidth) - left) * DocScale, static_cast<double>(ScreenWidth));
  return StripesDocLeft <= std::max(left, 0.0f) &&
         inView <= kSlack + StripeWidth + (double{StripesDocLeft} - left) * StripeScale && top <= last &&
         (first <= top || first + stripe <= top + view) &&
         (view <= covered || SameValue(StripeScale, DocScale));
}

// Brings the stripe at the view's top to the front. False if the stripes do not serve at this scale.
bool THtStripeCache::Turn(THtCanvas& canvas, float scale, float top) {
  const int32_t wanted = StripeAt(top, StripeScale);
  // The ring's top is a whole number of stripes, but for what single precision has cut off.
  const int32_t present = Rounded(double{StripesDocTop} * StripeScale / StripeHeight);
  const int32_t count = Count();
  if (wanted != present && !SameValue(scale, StripeScale)) return false;
  DocScale = scale;
  if (wanted != present) {
    const int64_t shift = int64_t{present} - wanted;
    const auto fresh = static_cast<int32_t>(std::min<int64_t>(std::abs(shift), count));
    ShiftStripes(static_cast<int32_t>(shift % count));
    StripesDocTop = static_cast<float>(static_cast<double>(StripeHeight) * wanted / StripeScale);
    if (shift > 0)
      FillStripes(canvas, 0, fresh - 1);
    else
      FillStripes(canvas, count - fresh, count - 1);
  }
  CheckStripes(canvas, 0, count - 1);
  return true;
}

// Where the view has scrolled to the right it stands at the left end of the stripes, else at their right end, so that there is
// room to go on in the same direction. Rounded so that the stripes reach as far as the view: those that fall short by a
// fraction would be thrown away at each update.
void THtStripeCache::Rebuild(THtCanvas& canvas, float left, float top) {
  StripesDocTop = static_cast<float>(static_cast<double>(StripeHeight) * StripeAt(top, DocScale) / DocScale);
  const double beyondView = (static_cast<double>(StripeWidth) - ScreenWidth) / DocScale;
  const double start = left > StripesDocLeft ? std::floor(left) : std::ceil(left - beyondView);
  const double most = std::ceil(DocWidth - static_cast<double>(StripeWidth) / DocScale);
  const double reach = std::min({most, start, static_cast<double>(std::floor(left))});
  StripesDocLeft = static_cast<float>(std::max(0.0, reach));
  FillStripes(canvas, 0, Count() - 1);
  FFilled = true;
}

void THtStripeCache::PaintOnCanvas(THtCanvas& target, float screenLeft, float screenTop, float x, float y) {
  const int32_t left = Rounded((double{x} + StripesDocLeft) * StripeScale + screenLeft);
  const int32_t top = Rounded((double{y} + StripesDocTop) * StripeScale + screenTop);
  for (int32_t i = 0; i < Count(); ++i) {
    const double stripeTop = top + static_cast<double>(StripeHeight) * i;
    if (stripeTop * DocScale / StripeScale >= double{screenTop} + ScreenHeight ||
        stripeTop + StripeHeight <= screenTop)
      continue;
    const int32_t last = std::min(i + StripesIn(ScreenHeight), Count() - 1);
    return PaintStripe(i, last, target, left, Rounded(stripeTop));
  }
}

}  // namespace ht
