// Splitting texts into runs: they cover the text without gap and overlap, and a run alone does not depend on what class
// it is made of. Character maps over the same bytes decode to some text.
#include <cstdint>
#include <cstring>

#include "htcanvas/cmap.h"
#include "htcanvas/splitstring.h"
#include "support/require.h"

using namespace ht;

static void Split(const hstring& text) {
  THtTextRuns runs;
  HtSplitString(text, runs);
  int32_t next = 1;
  for (int32_t i = 0; i < runs.GetCount(); ++i) {
    const THtTextRun& run = *runs.GetRun(i);
    Require(run.Start == next && run.Count > 0);
    Require(!run.Flags.Contains(trfLineBreak) || run.Count <= 2);
    next += run.Count;
  }
  Require(next == text.Length() + 1);
}

static void Map(const uint8_t* data, size_t size) {
  THtCMap map;
  size_t at = 0;
  for (; at + 12 <= size && map.Count() < 50; at += 12) {
    uint32_t start, end;
    int32_t base;
    std::memcpy(&start, data + at, 4);
    std::memcpy(&end, data + at + 4, 4);
    std::memcpy(&base, data + at + 8, 4);
    if (start & 1) start &= 0xFFFF, end &= 0xFFFF;
    map.AddRec(start, end, base, (base & 15) == 0 ? u"fi"_hs : hstring(), (base & 1) ? u"a"_hs : u"b"_hs);
  }
  map.Sort();
  map.Unambiguous(0);
  map.UnambiguousNames();
  const THtBytes bytes(data, data + size);
  map.DecodeBytes(bytes);
  map.DecodeANSIBytes(bytes);
  for (uint32_t code = 0; code < 600; ++code)
    if (const THtCMapRec* rec = map.Find(code)) Require(rec->CStart <= code && code <= rec->CEnd);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Split(HtFromUtf8({reinterpret_cast<const char*>(data), size}));
  std::u16string units(size / 2, u'\0');
  if (size > 0) std::memcpy(units.data(), data, units.size() * 2);
  Split(units);
  Map(data, size);
  return 0;
}
