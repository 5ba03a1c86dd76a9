#include "htcanvas/metastaterecs.h"

#include "htcanvas/canvas.h"
#include "htcanvas/metareader.h"
#include "htcanvas/metareplay.h"
#include "htcanvas/metawriter.h"

namespace ht {

void THtMetaMatrixRec::Draw(THtCanvas& canvas, float) { canvas.MatrixTransform(M, true); }

void THtMetaMatrixRec::SavetoStream(TStream& stream) {
  TMetaWriter out(stream, mtMatrix);
  out.Matrix(M);
  out.Flush();
}

void THtMetaMatrixRec::Load(TMetaReader& in) { M = in.Matrix(); }

void THtMetaStateRec::Draw(THtCanvas& canvas, float) {
  if (Save)
    canvas.SaveState();
  else
    canvas.RestoreState();
}

void THtMetaStateRec::SavetoStream(TStream& stream) {
  TMetaWriter out(stream, mtState);
  out.U8(Save);
  out.Flush();
}

void THtMetaStateRec::Load(TMetaReader& in) { Save = in.Bool(); }

void THtMetaClipRec::Draw(THtCanvas& canvas, float) {
  if (Path)
    canvas.IntersectClip(TReplayPath(*Path, canvas));
  else
    canvas.IntersectClip(Clip);
}

void THtMetaClipRec::SavetoStream(TStream& stream) {
  TMetaWriter out(stream, mtClip);
  out.Rect(Clip);
  out.U8(bool{Path});
  if (Path) out.Path(Path);
  out.Flush();
}

void THtMetaClipRec::Load(TMetaReader& in) {
  Clip = in.Rect();
  if (in.Bool()) Path = in.Path();
}

void THtMetaLinkRec::Draw(THtCanvas& canvas, float) { canvas.DrawLink(R, Href, IsAnchor); }

void THtMetaLinkTextRec::Draw(THtCanvas& canvas, float) {
  if (Begin)
    canvas.BeginLink(Href, Title);
  else
    canvas.EndLink();
}

THtMetaShadowRec::THtMetaShadowRec(const THtPath* path, const THtShadowProps& props) : FProps(props) {
  if (path) FPathData = path->AsString();
}

void THtMetaShadowRec::Draw(THtCanvas& canvas, float) {
  if (FPathData.Empty()) return canvas.DrawShadow(nullptr, FProps);
  const auto path = canvas.CanvasClass()->PathClass()->Create(false);
  path->Parse(FPathData);
  canvas.DrawShadow(path.get(), FProps);
}

}  // namespace ht
