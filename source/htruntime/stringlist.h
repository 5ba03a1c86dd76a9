#pragma once

#include <memory>

#include "htruntime/enums.h"
#include "htruntime/object.h"

namespace ht {

class TStream;

/// What a sorted list does with a text that it already holds: leave the list as it is, take it, or raise.
HT_ENUM(TDuplicates, uint8_t, dupIgnore, dupAccept, dupError);

/// The ordered list of texts, each with an object that it carries but does not own.
///
///   TStringList list;
///   list.Add(u"b"_hs);
///   list.SetSorted(true);                  // from now on entries are found by bisection
///   list.AddObject(u"a"_hs, node);         // 0
///   list.SetText(u"color=red\r\nsize=2");  // two entries
///
/// Indexes count from 0. Raises EStringListError:
///   "List index out of bounds (%d)" for an index outside the list;
///   "Operation not allowed on sorted list" for Put, Insert and Exchange on a sorted list;
///   "String list does not allow duplicates" for a known text added to a sorted list under dupError.
class TStringList : public TObject {
  HT_CLASS(TStringList, TObject)

 public:
  int32_t GetCount() const { return FCount; }
  const hstring& Get(int32_t index) const;
  void Put(int32_t index, const hstring& text);
  TObject* GetObject(int32_t index) const;
  void PutObject(int32_t index, TObject* object);

  /// Returns the index of the entry. In a sorted list that is its place in the order, behind its equals; under
  /// dupIgnore a text that is there already stays as it is, with its object, and its index comes back.
  int32_t Add(const hstring& text) { return AddObject(text, nullptr); }
  int32_t AddObject(const hstring& text, TObject* object);
  /// `index` may be the count.
  void Insert(int32_t index, const hstring& text) { InsertObject(index, text, nullptr); }
  void InsertObject(int32_t index, const hstring& text, TObject* object);
  virtual void Delete(int32_t index);
  void Exchange(int32_t a, int32_t b);
  virtual void Clear();

  /// The first entry equal to `text` under CompareStrings; -1 if there is none.
  int32_t IndexOf(std::u16string_view text) const;
  /// Bisection in a sorted list: true and the first entry equal to `text`, or false and the place for it.
  bool Find(std::u16string_view text, int32_t& index) const;
  /// Sorts once by CompareStrings; equal entries keep their order.
  void Sort();

  bool GetSorted() const { return FSorted; }
  /// Setting the flag sorts the list and keeps it sorted.
  void SetSorted(bool sorted);
  TDuplicates GetDuplicates() const { return FDuplicates; }
  /// Told for sorted lists only. The default is dupIgnore.
  void SetDuplicates(TDuplicates duplicates) { FDuplicates = duplicates; }
  bool GetCaseSensitive() const { return FCaseSensitive; }
  /// The default is false. A sorted list is sorted anew.
  void SetCaseSensitive(bool caseSensitive);

  /// The order of the list: HtCompareStr or HtCompareText, by GetCaseSensitive. Below 0, 0 or above 0.
  virtual int CompareStrings(std::u16string_view a, std::u16string_view b) const;

  // Entries of the form name=value.

  char16_t GetNameValueSeparator() const { return FSeparator; }
  void SetNameValueSeparator(char16_t separator) { FSeparator = separator; }
  /// What stands before the first separator; empty in an entry without one.
  hstring GetName(int32_t index) const;
  /// What stands behind the first separator; empty in an entry without one.
  hstring GetValueFromIndex(int32_t index) const;
  /// The first entry of that name under CompareStrings; -1 if there is none.
  int32_t IndexOfName(std::u16string_view name) const;
  /// Empty if there is no such name.
  hstring GetValue(std::u16string_view name) const;
  /// Sets the value of the first entry of that name or adds an entry. An empty value deletes the entry.
  void SetValue(std::u16string_view name, std::u16string_view value);

  /// The entries with CR LF behind each.
  hstring GetText() const;
  /// Replaces the content by the lines of a text. A line ends in CR LF, LF or CR; the last one need not.
  void SetText(std::u16string_view text);
  /// Reads everything from the position on as SetText does; the encoding is found as HtDecodeText does.
  void LoadFromStream(TStream& stream);
  /// Writes GetText as UTF-8 behind a mark, so that it reads back the same under every system code page.
  void SaveToStream(TStream& stream) const;
  /// Both raise the errors of TFileStream.
  void LoadFromFile(const hstring& fileName);
  void SaveToFile(const hstring& fileName) const;

 protected:
  struct TStringItem {
    hstring Text;
    TObject* Object = nullptr;
  };

  [[noreturn]] static void RaiseIndex(int32_t index);
  void CheckIndex(int32_t index, int32_t limit) const {
    if (static_cast<uint32_t>(index) >= static_cast<uint32_t>(limit)) RaiseIndex(index);
  }

  // The entries as they lie in memory, for derived classes that search them by themselves.
  std::unique_ptr<TStringItem[]> FList;
  int32_t FCount = 0;

 private:
  int32_t FCapacity = 0;
  bool FSorted = false;
  bool FCaseSensitive = false;
  TDuplicates FDuplicates = dupIgnore;
  char16_t FSeparator = u'=';

  void CheckUnsorted() const;
  void InsertItem(int32_t index, const hstring& text, TObject* object);
  template <class TBefore>
  int32_t Bisect(TBefore before) const;
};

}  // namespace ht
