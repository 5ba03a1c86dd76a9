#include "drawscript.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "arguments.h"
#include "document.h"

using namespace ht;

namespace {

constexpr std::string_view kBlanks = " \t\r";

constexpr std::string_view kPenStyles[] = {"solid", "dash", "dot", "dashdot", "dashdotdot"};
constexpr std::string_view kFontStyles[] = {"bold",  "italic",     "underline", "strikeout",
                                            "light", "ultralight", "black",     "semibold"};
constexpr std::string_view kControlFlags[] = {"checked", "pressed", "hover", "disabled"};

size_t IndexOf(std::string_view word, std::span<const std::string_view> names) {
  const auto found = std::find(names.begin(), names.end(), word);
  if (found == names.end()) throw EUsage("unknown word " + std::string(word));
  return static_cast<size_t>(found - names.begin());
}

template <class T>
bool ReadAll(std::string_view word, T& value, auto... base) {
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value, base...);
  return error == std::errc() && end == word.data() + word.size();
}

float NumberOf(std::string_view word) {
  float number = 0;
  if (!ReadAll(word, number) || !std::isfinite(number)) throw EUsage("no number: " + std::string(word));
  return number;
}

uint32_t ColorOf(std::string_view word) {
  uint32_t color = 0;
  if (word.size() != 8 || !ReadAll(word, color, 16)) throw EUsage("no color AARRGGBB: " + std::string(word));
  return color;
}

struct TControl {
  TRectF Box;
  bool Checked, Pressed, Hover, Disabled;

  explicit TControl(TScriptWords& words) : Box(words.Box()) {
    const uint32_t flags = words.Flags(kControlFlags);
    Checked = flags & 1, Pressed = flags & 2, Hover = flags & 4, Disabled = flags & 8;
  }
};

}  // namespace

// --- words ---

void TScriptWords::SkipBlanks() {
  FRest.remove_prefix(std::min(FRest.find_first_not_of(kBlanks), FRest.size()));
}

std::string_view TScriptWords::Word() {
  if (AtEnd()) throw EUsage("a word is missing");
  const std::string_view word = FRest.substr(0, FRest.find_first_of(kBlanks));
  FRest.remove_prefix(word.size());
  SkipBlanks();
  return word;
}

hstring TScriptWords::Rest() {
  const std::string_view rest = std::exchange(FRest, {});
  return HtFromUtf8(rest.substr(0, rest.find_last_not_of('\r') + 1));
}

float TScriptWords::Number() { return NumberOf(Word()); }
uint32_t TScriptWords::Color() { return ColorOf(Word()); }

TRectF TScriptWords::Box() {
  const auto [x, y, w, h] = Numbers<4>();
  return {x, y, x + w, y + h};
}

uint32_t TScriptWords::Flags(std::span<const std::string_view> names) {
  std::string_view word = Word();
  uint32_t flags = 0;
  while (word != "-") {
    const size_t plus = word.find('+');
    flags |= 1u << IndexOf(word.substr(0, plus), names);
    if (plus == word.npos) break;
    word.remove_prefix(plus + 1);
  }
  return flags;
}

// --- the script ---

struct TDrawScript::TCommandRow {
  std::string_view Name;
  void (TDrawScript::*Run)(TWords&);
};

const TDrawScript::TCommandRow TDrawScript::kCommands[] = {
    {"page", &TDrawScript::Page},
    {"pen", &TDrawScript::Pen},
    {"dashes", &TDrawScript::Dashes},
    {"brush", &TDrawScript::Brush},
    {"linear", &TDrawScript::Linear},
    {"radial", &TDrawScript::Radial},
    {"line", &TDrawScript::Line},
    {"rect", &TDrawScript::Rect},
    {"fillrect", &TDrawScript::FillRect},
    {"roundrect", &TDrawScript::RoundRect},
    {"fillroundrect", &TDrawScript::FillRoundRect},
    {"ellipse", &TDrawScript::Ellipse},
    {"fillellipse", &TDrawScript::FillEllipse},
    {"path", &TDrawScript::Path},
    {"fillpath", &TDrawScript::FillPath},
    {"cliprect", &TDrawScript::ClipRect},
    {"clippath", &TDrawScript::ClipPath},
    {"save", &TDrawScript::Save},
    {"restore", &TDrawScript::Restore},
    {"translate", &TDrawScript::Translate},
    {"scale", &TDrawScript::Scale},
    {"rotate", &TDrawScript::Rotate},
    {"matrix", &TDrawScript::Matrix},
    {"font", &TDrawScript::Font},
    {"color", &TDrawScript::Color},
    {"text", &TDrawScript::Text},
    {"image", &TDrawScript::Image},
    {"link", &TDrawScript::Link},
    {"endlink", &TDrawScript::EndLink},
    {"anchor", &TDrawScript::Anchor},
    {"check", &TDrawScript::Check},
    {"radio", &TDrawScript::Radio},
    {"button", &TDrawScript::Button},
    {"wavy", &TDrawScript::Wavy},
};

