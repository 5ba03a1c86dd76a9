#include <gtest/gtest.h>
#include <random>

#include "htruntime/stream.h"
#include "htutils/fastrawstring.h"
#include "htutils/faststring.h"
#include "htutils/thstring.h"

using namespace ht;

namespace {

std::u16string Text(const TFastString& builder) { return std::u16string(builder.GetAsString().View()); }

// The used and the whole size of each chunk, as "3/8 2/2".
template <class TBuilder>
std::string Chunks(const TBuilder& builder) {
  std::string text;
  for (const auto* node = &builder.FirstChunk(); node; node = node->Next)
    text += (text.empty() ? "" : " ") + std::to_string(node->Len) + "/" + std::to_string(node->Size);
  return text;
}

// A builder, and a plain string to which the same is done.
struct TTwin {
  TFastString Builder{8};
  std::u16string Model;

  void TrimModel(char16_t lowest) {
    while (!Model.empty() && Model.back() >= lowest && Model.back() <= u' ') Model.pop_back();
  }
  void Step(uint32_t step, uint32_t amount, TTwin& other) {
    const auto count = static_cast<int32_t>(amount % 12);
    const std::u16string piece = std::u16string(u"a \tbcdefgh   ijklmnop ").substr(amount % 16, amount % 7);
    // clang-format off
    switch (step) {
      case 0: Builder.Clear();              Model.clear(); break;
      case 1: Builder.ClearandLeaveSpace(); Model.clear(); break;
      case 2: Builder.Prepend(piece);       Model.insert(0, piece); break;
      case 3: Builder.Grab(other.Builder);  Model += std::exchange(other.Model, {}); break;
      case 4: Builder.DeletefromEnd(count); Model.resize(Model.size() - std::min<size_t>(Model.size(), amount % 12)); break;
      case 5: Builder.TrimTrailingSpaces(); TrimModel(u' '); break;
      case 6: Builder.TrimTrailingBlanks(); TrimModel(0); break;
      case 7: Builder.AddSpaces(count);     Model.append(amount % 12, u' '); break;
      case 8: Builder.AddChar(u'x').Add2Char(u'y', u'z'); Model += u"xyz"; break;
      case 9: Builder.Add(amount);          Model += HtFromUtf8(std::to_string(amount)).View(); break;
      case 10: Builder.Add(piece.data(), static_cast<int32_t>(piece.size())); Model += piece; break;
      default: Builder.Add(piece);          Model += piece;
    }
    // clang-format on
  }
};

}  // namespace

TEST(FastString, AgreesWithString) {
  std::mt19937 random(3);
  const auto next = [&](uint32_t limit) { return static_cast<uint32_t>(random() % limit); };
  TTwin twins[2];
  for (int i = 0; i < 50000; ++i) {
    TTwin &one = twins[i % 2], &other = twins[1 - i % 2];
    one.Step(next(24), next(1u << 31), other);
    const TFastString& builder = one.Builder;
    const std::u16string& model = one.Model;
    ASSERT_EQ(Text(builder), model) << i;
    ASSERT_EQ(Text(other.Builder), other.Model) << i;
    ASSERT_EQ(builder.GetTotalLen(), static_cast<int64_t>(model.size()));
    ASSERT_EQ(builder.LastChar(), model.empty() ? 0 : model.back());
    const size_t cut = next(12);
    const std::u16string head = model.substr(0, cut),
                         tail = model.substr(model.size() - std::min(cut, model.size()));
    ASSERT_EQ(builder.StartsWith(head) && builder.EndsWith(tail), !model.empty());
    ASSERT_FALSE(builder.StartsWith(head + u'!') || builder.EndsWith(u'!' + tail));
    hstring rest;
    builder.ToStringFrom(rest, static_cast<int64_t>(cut));
    ASSERT_EQ(rest, cut < 2 ? model : model.size() < cut ? u"" : model.substr(cut - 1));
  }
}

TEST(FastString, Saves) {
  TFastString s(4);
  s.Add(u"1234").Add(u"567890").Prepend(u"0");
  TMemoryStream stream;
  s.SavetoStream(stream);
  char16_t buffer[11];
  s.SavetoBuffer(buffer);
  EXPECT_EQ(std::u16string(buffer, 11), u"01234567890");
  ASSERT_EQ(stream.GetSize(), 22);
  EXPECT_EQ(std::memcmp(stream.GetMemory(), buffer, 22), 0);
}

