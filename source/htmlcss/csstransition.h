#pragma once

#include <vector>

#include "htmlcss/cssproperty.h"
#include "htruntime/stringlist.h"

namespace ht {

/// The longest time of a transition or an animation, in milliseconds.
constexpr int32_t kLongestAnimation = 100000;

/// How one property goes over to a new value. The animation thread writes Color and Number; the getters of the style read
/// them as plain 32-bit words.
class TCSSTransition : public TObject {
  HT_CLASS(TCSSTransition, TObject)

 public:
  int32_t Duration = 0;  // ms
  int32_t Delay = -1;    // ms; -1 where none is given
  uint32_t Color = 0;    // the animated value now
  float Number = 0;
  TCSSTiming Timing = tmEase;
  /// Null for "all".
  const TCSSPropRec* Prop = nullptr;
  bool Active = false;

  /// Takes over Duration, Delay, Timing and Prop.
  void Assign(const TCSSTransition& other);
};

/// The transitions of one element by the name of their property, sorted, which the list owns.
class TCSSTransitions : public TStringList {
  HT_CLASS(TCSSTransitions, TStringList)

 public:
  TCSSTransitions() { SetSorted(true); }
  ~TCSSTransitions() override { TCSSTransitions::Clear(); }

  void Delete(int32_t index) override;
  void Clear() override;

  TCSSTransition& Transition(int32_t index) const { return *static_cast<TCSSTransition*>(GetObject(index)); }
  /// The transition of that name, which is made if there is none.
  TCSSTransition& Demand(const hstring& name);
  /// Files a transition in place of one of that name.
  void Replace(const hstring& name, std::unique_ptr<TCSSTransition> transition);
  /// The active transition of the property; null if there is none.
  const TCSSTransition* FindActive(TCSSProperty prop) const;
};

/// The course of a key frame animation of one element, in whole milliseconds.
class TCSSAnimation : public TObject {
  HT_CLASS(TCSSAnimation, TObject)

 public:
  int32_t CurrentStep = 0, NextStep = 0;
  bool Changed = false;
  hstring Name;
  int32_t Duration = 0, Delay = 0;
  TCSSTiming Timing = tmEase;
  int32_t Position = -1;   // inside the run; -1 before the first step
  int32_t Iterations = 1;  // still to come; -1 for ever
  bool Active = false;
  std::vector<int32_t> Steps;  // the percentages of the key frames, ascending
  int32_t StepTime = 0;

  /// Goes on by the time that has passed. Whether the element is to be styled anew.
  bool Step(int32_t elapsed);
  /// How much of the run is over; -1 before the first step.
  int32_t Percent() const;
  /// The key frame to show; sets StepTime to the time from the one before, or to the first one to come.
  int32_t GetFrameIndex();

 private:
  void TakeNextStep();
};

}  // namespace ht
