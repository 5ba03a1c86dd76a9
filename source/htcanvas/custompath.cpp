#include "htcanvas/custompath.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "htcanvas/canvas.h"
#include "htcanvas/svgwriter.h"
#include "htutils/samevalue.h"

namespace ht {

namespace {

constexpr TSet<THtPathRecKind> kPoints{prMoveTo, prLineTo};
constexpr TSet<THtPathRecKind> kPointLists{prCurveTo, prQCurveto, prPolyline};
constexpr TSet<THtPathRecKind> kMarkers{prStartFigure, prCloseFigure};

bool Same(const TPointF& a, const TPointF& b) { return SameValue(a.X, b.X) && SameValue(a.Y, b.Y); }

TPointF ArcPoint(const THtPathRec& arc, double angle) {
  const TPointF &corner = arc.Points[0], &size = arc.Points[1];
  return THtPath::GetPositionForAngle(angle, {corner.X + size.X / 2, corner.Y + size.Y / 2}, size.X / 2,
                                      size.Y / 2);
}

// The segments; an arc that was turned into curves has its start in front of them.
std::span<const TPointF> Segments(const THtPathRec& curve) {
  const std::span<const TPointF> points(curve.Points.data(), curve.Points.size());
  return points.size() % 3 == 1 ? points.subspan(1) : points;
}

const TPointF& EndOf(const THtPathRec& record) {
  return kPoints.Contains(record.Kind) || record.Points.empty() ? record.Point : record.Points.back();
}

}  // namespace

THtCustomPath::THtCustomPath(bool forClip) : THtPath(forClip) { FCustomPath = this; }

const THtCustomPath::TRecs& THtCustomPath::Recs() const {
  static const TRecs kNone;
  return FRecs ? *FRecs : kNone;
}

THtCustomPath::TRecs& THtCustomPath::Own() {
  if (!FRecs)
    FRecs = std::make_shared<TRecs>();
  else if (FRecs.use_count() > 1)
    FRecs = std::make_shared<TRecs>(*FRecs);
  return *FRecs;
}

THtCustomPath::TRecs& THtCustomPath::InPlace() { return FRecs ? *FRecs : Own(); }

THtPathRec& THtCustomPath::Add(THtPathRecKind kind) {
  THtPathRec& record = Own().emplace_back();
  record.Kind = kind;
  return record;
}

void THtCustomPath::AddPoint(THtPathRecKind kind, float x, float y) { Add(kind).Point = {x, y}; }

void THtCustomPath::Clear() { FRecs.reset(); }

std::unique_ptr<THtPath> THtCustomPath::Clone() const {
  std::unique_ptr<THtPath> path = PathClass()->Create(FForClip);
  static_cast<THtCustomPath&>(*path).Assign(*this);
  path->FFillModeWindings = FFillModeWindings;
  return path;
}

void THtCustomPath::Assign(const THtCustomPath& path) { FRecs = path.FRecs; }

void THtCustomPath::AddPath(const THtPath& path) {
  const TRecs records = dynamic_cast<const THtCustomPath&>(path).Recs();
  TRecs& own = Own();
  own.insert(own.end(), records.begin(), records.end());
}

void THtCustomPath::MoveTo(float x, float y) {
  const TRecs& records = Recs();
  if (!records.empty()) {
    if (records.back().Kind == prMoveTo) {
      InPlace().back().Point = {x, y};
      return;
    }
    if (records.back().Kind != prCloseFigure && Same({x, y}, LastPoint())) return;
  }
  AddPoint(prMoveTo, x, y);
}

void THtCustomPath::LineTo(float x, float y) {
  const TRecs& records = Recs();
  const size_t count = records.size();
  if (count >= 2 && records[count - 1].Kind == prLineTo && kPoints.Contains(records[count - 2].Kind)) {
    const TPointF last = records[count - 1].Point, before = records[count - 2].Point;
    const auto same = [this](float a, float b) { return SameValue(a, b, Tolerance); };
    const bool sameX = same(x, last.X), sameY = same(y, last.Y);
    if (sameX && sameY) return;
    if (sameX && same(x, before.X)) {
      InPlace().back().Point.Y = y;
      return;
    }
    if (sameY && same(y, before.Y)) {
      InPlace().back().Point.X = x;
      return;
    }
  }
  AddPoint(count > 0 && records.back().Kind == prCloseFigure ? prMoveTo : prLineTo, x, y);
}

void THtCustomPath::AddBeziers(std::span<const TPointF> points) {
  if (points.size() < 3) return;
  TPointF last = LastPoint();
  for (size_t i = 0; i + 2 < points.size(); i += 3) {
    const TPointF end = points[i + 2];
    if (SameValue(end.X, last.X, Tolerance) && SameValue(end.Y, last.Y, Tolerance))
      LineTo(end.X, end.Y);
    else
      Add(prCurveTo).Points.assign(&points[i], &points[i] + 3);
    last = end;
  }
}

void THtCustomPath::AddArc(float x, float y, float w, float h, float startAngle, float sweepAngle, float) {
  Add(prArc).Points = {{x, y}, {w, h}, {startAngle, sweepAngle}};
}

void THtCustomPath::AddEllipse(float x, float y, float w, float h) {
  Add(prEllipse).Points = {{x, y}, {w, h}};
}

void THtCustomPath::AddRectangle(float x, float y, float w, float h) {
  AddPoint(prMoveTo, x, y);
  AddPoint(prLineTo, x + w, y);
  AddPoint(prLineTo, x + w, y + h);
  AddPoint(prLineTo, x, y + h);
  Add(prCloseFigure);
}

TPointF THtCustomPath::LastPoint() const {
  const TRecs& records = Recs();
  const auto last = std::find_if(records.rbegin(), records.rend(),
                                 [](const THtPathRec& record) { return !kMarkers.Contains(record.Kind); });
  if (last == records.rend()) return {};
  if (last->Kind == prArc) return ArcPoint(*last, double{last->Points[2].X} + last->Points[2].Y);
  return EndOf(*last);
}

void THtCustomPath::GetBounds(TRectF& rect, const THtMatrixData* matrix) const {
  constexpr float kLimit = 2147483648.f;
  TRectF box{kLimit, kLimit, -kLimit, -kLimit};
  const auto take = [&box](const TPointF& p) {
    box = {std::min(box.Left, p.X), std::min(box.Top, p.Y), std::max(box.Right, p.X),
           std::max(box.Bottom, p.Y)};
  };
  for (const THtPathRec& record : Recs()) {
    if (kPoints.Contains(record.Kind)) {
      take(record.Point);
    } else if (record.Kind == prArc) {
      take(record.Points[0]);
      take({record.Points[0].X + record.Points[1].X, record.Points[0].Y + record.Points[1].Y});
    } else {
      for (const TPointF& point : record.Points) take(point);
    }
  }
  if (box.Left == kLimit) box.Left = 0;
  if (box.Top == kLimit) box.Top = 0;
  if (box.Right == -kLimit) box.Right = 0;
  if (box.Bottom == -kLimit) box.Bottom = 0;
  rect = matrix && !Empty() ? matrix->TransformRect(box) : box;
}

void THtCustomPath::Translate(float dx, float dy) {
  for (THtPathRec& record : InPlace()) {
    if (kPoints.Contains(record.Kind)) record.Point = {record.Point.X + dx, record.Point.Y + dy};
    const size_t moved = kPointLists.Contains(record.Kind)                  ? record.Points.size()
                         : record.Kind == prArc || record.Kind == prEllipse ? 1
                                                                            : 0;
    for (size_t i = 0; i < moved; ++i) record.Points[i] = {record.Points[i].X + dx, record.Points[i].Y + dy};
  }
}

void THtCustomPath::Transform(const THtMatrixData& matrix) {
  using std::numbers::pi;
  for (THtPathRec& record : InPlace()) {
    if (record.Kind == prArc) {
      const TPointF corner = record.Points[0], size = record.Points[1], angles = record.Points[2];
      std::vector<TPointF> curves;
      ArctoBezier(corner.X + size.X / 2, corner.Y + size.Y / 2, size.X / 2, size.Y / 2, angles.X * pi / 180,
                  angles.Y * pi / 180, curves);
      record.Points.assign(curves.data(), curves.data() + curves.size());
      record.Kind = prCurveTo;
    }
    record.Point = matrix.TransformPoint(record.Point);
    const size_t mapped = record.Kind == prEllipse ? 1 : record.Points.size();
    for (size_t i = 0; i < mapped; ++i) record.Points[i] = matrix.TransformPoint(record.Points[i]);
  }
}

bool THtCustomPath::IsRect() const {
  constexpr size_t kMostRecords = 7;
  const TRecs& records = Recs();
  if (records.size() > kMostRecords) return false;
  int lines = 0;
  for (size_t i = 1; i < records.size(); ++i) {
    switch (records[i].Kind) {
      case prLineTo: {
        const TPointF &point = records[i].Point, &before = records[i - 1].Point;
        if (!SameValue(point.X, before.X) && !SameValue(point.Y, before.Y)) return false;
        ++lines;
        break;
      }
      case prMoveTo:
      case prCurveTo:
      case prArc:
      case prEllipse:
      case prQCurveto: return false;
      default: break;
    }
  }
  return lines == 3 || lines == 4;
}

bool THtCustomPath::HasCurves() const {
  static constexpr TSet<THtPathRecKind> kCurves{prCurveTo, prArc, prEllipse, prQCurveto};
  const TRecs& records = Recs();
  return std::any_of(records.begin(), records.end(),
                     [](const THtPathRec& record) { return kCurves.Contains(record.Kind); });
}

// A ray to the left meets an odd number of edges.
bool THtCustomPath::ContainsPoint(float x, float y) const {
  if (Count() < 2) return false;
  TPointF start, at;
  bool odd = false;
  const auto edge = [&](const TPointF& to) {
    if ((at.X <= x || to.X <= x) && (y < at.Y) != (y < to.Y) &&
        (to.X - at.X) * (y - at.Y) / (to.Y - at.Y) + at.X <= x)
      odd = !odd;
    at = to;
  };
  for (const THtPathRec& record : Recs()) {
    switch (record.Kind) {
      case prMoveTo:
        if (odd) return true;
        start = at = record.Point;
        break;
      case prLineTo: edge(record.Point); break;
      case prCurveTo:
        for (const TPointF& point : Segments(record)) edge(point);
        break;
      case prCloseFigure:
        edge(start);
        if (odd) return true;
        break;
      default: break;
    }
  }
  return odd;
}

void THtCustomPath::DrawPath(THtCanvas& canvas, const THtPen& pen) const {
  TPointF at;
  for (const THtPathRec& record : Recs()) {
    switch (record.Kind) {
      case prMoveTo: at = record.Point; break;
      case prLineTo:
        canvas.DrawLine(pen, at.X, at.Y, record.Point.X, record.Point.Y);
        at = record.Point;
        break;
      case prArc: {
        const TPointF &corner = record.Points[0], &size = record.Points[1], &angles = record.Points[2];
        canvas.DrawArc(pen, corner.X, corner.Y, size.X, size.Y, angles.X, angles.Y);
        at = ArcPoint(record, double{angles.X} + angles.Y);
        break;
      }
      case prEllipse:
        canvas.DrawEllipse(pen, record.Points[0].X, record.Points[0].Y, record.Points[1].X,
                           record.Points[1].Y);
        break;
      default: break;
    }
  }
}

// Lines

class THtCustomPath::TFlattener {
 public:
  TFlattener(float tolerance, THtCustomPath& out)
      : FOut(out),
        FTolerance(tolerance),
        FNear(tolerance * tolerance / 16),
        FScale(0.2f / std::max(tolerance, 0.001f)) {}

