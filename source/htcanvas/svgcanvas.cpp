#include "htcanvas/svgcanvas.h"

#include <algorithm>

#include "htcanvas/custompath.h"
#include "htcanvas/font.h"
#include "htcanvas/fontcollection.h"
#include "htmlpars/colors.h"
#include "htmlpars/htmlencode.h"
#include "htruntime/exception.h"
#include "htruntime/numformat.h"
#include "htutils/base64.h"
#include "htutils/numbers.h"

namespace ht {

namespace {

constexpr int32_t kWriterChars = 0x100000;
constexpr char16_t kNoBreakSpace = 0xA0;

// The values of `writing-mode`, by TCSSWritingMode; empty for the initial one.
constexpr hstring kWritingModes[] = {
    {}, u"vertical-rl"_hs, u"vertical-lr"_hs, u"sideways-rl"_hs, u"sideways-lr"_hs};

hstring DecorationOf(THtFontStyles style) {
  const bool under = style.Contains(hfsUnderline), through = style.Contains(hfsStrikeOut);
  if (under && through) return u"underline line-through"_hs;
  return under ? u"underline"_hs : through ? u"line-through"_hs : hstring();
}

// The characters of a text from position `start` (from 1) on; all of them for a negative count.
std::u16string_view PartOf(std::u16string_view text, int32_t start, int32_t count) {
  const size_t skip = std::min(static_cast<size_t>(std::max(start, 1) - 1), text.size());
  return text.substr(skip, count < 0 ? text.npos : static_cast<size_t>(count));
}

}  // namespace

// --- the class ---

const THtPageClass* THtSVGCanvasClass::PageClass() const { return THtPageSVG::Class(); }
THtCanvasFlags THtSVGCanvasClass::GetFlags() const {
  return RefCanvas().GetFlags() - THtCanvasFlags{hcfSupportsTextLayouts} +
         THtCanvasFlags{hcfSupportsImageRef};
}

// --- scenes and groups ---

// What is drawn before the first scene goes nowhere.
THtSVGCanvas::THtSVGCanvas() : FWriter(std::make_unique<THtSVGWriter>(1)) {}
THtSVGCanvas::~THtSVGCanvas() = default;

void THtSVGCanvas::BeginScene(const THtCanvasScene& scene) {
  THtCanvas::BeginScene(scene);
  FWriter = std::make_unique<THtSVGWriter>(kWriterChars);
  FGCounts.assign(1, 0);
  TransformByScene();
}

void THtSVGCanvas::EndScene() {
  CloseGroups();
  FGCounts.clear();
  if (!fPages.empty()) FinishPage(static_cast<THtPageSVG&>(*fPages.back()));
}

void THtSVGCanvas::FinishPage(THtPageSVG& page) {
  TFastString head(256);
  head.Add(
          u"<svg version=\"1.0\" xmlns=\"http://www.w3.org/2000/svg\" "
          u"xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"")
      .Add(page.WidthPx)
      .Add(u"\" height=\"")
      .Add(page.HeightPx)
      .Add(u"\">");
  constexpr std::u16string_view kTail = u"</svg>";
  const auto headSize = static_cast<size_t>(head.GetTotalLen());
  const auto bodySize = static_cast<size_t>(FWriter->GetTotalLen());
  page.SVG = hstring::Uninitialized(headSize + bodySize + kTail.size());
  char16_t* to = page.SVG.Unique();
  head.SavetoBuffer(to);
  FWriter->SavetoBuffer(to + headSize);
  std::copy(kTail.begin(), kTail.end(), to + headSize + bodySize);
}

// Counts a group whose start was just written for the level that closes it.
void THtSVGCanvas::OpenGroup() {
  if (FGCounts.empty()) FGCounts.push_back(0);
  ++FGCounts.back();
}

void THtSVGCanvas::CloseGroups() {
  for (int32_t i = FGCounts.empty() ? 0 : FGCounts.back(); i > 0; --i) FWriter->s(u"</g>");
}

void THtSVGCanvas::SaveState() {
  THtCanvas::SaveState();
  FGCounts.push_back(0);
}

void THtSVGCanvas::RestoreState() {
  THtCanvas::RestoreState();
  CloseGroups();
  if (!FGCounts.empty()) FGCounts.pop_back();
}

void THtSVGCanvas::MatrixTransform(const THtMatrixData& matrix, bool multiply) {
  THtCanvas::MatrixTransform(matrix, multiply);
  const hstring text = matrix.AsString(false);
  if (text.Empty()) return;
  FWriter->s(u"<g transform=\"");
  FWriter->s(text);
  FWriter->s(u"\">");
  OpenGroup();
}

void THtSVGCanvas::IntersectClip(const TRectF& rect) {
  const int32_t id = FIds++;
  THtSVGWriter& svg = *FWriter;
  svg.Add(u"<defs><clipPath id=\"").Add(id).AddChar(u'"');
  svg.Attr(u"><rect x=\"", rect.Left, 2);
  svg.Attr(u" y=\"", rect.Top, 2);
  svg.Attr(u" width=\"", rect.Width(), 2);
  svg.Attr(u" height=\"", rect.Height(), 2);
  svg.Add(u"/></clipPath></defs><g clip-path=\"url(#").Add(id).Add(u")\">");
  OpenGroup();
}

void THtSVGCanvas::IntersectClip(const THtPath& path) {
  if (path.FCustomPath && path.FCustomPath->IsRect()) {
    TRectF bounds;
    path.FCustomPath->GetBounds(bounds, nullptr);
    return IntersectClip(bounds);
  }
  const int32_t id = FIds++;
  THtSVGWriter& svg = *FWriter;
  svg.Add(u"<defs><clipPath id=\"c").Add(id).Add(u"\"><path d=\"");
  HtAppendEncodedAttr(svg, path.AsString());
  svg.Add(u"\"/></clipPath></defs><g clip-path=\"url(#c").Add(id).Add(u")\">");
  OpenGroup();
}

// --- gradients ---

void THtSVGCanvas::WriteStops(const THtBrush& brush) {
  const size_t count = std::min(brush.GradientColors.size(), brush.GradientPositions.size());
  for (size_t i = 0; i < count; ++i) {
    if (i > 0) FWriter->AddChar(u' ');
    FWriter->Attr(u"<stop offset=\"", brush.GradientPositions[i]);
    FWriter->ColorAttr(u" stop-color=\"", u" stop-opacity=\"", brush.GradientColors[i]);
    FWriter->Add(u"/>");
  }
}

bool THtSVGCanvas::CheckAsGradientBrush(const THtBrush& brush) {
  const bool radial = brush.Kind == hbRadial;
  if ((!radial && brush.Kind != hbGradient) || brush.GradientColors.empty()) return false;
  FLastGradient = (radial ? u"rg"_hs : u"lg"_hs) + HtIntToStr(FLastGradientID++);
  THtSVGWriter& svg = *FWriter;
  const auto attributes = [&svg](std::initializer_list<std::pair<std::u16string_view, float>> values) {
    for (const auto& [name, value] : values) svg.Attr(name, value);
  };
  svg.Add(radial ? std::u16string_view(u"<radialGradient id=\"") : u"<linearGradient id=\"");
  svg.Add(FLastGradient).Add(u"\" gradientUnits=\"userSpaceOnUse\"");
  const TRectF& line = brush.GradientRect;
  if (radial)
    attributes({{u" cx=\"", brush.CX},
                {u" cy=\"", brush.CY},
                {u" r=\"", brush.Radius},
                {u" fx=\"", brush.FX},
                {u" fy=\"", brush.FY}});
  else
    attributes(
        {{u" x1=\"", line.Left}, {u" y1=\"", line.Top}, {u" x2=\"", line.Right}, {u" y2=\"", line.Bottom}});
  if (const hstring transform = brush.FMatrix.AsString(false); !transform.Empty())
    svg.Add(u" gradientTransform=\"").Add(transform).AddChar(u'"');
  svg.AddChar(u'>');
  WriteStops(brush);
  svg.s(radial ? std::u16string_view(u"</radialGradient>") : u"</linearGradient>");
  return true;
}

// --- shapes ---

void THtSVGCanvas::Box(float x, float y, float w, float h) {
  FWriter->Attr(u" x=\"", x);
  FWriter->Attr(u" y=\"", y);
  FWriter->Attr(u" width=\"", w);
  FWriter->Attr(u" height=\"", h);
}

void THtSVGCanvas::Radii(float rx, float ry) {
  FWriter->Attr(u" rx=\"", rx);
  FWriter->Attr(u" ry=\"", ry);
}

void THtSVGCanvas::EllipseBox(float x, float y, float w, float h) {
  const float rx = w / 2, ry = h / 2;
  FWriter->Attr(u"<ellipse cx=\"", x + rx);
  FWriter->Attr(u" cy=\"", y + ry);
  Radii(rx, ry);
}

void THtSVGCanvas::FillWithGradient() { FWriter->Add(u" style=\"fill:url(#").Add(FLastGradient).Add(u")\""); }

void THtSVGCanvas::FillAttr(const THtBrush& brush, bool gradient) {
  if (gradient)
    FillWithGradient();
  else
    FWriter->ColorAttr(u" fill=\"", u" fill-opacity=\"", brush.GetColor());
}

void THtSVGCanvas::DrawLine(const THtPen& pen, float x1, float y1, float x2, float y2) {
  FWriter->Attr(u"<line x1=\"", x1);
  FWriter->Attr(u" y1=\"", y1);
  FWriter->Attr(u" x2=\"", x2);
  FWriter->Attr(u" y2=\"", y2);
  FWriter->Stroke(pen);
  FWriter->s(u"/>");
}

void THtSVGCanvas::DrawRectangle(const THtPen& pen, float x, float y, float w, float h) {
  FWriter->Add(u"<rect fill=\"none\"");
  Box(x, y, w, h);
  FWriter->Stroke(pen);
  FWriter->s(u"/>");
}

void THtSVGCanvas::RoundRect(const THtPen& pen, const TRectF& rect, float rx, float ry) {
  FWriter->Add(u"<rect fill=\"none\"");
  Box(rect);
  Radii(rx, ry);
  FWriter->Stroke(pen);
  FWriter->s(u"/>");
}

void THtSVGCanvas::DrawEllipse(const THtPen& pen, float x, float y, float w, float h) {
  EllipseBox(x, y, w, h);
  FWriter->Add(u" fill=\"none\"");
  FWriter->Stroke(pen);
  FWriter->s(u"/>");
}

void THtSVGCanvas::DrawPath(const THtPen& pen, const THtPath& path) { FWriter->StrokePath(path, pen); }

void THtSVGCanvas::FillRectangle(const THtBrush& brush, float x, float y, float w, float h) {
  const bool gradient = CheckAsGradientBrush(brush);
  FWriter->Add(u"<rect");
  Box(x, y, w, h);
  FillAttr(brush, gradient);
  FWriter->s(u"/>");
}

void THtSVGCanvas::FillRoundRect(const THtBrush& brush, const TRectF& rect, float rx, float ry) {
  const bool gradient = CheckAsGradientBrush(brush);
  FWriter->Add(u"<rect");
  if (gradient) {
    FillWithGradient();
    FWriter->Add(u" stroke=\"none\"");
  } else {
    FWriter->AddChar(u' ');
  }
  Box(rect);
  Radii(rx, ry);
  if (!gradient) {
    FWriter->ColorAttr(u" fill=\"", u" fill-opacity=\"", brush.GetColor());
    FWriter->Add(u" stroke=\"none\"");
  }
  FWriter->s(u"/>");
}

void THtSVGCanvas::FillEllipse(const THtBrush& brush, float x, float y, float w, float h) {
  const bool gradient = CheckAsGradientBrush(brush);
  EllipseBox(x, y, w, h);
  FillAttr(brush, gradient);
  FWriter->s(u"/>");
}

void THtSVGCanvas::FillPath(const THtBrush& brush, const THtPath& path) {
  if (!CheckAsGradientBrush(brush)) return FWriter->Path(path.AsString(), brush.GetColor(), 0, 0);
  FWriter->BeginPath(0, 0, 0, u"fill:url(#"_hs + FLastGradient + u")", false, {});
  HtAppendEncodedAttr(*FWriter, path.AsString());
  FWriter->EndPath();
}

void THtSVGCanvas::DrawShadow(const THtPath*, const THtShadowProps&) {}

void THtSVGCanvas::DrawImage(THtImage& image, const TRectF& rect, float opacity) {
  if (image.IsMeta) return THtCanvas::DrawImage(image, rect, opacity);
  const bool byAddress = !image.Url.Empty();
  const THtBytes bytes = byAddress ? THtBytes() : image.AsBytes();
  if (!byAddress && bytes.empty()) return;
  THtSVGWriter& svg = *FWriter;
  svg.Attr(u"<image x=\"", rect.Left);
  svg.Attr(u" y=\"", rect.Top);
  if (rect.Right != rect.Left) svg.Attr(u" width=\"", rect.Width());
  if (rect.Bottom != rect.Top) svg.Attr(u" height=\"", rect.Height());
  svg.Add(u" xlink:href=\"");
  if (byAddress)
    HtAppendEncodedAttr(svg, image.Url);
  else
    svg.Add(u"data:image/bitmap;base64,").Add(Base64EncodeNoLF(bytes));
  svg.s(u"\"/>");
}

// --- text ---

const hstring& THtSVGCanvas::TextClass(const THtFont& font, uint32_t color) {
  const bool bold = font.FStyle.Contains(hfsBold), italic = font.FStyle.Contains(hfsItalic);
  TTextClass& last = FTextClass;
  if (!last.Name.Empty() && last.Height == font.FHeight && last.Color == color && last.Bold == bold &&
      last.Italic == italic && last.FontName == font.FName)
    return last.Name;
  TCSSStyleSet set;
  set.AddValue(u"font-family"_hs, font.FName);
  set.AddValue(u"font-size"_hs, HtFormatDecimal(font.FHeight, 2) + u"px");
  set.AddValue(u"fill"_hs, htmlColortoStr(color));
  if (bold) set.AddValue(u"font-weight"_hs, u"bold"_hs);
  if (italic) set.AddValue(u"font-style"_hs, u"italic"_hs);
  last = {font.FName, font.FHeight, color, bold, italic, {}};
  FIndexer.GetSVGClass(set, last.Name);
  return last.Name;
}

// As text, but a no-break space stands as a blank: its entity is unknown to XML.
void THtSVGCanvas::WriteText(std::u16string_view text) {
  for (;;) {
    const size_t space = text.find(kNoBreakSpace);
    HtAppendEncoded(*FWriter, text.substr(0, space));
    if (space == text.npos) return;
    FWriter->AddChar(u' ');
    text.remove_prefix(space + 1);
  }
}

void THtSVGCanvas::DrawString(const hstring& text, const TRectF& rect, THtFont& font,
                              const THtTextStyle& style, int32_t start, int32_t count) {
  THtSVGWriter& svg = *FWriter;
  svg.Attr(u"<text x=\"", rect.Left);
  svg.Attr(u" y=\"", rect.Top + font.Ascent);
  for (int32_t i = 0; i < FCustomAttributes.GetCount(); ++i) {
    svg.AddChar(u' ').Add(FCustomAttributes.GetName(i)).Add(u"=\"");
    HtAppendEncodedAttr(svg, FCustomAttributes.GetValueFromIndex(i));
    svg.AddChar(u'"');
  }
  FCustomAttributes.Clear();
  svg.Add(u" class=\"").Add(TextClass(font, style.Color)).AddChar(u'"');
  TCSSStyleSet set;
  set.AddValue(u"text-decoration"_hs, DecorationOf(font.FStyle));
  set.AddValue(u"writing-mode"_hs, kWritingModes[style.WritingMode]);
  if (set.Count() > 0) {
    svg.Add(u" style=\"");
    HtAppendEncodedAttr(svg, set.GetAsString());
    svg.AddChar(u'"');
  }
  svg.AddChar(u'>');
  WriteText(PartOf(text, start, count));
  svg.s(u"</text>\r\n");
}

// --- links ---

void THtSVGCanvas::BeginLink(const hstring& href, const hstring& title) {
  FWriter->Add(u"<a href=\"");
  HtAppendEncodedAttr(*FWriter, href);
  FWriter->Add(u"\" title=\"");
  HtAppendEncodedAttr(*FWriter, title);
  FWriter->s(u"\">");
}

void THtSVGCanvas::EndLink() { FWriter->s(u"</a>"); }

void THtSVGCanvas::DrawLink(const TRectF&, const hstring& href, bool isAnchor) {
  if (!isAnchor) return;
  if (const hstring waiting = FCustomAttributes.GetValue(u"id"); !waiting.Empty()) {
    FWriter->Add(u"<a id=\"");
    HtAppendEncoded(*FWriter, waiting);
    FWriter->s(u"\"></a>");
  }
  FCustomAttributes.SetValue(u"id", href);
}

}  // namespace ht
