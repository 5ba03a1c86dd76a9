#include "htmlcss/csstransition.h"

#include <algorithm>

namespace ht {

void TCSSTransition::Assign(const TCSSTransition& other) {
  Duration = other.Duration;
  Delay = other.Delay;
  Timing = other.Timing;
  Prop = other.Prop;
}

void TCSSTransitions::Delete(int32_t index) {
  delete GetObject(index);
  TStringList::Delete(index);
}

void TCSSTransitions::Clear() {
  for (int32_t i = 0; i < GetCount(); ++i) delete GetObject(i);
  TStringList::Clear();
}

TCSSTransition& TCSSTransitions::Demand(const hstring& name) {
  int32_t index;
  if (!Find(name, index)) index = AddObject(name, new TCSSTransition);
  return Transition(index);
}

void TCSSTransitions::Replace(const hstring& name, std::unique_ptr<TCSSTransition> transition) {
  int32_t index;
  if (Find(name, index)) Delete(index);
  AddObject(name, transition.release());
}

const TCSSTransition* TCSSTransitions::FindActive(TCSSProperty prop) const {
  for (int32_t i = 0; i < GetCount(); ++i) {
    const TCSSTransition& transition = Transition(i);
    if (transition.Active && transition.Prop && transition.Prop->Prop == prop) return &transition;
  }
  return nullptr;
}

int32_t TCSSAnimation::Percent() const {
  if (Position < 0 || Duration <= 0) return -1;
  return static_cast<int32_t>(int64_t{Position} * 100 / Duration);
}

void TCSSAnimation::TakeNextStep() {
  if (NextStep >= static_cast<int32_t>(Steps.size()) || !Changed || NextStep == CurrentStep) return;
  CurrentStep = NextStep;
  Changed = false;
}

bool TCSSAnimation::Step(int32_t elapsed) {
  const auto count = static_cast<int32_t>(Steps.size());
  if (Duration <= 0 || count < 2) return false;
  if (Delay > 0) {
    Delay -= elapsed;
    if (Delay > 0) return false;
  }
  if (Position > 0) {
    NextStep = 1;
    while (NextStep < count && Steps[static_cast<size_t>(NextStep)] < Percent()) ++NextStep;
  }
  bool changed = Position < 0 || (NextStep < count && NextStep != CurrentStep);
  TakeNextStep();
  Position = static_cast<int32_t>(std::clamp<int64_t>(int64_t{Position} + elapsed, 1, INT32_MAX));
  if (Position > Duration) {
    if (Iterations > 0) --Iterations;
    Position = -1;
    NextStep = 0;
    if (Iterations != 0) changed = true;
    TakeNextStep();
  }
  return changed || (CurrentStep != NextStep && Iterations != 0);
}

int32_t TCSSAnimation::GetFrameIndex() {
  const auto interval = [this](size_t step) {
    return static_cast<int32_t>(int64_t{Steps[step] - Steps[step - 1]} * Duration / 100);
  };
  const auto count = static_cast<int32_t>(Steps.size());
  if (Position == 0) {
    StepTime = count < 2 ? Duration : interval(1);
    return 0;
  }
  Changed = true;
  StepTime = CurrentStep > 0 && CurrentStep < count ? interval(static_cast<size_t>(CurrentStep)) : 0;
  return CurrentStep;
}

}  // namespace ht
