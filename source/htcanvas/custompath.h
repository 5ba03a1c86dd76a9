#pragma once

#include <algorithm>
#include <array>

#include "htcanvas/path.h"

namespace ht {

class THtPen;

HT_ENUM(THtPathRecKind, uint8_t, prMoveTo, prLineTo, prCurveTo, prArc, prStartFigure, prCloseFigure,
        prEllipse, prQCurveto, prPolyline);

/// The points of one step. Up to three lie in the record itself: nearly all steps have no more.
class THtPathPoints {
 public:
  THtPathPoints() = default;
  THtPathPoints(const THtPathPoints& other) { assign(other.begin(), other.end()); }
  THtPathPoints(THtPathPoints&& other) noexcept { swap(other); }
  THtPathPoints& operator=(THtPathPoints other) noexcept {
    swap(other);
    return *this;
  }
  THtPathPoints& operator=(std::initializer_list<TPointF> points) {
    assign(points.begin(), points.end());
    return *this;
  }

  size_t size() const { return FCount; }
  bool empty() const { return FCount == 0; }
  TPointF* data() { return FMany ? FMany.get() : FFew.data(); }
  const TPointF* data() const { return FMany ? FMany.get() : FFew.data(); }
  TPointF* begin() { return data(); }
  TPointF* end() { return data() + FCount; }
  const TPointF* begin() const { return data(); }
  const TPointF* end() const { return data() + FCount; }
  TPointF& operator[](size_t index) { return data()[index]; }
  const TPointF& operator[](size_t index) const { return data()[index]; }
  const TPointF& back() const { return data()[FCount - 1]; }
  void assign(const TPointF* first, const TPointF* last) {
    FCount = static_cast<size_t>(last - first);
    FMany = FCount > FFew.size() ? std::make_unique<TPointF[]>(FCount) : nullptr;
    std::copy(first, last, data());
  }
  void swap(THtPathPoints& other) noexcept {
    std::swap(FCount, other.FCount);
    std::swap(FFew, other.FFew);
    std::swap(FMany, other.FMany);
  }

 private:
  size_t FCount = 0;
  std::array<TPointF, 3> FFew;
  std::unique_ptr<TPointF[]> FMany;
};

/// One step of a path.
///
///   Kind                    uses           meaning
///   prMoveTo, prLineTo      Point          the target
///   prCurveTo               Points         cubic segments, three points each
///   prArc                   Points[0..2]   corner and size of the ellipse's box; start and sweep in degrees
///   prEllipse               Points[0..1]   corner and size of its box
///   prQCurveto, prPolyline  Points         quadratic segments; corners. They come from subclasses and streams only.
struct THtPathRec {
  THtPathRecKind Kind = prMoveTo;
  TPointF Point;
  THtPathPoints Points;
};

/// A path that keeps what it is made of, and so can be written, measured, made of lines and asked for points.
///
/// Clone and Assign share the records: a step that is changed in place (GetRec, Translate, Transform, a move or a line that
/// replaces one) shows in both paths, until one of the two gets another step. AddPath copies.
class THtCustomPath : public THtPath {
  HT_CLASS(THtCustomPath, THtPath)

 public:
  explicit THtCustomPath(bool forClip = false);

  void Clear() override;
  std::unique_ptr<THtPath> Clone() const override;
  void Assign(const THtCustomPath& path);
  /// Gives the path records of its own.
  void Unshare() { Own(); }
  void StartFigure() override { Add(prStartFigure); }
  void CloseFigure() override { Add(prCloseFigure); }
  void AddArc(float x, float y, float w, float h, float startAngle, float sweepAngle, float extra) override;
  using THtPath::AddRectangle;
  void AddRectangle(float x, float y, float w, float h) override;
  void AddBeziers(std::span<const TPointF> points) override;
  /// Raises std::bad_cast for a path without records.
  void AddPath(const THtPath& path) override;
  void GetBounds(TRectF& rect, const THtMatrixData* matrix) const override;
  void Transform(const THtMatrixData& matrix) override;
  /// A move behind a move replaces it; one to the point where the figure stands is left out.
  void MoveTo(float x, float y) override;
  /// A vertical or horizontal line behind one of the same direction lengthens it.
  void LineTo(float x, float y) override;
  void AddEllipse(float x, float y, float w, float h) override;
  bool Empty() const override { return Count() == 0; }
  hstring AsString() const override;
  /// Even-odd. Curves count as the lines between their points, arcs and ellipses not at all: flatten the path first.
  virtual bool ContainsPoint(float x, float y) const;

  int32_t Count() const { return static_cast<int32_t>(Recs().size()); }
  THtPathRec& GetRec(int32_t index) { return InPlace()[static_cast<size_t>(index)]; }
  const THtPathRec& GetRec(int32_t index) const { return Recs()[static_cast<size_t>(index)]; }
  void Translate(float dx, float dy);
  /// Adds the path as lines to `out`; `tolerance` is a distance that does not matter.
  void Flatten(float tolerance, THtCustomPath& out) const;
  /// Where the next line starts; (0, 0) at the start.
  TPointF LastPoint() const;
  /// An upright rectangle.
  bool IsRect() const;
  bool HasCurves() const;
  /// Draws the lines, arcs and ellipses one by one; curves are left out.
  void DrawPath(THtCanvas& canvas, const THtPen& pen) const;

  /// Points nearer than this are one.
  float Tolerance = 1e-6f;

 private:
  using TRecs = std::vector<THtPathRec>;
  class TFlattener;

  const TRecs& Recs() const;
  TRecs& Own();
  TRecs& InPlace();
  THtPathRec& Add(THtPathRecKind kind);
  void AddPoint(THtPathRecKind kind, float x, float y);

  std::shared_ptr<TRecs> FRecs;
};

}  // namespace ht
