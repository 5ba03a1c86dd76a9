#include "refcanvas/pathhit.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "htcanvas/custompath.h"

namespace ht {

namespace {

constexpr float kFlatness = 0.1f;  // pixels

// Gives each line of the flattened path to `line`: start, end, and whether it only closes a figure for filling.
template <class TLine>
void EachLine(const THtPath& path, const TLine& line) {
  if (!path.FCustomPath) return;
  THtCustomPath flat;
  path.FCustomPath->Flatten(kFlatness, flat);
  TPointF start, last;
  const auto end = [&](bool closed) {
    if (last != start) line(last, start, !closed);
    last = start;
  };
  for (int32_t i = 0; i < flat.Count(); ++i) {
    const THtPathRec& record = std::as_const(flat).GetRec(i);
    if (record.Kind == prMoveTo) {
      end(false);
      start = last = record.Point;
    } else if (record.Kind == prLineTo) {
      line(last, record.Point, false);
      last = record.Point;
    } else if (record.Kind == prCloseFigure) {
      end(true);
    }
  }
  end(false);
}

float Distance(const TPointF& p, const TPointF& a, const TPointF& b) {
  const float dx = b.X - a.X, dy = b.Y - a.Y;
  const float length = dx * dx + dy * dy;
  const float t = length > 0 ? std::clamp(((p.X - a.X) * dx + (p.Y - a.Y) * dy) / length, 0.f, 1.f) : 0;
  return std::hypot(p.X - (a.X + t * dx), p.Y - (a.Y + t * dy));
}

}  // namespace

// A ray to the right crosses lines that go down, and lines that go up.
bool HitsPath(const TPointF& point, const THtPath& path) {
  int32_t crossings = 0, winding = 0;
  EachLine(path, [&](const TPointF& a, const TPointF& b, bool) {
    if ((a.Y > point.Y) == (b.Y > point.Y)) return;
    if (point.X >= a.X + (point.Y - a.Y) / (b.Y - a.Y) * (b.X - a.X)) return;
    ++crossings;
    winding += a.Y < b.Y ? 1 : -1;
  });
  return path.GetFillModeWinding() ? winding != 0 : crossings % 2 != 0;
}

bool HitsLine(const TPointF& point, const THtPath& path, float tolerance) {
  bool hit = false;
  EachLine(path, [&](const TPointF& a, const TPointF& b, bool onlyFilled) {
    hit = hit || (!onlyFilled && Distance(point, a, b) <= tolerance);
  });
  return hit;
}

}  // namespace ht
