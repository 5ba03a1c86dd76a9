#pragma once

#include <array>
#include <memory>

#include "htruntime/object.h"

namespace ht {

/// A node of a THtStringTrie.
struct THtStringTrieItem : TObject {
  ~THtStringTrieItem() override { SetValue(nullptr, true); }

  /// Frees the value before it if the item owns that and it is another one.
  void SetValue(TObject* value, bool owns);

  bool OwnsValue = true;
  TObject* Value = nullptr;
  std::unique_ptr<std::array<std::unique_ptr<THtStringTrieItem>, 256>> Items;  // made on first need
};

/// Text to object by walking the key: the high byte of a unit selects a child of the current item, the low byte a
/// child of that child. A search costs two hops a unit, whatever the trie holds; an item with children costs 2 KB.
///
///   THtStringTrie abbreviations(true);
///   abbreviations.Add(u"etc", new TAbbreviation(…));
///   TAbbreviation* found;
///   if (abbreviations.FindPChar(cursor, length, found)) …
class THtStringTrie : public TObject {
  HT_CLASS(THtStringTrie, TObject)

 public:
  /// An owning trie frees the values that are added to it.
  explicit THtStringTrie(bool ownsObjects) : FOwnsObjects(ownsObjects) {}
  ~THtStringTrie() override { Clear(); }

  /// Replaces the value of a text that is there. The empty text stores on the root.
  void Add(std::u16string_view text, TObject* object);
  /// Sets `object` to null and is false if the text is empty, absent, or without a value.
  template <class T>
  bool Find(std::u16string_view text, T*& object) const {
    object = static_cast<T*>(text.empty() ? nullptr : ValueOf(text));
    return object != nullptr;
  }
  /// As Find, but a length below 1 reads the value of the root.
  template <class T>
  bool FindPChar(const char16_t* chars, int32_t length, T*& object) const {
    object = static_cast<T*>(ValueOf({chars, length > 0 ? static_cast<size_t>(length) : 0}));
    return object != nullptr;
  }
  bool ContainsKey(std::u16string_view text) const { return !text.empty() && ValueOf(text); }
  /// Becomes a copy of `other` that shares its values without owning them.
  void Assign(const THtStringTrie& other);

 private:
  using TItem = THtStringTrieItem;

  TObject* ValueOf(std::u16string_view text) const;
  static TItem& ChildOf(TItem& item, size_t byte);
  void Clear();

  TItem FRoot;
  const bool FOwnsObjects;
};

}  // namespace ht
