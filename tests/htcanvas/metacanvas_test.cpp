#include "htcanvas/metacanvas.h"

#include <array>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>

#include "htcanvas/pagedexporter.h"
#include "htcanvas/svgcanvas.h"
#include "htruntime/exception.h"
#include "logcanvas.h"

using namespace ht;

namespace {

using TDraw = std::function<void(THtCanvas&, THtFontCollection&)>;

THtCanvasScene Scene(const TRect& viewPort = {0, 0, 200, 200}) {
  THtCanvasScene scene;
  scene.Init(viewPort, nullptr);
  return scene;
}

class MetaCanvas : public testing::Test {
 protected:
  void SetUp() override { HtDefaultCanvasClass = TLogCanvas::Class(); }
  void TearDown() override { HtDefaultCanvasClass = nullptr, TakeLog(); }

  std::unique_ptr<THtMetaList> Recorded(const TDraw& draw) {
    auto list = std::make_unique<THtMetaList>(true);
    THtMetaCanvas canvas(*list);
    canvas.BeginScene(Scene());
    draw(canvas, *FFonts);
    return list;
  }
  static THtBytes Saved(const THtMetaList& list) {
    TBytesStream stream;
    list.SavetoStream(stream);
    return stream.TakeBytes();
  }
  std::unique_ptr<THtMetaList> Loaded(const THtBytes& bytes) {
    auto list = std::make_unique<THtMetaList>(true);
    TBytesStream stream(bytes);
    list->LoadfromStream(stream, *TLogCanvas::Class(), *FFonts);
    EXPECT_EQ(stream.GetPosition(), stream.GetSize());
    return list;
  }
  template <class TCanvas = TLogCanvas>
  static std::string Played(THtMetaList& list, float opacity = 1) {
    TCanvas canvas;
    canvas.BeginScene(Scene());
    TakeLog();
    list.Play(canvas, opacity);
    return TakeLog();
  }
  std::string SVGOf(const std::function<void(THtCanvas&)>& draw) {
    THtSVGCanvas canvas;
    canvas.BeginScene(Scene());
    draw(canvas);
    canvas.EndScene();
    return HtToUtf8(canvas.Writer().GetAsString());
  }

