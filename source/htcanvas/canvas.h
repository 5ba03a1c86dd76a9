#pragma once

#include <array>
#include <functional>
#include <span>

#include "htcanvas/brush.h"
#include "htcanvas/canvasclasses.h"
#include "htcanvas/canvasscene.h"
#include "htcanvas/image.h"
#include "htcanvas/page.h"
#include "htcanvas/path.h"
#include "htcanvas/pen.h"
#include "htcanvas/shadowprops.h"

namespace ht {

class TElementBackground;
class THtShadowCache;
class THtTextObject;
class TStream;

/// What SaveState keeps.
struct THtCanvasState {
  THtMatrixData M;
};

/// 5 x 5 values that an image's colours are multiplied by, row by row.
using THtColorMatrix = std::array<float, 25>;

/// The surface that documents are painted on. A concrete canvas derives from it, here THtSVGCanvas and THtMetaCanvas, in a
/// host those that paint pixels; it must supply DrawPath, FillPath, DrawString and the abstract operations of its class.
/// Everything else has a body here: a primitive without support falls back on another one, or does nothing.
///
///   canvas.BeginScene(scene);
///   canvas.SaveState();
///   canvas.TranslateTransform(10, 10);
///   canvas.FillRectangle(canvas.GetBrush(0xFFFF0000), 0, 0, 100, 50);
///   canvas.RestoreState();
///   canvas.BeforeEndScene();
///   canvas.EndScene();
///
/// A canvas may run many scenes. Paged output calls BeginPaging within the first scene, NewPage before each further one,
/// and EndPaging at the end. Coordinates are in pixels, y grows downward; angles are in degrees; colours are 0xAARRGGBB.
/// One thread at a time; different canvases may be used side by side.
class THtCanvas : public TObject {
 public:
  using TClassRef = THtCanvasClass;
  static const THtCanvasClass* Class();
  const TClass* ClassType() const override { return Class(); }
  const THtCanvasClass* CanvasClass() const { return static_cast<const THtCanvasClass*>(ClassType()); }

  THtMatrixData InitialMatrix;
  /// Offset and scale of the scene. A concrete canvas applies it itself.
  THtMatrixData RootMatrix;
  /// The scene of the pass.
  THtCanvasScene Scene;

  THtCanvas();
  ~THtCanvas() override;

  /// Index from 0; null outside.
  virtual THtPage* GetPage(int32_t index) const;
  /// Fills a rectangle with tiles of an image. `origin` is the place in the tiling that comes to the corner of `rect`.
  /// Each direction may be left at one row or column of tiles. More than 16 million tiles are not drawn at all. `radius`
  /// is not used here.
  virtual void DoFillImage(THtImage& image, float tileW, float tileH, const TRectF& rect,
                           const TPointF& origin, bool repeatX, bool repeatY, float opacity, float radius);

