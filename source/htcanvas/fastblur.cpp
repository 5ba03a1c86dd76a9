#include "htcanvas/fastblur.h"

#include <algorithm>
#include <memory>

#include "htcanvas/boxfilter.h"

namespace ht {

void FastBlur(uint8_t* data, int32_t width, int32_t height, int32_t stride, const TRect& rect,
              int32_t radius) {
  constexpr int32_t kPixelBytes = 4;
  constexpr int kRounds = 2;
  const TRect area = RIntersect(rect, {0, 0, width, height});
  if (area.Left >= area.Right || area.Top >= area.Bottom) return;
  const int32_t across = area.Width(), down = area.Height();
  radius = std::min({radius, across / 2 - 1, down / 2 - 1});
  if (radius < 1) return;

  const auto scratch =
      std::make_unique_for_overwrite<uint8_t[]>(static_cast<size_t>(across) * down * kPixelBytes);
  const detail::TPixelRows pixels{data + area.Top * ptrdiff_t{stride} + area.Left * ptrdiff_t{kPixelBytes},
                                  stride};
  const detail::TPixelRows between{scratch.get(), across * ptrdiff_t{kPixelBytes}};
  const detail::TBoxMean mean(radius);
  const detail::TBoxFilter* vector = detail::HtVectorBoxFilter();
  const detail::TBoxFilter& filter = vector ? *vector : detail::kPlainBoxFilter;
  for (int round = 0; round < kRounds; ++round) {
    filter.Rows(pixels, between, across, down, mean);
    filter.Columns(between, pixels, across, down, mean);
  }
}

}  // namespace ht
