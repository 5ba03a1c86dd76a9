#include "htcanvas/brush.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "htcanvas/path.h"
#include "htruntime/rounding.h"
#include "htutils/samevalue.h"

namespace ht {

namespace {

constexpr float kFullTurn = 360;

float InFullTurn(float angle) {
  if (!std::isfinite(angle)) return 0;
  angle = std::fmod(angle, kFullTurn);
  if (angle < 0) angle += kFullTurn;
  return angle < kFullTurn ? angle : 0;  // the sum with a tiny angle is a full turn
}

uint32_t Between(uint32_t from, uint32_t to, double part) {
  uint32_t color = 0;
  for (const int shift : {0, 8, 16, 24}) {
    const int a = static_cast<int>(from >> shift & 0xFF), b = static_cast<int>(to >> shift & 0xFF);
    color |= static_cast<uint32_t>(std::clamp(a + static_cast<int>(HtRoundEven((b - a) * part)), 0, 255))
             << shift;
  }
  return color;
}

}  // namespace

const THtBrushClass* THtBrush::Class() {
  static constexpr TClassOf<THtBrush> kClass(u"THtBrush", []() -> const TClass* { return TObject::Class(); });
  return &kClass;
}

std::unique_ptr<THtBrush> THtBrushClass::Create(uint32_t color) const {
  std::unique_ptr<THtBrush> brush(static_cast<THtBrush*>(NewInstance().release()));
  if (brush) brush->Create(color);
  return brush;
}

std::unique_ptr<THtBrush> THtBrushClass::CreateGradient(const TRectF& gradientRect, uint32_t color1,
                                                        uint32_t color2, float angle,
                                                        const TRectF& fillRect) const {
  std::unique_ptr<THtBrush> brush(static_cast<THtBrush*>(NewInstance().release()));
  if (brush) brush->CreateGradient(gradientRect, color1, color2, angle, fillRect);
  return brush;
}

std::unique_ptr<THtBrush> THtBrushClass::CreateRadialGradient(float offsetX, float offsetY, float cx,
                                                              float cy, float fx, float fy, float radius,
                                                              const THtMatrixData& matrix) const {
  std::unique_ptr<THtBrush> brush(static_cast<THtBrush*>(NewInstance().release()));
  if (brush) brush->CreateRadialGradient(offsetX, offsetY, cx, cy, fx, fy, radius, matrix);
  return brush;
}

void THtBrush::Create(uint32_t color) {
  Kind = hbSolid;
  FColor = color;
}

void THtBrush::CreateGradient(const TRectF& gradientRect, uint32_t, uint32_t, float angle,
                              const TRectF& fillRect) {
  Kind = hbGradient;
  Angle = InFullTurn(angle);
  GradientRect = gradientRect;
  FillRect = fillRect;
}

void THtBrush::CreateRadialGradient(float offsetX, float offsetY, float cx, float cy, float fx, float fy,
                                    float radius, const THtMatrixData& matrix) {
  Kind = hbRadial;
  OffsetX = offsetX;
  OffsetY = offsetY;
  CX = cx;
  CY = cy;
  FX = fx;
  FY = fy;
  Radius = radius;
  SetMatrix(matrix);
}

void THtBrush::SetGradientColors(std::span<const float> positions, std::span<const uint32_t> colors) {
  GradientPositions.assign(positions.begin(), positions.end());
  GradientColors.assign(colors.begin(), colors.end());
  if (positions.empty() || colors.empty()) return;
  if (!SameValue(positions.back(), 1)) {
    GradientPositions.push_back(1);
    GradientColors.push_back(colors.back());
  }
  if (!SameValue(positions.front(), 0)) {
    GradientPositions.insert(GradientPositions.begin(), 0);
    GradientColors.insert(GradientColors.begin(), colors.front());
  }
}

std::unique_ptr<THtBrush> THtBrush::Clone() const {
  std::unique_ptr<THtBrush> brush;
  switch (Kind) {
    case hbGradient: brush = BrushClass()->CreateGradient(GradientRect, 0, 0, Angle, FillRect); break;
    case hbRadial:
      brush = BrushClass()->CreateRadialGradient(OffsetX, OffsetY, CX, CY, FX, FY, Radius, FMatrix);
      break;
    default: brush = BrushClass()->Create(GetColor());
  }
  if (!brush) return nullptr;
  brush->Kind = Kind;
  brush->OffsetX = OffsetX;
  brush->OffsetY = OffsetY;
  brush->CX = CX;
  brush->CY = CY;
  brush->FX = FX;
  brush->FY = FY;
  brush->Radius = Radius;
  brush->SetMatrix(FMatrix);
  brush->Angle = Angle;
  brush->GradientRect = GradientRect;
  if (!GradientColors.empty()) brush->SetGradientColors(GradientPositions, GradientColors);
  return brush;
}

TRectF THtBrush::CalcGradientRect() const {
  constexpr double kDegrees = 180 / std::numbers::pi;
  const double w = FillRect.Width(), h = FillRect.Height();
  double angle = double{Angle} + 270;
  while (angle >= kFullTurn) angle -= kFullTurn;
  double corner = std::atan2(h, w) * kDegrees;
  if (corner < 0) corner += kFullTurn;
  const double nearest = angle <= 90    ? corner
                         : angle <= 180 ? 180 - corner
                         : angle <= 270 ? 180 + corner
                                        : 360 - corner;
  const double length = std::fabs(std::cos((angle - nearest) / kDegrees)) * std::hypot(w, h) / 2;
  const TPointF center{FillRect.Left + FillRect.Width() / 2, FillRect.Top + FillRect.Height() / 2};
  const TPointF start = THtPath::GetPositionForAngle(angle + 180, center, length, length);
  const TPointF end = THtPath::GetPositionForAngle(angle, center, length, length);
  return {start.X, start.Y, end.X, end.Y};
}

uint32_t THtBrush::CalcGradientColor(float x, float y) {
  const size_t count = std::min(GradientColors.size(), GradientPositions.size());
  if (GradientColors.empty()) return GetColor();
  if (count < 2) return GradientColors[0];
  Angle = InFullTurn(Angle);
  const bool fromRight = Angle > 180, fromBottom = Angle <= 90 || Angle > 270;
  const TPointF point{fromRight ? FillRect.Right - x : x - FillRect.Left,
                      fromBottom ? FillRect.Bottom - y : y - FillRect.Top};
  THtMatrixData turn;
  turn.Rotate(Angle <= 180 ? 90 - Angle : Angle - 90);
  const double width = std::fabs(double{FillRect.Right} - FillRect.Left);
  const double t = width > 0 ? std::fabs(turn.TransformPoint(point).X) / width : 0;
  if (t <= GradientPositions[0]) return GradientColors[0];
  size_t i = 0;
  while (i + 1 < count && GradientPositions[i + 1] <= t) ++i;
  if (i + 1 >= count) return GradientColors[count - 1];
  const float from = GradientPositions[i], to = GradientPositions[i + 1];
  if (SameValue(from, to)) return GradientColors[i];
  return Between(GradientColors[i], GradientColors[i + 1], (t - from) / (double{to} - from));
}

}  // namespace ht
