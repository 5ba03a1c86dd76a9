#include <charconv>

#include "command.h"
#include "document.h"
#include "fonts.h"
#include "htruntime/exception.h"
#include "htruntime/stream.h"
#include "metadump.h"
#include "output.h"
#include "svgexporter/svgexporter.h"

using namespace ht;

namespace {

template <class T>
T NumberOf(std::string_view option, std::string_view text, T low, T high) {
  T number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || !(number >= low && number <= high))
    throw EUsage(std::string(option) + ": no number from " + std::to_string(low) + " to " +
                 std::to_string(high) + ": " + std::string(text));
  return number;
}

// "2x3".
TPoint PairOf(std::string_view option, std::string_view text, int32_t high) {
  const size_t by = text.find('x');
  if (by == text.npos) throw EUsage(std::string(option) + ": no pair of numbers AxB: " + std::string(text));
  return {NumberOf<int32_t>(option, text.substr(0, by), 1, high),
          NumberOf<int32_t>(option, text.substr(by + 1), 1, high)};
}

// The lists of a file as pages of one size.
class TRecording {
 public:
  /// Raises EHtException for a stream that does not reach its end.
  TRecording(const std::string& fileName, const TPoint& size)
      : FFonts(FCanvas.CanvasClass()->CreateFontCollection()) {
    constexpr int32_t kDPI = 96;
    const auto mm = [](int32_t pixels) { return static_cast<float>(pixels) * 25.4f / kDPI; };
    const std::string bytes = ReadInput(fileName);
    TBytesStream stream(THtBytes(bytes.begin(), bytes.end()));
    do {
      if (FCanvas.GetPageCount() == 0)
        FCanvas.BeginPaging(mm(size.X), mm(size.Y), kDPI, coDefault);
      else
        FCanvas.NewPage(coDefault);
      List(FCanvas.GetPageCount() - 1).LoadfromStream(stream, *FCanvas.CanvasClass(), *FFonts);
    } while (stream.GetPosition() < stream.GetSize());
  }

  THtMetaCanvas& Canvas() { return FCanvas; }
  THtMetaList& List(int32_t page) { return *static_cast<THtPageMeta*>(FCanvas.GetPage(page))->Meta; }

 private:
  THtMetaCanvas FCanvas;
  std::unique_ptr<THtFontCollection> FFonts;
};

TPoint PageSize(const TArguments& arguments) {
  constexpr int32_t kLargest = 1000000;
  return PairOf("--page", arguments.Value("--page", "794x1123"), kLargest);
}

int Check(const TArguments& arguments) {
  try {
    TRecording(arguments.Operand(0), PageSize(arguments));
  } catch (const EFileStreamError&) {
    throw;
  } catch (const EHtException&) {
    Print("false\n");
    return kNothingFound;
  }
  Print("true\n");
  return kFound;
}

int Dump(const TArguments& arguments) {
  TRecording recording(arguments.Operand(0), PageSize(arguments));
  for (int32_t page = 0; page < recording.Canvas().GetPageCount(); ++page) {
    THtMetaList& list = recording.List(page);
    for (int32_t i = 0; i < list.Count(); ++i) PrintLine(DumpRecord(*list.GetRec(i), page + 1));
  }
  return kFound;
}

// Four pages are put on a sheet that lies as they do, other numbers on one that lies across.
void LayOut(THtMetaCanvas& canvas, const TPoint& sheet) {
  const bool landscape = canvas.GetPageHeightPixels() < canvas.GetPageWidthPixels();
  const bool across = int64_t{sheet.X} * sheet.Y != 4;
  canvas.SetMultipage(sheet.X, sheet.Y, landscape != across ? coLandscape : coPortrait);
}

std::vector<int32_t> OrderOf(std::string_view text, int32_t pages) {
  std::vector<int32_t> order;
  for (;;) {
    const size_t comma = text.find(',');
    order.push_back(NumberOf<int32_t>("--order", text.substr(0, comma), 1, pages) - 1);
    if (comma == text.npos) return order;
    text.remove_prefix(comma + 1);
  }
}

int Export(const TArguments& arguments) {
  constexpr int32_t kMostPages = 100;
  TRecording recording(arguments.Operand(0), PageSize(arguments));
  THtMetaCanvas& canvas = recording.Canvas();
  if (arguments.Has("--sheet")) LayOut(canvas, PairOf("--sheet", arguments.Value("--sheet"), kMostPages));
  if (arguments.Has("--order"))
    canvas.PrintOrder = OrderOf(arguments.Value("--order"), canvas.GetPageCount());
  TSvgExporter exporter;
  exporter.SetOpacity(NumberOf<float>("--opacity", arguments.Value("--opacity", "1"), 0, 1));
  exporter.SetEmbedStyle(arguments.Has("--style"));
  canvas.ExportTo(exporter);
  const std::string prefix(arguments.Value("--svg"));
  for (int32_t i = 0; i < exporter.Count(); ++i)
    if (prefix.empty())
      PrintLine(exporter.Document(i));
    else
      WriteFile(prefix + "-" + std::to_string(i + 1) + ".svg", exporter.Document(i));
  return kFound;
}

int RunMeta(const TArguments& arguments) {
  if (arguments.Has("--sheet") && arguments.Has("--order"))
    throw EUsage("sheets hold the pages in their own order: leave out --sheet or --order");
  UseFonts(arguments.Has("--fixed-fonts"));
  if (arguments.Has("--check")) return Check(arguments);
  for (const char* option : {"--svg", "--sheet", "--order", "--opacity", "--style"})
    if (arguments.Has(option)) return Export(arguments);
  return Dump(arguments);
}

constexpr TOption kOptions[] = {{"--dump", false}, {"--check", false}, {"--svg", true},
                                {"--sheet", true}, {"--order", true},  {"--opacity", true},
                                {"--page", true},  {"--style", false}, {"--fixed-fonts", false}};

}  // namespace

extern const TCommand kMetaCommand = {
    "meta",
    "show recorded drawing, or turn it into SVG",
    "Usage: htdoc meta [OPTIONS] FILE\n"
    "Reads what `draw -o OUT.hmeta` has written, a list of records for each page, and prints a\n"
    "line of JSON for each record: its page, its kind and its fields.\n"
    "\n"
    "Options:\n"
    "  --dump           the same, in so many words\n"
    "  --check          print true if the stream reads to its end, else false with status 1\n"
    "  --svg PREFIX     write an SVG for each page to PREFIX-1.svg, PREFIX-2.svg and so on. The\n"
    "                   options below print them instead, unless it is given, too\n"
    "  --sheet HxV      put H pages side by side and V below each other on a sheet\n"
    "  --order 3,1,2    these pages in this order; the first is 1\n"
    "  --opacity F      play the records at this opacity, from 0 to 1\n"
    "  --style          put the CSS of the text classes into each SVG\n"
    "  --page WxH       the size of a page in pixels, which the stream does not tell; without it\n"
    "                   794x1123, A4 at 96 dots an inch\n" HTDOC_FONTS_HELP,
    kOptions,
    "FILE",
    RunMeta,
};
