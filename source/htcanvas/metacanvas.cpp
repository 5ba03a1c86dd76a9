#include "htcanvas/metacanvas.h"

#include <algorithm>
#include <numeric>

#include "htcanvas/metaimagerecs.h"
#include "htcanvas/metashaperecs.h"
#include "htcanvas/metastaterecs.h"
#include "htcanvas/metatextrec.h"
#include "htcanvas/pagedexporter.h"
#include "htruntime/exception.h"
#include "htruntime/numformat.h"
#include "htutils/strreplace.h"

namespace ht {

namespace {

constexpr std::u16string_view kPageCount = u"$$|$#";

bool IsInvisible(uint32_t color) { return color >> 24 == 0; }

// A negative count is the length of the whole text.
hstring PartOf(const hstring& text, int32_t start, int32_t count) {
  const size_t skip = std::min(static_cast<size_t>(std::max(start, 1) - 1), text.Size());
  if (skip == 0 && (count < 0 || count >= text.Length())) return text;
  return text.View().substr(skip, count < 0 ? text.Size() : static_cast<size_t>(count));
}

}  // namespace

// --- the classes ---

const THtPageClass* THtMetaCanvasClass::PageClass() const { return THtPageMeta::Class(); }

THtCanvasFlags THtMetaCanvasClass::GetFlags() const {
  return RefCanvas().GetFlags() - THtCanvasFlags{hcfNeedBuffer, hcfSupportsTextLayouts};
}

THtPageMeta::THtPageMeta() : Meta(std::make_unique<THtMetaList>(true)) {}

void THtPageMeta::Create(float widthMM, float heightMM, int32_t number, int32_t dpi) {
  THtPage::Create(widthMM, heightMM, number, dpi);
  Meta->Page = number - 1;
}

std::unique_ptr<THtImage> THtPageMeta::AsImage(int32_t dpi) {
  constexpr int32_t kUsualDPI = 96;
  if (dpi == 0) dpi = kUsualDPI;
  auto image = std::make_unique<THtImage>();
  image->Width = HtPixelsOfMM(WidthMM, dpi);
  image->Height = HtPixelsOfMM(HeightMM, dpi);
  image->IsMeta = image->MetaShared = image->Loaded = true;
  image->Meta = Meta.get();
  return image;
}

THtBytes THtPageMeta::AsMetaFileBytes() { return {}; }

// --- scenes and states ---

THtMetaCanvas::THtMetaCanvas() = default;
THtMetaCanvas::THtMetaCanvas(THtMetaList& list) : THtMetaCanvas() { FList = &list; }
THtMetaCanvas::~THtMetaCanvas() = default;

template <class T, class... TArgs>
T* THtMetaCanvas::Record(TArgs&&... args) {
  if (!FList) return nullptr;
  std::unique_ptr<T> record(new (FChain) T(std::forward<TArgs>(args)...));
  FList->Add(record.get());
  return record.release();
}

void THtMetaCanvas::BeginScene(const THtCanvasScene& scene) {
  THtCanvas::BeginScene(scene);
  if (!FList) {
    FOwnList = std::make_unique<THtMetaList>(true);
    FList = FOwnList.get();
  }
  TransformByScene();
}

void THtMetaCanvas::SaveState() {
  THtCanvas::SaveState();
  Record<THtMetaStateRec>(true);
}

void THtMetaCanvas::RestoreState() {
  THtCanvas::RestoreState();
  Record<THtMetaStateRec>(false);
}

void THtMetaCanvas::MatrixTransform(const THtMatrixData& matrix, bool multiply) {
  Record<THtMetaMatrixRec>(matrix);
  THtCanvas::MatrixTransform(matrix, multiply);
}

void THtMetaCanvas::IntersectClip(const TRectF& rect) { Record<THtMetaClipRec>(rect); }
void THtMetaCanvas::IntersectClip(const THtPath& path) { Record<THtMetaClipRec>(path); }

// --- shapes ---

void THtMetaCanvas::DrawPath(const THtPen& pen, const THtPath& path) {
  Record<THtMetaPathRec>(path, FPens.Clone(pen));
}

void THtMetaCanvas::FillPath(const THtBrush& brush, const THtPath& path) {
  Record<THtMetaPathRec>(path, FBrushes.Clone(brush));
}

THtMetaPen THtMetaCanvas::PlainPen(const THtPen& pen) {
  if (pen.ClassType() == THtPen::Class()) return FPens.Clone(pen);
  THtPen plain;
  plain.Assign(pen);
  return FPens.Clone(plain);
}

void THtMetaCanvas::DrawLine(const THtPen& pen, float x1, float y1, float x2, float y2) {
  Record<THtMetaLineRec>(PlainPen(pen), x1, y1, x2, y2);
}

void THtMetaCanvas::FillEllipse(const THtBrush& brush, float x, float y, float w, float h) {
  Record<THtMetaEllipseRec>(FBrushes.Clone(brush), x, y, w, h);
}

void THtMetaCanvas::DrawEllipse(const THtPen& pen, float x, float y, float w, float h) {
  Record<THtMetaEllipseRec>(FPens.Clone(pen), x, y, w, h);
}

void THtMetaCanvas::FillRectangle(const THtBrush& brush, float x, float y, float w, float h) {
  Record<THtMetaRectRec>(brush, x, y, w, h);
}

void THtMetaCanvas::DrawRectangle(const THtPen& pen, float x, float y, float w, float h) {
  Record<THtMetaRectRec>(pen, x, y, w, h);
}

void THtMetaCanvas::RoundRect(const THtPen& pen, const TRectF& rect, float rx, float ry) {
  if (auto* record = Record<THtMetaRectRec>(pen, rect.Left, rect.Top, rect.Width(), rect.Height()))
    record->SetRadii(rx, ry);
}

void THtMetaCanvas::FillRoundRect(const THtBrush& brush, const TRectF& rect, float rx, float ry) {
  if (auto* record = Record<THtMetaRectRec>(brush, rect.Left, rect.Top, rect.Width(), rect.Height()))
    record->SetRadii(rx, ry);
}

void THtMetaCanvas::DrawShadow(const THtPath* path, const THtShadowProps& props) {
  Record<THtMetaShadowRec>(path, props);
}

// --- text and links ---

void THtMetaCanvas::DrawString(const hstring& text, const TRectF& rect, THtFont& font,
                               const THtTextStyle& style, int32_t start, int32_t count) {
  if (count == 0 || text.Empty() || style.Opacity == 0 || IsInvisible(style.Color)) return;
  Record<THtMetaTextRec>(PartOf(text, start, count), rect, font, style);
}

void THtMetaCanvas::DrawStringEx(const hstring& text, const TRectF& rect, THtFont& font,
                                 const THtTextStyle& style, std::span<const float> spacing,
                                 const THtBrush* fill, const THtPen* stroke, int32_t start, int32_t count) {
  if (count == 0 || text.Empty() || style.Opacity == 0) return;
  Record<THtMetaTextExRec>(PartOf(text, start, count), rect, font, style, spacing, fill, stroke);
}

void THtMetaCanvas::DrawLink(const TRectF& rect, const hstring& href, bool isAnchor) {
  Record<THtMetaLinkRec>(rect, href, isAnchor);
}

void THtMetaCanvas::BeginLink(const hstring& href, const hstring& title) {
  Record<THtMetaLinkTextRec>(href, title);
}

void THtMetaCanvas::EndLink() { Record<THtMetaLinkTextRec>(); }

// --- images ---

void THtMetaCanvas::DrawImage(THtImage& image, const TRectF& rect, float opacity) {
  const TRectF source{0, 0, static_cast<float>(image.Width), static_cast<float>(image.Height)};
  Record<THtMetaImageRec>(image, source, rect, opacity);
}

void THtMetaCanvas::FillImage(const TRectF& rect, THtImage& image, float deltaX, float deltaY,
                              const TElementBackground& background, float opacity, float radius) {
  Record<THtMetaFillImageRec>(rect, image, deltaX, deltaY, background, opacity, radius);
}

void THtMetaCanvas::KeepImage(std::unique_ptr<THtImage> image) {
  if (FList) FList->KeepImage(std::move(image));
}

// --- pages ---

void THtMetaCanvas::BeginPaging(float widthMM, float heightMM, int32_t dpi, TCSSOrientation orientation) {
  Multipages.clear();
  THtCanvas::BeginPaging(widthMM, heightMM, dpi, orientation);
}

void THtMetaCanvas::NewPage(TCSSOrientation orientation) {
  THtCanvas::NewPage(orientation);
  FList = Page(GetPageCount() - 1).Meta.get();
  if (const auto before = std::move(FOwnList)) FList->TakeRecords(*before);
}

void THtMetaCanvas::EndPaging() {
  THtCanvas::EndPaging();
  const hstring pages = HtIntToStr(GetPageCount());
  for (int32_t i = 0; i < GetPageCount(); ++i) {
    THtMetaList& list = *Page(i).Meta;
    for (int32_t j = 0; j < list.Count(); ++j) {
      if (list.GetRec(j)->ClassType() != THtMetaTextRec::Class()) continue;
      hstring& text = static_cast<THtMetaTextRec*>(list.GetRec(j))->Text;
      if (text.View().find(kPageCount) != std::u16string_view::npos)
        text = ReplaceStr(text, kPageCount, pages);
    }
  }
}

void THtMetaCanvas::AddPages(THtMetaCanvas& other) {
  if (&other == this || other.fPages.empty()) return;
  for (int32_t i = 0; i < other.GetPageCount(); ++i) other.Page(i).Meta->Unify();
  fPages.insert(fPages.end(), std::make_move_iterator(other.fPages.begin()),
                std::make_move_iterator(other.fPages.end()));
  other.fPages.clear();
  other.Multipages.clear();
  other.FList = other.FOwnList.get();
}

TPoint THtMetaCanvas::SheetSize() const {
  const bool pageIsLandscape = FPageHeightPixels < FPageWidthPixels;
  if (pageIsLandscape == (FMultipageOrientation == coLandscape)) return {FPageWidthPixels, FPageHeightPixels};
  return {FPageHeightPixels, FPageWidthPixels};
}

void THtMetaCanvas::MakeMultipage() {
  Multipages.clear();
  FFrames = std::make_unique<THtMetaList>(true);
  const int64_t perSheet = int64_t{FHPages} * FVPages;
  const auto [shorter, longer] = std::minmax(FPageWidthPixels, FPageHeightPixels);
  const float scale =
      perSheet == 4 ? 0.5f : static_cast<float>(shorter) / static_cast<float>(std::max(longer, 1));
  const TPoint sheet = SheetSize();
  const float across = static_cast<float>(sheet.X) / static_cast<float>(FHPages);
  const float down = static_cast<float>(sheet.Y) / static_cast<float>(FVPages);
  for (int32_t i = 0; i < GetPageCount(); ++i) {
    const auto place = static_cast<int32_t>(i % perSheet);
    if (place == 0) Multipages.push_back(std::make_unique<THtMetaList>(false));
    THtMetaList& list = *Multipages.back();
    THtMatrixData matrix;
    matrix.Init(scale, 0, 0, scale, across * static_cast<float>(place % FHPages),
                down * static_cast<float>(place / FHPages));
    matrix.UpdateFlags();
    const auto frame = [&](THtMetaCanvasRec* record) { list.Add(FFrames->GetRec(FFrames->Add(record))); };
    frame(new THtMetaStateRec(true));
    frame(new THtMetaMatrixRec(matrix));
    const THtMetaList& page = *Page(i).Meta;
    for (int32_t j = 0; j < page.Count(); ++j) list.Add(page.GetRec(j));
    frame(new THtMetaStateRec(false));
  }
}

bool THtMetaCanvas::ExportPage(THtPagedExporter& exporter, int32_t index) const {
  if (index < 0 || index >= GetPageCount() || Page(index).Disabled) return true;
  const THtPageMeta& page = Page(index);
  return exporter.RenderPage(*page.Meta, static_cast<float>(page.WidthPx), static_cast<float>(page.HeightPx));
}

void THtMetaCanvas::ExportTo(THtPagedExporter& exporter) {
  exporter.BeginDocument();
  if (FMultipageOrientation != coDefault) {
    MakeMultipage();
    const TPoint size = SheetSize();
    for (const auto& sheet : Multipages)
      if (!exporter.RenderPage(*sheet, static_cast<float>(size.X), static_cast<float>(size.Y))) break;
  } else {
    std::vector<int32_t> order = PrintOrder;
    if (order.empty()) {
      order.resize(fPages.size());
      std::iota(order.begin(), order.end(), 0);
    }
    for (const int32_t index : order)
      if (!ExportPage(exporter, index)) break;
  }
  exporter.EndDocument();
}

void THtMetaCanvas::SavetoPDFStream(TStream& stream) {
  const auto* exporterClass = THtPagedExporter::FindExporter(u"PDF"_hs);
  const auto exporter = exporterClass ? exporterClass->Create() : nullptr;
  if (!exporter) throw EHtException(u"PDF exporter not registered (add htvelmapdf unit into project)"_hs);
  ExportTo(*exporter);
  exporter->SavetoStream(stream);
}

}  // namespace ht
