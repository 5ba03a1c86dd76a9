#include "document/selfsheets.h"

#include "document/documentnode.h"
#include "document/variables.h"

namespace ht {

TSelfSheets::~TSelfSheets() {
  for (auto& [text, sheet] : FSheets)
    if (sheet->RefCounter-- == 0) delete sheet;
}

void TSelfSheets::Give(TDocumentNode& element) {
  if (element.SelfStyleSheet) element.ClearSelfStyleSheet();
  element.Flags.Include(efSelfStyleProcessed);
  hstring declarations = element.GetAttribute(u"style"_hs);
  if (!element.FVirtualSelfStyle.Empty()) declarations = declarations + u"\1" + element.FVirtualSelfStyle;
  if (declarations.Empty()) return;
  TCSSStyleSheet*& sheet = FSheets[declarations];
  if (!sheet) {
    sheet = element.NewSelfStyleSheet().release();
    HtPrepareVariables(*sheet);
  }
  ++sheet->RefCounter;
  element.SelfStyleSheet = sheet;
}

void TSelfSheets::DropUnused() {
  std::erase_if(FSheets, [](const auto& item) {
    const bool unused = item.second->RefCounter == 0;
    if (unused) delete item.second;
    return unused;
  });
}

}  // namespace ht
