#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <random>

#include "htruntime/exception.h"
#include "htutils/faststringlist.h"
#include "htutils/idlist.h"
#include "htutils/objectlist.h"

using namespace ht;

namespace {

struct TCounted : TObject {
  explicit TCounted(int number = 0) : Number(number) { ++Alive; }
  ~TCounted() override { --Alive; }
  const int Number;
  static inline int Alive = 0;
};

std::u16string Keys(const TIDList& list) {
  std::u16string text;
  for (int32_t i = 0; i < list.GetCount(); ++i) text += static_cast<char16_t>(list.Get(i));
  return text;
}

}  // namespace

// Random adding and deleting against a vector that is kept in order by a stable insertion.
TEST(IDList, KeepsOrderOfArrival) {
  using TEntry = std::pair<int32_t, TObject*>;
  std::mt19937 random(2);
  TIDList list(0);
  std::vector<TEntry> model;
  for (int i = 0; i < 3000; ++i) {
    const auto key = static_cast<int32_t>(random() % 40) - 20;
    auto* object = reinterpret_cast<TObject*>(static_cast<intptr_t>(i) * 8 + 8);
    const auto place = std::upper_bound(model.begin(), model.end(), key,
                                        [](int32_t k, const TEntry& e) { return k < e.first; });
    EXPECT_EQ(list.AddObject(key, object), static_cast<int32_t>(place - model.begin()));
    model.insert(place, {key, object});
    if (i % 3 == 0) {
      const auto at = static_cast<int32_t>(random() % model.size());
      list.Delete(at);
      model.erase(model.begin() + at);
    }
  }
  ASSERT_EQ(list.GetCount(), static_cast<int32_t>(model.size()));
  for (int32_t i = 0; i < list.GetCount(); ++i) {
    const auto& [key, object] = model[static_cast<size_t>(i)];
    ASSERT_TRUE(list.Get(i) == key && list.GetObject(i) == object && list.IndexOfObject(object) == i);
  }
  for (int32_t key = -22; key < 22; ++key) {
    const auto place = std::lower_bound(model.begin(), model.end(), TEntry(key, nullptr));
    const bool known = place != model.end() && place->first == key;
    int32_t index = -9;
    EXPECT_EQ(list.Find(key, index), known);
    EXPECT_EQ(index, static_cast<int32_t>(place - model.begin()));
    EXPECT_EQ(list.IndexOf(key), known ? index : -1);
  }
}

TEST(IDList, Sorting) {
  TIDList list(0);
  list.SetSorted(false);
  std::mt19937 random(4);
  for (int i = 0; i < 500; ++i) list.Add(static_cast<int32_t>(random() % 100) - 50);
  EXPECT_GE(list.IndexOf(list.Get(499)), 0);  // unsorted: from the front
  EXPECT_EQ(list.IndexOf(77), -1);
  list.SetSorted(true);
  int32_t index;
  for (int32_t i = 1; i < 500; ++i)
    EXPECT_LE(static_cast<uint32_t>(list.Get(i - 1)), static_cast<uint32_t>(list.Get(i)));
  EXPECT_TRUE(list.FindCardinal(static_cast<uint32_t>(-1), index) &&
              (index == 0 || list.Get(index - 1) != -1));
  EXPECT_FALSE(list.FindCardinal(0xFFFFFF00u, index));

  TIDList plain(0);
  for (int32_t c : {u'a', u'c', u'a'}) plain.Add(c);
  EXPECT_EQ(Keys(plain), u"aac");
  plain.SetSorted(false);
  plain.Insert(3, u'b');
  plain.InsertObject(0, u'z', &plain);
  plain.Put(1, u'q');
  plain.Exchange(0, 4);
  EXPECT_EQ(Keys(plain), u"bqacz");
  EXPECT_EQ(plain.GetObject(4), &plain);
  plain.Sort();
  EXPECT_EQ(Keys(plain), u"abcqz");
}

TEST(IDList, Growth) {
  TIDList list(0);
  std::vector<int32_t> capacities;
  for (int i = 0; i < 120; ++i) {
    list.Add(i);
    if (capacities.empty() || capacities.back() != list.GetCapacity())
      capacities.push_back(list.GetCapacity());
  }
  EXPECT_EQ(capacities, (std::vector<int32_t>{4, 8, 12, 28, 44, 60, 76, 95, 118, 147}));
  list.SetCapacity(3);
  EXPECT_EQ(list.GetCount(), 3);
  list.Clear();
  EXPECT_EQ(list.GetCount(), 0);
}

