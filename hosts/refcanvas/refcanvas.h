#pragma once

#include "htcanvas/htcanvas.h"
#include "refcanvas/fontfaces.h"

namespace ht {

/// A font of the system, or one that its collection has registered. Where no font is installed every measure is 0.
class TRefFont : public THtFont {
  HT_CLASS(TRefFont, THtFont)

 public:
  void Create(THtFontCollection* owner, const hstring& name, float height, THtFontStyles style) override;
  /// Another weight or slant is another face.
  void SetStyle(THtFontStyles style) override;

  /// The width in pixels.
  float Width(const TShapeRequest& text);

 private:
  void ChooseFace();

  TFaceRequest FRequest;
  std::shared_ptr<TFontFace> FFace;
};

/// Keeps the fonts that a document brings with it: one a name and style.
class TRefFontCollection : public THtFontCollection {
  HT_CLASS(TRefFontCollection, THtFontCollection)

 public:
  using THtFontCollection::THtFontCollection;

  /// The stream is read to its end. What is no font is kept as data, and no text is drawn in it.
  void RegisterCustomFontData(const hstring& name, TStream& stream, THtFontStyles style) override;
  void AssignCustomFonts(const THtFontCollection& source) override;
  THtBytes GetFontData(const hstring& name) const override;

  /// The registered font of that name that comes nearest to the style; null if there is none.
  const THtCustomFont* FindCustomFont(const hstring& name, THtFontStyles style) const;

 private:
  void Keep(const hstring& name, const THtBytes& data, THtFontStyles style);
};

/// An image that knows its size by its header. Nothing is decoded.
class TRefImage : public THtImage {
  HT_CLASS(TRefImage, THtImage)

 public:
  std::unique_ptr<TStream> GetImageData() override;
  void OnLoaded(const THtBytes& bytes, bool flag) override;

 private:
  THtBytes FBytes;
};

class TRefCanvasClass : public THtCanvasClass {
 public:
  using THtCanvasClass::THtCanvasClass;

  THtStringList& FontDictionary() const override;
  const THtFontClass* FontClass() const override;
  const THtImageClass* ImageClass() const override;
  THtFontCollection* SharedFontCollection() const override;
  std::unique_ptr<THtFontCollection> CreateFontCollection() const override;
  void GetFonts(TStringList& list) const override;
  /// By the shaped glyphs. Letter spacing counts for each character, word spacing for each blank. `value` is not used.
  float MeasureString(const hstring& text, THtFont& font, const THtTextStyle& style, float value,
                      int32_t start, int32_t count) const override;
  bool PointInPath(float x, float y, const THtPath& path) const override;
  bool PointOnPath(float x, float y, const THtPath& path, float tolerance) const override;

 protected:
  ~TRefCanvasClass() = default;
};

/// The reference canvas of programs that write SVG or record: it measures with the system's fonts and draws nothing.
///
///   TRefCanvas::Register();
///   THtSVGCanvas canvas;   // now has fonts
class TRefCanvas : public THtCanvas {
  HT_CLASS(TRefCanvas, THtCanvas)

 public:
  using TClassRef = TRefCanvasClass;

  /// Makes this the class that stands in where a canvas has no fonts of its own. Before anything is drawn.
  static void Register();

  void DrawPath(const THtPen&, const THtPath&) override {}
  void FillPath(const THtBrush&, const THtPath&) override {}
  void DrawString(const hstring&, const TRectF&, THtFont&, const THtTextStyle&, int32_t, int32_t) override {}
};

}  // namespace ht
