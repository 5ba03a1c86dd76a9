#pragma once

#include "htcanvas/image.h"
#include "htruntime/bytes.h"

namespace ht {

class THtPage;

HT_ENUM(TCSSOrientation, uint8_t, coPortrait, coLandscape, coDefault);

/// Class references of pages.
class THtPageClass : public TClass {
 public:
  using TClass::TClass;

  /// A new page of the class; null for a class that cannot be made without arguments.
  std::unique_ptr<THtPage> Create(float widthMM, float heightMM, int32_t number, int32_t dpi) const;

 protected:
  ~THtPageClass() = default;
};

/// The pixels of a length in millimetres, rounded; 0 for what is no finite number.
int32_t HtPixelsOfMM(float mm, int32_t dpi);

/// A page of a paged canvas. Derived classes hold what was drawn on it.
class THtPage : public TObject {
 public:
  using TClassRef = THtPageClass;
  static const THtPageClass* Class();
  const TClass* ClassType() const override { return Class(); }

  int32_t Number = 0;  // from 1
  float WidthMM = 0, HeightMM = 0;
  int32_t WidthPx = 0, HeightPx = 0;
  int32_t DPI = 0;
  TCSSOrientation Orientation = coPortrait;
  bool Disabled = false;

  /// Sets size and number. The orientation follows from the size: a square is portrait.
  virtual void Create(float widthMM, float heightMM, int32_t number, int32_t dpi);
  /// The page as an image; null here.
  virtual std::unique_ptr<THtImage> AsImage(int32_t dpi);
  /// Both raise EHtException "Metafile is not implemented for class %s" here.
  virtual THtBytes AsMetaFileBytes();
  virtual std::unique_ptr<TObject> AsMetaFile();
};

}  // namespace ht