TEST(FastString, Chunks) {
  TFastString s(4), other(4);
  EXPECT_EQ(Chunks(s.Add(u"").Add(nullptr, 0).AddSpaces(0)), "0/0");
  EXPECT_EQ(Chunks(s.Add(u"abc")), "3/4");
  const char16_t* const first = s.FirstChunk().Data;
  EXPECT_EQ(Chunks(s.Add(u"defgh")), "3/4 5/5");  // a chunk of its own length
  EXPECT_EQ(Chunks(s.AddChar(u'i')), "3/4 5/5 1/4");
  EXPECT_EQ(Chunks(s.Add2Char(u'j', u'k').Add2Char(u'l', u'm')), "3/4 5/5 3/4 2/4");
  EXPECT_EQ(s.FirstChunk().Data, first);

  other.Add(u"n");
  s.Grab(other);  // less than half full: copied
  EXPECT_EQ(Chunks(s), "3/4 5/5 3/4 3/4");
  EXPECT_EQ(Chunks(other), "0/4");
  other.Add(u"op");
  s.Grab(other);  // else the chunk changes hands
  EXPECT_EQ(Chunks(s), "3/4 5/5 3/4 3/4 2/4");
  EXPECT_EQ(Chunks(other), "0/0");
  s.Prepend(u"01");
  EXPECT_EQ(Chunks(s), "2/2 3/4 5/5 3/4 3/4 2/4");
  EXPECT_EQ(Text(s), u"01abcdefghijklmnop");
  s.Grab(s);
  s.DeletefromEnd(3);  // over the border of a chunk: all in one
  EXPECT_EQ(Chunks(s), "15/15");
  s.ClearandLeaveSpace();
  EXPECT_EQ(Chunks(s.Add(u"xyz")), "3/15");
  std::copy_n(u"!!", 2, s.AddSpace(2));
  EXPECT_EQ(Text(s), u"xyz");
  s.Advance(2);
  EXPECT_EQ(Text(s), u"xyz!!");
}

TEST(FastString, PosOf) {
  TFastString s(3);
  for (const char16_t* part : {u"abc", u"ab", u"a", u"bd"}) s.Add(std::u16string(part)).AddSpace(3);
  // The chunks: abc, ab, a, bd.
  const std::pair<std::u16string_view, int64_t> kCases[] = {
      {u"a", 1},     {u"abc", 1},     {u"cab", 3},      {u"bca", 2},      {u"ba", 5},   {u"aba", 4},
      {u"abd", 6},   {u"d", 8},       {u"", 0},         {u"x", 0},        {u"caba", 0}, {u"babd", 0},
      {u"abcab", 1}, {u"abcabab", 0}, {u"abcababd", 0}, {u"abcababdx", 0}};
  for (const auto& [text, position] : kCases) EXPECT_EQ(s.PosOf(text), position) << HtToUtf8(text);
  EXPECT_EQ(TFastString(9).PosOf(u"a"), 0);
}

TEST(FastString, Numbers) {
  for (int64_t n :
       {0l, 5l, 9l, 10l, 99l, 100l, 101l, 999l, 1000l, 123456789l, INT64_MAX, INT64_MIN, -1l, -10l, -100l}) {
    TFastString s(16);
    const std::string digits = std::to_string(n);
    EXPECT_EQ(Text(s.Add(n)), std::u16string(digits.begin(), digits.end()));
    TFastRawString raw(16);
    EXPECT_EQ(raw.AddInt(static_cast<int32_t>(n)).GetAsString(), std::to_string(static_cast<int32_t>(n)));
  }
  // clang-format off
  const struct { double Value; int32_t Decimals; bool Zero; std::u16string_view Text; } kCases[] = {
      {1.0, 2, true, u"1"}, {0.25, 2, false, u".25"}, {-0.004, 2, true, u"0"}, {0.5, 1, true, u"0.5"},
      {0.5, 3, false, u".5"}, {-0.5, 3, false, u"-.5"}, {-12.25, 2, true, u"-12.25"}, {12.340, 4, true, u"12.34"},
      {0.0625, 4, true, u"0.0625"}, {0.001, 3, true, u"0.001"}, {100, 0, true, u"100"}, {2.5, 0, true, u"2"},
      {3.5, 0, true, u"4"}, {-2.5, 0, true, u"-2"}, {0.125, 2, true, u"0.12"}, {0.375, 2, true, u"0.38"},
      {0.999, 2, true, u"1"}, {0, 5, false, u"0"}, {-0.0, 5, false, u"0"}, {1e-9, 12, true, u"0"},
      {0.12345678949, 12, true, u"0.12345679"}, {0.123456789, 7, true, u"0.1234568"}, {1e15, 8, true, u"1000000000000000"},
      {123456789012.5, 8, true, u"123456789012.5"}, {0.05, 1, false, u"0"}, {10.05, 1, true, u"10"}, {7.5, -3, true, u"8"},
      {1e20, 2, true, u"100000000000000000000"}, {-1e20, 0, false, u"-100000000000000000000"},
      {std::numeric_limits<double>::quiet_NaN(), 2, true, u"NaN"}, {-1.0 / 0.0, 2, true, u"-INF"}};
  // clang-format on
  for (const auto& row : kCases) {
    TFastString s(16);
    EXPECT_EQ(Text(s.Add(row.Value, row.Decimals, row.Zero)), row.Text) << row.Value << " " << row.Decimals;
  }
}

