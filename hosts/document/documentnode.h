#pragma once

#include <memory>

#include "htmlcss/styledhtmlnode.h"

namespace ht {

class TDocument;
class TDocumentStyle;

/// The pseudo-classes that a style pass finds out. That the pointer is on an element and the like is told by the
/// application.
constexpr TCSSPseudo kFoundPseudos{pcLink,      pcChecked,     pcEmpty,      pcFirstChild, pcLastChild,
                                   pcOnlyChild, pcFirstOfType, pcLastOfType, pcOnlyOfType};

/// A node of a document. An element has a style; a text, a comment and what else has no box has none, and shows itself in
/// that of its parent.
///
/// It notes what its style depends on and what has changed, so that the next style pass finds it. Changes that go past
/// the node's own operations (a child moved within the list, say) are told by StyleChanged(true).
class TDocumentNode : public TStyledHTMLNode {
  HT_CLASS(TDocumentNode, TStyledHTMLNode)

 public:
  TDocumentNode() = default;
  ~TDocumentNode() override;

  // What the library asks of its host

  const TClass* GetStyleClass() const override;
  const TRectF* GetDrawRect() const override;
  const float& GetViewPortWidth() const override;
  const float& GetViewPortHeight() const override;
  /// What `rem` refers to: for the children of "html", whose font size refers to it, it is "html", too.
  TStyledHTMLNode* RootNodeElement() override;
  bool IsText() const override { return FTag.Empty(); }
  void StyleChanged(bool propagate) override;
  bool SetAttribute(const hstring& name, const hstring& value) override;
  void SetParent(THtNode* parent) override;
  THtNode* InternalAddChild(const THtNodeClass* nodeClass) override;
  void DeleteChild(THtNode* node) override;
  void DeleteAllChildren() override;
  using TStyledHTMLNode::ParseAttributes;
  void ParseAttributes(THtmlParser& parser) override;
  void AfterParse() override;

  // For the application

  TDocumentStyle* Style() const;
  TDocumentNode* GetParent() const { return static_cast<TDocumentNode*>(FParent); }
  /// Null for a node that is in no document.
  TDocument* Document() const;
  bool IsElement() const { return !FTag.Empty() && TagType != htComment && TagType != htDirective; }
  /// Says that the pointer is on the element, that it has the focus and so on: pcHover, pcActive, pcFocus, pcTarget …
  void SetPseudoClass(TCSSPseudoClass pseudo, bool on);
  /// A child has counters, or had.
  bool ChildrenHaveCounters() const { return FChildrenHaveCounters; }
  /// The node of `::marker`, where a rule speaks of the marker of this list item; else null. Before and After are the
  /// other generated nodes. Each has a style and one text child, and this node as parent, which does not list it.
  TDocumentNode* Marker() const { return FGenerated ? FGenerated->Marker.get() : nullptr; }

 private:
  friend class TStylePass;

  struct TGenerated {
    std::unique_ptr<TDocumentNode> Before, After, Marker;
  };

  void ChildrenChanged();
  void ForgetStyles();

  std::unique_ptr<TGenerated> FGenerated;
  bool FStyleBelow = false;    // with the style of this node, those of all below are to be resolved
  bool FChangesBelow = false;  // that of some node below is to be resolved
  bool FChildrenHaveCounters = false;
};

}  // namespace ht
