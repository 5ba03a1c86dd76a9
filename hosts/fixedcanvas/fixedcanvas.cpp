#include "fixedcanvas/fixedcanvas.h"

#include <algorithm>

namespace ht {

void TFixedFont::Create(THtFontCollection* owner, const hstring& name, float height, THtFontStyles style) {
  THtFont::Create(owner, name, height, style);
  Ascent = 0.8f * height;
  Descent = 0.2f * height;
  LineHeight = height;
  FixedCharWidth = MinCharWidth = SpaceWidth = 0.5f * height;
  Fixed = true;
  UnderlinePosition = 0.1f * height;
  UnderlineThikness = 0.05f * height;
  StrikeoutPosition = 0.3f * height;
}

void TBytesImage::OnLoaded(const THtBytes& bytes, bool flag) {
  THtImage::OnLoaded(bytes, flag);
  FBytes = bytes;
  Loaded = true;
  State = hisLoaded;
}

THtStringList& TFixedCanvasClass::FontDictionary() const {
  static THtStringList fonts(1, false);
  return fonts;
}

const THtFontClass* TFixedCanvasClass::FontClass() const { return TFixedFont::Class(); }

const THtImageClass* TFixedCanvasClass::ImageClass() const { return TBytesImage::Class(); }

float TFixedCanvasClass::MeasureString(const hstring& text, THtFont& font, const THtTextStyle& style, float,
                                       int32_t start, int32_t count) const {
  const size_t skip = std::min(static_cast<size_t>(std::max(start, 1) - 1), text.Size());
  const std::u16string_view part =
      text.View().substr(skip, count < 0 ? text.Size() : static_cast<size_t>(count));
  const auto blanks = std::count(part.begin(), part.end(), u' ');
  return static_cast<float>(part.size()) * (font.FixedCharWidth + style.LetterSpacing) +
         static_cast<float>(blanks) * style.WordSpacing;
}

void TFixedCanvas::DrawPath(const THtPen&, const THtPath&) {}
void TFixedCanvas::FillPath(const THtBrush&, const THtPath&) {}
void TFixedCanvas::DrawString(const hstring&, const TRectF&, THtFont&, const THtTextStyle&, int32_t,
                              int32_t) {}

}  // namespace ht
