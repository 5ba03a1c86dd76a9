// Any bytes are a list of records or refused. What was read is shown, played on canvases of the same and of other classes,
// and written; that reads back and is written again to the same bytes.
#include <cstdint>

#include "fixedcanvas/fixedcanvas.h"
#include "htdoc/metadump.h"
#include "htruntime/exception.h"
#include "support/require.h"

using namespace ht;

namespace {

// Foreign to what was read.
class TOtherPen : public THtPen {
  HT_CLASS(TOtherPen, THtPen)
};
class TOtherBrush : public THtBrush {
  HT_CLASS(TOtherBrush, THtBrush)
};
class TOtherPath : public THtCustomPath {
  HT_CLASS(TOtherPath, THtCustomPath)
};
class TOtherFont : public TFixedFont {
  HT_CLASS(TOtherFont, TFixedFont)
};
class TOtherClass : public TFixedCanvasClass {
 public:
  using TFixedCanvasClass::TFixedCanvasClass;
  const THtPenClass* PenClass() const override { return TOtherPen::Class(); }
  const THtBrushClass* BrushClass() const override { return TOtherBrush::Class(); }
  const THtPathClass* PathClass() const override { return TOtherPath::Class(); }
  const THtFontClass* FontClass() const override { return TOtherFont::Class(); }

 protected:
  ~TOtherClass() = default;
};
class TOtherCanvas : public TFixedCanvas {
  HT_CLASS(TOtherCanvas, TFixedCanvas)

 public:
  using TClassRef = TOtherClass;
};

// What was read before the list ends, if it does not.
bool Load(THtMetaList& list, const THtBytes& bytes, THtFontCollection& fonts) {
  TBytesStream stream(bytes);
  try {
    list.LoadfromStream(stream, *TFixedCanvas::Class(), fonts);
    return true;
  } catch (const EHtException&) {
    return false;
  }
}

THtBytes Saved(const THtMetaList& list) {
  TBytesStream stream;
  list.SavetoStream(stream);
  return stream.TakeBytes();
}

void Play(THtMetaList& list, THtCanvas& canvas, float opacity) {
  THtCanvasScene scene;
  scene.Init({0, 0, 800, 600}, nullptr);
  canvas.BeginScene(scene);
  list.Play(canvas, opacity);
  canvas.EndScene();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 20000) return 0;
  HtDefaultCanvasClass = TFixedCanvas::Class();
  const auto fonts = TFixedCanvas::Class()->CreateFontCollection();
  THtMetaList list(true);
  Load(list, {data, data + size}, *fonts);
  const THtBytes saved = Saved(list);

  for (int32_t i = 0; i < list.Count(); ++i) Require(DumpRecord(*list.GetRec(i), 1).View().ends_with(u'}'));
  THtSVGCanvas svg;
  TOtherCanvas other;
  THtMetaCanvas copy;
  Play(list, svg, 0.5f);
  Play(list, other, 0.5f);
  Play(list, copy, 1);
  Require(Saved(list) == saved);

  THtMetaList again(true);
  Require(Load(again, saved, *fonts));
  Require(Saved(again) == saved);
  again.Unify();
  Require(Saved(again) == saved);
  return 0;
}