  void Add(const THtPathRec& record, const THtPathRec* previous) {
    switch (record.Kind) {
      case prMoveTo:
      case prCloseFigure: FOut.Own().push_back(record); break;
      case prLineTo: Line(record.Point, previous != nullptr); break;
      case prCurveTo: Curves(record, previous); break;
      case prArc: Arc(record, previous == nullptr); break;
      default: break;
    }
  }

 private:
  void Line(const TPointF& point, bool mayMerge) {
    const int32_t count = FOut.Count();
    if (mayMerge && count > 0) {
      const THtPathRec& last = std::as_const(FOut).GetRec(count - 1);
      const float dx = point.X - last.Point.X, dy = point.Y - last.Point.Y;
      if (last.Kind == prLineTo && dx * dx + dy * dy < FNear) {
        FOut.GetRec(count - 1).Point = point;
        return;
      }
    }
    FOut.AddPoint(prLineTo, point.X, point.Y);
  }

  void Curves(const THtPathRec& record, const THtPathRec* previous) {
    const std::span<const TPointF> points = Segments(record);
    TPointF start = points.size() < record.Points.size() ? record.Points[0]
                    : previous                           ? EndOf(*previous)
                                                         : TPointF();
    if (previous && previous->Kind == prArc) start = FOut.LastPoint();
    for (size_t i = 0; i + 2 < points.size(); i += 3) {
      Curve(start, points[i], points[i + 1], points[i + 2]);
      start = points[i + 2];
    }
  }

