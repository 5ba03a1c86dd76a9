#include "htmlpars/texturls.h"

#include <gtest/gtest.h>

using namespace ht;

TEST(TextUrls, Replace) {
  constexpr struct {
    std::u16string_view Text, Result;
  } kCases[] = {
      {u"", u""},
      {u"no links, here; (none) \u4E2D", u"no links, here; (none) \u4E2D"},
      {u"see www.example.com, now", u"see [http://www.example.com,] now"},
      {u"(http://a.b/c)", u"([http://a.b/c])"},
      {u"HTTPS://A", u"[HTTPS://A]"},
      {u"ftp://x ftps://y", u"[ftp://x] [ftps://y]"},
      {u"mailto:me@example.com", u"[http://mailto:me@example.com]"},
      {u"httpx.com", u"[httpx.com]"},
      {u"x.com/a?b=1&c;d \"", u"[http://x.com/a?b=1&c;d] \""},
      {u"x.com?q=\u00E9", u"[http://x.com?q=]\u00E9"},
      {u"x.com?q\x7Fz", u"[http://x.com?q]\x7Fz"},
      {u"x.com?\"", u"[http://x.com?]\""},
      {u"what?really", u"what?really"},
      {u"EXAMPLE.ORG example.net a.int a.edu a.gov",
       u"[http://EXAMPLE.ORG] [http://example.net] [http://a.int] "
       u"[http://a.edu] [http://a.gov]"},
      {u"example.info example.", u"example.info example."},
      {u"1.5 and 1.25", u"[http://1.5] and 1.25"},
      {u"a.b.c", u"[http://a.b.c]"},
      {u"dir/x.com a/b?c.com", u"dir/x.com a/b?[http://c.com]"},
      {u"x.com/y.html", u"[http://x.com/y.html]"},
      {u".com www", u".com www"},
      {u"a//b.c", u"a//b.c"},
      {u"x.com//y", u"[x.com//y]"},
      {u"me@x.com", u"[http://me@x.com]"},
      {u"\u00E9www.x", u"\u00E9[http://www.x]"},
      {u"-www.x", u"-[http://www.x]"},
      {u"xwww.x.yy", u"xwww.x.yy"},
  };
  for (const auto& c : kCases)
    EXPECT_EQ(ReplaceTextURLs(c.Text, [](const hstring& url) { return u"["_hs + url + u"]"; }), c.Result)
        << HtToUtf8(c.Text);
}

TEST(TextUrls, ReplacerMayGiveAnything) {
  EXPECT_EQ(ReplaceTextURLs(u"a www.x b", [](const hstring&) { return hstring(); }), u"a  b");
}
