#include "htruntime/codepage.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "htruntime/exception.h"
#include "htruntime/latin1.h"

namespace ht {
namespace {

using namespace std::string_literals;

std::string AllBytes() {
  std::string bytes(256, 0);
  for (size_t i = 0; i < 256; ++i) bytes[i] = static_cast<char>(i);
  return bytes;
}

std::string AsString(const THtBytes& bytes) { return {bytes.begin(), bytes.end()}; }

struct TPageRow {
  int32_t page;
  std::string bytes;
  std::u16string_view text;
};

const TPageRow kPages[] = {
    {866, "\x86\xEF", u"Жя"},
    {932, "\x93\xFA\x96\x7B\xB1", u"日本ｱ"},
    {936, "\xD6\xD0\xCE\xC4", u"中文"},
    {949, "\xC7\xD1\xB1\xDB", u"한글"},
    {950, "\xA4\xA4\xA4\xE5", u"中文"},
    {1250, "\xA3\xA5", u"ŁĄ"},
    {1251, "\xC6", u"Ж"},
    {1252, "\x80\x8C\xE9", u"€Œé"},
    {1253, "\xD9\xDC", u"Ωά"},
    {1254, "\xF0\xDD", u"ğİ"},
    {1255, "\xE0\xE1\xC8", u"אב\x05B8"},
    {1256, "\xD3\xE1", u"سل"},
    {1257, "\xD0\xFE", u"Šž"},
    {1258, "\xF5\xF0", u"ơđ"},
    {20866, "\xF6\xD1", u"Жя"},
    {28592, "\xA3\xA1", u"ŁĄ"},
    {28595, "\xB6\xEF", u"Жя"},
    {28596, "\xD3\xE4", u"سل"},
    {28597, "\xD9\xDC", u"Ωά"},
    {65001, "\xD0\x96\xE2\x82\xAC", u"Ж€"},
};

TEST(CodePage, EveryPageBothWays) {
  for (const TPageRow& row : kPages) {
    EXPECT_TRUE(HtCodePageExists(row.page)) << row.page;
    const std::string bytes = "<" + row.bytes + ">";
    const hstring text = hstring::Concat(u"<", row.text) + u">";
    EXPECT_EQ(HtBytesToText(bytes, row.page), text) << row.page;
    EXPECT_EQ(AsString(HtTextToBytes(text, row.page)), bytes) << row.page;
    EXPECT_TRUE(HtBytesToText(std::string_view(), row.page).Empty());
    EXPECT_TRUE(HtTextToBytes({}, row.page).empty());
  }
}

TEST(CodePage, UnknownPages) {
  for (int32_t page : {0, 1, 28591, 1259, -1, 1200}) {
    EXPECT_FALSE(HtCodePageExists(page));
    EXPECT_THROW(HtBytesToText("a"s, page), EConvertError);
    EXPECT_THROW(HtTextToBytes(u"a", page), EConvertError);
  }
  try {
    HtSetSystemCodePage(4711);
    ADD_FAILURE();
  } catch (const EConvertError& error) {
    EXPECT_EQ(error.Message, u"Code page 4711 is not supported");
  }
}

TEST(CodePage, MalformedAndUndefinedBytes) {
  const TPageRow kRows[] = {
      {1252, "\x81\x8D\x9D", u"\x81\x8D\x9D"},  // controls, as in the Encoding Standard
      {1253, "\xAA\xD2\x81", u"\xFFFD\xFFFD\x81"},
      {28596, "\xA1\xC7", u"\xFFFDا"},
      {932, "a\x93", u"a\xFFFD"},          // cut off
      {932, "\x93<b>", u"\xFFFD<b>"},      // an ASCII byte behind a lead is kept
      {932, "\xA0\x93\xFA", u"\xFFFD日"},  // no lead at all
      {936, "\xFF\xD6\xD0", u"\xFFFD中"},
      {949, "\xC9\xA1\xC7\xD1", u"\xFFFD한"},  // a pair that is not in the page
      {950, "\xA4\xA4\xA1<\xA4\xA4", u"中\xFFFD<中"},
      {65001, "a\xC3(", u"a\xFFFD("},
  };
  for (const TPageRow& row : kRows) EXPECT_EQ(HtBytesToText(row.bytes, row.page), row.text) << row.page;
}

TEST(CodePage, CharactersThatThePageHasNot) {
  const TPageRow kRows[] = {
      {1252, "?x?", u"Жx\xD83D\xDE00"},
      {1251, "??\xC6", u"\xD83D\xDE00\xD800Ж"},
      {936, "?\xD6\xD0?", u"\xD83D\xDE00中\xD800"},
      {932, "??a",
       u"\xDE00\xD83D"
       "a"},
      {65001, "\xEF\xBF\xBDz", u"\xD800z"},
  };
  for (const TPageRow& row : kRows)
    EXPECT_EQ(AsString(HtTextToBytes(row.text, row.page)), row.bytes) << row.page;
}

// "Each character holds one byte of the file": every byte comes back, whatever the system code page leaves open.
TEST(CodePage, WidenedBytesComeBack) {
  const int32_t before = HtSystemCodePage();
  const std::string bytes = AllBytes() + AllBytes().substr(0, 13);
  for (const TPageRow& row : kPages) {
    HtSetSystemCodePage(row.page);
    const hstring text = HtWidenBytes(bytes);
    EXPECT_EQ(text.Size(), bytes.size());
    EXPECT_EQ(AsString(HtNarrowText(text)), bytes) << row.page;
  }
  HtSetSystemCodePage(1251);
  EXPECT_EQ(HtWidenBytes("\xEF\xBB\xBF"s), u"\x043F\x00BB\x0457");
  EXPECT_EQ(AsString(HtNarrowText(u"中")), "?");
  for (int32_t page : {65001, 932}) {
    HtSetSystemCodePage(page);
    EXPECT_EQ(HtWidenBytes("\xEF\x80"s), u"\x00EF\x0080");
    EXPECT_EQ(AsString(HtNarrowText(u"\x12EF")), "\xEF");
  }
  HtSetSystemCodePage(before);
}

TEST(CodePage, Latin1VectorPathAgainstPlain) {
  const std::string all = AllBytes();
  for (size_t size = 0; size < 70; ++size) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(all.data()) + 150;
    std::vector<char16_t> units(size + 1, u'#');
    std::vector<uint8_t> back(size + 1, '#');
    HtWidenLatin1(bytes, size, units.data());
    for (size_t i = 0; i < size; ++i) ASSERT_EQ(units[i], bytes[i]);
    ASSERT_EQ(units[size], u'#');
    for (size_t i = 0; i < size; ++i) units[i] = static_cast<char16_t>(units[i] | i << 8);
    HtNarrowLatin1(units.data(), size, back.data());
    for (size_t i = 0; i < size; ++i) ASSERT_EQ(back[i], bytes[i]);
    ASSERT_EQ(back[size], '#');
  }
}

TEST(CodePage, TablesAreBuiltOnceOnManyThreads) {
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([] {
      for (const TPageRow& row : kPages) ASSERT_EQ(HtBytesToText(row.bytes, row.page), row.text);
    });
  for (std::thread& thread : threads) thread.join();
}

// The start value is taken once in a process, so each row runs in one of its own.
TEST(CodePageDeathTest, StartsWithTheEnvironment) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  struct TRow {
    const char *all, *ctype, *lang;
    int32_t page;
  };
  for (const TRow& row :
       {TRow{"ru_RU.KOI8-R", "x.CP1251", "", 20866}, TRow{"", "ru_RU.CP1251", "de_DE.UTF-8", 1251},
        TRow{"", "", "de_DE.ISO-8859-1@euro", 1252}, TRow{"", "", "zh_CN.GB2312", 936},
        TRow{"C", "", "de_DE.ISO-8859-1", 65001}, TRow{"", "", "", 65001}, TRow{"", "", "xx.NOSUCH", 65001},
        TRow{"", "", "C.utf8", 65001}})
    EXPECT_EXIT(
        {
          setenv("LC_ALL", row.all, 1);
          setenv("LC_CTYPE", row.ctype, 1);
          setenv("LANG", row.lang, 1);
          std::_Exit(HtSystemCodePage() == row.page ? 0 : 1);
        },
        testing::ExitedWithCode(0), "")
        << row.page;
}

}  // namespace
}  // namespace ht
