#include "htmlpars/tags.h"

#include <array>

#include "htdictionary/hash.h"

namespace ht {

namespace {

constexpr std::u16string_view kTagNames[tgCount] = {u"", u"",
#define HT_TAG_NAME(id, name) u"" name,
                                                    HT_TAG_LIST(HT_TAG_NAME)
#undef HT_TAG_NAME
};

constexpr size_t kBuckets = 256;

constexpr size_t Bucket(uint32_t hash) { return (hash * 0x9E3779B1u) >> 24; }

// Open addressing with linear probing over the identifiers; tgNone marks a free place.
consteval std::array<THtTagId, kBuckets> MakeTagTable() {
  std::array<THtTagId, kBuckets> table{};
  for (int id = tgOther + 1; id < tgCount; ++id) {
    const std::u16string_view name = kTagNames[id];
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
    if (kTagNames[kTagTable[at]] == tag) return kTagTable[at];
  return tgOther;
}

THtTagId HtFindTagId(std::u16string_view tag) {
  return HtFindTagId(tag, RSHash(tag.data(), static_cast<int32_t>(tag.size())));
}

}  // namespace ht
