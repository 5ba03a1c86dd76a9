#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "htmlcss/stylesheet.h"
#include "htmlpars/node.h"

namespace ht {

/// What a document is shown on: the medium, and sizes in pixels.
struct TDocumentView {
  TCSSMedia Media = cmScreen;
  float Width = 1024;
  float Height = 768;
  /// Of the whole screen; 0 stands for Width.
  int32_t DeviceWidth = 0;
};

/// The author's style sheets of a document: those of `<style>` and `<link>`, what they import, and those that the
/// application adds. All are filed in one sheet, in the order of the cascade, so that an element asks only once.
///
/// A sheet is read once and kept for as long as the document names it. Where it is named twice, the last place counts:
/// the rules of the first would lose to their equals at the last.
class TDocumentSheets {
 public:
  /// Gives the text of a sheet by its address; an empty text for one that cannot be had.
  using TLoader = std::function<hstring(const hstring& address)>;

  TLoader Loader;

  /// A sheet of the application's, behind those of the document.
  void Add(const hstring& text, const hstring& baseURL);
  /// Makes Author anew from what the document says now. The values of the sheet before stay until DropUnused.
  void Collect(const THtNode& root, const hstring& baseURL, const TDocumentView& view);
  /// Frees the sheets of which Author has nothing.
  void DropUnused() { FBefore.clear(); }

  TCSSStyleSheet& Author() { return *FAuthor; }
  /// A sheet has custom properties.
  bool HasVariables() const { return FHasVariables; }
  /// All pseudo-classes that rules ask for.
  TCSSPseudo UsedPseudos() const { return FUsedPseudos; }
  /// A rule speaks of siblings: what changes one element may change those behind it.
  bool HasSiblingRules() const { return FHasSiblingRules; }

 private:
  struct TImport {
    hstring Address;
    hstring Media;
  };
  struct TSheet {
    hstring Key;  // the address; of an embedded sheet "\n", its base address, "\n" and its text
    TCSSStyleSheet Rules;
    std::vector<TImport> Imports;
    bool HasVariables = false;
  };
  using TSheets = std::unordered_map<std::u16string_view, std::unique_ptr<TSheet>>;

  void AddElement(const THtNode& node, const hstring& baseURL, std::vector<TSheet*>& named);
  void AddWithImports(TSheet& sheet, std::vector<TSheet*>& lastFirst, int32_t depth);
  void File(TSheet& sheet);
  void NoteSelector(const TCSSSelector& selector);
  TSheet& Embedded(const hstring& text, const hstring& baseURL);
  TSheet& Linked(const hstring& address);
  TSheet* Known(std::u16string_view key);
  TSheet& Read(const hstring& key, const hstring& text, const hstring& url);
  bool MediaHold(const hstring& media) const;

  TSheets FSheets;
  std::unordered_set<const TSheet*> FTaken;  // while sheets are put into order
  TSheets FBefore;                           // to which styles may still point
  std::unique_ptr<TCSSStyleSheet> FAuthor = std::make_unique<TCSSStyleSheet>();
  std::vector<std::pair<hstring, hstring>> FAdded;  // text and base address
  TDocumentView FView;
  TCSSPseudo FUsedPseudos;
  bool FHasVariables = false;
  bool FHasSiblingRules = false;
};

}  // namespace ht
