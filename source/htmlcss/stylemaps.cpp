#include "htmlcss/stylemaps.h"

#include <algorithm>

#include "htmlcss/csssection.h"
#include "htmlpars/lower.h"

namespace ht {

namespace {

// Rules for all elements alike, of the same medium: merged, they say what they say one after the other.
bool MayMerge(const TCSSSelectors& bucket, const TCSSSelector& selector) {
  const TCSSSelector* first = bucket.FirstItem<TCSSSelector>();
  return !first || (first->Test == &TCSSSelector::TestUniversal && selector.Test == first->Test &&
                    first->Section->MediaSet == selector.Section->MediaSet);
}

void RemoveFromBucket(TCSSSelectors& bucket, const TCSSSection* section) {
  const auto isOther = [section](const TCSSSelector* selector) { return selector->Section != section; };
  if (std::all_of(bucket.begin(), bucket.end(), isOther)) return;
  std::vector<TCSSSelector*> kept;
  std::copy_if(bucket.begin(), bucket.end(), std::back_inserter(kept), isOther);
  bucket.Clear();
  for (TCSSSelector* selector : kept) bucket.Add(selector);
}

// The attribute without which no element meets the selector's conditions; empty if there is none. Names that are not
// ASCII are compared by more than the case of their letters, so they are not told apart here.
hstring NeededAttribute(const TCSSSelector& selector) {
  if (selector.Conditions.Empty() || selector.Conditions[0].Compare == acNotEq) return {};
  hstring name = selector.Conditions[0].Name;
  if (std::any_of(name.begin(), name.end(), [](char16_t c) { return c >= 128; })) return {};
  hLower(name);
  return name;
}

}  // namespace

TCSSStyleMap::TCSSStyleMap(TShape shape)
    : THtObjectDictionary(0, true, HtNameOffset(&TCSSSelectors::Key), RSHash), FShape(shape) {}

TCSSSelectors* TCSSStyleMap::BucketOf(const hstring& key) {
  TCSSSelectors* bucket = FindList(key);
  if (!bucket) {
    bucket = new TCSSSelectors(false);
    bucket->Key = key;
    AddObject(bucket);
    FBuckets.push_back(bucket);
  }
  return bucket;
}

TCSSSelectors* TCSSStyleMap::BucketOf(TCSSPseudoClass pseudo) {
  for (const TPseudoMapRec& rec : PseudoMap)
    if (rec.Pseudo == pseudo) return rec.Selectors.get();
  PseudoMap.push_back({pseudo, std::make_unique<TCSSSelectors>(false)});
  return PseudoMap.back().Selectors.get();
}

bool TCSSStyleMap::AddSelector(const hstring& key, TCSSSelector* selector, TCSSPseudoClass pseudo,
                               bool distinct) {
  TCSSSelectors* bucket = FShape == smKeyed ? BucketOf(key) : BucketOf(pseudo);
  if (FShape == smPseudo)
    AllPseudos = AllPseudos + selector->Pseudos;
  else
    distinct = distinct && selector->Section->Selectors.GetCount() == 1;
  const int32_t before = bucket->GetCount();
  if (distinct && !selector->Parent && MayMerge(*bucket, *selector))
    bucket->DistinctAdd(selector);
  else
    bucket->Add(selector);
  return bucket->GetCount() > before;
}

int32_t TCSSStyleMap::Count() const {
  return static_cast<int32_t>(FShape == smKeyed ? FBuckets.size() : PseudoMap.size());
}

TCSSSelectors* TCSSStyleMap::GetSelectors(int32_t index) const {
  const auto i = static_cast<size_t>(index);
  return FShape == smKeyed ? FBuckets[i] : PseudoMap[i].Selectors.get();
}

void TCSSStyleMap::RemoveSection(const TCSSSection* section) {
  for (int32_t i = 0; i < Count(); ++i) RemoveFromBucket(*GetSelectors(i), section);
}

template <class TAdd>
void TCSSStyleMap::VisitCompounds(TAdd add) const {
  for (int32_t i = 0; i < Count(); ++i)
    for (const TCSSSelector* selector : *GetSelectors(i))
      for (; selector; selector = selector->Parent.get()) add(*selector);
}

void TCSSStyleMap::GetAllClasses(THtStringList& list) const {
  VisitCompounds([&list](const TCSSSelector& compound) {
    for (const TCSSClassRec& name : compound.Classes) list.AddKey(name.s);
  });
}

void TCSSStyleMap::GetAllIds(THtStringList& list) const {
  VisitCompounds([&list](const TCSSSelector& compound) {
    if (!compound.ID.Empty()) list.AddKey(compound.ID);
  });
}

void TCSSStyleMap::Clear() {
  FBuckets.clear();
  PseudoMap.clear();
  AllPseudos = {};
  THtObjectDictionary::Clear();
}

TCSSStyleMaps::TCSSStyleMaps() : Tags(std::make_unique<TCSSStyleMap>(TCSSStyleMap::smKeyed)) {}

namespace {

bool AddTo(std::unique_ptr<TCSSStyleMap>& map, const hstring& key, TCSSSelector* selector,
           bool distinct = false) {
  if (!map) map = std::make_unique<TCSSStyleMap>(TCSSStyleMap::smKeyed);
  return map->AddSelector(key, selector, pcNone, distinct);
}

}  // namespace

void TCSSStyleMaps::AddSelector(TCSSSelector* selector, bool mayMerge) {
  if (!selector->Tag.Empty()) {
    const bool distinct = mayMerge && selector->Universal && selector->Condition.Empty();
    if (AddTo(Tags, selector->Tag, selector, distinct)) AddToFineMaps(selector);
  } else if (!selector->ID.Empty()) {
    AddTo(IDs, selector->ID, selector);
  } else if (!selector->Classes.Empty()) {
    AddTo(Classes, selector->Classes[0].s, selector);
  } else if (!selector->Condition.Empty()) {
    hstring key = selector->Condition;
    hLower(key);
    AddTo(Conditions, key, selector);
    AddTo(FFine.Attributes, NeededAttribute(*selector), selector);
  } else if (selector->HasPseudoClasses()) {
    if (!Pseudos) Pseudos = std::make_unique<TCSSStyleMap>(TCSSStyleMap::smPseudo);
    Pseudos->AddSelector({}, selector, selector->Pseudo, false);
  }
}

void TCSSStyleMaps::AddToFineMaps(TCSSSelector* selector) {
  const TCSSSelector* parent = selector->Position == spChild ? selector->Parent.get() : nullptr;
  if (!selector->ID.Empty())
    AddTo(FFine.IDs, selector->ID, selector);
  else if (!selector->Classes.Empty())
    AddTo(FFine.Classes, selector->Classes[0].s, selector);
  else if (const hstring attribute = NeededAttribute(*selector); !attribute.Empty())
    AddTo(FFine.Attributes, attribute, selector);
  else if (selector->Universal && parent && !parent->Classes.Empty())
    AddTo(FFine.ParentClasses, parent->Classes[0].s, selector);
  else
    AddTo(FFine.Tags, selector->Tag, selector);
}

template <class TVisit>
void TCSSStyleMaps::VisitMaps(TVisit visit) const {
  for (const auto& map : {&Tags, &IDs, &Pseudos, &Classes, &Conditions})
    if (*map) visit(**map);
}

template <class TVisit>
void TCSSStyleMaps::VisitAllMaps(TVisit visit) {
  VisitMaps(visit);
  for (const auto& map : {&FFine.IDs, &FFine.Classes, &FFine.Attributes, &FFine.ParentClasses, &FFine.Tags})
    if (*map) visit(**map);
}

void TCSSStyleMaps::RemoveSection(const TCSSSection* section) {
  VisitAllMaps([section](TCSSStyleMap& map) { map.RemoveSection(section); });
}

void TCSSStyleMaps::Clear() {
  VisitAllMaps([](TCSSStyleMap& map) { map.Clear(); });
}

void TCSSStyleMaps::GetAllClasses(THtStringList& list) const {
  VisitMaps([&list](const TCSSStyleMap& map) { map.GetAllClasses(list); });
}

void TCSSStyleMaps::GetAllIds(THtStringList& list) const {
  VisitMaps([&list](const TCSSStyleMap& map) { map.GetAllIds(list); });
}

}  // namespace ht
