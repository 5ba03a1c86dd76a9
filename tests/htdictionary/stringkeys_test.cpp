// The dictionaries whose key is a text in the item, all by the same random work.

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <thread>

#include "htdictionary/htdictionary.h"

using namespace ht;

namespace {

struct TRow : TObject {
  explicit TRow(const hstring& name) : Name(name), Slice{name.Length(), name.Data()} { ++Alive; }
  ~TRow() override { --Alive; }

  const hstring Name;
  const THtTextSlice Slice;
  static inline std::atomic<int> Alive = 0;
};

uint32_t OneHash(const char16_t*, int32_t) { return 7; }
uint32_t LengthHash(const char16_t*, int32_t length) { return 0u - static_cast<uint32_t>(length % 3); }

// `add` adds an item by its own name. Names are few, so that each operation meets present and absent ones.
template <class TDictionary, class TAdd>
void AgreesWithMap(TDictionary& table, bool owns, TAdd add) {
  std::map<std::u16string, TRow*> model;
  std::mt19937 random(11);
  for (int i = 0; i < 20000; ++i) {
    const std::u16string name(random() % 30, static_cast<char16_t>(u'a' + random() % 8));
    const std::u16string text = u"<" + name + u">";
    const char16_t* const chars = text.data() + 1;
    const auto length = static_cast<int32_t>(name.size());
    const uint32_t hash = table.Hash(name);
    TRow* const item = model.count(name) ? model[name] : nullptr;
    TRow* found = nullptr;
    switch (random() % 8) {
      case 0:
        EXPECT_EQ(random() % 2 ? table.Find(name, found) : table.Find(chars, length, found), item != nullptr);
        EXPECT_EQ(found, item);
        break;
      case 1: EXPECT_EQ(table.template Get<TRow>(name), item); break;
      case 2:
        EXPECT_EQ(table.ContainsKey(name.empty() ? std::u16string_view() : name), item != nullptr);
        break;
      case 3:
        EXPECT_EQ(random() % 2 ? table.Remove(name) : table.RemoveHashed(hash, name), item != nullptr);
        model.erase(name);
        if (!owns) delete item;
        break;
      case 4:
        EXPECT_EQ(random() % 2 ? table.Extract(name) : table.ExtractHashed(hash, name), item);
        EXPECT_TRUE(!item || add(item) >= 0);
        break;
      case 5: {
        TRow* const put = item && random() % 2 ? item : new TRow(name);  // the same again frees nothing
        random() % 2 ? table.Put(name, put) : table.PutHashed(hash, name, put);
        if (!owns && put != item) delete item;
        model[name] = put;
        break;
      }
      default: {
        const int32_t place = table.FindHashed(hash, chars, length);
        ASSERT_EQ(table.template GetAt<TRow>(place), item);
        if (!item) model[name] = new TRow(name);
        const int32_t slot =
            random() % 2 ? table.Add(name, model[name]) : table.AddHashed(hash, name, model[name]);
        ASSERT_EQ(slot < 0, item != nullptr);
        EXPECT_EQ(table.template GetAt<TRow>(std::max(slot, ~slot)), model[name]);
      }
    }
    ASSERT_EQ(TRow::Alive, static_cast<int>(model.size()));
    ASSERT_EQ(table.GetCount(), static_cast<int32_t>(model.size()));
    ASSERT_FALSE(testing::Test::HasFailure()) << i;
  }

  std::vector<TRow*> left, walked, traversed;
  for (const auto& entry : model) left.push_back(entry.second);
  for (int32_t i = 0; TRow* item = table.template GetNext<TRow>(i);) walked.push_back(item);
  table.template Traverse<TRow>(
      &traversed, [](void* data, TRow* item) { static_cast<decltype(left)*>(data)->push_back(item); });
  EXPECT_EQ(walked, traversed);
  EXPECT_TRUE(left.size() == walked.size() && std::is_permutation(left.begin(), left.end(), walked.begin()));
  table.Clear(20);
  EXPECT_TRUE(table.GetCount() == 0 && !table.ContainsKey(u""));
  EXPECT_EQ(TRow::Alive, owns ? 0 : static_cast<int>(left.size()));
  if (!owns)
    for (TRow* item : left) delete item;
}

}  // namespace

TEST(StringKeys, AgreeWithMap) {
  for (THtStringHashFunc hash : {static_cast<THtStringHashFunc>(nullptr), &OneHash, &LengthHash}) {
    for (bool owns : {false, true}) {
      THtObjectDictionary objects(0, owns, HtNameOffset(&TRow::Name), hash);
      AgreesWithMap(objects, owns, [&](TRow* item) { return objects.AddObject(item); });
      THtThreadObjectDictionary shared(0, owns, HtNameOffset(&TRow::Name), hash);
      AgreesWithMap(shared, owns, [&](TRow* item) { return shared.AddObject(item); });
    }
    THtPointerDictionary pointers(0, HtNameOffset(&TRow::Name), hash);
    AgreesWithMap(pointers, false, [&](TRow* item) { return pointers.AddPointer(item); });
    THtVirtualStringDictionary slices(0, HtSliceOffset(&TRow::Slice), hash);
    AgreesWithMap(slices, false, [&](TRow* item) {
      const uint32_t key = slices.Hash(item->Name);
      const int32_t index = slices.FindHashedVirtual(key, item->Name.Data(), item->Name.Length());
      return slices.AddHashedVirtual(key, index, item);
    });
  }
}

