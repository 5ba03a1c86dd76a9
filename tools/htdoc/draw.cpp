#include "command.h"
#include "document.h"
#include "drawscript.h"
#include "fonts.h"
#include "htruntime/filestream.h"
#include "output.h"

using namespace ht;

namespace {

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

void RunScript(const TArguments& arguments, TDrawScript& script) {
  script.Run(HtToUtf8(ReadText(arguments, arguments.Operand(0))));
  script.Finish();
}

// The list of each page, one behind the other; without pages, that of the scene.
void Record(const TArguments& arguments, const std::string& fileName) {
  THtMetaCanvas canvas;
  TDrawScript script(canvas,
                     [&canvas] { return canvas.List()->Count() > 0; });  // has the fonts of the records
  RunScript(arguments, script);
  TFileStream file(HtFromUtf8(fileName), fmCreate);
  const int32_t pages = canvas.GetPageCount();
  for (int32_t i = 0; i < pages; ++i) static_cast<THtPageMeta*>(canvas.GetPage(i))->Meta->SavetoStream(file);
  if (pages == 0) canvas.List()->SavetoStream(file);
}

int RunDraw(const TArguments& arguments) {
  const std::string file(arguments.Value("-o"));
  UseFonts(arguments.Has("--fixed-fonts"));
  if (file.ends_with(".hmeta")) {
    if (arguments.Has("--style")) throw EUsage("a recording has no style: leave out --style or -o");
    Record(arguments, file);
    return kFound;
  }
  THtSVGCanvas canvas;
  TDrawScript script(canvas, [&canvas] { return !canvas.Writer().GetEmpty(); });
  RunScript(arguments, script);
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
    "draw a list of canvas calls as SVG, or record it",
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
    "Options:\n" HTDOC_FONTS_HELP
    "  --style          print the CSS of the text classes instead\n"
    "  -o OUT           write to a file; several pages go to OUT-1.svg, OUT-2.svg and so "
    "on;\n"
    "                   OUT.hmeta records all pages as a meta stream instead, without links\n"
    "                   and anchors, which it has no form for\n" HTDOC_ENCODING_HELP,
    kOptions,
    "SCRIPT",
    RunDraw,
};
