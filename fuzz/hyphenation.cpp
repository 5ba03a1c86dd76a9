// Any bytes are a list of words. What it says of a word, and what the rule says of others, are places within the word, in order.
#include <algorithm>
#include <cstdint>

#include "htcanvas/language.h"
#include "htruntime/codepage.h"
#include "htruntime/stringlist.h"
#include "support/require.h"

using namespace ht;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 10000) return 0;
  THtLanguage russian, listed;
  russian.Name = u"ru"_hs;
  TBytesStream stream({data, data + size});
  listed.LoadHyphenationfromStream(stream);
  stream.SetPosition(0);
  TStringList lines;
  lines.LoadFromStream(stream);
  for (int32_t i = 0; i < lines.GetCount(); ++i) {
    const hstring line = lines.Get(i);
    const std::vector<uint32_t> breaks = russian.GetHyphenationPositions(line);
    Require(std::is_sorted(breaks.begin(), breaks.end()));
    for (const uint32_t place : breaks) Require(place > 1 && place < line.Size());
    for (const uint32_t place : listed.GetHyphenationPositions(line.View().substr(0, line.View().find(u' '))))
      Require(place >= 1 && place <= size);
  }
  return 0;
}