TEST(StringKeys, SlicesOfAText) {
  const std::u16string_view text = u"one two one";
  struct TPiece {
    int Number;
    THtTextSlice Slice;
  } pieces[] = {{1, {3, &text[0]}}, {2, {3, &text[4]}}, {3, {3, &text[8]}}, {4, {2, &text[0]}}};
  THtVirtualStringDictionary table(0, HtSliceOffset(&TPiece::Slice), OneHash);
  for (TPiece& piece : pieces)
    table.AddHashedVirtual(
        7, table.FindHashedVirtual(7, piece.Slice.Chars, static_cast<int32_t>(piece.Slice.Length)), &piece);
  EXPECT_EQ(table.GetCount(), 3);
  EXPECT_EQ(table.Get<TPiece>(u"one")->Number, 3);  // replaced
  EXPECT_EQ(table.Get<TPiece>(u"on")->Number, 4);   // the same start, another length
}

TEST(StringKeys, FieldOffsets) {
  struct TFirst {
    virtual ~TFirst() = default;
    int64_t Filler = 1;
  };
  struct TSecond : TFirst, TRow {  // its TObject does not lie at the start
    using TRow::TRow;
  };
  TSecond item(u"x"_hs);
  THtObjectDictionary table(0, false, HtNameOffset(&TSecond::Name));
  table.AddObject(&item);
  EXPECT_EQ(table.Get<TSecond>(u"x"), &item);
  EXPECT_EQ(HtClassFieldOffset(&item), reinterpret_cast<intptr_t>(&item));
}

TEST(StringKeys, StringList) {
  for (bool owns : {false, true}) {
    TRow borrowed({});
    {
      THtStringList list(2, owns);
      TRow* object = owns ? new TRow({}) : &borrowed;
      EXPECT_GE(list.Add(u"a"_hs, object), 0);
      EXPECT_GE(list.AddKey(u"b"_hs), 0);
      EXPECT_LT(list.Add(u"a"_hs, &borrowed), 0);  // refused, and not taken
      EXPECT_EQ(list.GetObject<TRow>(u"a"), object);
      EXPECT_EQ(list.GetObject(u"b"), nullptr);
      EXPECT_EQ(list.GetObject(u"c"), nullptr);
      EXPECT_TRUE(list.HasKey(u"b") && !list.HasKey(u"c") && !list.HasKey(u""));
    }
    EXPECT_EQ(TRow::Alive, 1);
  }
}

TEST(StringKeys, SingleList) {
  THtSingleList list;
  for (int i = 0; i < 100; ++i)
    list.AddWidth(hstring(static_cast<size_t>(i), u'm'), static_cast<float>(i) / 4);
  EXPECT_LT(list.AddWidth(u"mm"_hs, 9), 0);
  EXPECT_EQ(list.GetWidth(u"mm"), 0.5f);
  EXPECT_EQ(list.GetWidth(u"if"), -1);
}

// Readers see each object whole, whatever the writers do meanwhile.
TEST(StringKeys, Threads) {
  THtThreadObjectDictionary table(0, true, HtNameOffset(&TRow::Name));
  for (size_t i = 0; i < 100; ++i) table.AddObject(new TRow(hstring(i, u'k')));
  std::atomic<int> misses = 0;
  const auto write = [&](char16_t own) {
    for (size_t i = 0; i < 500; ++i) {
      const hstring name(i % 50 + 1, own);
      table.AddObject(new TRow(name));
      if (i % 3 == 0) {
        table.Remove(name);
      } else {
        std::unique_lock lock(table.GetLock());
        table.RemoveHashed(table.Hash(name), name);
      }
    }
  };
  const auto read = [&] {
    for (size_t i = 0; i < 3000; ++i) {
      const std::u16string name(i % 100, u'k');
      TRow* row = nullptr;
      misses += !table.Find(name, row) || row->Name != name || !table.ContainsKey(name);
      if (i % 500 == 0)
        table.Traverse<TRow>(nullptr, [](void*, TRow* each) { EXPECT_GE(each->Name.Length(), 0); });
    }
  };
  std::thread threads[] = {std::thread(write, u'x'), std::thread(read), std::thread(write, u'y'),
                           std::thread(read)};
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(misses, 0);
  EXPECT_EQ(table.GetCount(), 100);
}