  std::unique_ptr<THtFontCollection> FFonts = TLogCanvas::Class()->CreateFontCollection();
};

// Bytes as the format tells them.
struct TBytes {
  THtBytes Data;
  template <class T>
  TBytes& Put(T value) {
    const auto at = Data.size();
    Data.resize(at + sizeof value);
    std::memcpy(Data.data() + at, &value, sizeof value);
    return *this;
  }
  TBytes& F(std::initializer_list<float> values) {
    for (const float value : values) Put(value);
    return *this;
  }
  TBytes& U8(std::initializer_list<int> values) {
    for (const int value : values) Put(static_cast<uint8_t>(value));
    return *this;
  }
  TBytes& U32(std::initializer_list<uint32_t> values) {
    for (const uint32_t value : values) Put(value);
    return *this;
  }
  TBytes& S(std::u16string_view text) {
    Put(static_cast<int32_t>(text.size()));
    for (const char16_t c : text) Put(c);
    return *this;
  }
  TBytes& Matrix(std::initializer_list<float> values, uint8_t flags) {
    return F(values).U8({flags, 0, 0, 0});
  }
  TBytes& Solid(uint32_t color) {
    return U8({0})
        .U32({color})
        .F({0, 0, 0, 0, 0, 0, 0})
        .Matrix({1, 0, 0, 1, 0, 0}, 0)
        .F({0, 0, 0, 0, 0, 0, 0, 0, 0})
        .U32({0, 0});
  }
};
TBytes Record(uint16_t tag) { return TBytes().U32({1}).Put(tag); }

const TDraw kNothing = [](auto&, auto&) {};

void DrawLinear(THtCanvas& c, THtFontCollection&) {
  const auto brush = THtBrush::Class()->CreateGradient({1, 2, 3, 4}, 0, 0, -90, {5, 6, 70, 80});
  brush->SetGradientColors(std::array{0.0f, 1.0f}, std::array{0xFF102030u, 0x80405060u});
  c.FillRectangle(*brush, 5, 6, 65, 74);
}

void DrawRadial(THtCanvas& c, THtFontCollection&) {
  THtMatrixData matrix;
  matrix.Scale(2, 3);
  const auto brush = THtBrush::Class()->CreateRadialGradient(1, 2, 30, 40, 5, 6, 70, matrix);
  brush->SetGradientColors(std::array{0.0f, 1.0f}, std::array{0xFF102030u, 0x80405060u});
  c.FillEllipse(*brush, 10, 20, 30, 40);
}

void DrawDashed(THtCanvas& c, THtFontCollection&) {
  THtPen& pen = c.GetPen(0xFF112233, 2);
  pen.SetLineJoin(ljRound);
  pen.SetLineCap(lcSquare);
  pen.SetPenStyle(hpsDashDot);
  pen.SetDashOffset(1.5f);
  pen.SetDashes(std::array{4.0f, 3.0f}, 1);
  THtCustomPath path;
  path.Parse(u"M1 2H30V40");
  path.SetFillModeWinding(true);
  c.DrawPath(pen, path);
}

void DrawClip(THtCanvas& c, THtFontCollection&) {
  THtCustomPath path(true);
  path.Parse(u"M1 2L30 4L5 60");
  c.IntersectClip(path);
}

void DrawText(THtCanvas& c, THtFontCollection& fonts) {
  THtTextStyle style;
  style.WordSpacing = 1, style.LetterSpacing = 2, style.Opacity = .5f, style.Overflow = toEllipsis;
  style.Shadow = style.EditorMode = true;
  style.Color = 0xFF0000FF, style.ShadowColor = 2, style.DecorationColor = 3, style.DecorationStyle = tsWavy;
  style.ShadowX = 4, style.ShadowY = 5, style.ShadowBlur = 6;
  style.WritingMode = wmSidewaysLR, style.UnicodeBidi = ubPlainText;
  THtFont& font = *fonts.GetFont(u"Arial"_hs, 12, {hfsBold});
  font.SetStyle({hfsBold, hfsUnderline});
  c.DrawString(u"a\u00A0b c!"_hs, {1, 2, 30, 40}, font, style, 1, 5);
  font.SetStyle({hfsBold});
}

// clang-format off
const struct {
  const char* Name;
  TDraw Draw;
  TBytes Bytes;
} kStream[] = {
    {"nothing", kNothing, TBytes().U32({0})},
    {"link", [](auto& c, auto&) { c.DrawLink({1, 2, 3, 4}, u"x"_hs, false); }, Record(0)},
    {"shadow", [](auto& c, auto&) { c.DrawShadow(nullptr, {}); }, Record(0)},
    {"text", DrawText,
     Record(1).S(u"a b c").S(u"Arial").F({12}).U8({1 | 4, 0, 0}).F({1, 2, 30, 40}).U32({3})
         .F({.5f, 1, 2, .5f}).U8({1, 1, 0, 1}).U32({0xFF0000FF, 2, 3}).U8({4, 0, 0, 0}).F({4, 5, 6})
         .U8({4, 5, 0, 0})},
    {"dashed path", DrawDashed,
     Record(2).S(u"M1 2h29 v38 ").U8({0, 1, 0, 2, 1}).U32({0xFF112233}).F({2}).U8({3}).F({1.5f}).U8({0})
         .U32({2}).F({2, 1.5f})},
    {"filled path",
     [](auto& c, auto&) {
       THtCustomPath path;
       path.Parse(u"M1 2L30 4z");
       c.FillPath(c.GetBrush(0x80112233), path);
     },
     Record(2).S(u"M1 2l29 2 z ").U8({0, 0, 1}).Solid(0x80112233)},
    {"line", [](auto& c, auto&) { c.DrawLine(c.GetPen(0xFF112233, 2.5f), 1, 2, 3, 4); },
     Record(3).F({1, 2, 3, 4}).U8({0, 0}).U32({0xFF112233}).F({2.5f}).U8({0}).F({0}).U8({0}).U32({0})},
    {"image",
     [](auto& c, auto&) {
       static const auto kImage = TBytesImage::Class()->Create(THtBytes{1, 2, 3});
       kImage->Width = 7, kImage->Height = 8;
       c.DrawImage(*kImage, {10, 20, 30, 40}, .5f);
     },
     Record(4).F({0, 0, 7, 8, 10, 20, 30, 40, .5f}).U32({3}).U8({1, 2, 3})},
    {"image without data",
     [](auto& c, auto&) {
       static THtImage image;
       c.DrawImage(image, {10, 20, 30, 40}, 1);
     },
     Record(4).F({0, 0, 0, 0, 10, 20, 30, 40, 1}).U32({0})},
    {"tiled image",
     [](auto& c, auto&) {
       static const auto kImage = TBytesImage::Class()->Create(THtBytes{4});
       c.FillImage({10, 20, 30, 40}, *kImage, 1, 2, {}, .5f, 3);
     },
     Record(4).F({0, 0, 0, 0, 10, 20, 30, 40, .5f}).U32({1}).U8({4})},
    {"spaced text",
     [](auto& c, auto& fonts) {
       THtFont& font = *fonts.GetFont(u"Arial"_hs, 12, {hfsBold});
       font.SetStyle({hfsBold, hfsUnderline});
       c.DrawStringEx(u"ab"_hs, {1, 2, 3, 4}, font, {}, std::array{1.0f, 2.0f}, &c.GetBrush(1), &c.GetPen(2, 3), 1, -1);
     },
     Record(1).S(u"ab").S(u"Arial").F({12}).U8({1 | 4, 0, 0}).F({1, 2, 3, 4}).U32({0}).F({1, 0, 0, 1})
         .U8({0, 0, 0, 0}).U32({0, 0, 0, 0}).F({0, 0, 0}).U8({0, 0, 0, 0})},
    {"matrix", [](auto& c, auto&) { c.TranslateTransform(3, 4); }, Record(5).Matrix({1, 0, 0, 1, 3, 4}, 1)},
    {"save", [](auto& c, auto&) { c.SaveState(); }, Record(6).U8({1})},
    {"restore", [](auto& c, auto&) { c.RestoreState(); }, Record(6).U8({0})},
    {"clip", [](auto& c, auto&) { c.IntersectClip(TRectF{1, 2, 3, 4}); }, Record(7).F({1, 2, 3, 4}).U8({0})},
    {"clip of a path", DrawClip, Record(7).F({0, 0, 0, 0}).U8({1}).S(u"M1 2l29 2 -25 56 ").U8({1, 0})},
    {"ellipse", [](auto& c, auto&) { c.DrawEllipse(c.GetPen(5, 1), 1, 2, 3, 4); },
     Record(8).F({1, 2, 3, 4}).U8({0, 0, 0}).U32({5}).F({1}).U8({0}).F({0}).U8({0}).U32({0})},
    {"radial ellipse", DrawRadial,
     Record(8).F({10, 20, 30, 40}).U8({1, 2}).U32({0}).F({1, 2, 30, 40, 5, 6, 70})
         .Matrix({2, 0, 0, 3, 0, 0}, 2).F({0, 0, 0, 0, 0, 0, 0, 0, 0}).U32({2, 0xFF102030, 0x80405060, 2})
         .F({0, 1})},
    {"solid rectangle", [](auto& c, auto&) { c.FillRectangle(c.GetBrush(0xFF112233), 1, 2, 3, 4); },
     Record(9).F({1, 2, 3, 4, 0, 0}).U8({0, 1, 0}).U32({0xFF112233})},
    {"linear rectangle", DrawLinear,
     Record(9).F({5, 6, 65, 74, 0, 0}).U8({0, 1, 1, 1}).U32({0}).F({0, 0, 0, 0, 0, 0, 0})
         .Matrix({1, 0, 0, 1, 0, 0}, 0).F({270, 1, 2, 3, 4, 5, 6, 70, 80}).U32({2, 0xFF102030, 0x80405060, 2})
         .F({0, 1})},
    {"plain frame", [](auto& c, auto&) { c.RoundRect(c.GetPen(7, 2), {1, 2, 4, 6}, 5, 6); },
     Record(9).F({1, 2, 3, 4, 5, 6}).U8({1, 0, 0}).U32({7}).F({2})},
    {"dashed frame",
     [](auto& c, auto&) {
       THtPen& pen = c.GetPen(7, 2);
       pen.SetPenStyle(hpsDot);
       c.DrawRectangle(pen, 1, 2, 3, 4);
     },
     Record(9).F({1, 2, 3, 4, 0, 0}).U8({0, 0, 1, 0, 0}).U32({7}).F({2}).U8({2}).F({0}).U8({0}).U32({0})},
    {"inverting frame",
     [](auto& c, auto&) {
       THtPen& pen = c.GetPen(7, 2);
       pen.FMode = ldmXOR;
       c.DrawRectangle(pen, 1, 2, 3, 4);
     },
     Record(9).F({1, 2, 3, 4, 0, 0}).U8({0, 0, 1, 0, 0}).U32({7}).F({2}).U8({0}).F({0}).U8({1}).U32({0})},
};
// clang-format on

void DrawAll(THtCanvas& canvas, THtFontCollection& fonts) {
  for (const auto& row : kStream) row.Draw(canvas, fonts);
}

TEST_F(MetaCanvas, StreamToTheByteAndBack) {
  for (const auto& row : kStream) {
    const THtBytes bytes = Saved(*Recorded(row.Draw));
    EXPECT_EQ(bytes, row.Bytes.Data) << row.Name;
    const auto again = Loaded(bytes);
    EXPECT_EQ(Saved(*again), again->Count() > 0 ? bytes : Saved(THtMetaList(true))) << row.Name;
  }
}

TEST_F(MetaCanvas, AnyDamageEndsInAValueOrAnException) {
  const THtBytes whole = Saved(*Recorded(DrawAll));
  for (size_t size = 0; size < whole.size(); ++size)
    EXPECT_THROW(Loaded({whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size)}), EHtException) << size;
  for (size_t at = 0; at < whole.size(); ++at)
    for (const uint8_t value : std::initializer_list<uint8_t>{0x00, 0x01, 0x7F, 0x80, 0xFF}) {
      THtBytes altered = whole;
      altered[at] = value;
      THtMetaList list(true);
      TBytesStream stream(altered);
      try {
        list.LoadfromStream(stream, *TLogCanvas::Class(), *FFonts);
      } catch (const EHtException&) {}
      Played(list, .5f);
      Saved(list);
    }
  const auto error = [this](const TBytes& bytes) -> std::string {
    try {
      Loaded(bytes.Data);
      return {};
    } catch (const EHtException& e) {
      return e.what();
    }
  };
  EXPECT_EQ(error(TBytes().U32({2}).U8({6, 0, 1, 6})), "Stream read error");
  EXPECT_EQ(error(TBytes().U32({0xFFFFFFFF})), "Meta stream is damaged");
  EXPECT_EQ(error(Record(2).S(u"M1 2q!w")), "Stream read error");
  EXPECT_EQ(error(Record(1).U32({0x7FFFFFFF}).U8({1})), "Stream read error");
  EXPECT_EQ(error(Record(5).Matrix({1, 0, 0, 1, 0, 0}, 5)), "Meta stream is damaged");
  EXPECT_EQ(Loaded(TBytes().U32({3}).U8({10, 0, 6, 0, 1, 255, 255}).Data)->Count(), 1);
}

