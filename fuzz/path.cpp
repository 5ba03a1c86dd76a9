// Any text is path data or refused: what was read is written without a number that is none, reads back, and can be flattened,
// moved, measured and asked for points.
#include <cstdint>

#include "htcanvas/custompath.h"
#include "htruntime/exception.h"
#include "support/require.h"

using namespace ht;

namespace {

void CheckText(const hstring& text) {
  Require(text.View().find(u"nan") == std::u16string_view::npos &&
          text.View().find(u"inf") == std::u16string_view::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 4000) return 0;
  THtCustomPath path;
  try {
    path.Parse(HtFromUtf8({reinterpret_cast<const char*>(data), size}));
  } catch (const EHtException&) {}
  const hstring text = path.AsString();
  CheckText(text);
  THtCustomPath again, lines;
  again.Parse(text);
  CheckText(again.AsString());
  path.Flatten(.5f, lines);
  Require(!lines.HasCurves());
  CheckText(lines.AsString());
  TRectF box;
  path.GetBounds(box, nullptr);
  path.ContainsPoint(1, 1);
  path.IsRect();
  path.LastPoint();
  THtMatrixData matrix;
  matrix.Rotate(30);
  matrix.Translate(3, 4);
  path.Transform(matrix);
  path.Translate(1, 1);
  CheckText(path.AsString());
  return 0;
}
