#pragma once

#include <vector>

#include "htruntime/arena.h"
#include "htruntime/hstring.h"

namespace ht {

class TFastString;
class TFastRawString;

/// One attribute of a node.
struct THtAttribute {
  hstring Name;
  hstring Value;
};

/// The attributes of one node, sorted by name at all times, so that a lookup is a binary search.
///
/// Unless CaseSensitive is set, names are stored with their ASCII letters in lower case and found without
/// regard to case. Indexes count from 0 and are not checked.
class THtAttributes {
 public:
  HT_POOLED

  bool CaseSensitive = false;
  /// The attributes in use. List may be longer: Clear leaves its entries for reuse.
  int32_t Count = 0;
  std::vector<THtAttribute, THtPoolAllocator<THtAttribute>> List;

  /// Inserts at the sorted position, without a look for an entry of the same name.
  void Add(hstring name, hstring value);
  /// Replaces the value of the entry or inserts one.
  void SetAttribute(const hstring& name, const hstring& value) { SetAttributeEx(name, value); }
  /// The same; tells whether anything changed.
  bool SetAttributeEx(const hstring& name, const hstring& value);
  /// Empty if absent.
  hstring GetAttribute(const hstring& name) const;
  /// True and the index of the entry; false and the index at which it would be inserted (0 for an empty name
  /// or list).
  bool Find(const hstring& name, int32_t& index) const;
  /// -1 if absent.
  int32_t Indexof(const hstring& name) const;
  const hstring& GetName(int32_t index) const { return List[static_cast<size_t>(index)].Name; }
  const hstring& GetValue(int32_t index) const { return List[static_cast<size_t>(index)].Value; }
  void SetValue(int32_t index, const hstring& value) { List[static_cast<size_t>(index)].Value = value; }
  THtAttribute* GetItem(int32_t index) { return &List[static_cast<size_t>(index)]; }
  /// Removes one entry of that name, if there is one.
  void ClearAttr(const hstring& name);
  void Clear() { Count = 0; }

  /// One attribute as it is read from a document, for AddParsed.
  struct TParsed {
    THtAttribute Attribute;
    bool Bare;  // no "=": the value is the name and replaces an earlier one
  };
  /// Adds a batch in its order of arrival; the names are stored as they are. Of two equal names the first stays,
  /// but a bare one replaces the value. Takes n log n time, however long the batch and however its names are
  /// ordered; the batch's texts are moved out of it.
  void AddParsed(std::vector<TParsed>& batch);

  /// `name="value"` joined by one blank, in list order, values escaped.
  hstring AsString() const;
  /// One blank before each attribute. An attribute whose value is its name is written as the name alone,
  /// unless CaseSensitive is set.
  void FastAsString(TFastString& builder) const;
  /// The same as UTF-8, always with name and value.
  void FastAsUTF8String(TFastRawString& builder) const;

 private:
  int CompareNames(const hstring& a, const hstring& b) const;
  void InsertAt(int32_t index, THtAttribute&& attribute);
  void Merge(TParsed& parsed);
};

}  // namespace ht
