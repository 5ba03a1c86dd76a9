#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <unistd.h>

#include "htruntime/codepage.h"
#include "htruntime/exception.h"
#include "htutils/base64.h"
#include "htutils/crc32.h"
#include "htutils/files.h"

namespace ht {
namespace {

THtBytes Bytes(std::string_view text) { return {text.begin(), text.end()}; }

TEST(Crc32, IsTheComplementOfTheStandardValue) {
  EXPECT_EQ(CalcBytesCRC32(Bytes("abc")), 0xCADBBE3Du);
  EXPECT_EQ(CalcBytesCRC32(Bytes("123456789")), ~0xCBF43926u);  // the check value of CRC catalogues
  EXPECT_EQ(CalcCRC32(nullptr, 0), 0xFFFFFFFFu);
  EXPECT_EQ(CalcStrCRC32(u"\x4161\x4262\x4363"), CalcBytesCRC32(Bytes("abc"))) << "low bytes";
  EXPECT_EQ(CalcStrCRC32(std::u16string_view(u"abc\0def", 7)), 0xCADBBE3Du);
}

TEST(Base64, TestVectorsOfTheStandard) {  // RFC 4648
  // clang-format off
  const std::pair<const char*, const char16_t*> kRows[] = {
      {"", u""},                         {"f", u"Zg=="},                    {"fo", u"Zm8="},
      {"foo", u"Zm9v"},                  {"foob", u"Zm9vYg=="},             {"fooba", u"Zm9vYmE="},
      {"foobar", u"Zm9vYmFy"},           {"\xFB\xEF\xFF", u"++//"},
  };
  // clang-format on
  for (const auto& [bytes, text] : kRows) {
    EXPECT_EQ(Base64EncodeNoLF(Bytes(bytes)), text);
    EXPECT_EQ(Base64EncodeBytes(Bytes(bytes)), text);
    EXPECT_EQ(Base64DecodetoBytes(text), Bytes(bytes));
  }
}

TEST(Base64, LinesOf76) {
  std::mt19937 random(7);
  for (size_t size : {56u, 57u, 58u, 113u, 114u, 115u, 5000u}) {
    THtBytes bytes(size);
    for (uint8_t& b : bytes) b = static_cast<uint8_t>(random());
    const std::string lines = HtToUtf8(Base64EncodeBytes(bytes));
    EXPECT_EQ(Base64EncodeString(HtBytesView(bytes)), lines);
    std::string joined;
    for (size_t start = 0; start < lines.size(); start += 78) {
      joined += lines.substr(start, 76);
      EXPECT_EQ(lines.substr(std::min(start + 76, lines.size()), 2), start + 76 < lines.size() ? "\r\n" : "");
    }
    EXPECT_EQ(joined, HtToUtf8(Base64EncodeNoLF(bytes))) << size;
    EXPECT_EQ(Base64DecodetoBytes(Bytes(lines)), bytes);
  }
}

TEST(Base64, TextAndBadInput) {
  EXPECT_EQ(Base64EncodeString(u"Ж€"), u"0Jbigqw=");
  EXPECT_EQ(Base64DecodeString(u"0Jbigqw="), u"Ж€");
  // clang-format off
  const std::pair<const char16_t*, const char*> kRows[] = {
      {u" Zm9v\r\n YmFy\t", "foobar"},  {u"Zm9vYg", "foob"},              {u"Zm9vYmE", "fooba"},
      {u"Zm9vY", "foo"},                {u"Zg==Zg==", "f"},               {u"Z*m!9-v", "foo"},
      {u"====", ""},                    {u"\x015A\xFF5Am9v", "\x9B\xDB"},
  };
  // clang-format on
  for (const auto& [text, bytes] : kRows)
    EXPECT_EQ(Base64DecodetoBytes(text), Bytes(bytes)) << HtToUtf8(text);
}

TEST(Files, TextOfEveryKind) {
  const hstring name = HtFromUtf8(testing::TempDir() + "ht_files_" + std::to_string(getpid()));
  const int32_t before = HtSystemCodePage();
  HtSetSystemCodePage(1251);
  const std::pair<std::string, std::u16string_view> kRows[] = {
      {"plain", u"plain"},
      {"\xC6z", u"Жz"},
      {std::string("\xFF\xFE\x16\x04z\0", 6), u"Жz"},
      {std::string("\xFE\xFF\x16\x04z\0", 6), u"Жz"},  // taken as it lies
      {std::string("z\0\x16\x04", 4), u"zЖ"},          // UTF-16 without a mark
      {std::string("z\0\x16\x04!", 5), u"zЖ"},         // half a unit
      {"\xEF\xBB\xBF\xD0\x96", u"Ж"},
      {"\xEF\xBB?\xD0\x96", u"Ж"},  // the third byte of the mark is not looked at
      {"\xEF\xBB", u""},
      {"\xFF\xFE", u""},
      {"x", u"x"},
      {"", u""},
  };
  for (const auto& [bytes, text] : kRows) {
    StrtoFileR(bytes, name);
    EXPECT_EQ(FileToStr(name), text);
    EXPECT_EQ(FileToStrR(name), bytes);
    EXPECT_EQ(FileToStrA(name), bytes);
  }
  StrtoFile(u"Ж\xD800", name);
  EXPECT_EQ(FileToStrR(name), "\xFF\xFE\x16\x04" + std::string("\0\xD8", 2));
  EXPECT_EQ(FileToStr(name), u"Ж\xD800");
  StrtoFileA("short", name);
  EXPECT_EQ(FileToStrR(name), "short") << "the old content is gone";
  HtSetSystemCodePage(before);
  unlink(HtToUtf8(name).c_str());
  EXPECT_THROW(FileToStr(name), EFileStreamError);
  EXPECT_THROW(StrtoFile(u"x", u"/nowhere/x"), EFileStreamError);
}

}  // namespace
}  // namespace ht