  void Curve(const TPointF& p0, const TPointF& p1, const TPointF& p2, const TPointF& p3) {
    constexpr float kFewest = 3, kMost = 10;
    const float cx = 3 * (p1.X - p0.X), bx = 3 * (p2.X - p1.X) - cx, ax = p3.X - p0.X - cx - bx;
    const float cy = 3 * (p1.Y - p0.Y), by = 3 * (p2.Y - p1.Y) - cy, ay = p3.Y - p0.Y - cy - by;
    const float length = std::hypot(p3.X - p0.X, p3.Y - p0.Y);
    const float wanted = std::nearbyint(length * FScale);
    const auto steps = static_cast<int>(wanted >= kMost ? kMost : wanted > kFewest ? wanted : kFewest);
    for (int i = 1; i <= steps; ++i) {
      const float t = static_cast<float>(i) / static_cast<float>(steps);
      const TPointF point{((ax * t + bx) * t + cx) * t + p0.X, ((ay * t + by) * t + cy) * t + p0.Y};
      if (!Same(point, FOut.LastPoint())) FOut.AddPoint(prLineTo, point.X, point.Y);
    }
  }

  void Arc(const THtPathRec& arc, bool first) {
    constexpr double kLargestStep = 10, kSmallestStep = 0.01;
    const double start = arc.Points[2].X, end = start + arc.Points[2].Y;
    const double extent = double{std::max(arc.Points[1].X, arc.Points[1].Y)} * FTolerance;
    const double step =
        std::max(extent > 0 ? std::min(360 / extent, kLargestStep) : kLargestStep, kSmallestStep);
    const TPointF from = ArcPoint(arc, start);
    first ? FOut.MoveTo(from.X, from.Y) : FOut.LineTo(from.X, from.Y);
    double angle = start;
    do {
      angle += step;
      const TPointF to = ArcPoint(arc, std::min(end, angle));
      FOut.LineTo(to.X, to.Y);
    } while (angle < end);
  }

