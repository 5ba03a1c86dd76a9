#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "htcanvas/htcanvas.h"

/// Reads the words of a line of a drawing script. Everything raises EUsage for what is missing or cannot be read.
class TScriptWords {
 public:
  explicit TScriptWords(std::string_view line) : FRest(line) { SkipBlanks(); }

  bool AtEnd() const { return FRest.empty(); }
  /// Up to the next blank.
  std::string_view Word();
  /// All that is left of the line; it may be empty.
  ht::hstring Rest();
  float Number();
  template <size_t N>
  std::array<float, N> Numbers() {
    std::array<float, N> numbers;
    for (float& number : numbers) number = Number();
    return numbers;
  }
  /// Left, top, width and height.
  ht::TRectF Box();
  /// AARRGGBB.
  uint32_t Color();
  /// Names joined by "+", or "-" for none: the set of their indexes among `names`, as bits.
  uint32_t Flags(std::span<const std::string_view> names);

 private:
  void SkipBlanks();

  std::string_view FRest;
};

/// Draws a plain list of canvas calls, one a line. It owns the fonts and images that were drawn with.
class TDrawScript {
 public:
  /// Begins a scene. `hasDrawn` tells whether the canvas has taken anything yet.
  TDrawScript(ht::THtCanvas& canvas, std::function<bool()> hasDrawn);
  ~TDrawScript();

  /// Raises EUsage with the number of the line for what it cannot do.
  void Run(std::string_view script);
  /// Ends the last scene. The pages are complete from here on.
  void Finish() { FCanvas.EndScene(); }

 private:
  using TWords = TScriptWords;
  struct TCommandRow;
  static const TCommandRow kCommands[];

  void RunLine(std::string_view line);
  void BeginScene(float widthMM, float heightMM, int32_t dpi);
  void SetStops(TWords& words);

  void Page(TWords& words);
  void Pen(TWords& words);
  void Dashes(TWords& words);
  void Brush(TWords& words);
  void Linear(TWords& words);
  void Radial(TWords& words);
  void Line(TWords& words);
  void Rect(TWords& words);
  void FillRect(TWords& words);
  void RoundRect(TWords& words);
  void FillRoundRect(TWords& words);
  void Ellipse(TWords& words);
  void FillEllipse(TWords& words);
  void Path(TWords& words);
  void FillPath(TWords& words);
  void ClipRect(TWords& words);
  void ClipPath(TWords& words);
  void Save(TWords& words);
  void Restore(TWords& words);
  void Translate(TWords& words);
  void Scale(TWords& words);
  void Rotate(TWords& words);
  void Matrix(TWords& words);
  void Font(TWords& words);
  void Color(TWords& words);
  void Text(TWords& words);
  void Image(TWords& words);
  void Link(TWords& words);
  void EndLink(TWords& words);
  void Anchor(TWords& words);
  void Check(TWords& words);
  void Radio(TWords& words);
  void Button(TWords& words);
  void Wavy(TWords& words);

  ht::THtCanvas& FCanvas;
  std::function<bool()> FHasDrawn;
  std::unique_ptr<ht::THtFontCollection> FFonts;
  std::unique_ptr<ht::THtPen> FPen;
  std::unique_ptr<ht::THtBrush> FBrush;
  ht::THtFont* FFont;  // of FFonts
  std::vector<std::unique_ptr<ht::THtImage>> FImages;
  ht::THtTextStyle FTextStyle;
  int32_t FSaved = 0;
};
