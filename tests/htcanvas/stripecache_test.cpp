#include "htcanvas/stripecache.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "logcanvas.h"

using namespace ht;

namespace {

// Knows what part of the document it shows.
struct TStripe : TObject {
  TRectF Doc{-1, -1, -1, -1};
  int32_t Width = -1, Height = -1;
};

class TLogCache : public THtStripeCache {
 public:
  std::unique_ptr<TObject> CreateStripe() override { return std::make_unique<TStripe>(); }
  void UpdateStripeSize(int32_t index) override {
    Stripe(index).Width = StripeWidth, Stripe(index).Height = StripeHeight;
  }
  void PaintStripe(int32_t first, int32_t last, THtCanvas&, int32_t x, int32_t y) override {
    Log(Words("paint", first, last, x, y));
  }
  void FillStripes(THtCanvas&, int32_t first, int32_t last) override {
    Log(Words("fill", first, last));
    for (int32_t i = first; i <= last; ++i) Stripe(i).Doc = StripeDocRect(i);
  }
  void CheckStripes(THtCanvas&, int32_t first, int32_t last) override { Checked = {first, last}; }
  TStripe& Stripe(int32_t i) { return static_cast<TStripe&>(*Stripes.at(static_cast<size_t>(i))); }
  std::pair<int32_t, int32_t> Checked;
};

class StripeCache : public testing::Test {
 protected:
  void SetUp() override { TakeLog(); }
  // A view of 100 x 95 on a document of 400 x 1000, in stripes of 20.
  std::string Update(float x, float y, float scale = 1) {
    FCache.Update(FCanvas, 100, 95, 20, 400, 1000, scale, x, y);
    return TakeLog();
  }
  std::string Paint(float x, float y) {
    FCache.PaintOnCanvas(FCanvas, 7, 5, x, y);
    return TakeLog();
  }

  TFixedCanvas FCanvas;
  TLogCache FCache;
};

TEST_F(StripeCache, Sizes) {
  constexpr int32_t kHuge = std::numeric_limits<int32_t>::max();
  const struct {
    int32_t Screen[2], Stripe, Doc[2];
    float Scale;
    int32_t Count, Width;
  } kRows[] = {
      {{100, 95}, 20, {400, 1000}, 1, 6, 150},  // five for the view; no wider than one and a half views
      {{100, 95}, 20, {400, 30}, 1, 3, 150},    // the document is shorter
      {{100, 95}, 20, {60, 30}, 1.5f, 4, 90},   {{100, 95}, 20, {100, 1000}, 1, 6, 100},
      {{101, 100}, 20, {100, 1000}, 1, 6, 100}, {{100, 95}, 20, {110, 0}, 1, 1, 110},
      {{100, 95}, 0, {110, 10}, 0, 11, 110},    {{100, 95}, 20, {-5, -5}, 1, 1, 0},
      {{-10, 95}, 20, {400, 1000}, 1, 6, 0},    {{100, kHuge}, 0, {60, kHuge}, 1, 65536, 60},
  };
  for (const auto& row : kRows) {
    TLogCache cache;
    cache.Init(row.Screen[0], row.Screen[1], row.Stripe, row.Doc[0], row.Doc[1], row.Scale);
    EXPECT_EQ(std::pair(cache.Count(), cache.StripeWidth), std::pair(row.Count, row.Width));
    EXPECT_EQ(cache.TotalStripeHeight, row.Count * std::max(row.Stripe, 1));
    for (int32_t i = 0; i < cache.Count(); ++i) EXPECT_EQ(cache.Stripe(i).Width, row.Width);
  }
  FCache.Init(100, 95, 20, 400, 1000, 1);
  FCache.Init(100, 200, 20, 400, 1000, 1);  // new ones get their size when nothing else changes
  EXPECT_EQ(FCache.Stripe(10).Height, 20);
  FCache.Init(100, 40, 20, 400, 1000, 1);
  EXPECT_EQ(FCache.Count(), 3);
}

TEST_F(StripeCache, ScrollsPaintWhatComesIn) {
  const struct {
    float X, Y, Scale;
    const char* Log;
    float Top, Left;  // of the ring afterwards
  } kRows[] = {
      {0, 0, 1, "fill 0 5\n", 0, 0},
      {0, -19, 1, "", 0, 0},
      {0, -20, 1, "fill 5 5\n", 20, 0},
      {0, -75, 1, "fill 4 5\n", 60, 0},
      {0, -59, 1, "fill 0 0\n", 40, 0},
      {0, 0, 1, "fill 0 1\n", 0, 0},
      {0, -100, 1, "fill 1 5\n", 100, 0},  // to the last stripe
      {0, -221, 1, "fill 0 5\n", 220, 0},  // beyond it: all anew
      {0, -145, 1, "fill 0 3\n", 140, 0},
      {0, -40, 1, "fill 0 5\n", 40, 0},
      {-50, -40, 1, "", 40, 0},             // the stripes reach that far
      {-51, -40, 1, "fill 0 5\n", 40, 51},  // to the right: the view at their left end
      {-60, -40, 1, "", 40, 51},
      {-50, -40, 1, "fill 0 5\n", 40, 0},     // to the left: at their right end
      {-300, -40, 1, "fill 0 5\n", 40, 250},  // no further than the document
      {-260.5f, -40, 1, "", 40, 250},
      {-240.5f, -40, 1, "fill 0 5\n", 40, 191},
      {-240.5f, -40, 1, "", 40, 191},
      {-200, -45, 1.125f, "", 40, 191},  // another scale, the same first stripe: shown as it is
      {-200, -45, 1, "", 40, 191},
      {-200, -60, 1.5f, "fill 0 5\n", 160 / 3.0f, 200},
      {0, 30, 1, "fill 0 5\n", -20, 0},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.X << " " << row.Y << " " << row.Scale);
    EXPECT_EQ(Update(row.X, row.Y, row.Scale), row.Log);
    EXPECT_FLOAT_EQ(FCache.StripesDocTop, row.Top);
    EXPECT_FLOAT_EQ(FCache.StripesDocLeft, row.Left);
  }
  Update(0, 0);
  Update(0, -30);
  EXPECT_EQ(FCache.Checked, std::pair(0, 5));
  FCache.Reset();
  EXPECT_EQ(Update(0, -30), "fill 0 5\n");
  FCache.Update(FCanvas, 100, 95, 30, 400, 1000, 1, 0, -30);
  EXPECT_EQ(TakeLog(), "fill 0 4\n");
  for (const char* log : {"fill 0 1\n", ""}) {  // a low view on a narrow document in its middle
    FCache.Update(FCanvas, 100, 15, 20, 60, 1000, 1, 20, -3);
    EXPECT_EQ(TakeLog(), log);
  }
  FCache.Init(100, 95, 20, 400, 1000, 1);  // sizes that were set are not yet painted
  EXPECT_EQ(Update(0, -30), "fill 0 5\n");
  Update(std::nanf(""), 0);
  EXPECT_TRUE(std::isfinite(FCache.StripesDocLeft));
  for (const char* log : {"fill 0 4\n", ""}) {  // far down, where single precision is coarse
    FCache.Update(FCanvas, 100, 95, 25, 400, 100000000, 1, 0, -25000003.0f);
    EXPECT_EQ(TakeLog(), log);
  }
}

