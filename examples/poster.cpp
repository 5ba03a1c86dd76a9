// A poster as SVG: what a canvas draws, in a hundred lines. docs/poster.svg is its output, drawn at once or recorded and
// played afterwards.
//
// $ poster
// $ poster --recorded
#include <array>
#include <cstdio>
#include <cstring>

#include "fixedcanvas/fixedcanvas.h"

using namespace ht;

static const THtCanvasClass* const kClass = TFixedCanvas::Class();  // the same on every machine

static void DrawSky(THtCanvas& canvas) {
  const TRectF page{0, 0, 600, 400};
  const auto sky = kClass->BrushClass()->CreateGradient({0, 0, 0, 300}, 0, 0, 180, page);
  sky->SetGradientColors(std::array{0.0f, 0.7f, 1.0f}, std::array{0xFF16385C, 0xFFE08E5E, 0xFFF9D9A0});
  canvas.FillRectangle(*sky, page);
  const auto sun = kClass->BrushClass()->CreateRadialGradient(0, 0, 420, 190, 410, 180, 90, {});
  sun->SetGradientColors(std::array{0.0f, 0.45f, 1.0f}, std::array{0xFFFFFFE0, 0xFFFFD060, 0x00FFB040u});
  canvas.FillEllipse(*sun, 330, 100, 180, 180);
}

static void DrawHills(THtCanvas& canvas) {
  const auto hill = kClass->PathClass()->Create(false);
  hill->Parse(u"M0 270C120 210 200 250 300 270S480 330 600 240V400H0z");
  canvas.FillPath(canvas.GetBrush(0xFF2F5D50), *hill);
  THtPen& road = canvas.GetPen(0xFFF4EBD0, 3);
  road.SetPenStyle(hpsDash);
  const auto way = kClass->PathClass()->Create(false);
  way->Parse(u"M60 400Q160 330 260 340T420 290");
  canvas.DrawPath(road, *way);
}

// Twelve petals, each turned a little further, in a circle that is cut out.
static void DrawFlower(THtCanvas& canvas) {
  const auto round = kClass->PathClass()->Create(true);
  round->Parse(u"M50 120A60 60 0 1 1 170 120A60 60 0 1 1 50 120z");
  canvas.SaveState();
  canvas.IntersectClip(*round);
  canvas.FillRectangle(canvas.GetBrush(0x60FFFFFF), 50, 60, 120, 120);
  canvas.TranslateTransform(110, 120);
  for (int i = 0; i < 12; ++i) {
    canvas.SaveState();
    canvas.RotateTransform(static_cast<float>(i) * 30);
    canvas.ScaleTransform(1, 0.5f);
    canvas.FillEllipse(canvas.GetBrush(i % 2 ? 0xC0D1495B : 0xC0EDAE49), 15, -16, 55, 32);
    canvas.RestoreState();
  }
  canvas.RestoreState();
  canvas.DrawEllipse(canvas.GetPen(0xFFFFFFFF, 2), 50, 60, 120, 120);
}

// Eight by eight pixels. An image that has an address is written with it; another one with its bytes.
static const hstring kChequers =
    u"data:image/png;base64,"
    u"iVBORw0KGgoAAAANSUhEUgAAAAgAAAAIAQAAAADsdIMmAAAADklEQVR42mNYxRDKgIQBIUQD/TZLIakAAAAASUVORK5CYII="_hs;

static void DrawTexts(THtCanvas& canvas, THtFontCollection& fonts) {
  THtTextStyle style;
  style.Color = 0xFFFFFFFF;
  const auto write = [&](const char16_t* text, float x, float y, const char16_t* font, float height,
                         THtFontStyles face) {
    canvas.DrawString(text, {x, y, x + 400, y + height}, *fonts.GetFont(font, height, face), style, 1, -1);
  };
  write(u"From calls to pictures", 202, 44, u"Georgia", 28, {hfsBold});
  write(u"one canvas, one line a call", 202, 82, u"Georgia", 17, {hfsItalic});
  write(u"fills, strokes & dashes", 202, 112, u"Verdana", 13, {});
  write(u"<clips> and nested transforms", 202, 130, u"Verdana", 13, {});
  canvas.BeginLink(u"https://www.w3.org/TR/SVG11/"_hs, u"The SVG recommendation"_hs);
  write(u"shared text classes", 202, 148, u"Verdana", 13, {});
  canvas.EndLink();
}

static void DrawPoster(THtCanvas& canvas, THtFontCollection& fonts) {
  DrawSky(canvas);
  DrawHills(canvas);
  DrawFlower(canvas);
  static THtImage chequers;
  chequers.Url = kChequers;
  canvas.DrawImage(chequers, {520, 340, 560, 380}, 1);
  canvas.DrawButton({430, 345, 500, 375}, 0, false, false, true, false);
  canvas.DrawCheck({400, 350, 420, 370}, 0, true, false, false, false);
  canvas.RoundRect(canvas.GetPen(0xFFF4EBD0, 1.5f), {10, 10, 590, 390}, 14, 14);
  DrawTexts(canvas, fonts);
  canvas.DrawWavyLine(202, 166, 330, 166, canvas.GetPen(0xFFEDAE49, 1));
}

int main(int argc, char** argv) {
  HtDefaultCanvasClass = kClass;
  const auto fonts = kClass->CreateFontCollection();
  THtCanvasScene scene;
  scene.Init({0, 0, 600, 400}, nullptr);
  THtSVGCanvas canvas;
  canvas.BeginScene(scene);
  canvas.BeginPaging(158.75f, 105.8333f, 96, coLandscape);  // 600 x 400 pixels
  if (argc > 1 && std::strcmp(argv[1], "--recorded") == 0) {
    THtMetaCanvas recording;
    recording.BeginScene(scene);
    DrawPoster(recording, *fonts);
    recording.List()->Play(canvas, 1);
  } else {
    DrawPoster(canvas, *fonts);
  }
  canvas.EndScene();

  std::string svg = HtToUtf8(static_cast<THtPageSVG*>(canvas.GetPage(0))->SVG);
  svg.insert(svg.find('>') + 1, "<style>" + HtToUtf8(canvas.Style()) + "</style>");  // the text classes
  std::erase(svg, '\r');
  std::printf("%s\n", svg.c_str());
}
