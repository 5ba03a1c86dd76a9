// The readers of numbers and dates: any text gives a value, or an exception where that is their answer.
#include "htutils/numbers.h"

#include <algorithm>
#include <cstdint>

#include "htmlpars/stringparser.h"
#include "htruntime/exception.h"
#include "htutils/dates.h"
#include "support/require.h"

using namespace ht;

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

template <class TRead>
static void MayRaise(TRead read) {
  try {
    read();
  } catch (const EHtException&) {}
}

// The text up to the first "|" is a mask, the rest a date.
static void ReadDates(std::u16string_view text) {
  const size_t bar = std::min(text.find(u'|'), text.size());
  MayRaise([&] { StrtoDateFmt(text.substr(std::min(bar + 1, text.size())), text.substr(0, bar)); });
  MayRaise([&] { StrtoDateFmt(text, u""); });
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const hstring text = HtFromUtf8({reinterpret_cast<const char*>(data), size});
  ReadNumbers(text, false);
  ReadNumbers(text, true);
  if (size < 4096) ReadStretches(text);
  iStrtoFloat(text);
  iStrtoInt(text);
  HexToDec(text);
  MayRaise([&] { StrtoFloatCheck(text, u'.', u','); });
  ReadDates(text);
  return 0;
}
