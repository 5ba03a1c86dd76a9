#include "htcanvas/metawriter.h"

#include <limits>

#include "htruntime/exception.h"
#include "htruntime/format.h"

namespace ht {

void TMetaWriter::Flush() {
  FStream.WriteBuffer(FBlock.data(), static_cast<int64_t>(FCount));
  FCount = 0;
}

void TMetaWriter::I32(size_t value) {
  if (value > static_cast<size_t>(std::numeric_limits<int32_t>::max()))
    throw EHtException(HtFormat(u"Meta stream cannot hold %d items", static_cast<int64_t>(value)));
  Raw(static_cast<int32_t>(value));
}

void TMetaWriter::Put(const void* data, size_t bytes) {
  if (bytes == 0) return;
  if (bytes > FBlock.size() - FCount) Flush();
  if (bytes > FBlock.size()) return FStream.WriteBuffer(data, static_cast<int64_t>(bytes));
  std::memcpy(FBlock.data() + FCount, data, bytes);
  FCount += bytes;
}

void TMetaWriter::Text(std::u16string_view text) { Counted(std::span(text)); }

void TMetaWriter::Matrix(const THtMatrixData& matrix) {
  for (const float value : matrix.Data) F32(value);
  U32(matrix.Flags);
}

void TMetaWriter::Font(const THtFont* font) {
  Text(font ? font->FFamily : hstring());
  F32(font ? font->FHeight : 0.0f);
  U8(font ? std::bit_cast<uint8_t>(font->FStyle) : uint8_t{0});
}

void TMetaWriter::Brush(const THtBrush& brush) {
  U8(brush.Kind);
  U32(brush.FColor);
  F32(brush.OffsetX, brush.OffsetY, brush.CX, brush.CY, brush.FX, brush.FY, brush.Radius);
  Matrix(brush.FMatrix);
  F32(brush.Angle);
  Rect(brush.GradientRect);
  Rect(brush.FillRect);
  Counted(std::span<const uint32_t>(brush.GradientColors));
  Floats(brush.GradientPositions);
}

void TMetaWriter::Pen(const THtPen& pen) {
  U8(pen.GetLineJoin());
  U8(pen.GetLineCap());
  U32(pen.GetColor());
  F32(pen.GetWidth());
  U8(pen.GetPenStyle());
  F32(pen.GetDashOffset());
  U8(pen.FMode);
  Floats(pen.Dashes);
}

void TMetaWriter::Style(const THtTextStyle& style) {
  F32(style.WordSpacing, style.LetterSpacing, style.Opacity);
  for (const uint8_t code : {static_cast<uint8_t>(style.Overflow), static_cast<uint8_t>(style.Shadow),
                             static_cast<uint8_t>(style.RTL), static_cast<uint8_t>(style.EditorMode)})
    U8(code);
  for (const uint32_t color : {style.Color, style.ShadowColor, style.DecorationColor}) U32(color);
  U32(style.DecorationStyle);
  F32(style.ShadowX, style.ShadowY, style.ShadowBlur);
  U32(static_cast<uint32_t>(style.WritingMode | style.UnicodeBidi << 8));
}

void TMetaWriter::Ink(bool fill, const THtMetaBrush& brush, const THtMetaPen& pen) {
  if (fill)
    brush ? Brush(*brush) : Brush(THtBrush());
  else
    pen ? Pen(*pen) : Pen(THtPen());
}

void TMetaWriter::Path(const THtMetaPath& path) {
  Text(path.Text());
  U8(path && path->FForClip);
  U8(path && path->GetFillModeWinding());
}

}  // namespace ht
