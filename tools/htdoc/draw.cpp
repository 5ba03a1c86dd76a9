#include "command.h"
#include "document.h"
#include "drawscript.h"
#include "fixedcanvas/fixedcanvas.h"
#include "htruntime/filestream.h"
#include "output.h"

#ifdef HTDOC_FONTS
#include <refcanvas/refcanvas.h>  // in angle brackets: the program is built without it, too
#endif

using namespace ht;

namespace {

void WriteFile(const std::string& name, const hstring& text) {
  const std::string bytes = HtToUtf8(text);
  TFileStream file(HtFromUtf8(name), fmCreate);
  file.WriteBuffer(bytes.data(), static_cast<int64_t>(bytes.size()));
}

// "out.svg" and 2: "out-2.svg".
std::string NumberedName(const std::string& name, int32_t number) {
  const size_t slash = name.find_last_of('/'), dot = name.find_last_of('.');
  const bool hasEnding = dot != name.npos && (slash == name.npos || dot > slash);
  const size_t at = hasEnding ? dot : name.size();
  return name.substr(0, at) + "-" + std::to_string(number) + name.substr(at);
}

void Put(const std::string& file, const hstring& text) {
  if (file.empty())
    Print(text);
  else
    WriteFile(file, text);
}

void PutPages(const std::string& file, const THtSVGCanvas& canvas) {
  const int32_t count = canvas.GetPageCount();
  for (int32_t i = 0; i < count; ++i) {
    const hstring& svg = static_cast<const THtPageSVG*>(canvas.GetPage(i))->SVG;
    if (file.empty())
      PrintLine(svg);
    else
      WriteFile(count > 1 ? NumberedName(file, i + 1) : file, svg);
  }
}

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

int RunDraw(const TArguments& arguments) {
  const std::string file(arguments.Value("-o"));
  if (file.ends_with(".hmeta")) throw EUsage("this build writes SVG only, no meta streams");
  UseFonts(arguments.Has("--fixed-fonts"));
  TDrawScript script;
  script.Run(HtToUtf8(ReadText(arguments, arguments.Operand(0))));
  script.Finish();
  THtSVGCanvas& canvas = script.Canvas();
  if (arguments.Has("--style"))
    Put(file, canvas.Style());
  else if (canvas.GetPageCount() == 0)
    Put(file, canvas.Writer().GetAsString());
  else
    PutPages(file, canvas);
  return kFound;
}

constexpr TOption kOptions[] = {{"--fixed-fonts", false}, {"--style", false}, {"-o", true}, kEncodingOption};

}  // namespace

extern const TCommand kDrawCommand = {
    "draw",
    "draw a list of canvas calls as SVG",
    "Usage: htdoc draw [--fixed-fonts] [--style] [-o OUT] [--encoding NAME] SCRIPT\n"
    "Draws what SCRIPT tells, one call a line, and prints it as SVG: one document a page, or\n"
    "without a page the elements alone. Lines that start with # are passed over. Colours are\n"
    "AARRGGBB, lengths pixels, angles degrees.\n"
    "\n"
    "  page W_MM H_MM DPI               a new page\n"
    "  pen COLOR WIDTH [STYLE]          solid, dash, dot, dashdot or dashdotdot\n"
    "  dashes V...                      the pen's own pattern\n"
    "  brush COLOR\n"
    "  linear ANGLE L T R B POS:COLOR...\n"
    "  radial CX CY FX FY RADIUS POS:COLOR...\n"
    "  line X1 Y1 X2 Y2                 wavy X1 Y1 X2 Y2\n"
    "  rect X Y W H                     fillrect X Y W H\n"
    "  roundrect X Y W H RX RY          fillroundrect X Y W H RX RY\n"
    "  ellipse X Y W H                  fillellipse X Y W H\n"
    "  path DATA                        fillpath DATA\n"
    "  cliprect X Y W H                 clippath DATA\n"
    "  save                             restore\n"
    "  translate DX DY                  scale SX SY\n"
    "  rotate ANGLE                     matrix A B C D E F\n"
    "  font HEIGHT STYLES NAME          styles joined by +, or -: bold italic underline\n"
    "                                   strikeout light ultralight black semibold\n"
    "  color COLOR                      of text\n"
    "  text X Y W H TEXT                image FILE X Y W H\n"
    "  link HREF TITLE                  endlink\n"
    "  anchor ID                        the next text has this id\n"
    "  check X Y W H FLAGS              radio and button in the same way; flags joined by +,\n"
    "                                   or -: checked pressed hover disabled\n"
    "\n"
    "Options:\n"
    "  --fixed-fonts    measure every character half as wide as the font is high, whatever\n"
    "                   fonts are installed\n"
    "  --style          print the CSS of the text classes instead\n"
    "  -o OUT           write to a file; several pages go to OUT-1.svg, OUT-2.svg and so "
    "on\n" HTDOC_ENCODING_HELP,
    kOptions,
    "SCRIPT",
    RunDraw,
};
