#include "htcanvas/metatextrec.h"

#include <algorithm>
#include <optional>

#include "htcanvas/canvas.h"
#include "htcanvas/fontcollection.h"
#include "htcanvas/metareader.h"
#include "htcanvas/metareplay.h"
#include "htcanvas/metawriter.h"
#include "htutils/colorarith.h"

namespace ht {

namespace {

constexpr std::u16string_view kBlanks = u"\u00A0\r\n";

hstring WithPlainBlanks(hstring text) {
  if (text.View().find_first_of(kBlanks) == text.View().npos) return text;
  char16_t* units = text.Unique();
  std::replace_if(
      units, units + text.Size(), [](char16_t c) { return kBlanks.find(c) != kBlanks.npos; }, u' ');
  return text;
}

}  // namespace

THtMetaTextRec::THtMetaTextRec(hstring text, const TRectF& rect, THtFont& font, const THtTextStyle& style)
    : Text(WithPlainBlanks(std::move(text))),
      Font(&font),
      FontStyle(font.FStyle),
      R(rect),
      UnderlineColor(style.DecorationColor),
      Opacity(style.Opacity),
      TextStyle(style) {}

THtFont* THtMetaTextRec::FontFor(THtCanvas& canvas) const {
  THtFont* font = Font;
  if (font && font->ClassType() != canvas.CanvasClass()->FontClass())
    font = canvas.GetFontCollection().GetFont(font->FFamily, font->FHeight, FontStyle);
  if (!font) return nullptr;
  font->SetStyle(FontStyle);
  font->SetScale(1);
  return font;
}

bool THtMetaTextRec::InView(const THtCanvas& canvas) const { return canvas.DocumentRectInView(R); }

THtTextStyle THtMetaTextRec::StyleAt(float opacity) const {
  THtTextStyle style = TextStyle;
  style.Opacity = Opacity * opacity;
  return style;
}

void THtMetaTextRec::Draw(THtCanvas& canvas, float opacity) {
  if (!InView(canvas)) return;
  if (THtFont* font = FontFor(canvas)) canvas.DrawString(Text, R, *font, StyleAt(opacity), 1, Text.Length());
}

void THtMetaTextRec::SavetoStream(TStream& stream) {
  if (Font) Font->SetStyle(FontStyle);
  TMetaWriter out(stream, mtText);
  out.Text(Text);
  out.Font(Font);
  out.U8(RTL);
  out.U8(Ellipsis);
  out.Rect(R);
  out.U32(UnderlineColor);
  out.F32(Opacity);
  out.Style(TextStyle);
  out.Flush();
}

void THtMetaTextRec::Load(TMetaReader& in) {
  Text = in.Text();
  Font = in.Font(FontStyle);
  RTL = in.Bool();
  Ellipsis = in.Bool();
  R = in.Rect();
  UnderlineColor = in.U32();
  Opacity = in.F32();
  TextStyle = in.Style();
}

THtMetaTextExRec::THtMetaTextExRec(hstring text, const TRectF& rect, THtFont& font, const THtTextStyle& style,
                                   std::span<const float> spacing, const THtBrush* fill, const THtPen* stroke)
    : THtMetaTextRec(std::move(text), rect, font, style),
      HasFill(fill != nullptr),
      HasStroke(stroke != nullptr),
      Spacing(spacing.begin(), spacing.end()) {
  if (fill && fill->Kind != hbSolid)
    Fill = THtMetaBrush(*fill);
  else if (fill)
    FillColor = fill->GetColor();
  if (stroke && !detail::IsPlain(*stroke))
    Stroke = THtMetaPen(*stroke);
  else if (stroke)
    StrokeColor = stroke->GetColor(), StrokeWidth = stroke->GetWidth();
}

void THtMetaTextExRec::Draw(THtCanvas& canvas, float opacity) {
  THtFont* font = InView(canvas) ? FontFor(canvas) : nullptr;
  if (!font) return;
  std::optional<TReplayBrush> fill;
  std::optional<TReplayPen> stroke;
  const THtBrush* brush = nullptr;
  const THtPen* pen = nullptr;
  if (Fill)
    brush = &static_cast<const THtBrush&>(fill.emplace(*Fill, canvas, 1));
  else if (HasFill)
    brush = &canvas.GetBrush(FillColor);
  if (Stroke)
    pen = &static_cast<const THtPen&>(stroke.emplace(*Stroke, canvas, 1));
  else if (HasStroke)
    pen = &canvas.GetPen(StrokeColor, StrokeWidth);
  canvas.DrawStringEx(Text, R, *font, StyleAt(opacity), Spacing, brush, pen, 1, Text.Length());
}

}  // namespace ht
