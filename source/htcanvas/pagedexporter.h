#pragma once

#include "htdictionary/objectdictionary.h"
#include "htruntime/object.h"
#include "htruntime/stream.h"

namespace ht {

class THtMetaList;
class THtPagedExporter;

/// Class references of exporters.
class THtPagedExporterClass : public TClass {
 public:
  using TClass::TClass;

  /// The name of the format that the class writes; empty for the abstract one.
  virtual hstring FileFormat() const { return {}; }
  /// A new exporter of the class; null for a class that cannot be made without arguments.
  std::unique_ptr<THtPagedExporter> Create() const;

 protected:
  ~THtPagedExporterClass() = default;
};

/// Turns recorded pages into a file of some format. A host derives an exporter and registers its class at start-up:
///
///   THtPagedExporter::RegisterExporter(u"PDF"_hs, TPdfExporter::Class());
///
/// THtMetaCanvas::ExportTo calls BeginDocument, RenderPage for each page, and EndDocument; SavetoStream writes the result.
class THtPagedExporter : public TObject {
 public:
  using TClassRef = THtPagedExporterClass;
  static const THtPagedExporterClass* Class();
  const TClass* ClassType() const override { return Class(); }

  virtual void BeginDocument() = 0;
  virtual void EndDocument() = 0;
  /// A page or sheet of that size in pixels. A derived class calls this and plays the list on a canvas of its own; false
  /// stops the export.
  virtual bool RenderPage(THtMetaList& list, float width, float height);
  /// Writes the finished document.
  virtual void SavetoStream(TStream& stream) = 0;
  /// Raises EFileStreamError for a file that cannot be made.
  virtual void SavetoFile(const hstring& fileName);

  /// A format that is registered already gets the new class. Not guarded by a lock.
  static void RegisterExporter(const hstring& format, const THtPagedExporterClass* exporterClass);
  /// Null for a format that nobody has registered.
  static const THtPagedExporterClass* FindExporter(const hstring& format);

 protected:
  int32_t fPage = -1;  // index of the page in hand
  float FPageWidthPixels = 0, FPageHeightPixels = 0;
};

/// A format and the class that writes it.
class THtExporterContainer : public TObject {
  HT_CLASS(THtExporterContainer, TObject)

 public:
  hstring Format;
  const THtPagedExporterClass* ExporterClass = nullptr;
};

/// Exporters by format.
class THtExporterList : public THtObjectDictionary {
  HT_CLASS(THtExporterList, THtObjectDictionary)

 public:
  THtExporterList();

  void RegisterExporter(const hstring& format, const THtPagedExporterClass* exporterClass);
  const THtPagedExporterClass* FindExporterClass(const hstring& format) const;
};

}  // namespace ht
