#pragma once

#include "htruntime/object.h"
#include "htutils/geometry.h"

namespace ht {

class THtBitmap;
class THtCanvas;

/// Class references of bitmaps.
class THtBitmapClass : public TClass {
 public:
  using TClass::TClass;

  /// A new bitmap of the class; null for a class that has no instances.
  std::unique_ptr<THtBitmap> Create(int32_t width, int32_t height, bool alpha) const;

 protected:
  ~THtBitmapClass() = default;
};

/// Pixels that a concrete canvas paints on. A raster canvas derives its own class, which can be made without arguments.
class THtBitmap : public TObject {
 public:
  using TClassRef = THtBitmapClass;
  static const THtBitmapClass* Class();
  const TClass* ClassType() const override { return Class(); }

  /// The sign of the vertical axis of the rows: -1 for a bitmap that is stored bottom-up.
  int32_t VerticalInverted = 1;

  virtual int32_t GetHeight() const = 0;
  virtual int32_t GetWidth() const = 0;
  /// The native object that a scene on this bitmap draws with: THtCanvasScene::Canvas. Borrowed.
  virtual void* GetRawBits() = 0;
  /// The pixels. Raises EHtException "HtBitmap buffer not implemented" here.
  virtual void* GetBuffer();
  /// Gives a new bitmap its size. Does nothing here.
  virtual void Create(int32_t width, int32_t height, bool alpha);
  /// Both do nothing here.
  virtual void FillRect(const TRect& rect, uint32_t color);
  virtual void CopyFromCanvas(THtCanvas& canvas, const TRect& rect);
  virtual void DrawOnCanvas(THtCanvas& canvas, const TRectF& dest, const TRect& source, float opacity) = 0;
  virtual void SetSize(int32_t width, int32_t height) = 0;
};

}  // namespace ht
