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
  THtCustomPath path(false);
  path.AddRectangle(0, 0, 10, 20);
  const auto pen = THtPen::Class()->Create(0xFF010203, 1.239f);
  pen->SetPenStyle(hpsDot);
  THtSVGWriter s(64);
  EXPECT_TRUE(s.GetEmpty());
  s.Line(1, 2, 3.5f, 4, 0xFF0000FF, 1.255f), s.Add(u"\n");
  s.Circle(1, 2, .5f, 0x80FF0000, 0, 0), s.Add(u"\n");
  s.Ellipse(1, 2, 3, 4, 0, 0xFF00FF00, 0), s.Add(u"\n");
  s.Rect(1, 2, 3, 4, 0xFF112233, 0, 2, u"a:b", 5, 6, u" id=\"r\""), s.Add(u"\n");
  s.Rect(1, 2, 3, 4, 0, 0xFF445566, 0, u"", 0, 6, u""), s.Add(u"\n");
  s.Text(1, 2, u"end", u"a<b&\u00A0c", u"a:b", u"rotate(5)", u"id=\"t\""), s.Add(u"\n");
  s.Text(1, 2, u"", u"x", u"", u"", u""), s.Add(u"\n");
  s.Path(u"M0 0\"<", 0xFFFF0000, 0, 0), s.Add(u"\n");
  s.Path(u"", 0x00FF0000, 0x40000000, 1.5f), s.Add(u"\n");
  s.BeginPath(0, 0, 0, u"a:b", true, u"x=\"1\""), s.LineTo(1, 1), s.EndPath(), s.Add(u"\n");
  s.Move(1, 1), s.BeginPath(0, 0, 0, u"", false, u"fill=\"red\""), s.LineTo(2, 2), s.EndPath(), s.Add(u"\n");
  s.StrokePath(path, *pen);
  EXPECT_FALSE(s.GetEmpty());
  EXPECT_EQ(HtToUtf8(s.GetAsString()),
            R"~(<line x1="1" y1="2" x2="3.5" y2="4" stroke="#0000ff" stroke-width="1.25"/>
<circle r=".5" cx="1" cy="2" fill="#ff000080"/>
<ellipse rx="3" ry="4" cx="1" cy="2" stroke="#00ff00"/>
<rect x="1" y="2" width="3" height="4" rx="5" ry="6" fill="#112233" stroke-width="2" style="a:b" id="r"/>
<rect x="1" y="2" width="3" height="4" ry="6" stroke="#445566"/>
<text x="1" y="2" text-anchor="end" style="a:b" transform="rotate(5)" id="t">a&lt;b&amp;&nbsp;c</text>
<text x="1" y="2">x</text>
<path  fill="#ff0000" fill-opacity="1"  d="M0 0&quot;&lt;"/>
<path  fill="#ff0000" fill-opacity="0" stroke="#000000" stroke-opacity=".25" stroke-width="1.5"  d=""/>
<path  fill="none" style="a:b" shape-rendering="crispEdges" x="1" d="L1 1"/>
M1 1<path  fill="red" d="L2 2"/>
<path fill="none" stroke="#010203" stroke-width="1.24" stroke-dasharray="1" d="M0 0h10 v20 h-10 z "/>)~");
}

TEST(SVGWriter, StrokesByStyle) {
  const float values[] = {2.5f, 3.5f, 0.4f};
  const std::span<const float> none, some = values;
  const struct {
    THtPenStyle Style;
    std::span<const float> Dashes;
    std::string Written;
  } kCases[] = {{hpsSolid, none, ""},
                {hpsDash, none, "8"},
                {hpsDot, none, "1"},
                {hpsDashDot, none, "8,1,1,1"},
                {hpsDashDotDot, none, "8,1,1,1,1,1"},
                {hpsClear, none, ""},
                {hpsSolid, some, "2,4,0"},
                {hpsDash, some, "2,4,0"}};
  for (const auto& c : kCases) {
    const std::string dash = c.Written.empty() ? "" : " stroke-dasharray=\"" + c.Written + "\"";
    const std::string rule = c.Written.empty() ? "" : " stroke-dasharray:" + c.Written + ";";
    EXPECT_EQ(HtToUtf8(THtSVGWriter::StrokeStyle(0x7F00FF00, 1.2345f, c.Style, c.Dashes)),
              "stroke=\"#00ff007f\" stroke-width=\"1.23\"" + dash);
    EXPECT_EQ(HtToUtf8(THtSVGWriter::StrokeStyleCSS(0xFF00FF00, .5f, c.Style, c.Dashes)),
              "stroke:#00ff00; stroke-width:.5;" + rule);
    const auto pen = THtPen::Class()->Create(0x7F00FF00, 1.2345f);
    pen->SetPenStyle(c.Style);
    THtSVGWriter svg(64);
    svg.Stroke(*pen);
    if (c.Dashes.empty()) {
      EXPECT_EQ(HtToUtf8(svg.GetAsString()), " stroke=\"#00ff007f\" stroke-width=\"1.2345\"" + dash);
    }
  }
}

}  // namespace
