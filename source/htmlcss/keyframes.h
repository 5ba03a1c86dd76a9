#pragma once

#include <unordered_set>

#include "htdictionary/objectdictionary.h"
#include "htmlcss/csssection.h"
#include "htutils/idlist.h"
#include "htutils/objectlist.h"

namespace ht {

/// The steps of one `@keyframes`: percent to TCSSSection, in ascending order. Borrows the sections.
class TCSSKeyFrameList : public TIDList {
  HT_CLASS(TCSSKeyFrameList, TIDList)

 public:
  /// The animation's name.
  const hstring Key;

  explicit TCSSKeyFrameList(hstring name) : TIDList(0), Key(std::move(name)) {}

  /// Files the section under the step of each of its selectors: `from`, `to`, or a percentage from 0 to 100, rounded.
  /// Other selectors are passed over.
  void AddSection(TCSSSection* section);
  /// The section in force at a percentage: the first step for one below 0, else the first of the other steps that is
  /// not below it, else the last step. Null without steps.
  TCSSSection* FindSection(double percent) const;
};

/// The animations of a sheet by name, names compared exactly. It owns the lists it makes and the sections in them.
class TCSSKeyFrameMap : public THtObjectDictionary {
  HT_CLASS(TCSSKeyFrameMap, THtObjectDictionary)

 public:
  TCSSKeyFrameMap();

  /// Takes ownership of the section.
  void AddSection(const hstring& name, TCSSSection* section);
  /// Null for an unknown name.
  TCSSKeyFrameList* GetKeyFrameList(std::u16string_view name) const { return Get<TCSSKeyFrameList>(name); }
  /// One section that this map owns, and the animation it belongs to.
  struct TFiled {
    hstring Name;
    const TCSSSection* Section;
  };
  /// The sections in the order in which they were filed.
  const std::vector<TFiled>& Filed() const { return FFiled; }
  /// Takes the lists of another map by reference; it must outlive this one. A name that is here already stays.
  void Assign(const TCSSKeyFrameMap& other);
  /// Hides that of the dictionary: frees the lists and sections, too.
  void Clear();

 private:
  THtObjectList FOwned{true};  // the lists and their sections
  std::unordered_set<const TCSSSection*> FSections;
  std::vector<TFiled> FFiled;
};

}  // namespace ht
