#include <gtest/gtest.h>

#include "htcanvas/shadowprops.h"
#include "htcanvas/wavyline.h"
#include "htmlcss/elementbackground.h"
#include "logcanvas.h"

using namespace ht;

namespace {

class TPrimitives : public testing::Test {
 protected:
  void SetUp() override {
    THtCanvasScene scene;
    scene.Init({0, 0, 1000, 1000}, nullptr);
    FCanvas.BeginScene(scene);
    TakeLog();
  }

  TLogCanvas FCanvas;
};

// --- controls ---

TEST_F(TPrimitives, Checks) {
  const char* kBox = "M11 21h18 v18 h-18 z \n";
  const struct {
    bool Checked, Hover, Disabled;
    std::string Color;
  } kCases[] = {
      {false, false, false, "ff000000"}, {true, true, false, "ff000050"}, {true, true, true, "ffaaaaaa"}};
  for (const auto& c : kCases) {
    FCanvas.DrawCheck({10, 20, 30, 40}, 0, c.Checked, true, c.Hover, c.Disabled);
    std::string expected = "draw " + c.Color + " 1 " + kBox;
    if (c.Checked) expected += "draw " + c.Color + " 2 M14 32l2 3 \ndraw " + c.Color + " 2 M16 35l5 -12 \n";
    EXPECT_EQ(TakeLog(), expected);
  }
}

TEST_F(TPrimitives, Radios) {
  FCanvas.DrawRadio({10, 20, 33, 43}, 0, false, false, false, true);
  EXPECT_EQ(TakeLog(), "draw ffaaaaaa 1 A10 10 0 1 1 30 30 z \n");
  FCanvas.DrawRadio({10, 20, 33, 43}, 0, true, false, true, false);
  // The dot ends a tenth of a degree before it would close.
  EXPECT_EQ(TakeLog(), "draw ff000050 1 A10 10 0 1 1 30 30 z \nfill ff000000 A7 7 0 1 1 27 29.9878 z \n");
}

TEST_F(TPrimitives, Buttons) {
  THtCustomPath box(false);
  box.AddRoundRect({0, 0, 40, 20}, 5, 5);
  const struct {
    bool Pressed, Hover;
    std::string Line, Upper, Lower;
  } kCases[] = {{true, true, "ff505090", "ffe3f9ff", "ffa5d0e5"},
                {false, true, "ff909090", "ffe3f9ff", "ffbadff0"},
                {false, false, "ff909090", "ffeeeeee", "ffdddddd"}};
  for (const auto& c : kCases) {
    FCanvas.DrawButton({0, 0, 40, 20}, 0, false, c.Pressed, c.Hover, true);
    EXPECT_EQ(TakeLog(), "fill angle 1 0:" + c.Upper + " 0.5:" + c.Upper + " 0.5:" + c.Lower +
                             " 1:" + c.Lower + " " + PathText(box) + "\nsmooth\ndraw " + c.Line + " 1 " +
                             PathText(box) + "\n");
  }
}

TEST_F(TPrimitives, WavyLines) {
  const struct {
    float X1, X2, Step;
    const char* Path;
  } kCases[] = {{0, 10, 3, "M0 6l3 -2 3 2 3 -2 "},
                {0, 12, 3, "M0 6l3 -2 3 2 3 -2 "},
                {0, 13, 3, "M0 6l3 -2 3 2 3 -2 3 2 1 -2 "},
                {0, 2, 3, "M0 6l2 -2 "},
                {5, 5, 3, "M5 6"},
                {0, 9, 4, "M0 6l4 -2 4 2 1 -2 "},
                {1e9f, 2e9f, 3, "M1000000000 6"},
                {0, 9, 0, "M0 6"}};
  for (const auto& c : kCases) {
    HtWavyLineStep = c.Step;
    FCanvas.DrawWavyLine(c.X1, 5, c.X2, 99, FCanvas.GetPen(0xFFFF0000, 1));
    EXPECT_EQ(TakeLog(), std::string("draw ffff0000 1 ") + c.Path + "\n");
  }
  HtWavyLineStep = 3;
}

TEST_F(TPrimitives, TextShadow) {
  const auto fonts = TLogCanvas::Class()->CreateFontCollection();
  THtFont& font = *fonts->GetFont(u"Arial"_hs, 10, {});
  THtTextStyle style;
  style.Color = 0xFF000001;
  FCanvas.DrawTextShadow(u"abc"_hs, {1, 2, 30, 12}, style, font, 3, -1, 5, 0xFF000002);
  EXPECT_EQ(TakeLog(), "text abc 4,1,33,11 ff000002 1 3\ntext abc 1,2,30,12 ff000001 1 3\n");
}

// --- shadows ---

THtShadowProps Props(const TRectF& box) {
  return THtShadowProps::CreateShadowProps(box, 0, true, 2, 3, 2, 0xFF112233, 128, false);
}

TEST_F(TPrimitives, SmallShadow) {
  constexpr const char* kStart =
      "new bitmap 32 22 alpha\nclear 0,0,32,22 00000000\nbegin 0,0,32,22 on bitmap\n"
      "save\ntransform translate(-4,-4)\ncrisp\n";
  constexpr const char* kEnd = "end\ngone\nbitmap 6,7,38,29 from 0,0,32,22 0.502\n";
  const std::string blur = "restore\nblur 0,0,32,22 1\n";
  const std::string move = "copy\nsave\ntransform translate(-6,-7)\n";
  const std::string rect = "M10 10h20 v10 h-20 z ";
  THtCustomPath round(false), triangle(false);
  round.AddRoundRect({10, 10, 30, 20}, 4, 4);
  triangle.Parse(u"M10 10 30 10 10 20z");
  const struct {
    bool HasBackground;
    uint32_t Background;
    float Radius;
    const THtPath* Path;
    std::string Shape, BeforeKnockOut;
  } kCases[] = {{false, 0, 0, nullptr, rect, move},
                {true, 0xFE000000, 0, nullptr, rect, move},
                {true, 0xFF000000, 0, nullptr, rect, ""},
                {false, 0, 4, nullptr, PathText(round), "smooth\n" + move},
                {false, 0, 0, &triangle, PathText(triangle), move}};
  for (const auto& c : kCases) {
    THtShadowProps props = Props({10, 10, 30, 20});
    props.HasBackground = c.HasBackground;
    props.BackgroundColor = c.Background;
    props.MaxBorderRadius = c.Radius;
    FCanvas.DrawShadow(c.Path, props);
    std::string expected = kStart + ("fill fe112233 " + c.Shape + "\n") + blur;
    if (!c.BeforeKnockOut.empty()) expected += c.BeforeKnockOut + "fill 00ffffff " + c.Shape + "\nrestore\n";
    EXPECT_EQ(TakeLog(), expected + kEnd);
  }
}

THtShadowProps LargeProps(const TRectF& box) {
  THtShadowProps props = Props(box);
  props.MaxBorderRadius = 10;
  props.HOffset = 4;
  props.VOffset = 6;
  return props;
}

TEST_F(TPrimitives, LargeShadowIsCutFromACachedSquare) {
  THtCustomPath round(false);
  round.AddRoundRect({6, 6, 49, 49}, 10, 10);
  const std::string pieces =
      "save\nmatrix \n"
      "bitmap -2,0,20,22 from 0,0,22,22 1\n"
      "bitmap 188,0,210,22 from 33,0,55,22 1\n"
      "bitmap -2,190,20,212 from 0,33,22,55 1\n"
      "bitmap 188,190,210,212 from 33,33,55,55 1\n"
      "bitmap 20,0,188,16 from 22,0,23,16 1\n"
      "bitmap 20,184,188,212 from 22,27,23,55 1\n"
      "bitmap -2,22,16,190 from 0,22,18,23 1\n"
      "bitmap 184,22,210,190 from 29,22,55,23 1\n"
      "restore\n";
  FCanvas.DrawShadow(nullptr, LargeProps({0, 0, 200, 200}));
  EXPECT_EQ(TakeLog(),
            "new bitmap 55 55 alpha\nclear 0,0,55,55 00000000\nbegin 0,0,55,55 on bitmap\ncrisp\n"
            "fill fe112233 " +
                PathText(round) +
                "\nblur 0,0,55,55 1\ncopy\nsave\ntransform translate(-4,-6)\n"
                "fill 00ffffff " +
                PathText(round) + "\nrestore\nend\ngone\n" + pieces);
  // The same again, with what does not count changed.
  THtShadowProps props = LargeProps({0, 0, 200, 200});
  props.Opacity = 1;
  props.HasBackground = true;
  FCanvas.DrawShadow(nullptr, props);
  EXPECT_EQ(TakeLog(), pieces);
  // A wider blur takes a larger square; with a background nothing is cut out.
  props.Blur = 4;
  FCanvas.DrawShadow(nullptr, props);
  const std::string log = TakeLog();
  EXPECT_TRUE(log.starts_with("size 79 79\nclear 0,0,79,79 00000000\nbegin 0,0,79,79 on bitmap\n")) << log;
  EXPECT_EQ(log.find("00ffffff"), log.npos);
}

TEST_F(TPrimitives, LargeShadowFollowsTheMatrix) {
  FCanvas.DrawShadow(nullptr, LargeProps({0, 0, 200, 200}));
  TakeLog();
  FCanvas.ScaleTransform(2, 2);
  FCanvas.DrawShadow(nullptr, LargeProps({0, 0, 200, 200}));
  EXPECT_EQ(TakeLog(),
            "transform  scale(2,2)\nsave\nmatrix \n"
            "bitmap -4,0,40,44 from 0,0,22,22 1\n"
            "bitmap 376,0,420,44 from 33,0,55,22 1\n"
            "bitmap -4,380,40,424 from 0,33,22,55 1\n"
            "bitmap 376,380,420,424 from 33,33,55,55 1\n"
            "bitmap 40,0,376,32 from 22,0,23,16 1\n"
            "bitmap 40,368,376,424 from 22,27,23,55 1\n"
            "bitmap -4,44,32,380 from 0,22,18,23 1\n"
            "bitmap 368,44,420,380 from 29,22,55,23 1\n"
            "restore\n");
  // Turned, it is drawn in its own coordinates, and only what comes into view.
  FCanvas.MatrixTransform({}, false);
  FCanvas.RotateTransform(90);
  FCanvas.TranslateTransform(0, -100);
  TakeLog();
  FCanvas.DrawShadow(nullptr, LargeProps({0, 0, 200, 200}));
  EXPECT_EQ(TakeLog(),
            "bitmap -2,0,20,22 from 0,0,22,22 1\n"
            "bitmap 188,0,210,22 from 33,0,55,22 1\n"
            "bitmap 20,0,188,16 from 22,0,23,16 1\n"
            "bitmap -2,22,16,190 from 0,22,18,23 1\n"
            "bitmap 184,22,210,190 from 29,22,55,23 1\n");
}

TEST_F(TPrimitives, ShadowsOfAnySize) {
  const float kHuge = std::numeric_limits<float>::max(), kNaN = std::numeric_limits<float>::quiet_NaN();
  THtShadowProps props = Props({0, 0, 199, 200});
  FCanvas.DrawShadow(nullptr, props);
  EXPECT_TRUE(TakeLog().starts_with("new bitmap 211 212"));
  props.R.Right = 200;
  FCanvas.DrawShadow(nullptr, props);
  EXPECT_TRUE(TakeLog().starts_with("new bitmap 32 32"));  // 3 + 0 + 24 + 5
  for (const float blur : {kHuge, -kHuge, kNaN, -10.0f}) {
    props.Blur = blur;
    for (const float side : {1.0f, 199.0f, 1e6f, kHuge, kNaN, -5.0f}) {
      props.R = {0, 0, side, side};
      FCanvas.DrawShadow(nullptr, props);
      const std::string log = TakeLog();
      EXPECT_EQ(log.find("new bitmap -"), log.npos);
    }
  }
  TFixedCanvas noBitmaps;
  noBitmaps.DrawShadow(nullptr, Props({0, 0, 20, 20}));
  noBitmaps.DrawShadow(nullptr, Props({0, 0, 2000, 20}));
}

// --- images ---

class TSizedImage : public THtImage {
 public:
  TSizedImage(int32_t width, int32_t height) { Width = width, Height = height; }
};

constexpr TRectF kBox{100, 200, 200, 250};

std::string Images(const std::vector<TRectF>& rects) {
  std::string text;
  for (const TRectF& r : rects) text += "image " + Text(r) + " 0.5\n";
  return text;
}

void SetPosition(TMeasure& measure, const char16_t* text) {
  const std::u16string_view word = text;
  if (word.empty()) return;
  measure.SetValue(0);
  measure.Flags.Include(mfNotAuto);
  constexpr std::pair<std::u16string_view, TMeasureFlag> kWords[] = {
      {u"left", mfLeft}, {u"right", mfRight}, {u"center", mfCenter}, {u"top", mfTop}, {u"bottom", mfBottom}};
  for (const auto& [name, flag] : kWords)
    if (name == word) return measure.Flags.Include(flag);
  measure.Parse(word);
}

TEST_F(TPrimitives, BackgroundImages) {
  const struct {
    int32_t Width, Height;
    TBackgroundSize Mode;
    TBackgroundRepeat Repeat;
    const char16_t *SizeX, *SizeY, *X, *Y;
    std::vector<TRectF> Drawn;
  } kCases[] = {
      // fitted, by the shape of box and image
      {20, 20, bsContain, brNoRepeat, u"", u"", u"", u"", {{100, 200, 150, 250}}},
      {20, 20, bsCover, brNoRepeat, u"", u"", u"", u"", {{100, 200, 200, 300}}},
      {80, 20, bsContain, brNoRepeat, u"", u"", u"", u"", {{100, 200, 200, 225}}},
      {80, 20, bsCover, brNoRepeat, u"", u"", u"", u"", {{100, 200, 300, 250}}},
      {20, 20, bsContain, brNoRepeat, u"", u"", u"center", u"center", {{125, 200, 175, 250}}},
      {20, 20, bsCover, brNoRepeat, u"", u"", u"right", u"bottom", {{100, 150, 200, 250}}},
      {20, 20, bsContain, brRepeat, u"", u"", u"center", u"center", {{100, 200, 150, 250}}},
      // once; the deltas are 3 and 4
      {40, 20, bsAuto, brNoRepeat, u"", u"", u"", u"", {{103, 196, 143, 216}}},
      {40, 20, bsAuto, brNoRepeat, u"", u"", u"right", u"bottom", {{163, 226, 203, 246}}},
      {40, 20, bsAuto, brNoRepeat, u"", u"", u"left", u"top", {{103, 196, 143, 216}}},
      {40, 20, bsAuto, brNoRepeat, u"", u"", u"7px", u"9px", {{110, 205, 150, 225}}},
      {40, 20, bsSize, brNoRepeat, u"10px", u"", u"center", u"center", {{148, 211, 158, 231}}},
      // tiled: the deltas move into the first tile
      {60,
       40,
       bsAuto,
       brRepeat,
       u"",
       u"",
       u"",
       u"",
       {{97, 196, 157, 236}, {157, 196, 217, 236}, {97, 236, 157, 276}, {157, 236, 217, 276}}},
      {60,
       40,
       bsAuto,
       brRepeat,
       u"",
       u"",
       u"center",
       u"",
       {{57, 196, 117, 236}, {117, 196, 177, 236}, {57, 236, 117, 276}, {117, 236, 177, 276}}},
      {60,
       40,
       bsAuto,
       brRepeat,
       u"",
       u"",
       u"7px",
       u"",
       {{44, 196, 104, 236}, {104, 196, 164, 236}, {44, 236, 104, 276}, {104, 236, 164, 276}}},
      // one row: the box moves down by what the tiling moves up
      {60, 20, bsAuto, brRepeatX, u"", u"", u"", u"center", {{97, 206, 157, 226}, {157, 206, 217, 226}}},
      // one column, moved with the box
      {40, 25, bsAuto, brRepeatY, u"", u"", u"center", u"", {{127, 196, 167, 221}, {127, 221, 167, 246}}},
      {0, 20, bsAuto, brRepeat, u"", u"", u"", u"", {}},
      {20, -1, bsCover, brRepeat, u"", u"", u"", u"", {}},
      {20, 20, bsSize, brRepeat, u"0px", u"", u"", u"", {}},
  };
  for (const auto& c : kCases) {
    TElementBackground background;
    background.SizeMode = c.Mode;
    background.Repeat = c.Repeat;
    SetPosition(background.SizeX, c.SizeX);
    SetPosition(background.SizeY, c.SizeY);
    SetPosition(background.PositionX, c.X);
    SetPosition(background.PositionY, c.Y);
    TSizedImage image(c.Width, c.Height);
    FCanvas.FillImage(kBox, image, 3, 4, background, .5f, 0);
    EXPECT_EQ(TakeLog(), Images(c.Drawn)) << &c - kCases;
  }
}

TEST_F(TPrimitives, Tiles) {
  const struct {
    TPointF Origin;
    bool RepeatX, RepeatY;
    std::vector<TRectF> Drawn;
  } kCases[] = {
      {{0, 0}, false, false, {{100, 200, 160, 230}}},
      {{-130, 70}, true, false, {{50, 190, 110, 220}, {110, 190, 170, 220}}},
      {{60, 30}, false, true, {{100, 200, 160, 230}, {100, 230, 160, 260}}},
  };
  for (const auto& c : kCases) {
    TSizedImage image(60, 30);
    FCanvas.DoFillImage(image, 60, 30, kBox, c.Origin, c.RepeatX, c.RepeatY, .5f, 9);
    EXPECT_EQ(TakeLog(), Images(c.Drawn));
  }
}

}  // namespace
