#pragma once

#include "htruntime/bytes.h"
#include "htruntime/hstring.h"

namespace ht {

// Text in bytes. The code pages are the Windows ones: 1250 to 1258, 866, 932, 936, 949, 950, 20866 (KOI8-R), 28592,
// 28595, 28596, 28597 (ISO 8859) and 65001 (UTF-8). Where a function takes a page it raises EConvertError
// "Code page %d is not supported" for any other. All functions may run on several threads.

constexpr int32_t kCodePageUtf8 = 65001;

bool HtCodePageExists(int32_t page);

/// What is malformed or undefined in the page becomes U+FFFD; but bytes 128 to 159 that a single-byte page leaves
/// undefined become the control characters of the same number, as in the Encoding Standard.
hstring HtBytesToText(std::string_view bytes, int32_t page);
inline hstring HtBytesToText(const THtBytes& bytes, int32_t page) {
  return HtBytesToText(HtBytesView(bytes), page);
}
inline hstring HtBytesToText(const uint8_t* bytes, size_t count, int32_t page) {
  return HtBytesToText(HtBytesView(bytes, count), page);
}
/// A character that the page has not becomes "?"; an unpaired surrogate in UTF-8 U+FFFD.
THtBytes HtTextToBytes(std::u16string_view text, int32_t page);

/// The page of bytes whose encoding is not told. At the start it is that of the environment (the charset behind "."
/// in LC_ALL, else LC_CTYPE, else LANG), and 65001 where that says nothing.
int32_t HtSystemCodePage();
void HtSetSystemCodePage(int32_t page);

/// Bytes to characters of which each holds one byte, and back: through the system code page when that is a
/// single-byte page, else each character has the number of its byte. Every byte string comes back as it was.
hstring HtWidenBytes(std::string_view bytes);
inline hstring HtWidenBytes(const THtBytes& bytes) { return HtWidenBytes(HtBytesView(bytes)); }
inline hstring HtWidenBytes(const uint8_t* bytes, size_t count) {
  return HtWidenBytes(HtBytesView(bytes, count));
}
THtBytes HtNarrowText(std::u16string_view text);

/// The text of a file: UTF-8 or UTF-16 of either byte order where it begins with such a mark, else in the system
/// code page.
hstring HtDecodeText(std::string_view bytes);
inline hstring HtDecodeText(const THtBytes& bytes) { return HtDecodeText(HtBytesView(bytes)); }

}  // namespace ht
