#pragma once

#include "htruntime/hstring.h"

namespace ht {

/// An address seen from a base address:
///
///   CombineUrl(u"http://a.org/x/y.htm"_hs, u"z.htm"_hs)     // http://a.org/x/z.htm
///   CombineUrl(u"http://a.org/x/y.htm"_hs, u"/z.htm"_hs)    // http://a.org/z.htm
///   CombineUrl(u"http://a.org/x/y.htm"_hs, u"//b.org/z"_hs) // http://b.org/z
///
/// No dots are resolved, and a url with a scheme of its own counts as relative.
hstring CombineUrl(const hstring& base, const hstring& url);

/// Decodes the text of a form or an address: "+" is a blank, "%" and two hexadecimal digits a byte, "%%" a percent
/// sign, and the bytes are UTF-8. A "%" before anything else stands for itself; at the end it is dropped.
hstring HTTPDecode(std::u16string_view text);

/// Encodes text for an address: ASCII letters, digits and !()*-.\_~ stay, a blank gives "+", and every other unit its
/// UTF-8 bytes as escapes in lower case. The halves of a surrogate pair are encoded one by one.
hstring HtEncodeUrl(std::u16string_view text);

}  // namespace ht