TDrawScript::TDrawScript(THtCanvas& canvas, std::function<bool()> hasDrawn)
    : FCanvas(canvas), FHasDrawn(std::move(hasDrawn)), FFonts(canvas.CanvasClass()->CreateFontCollection()) {
  for (const std::string_view line :
       {"pen FF000000 1", "brush FF000000", "font 16 - Arial", "color FF000000"})
    RunLine(line);
  FCanvas.BeginScene({});
}

TDrawScript::~TDrawScript() = default;

void TDrawScript::Run(std::string_view script) {
  for (int number = 1; !script.empty(); ++number) {
    const std::string_view line = script.substr(0, script.find('\n'));
    script.remove_prefix(std::min(line.size() + 1, script.size()));
    try {
      RunLine(line);
    } catch (const std::exception& e) {
      throw EUsage("line " + std::to_string(number) + ": " + e.what());
    }
  }
}

void TDrawScript::RunLine(std::string_view line) {
  TWords words(line);
  if (words.AtEnd()) return;
  const std::string_view name = words.Word();
  if (name.starts_with('#')) return;
  for (const TCommandRow& row : kCommands) {
    if (row.Name != name) continue;
    (this->*row.Run)(words);
    if (!words.AtEnd()) throw EUsage("too many words for " + std::string(name));
    return;
  }
  throw EUsage("unknown command " + std::string(name));
}

// --- pages ---

void TDrawScript::BeginScene(float widthMM, float heightMM, int32_t dpi) {
  THtCanvasScene scene;
  scene.Init({0, 0, HtPixelsOfMM(widthMM, dpi), HtPixelsOfMM(heightMM, dpi)}, nullptr);
  FCanvas.BeginScene(scene);
}

void TDrawScript::Page(TWords& words) {
  const auto [width, height, resolution] = words.Numbers<3>();
  const auto dpi = static_cast<int32_t>(std::clamp(resolution, 1.0f, 1e6f));
  if (FCanvas.GetPageCount() == 0) {
    if (FHasDrawn()) throw EUsage("page stands behind what is drawn without one");
    BeginScene(width, height, dpi);
    FCanvas.BeginPaging(width, height, dpi, coDefault);
    return;
  }
  FCanvas.EndScene();
  FCanvas.NewPage(coDefault);
  THtPage& page = *FCanvas.GetPage(FCanvas.GetPageCount() - 1);
  page.Create(width, height, page.Number, dpi);
  page.Orientation = coDefault;
  BeginScene(width, height, dpi);
  FSaved = 0;
}

// --- pens and brushes ---

void TDrawScript::Pen(TWords& words) {
  const uint32_t color = words.Color();
  FPen = FCanvas.CanvasClass()->PenClass()->Create(color, words.Number());
  if (!words.AtEnd()) FPen->SetPenStyle(static_cast<THtPenStyle>(IndexOf(words.Word(), kPenStyles)));
}

void TDrawScript::Dashes(TWords& words) {
  if (FPen->GetWidth() == 0) throw EUsage("the pen is 0 wide");
  std::vector<float> values;
  while (!words.AtEnd()) values.push_back(words.Number());
  FPen->SetDashes(values, static_cast<int32_t>(values.size()) - 1);
}

void TDrawScript::Brush(TWords& words) {
  FBrush = FCanvas.CanvasClass()->BrushClass()->Create(words.Color());
}

void TDrawScript::SetStops(TWords& words) {
  std::vector<float> positions;
  std::vector<uint32_t> colors;
  do {
    const std::string_view stop = words.Word();
    const size_t colon = stop.find(':');
    if (colon == stop.npos) throw EUsage("no stop POS:COLOR: " + std::string(stop));
    positions.push_back(NumberOf(stop.substr(0, colon)));
    colors.push_back(ColorOf(stop.substr(colon + 1)));
  } while (!words.AtEnd());
  FBrush->SetGradientColors(positions, colors);
}

void TDrawScript::Linear(TWords& words) {
  const auto [angle, left, top, right, bottom] = words.Numbers<5>();
  const TRectF box{left, top, right, bottom};
  FBrush = FCanvas.CanvasClass()->BrushClass()->CreateGradient(box, 0, 0, angle, box);
  SetStops(words);
}

void TDrawScript::Radial(TWords& words) {
  const auto [cx, cy, fx, fy, radius] = words.Numbers<5>();
  FBrush = FCanvas.CanvasClass()->BrushClass()->CreateRadialGradient(0, 0, cx, cy, fx, fy, radius, {});
  SetStops(words);
}

// --- shapes ---

void TDrawScript::Line(TWords& words) {
  const auto [x1, y1, x2, y2] = words.Numbers<4>();
  FCanvas.DrawLine(*FPen, x1, y1, x2, y2);
}

void TDrawScript::Rect(TWords& words) {
  const auto [x, y, w, h] = words.Numbers<4>();
  FCanvas.DrawRectangle(*FPen, x, y, w, h);
}

