// SVG path data into a path.

#include <algorithm>
#include <cmath>

#include "htcanvas/path.h"
#include "htmlpars/stringparser.h"
#include "htruntime/exception.h"
#include "htruntime/unicode.h"

namespace ht {

namespace {

bool IsNumberStart(char16_t c) { return (c >= u'0' && c <= u'9') || c == u'-' || c == u'.'; }
bool IsLetter(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }
char16_t Lower(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }

// Floats can still reckon with what lies as far as this.
constexpr double kFarthest = 1e30;

double InReach(double value) { return std::clamp(value, -kFarthest, kFarthest); }

struct TPointD {
  double X = 0, Y = 0;
};

TPointD Reflected(const TPointD& point, const TPointD& center) {
  return {InReach(2 * center.X - point.X), InReach(2 * center.Y - point.Y)};
}

class TPathParser {
 public:
  TPathParser(THtPath& path, std::u16string_view text) : FPath(path), FParser(hstring(text)) {}

  void Run() {
    while (!FParser.Empty()) {
      const char16_t c = *FParser.p;
      if (c < 0x21 || (!IsNumberStart(c) && !IsLetter(c))) {
        FParser.Skip(1);
        continue;
      }
      if (IsLetter(c)) {
        StartCommand(c);
        if (!HasArgument()) continue;
      } else if (FCommand == 0 || FLow == u'z') {
        RaiseUnknown(0);
      }
      Round();
    }
    Flush();
  }

 private:
  [[noreturn]] static void RaiseUnknown(char16_t command) {
    hstring message = u"Unknown path command "_hs;
    message += command;
    throw EHtException(message);
  }

  // A command at the end, or right before another one, draws nothing.
  bool HasArgument() {
    if (std::u16string_view(u"mlhvcsqtaz").find(FLow) == std::u16string_view::npos) RaiseUnknown(FCommand);
    return FLow == u'z' || (!FParser.Empty() && !IsLetter(*FParser.p));
  }

  // What cannot be a coordinate counts as 0, and does not hold the reader up.
  double Number() {
    const char16_t* before = FParser.p;
    const double value = FParser.ReadNumEx();
    if (FParser.p == before && !FParser.Empty() && !IsLetter(*before)) FParser.Skip(1);
    return std::fabs(value) < kFarthest ? value : 0;
  }

  static double Coordinate(double current, double value, bool relative) {
    return relative ? InReach(current + value) : value;
  }

  TPointD Pair(double x, bool relative) {
    const double y = Number();
    return {Coordinate(FCurrent.X, x, relative), Coordinate(FCurrent.Y, y, relative)};
  }

  void Flush() {
    if (FPoints.empty()) return;
    std::vector<TPointF> points;
    points.reserve(FPoints.size());
    for (const TPointD& point : FPoints)
      points.push_back({static_cast<float>(point.X), static_cast<float>(point.Y)});
    FLow == u'c' || FLow == u's' ? FPath.AddBeziers(points) : FPath.AddQBeziers(points);
    if (FPoints.size() > 1) {
      FControl = FPoints[FPoints.size() - 2];
      FCurrent = FPoints.back();
    }
    FPoints.clear();
  }

  void StartCommand(char16_t letter) {
    Flush();
    FCommand = letter;
    FLow = Lower(letter);
    if (FLow == u's')
      FPoints.push_back(FPrevLow == u'c' || FPrevLow == u's' ? Reflected(FControl, FCurrent) : FCurrent);
    if (FLow == u't')
      FPoints.push_back(FPrevLow == u'q' || FPrevLow == u't' ? Reflected(FControl, FCurrent) : FCurrent);
    FParser.Skip(1);
    FParser.SkipBlanks();
  }

  // What comes behind a closed figure starts where that one did.
  void Reopen() {
    if (!FClosed) return;
    FClosed = false;
    FPath.MoveTo(static_cast<float>(FStart.X), static_cast<float>(FStart.Y));
    FSegmentOpen = true;
  }

  void Round() {
    if (FLow == u'z') return Close();
    if (FLow != u'm') Reopen();
    const double value = Number();
    const bool relative = FCommand == FLow;
    switch (FLow) {
      case u'm': Move(Pair(value, relative), relative); break;
      case u'l': Line(Pair(value, relative)); break;
      case u'h': Line({Coordinate(FCurrent.X, value, relative), FCurrent.Y}); break;
      case u'v': Line({FCurrent.X, Coordinate(FCurrent.Y, value, relative)}); break;
      case u'a': Arc(value, relative); break;
      default: Curve(Pair(value, relative), relative);
    }
    FSegmentOpen = true;
    FPrevLow = FLow;
  }

