#pragma once

#include "fixedcanvas/fixedcanvas.h"
#include "htcanvas/bitmap.h"
#include "rects.h"

// A canvas and a bitmap that write down what reaches them, in one log for all: composite operations draw on canvases that
// they make themselves.

namespace ht {

inline std::vector<std::string> CanvasLog;

inline void Log(std::string line) { CanvasLog.push_back(std::move(line)); }

inline std::string TakeLog() {
  std::string text;
  for (const std::string& line : CanvasLog) text += line + "\n";
  CanvasLog.clear();
  return text;
}

inline std::string HexColor(uint32_t color) {
  char text[9];
  std::snprintf(text, sizeof text, "%08x", color);
  return text;
}

inline std::string PathText(const THtPath& path) { return HtToUtf8(path.AsString()); }

class TLogBitmap : public THtBitmap {
  HT_CLASS(TLogBitmap, THtBitmap)

 public:
  int32_t GetHeight() const override { return FHeight; }
  int32_t GetWidth() const override { return FWidth; }
  void* GetRawBits() override { return this; }
  void Create(int32_t width, int32_t height, bool alpha) override {
    Log(Words("new bitmap", width, height) + (alpha ? " alpha" : ""));
    FWidth = width, FHeight = height;
  }
  void FillRect(const TRect& rect, uint32_t color) override {
    Log("clear " + Text(rect) + " " + HexColor(color));
  }
  void DrawOnCanvas(THtCanvas&, const TRectF&, const TRect&, float) override {}
  void SetSize(int32_t width, int32_t height) override {
    Log(Words("size", width, height));
    FWidth = width, FHeight = height;
  }

 private:
  int32_t FWidth = 0, FHeight = 0;
};

class TLogCanvasClass : public TFixedCanvasClass {
 public:
  using TFixedCanvasClass::TFixedCanvasClass;
  const THtBitmapClass* BitmapClass() const override { return TLogBitmap::Class(); }
  THtStringList& FontDictionary() const override {
    static THtStringList fonts(31, false);
    return fonts;
  }
  void GetFonts(TStringList& list) const override {
    Log("fonts");
    for (const char16_t* name : {u"Arial", u"Foo Bold", u"ÄRGER Sans"}) list.Add(name);
  }

 protected:
  ~TLogCanvasClass() = default;
};

class TLogCanvas : public TFixedCanvas {
  HT_CLASS(TLogCanvas, TFixedCanvas)

 public:
  using TClassRef = TLogCanvasClass;

  ~TLogCanvas() override {
    if (Scene.Bitmap) Log("gone");
  }
  void BeginScene(const THtCanvasScene& scene) override {
    Log("begin " + Text(scene.ViewPort) + (scene.Bitmap && scene.Canvas == scene.Bitmap ? " on bitmap" : ""));
    TFixedCanvas::BeginScene(scene);
  }
  void EndScene() override { Log("end"); }
  void SaveState() override {
    Log("save");
    TFixedCanvas::SaveState();
  }
  void RestoreState() override {
    Log("restore");
    TFixedCanvas::RestoreState();
  }
  void MatrixTransform(const THtMatrixData& matrix, bool multiply) override {
    Log((multiply ? "transform " : "matrix ") + HtToUtf8(matrix.AsString(false)));
    TFixedCanvas::MatrixTransform(matrix, multiply);
  }
  void IntersectClip(const TRectF& rect) override { Log("clip " + Text(rect)); }
  void SetSmoothingMode(bool on) override { Log(on ? "smooth" : "crisp"); }
  void SetCompositingMode(bool blend) override { Log(blend ? "blend" : "copy"); }
  void DrawPath(const THtPen& pen, const THtPath& path) override {
    Log("draw " + HexColor(pen.GetColor()) + Words("", pen.GetWidth()) + " " + PathText(path));
  }
  void FillPath(const THtBrush& brush, const THtPath& path) override {
    std::string colors =
        brush.GradientColors.empty() ? HexColor(brush.GetColor()) : Words("angle", brush.Angle);
    for (size_t i = 0; i < brush.GradientColors.size(); ++i)
      colors += " " + Text(double{brush.GradientPositions[i]}) + ":" + HexColor(brush.GradientColors[i]);
    Log("fill " + colors + " " + PathText(path));
  }
  void DrawString(const hstring& text, const TRectF& rect, THtFont&, const THtTextStyle& style, int32_t start,
                  int32_t count) override {
    Log("text " + HtToUtf8(text) + " " + Text(rect) + " " + HexColor(style.Color) + Words("", start, count));
  }
  void BlurRect(const TRectF& rect, const THtPath* path, float radius) override {
    Log("blur " + Text(rect) + Words(path ? " path" : "", radius));
  }
  void DrawImage(THtImage& image, const TRectF& rect, float opacity) override {
    Log("image " + Text(rect) + Words("", opacity));
    TFixedCanvas::DrawImage(image, rect, opacity);
  }
  void DrawBitmap(THtBitmap&, const TRectF& dest, const TRect& source, float opacity) override {
    Log("bitmap " + Text(dest) + " from " + Text(source) + Words("", opacity));
  }
};

}  // namespace ht
