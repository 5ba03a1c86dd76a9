#include "htcanvas/metashaperecs.h"

#include <cmath>

#include "htcanvas/canvas.h"
#include "htcanvas/metareader.h"
#include "htcanvas/metareplay.h"
#include "htcanvas/metawriter.h"
#include "htutils/colorarith.h"

namespace ht {

namespace {

// A line reaches beyond its figure by half its width, and where it turns, by so many times that.
constexpr float kMiterLimit = 4;

bool StrokeInView(const THtCanvas& canvas, TRectF figure, float width) {
  const float beyond = std::abs(width) / 2 * kMiterLimit;
  RInflate(figure, beyond, beyond);
  return canvas.DocumentRectInView(figure);
}

}  // namespace

// --- paths ---

THtMetaPathRec::THtMetaPathRec(const THtPath& path, THtMetaBrush brush)
    : Path(path), Brush(std::move(brush)), Fill(true) {
  path.GetBounds(Bounds, nullptr);
}

THtMetaPathRec::THtMetaPathRec(const THtPath& path, THtMetaPen pen) : Path(path), Pen(std::move(pen)) {
  path.GetBounds(Bounds, nullptr);
}

void THtMetaPathRec::Draw(THtCanvas& canvas, float opacity) {
  if (!Path) return;
  if (Fill) {
    if (Brush && canvas.DocumentRectInView(Bounds))
      canvas.FillPath(TReplayBrush(*Brush, canvas, opacity), TReplayPath(*Path, canvas));
  } else if (Pen && StrokeInView(canvas, Bounds, Pen->GetWidth())) {
    canvas.DrawPath(TReplayPen(*Pen, canvas, opacity), TReplayPath(*Path, canvas));
  }
}

void THtMetaPathRec::SavetoStream(TStream& stream) {
  TMetaWriter out(stream, mtPath);
  out.Path(Path);
  out.U8(Fill);
  out.Ink(Fill, Brush, Pen);
  out.Flush();
}

void THtMetaPathRec::Load(TMetaReader& in) {
  Path = in.Path();
  if (Path) Path->GetBounds(Bounds, nullptr);
  Fill = in.Bool();
  in.Ink(Fill, Brush, Pen);
}

// --- lines ---

THtMetaLineRec::THtMetaLineRec(THtMetaPen pen, float ax1, float ay1, float ax2, float ay2)
    : x1(ax1), y1(ay1), x2(ax2), y2(ay2), Pen(std::move(pen)) {}

void THtMetaLineRec::Draw(THtCanvas& canvas, float opacity) {
  if (!Pen) return;
  THtPen& pen = canvas.GetPen(AddOpacity(Pen->GetColor(), opacity), Pen->GetWidth());
  pen.Assign(*Pen);
  canvas.DrawLine(pen, x1, y1, x2, y2);
}

void THtMetaLineRec::SavetoStream(TStream& stream) {
  TMetaWriter out(stream, mtLine);
  out.F32(x1, y1, x2, y2);
  out.Ink(false, {}, Pen);
  out.Flush();
}

void THtMetaLineRec::Load(TMetaReader& in) {
  in.F32(x1, y1, x2, y2);
  Pen = in.Pen();
}

// --- ellipses ---

THtMetaEllipseRec::THtMetaEllipseRec(THtMetaBrush brush, float x, float y, float width, float height)
    : X(x), Y(y), w(width), h(height), Brush(std::move(brush)) {}

THtMetaEllipseRec::THtMetaEllipseRec(THtMetaPen pen, float x, float y, float width, float height)
    : X(x), Y(y), w(width), h(height), Pen(std::move(pen)) {}

void THtMetaEllipseRec::Draw(THtCanvas& canvas, float opacity) {
  if (Brush)
    canvas.FillEllipse(TReplayBrush(*Brush, canvas, opacity), X, Y, w, h);
  else if (Pen)
    canvas.DrawEllipse(TReplayPen(*Pen, canvas, opacity), X, Y, w, h);
}

void THtMetaEllipseRec::SavetoStream(TStream& stream) {
  TMetaWriter out(stream, mtEllipse);
  out.F32(X, Y, w, h);
  out.U8(bool{Brush});
  out.Ink(bool{Brush}, Brush, Pen);
  out.Flush();
}

void THtMetaEllipseRec::Load(TMetaReader& in) {
  in.F32(X, Y, w, h);
  in.Ink(in.Bool(), Brush, Pen);
}

// --- rectangles ---

THtMetaRectRec::THtMetaRectRec(const THtBrush& brush, float x, float y, float width, float height)
    : X(x), Y(y), w(width), h(height), Fill(true) {
  if (brush.Kind == hbSolid)
    BrushColor = brush.GetColor();
  else
    Brush = THtMetaBrush(brush);
}

THtMetaRectRec::THtMetaRectRec(const THtPen& pen, float x, float y, float width, float height)
    : X(x), Y(y), w(width), h(height), Stroke(true) {
  if (detail::IsPlain(pen))
    PenColor = pen.GetColor(), PenWidth = pen.GetWidth();
  else
    Pen = THtMetaPen(pen);
}

void THtMetaRectRec::SetRadii(float rx, float ry) {
  Rx = rx;
  Ry = ry;
  Rounded = true;
}

void THtMetaRectRec::FillOn(THtCanvas& canvas, const THtBrush& brush) const {
  if (Rounded)
    canvas.FillRoundRect(brush, {X, Y, X + w, Y + h}, Rx, Ry);
  else
    canvas.FillRectangle(brush, X, Y, w, h);
}

void THtMetaRectRec::StrokeOn(THtCanvas& canvas, const THtPen& pen) const {
  if (Rounded)
    canvas.RoundRect(pen, {X, Y, X + w, Y + h}, Rx, Ry);
  else
    canvas.DrawRectangle(pen, X, Y, w, h);
}

void THtMetaRectRec::Draw(THtCanvas& canvas, float opacity) {
  const TRectF rect{X, Y, X + w, Y + h};
  if (Fill && canvas.DocumentRectInView(rect)) {
    if (Brush)
      FillOn(canvas, TReplayBrush(*Brush, canvas, opacity));
    else
      FillOn(canvas, canvas.GetBrush(AddOpacity(BrushColor, opacity)));
  }
  if (Stroke && StrokeInView(canvas, rect, Pen ? Pen->GetWidth() : PenWidth)) {
    if (Pen)
      StrokeOn(canvas, TReplayPen(*Pen, canvas, opacity));
    else
      StrokeOn(canvas, canvas.GetPen(AddOpacity(PenColor, opacity), PenWidth));
  }
}

void THtMetaRectRec::SavetoStream(TStream& stream) {
  TMetaWriter out(stream, mtRect);
  out.F32(X, Y, w, h, Rx, Ry);
  out.U8(Rounded);
  out.U8(Fill);
  const bool hasResource = Fill ? bool{Brush} : bool{Pen};
  out.U8(hasResource);
  if (hasResource)
    out.Ink(Fill, Brush, Pen);
  else if (Fill)
    out.U32(BrushColor);
  else
    out.U32(PenColor), out.F32(PenWidth);
  out.Flush();
}

void THtMetaRectRec::Load(TMetaReader& in) {
  in.F32(X, Y, w, h, Rx, Ry);
  Rounded = in.Bool();
  Fill = in.Bool();
  Stroke = !Fill;
  if (in.Bool())
    in.Ink(Fill, Brush, Pen);
  else if (Fill)
    BrushColor = in.U32();
  else
    PenColor = in.U32(), PenWidth = in.F32();
}

}  // namespace ht
