#pragma once

#include <span>

#include "htutils/faststring.h"

namespace ht {

class THtPath;
class THtPen;
enum THtPenStyle : uint8_t;

/// Writes SVG: path data, stroke attributes, and elements.
///
///   THtSVGWriter svg(4096);
///   svg.BeginPath(0, 0xFF336699, 2, u"", false, u"");
///   svg.Move(0, 0);
///   svg.LineTo(10, 0);
///   svg.LineTo(10, 10);
///   svg.EndPath();        // … d="M0 0 10 0 10 10"/>
///
/// Colours are 0xAARRGGBB. Coordinates and sizes have at most four decimals, opacities and stroke widths of paths two,
/// without a zero before the point. What is no finite number is written as 0. One thread at a time.
class THtSVGWriter : public TFastString {
  HT_CLASS(THtSVGWriter, TFastString)

 public:
  /// In UTF-16 units. Nothing is allocated before the first one.
  explicit THtSVGWriter(int32_t chunkSize) : TFastString(chunkSize) {}

  // --- Path data. A command that repeats the one before it is left out; a line-to behind a move-to, too. ---

  /// A command letter, or the blank that stands for a repeated one behind a digit.
  void Com(char16_t command);
  void F(float value) { Number(value, 4); }
  /// The number and a blank.
  void FS(float value) {
    F(value);
    AddChar(u' ');
  }
  /// Plain text. The next command is written, whatever it is.
  void s(std::u16string_view text) {
    Add(text);
    FLastCommand = 0;
  }
  /// "#rrggbb", with two more digits if it is not opaque.
  void Color(uint32_t color);
  void Move(float x, float y) { Point(u'M', x, y); }
  void MoveRel(float dx, float dy);
  void LineTo(float x, float y) { Point(u'L', x, y); }
  void LineRel(float dx, float dy);
  void h(float x) { Step(u'H', x); }
  void HRel(float dx) { Step(u'h', dx); }
  void V(float y) { Step(u'V', y); }
  void VRel(float dy) { Step(u'v', dy); }
  /// `rotation` in degrees.
  void Arc(float rx, float ry, float rotation, bool large, bool sweep, float x, float y);
  void Z();

  // --- Elements. A fill, stroke or width of 0 is left out. ---

  void AddFillStroke(uint32_t fill, uint32_t stroke, float width);
  void Line(float x1, float y1, float x2, float y2, uint32_t stroke, float width);
  void Circle(float cx, float cy, float r, uint32_t fill, uint32_t stroke, float width);
  void Ellipse(float cx, float cy, float rx, float ry, uint32_t fill, uint32_t stroke, float width);
  /// `extra` stands as it is in front of the element's end.
  void Rect(float x, float y, float w, float h, uint32_t fill, uint32_t stroke, float width,
            std::u16string_view style, float rx, float ry, std::u16string_view extra);
  /// The text is escaped; the attributes stand as they are, and are left out when empty.
  void Text(float x, float y, std::u16string_view anchor, std::u16string_view text, std::u16string_view style,
            std::u16string_view transform, std::u16string_view extra);
  /// A path up to the quote in front of its data. Without a fill it says so, unless `extra` has a `fill=`.
  void BeginPath(uint32_t fill, uint32_t stroke, float width, std::u16string_view style, bool crisp,
                 std::u16string_view extra);
  void EndPath() { s(u"\"/>"); }
  void Path(std::u16string_view data, uint32_t fill, uint32_t stroke, float width);
  void StrokePath(const THtPath& path, const THtPen& pen);

  // --- Attributes. ---

  void Stroke(uint32_t color, float width);
  void Stroke(const THtPen& pen);
  /// The same as text, without the blank in front. `dashes`, rounded to whole numbers, take the place of the style's own.
  static hstring StrokeStyle(uint32_t color, float width, THtPenStyle style, std::span<const float> dashes);
  /// As CSS: "stroke:#000000; stroke-width:2; stroke-dasharray:8;".
  static hstring StrokeStyleCSS(uint32_t color, float width, THtPenStyle style,
                                std::span<const float> dashes);

  bool GetEmpty() const { return IsEmpty(); }

  // --- What elements are made of; commands are not reset. ---

  void Number(float value, int32_t decimals);
  /// ` name="number"`; `name` comes with its blank, equals sign and quote: u" x=\"".
  void Attr(std::u16string_view name, float value, int32_t decimals = 4);
  /// ` name="#rrggbb" opacity="alpha"`: six digits, and alpha out of 0..1.
  void ColorAttr(std::u16string_view name, std::u16string_view opacityName, uint32_t color);

 private:
  void Point(char16_t command, float x, float y);
  void Step(char16_t command, float value);
  void Hex(uint32_t value, int digits);
  void DashAttr(THtPenStyle style);

  char16_t FLastCommand = 0;
};

}  // namespace ht
