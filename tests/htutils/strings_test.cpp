#include <gtest/gtest.h>

#include "htutils/enumlookup.h"
#include "htutils/listobjects.h"
#include "htutils/strreplace.h"
#include "htutils/strsearch.h"

namespace ht {

HT_ENUM(TTestDisplay, uint8_t, dsNone, dsInlineBlock, dsListItem);

namespace {

// Every prefix length, since the comparison has a path for each width of words.
TEST(Strings, StartsAndEnds) {
  const std::u16string text = u"abcdefghijklmnopqrstuvwxyz";
  const std::string bytes(text.begin(), text.end());
  for (size_t n = 1; n <= text.size(); ++n) {
    EXPECT_TRUE(AnsiStartsWith(text, text.substr(0, n)));
    EXPECT_TRUE(AnsiStartsWith(bytes, bytes.substr(0, n)));
    for (size_t wrong = 0; wrong < n; ++wrong) {
      std::u16string prefix = text.substr(0, n);
      std::string bytePrefix = bytes.substr(0, n);
      prefix[wrong] ^= 0x100;
      bytePrefix[wrong] ^= 1;
      ASSERT_FALSE(AnsiStartsWith(text, prefix)) << n << " " << wrong;
      ASSERT_FALSE(AnsiStartsWith(bytes, bytePrefix)) << n << " " << wrong;
    }
  }
  EXPECT_FALSE(AnsiStartsWith(u"abc", u""));
  EXPECT_FALSE(AnsiStartsWith("", ""));
  EXPECT_FALSE(AnsiStartsWith(u"ab", u"abc"));
  EXPECT_FALSE(AnsiStartsWith(u"Abc", u"abc"));
  EXPECT_TRUE(AnsiEndsWith(u"abc", u"bc"));
  EXPECT_TRUE(AnsiEndsWith(u"abc", u""));
  EXPECT_TRUE(AnsiEndsWith(u"", u""));
  EXPECT_FALSE(AnsiEndsWith(u"bc", u"abc"));
}

TEST(Strings, FindCharAtEveryPlaceAndStart) {
  for (int32_t length = 0; length < 40; ++length) {
    std::u16string text(static_cast<size_t>(length), u'.');
    for (int32_t place = 1; place <= length; ++place) {
      text.assign(static_cast<size_t>(length), u'.');
      text[static_cast<size_t>(place) - 1] = u'Ж';
      for (int32_t start = -1; start <= length + 2; ++start)
        ASSERT_EQ(FindChar(u'Ж', text, start), start <= place ? place : 0)
            << length << " " << place << " " << start;
      ASSERT_EQ(FindChar(u'\x16', text), 0) << "not by the low byte";
    }
  }
  EXPECT_EQ(FindChar('b', "abcb", 3), 4);
  EXPECT_EQ(FindChar('b', "abcb", 5), 0);
  EXPECT_EQ(FindChar('x', "abcb"), 0);
  EXPECT_EQ(FindChar('a', "", 1), 0);
}

TEST(Strings, SmallTests) {
  const hstring words[] = {u"a"_hs, u"bc"_hs, u""_hs};
  EXPECT_TRUE(StrIn(u"bc", words, 1));
  EXPECT_FALSE(StrIn(u"", words, 1)) << "beyond high";
  EXPECT_TRUE(StrIn(u"", words, 2));
  EXPECT_FALSE(StrIn(u"a", words, -1));
  constexpr std::u16string_view kViews[] = {u"x", u"y"};
  EXPECT_TRUE(StrIn(u"y", kViews, 1));
  EXPECT_TRUE(CompCardinal(0xFFFFFFFF, 1) == 1 && CompCardinal(1, 0x80000000) == -1 &&
              CompCardinal(7, 7) == 0);
  EXPECT_TRUE(Between(5, 5, 5) && Between(0.5f, 0.f, 1.f));
  EXPECT_FALSE(Between(-1, 0, 9) || Between(1.01f, 0.f, 1.f));
  EXPECT_EQ(Coalesce(u""_hs, u"b"_hs), u"b");
  EXPECT_TRUE(CharLower(u'Z') == u'z' && CharLower(u'Ä') == u'Ä' && AnsiCharLower('[') == '[');
  hstring list;
  AddStr(list, u"a"_hs, u", ");
  AddStr(list, u"b"_hs, u", ");
  AddStr(list, list, u";");
  EXPECT_EQ(list, u"a, b;a, b");
}

TEST(Strings, Blanks) {
  struct TRow {
    std::u16string_view text;
    bool blank, blankOrNbsp;
  };
  constexpr TRow kRows[] = {
      {u"", true, true},          {u" ", true, true},
      {u"\x1\x1F ", true, false}, {u" \t\r\n\xA0", false, true},
      {u"  x", false, false},     {u"  \x2000", false, false},
      {u"x ", false, false},      {u"     \x21", false, false},
  };
  for (const TRow& row : kRows) {
    EXPECT_EQ(BlankString(row.text), row.blank) << HtToUtf8(row.text);
    EXPECT_EQ(BlankOrNBSP(row.text), row.blankOrNbsp) << HtToUtf8(row.text);
  }
  EXPECT_TRUE(BlankString("\t \x01"));
  EXPECT_FALSE(BlankString(" \xA0")) << "a byte above 127 is no blank";
}

TEST(Strings, Replace) {
  struct TRow {
    const char16_t *text, *from, *to, *result;
  };
  // clang-format off
  constexpr TRow kRows[] = {
      {u"a.b.c", u".", u"-", u"a-b-c"},       {u"aaa", u"aa", u"b", u"ba"},
      {u"abab", u"ab", u"abab", u"abababab"}, {u"xax", u"x", u"", u"a"},
      {u"aaaa", u"a", u"", u""},              {u"abc", u"", u"x", u"abc"},
      {u"ab", u"abc", u"x", u"ab"},           {u"abcab", u"abc", u"", u"ab"},
      {u"aab", u"ab", u"x", u"ax"},           {u"", u"a", u"b", u""},
      {u"one", u"z", u"longer", u"one"},      {u"äöä", u"ä", u"ae", u"aeöae"},
  };
  // clang-format on
  for (const TRow& row : kRows)
    EXPECT_EQ(ReplaceStr(row.text, row.from, row.to), row.result) << HtToUtf8(row.text);

  // Far beyond one step of growth.
  std::u16string text, expected;
  for (int i = 0; i < 30000; ++i) {
    text += u"ab&";
    expected += u"ab&amp;amp;";
  }
  EXPECT_EQ(ReplaceStr(text, u"&", u"&amp;amp;"), expected);
  EXPECT_EQ(ReplaceStr(expected, u"&amp;amp;", u"&"), text);

  const hstring shared(u"no hit");
  hstring same = shared;
  ReplaceChar(same, u'z', u'y');
  EXPECT_TRUE(same.SameStorage(shared));
  EXPECT_TRUE(ReplaceStr(shared, u"zz", u"y").SameStorage(shared));
  ReplaceChar(same, u'o', u'0');
  EXPECT_EQ(same, u"n0 hit");
  EXPECT_EQ(shared, u"no hit");
}

TEST(Strings, Tokens) {
  struct TRow {
    const char16_t *text, *delimiters;
    bool remove;
    const char16_t *token, *rest;
  };
  constexpr TRow kRows[] = {
      {u",a,b", u",", true, u"a", u"b"},   {u",a,b", u",", false, u",a", u",b"},
      {u"a;,b", u",;", true, u"a", u",b"}, {u"a;,b", u",;", false, u"a", u";,b"},
      {u"word", u" ", true, u"word", u""}, {u"word", u" ", false, u"word", u""},
      {u"a,", u",", true, u"a", u""},      {u"a,", u",", false, u"a", u","},
      {u",,", u",", true, u"", u""},       {u",,", u",", false, u",,", u""},
      {u"", u",", true, u"", u""},         {u"a,b", u"", true, u"", u"a,b"},
  };
  for (const TRow& row : kRows) {
    hstring text = row.text;
    std::u16string_view view = row.text;
    EXPECT_EQ(Q_StrTok(text, row.delimiters, row.remove), row.token);
    EXPECT_EQ(text, row.rest) << HtToUtf8(row.text) << row.remove;
    EXPECT_EQ(Q_StrTok(view, row.delimiters, row.remove), row.token);
    EXPECT_EQ(view, row.rest);
  }
}

TEST(Strings, EnumerationNames) {
  int32_t value = 99;
  EXPECT_TRUE(IsEnum(u"ds-list-item", HtEnumOf<TTestDisplay>(), value));
  EXPECT_EQ(value, dsListItem);
  EXPECT_TRUE(IsEnum2(u"ds", u"Inline-Block", HtEnumOf<TTestDisplay>(), value));
  EXPECT_EQ(value, dsInlineBlock);
  value = 99;
  for (const char16_t* name : {u"", u"-", u"block", u"dsnone", u"none "})
    EXPECT_FALSE(IsEnum2(u"ds", name, HtEnumOf<TTestDisplay>(), value)) << HtToUtf8(name);
  EXPECT_FALSE(IsEnum(std::u16string(500, u'x') + u"-", HtEnumOf<TTestDisplay>(), value));
  EXPECT_EQ(value, 99);
  TTestDisplay display = dsListItem;
  EXPECT_TRUE(IsEnum2(u"ds", u"n-o-n-e", display));
  EXPECT_EQ(display, dsNone);
  EXPECT_FALSE(IsEnum(u"none", display));
}

int Alive = 0;
struct TCounted : TObject {
  TCounted() { ++Alive; }
  ~TCounted() override { --Alive; }
};

TEST(Strings, FreeingObjectsKeepsTheEntries) {
  TList list;
  list.Add(static_cast<TObject*>(new TCounted));
  list.Add(nullptr);
  FreeListObjects(list);
  EXPECT_EQ(list.GetCount(), 2);
  TStringList strings;
  strings.AddObject(u"a", new TCounted);
  strings.Add(u"b");
  FreeStringListObjects(strings);
  EXPECT_EQ(strings.GetCount(), 2);
  EXPECT_EQ(Alive, 0);
}

}  // namespace
}  // namespace ht
