#include "htmlpars/encoding.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "htmlpars/parser.h"
#include "htruntime/codepage.h"
#include "htruntime/exception.h"
#include "treenotation.h"

namespace ht {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

TEST(Encoding, CharsettoCodepage) {
  constexpr struct {
    std::u16string_view Charset;
    int32_t Page;
  } kCases[] = {
      // clang-format off
      {u"text/html; charset=iso-8859-1", 1252}, {u"iso-8859-15", 1252}, {u"iso-8859-2", 28592},
      {u"iso-8859-5", 28595}, {u"iso-8859-6", 28596}, {u"iso-8859-7", 28597}, {u"iso-8859-8", 1255},
      {u"iso-8859-9", 1254}, {u"koi8-u", 20866}, {u"windows-1251", 1251}, {u"x windows-874", 874},
      {u"windows-", 0}, {u"windows-xy", 0}, {u"gb2312", 936}, {u"utf-8", 65001}, {u"big5-hkscs", 950},
      {u"big5, utf-8", 65001}, {u"UTF-8", 0}, {u"utf8", 0}, {u"latin1", 0}, {u"", 0},
      // clang-format on
  };
  for (const auto& c : kCases)
    EXPECT_EQ(THtmlParser::CharsettoCodepage(c.Charset), c.Page) << HtToUtf8(c.Charset);
}

TEST(Encoding, IsUtf8) {
  constexpr std::pair<std::string_view, bool> kCases[] = {
      // clang-format off
      {"", false}, {"abc", false}, {"a\xC3\xA9", true}, {"\xC2\x80\xDF\xBF", true}, {"\xE2\x82\xAC", true},
      {"\xE0\xA0\x80", true}, {"\xED\x9F\xBF", true}, {"\xEF\xBB\xBF", true},
      // These rule it out, whatever stood before them.
      {"\xC3\xA9\xC0\x80", false}, {"\xC3\xA9\xC1", false}, {"\xC3\xA9\xC3x", false}, {"\xC3\xA9\xDF", false},
      // These end the scan.
      {"\xC3\xA9\x80\xC0", true}, {"\x80\xC3\xA9", false}, {"\xC3\xA9\xF0\xC0", true},
      {"\xF0\x9F\x98\x80", false}, {"\xC3\xA9\xE2\x82", true}, {"\xE0\x9F\xBF\xC3\xA9", false},
      {"\xED\xA0\x80\xC3\xA9", false}, {"\xC3\xA9\xFF", true},
      // clang-format on
  };
  for (const auto& [bytes, expected] : kCases) {
    EXPECT_EQ(IsUTF8Bytes(bytes), expected) << testing::PrintToString(bytes);
    EXPECT_EQ(IsUTF8(HtWidenBytes(bytes)), expected) << testing::PrintToString(bytes);
  }
  EXPECT_TRUE(IsUTF8(HtWidenBytes("\xC3\xA9\0\xC0"sv)));
  EXPECT_FALSE(IsUTF8(HtWidenBytes("\0\xC3\xA9"sv)));
}

TEST(Encoding, OfBytesAndFiles) {
  const std::string filler(4090, 'x');
  const struct {
    std::string Bytes;
    THtmlEncoding Encoding;
    int32_t Page = 0;
  } kCases[] = {
      // clang-format off
      {"", heDefault}, {"plain", heDefault}, {"\xEF\xBB\xBF", heUTF8}, {"\xFF\xFE<\0p\0"s, heUTF16},
      {"\n\0<\0p\0>\0"s, heUTF16}, {"\0<\0p"s, heUTF16}, {"a\0b<"s, heDefault}, {"<p>\xC3\xA9", heUTF8},
      {"<meta charset=koi8-r>\xC3\xA9", heUTF8}, {"<p>\xE9", heDefault},
      {"<meta charset=windows-1251>\xE9", heDefault, 1251},
      {"<META CHARSET = \"ISO-8859-2\">", heDefault, 28592}, {"<?xml encoding='koi8-r'?>charset", heDefault},
      {"charset x=big5>", heDefault, 950}, {"charset=\"\"koi8", heDefault, 20866},
      {"charset=x>koi8", heDefault}, {"charset=\0koi8"s, heDefault}, {"charset=utf-8>", heDefault, 65001},
      // Only the first 4096 bytes count, and a sequence that they cut says nothing.
      {filler + "\xC3\xA9", heUTF8}, {filler + "12345\xC3\xA9", heDefault},
      {filler + "\xC3\xA9\x31\x31\x31\xE2\x82\xAC", heUTF8}, {filler + "123456\xC3\xA9", heDefault},
      {filler + "1234\xC3\xA9x", heUTF8}, {filler + "\xC3\xA9\x31\x31\xE2\x82\xAC", heUTF8},
      {filler + "charset=koi8-r", heDefault}, {filler + "12345\0<"s, heDefault},
      // clang-format on
  };
  const auto path = std::filesystem::path(testing::TempDir()) / "encoding.html";
  for (const auto& c : kCases) {
    int32_t page = -1;
    EXPECT_EQ(GetBytesEncoding(c.Bytes, page), c.Encoding) << testing::PrintToString(c.Bytes);
    EXPECT_EQ(page, c.Page) << testing::PrintToString(c.Bytes);
    std::ofstream(path, std::ios::binary) << c.Bytes;
    EXPECT_EQ(THtmlParser::GetFileEncoding(HtFromUtf8(path.string()), page), c.Encoding);
    EXPECT_EQ(page, c.Page);
  }
  std::filesystem::remove(path);
  int32_t page;
  EXPECT_THROW(GetFileEncoding(HtFromUtf8(path.string()), page), EFileStreamError);
}

TEST(Encoding, GetHTMLEncoding) {
  constexpr std::pair<std::string_view, int32_t> kCases[] = {
      // clang-format off
      {"<meta charset=koi8-r>", 20866}, {"<metacharset=koi8-r>", 20866},
      {"<p><meta http-equiv='Content-Type' content='text/html; charset= \"Windows-1251'>", 1251},
      {"<META char =  'BIG5'>", 950}, {"<META CHARSET=big5>", 0}, {"<Meta charset=big5>", 0},
      {"<meta name=a><meta charset=big5 x>", 950}, {"<meta name=a> charset=big5", 0},
      {"<meta charset=none><meta charset=big5>", 0}, {"<meta charset", 0}, {"", 0},
      // clang-format on
  };
  for (const auto& [text, page] : kCases) {
    const std::string padded = std::string(text) + std::string(20, ' ');
    const auto* start = reinterpret_cast<const uint8_t*>(padded.data());
    EXPECT_EQ(GetHTMLEncoding(start, static_cast<int32_t>(padded.size())), page) << text;
    const std::string late = std::string(1001, ' ') + padded;
    start = reinterpret_cast<const uint8_t*>(late.data());
    EXPECT_EQ(GetHTMLEncoding(start, static_cast<int32_t>(late.size())), 0) << text;
    for (int32_t count = 0; count < static_cast<int32_t>(padded.size()); ++count) {
      const std::vector<uint8_t> exact(padded.begin(), padded.begin() + count);
      const uint8_t* p = exact.data();
      GetHTMLEncoding(p, count);
      EXPECT_LE(p - exact.data(), count);
    }
  }
}

// The parser is given the bytes one character each.
TEST(Encoding, CharsetInsideTheDocument) {
  constexpr std::pair<std::string_view, std::string_view> kCases[] = {
      // clang-format off
      {"<meta charset=utf-8><p title='\xC3\xA9'>\xE2\x82\xAC", "body(meta[charset=utf-8], p[title=é]('€'))"},
      // What stands before the charset is decoded, too.
      {"<p id=\xC3\xA9>\xC3\xA9</p><!--\xC3\xA9--><meta charset=UTF-8>\xC3\xA9", "body(p[id=é]('é'), !'é', meta[charset=UTF-8], 'é')"},
      {"<title>\xEF</title><meta charset=windows-1251>\xEF", "body(title('п'), meta[charset=windows-1251], 'п')"},
      {"<meta http-equiv=content-TYPE content='text/html; charset=koi8-r'>\xC1", "body(meta[content=text/html; charset=koi8-r][http-equiv=content-TYPE], 'а')"},
      // Only the first that names a charset counts.
      {"<meta http-equiv=content-type charset=big5><meta charset=koi8-r>\xC1", "body(meta[charset=big5][http-equiv=content-type], meta[charset=koi8-r], 'а')"},
      {"<meta charset=windows-1251><meta charset=koi8-r>\xC1", "body(meta[charset=windows-1251], meta[charset=koi8-r], 'Б')"},
      {"<meta charset=none><meta charset=koi8-r>\xC1", "body(meta[charset=none], meta[charset=koi8-r], 'Á')"},
      {"<meta charset=windows-9999>\xC1", "body(meta[charset=windows-9999], 'Á')"},
      // A charset that the text behind the head does not bear out.
      {"<meta charset=utf-8>\xE9", "body(meta[charset=utf-8], 'é')"},
      {"<head><meta charset=utf-8><title>\xC3\xA9</title></head>\xE9", "body(head(meta[charset=utf-8], title('Ã©')), 'é')"},
      {"<head><meta charset=utf-8><title>\xE9</title></head>\xC3\xA9", "body(head(meta[charset=utf-8], title('\uFFFD')), 'é')"},
      // clang-format on
  };
  for (const auto& [bytes, tree] : kCases) {
    EXPECT_EQ(TreeOf(HtWidenBytes(bytes)), tree) << bytes;
    THtmlNode ignoring;
    ignoring.Parse(HtWidenBytes(bytes), true);
    EXPECT_NE(HtToUtf8(ignoring.TextContent()).find("\xC3"), std::string::npos) << bytes;
  }
}

// Bytes that were widened through the code page of the system come back through it.
TEST(Encoding, SystemCodePage) {
  const int32_t page = HtSystemCodePage();
  HtSetSystemCodePage(1251);
  EXPECT_EQ(HtWidenBytes("\xEF\xBB\xBF"), u"\u043F\u00BB\u0457");
  EXPECT_EQ(TreeOf(HtWidenBytes("\xEF\xBB\xBF<p>\xC3\xA9")), "body(p('é'))");
  EXPECT_EQ(TreeOf(HtWidenBytes("<meta charset=koi8-r>\xC1")), "body(meta[charset=koi8-r], 'а')");
  HtSetSystemCodePage(page);
  EXPECT_EQ(TreeOf(HtWidenBytes("\xEF\xBB\xBF<p>\xC3\xA9")), "body(p('é'))");
  EXPECT_EQ(TreeOf(u"\uFEFF<p>\uFEFF"), "body(p('\uFEFF'))");
}

TEST(Encoding, WholeDocuments) {
  const std::string ascii(5000, 'a');
  const std::pair<std::string, std::string> kCases[] = {
      // clang-format off
      {"", "body"}, {"<p>\xC3\xA9\xE2\x82", "body(p('é\uFFFD'))"},
      {"\xEF\xBB\xBF<meta charset=koi8-r>\xC3\xA9\xC0", "body(meta[charset=koi8-r], 'é\uFFFD')"},
      {"\xFF\xFE<\0p\0>\0\xE9\0\0\xD8"s, "body(p('é\uFFFD'))"}, {"\xFF\xFE<\0p\0>\0\xE9\0x"s, "body(p('é'))"},
      {"\xFE\xFF\0<\0p\0>\0\xE9\x4E"s, "body(p('é'))"}, {"\n\0<\0p\0>\0\xE9\0"s, "body(p('é'))"},
      {"\0<\0p\0>\0\xE9"s, "body(p('é'))"}, {ascii + "\xC3\xA9", "body('" + ascii + "é')"},
      {ascii + "\xC3\xA9\xE9", "body('" + ascii + "Ã©é')"},
      {"<p>\xEF<meta charset=windows-1251>", "body(p('п', meta[charset=windows-1251]))"},
      {"<p>\xC4\xE3<meta charset=gb2312>", "body(p('你', meta[charset=gb2312]))"},
      {"<p>a\0b"s, "body(p('a\0b'))"s},
      // clang-format on
  };
  for (const auto& [bytes, tree] : kCases) {
    const THtMarkupText text = HtDecodeMarkup(bytes);
    THtmlNode root;
    root.Parse(text.Text, text.EncodingKnown);
    EXPECT_EQ(Notation(root), tree) << testing::PrintToString(bytes.substr(0, 60));
  }
  EXPECT_THROW(HtDecodeMarkup("x", heANSI, 1), EConvertError);
}

}  // namespace
}  // namespace ht
