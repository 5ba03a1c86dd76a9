// The dictionaries with keys of other kinds than text.

#include <gtest/gtest.h>
#include <map>
#include <random>

#include "htdictionary/htdictionary.h"

using namespace ht;

namespace {

struct TCounted : TObject {
  TCounted() { ++Alive; }
  ~TCounted() override { --Alive; }
  static inline int Alive = 0;
};

struct TWord {
  uint8_t Length = 0;
  char Text[255] = {};

  explicit TWord(std::string_view text) : Length(static_cast<uint8_t>(text.size())) {
    text.copy(Text, text.size());
  }
};

}  // namespace

TEST(Dictionaries, OwnersFree) {
  for (bool owns : {false, true}) {
    std::vector<TCounted*> all(7);
    for (TCounted*& object : all) object = new TCounted;
    TObject* extracted;
    {
      THtIdObjectDictionary table(4, owns);
      for (uint32_t key = 0; key < 6; ++key) table.Add(key, all[key]);
      const int32_t refused = table.Add(3, all[6]);
      EXPECT_LT(refused, 0);
      EXPECT_EQ(table.GetAt(~refused), all[3]);
      table.Put(0, all[6]);
      table.Put(0, all[6]);
      EXPECT_EQ(TCounted::Alive, owns ? 6 : 7);
      EXPECT_TRUE(table.Remove(1));
      EXPECT_FALSE(table.Remove(1));
      extracted = table.Extract(2);
      EXPECT_EQ(extracted, all[2]);
      EXPECT_EQ(table.Extract(2), nullptr);
      EXPECT_EQ(TCounted::Alive, owns ? 5 : 7);
      TCounted* found;
      EXPECT_TRUE(table.TryGetValue(3, found) && found == all[3] && table.ContainsKey(3));
      EXPECT_FALSE(table.TryGetValue(2, found) || found || table.ContainsKey(2) || table.Get(2));
    }
    EXPECT_EQ(TCounted::Alive, owns ? 1 : 7);
    if (owns) all = {static_cast<TCounted*>(extracted)};
    for (TCounted* object : all) delete object;
  }
}

// An Add that finds its key may still grow the table.
TEST(Dictionaries, GrowBeforeSearch) {
  THtIdPointerDictionary table(0);
  int item = 0;
  for (uint32_t key : {4u, 8u, 12u}) EXPECT_EQ(table.Add(key, &item), static_cast<int32_t>(key / 4));
  EXPECT_EQ(table.Add(12, &item), ~6);  // in a table of 8, behind 4, whose home is the same
  EXPECT_EQ(table.Add(8, &item), ~1);
}

TEST(Dictionaries, Virtual) {
  const auto number = [](const void* item) { return *static_cast<const uint32_t*>(item); };
  static const auto kNumber = number;
  THtVirtualDictionary table([](const void* item) { return kNumber(item) % 10; },
                             [](const void* a, const void* b) { return kNumber(a) == kNumber(b); });
  uint32_t numbers[100];
  for (uint32_t i = 0; i < 100; ++i) {
    numbers[i] = i / 2;
    EXPECT_EQ(table.Add(&numbers[i]) >= 0, i % 2 == 0);
  }
  const uint32_t sample = 49, absent = 50;
  EXPECT_EQ(table.GetAt(table.Find(&sample)), &numbers[98]);
  EXPECT_EQ(table.FindHashed(9, &sample), table.Find(&sample));
  EXPECT_EQ(table.GetAt(table.Find(&absent)), nullptr);
}

TEST(Dictionaries, Utf8) {
  const std::string longest(255, 'x');
  THtUTF8Dictionary table(0, HtNameOffset(&TWord::Text));
  TWord accented("na\xC3\xAFve"), full(longest), empty(""), again(longest);
  for (TWord* word : {&accented, &full, &empty}) EXPECT_GE(table.Add(word), 0);
  EXPECT_LT(table.Add(&again), 0);
  TWord* found;
  EXPECT_TRUE(table.Find(longest, found) && found == &full);
  EXPECT_FALSE(table.Find(longest + "x", found) || found);
  EXPECT_EQ(table.Get<TWord>(""), &empty);
  table.Put(&again);
  EXPECT_EQ(table.Get(longest), &again);

  // Equal keys side by side: the one that came first is found.
  EXPECT_EQ(table.GetAt(table.AddUnique(&full)), &full);
  EXPECT_EQ(table.Get(longest), &again);
  EXPECT_EQ(table.GetCount(), 4);

  // A place that a search gave is good even when the table has to grow.
  std::vector<TWord> words;
  for (int i = 0; i < 50; ++i) words.emplace_back(std::to_string(i * 37));
  for (TWord& word : words) {
    const uint32_t hash = ShaPerfectHashANSI(word.Text, word.Length);
    const int32_t index = table.FindHashed(hash, word.Text, word.Length);
    ASSERT_LT(index, 0);
    EXPECT_EQ(table.GetAt(table.AddWithIndex(hash, index, &word, word.Length, word.Text)), &word);
  }
  for (TWord& word : words) EXPECT_EQ(table.Get({word.Text, word.Length}), &word);
  int count = 0;
  table.Traverse<TWord>(&count, [](void* data, TWord*) { ++*static_cast<int*>(data); });
  EXPECT_EQ(count, 54);
}

TEST(Dictionaries, IntegerBox) {
  for (bool mix : {false, true}) {
    TShaIntegerBox box(0, mix);
    std::map<uint32_t, intptr_t> model;
    std::mt19937 random(5);
    for (int i = 0; i < 5000; ++i) {
      // Steps of 2^20 share their home unless they are mixed.
      const auto key = static_cast<uint32_t>(i % 2 ? random() : random() % 300 << 20);
      if (random() % 3 == 0) {
        EXPECT_EQ(box.Remove(key), model.erase(key) == 1);
        continue;
      }
      const int32_t slot = box.Add(key);
      EXPECT_EQ(slot >= 0, model.count(key) == 0);
      if (slot >= 0) box.SetValue(slot, model[key] = i);
    }
    for (const auto& [key, value] : model) {
      intptr_t found;
      EXPECT_TRUE(box.Find(key, found) && found == value);
    }
    size_t keys = 0;
    for (int32_t i = 0; const auto key = box.GetNext(i); ++keys) EXPECT_EQ(model.count(*key), 1u);
    EXPECT_EQ(keys, model.size());
    box.Clear();
    intptr_t value = 1;
    EXPECT_FALSE(box.Find(0, value) || value || box.GetCount());
  }
}