TEST(FastRawString, Utf8) {
  // clang-format off
  const std::pair<std::u16string, std::string> kCases[] = {
      {u"", ""}, {u"abcdefghi", "abcdefghi"}, {u"abc\u007F\u0080", "abc\x7F\xC2\x80"}, {u"\u07FF\u0800", "\xDF\xBF\xE0\xA0\x80"},
      {u"\xD83D\xDE00", "\xF0\x9F\x98\x80"},                    // a pair
      {u"\xDE00\xD83D!", "\xF0\x9F\x98\x80!"},                  // a swapped one
      {u"ab\xD83D", "ab"}, {u"\xDE00", ""},                      // half of one at the end
      {u"\xD800\u0041z", "\xE2\x91\x81z"},                      // 0x10000 + 0x41 - 0xDC00 = 0x2441
      {u"\xDC00\xFFFFz", "\xF8\xA8\x8F\xB0\x80z"},           // (0xFFFF - 0xD800 << 10) + 0x10000 = 0xA0FC00
      {u"\xDC00\u0041z", "\xFD\xBC\xA8\xA0\x90\x80z"}};        // the same of 0x41: 0xFCA20400, of which 31 bits go out
  // clang-format on
  for (const auto& [text, bytes] : kCases) EXPECT_EQ(TFastRawString(16).AddUTF8(text).GetAsString(), bytes);

  // Well-formed text as the runtime's own encoder has it, from every offset into the steps.
  std::mt19937 random(9);
  const std::u16string_view pieces[] = {u"a", u"plain words ", u"\u00E9", u"\u6F22\u5B57", u"\xD83D\xDE00"};
  for (int i = 0; i < 2000; ++i) {
    std::u16string text;
    for (size_t n = random() % 12; n > 0; --n) text += pieces[random() % 5];
    TFastRawString raw(8);
    std::string utf8;
    raw.Add("<").AddUTF8(text).Add2Char('/', '>').AddSpaces(2).AddChar('!').ToUTF8String(utf8);
    ASSERT_EQ(utf8, "<" + HtToUtf8(text) + "/>  !");
    ASSERT_EQ(raw.AsBytes(), THtBytes(utf8.begin(), utf8.end()));
    ASSERT_EQ(raw.PosOf("/>"), static_cast<int64_t>(utf8.size()) - 4);
  }
}

TEST(THString, Bytes) {
  THtBytes bytes(300);
  for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(i * 7);
  for (int32_t start : {-3, 0, 1, 17, 299, 300, 400})
    for (int32_t count : {-1, 0, 1, 15, 16, 33, 300}) {
      const size_t from = static_cast<size_t>(std::clamp(start, 0, 300));
      const size_t length = std::min(count < 0 ? 300 : static_cast<size_t>(count), 300 - from);
      const std::u16string expected(bytes.data() + from, bytes.data() + from + length);
      hstring text = u"old"_hs;
      THString::ANSIBytestoString(bytes, text, start, count);
      EXPECT_EQ(text, expected) << start << " " << count;
    }
  EXPECT_EQ(THString::StringtoANSIBytes(THString::ANSIBytestoString(bytes)), bytes);
  EXPECT_EQ(THString::StringtoANSIBytes(u"\u0141\u00FF"), (THtBytes{0x41, 0xFF}));
  EXPECT_EQ(THString::UnicodeBytestoString({0x41, 0x01, 0x3D, 0xD8, 0x99}), u"\u0141\xD83D");
  EXPECT_EQ(THString::BEUnicodeBytestoString({0x01, 0x41, 0xD8, 0x3D, 0x99}), u"\u0141\xD83D");
}
