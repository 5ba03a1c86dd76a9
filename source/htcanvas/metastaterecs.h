#pragma once

#include "htcanvas/matrix.h"
#include "htcanvas/metapath.h"
#include "htcanvas/metarecord.h"
#include "htcanvas/shadowprops.h"

namespace ht {

class THtMetaMatrixRec : public THtMetaCanvasRec {
  HT_CLASS(THtMetaMatrixRec, THtMetaCanvasRec)

 public:
  explicit THtMetaMatrixRec(const THtMatrixData& m = {}) : M(m) {}

  /// Multiplies, however it was recorded: the drawing may stand anywhere on what it is replayed on.
  void Draw(THtCanvas& canvas, float opacity) override;
  void SavetoStream(TStream& stream) override;
  void Load(TMetaReader& in) override;

  THtMatrixData M;
};

class THtMetaStateRec : public THtMetaCanvasRec {
  HT_CLASS(THtMetaStateRec, THtMetaCanvasRec)

 public:
  explicit THtMetaStateRec(bool save = false) : Save(save) {}

  void Draw(THtCanvas& canvas, float opacity) override;
  void SavetoStream(TStream& stream) override;
  void Load(TMetaReader& in) override;

  bool Save;  // else restores
};

class THtMetaClipRec : public THtMetaCanvasRec {
  HT_CLASS(THtMetaClipRec, THtMetaCanvasRec)

 public:
  THtMetaClipRec() = default;
  explicit THtMetaClipRec(const TRectF& clip) : Clip(clip) {}
  explicit THtMetaClipRec(const THtPath& path) : Path(path) {}

  void Draw(THtCanvas& canvas, float opacity) override;
  void SavetoStream(TStream& stream) override;
  void Load(TMetaReader& in) override;

  TRectF Clip;
  THtMetaPath Path;  // clips instead of the rectangle, if there is one
};

// The stream has no form for the records below.

class THtMetaLinkRec : public THtMetaCanvasRec {
  HT_CLASS(THtMetaLinkRec, THtMetaCanvasRec)

 public:
  THtMetaLinkRec(const TRectF& rect, hstring href, bool isAnchor)
      : R(rect), Href(std::move(href)), IsAnchor(isAnchor) {}

  void Draw(THtCanvas& canvas, float opacity) override;

  TRectF R;
  hstring Href;
  bool IsAnchor;
};

/// The start of what leads to an address, or its end.
class THtMetaLinkTextRec : public THtMetaCanvasRec {
  HT_CLASS(THtMetaLinkTextRec, THtMetaCanvasRec)

 public:
  THtMetaLinkTextRec(hstring href, hstring title)
      : Begin(true), Href(std::move(href)), Title(std::move(title)) {}
  THtMetaLinkTextRec() : Begin(false) {}

  void Draw(THtCanvas& canvas, float opacity) override;

  bool Begin;
  hstring Href, Title;
};

class THtMetaShadowRec : public THtMetaCanvasRec {
  HT_CLASS(THtMetaShadowRec, THtMetaCanvasRec)

 public:
  THtMetaShadowRec(const THtPath* path, const THtShadowProps& props);

  void Draw(THtCanvas& canvas, float opacity) override;

  hstring FPathData;  // empty: the shadow of the box
  THtShadowProps FProps;
};

}  // namespace ht
