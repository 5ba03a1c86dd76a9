#pragma once

#include "htmlpars/colors.h"
#include "htmlpars/encoding.h"
#include "htmlpars/node.h"

namespace ht {

class THtmlParser;

/// A node of an HTML tree: parses forgiving HTML and repairs it as it goes, writes it back, gives its text.
///
///   THtmlNode page;
///   page.Parse(u"<ul><li>one<li>two</ul>");
///   page.GetOuterHTML();                    // <body><ul><li>one</li><li>two</li></ul></body>
///
/// Any text gives a tree; parsing raises nothing. A document that has a "body" or "html" element keeps it, any
/// other root becomes the "body". A host derives its own nodes from this class, overrides GetElementClass in the
/// root's class to choose a class for every tag, and enters the parse through InternalParse, ParseAttributes and
/// AfterParse. Walks that recurse raise EHtException beyond kMaxTreeDepth levels.
class THtmlNode : public THtNode {
  HT_CLASS(THtmlNode, THtNode)

 public:
  THtmlNode() = default;
  /// An element of that tag.
  explicit THtmlNode(const hstring& tag);

  // Parsing

  /// Reads the parser's items into this node until it, or something around it, is closed. Null: the caller goes on as
  /// before. A node: everything up to and including that node is closed. An override calls this first and works on
  /// the finished node.
  virtual THtNode* InternalParse(THtmlParser& parser);
  /// Called when parsing leaves a node that may have content. Does nothing here.
  virtual void AfterParse();
  virtual hstring GetInnerHTML();
  /// Replaces the children by those of the text, in the place where they stand.
  virtual void SetInnerHTML(const hstring& text);
  virtual hstring GetOuterHTML();
  /// This node becomes the first element (or text, comment) of the text; the rest is not read.
  virtual void SetOuterHTML(const hstring& text);
  /// The "class" attribute; an empty text removes it.
  virtual void SetStyleClass(const hstring& text);
  /// Whether a start tag met in this node closes open elements: the node up to which they close, or null to stay.
  /// `root` is where the search ends; it may be null.
  virtual THtNode* CheckTagOrder(const hstring& tag, THtmlNode* root);
  /// The "style" attribute.
  virtual void SetSelfStyle(const hstring& text);
  /// The text as a reader sees it: blocks on lines of their own (CR LF), cells joined by a tab. White space is not
  /// collapsed.
  virtual hstring GetInnerText();
  /// One text child takes the place of all children.
  virtual void SetInnerText(const hstring& text);
  /// Empty at this level; for subclasses whose text nodes answer.
  virtual hstring GetRawInnerText();
  /// True here: names in inserted HTML are read without regard to case.
  virtual bool QuirksMode();
  /// Replaces the children by those of a document. Unless told to ignore it, a charset that the document names is
  /// followed: the characters of `text` then hold one byte of the document each.
  virtual void Parse(const hstring& text, bool ignoreMetaEncoding = false);
  /// Appends this node with its tags as compact HTML.
  virtual void FastInnerHTML(TFastString& builder);
  /// Appends the flat text, for search and indexing: with the "href" and "title" of links, without the head.
  virtual void FastInnerText(TFastString& builder);
  /// Appends this node with line breaks (CR LF) and `indent` blanks a level. `newLine` is carried through the walk:
  /// the last thing written was a block boundary.
  virtual void FastFormattedHTML(TFastString& builder, int32_t level, int32_t indent, bool& newLine);
  /// Takes the attributes of the parser's item. Called once an element, before its children are read.
  virtual void ParseAttributes(THtmlParser& parser);
  /// Moves all children into the parent's list, before or behind this node.
  virtual void MoveChildrentoParent(bool before);
  /// Parses the text and appends its nodes; the first of them, or null.
  virtual THtNode* AddHTML(const hstring& text);
  /// Hooks that nodes with a style give a meaning.
  virtual void CSS(const hstring& text);
  virtual void AddClass(const hstring& name);
  virtual void RemoveClass(const hstring& name);
  virtual bool HasClass(const hstring& name);

  /// Reads the text of attributes: `a="b" c`.
  void ParseAttributes(const hstring& text);
  /// Decodes the contents and attribute values of this subtree anew, for text that was parsed before its encoding
  /// was known: as UTF-8, or in a code page (heANSI).
  void ChangeEncoding(THtmlEncoding encoding, int32_t codepage);

  hstring GetId() const;
  void SetId(const hstring& id);
  hstring GetSelfStyle() const;
  hstring GetStyleClassStr() const;
  void ToggleClass(const hstring& name);

  THtmlNode* GetParent() const { return static_cast<THtmlNode*>(FParent); }
  THtmlNode* GetNode(int32_t index) const { return static_cast<THtmlNode*>(THtNode::GetNode(index)); }
  /// The number of nodes with a tag before this one in document order.
  int32_t AbsoluteTagIndex();
  /// Numbers the elements of this subtree in their attribute "_id", from 0 in document order.
  void EnumerateElements();
  /// Moves all children (but `target`) into the target's list, from `index` on; -1 appends.
  void MoveChildrento(THtNode* target, int32_t index);
  /// Moves a child to the position of another.
  void MoveNode(THtNode* node, THtNode* target);

  /// The inner text of a piece of HTML.
  static hstring HTMLtoText(const hstring& text);
  /// Where system colours come from; for application start-up.
  static void SetThemeColorPrc(TThemeColorProc proc);

 private:
  THtmlNode* AddTemporary();

  // The tree builder
  struct TFrame {
    THtNode* Result = nullptr;  // what the frame returns when it ends
    int32_t LastCell = -1;  // of a row: the index of its last cell among the first Scanned children, or -1
    int32_t Scanned = 0;
  };
  THtNode* ParseContent(THtmlParser& parser);
  bool ParseStartTag(THtmlParser& parser, TFrame& frame);
  bool Descend(THtmlNode* child, THtmlParser& parser, THtNode*& result);
  bool RepairTable(THtmlParser& parser, THtmlNode*& child);
  THtmlNode* LastCell(TFrame& frame) const;
  THtNode* CheckOrder(THtmlParser& parser);
  THtNode* WithinReach(THtNode* node, const THtmlParser& parser) const;
  THtNode* FindClosed(THtmlParser& parser);
  void LeaveTable();
  THtmlNode* AddImplied(const hstring& tag, THtmlParser& parser);
  THtmlNode* AddItemChild(THtmlParser& parser);
  void AddSpecial(THtmlParser& parser);
  void TakeItem(const THtmlParser& parser);
  THtmlNode* Reopen(THtmlParser& parser);
  THtNode* FloatUpTo(const THtTagSet& tags, const THtNode* root);
  THtNode* FloatUpOver(const THtTagSet& tags, bool crossCells, const THtNode* root);
  void MoveTo(THtNode* parent);

  // The writers
  void WriteAttributes(TFastString& builder) const;
  bool IsContentTypeMeta() const;
  bool WriteMarkedContent(TFastString& builder) const;
  void WriteRawOpener(TFastString& builder) const;
  void FormatText(TFastString& builder, int32_t pad, bool& newLine) const;
  bool FormatMarkedContent(TFastString& builder, int32_t pad, bool& newLine) const;
  void FormatRawElement(TFastString& builder, int32_t pad, bool& newLine) const;
  void FormatChildren(TFastString& builder, int32_t level, int32_t indent, bool& newLine);
};

}  // namespace ht
