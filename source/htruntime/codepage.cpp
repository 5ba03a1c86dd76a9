#include "htruntime/codepage.h"

#include <bit>
#include <cerrno>
#include <iconv.h>
#include <mutex>

#include "htruntime/exception.h"
#include "htruntime/format.h"
#include "htruntime/singlebytepage.h"

namespace ht {

namespace {

constexpr char16_t kReplacement = 0xFFFD;

enum TPageKind : uint8_t { pkSingleByte, pkDoubleByte, pkUtf8 };

struct TPage {
  int32_t Number;
  TPageKind Kind;
  const char* IconvName;
  const char* Charsets;  // other names in small letters and digits, each with a blank behind it
};

// clang-format off
constexpr TPage kPages[] = {
    {  866, pkSingleByte, "CP866",      ""},
    {  932, pkDoubleByte, "CP932",      "sjis shiftjis "},
    {  936, pkDoubleByte, "CP936",      "gb2312 gbk gb18030 "},
    {  949, pkDoubleByte, "CP949",      "euckr "},
    {  950, pkDoubleByte, "CP950",      "big5 "},
    { 1250, pkSingleByte, "CP1250",     ""},
    { 1251, pkSingleByte, "CP1251",     ""},
    { 1252, pkSingleByte, "CP1252",     "iso88591 latin1 "},
    { 1253, pkSingleByte, "CP1253",     ""},
    { 1254, pkSingleByte, "CP1254",     "iso88599 "},
    { 1255, pkSingleByte, "CP1255",     "iso88598 "},
    { 1256, pkSingleByte, "CP1256",     ""},
    { 1257, pkSingleByte, "CP1257",     ""},
    { 1258, pkSingleByte, "CP1258",     ""},
    {20866, pkSingleByte, "KOI8-R",     "koi8r "},
    {28592, pkSingleByte, "ISO-8859-2", "iso88592 "},
    {28595, pkSingleByte, "ISO-8859-5", "iso88595 "},
    {28596, pkSingleByte, "ISO-8859-6", "iso88596 "},
    {28597, pkSingleByte, "ISO-8859-7", "iso88597 "},
    {kCodePageUtf8, pkUtf8, "UTF-8",    "utf8 "},
};
// clang-format on

constexpr const char* kUtf16 = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";

const TPage* FindPage(int32_t number) {
  for (const TPage& page : kPages)
    if (page.Number == number) return &page;
  return nullptr;
}

[[noreturn]] void RaisePage(int32_t number) {
  throw EConvertError(HtFormat(u"Code page %d is not supported", number));
}

const TPage& PageOf(int32_t number) {
  const TPage* page = FindPage(number);
  if (!page) RaisePage(number);
  return *page;
}

class TConverter {
 public:
  TConverter(const char* to, const char* from) : FHandle(iconv_open(to, from)) {}
  TConverter(const TConverter&) = delete;
  TConverter& operator=(const TConverter&) = delete;
  ~TConverter() {
    if (Valid()) iconv_close(FHandle);
  }

  bool Valid() const { return FHandle != reinterpret_cast<iconv_t>(-1); }

  // Converts as far as it goes and moves both pointers. 0 at the end of the input; EILSEQ before what cannot be
  // converted; EINVAL before a character that is cut off.
  int Run(const char*& in, const char* inEnd, char*& out, char* outEnd) {
    auto inLeft = static_cast<size_t>(inEnd - in);
    auto outLeft = static_cast<size_t>(outEnd - out);
    const size_t result = iconv(FHandle, const_cast<char**>(&in), &inLeft, &out, &outLeft);
    return result == static_cast<size_t>(-1) ? errno : 0;
  }

  // Gives out what is held back.
  bool Flush(char*& out, char* outEnd) {
    auto outLeft = static_cast<size_t>(outEnd - out);
    return iconv(FHandle, nullptr, nullptr, &out, &outLeft) != static_cast<size_t>(-1);
  }

 private:
  iconv_t FHandle;
};

}  // namespace

bool HtCodePageExists(int32_t number) {
  const TPage* page = FindPage(number);
  return page && (page->Kind == pkUtf8 || TConverter(kUtf16, page->IconvName).Valid());
}

int32_t detail::PageOfCharset(std::string_view name) {
  std::string plain;
  for (char c : name) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) plain += c;
  }
  if (plain.empty()) return 0;
  for (const TPage& page : kPages) {
    const std::string number = std::to_string(page.Number);
    if (plain == "cp" + number || plain == "windows" + number || plain == "ibm" + number) return page.Number;
    const std::string_view charsets = page.Charsets;
    for (size_t start = 0; start < charsets.size(); start = charsets.find(' ', start) + 1)
      if (charsets.substr(start, charsets.find(' ', start) - start) == plain) return page.Number;
  }
  return 0;
}

// --- single-byte pages ---

int detail::TSingleBytePage::ByteOf(char16_t unit) const {
  const uint8_t byte = FBytes[FBlockOf[unit >> 8]][unit & 0xFF];
  return byte == 0 && unit != 0 ? -1 : byte;
}

void detail::TSingleBytePage::Define(int byte, char16_t unit) {
  Widened[static_cast<size_t>(byte)] = unit;
  uint8_t& block = FBlockOf[unit >> 8];
  if (block == 0) block = FBlockCount++;
  FBytes.at(block)[unit & 0xFF] = static_cast<uint8_t>(byte);
}

