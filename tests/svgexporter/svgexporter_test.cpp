#include "svgexporter/svgexporter.h"

#include <gtest/gtest.h>

#include "fixedcanvas/fixedcanvas.h"

using namespace ht;

namespace {

TEST(SvgExporter, WritesADocumentAPage) {
  HtDefaultCanvasClass = TFixedCanvas::Class();
  TSvgExporter::Register();
  const auto fonts = TFixedCanvas::Class()->CreateFontCollection();
  THtTextStyle style;
  style.Color = 0xFF123456;
  THtMetaCanvas recording;
  recording.BeginScene({});
  recording.BeginPaging(25.4f, 50.8f, 100, coDefault);
  for (int i = 0; i < 3; ++i) {
    if (i > 0) recording.NewPage(coDefault);
    recording.DrawString(u"page $$|$#"_hs, {5, 5, 50, 20}, *fonts->GetFont(u"A<B&C"_hs, 10, {}), style, 1,
                         -1);
  }
  recording.EndPaging();

  const auto documents = [&](const char16_t* head) {
    const auto exporter = THtPagedExporter::FindExporter(u"SVG"_hs)->Create();
    recording.ExportTo(*exporter);
    const auto& svg = static_cast<TSvgExporter&>(*exporter);
    EXPECT_NE(svg.Document(0).View().find(head), std::u16string_view::npos) << HtToUtf8(svg.Document(0));
    TBytesStream stream;
    exporter->SavetoStream(stream);
    std::string all;
    for (int32_t i = 0; i < svg.Count(); ++i) all += HtToUtf8(svg.Document(i)) + "\n";
    EXPECT_EQ(HtBytesView(stream.GetBytes()), all);
    return svg.Count();
  };
  constexpr const char16_t* kStyle =
      u"width=\"100\" height=\"200\"><style>.f0{font-family: A&lt;B&amp;C;font-size:10px;fill:#123456;}";
  EXPECT_EQ(documents(kStyle), 3);
  recording.GetPage(0)->Disabled = true;
  EXPECT_EQ(documents(u">page 3</text>"), 2);
  recording.SetMultipage(2, 1, coLandscape);
  EXPECT_EQ(documents(u"width=\"200\" height=\"100\""), 2);
  HtDefaultCanvasClass = nullptr;
}

}  // namespace
