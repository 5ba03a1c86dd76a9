#include "document/widths.h"

#include <algorithm>

namespace ht {

namespace {

// Margins in percent are the host's.
void CalcMargins(TDocumentNode& element) {
  TDocumentStyle& style = *element.Style();
  if (!style.RelativeProps.Contains(cgMargin)) return;
  element.MarginTop = style.MarginTopPx();
  element.MarginRight = style.MarginRightPx();
  element.MarginBottom = style.MarginBottomPx();
  element.MarginLeft = style.MarginLeftPx();
}

float Width(TDocumentNode& element) {
  TDocumentStyle& style = *element.Style();
  const float room = element.Container->InnerWidth;
  if (style.FDisplay == dsInline) return room;
  TMeasure declared;
  if (style.PropertySet.Contains(cspWidth)) style.Width(declared);
  const float borders = element.BorderLeft + element.BorderRight, inside = element.InnerDeltaX() + borders;
  const float width = declared.GetAuto() ? room - element.InnerDeltaX() - element.OuterDeltaX()
                      : style.BoxSizing() == bsBorderbox ? declared.GetFPixels() - inside
                                                         : declared.GetFPixels();
  return std::max({std::min(width, element.MaxWidth()), element.MinWidth(), 0.0f});
}

float Height(TDocumentNode& element) {
  TMeasure declared;
  if (element.SizeFlags.Contains(sfDefiniteHeight) && element.Style()->PropertySet.Contains(cspHeight))
    element.Style()->Height(declared);
  return declared.GetAuto() ? 0 : std::max(declared.GetFPixels(), 0.0f);
}

}  // namespace

void HtCalcWidths(TDocument& document) {
  for (THtNode* node = &document; node; node = node->NextNodeBelow(&document)) {
    auto& element = static_cast<TDocumentNode&>(*node);
    if (!element.Container) continue;
    element.CalcNonRelativeProps();
    CalcMargins(element);
    element.CalcSizeFlags(true);
    if (&element == &document) {
      element.CalcRects();
      continue;
    }
    element.InnerWidth = Width(element);
    element.InnerHeight = Height(element);
  }
}

}  // namespace ht
