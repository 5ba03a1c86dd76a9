#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <span>

#include "htmlpars/attributes.h"
#include "htmlpars/nodelist.h"
#include "htmlpars/tags.h"
#include "htmlpars/tokentype.h"
#include "htruntime/datetime.h"
#include "htruntime/exception.h"

namespace ht {

class THtNode;
class THtTagRec;
struct TXPathNode;
class TXPathProcessor;

/// What a walk hands each node to; setting `goOn` false ends the walk.
using THtNodeProcRef = std::function<void(THtNode* node, bool& goOn)>;

/// The class object of a node class: a tree makes its nodes through these.
class THtNodeClass : public TClass {
 public:
  using TClass::TClass;
  std::unique_ptr<THtNode> NewNode() const;

 protected:
  ~THtNodeClass() = default;
};

/// Walks that call themselves down a tree stop at this many levels with EHtException "Tree is nested too deeply". They
/// get that far on a stack of 2 MB. Parsing builds some 260 levels (350 where it puts rows and cells in between), so that
/// only trees made by hand, and XPath paths of as many steps, get there.
constexpr int32_t kMaxTreeDepth = 10000;

/// Counts one level of a recursive walk on this thread. Raises EHtException at kMaxTreeDepth.
class TTreeDepthGuard {
 public:
  TTreeDepthGuard() {
    if (++FDepth > kMaxTreeDepth) Raise();
  }
  ~TTreeDepthGuard() { --FDepth; }
  TTreeDepthGuard(const TTreeDepthGuard&) = delete;
  TTreeDepthGuard& operator=(const TTreeDepthGuard&) = delete;

 private:
  [[noreturn]] static void Raise();
  static thread_local int32_t FDepth;
};

/// The node of every tree of the library: an element, a text, a comment, a directive or a CDATA section.
///
///   Kind              FTag       TagType            content
///   element           the name   htIdent            children
///   text              empty      htUnknown          FContent
///   script, style     the name   htScript, htStyle  FContent
///   comment           "!"        htComment          FContent
///   directive         "?"        htDirective        FContent
///   CDATA section     empty      htCData            FContent
///   root              empty or "body"  htUnknown    children
///   made by a repair  the name   htUnknown          children
///
/// A node owns its children and its attributes. Freeing a node frees the subtree without recursion, whatever
/// its depth; while a node is freed, its children are no longer reached from it. One thread at a time works
/// on a tree. Indexes count from 0.
class THtNode : public TObject {
 public:
  using TClassRef = THtNodeClass;
  static const THtNodeClass* Class();
  const THtNodeClass* NodeClass() const { return static_cast<const THtNodeClass*>(ClassType()); }
  const TClass* ClassType() const override { return Class(); }

  HT_POOLED

  THtNode() = default;
  ~THtNode() override;

  /// The child list, made on first need.
  virtual THtNodeList* GetNodes();
  virtual void SetParent(THtNode* parent);
  virtual void SetContent(const hstring& text);
  /// Hook: runs a script function on this node. Does nothing here.
  virtual void CallScriptFunction(TObject* function);
  /// Hook: how a script orders this node and `node`. 0 here.
  virtual int32_t ScriptCompare(TObject* comparer, THtNode* node);
  /// The class of a new node of that tag in this tree; null when such nodes are not wanted. With `root`, or in a
  /// node that has a parent, the tree's root decides; a root answers with its own class. In a tree of THtmlNode
  /// the class must derive from THtmlNode.
  virtual const THtNodeClass* GetElementClass(const hstring& tag, THtNode* root);
  /// Appends a new child without telling subclasses (no SetParent): the way of the tree builder.
  virtual THtNode* InternalAddChild(const THtNodeClass* nodeClass);
  /// Makes FAttributes if there are none.
  virtual THtAttributes* CreateAttributes();
  /// Appends a new child of the class and returns it.
  virtual THtNode* AddChild(const THtNodeClass* nodeClass);
  /// Frees a child. Raises EHtException "Child node not found" for any other node.
  virtual void DeleteChild(THtNode* node);
  virtual void DeleteAllChildren();
  /// Hook: the nodes below this one that match a CSS selector. Null here.
  virtual TIntf<IHtNodeList> GetJQueryList(const hstring& selector, bool flag);
  /// The content of this node and, in document order, of the nodes below it.
  virtual hstring TextContent() const;
  /// Returns whether anything changed. An empty value on a node without attributes changes nothing.
  virtual bool SetAttribute(const hstring& name, const hstring& value);

