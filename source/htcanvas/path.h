#pragma once

#include <span>
#include <vector>

#include "htcanvas/matrix.h"

namespace ht {

class THtCanvas;
class THtCustomPath;
class THtPath;

/// Class references of paths.
class THtPathClass : public TClass {
 public:
  using TClass::TClass;

  /// A new path of the class; null for a class that has no instances.
  std::unique_ptr<THtPath> Create(bool forClip) const;
  /// The polar angle of a point of an ellipse with the half axes a and b by its parametric angle; both in radians.
  virtual double XEllipse(double angle, double a, double b) const;

 protected:
  ~THtPathClass() = default;
};

/// An arc of an ellipse by its centre; degrees. Radii may have been made larger to reach the end points.
struct THtArc {
  double Cx = 0, Cy = 0, Rx = 0, Ry = 0, StartAngle = 0, SweepAngle = 0;
};

/// A figure that a canvas fills, strokes or clips with: straight lines, cubic curves and arcs of ellipses.
///
///   path->Parse(u"M10 10h80v80z");
///   path->AddRoundRect(20, 20, 60, 60, 5, 5);
///   canvas.FillPath(brush, *path);
///
/// Coordinates are floats, angles degrees, clockwise on a canvas whose y grows downward. A raster canvas derives its own
/// path; THtCustomPath is the one that knows its figures. It owns FCustomPath unless that is the path itself.
class THtPath : public TObject {
 public:
  using TClassRef = THtPathClass;
  static const THtPathClass* Class();
  const TClass* ClassType() const override { return Class(); }
  const THtPathClass* PathClass() const { return static_cast<const THtPathClass*>(ClassType()); }

  explicit THtPath(bool forClip = false) : FForClip(forClip) {}
  ~THtPath() override;

  /// The fill rule: winding, else even-odd.
  virtual bool GetFillModeWinding() const { return FFillModeWindings; }
  virtual void SetFillModeWinding(bool winding) { FFillModeWindings = winding; }
  /// Called for a new path.
  virtual void Create(bool forClip) { FForClip = forClip; }
  virtual void BeginPath() {}
  virtual void EndPath() {}
  virtual void Clear() = 0;
  virtual std::unique_ptr<THtPath> Clone() const = 0;
  virtual void StartFigure() {}
  virtual void CloseFigure() {}
  virtual void AddLine(float x1, float y1, float x2, float y2);
  /// A part of the ellipse in a box.
  virtual void AddArc(float x, float y, float w, float h, float startAngle, float sweepAngle,
                      float extra) = 0;
  virtual void AddRectangle(float x, float y, float w, float h);
  void AddRectangle(const TRectF& rect) { AddRectangle(rect.Left, rect.Top, rect.Width(), rect.Height()); }
  /// Clockwise from the top left, not closed.
  virtual void AddRoundRect(float x, float y, float w, float h, float rx, float ry);
  void AddRoundRect(const TRectF& rect, float rx, float ry) {
    AddRoundRect(rect.Left, rect.Top, rect.Width(), rect.Height(), rx, ry);
  }
  /// Cubic segments from the current point, three points each: two control points and the end.
  virtual void AddBeziers(std::span<const TPointF>) {}
  /// Quadratic segments, two points each. They are added as cubic ones.
  virtual void AddQBeziers(std::span<const TPointF> points);
  virtual void AddPath(const THtPath& path) = 0;
  /// `matrix` may be null.
  virtual void GetBounds(TRectF& rect, const THtMatrixData* matrix) const = 0;
  virtual void Transform(const THtMatrixData& matrix) = 0;
  virtual void MoveTo(float x, float y) = 0;
  virtual void LineTo(float x, float y) = 0;
  virtual void AddEllipse(float x, float y, float w, float h);
  /// Adds what SVG path data says. Characters that mean nothing are passed over. Raises EHtException
  /// "Unknown path command " and the letter for one that is none, and with a U+0000 for numbers that belong to no
  /// command, also behind z; what was added before stays.
  virtual void Parse(std::u16string_view text);
  virtual bool Empty() const { return false; }
  /// As SVG path data; empty without FCustomPath.
  virtual hstring AsString() const;

  /// From the end points of an SVG arc to its centre. `angle` is the rotation of the ellipse. The angles are those of the
  /// point on the ellipse as seen from its centre. Source: SVG 1.1, appendix F.6.5.
  static THtArc CalcArc(double x1, double y1, double x2, double y2, double rx, double ry, double angle,
                        bool largeArc, bool sweep, const THtPathClass& pathClass);
  /// The inverse of THtPathClass::XEllipse; radians.
  static double XCircle(double angle, double a, double b);
  /// Appends cubic segments that follow an arc, its start in front; radians. Nothing for a sweep of 0.
  static void ArctoBezier(double cx, double cy, double rx, double ry, double start, double sweep,
                          std::vector<TPointF>& points);
  /// The point of an ellipse at a parametric angle in degrees.
  static TPointF GetPositionForAngle(double angle, const TPointF& center, double rx, double ry);

  bool FForClip;
  bool FFillModeWindings = false;
  /// The figures as records: the path itself, a shadow that it owns, or null.
  THtCustomPath* FCustomPath = nullptr;
};

}  // namespace ht
