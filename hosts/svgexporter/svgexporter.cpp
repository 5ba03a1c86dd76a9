#include "svgexporter/svgexporter.h"

#include "htutils/strreplace.h"

namespace ht {

namespace {

constexpr float kDPI = 96, kMMPerInch = 25.4f;

}  // namespace

const TSvgExporter::TClassRef* TSvgExporter::Class() {
  static constexpr TClassOf<TSvgExporter> kClass(u"TSvgExporter",
                                                 []() -> const TClass* { return THtPagedExporter::Class(); });
  return &kClass;
}

void TSvgExporter::BeginDocument() {
  FCanvas = std::make_unique<THtSVGCanvas>();
  FDocuments.clear();
  fPage = -1;
}

bool TSvgExporter::RenderPage(THtMetaList& list, float width, float height) {
  THtPagedExporter::RenderPage(list, width, height);
  THtCanvasScene scene;
  scene.Init(R2R({0, 0, width, height}), nullptr);
  FCanvas->BeginScene(scene);
  FCanvas->BeginPaging(width * kMMPerInch / kDPI, height * kMMPerInch / kDPI, static_cast<int32_t>(kDPI),
                       coDefault);
  list.Play(*FCanvas, FOpacity);
  FCanvas->EndScene();
  FDocuments.push_back(static_cast<const THtPageSVG*>(FCanvas->GetPage(0))->SVG);
  return true;
}

void TSvgExporter::EndDocument() {
  const hstring css = ReplaceStr(ReplaceStr(Style(), u"&", u"&amp;"), u"<", u"&lt;");
  if (!FEmbedStyle || css.Empty()) return;
  for (hstring& document : FDocuments) {
    const std::u16string_view text = document;
    const size_t head = text.find(u'>') + 1;
    document = text.substr(0, head) + (u"<style>"_hs + css + u"</style>") + text.substr(head);
  }
}

void TSvgExporter::SavetoStream(TStream& stream) {
  for (const hstring& document : FDocuments) {
    const std::string bytes = HtToUtf8(document) + "\n";
    stream.WriteBuffer(bytes.data(), static_cast<int64_t>(bytes.size()));
  }
}

}  // namespace ht
