#include <algorithm>

#include "htmlcss/cssmatch.h"
#include "htmlcss/stylesheet.h"
#include "htmlpars/lower.h"

namespace ht {

namespace {

const hstring* IdOf(const THtAttributes& attributes) {
  for (int32_t i = 0; i < attributes.Count; ++i)
    if (attributes.GetName(i) == u"id"_hs) return &attributes.GetValue(i);
  return nullptr;
}

// Other names may be equal to one that is written differently.
bool IsPlainName(std::u16string_view name) {
  return std::all_of(name.begin(), name.end(), [](char16_t c) { return c < 128 && !HtIsAsciiUpper(c); });
}

// Each of these calls `visit` for buckets that may hold rules for an element, until it gives true; whether it did. A map
// may be null.

template <class TVisit>
bool VisitBucket(const std::unique_ptr<TCSSStyleMap>& map, uint32_t hash, std::u16string_view key,
                 const TVisit& visit) {
  const TCSSSelectors* bucket = map ? map->FindList(hash, key) : nullptr;
  return bucket && visit(*bucket);
}

template <class TVisit>
bool VisitClasses(const std::unique_ptr<TCSSStyleMap>& map, const TStyledHTMLNode& element,
                  const TVisit& visit) {
  if (!map) return false;
  for (const TCSSClassRec& name : element.FClassHashes)
    if (VisitBucket(map, name.hash, name.s, visit)) return true;
  return false;
}

template <class TVisit>
bool VisitTags(const std::unique_ptr<TCSSStyleMap>& map, const TStyledHTMLNode& element,
               const TVisit& visit) {
  constexpr std::u16string_view kAny = u"*";
  constexpr uint32_t kAnyHash = RSHash(kAny.data(), 1);
  if (!element.GetTag().Empty() && VisitBucket(map, element.GetTagHash(), element.GetTag(), visit))
    return true;
  return VisitBucket(map, kAnyHash, kAny, visit);
}

template <class TVisit>
bool VisitAll(const TCSSStyleMap& map, const TVisit& visit) {
  for (int32_t i = 0; i < map.Count(); ++i)
    if (visit(*map.GetSelectors(i))) return true;
  return false;
}

// Under the names of all attributes, and under none.
template <class TVisit>
bool VisitAttributes(const std::unique_ptr<TCSSStyleMap>& map, const THtAttributes& attributes,
                     const TVisit& visit) {
  if (!map) return false;
  if (attributes.CaseSensitive) return VisitAll(*map, visit);
  for (int32_t i = 0; i < attributes.Count; ++i)
    if (!IsPlainName(attributes.GetName(i))) return VisitAll(*map, visit);
  if (VisitBucket(map, RSHash(u"", 0), u"", visit)) return true;
  for (int32_t i = 0; i < attributes.Count; ++i) {
    const hstring& name = attributes.GetName(i);
    if (!name.Empty() && VisitBucket(map, RSHash(name.Data(), name.Length()), name, visit)) return true;
  }
  return false;
}

template <class TVisit>
bool VisitIds(const TCSSStyleMaps& maps, const hstring* id, const TVisit& visit) {
  if (!id || id->Empty() || !(maps.IDs || maps.Fine().IDs)) return false;
  const uint32_t hash = RSHash(id->Data(), id->Length());
  return VisitBucket(maps.IDs, hash, *id, visit) || VisitBucket(maps.Fine().IDs, hash, *id, visit);
}

// The buckets that speak of the element itself, but for those of its pseudo-classes.
template <class TVisit>
bool VisitRules(const TCSSStyleMaps& maps, const TStyledHTMLNode& element, const TVisit& visit) {
  const TCSSStyleMaps::TFineMaps& fine = maps.Fine();
  if (const THtAttributes* attributes = element.GetAttributes())
    if (VisitIds(maps, IdOf(*attributes), visit) || VisitClasses(maps.Classes, element, visit) ||
        VisitAttributes(fine.Attributes, *attributes, visit))
      return true;
  return VisitClasses(fine.Classes, element, visit) || VisitTags(fine.Tags, element, visit);
}

// A rule of the kind `tr > :nth-child(2)`, for a child of another element. To ask the parent first costs less than to
// count siblings.
bool IsForOtherParents(const TCSSSelector& selector, const TStyledHTMLNode& element, TCSSPseudo pseudos) {
  if (selector.NthIndex == 0 || selector.Position != spChild || !selector.Parent) return false;
  auto* parent = static_cast<TStyledHTMLNode*>(element.THtNode::GetParent());
  return !parent || !selector.Parent->Matches(*parent, HtPseudosFor(*selector.Parent, *parent, pseudos));
}

// Whether the element meets the right-most compound of a rule, whatever the rest of it says.
bool MayApply(TStyledHTMLNode& element, const TCSSStyleMaps& maps) {
  const auto anyPasses = [&element](const TCSSSelectors& bucket) {
    for (const TCSSSelector* selector : bucket)
      if (selector->Matches(element, selector->Pseudos)) return true;
    return false;
  };
  const auto& ofParents = maps.Fine().ParentClasses;
  return VisitRules(maps, element, anyPasses) || (ofParents && VisitAll(*ofParents, anyPasses)) ||
         (maps.Pseudos && VisitAll(*maps.Pseudos, anyPasses));
}

}  // namespace

void TCSSStyleSheet::GetElementSelectors(TStyledHTMLNode& element, TCSSWeightList& list,
                                         const TCSSStyleMaps* maps, TCSSPseudo pseudos) const {
  if (!maps) return;
  const TCSSPseudo current = HtCurrentPseudos(element) + pseudos;
  const int32_t classCount = element.FClassHashes.Count();
  const auto addBucket = [&](const TCSSSelectors& bucket) {
    for (const TCSSSelector* selector : bucket) {
      if (classCount < selector->Classes.Count() || IsForOtherParents(*selector, element, pseudos) ||
          !selector->Matches(element, current))
        continue;
      TCSSSection& section = *selector->Section;
      if ((section.MediaSet && section.MediaSet->Disabled) || !(pseudos <= selector->Pseudos)) continue;
      if (HtMeetsRest(element, *selector, current, pseudos))
        list.AddValues(selector->Weight, selector->Order, section.CompiledValues);
    }
    return false;
  };
  VisitRules(*maps, element, addBucket);
  if (const THtNode* parent = element.THtNode::GetParent())
    VisitClasses(maps->Fine().ParentClasses, static_cast<const TStyledHTMLNode&>(*parent), addBucket);
  if (!maps->Pseudos) return;
  const TCSSPseudo asked = current + TCSSPseudo{pcNthChild, pcNthOfType};
  if ((maps->Pseudos->AllPseudos * asked).Empty()) return;
  for (const TCSSStyleMap::TPseudoMapRec& rec : maps->Pseudos->PseudoMap)
    if (asked.Contains(rec.Pseudo)) addBucket(*rec.Selectors);
}

void TCSSStyleSheet::GetElementPseudoClasses(TStyledHTMLNode& element, TCSSPseudo& pseudos) const {
  if (Before && MayApply(element, *Before)) pseudos.Include(pcBefore);
  if (After && MayApply(element, *After)) pseudos.Include(pcAfter);
  if (Marker && MayApply(element, *Marker)) pseudos.Include(pcMarker);
}

void TCSSStyleSheet::GetAllSelectors(TCSSWeightList& list) const {
  const TCSSSelectors* bucket = Main.Tags->FindList(u"*");
  if (!bucket || bucket->GetCount() == 0) return;
  const TCSSSelector& first = *bucket->GetSelector(0);
  for (TCSSValue& value : first.Section->CompiledValues)
    if (!value.Vendor && value.Prop && value.Prop->Prop != cspUnknown)
      list.AddValue(TCSSWeightList::KeyOf(first.Weight, value), first.Order, &value);
}

bool TCSSStyleSheet::TestMediaSets(TCSSMedia media, int32_t width, int32_t deviceWidth) {
  bool changed = false;
  for (int32_t i = 0; i < MediaSets.GetCount(); ++i) {
    auto& set = *static_cast<TCSSMediaSet*>(MediaSets.Get(i));
    const bool disabled = !set.CheckMedia(media, width, deviceWidth);
    changed |= set.Disabled != disabled;
    set.Disabled = disabled;
  }
  return changed;
}

void TCSSStyleSheet::GetAnimationSelectors(std::u16string_view name, double percent,
                                           TCSSWeightList& list) const {
  const TCSSKeyFrameList* steps = KeyFrames ? KeyFrames->GetKeyFrameList(name) : nullptr;
  TCSSSection* section = steps ? steps->FindSection(percent) : nullptr;
  if (!section) return;
  for (TCSSValue& value : section->Values) list.AddValue(static_cast<uint32_t>(kCSSSelfWeight), 0, &value);
}

void TCSSStyleSheet::GetAnimationSteps(std::u16string_view name, std::vector<int32_t>& steps) const {
  const TCSSKeyFrameList* list = KeyFrames ? KeyFrames->GetKeyFrameList(name) : nullptr;
  if (!list) return;
  steps.clear();
  for (int32_t i = 0; i < list->GetCount(); ++i) steps.push_back(list->Get(i));
}

TCSSTokens TCSSStyleSheet::ValuebyName(std::u16string_view name) const {
  return fSections.GetCount() > 0 ? GetSection(0)->ValuebyName(name) : TCSSTokens();
}

const TCSSVariable* TCSSStyleSheet::FindVariable(std::u16string_view name) const {
  return Variables ? Variables->Get<TCSSVariable>(name) : nullptr;
}

}  // namespace ht
