#pragma once

#include "htruntime/hstring.h"

namespace ht {

class TFastString;

// Escaping of text for HTML. There are three forms:
//
//   text       "&" "<" ">" and U+00A0 by name, codes 0 to 8 by number, a surrogate pair as "&#x01F600;",
//              other characters above 255 by the name that HTML has for them; those of 256..591, 880..1279,
//              1328..1871 and 8192..8351 stand as they are
//   attribute  "&" "<" ">", the double quote and U+00A0 by name, codes 0 to 9 by number; nothing else
//   numeric    as attribute, with U+00A0 as "&#160;", for readers that know no names
//
// The overhead of a text is how many units longer its escaped form is. `overhead` below 0: it is counted
// first. A caller that has counted may pass it; 0 gives the text back unseen. A text with nothing to escape
// is returned itself, without a copy. An unpaired surrogate stands as it is.

hstring HtmlEncode(const hstring& text, int64_t overhead = -1);
hstring HtmlEncodeAttr(const hstring& text, int64_t overhead = -1);
hstring HtmlEncodeAttrNumeric(const hstring& text, int64_t overhead = -1);

/// The overhead of a text as text content.
int64_t HtmlEncodeNodeOverhead(std::u16string_view text);
/// The overhead of a text as attribute value, in either form.
int64_t HtmlEncodeAttrOverhead(std::u16string_view text);

// The same, written behind the content of a builder. What needs no escaping is copied in blocks.

void HtAppendEncoded(TFastString& builder, std::u16string_view text);
void HtAppendEncodedAttr(TFastString& builder, std::u16string_view text);
void HtAppendEncodedAttrNumeric(TFastString& builder, std::u16string_view text);

}  // namespace ht