// As a file: its memory is not at hand.
class TFarStream : public TStream {
 public:
  explicit TFarStream(THtBytes bytes) : FBytes(std::move(bytes)) {}
  int64_t Read(void* buffer, int64_t count) override { return FBytes.Read(buffer, count); }
  int64_t Write(const void* buffer, int64_t count) override { return FBytes.Write(buffer, count); }
  int64_t Seek(int64_t offset, TSeekOrigin origin) override { return FBytes.Seek(offset, origin); }

 private:
  TBytesStream FBytes;
};

TEST_F(MetaCanvas, ListsFollowEachOtherInAnyStream) {
  const auto image = TBytesImage::Class()->Create(THtBytes(100000, 5));
  const auto list = Recorded([&](THtCanvas& c, THtFontCollection& fonts) {
    c.DrawImage(*image, {0, 0, 1, 1}, 1);
    for (int i = 0; i < 100; ++i) DrawAll(c, fonts);  // more than is read ahead at once
  });
  const THtBytes bytes = Saved(*list), loaded = Saved(*Loaded(bytes));
  THtBytes twice = bytes;
  twice.insert(twice.end(), bytes.begin(), bytes.end());
  TFarStream far(twice);
  TBytesStream near(twice);
  for (TStream* stream : std::initializer_list<TStream*>{&far, &near})
    for (int i = 1; i <= 2; ++i) {
      THtMetaList again(true);
      again.LoadfromStream(*stream, *TLogCanvas::Class(), *FFonts);
      EXPECT_EQ(stream->GetPosition(), static_cast<int64_t>(bytes.size()) * i);
      EXPECT_EQ(Saved(again), loaded);
    }
  TFarStream cut({bytes.begin(), bytes.end() - 1});
  THtMetaList again(true);
  EXPECT_THROW(again.LoadfromStream(cut, *TLogCanvas::Class(), *FFonts), EStreamError);
}

