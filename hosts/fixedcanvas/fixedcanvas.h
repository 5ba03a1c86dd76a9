#pragma once

#include "htcanvas/htcanvas.h"
#include "htruntime/stream.h"

namespace ht {

/// A font whose every character is half as wide as the font is high: 0.8 of the height stands above the baseline, 0.2
/// below it.
class TFixedFont : public THtFont {
  HT_CLASS(TFixedFont, THtFont)

 public:
  void Create(THtFontCollection* owner, const hstring& name, float height, THtFontStyles style) override;
};

/// An image that keeps its bytes as they are: nothing is decoded.
class TBytesImage : public THtImage {
  HT_CLASS(TBytesImage, THtImage)

 public:
  std::unique_ptr<TStream> GetImageData() override { return std::make_unique<TBytesStream>(FBytes); }
  void OnLoaded(const THtBytes& bytes, bool flag) override;

 private:
  THtBytes FBytes;
};

class TFixedCanvasClass : public THtCanvasClass {
 public:
  using THtCanvasClass::THtCanvasClass;

  /// No fonts are installed: there is nothing to list.
  THtStringList& FontDictionary() const override;
  const THtFontClass* FontClass() const override;
  const THtImageClass* ImageClass() const override;
  /// Counts UTF-16 units; letter and word spacing are added. A negative count reaches to the end.
  float MeasureString(const hstring& text, THtFont& font, const THtTextStyle& style, float value,
                      int32_t start, int32_t count) const override;

 protected:
  ~TFixedCanvasClass() = default;
};

/// A canvas that draws nothing and measures the same on every machine: the reference class of programs whose output must
/// not depend on the fonts that are installed.
///
///   HtDefaultCanvasClass = TFixedCanvas::Class();
class TFixedCanvas : public THtCanvas {
  HT_CLASS(TFixedCanvas, THtCanvas)

 public:
  using TClassRef = TFixedCanvasClass;

  void DrawPath(const THtPen& pen, const THtPath& path) override;
  void FillPath(const THtBrush& brush, const THtPath& path) override;
  void DrawString(const hstring& text, const TRectF& rect, THtFont& font, const THtTextStyle& style,
                  int32_t start, int32_t count) override;
};

}  // namespace ht