  /// Takes the scene over and starts afresh with the identity matrix and an empty stack of states.
  virtual void BeginScene(const THtCanvasScene& scene);
  virtual void BeforeEndScene();
  virtual void EndScene();
  /// Between a concrete canvas and its host. Does nothing here.
  virtual void CachedDraw(TObject* object, const TRectF& rect, float a, float b, uint32_t color, float c);
  /// The matrix, and whatever else a concrete canvas keeps. To be called in pairs; a RestoreState too many leaves the
  /// matrix as it is.
  virtual void SaveState();
  virtual void RestoreState();
  virtual void IntersectClip(const TRectF& rect);
  virtual void IntersectClip(const THtPath& path);
  virtual void SetClip(const TRectF& rect);
  virtual void SetSmoothingMode(bool on);
  virtual void SetSmoothingLevel(int32_t level);
  /// True blends. False copies the source's pixels, alpha included.
  virtual void SetCompositingMode(bool blend);
  virtual void DrawPath(const THtPen& pen, const THtPath& path) = 0;
  virtual void FillPath(const THtBrush& brush, const THtPath& path) = 0;
  virtual void DrawLine(const THtPen& pen, float x1, float y1, float x2, float y2);
  /// A part of the ellipse in that box.
  virtual void DrawArc(const THtPen& pen, float x, float y, float w, float h, float start, float sweep);
  virtual void FillEllipse(const THtBrush& brush, float x, float y, float w, float h);
  virtual void DrawEllipse(const THtPen& pen, float x, float y, float w, float h);
  virtual void FillRectangle(const THtBrush& brush, float x, float y, float w, float h);
  void FillRectangle(const THtBrush& brush, const TRectF& rect) {
    FillRectangle(brush, rect.Left, rect.Top, rect.Width(), rect.Height());
  }
  virtual void DrawRectangle(const THtPen& pen, float x, float y, float w, float h);
  void DrawRectangle(const THtPen& pen, const TRectF& rect) {
    DrawRectangle(pen, rect.Left, rect.Top, rect.Width(), rect.Height());
  }
  virtual void RoundRect(const THtPen& pen, const TRectF& rect, float rx, float ry);
  virtual void FillRoundRect(const THtBrush& brush, const TRectF& rect, float rx, float ry);
  /// Form controls. `value` is not used here; `disabled` goes before `hover`.
  virtual void DrawCheck(const TRectF& rect, int32_t value, bool checked, bool pressed, bool hover,
                         bool disabled);
  virtual void DrawRadio(const TRectF& rect, int32_t value, bool checked, bool pressed, bool hover,
                         bool disabled);
  virtual void DrawButton(const TRectF& rect, int32_t value, bool checked, bool pressed, bool hover,
                          bool disabled);
  /// A zigzag along y1, as under a misspelled word. `y2` is not used.
  virtual void DrawWavyLine(float x1, float y1, float x2, float y2, const THtPen& pen);
  /// `count` characters from position `start` (from 1) on, in a box whose top is the font's top. A negative count reaches
  /// to the end of the text.
  virtual void DrawString(const hstring& text, const TRectF& rect, THtFont& font, const THtTextStyle& style,
                          int32_t start, int32_t count) = 0;
  /// With spacing for each character, a brush and a pen, all of which are ignored here.
  virtual void DrawStringEx(const hstring& text, const TRectF& rect, THtFont& font, const THtTextStyle& style,
                            std::span<const float> spacing, const THtBrush* fill, const THtPen* stroke,
                            int32_t start, int32_t count);
  /// A text prepared for drawing. Null here; what the numbers say is between a concrete canvas and its host.
  virtual std::unique_ptr<THtTextObject> CreateTextObject(const hstring& text, THtFont& font,
                                                          const THtTextStyle& style, const TRectF& rect,
                                                          float a, float b);
  virtual void DrawTextObject(THtTextObject& object, const TRectF& rect, THtFont& font);
  /// A link over a rectangle, or with `isAnchor` a place that `href` names. Does nothing here.
  virtual void DrawLink(const TRectF& rect, const hstring& href, bool isAnchor);
  /// What is drawn up to EndLink leads to `href`. Both do nothing here.
  virtual void BeginLink(const hstring& href, const hstring& title);
  virtual void EndLink();
  /// All three go through MatrixTransform, the first two only when there is something to do.
  virtual void ScaleTransform(float sx, float sy);
  virtual void TranslateTransform(float dx, float dy);
  virtual void RotateTransform(float angle);
  /// Multiplied, a point goes through `matrix` first and then through what was there before; else `matrix` takes its place.
  virtual void MatrixTransform(const THtMatrixData& matrix, bool multiply);
  /// The shadow of a box, of the shape of `path` if there is one. Needs a BitmapClass with instances.
  virtual void DrawShadow(const THtPath* path, const THtShadowProps& props);
  /// The text, and under it the same text moved by (dx, dy) in the colour of the shadow. `blur` is not used here.
  virtual void DrawTextShadow(const hstring& text, const TRectF& rect, const THtTextStyle& style,
                              THtFont& font, float dx, float dy, float blur, uint32_t color);
  /// Blurs the pixels of the rectangle, within `path` if there is one. Does nothing here.
  virtual void BlurRect(const TRectF& rect, const THtPath* path, float radius);
  /// Plays an image that is a recorded display list. Any other one is left to the concrete canvas.
  virtual void DrawImage(THtImage& image, const TRectF& rect, float opacity);
  /// Draws the image of a CSS background into `rect`, moved by the deltas, with the background's size, place and repeat.
  virtual void FillImage(const TRectF& rect, THtImage& image, float deltaX, float deltaY,
                         const TElementBackground& background, float opacity, float radius);
  virtual void DrawBitmap(THtBitmap& bitmap, const TRectF& dest, const TRect& source, float opacity);
  /// A solid pen or brush that the canvas keeps: valid until the next call of the same operation.
  virtual THtPen& GetPen(uint32_t color, float width);
  virtual THtBrush& GetBrush(uint32_t color);
  virtual void SetImageColorMatrix(const THtColorMatrix& matrix);
  /// Starts paged output: frees earlier pages and makes the first one.
  virtual void BeginPaging(float widthMM, float heightMM, int32_t dpi, TCSSOrientation orientation);
  virtual void EndPaging();
  virtual void NewPage(TCSSOrientation orientation);
  /// False here: nothing was printed.
  virtual bool Print(TObject* printer, const hstring& title);
  /// Raises the EFileStreamError of a file that cannot be made.
  virtual void SavetoPDF(const hstring& fileName);
  /// Does nothing here.
  virtual void SavetoPDFStream(TStream& stream);
  /// By how much the current matrix stretches horizontal lengths.
  virtual float CurrentScale() const;
  virtual THtMatrixData& CurrentMatrix();
  /// Fills what must be repainted with the colour, whatever is there.
  virtual void Clear(uint32_t color);
  /// False here: the scene was not scaled and must be painted.
  virtual bool FastScale(const THtCanvasScene& scene, const TRectF& rect);