void TDrawScript::FillRect(TWords& words) {
  const auto [x, y, w, h] = words.Numbers<4>();
  FCanvas.FillRectangle(*FBrush, x, y, w, h);
}

void TDrawScript::RoundRect(TWords& words) {
  const TRectF box = words.Box();
  const auto [rx, ry] = words.Numbers<2>();
  FCanvas.RoundRect(*FPen, box, rx, ry);
}

void TDrawScript::FillRoundRect(TWords& words) {
  const TRectF box = words.Box();
  const auto [rx, ry] = words.Numbers<2>();
  FCanvas.FillRoundRect(*FBrush, box, rx, ry);
}

void TDrawScript::Ellipse(TWords& words) {
  const auto [x, y, w, h] = words.Numbers<4>();
  FCanvas.DrawEllipse(*FPen, x, y, w, h);
}

void TDrawScript::FillEllipse(TWords& words) {
  const auto [x, y, w, h] = words.Numbers<4>();
  FCanvas.FillEllipse(*FBrush, x, y, w, h);
}

void TDrawScript::Path(TWords& words) {
  THtCustomPath path(false);
  path.Parse(words.Rest());
  FCanvas.DrawPath(*FPen, path);
}

void TDrawScript::FillPath(TWords& words) {
  THtCustomPath path(false);
  path.Parse(words.Rest());
  FCanvas.FillPath(*FBrush, path);
}

// --- clips, states and transforms ---

void TDrawScript::ClipRect(TWords& words) { FCanvas.IntersectClip(words.Box()); }

void TDrawScript::ClipPath(TWords& words) {
  THtCustomPath path(true);
  path.Parse(words.Rest());
  FCanvas.IntersectClip(path);
}

void TDrawScript::Save(TWords&) {
  FCanvas.SaveState();
  ++FSaved;
}

void TDrawScript::Restore(TWords&) {
  if (FSaved == 0) throw EUsage("restore without save");
  FCanvas.RestoreState();
  --FSaved;
}

void TDrawScript::Translate(TWords& words) {
  const auto [dx, dy] = words.Numbers<2>();
  FCanvas.TranslateTransform(dx, dy);
}

void TDrawScript::Scale(TWords& words) {
  const auto [sx, sy] = words.Numbers<2>();
  FCanvas.ScaleTransform(sx, sy);
}

void TDrawScript::Rotate(TWords& words) { FCanvas.RotateTransform(words.Number()); }

void TDrawScript::Matrix(TWords& words) {
  const auto [a, b, c, d, e, f] = words.Numbers<6>();
  THtMatrixData matrix;
  matrix.Init(a, b, c, d, e, f);
  FCanvas.MatrixTransform(matrix, true);
}

// --- text, images and links ---

void TDrawScript::Font(TWords& words) {
  const float height = words.Number();
  const uint32_t flags = words.Flags(kFontStyles);
  THtFontStyles styles;
  for (int i = 0; i < HtEnumOf<THtFontStyle>().Count(); ++i)
    if (flags >> i & 1) styles.Include(static_cast<THtFontStyle>(i));
  FFont = FFonts->GetFont(words.Rest(), height, styles);
  FFont->SetStyle(styles);
}

void TDrawScript::Color(TWords& words) { FTextStyle.Color = words.Color(); }

void TDrawScript::Text(TWords& words) {
  const TRectF box = words.Box();
  FCanvas.DrawString(words.Rest(), box, *FFont, FTextStyle, 1, -1);
}

void TDrawScript::Image(TWords& words) {
  const std::string file(words.Word());
  const TRectF box = words.Box();
  const std::string bytes = ReadInput(file);
  FImages.push_back(FCanvas.CanvasClass()->ImageClass()->Create(THtBytes(bytes.begin(), bytes.end())));
  FCanvas.DrawImage(*FImages.back(), box, 1);
}

void TDrawScript::Link(TWords& words) {
  const hstring href = HtFromUtf8(words.Word());
  FCanvas.BeginLink(href, words.Rest());
}

void TDrawScript::EndLink(TWords&) { FCanvas.EndLink(); }
void TDrawScript::Anchor(TWords& words) { FCanvas.DrawLink({}, words.Rest(), true); }

// --- controls ---

void TDrawScript::Check(TWords& words) {
  const TControl c(words);
  FCanvas.DrawCheck(c.Box, 0, c.Checked, c.Pressed, c.Hover, c.Disabled);
}

void TDrawScript::Radio(TWords& words) {
  const TControl c(words);
  FCanvas.DrawRadio(c.Box, 0, c.Checked, c.Pressed, c.Hover, c.Disabled);
}

void TDrawScript::Button(TWords& words) {
  const TControl c(words);
  FCanvas.DrawButton(c.Box, 0, c.Checked, c.Pressed, c.Hover, c.Disabled);
}

void TDrawScript::Wavy(TWords& words) {
  const auto [x1, y1, x2, y2] = words.Numbers<4>();
  FCanvas.DrawWavyLine(x1, y1, x2, y2, *FPen);
}
