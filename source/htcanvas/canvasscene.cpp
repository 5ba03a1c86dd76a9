#include "htcanvas/canvasscene.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ht {

namespace {

bool IsEmptyRect(const TRect& r) { return r.Left >= r.Right || r.Top >= r.Bottom; }

TRect Union(const TRect& a, const TRect& b) {
  return {std::min(a.Left, b.Left), std::min(a.Top, b.Top), std::max(a.Right, b.Right),
          std::max(a.Bottom, b.Bottom)};
}

int32_t Narrow(int64_t value) {
  using TLimits = std::numeric_limits<int32_t>;
  return static_cast<int32_t>(std::clamp<int64_t>(value, TLimits::min(), TLimits::max()));
}

// Sums of coordinates stop at the ends of the range.
int32_t Plus(int32_t a, int64_t b) { return Narrow(a + b); }

void Move(uint8_t*& pointer, int64_t bytes) {
  if (pointer) pointer += bytes;
}

// One direction of a fast scroll by `bytes`: rows are copied from ptr1 to ptr2, and the one of them moves that lies behind.
// With rows that run upward in memory the roles change.
void MovePlaces(int64_t bytes, bool forward, bool upward, uint8_t*& ptr1, uint8_t*& ptr2) {
  uint8_t*& moving = forward ? ptr2 : ptr1;
  if (!moving) return;
  if (upward)
    Move(forward ? ptr1 : ptr2, forward ? -bytes : bytes);
  else
    Move(moving, forward ? bytes : -bytes);
}

}  // namespace

void THtCanvasScene::Init(const TRect& viewPort, void* canvas) {
  *this = {};
  Canvas = canvas;
  ViewPort = ClipRect = viewPort;
}

void THtCanvasScene::AddUpdateRect(const TRect& rect) {
  if (IsEmptyRect(rect) || IsEmptyRect(RIntersect(rect, ViewPort))) return;
  const auto holds = [&rect](const TRect& earlier) { return RectInside(rect, earlier); };
  if (std::any_of(UpdateRects.begin(), UpdateRects.end(), holds)) return;
  UpdateRects.push_back(rect);
  ClipRect = Union(ClipRect, rect);
}

void THtCanvasScene::ExpandUpdateRects(int32_t left, int32_t top, int32_t right, int32_t bottom) {
  for (TRect& r : UpdateRects)
    r = RIntersect({Plus(r.Left, -int64_t{left}), Plus(r.Top, -int64_t{top}), Plus(r.Right, right),
                    Plus(r.Bottom, bottom)},
                   ViewPort);
}

void THtCanvasScene::AddScrollUpdateRects(int32_t dx, int32_t dy, int32_t width, int32_t height,
                                          int32_t stride, uint8_t*& ptr1, uint8_t*& ptr2) {
  constexpr int64_t kPixelBytes = 4;
  if (dx != 0) {
    MovePlaces(dx * kPixelBytes, dx > 0, false, ptr1, ptr2);
    ExpandUpdateRects(dx < 0 ? Narrow(-int64_t{dx}) : 0, 0, std::max(dx, 0), 0);
  }
  if (dy != 0) {
    MovePlaces(int64_t{dy} * stride, dy > 0, stride <= 0, ptr1, ptr2);
    ExpandUpdateRects(0, dy < 0 ? Narrow(-int64_t{dy}) : 0, 0, std::max(dy, 0));
  }
  AddScrollStrips(dx, dy, width, height);
}

// A scaled scene paints a little into the pixels around, hence the margin.
void THtCanvasScene::AddScrollStrips(int32_t dx, int32_t dy, int32_t width, int32_t height) {
  const int64_t margin = detail::RoundToInt(std::ceil(Scale));
  if (dx > 0) AddUpdateRect({0, 0, Plus(dx, margin), height});
  if (dx < 0) AddUpdateRect({Plus(width, dx - margin), 0, width, height});
  if (dy > 0) AddUpdateRect({0, 0, width, Plus(dy, margin)});
  if (dy < 0) AddUpdateRect({0, Plus(height, dy - margin), width, height});
}

}  // namespace ht