  void Close() {
    if (!FSegmentOpen) return;
    FPath.CloseFigure();
    FCurrent = FStart;
    FSegmentOpen = false;
    FClosed = true;
  }

  void Move(const TPointD& point, bool relative) {
    FCurrent = FStart = point;
    FCommand = relative ? u'l' : u'L';
    FLow = u'l';
    FClosed = false;
    FPath.MoveTo(static_cast<float>(point.X), static_cast<float>(point.Y));
  }

  void Line(const TPointD& point) {
    FCurrent = point;
    FPath.LineTo(static_cast<float>(point.X), static_cast<float>(point.Y));
  }

  void StartAt(const TPointD& point) {
    if (!FSegmentOpen) FStart = point;
  }

  void Curve(const TPointD& point, bool relative) {
    const bool cubic = FLow == u'c' || FLow == u's';
    const size_t perSegment = cubic ? 3 : 2;
    // Behind a whole segment of a command that repeats, its control point is mirrored.
    if ((FLow == u's' || FLow == u't') && !FPoints.empty() && FPoints.size() % perSegment == 0)
      FPoints.push_back(Reflected(FPoints[FPoints.size() - 2], FCurrent));
    FPoints.push_back(point);
    const bool wholeSegment = FPoints.size() % perSegment == 0;
    if (wholeSegment && (relative || FLow == u's' || FLow == u't')) FCurrent = point;
    if (FLow != u'q') StartAt(point);
  }

  // No radius makes a line, no distance makes nothing. Source: SVG 1.1, appendix F.6.2.
  void Arc(double rx, bool relative) {
    const double ry = Number(), rotation = Number();
    const bool large = FParser.ReadInt1() != 0, sweep = FParser.ReadInt1() != 0;
    const TPointD end = Pair(Number(), relative);
    if (rx == 0 || ry == 0)
      FPath.LineTo(static_cast<float>(end.X), static_cast<float>(end.Y));
    else if (end.X != FCurrent.X || end.Y != FCurrent.Y)
      ArcTo(end, rx, ry, rotation, large, sweep);
    FCurrent = end;
    StartAt(end);
  }

  // An ellipse that floats cannot tell any more is left out.
  void ArcTo(const TPointD& end, double rx, double ry, double rotation, bool large, bool sweep) {
    const THtArc arc = THtPath::CalcArc(FCurrent.X, FCurrent.Y, end.X, end.Y, rx, ry, rotation, large, sweep,
                                        *FPath.PathClass());
    const auto fits = [](double value) { return std::fabs(value) < kFarthest; };
    if (!fits(arc.Cx) || !fits(arc.Cy) || !fits(arc.Rx) || !fits(arc.Ry) || !std::isfinite(arc.SweepAngle))
      return;
    if (rotation == 0) return Add(FPath, arc);
    const std::unique_ptr<THtPath> turned = FPath.PathClass()->Create(FPath.FForClip);
    Add(*turned, arc);
    THtMatrixData matrix;
    matrix.Translate(static_cast<float>(-arc.Cx), static_cast<float>(-arc.Cy));
    matrix.Rotate(static_cast<float>(rotation));
    matrix.Translate(static_cast<float>(arc.Cx), static_cast<float>(arc.Cy));
    turned->Transform(matrix);
    FPath.AddPath(*turned);
  }

  static void Add(THtPath& path, const THtArc& arc) {
    path.AddArc(static_cast<float>(arc.Cx - arc.Rx), static_cast<float>(arc.Cy - arc.Ry),
                static_cast<float>(2 * arc.Rx), static_cast<float>(2 * arc.Ry),
                static_cast<float>(arc.StartAngle), static_cast<float>(arc.SweepAngle), 1);
  }

  THtPath& FPath;
  TStringParser FParser;
  char16_t FCommand = 0, FLow = 0, FPrevLow = 0;
  TPointD FCurrent, FStart, FControl;
  std::vector<TPointD> FPoints;  // of the curves not yet added
  bool FSegmentOpen = false;
  bool FClosed = false;
};

}  // namespace

void THtPath::Parse(std::u16string_view text) { TPathParser(*this, text).Run(); }

}  // namespace ht
