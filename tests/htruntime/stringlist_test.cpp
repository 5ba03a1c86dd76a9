#include "htruntime/stringlist.h"

#include <cstdio>
#include <functional>
#include <gtest/gtest.h>

#include "htruntime/codepage.h"
#include "htruntime/exception.h"
#include "htruntime/stream.h"

namespace ht {
namespace {

std::u16string Joined(const TStringList& list) {
  std::u16string text;
  for (int32_t i = 0; i < list.GetCount(); ++i) {
    if (i > 0) text += u"|";
    text += list.Get(i).View();
  }
  return text;
}

void Fill(TStringList& list, std::initializer_list<const char16_t*> texts) {
  for (const char16_t* text : texts) list.Add(text);
}

TEST(StringList, KeepsObjectsBesideTexts) {
  TObject a, b, c;
  TStringList list;
  EXPECT_EQ(list.AddObject(u"a", &a), 0);
  list.InsertObject(0, u"b", &b);
  list.Insert(2, u"c");
  list.PutObject(2, &c);
  EXPECT_EQ(Joined(list), u"b|a|c");
  list.Exchange(0, 2);
  EXPECT_EQ(list.GetObject(0), &c);
  list.Delete(1);
  EXPECT_EQ(Joined(list), u"c|b");
  EXPECT_EQ(list.GetObject(1), &b);
  list.Put(0, u"d");
  EXPECT_EQ(list.GetObject(0), &c) << "a new text keeps the object";
  for (int i = 0; i < 1000; ++i) list.Insert(1, list.Get(0));
  EXPECT_EQ(list.GetCount(), 1002);
  EXPECT_EQ(list.GetObject(1001), &b);
}

TEST(StringList, SortedAddsByDuplicates) {
  struct TRow {
    TDuplicates duplicates;
    bool caseSensitive;
    const char16_t* content;
  };
  const TRow kRows[] = {
      {dupIgnore, false, u"a|b|C"},
      {dupAccept, false, u"a|A|b|B|C"},
      {dupIgnore, true, u"A|B|C|a|b"},
  };
  for (const TRow& row : kRows) {
    TStringList list;
    list.SetSorted(true);
    list.SetDuplicates(row.duplicates);
    list.SetCaseSensitive(row.caseSensitive);
    Fill(list, {u"b", u"a", u"A", u"C", u"B"});
    EXPECT_EQ(Joined(list), row.content);
  }
  TObject first, second;
  TStringList list;
  list.SetSorted(true);
  list.Add(u"a");
  EXPECT_EQ(list.AddObject(u"m", &first), 1);
  EXPECT_EQ(list.AddObject(u"M", &second), 1);
  EXPECT_EQ(list.GetObject(1), &first) << "ignored with its object";
}

TEST(StringList, FindGivesTheFirstOfEqualsOrThePlace) {
  TStringList list;
  list.SetDuplicates(dupAccept);
  Fill(list, {u"d", u"b", u"B", u"b"});
  list.SetSorted(true);
  struct TRow {
    const char16_t* text;
    bool found;
    int32_t index;
  };
  for (const TRow& row : {TRow{u"a", false, 0}, TRow{u"B", true, 0}, TRow{u"c", false, 3},
                          TRow{u"d", true, 3}, TRow{u"e", false, 4}}) {
    int32_t index = -7;
    EXPECT_EQ(list.Find(row.text, index), row.found);
    EXPECT_EQ(index, row.index);
    EXPECT_EQ(list.IndexOf(row.text), row.found ? row.index : -1);
  }
  list.SetCaseSensitive(true);
  EXPECT_EQ(Joined(list), u"B|b|b|d");
  EXPECT_EQ(list.IndexOf(u"b"), 1);
  list.SetSorted(false);
  EXPECT_EQ(list.IndexOf(u"D"), -1);
  list.SetCaseSensitive(false);
  EXPECT_EQ(list.IndexOf(u"D"), 3);
}

TEST(StringList, ErrorsInTheirWords) {
  struct TRow {
    std::function<void(TStringList&)> run;
    const char16_t* message;
  };
  const TRow kRows[] = {
      {[](TStringList& l) { l.Get(2); }, u"List index out of bounds (2)"},
      {[](TStringList& l) { l.GetObject(-1); }, u"List index out of bounds (-1)"},
      {[](TStringList& l) { l.PutObject(2, nullptr); }, u"List index out of bounds (2)"},
      {[](TStringList& l) { l.Delete(2); }, u"List index out of bounds (2)"},
      {[](TStringList& l) { l.SetSorted(false), l.Insert(3, u"x"); }, u"List index out of bounds (3)"},
      {[](TStringList& l) { l.SetSorted(false), l.Put(2, u"x"); }, u"List index out of bounds (2)"},
      {[](TStringList& l) { l.Put(0, u"x"); }, u"Operation not allowed on sorted list"},
      {[](TStringList& l) { l.Insert(0, u"x"); }, u"Operation not allowed on sorted list"},
      {[](TStringList& l) { l.Exchange(0, 1); }, u"Operation not allowed on sorted list"},
      {[](TStringList& l) { l.Add(u"A"); }, u"String list does not allow duplicates"},
  };
  for (const TRow& row : kRows) {
    TStringList list;
    Fill(list, {u"a", u"b"});
    list.SetSorted(true);
    list.SetDuplicates(dupError);
    try {
      row.run(list);
      ADD_FAILURE() << HtToUtf8(row.message);
    } catch (const EStringListError& error) {
      EXPECT_EQ(error.Message, row.message);
    }
    EXPECT_EQ(Joined(list), u"a|b");
  }
}

TEST(StringList, NamesAndValues) {
  TStringList list;
  Fill(list, {u"color=red", u"plain", u"=nameless", u"size=1=2"});
  EXPECT_EQ(list.GetName(3), u"size");
  EXPECT_EQ(list.GetValueFromIndex(3), u"1=2");
  EXPECT_EQ(list.GetName(1), u"");
  EXPECT_EQ(list.GetValue(u"COLOR"), u"red");
  EXPECT_EQ(list.GetValue(u"plain"), u"");
  EXPECT_EQ(list.GetValue(u""), u"nameless");
  list.SetValue(u"Color", u"blue");
  list.SetValue(u"new", u"x");
  list.SetValue(u"size", u"");
  list.SetValue(u"absent", u"");
  EXPECT_EQ(Joined(list), u"Color=blue|plain|=nameless|new=x");
  list.SetNameValueSeparator(u'l');
  EXPECT_EQ(list.IndexOfName(u"p"), 1);
}

TEST(StringList, TextInLines) {
  // clang-format off
  const std::pair<std::u16string_view, std::u16string_view> kRows[] = {
      {u"", u""},                        {u"a", u"a"},                      {u"a\r\n", u"a"},
      {u"a\r\n\r\nb", u"a||b"},          {u"a\nb\rc\r\n", u"a|b|c"},        {u"\n\r", u"|"},
      {u"a\r\r\nb", u"a||b"},            {std::u16string_view(u"x\0y\n", 4), std::u16string_view(u"x\0y", 3)},
  };
  // clang-format on
  for (const auto& [text, lines] : kRows) {
    TStringList list;
    list.Add(u"old");
    list.SetText(text);
    EXPECT_EQ(Joined(list), lines) << HtToUtf8(text);
    const hstring written = list.GetText();
    list.SetText(written);
    EXPECT_EQ(Joined(list), lines) << "read back";
  }
  TStringList list;
  Fill(list, {u"a\nb", u"c"});
  EXPECT_EQ(list.GetText(), u"a\nb\r\nc\r\n");
  list.SetText(list.Get(0));
  EXPECT_EQ(Joined(list), u"a|b") << "from an entry of its own";
}

TEST(StringList, FilesInEveryEncoding) {
  const std::pair<std::string, std::u16string_view> kRows[] = {
      {"\xEF\xBB\xBF\xD0\x96\r\nz", u"Ж|z"},
      {std::string("\xFF\xFE\x16\x04\n\0z\0", 8), u"Ж|z"},
      {std::string("\xFF\xFE\x16\x04\n\0z", 7), u"Ж|\xFFFD"},
      {std::string("\xFE\xFF\x04\x16\0\n\0z", 8), u"Ж|z"},
      {"\xC6\nz", u"Ж|z"},
  };
  const int32_t before = HtSystemCodePage();
  HtSetSystemCodePage(1251);
  for (const auto& [bytes, lines] : kRows) {
    TBytesStream stream(THtBytes(bytes.begin(), bytes.end()));
    TStringList list;
    list.LoadFromStream(stream);
    EXPECT_EQ(Joined(list), lines);
  }
  HtSetSystemCodePage(before);

  TStringList list, again;
  Fill(list, {u"中文", u"", u"\xD83D\xDE00"});
  const hstring name = HtFromUtf8(testing::TempDir() + "ht_strings_ж.txt");
  list.SaveToFile(name);
  again.LoadFromFile(name);
  EXPECT_EQ(Joined(again), Joined(list));
  std::remove(HtToUtf8(name).c_str());
  EXPECT_THROW(again.LoadFromFile(name), EFileStreamError);
}

}  // namespace
}  // namespace ht
