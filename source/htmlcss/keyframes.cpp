#include "htmlcss/keyframes.h"

#include "htmlpars/lower.h"
#include "htruntime/numformat.h"
#include "htruntime/rounding.h"

namespace ht {

namespace {

// -1 for what is no percentage.
double PercentOf(const hstring& step) {
  if (step == u"from") return 0;
  if (step == u"to") return 100;
  double percent;
  const bool isNumber = !step.Empty() && HtTryStrToFloat(step.View().substr(0, step.Size() - 1), percent);
  return isNumber ? percent : -1;
}

}  // namespace

void TCSSKeyFrameList::AddSection(TCSSSection* section) {
  for (const TCSSSelector* selector : section->Selectors) {
    const double percent = PercentOf(selector->Tag);
    if (percent >= 0 && percent <= 100) AddObject(static_cast<int32_t>(HtRoundEven(percent)), section);
  }
}

TCSSSection* TCSSKeyFrameList::FindSection(double percent) const {
  if (GetCount() == 0) return nullptr;
  const double wanted = HtRoundEven(percent);
  int32_t index = 0;
  if (!(wanted < 0)) {
    index = 1;
    while (index < GetCount() - 1 && Get(index) < wanted) ++index;
    if (index >= GetCount()) index = GetCount() - 1;
  }
  return static_cast<TCSSSection*>(GetObject(index));
}

TCSSKeyFrameMap::TCSSKeyFrameMap() : THtObjectDictionary(16, false, HtNameOffset(&TCSSKeyFrameList::Key)) {}

void TCSSKeyFrameMap::AddSection(const hstring& name, TCSSSection* section) {
  TCSSKeyFrameList* list = GetKeyFrameList(name);
  if (!list) {
    list = new TCSSKeyFrameList(name);
    FOwned.Add(list);
    AddObject(list);
  }
  list->AddSection(section);
  if (!FSections.insert(section).second) return;
  FOwned.Add(section);
  FFiled.push_back({name, section});
}

void TCSSKeyFrameMap::Assign(const TCSSKeyFrameMap& other) {
  for (int32_t i = 0; TObject* list = other.GetNext(i);) AddObject(list);
}

void TCSSKeyFrameMap::Clear() {
  THtObjectDictionary::Clear();
  FSections.clear();
  FFiled.clear();
  FOwned.Clear();
}

}  // namespace ht