  /// The fonts for recorded texts that bring a font of another class: those that were set, else those that the class
  /// shares, else the canvas's own.
  THtFontCollection& GetFontCollection();
  /// Borrowed; null goes back to the rule above.
  void SetFontCollection(THtFontCollection* fonts) { FFontCollection = fonts; }
  bool HasImageMatrix() const { return FImageColorMatrix != nullptr; }
  int32_t Scale(float value) const;
  int32_t GetPageCount() const { return static_cast<int32_t>(fPages.size()); }
  void SetPageWidthMM(float width);
  void SetPageHeightMM(float height);
  int32_t GetPageWidthPixels() const { return FPageWidthPixels; }
  int32_t GetPageHeightPixels() const { return FPageHeightPixels; }
  /// How many pages come side by side and below each other on a sheet of what is exported, and how the sheet lies; with
  /// coDefault each page is one of its own. Numbers below 1 count as 1.
  void SetMultipage(int32_t hPages, int32_t vPages, TCSSOrientation orientation);
  bool GetPaged() const { return FPaged; }
  /// Moves the sides to whole pixels of the target.
  void SnaptoPixels(TRectF& rect) const;
  /// Whether a rectangle of the target touches what is repainted.
  bool CanvasRectInView(const TRect& rect) const;
  bool CanvasRectInView(const TRectF& rect) const;
  /// The same for a rectangle in current coordinates.
  bool DocumentRectInView(const TRectF& rect) const;
  bool DocumentRectInViewPort(const TRectF& rect) const;
  /// Called for each page of an export to PDF.
  void SetOnRenderPDFPage(std::function<void(THtCanvas&, int32_t page)> callback) {
    FOnRenderPDFPage = std::move(callback);
  }

 protected:
  /// For canvases without a target of their own, which draw the scale and the viewport's corner as transforms.
  void TransformByScene();

  TCSSOrientation FMultipageOrientation = coDefault;
  int32_t FVPages = 1, FHPages = 1;  // pages a sheet
  THtFontCollection* FFontCollection = nullptr;
  float FScreenScale = 1;
  int32_t FPageHeightPixels = 0, FPageWidthPixels = 0;
  float FPageWidthMM = 0, FPageHeightMM = 0;
  int32_t FDPI = 96;
  bool FPaged = false;
  std::vector<std::unique_ptr<THtPage>> fPages;
  bool FCached = false, FNeedCacheUpdate = false;  // for canvases that keep what they painted
  std::unique_ptr<THtColorMatrix> FImageColorMatrix;
  std::function<void(THtCanvas&, int32_t page)> FOnRenderPDFPage;
  THtMatrixData FCurrentMatrix, FReverseMatrix;
  std::vector<THtCanvasState> FStateStack;
  int32_t FStateStackIndex = -1;
  std::unique_ptr<THtPen> FPen;
  std::unique_ptr<THtBrush> FSolidBrush;
  std::unique_ptr<THtStringList> FFontDictionary;  // for canvases that list fonts of their own
  std::unique_ptr<THtShadowCache> FShadowCache;
  bool FPrintAsBitmap = false;

 private:
  std::unique_ptr<THtPath> NewPath() const;
  void DrawSmallShadow(const THtPath* path, const THtShadowProps& props);
  void DrawLargeShadow(const THtShadowProps& props);
  THtBitmap* ShadowSquare(const THtShadowProps& props, int32_t side, int32_t blur);
  void UpdatePagePixels();

  std::unique_ptr<THtFontCollection> FOwnFonts;
};

}  // namespace ht
