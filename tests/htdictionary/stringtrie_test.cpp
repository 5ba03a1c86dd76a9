#include "htdictionary/stringtrie.h"

#include <gtest/gtest.h>

using namespace ht;

namespace {

struct TCounted : TObject {
  TCounted() { ++Alive; }
  ~TCounted() override { --Alive; }
  static inline int Alive = 0;
};

}  // namespace

TEST(StringTrie, Finds) {
  TCounted ab, a, han, swapped;
  THtStringTrie trie(false);
  TObject* found = &a;
  trie.Add(u"ab", &ab);
  EXPECT_FALSE(trie.Find(u"a", found) || found);  // on the way, without a value
  trie.Add(u"a", &a);
  trie.Add(u"\u6F22", &han);
  trie.Add(u"\u226F", &swapped);

  const std::pair<std::u16string_view, TObject*> kCases[] = {
      {u"a", &a},     {u"ab", &ab},    {u"\u6F22", &han}, {u"\u226F", &swapped},
      {u"", nullptr}, {u"b", nullptr}, {u"abc", nullptr}, {u"\u6161", nullptr}};
  for (const auto& [text, value] : kCases) {
    EXPECT_EQ(trie.Find(text, found), value != nullptr);
    EXPECT_EQ(found, value);
    EXPECT_EQ(trie.ContainsKey(text), value != nullptr);
  }
  EXPECT_TRUE(trie.FindPChar(u"abc", 2, found) && found == &ab);
  // The empty key lies on the root, where only FindPChar looks.
  EXPECT_FALSE(trie.FindPChar(u"abc", 0, found));
  trie.Add({}, &han);
  EXPECT_TRUE(trie.FindPChar(nullptr, -1, found) && found == &han);
  EXPECT_FALSE(trie.Find({}, found) || trie.ContainsKey({}));
}

TEST(StringTrie, Owns) {
  {
    THtStringTrie trie(true), copy(true);
    auto* first = new TCounted;
    trie.Add(u"x", first);
    trie.Add(u"x", first);
    trie.Add(u"longer", new TCounted);
    copy.Add(u"old", new TCounted);
    EXPECT_EQ(TCounted::Alive, 3);
    copy.Assign(trie);
    trie.Add(u"y", new TCounted);
    EXPECT_EQ(TCounted::Alive, 3);
    TObject *a = nullptr, *b = nullptr;
    EXPECT_TRUE(trie.Find(u"longer", a) && copy.Find(u"longer", b) && a == b);
    EXPECT_FALSE(copy.ContainsKey(u"old") || copy.ContainsKey(u"y"));
    copy.Add(u"x", new TCounted);  // the shared value lives on; this one is the copy's
    copy.Add(u"l", new TCounted);
    EXPECT_EQ(TCounted::Alive, 5);
    copy.Assign(copy);
    EXPECT_TRUE(copy.ContainsKey(u"l"));
  }
  EXPECT_EQ(TCounted::Alive, 0);
}
