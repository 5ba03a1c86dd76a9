#pragma once

#include <array>
#include <string>
#include <vector>

#include "htruntime/bytes.h"
#include "htruntime/object.h"

namespace ht {

/// A range of codes, both ends included, and what it stands for: values that count up from CBase, a glyph, or a text.
struct THtCMapRec {
  uint32_t CStart = 0, CEnd = 0;
  int32_t CBase = 0;  // of CStart
  hstring Name;       // of the glyph
  hstring Ligature;
};
using THtCMAPRecs = std::vector<THtCMapRec>;

/// Maps the character codes of a font to Unicode, in the manner of a CMap of an embedded document.
///
///   THtCMap map;
///   map.AddRec(0x20, 0x7E, 0x20, {}, {});
///   map.AddRec(0xF001, 0xF001, 0, u"fi"_hs, {});
///   map.Sort();                                  // before anything is looked up
///   hstring text = map.DecodeBytes(bytes);
///
/// What is looked up follows the list that Sort made: sort again after a change. After Sort the map may be read from
/// several threads.
class THtCMap : public TObject {
  HT_CLASS(THtCMap, TObject)

 public:
  virtual void Create() {}

  THtCMAPRecs FList;
  std::array<int32_t, 256> FMap{};  // index of the record for the codes from FMapLow on, or -1
  uint32_t FMapLow = 0, FMapHi = 0;
  bool IsIdentity = false;  // a code without a record stands for itself
  int32_t CIDShift = 0;     // added to a code without a record, in DecodeBytes and DecodeANSIBytes
  int32_t CodeSpaceBytes = 1;

  void AddRec(uint32_t start, uint32_t end, int32_t base, const hstring& ligature, const hstring& name);
  /// Into a sorted list, before the first record that does not end below `start`. The record is valid until the list
  /// changes.
  THtCMapRec& InsertRec(uint32_t start, uint32_t end, int32_t base, const hstring& ligature,
                        const hstring& name);
  void Clear();
  int32_t Count() const { return static_cast<int32_t>(FList.size()); }
  /// Takes the records that start at `maxCode` or below; 0 stands for 65535. To be sorted before it is asked.
  void Assign(const THtCMap& source, uint32_t maxCode);
  /// How many codes the ranges hold.
  int64_t CIDCount() const;
  /// The smallest CBase, or 65535 if that is less.
  int32_t BaseMin() const;

  void Sort();
  /// The record that holds a code, or null.
  const THtCMapRec* Find(uint32_t code) const;
  /// The value of a code; 0, or the code itself in an identity map, if there is none.
  uint32_t Decode(uint32_t code) const;
  /// The index of the first record with that text; false if there is none, and `index` is -1.
  bool FindLigature(std::u16string_view text, int32_t& index) const;
  bool FindName(std::u16string_view name, int32_t& index) const;
  bool HasSupplementaryPlane() const;

  /// The text of codes of two bytes, the high one first; a last byte alone is a code. A code without a record is the
  /// character CIDShift + code.
  hstring DecodeBytes(const THtBytes& bytes) const;
  /// The text of codes of one byte.
  hstring DecodeANSIBytes(const THtBytes& bytes) const;

  /// No two codes up to `maxCode`, 0 for 65535, have one value: the map can be read backwards. Bullets, tildes and blanks
  /// may repeat.
  bool Unambiguous(uint32_t maxCode) const;
  /// No value belongs to glyphs of two names.
  bool UnambiguousNames() const;

 private:
  void AppendCode(std::u16string& text, uint32_t code) const;
};

}  // namespace ht
