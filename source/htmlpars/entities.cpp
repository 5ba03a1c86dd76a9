#include "htmlpars/entities.h"

#include <array>
#include <cstddef>

#include "htdictionary/hash.h"
#include "htmlpars/entityreverse.h"

namespace ht {

namespace {

// The names as one block of literals, in table order, and where each begins. Offsets in place of pointers
// keep the table free of relocations: a process that meets no entity does not touch it.
struct TEntityNames {
#define HT_ENTITY(name, value) THtStringLiteral<sizeof #name> E_##name{u"" #name};
#include "htmlpars/entities.inc"
#undef HT_ENTITY
};

struct TEntityData {
  uint16_t NameOffset;
  uint32_t Value;
  uint32_t Hash;  // of the name; the compiler works it out, which spares a quarter of the time at first use
};

constexpr TEntityNames kNames;
constexpr TEntityData kData[] = {
#define HT_ENTITY(name, value) {offsetof(TEntityNames, E_##name), value, RSHash(u"" #name, sizeof #name - 1)},
#include "htmlpars/entities.inc"
#undef HT_ENTITY
};
constexpr size_t kCount = std::size(kData);

std::array<THtmlEntity, kCount> MakeTable() {
  std::array<THtmlEntity, kCount> rows;
  const auto* names = reinterpret_cast<const std::byte*>(&kNames);
  for (size_t i = 0; i < kCount; ++i) {
    const auto* header = reinterpret_cast<const THtStringHeader*>(names + kData[i].NameOffset);
    rows[i] = {hstring::OfLiteral(*header), kData[i].Value};
  }
  return rows;
}

}  // namespace

std::span<const THtmlEntity> HtEntityTable() {
  static const std::array<THtmlEntity, kCount> kTable = MakeTable();
  return kTable;
}

THtEntityDictionary::THtEntityDictionary()
    : THtPointerDictionary(kCount, HtNameOffset(&THtmlEntity::Name), RSHash) {
  const auto rows = HtEntityTable();
  for (size_t i = 0; i < kCount; ++i)
    AddHashed(kData[i].Hash, rows[i].Name, const_cast<THtmlEntity*>(&rows[i]));
}

uint32_t THtEntityDictionary::FindEntity(const char16_t* chars, int32_t length) const {
  const THtmlEntity* row;
  return Find(chars, length, row) ? row->Value : 0;
}

const THtEntityDictionary& GlobalEntityDictionary() {
  static const THtEntityDictionary kDictionary;
  return kDictionary;
}

THtEntityReverseDictionary::THtEntityReverseDictionary() : THtIdPointerDictionary(kCount) {
  for (const THtmlEntity& row : HtEntityTable())
    if (!HtNeverNamed(row.Value)) Add(row.Value, const_cast<THtmlEntity*>(&row));
}

PHtmlEntity THtEntityReverseDictionary::FindEntity(uint32_t character) const {
  return Get<const THtmlEntity>(character);
}

const THtEntityReverseDictionary& HtEntityReverseDictionary() {
  static const THtEntityReverseDictionary kDictionary;
  return kDictionary;
}

}  // namespace ht
