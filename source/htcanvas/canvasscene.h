#pragma once

#include <vector>

#include "htcanvas/matrix.h"
#include "htutils/geometry.h"

namespace ht {

class THtBitmap;

/// One paint pass: what is painted on, and which part of it.
///
///   THtCanvasScene scene;
///   scene.Init(viewPort, window);
///   scene.AddUpdateRect(dirty);
///   canvas.BeginScene(scene);
///
/// A plain value; it borrows what it points to. Rectangles are in pixels of the target.
struct THtCanvasScene {
  void* Canvas = nullptr;          // the native drawing object; GetRawBits of an off-screen bitmap
  void* Window = nullptr;          // the native window, or null
  TRect ViewPort;                  // what is painted of the target
  TRect ClipRect;                  // the union of what must be repainted
  std::vector<TRect> UpdateRects;  // what must be repainted; empty: all of ClipRect
  float OffsetX = 0, OffsetY = 0;  // moves the origin further
  float Scale = 1;
  float ScrollX = 0, ScrollY = 0;  // by how much this pass has scrolled
  THtBitmap* Bitmap = nullptr;     // the target of an off-screen scene, or null
  bool EditorMode = false;         // the pass paints an editing surface
  THtMatrixData Transform;

  /// A new pass over the whole viewport.
  void Init(const TRect& viewPort, void* canvas);
  /// Takes the rectangle as it is, if a part of it lies in the viewport and no earlier rectangle holds it.
  void AddUpdateRect(const TRect& rect);
  /// Moves the sides of every update rectangle outward, up to the viewport.
  void ExpandUpdateRects(int32_t left, int32_t top, int32_t right, int32_t bottom);
  /// Prepares a fast scroll of a pixel buffer of four bytes a pixel: moves the places that rows are copied from and to,
  /// grows the update rectangles, and adds the strips that come into view. `width` and `height` are those of the buffer,
  /// `stride` is the signed distance of its rows in bytes. Either pointer may be null, and then stays so.
  void AddScrollUpdateRects(int32_t dx, int32_t dy, int32_t width, int32_t height, int32_t stride,
                            uint8_t*& ptr1, uint8_t*& ptr2);

 private:
  void AddScrollStrips(int32_t dx, int32_t dy, int32_t width, int32_t height);
};

}  // namespace ht
