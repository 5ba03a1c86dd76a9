#pragma once

#include "htcanvas/canvas.h"
#include "htcanvas/metalist.h"
#include "htcanvas/metaresource.h"
#include "htcanvas/refcanvasclass.h"

namespace ht {

class THtPagedExporter;

/// The class reference of recording canvases. What needs fonts or resources is asked of the reference class.
class THtMetaCanvasClass : public THtRefCanvasClass {
 public:
  using THtRefCanvasClass::THtRefCanvasClass;

  const THtPageClass* PageClass() const override;
  THtCanvasFlags GetFlags() const override;

 protected:
  ~THtMetaCanvasClass() = default;
};

/// A page as recorded drawing.
class THtPageMeta : public THtPage {
  HT_CLASS(THtPageMeta, THtPage)

 public:
  THtPageMeta();

  void Create(float widthMM, float heightMM, int32_t number, int32_t dpi) override;
  /// An image that plays the page, which has to outlive it. Its size is that of the page at `dpi`, 0 standing for 96.
  std::unique_ptr<THtImage> AsImage(int32_t dpi) override;
  /// Empty.
  THtBytes AsMetaFileBytes() override;
  /// Nothing is cached.
  void ClearCache() {}

  const std::unique_ptr<THtMetaList> Meta;
};

/// Draws nothing, but keeps what it is told as records of a THtMetaList.
///
///   THtMetaCanvas canvas;
///   canvas.BeginScene(scene);
///   canvas.BeginPaging(210, 297, 96, coDefault);
///   canvas.FillRectangle(canvas.GetBrush(0xFFFF0000), 10, 10, 100, 50);
///   canvas.EndPaging();
///   canvas.ExportTo(exporter);                                   // every page, or sheets of several
///   static_cast<THtPageMeta*>(canvas.GetPage(0))->Meta->Play(screen, 1);
///
/// What is drawn before the first scene goes nowhere. Kept are shapes, texts, images, clips, transforms, saved states,
/// links and shadows. What works on pixels is not: smoothing, compositing, bitmaps, blurs, SetClip, the colour matrix.
/// Fonts and images that are drawn with are referred to, and have to outlive the recording; see THtMetaList. Texts that are
/// played into it with fonts of another class get theirs from GetFontCollection.
class THtMetaCanvas : public THtCanvas {
  HT_CLASS(THtMetaCanvas, THtCanvas)

 public:
  using TClassRef = THtMetaCanvasClass;

  THtMetaCanvas();
  /// Records into a list of the caller's, until paging begins.
  explicit THtMetaCanvas(THtMetaList& list);
  ~THtMetaCanvas() override;

  void BeginScene(const THtCanvasScene& scene) override;
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
  /// An invisible text is not recorded.
  void DrawString(const hstring& text, const TRectF& rect, THtFont& font, const THtTextStyle& style,
                  int32_t start, int32_t count) override;
  void DrawStringEx(const hstring& text, const TRectF& rect, THtFont& font, const THtTextStyle& style,
                    std::span<const float> spacing, const THtBrush* fill, const THtPen* stroke, int32_t start,
                    int32_t count) override;
  void DrawLink(const TRectF& rect, const hstring& href, bool isAnchor) override;
  void BeginLink(const hstring& href, const hstring& title) override;
  void EndLink() override;
  void MatrixTransform(const THtMatrixData& matrix, bool multiply) override;
  void DrawShadow(const THtPath* path, const THtShadowProps& props) override;
  void DrawImage(THtImage& image, const TRectF& rect, float opacity) override;
  void FillImage(const TRectF& rect, THtImage& image, float deltaX, float deltaY,
                 const TElementBackground& background, float opacity, float radius) override;
  void BeginPaging(float widthMM, float heightMM, int32_t dpi, TCSSOrientation orientation) override;
  /// Puts the number of pages in the place of each "$$|$#" in plain texts.
  void EndPaging() override;
  /// What was recorded in the scene before the first page belongs to that page.
  void NewPage(TCSSOrientation orientation) override;
  /// Through the exporter that is registered for "PDF". Raises EHtException
  /// "PDF exporter not registered (add htvelmapdf unit into project)".
  void SavetoPDFStream(TStream& stream) override;

  /// Hands the pages that are not disabled to the exporter, in the order of PrintOrder or else in their own; or with
  /// SetMultipage, sheets of all pages. The exporter may stop it.
  void ExportTo(THtPagedExporter& exporter);
  /// Moves all pages of another canvas behind those of this one. They keep their numbers and refer to the fonts of the
  /// other canvas; images are taken over by their data.
  void AddPages(THtMetaCanvas& other);
  /// Lays the pages out on sheets, as SetMultipage says. They refer to the records of the pages.
  void MakeMultipage();
  /// What is recorded into now: that of the last page, or of the scenes without pages. Null before the first scene.
  THtMetaList* List() const { return FList; }
  /// Leaves an image that was drawn to the list.
  void KeepImage(std::unique_ptr<THtImage> image);

  std::vector<std::unique_ptr<THtMetaList>> Multipages;
  /// Indexes of pages, from 0; those that there are not are passed over.
  std::vector<int32_t> PrintOrder;

 protected:
  THtMetaList* FList = nullptr;           // that of the last page, the own one, or the caller's
  std::unique_ptr<THtMetaList> FOwnList;  // made by BeginScene
  std::unique_ptr<THtCanvas> FCanvas;     // a reference canvas, for derived classes

 private:
  THtPageMeta& Page(int32_t index) const { return static_cast<THtPageMeta&>(*GetPage(index)); }
  template <class T, class... TArgs>
  T* Record(TArgs&&... args);
  THtMetaPen PlainPen(const THtPen& pen);
  bool ExportPage(THtPagedExporter& exporter, int32_t index) const;
  TPoint SheetSize() const;

  THtMetaRecChain FChain;
  std::unique_ptr<THtMetaList> FFrames;  // the records of sheets that belong to no page
  detail::TMetaClones<THtBrush> FBrushes;
  detail::TMetaClones<THtPen> FPens;
};

}  // namespace ht
