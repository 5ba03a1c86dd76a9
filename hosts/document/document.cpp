#include "document/document.h"

#include "document/stylepass.h"
#include "htmlpars/lower.h"

namespace ht {

namespace {

constexpr size_t kPrologue = 4096;  // nobody looks further for a doctype

bool HasDoctype(std::u16string_view text) {
  constexpr std::u16string_view kDoctype = u"<!doctype";
  text = text.substr(0, kPrologue);
  for (size_t i = 0; (i = text.find(u'<', i)) != text.npos; ++i) {
    if (HtSameAscii(text.substr(i, kDoctype.size()), kDoctype)) return true;
    if (i + 1 < text.size() && text[i + 1] != u'!' && text[i + 1] != u'?') return false;
  }
  return false;
}

}  // namespace

TDocument::TDocument() = default;
TDocument::~TDocument() = default;

const THtNodeClass* TDocument::GetElementClass(const hstring&, THtNode*) { return TDocumentNode::Class(); }

void TDocument::Parse(const hstring& text, bool ignoreMetaEncoding) {
  FQuirks = !HasDoctype(text);
  FSheetsValid = false;
  TDocumentNode::Parse(text, ignoreMetaEncoding);
}

void TDocument::SetView(const TDocumentView& view) {
  FView = view;
  FSheetsValid = false;
}

TStyleChanges TDocument::UpdateStyles() {
  const bool all = !FSheetsValid;
  OuterRect = {0, 0, FView.Width, FView.Height};
  if (all) {
    FSheets.Collect(*this, BaseURL, FView);
    FSheets.Author().TestMediaSets(FView.Media, static_cast<int32_t>(FView.Width), FView.DeviceWidth);
    FVariables.Retire();
  }
  TStyleChanges changes = TStylePass(*this).Run(all);
  if (all) {
    FSheets.DropUnused();
    FVariables.DropRetired();
    FSheetsValid = true;
  }
  FSelfSheets.DropUnused();
  return changes;
}

}  // namespace ht
