#include "htcanvas/svgwriter.h"

#include <cmath>

#include "htcanvas/path.h"
#include "htcanvas/pen.h"
#include "htmlpars/htmlencode.h"
#include "htutils/geometry.h"

namespace ht {

namespace {

constexpr int32_t kStyleChars = 128;
constexpr uint32_t kOpaque = 0xFF;

constexpr bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// The pattern of a named pen style; empty for a line without gaps.
constexpr std::u16string_view DashesOf(THtPenStyle style) {
  switch (style) {
    case hpsDash: return u"8";
    case hpsDot: return u"1";
    case hpsDashDot: return u"8,1,1,1";
    case hpsDashDotDot: return u"8,1,1,1,1,1";
    default: return {};
  }
}

// The pattern between two texts, where there is one.
void AddDashes(TFastString& text, std::u16string_view start, THtPenStyle style, std::span<const float> dashes,
               char16_t end) {
  if (dashes.empty()) {
    const std::u16string_view named = DashesOf(style);
    if (!named.empty()) text.Add(start).Add(named).AddChar(end);
    return;
  }
  text.Add(start);
  for (size_t i = 0; i < dashes.size(); ++i) {
    if (i > 0) text.AddChar(u',');
    text.Add(detail::RoundToInt(dashes[i]));
  }
  text.AddChar(end);
}

}  // namespace

// --- numbers and colours ---

void THtSVGWriter::Number(float value, int32_t decimals) {
  Add(std::isfinite(value) ? static_cast<double>(value) : 0.0, decimals, false);
}

void THtSVGWriter::Attr(std::u16string_view name, float value, int32_t decimals) {
  Add(name);
  Number(value, decimals);
  AddChar(u'"');
}

void THtSVGWriter::Hex(uint32_t value, int digits) {
  char16_t* p = Room(static_cast<size_t>(digits));
  for (int i = digits - 1; i >= 0; --i, value >>= 4) p[i] = u"0123456789abcdef"[value & 15];
  Advance(static_cast<size_t>(digits));
}

void THtSVGWriter::Color(uint32_t color) {
  AddChar(u'#');
  Hex(color, 6);
  if (const uint32_t alpha = color >> 24; alpha != kOpaque) Hex(alpha, 2);
  FLastCommand = 0;
}

void THtSVGWriter::ColorAttr(std::u16string_view name, std::u16string_view opacityName, uint32_t color) {
  Add(name).AddChar(u'#');
  Hex(color, 6);
  AddChar(u'"');
  const uint32_t alpha = color >> 24;
  Add(opacityName);
  if (alpha == kOpaque)
    AddChar(u'1');
  else
    Add(alpha / static_cast<double>(kOpaque), 2, false);
  AddChar(u'"');
}

// --- path data ---

void THtSVGWriter::Com(char16_t command) {
  if (command != FLastCommand)
    AddChar(command);
  else if (IsDigit(LastChar()))
    AddChar(u' ');
  FLastCommand = command == u'M' ? u'L' : command;
}

void THtSVGWriter::Point(char16_t command, float x, float y) {
  Com(command);
  FS(x);
  F(y);
}

void THtSVGWriter::Step(char16_t command, float value) {
  Com(command);
  FS(value);
}

void THtSVGWriter::MoveRel(float dx, float dy) {
  Point(u'm', dx, dy);
  AddChar(u' ');
}

void THtSVGWriter::LineRel(float dx, float dy) {
  if (dy == 0) return HRel(dx);
  if (dx == 0) return VRel(dy);
  Point(u'l', dx, dy);
  AddChar(u' ');
}

void THtSVGWriter::Arc(float rx, float ry, float rotation, bool large, bool sweep, float x, float y) {
  Com(u'A');
  for (const float value : {rx, ry, rotation, large ? 1.0f : 0.0f, sweep ? 1.0f : 0.0f, x, y}) FS(value);
}

void THtSVGWriter::Z() {
  Com(u'z');
  AddChar(u' ');
}

// --- elements ---

void THtSVGWriter::AddFillStroke(uint32_t fill, uint32_t stroke, float width) {
  if (fill) {
    Add(u" fill=\"");
    Color(fill);
    AddChar(u'"');
  }
  if (stroke) {
    Add(u" stroke=\"");
    Color(stroke);
    AddChar(u'"');
  }
  if (width != 0) Attr(u" stroke-width=\"", width, 2);
}

void THtSVGWriter::Line(float x1, float y1, float x2, float y2, uint32_t stroke, float width) {
  Attr(u"<line x1=\"", x1);
  Attr(u" y1=\"", y1);
  Attr(u" x2=\"", x2);
  Attr(u" y2=\"", y2);
  AddFillStroke(0, stroke, width);
  s(u"/>");
}

void THtSVGWriter::Circle(float cx, float cy, float r, uint32_t fill, uint32_t stroke, float width) {
  Attr(u"<circle r=\"", r);
  Attr(u" cx=\"", cx);
  Attr(u" cy=\"", cy);
  AddFillStroke(fill, stroke, width);
  s(u"/>");
}

void THtSVGWriter::Ellipse(float cx, float cy, float rx, float ry, uint32_t fill, uint32_t stroke,
                           float width) {
  Attr(u"<ellipse rx=\"", rx);
  Attr(u" ry=\"", ry);
  Attr(u" cx=\"", cx);
  Attr(u" cy=\"", cy);
  AddFillStroke(fill, stroke, width);
  s(u"/>");
}

void THtSVGWriter::Rect(float x, float y, float w, float h, uint32_t fill, uint32_t stroke, float width,
                        std::u16string_view style, float rx, float ry, std::u16string_view extra) {
  Attr(u"<rect x=\"", x);
  Attr(u" y=\"", y);
  Attr(u" width=\"", w);
  Attr(u" height=\"", h);
  if (rx != 0) Attr(u" rx=\"", rx);
  if (ry != 0) Attr(u" ry=\"", ry);
  AddFillStroke(fill, stroke, width);
  if (!style.empty()) Add(u" style=\"").Add(style).AddChar(u'"');
  Add(extra);
  s(u"/>");
}

void THtSVGWriter::Text(float x, float y, std::u16string_view anchor, std::u16string_view text,
                        std::u16string_view style, std::u16string_view transform, std::u16string_view extra) {
  Attr(u"<text x=\"", x);
  Attr(u" y=\"", y);
  if (!anchor.empty()) Add(u" text-anchor=\"").Add(anchor).AddChar(u'"');
  if (!style.empty()) Add(u" style=\"").Add(style).AddChar(u'"');
  if (!transform.empty()) Add(u" transform=\"").Add(transform).AddChar(u'"');
  if (!extra.empty()) AddChar(u' ').Add(extra);
  AddChar(u'>');
  HtAppendEncoded(*this, text);
  s(u"</text>");
}

void THtSVGWriter::BeginPath(uint32_t fill, uint32_t stroke, float width, std::u16string_view style,
                             bool crisp, std::u16string_view extra) {
  Add(u"<path ");
  if (fill)
    ColorAttr(u" fill=\"", u" fill-opacity=\"", fill);
  else if (extra.find(u"fill=") == extra.npos)
    Add(u" fill=\"none\"");
  if (stroke) ColorAttr(u" stroke=\"", u" stroke-opacity=\"", stroke);
  if (width != 0) Attr(u" stroke-width=\"", width, 2);
  if (!style.empty()) Add(u" style=\"").Add(style).AddChar(u'"');
  if (crisp) Add(u" shape-rendering=\"crispEdges\"");
  AddChar(u' ').Add(extra);
  s(u" d=\"");
}

void THtSVGWriter::Path(std::u16string_view data, uint32_t fill, uint32_t stroke, float width) {
  BeginPath(fill, stroke, width, {}, false, {});
  HtAppendEncodedAttr(*this, data);
  EndPath();
}

void THtSVGWriter::StrokePath(const THtPath& path, const THtPen& pen) {
  Add(u"<path fill=\"none\" stroke=\"");
  Color(pen.GetColor());
  AddChar(u'"');
  Attr(u" stroke-width=\"", pen.GetWidth(), 2);
  DashAttr(pen.GetPenStyle());
  Add(u" d=\"").Add(path.AsString());
  EndPath();
}

// --- attributes ---

void THtSVGWriter::Stroke(uint32_t color, float width) {
  Add(u" stroke=\"");
  Color(color);
  AddChar(u'"');
  Attr(u" stroke-width=\"", width);
}

void THtSVGWriter::Stroke(const THtPen& pen) {
  Stroke(pen.GetColor(), pen.GetWidth());
  DashAttr(pen.GetPenStyle());
}

void THtSVGWriter::DashAttr(THtPenStyle style) { AddDashes(*this, u" stroke-dasharray=\"", style, {}, u'"'); }

hstring THtSVGWriter::StrokeStyle(uint32_t color, float width, THtPenStyle style,
                                  std::span<const float> dashes) {
  THtSVGWriter text(kStyleChars);
  text.Add(u"stroke=\"");
  text.Color(color);
  text.AddChar(u'"');
  text.Attr(u" stroke-width=\"", width, 2);
  AddDashes(text, u" stroke-dasharray=\"", style, dashes, u'"');
  return text.GetAsString();
}

hstring THtSVGWriter::StrokeStyleCSS(uint32_t color, float width, THtPenStyle style,
                                     std::span<const float> dashes) {
  THtSVGWriter text(kStyleChars);
  text.Add(u"stroke:");
  text.Color(color);
  text.Add(u"; stroke-width:");
  text.Number(width, 2);
  text.AddChar(u';');
  AddDashes(text, u" stroke-dasharray:", style, dashes, u';');
  return text.GetAsString();
}

}  // namespace ht
