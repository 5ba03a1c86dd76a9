#pragma once

#include <span>
#include <vector>

#include "htcanvas/metarecord.h"
#include "htcanvas/metaresource.h"
#include "htcanvas/textstyle.h"

namespace ht {

/// A text. The font belongs to its collection, which has to outlive the record.
class THtMetaTextRec : public THtMetaCanvasRec {
  HT_CLASS(THtMetaTextRec, THtMetaCanvasRec)

 public:
  THtMetaTextRec() = default;
  /// No-break spaces and line ends become blanks.
  THtMetaTextRec(hstring text, const TRectF& rect, THtFont& font, const THtTextStyle& style);

  void Draw(THtCanvas& canvas, float opacity) override;
  void SavetoStream(TStream& stream) override;
  void Load(TMetaReader& in) override;

  hstring Text;
  THtFont* Font = nullptr;
  THtFontStyles FontStyle;  // that the font had
  bool RTL = false, Ellipsis = false;
  TRectF R;
  uint32_t UnderlineColor = 0;
  float Opacity = 1;
  THtTextStyle TextStyle;

 protected:
  /// The font to draw with, in the record's style: a font of the canvas for one of another class. Null where there is none.
  THtFont* FontFor(THtCanvas& canvas) const;
  bool InView(const THtCanvas& canvas) const;
  THtTextStyle StyleAt(float opacity) const;
};

/// A text whose characters have widths of their own, or that is filled and stroked.
class THtMetaTextExRec : public THtMetaTextRec {
  HT_CLASS(THtMetaTextExRec, THtMetaTextRec)

 public:
  THtMetaTextExRec() = default;
  THtMetaTextExRec(hstring text, const TRectF& rect, THtFont& font, const THtTextStyle& style,
                   std::span<const float> spacing, const THtBrush* fill, const THtPen* stroke);

  void Draw(THtCanvas& canvas, float opacity) override;

  bool HasFill = false, HasStroke = false;
  THtMetaBrush Fill;  // null for a plain colour
  THtMetaPen Stroke;  // null for a plain line
  uint32_t FillColor = 0, StrokeColor = 0;
  float StrokeWidth = 0;
  std::vector<float> Spacing;
};

}  // namespace ht
