#include "htcanvas/svgcanvas.h"

#include <array>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

#include "fixedcanvas/fixedcanvas.h"
#include "htruntime/exception.h"
#include "htutils/base64.h"
#include "rects.h"

using namespace ht;

namespace {

class SVGCanvas : public testing::Test {
 protected:
  void SetUp() override {
    HtDefaultCanvasClass = TFixedCanvas::Class();
    FFonts = TFixedCanvas::Class()->CreateFontCollection();
    FLine.AddLine(0, 0, 10, 5);
    Begin();
  }
  void TearDown() override { HtDefaultCanvasClass = nullptr; }

  void Begin(const TRect& viewPort = {0, 0, 100, 100}, float scale = 1) {
    FCanvas.BeginScene(NewScene(viewPort, scale));
  }
  THtBrush& Brush(uint32_t color) { return FCanvas.GetBrush(color); }
  // What was written since the last call, with a line behind each element.
  std::string Written() {
    std::string text = HtToUtf8(FCanvas.Writer().GetAsString()) + "\n";
    FCanvas.Writer().ClearandLeaveSpace();
    for (size_t at = 0; (at = text.find("/><", at)) != text.npos;) text.insert(at += 2, "\n");
    return text;
  }

  std::unique_ptr<THtFontCollection> FFonts;
  THtCustomPath FLine;
  THtSVGCanvas FCanvas;
};

TEST_F(SVGCanvas, Shapes) {
  THtPen& pen = FCanvas.GetPen(0xFF000000, 2);
  pen.SetPenStyle(hpsDash);
  FCanvas.DrawLine(pen, 1, 2, 3.5f, -4);
  FCanvas.DrawRectangle(pen, {1, 2, 4, 6});
  FCanvas.RoundRect(pen, {1, 2, 4, 6}, .5f, 0);
  FCanvas.DrawEllipse(pen, 1, 2, 3, 4);
  FCanvas.DrawPath(pen, FLine);
  FCanvas.DrawArc(pen, 0, 0, 20, 20, 0, 90);
  EXPECT_EQ(Written(),
            R"(<line x1="1" y1="2" x2="3.5" y2="-4" stroke="#000000" stroke-width="2" stroke-dasharray="8"/>
<rect fill="none" x="1" y="2" width="3" height="4" stroke="#000000" stroke-width="2" stroke-dasharray="8"/>
<rect fill="none" x="1" y="2" width="3" height="4" rx=".5" ry="0")"
            R"( stroke="#000000" stroke-width="2" stroke-dasharray="8"/>
<ellipse cx="2.5" cy="4" rx="1.5" ry="2" fill="none" stroke="#000000" stroke-width="2" stroke-dasharray="8"/>
<path fill="none" stroke="#000000" stroke-width="2" stroke-dasharray="8" d="M0 0l10 5 "/>
<path fill="none" stroke="#000000" stroke-width="2" stroke-dasharray="8" d="A10 10 0 0 1 10 20 "/>
)");

  FCanvas.FillRectangle(Brush(0xFFFF0000), 10, 20, 30.5f, 40);
  FCanvas.FillRectangle(Brush(0), {1, 2, 3, 4});
  FCanvas.FillRoundRect(Brush(0x80ABCDEF), {1, 2, 4, 6}, 1.5f, 2);
  FCanvas.FillEllipse(Brush(0x01000000), 1, 2, 3, 4);
  FCanvas.FillPath(Brush(0xFEFFFFFF), FLine);
  FCanvas.FillPath(Brush(0), FLine);
  EXPECT_EQ(Written(), R"(<rect x="10" y="20" width="30.5" height="40" fill="#ff0000" fill-opacity="1"/>
<rect x="1" y="2" width="2" height="2" fill="#000000" fill-opacity="0"/>
<rect  x="1" y="2" width="3" height="4" rx="1.5" ry="2" fill="#abcdef" fill-opacity=".5" stroke="none"/>
<ellipse cx="2.5" cy="4" rx="1.5" ry="2" fill="#000000" fill-opacity="0"/>
<path  fill="#ffffff" fill-opacity="1"  d="M0 0l10 5 "/>
<path  fill="none"  d="M0 0l10 5 "/>
)");
}

