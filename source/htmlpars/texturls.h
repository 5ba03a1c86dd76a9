#pragma once

#include <functional>

#include "htruntime/hstring.h"

namespace ht {

/// Finds the URLs in a plain text and puts what `replacer` makes of each in its place:
///
///   const auto link = [](const hstring& url) { return u"<" + url + u">"; };
///   ReplaceTextURLs(u"see www.example.com now", link);  // see <http://www.example.com> now
///
/// A stretch of URL characters that begins with an ASCII letter or digit is a URL if it begins with
/// "http://", "https://", "www.", "ftp://", "ftps://" or "mailto:", or if its part before the first "/" or
/// "?" ends in ".com", ".net", ".org", ".int", ".edu", ".gov" or a point and one character; case does not
/// count. Points and commas are URL characters. A query behind "?" belongs to it up to a blank, a control
/// character, a double quote or a character that is not ASCII. A URL without "//" that does not begin with
/// "http" is handed over with "http://" in front.
hstring ReplaceTextURLs(std::u16string_view text, const std::function<hstring(const hstring&)>& replacer);

}  // namespace ht