  const hstring& GetTag() const { return FTag; }
  /// Sets the tag and what is derived from it.
  void SetTag(const hstring& tag);
  /// RSHash of the tag in ASCII lower case.
  uint32_t GetTagHash() const { return FTagHash; }
  /// Which known HTML tag this is: tgNone without a tag, tgOther for an unknown one.
  THtTagId GetTagId() const { return FTagId; }
  const hstring& GetContent() const { return FContent; }
  THtNode* GetParent() const { return FParent; }
  /// Null until the first attribute.
  THtAttributes* GetAttributes() const { return FAttributes.get(); }
  /// A child list exists (it may be empty).
  bool HasNodes() const { return FNodes != nullptr; }

  // Structure

  /// Appends a node, which has no other owner, and sets its parent.
  THtNode* AddNode(std::unique_ptr<THtNode> node);
  void Exchange(int32_t a, int32_t b) { GetNodes()->Exchange(a, b); }
  int32_t GetCount() const { return FNodes ? FNodes->GetCount() : 0; }
  /// Raises EListError for an index outside the children.
  THtNode* GetNode(int32_t index) const;
  THtNode* Root();
  /// The tags from the root down to this node, joined by "/".
  hstring Path() const;
  /// `node` is an ancestor of this one.
  bool HasAsParent(const THtNode* node) const;
  bool HasParentTag(const hstring& tag) const { return UpTo(tag) != nullptr; }
  /// The nearest ancestor with the tag, or one of the tags; null if there is none.
  THtNode* UpTo(const hstring& tag) const;
  THtNode* UpTo(std::span<const hstring> tags) const;
  /// The index in the parent; -1 without a parent.
  int32_t NodeIndex() const;
  /// How many siblings with a tag stand before this node.
  int32_t ChildIndex() const;
  /// How many siblings with the same tag stand before this node.
  int32_t TagIndex() const;
  /// The number of children with the tag.
  int32_t Countof(const hstring& tag) const;

  // Walking. Null where there is no such node.

  THtNode* NextSibling() const { return FNextSibling; }
  THtNode* PreviousSibling() const;
  /// In document order.
  THtNode* NextNode() const;
  THtNode* PreviousNode() const;
  /// The next node in document order that lies below `top`. `for (n = this; n; n = n->NextNodeBelow(this))`
  THtNode* NextNodeBelow(const THtNode* top) const;
  THtNode* FirstChild() const { return FNodes ? FNodes->FirstNode() : nullptr; }
  THtNode* LastChild() const { return FNodes ? FNodes->LastNode() : nullptr; }
  /// The deepest last descendant, or this node.
  THtNode* Last();
  /// The first child that has a tag and is no comment.
  THtNode* FirstChildTag() const;
  /// The last child that has a tag.
  THtNode* LastChildTag() const;

  // Search. Tags are compared exactly. Null where nothing is found.

  /// Children only; each "/" in the path goes one level down, the first match at each.
  THtNode* NodebyName(const hstring& path) const;
  /// The n-th child, from 0, with the tag.
  THtNode* NodebyNameIndex(const hstring& tag, int32_t n) const;
  /// The first node below this one with the tag.
  THtNode* FindNode(const hstring& tag) const;
  /// The first child whose attribute has the value.
  THtNode* NodebyAttr(const hstring& name, const hstring& value) const;
  THtNode* NodebyNameAttr(const hstring& tag, const hstring& name, const hstring& value) const;
  /// The first node below this one; an empty tag matches any.
  THtNode* FindNodebyAttr(const hstring& tag, const hstring& name, const hstring& value) const;

