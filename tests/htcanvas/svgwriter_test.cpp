#include "htcanvas/svgwriter.h"

#include <gtest/gtest.h>
#include <limits>

#include "htcanvas/custompath.h"
#include "htcanvas/pen.h"
#include "htutils/numbers.h"

using namespace ht;

namespace {

using TWrite = void (*)(THtSVGWriter&);

std::string Written(TWrite write) {
  THtSVGWriter svg(64);
  write(svg);
  return HtToUtf8(svg.GetAsString());
}

TEST(SVGWriter, PathData) {
  const struct {
    TWrite Write;
    const char* Expected;
  } kCases[] = {
      {[](THtSVGWriter& s) { s.Move(0, 0), s.LineTo(10, 0), s.LineTo(10, 10); }, "M0 0 10 0 10 10"},
      {[](THtSVGWriter& s) { s.Move(1, 2), s.Move(3, 4); }, "M1 2M3 4"},
      {[](THtSVGWriter& s) { s.LineTo(1, 2), s.LineTo(3, 4), s.Move(5, 6); }, "L1 2 3 4M5 6"},
      {[](THtSVGWriter& s) { s.MoveRel(1, -2), s.MoveRel(3, 4); }, "m1 -2 3 4 "},
      {[](THtSVGWriter& s) {
         s.LineRel(5, 0), s.LineRel(6, 0), s.LineRel(0, 7), s.LineRel(1, 2), s.LineRel(0, 0);
       },
       "h5 6 v7 l1 2 h0 "},
      {[](THtSVGWriter& s) { s.h(1), s.HRel(2), s.V(3), s.VRel(4), s.VRel(-.5f); }, "H1 h2 V3 v4 -.5 "},
      {[](THtSVGWriter& s) { s.Arc(5, 6.5f, 30, true, false, 7, 8), s.Arc(1, 1, 0, false, true, 2, 2); },
       "A5 6.5 30 1 0 7 8 1 1 0 0 1 2 2 "},
      {[](THtSVGWriter& s) { s.Z(), s.Z(); }, "z  "},
      {[](THtSVGWriter& s) { s.Move(0, 0), s.s(u"!"), s.LineTo(1, 1), s.Color(0xFF010203), s.LineTo(2, 2); },
       "M0 0!L1 1#010203L2 2"},
      {[](THtSVGWriter& s) { s.Com(u'h'), s.F(1), s.Com(u'h'), s.F(2), s.FS(3), s.Com(u'h'), s.F(4); },
       "h1 23 4"},
  };
  for (const auto& c : kCases) EXPECT_EQ(Written(c.Write), c.Expected);
}

TEST(SVGWriter, Numbers) {
  constexpr float kNaN = std::numeric_limits<float>::quiet_NaN(),
                  kInfinity = std::numeric_limits<float>::infinity();
  const struct {
    float Value;
    const char* Expected;
  } kCases[] = {{.5f, ".5"},     {-.25f, "-.25"}, {2.00001f, "2"},  {-2.00006f, "-2.0001"},
                {-.00001f, "0"}, {-0.0f, "0"},    {12, "12"},       {1e9f, "1000000000"},
                {.99999f, "1"},  {kNaN, "0"},     {kInfinity, "0"}, {-kInfinity, "0"}};
  for (const auto& c : kCases) {
    THtSVGWriter svg(64);
    svg.F(c.Value);
    EXPECT_EQ(HtToUtf8(svg.GetAsString()), c.Expected);
  }
  // Two roads to the same text.
  for (int i = -3000; i < 3000; ++i) {
    const float value = static_cast<float>(i) * .0037f;
    for (const int digits : {2, 4}) {
      THtSVGWriter svg(64);
      svg.Number(value, digits);
      ASSERT_EQ(svg.GetAsString(), HtFormatDecimal(value, digits)) << value;
    }
  }
}

TEST(SVGWriter, Elements) {
  const struct {
    TWrite Write;
    const char* Expected;
  } kCases[] = {
      {[](THtSVGWriter& s) { s.Line(1, 2, 3.5f, 4, 0xFF0000FF, 1.255f); },
       R"(<line x1="1" y1="2" x2="3.5" y2="4" stroke="#0000ff" stroke-width="1.25"/>)"},
      {[](THtSVGWriter& s) { s.Circle(1, 2, .5f, 0x80FF0000, 0, 0); },
       R"(<circle r=".5" cx="1" cy="2" fill="#ff000080"/>)"},
      {[](THtSVGWriter& s) { s.Ellipse(1, 2, 3, 4, 0, 0xFF00FF00, 0); },
       R"(<ellipse rx="3" ry="4" cx="1" cy="2" stroke="#00ff00"/>)"},
      {[](THtSVGWriter& s) { s.Rect(1, 2, 3, 4, 0xFF112233, 0xFF445566, 2, u"a:b", 5, 6, u" id=\"r\""); },
       R"(<rect x="1" y="2" width="3" height="4" rx="5" ry="6" fill="#112233" stroke="#445566" stroke-width="2" style="a:b" id="r"/>)"},
      {[](THtSVGWriter& s) { s.Rect(1, 2, 3, 4, 0, 0, 0, u"", 0, 6, u""); },
       R"(<rect x="1" y="2" width="3" height="4" ry="6"/>)"},
      {[](THtSVGWriter& s) {
         s.Text(1, 2, u"middle", u"a<b&\u00A0c", u"fill:red", u"rotate(5)", u"id=\"t\"");
       },
       R"~(<text x="1" y="2" text-anchor="middle" style="fill:red" transform="rotate(5)" id="t">a&lt;b&amp;&nbsp;c</text>)~"},
      {[](THtSVGWriter& s) { s.Text(1, 2, u"", u"x", u"", u"", u""); }, R"(<text x="1" y="2">x</text>)"},
      {[](THtSVGWriter& s) { s.Path(u"M0 0\"<", 0xFFFF0000, 0, 0); },
       R"(<path  fill="#ff0000" fill-opacity="1"  d="M0 0&quot;&lt;"/>)"},
      {[](THtSVGWriter& s) { s.Path(u"", 0x00FF0000, 0x40000000, 1.5f); },
       R"(<path  fill="#ff0000" fill-opacity="0" stroke="#000000" stroke-opacity=".25" stroke-width="1.5"  d=""/>)"},
      {[](THtSVGWriter& s) { s.BeginPath(0, 0, 0, u"a:b", true, u"x=\"1\""); },
       R"(<path  fill="none" style="a:b" shape-rendering="crispEdges" x="1" d=")"},
      {[](THtSVGWriter& s) { s.BeginPath(0, 0, 0, u"", false, u"fill=\"red\""); },
       R"(<path  fill="red" d=")"},
      {[](THtSVGWriter& s) {
         s.Move(1, 1), s.BeginPath(0, 0, 0, u"", false, u""), s.LineTo(2, 2), s.EndPath();
       },
       R"(M1 1<path  fill="none"  d="L2 2"/>)"},
  };
  for (const auto& c : kCases) EXPECT_EQ(Written(c.Write), c.Expected);
}

TEST(SVGWriter, StrokesByStyle) {
  const struct {
    THtPenStyle Style;
    std::string Dashes;
  } kCases[] = {
      {hpsSolid, ""}, {hpsDash, "8"}, {hpsDot, "1"}, {hpsDashDot, "8,1,1,1"}, {hpsDashDotDot, "8,1,1,1,1,1"},
      {hpsClear, ""}};
  for (const auto& c : kCases) {
    const auto pen = THtPen::Class()->Create(0x7F00FF00, 1.2345f);
    pen->SetPenStyle(c.Style);
    const std::string dash = c.Dashes.empty() ? "" : " stroke-dasharray=\"" + c.Dashes + "\"";
    THtSVGWriter svg(64);
    svg.Stroke(*pen);
    EXPECT_EQ(HtToUtf8(svg.GetAsString()), " stroke=\"#00ff007f\" stroke-width=\"1.2345\"" + dash);
    EXPECT_EQ(HtToUtf8(THtSVGWriter::StrokeStyle(0x7F00FF00, 1.2345f, c.Style, {})),
              "stroke=\"#00ff007f\" stroke-width=\"1.23\"" + dash);
    EXPECT_EQ(
        HtToUtf8(THtSVGWriter::StrokeStyleCSS(0xFF00FF00, 2, c.Style, {})),
        "stroke:#00ff00; stroke-width:2;" + (c.Dashes.empty() ? "" : " stroke-dasharray:" + c.Dashes + ";"));
  }
  const float dashes[] = {2.5f, 3.5f, 0.4f};
  EXPECT_EQ(HtToUtf8(THtSVGWriter::StrokeStyle(0xFF000000, 1, hpsDash, dashes)),
            R"(stroke="#000000" stroke-width="1" stroke-dasharray="2,4,0")");
  EXPECT_EQ(HtToUtf8(THtSVGWriter::StrokeStyleCSS(0xFF000000, .5f, hpsSolid, dashes)),
            "stroke:#000000; stroke-width:.5; stroke-dasharray:2,4,0;");
}

TEST(SVGWriter, StrokedPath) {
  THtCustomPath path(false);
  path.AddRectangle(0, 0, 10, 20);
  const auto pen = THtPen::Class()->Create(0xFF010203, 1.239f);
  pen->SetPenStyle(hpsDot);
  THtSVGWriter svg(64);
  EXPECT_TRUE(svg.GetEmpty());
  svg.StrokePath(path, *pen);
  EXPECT_EQ(
      HtToUtf8(svg.GetAsString()),
      R"(<path fill="none" stroke="#010203" stroke-width="1.24" stroke-dasharray="1" d="M0 0h10 v20 h-10 z "/>)");
  EXPECT_FALSE(svg.GetEmpty());
}

}  // namespace
