#pragma once

#include <functional>

#include "htcanvas/image.h"
#include "htcanvas/metarecord.h"
#include "htmlcss/elementbackground.h"
#include "htutils/geometry.h"

namespace ht {

/// An image. It is borrowed and has to outlive the record, unless the record made it itself or Unify has taken its data.
class THtMetaImageRec : public THtMetaCanvasRec {
  HT_CLASS(THtMetaImageRec, THtMetaCanvasRec)

 public:
  THtMetaImageRec() = default;
  THtMetaImageRec(THtImage& image, const TRectF& source, const TRectF& dest, float opacity);
  ~THtMetaImageRec() override;

  void Draw(THtCanvas& canvas, float opacity) override;
  /// Keeps the data of the image and lets go of the image itself. An image without data stays.
  void Unify() override;
  void SavetoStream(TStream& stream) override;
  void Load(TMetaReader& in) override;

  THtImage* Image = nullptr;
  TRectF RSource, RDest;
  THtBytes ImageData;  // encoded; empty as long as the image has it
  float Opacity = 1;
  bool FImageSelfCreated = false;

 protected:
  /// Calls `draw` with the image, or with one of the canvas's class for an image of another, if there is one to draw.
  void WithImage(THtCanvas& canvas, const std::function<void(THtImage&)>& draw);

 private:
  void DropImage();
};

/// The tiled or placed image of a background.
class THtMetaFillImageRec : public THtMetaImageRec {
  HT_CLASS(THtMetaFillImageRec, THtMetaImageRec)

 public:
  THtMetaFillImageRec() = default;
  /// Lengths of the background are turned into pixels now.
  THtMetaFillImageRec(const TRectF& rect, THtImage& image, float deltaX, float deltaY,
                      const TElementBackground& background, float opacity, float radius);

  void Draw(THtCanvas& canvas, float opacity) override;

  float OriginDeltaX = 0, OriginDeltaY = 0, Radius = 0;
  TElementBackground Background;
};

}  // namespace ht
