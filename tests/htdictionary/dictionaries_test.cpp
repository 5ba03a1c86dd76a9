#include <gtest/gtest.h>
#include <atomic>
#include <map>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "htdictionary/htdictionary.h"

using namespace ht;

namespace {

// Counts what is alive, so that a test sees every release.
struct TCounted : TObject {
  explicit TCounted(std::u16string_view name = {}) : Name(name) { ++Alive; }
  ~TCounted() override { --Alive; }

  hstring Name;
  static inline std::atomic<int> Alive = 0;
};

struct TRow {
  int Number = 0;
  hstring Name;
  THtTextSlice Slice;
};

uint32_t OneHash(const char16_t*, int32_t) { return 7; }
uint32_t LengthHash(const char16_t*, int32_t length) { return 0u - static_cast<uint32_t>(length % 3); }

// One form of the operations for all dictionaries with a text in the item. Items are owned here unless told.

struct TObjects : THtObjectDictionary {
  explicit TObjects(THtStringHashFunc hash)
      : THtObjectDictionary(0, true, HtNameOffset(&TCounted::Name), hash) {}
  static TObject* New(const hstring& name) { return new TCounted(name); }
  static void Free(TObject*) {}
  int32_t AddOwn(TObject* item) { return AddObject(item); }
};

struct TThreadObjects : THtThreadObjectDictionary {
  explicit TThreadObjects(THtStringHashFunc hash)
      : THtThreadObjectDictionary(0, true, HtNameOffset(&TCounted::Name), hash) {}
  static TObject* New(const hstring& name) { return new TCounted(name); }
  static void Free(TObject*) {}
  int32_t AddOwn(TObject* item) { return AddObject(item); }
};

template <class TDictionary>
struct TPointers : TDictionary {
  using TDictionary::TDictionary;
  static void* New(const hstring& name) { return new TRow{0, name, {name.Length(), name.Data()}}; }
  static void Free(void* item) { delete static_cast<TRow*>(item); }
  int32_t AddOwn(void* item) { return this->AddPointer(item); }
};

struct TNamed : TPointers<THtPointerDictionary> {
  explicit TNamed(THtStringHashFunc hash) : TPointers(0, HtNameOffset(&TRow::Name), hash) {}
};

struct TSliced : TPointers<THtVirtualStringDictionary> {
  explicit TSliced(THtStringHashFunc hash) : TPointers(0, HtSliceOffset(&TRow::Slice), hash) {}
};

template <class T>
class StringDictionaries : public testing::Test {};
using TDictionaries = testing::Types<TObjects, TThreadObjects, TNamed, TSliced>;
TYPED_TEST_SUITE(StringDictionaries, TDictionaries);

}  // namespace

