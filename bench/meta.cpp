// Recording 100,000 mixed calls, playing them on a canvas that does nothing, saving and loading them; cairo's recording
// surface takes the same calls. Items are records. `ratio` is the memory of a list by the bytes of its stream.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "fixedcanvas/fixedcanvas.h"

#ifdef HT_PEER_CAIRO
#include <cairo.h>
#endif

using namespace ht;

namespace {

constexpr int kCalls = 100000;

enum TMix : int {
  mxShapes,
  mxColors,
  mxMixed
};  // lines and boxes; the same, each of a colour of its own; everything

uint32_t ColorOf(TMix mix, int i) {
  constexpr int kPalette = 12;
  return 0xFF000000 | static_cast<uint32_t>(mix == mxColors ? i : i % kPalette) * 2654435761u >> 8;
}
float XOf(int i) { return static_cast<float>(i * 7 % 900) + 0.25f * static_cast<float>(i % 4); }
float YOf(int i) { return static_cast<float>(i * 13 % 900) + 0.5f * static_cast<float>(i % 2); }

struct TThings {
  TThings()
      : Fonts(TFixedCanvas::Class()->CreateFontCollection()), Font(Fonts->GetFont(u"Arial"_hs, 12, {})) {
    Path.Parse(u"M10 10C20 20 40 20 50 10L60 60H20z");
    Style.Color = 0xFF000000;
  }
  std::unique_ptr<THtFontCollection> Fonts;
  THtFont* Font;
  THtCustomPath Path;
  THtTextStyle Style;
};

void DrawCall(THtCanvas& canvas, const TThings& things, TMix mix, int i) {
  const float x = XOf(i), y = YOf(i);
  const uint32_t color = ColorOf(mix, i);
  switch (i % (mix == mxMixed ? 11 : 6)) {
    case 0: return canvas.FillRectangle(canvas.GetBrush(color), x, y, 30.5f, 20);
    case 1: return canvas.DrawLine(canvas.GetPen(color, 1.5f), x, y, x + 40, y + 9.75f);
    case 2: return canvas.DrawRectangle(canvas.GetPen(color, 1), x, y, 12, 34);
    case 3: return canvas.FillRoundRect(canvas.GetBrush(color), {x, y, x + 40, y + 20}, 4, 4);
    case 4: return canvas.FillEllipse(canvas.GetBrush(color), x, y, 24, 18);
    case 5: return canvas.DrawEllipse(canvas.GetPen(color, 2), x, y, 24, 18);
    case 6: return canvas.FillPath(canvas.GetBrush(color), things.Path);
    case 7:
      return canvas.DrawString(u"A line of text"_hs, {x, y, x + 90, y + 15}, *things.Font, things.Style, 1,
                               -1);
    case 8: return canvas.SaveState();
    case 9: return canvas.TranslateTransform(x, y);
    default: return canvas.RestoreState();
  }
}

class TIdleCanvas : public TFixedCanvas {
  HT_CLASS(TIdleCanvas, TFixedCanvas)

