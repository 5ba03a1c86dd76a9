// The shadow of a box: blurred as a whole where it is small, cut from a cached square where it is large.

#include <algorithm>
#include <array>
#include <cmath>

#include "htcanvas/canvas.h"
#include "htcanvas/shadowcache.h"

namespace ht {

namespace {

constexpr float kLargeArea = 40000;  // square pixels
constexpr uint32_t kClearBit24 = 0xFEFFFFFF;
constexpr uint32_t kKnockOut = 0x00FFFFFF;
constexpr int64_t kMaxBitmapSide = 32767;

int64_t Rounded(float value) { return detail::RoundToInt(value); }

bool IsBitmapSide(int64_t side) { return side > 0 && side <= kMaxBitmapSide; }

// An off-screen pass on a bitmap by a canvas of its own.
class TBitmapScene {
 public:
  TBitmapScene(const THtCanvasClass* canvasClass, THtBitmap& bitmap) : FCanvas(canvasClass->NewCanvas()) {
    if (!FCanvas) return;
    FBounds = {0, 0, bitmap.GetWidth(), bitmap.GetHeight()};
    THtCanvasScene scene;
    scene.Init(FBounds, bitmap.GetRawBits());
    scene.Bitmap = &bitmap;
    FCanvas->BeginScene(scene);
  }
  explicit operator bool() const { return FCanvas != nullptr; }
  THtCanvas* operator->() const { return FCanvas.get(); }
  THtCanvas& Canvas() const { return *FCanvas; }
  TRectF Whole() const { return R2F(FBounds); }
  const TRect& Bounds() const { return FBounds; }
  // The canvas is gone before the bitmap is drawn.
  void End() {
    FCanvas->EndScene();
    FCanvas.reset();
  }

 private:
  std::unique_ptr<THtCanvas> FCanvas;
  TRect FBounds;
};

void FillShape(THtCanvas& canvas, uint32_t color, const THtPath* path, const TRectF& box, float radius) {
  THtBrush& brush = canvas.GetBrush(color);
  if (path)
    canvas.FillPath(brush, *path);
  else if (radius > 0)
    canvas.FillRoundRect(brush, box, radius, radius);
  else
    canvas.FillRectangle(brush, box);
}

// Removes the shadow under the box: the same shape, moved back from the shadow's place.
void KnockOut(THtCanvas& canvas, const THtBitmap& bitmap, const THtShadowProps& props, const THtPath* path,
              const TRectF& box, const TPointF& place) {
  canvas.SetCompositingMode(false);
  canvas.SaveState();
  canvas.TranslateTransform(place.X - props.HOffset,
                            place.Y - static_cast<float>(bitmap.VerticalInverted) * props.VOffset);
  FillShape(canvas, kKnockOut, path, box, props.MaxBorderRadius);
  canvas.RestoreState();
}

TRectF Extent(const THtShadowProps& props, int64_t blur) {
  const auto b = static_cast<float>(blur);
  return {props.R.Left + props.HOffset - b, props.R.Top + props.VOffset - b,
          props.R.Right + props.HOffset + b, props.R.Bottom + props.VOffset + b};
}

// How the pieces of the cached square are cut and placed. Corners, and between them edges that are stretched from one
// line of pixels; the middle stays empty.
struct TPieces {
  TRect Target;                                      // where the whole shadow goes
  int32_t Corner;                                    // the size of a corner there
  int32_t ShiftX, ShiftY;                            // how far the shadow is moved
  int32_t SourceCorner, SourceShiftX, SourceShiftY;  // the same in the square