TEST_F(SVGCanvas, Gradients) {
  const auto linear = THtBrush::Class()->CreateGradient({0, 0, 10, 20.5f}, 0, 0, 45, {0, 0, 10, 20});
  linear->SetGradientColors(std::array{0.123456f, 1.0f}, std::array{0xFFFF0000u, 0x8000FF00u});
  FCanvas.FillRectangle(*linear, 1, 2, 3, 4);
  EXPECT_EQ(Written(),
            R"~(<linearGradient id="lg0" gradientUnits="userSpaceOnUse" x1="0" y1="0" x2="10" y2="20.5">)~"
            R"~(<stop offset="0" stop-color="#ff0000" stop-opacity="1"/> )~"
            R"~(<stop offset=".1235" stop-color="#ff0000" stop-opacity="1"/> )~"
            R"~(<stop offset="1" stop-color="#00ff00" stop-opacity=".5"/>
</linearGradient><rect x="1" y="2" width="3" height="4" style="fill:url(#lg0)"/>
)~");
  const auto lastElement = [this] {
    const std::string text = Written(), end = "</linearGradient>";
    return text.substr(text.find(end) + end.size());
  };
  FCanvas.FillRoundRect(*linear, {1, 2, 4, 6}, 1, 2);
  EXPECT_EQ(lastElement(), R"~(<rect style="fill:url(#lg1)" stroke="none")~"
                           R"~( x="1" y="2" width="3" height="4" rx="1" ry="2"/>
)~");
  Begin();  // ids run on
  FCanvas.FillEllipse(*linear, 0, 0, 2, 2);
  EXPECT_EQ(lastElement(), R"~(<ellipse cx="1" cy="1" rx="1" ry="1" style="fill:url(#lg2)"/>
)~");
  FCanvas.FillPath(*linear, FLine);
  EXPECT_EQ(lastElement(), R"~(<path  fill="none" style="fill:url(#lg3)"  d="M0 0l10 5 "/>
)~");

  THtMatrixData matrix;
  matrix.Init(1, 0, 0, 1, 5, 6);
  const auto radial = THtBrush::Class()->CreateRadialGradient(1, 2, 3, 4, 5, 6, 7.5f, matrix);
  FCanvas.FillRectangle(*radial, 0, 0, 1, 1);  // without stops: its colour
  radial->SetGradientColors(std::array{1.0f}, std::array{0xFF0000FFu});
  FCanvas.FillRectangle(*radial, 0, 0, 1, 1);
  EXPECT_EQ(Written(), R"~(<rect x="0" y="0" width="1" height="1" fill="#000000" fill-opacity="0"/>
<radialGradient id="rg4" gradientUnits="userSpaceOnUse" cx="3" cy="4" r="7.5" fx="5" fy="6")~"
                       R"~( gradientTransform="translate(5,6)">)~"
                       R"~(<stop offset="0" stop-color="#0000ff" stop-opacity="1"/> )~"
                       R"~(<stop offset="1" stop-color="#0000ff" stop-opacity="1"/>
</radialGradient><rect x="0" y="0" width="1" height="1" style="fill:url(#rg4)"/>
)~");
}

TEST_F(SVGCanvas, GroupsCloseWithTheirLevel) {
  FCanvas.SaveState();
  FCanvas.IntersectClip({1, 2.125f, 11.5f, 22});
  FCanvas.TranslateTransform(5, 0);
  FCanvas.SaveState();
  FCanvas.ScaleTransform(2, 2);
  FCanvas.RestoreState();
  FCanvas.RestoreState();
  FCanvas.RotateTransform(0);  // no group for the identity
  FCanvas.EndScene();
  EXPECT_EQ(Written(), R"~(<defs><clipPath id="0"><rect x="1" y="2.12" width="10.5" height="19.88"/>
</clipPath></defs><g clip-path="url(#0)"><g transform="translate(5,0)"><g transform=" scale(2,2)"></g></g></g>
)~");
  Begin({10, 0, 100, 100}, 2);
  THtMatrixData matrix;
  matrix.Init(1, 2, 3, 4, 5, 6);
  FCanvas.MatrixTransform(matrix, false);
  THtCustomPath box(true);
  box.AddRectangle(1, 2, 3, 4);
  FCanvas.IntersectClip(box);
  FCanvas.IntersectClip(FLine);
  FCanvas.EndScene();
  EXPECT_EQ(
      Written(),
      R"~(<g transform=" scale(2,2)"><g transform="translate(10,0)"><g transform="matrix(1,2,3,4,5,6)">)~"
      R"~(<defs><clipPath id="1"><rect x="1" y="2" width="3" height="4"/>
</clipPath></defs><g clip-path="url(#1)"><defs><clipPath id="c2"><path d="M0 0l10 5 "/>
</clipPath></defs><g clip-path="url(#c2)"></g></g></g></g></g>
)~");
  // Unbalanced: only the last level is closed, and too many restores and ends do no harm.
  Begin();
  FCanvas.TranslateTransform(1, 1);
  FCanvas.SaveState();
  FCanvas.TranslateTransform(2, 2);
  FCanvas.EndScene();
  for (int i = 0; i < 3; ++i) FCanvas.RestoreState();
  FCanvas.EndScene();
  FCanvas.TranslateTransform(3, 3);
  EXPECT_EQ(Written(), R"~(<g transform="translate(1,1)"><g transform="translate(2,2)"></g>)~"
                       R"~(<g transform="translate(3,3)">
)~");
  THtSVGCanvas sceneless;
  sceneless.TranslateTransform(1, 1);
  sceneless.RestoreState();
  sceneless.EndScene();
  EXPECT_EQ(sceneless.Writer().GetAsString(), u"<g transform=\"translate(1,1)\"></g>");
}

TEST_F(SVGCanvas, PagesBecomeDocuments) {
  FCanvas.BeginPaging(210, 297, 96, coDefault);
  FCanvas.EndScene();
  FCanvas.NewPage(coDefault);
  Begin();
  FCanvas.BeginLink(u"a?b&\"c\""_hs, u"<t>"_hs);
  FCanvas.EndLink();
  FCanvas.EndScene();
  const std::string head =
      R"(<svg version="1.0" xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink")"
      R"( width="794" height="1123">)";
  for (const char* content : {"", R"(<a href="a?b&amp;&quot;c&quot;" title="&lt;t&gt;"></a>)"})
    EXPECT_EQ(HtToUtf8(static_cast<THtPageSVG*>(FCanvas.GetPage(*content ? 1 : 0))->SVG),
              head + content + "</svg>");
}

TEST_F(SVGCanvas, Texts) {
  const auto written = [this](const char16_t* name, float height, THtFontStyles fontStyle,
                              const hstring& text, int32_t start, int32_t count, TCSSWritingMode mode) {
    THtFont& font = *FFonts->GetFont(name, height, fontStyle);
    font.SetStyle(fontStyle);
    THtTextStyle style;
    style.Color = 0xFF336699;
    style.WritingMode = mode;
    FCanvas.DrawString(text, {1.5f, 100, 50, 120}, font, style, start, count);
    return Written();
  };
  const struct {
    const char16_t* Text;
    int32_t Start, Count;
    std::string Part;
  } kParts[] = {{u"a<b\u00A0\u00A0&c", 1, -1, "a&lt;b  &amp;c"},
                {u"abcdef", 3, 2, "cd"},
                {u"abcdef", 6, 99, "f"},
                {u"abc", 9, 2, ""},
                {u"abc", 0, 1, "a"},
                {u"abc", 1, 0, ""}};
  for (const auto& p : kParts)
    EXPECT_EQ(written(u"Verdana", 10, {}, p.Text, p.Start, p.Count, wmHorizontalTB),
              R"(<text x="1.5" y="108" class="f0">)" + p.Part + "</text>\r\n\n");
  const struct {
    THtFontStyles Style;
    TCSSWritingMode Mode;
    std::string Class;  // and the style
  } kStyles[] = {
      {{hfsUnderline}, wmHorizontalTB, R"(f0" style="text-decoration:underline;)"},
      {{hfsStrikeOut}, wmVerticalRL, R"(f0" style="text-decoration:line-through;writing-mode:vertical-rl;)"},
      {{hfsBold}, wmVerticalLR, R"(f1" style="writing-mode:vertical-lr;)"},
      {{hfsBold, hfsItalic}, wmSidewaysRL, R"(f2" style="writing-mode:sideways-rl;)"},
      {{hfsItalic}, wmSidewaysLR, R"(f3" style="writing-mode:sideways-lr;)"},
      {{hfsUnderline, hfsStrikeOut}, wmHorizontalTB, R"(f0" style="text-decoration:underline line-through;)"},
      {{hfsBold}, wmHorizontalTB, "f1"},
  };
  for (const auto& s : kStyles)
    EXPECT_EQ(written(u"Verdana", 10, s.Style, u"x"_hs, 1, 1, s.Mode),
              R"(<text x="1.5" y="108" class=")" + s.Class + "\">x</text>\r\n\n");
  EXPECT_EQ(written(u"Georgia", 12.5f, {}, u"x"_hs, 1, 1, wmHorizontalTB),
            "<text x=\"1.5\" y=\"110\" class=\"f4\">x</text>\r\n\n");
  std::istringstream css(HtToUtf8(FCanvas.Style()));
  std::set<std::string> rules;  // which come in any order
  for (std::string rule; std::getline(css, rule);) rules.insert(rule);
  EXPECT_EQ(rules,
            (std::set<std::string>{
                ".f0{font-family: Verdana;font-size:10px;fill:#336699;}\r",
                ".f1{font-family: Verdana;font-size:10px;fill:#336699;font-weight:bold;}\r",
                ".f2{font-family: Verdana;font-size:10px;fill:#336699;font-weight:bold;font-style:italic;}\r",
                ".f3{font-family: Verdana;font-size:10px;fill:#336699;font-style:italic;}\r",
                ".f4{font-family: Georgia;font-size:12.5px;fill:#336699;}\r"}));
}

