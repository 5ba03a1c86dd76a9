#include <gtest/gtest.h>
#include <sstream>

#include "htcanvas/shadowprops.h"
#include "htcanvas/wavyline.h"
#include "htmlcss/elementbackground.h"
#include "logcanvas.h"

using namespace ht;

namespace {

class TPrimitives : public testing::Test {
 protected:
  void SetUp() override {
    FCanvas.BeginScene(NewScene({0, 0, 1000, 1000}));
    TakeLog();
  }

  TLogCanvas FCanvas;
};

// --- controls ---

TEST_F(TPrimitives, Controls) {
  const struct {
    bool Checked, Hover, Disabled;
    std::string Color;
  } kChecks[] = {
      {false, false, false, "ff000000"}, {true, true, false, "ff000050"}, {true, true, true, "ffaaaaaa"}};
  for (const auto& c : kChecks) {
    const std::string line = "draw " + c.Color;
    FCanvas.DrawCheck({10, 20, 30, 40}, 0, c.Checked, true, c.Hover, c.Disabled);
    EXPECT_EQ(TakeLog(), line + " 1 M11 21h18 v18 h-18 z \n" +
                             (c.Checked ? line + " 2 M14 32l2 3 \n" + line + " 2 M16 35l5 -12 \n" : ""));
    // The dot ends a tenth of a degree before it would close.
    FCanvas.DrawRadio({10, 20, 33, 43}, 0, c.Checked, true, c.Hover, c.Disabled);
    EXPECT_EQ(TakeLog(), line + " 1 A10 10 0 1 1 30 30 z \n" +
                             (c.Checked ? "fill ff000000 A7 7 0 1 1 27 29.9878 z \n" : ""));
  }
  THtCustomPath box(false);
  box.AddRoundRect({0, 0, 40, 20}, 5, 5);
  const struct {
    bool Pressed, Hover;
    std::string Line, Upper, Lower;
  } kButtons[] = {{true, true, "ff505090", "ffe3f9ff", "ffa5d0e5"},
                  {false, true, "ff909090", "ffe3f9ff", "ffbadff0"},
                  {false, false, "ff909090", "ffeeeeee", "ffdddddd"}};
  for (const auto& b : kButtons) {
    FCanvas.DrawButton({0, 0, 40, 20}, 0, false, b.Pressed, b.Hover, true);
    EXPECT_EQ(TakeLog(), "fill angle 1 0:" + b.Upper + " 0.5:" + b.Upper + " 0.5:" + b.Lower +
                             " 1:" + b.Lower + " " + PathText(box) + "\nsmooth\ndraw " + b.Line + " 1 " +
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

THtShadowProps Props(const TRectF& box, float radius = 0, float hOffset = 2, float vOffset = 3) {
  return THtShadowProps::CreateShadowProps(box, radius, true, hOffset, vOffset, 2, 0xFF112233, 128, false);
}

TEST_F(TPrimitives, SmallShadow) {
  constexpr const char* kStart =
      "new bitmap 32 22 alpha\nclear 0,0,32,22 00000000\nbegin 0,0,32,22 on bitmap\n"
      "save\ntransform translate(-4,-4)\ncrisp\nfill fe112233 ";
  const std::string rect = "M10 10h20 v10 h-20 z ";
  THtCustomPath round(false), triangle(false);
  round.AddRoundRect({10, 10, 30, 20}, 4, 4);
  triangle.Parse(u"M10 10 30 10 10 20z");
  const struct {
    uint32_t Background;
    float Radius;
    const THtPath* Path;
    std::string Shape;
    bool KnockOut;
  } kCases[] = {{0, 0, nullptr, rect, true},
                {0xFE000000, 0, nullptr, rect, true},
                {0xFF000000, 0, nullptr, rect, false},
                {0, 4, nullptr, PathText(round), true},
                {0, 0, &triangle, PathText(triangle), true}};
  for (const auto& c : kCases) {
    THtShadowProps props = Props({10, 10, 30, 20}, c.Radius);
    props.HasBackground = c.Background != 0;
    props.BackgroundColor = c.Background;
    FCanvas.DrawShadow(c.Path, props);
    std::string expected = kStart + c.Shape + "\nrestore\nblur 0,0,32,22 1\n";
    if (c.KnockOut)
      expected += (c.Radius > 0 ? "smooth\n" : "") + std::string("copy\nsave\ntransform translate(-6,-7)\n") +
                  "fill 00ffffff " + c.Shape + "\nrestore\n";
    EXPECT_EQ(TakeLog(), expected + "end\ngone\nbitmap 6,7,38,29 from 0,0,32,22 0.502\n");
  }
}

// What is drawn of a cached square: its corners, then its edges.
TEST_F(TPrimitives, LargeShadowIsCutFromACachedSquare) {
  const struct {
    const char *Source, *Target, *Scaled;  // as it is, and in a matrix that scales by 2
    bool Seen;                             // in one that turns
  } kPieces[] = {{"0,0,22,22", "-2,0,20,22", "-4,0,40,44", true},
                 {"33,0,55,22", "188,0,210,22", "376,0,420,44", true},
                 {"0,33,22,55", "-2,190,20,212", "-4,380,40,424", false},
                 {"33,33,55,55", "188,190,210,212", "376,380,420,424", false},
                 {"22,0,23,16", "20,0,188,16", "40,0,376,32", true},
                 {"22,27,23,55", "20,184,188,212", "40,368,376,424", false},
                 {"0,22,18,23", "-2,22,16,190", "-4,44,32,380", true},
                 {"29,22,55,23", "184,22,210,190", "368,44,420,380", true}};
  std::string plain = "save\nmatrix \n", scaled = plain, turned;
  for (const auto& p : kPieces) {
    const std::string from = std::string(" from ") + p.Source + " 1\n";
    plain += "bitmap " + (p.Target + from);
    scaled += "bitmap " + (p.Scaled + from);
    if (p.Seen) turned += "bitmap " + (p.Target + from);
  }
  THtCustomPath path(false);
  path.AddRoundRect({6, 6, 49, 49}, 10, 10);
  const std::string round = PathText(path);
  THtShadowProps props = Props({0, 0, 200, 200}, 10, 4, 6);
  FCanvas.DrawShadow(nullptr, props);
  EXPECT_EQ(TakeLog(),
            "new bitmap 55 55 alpha\nclear 0,0,55,55 00000000\nbegin 0,0,55,55 on bitmap\ncrisp\n"
            "fill fe112233 " +
                round + "\nblur 0,0,55,55 1\ncopy\nsave\ntransform translate(-4,-6)\nfill 00ffffff " + round +
                "\nrestore\nend\ngone\n" + plain + "restore\n");
  // Again, with what does not count changed: from the cache.
  props.Opacity = 1;
  props.HasBackground = true;
  FCanvas.ScaleTransform(2, 2);
  TakeLog();
  FCanvas.DrawShadow(nullptr, props);
  EXPECT_EQ(TakeLog(), scaled + "restore\n");
  // Turned, it is drawn in its own coordinates, and only what comes into view.
  FCanvas.MatrixTransform({}, false);
  FCanvas.RotateTransform(90);
  FCanvas.TranslateTransform(0, -100);
  TakeLog();
  FCanvas.DrawShadow(nullptr, props);
  EXPECT_EQ(TakeLog(), turned);
  // A wider blur takes a larger square; with a background nothing is cut out.
  props.Blur = 4;
  FCanvas.DrawShadow(nullptr, props);
  const std::string log = TakeLog();
  EXPECT_TRUE(log.starts_with("size 79 79\nclear 0,0,79,79 00000000\nbegin 0,0,79,79 on bitmap\n")) << log;
  EXPECT_EQ(log.find("00ffffff"), log.npos);
}

TEST_F(TPrimitives, ShadowsOfAnySize) {
  const float kHuge = std::numeric_limits<float>::max(), kNaN = std::numeric_limits<float>::quiet_NaN();
  THtShadowProps props = Props({0, 0, 199, 200});
  FCanvas.DrawShadow(nullptr, props);
  EXPECT_TRUE(TakeLog().starts_with("new bitmap 211 212"));
  props.R.Right = 200;
  FCanvas.DrawShadow(nullptr, props);
  EXPECT_TRUE(TakeLog().starts_with("new bitmap 32 32"));  // 3 + 0 + 24 + 5
  for (const float blur : {kHuge, -kHuge, kNaN, -10.0f})
    for (const float side : {1.0f, 199.0f, 1e6f, kHuge, kNaN, -5.0f}) {
      props.Blur = blur;
      props.R = {0, 0, side, side};
      FCanvas.DrawShadow(nullptr, props);
    }
  EXPECT_EQ(TakeLog().find("new bitmap -"), std::string::npos);
  TFixedCanvas noBitmaps;
  noBitmaps.DrawShadow(nullptr, Props({0, 0, 20, 20}));
  noBitmaps.DrawShadow(nullptr, Props({0, 0, 2000, 20}));
}

// --- images ---

class TSizedImage : public THtImage {
 public:
  TSizedImage(int32_t width, int32_t height) { Width = width, Height = height; }
};

constexpr TRectF kBox{10, 20, 110, 70};

// The log of images in these rectangles.
std::string Images(const std::string& rects) {
  std::istringstream words(rects);
  std::string text;
  for (std::string rect; words >> rect;) text += "image " + rect + " 0.5\n";
  return text;
}

// A word of `background-position`, or a length; nothing for "-".
void SetPosition(TMeasure& measure, const std::string& text) {
  if (text == "-") return;
  measure.SetValue(0);
  measure.Flags.Include(mfNotAuto);
  const std::pair<const char*, TMeasureFlag> kWords[] = {
      {"left", mfLeft}, {"right", mfRight}, {"center", mfCenter}, {"top", mfTop}, {"bottom", mfBottom}};
  for (const auto& [name, flag] : kWords)
    if (name == text) return measure.Flags.Include(flag);
  measure.Parse(HtFromUtf8(text));
}

TEST_F(TPrimitives, BackgroundImages) {
  const struct {
    int32_t Width, Height;
    TBackgroundSize Mode;
    TBackgroundRepeat Repeat;
    const char *Size, *Position, *Drawn;
  } kCases[] = {
      // fitted, by the shape of box and image
      {20, 20, bsContain, brNoRepeat, "- -", "- -", "10,20,60,70"},
      {20, 20, bsCover, brNoRepeat, "- -", "- -", "10,20,110,120"},
      {80, 20, bsContain, brNoRepeat, "- -", "- -", "10,20,110,45"},
      {80, 20, bsCover, brNoRepeat, "- -", "- -", "10,20,210,70"},
      {20, 20, bsContain, brNoRepeat, "- -", "center center", "35,20,85,70"},
      {20, 20, bsCover, brNoRepeat, "- -", "right bottom", "10,-30,110,70"},
      {20, 20, bsContain, brRepeat, "- -", "center center", "10,20,60,70"},
      // once; the deltas are 3 and 4
      {40, 20, bsAuto, brNoRepeat, "- -", "- -", "13,16,53,36"},
      {40, 20, bsAuto, brNoRepeat, "- -", "right bottom", "73,46,113,66"},
      {40, 20, bsAuto, brNoRepeat, "- -", "left top", "13,16,53,36"},
      {40, 20, bsAuto, brNoRepeat, "- -", "7px 9px", "20,25,60,45"},
      {40, 20, bsSize, brNoRepeat, "10px -", "center center", "58,31,68,51"},
      // tiled: the deltas move into the first tile
      {60, 40, bsAuto, brRepeat, "- -", "- -", "7,16,67,56 67,16,127,56 7,56,67,96 67,56,127,96"},
      {60, 60, bsAuto, brRepeat, "- -", "center -", "-33,16,27,76 27,16,87,76"},
      {60, 60, bsAuto, brRepeat, "- -", "right bottom", "-3,-34,57,26 57,-34,117,26"},
      {60, 60, bsAuto, brRepeat, "- 50px", "7px -", "-46,16,14,66 14,16,74,66"},
      // one row: the box moves down by what the tiling moves up
      {60, 20, bsAuto, brRepeatX, "- -", "- center", "7,26,67,46 67,26,127,46"},
      // one column, moved with the box
      {40, 25, bsAuto, brRepeatY, "- -", "center -", "37,16,77,41 37,41,77,66"},
      {0, 20, bsAuto, brRepeat, "- -", "- -", ""},
      {20, -1, bsCover, brRepeat, "- -", "- -", ""},
      {20, 20, bsSize, brRepeat, "0px -", "- -", ""},
  };
  for (const auto& c : kCases) {
    TElementBackground background;
    background.SizeMode = c.Mode;
    background.Repeat = c.Repeat;
    std::string x, y;
    std::istringstream(c.Size) >> x >> y;
    SetPosition(background.SizeX, x);
    SetPosition(background.SizeY, y);
    std::istringstream(c.Position) >> x >> y;
    SetPosition(background.PositionX, x);
    SetPosition(background.PositionY, y);
    TSizedImage image(c.Width, c.Height);
    FCanvas.FillImage(kBox, image, 3, 4, background, .5f, 0);
    EXPECT_EQ(TakeLog(), Images(c.Drawn)) << &c - kCases;
  }
}

TEST_F(TPrimitives, Tiles) {
  const struct {
    TPointF Origin;
    bool RepeatX, RepeatY;
    const char* Drawn;
  } kCases[] = {{{0, 0}, false, false, "10,20,70,50"},
                {{-130, 70}, true, false, "-40,10,20,40 20,10,80,40"},
                {{60, 30}, false, true, "10,20,70,50 10,50,70,80"}};
  for (const auto& c : kCases) {
    TSizedImage image(60, 30);
    FCanvas.DoFillImage(image, 60, 30, kBox, c.Origin, c.RepeatX, c.RepeatY, .5f, 9);
    EXPECT_EQ(TakeLog(), Images(c.Drawn));
  }
  TSizedImage image(60, 30);
  FCanvas.DoFillImage(image, 0.001f, 0.001f, kBox, {0, 0}, true, true, 1, 0);  // comes to an end
  EXPECT_EQ(TakeLog(), "");
}

}  // namespace