// Random work against std::map; the names are few, so that each operation meets present and absent ones.
TYPED_TEST(StringDictionaries, AgreeWithMap) {
  for (THtStringHashFunc hash :
       {THtStringHashFunc(nullptr), THtStringHashFunc(OneHash), THtStringHashFunc(LengthHash)}) {
    TypeParam table(hash);
    using TItem = std::remove_pointer_t<decltype(table.Extract(u""))>;
    std::map<std::u16string, TItem*> model;
    std::mt19937 random(11);
    const auto drop = [&](const std::u16string& name) {
      table.Free(model[name]);
      model.erase(name);
    };
    for (int i = 0; i < 20000; ++i) {
      const std::u16string name(random() % 30, static_cast<char16_t>(u'a' + random() % 8));
      const bool known = model.count(name) == 1;
      TItem* const item = known ? model[name] : nullptr;
      TItem* found = nullptr;
      switch (random() % 12) {
        case 0:
          EXPECT_EQ(table.Find(name, found), known);
          EXPECT_EQ(found, item);
          break;
        case 1: {
          const std::u16string text = u"<" + name + u">";
          EXPECT_EQ(table.Find(text.data() + 1, static_cast<int32_t>(name.size()), found), known);
          EXPECT_EQ(found, item);
          break;
        }
        case 2: EXPECT_EQ(table.Get(name), item); break;
        case 3: EXPECT_EQ(table.ContainsKey(name), known); break;
        case 4:
          EXPECT_EQ(table.Remove(name), known);
          if (known) drop(name);
          break;
        case 5:
          EXPECT_EQ(table.RemoveHashed(table.Hash(name), name), known);
          if (known) drop(name);
          break;
        case 6:
        case 7:
          found = random() % 2 ? table.Extract(name) : table.ExtractHashed(table.Hash(name), name);
          EXPECT_EQ(found, item);
          if (!known) break;
          model.erase(name);
          EXPECT_GE(table.AddOwn(found), 0);
          model[name] = found;
          break;
        case 8: {
          TItem* fresh = table.New(name);
          if (known && random() % 2) {
            table.Put(name, item);  // the same again: nothing is freed
            if constexpr (std::is_void_v<TItem>)
              table.Free(fresh);
            else
              delete fresh;
            break;
          }
          table.PutHashed(table.Hash(name), name, fresh);
          if (known) table.Free(item);
          model[name] = fresh;
          break;
        }
        default: {
          const int32_t place =
              table.FindHashed(table.Hash(name), name.data(), static_cast<int32_t>(name.size()));
          EXPECT_EQ(place >= 0, known);
          if (known) {
            EXPECT_EQ(table.GetAt(place), item);
            const int32_t slot = table.Add(name, item);
            EXPECT_LT(slot, 0);
            EXPECT_EQ(table.GetAt(~slot), item);
          } else {
            model[name] = table.New(name);
            const int32_t slot = table.AddHashed(table.Hash(name), name, model[name]);
            EXPECT_EQ(table.GetAt(slot), model[name]);
          }
        }
      }
      ASSERT_EQ(table.GetCount(), static_cast<int32_t>(model.size()));
      ASSERT_FALSE(this->HasFailure()) << i;
    }

    std::multiset<TItem*> left, walked, traversed;
    for (const auto& entry : model) left.insert(entry.second);
    for (int32_t i = 0; TItem* item = table.GetNext(i);) walked.insert(item);
    table.Traverse(
        &traversed, +[](void* data, TItem* item) { static_cast<decltype(left)*>(data)->insert(item); });
    EXPECT_EQ(walked, left);
    EXPECT_EQ(traversed, left);
    for (TItem* item : left) table.Free(item);
    table.Clear(20);
    EXPECT_EQ(table.GetCount(), 0);
    EXPECT_FALSE(table.ContainsKey(u""));
  }
  EXPECT_EQ(TCounted::Alive, 0);
}