// Whatever the way, each stripe of the ring shows its place.
TEST_F(StripeCache, AnyWayKeepsTheRingTrue) {
  std::mt19937 random(5);
  const auto below = [&](int n) { return static_cast<float>(random() % static_cast<unsigned>(n)); };
  float x = 0, y = 0, scale = 1;
  for (int i = 0; i < 20000; ++i) {
    switch (random() % 8) {
      case 0: x = -below(300); break;
      case 1: y = -below(1000); break;
      case 2: scale = 0.5f + below(8) / 4; break;
      default: y = std::min(30.0f, y + below(61) - 30);
    }
    Update(x, y, scale);
    for (int32_t n = 0; n < FCache.Count(); ++n) {
      const TRectF shown = FCache.Stripe(n).Doc, wanted = FCache.StripeDocRect(n);
      ASSERT_NEAR(shown.Top, wanted.Top, 0.01) << i << ": " << x << " " << y << " " << scale;
      ASSERT_NEAR(shown.Left, wanted.Left, 0.01) << i;
    }
    if (FCache.StripeScale != scale) continue;
    if (i % 16 == 0) {  // the same view again paints nothing
      ASSERT_EQ(Update(x, y, scale), "") << x << " " << y << " " << scale;
    }
    if (y > 0) continue;
    const float bottom = std::min(-y + 95 / scale, 1000.0f);  // the view is covered
    ASSERT_LE(FCache.StripeDocRect(0).Top, -y + 0.5f / scale) << i;
    ASSERT_GE(FCache.StripeDocRect(FCache.Count() - 1).Bottom, bottom - 0.5f / scale)
        << i << " " << y << " " << scale;
  }
}

TEST_F(StripeCache, PaintsWhatIsInView) {
  Update(0, -45);  // the ring begins at 40
  EXPECT_EQ(Paint(0, -45), "paint 0 5 7 0\n");
  EXPECT_EQ(Paint(0, -60), "paint 1 5 7 5\n");
  EXPECT_EQ(Paint(3, -145), "paint 5 5 10 0\n");
  EXPECT_EQ(Paint(0, 55), "");  // the first stripe begins where the view ends
  EXPECT_EQ(Paint(0, 54), "paint 0 5 7 99\n");
  EXPECT_EQ(Paint(0, -160), "");  // above
  FCache.Update(FCanvas, 100, std::numeric_limits<int32_t>::max(), 1, 400, 1000, 1, 0, 0);
  TakeLog();
  EXPECT_EQ(Paint(0, -10), "paint 10 1000 7 5\n");
}

TEST_F(StripeCache, ShiftsGoRound) {
  FCache.Init(100, 95, 20, 400, 1000, 1);
  std::vector<TObject*> ring;
  for (const auto& stripe : FCache.Stripes) ring.push_back(stripe.get());
  for (const int32_t n : {0, 1, 5, 6, 7, -1, -6, -7, 6000001}) {
    FCache.ShiftStripes(n);
    for (int32_t i = 0; i < 6; ++i)
      EXPECT_EQ(FCache.Stripes[static_cast<size_t>(((i + n) % 6 + 6) % 6)].get(),
                ring[static_cast<size_t>(i)]);
    FCache.ShiftStripes(-n);
  }
}

}  // namespace