  // Attributes. An absent attribute reads as empty, false or 0.

  bool HasAttribute(const hstring& name) const;
  /// With an empty value also true when the attribute is absent.
  bool HasAttributeValue(const hstring& name, const hstring& value) const;
  hstring GetAttribute(const hstring& name) const;
  void SetAttr(const hstring& name, const hstring& value) { SetAttribute(name, value); }
  /// Sets each attribute of `node` on this one.
  void CopyAttributesFrom(const THtNode* node);
  /// EConvertError when the value is no integer.
  int32_t GetAttrI(const hstring& name) const;
  void SetAttrI(const hstring& name, int32_t value);
  /// True for exactly "1", "true" and "on"; written as "1" or "0".
  bool GetAttrB(const hstring& name) const;
  void SetAttrB(const hstring& name, bool value);
  /// Either decimal mark is read; 0 for what is no number. SetAttrF writes at most two decimals, SetFloat all.
  double GetAttrF(const hstring& name) const;
  void SetAttrF(const hstring& name, double value);
  double GetFloat(const hstring& name) const;
  void SetFloat(const hstring& name, double value);
  /// Read and written as yyyy-mm-dd, as hh:nn:ss, and as both; SetDateTime joins them by "T". EConvertError when
  /// a part of the text does not fit.
  TDateTime GetDate(const hstring& name) const;
  void SetDate(const hstring& name, TDateTime value);
  TDateTime GetTime(const hstring& name) const;
  void SetTime(const hstring& name, TDateTime value);
  TDateTime GetDateTime(const hstring& name) const;
  void SetDateTime(const hstring& name, TDateTime value);

  // XPath: see xpath.h for the language. `current` is what the step "current" stands for; null means this node.

  /// The nodes found in document order, starting at this node whether or not the path begins with "/".
  TIntf<IHtNodeList> XPath(const hstring& path, bool firstOnly = false, THtNode* current = nullptr);
  /// Calls `proc` for each node found. A path that begins with "/" starts at the root.
  void XPath(const hstring& path, const THtNodeProcRef& proc);
  /// The same for any callable. A lambda without captures is also a pointer, and so a bool, but for this overload.
  template <std::invocable<THtNode*, bool&> TProc>
  void XPath(const hstring& path, TProc&& proc) {
    const THtNodeProcRef walk = std::ref(proc);
    XPath(path, walk);
  }
  /// The first value found: the text of a node or the value of an attribute. A path that begins with "/" starts
  /// at the root.
  hstring XPathValue(const hstring& path, THtNode* current = nullptr);
  /// This node meets the conditions of the step.
  bool EvaluateCondition(const TXPathNode& step);
  /// The walk into a list, or, with a null list, into the processor's Value.
  void InternalXPath(const TXPathNode& step, THtNodeList* list, bool firstOnly);
  /// The walk into a callback; returns whether to go on.
  bool InternalXPathRef(const TXPathNode& step, const THtNodeProcRef& proc);

 protected:
  void AssignTag(const THtTagRec& rec);

  hstring FTag;
  uint32_t FTagHash = 0;
  THtTagId FTagId = tgNone;

 public:
  THTMLTokenType TagType = htUnknown;

 protected:
  std::unique_ptr<THtNodeList> FNodes;
  std::unique_ptr<THtAttributes> FAttributes;
  hstring FContent;
  THtNode* FNextSibling = nullptr;
  THtNode* FParent = nullptr;

 public:
  /// For the application; the tree neither reads nor frees it.
  TObject* TagObject = nullptr;

 private:
  friend class THtNodeList;

  THtNode* Adopt(std::unique_ptr<THtNode> node);
  bool Matches(const hstring& tag, const hstring& name, const hstring& value) const;
};

}  // namespace ht
