#include "htruntime/list.h"

#include <gtest/gtest.h>
#include <string>

#include "htruntime/exception.h"

namespace ht {
namespace {

// Entries are the addresses of the letters of an alphabet; what comes and goes is written down.
class TLetterList : public TList {
  HT_CLASS(TLetterList, TList)

 public:
  std::string Log;

  explicit TLetterList(std::string_view letters = {}) {
    for (char c : letters) Add(At(c));
    Log.clear();
  }

  static void* At(char c) {
    static char alphabet[26];
    return alphabet + (c - 'a');
  }
  static char LetterOf(void* item) {
    return static_cast<char>('a' + (static_cast<char*>(item) - static_cast<char*>(At('a'))));
  }

  std::string Text() const {
    std::string text;
    for (int32_t i = 0; i < GetCount(); ++i) text += LetterOf(Get(i));
    return text;
  }

 protected:
  void Notify(void* item, TAction action) override {
    Log += "+!-"[action];
    Log += LetterOf(item);
  }
};

TEST(List, OperationsAndWhatTheyReport) {
  struct TRow {
    const char* name;
    void (*run)(TLetterList&);
    const char* content;
    const char* log;
  };
  using L = TLetterList;
  const TRow kRows[] = {
      {"add", [](L& l) { EXPECT_EQ(l.Add(L::At('x')), 4); }, "abcdx", "+x"},
      {"insert in front", [](L& l) { l.Insert(0, L::At('x')); }, "xabcd", "+x"},
      {"insert at the end", [](L& l) { l.Insert(4, L::At('x')); }, "abcdx", "+x"},
      {"put", [](L& l) { l.Put(1, L::At('x')); }, "axcd", "-b+x"},
      {"put the same", [](L& l) { l.Put(1, L::At('b')); }, "abcd", ""},
      {"delete", [](L& l) { l.Delete(0); }, "bcd", "-a"},
      {"remove", [](L& l) { EXPECT_EQ(l.Remove(L::At('d')), 3); }, "abc", "-d"},
      {"remove what is absent", [](L& l) { EXPECT_EQ(l.Remove(L::At('x')), -1); }, "abcd", ""},
      {"extract", [](L& l) { EXPECT_EQ(l.Extract(L::At('b')), L::At('b')); }, "acd", "!b"},
      {"extract what is absent", [](L& l) { EXPECT_EQ(l.Extract(L::At('x')), nullptr); }, "abcd", ""},
      {"exchange", [](L& l) { l.Exchange(0, 3); }, "dbca", ""},
      {"move up", [](L& l) { l.Move(0, 2); }, "bcad", ""},
      {"move down", [](L& l) { l.Move(3, 1); }, "adbc", ""},
      {"clear", [](L& l) { l.Clear(); }, "", "-d-c-b-a"},
      {"capacity", [](L& l) { l.SetCapacity(2); }, "ab", ""},
      {"sort", [](L& l) { l.Sort([](void* a, void* b) { return a < b   ? 1
                                                               : a > b ? -1
                                                                       : 0; }); }, "dcba", ""},
  };
  for (const TRow& row : kRows) {
    TLetterList list("abcd");
    row.run(list);
    EXPECT_EQ(list.Text(), row.content) << row.name;
    EXPECT_EQ(list.Log, row.log) << row.name;
  }
}

TEST(List, IndexErrorsNameTheIndex) {
  void (*const kCalls[])(TList&, int32_t) = {
      [](TList& l, int32_t i) { l.Get(i); },
      [](TList& l, int32_t i) { l.Put(i, nullptr); },
      [](TList& l, int32_t i) { l.Delete(i); },
      [](TList& l, int32_t i) { l.Insert(i == 1 ? 2 : i, nullptr); },
      [](TList& l, int32_t i) { l.Exchange(0, i); },
      [](TList& l, int32_t i) { l.Move(i, 0); },
  };
  for (const auto& call : kCalls)
    for (int32_t index : {-1, 1}) {
      TLetterList list("a");
      try {
        call(list, index);
        ADD_FAILURE() << index;
      } catch (const EListError& error) {
        EXPECT_TRUE(error.Message.View().starts_with(u"List index out of bounds ("));
      }
      EXPECT_EQ(list.Text(), "a");
    }
}

}  // namespace
}  // namespace ht
