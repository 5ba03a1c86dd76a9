#pragma once

#include <vector>

#include "htcanvas/htcanvas.h"

namespace ht {

/// Writes the pages or sheets of a recording as SVG, one document each.
///
///   TSvgExporter::Register();                     // once, at start-up
///   …
///   TSvgExporter exporter;
///   recording.ExportTo(exporter);
///   exporter.Document(0);
///
/// Fonts are asked of the reference canvas class, as by any THtSVGCanvas.
class TSvgExporter : public THtPagedExporter {
 public:
  class TClassRef : public THtPagedExporterClass {
   public:
    using THtPagedExporterClass::THtPagedExporterClass;
    hstring FileFormat() const override { return u"SVG"_hs; }

   protected:
    ~TClassRef() = default;
  };
  static const TClassRef* Class();
  const TClass* ClassType() const override { return Class(); }

  /// Makes this the exporter of its format.
  static void Register() { RegisterExporter(Class()->FileFormat(), Class()); }

  void BeginDocument() override;
  /// Puts the CSS of the text classes into each document.
  void EndDocument() override;
  bool RenderPage(THtMetaList& list, float width, float height) override;
  /// All documents in UTF-8, a line end behind each.
  void SavetoStream(TStream& stream) override;

  /// Pages are played at this opacity, from 0 to 1.
  void SetOpacity(float opacity) { FOpacity = opacity; }
  /// Without the CSS the documents are as the canvas writes them; the caller places Style() himself.
  void SetEmbedStyle(bool embed) { FEmbedStyle = embed; }
  int32_t Count() const { return static_cast<int32_t>(FDocuments.size()); }
  /// Index from 0.
  const hstring& Document(int32_t index) const { return FDocuments.at(static_cast<size_t>(index)); }
  hstring Style() const { return FCanvas ? FCanvas->Style() : hstring(); }

 private:
  std::unique_ptr<THtSVGCanvas> FCanvas;
  std::vector<hstring> FDocuments;
  float FOpacity = 1;
  bool FEmbedStyle = true;
};

}  // namespace ht
