// Check boxes, radio buttons, buttons, wavy lines and text shadows, drawn by the canvas's own primitives.

#include <algorithm>

#include "htcanvas/canvas.h"
#include "htcanvas/wavyline.h"

namespace ht {

float HtWavyLineStep = 3;

namespace {

constexpr uint32_t kLine = 0xFF000000;
constexpr uint32_t kDisabledLine = 0xFFAAAAAA;
constexpr uint32_t kHoverLine = 0xFF000050;

std::unique_ptr<THtPen> ControlPen(const THtCanvas& canvas, bool hover, bool disabled) {
  return canvas.CanvasClass()->PenClass()->Create(disabled ? kDisabledLine : hover ? kHoverLine : kLine, 1);
}

}  // namespace

void THtCanvas::DrawCheck(const TRectF& rect, int32_t, bool checked, bool, bool hover, bool disabled) {
  const auto pen = ControlPen(*this, hover, disabled);
  DrawRectangle(*pen, rect.Left + 1, rect.Top + 1, rect.Width() - 2, rect.Height() - 2);
  if (!checked) return;
  pen->SetWidth(2);
  DrawLine(*pen, rect.Left + 4, rect.Bottom - 8, rect.Left + 6, rect.Bottom - 5);
  DrawLine(*pen, rect.Left + 6, rect.Bottom - 5, rect.Left + 11, rect.Top + 3);
}

void THtCanvas::DrawRadio(const TRectF& rect, int32_t, bool checked, bool, bool hover, bool disabled) {
  const auto pen = ControlPen(*this, hover, disabled);
  DrawEllipse(*pen, rect.Left, rect.Top, rect.Width() - 3, rect.Height() - 3);
  if (!checked) return;
  pen->SetWidth(3);
  const auto brush = CanvasClass()->BrushClass()->Create(kLine);
  FillEllipse(*brush, rect.Left + 3, rect.Top + 3, rect.Width() - 9, rect.Height() - 9);
}

void THtCanvas::DrawButton(const TRectF& rect, int32_t, bool, bool pressed, bool hover, bool) {
  const uint32_t upper = pressed || hover ? 0xFFE3F9FF : 0xFFEEEEEE;
  const uint32_t lower = pressed ? 0xFFA5D0E5 : hover ? 0xFFBADFF0 : 0xFFDDDDDD;
  const auto pen = CanvasClass()->PenClass()->Create(pressed ? 0xFF505090 : 0xFF909090, 1);
  const auto brush = CanvasClass()->BrushClass()->CreateGradient(rect, 0, 0, 1, rect);
  constexpr float kPositions[] = {0, 0.5f, 0.5f, 1};
  const uint32_t colors[] = {upper, upper, lower, lower};
  brush->SetGradientColors(kPositions, colors);
  FillRoundRect(*brush, rect, 5, 5);
  RoundRect(*pen, rect, 5, 5);
}

void THtCanvas::DrawWavyLine(float x1, float y1, float x2, float, const THtPen& pen) {
  const float step = HtWavyLineStep;
  const auto path = NewPath();
  path->MoveTo(x1, y1 + 1);
  // A step that the coordinate is too large to feel ends the line.
  for (float x = x1; x < x2 && x + 2 * step > x;) {
    path->LineTo(std::min(x2, x + step), y1 - 1);
    x += 2 * step;
    if (x < x2) path->LineTo(x, y1 + 1);
  }
  DrawPath(pen, *path);
}

void THtCanvas::DrawTextShadow(const hstring& text, const TRectF& rect, const THtTextStyle& style,
                               THtFont& font, float dx, float dy, float, uint32_t color) {
  THtTextStyle shadow = style;
  shadow.Color = color;
  TRectF moved = rect;
  ROffset(moved, dx, dy);
  DrawString(text, moved, font, shadow, 1, text.Length());
  DrawString(text, rect, font, style, 1, text.Length());
}

}  // namespace ht