void DrawLinks(THtCanvas& c, THtFontCollection& fonts) {
  c.SaveState();
  c.RotateTransform(30);
  c.DrawLink({}, u"here"_hs, true);
  c.BeginLink(u"to"_hs, u"title"_hs);
  DrawText(c, fonts);
  c.EndLink();
  c.DrawButton({10, 10, 90, 30}, 0, false, false, true, false);
  c.DrawWavyLine(10, 40, 60, 40, c.GetPen(0xFFFF0000, 1));
  c.DrawArc(c.GetPen(0xFF00FF00, 3), 10, 10, 50, 60, 20, 200);
  c.RestoreState();
  static THtImage byAddress;
  byAddress.Url = u"a.png"_hs;
  c.DrawImage(byAddress, {1, 2, 3, 4}, 1);
}

TEST_F(MetaCanvas, ReplayIsTheSameAsDrawing) {
  for (const TDraw& draw : {TDraw(DrawAll), TDraw(DrawLinks)}) {
    const auto list = Recorded(draw);
    const std::string direct = SVGOf([&](THtCanvas& c) { draw(c, *FFonts); });
    const auto play = [](THtMetaList& l) { return [&l](THtCanvas& c) { l.Play(c, 1); }; };
    EXPECT_EQ(SVGOf(play(*list)), direct);
    EXPECT_EQ(SVGOf(play(*Recorded([&](THtCanvas& c, auto&) { list->Play(c, 1); }))), direct);
  }
}

