#include "htmlpars/tags.h"

#include <array>

#include "htdictionary/hash.h"

namespace ht {

namespace {

// A tag's name as the storage of a literal.
struct TTagName {
  THtStringHeader Header{-1, 0};
  char16_t Units[16]{};

  constexpr TTagName(std::u16string_view name) : Header{-1, static_cast<int32_t>(name.size())} {
    for (size_t i = 0; i < name.size(); ++i) Units[i] = name[i];
  }
  constexpr std::u16string_view View() const { return {Units, static_cast<size_t>(Header.Length)}; }
};

constexpr TTagName kTagNames[tgCount] = {{u""},
                                         {u""},
#define HT_TAG_NAME(id, name) {u"" name},
                                         HT_TAG_LIST(HT_TAG_NAME)
#undef HT_TAG_NAME
};

constexpr size_t kBuckets = 256;

constexpr size_t Bucket(uint32_t hash) { return (hash * 0x9E3779B1u) >> 24; }

// Open addressing with linear probing over the identifiers; tgNone marks a free place.
consteval std::array<THtTagId, kBuckets> MakeTagTable() {
  std::array<THtTagId, kBuckets> table{};
  for (int id = tgOther + 1; id < tgCount; ++id) {
    const std::u16string_view name = kTagNames[id].View();
    size_t at = Bucket(RSHash(name.data(), static_cast<int32_t>(name.size())));
    while (table[at] != tgNone) at = (at + 1) % kBuckets;
    table[at] = static_cast<THtTagId>(id);
  }
  return table;
}

constexpr std::array<THtTagId, kBuckets> kTagTable = MakeTagTable();

}  // namespace

THtTagId HtFindTagId(std::u16string_view tag, uint32_t rsHash) {
  if (tag.empty()) return tgNone;
  for (size_t at = Bucket(rsHash); kTagTable[at] != tgNone; at = (at + 1) % kBuckets)
    if (kTagNames[kTagTable[at]].View() == tag) return kTagTable[at];
  return tgOther;
}

THtTagId HtFindTagId(const hstring& tag) {
  // The names given by HtTagName are told by their place.
  const size_t offset = reinterpret_cast<uintptr_t>(tag.Data()) - reinterpret_cast<uintptr_t>(kTagNames);
  if (offset < sizeof kTagNames) return static_cast<THtTagId>(offset / sizeof(TTagName));
  return HtFindTagId(tag, RSHash(tag.Data(), tag.Length()));
}

hstring HtTagName(THtTagId id) { return hstring::OfLiteral(kTagNames[id].Header); }

}  // namespace ht
