#include "htdictionary/stringtrie.h"

#include <gtest/gtest.h>

using namespace ht;
using namespace std::string_view_literals;

namespace {

struct TCounted : TObject {
  TCounted() { ++Alive; }
  ~TCounted() override { --Alive; }
  static inline int Alive = 0;
};

}  // namespace

TEST(StringTrie, Finds) {
  TCounted ab, a, cjk, swapped;
  THtStringTrie trie(false);
  TObject* found = &a;
  trie.Add(u"ab", &ab);
  EXPECT_FALSE(trie.Find(u"a", found));  // on the way, without a value
  EXPECT_EQ(found, nullptr);
  trie.Add(u"a", &a);
  trie.Add(u"\u6F22", &cjk);
  trie.Add(u"\u226F", &swapped);

  const struct {
    std::u16string_view Text;
    TObject* Value;
  } kCases[] = {
      {u"a", &a},           {u"ab", &ab},   {u"\u6F22", &cjk}, {u"\u226F", &swapped},
      {u"b", nullptr},      {u"", nullptr}, {u"abc", nullptr}, {u"\u0061\u0000"sv.substr(0, 2), nullptr},
      {u"\u6161", nullptr},
  };
  for (const auto& row : kCases) {
    EXPECT_EQ(trie.Find(row.Text, found), row.Value != nullptr);
    EXPECT_EQ(found, row.Value);
    EXPECT_EQ(trie.ContainsKey(row.Text), row.Value != nullptr);
  }
  EXPECT_TRUE(trie.FindPChar(u"abc", 2, found) && found == &ab);

  // The empty key lies on the root, where only FindPChar looks.
  EXPECT_FALSE(trie.FindPChar(u"abc", 0, found));
  trie.Add({}, &cjk);
  EXPECT_TRUE(trie.FindPChar(nullptr, -1, found) && found == &cjk);
  EXPECT_FALSE(trie.Find({}, found));
  EXPECT_FALSE(trie.ContainsKey({}));
}

TEST(StringTrie, Owns) {
  {
    THtStringTrie trie(true), copy(true);
    auto* first = new TCounted;
    trie.Add(u"x", first);
    trie.Add(u"x", first);
    EXPECT_EQ(TCounted::Alive, 1);
    trie.Add(u"x", new TCounted);
    EXPECT_EQ(TCounted::Alive, 1);
    trie.Add(u"longer", new TCounted);
    copy.Add(u"old", new TCounted);
    copy.Assign(trie);
    EXPECT_EQ(TCounted::Alive, 2);
    TObject *a = nullptr, *b = nullptr;
    EXPECT_TRUE(trie.Find(u"longer", a) && copy.Find(u"longer", b) && a == b);
    EXPECT_FALSE(copy.ContainsKey(u"old"));
    copy.Add(u"x", new TCounted);  // the shared value stays; this one is the copy's
    copy.Add(u"l", new TCounted);
    EXPECT_EQ(TCounted::Alive, 4);
    copy.Assign(copy);
    EXPECT_TRUE(copy.ContainsKey(u"l"));
  }
  EXPECT_EQ(TCounted::Alive, 0);
}
