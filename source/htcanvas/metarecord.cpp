#include "htcanvas/metarecord.h"

#include "htcanvas/metareader.h"
#include "htcanvas/metawriter.h"

namespace ht {

void THtMetaCanvasRec::LoadFromStream(TStream& stream, const THtCanvasClass& canvasClass,
                                      THtFontCollection& fonts) {
  TMetaReader in(stream, canvasClass, fonts);
  Load(in);
  in.Finish();
}

void THtMetaCanvasRec::SavetoStream(TStream& stream) { TMetaWriter(stream, mtNone).Flush(); }

}  // namespace ht
