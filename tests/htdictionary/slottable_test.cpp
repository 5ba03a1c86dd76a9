#include "htdictionary/slottable.h"

#include <gtest/gtest.h>
#include <map>
#include <new>
#include <random>

using namespace ht;

namespace {

void* Value(uint64_t n) { return reinterpret_cast<void*>(n + 1); }

void Insert(THtSlotTable& table, uint32_t key, void* value) {
  table.GrowIfFull();
  table.Insert(table.FindEnd(key), key, value);
}

// What must hold between operations: every slot on the way from its home to an entry is taken, and a run is ordered
// by home.
void CheckOrder(const THtSlotTable& table) {
  const uint32_t mask = table.GetSize() - 1;
  const auto distance = [&](uint32_t slot) {
    return (slot - table.KeyAt(static_cast<int32_t>(slot))) & mask;
  };
  int32_t live = 0;
  for (uint32_t slot = 0; slot <= mask; ++slot) {
    live += table.IsLive(slot);
    ASSERT_EQ(table.IsLive(slot), distance(slot) != 0) << slot;
    ASSERT_LE(distance((slot + 1) & mask), distance(slot) + 1) << slot;
  }
  ASSERT_EQ(live, table.GetCount());
}

const struct {
  const char* Name;
  uint32_t (*Key)(uint32_t random, uint32_t size);
  int32_t Most;  // entries
} kKeys[] = {
    {"random", [](uint32_t random, uint32_t) { return random; }, 3000},
    {"slot indexes", [](uint32_t random, uint32_t size) { return random % size; }, 3000},
    {"one home", [](uint32_t random, uint32_t) { return random << 12 | 5; }, 300},
    {"at the top", [](uint32_t random, uint32_t) { return 0u - 1 - random % 40; }, 30},
    {"tiny", [](uint32_t random, uint32_t) { return random % 4 * 4; }, 3},
};

}  // namespace

// Random work on hostile keys against std::map.
TEST(SlotTable, AgreesWithMap) {
  for (const auto& kind : kKeys) {
    SCOPED_TRACE(kind.Name);
    std::mt19937 random(7);
    THtSlotTable table(0);
    std::map<uint32_t, void*> model;
    for (uint64_t i = 0; i < 30000; ++i) {
      const uint32_t key = kind.Key(static_cast<uint32_t>(random()), table.GetSize());
      const int32_t found = table.Find(key);
      ASSERT_EQ(found < 0 ? nullptr : table.ValueAt(found), model.count(key) ? model[key] : nullptr);
      // Long stretches of growth and of shrinking.
      const bool fill = i / 3000 % 2 == 0 ? random() % 4 != 0 : random() % 4 == 0;
      if (found >= 0 && !fill) {
        ASSERT_EQ(table.Remove(found), model[key]);
        model.erase(key);
      } else if (found < 0 && fill && table.GetCount() < kind.Most) {
        Insert(table, key, model[key] = Value(i));
      }
      if (i % 500 == 0) CheckOrder(table);
    }
    size_t seen = 0;
    for (int32_t at = 0, slot; (slot = table.NextSlot(at)) >= 0; ++seen)
      ASSERT_EQ(model.at(table.KeyAt(slot)), table.ValueAt(slot));
    EXPECT_EQ(seen, model.size());
  }
}

// Entries of one hash, told apart by their values: a run as long as the table, in the order of arrival.
TEST(SlotTable, EqualHashes) {
  for (uint32_t hash : {0u, 5u, 0xFFFFFFFFu}) {
    THtSlotTable table(0);
    for (uint64_t n = 0; n < 200; ++n) Insert(table, hash, Value(n));
    const auto find = [&](uint64_t n) {
      return table.Find(hash, [=](void* other) { return other == Value(n); });
    };
    for (uint64_t n = 0; n < 200; n += 2) table.Remove(find(n));
    CheckOrder(table);
    for (uint64_t n = 0; n < 200; ++n) EXPECT_EQ(find(n) >= 0, n % 2 == 1) << n;
    EXPECT_EQ(table.ValueAt(table.Find(hash)), Value(1));
  }
}

// A table with one empty slot, whose index is the very hash that is asked for.
TEST(SlotTable, EmptySlotIsNoEntry) {
  for (uint32_t hash = 0; hash < 4; ++hash) {
    THtSlotTable table(0);
    for (uint32_t n = 1; n <= 3; ++n) table.Insert(table.Find(hash + 4 * n), hash + 4 * n, Value(n));
    ASSERT_EQ(table.GetSize(), 4u);
    EXPECT_EQ(table.Find(hash), ~static_cast<int32_t>(hash));
  }
}

TEST(SlotTable, Sizes) {
  // clang-format off
  constexpr struct { int32_t Capacity; uint32_t Size; int32_t Limit; } kCases[] = {
      {-1, 4, 3}, {0, 4, 3}, {2, 4, 3}, {3, 8, 6}, {5, 8, 6}, {6, 16, 12}, {95, 128, 96}, {96, 256, 192},
      {255, 512, 384}, {511, 1024, 768}, {2125, 4096, 3072}, {100001, 262144, 196608}};
  // clang-format on
  THtSlotTable table(0);
  for (const auto& row : kCases) {
    table.SetCapacity(row.Capacity);
    EXPECT_EQ(table.GetSize(), row.Size) << row.Capacity;
    EXPECT_EQ(table.GetGrowLimit(), row.Limit) << row.Capacity;
  }
  EXPECT_THROW(table.SetCapacity((1 << 30) + 1), std::bad_alloc);
  EXPECT_EQ(table.GetSize(), 262144u);
  table.SetCapacity(40);
  Insert(table, 9, Value(9));
  table.SetCapacity(0);
  EXPECT_EQ(table.GetSize(), 64u);  // with entries a table grows only
  table.Clear(0, [](void* value) { EXPECT_EQ(value, Value(9)); });
  EXPECT_EQ(table.GetSize(), 4u);
  EXPECT_EQ(table.GetCount(), 0);
}

// 75 % up to 100,000 entries, 87.5 % above: the limit can move without the table.
TEST(SlotTable, GrowsAtItsLimit) {
  // clang-format off
  constexpr struct { int32_t Count; uint32_t Size; int32_t Limit; } kCases[] = {  // entries when one more comes
      {3, 8, 6}, {6, 16, 12}, {49152, 131072, 98304}, {98303, 131072, 98304}, {98304, 262144, 196608},
      {196607, 262144, 196608}, {196608, 262144, 229376}, {229376, 524288, 458752}};
  // clang-format on
  THtSlotTable table(0);
  for (const auto& row : kCases) {
    while (table.GetCount() < row.Count)
      Insert(table, static_cast<uint32_t>(table.GetCount()) * 0x9E3779B1, nullptr);
    table.GrowIfFull();
    EXPECT_EQ(table.GetSize(), row.Size) << row.Count;
    EXPECT_EQ(table.GetGrowLimit(), row.Limit) << row.Count;
  }
  CheckOrder(table);
  table.Clear(98303, [](void*) {});
  EXPECT_EQ(table.GetGrowLimit(), 98304);
}
