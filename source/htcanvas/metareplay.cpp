#include "htcanvas/metareplay.h"

#include <algorithm>

#include "htcanvas/canvas.h"
#include "htcanvas/custompath.h"
#include "htutils/colorarith.h"
#include "htutils/samevalue.h"

namespace ht {

namespace {

void SetFadedColors(THtBrush& brush, const THtBrush& from, float opacity) {
  std::vector<uint32_t> colors = from.GradientColors;
  for (uint32_t& color : colors) color = AddOpacity(color, opacity);
  if (!colors.empty()) brush.SetGradientColors(from.GradientPositions, colors);
}

bool IsGradient(const THtBrush& brush) { return brush.Kind == hbGradient || brush.Kind == hbRadial; }

std::unique_ptr<THtBrush> Faded(const THtBrush& brush, float opacity) {
  auto faded = brush.Clone();
  if (IsGradient(brush))
    SetFadedColors(*faded, brush, opacity);
  else
    faded->SetColor(AddOpacity(brush.GetColor(), opacity));
  return faded;
}

std::unique_ptr<THtBrush> CrossGradient(const THtBrush& b, const THtBrushClass& brushClass, float opacity) {
  auto brush = b.Kind == hbGradient ? brushClass.CreateGradient(b.GradientRect, 0, 0, b.Angle, b.FillRect)
                                    : brushClass.CreateRadialGradient(b.OffsetX, b.OffsetY, b.CX, b.CY, b.FX,
                                                                      b.FY, b.Radius, b.FMatrix);
  SetFadedColors(*brush, b, opacity);
  return brush;
}

const THtPen& CrossPen(const THtPen& from, THtCanvas& canvas, float opacity) {
  THtPen& pen = canvas.GetPen(AddOpacity(from.GetColor(), opacity), from.GetWidth());
  pen.SetPenStyle(from.GetPenStyle());
  pen.SetLineJoin(from.GetLineJoin());
  pen.SetLineCap(from.GetLineCap());
  pen.SetDashOffset(from.GetDashOffset());
  pen.FMode = from.FMode;
  pen.Dashes = from.Dashes;
  return pen;
}

}  // namespace

TReplayBrush::TReplayBrush(const THtBrush& brush, THtCanvas& canvas, float opacity) {
  const THtBrushClass* brushClass = canvas.CanvasClass()->BrushClass();
  if (brush.ClassType() == brushClass) {
    if (!SameValue(opacity, 1)) FOwn = Faded(brush, opacity);
  } else if (IsGradient(brush)) {
    FOwn = CrossGradient(brush, *brushClass, opacity);
  } else {
    FBrush = &canvas.GetBrush(AddOpacity(brush.GetColor(), opacity));
    return;
  }
  FBrush = FOwn ? FOwn.get() : &brush;
}

TReplayPen::TReplayPen(const THtPen& pen, THtCanvas& canvas, float opacity) : FPen(&pen) {
  if (pen.ClassType() != canvas.CanvasClass()->PenClass()) {
    FPen = &CrossPen(pen, canvas, opacity);
  } else if (!SameValue(opacity, 1)) {
    FOwn = pen.Clone();
    FOwn->SetColor(AddOpacity(pen.GetColor(), opacity));
    FPen = FOwn.get();
  }
}

TReplayPath::TReplayPath(const THtPath& path, const THtCanvas& canvas) : FPath(&path) {
  const THtPathClass* pathClass = canvas.CanvasClass()->PathClass();
  if (path.ClassType() == pathClass) return;
  if (path.FCustomPath && pathClass == THtCustomPath::Class()) {
    FOwn = path.FCustomPath->Clone();
  } else {
    FOwn = pathClass->Create(path.FForClip);
    FOwn->Parse(path.AsString());
  }
  FOwn->SetFillModeWinding(path.GetFillModeWinding());
  FPath = FOwn.get();
}

}  // namespace ht
