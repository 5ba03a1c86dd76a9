#include "htcanvas/canvasscene.h"

#include <gtest/gtest.h>

#include "rects.h"

using namespace ht;

namespace {

TEST(CanvasScene, InitTakesTheWholeViewport) {
  THtCanvasScene scene = NewScene({0, 0, 100, 80}, 3);
  scene.EditorMode = true;
  scene.UpdateRects.push_back({1, 2, 3, 4});
  int drawing = 0;
  scene.Init({5, 6, 7, 8}, &drawing);
  EXPECT_EQ(scene.Canvas, &drawing);
  EXPECT_EQ(scene.ViewPort, (TRect{5, 6, 7, 8}));
  EXPECT_EQ(scene.ClipRect, (TRect{5, 6, 7, 8}));
  EXPECT_TRUE(scene.UpdateRects.empty());
  EXPECT_EQ(scene.Scale, 1);
  EXPECT_FALSE(scene.EditorMode);
  EXPECT_EQ(scene.Transform.Flags, mfIdentity);
}

TEST(CanvasScene, UpdateRectsAreTakenAsTheyAre) {
  constexpr TRect kFirst{10, 10, 40, 40};
  const struct {
    TRect Added;
    size_t Count;  // of update rectangles, the first one included
    TRect Clip;
  } kCases[] = {
      {{5, 5, 5, 20}, 1, {0, 0, 100, 80}},         // empty
      {{20, 20, 10, 30}, 1, {0, 0, 100, 80}},      // reversed
      {{100, 0, 120, 20}, 1, {0, 0, 100, 80}},     // an edge in common with the viewport
      {{10, 10, 40, 40}, 1, {0, 0, 100, 80}},      // held by the first
      {{15, 10, 40, 30}, 1, {0, 0, 100, 80}},      //
      {{15, 10, 41, 30}, 2, {0, 0, 100, 80}},      // just not
      {{90, 70, 130, 200}, 2, {0, 0, 130, 200}},   // partly outside: not cut
      {{-20, -30, 1, 1}, 2, {-20, -30, 100, 80}},  //
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(Text(c.Added));
    THtCanvasScene scene = NewScene({0, 0, 100, 80});
    scene.AddUpdateRect(kFirst);
    scene.AddUpdateRect(c.Added);
    ASSERT_EQ(scene.UpdateRects.size(), c.Count);
    if (c.Count == 2) {
      EXPECT_EQ(scene.UpdateRects[1], c.Added);
    }
    EXPECT_EQ(scene.ClipRect, c.Clip);
  }
}

TEST(CanvasScene, ExpandedRectsStayInTheViewport) {
  THtCanvasScene scene = NewScene({10, 10, 100, 80});
  scene.AddUpdateRect({20, 30, 40, 50});
  scene.AddUpdateRect({12, 10, 95, 78});
  scene.ExpandUpdateRects(5, 6, 7, 8);
  EXPECT_EQ(scene.UpdateRects[0], (TRect{15, 24, 47, 58}));
  EXPECT_EQ(scene.UpdateRects[1], (TRect{10, 10, 100, 80}));
  scene.ExpandUpdateRects(INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX);
  EXPECT_EQ(scene.UpdateRects[0], scene.ViewPort);
}

TEST(CanvasScene, ScrollMovesThePlacesAndAddsStrips) {
  constexpr int32_t kStride = 400;
  const struct {
    int32_t Dx, Dy, Stride;
    float Scale;
    ptrdiff_t Moved1, Moved2;  // bytes
    std::string Rects;
  } kCases[] = {
      {3, 0, kStride, 1, 0, 12, "20,20,33,30 0,0,4,80"},
      {-3, 0, kStride, 1, 12, 0, "17,20,30,30 96,0,100,80"},
      {0, 2, kStride, 1, 0, 800, "20,20,30,32 0,0,100,3"},
      {0, 2, -kStride, 1, 800, 0, "20,20,30,32 0,0,100,3"},
      {0, -2, kStride, 1, 800, 0, "20,18,30,30 0,77,100,80"},
      {0, -2, -kStride, 1, 0, 800, "20,18,30,30 0,77,100,80"},
      {1, -1, kStride, 1.25f, 400, 4, "20,19,31,30 0,0,3,80 0,77,100,80"},
      {0, 0, kStride, 2, 0, 0, "20,20,30,30"},
  };
  uint8_t buffer[2000];
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.Rects);
    THtCanvasScene scene = NewScene({0, 0, 100, 80}, c.Scale);
    scene.AddUpdateRect({20, 20, 30, 30});
    THtCanvasScene blind = scene;
    uint8_t *ptr1 = buffer, *ptr2 = buffer;
    scene.AddScrollUpdateRects(c.Dx, c.Dy, 100, 80, c.Stride, ptr1, ptr2);
    EXPECT_EQ(ptr1 - buffer, c.Moved1);
    EXPECT_EQ(ptr2 - buffer, c.Moved2);
    EXPECT_EQ(Text(scene.UpdateRects), c.Rects);
    // Without the pointer that a scroll forward moves first, the rectangles are the same, and nothing moves.
    uint8_t *ptr = c.Dx < 0 || c.Dy < 0 ? nullptr : buffer, *null = nullptr;
    uint8_t* const before = ptr;
    blind.AddScrollUpdateRects(c.Dx, c.Dy, 100, 80, c.Stride, ptr, null);
    EXPECT_TRUE(ptr == before && !null);
    EXPECT_EQ(blind.UpdateRects, scene.UpdateRects);
  }
}

}  // namespace
