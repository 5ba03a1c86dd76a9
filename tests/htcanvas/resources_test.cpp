// Brushes, pens, names of fonts, images.

#include <gtest/gtest.h>

#include "htcanvas/htcanvas.h"
#include "htruntime/exception.h"
#include "rects.h"

namespace ht {
namespace {

TEST(Brush, GradientStops) {
  const auto brush = THtBrush::Class()->CreateGradient({}, 0, 0, -90, {0, 0, 100, 100});
  EXPECT_EQ(brush->Angle, 270);
  EXPECT_EQ(THtBrush::Class()->CreateGradient({}, 0, 0, 360, {})->Angle, 0);
  EXPECT_EQ(THtBrush::Class()->CreateGradient({}, 0, 0, -1e-30f, {})->Angle, 0);
  EXPECT_EQ(brush->CalcGradientColor(5, 5), 0u);
  const float positions[] = {.25f, .5f}, whole[] = {0, 1};
  const uint32_t colors[] = {0xFF000000, 0x80FFFFFF};
  brush->SetGradientColors(positions, colors);
  EXPECT_EQ(brush->GradientPositions, (std::vector<float>{0, .25f, .5f, 1}));
  EXPECT_EQ(brush->GradientColors, (std::vector<uint32_t>{0xFF000000, 0xFF000000, 0x80FFFFFF, 0x80FFFFFF}));
  brush->SetGradientColors(whole, colors);
  EXPECT_EQ(brush->GradientColors.size(), 2u);
  const auto clone = brush->Clone();
  EXPECT_TRUE(clone->Kind == hbGradient && clone->Angle == 270 &&
              clone->GradientColors == brush->GradientColors);
}

TEST(Brush, GradientColors) {
  const float positions[] = {0, .5f, .5f, 1};
  const uint32_t colors[] = {0xFF000000, 0xFF0000FF, 0xFFFF0000, 0x00FF0000};
  const struct {
    float Angle, X, Y;
    uint32_t Color;
  } cases[] = {{90, 0, 0, 0xFF000000},    {90, 25, 0, 0xFF000080},  {90, 50, 7, 0xFFFF0000},
               {90, 75, 0, 0x7FFF0000},   {90, 100, 0, 0x00FF0000}, {270, 100, 0, 0xFF000000},
               {270, 75, 50, 0xFF000080}, {180, 9, 25, 0xFF000080}, {0, 9, 75, 0xFF000080},
               {0, 9, 25, 0x7FFF0000}};
  for (const auto& c : cases) {
    const auto brush = THtBrush::Class()->CreateGradient({}, 0, 0, c.Angle, {0, 0, 100, 100});
    brush->SetGradientColors(positions, colors);
    EXPECT_EQ(brush->CalcGradientColor(c.X, c.Y), c.Color) << c.Angle << " " << c.X << " " << c.Y;
  }
}

// The line of a CSS gradient ends where the perpendicular through it meets the corner.
TEST(Brush, GradientLine) {
  const std::pair<float, const char*> cases[] = {{90, "0,25,200,25"},
                                                 {180, "100,0,100,50"},
                                                 {0, "100,50,100,0"},
                                                 {270, "200,25,0,25"},
                                                 {135, "37.5,-37.5,162.5,87.5"}};
  for (const auto& [angle, line] : cases) {
    const auto brush = THtBrush::Class()->CreateGradient({}, 0, 0, angle, {0, 0, 200, 50});
    EXPECT_EQ(Text(brush->CalcGradientRect()), line);
  }
}

TEST(Pen, DashesCountWidths) {
  const auto pen = THtPen::Class()->Create(0xFF112233, 2);
  const float dashes[] = {4, 1, 9};
  pen->SetDashes(dashes, 1);
  pen->SetLineCap(lcRound);
  pen->SetPenStyle(hpsDot);
  EXPECT_EQ(pen->Dashes, (std::vector<float>{2, .5f}));
  const auto clone = pen->Clone(), other = THtPen::Class()->Create(0, 9);
  other->Assign(*pen);
  for (const auto* copy : {clone.get(), other.get()}) {
    EXPECT_TRUE(copy->GetColor() == 0xFF112233 && copy->GetWidth() == 2 && copy->GetLineCap() == lcRound);
    EXPECT_TRUE(copy->GetPenStyle() == hpsDot && copy->Dashes == pen->Dashes && !copy->GetAlignInset());
  }
  pen->SetDashes({}, -1);
  EXPECT_TRUE(pen->Dashes.empty());
}

TEST(Font, NamesAndWeights) {
  const struct {
    const char16_t *Name, *Family;
    THtFontStretch Stretch;
    THtFontStyles Style;
    int32_t Weight;
  } cases[] = {{u"Arial", u"Arial", fsStretchNormal, {}, 400},
               {u"Arial Narrow", u"Arial", fsCondensed, {}, 400},
               {u"Arial LIGHT", u"Arial", fsStretchNormal, {hfsLight}, 300},
               {u"Arial Thin", u"Arial", fsStretchNormal, {hfsUltraLight}, 200},
               {u"Arial Bold", u"Arial Bold", fsStretchNormal, {}, 400},
               {u"Arial Black SemiExpanded", u"Arial", fsSemiExpanded, {hfsBlack}, 800},
               {u"Arial Medium", u"Arial", fsStretchNormal, {hfsSemibold}, 600},
               {u"Arial Regular", u"Arial", fsStretchNormal, {}, 400},
               {u"Narrow", u"Narrow", fsStretchNormal, {}, 400}};
  for (const auto& c : cases) {
    const auto font = THtFont::Class()->Create(nullptr, c.Name, 16, {});
    EXPECT_EQ(font->FFamily, std::u16string_view(c.Family)) << HtToUtf8(c.Name);
    EXPECT_EQ(font->Stretch, c.Stretch) << HtToUtf8(c.Name);
    EXPECT_EQ(font->FStyle, c.Style) << HtToUtf8(c.Name);
    EXPECT_EQ(font->Weight(), c.Weight) << HtToUtf8(c.Name);
    EXPECT_EQ(font->FSize, 12);
  }
  const THtFontOpentypeFeature feature = HtMakeOpenTypeFeature(u"kern", 1);
  EXPECT_EQ(feature.Tag.nameTag, 0x6E72656Bu);
  EXPECT_EQ(HtOpenTypeFeatureToStr(feature), u"kern");
  EXPECT_EQ(HtMakeOpenTypeTag(u"").nameTag, 0u);
  EXPECT_THROW(HtMakeOpenTypeTag(u"ab"), EHtException);
}

TEST(Image, Formats) {
  using namespace std::literals;
  const struct {
    std::string_view Bytes;
    THtImageFormat Format;
    bool IsImage;
  } cases[] = {
      // clang-format off
      {"\xFF\xD8\xFF\xE0xx"sv, hifJPEG, true}, {"\x89PNG\r\n"sv, hifPNG, true}, {"GIF89a"sv, hifGIF, true},
      {"BM...."sv, hifBitmap, true}, {"<svg x>"sv, hifSVG, false}, {"<SVg x>"sv, hifSVG, false},
      {"<sVx x>"sv, hifUnknown, false}, {"<?xml "sv, hifSVG, false}, {"\0\0\1\0\1\0"sv, hifIcon, false},
      {"II*\0......"sv, hifTIFF, true}, {"MM\0*......"sv, hifTIFF, true}, {"II*\0.."sv, hifTIFF, false},
      {"GIF89"sv, hifUnknown, false}, {"\1\0\0\1......."sv, hifUnknown, true}, {""sv, hifUnknown, false},
      // clang-format on
  };
  for (const auto& c : cases) {
    const THtBytes bytes(c.Bytes.begin(), c.Bytes.end());
    const auto image = THtImage::Class()->Create(bytes);
    EXPECT_EQ(image->Format, c.Format) << c.Bytes;
    EXPECT_EQ(THtImage::IsImage(bytes), c.IsImage) << c.Bytes;
    EXPECT_TRUE(image->AsBytes().empty());
  }
  EXPECT_EQ(THtImage::Class()->Create(u"\u00FF\u00D8abcd"_hs)->Format, hifJPEG);
  THtImage kept;
  THtImages images;
  auto* own = new THtImage;
  kept.Persistent = true;
  images.AddObject(u"b"_hs, own);
  images.AddObject(u"a"_hs, &kept);
  EXPECT_TRUE(images.FindImage(u"B") == own && !images.FindImage(u"c"));
}

}  // namespace
}  // namespace ht