TEST(Dictionaries, OwnersFree) {
  for (bool owns : {false, true}) {
    std::vector<TCounted*> all;
    const auto make = [&] { return all.emplace_back(new TCounted); };
    {
      THtIdObjectDictionary table(4, owns);
      for (uint32_t key = 0; key < 6; ++key) table.Add(key, make());
      const int32_t refused = table.Add(3, all[0]);
      EXPECT_LT(refused, 0);
      EXPECT_EQ(table.GetAt(~refused), all[3]);
      table.Put(0, make());
      EXPECT_EQ(TCounted::Alive, owns ? 6 : 7);
      table.Put(0, all[6]);
      table.Remove(1);
      EXPECT_FALSE(table.Remove(1));
      EXPECT_EQ(TCounted::Alive, owns ? 5 : 7);
      TObject* out = table.Extract(2);
      EXPECT_EQ(out, all[2]);
      EXPECT_EQ(table.Extract(2), nullptr);
      EXPECT_EQ(TCounted::Alive, owns ? 5 : 7);
      TCounted* found;
      EXPECT_TRUE(table.TryGetValue(3, found) && found == all[3]);
      EXPECT_FALSE(table.TryGetValue(2, found) || found || table.ContainsKey(2));
      EXPECT_EQ(table.Get<TCounted>(4), all[4]);
      if (owns) delete out;
    }
    EXPECT_EQ(TCounted::Alive, owns ? 0 : 7);
    if (!owns)
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

TEST(Dictionaries, FieldOffsets) {
  struct TFirst {
    virtual ~TFirst() = default;
    int64_t Filler = 1;
  };
  struct TSecond : TFirst, TCounted {};  // its TObject does not lie at the start
  TSecond item;
  item.Name = u"x"_hs;
  THtObjectDictionary table(0, false, HtNameOffset(&TSecond::Name));
  table.AddObject(&item);
  EXPECT_EQ(table.Get<TSecond>(u"x"), &item);
  EXPECT_EQ(HtClassFieldOffset(&item), reinterpret_cast<intptr_t>(&item));
}

TEST(Dictionaries, SlicesOfAText) {
  const std::u16string_view text = u"one two one";
  TRow rows[] = {
      {1, {}, {3, &text[0]}}, {2, {}, {3, &text[4]}}, {3, {}, {3, &text[8]}}, {4, {}, {2, &text[0]}}};
  THtVirtualStringDictionary table(0, HtSliceOffset(&TRow::Slice));
  for (TRow& row : rows) {
    const uint32_t hash = table.Hash(row.Slice.View());
    const int32_t index =
        table.FindHashedVirtual(hash, row.Slice.Chars, static_cast<int32_t>(row.Slice.Length));
    EXPECT_EQ(table.GetAt(table.AddHashedVirtual(hash, index, &row)), &row);
  }
  EXPECT_EQ(table.GetCount(), 3);
  EXPECT_EQ(table.Get<TRow>(u"one")->Number, 3);  // replaced
  EXPECT_EQ(table.Get<TRow>(u"on")->Number, 4);   // the same start, another length
  EXPECT_EQ(table.Get<TRow>(u"two")->Number, 2);
}

TEST(Dictionaries, Virtual) {
  THtVirtualDictionary table(
      [](const void* item) { return static_cast<uint32_t>(*static_cast<const int*>(item) % 10); },
      [](const void* a, const void* b) {
        return *static_cast<const int*>(a) == *static_cast<const int*>(b);
      });
  std::vector<int> numbers(100);
  for (int i = 0; i < 100; ++i) numbers[static_cast<size_t>(i)] = i / 2;
  for (int& n : numbers) EXPECT_EQ(table.Add(&n) >= 0, (&n - numbers.data()) % 2 == 0);
  const int sample = 49, absent = 50;
  EXPECT_EQ(table.GetAt(table.Find(&sample)), &numbers[98]);
  EXPECT_EQ(table.FindHashed(9, &sample), table.Find(&sample));
  EXPECT_EQ(table.GetAt(table.Find(&absent)), nullptr);
}

namespace {

struct TWord {
  int Number = 0;
  uint8_t Length = 0;
  char Text[255] = {};

  TWord(int number, std::string_view text) : Number(number), Length(static_cast<uint8_t>(text.size())) {
    text.copy(Text, text.size());
  }
};

}  // namespace

TEST(Dictionaries, Utf8) {
  const std::string longest(255, 'x');
  THtUTF8Dictionary table(0, HtNameOffset(&TWord::Text));
  TWord a(1, "na\xC3\xAFve"), b(2, longest), c(3, ""), again(4, longest), d(5, "fi");
  for (TWord* word : {&a, &b, &c}) EXPECT_GE(table.Add(word), 0);
  EXPECT_LT(table.Add(&again), 0);
  TWord* found;
  EXPECT_TRUE(table.Find(longest, found) && found == &b);
  EXPECT_FALSE(table.Find(longest + "x", found) || found);
  EXPECT_EQ(table.Get<TWord>(""), &c);
  table.Put(&again);
  EXPECT_EQ(table.Get(longest), &again);

  // Equal keys side by side: the first is found.
  const int32_t slot = table.AddUnique(&b);
  EXPECT_EQ(table.GetAt(slot), &b);
  EXPECT_EQ(table.Get(longest), &again);
  EXPECT_EQ(table.GetCount(), 4);

  // A place that a search gave stays good over a growth.
  std::vector<TWord> words;
  for (int i = 0; i < 50; ++i) words.emplace_back(i, std::to_string(i * 37));
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
      const uint32_t key =
          i % 2 ? static_cast<uint32_t>(random()) : static_cast<uint32_t>(random() % 300) << 20;
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
    std::set<uint32_t> keys;
    for (int32_t i = 0; const auto key = box.GetNext(i);)
      EXPECT_EQ(model.count(*key), keys.insert(*key).second);
    EXPECT_EQ(keys.size(), model.size());
    box.Clear();
    intptr_t value = 1;
    EXPECT_FALSE(box.Find(0, value) || value || box.GetCount());
  }
}

TEST(Dictionaries, StringList) {
  for (bool owns : {false, true}) {
    TCounted borrowed;
    {
      THtStringList list(2, owns);
      auto* object = owns ? new TCounted : &borrowed;
      EXPECT_GE(list.Add(u"a"_hs, object), 0);
      EXPECT_GE(list.AddKey(u"b"_hs), 0);
      EXPECT_LT(list.Add(u"a"_hs, &borrowed), 0);  // refused, and not taken
      EXPECT_EQ(list.GetObject<TCounted>(u"a"), object);
      EXPECT_EQ(list.GetObject(u"b"), nullptr);
      EXPECT_EQ(list.GetObject(u"c"), nullptr);
      EXPECT_TRUE(list.HasKey(u"b") && !list.HasKey(u"c") && !list.HasKey(u""));
    }
    EXPECT_EQ(TCounted::Alive, 1);
  }
}

TEST(Dictionaries, SingleList) {
  THtSingleList list;
  list.AddWidth(u"fi"_hs, 7.25f);
  EXPECT_LT(list.AddWidth(u"fi"_hs, 9), 0);
  for (int i = 0; i < 100; ++i) list.AddWidth(hstring(static_cast<size_t>(i), u'm'), static_cast<float>(i));
  EXPECT_EQ(list.GetWidth(u"fi"), 7.25f);
  EXPECT_EQ(list.GetWidth(u"mm"), 2);
  EXPECT_EQ(list.GetWidth(u"if"), -1);
}

// Readers see each object whole, whatever the writers do meanwhile.
TEST(Dictionaries, Threads) {
  THtThreadObjectDictionary table(0, true, HtNameOffset(&TCounted::Name));
  for (int i = 0; i < 100; ++i) table.AddObject(new TCounted(hstring(static_cast<size_t>(i), u'k')));
  std::vector<std::thread> threads;
  std::atomic<int> misses = 0;
  for (int t = 0; t < 2; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 500; ++i) {
        const hstring name = hstring(static_cast<size_t>(i % 50 + 1), static_cast<char16_t>(u'0' + t));
        auto object = std::make_unique<TCounted>(name);
        if (table.AddObject(object.get()) >= 0) object.release();
        if (i % 3 == 0) table.Remove(name);
        std::unique_lock lock(table.GetLock());
        if (table.FindHashed(table.Hash(name), name) >= 0) table.RemoveHashed(table.Hash(name), name);
      }
    });
    threads.emplace_back([&] {
      for (size_t i = 0; i < 3000; ++i) {
        const std::u16string name(i % 100, u'k');
        TCounted* object = nullptr;
        misses += !table.Find(name, object) || object->Name != name || !table.ContainsKey(name);
        if (i % 500 == 0)
          table.Traverse(
              &misses, +[](void*, TObject*) {});
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(misses, 0);
  EXPECT_EQ(table.GetCount(), 100);
}
