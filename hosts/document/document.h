#pragma once

#include <vector>

#include "document/documentnode.h"
#include "document/documentsheets.h"
#include "document/documentstyle.h"
#include "document/selfsheets.h"
#include "document/variables.h"

namespace ht {

/// What a style pass has done. The elements whose style is not what it was, in document order; what inherits from them
/// has changed as well, without standing here again. New elements stand in Layout.
struct TStyleChanges {
  /// Their boxes, or those around them, may have other sizes or places.
  std::vector<TDocumentNode*> Layout;
  /// They only look different.
  std::vector<TDocumentNode*> Repaint;
  /// How many elements were resolved.
  int32_t Resolved = 0;

  bool Empty() const { return Layout.empty() && Repaint.empty(); }
};

/// A document with styles: the root of its tree.
///
///   TDocument page;
///   page.BaseURL = address;
///   page.Sheets().Loader = [](const hstring& sheet) { return LoadText(sheet); };
///   page.Parse(text);
///   page.UpdateStyles();
///   page.JQuery(u"p.note a"_hs)->…                   // any getter of any element: node->Style()->TextColor()
///   node->AddClass(u"open"_hs);
///   for (TDocumentNode* changed : page.UpdateStyles().Layout) …
///
/// It does no layout: boxes are empty, and percentages refer to nothing, unless HtCalcWidths (widths.h) helps. Styles refer
/// to the sheets of the document; a subtree that is taken out is not asked for them until it is in a document again. One
/// thread at a time.
class TDocument : public TDocumentNode {
  HT_CLASS(TDocument, TDocumentNode)

 public:
  TDocument();
  ~TDocument() override;

  /// Where the document comes from; addresses in it refer to it.
  hstring BaseURL;
  /// Of the root, in pixels: what `font-size: medium` would be.
  float FontSize = 16;

  /// The root has a style even where it has no tag, above "html": what the library asks of the top of a tree.
  const TClass* GetStyleClass() const override { return TDocumentStyle::Class(); }
  bool IsText() const override { return false; }
  const THtNodeClass* GetElementClass(const hstring& tag, THtNode* root) override;
  void Parse(const hstring& text, bool ignoreMetaEncoding = false) override;
  /// The text has no `<!DOCTYPE`.
  bool Quirks() const { return FQuirks; }

  /// Pseudo-classes that queries of the application ask for. Those of kFoundPseudos are kept only where rules, or this,
  /// ask for them.
  TCSSPseudo QueriedPseudos;

  const TDocumentView& View() const { return FView; }
  void SetView(const TDocumentView& view);
  TDocumentSheets& Sheets() { return FSheets; }
  /// The text of a `<style>`, a `<link>` or what the loader gives is another now.
  void SheetsChanged() { FSheetsValid = false; }

  /// Resolves the style of all elements of which it may have changed, in one walk in document order. Raises EHtException
  /// for a tree of more than kMaxTreeDepth levels.
  TStyleChanges UpdateStyles();

 private:
  friend class TStylePass;

  TDocumentView FView;
  TDocumentSheets FSheets;
  TSelfSheets FSelfSheets;
  TVariables FVariables;
  bool FSheetsValid = false;
  bool FQuirks = true;
};

}  // namespace ht
