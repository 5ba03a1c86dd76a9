#include "htcanvas/canvas.h"

#include <algorithm>
#include <cmath>

#include "htcanvas/bitmap.h"
#include "htcanvas/custompath.h"
#include "htcanvas/fontcollection.h"
#include "htcanvas/shadowcache.h"
#include "htcanvas/textrun.h"
#include "htruntime/exception.h"
#include "htruntime/filestream.h"
#include "htutils/samevalue.h"

namespace ht {

namespace {

// Stands for the base class, which has no fonts.
class TAbstractCanvasClass final : public THtCanvasClass {
 public:
  using THtCanvasClass::THtCanvasClass;

  THtStringList& FontDictionary() const override { RaiseAbstract(); }
  float MeasureString(const hstring&, THtFont&, const THtTextStyle&, float, int32_t, int32_t) const override {
    RaiseAbstract();
  }

 private:
  [[noreturn]] static void RaiseAbstract() {
    throw EHtException(u"THtCanvas has no fonts: a concrete class is needed"_hs);
  }
};

int32_t Rounded(float value) { return detail::RoundToInt(value); }

int32_t Sum(int32_t a, int32_t b) { return detail::Sum(a, b); }

// Update rectangles grow toward what a scroll brings in.
void GrowByScroll(THtCanvasScene& scene) {
  const int32_t sx = Rounded(-scene.ScrollX);
  const int32_t sy = Rounded(-scene.ScrollY);
  if (sx == 0 && sy == 0) return;
  for (TRect& r : scene.UpdateRects) {
    if (sx > 0)
      r.Right = std::min(scene.ViewPort.Right, Sum(r.Right, sx));
    else
      r.Left = std::max(0, Sum(r.Left, sx));
    if (sy > 0)
      r.Bottom = std::min(scene.ViewPort.Bottom, Sum(r.Bottom, sy));
    else
      r.Top = std::max(0, Sum(r.Top, sy));
  }
}

template <class T>
bool InView(const THtCanvasScene& scene, const THtRectOf<T>& rect) {
  if (!RectIntersects(rect, scene.ClipRect)) return false;
  const auto touches = [&rect](const TRect& update) { return RectIntersects(rect, update); };
  return scene.UpdateRects.empty() ||
         std::any_of(scene.UpdateRects.begin(), scene.UpdateRects.end(), touches);
}

}  // namespace

const THtCanvasClass* THtCanvas::Class() {
  static constexpr TAbstractCanvasClass kClass(u"THtCanvas",
                                               []() -> const TClass* { return TObject::Class(); });
  return &kClass;
}

THtCanvas::THtCanvas() = default;
THtCanvas::~THtCanvas() = default;

// --- scene and state ---

void THtCanvas::BeginScene(const THtCanvasScene& scene) {
  Scene = scene;
  FStateStackIndex = -1;
  for (THtMatrixData* matrix : {&InitialMatrix, &RootMatrix, &FCurrentMatrix, &FReverseMatrix})
    matrix->Reset();
  RootMatrix.Translate(static_cast<float>(Scene.ViewPort.Left) + Scene.OffsetX,
                       static_cast<float>(Scene.ViewPort.Top) + Scene.OffsetY);
  if (!SameValue(Scene.Scale, 1)) RootMatrix.Scale(Scene.Scale, Scene.Scale);
  GrowByScroll(Scene);
}

void THtCanvas::BeforeEndScene() {}
void THtCanvas::EndScene() {}
void THtCanvas::CachedDraw(TObject*, const TRectF&, float, float, uint32_t, float) {}

// The index goes on falling when states are restored that were never saved, and rises from there.
void THtCanvas::SaveState() {
  if (++FStateStackIndex < 0) return;
  const auto index = static_cast<size_t>(FStateStackIndex);
  if (index >= FStateStack.size()) FStateStack.resize(index + 1);
  FStateStack[index].M = FCurrentMatrix;
}

void THtCanvas::RestoreState() {
  if (FStateStackIndex >= 0) {
    FCurrentMatrix = FStateStack[static_cast<size_t>(FStateStackIndex)].M;
    FReverseMatrix = FCurrentMatrix;
    FReverseMatrix.Inverse();
  }
  --FStateStackIndex;
}

void THtCanvas::IntersectClip(const TRectF&) {}
void THtCanvas::IntersectClip(const THtPath&) {}
void THtCanvas::SetClip(const TRectF&) {}
void THtCanvas::SetSmoothingMode(bool) {}
void THtCanvas::SetSmoothingLevel(int32_t level) { SetSmoothingMode(level >= 1); }
void THtCanvas::SetCompositingMode(bool) {}

// --- shapes ---

std::unique_ptr<THtPath> THtCanvas::NewPath() const { return CanvasClass()->PathClass()->Create(false); }

void THtCanvas::DrawLine(const THtPen& pen, float x1, float y1, float x2, float y2) {
  const auto path = NewPath();
  path->AddLine(x1, y1, x2, y2);
  DrawPath(pen, *path);
}

void THtCanvas::DrawArc(const THtPen& pen, float x, float y, float w, float h, float start, float sweep) {
  const auto path = NewPath();
  path->AddArc(x, y, w, h, start, sweep, 1);
  DrawPath(pen, *path);
}

void THtCanvas::FillEllipse(const THtBrush& brush, float x, float y, float w, float h) {
  const auto path = NewPath();
  path->AddArc(x, y, w, h, 0, 359.9f, 1);
  path->CloseFigure();
  FillPath(brush, *path);
}

void THtCanvas::DrawEllipse(const THtPen& pen, float x, float y, float w, float h) {
  const auto path = NewPath();
  path->AddArc(x, y, w, h, 0, 360, 1);
  path->CloseFigure();
  DrawPath(pen, *path);
}

void THtCanvas::FillRectangle(const THtBrush& brush, float x, float y, float w, float h) {
  const auto path = NewPath();
  path->AddRectangle(x, y, w, h);
  FillPath(brush, *path);
}

void THtCanvas::DrawRectangle(const THtPen& pen, float x, float y, float w, float h) {
  const auto path = NewPath();
  path->AddRectangle(x, y, w, h);
  DrawPath(pen, *path);
}

void THtCanvas::RoundRect(const THtPen& pen, const TRectF& rect, float rx, float ry) {
  SetSmoothingMode(true);
  const auto path = NewPath();
  path->AddRoundRect(rect, rx, ry);
  DrawPath(pen, *path);
}

void THtCanvas::FillRoundRect(const THtBrush& brush, const TRectF& rect, float rx, float ry) {
  if (SameValue(rx, 0) && SameValue(ry, 0)) return FillRectangle(brush, rect);
  const auto path = NewPath();
  path->AddRoundRect(rect, rx, ry);
  FillPath(brush, *path);
}

// --- text and links ---

void THtCanvas::DrawStringEx(const hstring& text, const TRectF& rect, THtFont& font,
                             const THtTextStyle& style, std::span<const float>, const THtBrush*,
                             const THtPen*, int32_t start, int32_t count) {
  DrawString(text, rect, font, style, start, count);
}

std::unique_ptr<THtTextObject> THtCanvas::CreateTextObject(const hstring&, THtFont&, const THtTextStyle&,
                                                           const TRectF&, float, float) {
  return nullptr;
}

void THtCanvas::DrawTextObject(THtTextObject&, const TRectF&, THtFont&) {}
void THtCanvas::DrawLink(const TRectF&, const hstring&, bool) {}
void THtCanvas::BeginLink(const hstring&, const hstring&) {}
void THtCanvas::EndLink() {}

// --- transforms ---

void THtCanvas::ScaleTransform(float sx, float sy) {
  if (SameValue(sx, 1) && SameValue(sy, 1)) return;
  THtMatrixData matrix;
  matrix.Reset();
  matrix.Scale(sx, sy);
  MatrixTransform(matrix, true);
}

void THtCanvas::TranslateTransform(float dx, float dy) {
  if (SameValue(dx, 0) && SameValue(dy, 0)) return;
  THtMatrixData matrix;
  matrix.Reset();
  matrix.Translate(dx, dy);
  MatrixTransform(matrix, true);
}

void THtCanvas::RotateTransform(float angle) {
  THtMatrixData matrix;
  matrix.CreateRotation(angle);
  MatrixTransform(matrix, true);
}

void THtCanvas::MatrixTransform(const THtMatrixData& matrix, bool multiply) {
  if (multiply)
    FCurrentMatrix.Multiply(matrix);
  else
    FCurrentMatrix = matrix;
  FReverseMatrix = FCurrentMatrix;
  FReverseMatrix.Inverse();
}

void THtCanvas::TransformByScene() {
  ScaleTransform(Scene.Scale, Scene.Scale);
  TranslateTransform(static_cast<float>(Scene.ViewPort.Left), static_cast<float>(Scene.ViewPort.Top));
}

float THtCanvas::CurrentScale() const {
  return std::abs(FCurrentMatrix.Data[0]) + std::abs(FCurrentMatrix.Data[1]);
}

THtMatrixData& THtCanvas::CurrentMatrix() { return FCurrentMatrix; }

int32_t THtCanvas::Scale(float value) const { return Rounded(value * Scene.Scale); }

void THtCanvas::SnaptoPixels(TRectF& rect) const {
  rect = FReverseMatrix.TransformRect(R2F(R2R(FCurrentMatrix.TransformRect(rect))));
}

// --- what is in view ---

bool THtCanvas::CanvasRectInView(const TRect& rect) const { return InView(Scene, rect); }
bool THtCanvas::CanvasRectInView(const TRectF& rect) const { return InView(Scene, rect); }
bool THtCanvas::DocumentRectInView(const TRectF& rect) const {
  return CanvasRectInView(FCurrentMatrix.TransformRect(rect));
}
bool THtCanvas::DocumentRectInViewPort(const TRectF& rect) const {
  return RectIntersects(FCurrentMatrix.TransformRect(rect), Scene.ViewPort);
}

// --- resources ---

THtPen& THtCanvas::GetPen(uint32_t color, float width) {
  if (!FPen) {
    FPen = CanvasClass()->PenClass()->Create(color, width);
    return *FPen;
  }
  FPen->SetColor(color);
  FPen->SetWidth(width);
  FPen->SetLineJoin(ljMiter);
  FPen->SetLineCap(lcFlat);
  FPen->SetPenStyle(hpsSolid);
  FPen->SetDashOffset(0);
  FPen->SetDashes({}, -1);
  FPen->FMode = ldmCopy;
  return *FPen;
}

THtBrush& THtCanvas::GetBrush(uint32_t color) {
  if (FSolidBrush)
    FSolidBrush->SetColor(color);
  else
    FSolidBrush = CanvasClass()->BrushClass()->Create(color);
  return *FSolidBrush;
}

THtFontCollection& THtCanvas::GetFontCollection() {
  if (FFontCollection) return *FFontCollection;
  if (THtFontCollection* shared = CanvasClass()->SharedFontCollection()) return *shared;
  if (!FOwnFonts) FOwnFonts = CanvasClass()->CreateFontCollection();
  return *FOwnFonts;
}

void THtCanvas::SetImageColorMatrix(const THtColorMatrix& matrix) {
  if (!FImageColorMatrix) FImageColorMatrix = std::make_unique<THtColorMatrix>();
  *FImageColorMatrix = matrix;
}

void THtCanvas::Clear(uint32_t color) {
  SetCompositingMode(false);
  THtMatrixData inverse = FCurrentMatrix;
  inverse.Inverse();
  const auto fill = [&](const TRect& rect) {
    FillRectangle(GetBrush(color), inverse.TransformRect(R2F(rect)));
  };
  if (Scene.UpdateRects.empty()) fill(Scene.ClipRect);
  for (const TRect& rect : Scene.UpdateRects) fill(rect);
  SetCompositingMode(true);
}

bool THtCanvas::FastScale(const THtCanvasScene&, const TRectF&) { return false; }
void THtCanvas::DrawBitmap(THtBitmap&, const TRectF&, const TRect&, float) {}
void THtCanvas::BlurRect(const TRectF&, const THtPath*, float) {}

// --- pages ---

THtPage* THtCanvas::GetPage(int32_t index) const {
  return index >= 0 && index < GetPageCount() ? fPages[static_cast<size_t>(index)].get() : nullptr;
}

void THtCanvas::UpdatePagePixels() {
  FPageWidthPixels = HtPixelsOfMM(FPageWidthMM, FDPI);
  FPageHeightPixels = HtPixelsOfMM(FPageHeightMM, FDPI);
}

void THtCanvas::SetPageWidthMM(float width) {
  FPageWidthMM = width;
  UpdatePagePixels();
}

void THtCanvas::SetPageHeightMM(float height) {
  FPageHeightMM = height;
  UpdatePagePixels();
}

void THtCanvas::SetMultipage(int32_t hPages, int32_t vPages, TCSSOrientation orientation) {
  FHPages = std::max(hPages, 1);
  FVPages = std::max(vPages, 1);
  FMultipageOrientation = orientation;
}

void THtCanvas::BeginPaging(float widthMM, float heightMM, int32_t dpi, TCSSOrientation orientation) {
  FPageWidthMM = widthMM;
  FPageHeightMM = heightMM;
  FDPI = dpi;
  UpdatePagePixels();
  FPaged = true;
  fPages.clear();
  NewPage(orientation);
}

void THtCanvas::EndPaging() {}

void THtCanvas::NewPage(TCSSOrientation orientation) {
  auto page = CanvasClass()->PageClass()->Create(FPageWidthMM, FPageHeightMM, GetPageCount() + 1, FDPI);
  page->Orientation = orientation;
  fPages.push_back(std::move(page));
}

bool THtCanvas::Print(TObject*, const hstring&) { return false; }

void THtCanvas::SavetoPDF(const hstring& fileName) {
  TFileStream file(fileName, fmCreate);
  SavetoPDFStream(file);
}

void THtCanvas::SavetoPDFStream(TStream&) {}

}  // namespace ht
