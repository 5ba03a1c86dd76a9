// A page of 100,000 mixed calls as SVG: filled rectangles, lines, outlines, rounded boxes, ellipses, paths and groups; cairo's
// SVG surface draws the same. Items are calls, bytes are those of the SVG as UTF-8. Solid fills and lines take no
// allocation a call: the counter `allocations` tells how many the whole page took.

#include <atomic>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <new>

#include "fixedcanvas/fixedcanvas.h"

#ifdef HT_PEER_CAIRO
#include <cairo-svg.h>
#endif

static std::atomic<int64_t> Allocations{0};

// Not inlined: compilers that see both halves take malloc and delete for a mismatch.
__attribute__((noinline)) void* operator new(size_t size) {
  Allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* memory = std::malloc(size ? size : 1)) return memory;
  throw std::bad_alloc();
}
__attribute__((noinline)) void operator delete(void* memory) noexcept { std::free(memory); }
__attribute__((noinline)) void operator delete(void* memory, size_t) noexcept { std::free(memory); }

using namespace ht;

namespace {

constexpr int kCalls = 100000;
constexpr float kPageMM = 265;

enum TMix : int { mxSolid, mxMixed };  // fills and lines alone, or everything

uint32_t ColorOf(int i) { return 0xFF000000 | static_cast<uint32_t>(i) * 2654435761u >> 8; }
float XOf(int i) { return static_cast<float>(i * 7 % 900) + 0.25f * static_cast<float>(i % 4); }
float YOf(int i) { return static_cast<float>(i * 13 % 900) + 0.5f * static_cast<float>(i % 2); }

void DrawCall(THtSVGCanvas& canvas, const THtCustomPath& path, TMix mix, int i) {
  const float x = XOf(i), y = YOf(i);
  switch (mix == mxSolid ? i % 2 : i % 8) {
    case 0: return canvas.FillRectangle(canvas.GetBrush(ColorOf(i)), x, y, 30.5f, 20);
    case 1: return canvas.DrawLine(canvas.GetPen(ColorOf(i), 1.5f), x, y, x + 40, y + 9.75f);
    case 2: return canvas.DrawRectangle(canvas.GetPen(ColorOf(i), 1), x, y, 12, 34);
    case 3: return canvas.FillRoundRect(canvas.GetBrush(ColorOf(i)), {x, y, x + 40, y + 20}, 4, 4);
    case 4: return canvas.FillEllipse(canvas.GetBrush(ColorOf(i)), x, y, 24, 18);
    case 5: return canvas.FillPath(canvas.GetBrush(ColorOf(i)), path);
    case 6: return canvas.DrawPath(canvas.GetPen(ColorOf(i), 2), path);
    default:
      canvas.SaveState();
      canvas.TranslateTransform(x, y);
      canvas.FillRectangle(canvas.GetBrush(ColorOf(i)), 0, 0, 5, 5);
      canvas.RestoreState();
  }
}

void SVGPage(benchmark::State& state) {
  HtDefaultCanvasClass = TFixedCanvas::Class();
  const auto mix = static_cast<TMix>(state.range(0));
  THtCustomPath path(false);
  path.Parse(u"M10 10C20 20 40 20 50 10L60 60H20z");
  int64_t bytes = 0, allocations = 0;
  for (auto _ : state) {
    THtSVGCanvas canvas;
    const int64_t before = Allocations;
    canvas.BeginScene({});
    canvas.BeginPaging(kPageMM, kPageMM, 96, coDefault);
    for (int i = 0; i < kCalls; ++i) DrawCall(canvas, path, mix, i);
    canvas.EndScene();
    allocations = Allocations - before;
    bytes += static_cast<int64_t>(HtToUtf8(static_cast<THtPageSVG*>(canvas.GetPage(0))->SVG).size());
  }
  state.SetItemsProcessed(state.iterations() * kCalls);
  state.SetBytesProcessed(bytes);
  state.counters["allocations"] = static_cast<double>(allocations);
}
BENCHMARK(SVGPage)->Arg(mxSolid)->Arg(mxMixed)->ArgName("mixed")->Unit(benchmark::kMillisecond);

#ifdef HT_PEER_CAIRO

void SetColor(cairo_t* cr, int i) {
  const uint32_t c = ColorOf(i);
  cairo_set_source_rgba(cr, (c >> 16 & 255) / 255.0, (c >> 8 & 255) / 255.0, (c & 255) / 255.0, 1);
}

void RoundBox(cairo_t* cr, double x, double y, double w, double h, double r) {
  constexpr double kQuarter = 1.5707963267948966;
  cairo_new_sub_path(cr);
  cairo_arc(cr, x + w - r, y + r, r, -kQuarter, 0);
  cairo_arc(cr, x + w - r, y + h - r, r, 0, kQuarter);
  cairo_arc(cr, x + r, y + h - r, r, kQuarter, 2 * kQuarter);
  cairo_arc(cr, x + r, y + r, r, 2 * kQuarter, 3 * kQuarter);
  cairo_close_path(cr);
}

void Ellipse(cairo_t* cr, double x, double y, double w, double h) {
  cairo_save(cr);
  cairo_translate(cr, x + w / 2, y + h / 2);
  cairo_scale(cr, w / 2, h / 2);
  cairo_new_sub_path(cr);
  cairo_arc(cr, 0, 0, 1, 0, 6.283185307179586);
  cairo_restore(cr);
}

void Figure(cairo_t* cr) {
  cairo_move_to(cr, 10, 10);
  cairo_curve_to(cr, 20, 20, 40, 20, 50, 10);
  cairo_line_to(cr, 60, 60);
  cairo_line_to(cr, 20, 60);
  cairo_close_path(cr);
}

void CairoCall(cairo_t* cr, TMix mix, int i) {
  const double x = XOf(i), y = YOf(i);
  SetColor(cr, i);
  const auto stroke = [cr](double width) {
    cairo_set_line_width(cr, width);
    cairo_stroke(cr);
  };
  switch (mix == mxSolid ? i % 2 : i % 8) {
    case 0: cairo_rectangle(cr, x, y, 30.5, 20), cairo_fill(cr); break;
    case 1: cairo_move_to(cr, x, y), cairo_line_to(cr, x + 40, y + 9.75), stroke(1.5); break;
    case 2: cairo_rectangle(cr, x, y, 12, 34), stroke(1); break;
    case 3: RoundBox(cr, x, y, 40, 20, 4), cairo_fill(cr); break;
    case 4: Ellipse(cr, x, y, 24, 18), cairo_fill(cr); break;
    case 5: Figure(cr), cairo_fill(cr); break;
    case 6: Figure(cr), stroke(2); break;
    default:
      cairo_save(cr);
      cairo_translate(cr, x, y);
      cairo_rectangle(cr, 0, 0, 5, 5);
      cairo_fill(cr);
      cairo_restore(cr);
  }
}

void CairoPage(benchmark::State& state) {
  const auto mix = static_cast<TMix>(state.range(0));
  int64_t bytes = 0;
  const auto write = [](void* sum, const unsigned char*, unsigned count) {
    *static_cast<int64_t*>(sum) += count;
    return CAIRO_STATUS_SUCCESS;
  };
  for (auto _ : state) {
    cairo_surface_t* surface = cairo_svg_surface_create_for_stream(write, &bytes, 1000, 1000);
    cairo_t* cr = cairo_create(surface);
    for (int i = 0; i < kCalls; ++i) CairoCall(cr, mix, i);
    cairo_destroy(cr);
    cairo_surface_finish(surface);
    cairo_surface_destroy(surface);
  }
  state.SetItemsProcessed(state.iterations() * kCalls);
  state.SetBytesProcessed(bytes);
}
BENCHMARK(CairoPage)->Arg(mxSolid)->Arg(mxMixed)->ArgName("mixed")->Unit(benchmark::kMillisecond);

#endif

}  // namespace