  void Draw(THtCanvas& canvas, THtBitmap& square) const;
};

// Within what can be added up; nobody sees beyond.
int32_t Held(int32_t value) { return std::clamp(value, -(1 << 28), 1 << 28); }
TRect Held(const TRect& rect) {
  return {Held(rect.Left), Held(rect.Top), Held(rect.Right), Held(rect.Bottom)};
}

void TPieces::Draw(THtCanvas& canvas, THtBitmap& square) const {
  const auto piece = [&](int32_t x, int32_t y, int32_t width, int32_t height, const TRect& source) {
    const TRectF target = R2F({x, y, x + width, y + height});
    if (canvas.DocumentRectInView(target)) canvas.DrawBitmap(square, target, source, 1);
  };
  const TRect& d = Target;
  const int32_t c = Corner, across = d.Width() - 2 * c, down = d.Height() - 2 * c;
  const int32_t h = SourceCorner, dx = SourceShiftX, dy = SourceShiftY;
  const int32_t w = square.GetWidth(), t = square.GetHeight();
  piece(d.Left, d.Top, c, c, {0, 0, h, h});
  piece(d.Right - c, d.Top, c, c, {w - h, 0, w, h});
  piece(d.Left, d.Bottom - c, c, c, {0, t - h, h, t});
  piece(d.Right - c, d.Bottom - c, c, c, {w - h, t - h, w, t});
  piece(d.Left + c, d.Top, across, c - ShiftY, {h, 0, h + 1, h - dy});
  piece(d.Left + c, d.Bottom - c - ShiftY, across, c + ShiftY, {h, t - h - dy, h + 1, t});
  piece(d.Left, d.Top + c, c - ShiftX, down, {0, h, h - dx, h + 1});
  piece(d.Right - c - ShiftX, d.Top + c, c + ShiftX, down, {w - h - dx, h, w, h + 1});
}

}  // namespace

void THtCanvas::DrawShadow(const THtPath* path, const THtShadowProps& props) {
  const float area = props.R.Width() * props.R.Height();
  if (area < kLargeArea)
    DrawSmallShadow(path, props);
  else if (area >= kLargeArea)
    DrawLargeShadow(props);
}

void THtCanvas::DrawSmallShadow(const THtPath* path, const THtShadowProps& props) {
  const TRectF extent = Extent(props, Rounded(props.Blur * 3));
  const int64_t width = Rounded(extent.Width()), height = Rounded(extent.Height());
  if (!IsBitmapSide(width) || !IsBitmapSide(height)) return;
  const auto bitmap =
      CanvasClass()->BitmapClass()->Create(static_cast<int32_t>(width), static_cast<int32_t>(height), true);
  if (!bitmap) return;
  bitmap->FillRect({0, 0, bitmap->GetWidth(), bitmap->GetHeight()}, 0);
  TBitmapScene scene(CanvasClass(), *bitmap);
  if (!scene) return;

  const TPointF place{props.HOffset - extent.Left, props.VOffset - extent.Top};
  scene->SaveState();
  scene->TranslateTransform(place.X, place.Y);
  scene->SetSmoothingMode(false);
  FillShape(scene.Canvas(), props.Color & kClearBit24, path, props.R, props.MaxBorderRadius);
  scene->RestoreState();
  scene->BlurRect(scene.Whole(), nullptr, props.Blur / 2);
  if (!props.HasBackground || props.BackgroundColor >> 24 != 0xFF) {
    if (props.MaxBorderRadius > 0) scene->SetSmoothingMode(true);
    KnockOut(scene.Canvas(), *bitmap, props, path, props.R, place);
  }
  scene.End();
  DrawBitmap(*bitmap, extent, scene.Bounds(), static_cast<float>(props.Opacity) / 255);
}

// Makes the square anew unless it serves as it is. Null where there are no bitmaps.
THtBitmap* THtCanvas::ShadowSquare(const THtShadowProps& props, int32_t side, int32_t blur) {
  if (!FShadowCache) {
    auto bitmap = CanvasClass()->BitmapClass()->Create(side, side, true);
    if (!bitmap) return nullptr;
    FShadowCache = std::make_unique<THtShadowCache>();
    FShadowCache->B = std::move(bitmap);
  } else if (FShadowCache->Serves(props)) {
    return FShadowCache->B.get();
  }
  FShadowCache->Props = props;
  THtBitmap& bitmap = *FShadowCache->B;
  if (bitmap.GetWidth() != side) bitmap.SetSize(side, side);
  bitmap.FillRect({0, 0, side, side}, 0);
  TBitmapScene scene(CanvasClass(), bitmap);
  if (!scene) return nullptr;

  const TRectF box = R2F({blur, blur, side - blur, side - blur});
  scene->SetSmoothingMode(false);
  FillShape(scene.Canvas(), props.Color & kClearBit24, nullptr, box, props.MaxBorderRadius);
  scene->BlurRect(scene.Whole(), nullptr, props.Blur / 2);
  if (!props.HasBackground) KnockOut(scene.Canvas(), bitmap, props, nullptr, box, {});
  scene.End();
  return &bitmap;
}

void THtCanvas::DrawLargeShadow(const THtShadowProps& props) {
  const int64_t blur = Rounded(props.Blur * 3);
  const int64_t side = Rounded(std::max(std::abs(props.HOffset), std::abs(props.VOffset))) +
                       Rounded(props.MaxBorderRadius * 2) + 4 * blur + 5;
  if (!IsBitmapSide(side)) return;
  THtBitmap* square = ShadowSquare(props, static_cast<int32_t>(side), static_cast<int32_t>(blur));
  if (!square) return;

  const TRectF extent = Extent(props, blur);
  const THtMatrixData matrix = FCurrentMatrix;
  const bool upright = matrix.Flags == mfIdentity || matrix.Flags == mfTranslation || matrix.Flags == mfScale;
  const float xScale = upright ? matrix.XScale() : 1, yScale = upright ? matrix.YScale() : 1;
  const auto h = detail::RoundToInt(static_cast<float>(side - 10) / 2);
  TPieces pieces;
  pieces.Target = Held(R2R(upright ? matrix.TransformRect(extent) : extent));
  pieces.Corner = Held(detail::RoundToInt(xScale * static_cast<float>(h)));
  pieces.ShiftX = Held(detail::RoundToInt(xScale * props.HOffset));
  pieces.ShiftY = Held(detail::RoundToInt(yScale * props.VOffset));
  pieces.SourceCorner = h;
  pieces.SourceShiftX = Held(detail::RoundToInt(props.HOffset));
  pieces.SourceShiftY = Held(detail::RoundToInt(props.VOffset));
  if (!upright) return pieces.Draw(*this, *square);
  // Placed in pixels, so that no seam shows between the pieces.
  SaveState();
  THtMatrixData identity;
  identity.Reset();
  MatrixTransform(identity, false);
  pieces.Draw(*this, *square);
  RestoreState();
}

}  // namespace ht
