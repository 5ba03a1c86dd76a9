#pragma once

#include <functional>

#include "htmlcss/csstransition.h"
#include "htruntime/object.h"

namespace ht {

class TStyledHTMLNode;

/// Something that changes with the time, in whole milliseconds. A viewer keeps the objects of each document, calls NextStep
/// on them, and drops those that are no longer active:
///
///   TAnimatedFloat fade;
///   fade.Start(1, 0, 300, 0, &transition.Number);
///   while (fade.Active())
///     if (fade.NextStep(elapsed)) document.Repaint();
///
/// It borrows what it points at. One thread at a time works on an object.
class TAbstractAnimation : public TObject {
  HT_CLASS(TAbstractAnimation, TObject)

 public:
  /// Whether there is more to come.
  virtual bool Active() const = 0;
  /// Goes on by `step` milliseconds. Whether the value changed.
  virtual bool NextStep(int32_t step) = 0;
  virtual hstring AsString() const { return {}; }

  // For the caller.

  TStyledHTMLNode* Element = nullptr;
  bool NeedRecalc = false;   // a step asks for a new layout
  bool ChangeStyle = false;  // a step changes the style
  TCSSTiming Timing = tmEase;
  TCSSTransition* Transition = nullptr;
  TCSSAnimation* Animation = nullptr;
};

/// A value that goes from a start to an end.
class TAnimatedProperty : public TAbstractAnimation {
  HT_CLASS(TAnimatedProperty, TAbstractAnimation)

 public:
  /// Until Position is 1.
  bool Active() const override;
  /// Sets the value that belongs to a time.
  virtual bool StepValue(int32_t time) = 0;

  int32_t AllTime = 0;  // ms
  int32_t Steps = 0;    // for the caller
  int32_t Delay = 0;    // ms still to wait
  int32_t StartDelay = 0;
  float Position = 0;  // from 0 to 1

 protected:
  /// Lets the delay run out and the time go on, which begins with what is left of the step. False while it waits.
  bool PassTime(int32_t step, int32_t& time);
  /// How many steps of this length make the whole time; 0 for one that is longer.
  int32_t StepsOf(int32_t step) const { return AllTime / (step > 1 ? step : 1); }
};

/// A colour, 0xAARRGGBB, in premultiplied form; always linear.
class TAnimatedColor : public TAnimatedProperty {
  HT_CLASS(TAnimatedColor, TAnimatedProperty)

 public:
  void Start(uint32_t start, uint32_t end, int32_t allTime, int32_t delay, uint32_t* value);
  void SetValue(uint32_t color);
  bool NextStep(int32_t step) override;
  bool StepValue(int32_t time) override;

  uint32_t StartValue = 0, EndValue = 0;
  uint32_t* Value = nullptr;
  int32_t TimeSum = 0;
  uint32_t LastValue = 0;
};

/// A whole number. It counts steps, not time.
class TAnimatedInt : public TAnimatedProperty {
  HT_CLASS(TAnimatedInt, TAnimatedProperty)

 public:
  void Start(int32_t start, int32_t end, int32_t allTime, int32_t delay, int32_t* value);
  bool NextStep(int32_t step) override;
  /// `count` is the number of steps of the whole run.
  bool StepValue(int32_t count) override;

  int32_t StartValue = 0, EndValue = 0;
  int32_t* Value = nullptr;
};

/// A number, with easing. Near its end it takes the end value.
class TAnimatedFloat : public TAnimatedProperty {
  HT_CLASS(TAnimatedFloat, TAnimatedProperty)

 public:
  /// `value` may be null. Start and end that are as good as equal end the run at once.
  void Start(float start, float end, int32_t allTime, int32_t delay, float* value);
  void SetValue(float x);
  bool NextStep(int32_t step) override;
  bool StepValue(int32_t time) override;
  /// "from 0.00 to 1.00, time 300"
  hstring AsString() const override;

  float StartValue = 0, EndValue = 0;
  int32_t TimeSum = 0;
  float* Value = nullptr;
};

/// Shows the next frame of an image.
using TNextFrameProc = std::function<bool(int32_t stepTime)>;

class TAnimatedImage : public TAbstractAnimation {
  HT_CLASS(TAnimatedImage, TAbstractAnimation)

 public:
  bool Active() const override { return true; }
  bool NextStep(int32_t step) override { return NextFrameProc && NextFrameProc(step); }

  TNextFrameProc NextFrameProc;
};

/// The key frame animation of Element's style.
class TAnimatedElement : public TAbstractAnimation {
  HT_CLASS(TAnimatedElement, TAbstractAnimation)

 public:
  bool Active() const override;
  bool NextStep(int32_t step) override;

 private:
  TCSSAnimation* StyleAnimation() const;
};

}  // namespace ht
