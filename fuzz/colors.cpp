// Colour texts and the number readers: any text gives a value, or EConvertError where it was asked for.
#include "htmlpars/colors.h"

#include <cstdint>
#include <cstdlib>

#include "htmlpars/stringparser.h"
#include "htruntime/exception.h"

using namespace ht;

static void Require(bool holds) {
  if (!holds) std::abort();
}

static void CheckColor(uint32_t color) { Require(htmlHextoColor(htmlColortoStr(color)) == color); }

// Reads numbers to the end of the text, each kind in turn.
static void ReadNumbers(const hstring& text, bool raise) {
  TStringParser parser(text);
  parser.RaiseException = raise;
  for (int kind = 0; !parser.Empty(); ++kind) {
    const int32_t before = parser.Pos();
    int64_t i;
    long double f;
    try {
      switch (kind % 7) {
        case 0: parser.ReadInt(); break;
        case 1: parser.ReadInt1(); break;
        case 2: parser.ReadHex(); break;
        case 3: parser.ReadBin(); break;
        case 4: parser.ReadNum(); break;
        case 5: parser.ReadNumEx(); break;
        default: parser.ReadIntOrFloat(i, f);
      }
    } catch (const EConvertError&) {
      Require(raise);
    }
    Require(parser.Pos() >= before && parser.p <= parser.pend);
    if (parser.Pos() == before) parser.Next();
  }
}

// The stretches between places where a line may break are the whole text.
static void ReadStretches(const hstring& text) {
  TStringParser parser(text);
  hstring stretch, all;
  while (!parser.Empty()) {
    parser.ReadtoWordBreak(stretch);
    Require(!stretch.Empty());
    all += stretch;
  }
  Require(all == text);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const hstring text = HtFromUtf8({reinterpret_cast<const char*>(data), size});
  bool isSystem;
  CheckColor(htmlHextoColor(text));
  CheckColor(htmlHextoColorSys(text, isSystem));
  ReadNumbers(text, false);
  ReadNumbers(text, true);
  if (size < 4096) ReadStretches(text);
  return 0;
}
