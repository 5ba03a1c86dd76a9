#include "htutils/urls.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "htutils/strsearch.h"

namespace ht {

namespace {

// The length of scheme and host; the whole address if no path follows.
size_t SiteLength(std::u16string_view base) {
  size_t start = 0;
  for (std::u16string_view scheme : {u"http://", u"https://"})
    if (AnsiStartsWith(base, scheme)) start = scheme.size();
  return std::min(base.find(u'/', start), base.size());
}

}  // namespace

hstring CombineUrl(const hstring& base, const hstring& url) {
  const std::u16string_view baseView = base, urlView = url;
  if (AnsiStartsWith(urlView, u"//")) {
    const std::u16string_view host = urlView.substr(2);
    return AnsiStartsWith(host, u"http") ? hstring(host) : hstring::Concat(u"http://", host);
  }
  if (AnsiStartsWith(urlView, u"/"))
    return hstring::Concat(baseView.substr(0, SiteLength(baseView)), urlView);
  const size_t slash = baseView.rfind(u'/');
  return hstring::Concat(slash == baseView.npos ? baseView : baseView.substr(0, slash + 1), urlView);
}

namespace {

constexpr int HexDigit(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  const char16_t lower = CharLower(c);
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

}  // namespace

hstring HTTPDecode(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c == u'+') {
      bytes += ' ';
    } else if (c != u'%') {
      bytes += static_cast<char>(c);
    } else if (i + 1 == text.size()) {
      break;
    } else if (text[i + 1] == u'%') {
      bytes += '%';
      ++i;
    } else {
      const int high = HexDigit(text[i + 1]);
      const int low = i + 2 < text.size() ? HexDigit(text[i + 2]) : -1;
      if (high < 0 || low < 0) {
        bytes += '%';
      } else {
        bytes += static_cast<char>(high << 4 | low);
        i += 2;
      }
    }
  }
  return HtFromUtf8(bytes);
}

namespace {

// What a byte is written as: itself, "+", or an escape.
struct TEscape {
  char16_t Units[3];
  uint8_t Length;
};

constexpr bool StaysInUrl(unsigned c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
         std::string_view("!()*-.\\_~").find(static_cast<char>(c)) != std::string_view::npos;
}

constexpr std::array<TEscape, 256> kEscapes = [] {
  constexpr char16_t kHex[] = u"0123456789abcdef";
  std::array<TEscape, 256> escapes{};
  for (unsigned c = 0; c < 256; ++c) {
    if (StaysInUrl(c))
      escapes[c] = {{static_cast<char16_t>(c)}, 1};
    else if (c == ' ')
      escapes[c] = {{u'+'}, 1};
    else
      escapes[c] = {{u'%', kHex[c >> 4], kHex[c & 15]}, 3};
  }
  return escapes;
}();

char16_t* WriteEscape(char16_t* out, unsigned byte) {
  const TEscape& escape = kEscapes[byte];
  std::memcpy(out, escape.Units, sizeof escape.Units);
  return out + escape.Length;
}

}  // namespace

hstring HtEncodeUrl(std::u16string_view text) {
  constexpr size_t kMostUnits = 9;  // three escaped bytes
  hstring result;
  // In slices, so that a long text needs no room for the worst case.
  char16_t slice[1024];
  while (!text.empty()) {
    char16_t* out = slice;
    size_t used = 0;
    for (; used < text.size() && out + kMostUnits <= std::end(slice); ++used) {
      const unsigned c = text[used];
      if (c < 0x80) {
        out = WriteEscape(out, c);
      } else if (c < 0x800) {
        out = WriteEscape(out, 0xC0 | c >> 6);
        out = WriteEscape(out, 0x80 | (c & 0x3F));
      } else {
        out = WriteEscape(out, 0xE0 | c >> 12);
        out = WriteEscape(out, 0x80 | (c >> 6 & 0x3F));
        out = WriteEscape(out, 0x80 | (c & 0x3F));
      }
    }
    result.Append({slice, static_cast<size_t>(out - slice)});
    text.remove_prefix(used);
  }
  return result;
}

}  // namespace ht
