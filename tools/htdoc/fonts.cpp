#include "fonts.h"

#include "arguments.h"
#include "fixedcanvas/fixedcanvas.h"

#ifdef HTDOC_FONTS
#include <refcanvas/refcanvas.h>  // in angle brackets: the program is built without it, too
#endif

using namespace ht;

// Text needs a host that has fonts; a build without one has only the canvas whose characters are all alike.
void UseFonts(bool fixed) {
  if (fixed) {
    HtDefaultCanvasClass = TFixedCanvas::Class();
    return;
  }
#ifdef HTDOC_FONTS
  TRefCanvas::Register();
#else
  throw EUsage("this build has no fonts: --fixed-fonts draws without");
#endif
}