// Resources of one colour, so that one might be taken for another.
void DrawAlike(THtCanvas& c, THtFontCollection& fonts) {
  THtTextStyle style;
  style.Color = 0xFF000001;
  for (const float size : {1.0f, 2.0f, 1.0f}) {
    c.DrawEllipse(c.GetPen(0xFF000001, size), 10, 20, 30, 40);
    const auto brush = THtBrush::Class()->CreateRadialGradient(0, 0, 10, 10, 10, 10, size, {});
    brush->SetGradientColors(std::array{0.0f, 1.0f}, std::array{0xFF000001u, 0xFF000002u});
    c.FillEllipse(*brush, 10, 20, 30, 40);
    c.DrawString(u"a"_hs, {10, 20, 30, 40}, *fonts.GetFont(u"Arial"_hs, size, {}), style, 1, 1);
  }
}

TEST_F(MetaCanvas, WhatLooksAlikeIsKeptApart) {
  const auto list = Recorded(DrawAlike), loaded = Loaded(Saved(*list));
  const std::string direct = SVGOf([&](THtCanvas& c) { DrawAlike(c, *FFonts); });
  for (THtMetaList* played : {list.get(), loaded.get()})
    EXPECT_EQ(SVGOf([&](THtCanvas& c) { played->Play(c, 1); }), direct);
}

TEST_F(MetaCanvas, OpacityFadesAndChangesNothingOfTheList) {
  const auto list = Recorded(DrawAll);
  const THtBytes before = Saved(*list);
  const std::string whole = Played(*list), half = Played(*list, .5f);
  EXPECT_EQ(Saved(*list), before);
  EXPECT_EQ(Played(*list), whole);
  for (const char* faded :
       {"draw 80112233 2", "fill 40112233", "fill angle 270 0:80102030 1:40405060", "fill 80112233",
        "fill angle 0 0:80102030 1:40405060", "draw ff112233 2.5", "draw 00000007 2"})
    EXPECT_NE(half.find(faded), half.npos) << faded << "\n" << half;
}

TEST_F(MetaCanvas, WhatLiesOutOfViewIsNotPlayed) {
  const auto list = Recorded([](THtCanvas& c, THtFontCollection& fonts) {
    c.TranslateTransform(300, 0);
    DrawText(c, fonts), DrawLinear(c, fonts), DrawDashed(c, fonts);
    c.FillEllipse(c.GetBrush(1), 0, 0, 5, 5);
    c.TranslateTransform(-300, 0);
    c.DrawLine(c.GetPen(2, 1), 900, 0, 900, 5);
    THtCustomPath edge;
    edge.Parse(u"M0 0V200");  // half of the line lies within
    c.DrawPath(c.GetPen(3, 2), edge);
  });
  const std::string log = Played(*list);
  EXPECT_EQ(log.find("text"), log.npos);
  EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 5) << log;
}

// A host with classes of its own.
class TOtherBrush : public THtBrush {
  HT_CLASS(TOtherBrush, THtBrush)
};
class TOtherPen : public THtPen {
  HT_CLASS(TOtherPen, THtPen)
};
class TOtherFont : public TFixedFont {
  HT_CLASS(TOtherFont, TFixedFont)
};
class TOtherImage : public TBytesImage {
  HT_CLASS(TOtherImage, TBytesImage)
};
class TOtherPath : public THtCustomPath {
  HT_CLASS(TOtherPath, THtCustomPath)
};
class TOtherClass : public TLogCanvasClass {
 public:
  using TLogCanvasClass::TLogCanvasClass;
  const THtBrushClass* BrushClass() const override { return TOtherBrush::Class(); }
  const THtPenClass* PenClass() const override { return TOtherPen::Class(); }
  const THtFontClass* FontClass() const override { return TOtherFont::Class(); }
  const THtImageClass* ImageClass() const override { return TOtherImage::Class(); }
  const THtPathClass* PathClass() const override { return TOtherPath::Class(); }

 protected:
  ~TOtherClass() = default;
};
class TOtherCanvas : public TLogCanvas {
  HT_CLASS(TOtherCanvas, TLogCanvas)

 public:
  using TClassRef = TOtherClass;
  void DrawPath(const THtPen& pen, const THtPath& path) override {
    Check<TOtherPen>(pen), Check<TOtherPath>(path), TLogCanvas::DrawPath(pen, path);
  }
  void FillPath(const THtBrush& brush, const THtPath& path) override {
    Check<TOtherBrush>(brush), Check<TOtherPath>(path), TLogCanvas::FillPath(brush, path);
  }
  void IntersectClip(const THtPath& path) override { Check<TOtherPath>(path); }
  using TLogCanvas::IntersectClip;
  void DrawString(const hstring& text, const TRectF& rect, THtFont& font, const THtTextStyle& style,
                  int32_t start, int32_t count) override {
    Check<TOtherFont>(font);
    EXPECT_EQ(font.FStyle, (THtFontStyles{hfsBold, hfsUnderline}));
    TLogCanvas::DrawString(text, rect, font, style, start, count);
  }
  void DrawImage(THtImage& image, const TRectF& rect, float opacity) override {
    if (!image.IsMeta) Check<TOtherImage>(image);
    TLogCanvas::DrawImage(image, rect, opacity);
  }

