#include "htmlpars/encoding.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "htmlpars/lower.h"
#include "htruntime/codepage.h"
#include "htruntime/filestream.h"
#include "htutils/numbers.h"
#include "htutils/thstring.h"

namespace ht {

namespace {

struct TCharset {
  std::u16string_view Name;
  int32_t Codepage;
};

// The first name that the charset text holds decides.
constexpr TCharset kCharsets[] = {
    {u"iso-8859-1", 1252},  {u"iso-8859-2", 28592}, {u"iso-8859-5", 28595}, {u"iso-8859-6", 28596},
    {u"iso-8859-7", 28597}, {u"iso-8859-9", 1254},  {u"iso-8859-8", 1255},  {u"koi8", 20866},
    {u"windows-", 0},       {u"gb2312", 936},       {u"utf-8", 65001},      {u"big5", 950},
};

constexpr bool IsContinuation(int c) { return (c & 0xC0) == 0x80; }

}  // namespace

int32_t CharsettoCodepage(const hstring& charset) {
  const std::u16string_view text = charset;
  for (const TCharset& row : kCharsets) {
    const size_t at = text.find(row.Name);
    if (at == text.npos) continue;
    return row.Codepage ? row.Codepage : iStrtoInt(hstring(text.substr(at + row.Name.size(), 4)));
  }
  return 0;
}

bool IsUTF8Bytes(std::string_view bytes) {
  bool found = false;
  const auto at = [&](size_t i) { return i < bytes.size() ? static_cast<uint8_t>(bytes[i]) : 0; };
  for (size_t i = 0; i < bytes.size();) {
    const int c = at(i);
    if (c < 0x80) {
      ++i;
      continue;
    }
    const int second = at(i + 1);
    if (c == 0xC0 || c == 0xC1) return false;
    if (c >= 0xC2 && c <= 0xDF) {
      if (!IsContinuation(second)) return false;
      i += 2;
    } else if (c >= 0xE0 && c <= 0xEF && IsContinuation(second) && IsContinuation(at(i + 2)) &&
               !(c == 0xE0 && second < 0xA0) && !(c == 0xED && second > 0x9F)) {
      i += 3;
    } else {
      break;
    }
    found = true;
  }
  return found;
}

namespace {

// The bytes that the characters of a text hold. False when one of them is no byte: the text never was bytes.
bool BytesOf(std::u16string_view chars, THtBytes& bytes) {
  bytes = HtNarrowText(chars);
  return HtWidenBytes(bytes) == chars;
}

}  // namespace

bool IsUTF8(std::u16string_view chars) {
  THtBytes bytes;
  return BytesOf(chars.substr(0, chars.find(u'\0')), bytes) &&
         IsUTF8Bytes(bytes, static_cast<int32_t>(bytes.size()));
}

hstring HtRecode(std::u16string_view chars, THtmlEncoding encoding, int32_t codepage) {
  if (encoding == heUTF8) codepage = kCodePageUtf8;
  const bool known =
      encoding == heUTF8 || (encoding == heANSI && codepage != 0 && HtCodePageExists(codepage));
  THtBytes bytes;
  return known && BytesOf(chars, bytes) ? HtBytesToText(bytes, codepage) : hstring(chars);
}

int32_t GetHTMLEncoding(const uint8_t*& pointer, int32_t count) {
  if (count < 20) return 0;
  const std::string_view text(reinterpret_cast<const char*>(pointer), static_cast<size_t>(count));
  const size_t limit = static_cast<size_t>(std::min(count - 20, 1000));
  const auto at = [&](size_t i) { return i < text.size() ? text[i] : '\0'; };
  const auto stopAt = [&](size_t i, int32_t result) {
    pointer += std::min(i, text.size());
    return result;
  };
  for (size_t i = 0; i < limit; ++i) {
    const std::string_view start = text.substr(i, 4);
    if (start != "<met" && start != "<MET") continue;
    for (i += 5; i < limit && text[i] != '>'; ++i) {
      if (text.substr(i, 4) != "char") continue;
      while (i < text.size() && text[i] != '=') ++i;
      ++i;
      while (at(i) == ' ') ++i;
      if (at(i) == '"' || at(i) == '\'') ++i;
      hstring charset;
      for (; i < text.size() && std::string_view(" \"'>").find(text[i]) == std::string_view::npos; ++i)
        charset += static_cast<char16_t>(static_cast<uint8_t>(text[i]));
      hLower(charset);
      return stopAt(i, CharsettoCodepage(charset));
    }
  }
  return stopAt(limit, 0);
}

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";
constexpr std::string_view kUtf16BigMark = "\xFE\xFF";

// The code page that a "charset=" in the text names.
int32_t NamedCodepage(std::string_view sample) {
  hstring text = HtWidenBytes(sample);
  hLower(text);
  const std::u16string_view view = text;
  const size_t name = view.find(u"charset");
  const size_t equals = name == view.npos ? name : view.find(u'=', name);
  if (equals == view.npos) return 0;
  const size_t start = view.find_first_not_of(u" \"", equals + 1);
  if (start == view.npos) return 0;
  const size_t end = view.find_first_of(std::u16string_view(u"\">\0", 3), start);
  return CharsettoCodepage(view.substr(start, end - start));
}

// Decodes bytes as UTF-8 if they are not plain ASCII and no more than `maxWrong` of a hundred of their other characters
// are malformed.
bool DecodeAsUtf8(std::string_view bytes, int maxWrong, hstring& text) {
  if (std::none_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<uint8_t>(c) >= 0x80; }))
    return false;
  text = HtFromUtf8(bytes);
  ptrdiff_t wrong = std::count(text.begin(), text.end(), u'\xFFFD');
  for (size_t at = 0; wrong > 0 && (at = bytes.find("\xEF\xBF\xBD", at)) != bytes.npos; at += 3) --wrong;
  const auto others = std::count_if(text.begin(), text.end(), [](char16_t c) { return c >= 0x80; });
  return wrong * 100 <= others * maxWrong;
}

