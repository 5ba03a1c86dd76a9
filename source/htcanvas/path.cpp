#include "htcanvas/path.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "htcanvas/custompath.h"
#include "htutils/samevalue.h"

namespace ht {

namespace {

using std::numbers::pi;

double Normalized(double angle) {
  return angle < 0 ? angle + 2 * pi : angle > 2 * pi ? angle - 2 * pi : angle;
}

double Degrees(double radians) { return radians * 180 / pi; }

// The angle from one vector to another. A half turn is positive.
double AngleBetween(double fromX, double fromY, double toX, double toY) {
  const double cross = fromX * toY - fromY * toX, dot = fromX * toX + fromY * toY;
  return std::atan2(cross == 0 ? 0 : cross, dot);
}

}  // namespace

std::unique_ptr<THtPath> THtPathClass::Create(bool forClip) const {
  std::unique_ptr<THtPath> path(static_cast<THtPath*>(NewInstance().release()));
  if (path) path->Create(forClip);
  return path;
}

double THtPathClass::XEllipse(double angle, double a, double b) const {
  if (a == b) return Normalized(angle);
  return Normalized(std::atan2(b * std::sin(angle), a * std::cos(angle)));
}

const THtPathClass* THtPath::Class() {
  static constexpr TClassOf<THtPath> kClass(u"THtPath", []() -> const TClass* { return TObject::Class(); });
  return &kClass;
}

THtPath::~THtPath() {
  if (FCustomPath != this) delete FCustomPath;
}

double THtPath::XCircle(double angle, double a, double b) {
  return Normalized(std::atan2(a * std::sin(angle), b * std::cos(angle)));
}

TPointF THtPath::GetPositionForAngle(double angle, const TPointF& center, double rx, double ry) {
  const double radians = angle * pi / 180;
  return {static_cast<float>(center.X + rx * std::cos(radians)),
          static_cast<float>(center.Y + ry * std::sin(radians))};
}

THtArc THtPath::CalcArc(double x1, double y1, double x2, double y2, double rx, double ry, double angle,
                        bool largeArc, bool sweep, const THtPathClass& pathClass) {
  THtArc arc{x1, y1, std::fabs(rx), std::fabs(ry), 0, 0};
  if ((x1 == x2 && y1 == y2) || rx == 0 || ry == 0) return arc;
  const double sine = angle == 0 ? 0 : std::sin(angle * pi / 180);
  const double cosine = angle == 0 ? 1 : std::cos(angle * pi / 180);
  const double dx = (x1 - x2) / 2, dy = (y1 - y2) / 2;
  const double x = cosine * dx + sine * dy, y = cosine * dy - sine * dx;  // the start, turned back
  const double rx2 = arc.Rx * arc.Rx, ry2 = arc.Ry * arc.Ry;
  const double lambda = SameValue(rx2, 0) || SameValue(ry2, 0) ? 0 : x * x / rx2 + y * y / ry2;
  if (lambda > 1) {
    arc.Rx *= std::sqrt(lambda);
    arc.Ry *= std::sqrt(lambda);
  }
  const double a2 = arc.Rx * arc.Rx, b2 = arc.Ry * arc.Ry;
  const double q = (a2 * b2 - a2 * y * y - b2 * x * x) / (b2 * x * x + a2 * y * y);
  const double coefficient = (largeArc == sweep ? -1 : 1) * (q > 0 ? std::sqrt(q) : 0);
  const double cx = coefficient * arc.Rx * y / arc.Ry, cy = -coefficient * arc.Ry * x / arc.Rx;
  arc.Cx = cosine * cx - sine * cy + (x1 + x2) / 2;
  arc.Cy = sine * cx + cosine * cy + (y1 + y2) / 2;
  const double ux = (x - cx) / arc.Rx, uy = (y - cy) / arc.Ry, vx = (-x - cx) / arc.Rx,
               vy = (-y - cy) / arc.Ry;
  const double start = Normalized(AngleBetween(1, 0, ux, uy));
  const double end = start + AngleBetween(ux, uy, vx, vy);
  const double polarStart = pathClass.XEllipse(start, arc.Rx, arc.Ry);
  double difference = pathClass.XEllipse(end, arc.Rx, arc.Ry) - polarStart;
  if (!sweep && difference > 0) difference -= 2 * pi;
  if (sweep && difference < 0) difference += 2 * pi;
  arc.StartAngle = Degrees(polarStart);
  arc.SweepAngle = Degrees(difference);
  return arc;
}

void THtPath::ArctoBezier(double cx, double cy, double rx, double ry, double start, double sweep,
                          std::vector<TPointF>& points) {
  if (sweep == 0 || !std::isfinite(sweep)) return;
  const int count = std::clamp(static_cast<int>(std::ceil(std::fabs(sweep) / (pi / 2))), 1, 1000);
  const double d = sweep / count, y0 = std::sin(d / 2), x0 = std::cos(d / 2);
  const double k = (1 - x0) * 4 / 3, y1 = y0 - k * x0 / (0.0001 + y0);
  const auto add = [&](double x, double y, double turn) {
    const double sine = std::sin(turn), cosine = std::cos(turn);
    points.push_back({static_cast<float>(cx + rx * (x * cosine - y * sine)),
                      static_cast<float>(cy + ry * (x * sine + y * cosine))});
  };
  add(x0, -y0, start + d / 2);
  for (int i = 0; i < count; ++i) {
    const double middle = start + i * d + d / 2;
    add(x0 + k, -y1, middle);
    add(x0 + k, y1, middle);
    add(x0, y0, middle);
  }
}

void THtPath::AddLine(float x1, float y1, float x2, float y2) {
  MoveTo(x1, y1);
  LineTo(x2, y2);
}

void THtPath::AddRectangle(float x, float y, float w, float h) {
  AddLine(x, y, x + w, y);
  LineTo(x + w, y + h);
  LineTo(x, y + h);
  LineTo(x, y);
}

void THtPath::AddEllipse(float x, float y, float w, float h) {
  constexpr float kNearlyRound = 359.9f;
  AddArc(x, y, w, h, 0, kNearlyRound, 1);
}

void THtPath::AddRoundRect(float x, float y, float w, float h, float rx, float ry) {
  const float dx = std::min(2 * rx, w), dy = std::min(2 * ry, h);
  AddLine(x + rx, y, x + w - rx, y);
  AddArc(x + w - dx, y, dx, dy, 270, 90, 1);
  LineTo(x + w, y + h - ry);
  AddArc(x + w - dx, y + h - dy, dx, dy, 360, 90, 1);
  LineTo(x + rx, y + h);
  AddArc(x, y + h - dy, dx, dy, 90, 90, 1);
  LineTo(x, y + ry);
  AddArc(x, y, dx, dy, 180, 90, 1);
}

void THtPath::AddQBeziers(std::span<const TPointF> points) {
  std::vector<TPointF> cubic;
  cubic.reserve(points.size() / 2 * 3);
  TPointF start = FCustomPath ? FCustomPath->LastPoint() : TPointF();
  const auto third = [](const TPointF& control, const TPointF& end) {
    return TPointF{(2 * control.X + end.X) / 3, (2 * control.Y + end.Y) / 3};
  };
  for (size_t i = 0; i + 1 < points.size(); i += 2) {
    cubic.insert(cubic.end(), {third(points[i], start), third(points[i], points[i + 1]), points[i + 1]});
    start = points[i + 1];
  }
  AddBeziers(cubic);
}

hstring THtPath::AsString() const { return FCustomPath ? FCustomPath->AsString() : hstring(); }

}  // namespace ht
