#include "htmlani/animation.h"

#include <gtest/gtest.h>

#include "htmlani/easing.h"
#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"

namespace ht {
namespace {

TEST(Easing, Curves) {
  const struct {
    TCSSTiming Timing;
    float At25, At50, At75;
  } cases[] = {{tmEase, 12.5f, 50, 87.5f},
               {tmEaseIn, 6.25f, 25, 56.25f},
               {tmEaseOut, 43.75f, 75, 93.75f},
               {tmEaseInOut, 6.25f, 50, 93.75f},
               {tmLinear, 25, 50, 75}};
  for (const auto& c : cases) {
    const float expected[] = {10, 10 + c.At25 / 10, 10 + c.At50 / 10, 10 + c.At75 / 10, 20};
    for (int i = 0; i < 5; ++i)
      EXPECT_NEAR(CalcEase(10, 20, static_cast<float>(i) * 25, c.Timing), expected[i], 1e-5)
          << c.Timing << " " << i;
  }
}

TEST(AnimatedFloat, Runs) {
  float value = -1;
  TAnimatedFloat run;
  run.Timing = tmLinear;
  run.Start(0, 100, 1000, 100, &value);
  EXPECT_TRUE(run.Active() && value == 0);
  EXPECT_FALSE(run.NextStep(60));
  EXPECT_TRUE(run.NextStep(60));  // 20 ms over
  EXPECT_EQ(value, 2);
  EXPECT_TRUE(run.NextStep(480));
  EXPECT_EQ(value, 50);
  EXPECT_TRUE(run.NextStep(496));  // within a two-hundredth of the end
  EXPECT_TRUE(value == 100 && run.Active());
  EXPECT_TRUE(run.NextStep(4));
  EXPECT_FALSE(run.Active() || run.NextStep(4));
  EXPECT_EQ(HtToUtf8(run.AsString()), "from 0.00 to 100.00, time 1000");

  run.Start(0, 100, 1000, 50, nullptr);
  EXPECT_TRUE(run.NextStep(50));  // the delay is over to the millisecond
  EXPECT_EQ(run.Position, 0);
  run.Start(5, 5.000001f, 1000, 0, &value);
  EXPECT_TRUE(value == 5.000001f && !run.Active());
  run.Start(0, 1, 0, 0, &value);
  EXPECT_TRUE(value == 1 && !run.Active());
}

TEST(AnimatedColor, Runs) {
  const struct {
    uint32_t Start, End;
    int32_t Time;  // of 100 ms
    uint32_t Expected;
  } cases[] = {{0xFF000000, 0xFFFFFFFF, 50, 0xFF808080}, {0xFF000000, 0xFFFFFFFF, 25, 0xFF404040},
               {0xFF102030, 0xFF102030, 50, 0xFF102030}, {0x00FFFFFF, 0xFFFF0000, 50, 0x80FF0000},
               {0x00FFFFFF, 0x00FF0000, 50, 0x00000000}, {0x01FFFFFF, 0x01FF0000, 50, 0x01000000},
               {0x80030303, 0x80030303, 50, 0x80040404},  // 3 * 128 / 255 is rounded to 2
               {0xFF0000FF, 0xFFFF0000, 100, 0xFFFF0000}};
  for (const auto& c : cases) {
    uint32_t value = 0;
    TAnimatedColor run;
    run.Start(c.Start, c.End, 100, 10, &value);
    EXPECT_EQ(value, c.Start);
    run.StepValue(c.Time);
    EXPECT_EQ(value, c.Expected) << std::hex << c.Start << " " << c.End;
    EXPECT_EQ(run.LastValue, value);
  }
  uint32_t value;
  TAnimatedColor run;
  run.Start(0xFF000000, 0xFFFFFFFF, 100, 0, &value);
  EXPECT_EQ(value, 0xFF1A1A1A);  // 10 ms have passed
  run.Start(0xFF000000, 0xFFFFFFFF, 100, 1000, &value);
  EXPECT_TRUE(run.NextStep(101));  // a step longer than the whole run waits for nothing
  EXPECT_TRUE(value == 0xFFFFFFFF && !run.Active());
  run.Start(0xFF000000, 0xFFFFFFFF, 100, 30, &value);
  EXPECT_FALSE(run.NextStep(20));
  EXPECT_TRUE(run.NextStep(60));
  EXPECT_EQ(run.TimeSum, 50);
}

TEST(AnimatedInt, CountsSteps) {
  int32_t value = -1;
  TAnimatedInt run;
  run.Start(0, 100, 100, 0, &value);
  EXPECT_TRUE(value == 0 && run.Position == .1f);
  std::vector<int32_t> values;
  while (run.NextStep(20)) values.push_back(value);  // five steps, the first one taken by Start
  EXPECT_EQ(values, (std::vector<int32_t>{20, 40, 60, 80}));
  run.Start(100, -100, 10, 25, &value);
  EXPECT_FALSE(run.NextStep(20));
  EXPECT_TRUE(run.NextStep(20));
  EXPECT_TRUE(value == -100 && !run.Active());
}

TEST(AnimatedImage, AsksForTheNextFrame) {
  TAnimatedImage image;
  EXPECT_TRUE(image.Active() && !image.NextStep(5));
  int32_t told = 0;
  image.NextFrameProc = [&](int32_t time) { return (told = time) == 7; };
  EXPECT_TRUE(image.NextStep(7) && !image.NextStep(8));
}

struct TNode final : TStyledHTMLNode {
  const TClass* GetStyleClass() const override { return TBaseElementStyle::Class(); }
};

TEST(AnimatedElement, StepsTheAnimationOfTheStyle) {
  TNode node;
  TAnimatedElement run;
  EXPECT_FALSE(run.Active() || run.NextStep(10));
  run.Element = &node;
  EXPECT_FALSE(run.Active() || run.NextStep(10));
  node.CreateStyle();
  EXPECT_FALSE(run.Active());
  TCSSAnimation& animation = node.Style()->CreateAnimation();
  animation.Duration = 100;
  animation.Steps = {0, 100};
  EXPECT_TRUE(run.Active() && run.NextStep(10));
  animation.Iterations = 0;
  EXPECT_FALSE(run.Active());
}

}  // namespace
}  // namespace ht