TEST(IDList, Errors) {
  TIDList list(4);
  list.Add(5);
  const auto message = [](const std::function<void()>& work) -> std::string {
    try {
      work();
    } catch (const EStringListError& error) {
      return error.what();
    }
    return "";
  };
  const std::pair<std::function<void()>, const char*> kSorted[] = {
      {[&] { list.Put(0, 1); }, "SSortedListError"},
      {[&] { list.Insert(0, 1); }, "SSortedListError"},
      {[&] { list.Exchange(0, 0); }, "SSortedListError"},
      {[&] { list.Get(1); }, "SListIndexError"},
      {[&] { list.Get(-1); }, "SListIndexError"},
      {[&] { list.GetObject(1); }, "SListIndexError"},
      {[&] { list.PutObject(1, nullptr); }, "SListIndexError"},
      {[&] { list.Delete(1); }, "SListIndexError"},
      {[&] { list.SetCapacity(-1); }, "SListIndexError"},
      {[&] { list.Add(5); }, ""}};
  for (const auto& [work, text] : kSorted) EXPECT_EQ(message(work), text);
  list.SetDuplicates(2);
  EXPECT_EQ(message([&] { list.Add(5); }), "SDuplicateString");
  list.SetSorted(false);
  EXPECT_EQ(message([&] { list.Insert(3, 1); }), "SListIndexError");
  EXPECT_EQ(message([&] { list.Put(2, 1); }), "SListIndexError");
  EXPECT_EQ(message([&] { list.Add(5); }), "");

  list.PutObject(0, new TCounted);
  list.FreeObjects();
  EXPECT_TRUE(TCounted::Alive == 0 && list.GetCount() == 3 && !list.GetObject(0));
}

TEST(ObjectList, Owns) {
  for (bool owns : {false, true}) {
    std::vector<TCounted*> all;
    for (int i = 0; i < 8; ++i) all.push_back(new TCounted(i));
    {
      THtObjectList list(owns);
      for (TCounted* object : all) list.Add(object);
      list.Delete(0);
      list.Remove(all[1]);
      list.Put(0, all[2]);  // the same again
      EXPECT_EQ(list.Extract(all[3]), all[3]);
      list.Sort([](void* a, void* b) {
        return static_cast<TCounted*>(static_cast<TObject*>(b))->Number -
               static_cast<TCounted*>(static_cast<TObject*>(a))->Number;
      });
      EXPECT_TRUE(list.FirstItem() == all[7] && list.LastItem<TCounted>()->Number == 2 &&
                  list.IndexOf(all[6]) == 1);
      EXPECT_EQ(TCounted::Alive, owns ? 6 : 8);
      if (owns) {
        list.Clear();
        EXPECT_EQ(TCounted::Alive, 1);
        list.Add(new TCounted);
      }
    }
    EXPECT_EQ(TCounted::Alive, owns ? 1 : 8);
    if (owns) all = {all[3]};
    for (TCounted* object : all) delete object;
  }
}

TEST(FastStringList, OrderedByUnit) {
  TFastStringList list;
  const std::u16string_view names[] = {u"b", u"B", u"ab", u"a", u"\uFF41", u"\xD83D\xDE00", u"abc", u"_"};
  for (std::u16string_view name : names) list.AddObject(name, new TCounted);
  list.SetSorted(true);
  int32_t index;
  for (int32_t i = 1; i < list.GetCount(); ++i)
    EXPECT_LT(HtCompareStr(list.GetList()[i - 1].Text, list.GetList()[i].Text), 0);
  for (std::u16string_view name : names)
    EXPECT_TRUE(list.FindPChar(name.data(), static_cast<int32_t>(name.size()), index) &&
                list.Get(index) == name);
  for (std::u16string_view name : {u"A", u"aa", u"abcd", u"c", u"\uFFFF", u"!"})
    EXPECT_FALSE(list.FindPChar(name.data(), static_cast<int32_t>(name.size()), index));
  EXPECT_TRUE(list.FindPChar(u"abx", 2, index));
  EXPECT_TRUE(list.Find(u"B", index) && index == 0);

  TObject* const borrowed = list.GetObject(0);
  list.Delete(0);
  EXPECT_EQ(TCounted::Alive, 8);
  delete borrowed;
  list.OwnsObjects = true;
  list.Delete(1);
  EXPECT_EQ(TCounted::Alive, 6);
  list.FreeListObjects();
  EXPECT_EQ(TCounted::Alive, 0);
  list.AddObject(u"x"_hs, new TCounted);
  list.Clear();
  EXPECT_EQ(TCounted::Alive, 0);
}
