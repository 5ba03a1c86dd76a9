#include "htutils/urls.h"

#include <gtest/gtest.h>

#include "htutils/email.h"

namespace ht {
namespace {

TEST(Urls, Combine) {
  struct TRow {
    const char16_t *base, *url, *result;
  };
  constexpr TRow kRows[] = {
      {u"http://a.org/x/y.htm", u"z.htm", u"http://a.org/x/z.htm"},
      {u"http://a.org/x/", u"z.htm", u"http://a.org/x/z.htm"},
      {u"http://a.org/x/y.htm", u"/z.htm", u"http://a.org/z.htm"},
      {u"https://a.org", u"/z.htm", u"https://a.org/z.htm"},
      {u"a.org/x/y", u"/z", u"a.org/z"},
      {u"ftp://a.org/x", u"/z", u"ftp:/z"},
      {u"base", u"z", u"basez"},
      {u"http://a.org/x", u"//b.org/z", u"http://b.org/z"},
      {u"http://a.org/x", u"//https://b.org", u"https://b.org"},
      {u"http://a.org/x", u"", u"http://a.org/"},
      {u"", u"/z", u"/z"},
  };
  for (const TRow& row : kRows) EXPECT_EQ(CombineUrl(row.base, row.url), row.result);
}

TEST(Urls, Decode) {
  const std::pair<std::u16string_view, std::u16string_view> kRows[] = {
      {u"a+b%20c", u"a b c"}, {u"%d0%96%E2%82%ac", u"Ж€"}, {u"100%%", u"100%"}, {u"x%", u"x"},
      {u"%4", u"%4"},         {u"%zz%41", u"%zzA"},        {u"%C3", u"\xFFFD"}, {u"\x00D0\x0096", u"Ж"},
      {u"\x0141", u"A"},      {u"%%41", u"%41"},           {u"", u""},
  };
  for (const auto& [text, decoded] : kRows) EXPECT_EQ(HTTPDecode(text), decoded) << HtToUtf8(text);
}

TEST(Urls, Encode) {
  const std::pair<std::u16string_view, std::u16string_view> kRows[] = {
      {u"aZ09!()*-.\\_~", u"aZ09!()*-.\\_~"},
      {u"a b&c=/?%+", u"a+b%26c%3d%2f%3f%25%2b"},
      {u"\x7F\x80\x7FF\x800", u"%7f%c2%80%df%bf%e0%a0%80"},
      {u"\xD83D\xDE00", u"%ed%a0%bd%ed%b8%80"},
      {u"", u""},
  };
  for (const auto& [text, encoded] : kRows) EXPECT_EQ(HtEncodeUrl(text), encoded) << HtToUtf8(text);
  std::u16string every;
  for (char32_t c = 1; c < 0xD800; ++c) every += static_cast<char16_t>(c);
  EXPECT_EQ(HTTPDecode(HtEncodeUrl(every)), every);
}

TEST(Urls, SplitEmailAddresses) {
  struct TRow {
    const char16_t *text, *name, *address, *rest;
  };
  constexpr TRow kRows[] = {
      {u"\"A. Smith\" <a@b.org>, c@d.org", u"A. Smith", u"a@b.org", u", c@d.org"},
      {u", c@d.org", u"", u"", u" c@d.org"},
      {u" c@d.org", u"", u"c@d.org", u""},
      {u"  'Al B' c@d.org,x", u"Al B", u"c@d.org", u"x"},
      {u"Ann Lee <ann@x.org>", u"Ann Lee", u"ann@x.org", u""},
      {u"Ann Lee ann@x.org, z", u"Ann Lee", u"ann@x.org", u" z"},
      {u"Ann<ann@x.org", u"Ann", u"ann@x.org", u""},
      {u"\"open", u"open", u"", u""},
      {u"\"a,b\"<c>d", u"a,b", u"c", u"d"},
      {u"< a@b >", u"", u"a@b", u""},
      {u"", u"", u"", u""},
      {u"   ", u"", u"", u""},
  };
  for (const TRow& row : kRows) {
    hstring name = u"old"_hs, address = u"old"_hs;
    EXPECT_EQ(SplitEmailAdress(row.text, name, address), row.rest) << HtToUtf8(row.text);
    EXPECT_EQ(name, row.name) << HtToUtf8(row.text);
    EXPECT_EQ(address, row.address) << HtToUtf8(row.text);
  }
}

}  // namespace
}  // namespace ht