hstring DecodeUtf16(std::string_view bytes) {
  const bool bigMark = bytes.starts_with(kUtf16BigMark);
  const bool littleMark = bytes.starts_with(kUtf16Mark);
  const bool big = bigMark || (!littleMark && bytes.size() > 1 && bytes[0] == 0);
  if (bigMark || littleMark) bytes.remove_prefix(2);
  const THtBytes units(bytes.begin(), bytes.end());
  return big ? THString::BEUnicodeBytestoString(units) : THString::UnicodeBytestoString(units);
}

}  // namespace

THtmlEncoding GetBytesEncoding(std::string_view bytes, int32_t& codepage) {
  constexpr size_t kSample = 4096;
  codepage = 0;
  if (bytes.starts_with(kUtf8Mark)) return heUTF8;
  if (bytes.starts_with(kUtf16Mark)) return heUTF16;
  std::string_view sample = bytes.substr(0, kSample);
  if (sample.find(std::string_view("\0<", 2)) != sample.npos) return heUTF16;
  // A sequence cut by the end of the sample says nothing. A longer one that is cut ends the scan by itself.
  const bool cut = sample.size() < bytes.size() && static_cast<uint8_t>(sample.back()) >= 0xC0;
  if (IsUTF8Bytes(sample.substr(0, sample.size() - cut))) return heUTF8;
  codepage = NamedCodepage(sample);
  return heDefault;
}

THtmlEncoding GetFileEncoding(const hstring& fileName, int32_t& codepage) {
  TFileStream file(fileName, fmOpenRead);
  char sample[4097];  // one more than is looked at, so that a cut sequence is seen as cut
  const int64_t count = file.Read(sample, sizeof sample);
  return GetBytesEncoding({sample, static_cast<size_t>(count)}, codepage);
}

THtMarkupText HtDecodeMarkup(std::string_view bytes) {
  if (bytes.starts_with(kUtf16BigMark)) return {DecodeUtf16(bytes), true};
  int32_t codepage;
  const THtmlEncoding encoding = GetBytesEncoding(bytes, codepage);
  if (encoding != heDefault) return HtDecodeMarkup(bytes, encoding, 0);
  // A document that says it is UTF-8 may have its faults; but not most of it.
  THtMarkupText utf8{{}, true};
  if (DecodeAsUtf8(bytes, codepage == kCodePageUtf8 ? 50 : 0, utf8.Text)) return utf8;
  const bool known = codepage != 0 && codepage != kCodePageUtf8 && HtCodePageExists(codepage);
  return HtDecodeMarkup(bytes, known ? heANSI : heDefault, codepage);
}

THtMarkupText HtDecodeMarkup(std::string_view bytes, THtmlEncoding encoding, int32_t codepage) {
  switch (encoding) {
    case heUTF8: return {HtFromUtf8(bytes.substr(bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0)), true};
    case heUTF16: return {DecodeUtf16(bytes), true};
    case heANSI: return {HtBytesToText(bytes, codepage), true};
    default: return {HtWidenBytes(bytes), false};
  }
}

}  // namespace ht
