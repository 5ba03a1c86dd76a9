#pragma once

#include <vector>

#include "htruntime/hstring.h"

namespace ht {

/// One declaration as text.
struct TCSSStyleSetRec {
  hstring Name;
  hstring Value;
};

/// Declarations as text, sorted by name: how styles pass between elements, canvases and exporters.
///
///   TCSSStyleSet set;
///   set.SetValue(u"fill"_hs, u"#ff0000"_hs);
///   set.AddString(u"font-size:12px;");
///   set.GetAsString();                       // "fill:#ff0000;font-size:12px;"
///
/// Names are compared by their units, case included. Indexes count from 0.
class TCSSStyleSet {
 public:
  int32_t Count() const { return static_cast<int32_t>(FItems.size()); }
  /// The index is not checked.
  const TCSSStyleSetRec& operator[](int32_t index) const { return FItems[static_cast<size_t>(index)]; }

  /// Where the name stands or, when false, belongs.
  bool Find(std::u16string_view name, int32_t& index) const;
  /// Replaces or adds. An empty value adds no name.
  void SetValue(const hstring& name, const hstring& value);
  void AddValue(const hstring& name, const hstring& value) { SetValue(name, value); }
  /// Empty if the name is absent.
  hstring GetValue(std::u16string_view name) const;
  bool HasProperty(std::u16string_view name) const;
  /// Whether the name is there with this value.
  bool CheckValue(std::u16string_view name, std::u16string_view value) const;
  /// An index outside the set does nothing.
  void Delete(int32_t index);
  void Clear() { FItems.clear(); }
  void Assign(const TCSSStyleSet& other) { FItems = other.FItems; }

  /// "name:value;"
  void AddString(std::u16string_view text);
  /// Takes all of the other set; its values win.
  void AddOverride(const TCSSStyleSet& other);
  /// Takes only the names that are not there yet.
  void AddInherited(const TCSSStyleSet& other);
  /// Deletes the names that have the same value in the other set.
  void IntersectWith(const TCSSStyleSet& other);

  /// "name:value;" for each pair with a value that is not blank.
  hstring GetAsString() const;
  /// The same between ` style="` and `"`; empty if there is nothing.
  hstring AsStyleAttr() const;
  /// Replaces the set by the declarations of a text.
  void SetAsString(const hstring& text);
  /// A length in pixels; 0 for one that needs a reference, and for none.
  float GetPixels(std::u16string_view name) const;

 private:
  std::vector<TCSSStyleSetRec> FItems;
};

}  // namespace ht
