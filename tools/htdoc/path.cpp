#include <array>

#include "command.h"
#include "htcanvas/htcanvas.h"
#include "htmlpars/lower.h"
#include "htruntime/numformat.h"
#include "htutils/numbers.h"
#include "output.h"

using namespace ht;

namespace {

std::string Number(double value) { return HtToUtf8(HtFormatDecimal(value, 4)); }

// The numbers of a list with commas between.
template <size_t kCount>
std::array<float, kCount> ReadNumbers(std::string_view option, std::string_view list) {
  std::array<float, kCount> numbers{};
  for (size_t i = 0; i < kCount; ++i) {
    const size_t end = i + 1 < kCount ? list.find(',') : list.size();
    double value;
    if (end == list.npos || !HtTryStrToFloat(HtFromUtf8(list.substr(0, end)), value))
      throw EUsage(std::string(option) + " takes " + std::to_string(kCount) + " numbers with commas between");
    numbers[i] = static_cast<float>(value);
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return numbers;
}

// One record a line: its kind, then its numbers.
void PrintRecords(const THtCustomPath& path) {
  constexpr size_t kPrefix = 2;
  for (int32_t i = 0; i < path.Count(); ++i) {
    const THtPathRec& record = path.GetRec(i);
    hstring kind = HtEnumOf<THtPathRecKind>().NameOf(record.Kind).substr(kPrefix);
    hLower(kind);
    std::string line = HtToUtf8(kind);
    const auto add = [&line](const TPointF& point) { line += " " + Number(point.X) + " " + Number(point.Y); };
    if (record.Kind == prMoveTo || record.Kind == prLineTo) add(record.Point);
    for (const TPointF& point : record.Points) add(point);
    Print(line + "\n");
  }
}

int RunPath(const TArguments& arguments) {
  THtCustomPath path;
  path.Parse(HtFromUtf8(arguments.Operand(0)));
  if (arguments.Has("--records")) {
    PrintRecords(path);
  } else if (arguments.Has("--bounds")) {
    TRectF box;
    path.GetBounds(box, nullptr);
    Print(Number(box.Left) + " " + Number(box.Top) + " " + Number(box.Right) + " " + Number(box.Bottom) +
          "\n");
  } else if (arguments.Has("--contains")) {
    const auto point = ReadNumbers<2>("--contains", arguments.Value("--contains"));
    Print(path.ContainsPoint(point[0], point[1]) ? "true\n" : "false\n");
  } else if (arguments.Has("--flatten")) {
    THtCustomPath lines;
    path.Flatten(ReadNumbers<1>("--flatten", arguments.Value("--flatten"))[0], lines);
    PrintLine(lines.AsString());
  } else {
    if (arguments.Has("--matrix")) {
      const auto m = ReadNumbers<6>("--matrix", arguments.Value("--matrix"));
      THtMatrixData matrix;
      matrix.Init(m[0], m[1], m[2], m[3], m[4], m[5]);
      path.Transform(matrix);
    }
    PrintLine(path.AsString());
  }
  return kFound;
}

constexpr TOption kOptions[] = {
    {"--flatten", true}, {"--bounds", false}, {"--contains", true}, {"--matrix", true}, {"--records", false}};

}  // namespace

extern const TCommand kPathCommand = {
    "path",
    "show SVG path data as it was understood",
    "Usage: htdoc path [--flatten TOL | --bounds | --contains X,Y | --matrix A,B,C,D,E,F |\n"
    "                   --records] DATA\n"
    "Prints the path as data again.\n"
    "\n"
    "Options:\n"
    "  --flatten TOL    curves and arcs as lines; TOL is a distance that does not matter\n"
    "  --bounds         left, top, right and bottom of what it covers\n"
    "  --contains X,Y   whether the point lies inside: true or false\n"
    "  --matrix A,B,C,D,E,F\n"
    "                   the path after this map, in the order of SVG's matrix()\n"
    "  --records        what the path consists of, a record a line\n",
    kOptions,
    "DATA",
    RunPath,
};