namespace {

// Each byte is converted alone, so pages in which iconv joins letters and marks (1255, 1258) stay byte by byte.
void Build(const TPage& page, detail::TSingleBytePage& table) {
  TConverter converter(kUtf16, page.IconvName);
  if (!converter.Valid()) RaisePage(page.Number);
  for (int byte = 0; byte < 256; ++byte) {
    const char input = static_cast<char>(byte);
    char16_t unit = 0;
    const char* in = &input;
    char* out = reinterpret_cast<char*>(&unit);
    char* outEnd = out + sizeof unit;
    bool defined = converter.Run(in, &input + 1, out, outEnd) == 0;
    // A letter that could be joined with a mark behind it is held back until it is asked for.
    if (defined && out != outEnd) defined = converter.Flush(out, outEnd) && out == outEnd;
    if (!defined) unit = static_cast<char16_t>(byte < 0xA0 ? byte : 0xF700 + byte);
    table.Define(byte, unit);
    table.Text[static_cast<size_t>(byte)] = defined || byte < 0xA0 ? unit : kReplacement;
  }
}

}  // namespace

const detail::TSingleBytePage* detail::SingleBytePage(int32_t number) {
  const TPage& page = PageOf(number);
  if (page.Kind != pkSingleByte) return nullptr;
  static TSingleBytePage tables[std::size(kPages)];
  static std::once_flag built[std::size(kPages)];
  const size_t index = static_cast<size_t>(&page - kPages);
  std::call_once(built[index], [&] { Build(page, tables[index]); });
  return &tables[index];
}

namespace {

hstring DecodeSingleByte(const detail::TSingleBytePage& page, std::string_view bytes) {
  hstring text = hstring::Uninitialized(bytes.size());
  char16_t* out = text.Unique();
  for (char c : bytes) *out++ = page.Text[static_cast<uint8_t>(c)];
  return text;
}

THtBytes EncodeSingleByte(const detail::TSingleBytePage& page, std::u16string_view text) {
  THtBytes bytes(text.size(), '?');
  uint8_t* out = bytes.data();
  for (size_t i = 0; i < text.size(); ++i) {
    const int byte = page.ByteOf(text[i]);
    if (byte >= 0) *out = static_cast<uint8_t>(byte);
    ++out;
    // A pair is one character and gives one "?".
    if ((text[i] & 0xFC00) == 0xD800 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00) ++i;
  }
  bytes.resize(static_cast<size_t>(out - bytes.data()));
  return bytes;
}

// --- double-byte pages ---

bool IsLead(const TPage& page, uint8_t byte) {
  if (page.Number == 932) return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
  return byte >= 0x81 && byte <= 0xFE;
}

// How many bytes one U+FFFD stands for: a pair that is not in the page, or one byte. An ASCII byte behind a lead is
// never swallowed, so that markup survives.
int BadLength(const TPage& page, const char* in, const char* end) {
  return IsLead(page, static_cast<uint8_t>(in[0])) && in + 1 < end && (in[1] & 0x80) ? 2 : 1;
}

hstring DecodeDoubleByte(const TPage& page, std::string_view bytes) {
  TConverter converter(kUtf16, page.IconvName);
  if (!converter.Valid()) RaisePage(page.Number);
  hstring text = hstring::Uninitialized(bytes.size());  // no character gives more units than it has bytes
  char16_t* units = text.Unique();
  const char* in = bytes.data();
  const char* end = in + bytes.size();
  char* out = reinterpret_cast<char*>(units);
  char* outEnd = out + bytes.size() * sizeof(char16_t);
  while (in < end) {
    if (converter.Run(in, end, out, outEnd) == 0) break;
    in += BadLength(page, in, end);
    std::memcpy(out, &kReplacement, sizeof kReplacement);
    out += sizeof kReplacement;
  }
  text.SetLength(static_cast<size_t>(reinterpret_cast<char16_t*>(out) - units));
  return text;
}

THtBytes EncodeDoubleByte(const TPage& page, std::u16string_view text) {
  TConverter converter(page.IconvName, kUtf16);
  if (!converter.Valid()) RaisePage(page.Number);
  THtBytes bytes(text.size() * 2);
  const char* in = reinterpret_cast<const char*>(text.data());
  const char* end = in + text.size() * sizeof(char16_t);
  char* start = reinterpret_cast<char*>(bytes.data());
  char* out = start;
  char* outEnd = out + bytes.size();
  while (in < end) {
    const int error = converter.Run(in, end, out, outEnd);
    if (error == 0) break;
    char16_t unit;
    std::memcpy(&unit, in, sizeof unit);
    *out++ = '?';
    in += sizeof unit;
    if ((unit & 0xFC00) != 0xD800 || in == end) continue;
    std::memcpy(&unit, in, sizeof unit);
    if ((unit & 0xFC00) == 0xDC00) in += sizeof unit;
  }
  bytes.resize(static_cast<size_t>(out - start));
  return bytes;
}

}  // namespace

hstring HtBytesToText(std::string_view bytes, int32_t number) {
  const TPage& page = PageOf(number);
  if (page.Kind == pkUtf8) return HtFromUtf8(bytes);
  if (bytes.empty()) return {};
  if (page.Kind == pkDoubleByte) return DecodeDoubleByte(page, bytes);
  return DecodeSingleByte(*detail::SingleBytePage(number), bytes);
}

THtBytes HtTextToBytes(std::u16string_view text, int32_t number) {
  const TPage& page = PageOf(number);
  if (page.Kind == pkUtf8) {
    const std::string bytes = HtToUtf8(text);
    return {bytes.begin(), bytes.end()};
  }
  if (page.Kind == pkDoubleByte) return EncodeDoubleByte(page, text);
  return EncodeSingleByte(*detail::SingleBytePage(number), text);
}

}  // namespace ht