TEST_F(SVGCanvas, AnchorsAreIdsOfTheNextText) {
  THtFont& font = *FFonts->GetFont(u"Arial", 10, {});
  FCanvas.DrawLink({}, u"nothing"_hs, false);
  FCanvas.DrawLink({}, u"one<\""_hs, true);
  FCanvas.DrawLink({}, u"two\""_hs, true);
  FCanvas.CustomAttributes().Add(u"data-x=1=2"_hs);
  for (int i = 0; i < 2; ++i) FCanvas.DrawString(u"x"_hs, {}, font, {}, 1, 1);
  EXPECT_EQ(Written(),
            R"(<a id="one&lt;""></a><text x="0" y="8" id="two&quot;" data-x="1=2" class="f0">x</text>)"
            "\r\n<text x=\"0\" y=\"8\" class=\"f0\">x</text>\r\n\n");
}

TEST_F(SVGCanvas, Images) {
  const auto draw = [this](const THtBytes& bytes, const hstring& url, const TRectF& rect) {
    const auto image = TFixedCanvas::Class()->ImageClass()->Create(bytes);
    image->Url = url;
    FCanvas.DrawImage(*image, rect, .5f);
  };
  const THtBytes bytes(60, 0xFB);
  draw({}, {}, {1, 2, 3, 4});  // nothing
  draw({1, 2}, u"a&b.png"_hs, {1, 2, 3.5f, 4});
  draw({1, 2, 3, 4}, {}, {1, 2, 1, 2});
  draw(bytes, {}, {0, 0, 0, 1});
  EXPECT_EQ(Written(), R"(<image x="1" y="2" width="2.5" height="2" xlink:href="a&amp;b.png"/>
<image x="1" y="2" xlink:href="data:image/bitmap;base64,AQIDBA=="/>
<image x="0" y="0" height="1" xlink:href="data:image/bitmap;base64,)" +
                           HtToUtf8(Base64EncodeNoLF(bytes)) + "\"/>\n");
  FCanvas.DrawShadow(nullptr, {});
  FCanvas.BlurRect({0, 0, 9, 9}, nullptr, 1);
  FCanvas.SetClip({0, 0, 9, 9});
  EXPECT_EQ(Written(), "\n") << "there are no such elements";
}

TEST_F(SVGCanvas, ReferenceClassAnswers) {
  const THtCanvasClass* svg = THtSVGCanvas::Class();
  EXPECT_EQ(svg->FontClass(), TFixedFont::Class());
  EXPECT_EQ(svg->PageClass(), THtPageSVG::Class());
  EXPECT_EQ(svg->GetFlags(), TFixedCanvas::Class()->GetFlags() + THtCanvasFlags{hcfSupportsImageRef});
  EXPECT_EQ(svg->MeasureString(u"abcd"_hs, *FFonts->GetFont(u"Arial", 10, {}), {}, 0, 2, 2), 10);
  EXPECT_FALSE(svg->HasFont(u"Arial"_hs));
  HtDefaultCanvasClass = nullptr;
  EXPECT_THROW(svg->FontClass(), EHtException);
}

}  // namespace
