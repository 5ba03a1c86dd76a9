#include <gtest/gtest.h>

#include "htruntime/hstring.h"

namespace ht {
namespace {

using namespace std::string_literals;

struct TRow {
  const char* name;
  std::string bytes;
  std::u16string text;
};

const TRow kIllFormed[] = {
    // The table of maximal subparts in the Unicode Standard, chapter 3.9.
    {"non-shortest forms", "\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41",
     u"\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD"
     "A"},
    {"surrogates", "\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41",
     u"\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD"
     "A"},
    {"other ill-formed", "\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42",
     u"\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD"
     "A\xFFFD\xFFFD"
     "B"},
    {"truncated", "\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41",
     u"\xFFFD\xFFFD\xFFFD\xFFFD"
     "A"},
    // Edges of the ranges.
    {"last two-byte", "\xDF\xBF", u"\x7FF"},
    {"first three-byte", "\xE0\xA0\x80", u"\x800"},
    {"below the surrogates", "\xED\x9F\xBF", u"\xD7FF"},
    {"above the surrogates", "\xEE\x80\x80", u"\xE000"},
    {"first four-byte", "\xF0\x90\x80\x80", u"\xD800\xDC00"},
    {"last four-byte", "\xF4\x8F\xBF\xBF", u"\xDBFF\xDFFF"},
    {"five-byte lead", "\xF8\x88\x80\x80\x80", u"\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD"},
    {"lead at the end", "a\xE4\xB8", u"a\xFFFD"},
    {"zeros stay", "a\0b"s, u"a\0b"s},
    {"a mark stays", "\xEF\xBB\xBFx", u"\xFEFFx"},
};

// Every case alone takes the plain path; among other text it takes the vector path at each alignment.
TEST(Utf8, IllFormedAndEdges) {
  for (const TRow& row : kIllFormed) {
    EXPECT_EQ(HtFromUtf8(row.bytes), row.text) << row.name;
    for (size_t before = 0; before < 18; ++before) {
      for (const auto& [filler, unit] :
           {std::pair("x"s, u"x"s), std::pair("\xD1\x8F"s, u"я"s), std::pair("\xE4\xB8\xAD"s, u"中"s)}) {
        std::string bytes;
        std::u16string text;
        for (size_t i = 0; i < before; ++i) bytes += filler, text += unit;
        bytes += row.bytes + "|";
        text += row.text + u"|";
        for (size_t i = 0; i < 20; ++i) bytes += filler, text += unit;
        // A cut-off lead in the middle is ended by the bar behind it, as it is by the end of the text.
        ASSERT_EQ(HtFromUtf8(bytes), text) << row.name << " behind " << before << " " << filler;
      }
    }
  }
}

TEST(Utf8, EveryCharacterBothWays) {
  std::u16string all;
  std::string bytes;
  for (uint32_t code = 0; code < 0x110000; ++code) {
    if (code >= 0xD800 && code < 0xE000) continue;
    std::u16string one;
    if (code < 0x10000)
      one = static_cast<char16_t>(code);
    else
      one = {static_cast<char16_t>(0xD7C0 + (code >> 10)), static_cast<char16_t>(0xDC00 + (code & 0x3FF))};
    const std::string encoded = HtToUtf8(one);
    ASSERT_EQ(encoded.size(), code < 0x80 ? 1u : code < 0x800 ? 2u : code < 0x10000 ? 3u : 4u);
    ASSERT_EQ(HtFromUtf8(encoded), one) << code;
    all += one;
    bytes += encoded;
  }
  EXPECT_EQ(HtToUtf8(all), bytes);
  EXPECT_EQ(HtFromUtf8(bytes), all);
}

TEST(Utf8, UnpairedSurrogatesBecomeReplacements) {
  const std::pair<std::u16string_view, std::string_view> kRows[] = {
      {u"\xD800", "\xEF\xBF\xBD"},     {u"\xDC00\xD800", "\xEF\xBF\xBD\xEF\xBF\xBD"},
      {u"a\xD800z", "a\xEF\xBF\xBDz"}, {u"\xD83D\xD83D\xDE00", "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
      {u"\xDE00", "\xEF\xBF\xBD"},     {u"", ""},
  };
  for (const auto& [text, bytes] : kRows) EXPECT_EQ(HtToUtf8(text), bytes);
}

// Texts whose border between ASCII and the rest lies at every place of a block, and longer than one slice.
TEST(Utf8, MixedRunsAtEveryPlace) {
  for (size_t run = 0; run < 40; ++run) {
    std::u16string text;
    std::string bytes;
    while (text.size() < 4000) {
      text += std::u16string(run, u'a') + u"é" + std::u16string(run / 2, u'ж') + u"€\xD83D\xDE00";
      bytes += std::string(run, 'a') + "\xC3\xA9";
      for (size_t i = 0; i < run / 2; ++i) bytes += "\xD0\xB6";
      bytes += "\xE2\x82\xAC\xF0\x9F\x98\x80";
    }
    ASSERT_EQ(HtToUtf8(text), bytes) << run;
    ASSERT_EQ(HtFromUtf8(bytes), text) << run;
  }
}

}  // namespace
}  // namespace ht
