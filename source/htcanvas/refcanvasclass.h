#pragma once

#include "htcanvas/canvasclasses.h"

namespace ht {

/// The class reference of a canvas that has no fonts and resources of its own and asks another class for them. A host must
/// have set HtDefaultCanvasClass, or each such operation raises EHtException "No reference canvas class is set".
class THtRefCanvasClass : public THtCanvasClass {
 public:
  using THtCanvasClass::THtCanvasClass;

  THtStringList& FontDictionary() const override;
  const THtBrushClass* BrushClass() const override;
  const THtPenClass* PenClass() const override;
  const THtFontClass* FontClass() const override;
  const THtImageClass* ImageClass() const override;
  const THtPathClass* PathClass() const override;
  const THtBitmapClass* BitmapClass() const override;
  THtFontCollection* SharedFontCollection() const override;
  std::unique_ptr<THtFontCollection> CreateFontCollection() const override;
  void GetFonts(TStringList& list) const override;
  bool HasFont(const hstring& name) const override;
  THtBytes ImageListItemtoBytes(TObject* imageList, int32_t index) const override;
  float MeasureString(const hstring& text, THtFont& font, const THtTextStyle& style, float value,
                      int32_t start, int32_t count) const override;
  bool PointInPath(float x, float y, const THtPath& path) const override;
  bool PointOnPath(float x, float y, const THtPath& path, float tolerance) const override;

  /// HtFMXDefaultCanvasClass if it is set, else HtDefaultCanvasClass.
  virtual const THtCanvasClass& RefCanvas() const;

 protected:
  ~THtRefCanvasClass() = default;
};

}  // namespace ht