 private:
  template <class T>
  static void Check(const TObject& object) {
    EXPECT_EQ(object.ClassType(), T::Class());
  }
};

TEST_F(MetaCanvas, ResourcesCrossOver) {
  const auto list = Recorded(DrawAll);
  for (const float opacity : {1.f, .5f})
    EXPECT_EQ(Played<TOtherCanvas>(*list, opacity), Played(*list, opacity));
  HtDefaultCanvasClass = TOtherCanvas::Class();
  const auto other = Loaded(Saved(*list));
  EXPECT_EQ(Saved(*other), Saved(*Loaded(Saved(*list))));
}

TEST_F(MetaCanvas, Texts) {
  THtTextStyle style, clear, gone;
  style.Color = 0xFF000000, clear.Color = 0x00FFFFFF, gone.Color = 0xFF000000, gone.Opacity = 0;
  const struct {
    const char16_t* Text;
    const THtTextStyle& Style;
    int32_t Start, Count;
    const char* Expected;  // of DrawString; null for none
    bool Ex;               // whether DrawStringEx records
  } kRows[] = {
      {u"Hello", style, INT32_MIN, -1, "Hello", true},
      {u"Hello", style, 2, 3, "ell", true},
      {u"Hello", style, 3, -1, "llo", true},
      {u"Hello", style, 4, 99, "lo", true},
      {u"a\r\nb\u00A0c", style, 1, -1, "a  b c", true},
      {u"Hello", style, 1, 0, nullptr, false},
      {u"", style, 1, -1, nullptr, false},
      {u"Hello", gone, 1, -1, nullptr, false},
      {u"Hello", clear, 1, -1, nullptr, true},
  };
  for (const auto& row : kRows) {
    THtFont& font = *FFonts->GetFont(u"Arial"_hs, 10, {});
    const auto plain =
        Recorded([&](auto& c, auto&) { c.DrawString(row.Text, {}, font, row.Style, row.Start, row.Count); });
    const auto spaced = Recorded([&](auto& c, auto&) {
      c.DrawStringEx(row.Text, {}, font, row.Style, std::array{1.f}, &c.GetBrush(1), &c.GetPen(2, 3),
                     row.Start, row.Count);
    });
    ASSERT_EQ(plain->Count(), row.Expected ? 1 : 0);
    if (row.Expected) {
      EXPECT_EQ(HtToUtf8(static_cast<THtMetaTextRec*>(plain->GetRec(0))->Text), row.Expected);
    }
    ASSERT_EQ(spaced->Count(), row.Ex ? 1 : 0);
    if (!row.Ex) continue;
    const auto& rec = static_cast<THtMetaTextExRec&>(*spaced->GetRec(0));
    EXPECT_TRUE(rec.HasFill && rec.HasStroke && !rec.Fill && !rec.Stroke);
    EXPECT_EQ(std::tuple(rec.FillColor, rec.StrokeColor, rec.StrokeWidth, rec.Spacing),
              std::tuple(1u, 2u, 3.f, std::vector{1.f}));
  }
}

TEST_F(MetaCanvas, APathIsKeptAsItWas) {
  THtCustomPath path;
  path.Parse(u"M1 2L3 4");
  const auto list = Recorded([&](auto& c, auto&) {
    c.FillPath(c.GetBrush(1), path);
    path.Translate(5, 5);
    c.FillPath(c.GetBrush(1), path);
  });
  EXPECT_EQ(Played(*list), "fill 00000001 M1 2l2 2 \nfill 00000001 M6 7l2 2 \n");
}

// Its images keep no bytes.
class TForgetfulClass : public TLogCanvasClass {
 public:
  using TLogCanvasClass::TLogCanvasClass;
  const THtImageClass* ImageClass() const override { return THtImage::Class(); }

 protected:
  ~TForgetfulClass() = default;
};
class TForgetfulCanvas : public TLogCanvas {
  HT_CLASS(TForgetfulCanvas, TLogCanvas)

 public:
  using TClassRef = TForgetfulClass;
};

