// What is encoded for an address or as Base64 decodes to itself, and decoding takes anything.
#include "htutils/urls.h"

#include <algorithm>
#include <cstdint>

#include "htutils/base64.h"
#include "htutils/email.h"
#include "support/require.h"

using namespace ht;

// A list of addresses ends, however it is written.
static void ReadAddresses(hstring list) {
  hstring name, address;
  for (int32_t most = list.Length(); !list.Empty() && most >= 0; --most)
    list = SplitEmailAdress(list, name, address);
  Require(list.Empty());
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const THtBytes bytes(data, data + size);
  Require(Base64DecodetoBytes(Base64EncodeNoLF(bytes)) == bytes);
  Require(Base64DecodetoBytes(Base64EncodeBytes(bytes)) == bytes);
  Base64DecodetoBytes(bytes);

  const hstring text = HtFromUtf8({reinterpret_cast<const char*>(data), size});
  const bool pairs =
      std::any_of(text.begin(), text.end(), [](char16_t c) { return c >= 0xD800 && c < 0xE000; });
  if (!pairs) Require(HTTPDecode(HtEncodeUrl(text)) == text);
  HTTPDecode(text);

  const size_t half = text.Size() / 2;
  CombineUrl(text.View().substr(0, half), text.View().substr(half));
  if (size < 2000) ReadAddresses(text);
  return 0;
}
