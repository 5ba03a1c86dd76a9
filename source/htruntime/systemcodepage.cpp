#include <array>
#include <atomic>
#include <bit>
#include <cstdlib>

#include "htruntime/codepage.h"
#include "htruntime/exception.h"
#include "htruntime/format.h"
#include "htruntime/latin1.h"
#include "htruntime/singlebytepage.h"

namespace ht {

namespace {

std::atomic<int32_t> SystemPage{0};  // 0: the environment has not been asked yet

// The first of the three variables that is set decides, as in setlocale: language_country.charset@modifier.
int32_t PageOfEnvironment() {
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* value = std::getenv(variable);
    if (!value || !*value) continue;
    std::string_view charset = value;
    charset = charset.substr(0, charset.find('@'));
    const size_t dot = charset.find('.');
    const int32_t page = dot == charset.npos ? 0 : detail::PageOfCharset(charset.substr(dot + 1));
    return page != 0 && HtCodePageExists(page) ? page : kCodePageUtf8;
  }
  return kCodePageUtf8;
}

const detail::TSingleBytePage* SystemSingleBytePage() { return detail::SingleBytePage(HtSystemCodePage()); }

}  // namespace

int32_t HtSystemCodePage() {
  int32_t page = SystemPage.load(std::memory_order_relaxed);
  if (page == 0) {
    // A page that is set meanwhile on another thread stays.
    const int32_t started = PageOfEnvironment();
    if (SystemPage.compare_exchange_strong(page, started)) page = started;
  }
  return page;
}

void HtSetSystemCodePage(int32_t page) {
  if (!HtCodePageExists(page)) throw EConvertError(HtFormat(u"Code page %d is not supported", page));
  SystemPage.store(page);
}

hstring HtWidenBytes(std::string_view bytes) {
  hstring text = hstring::Uninitialized(bytes.size());
  char16_t* out = text.Unique();
  if (const auto* page = SystemSingleBytePage())
    for (char c : bytes) *out++ = page->Widened[static_cast<uint8_t>(c)];
  else
    HtWidenLatin1(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), out);
  return text;
}

THtBytes HtNarrowText(std::u16string_view text) {
  THtBytes bytes(text.size(), '?');
  const auto* page = SystemSingleBytePage();
  if (!page) {
    HtNarrowLatin1(text.data(), text.size(), bytes.data());
    return bytes;
  }
  for (size_t i = 0; i < text.size(); ++i)
    if (const int byte = page->ByteOf(text[i]); byte >= 0) bytes[i] = static_cast<uint8_t>(byte);
  return bytes;
}

namespace {

hstring FromUtf16(std::string_view bytes, std::endian order) {
  if (bytes.empty()) return {};
  hstring text = hstring::Uninitialized((bytes.size() + 1) / 2);
  char16_t* out = text.Unique();
  const size_t whole = bytes.size() / 2;
  std::memcpy(out, bytes.data(), whole * 2);
  if (order != std::endian::native)
    for (size_t i = 0; i < whole; ++i) out[i] = static_cast<char16_t>(out[i] << 8 | out[i] >> 8);
  if (whole < text.Size()) out[whole] = 0xFFFD;  // half a unit
  return text;
}

}  // namespace

hstring HtDecodeText(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return HtFromUtf8(bytes.substr(3));
  if (bytes.starts_with("\xFF\xFE")) return FromUtf16(bytes.substr(2), std::endian::little);
  if (bytes.starts_with("\xFE\xFF")) return FromUtf16(bytes.substr(2), std::endian::big);
  return HtBytesToText(bytes, HtSystemCodePage());
}

}  // namespace ht
