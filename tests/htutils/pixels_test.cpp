#include <algorithm>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

#include "htruntime/exception.h"
#include "htutils/blur.h"
#include "htutils/blurpaths.h"
#include "htutils/colorarith.h"
#include "htutils/cpufeatures.h"
#include "htutils/fill.h"
#include "htutils/fontname.h"
#include "htutils/fontstyle.h"
#include "htutils/geometry.h"
#include "htutils/platformcolors.h"

namespace ht {
namespace {

TEST(Geometry, MovesAndMeets) {
  TRect r{1, 2, 11, 22};
  EXPECT_EQ(RW(r), 10);
  EXPECT_EQ(RH(r), 20);
  RSetLocation(r, 5, 6);
  EXPECT_EQ(r, (TRect{5, 6, 15, 26}));
  ROffset(r, -5, 4);
  EXPECT_EQ(r, (TRect{0, 10, 10, 30}));
  RInflate(r, 1, -2);
  EXPECT_EQ(r, (TRect{-1, 12, 11, 28}));
  EXPECT_EQ(RIntersect(TRectF{0, 0, 10, 10}, TRectF{20, 5, 30, 8}), (TRectF{20, 5, 10, 8}));
  TRect wide{INT32_MIN, 0, INT32_MAX, 1};
  EXPECT_EQ(RW(wide), -1);
  ROffset(wide, 1, 0);
  EXPECT_EQ(wide.Right, INT32_MIN);

  const TRect ten{0, 0, 10, 10};
  EXPECT_TRUE(RContains(ten, TPoint{0, 0}));
  EXPECT_FALSE(RContains(ten, TPoint{10, 5}));
  EXPECT_FALSE(RContains(ten, TPoint{5, 10}));
  EXPECT_TRUE(RContains(TRectF{0, 0, 10.5f, 10}, TPoint{10, 5}));
  EXPECT_FALSE(RContains(TRectF{0, 0, 10.5f, 10}, TPointF{10.5f, 5}));

  EXPECT_FALSE(RectIntersects(ten, TRect{10, 0, 20, 10}));
  EXPECT_FALSE(RectIntersects(TRectF{0, 10, 5, 11}, ten));
  EXPECT_TRUE(RectIntersects(TRectF{9.5f, 9.5f, 20, 20}, ten));
  EXPECT_TRUE(RectInside(ten, ten));
  EXPECT_TRUE(RectInside(TRectF{0, 0.5f, 10, 10}, ten));
  EXPECT_FALSE(RectInside(TRectF{0, 0, 10.01f, 10}, ten));
  // As floats these two would be equal.
  EXPECT_FALSE(RectInside(TRectF{0, 0, 16777216, 1}, TRect{0, 0, 16777215, 1}));
  EXPECT_FALSE(RSame(ten, TRect{0, 0, 10, 11}));
}

TEST(Geometry, RoundsToEven) {
  constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(R2R({0.5f, 1.5f, -0.5f, 2.51f}), (TRect{0, 2, 0, 3}));
  EXPECT_EQ(R2R({kNaN, 1e30f, -1e30f, -2.5f}), (TRect{0, INT32_MAX, INT32_MIN, -2}));
  EXPECT_EQ(P2P({-1.5f, 3.4f}), (TPoint{-2, 3}));
  EXPECT_EQ(R2F({1, 2, 3, 4}), (TRectF{1, 2, 3, 4}));
}

TEST(ColorArith, Channels) {
  struct TCase {
    uint32_t Result, Expected;
  };
  const TCase kCases[] = {
      {Lighter(0xFF000000, 100), 0xFFFFFFFF},
      {Lighter(0x12345678, 0), 0x12345678},
      {Lighter(0x00640000, 50), 0x00B28080},  // 177.5 and 127.5 to the even
      {Lighter(0xFFF0F0F0, 300), 0xFFFFFFFF},
      {Darker(0x80FFFFFF, 100), 0x80000000},
      {Darker(0xFF646464, 25), 0xFF4B4B4B},
      {Darker(0xFF646464, 200), 0xFF000000},
      {AddOpacity(0x80112233, 0.5f), 0x40112233},
      {AddOpacity(0x80112233, 1.00001f), 0x80112233},
      {AddOpacity(0x80112233, 9), 0xFF112233},
      {AddOpacity(0x80112233, std::numeric_limits<float>::quiet_NaN()), 0x00112233},
      {Color2Win(0xFF112233), 0x00332211},
      {Win2Color(0x00332211), 0xFF112233},
      {Win2Color(static_cast<int32_t>(0xFF000018)), 0xFF000000 | Color2Win(HtPlatformSysColor(0x18))},
  };
  for (const TCase& c : kCases) EXPECT_EQ(c.Result, c.Expected) << &c - kCases;
}

TEST(ColorArith, HueSaturationBrightness) {
  struct TCase {
    uint32_t Color;
    double Hue, Saturation, Brightness;
  };
  const TCase kCases[] = {
      {0xFF0000, 0, 100, 100},           {0x00FF00, 120, 100, 100}, {0x0000FF, 240, 100, 100},
      {0xFFFF00, 60, 100, 100},          {0xFF00FF, 300, 100, 100}, {0x408080, 180, 50, 12800 / 255.0},
      {0x808080, 300, 0, 12800 / 255.0}, {0x000000, 300, 0, 0},
  };
  for (const TCase& c : kCases) {
    const THSBColor hsb = RGBToHSB(std::bit_cast<TRGBA>(c.Color));
    EXPECT_DOUBLE_EQ(hsb.Hue, c.Hue) << std::hex << c.Color;
    EXPECT_DOUBLE_EQ(hsb.Saturation, c.Saturation) << std::hex << c.Color;
    EXPECT_DOUBLE_EQ(hsb.Brightness, c.Brightness) << std::hex << c.Color;
  }
  EXPECT_EQ(HSVToRGB({0, 100, 100}), 0x00FF0000u);
  EXPECT_EQ(HSBtoRGBColor(400, 100, 100), 0x00FF0055u);  // behind the last sector
  EXPECT_EQ(HSVToRGB({std::numeric_limits<double>::quiet_NaN(), 100, -1e300}), 0u);
  std::mt19937 random(1);
  for (int i = 0; i < 10000; ++i) {
    const uint32_t color = random() & 0xFFFFFF;
    const TRGBA back = std::bit_cast<TRGBA>(HSVToRGB(RGBToHSB(std::bit_cast<TRGBA>(color))));
    const TRGBA rgb = std::bit_cast<TRGBA>(color);
    if (RGBToHSB(rgb).Saturation == 0) continue;
    // The hue is held in sixths of a degree.
    EXPECT_LE(std::max({std::abs(back.r - rgb.r), std::abs(back.g - rgb.g), std::abs(back.b - rgb.b)}), 1)
        << std::hex << color;
  }
}

TEST(Fonts, NameAndWeight) {
  struct TCase {
    std::u16string_view Text, Name;
    int32_t Weight, Style;
  };
  const TCase kCases[] = {
      {u"Arial|0|9", u"Arial", 400, 2}, {u"Arial", u"Arial", 0, 0}, {u" Arial|700|1 ", u"Arial", 700, 1},
      {u"A|x|y", u"A", 400, 0},         {u"A|700", u"A", 0, 0},     {u"A|700|1|2", u"A", 0, 0},
      {u"||-4", u"", 400, 0},           {u"", u"", 0, 0},
  };
  for (const TCase& c : kCases) {
    int32_t weight = -1, style = -1;
    EXPECT_EQ(HtDecodeFontNameStr(c.Text, weight, style), c.Name);
    EXPECT_EQ(weight, c.Weight) << HtToUtf8(c.Text);
    EXPECT_EQ(style, c.Style) << HtToUtf8(c.Text);
  }
  EXPECT_EQ(HtFontWeight({}), 400);
  EXPECT_EQ(HtFontWeight({hfsBlack, hfsBold}), 900);
  EXPECT_EQ(HtFontWeight({hfsBold, hfsLight}), 700);
  EXPECT_EQ(HtFontWeight({hfsLight, hfsUltraLight}), 300);
  EXPECT_EQ(HtFontWeight({hfsUltraLight, hfsItalic}), 200);
}

TEST(Fill, WritesExactlyItsWords) {
  constexpr uint32_t kBefore = 7, kValue = 0xA1B2C3D4;
  for (int32_t count = -1; count < 150; ++count) {
    for (size_t offset = 1; offset < 5; ++offset) {
      std::vector<uint32_t> words(160, kBefore), expected = words;
      std::fill_n(expected.begin() + static_cast<int64_t>(offset), std::max(count, 0), kValue);
      HtFillLong(kValue, words.data() + offset, count);
      ASSERT_EQ(words, expected) << count << " at " << offset;
      if (count < 1) continue;
      EXPECT_FALSE(OneColor(words.data() + offset, kValue, count));
      EXPECT_TRUE(OneColor(words.data() + offset, kValue, count + 1));
      EXPECT_TRUE(OneColor(words.data() + offset - 1, kValue, count));
    }
  }
  EXPECT_FALSE(OneColor(nullptr, 1, 5));
}

TEST(Blur, Kernel) {
  TKernel kernel;
  for (double radius : {0.1, 0.0, 1000.0, -5.0, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_THROW(MakeGaussianKernel(kernel, radius, 255, 1), EAssertionFailed) << radius;
  MakeGaussianKernel(kernel, 5, 255, 1e6);
  EXPECT_EQ(kernel.Size, 1);
  for (double radius : {0.11, 0.7, 1.0, 3.0, 9.9, 999.0}) {
    MakeGaussianKernel(kernel, radius, 255, 1);
    uint64_t sum = 0;
    double tail = 0, all = 0;
    for (int n = -30; n <= 30; ++n) {
      const auto at = static_cast<size_t>(n + 30);
      const double bell = std::exp(-n * n / (2 * radius * radius));
      all += bell;
      if (std::abs(n) > kernel.Size) {
        tail += bell;
        EXPECT_EQ(kernel.IWeights[at], 0u);
        continue;
      }
      sum += kernel.IWeights[at];
      EXPECT_NEAR(kernel.Weights[at] / kernel.Weights[30], bell, 1e-5);
      EXPECT_NEAR(kernel.IWeights[at] / 16777215.0, kernel.Weights[at], 1e-6);
    }
    // With the tails that are cut next, it would be too much; the pixels' sums stay within 32 bits.
    EXPECT_GE(tail / all, kernel.Size > 1 && kernel.Size < 30 ? 1 / 510.0 : 0) << radius;
    EXPECT_GE(sum, 16777215u);
    EXPECT_LE(sum * 255, 0xFFFFFFFFu);
  }
}

// One sum a channel, straight from the definition.
std::vector<TRGBA> SlowBlur(const std::vector<TRGBA>& source, const TKernel& kernel,
                            std::vector<TRGBA> target, int left, int right, int skipFrom, int skipTo) {
  const int high = static_cast<int>(source.size()) - 1, size = kernel.Size;
  left = std::max(left, 0);
  right = std::min(right, high);
  if (left > right) return target;
  for (int x = std::max(0, left - size); x <= std::min(high, right + size); ++x)
    target[static_cast<size_t>(x)] = source[static_cast<size_t>(x)];
  for (int x = left; x <= right; ++x) {
    const bool middle = x - size >= left && x + size <= right;
    if (middle && skipTo >= 0 && x >= skipFrom && x <= skipTo) continue;
    uint64_t sum[4] = {};
    for (int n = -size; n <= size; ++n) {
      const TRGBA& p = source[static_cast<size_t>(std::clamp(x + n, left, right))];
      const uint64_t w = kernel.IWeights[static_cast<size_t>(n + 30)];
      sum[0] += p.b * w, sum[1] += p.g * w, sum[2] += p.r * w, sum[3] += p.a * w;
    }
    const auto byte = [&](int i) { return static_cast<uint8_t>(sum[i] >> 24); };
    target[static_cast<size_t>(x)] = {byte(0), byte(1), byte(2), byte(3)};
  }
  return target;
}

TEST(Blur, RowsAgreeWithTheDefinition) {
  std::mt19937 random(7);
  const auto number = [&](int from, int to) { return std::uniform_int_distribution(from, to)(random); };
  for (int round = 0; round < 3000; ++round) {
    const int width = number(1, 120);
    std::vector<TRGBA> source(static_cast<size_t>(width));
    for (TRGBA& p : source)
      p = number(0, 3) ? std::bit_cast<TRGBA>(static_cast<uint32_t>(random())) : TRGBA{255, 255, 255, 255};
    TKernel kernel;
    MakeGaussianKernel(kernel, 0.2 + number(0, 120) / 10.0, 255, 1);
    const int left = number(-5, width), right = number(-1, width + 5);
    const int skipFrom = number(0, width), skipTo = number(0, 1) ? number(skipFrom - 1, width + 3) : -1;
    std::vector<TRGBA> target(source.size(), TRGBA{1, 2, 3, 4});
    const std::vector<TRGBA> expected = SlowBlur(source, kernel, target, left, right, skipFrom, skipTo);
    BlurRow(source.data(), width - 1, kernel, target.data(), left, right, skipFrom, skipTo);
    ASSERT_EQ(target, expected) << round;
  }
}

#ifdef HT_BLUR_AVX2
TEST(Blur, PathsAgree) {
  if (!HtCPUFeatures().AVX2) GTEST_SKIP() << "no AVX2";
  std::mt19937 random(3);
  std::vector<TRGBA> source(300);
  for (TRGBA& p : source) p = std::bit_cast<TRGBA>(static_cast<uint32_t>(random()));
  for (uint32_t largest : {0xFFu, 0xFFFFFFu, 0x7FFFFFFu, 0xFFFFFFFFu}) {
    for (int32_t size = 0; size <= kLargestKernelSize; ++size) {
      TKernel kernel;
      kernel.Size = size;
      for (uint32_t& weight : kernel.IWeights) weight = static_cast<uint32_t>(random()) & largest;
      std::vector<TRGBA> plain(source.size()), vector(source.size());
      const int32_t from = size, to = static_cast<int32_t>(source.size()) - size;
      detail::BlurColumnsPlain(source.data(), kernel, plain.data(), from, to);
      const int32_t done = detail::BlurColumnsAVX2(source.data(), kernel, vector.data(), from, to);
      EXPECT_EQ(done, largest == 0xFFFFFFFFu ? from : to - 1 - (to - 1 - from) % 8);
      detail::BlurColumnsPlain(source.data(), kernel, vector.data(), done, to);
      ASSERT_EQ(plain, vector) << largest << " " << size;
    }
  }
}
#endif

}  // namespace
}  // namespace ht
