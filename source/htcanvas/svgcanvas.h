#pragma once

#include "htcanvas/canvas.h"
#include "htcanvas/refcanvasclass.h"
#include "htcanvas/svgwriter.h"
#include "htmlcss/styleindexer.h"

namespace ht {

class THtSVGCanvasClass : public THtRefCanvasClass {
 public:
  using THtRefCanvasClass::THtRefCanvasClass;

  const THtPageClass* PageClass() const override;
  THtCanvasFlags GetFlags() const override;

 protected:
  ~THtSVGCanvasClass() = default;
};

/// A page as an SVG document.
class THtPageSVG : public THtPage {
  HT_CLASS(THtPageSVG, THtPage)

 public:
  hstring SVG;
};

/// Writes what is drawn as SVG.
///
///   HtDefaultCanvasClass = …;                      // a class that has fonts
///   THtSVGCanvas canvas;
///   canvas.BeginScene(scene);
///   canvas.BeginPaging(210, 297, 96, coDefault);
///   canvas.FillRectangle(canvas.GetBrush(0xFFFF0000), 10, 10, 100, 50);
///   canvas.EndScene();
///   static_cast<THtPageSVG*>(canvas.GetPage(0))->SVG;
///
/// Text refers to shared classes, whose CSS is Style(): it is not part of the pages, and the caller places it. Shadows,
/// bitmaps, blurs and the opacity of images are left out. Without a page the text stays in the writer. Ids and classes
/// run on through the scenes of a canvas.
class THtSVGCanvas : public THtCanvas {
  HT_CLASS(THtSVGCanvas, THtCanvas)

 public:
  using TClassRef = THtSVGCanvasClass;

  THtSVGCanvas();
  ~THtSVGCanvas() override;

  void BeginScene(const THtCanvasScene& scene) override;
  /// Closes the groups of the last open level, and makes the document of the last page.
  void EndScene() override;
  void SaveState() override;
  void RestoreState() override;
  void IntersectClip(const TRectF& rect) override;
  void IntersectClip(const THtPath& path) override;
  void DrawPath(const THtPen& pen, const THtPath& path) override;
  void FillPath(const THtBrush& brush, const THtPath& path) override;
  void DrawLine(const THtPen& pen, float x1, float y1, float x2, float y2) override;
  void FillEllipse(const THtBrush& brush, float x, float y, float w, float h) override;
  void DrawEllipse(const THtPen& pen, float x, float y, float w, float h) override;
  using THtCanvas::FillRectangle;
  void FillRectangle(const THtBrush& brush, float x, float y, float w, float h) override;
  using THtCanvas::DrawRectangle;
  void DrawRectangle(const THtPen& pen, float x, float y, float w, float h) override;
  void RoundRect(const THtPen& pen, const TRectF& rect, float rx, float ry) override;
  void FillRoundRect(const THtBrush& brush, const TRectF& rect, float rx, float ry) override;
  void DrawString(const hstring& text, const TRectF& rect, THtFont& font, const THtTextStyle& style,
                  int32_t start, int32_t count) override;
  void DrawLink(const TRectF& rect, const hstring& href, bool isAnchor) override;
  void BeginLink(const hstring& href, const hstring& title) override;
  void EndLink() override;
  void MatrixTransform(const THtMatrixData& matrix, bool multiply) override;
  void DrawShadow(const THtPath* path, const THtShadowProps& props) override;
  /// By address where the image has one, else with its data; a recorded one is played.
  void DrawImage(THtImage& image, const TRectF& rect, float opacity) override;

  /// The CSS of the classes that texts refer to.
  hstring Style() const { return FIndexer.GenerateCSS(); }
  /// What the current scene, or the last one, has written. The next scene begins a new one.
  THtSVGWriter& Writer() { return *FWriter; }
  /// Attributes that the next text element carries, as "name=value".
  TStringList& CustomAttributes() { return FCustomAttributes; }

 protected:
  std::unique_ptr<THtSVGWriter> FWriter;
  std::vector<int32_t> FGCounts;  // for each open level the groups that it has opened
  TStyleIndexer FIndexer;
  TStringList FCustomAttributes;
  int32_t FIds = 0;
  int32_t FLastGradientID = 0;
  hstring FLastGradient;

 private:
  // The class of the text drawn last: most texts come in runs of one font and colour.
  struct TTextClass {
    hstring FontName;
    float Height = 0;
    uint32_t Color = 0;
    bool Bold = false, Italic = false;
    hstring Name;  // empty: none yet
  };

  /// Writes the gradient if the brush is one with stops; FLastGradient is its id.
  bool CheckAsGradientBrush(const THtBrush& brush);
  void WriteStops(const THtBrush& brush);
  void Box(float x, float y, float w, float h);
  void Box(const TRectF& rect) { Box(rect.Left, rect.Top, rect.Width(), rect.Height()); }
  void Radii(float rx, float ry);
  void EllipseBox(float x, float y, float w, float h);
  void FillWithGradient();
  void FillAttr(const THtBrush& brush, bool gradient);
  void OpenGroup();
  void CloseGroups();
  void FinishPage(THtPageSVG& page);
  const hstring& TextClass(const THtFont& font, uint32_t color);
  void WriteText(std::u16string_view text);

  TTextClass FTextClass;
};

}  // namespace ht