 public:
  void DrawLine(const THtPen&, float, float, float, float) override {}
  void FillEllipse(const THtBrush&, float, float, float, float) override {}
  void DrawEllipse(const THtPen&, float, float, float, float) override {}
  void FillRectangle(const THtBrush&, float, float, float, float) override {}
  void DrawRectangle(const THtPen&, float, float, float, float) override {}
  void RoundRect(const THtPen&, const TRectF&, float, float) override {}
  void FillRoundRect(const THtBrush&, const TRectF&, float, float) override {}
};

THtCanvasScene Scene() {
  THtCanvasScene scene;
  scene.Init({0, 0, 1000, 1000}, nullptr);
  return scene;
}

void Record(THtMetaList& list, const TThings& things, TMix mix) {
  THtMetaCanvas canvas(list);
  canvas.BeginScene(Scene());
  for (int i = 0; i < kCalls; ++i) DrawCall(canvas, things, mix, i);
  canvas.EndScene();
}

void Play(THtMetaList& list) {
  TIdleCanvas canvas;
  canvas.BeginScene(Scene());
  list.Play(canvas, 1);
}

THtBytes Saved(const THtMetaList& list) {
  TBytesStream stream;
  list.SavetoStream(stream);
  return stream.TakeBytes();
}

int64_t Allocated() { return static_cast<int64_t>(mallinfo2().uordblks + mallinfo2().hblkhd); }

void RecordAndPlay(benchmark::State& state) {
  HtDefaultCanvasClass = TFixedCanvas::Class();
  const auto mix = static_cast<TMix>(state.range(0));
  const TThings things;
  const int64_t before = Allocated();
  {
    THtMetaList list(true);
    Record(list, things, mix);
    const auto memory = static_cast<double>(Allocated() - before);
    state.counters["ratio"] = memory / static_cast<double>(Saved(list).size());
  }
  for (auto _ : state) {
    THtMetaList list(true);
    Record(list, things, mix);
    Play(list);
  }
  state.SetItemsProcessed(state.iterations() * kCalls);
}
BENCHMARK(RecordAndPlay)
    ->Arg(mxShapes)
    ->Arg(mxColors)
    ->Arg(mxMixed)
    ->ArgName("mix")
    ->Unit(benchmark::kMillisecond);

void PlayOnly(benchmark::State& state) {
  HtDefaultCanvasClass = TFixedCanvas::Class();
  const TThings things;
  THtMetaList list(true);
  Record(list, things, static_cast<TMix>(state.range(0)));
  for (auto _ : state) Play(list);
  state.SetItemsProcessed(state.iterations() * kCalls);
}
BENCHMARK(PlayOnly)->Arg(mxShapes)->Arg(mxMixed)->ArgName("mix")->Unit(benchmark::kMillisecond);

void Save(benchmark::State& state) {
  HtDefaultCanvasClass = TFixedCanvas::Class();
  const TThings things;
  THtMetaList list(true);
  Record(list, things, static_cast<TMix>(state.range(0)));
  TBytesStream stream;
  for (auto _ : state) {
    stream.SetPosition(0);
    list.SavetoStream(stream);
  }
  state.SetItemsProcessed(state.iterations() * kCalls);
  state.SetBytesProcessed(state.iterations() * stream.GetSize());
}
BENCHMARK(Save)->Arg(mxShapes)->Arg(mxColors)->Arg(mxMixed)->ArgName("mix")->Unit(benchmark::kMillisecond);

void Load(benchmark::State& state) {
  HtDefaultCanvasClass = TFixedCanvas::Class();
  const TThings things;
  THtMetaList list(true);
  Record(list, things, static_cast<TMix>(state.range(0)));
  TBytesStream stream(Saved(list));
  int64_t memory = Allocated();
  for (auto _ : state) {
    stream.SetPosition(0);
    THtMetaList loaded(true);
    loaded.LoadfromStream(stream, *TFixedCanvas::Class(), *things.Fonts);
    if (memory > 0)
      state.counters["ratio"] =
          static_cast<double>(Allocated() - std::exchange(memory, 0)) / static_cast<double>(stream.GetSize());
  }
  state.SetItemsProcessed(state.iterations() * kCalls);
  state.SetBytesProcessed(state.iterations() * stream.GetSize());
}
BENCHMARK(Load)->Arg(mxShapes)->Arg(mxColors)->Arg(mxMixed)->ArgName("mix")->Unit(benchmark::kMillisecond);

#ifdef HT_PEER_CAIRO

void CairoCall(cairo_t* cr, int i) {
  const double x = XOf(i), y = YOf(i);
  const uint32_t c = ColorOf(mxShapes, i);
  cairo_set_source_rgba(cr, (c >> 16 & 255) / 255.0, (c >> 8 & 255) / 255.0, (c & 255) / 255.0, 1);
  if (i % 6 == 1) {
    cairo_move_to(cr, x, y);
    cairo_line_to(cr, x + 40, y + 9.75);
  } else if (i % 6 < 4) {
    cairo_rectangle(cr, x, y, 30.5, 20);
  } else {
    cairo_arc(cr, x, y, 12, 0, 6.283185307179586);
  }
  if (i % 6 == 1 || i % 6 == 2 || i % 6 == 5)
    cairo_stroke(cr);
  else
    cairo_fill(cr);
}

void CairoRecording(benchmark::State& state) {
  for (auto _ : state) {
    cairo_surface_t* surface = cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr);
    cairo_t* cr = cairo_create(surface);
    for (int i = 0; i < kCalls; ++i) CairoCall(cr, i);
    cairo_destroy(cr);
    cairo_surface_destroy(surface);
  }
  state.SetItemsProcessed(state.iterations() * kCalls);
}
BENCHMARK(CairoRecording)->Unit(benchmark::kMillisecond);

#endif

}  // namespace
