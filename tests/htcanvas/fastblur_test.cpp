#include "htcanvas/fastblur.h"

#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

#include "htcanvas/boxfilter.h"

using namespace ht;

namespace {

using TPixels = std::vector<uint8_t>;

TPixels Noise(int32_t width, int32_t height) {
  std::mt19937 random(static_cast<uint32_t>(width * 1000 + height));
  TPixels pixels(static_cast<size_t>(width) * height * 4);
  for (uint8_t& byte : pixels) byte = static_cast<uint8_t>(random());
  return pixels;
}

// As it is told: each pixel the rounded mean of a window, edges repeated, rows and then columns, twice.
void Model(TPixels& pixels, int32_t width, const TRect& rect, int32_t radius) {
  const auto pass = [&](int32_t dx, int32_t dy) {
    const TPixels source = pixels;
    for (int32_t y = rect.Top; y < rect.Bottom; ++y)
      for (int32_t x = rect.Left; x < rect.Right; ++x)
        for (int32_t c = 0; c < 4; ++c) {
          double sum = 0;
          for (int32_t n = -radius; n <= radius; ++n) {
            const int32_t sx = std::clamp(x + n * dx, rect.Left, rect.Right - 1);
            const int32_t sy = std::clamp(y + n * dy, rect.Top, rect.Bottom - 1);
            sum += source[static_cast<size_t>((sy * width + sx) * 4 + c)];
          }
          pixels[static_cast<size_t>((y * width + x) * 4 + c)] =
              static_cast<uint8_t>(std::lround(sum / (2 * radius + 1)));
        }
  };
  for (int round = 0; round < 2; ++round) pass(1, 0), pass(0, 1);
}

TEST(FastBlur, IsTwoRoundsOfABox) {
  constexpr int32_t kWidth = 23, kHeight = 17;
  const struct {
    TRect Rect, Clipped;
    int32_t Radius, Limited;
  } kRows[] = {
      {{0, 0, 23, 17}, {0, 0, 23, 17}, 1, 1},
      {{0, 0, 23, 17}, {0, 0, 23, 17}, 3, 3},
      {{0, 0, 23, 17}, {0, 0, 23, 17}, 99, 7},
      {{-5, -9, 99, 99}, {0, 0, 23, 17}, 4, 4},
      {{3, 2, 12, 15}, {3, 2, 12, 15}, 5, 3},
      {{20, 1, 99, 99}, {20, 1, 23, 17}, 5, 0},
      {{3, 2, 5, 15}, {3, 2, 5, 15}, 1, 0},
      {{5, 5, 3, 3}, {}, 2, 0},
      {{5, 0, std::numeric_limits<int32_t>::min(), 4}, {}, 2, 0},
      {{50, 50, 60, 60}, {}, 2, 0},
      {{0, 0, 23, 17}, {}, 0, 0},
      {{0, 0, 23, 17}, {}, -3, 0},
  };
  for (const auto& row : kRows) {
    TPixels pixels = Noise(kWidth, kHeight), expected = pixels;
    if (row.Limited > 0) Model(expected, kWidth, row.Clipped, row.Limited);
    FastBlur(pixels.data(), kWidth, kHeight, kWidth * 4, row.Rect, row.Radius);
    EXPECT_EQ(pixels, expected) << row.Rect.Left << " " << row.Radius;
  }
}

TEST(FastBlur, ColoursStayAndRowsMayRunUpward) {
  TPixels even(64 * 48 * 4, 201);
  FastBlur(even.data(), 64, 48, 64 * 4, {0, 0, 64, 48}, 9);
  EXPECT_EQ(even, TPixels(64 * 48 * 4, 201));

  const TPixels noise = Noise(16, 16);
  TPixels down = noise, up(noise.size());
  for (size_t y = 0; y < 16; ++y) std::copy_n(&noise[y * 64], 64, &up[(15 - y) * 64]);
  FastBlur(down.data(), 16, 16, 64, {2, 3, 14, 13}, 2);
  FastBlur(&up[15 * 64], 16, 16, -64, {2, 3, 14, 13}, 2);
  for (size_t y = 0; y < 16; ++y) EXPECT_EQ(std::memcmp(&down[y * 64], &up[(15 - y) * 64], 64), 0) << y;
}

TEST(FastBlur, MeansAreExactUpToTheLargestWindow) {
  for (const int32_t radius : {1, 2, 3, 100, 127, 128, 4095, 65535, (1 << 20) - 1}) {
    const detail::TBoxMean mean(radius);
    const uint64_t window = 2 * uint64_t(radius) + 1;
    for (uint64_t value = 0; value <= 255; ++value)  // around each value and each turn of the rounding
      for (const uint64_t sum : {value * window, value * window + radius, value * window + radius + 1})
        if (sum <= 255 * window) {
          ASSERT_EQ(mean.Of(static_cast<uint32_t>(sum)), (sum + window / 2) / window) << radius << " " << sum;
        }
  }
}

TEST(FastBlur, VectorAndPlainPathsAreEqual) {
  const detail::TBoxFilter* vector = detail::HtVectorBoxFilter();
  if (!vector) GTEST_SKIP() << "no vector path on this processor";
  for (int32_t width = 4; width < 24; ++width)
    for (int32_t height = 4; height < 12; ++height) {
      TPixels from = Noise(width, height), plain(from.size()), quick(from.size());
      const ptrdiff_t stride = width * 4;
      const detail::TBoxMean mean(std::min(width, height) / 2 - 1);
      for (const auto pass : {&detail::TBoxFilter::Rows, &detail::TBoxFilter::Columns}) {
        (detail::kPlainBoxFilter.*pass)({from.data(), stride}, {plain.data(), stride}, width, height, mean);
        (vector->*pass)({from.data(), stride}, {quick.data(), stride}, width, height, mean);
        ASSERT_EQ(plain, quick) << width << "x" << height;
      }
    }
}

}  // namespace
