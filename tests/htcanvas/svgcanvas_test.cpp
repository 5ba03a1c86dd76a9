#include "htcanvas/svgcanvas.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>

#include "fixedcanvas/fixedcanvas.h"
#include "htruntime/exception.h"
#include "htutils/base64.h"

using namespace ht;

namespace {

class SVGCanvas : public testing::Test {
 protected:
  void SetUp() override {
    HtDefaultCanvasClass = TFixedCanvas::Class();
    FFonts = TFixedCanvas::Class()->CreateFontCollection();
    Begin();
  }
  void TearDown() override { HtDefaultCanvasClass = nullptr; }

  void Begin(const TRect& viewPort = {0, 0, 100, 100}, float scale = 1) {
    THtCanvasScene scene;
    scene.Init(viewPort, nullptr);
    scene.Scale = scale;
    FCanvas.BeginScene(scene);
  }
  // What was written since the last call.
  std::string Written() {
    const std::string text = HtToUtf8(FCanvas.Writer().GetAsString());
    FCanvas.Writer().ClearandLeaveSpace();
    return text;
  }
  std::unique_ptr<THtBrush> Gradient() {
    auto brush = THtBrush::Class()->CreateGradient({0, 0, 10, 20.5f}, 0, 0, 45, {0, 0, 10, 20});
    brush->SetGradientColors(std::array{0.123456f, 1.0f}, std::array{0xFFFF0000u, 0x8000FF00u});
    return brush;
  }

