// Texts that are hard to read: those whose contrast with what is behind them is below 4.5, the limit of WCAG 2.
//
// $ contrast pages/ferry.html
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "document/document.h"
#include "htutils/htutils.h"

using namespace ht;

static hstring ReadSheet(const hstring& address) {
  try {
    return HtDecodeMarkup(FileToStrA(address)).Text;
  } catch (const EHtException&) {
    return {};  // a page is there without its sheets, too
  }
}

static double Luminance(uint32_t color) {
  const auto linear = [&](int shift) {
    const double c = (color >> shift & 0xFF) / 255.0;
    return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(16) + 0.7152 * linear(8) + 0.0722 * linear(0);
}

static double Contrast(uint32_t a, uint32_t b) {
  const auto [dark, light] = std::minmax({Luminance(a), Luminance(b)});
  return (light + 0.05) / (dark + 0.05);
}

static uint32_t Ground(const TDocumentNode* node) {
  for (; node; node = node->GetParent())
    if (const uint32_t color = node->Style()->BackgroundColor(); color >> 24 == 0xFF) return color;
  return 0xFFFFFFFF;
}

static bool IsHidden(const TDocumentNode* node) {
  while (node && node->Style()->FDisplay != dsNone) node = node->GetParent();
  return node != nullptr;
}

int main(int argc, char** argv) {
  if (argc != 2) return std::fputs("usage: contrast FILE\n", stderr), 2;
  TDocument page;
  page.BaseURL = HtFromUtf8(argv[1]);
  page.Sheets().Loader = ReadSheet;
  page.Parse(HtDecodeMarkup(FileToStrA(page.BaseURL)).Text);
  page.UpdateStyles();
  for (THtNode* text = &page; text; text = text->NextNodeBelow(&page)) {
    const auto* parent = static_cast<TDocumentNode*>(text->GetParent());
    if (!text->GetTag().Empty() || BlankString(text->GetContent()) || !parent || IsHidden(parent)) continue;
    const uint32_t color = parent->Style()->TextColor(), ground = Ground(parent);
    if (const double contrast = Contrast(color, ground); contrast < 4.5)
      std::printf("%.1f  #%06x on #%06x  %s\n", contrast, color & 0xFFFFFF, ground & 0xFFFFFF,
                  HtToUtf8(HtTrim(text->GetContent())).c_str());
  }
}
