#pragma once

#include <memory>
#include <vector>

#include "htdictionary/htstringlist.h"
#include "htmlcss/cssselector.h"

namespace ht {

/// Rules by one of the parts of their right-most compound, in one of two shapes: by a text (an id, a tag, a class, a
/// condition), or by a pseudo-class. It borrows the selectors.
class TCSSStyleMap : public THtObjectDictionary {
  HT_CLASS(TCSSStyleMap, THtObjectDictionary)

 public:
  /// One bucket of the pseudo shape.
  struct TPseudoMapRec {
    TCSSPseudoClass Pseudo;
    std::unique_ptr<TCSSSelectors> Selectors;
  };

  enum TShape : uint8_t { smKeyed, smPseudo };

  explicit TCSSStyleMap(TShape shape);

  /// In the order of first use; empty in the keyed shape.
  std::vector<TPseudoMapRec> PseudoMap;
  /// Of all selectors filed in the pseudo shape.
  TCSSPseudo AllPseudos;

  /// Files under `key`, or in the pseudo shape under `pseudo`. With `distinct` a selector without a parent goes through
  /// DistinctAdd; in the keyed shape only if it is alone in its section. Whether the selector itself was filed.
  bool AddSelector(const hstring& key, TCSSSelector* selector, TCSSPseudoClass pseudo, bool distinct);
  /// The bucket of a key; null if there is none, and in the pseudo shape.
  TCSSSelectors* FindList(std::u16string_view key) const { return Get<TCSSSelectors>(key); }
  /// The same with the key's RSHash given.
  TCSSSelectors* FindList(uint32_t hash, std::u16string_view key) const {
    return GetHashed<TCSSSelectors>(hash, key);
  }
  /// The buckets of either shape, in the order of first use.
  int32_t Count() const;
  TCSSSelectors* GetSelectors(int32_t index) const;
  /// Takes all selectors of a section out.
  void RemoveSection(const TCSSSection* section);
  /// Adds each class, or id, of the selectors and the compounds on their left.
  void GetAllClasses(THtStringList& list) const;
  void GetAllIds(THtStringList& list) const;
  void Clear();

 private:
  TCSSSelectors* BucketOf(const hstring& key);
  TCSSSelectors* BucketOf(TCSSPseudoClass pseudo);
  template <class TAdd>
  void VisitCompounds(TAdd add) const;

  const TShape FShape;
  std::vector<TCSSSelectors*> FBuckets;  // of the keyed shape
};

/// The rules for elements, or for one kind of generated content, each filed by the most selective part of its right-most
/// compound. Tags is always there, the others when they are needed.
class TCSSStyleMaps {
 public:
  TCSSStyleMaps();

  std::unique_ptr<TCSSStyleMap> IDs;
  std::unique_ptr<TCSSStyleMap> Tags;
  std::unique_ptr<TCSSStyleMap> Classes;
  std::unique_ptr<TCSSStyleMap> Conditions;
  std::unique_ptr<TCSSStyleMap> Pseudos;

  /// Files under the tag, else the id, else the first class, else the conditions, else the first pseudo-class. A
  /// selector with none of these is not filed. A rule for `*` alone is merged into the first of its weight and medium, if
  /// it may be.
  void AddSelector(TCSSSelector* selector, bool mayMerge = true);
  void RemoveSection(const TCSSSection* section);
  void Clear();
  void GetAllClasses(THtStringList& list) const;
  void GetAllIds(THtStringList& list) const;

  /// The rules with a tag, and those of Conditions, once more: each under the rarest part that an element must have, so
  /// that a query meets few others. Null where there are none.
  struct TFineMaps {
    std::unique_ptr<TCSSStyleMap> IDs;
    std::unique_ptr<TCSSStyleMap> Classes;
    /// By the name in lower case; under "" those that an element without the attribute may meet.
    std::unique_ptr<TCSSStyleMap> Attributes;
    /// Those of `.name > *`, by the class of the parent.
    std::unique_ptr<TCSSStyleMap> ParentClasses;
    std::unique_ptr<TCSSStyleMap> Tags;
  };
  const TFineMaps& Fine() const { return FFine; }

 private:
  template <class TVisit>
  void VisitMaps(TVisit visit) const;
  template <class TVisit>
  void VisitAllMaps(TVisit visit);
  void AddToFineMaps(TCSSSelector* selector);

  TFineMaps FFine;
};

}  // namespace ht
