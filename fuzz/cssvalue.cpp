// Any text is a length, a value and a set of declarations: no number that is none comes out, and whole pixels and pixels
// agree.
#include <cmath>
#include <cstdint>

#include "htmlcss/cssparser.h"
#include "htmlcss/cssstyleset.h"
#include "htmlcss/elementstyle.h"
#include "htmlcss/measure.h"
#include "support/require.h"

using namespace ht;

namespace {

void CheckMeasure(TMeasure m) {
  const float pixels = m.GetFPixels();
  Require(std::isfinite(pixels) && std::isfinite(m.FValue));
  Require(m.GetFPixels() == pixels);
  m.GetPixels();
  Require(!m.AsString().Empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 4000) return 0;
  const hstring text = HtFromUtf8({reinterpret_cast<const char*>(data), size});
  TBaseElementStyle style;
  style.IntFontSize = 16;
  const float reference = 200;
  TMeasure m;
  m.Init(&style);
  m.Parent = &reference;
  m.Parse(text);
  CheckMeasure(m);
  TCSSTokens tokens;
  TCSSParser parser(text);
  parser.ParseValue(tokens);
  uint32_t color;
  for (TCSSTokenSequence sequence(&tokens); sequence.T; sequence.Next()) {
    m.Decode(sequence);
    CheckMeasure(m);
  }
  for (TCSSTokenSequence sequence(&tokens); sequence.T; sequence.Next()) sequence.ReadColor(color);
  TCSSStyleSet set, same;
  set.SetAsString(text);
  for (int32_t i = 0; i < set.Count(); ++i) {
    Require(i == 0 || set[i - 1].Name < set[i].Name);
    Require(std::isfinite(set.GetPixels(set[i].Name)));
  }
  same.Assign(set);
  same.IntersectWith(set);
  Require(same.Count() == 0);
  return 0;
}
