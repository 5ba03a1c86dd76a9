#pragma once

#include <unordered_map>

#include "document/document.h"

namespace ht {

/// One walk over a document in document order, which gives the elements their styles. The heart of a host: what the
/// library says about the order of its calls is followed here.
class TStylePass {
 public:
  explicit TStylePass(TDocument& document);

  /// Resolves what has changed; with `all`, everything.
  TStyleChanges Run(bool all);

  /// How many children of an element have a tag, and how many of them were visited.
  struct TTagCount {
    int32_t All = 0;
    int32_t Seen = 0;
  };
  using TTagCounts = std::unordered_map<hstring, TTagCount>;

 private:
  void Visit(TDocumentNode& element, bool all);
  void VisitChildren(TDocumentNode& parent, bool all);

  void UpdatePseudoClasses(TDocumentNode& element, bool isFirst, bool isLast, TTagCounts* tags);
  TCSSPseudo PseudoClassesOfItself(const TDocumentNode& element) const;

  bool Resolve(TDocumentNode& element);
  void FindDeclarations(TDocumentNode& element, TCSSPseudoClass kind);
  void Apply(TDocumentNode& element);
  bool Note(TDocumentNode& element, bool isNew);

  TCSSPseudo GeneratedKinds(TDocumentNode& element) const;
  void Generate(TDocumentNode& element, TCSSPseudoClass kind, TCSSPseudo kinds);
  static std::unique_ptr<TDocumentNode> NewGenerated(TDocumentNode& element, TCSSPseudoClass kind);
  bool ResolveGenerated(TDocumentNode& node);

  TDocument& FDocument;
  std::vector<TCSSStyleSheet*> FSheets;  // from the weakest to the strongest
  TCSSPseudo FUsed;                      // the pseudo-classes that rules ask for
  TCSSWeightList FList;
  TStyleChanges FChanges;
};

}  // namespace ht
