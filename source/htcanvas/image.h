#pragma once

#include "htruntime/bytes.h"
#include "htruntime/enums.h"
#include "htruntime/object.h"
#include "htruntime/stream.h"
#include "htruntime/stringlist.h"

namespace ht {

class THtCanvas;
class THtImage;

HT_ENUM(THtImageState, uint8_t, hisNone, hisLoading, hisLoaded, hisFailed);
HT_ENUM(THtImageFormat, uint8_t, hifUnknown, hifMeta, hifBitmap, hifJPEG, hifPNG, hifGIF, hifSVG, hifIcon,
        hifTIFF);

/// A drawing that can be played on a canvas.
class THtDisplayList : public TObject {
 public:
  virtual void Play(THtCanvas& canvas, float opacity) = 0;
};

/// What a layout knows of an image.
class TBaseHtImage : public TObject {
  HT_CLASS(TBaseHtImage, TObject)

 public:
  int32_t Width = 0, Height = 0;  // its own size in pixels
  bool Loaded = false;
  bool Persistent = false;  // is not freed with a THtImages
  bool IsMeta = false;      // a recorded drawing
  bool MetaShared = false;  // which somebody else owns
};

/// Class references of images.
class THtImageClass : public TClass {
 public:
  using TClass::TClass;

  /// Null for a class that has no instances.
  std::unique_ptr<THtImage> Create(const hstring& url) const;
  std::unique_ptr<THtImage> Create(const THtBytes& bytes) const;

 protected:
  ~THtImageClass() = default;
};

/// An image as bytes or by its address. A concrete image decodes; here only the format is told.
class THtImage : public TBaseHtImage {
 public:
  using TClassRef = THtImageClass;
  static const THtImageClass* Class();
  const TClass* ClassType() const override { return Class(); }
  ~THtImage() override;

  /// The encoded image; null here.
  virtual std::unique_ptr<TStream> GetImageData() { return nullptr; }
  virtual bool GetLoaded() const { return Loaded; }
  /// The text is bytes, one a character.
  virtual void OnLoaded(const hstring& text);
  /// What the flag says is between the class and its host.
  virtual void OnLoaded(const THtBytes& bytes, bool flag);
  /// The time to show the frame, in milliseconds; 0 here.
  virtual int32_t NextFrame(int32_t) { return 0; }
  virtual void CheckFrame() {}

  /// Sets Format by the first bytes; an unknown format leaves it as it is.
  void GetFormat(const THtBytes& bytes);
  /// The encoded image; empty without one.
  THtBytes AsBytes();

  static bool IsImage(const THtBytes& bytes);
  static bool IsBMP(const THtBytes& bytes);
  static bool IsGIF(const THtBytes& bytes);
  static bool IsJPEG(const THtBytes& bytes);
  static bool IsPNG(const THtBytes& bytes);
  static bool IsSVG(const THtBytes& bytes);
  static bool IsTIFF(const THtBytes& bytes);

  /// The drawing of a recorded image, owned unless MetaShared.
  THtDisplayList* Meta = nullptr;
  THtImageState State = hisNone;
  THtImageFormat Format = hifUnknown;
  /// Where the image comes from, if it is kept by reference.
  hstring Url;
};

/// Images by name, sorted. Frees those that are not Persistent.
class THtImages : public TStringList {
  HT_CLASS(THtImages, TStringList)

 public:
  THtImages() { SetSorted(true); }
  ~THtImages() override;

  /// Null if there is none.
  THtImage* FindImage(std::u16string_view name) const;
};

}  // namespace ht
