#include "htdictionary/slottable.h"

#include <gtest/gtest.h>
#include <map>
#include <new>
#include <random>
#include <vector>

using namespace ht;

namespace {

void* Value(uint64_t n) { return reinterpret_cast<void*>(n + 1); }

// What must hold between operations: entries are told by key != slot, a run is ordered by home, and every slot on the
// way from home to an entry is taken.
void CheckOrder(const THtSlotTable& table) {
  const uint32_t mask = table.GetSize() - 1;
  int32_t live = 0;
  for (uint32_t slot = 0; slot <= mask; ++slot) {
    const auto distance = [&](uint32_t s) { return (s - table.KeyAt(static_cast<int32_t>(s))) & mask; };
    live += table.IsLive(slot);
    ASSERT_EQ(table.IsLive(slot), distance(slot) != 0) << slot;
    ASSERT_LE(distance((slot + 1) & mask), distance(slot) + 1) << slot;
  }
  ASSERT_EQ(live, table.GetCount());
}

struct TStep {
  const char* Name;
  uint32_t (*Key)(std::mt19937& random, uint32_t size);
  int32_t Most;  // entries
};

const TStep kKeys[] = {
    {"random", [](std::mt19937& random, uint32_t) { return static_cast<uint32_t>(random()); }, 3000},
    {"slot indexes",
     [](std::mt19937& random, uint32_t size) { return static_cast<uint32_t>(random()) % size; }, 3000},
    {"few homes", [](std::mt19937& random, uint32_t) { return static_cast<uint32_t>(random()) << 12 | 5; },
     300},
    {"at the top",
     [](std::mt19937& random, uint32_t) { return 0u - 1 - static_cast<uint32_t>(random()) % 40; }, 30},
    {"tiny", [](std::mt19937& random, uint32_t) { return static_cast<uint32_t>(random()) % 4 * 4; }, 3},
};

}  // namespace

// Random work on hostile keys against std::map, with the order of the slots checked on the way.
TEST(SlotTable, AgreesWithMap) {
  for (const TStep& step : kKeys) {
    SCOPED_TRACE(step.Name);
    std::mt19937 random(7);
    THtSlotTable table(0);
    std::map<uint32_t, void*> model;
    for (int i = 0; i < 30000; ++i) {
      const uint32_t key = step.Key(random, table.GetSize());
      const int32_t found = table.Find(key);
      ASSERT_EQ(found >= 0, model.count(key) == 1);
      if (found >= 0) {
        ASSERT_EQ(table.ValueAt(found), model[key]);
      }
      // Long stretches of growth and of shrinking.
      const bool fill = i / 3000 % 2 == 0 ? random() % 4 != 0 : random() % 4 == 0;
      if (found >= 0 && !fill) {
        ASSERT_EQ(table.Remove(found), model[key]);
        model.erase(key);
      } else if (found < 0 && fill && table.GetCount() < step.Most) {
        table.GrowIfFull();
        const int32_t place = table.Find(key);
        ASSERT_EQ(table.Insert(place, key, Value(static_cast<uint64_t>(i))), ~place);
        model[key] = Value(static_cast<uint64_t>(i));
      }
      if (i % 500 == 0) CheckOrder(table);
    }
    for (const auto& [key, value] : model) ASSERT_EQ(table.ValueAt(table.Find(key)), value);
    size_t seen = 0;
    for (int32_t at = 0, slot; (slot = table.NextSlot(at)) >= 0; ++seen)
      ASSERT_EQ(model.at(table.KeyAt(slot)), table.ValueAt(slot));
    EXPECT_EQ(seen, model.size());
  }
}

// Entries of one hash, told apart by their values: a run as long as the table.
TEST(SlotTable, EqualHashes) {
  for (uint32_t hash : {0u, 5u, 0xFFFFFFFFu}) {
    THtSlotTable table(0);
    const auto find = [&](void* value) {
      return table.Find(hash, [=](void* other) { return other == value; });
    };
    for (uint64_t n = 0; n < 200; ++n) {
      table.GrowIfFull();
      const int32_t place = find(Value(n));
      ASSERT_EQ(place, table.FindEnd(hash));
      table.Insert(place, hash, Value(n));
    }
    CheckOrder(table);
    for (uint64_t n = 0; n < 200; n += 2) table.Remove(find(Value(n)));
    CheckOrder(table);
    for (uint64_t n = 0; n < 200; ++n) EXPECT_EQ(find(Value(n)) >= 0, n % 2 == 1) << n;
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
  constexpr struct {
    int32_t Capacity;
    uint32_t Size;
    int32_t Limit;
  } kCases[] = {
      {-1, 4, 3},      {0, 4, 3},        {2, 4, 3},          {3, 8, 6},
      {5, 8, 6},       {6, 16, 12},      {95, 128, 96},      {96, 256, 192},
      {255, 512, 384}, {511, 1024, 768}, {2125, 4096, 3072}, {100001, 262144, 196608},
  };
  THtSlotTable table(0);
  for (const auto& row : kCases) {
    table.SetCapacity(row.Capacity);
    EXPECT_EQ(table.GetSize(), row.Size) << row.Capacity;
    EXPECT_EQ(table.GetGrowLimit(), row.Limit) << row.Capacity;
  }
  EXPECT_THROW(table.SetCapacity((1 << 30) + 1), std::bad_alloc);
  EXPECT_EQ(table.GetSize(), 262144u);

  // With entries a table grows only.
  table.SetCapacity(40);
  table.Insert(table.Find(9), 9, Value(9));
  table.SetCapacity(0);
  EXPECT_EQ(table.GetSize(), 64u);
  table.Clear(0, [](void* value) { EXPECT_EQ(value, Value(9)); });
  EXPECT_EQ(table.GetSize(), 4u);
  EXPECT_EQ(table.GetCount(), 0);
}

// 75 % up to 100,000 entries, 87.5 % above: the limit moves without the table.
TEST(SlotTable, GrowsAtItsLimit) {
  constexpr struct {
    int32_t Count;  // of entries when one more comes
    uint32_t Size;
    int32_t Limit;
  } kCases[] = {
      {3, 8, 6},
      {6, 16, 12},
      {49152, 131072, 98304},
      {98303, 131072, 98304},
      {98304, 262144, 196608},
      {196607, 262144, 196608},
      {196608, 262144, 229376},
      {229376, 524288, 458752},
  };
  THtSlotTable table(0);
  for (const auto& row : kCases) {
    while (table.GetCount() < row.Count) {
      const auto key = static_cast<uint32_t>(table.GetCount()) * 0x9E3779B1;
      table.GrowIfFull();
      table.Insert(table.Find(key), key, Value(key));
    }
    table.GrowIfFull();
    EXPECT_EQ(table.GetSize(), row.Size) << row.Count;
    EXPECT_EQ(table.GetGrowLimit(), row.Limit) << row.Count;
  }
  CheckOrder(table);
  table.Clear(98303, [](void*) {});
  EXPECT_EQ(table.GetGrowLimit(), 98304);
}
