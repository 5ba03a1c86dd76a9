// Escaped text, unescaped by the plain rules of HTML, is the text again. The input is UTF-16.
#include <cstdint>
#include <cstring>

#include "htmlpars/entities.h"
#include "htmlpars/htmlencode.h"
#include "htutils/faststring.h"
#include "support/require.h"

using namespace ht;

static uint32_t CodeOf(const std::string& name) {
  if (name.starts_with("#x")) return static_cast<uint32_t>(std::stoul(name.substr(2), nullptr, 16));
  if (name.starts_with("#")) return static_cast<uint32_t>(std::stoul(name.substr(1)));
  const hstring wide = HtFromUtf8(name);
  return GlobalEntityDictionary().FindEntity(wide.Data(), wide.Length());
}

static hstring Unescape(std::u16string_view text) {
  std::u16string result;
  while (!text.empty()) {
    if (text[0] != u'&') {
      result += text[0];
      text.remove_prefix(1);
      continue;
    }
    const size_t end = text.find(u';');
    Require(end != text.npos);
    const uint32_t code = CodeOf(HtToUtf8(text.substr(1, end - 1)));
    if (code > 0xFFFF) {
      result += static_cast<char16_t>(0xD7C0 + (code >> 10));
      result += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
    } else {
      result += static_cast<char16_t>(code);
    }
    text.remove_prefix(end + 1);
  }
  return hstring(std::u16string_view(result));
}

template <class TEncode, class TAppend>
static void Check(const hstring& text, TEncode encode, TAppend append, int64_t overhead) {
  const hstring escaped = encode(text, -1);
  Require(escaped.Length() == text.Length() + overhead);
  Require(escaped.View().find_first_of(u"<>\u00A0") == std::u16string_view::npos);
  Require(Unescape(escaped) == text);
  Require(encode(text, overhead) == escaped && encode(text, overhead + 1) == escaped);
  TFastString builder(16);
  append(builder, text);
  Require(builder.GetAsString() == escaped);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  hstring text = hstring::Uninitialized(size / 2);
  if (size >= 2) std::memcpy(text.Unique(), data, size / 2 * 2);
  Check(text, HtmlEncode, HtAppendEncoded, HtmlEncodeNodeOverhead(text));
  Check(text, HtmlEncodeAttr, HtAppendEncodedAttr, HtmlEncodeAttrOverhead(text));
  Check(text, HtmlEncodeAttrNumeric, HtAppendEncodedAttrNumeric, HtmlEncodeAttrOverhead(text));
  return 0;
}
