#include "htcanvas/metaresource.h"

#include <tuple>

namespace ht::detail {

namespace {

uint32_t KeyOf(const THtPen& pen) { return pen.FColor; }
uint32_t KeyOf(const THtBrush& brush) {
  return brush.GradientColors.empty() ? brush.FColor : brush.GradientColors[0];
}

// All that Clone copies.
auto Values(const THtPen& p) {
  return std::tie(p.FColor, p.FWidth, p.FLineJoin, p.FLineCap, p.FPenStyle, p.FDashOffset, p.FMode, p.Dashes);
}
auto Values(const THtBrush& b) {
  return std::tie(b.Kind, b.FColor, b.FMatrix.Data, b.FMatrix.Flags, b.OffsetX, b.OffsetY, b.CX, b.CY, b.FX,
                  b.FY, b.Radius, b.Angle, b.GradientRect, b.FillRect, b.GradientColors, b.GradientPositions);
}

}  // namespace

bool IsPlain(const THtPen& pen) {
  return pen.GetPenStyle() == hpsSolid && pen.Dashes.empty() && pen.GetLineJoin() == ljMiter &&
         pen.GetLineCap() == lcFlat && pen.FMode == ldmCopy && !pen.GetAlignInset();
}

template <class T>
THtMetaResource<T> TMetaClones<T>::Clone(const T& resource) {
  if (resource.ClassType() != T::Class()) return THtMetaResource<T>(resource);
  const auto same = [values = Values(resource)](const auto& kept) { return kept && Values(*kept) == values; };
  THtMetaResource<T>& recent = FRecent.Find(KeyOf(resource), same);
  if (!same(recent)) recent = THtMetaResource<T>(resource);
  return recent;
}

template class TMetaClones<THtBrush>;
template class TMetaClones<THtPen>;

}  // namespace ht::detail
