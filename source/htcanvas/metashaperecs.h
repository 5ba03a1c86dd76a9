#pragma once

#include "htcanvas/metapath.h"
#include "htcanvas/metarecord.h"
#include "htcanvas/metaresource.h"

namespace ht {

// Lines and figures. A record holds either a brush, or a pen.

class THtMetaPathRec : public THtMetaCanvasRec {
  HT_CLASS(THtMetaPathRec, THtMetaCanvasRec)

 public:
  THtMetaPathRec() = default;
  THtMetaPathRec(const THtPath& path, THtMetaBrush brush);
  THtMetaPathRec(const THtPath& path, THtMetaPen pen);

  void Draw(THtCanvas& canvas, float opacity) override;
  void SavetoStream(TStream& stream) override;
  void Load(TMetaReader& in) override;

  THtMetaPath Path;
  THtMetaBrush Brush;
  THtMetaPen Pen;
  bool Fill = false;
  TRectF Bounds;  // of the path; the width of a line is not counted
};

class THtMetaLineRec : public THtMetaCanvasRec {
  HT_CLASS(THtMetaLineRec, THtMetaCanvasRec)

 public:
  THtMetaLineRec() = default;
  THtMetaLineRec(THtMetaPen pen, float x1, float y1, float x2, float y2);

  /// The line has the colour of its pen at any opacity.
  void Draw(THtCanvas& canvas, float opacity) override;
  void SavetoStream(TStream& stream) override;
  void Load(TMetaReader& in) override;

  float x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  THtMetaPen Pen;
};

class THtMetaEllipseRec : public THtMetaCanvasRec {
  HT_CLASS(THtMetaEllipseRec, THtMetaCanvasRec)

 public:
  THtMetaEllipseRec() = default;
  THtMetaEllipseRec(THtMetaBrush brush, float x, float y, float w, float h);
  THtMetaEllipseRec(THtMetaPen pen, float x, float y, float w, float h);

  void Draw(THtCanvas& canvas, float opacity) override;
  void SavetoStream(TStream& stream) override;
  void Load(TMetaReader& in) override;

  float X = 0, Y = 0, w = 0, h = 0;
  THtMetaBrush Brush;
  THtMetaPen Pen;
};

/// A plain colour, or a plain line, is kept as numbers and not as a resource.
class THtMetaRectRec : public THtMetaCanvasRec {
  HT_CLASS(THtMetaRectRec, THtMetaCanvasRec)

 public:
  THtMetaRectRec() = default;
  THtMetaRectRec(const THtBrush& brush, float x, float y, float w, float h);
  THtMetaRectRec(const THtPen& pen, float x, float y, float w, float h);

  /// Makes the corners round.
  void SetRadii(float rx, float ry);
  void Draw(THtCanvas& canvas, float opacity) override;
  void SavetoStream(TStream& stream) override;
  void Load(TMetaReader& in) override;

  float X = 0, Y = 0, w = 0, h = 0, Rx = 0, Ry = 0;
  THtMetaPen Pen;
  THtMetaBrush Brush;
  uint32_t BrushColor = 0, PenColor = 0;
  float PenWidth = 0;
  bool Rounded = false, Fill = false, Stroke = false;

 private:
  void FillOn(THtCanvas& canvas, const THtBrush& brush) const;
  void StrokeOn(THtCanvas& canvas, const THtPen& pen) const;
};

}  // namespace ht