TEST_F(MetaCanvas, Images) {
  TElementBackground background;
  background.Repeat = brNoRepeat;
  background.PositionX.SetPixels(20);
  auto image = TBytesImage::Class()->Create(THtBytes{9, 8});
  image->Width = image->Height = 10;
  const auto list = Recorded([&](auto& c, auto&) {
    c.DrawImage(*image, {0, 0, 5, 5}, 1);
    c.FillImage({0, 0, 50, 50}, *image, 0, 0, background, 1, 0);
  });
  background.PositionX.SetPixels(40);
  EXPECT_EQ(Played(*list, .5f), "image 0,0,5,5 0.5\nimage 20,0,30,10 0.5\n");
  list->Unify();
  image.reset();
  EXPECT_EQ(Played(*list).substr(0, 16), "image 0,0,5,5 1\n");
  EXPECT_EQ(static_cast<THtMetaImageRec*>(list->GetRec(0))->ImageData, (THtBytes{9, 8}));
  const auto copy = Recorded([&](auto& c, auto&) { list->Play(c, 1); });  // which has images of its own
  list->Unify();
  EXPECT_EQ(Played<TOtherCanvas>(*copy), "image 0,0,5,5 1\n");

  // So has one of a loaded list; and what forgets its bytes is rebuilt from those of the record.
  THtMetaList forgetful(true);
  TBytesStream stream(Saved(*list));
  forgetful.LoadfromStream(stream, *TForgetfulCanvas::Class(), *FFonts);
  EXPECT_EQ(Played(forgetful), "image 0,0,5,5 1\nimage 0,0,50,50 1\n");
  const auto second = Recorded([&](auto& c, auto&) { forgetful.Play(c, 1); });
  forgetful.Unify();
  EXPECT_EQ(Played(*second), "image 0,0,5,5 1\nimage 0,0,50,50 1\n");
}

TEST_F(MetaCanvas, AListIsPlayedIntoItself) {
  THtMetaList list(true);
  THtMetaCanvas canvas(list);
  canvas.BeginScene(Scene());
  DrawAll(canvas, *FFonts);
  const int32_t count = list.Count();
  list.Play(canvas, 1);
  EXPECT_EQ(list.Count(), 2 * count);
}

hstring TextOf(const THtMetaCanvas& canvas, int32_t page, int32_t record) {
  const auto& list = *static_cast<THtPageMeta*>(canvas.GetPage(page))->Meta;
  return static_cast<THtMetaTextRec*>(list.GetRec(record))->Text;
}

class TLogExporter : public THtPagedExporter {
 public:
  void BeginDocument() override { Log("begin"); }
  void EndDocument() override { Log("end"); }
  bool RenderPage(THtMetaList& list, float width, float height) override {
    THtPagedExporter::RenderPage(list, width, height);
    Log(Words("page", fPage, list.Count(), width, height));
    return fPage + 1 < StopAfter;
  }
  void SavetoStream(TStream&) override { Log("save"); }
  int32_t StopAfter = 99;
};
class TLogExporterOf : public TLogExporter {
  HT_CLASS(TLogExporterOf, TLogExporter)
};

// Its data cannot be read.
class TLostImage : public THtImage {
 public:
  std::unique_ptr<TStream> GetImageData() override {
    if (Lost) throw EStreamError(u"Stream read error"_hs);
    return nullptr;
  }
  bool Lost = true;
};

TEST_F(MetaCanvas, Pages) {
  THtMetaCanvas canvas, more;
  canvas.BeginScene(Scene({5, 0, 100, 100}));  // its translation belongs to the first page
  canvas.BeginPaging(25.4f, 50.8f, 100, coDefault);
  THtTextStyle style;
  style.Color = 0xFF000000;
  THtFont& font = *FFonts->GetFont(u"Arial"_hs, 10, {});
  for (int i = 0; i < 5; ++i) {
    if (i > 0) canvas.NewPage(coDefault);
    canvas.DrawString(u"$$|$# of $$|$#"_hs, {}, font, style, 1, -1);
    canvas.DrawStringEx(u"$$|$#"_hs, {}, font, style, {}, nullptr, nullptr, 1, -1);
    for (int j = 0; j < i; ++j) canvas.SaveState();
  }
  canvas.EndPaging();
  EXPECT_EQ(TextOf(canvas, 0, 1), u"5 of 5");
  EXPECT_EQ(TextOf(canvas, 4, 0), u"5 of 5");
  EXPECT_EQ(TextOf(canvas, 4, 1), u"$$|$#");

  const auto exported = [&canvas](int32_t stopAfter = 99) {
    TLogExporter exporter;
    exporter.StopAfter = stopAfter;
    canvas.ExportTo(exporter);
    return TakeLog();
  };
  TakeLog();
  canvas.GetPage(1)->Disabled = true;
  EXPECT_EQ(exported(),
            "begin\npage 0 3 100 200\npage 1 4 100 200\npage 2 5 100 200\npage 3 6 100 200\nend\n");
  canvas.PrintOrder = {4, 1, 77, -1, 0};
  EXPECT_EQ(exported(), "begin\npage 0 6 100 200\npage 1 3 100 200\nend\n");
  EXPECT_EQ(exported(1), "begin\npage 0 6 100 200\nend\n");
  canvas.SetMultipage(2, 2, coLandscape);
  EXPECT_EQ(exported(), "begin\npage 0 27 200 100\npage 1 9 200 100\nend\n");
  canvas.SetMultipage(2, 1, coPortrait);
  EXPECT_EQ(exported(2), "begin\npage 0 12 100 200\npage 1 15 100 200\nend\n");

  more.BeginScene(Scene());
  more.BeginPaging(25.4f, 25.4f, 96, coDefault);
  const auto image = TBytesImage::Class()->Create(THtBytes{9, 8});
  more.DrawImage(*image, {}, 1);
  more.NewPage(coDefault);
  TLostImage lost;
  more.DrawImage(lost, {}, 1);
  THtPage* page = more.GetPage(0);
  EXPECT_THROW(canvas.AddPages(more), EStreamError);
  EXPECT_EQ(std::pair(canvas.GetPageCount(), more.GetPage(0)), std::pair(5, page));
  lost.Lost = false;
  canvas.AddPages(more);
  EXPECT_EQ(more.GetPageCount(), 0);
  EXPECT_EQ(canvas.GetPage(5), page);
  EXPECT_EQ(static_cast<THtMetaImageRec*>(static_cast<THtPageMeta*>(page)->Meta->GetRec(0))->Image, nullptr);
}

