#include "refcanvas/refcanvas.h"

#include <gtest/gtest.h>

#include "htruntime/stream.h"
#include "refcanvas/imagesize.h"

using namespace ht;

namespace {

// The one family that scripts/setup installs for the tests.
constexpr std::u16string_view kFamily = u"DejaVu Sans";

const THtCanvasClass* Class() { return TRefCanvas::Class(); }

bool HasFamily() { return Class()->HasFont(kFamily); }

float Measure(THtFont& font, const hstring& text, int32_t start = 1, int32_t count = -1,
              const THtTextStyle& style = {}) {
  return Class()->MeasureString(text, font, style, 0, start, count);
}

THtBytes Bytes(std::string_view text) { return {text.begin(), text.end()}; }

TEST(RefCanvas, SizesOfImages) {
  using namespace std::literals;
  const struct {
    std::string_view Bytes;
    int32_t Width, Height;  // 0 for none
  } kRows[] = {
      {"\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\1\2\0\0\0\7"sv, 258, 7},
      {"\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\1\2\0\0\0"sv, 0, 0},
      {"\x89PNG\r\n\x1a\n\0\0\0\rIHDR\x80\0\1\2\0\0\0\7"sv, 0, 0},
      {"GIF89a\3\1\2\0"sv, 259, 2},
      {"GIF89a\3\1\0\0"sv, 0, 0},
      {"BM------------\x28\0\0\0\5\0\0\0\xFE\xFF\xFF\xFF"sv, 5, 2},
      {"BM------------\x0C\0\0\0\5\0\6\0\1\0\1\0"sv, 5, 6},
      {"\xFF\xD8\xFF\xE0\0\4ab\xFF\xFF\xC4\0\2\xFF\xC2\0\x0B\x08\0\6\1\0"sv, 256, 6},
      {"\xFF\xD8\xFF\xE0\0\4abX\xC0\0\x0B\x08\0\6\1\0"sv, 0, 0},
      {"\xFF\xD8\xFF\xE0\xFF\xFF"sv, 0, 0},
      {"no image at all"sv, 0, 0},
  };
  for (const auto& row : kRows) {
    const auto image = Class()->ImageClass()->Create(Bytes(row.Bytes));
    EXPECT_EQ(image->Width, row.Width);
    EXPECT_EQ(image->Height, row.Height);
    EXPECT_EQ(image->State, row.Width ? hisLoaded : hisFailed);
    EXPECT_EQ(image->AsBytes(), Bytes(row.Bytes));
    for (size_t cut = 0; cut < row.Bytes.size(); ++cut) {
      int32_t width, height;
      ReadImageSize(Bytes(row.Bytes.substr(0, cut)), width, height);
    }
  }
}

TEST(RefCanvas, PointsAndPaths) {
  const struct {
    const char16_t* Path;
    bool Winding;
    float X, Y;
    bool In, On;
  } kRows[] = {
      {u"M0 0H10V10H0z", false, 5, 5, true, false},
      {u"M0 0H10V10H0z", false, 11, 5, false, true},
      {u"M0 0H10V10H0z", false, 0.5f, 9, true, true},
      {u"M0 0H10V10H0", false, 0.5f, 5, true, false},  // filled as if closed; the line is not there
      {u"M0 0H9V9H0zM3 3H6V6H3z", false, 4.5f, 4.5f, false, false},
      {u"M0 0H9V9H0zM3 3H6V6H3z", true, 4.5f, 4.5f, true, false},
      {u"M0 0H9V9H0zM3 3V6H6V3z", true, 4.5f, 4.5f, false, false},
      {u"M10 0A10 10 0 0 1 -10 0z", false, 0, 9.5f, true, true},
      {u"M10 0A10 10 0 0 1 -10 0z", false, 8, 8, false, false},
      {u"M0 0C0 10 10 10 10 0z", false, 5, 7.4f, true, true},
      {u"", false, 0, 0, false, false},
  };
  for (const auto& row : kRows) {
    const auto path = Class()->PathClass()->Create(false);
    path->Parse(row.Path);
    path->SetFillModeWinding(row.Winding);
    EXPECT_EQ(Class()->PointInPath(row.X, row.Y, *path), row.In) << HtToUtf8(row.Path);
    EXPECT_EQ(Class()->PointOnPath(row.X, row.Y, *path, 1), row.On) << HtToUtf8(row.Path);
  }
}

TEST(RefCanvas, Registers) {
  TRefCanvas::Register();
  EXPECT_EQ(HtDefaultCanvasClass, TRefCanvas::Class());
  EXPECT_EQ(THtSVGCanvas::Class()->FontClass(), TRefFont::Class());
}

class Fonts : public testing::Test {
 protected:
  void SetUp() override {
    if (!HasFamily()) GTEST_SKIP() << "no DejaVu Sans: scripts/setup test installs it";
  }
  const std::unique_ptr<THtFontCollection> FFonts = Class()->CreateFontCollection();
  THtFont& Font(float size, THtFontStyles style = {}) { return *FFonts->GetFont(kFamily, size, style); }
};

// The metrics of the face: an em of 2048 units, 1901 above the baseline and 483 below, a blank of 651.
TEST_F(Fonts, Metrics) {
  TStringList names;
  Class()->GetFonts(names);
  EXPECT_GE(names.IndexOf(kFamily), 0);
  EXPECT_FALSE(Class()->HasFont(u"No Such Font"_hs));
  THtFont& font = Font(2048);
  EXPECT_FLOAT_EQ(font.Ascent, 1901);
  EXPECT_FLOAT_EQ(font.Descent, 483);
  EXPECT_FLOAT_EQ(font.LineHeight, 2384);
  EXPECT_FLOAT_EQ(font.SpaceWidth, 651);
  EXPECT_GT(font.UnderlinePosition, 0);
  EXPECT_GT(font.UnderlineThikness, 0);
  EXPECT_GT(font.StrikeoutPosition, 0);
  EXPECT_FALSE(font.Fixed);
  EXPECT_GT(font.MinCharWidth, 0);
  EXPECT_LT(font.MinCharWidth, font.SpaceWidth);
}

TEST_F(Fonts, Measures) {
  THtFont& font = Font(2048);
  const float a = Measure(font, u"A"_hs), v = Measure(font, u"V"_hs);
  EXPECT_LT(Measure(font, u"AV"_hs), a + v) << "kerned";
  EXPECT_FLOAT_EQ(Measure(font, u"xAx"_hs, 2, 1), a);
  EXPECT_FLOAT_EQ(Measure(font, u"xA"_hs, 2, 99), a);
  for (const auto& [start, count] : {std::pair{9, 1}, {1, 0}, {4, -1}})
    EXPECT_EQ(Measure(font, u"xAx"_hs, start, count), 0);
  EXPECT_NEAR(Measure(Font(16), u"Hello"_hs), Measure(font, u"Hello"_hs) / 128, 1e-3) << "linear";
  EXPECT_GT(Measure(Font(2048, {hfsBold}), u"Hello"_hs), Measure(font, u"Hello"_hs));
  THtTextStyle spaced;
  spaced.LetterSpacing = 10;
  spaced.WordSpacing = 100;
  EXPECT_FLOAT_EQ(Measure(font, u"A "_hs, 1, -1, spaced), Measure(font, u"A "_hs) + 120);
  EXPECT_FLOAT_EQ(Measure(font, u"\U0001D49C"_hs, 1, -1, spaced), Measure(font, u"\U0001D49C"_hs) + 10);
  EXPECT_FLOAT_EQ(Measure(font, u"e\u0301"_hs), Measure(font, u"e"_hs)) << "a mark takes no room";
  // Two scripts, two directions: the pieces come to what each is alone.
  EXPECT_NEAR(Measure(font, u"abc\u05D0\u05D1"_hs),
              Measure(font, u"abc"_hs) + Measure(font, u"\u05D0\u05D1"_hs), 0.5);
  EXPECT_GT(Measure(font, u"\xD800 \xDC00"_hs), 0);
}

TEST_F(Fonts, StylesOfAFontThatIsThere) {
  THtFont& font = Font(2048);
  const float regular = Measure(font, u"Hello"_hs);
  font.SetStyle({hfsUnderline});
  EXPECT_FLOAT_EQ(Measure(font, u"Hello"_hs), regular);
  font.SetStyle({hfsBold});
  EXPECT_GT(Measure(font, u"Hello"_hs), regular);
}

TEST_F(Fonts, RegisteredFonts) {
  const THtBytes data = Bytes("this is no font");
  TBytesStream stream(data);
  FFonts->RegisterCustomFontData(u"Mine"_hs, stream, {hfsBold});
  EXPECT_EQ(FFonts->GetFontData(u"MINE"_hs), data);
  const auto copy = Class()->CreateFontCollection();
  copy->AssignCustomFonts(*FFonts);
  EXPECT_EQ(copy->GetFontData(u"mine"_hs), data);
  EXPECT_TRUE(copy->GetFontData(u"yours"_hs).empty());
  EXPECT_FALSE(copy->GetFont(u"Mine"_hs, 16, {})->Custom) << "what cannot be read is not used";
}

}  // namespace
