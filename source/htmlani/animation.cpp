#include "htmlani/animation.h"

#include <algorithm>
#include <cmath>

#include "htmlani/easing.h"
#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htruntime/format.h"
#include "htruntime/rounding.h"
#include "htutils/samevalue.h"

namespace ht {

namespace {

constexpr int32_t kFirstStep = 10;
constexpr float kSmallestDistance = 0.00001f;
constexpr float kSnapParts = 200;
constexpr int32_t kLowestAlpha = 2;
constexpr int kAlphaShift = 24;

// To the nearest, halves away from zero.
int64_t MulDiv(int64_t value, int64_t factor, int64_t divisor) {
  const int64_t product = value * factor;
  const int64_t half = divisor / 2;
  return (product < 0 ? product - half : product + half) / divisor;
}

int32_t Channel(uint32_t color, int shift) { return static_cast<int32_t>(color >> shift & 0xFF); }

int64_t Premultiplied(uint32_t color, int shift) {
  return MulDiv(Channel(color, shift), Channel(color, kAlphaShift), 255);
}

}  // namespace

bool TAnimatedProperty::Active() const { return !SameValue(Position, 1); }

bool TAnimatedProperty::PassTime(int32_t step, int32_t& time) {
  if (Delay < 1) {
    time = static_cast<int32_t>(std::min<int64_t>(int64_t{time} + step, INT32_MAX));
    return true;
  }
  Delay -= step;
  if (Delay > 0) return false;
  if (Delay < 0) time = -Delay;
  Delay = 0;
  return true;
}

// Colours

void TAnimatedColor::Start(uint32_t start, uint32_t end, int32_t allTime, int32_t delay, uint32_t* value) {
  StartValue = LastValue = start;
  EndValue = end;
  AllTime = allTime;
  Delay = delay;
  Value = value;
  SetValue(start);
  Position = 0;
  TimeSum = 0;
  if (delay == 0) StepValue(kFirstStep);
}

void TAnimatedColor::SetValue(uint32_t color) {
  if (Value) *Value = color;
  LastValue = color;
}

bool TAnimatedColor::NextStep(int32_t step) {
  if (!Active()) return false;
  if (StepsOf(step) == 0) return StepValue(AllTime);
  return PassTime(step, TimeSum) && StepValue(TimeSum);
}

bool TAnimatedColor::StepValue(int32_t time) {
  Position = time < AllTime ? static_cast<float>(time) / static_cast<float>(AllTime) : 1;
  if (Position >= 1) {
    Position = 1;
    SetValue(EndValue);
    return true;
  }
  const auto between = [&](int64_t start, int64_t end) { return start - MulDiv(start - end, time, AllTime); };
  const int64_t alpha = between(Channel(StartValue, kAlphaShift), Channel(EndValue, kAlphaShift));
  auto color = static_cast<uint32_t>(alpha) << kAlphaShift;
  if (alpha >= kLowestAlpha)
    for (const int shift : {0, 8, 16}) {
      const int64_t channel = between(Premultiplied(StartValue, shift), Premultiplied(EndValue, shift));
      color |= (static_cast<uint32_t>(MulDiv(channel, 255, alpha)) & 0xFF) << shift;
    }
  SetValue(color);
  return true;
}

// Whole numbers

void TAnimatedInt::Start(int32_t start, int32_t end, int32_t allTime, int32_t delay, int32_t* value) {
  StartValue = start;
  EndValue = end;
  AllTime = allTime;
  Delay = delay;
  Value = value;
  if (Value) *Value = start;
  Position = 0;
  StepValue(kFirstStep);
}

bool TAnimatedInt::NextStep(int32_t step) {
  if (!Active()) return false;
  if (Delay > 0) {
    Delay -= step;
    if (Delay > 0) return false;
  }
  return StepValue(StepsOf(step));
}

bool TAnimatedInt::StepValue(int32_t count) {
  const double done = HtRoundEven(static_cast<double>(count) * Position);
  int64_t value = EndValue;
  if (count > 0 && done <= count) {
    const int64_t start = StartValue;
    value = start - MulDiv(start - EndValue, static_cast<int64_t>(done), count);
    Position = static_cast<float>((done + 1) / count);
  } else {
    Position = 1;
  }
  if (Value) *Value = static_cast<int32_t>(value);
  return true;
}

// Floats

void TAnimatedFloat::Start(float start, float end, int32_t allTime, int32_t delay, float* value) {
  StartValue = start;
  EndValue = end;
  Value = value;
  Delay = StartDelay = delay;
  if (std::fabs(start - end) < kSmallestDistance) {
    SetValue(end);
    Position = 1;
    return;
  }
  AllTime = allTime;
  SetValue(start);
  Position = 0;
  TimeSum = 0;
  if (delay == 0) StepValue(0);
}

void TAnimatedFloat::SetValue(float x) {
  if (std::fabs(x - EndValue) < std::fabs(StartValue - EndValue) / kSnapParts) x = EndValue;
  if (Value) *Value = x;
}

bool TAnimatedFloat::NextStep(int32_t step) {
  return Active() && PassTime(step, TimeSum) && StepValue(TimeSum);
}

bool TAnimatedFloat::StepValue(int32_t time) {
  if (time >= AllTime) {
    SetValue(EndValue);
    Position = 1;
    return true;
  }
  Position = std::min(static_cast<float>(time) / static_cast<float>(AllTime), 1.0f);
  SetValue(CalcEase(StartValue, EndValue, Position * 100, Timing));
  return true;
}

hstring TAnimatedFloat::AsString() const {
  return HtFormat(u"from %f to %f, time %d", StartValue, EndValue, AllTime);
}

// Elements

TCSSAnimation* TAnimatedElement::StyleAnimation() const {
  return Element && Element->Style() ? Element->Style()->Animation.get() : nullptr;
}

bool TAnimatedElement::Active() const {
  const TCSSAnimation* animation = StyleAnimation();
  return animation && animation->Active && animation->Iterations != 0;
}

bool TAnimatedElement::NextStep(int32_t step) {
  TCSSAnimation* animation = StyleAnimation();
  return animation && animation->Step(step);
}

}  // namespace ht
