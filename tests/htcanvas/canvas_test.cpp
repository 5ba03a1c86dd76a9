#include "htcanvas/canvas.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>

#include "htruntime/exception.h"
#include "htruntime/filestream.h"
#include "logcanvas.h"

using namespace ht;

namespace {

class TCanvas : public testing::Test {
 protected:
  void SetUp() override {
    FCanvas.BeginScene(NewScene({0, 0, 1000, 1000}));
    TakeLog();
  }

  TLogCanvas FCanvas;
};

TEST_F(TCanvas, ClassesAnswerWithoutACanvas) {
  const THtCanvasClass* canvas = TFixedCanvas::Class();
  EXPECT_EQ(canvas->GetFlags(), (THtCanvasFlags{hcfNeedBuffer, hcfCacheTextWidth, hcfScaleCanvasDrawing}));
  EXPECT_EQ(canvas->BitmapClass()->Create(1, 1, true), nullptr);
  EXPECT_EQ(canvas->NewCanvas()->CanvasClass(), canvas);
  EXPECT_EQ(THtCanvas::Class()->NewCanvas(), nullptr);
  EXPECT_EQ(THtTextStyle::Default().Opacity, 1);
  EXPECT_THROW(THtCanvas::Class()->HasFont(u"Arial"_hs), EHtException);
}

TEST_F(TCanvas, FontsAreFoundWithoutTheirFace) {
  TLogCanvas::Class()->FontDictionary().Clear();
  for (const char16_t* name :
       {u"arial", u"ARIAL LIGHT", u"Arial ExtraLight", u"Arial bold narrow", u"Foo Bold",
        u"Arial light medium", u"Foo bold bold", u"ärger sans", u"Ärger Sans Regular"})
    EXPECT_TRUE(TLogCanvas::Class()->HasFont(name)) << HtToUtf8(name);
  for (const char16_t* name :
       {u"Arial narrow bold", u"Arial medium light", u"Foo", u"Verdana", u" bold", u""})
    EXPECT_FALSE(TLogCanvas::Class()->HasFont(name)) << HtToUtf8(name);
  EXPECT_EQ(TakeLog(), "fonts\n") << "listed once";
}

TEST_F(TCanvas, GenericFamilies) {
  const struct {
    const char16_t *Name, *Font;
  } kCases[] = {{u"helvetica", u"Arial"},       {u"monospace", u"Courier New"},
                {u"SERIF", u"Times New Roman"}, {u"sans-serif", u"Arial"},
                {u"system-ui", u"Segoe UI"},    {u"Cursive", u"Lucida Calligraphy"},
                {u"fantasy", u"Harrington"},    {u"Times", u"Times New Roman"},
                {u"Verdana", u"Verdana"},       {u"Times New", u"Times New"}};
  for (const auto& c : kCases) {
    hstring name = c.Name;
    TFixedCanvas::Class()->DecodeFontFamily(name);
    EXPECT_EQ(name, c.Font);
  }
}

TEST_F(TCanvas, SceneSetsTheMatrices) {
  THtCanvasScene scene = NewScene({10, 20, 110, 220}, 2);
  scene.OffsetX = 1.5f;
  FCanvas.SaveState();
  FCanvas.TranslateTransform(5, 5);
  FCanvas.BeginScene(scene);
  EXPECT_EQ(FCanvas.CurrentMatrix().Flags, mfIdentity);
  // The scale acts after the move.
  EXPECT_EQ(FCanvas.RootMatrix.AsString(false), u"matrix(2,0,0,2,23,40)");
  EXPECT_EQ(FCanvas.Scale(10.3f), 21);
  FCanvas.RestoreState();
  EXPECT_EQ(FCanvas.CurrentMatrix().Flags, mfIdentity);
}

TEST_F(TCanvas, UpdateRectsGrowTowardTheScroll) {
  const struct {
    float X, Y;
    const char* Rect;
  } kCases[] = {{0, 0, "10,10,20,20"}, {.5f, -.5f, "10,10,20,20"}, {-3, -4, "10,10,23,24"},
                {3, 4, "7,6,20,20"},   {-500, 0, "10,10,100,20"},  {500, 2.5f, "0,8,20,20"},
                {0, 4, "10,6,20,20"}};
  for (const auto& c : kCases) {
    THtCanvasScene scene = NewScene();
    scene.AddUpdateRect({10, 10, 20, 20});
    scene.ScrollX = c.X;
    scene.ScrollY = c.Y;
    FCanvas.BeginScene(scene);
    EXPECT_EQ(Text(FCanvas.Scene.UpdateRects), c.Rect) << c.X << " " << c.Y;
  }
}

TEST_F(TCanvas, StatesAndTransforms) {
  FCanvas.SaveState();
  FCanvas.TranslateTransform(3, 4);
  FCanvas.SaveState();
  FCanvas.ScaleTransform(2, 2);
  EXPECT_EQ(FCanvas.CurrentMatrix().AsString(false), u"matrix(2,0,0,2,3,4)");
  FCanvas.RestoreState();
  TRectF rect{.4f, .4f, 1.6f, 1.6f};
  FCanvas.SnaptoPixels(rect);
  EXPECT_EQ(Text(rect), "0,0,2,2");
  FCanvas.RestoreState();
  FCanvas.TranslateTransform(1, 0);
  for (int i = 0; i < 3; ++i) FCanvas.RestoreState();  // more than were saved
  FCanvas.SaveState();
  EXPECT_EQ(FCanvas.CurrentMatrix().AsString(false), u"translate(1,0)");
  TakeLog();
  FCanvas.TranslateTransform(0, .00001f);
  FCanvas.ScaleTransform(1, 1);
  FCanvas.RotateTransform(90);
  FCanvas.ScaleTransform(2, 1);
  EXPECT_EQ(TakeLog(), "transform matrix(0,1,-1,0,0,0)\ntransform  scale(2,1)\n");
  EXPECT_NEAR(FCanvas.CurrentScale(), 2, 1e-4);
  THtMatrixData singular;
  singular.Init(0, 0, 0, 0, 7, 8);
  FCanvas.MatrixTransform(singular, false);
  FCanvas.SnaptoPixels(rect);  // back through the identity
  EXPECT_EQ(Text(rect), "7,8,7,8");
}

TEST_F(TCanvas, PrimitivesFallBackOnPaths) {
  const THtPen& pen = FCanvas.GetPen(0xFF000001, 2);
  const THtBrush& brush = FCanvas.GetBrush(0xFF000002);
  FCanvas.DrawLine(pen, 1, 2, 4, 8);
  FCanvas.DrawRectangle(pen, {1, 2, 11, 22});
  FCanvas.FillRectangle(brush, 1, 2, 10, 20);
  FCanvas.FillRoundRect(brush, {1, 2, 11, 22}, 0, .00001f);
  FCanvas.DrawEllipse(pen, 0, 0, 20, 10);
  FCanvas.SetSmoothingLevel(1);
  FCanvas.SetSmoothingLevel(0);
  THtCustomPath round(false);
  round.AddRoundRect({0, 0, 30, 20}, 4, 0);
  FCanvas.RoundRect(pen, {0, 0, 30, 20}, 4, 0);
  FCanvas.FillRoundRect(brush, {0, 0, 30, 20}, 4, 0);
  EXPECT_EQ(TakeLog(),
            "draw ff000001 2 M1 2l3 6 \n"
            "draw ff000001 2 M1 2h10 v20 h-10 z \n"
            "fill ff000002 M1 2h10 v20 h-10 z \n"
            "fill ff000002 M1 2h10 v20 h-10 z \n"
            "draw ff000001 2 A10 5 0 1 1 20 5 z \n"
            "smooth\ncrisp\nsmooth\n"
            "draw ff000001 2 " +
                PathText(round) + "\nfill ff000002 " + PathText(round) + "\n");
}

TEST_F(TCanvas, PenAndBrushAreUsedAgain) {
  THtPen& pen = FCanvas.GetPen(1, 2);
  pen.SetPenStyle(hpsDash);
  pen.SetLineJoin(ljRound);
  pen.SetLineCap(lcSquare);
  pen.SetDashes(std::array{3.0f}, 0);
  pen.SetDashOffset(4);
  pen.FMode = ldmXOR;
  EXPECT_EQ(&FCanvas.GetPen(5, 6), &pen);
  EXPECT_EQ(
      Words("pen", pen.GetColor(), pen.GetWidth(), pen.GetPenStyle(), pen.GetLineJoin(), pen.GetLineCap()),
      Words("pen", 5, 6, hpsSolid, ljMiter, lcFlat));
  EXPECT_TRUE(pen.Dashes.empty() && pen.GetDashOffset() == 0 && pen.FMode == ldmCopy);
  const THtBrush& brush = FCanvas.GetBrush(7);
  EXPECT_EQ(&FCanvas.GetBrush(8), &brush);
  EXPECT_EQ(brush.GetColor(), 8u);
}

TEST_F(TCanvas, ClearFillsWhatIsRepainted) {
  THtCanvasScene scene = NewScene();
  for (const std::string fills : {"fill 11223344 M0 0h50 v50 h-50 z \n",
                                  "fill 11223344 M5 5h5 v5 h-5 z \nfill 11223344 M15 15h10 v10 h-10 z \n"}) {
    FCanvas.BeginScene(scene);
    FCanvas.ScaleTransform(2, 2);
    TakeLog();
    FCanvas.Clear(0x11223344);
    EXPECT_EQ(TakeLog(), "copy\n" + fills + "blend\n");
    scene.AddUpdateRect({10, 10, 20, 20});
    scene.AddUpdateRect({30, 30, 50, 50});
  }
}

TEST_F(TCanvas, RectsInView) {
  const struct {
    TRectF Rect;
    bool Whole, Partly, ViewPort;  // without update rectangles, with some, in the viewport
  } kCases[] = {{{0, 0, 5, 5}, true, false, true},        {{12, 12, 13, 13}, true, true, true},
                {{0, 0, 10, 10}, true, false, true},      {{0, 0, 10.5f, 10.5f}, true, true, true},
                {{100, 0, 120, 10}, false, false, false}, {{-5, 0, 0, 10}, false, false, false},
                {{99.9f, 40, 120, 50}, true, false, true}};
  for (const bool partly : {false, true}) {
    THtCanvasScene scene = NewScene();
    if (partly) {
      scene.AddUpdateRect({10, 10, 20, 20});
      scene.AddUpdateRect({60, 60, 70, 70});
    }
    FCanvas.BeginScene(scene);
    for (const auto& c : kCases) {
      SCOPED_TRACE(Text(c.Rect));
      EXPECT_EQ(FCanvas.CanvasRectInView(c.Rect), partly ? c.Partly : c.Whole);
      FCanvas.SaveState();
      FCanvas.TranslateTransform(5, 5);
      TRectF moved = c.Rect;
      ROffset(moved, -5, -5);
      EXPECT_EQ(FCanvas.DocumentRectInView(moved), partly ? c.Partly : c.Whole);
      EXPECT_EQ(FCanvas.DocumentRectInViewPort(moved), c.ViewPort);
      FCanvas.RestoreState();
    }
    EXPECT_EQ(FCanvas.CanvasRectInView(TRect{0, 0, 5, 5}), !partly);
  }
}

TEST_F(TCanvas, Pages) {
  FCanvas.BeginPaging(210, 297, 96, coDefault);
  FCanvas.NewPage(coLandscape);
  ASSERT_EQ(FCanvas.GetPageCount(), 2);
  const auto told = [this](int32_t index) {
    const THtPage& page = *FCanvas.GetPage(index);
    return Words("page", page.Number, page.WidthPx, page.HeightPx, page.Orientation);
  };
  EXPECT_EQ(told(0), Words("page", 1, 794, 1123, coDefault));
  EXPECT_EQ(told(1), Words("page", 2, 794, 1123, coLandscape));
  EXPECT_TRUE(!FCanvas.GetPage(2) && !FCanvas.GetPage(-1));
  FCanvas.SetPageWidthMM(25.4f);
  EXPECT_EQ(FCanvas.GetPageWidthPixels(), 96);
  FCanvas.BeginPaging(10, 10, 254, coPortrait);
  EXPECT_EQ(FCanvas.GetPageCount(), 1);
  EXPECT_EQ(FCanvas.GetPageHeightPixels(), 100);

  const auto page = THtPage::Class()->Create(20, .85f, 3, 254);
  EXPECT_EQ(page->HeightPx, 9);  // .85 is a little more than itself
  EXPECT_EQ(page->Orientation, coLandscape);
  EXPECT_EQ(THtPage::Class()->Create(10, 10, 3, 96)->Orientation, coPortrait);
}

TEST_F(TCanvas, WhatIsNotThere) {
  THtPage page;
  TLogBitmap bitmap;
  constexpr const char16_t* kNoMetafile = u"Metafile is not implemented for class THtPage";
  EXPECT_EQ(MessageOf<EHtException>([&] { page.AsMetaFileBytes(); }), kNoMetafile);
  EXPECT_EQ(MessageOf<EHtException>([&] { page.AsMetaFile(); }), kNoMetafile);
  EXPECT_EQ(MessageOf<EHtException>([&] { bitmap.GetBuffer(); }), u"HtBitmap buffer not implemented");
  EXPECT_FALSE(FCanvas.HasImageMatrix());
  FCanvas.SetImageColorMatrix({1, 2});
  EXPECT_TRUE(FCanvas.HasImageMatrix());
  EXPECT_THROW(FCanvas.SavetoPDF(u"/nowhere/at/all.pdf"_hs), EFileStreamError);
  const std::string name = testing::TempDir() + "htcanvas_empty.pdf";
  FCanvas.SavetoPDF(HtFromUtf8(name));
  EXPECT_TRUE(std::filesystem::is_empty(name));
  std::remove(name.c_str());
}

}  // namespace