  std::unique_ptr<THtFontCollection> FFonts;
  THtSVGCanvas FCanvas;
};

TEST_F(SVGCanvas, Shapes) {
  THtCustomPath path(false);
  path.MoveTo(0, 0);
  path.LineTo(10, 5);
  const struct {
    std::function<void(THtCanvas&, const THtPen&)> Draw;
    const char* Expected;
  } kStrokes[] = {
      {[](auto& c, auto& pen) { c.DrawLine(pen, 1, 2, 3.5f, -4); },
       R"(<line x1="1" y1="2" x2="3.5" y2="-4"%/>)"},
      {[](auto& c, auto& pen) { c.DrawRectangle(pen, 1, 2, 3, 4); },
       R"(<rect fill="none" x="1" y="2" width="3" height="4"%/>)"},
      {[](auto& c, auto& pen) {
         c.DrawRectangle(pen, {1, 2, 4, 6});
       },
       R"(<rect fill="none" x="1" y="2" width="3" height="4"%/>)"},
      {[](auto& c, auto& pen) {
         c.RoundRect(pen, {1, 2, 4, 6}, .5f, 0);
       },
       R"(<rect fill="none" x="1" y="2" width="3" height="4" rx=".5" ry="0"%/>)"},
      {[](auto& c, auto& pen) { c.DrawEllipse(pen, 1, 2, 3, 4); },
       R"(<ellipse cx="2.5" cy="4" rx="1.5" ry="2" fill="none"%/>)"},
      {[&path](auto& c, auto& pen) { c.DrawPath(pen, path); }, R"(<path fill="none"% d="M0 0l10 5 "/>)"},
      {[](auto& c, auto& pen) { c.DrawArc(pen, 0, 0, 20, 20, 0, 90); },
       R"(<path fill="none"% d="A10 10 0 0 1 10 20 "/>)"},
  };
  for (const auto& s : kStrokes) {
    std::string expected = s.Expected;
    expected.replace(expected.find('%'), 1, R"( stroke="#000000" stroke-width="2" stroke-dasharray="8")");
    THtPen& pen = FCanvas.GetPen(0xFF000000, 2);
    pen.SetPenStyle(hpsDash);
    s.Draw(FCanvas, pen);
    EXPECT_EQ(Written(), expected);
  }

  using TFill = std::function<void(THtCanvas&, const THtBrush&)>;
  const struct {
    TFill Draw;
    uint32_t Color;
    const char* Expected;
  } kFills[] = {
      {[](auto& c, auto& brush) { c.FillRectangle(brush, 10, 20, 30.5f, 40); }, 0xFFFF0000,
       R"(<rect x="10" y="20" width="30.5" height="40" fill="#ff0000" fill-opacity="1"/>)"},
      {[](auto& c, auto& brush) {
         c.FillRectangle(brush, {1, 2, 3, 4});
       },
       0, R"(<rect x="1" y="2" width="2" height="2" fill="#000000" fill-opacity="0"/>)"},
      {[](auto& c, auto& brush) {
         c.FillRoundRect(brush, {1, 2, 4, 6}, 1.5f, 2);
       },
       0x80ABCDEF,
       R"(<rect  x="1" y="2" width="3" height="4" rx="1.5" ry="2" fill="#abcdef" fill-opacity=".5" stroke="none"/>)"},
      {[](auto& c, auto& brush) { c.FillEllipse(brush, 1, 2, 3, 4); }, 0x01000000,
       R"(<ellipse cx="2.5" cy="4" rx="1.5" ry="2" fill="#000000" fill-opacity="0"/>)"},
      {[&path](auto& c, auto& brush) { c.FillPath(brush, path); }, 0xFEFFFFFF,
       R"(<path  fill="#ffffff" fill-opacity="1"  d="M0 0l10 5 "/>)"},
      {[&path](auto& c, auto& brush) { c.FillPath(brush, path); }, 0,
       R"(<path  fill="none"  d="M0 0l10 5 "/>)"},
  };
  for (const auto& f : kFills) {
    f.Draw(FCanvas, FCanvas.GetBrush(f.Color));
    EXPECT_EQ(Written(), f.Expected);
  }
}

TEST_F(SVGCanvas, Gradients) {
  THtCustomPath path(false);
  path.MoveTo(0, 0);
  path.LineTo(10, 5);
  const auto brush = Gradient();
  const std::string stops =
      R"(<stop offset="0" stop-color="#ff0000" stop-opacity="1"/> <stop offset=".1235" stop-color="#ff0000" stop-opacity="1"/> <stop offset="1" stop-color="#00ff00" stop-opacity=".5"/>)";
  const auto linear = [&stops](const char* id) {
    return std::string(R"(<linearGradient id=")") + id +
           R"(" gradientUnits="userSpaceOnUse" x1="0" y1="0" x2="10" y2="20.5">)" + stops +
           "</linearGradient>";
  };
  FCanvas.FillRectangle(*brush, 1, 2, 3, 4);
  EXPECT_EQ(Written(),
            linear("lg0") + R"~(<rect x="1" y="2" width="3" height="4" style="fill:url(#lg0)"/>)~");
  FCanvas.FillRoundRect(*brush, {1, 2, 4, 6}, 1, 2);
  EXPECT_EQ(
      Written(),
      linear("lg1") +
          R"~(<rect style="fill:url(#lg1)" stroke="none" x="1" y="2" width="3" height="4" rx="1" ry="2"/>)~");
  Begin();  // ids run on
  FCanvas.FillEllipse(*brush, 0, 0, 2, 2);
  EXPECT_EQ(Written(), linear("lg2") + R"~(<ellipse cx="1" cy="1" rx="1" ry="1" style="fill:url(#lg2)"/>)~");
  FCanvas.FillPath(*brush, path);
  EXPECT_EQ(Written(), linear("lg3") + R"~(<path  fill="none" style="fill:url(#lg3)"  d="M0 0l10 5 "/>)~");

  THtMatrixData matrix;
  matrix.Init(1, 0, 0, 1, 5, 6);
  const auto radial = THtBrush::Class()->CreateRadialGradient(1, 2, 3, 4, 5, 6, 7.5f, matrix);
  FCanvas.FillRectangle(*radial, 0, 0, 1, 1);  // without stops: its colour
  EXPECT_EQ(Written(), R"(<rect x="0" y="0" width="1" height="1" fill="#000000" fill-opacity="0"/>)");
  radial->SetGradientColors(std::array{1.0f}, std::array{0xFF0000FFu});
  FCanvas.FillRectangle(*radial, 0, 0, 1, 1);
  EXPECT_EQ(
      Written(),
      R"~(<radialGradient id="rg4" gradientUnits="userSpaceOnUse" cx="3" cy="4" r="7.5" fx="5" fy="6" gradientTransform="translate(5,6)">)~"
      R"(<stop offset="0" stop-color="#0000ff" stop-opacity="1"/> <stop offset="1" stop-color="#0000ff" stop-opacity="1"/></radialGradient>)"
      R"~(<rect x="0" y="0" width="1" height="1" style="fill:url(#rg4)"/>)~");
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
  EXPECT_EQ(
      Written(),
      R"(<defs><clipPath id="0"><rect x="1" y="2.12" width="10.5" height="19.88"/></clipPath></defs>)"
      R"~(<g clip-path="url(#0)"><g transform="translate(5,0)"><g transform=" scale(2,2)"></g></g></g>)~");

  Begin({10, 0, 100, 100}, 2);
  THtMatrixData matrix;
  matrix.Init(1, 2, 3, 4, 5, 6);
  FCanvas.MatrixTransform(matrix, false);
  THtCustomPath box(true), line(true);
  box.AddRectangle(1, 2, 3, 4);
  line.AddLine(0, 0, 10, 10);
  FCanvas.IntersectClip(box);
  FCanvas.IntersectClip(line);
  FCanvas.EndScene();
  EXPECT_EQ(
      Written(),
      R"~(<g transform=" scale(2,2)"><g transform="translate(10,0)"><g transform="matrix(1,2,3,4,5,6)">)~"
      R"~(<defs><clipPath id="1"><rect x="1" y="2" width="3" height="4"/></clipPath></defs><g clip-path="url(#1)">)~"
      R"~(<defs><clipPath id="c2"><path d="M0 0l10 10 "/></clipPath></defs><g clip-path="url(#c2)"></g></g></g></g></g>)~");
  // Unbalanced: only the last level is closed, and too many restores and ends do no harm.
  Begin();
  FCanvas.TranslateTransform(1, 1);
  FCanvas.SaveState();
  FCanvas.TranslateTransform(2, 2);
  FCanvas.EndScene();
  for (int i = 0; i < 3; ++i) FCanvas.RestoreState();
  FCanvas.EndScene();
  FCanvas.TranslateTransform(3, 3);
  EXPECT_EQ(
      Written(),
      R"~(<g transform="translate(1,1)"><g transform="translate(2,2)"></g><g transform="translate(3,3)">)~");
}

TEST_F(SVGCanvas, PagesBecomeDocuments) {
  FCanvas.BeginPaging(210, 297, 96, coDefault);
  FCanvas.EndScene();
  FCanvas.NewPage(coDefault);
  Begin();
  FCanvas.DrawLine(FCanvas.GetPen(0xFF000000, 1), 0, 0, 1, 1);
  FCanvas.EndScene();
  const std::string head =
      R"(<svg version="1.0" xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" width="794" height="1123">)";
  const auto svg = [this](int index) {
    return HtToUtf8(static_cast<THtPageSVG*>(FCanvas.GetPage(index))->SVG);
  };
  EXPECT_EQ(svg(0), head + "</svg>");
  EXPECT_EQ(svg(1), head + R"(<line x1="0" y1="0" x2="1" y2="1" stroke="#000000" stroke-width="1"/></svg>)");
}

TEST_F(SVGCanvas, Texts) {
  const struct {
    const char16_t* Font;
    THtFontStyles Style;
    float Height;
    const char16_t* Text;
    int32_t Start, Count;
    TCSSWritingMode Mode;
    std::string Expected;  // behind the place and the class
  } kCases[] = {
      {u"Verdana", {}, 10, u"a<b\u00A0\u00A0&c", 1, -1, wmHorizontalTB, R"(class="f0">a&lt;b  &amp;c)"},
      {u"Verdana",
       {hfsUnderline},
       10,
       u"abcdef",
       3,
       2,
       wmHorizontalTB,
       R"(class="f0" style="text-decoration:underline;">cd)"},
      {u"Verdana",
       {hfsStrikeOut},
       10,
       u"abcdef",
       6,
       99,
       wmVerticalRL,
       R"(class="f0" style="text-decoration:line-through;writing-mode:vertical-rl;">f)"},
      {u"Verdana",
       {hfsBold},
       10,
       u"abc",
       9,
       2,
       wmVerticalLR,
       R"(class="f1" style="writing-mode:vertical-lr;">)"},
      {u"Verdana",
       {hfsBold, hfsItalic},
       10,
       u"abc",
       0,
       1,
       wmSidewaysRL,
       R"(class="f2" style="writing-mode:sideways-rl;">a)"},
      {u"Georgia",
       {hfsUnderline, hfsStrikeOut},
       12.5f,
       u"x",
       1,
       0,
       wmSidewaysLR,
       R"(class="f3" style="text-decoration:underline line-through;writing-mode:sideways-lr;">)"},
      {u"Verdana", {hfsItalic}, 10, u"x", 1, 1, wmHorizontalTB, R"(class="f4">x)"},
      {u"Verdana", {hfsBold}, 10, u"y", 1, 1, wmHorizontalTB, R"(class="f1">y)"},
  };
  for (const auto& c : kCases) {
    THtFont& font = *FFonts->GetFont(c.Font, c.Height, c.Style);
    font.SetStyle(c.Style);
    THtTextStyle style;
    style.Color = 0xFF336699;
    style.WritingMode = c.Mode;
    FCanvas.DrawString(c.Text, {1.5f, 100, 50, 120}, font, style, c.Start, c.Count);
    EXPECT_EQ(Written(), (c.Height == 10 ? R"(<text x="1.5" y="108" )" : R"(<text x="1.5" y="110" )") +
                             c.Expected + "</text>\r\n");
  }
  std::string css = HtToUtf8(FCanvas.Style());
  for (const char* rule :
       {".f0{font-family: Verdana;font-size:10px;fill:#336699;}\r\n",
        ".f1{font-family: Verdana;font-size:10px;fill:#336699;font-weight:bold;}\r\n",
        ".f2{font-family: Verdana;font-size:10px;fill:#336699;font-weight:bold;font-style:italic;}\r\n",
        ".f3{font-family: Georgia;font-size:12.5px;fill:#336699;}\r\n",
        ".f4{font-family: Verdana;font-size:10px;fill:#336699;font-style:italic;}\r\n"}) {
    const size_t at = css.find(rule);
    ASSERT_NE(at, css.npos) << rule << css;
    css.erase(at, std::string(rule).size());
  }
  EXPECT_EQ(css, "");
}

TEST_F(SVGCanvas, LinksAndAttributes) {
  THtFont& font = *FFonts->GetFont(u"Arial", 10, {});
  FCanvas.BeginLink(u"a?b&\"c\""_hs, u"<t>"_hs);
  FCanvas.EndLink();
  EXPECT_EQ(Written(), R"(<a href="a?b&amp;&quot;c&quot;" title="&lt;t&gt;"></a>)");
  FCanvas.DrawLink({}, u"nothing"_hs, false);
  FCanvas.DrawLink({}, u"one<\""_hs, true);
  EXPECT_EQ(Written(), "");
  FCanvas.DrawLink({}, u"two\""_hs, true);
  EXPECT_EQ(Written(), R"(<a id="one&lt;""></a>)");
  FCanvas.CustomAttributes().Add(u"data-x=1=2"_hs);
  for (const char* attributes : {R"( id="two&quot;" data-x="1=2")", ""}) {
    FCanvas.DrawString(u"x"_hs, {}, font, {}, 1, 1);
    EXPECT_EQ(Written(), R"(<text x="0" y="8")" + std::string(attributes) + " class=\"f0\">x</text>\r\n");
  }
}

TEST_F(SVGCanvas, Images) {
  const THtBytes bytes(60, 0xFB);
  const struct {
    THtBytes Bytes;
    const char16_t* Url;
    TRectF Rect;
    std::string Expected;
  } kCases[] = {
      {{}, u"", {1, 2, 3, 4}, ""},
      {{1, 2},
       u"a&b.png",
       {1, 2, 3.5f, 4},
       R"(<image x="1" y="2" width="2.5" height="2" xlink:href="a&amp;b.png"/>)"},
      {{1, 2, 3, 4},
       u"",
       {1, 2, 1, 2},
       R"(<image x="1" y="2" xlink:href="data:image/bitmap;base64,AQIDBA=="/>)"},
      {bytes,
       u"",
       {0, 0, 0, 1},
       R"(<image x="0" y="0" height="1" xlink:href="data:image/bitmap;base64,)" +
           HtToUtf8(Base64EncodeNoLF(bytes)) + "\"/>"},
  };
  for (const auto& c : kCases) {
    const auto image = TFixedCanvas::Class()->ImageClass()->Create(c.Bytes);
    image->Url = c.Url;
    FCanvas.DrawImage(*image, c.Rect, .5f);
    EXPECT_EQ(Written(), c.Expected);
  }
}

TEST_F(SVGCanvas, LeavesOutWhatItHasNot) {
  FCanvas.DrawShadow(nullptr, {});
  FCanvas.BlurRect({0, 0, 9, 9}, nullptr, 1);
  FCanvas.SetClip({0, 0, 9, 9});
  EXPECT_EQ(Written(), "");
}

TEST_F(SVGCanvas, ReferenceClassAnswers) {
  const THtCanvasClass* svg = THtSVGCanvas::Class();
  EXPECT_EQ(svg->FontClass(), TFixedFont::Class());
  EXPECT_EQ(svg->PageClass(), THtPageSVG::Class());
  EXPECT_EQ(svg->GetFlags(), TFixedCanvas::Class()->GetFlags() + THtCanvasFlags{hcfSupportsImageRef});
  EXPECT_EQ(svg->MeasureString(u"abcd"_hs, *FFonts->GetFont(u"Arial", 10, {}), {}, 0, 2, 2), 10);
  EXPECT_FALSE(svg->HasFont(u"Arial"_hs));
  EXPECT_EQ(&static_cast<const THtSVGCanvasClass*>(svg)->RefCanvas(), TFixedCanvas::Class());
  HtDefaultCanvasClass = nullptr;
  EXPECT_THROW(svg->FontClass(), EHtException);
}

TEST_F(SVGCanvas, DrawsNothingBeforeAScene) {
  THtSVGCanvas canvas;
  canvas.TranslateTransform(1, 1);
  canvas.RestoreState();
  canvas.EndScene();
  EXPECT_EQ(canvas.Writer().GetAsString(), u"<g transform=\"translate(1,1)\"></g>");
}

}  // namespace
