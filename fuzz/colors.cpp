// Any text gives a colour or kColorInvalid, and a colour's own text gives the colour back.
#include "htmlpars/colors.h"

#include <cstdint>
#include <cstdlib>

using namespace ht;

static void CheckColor(uint32_t color) {
  if (htmlHextoColor(htmlColortoStr(color)) != color) std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const hstring text = HtFromUtf8({reinterpret_cast<const char*>(data), size});
  bool isSystem;
  CheckColor(htmlHextoColor(text));
  CheckColor(htmlHextoColorSys(text, isSystem));
  return 0;
}
