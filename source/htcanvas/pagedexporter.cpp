#include "htcanvas/pagedexporter.h"

#include "htruntime/filestream.h"

namespace ht {

namespace {

constexpr int32_t kExporters = 4;

std::unique_ptr<THtExporterList>& Exporters() {
  static std::unique_ptr<THtExporterList> exporters;
  return exporters;
}

}  // namespace

std::unique_ptr<THtPagedExporter> THtPagedExporterClass::Create() const {
  return std::unique_ptr<THtPagedExporter>(static_cast<THtPagedExporter*>(NewInstance().release()));
}

const THtPagedExporterClass* THtPagedExporter::Class() {
  static constexpr TClassOf<THtPagedExporter> kClass(u"THtPagedExporter",
                                                     []() -> const TClass* { return TObject::Class(); });
  return &kClass;
}

bool THtPagedExporter::RenderPage(THtMetaList&, float width, float height) {
  ++fPage;
  FPageWidthPixels = width;
  FPageHeightPixels = height;
  return true;
}

void THtPagedExporter::SavetoFile(const hstring& fileName) {
  TFileStream file(fileName, fmCreate);
  SavetoStream(file);
}

void THtPagedExporter::RegisterExporter(const hstring& format, const THtPagedExporterClass* exporterClass) {
  if (!Exporters()) Exporters() = std::make_unique<THtExporterList>();
  Exporters()->RegisterExporter(format, exporterClass);
}

const THtPagedExporterClass* THtPagedExporter::FindExporter(const hstring& format) {
  return Exporters() ? Exporters()->FindExporterClass(format) : nullptr;
}

THtExporterList::THtExporterList()
    : THtObjectDictionary(kExporters, true, HtNameOffset(&THtExporterContainer::Format)) {}

void THtExporterList::RegisterExporter(const hstring& format, const THtPagedExporterClass* exporterClass) {
  if (auto* known = Get<THtExporterContainer>(format)) {
    known->ExporterClass = exporterClass;
    return;
  }
  auto container = std::make_unique<THtExporterContainer>();
  container->Format = format;
  container->ExporterClass = exporterClass;
  AddObject(container.get());
  container.release();
}

const THtPagedExporterClass* THtExporterList::FindExporterClass(const hstring& format) const {
  const auto* container = Get<THtExporterContainer>(format);
  return container ? container->ExporterClass : nullptr;
}

}  // namespace ht