TEST_F(MetaCanvas, FourPagesASheetStandInTheirQuarters) {
  THtMetaCanvas canvas;
  canvas.BeginScene(Scene());
  canvas.BeginPaging(25.4f, 50.8f, 100, coDefault);
  for (int i = 1; i < 5; ++i) canvas.NewPage(coDefault);
  canvas.SetMultipage(2, 2, coPortrait);
  canvas.MakeMultipage();
  ASSERT_EQ(canvas.Multipages.size(), 2u);
  EXPECT_EQ(Played(*canvas.Multipages[0]),
            "save\ntransform  scale(.5,.5)\nrestore\n"
            "save\ntransform matrix(.5,0,0,.5,50,0)\nrestore\n"
            "save\ntransform matrix(.5,0,0,.5,0,100)\nrestore\n"
            "save\ntransform matrix(.5,0,0,.5,50,100)\nrestore\n");
  EXPECT_EQ(canvas.Multipages[1]->Count(), 3);
}

TEST_F(MetaCanvas, APageAsAnImage) {
  THtMetaCanvas canvas;
  canvas.BeginScene(Scene());
  canvas.BeginPaging(25.4f, 50.8f, 300, coDefault);
  canvas.FillRectangle(canvas.GetBrush(1), 1, 2, 3, 4);
  const auto image = canvas.GetPage(0)->AsImage(0);
  EXPECT_EQ(std::pair(image->Width, image->Height), std::pair(96, 192));
  EXPECT_TRUE(canvas.GetPage(0)->AsMetaFileBytes().empty());
  canvas.DrawImage(*image, {0, 0, 50, 50}, 1);  // the page on itself, which does not go on for ever
  const auto placed = Recorded([&](auto& c, auto&) { c.DrawImage(*image, {10, 0, 106, 192}, 1); });
  EXPECT_EQ(Played<TOtherCanvas>(*placed), Played(*placed));
  EXPECT_NE(SVGOf([&](THtCanvas& c) { placed->Play(c, 1); }).find("<rect x=\"1\" y=\"2\""),
            std::string::npos);
}

TEST_F(MetaCanvas, EachRecordIsAnnounced) {
  const auto list = Recorded(DrawAll);
  list->Page = 3;
  int32_t announced = 0;
  list->SetOnDrawRec([&](THtMetaCanvasRec& record, THtCanvas&, int32_t page, float opacity) {
    EXPECT_EQ(&record, list->GetRec(announced++));
    EXPECT_EQ(std::pair(page, opacity), std::pair(3, .25f));
  });
  Played(*list, .25f);
  EXPECT_EQ(announced, list->Count());
}

TEST_F(MetaCanvas, ExportersByFormat) {
  THtMetaCanvas canvas;
  canvas.BeginScene(Scene());
  TMemoryStream stream;
  const auto expectNone = [&] {
    try {
      canvas.SavetoPDFStream(stream);
      FAIL();
    } catch (const EHtException& e) {
      EXPECT_STREQ(e.what(), "PDF exporter not registered (add htvelmapdf unit into project)");
    }
  };
  expectNone();
  THtPagedExporter::RegisterExporter(u"PDF"_hs, THtPagedExporter::Class());  // of which there is none
  expectNone();
  THtPagedExporter::RegisterExporter(u"PDF"_hs, nullptr);
  expectNone();
  THtPagedExporter::RegisterExporter(u"PDF"_hs, TLogExporterOf::Class());
  EXPECT_EQ(THtPagedExporter::FindExporter(u"pdf"_hs), nullptr);
  TakeLog();
  canvas.SavetoPDFStream(stream);
  EXPECT_EQ(TakeLog(), "begin\nend\nsave\n");
}

}  // namespace
