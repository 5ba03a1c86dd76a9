#include "htcanvas/pen.h"

#include <algorithm>

namespace ht {

const THtPenClass* THtPen::Class() {
  static constexpr TClassOf<THtPen> kClass(u"THtPen", []() -> const TClass* { return TObject::Class(); });
  return &kClass;
}

std::unique_ptr<THtPen> THtPenClass::Create(uint32_t color, float width) const {
  std::unique_ptr<THtPen> pen(static_cast<THtPen*>(NewInstance().release()));
  if (pen) pen->Create(color, width);
  return pen;
}

void THtPen::Create(uint32_t color, float width) {
  FColor = color;
  FWidth = width;
}

void THtPen::SetDashes(std::span<const float> values, int32_t highIndex) {
  const size_t count = highIndex < 0 ? 0 : std::min(values.size(), static_cast<size_t>(highIndex) + 1);
  Dashes.assign(values.begin(), values.begin() + static_cast<ptrdiff_t>(count));
  const float width = GetWidth();
  for (float& dash : Dashes) dash /= width;
}

void THtPen::AssignLine(const THtPen& pen) {
  SetLineJoin(pen.GetLineJoin());
  SetLineCap(pen.GetLineCap());
  SetPenStyle(pen.GetPenStyle());
  SetDashOffset(pen.GetDashOffset());
  FMode = pen.FMode;
  Dashes = pen.Dashes;
}

std::unique_ptr<THtPen> THtPen::Clone() const {
  std::unique_ptr<THtPen> pen = PenClass()->Create(GetColor(), GetWidth());
  if (pen) pen->AssignLine(*this);
  return pen;
}

void THtPen::Assign(const THtPen& pen) {
  SetColor(pen.GetColor());
  SetWidth(pen.GetWidth());
  AssignLine(pen);
}

}  // namespace ht
