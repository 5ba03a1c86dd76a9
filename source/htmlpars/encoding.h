#pragma once

#include "htruntime/bytes.h"
#include "htruntime/enums.h"
#include "htruntime/hstring.h"

namespace ht {

/// How a document's bytes are read. heDefault: not known yet, one character a byte.
HT_ENUM(THtmlEncoding, uint8_t, heDefault, heUTF8, heUTF16, heANSI);

/// The code page of a charset name, which is expected in lower case; 0 for an unknown one.
int32_t CharsettoCodepage(const hstring& charset);

/// The code page that a "meta" element near the start of the buffer names; 0 if there is none, and for buffers
/// under 20 bytes. `pointer` is moved to where the scan stopped.
int32_t GetHTMLEncoding(const uint8_t*& pointer, int32_t count);

/// The bytes hold at least one multi-byte UTF-8 sequence, and nothing that rules UTF-8 out before the scan
/// ends. It ends at a stray continuation byte and at the lead of a four-byte sequence. Pure ASCII gives false.
bool IsUTF8Bytes(std::string_view bytes);
inline bool IsUTF8Bytes(const THtBytes& bytes, int32_t count) {
  return IsUTF8Bytes({reinterpret_cast<const char*>(bytes.data()), static_cast<size_t>(count)});
}
/// The same for a text whose characters hold one byte each. Stops at a zero.
bool IsUTF8(std::u16string_view chars);

/// The encoding of a file, from its first 4096 bytes: a byte-order mark, the look of UTF-16, valid UTF-8, or a
/// charset named in the text, which sets `codepage`. Raises EFileStreamError when it cannot be read.
THtmlEncoding GetFileEncoding(const hstring& fileName, int32_t& codepage);
/// The same for the first bytes of a document.
THtmlEncoding GetBytesEncoding(std::string_view bytes, int32_t& codepage);

/// Text whose characters hold one byte each, decoded anew: for heUTF8 as UTF-8, for heANSI in the code page (if it is
/// not 0). For any other encoding, for an unknown code page, and where a character is no byte, the text as it is.
hstring HtRecode(std::u16string_view chars, THtmlEncoding encoding, int32_t codepage);

/// A document's text and whether its encoding is settled.
struct THtMarkupText {
  hstring Text;
  bool EncodingKnown = false;  // then a charset inside the document is to be ignored
};

/// The bytes of a whole document as text, by the rules of GetFileEncoding. Bytes of no known encoding become one
/// character each, so that the parser can still follow a charset inside the document; bytes that are UTF-8 all
/// through are taken as that.
THtMarkupText HtDecodeMarkup(std::string_view bytes);
/// The same in a given encoding; `codepage` counts for heANSI. EConvertError for an unknown code page.
THtMarkupText HtDecodeMarkup(std::string_view bytes, THtmlEncoding encoding, int32_t codepage);

}  // namespace ht
