#include "htcanvas/metaimagerecs.h"

#include "htcanvas/metacanvas.h"
#include "htcanvas/metareader.h"
#include "htcanvas/metawriter.h"

namespace ht {

THtMetaImageRec::THtMetaImageRec(THtImage& image, const TRectF& source, const TRectF& dest, float opacity)
    : Image(&image), RSource(source), RDest(dest), Opacity(opacity) {}

THtMetaImageRec::~THtMetaImageRec() { DropImage(); }

void THtMetaImageRec::DropImage() {
  if (FImageSelfCreated) delete Image;
  FImageSelfCreated = false;
  Image = nullptr;
}

void THtMetaImageRec::WithImage(THtCanvas& canvas, const std::function<void(THtImage&)>& draw) {
  const THtImageClass* imageClass = canvas.CanvasClass()->ImageClass();
  const auto byAddress = [&] {
    return !Image->Url.Empty() && canvas.CanvasClass()->GetFlags().Contains(hcfSupportsImageRef);
  };
  auto* recorder = dynamic_cast<THtMetaCanvas*>(&canvas);
  // A recording may outlive this record and the image that it owns.
  const bool refers = recorder ? !FImageSelfCreated : Image && Image->ClassType() == imageClass;
  if (Image && (refers || Image->IsMeta || byAddress())) return draw(*Image);
  const THtBytes bytes = Image && ImageData.empty() ? Image->AsBytes() : ImageData;
  if (bytes.empty()) return;
  auto crossed = imageClass->Create(bytes);
  if (!crossed) return;
  if (Image) {
    crossed->Width = Image->Width;
    crossed->Height = Image->Height;
  }
  if (recorder || crossed->GetLoaded()) draw(*crossed);
  if (recorder) recorder->KeepImage(std::move(crossed));
}

void THtMetaImageRec::Draw(THtCanvas& canvas, float opacity) {
  if (!canvas.DocumentRectInView(RDest)) return;
  WithImage(canvas, [&](THtImage& image) { canvas.DrawImage(image, RDest, Opacity * opacity); });
}

void THtMetaImageRec::Unify() {
  if (!Image) return;
  if (ImageData.empty()) ImageData = Image->AsBytes();
  if (!ImageData.empty()) DropImage();
}

// Bytes that the image has at hand are not kept a second time.
void THtMetaImageRec::SavetoStream(TStream& stream) {
  const auto data = ImageData.empty() && Image ? Image->GetImageData() : nullptr;
  auto* atHand = dynamic_cast<TBytesStream*>(data.get());
  if (data && !atHand) ImageData = Image->AsBytes();
  TMetaWriter out(stream, mtImage);
  out.Rect(RSource);
  out.Rect(RDest);
  out.F32(Opacity);
  out.Bytes(atHand ? atHand->GetBytes() : ImageData);
  out.Flush();
}

void THtMetaImageRec::Load(TMetaReader& in) {
  RSource = in.Rect();
  RDest = in.Rect();
  Opacity = in.F32();
  ImageData = in.Bytes();
  DropImage();
  Image = in.CanvasClass().ImageClass()->Create(ImageData).release();
  FImageSelfCreated = true;
}

THtMetaFillImageRec::THtMetaFillImageRec(const TRectF& rect, THtImage& image, float deltaX, float deltaY,
                                         const TElementBackground& background, float opacity, float radius)
    : THtMetaImageRec(image, {}, rect, opacity), OriginDeltaX(deltaX), OriginDeltaY(deltaY), Radius(radius) {
  Background.Assign(background);
  for (const auto member : {&TElementBackground::SizeX, &TElementBackground::SizeY,
                            &TElementBackground::PositionX, &TElementBackground::PositionY}) {
    TMeasure length = background.*member;
    if (length.GetAuto()) continue;
    TMeasure& frozen = Background.*member;
    frozen.Parent = nullptr;
    frozen.Calc = nullptr;
    frozen.SetPixels(length.GetPixels());
  }
}

void THtMetaFillImageRec::Draw(THtCanvas& canvas, float opacity) {
  if (!canvas.DocumentRectInView(RDest)) return;
  WithImage(canvas, [&](THtImage& image) {
    canvas.FillImage(RDest, image, OriginDeltaX, OriginDeltaY, Background, Opacity * opacity, Radius);
  });
}

}  // namespace ht
