#include "htmlpars/texturls.h"

#include <algorithm>

#include "htmlpars/lower.h"
#include "htmlpars/stringparser.h"
#include "htutils/faststring.h"

namespace ht {

namespace {

constexpr std::u16string_view kPrefixes[] = {u"http://", u"https://", u"www.",
                                             u"ftp://",  u"ftps://",  u"mailto:"};
constexpr std::u16string_view kEndings[] = {u".com", u".net", u".org", u".int", u".edu", u".gov"};

constexpr bool IsWordStart(char16_t c) { return HtIsDigit(c) || HtIsAsciiLetter(c); }
constexpr bool IsWordChar(char16_t c) {
  constexpr TCharSet kMarks(u"%'+,-./:=@_");
  return IsWordStart(c) || kMarks.Contains(c);
}
constexpr bool EndsQuery(char16_t c) { return c <= u' ' || c == u'"' || c > 126; }

// A stretch begins with a letter or digit, so a point is never its first character.
bool HasPoint(std::u16string_view stretch) { return stretch.find(u'.') != stretch.npos; }

bool StartsWithAscii(std::u16string_view text, std::u16string_view lowerCasePrefix) {
  return HtSameAscii(text.substr(0, lowerCasePrefix.size()), lowerCasePrefix);
}

bool HasUrlEnding(std::u16string_view stretch) {
  const std::u16string_view host = stretch.substr(0, stretch.find_first_of(u"/?"));
  const size_t point = host.rfind(u'.');
  if (point == host.npos) return false;
  const std::u16string_view ending = host.substr(point);
  return ending.size() == 2 || std::any_of(std::begin(kEndings), std::end(kEndings),
                                           [&](std::u16string_view e) { return HtSameAscii(ending, e); });
}

bool IsUrl(std::u16string_view stretch) {
  return std::any_of(std::begin(kPrefixes), std::end(kPrefixes),
                     [&](std::u16string_view prefix) { return StartsWithAscii(stretch, prefix); }) ||
         HasUrlEnding(stretch);
}

hstring AbsoluteUrl(std::u16string_view url) {
  const bool absolute = url.find(u"//") != url.npos || url.starts_with(u"http");
  return absolute ? hstring(url) : u"http://"_hs + url;
}

}  // namespace

hstring ReplaceTextURLs(std::u16string_view text, const std::function<hstring(const hstring&)>& replacer) {
  TFastString result(static_cast<int32_t>(text.size()));
  const char16_t* p = text.data();
  const char16_t* const end = p + text.size();
  const auto stretchFrom = [&p](const char16_t* start) {
    return std::u16string_view(start, static_cast<size_t>(p - start));
  };
  while (p < end) {
    const char16_t* start = p;
    p = std::find_if(p, end, IsWordStart);
    result.Add(stretchFrom(start));
    start = p;
    p = std::find_if_not(p, end, IsWordChar);
    if (p < end && *p == u'?' && HasPoint(stretchFrom(start))) p = std::find_if(p, end, EndsQuery);
    const std::u16string_view stretch = stretchFrom(start);
    if (IsUrl(stretch))
      result.Add(replacer(AbsoluteUrl(stretch)));
    else
      result.Add(stretch);
  }
  return result.GetAsString();
}

}  // namespace ht