  THtCustomPath& FOut;
  const float FTolerance, FNear, FScale;
};

void THtCustomPath::Flatten(float tolerance, THtCustomPath& out) const {
  TFlattener flattener(tolerance, out);
  const TRecs records = Recs();  // `out` may be this path
  for (size_t i = 0; i < records.size(); ++i) flattener.Add(records[i], i == 0 ? nullptr : &records[i - 1]);
}

// Text

namespace {

class TPathText {
 public:
  hstring Write(std::span<const THtPathRec> records) {
    for (size_t i = 0; i < records.size(); ++i) {
      FLast = i + 1 == records.size();
      Add(records[i], i == 0 ? nullptr : &records[i - 1]);
    }
    return FWriter.GetAsString();
  }

 private:
  // Relative steps need to know where the record before it ended.
  static bool IsKnown(const THtPathRec* previous) { return previous && previous->Kind <= prCurveTo; }

  void Add(const THtPathRec& record, const THtPathRec* previous) {
    switch (record.Kind) {
      case prMoveTo:
        FMove = record.Point;
        FWriter.Move(FMove.X, FMove.Y);
        break;
      case prLineTo: Line(record.Point, previous); break;
      case prCurveTo: Curves(record, previous); break;
      case prArc: Arc(record); break;
      case prCloseFigure: FWriter.Z(); break;
      case prQCurveto:
        FWriter.s(u"Q");
        for (const TPointF& point : record.Points) Point(point, u" ");
        break;
      case prPolyline:
        for (size_t i = 0; i < record.Points.size(); ++i) {
          const TPointF& point = record.Points[i];
          if (i == 0)
            FWriter.LineTo(point.X, point.Y);
          else
            FWriter.LineRel(point.X - record.Points[i - 1].X, point.Y - record.Points[i - 1].Y);
        }
        break;
      default: break;
    }
  }

  void Point(const TPointF& point, std::u16string_view behind) {
    FWriter.FS(point.X);
    FWriter.F(point.Y);
    FWriter.Add(behind);
  }

  void Line(const TPointF& point, const THtPathRec* previous) {
    if (FLast && Same(point, FMove)) return FWriter.s(u"z");
    if (!IsKnown(previous)) return FWriter.LineTo(point.X, point.Y);
    const TPointF& from = EndOf(*previous);
    FWriter.LineRel(point.X - from.X, point.Y - from.Y);
  }

  void Curves(const THtPathRec& record, const THtPathRec* previous) {
    const std::span<const TPointF> points = Segments(record);
    if (points.empty()) return;
    if (!IsKnown(previous)) {
      FWriter.s(u"C");
      for (const TPointF& point : points) Point(point, &point == &points.back() ? u" " : u",");
      return;
    }
    FWriter.s(u"c");
    TPointF base = EndOf(*previous);
    for (size_t i = 0; i < points.size(); ++i) {
      Point({points[i].X - base.X, points[i].Y - base.Y}, i + 1 == points.size() ? u"" : u",");
      if (i % 3 == 2) base = points[i];
    }
  }

  void Arc(const THtPathRec& arc) {
    using std::numbers::pi;
    const TPointF &corner = arc.Points[0], &size = arc.Points[1], &angles = arc.Points[2];
    const double end = THtPath::XCircle((angles.X + angles.Y) * pi / 180, size.X, size.Y);
    const TPointF to = THtPath::GetPositionForAngle(
        end * 180 / pi, {corner.X + size.X / 2, corner.Y + size.Y / 2}, size.X / 2, size.Y / 2);
    FWriter.Arc(size.X / 2, size.Y / 2, 0, std::fabs(angles.Y) > 180, angles.Y >= 0, to.X, to.Y);
  }

  THtSVGWriter FWriter{256};
  TPointF FMove;
  bool FLast = false;
};

}  // namespace

hstring THtCustomPath::AsString() const { return TPathText().Write(Recs()); }

}  // namespace ht
