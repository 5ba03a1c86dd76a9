// The tree builder: turns the parser's items into nodes of this tree and repairs bad markup on the way.
//
// It is one recursive method, a frame for each open element. A frame returns null, or the node R up to which
// elements are closed: frames whose node lies inside R leave, and the nearest frame above R goes on with the item.

#include "htdictionary/hash.h"
#include "htmlpars/htmlnode.h"
#include "htmlpars/parser.h"

namespace ht {

namespace {

// A frame deeper than this closes two levels before it takes a start tag; it bounds the depth of the tree.
constexpr int32_t kMaxLevel = 256;

constexpr THtTagSet kCells{tgTd, tgTh};
constexpr THtTagSet kRowGroups{tgThead, tgTbody, tgTfoot, tgTable};
constexpr THtTagSet kTableParts{tgTable, tgTr, tgTd, tgTh};
constexpr THtTagSet kCellBorders{tgTd, tgTh, tgTr, tgTable, tgTbody, tgThead, tgColgroup};
constexpr THtTagSet kRowContent{tgTr, tgTbody, tgThead, tgTfoot, tgCaption, tgTd, tgTh, tgFont};
constexpr THtTagSet kTableContent{tgTbody, tgThead, tgTfoot, tgTr, tgTd, tgTh, tgColgroup, tgCol, tgCaption};
constexpr THtTagSet kLastCellContent{tgP, tgSpan, tgUl, tgDiv};
constexpr THtTagSet kHeadContent{tgBase,   tgBasefont, tgBgsound, tgLink,    tgMeta,
                                 tgScript, tgStyle,    tgTitle,   tgNoscript};
constexpr THtTagSet kParagraphEnders{
    tgAddress,    tgArticle, tgAside,  tgBlockquote, tgCenter, tgDetails, tgDir, tgDiv, tgDl, tgFieldset,
    tgFigcaption, tgFigure,  tgFooter, tgHeader,     tgHgroup, tgMenu,    tgNav, tgOl,  tgP,  tgPre,
    tgSection,    tgSummary, tgUl,     tgH1,         tgH2,     tgH3,      tgH4,  tgH5,  tgH6};
constexpr THtTagSet kReopened{tgA,    tgB, tgBig,   tgCode,   tgEm,     tgFont, tgI,
                              tgNobr, tgS, tgSmall, tgStrike, tgStrong, tgTt,   tgU};
constexpr THtTagSet kClosedWithinTable{tgTr, tgTd, tgTh, tgP};

constexpr THtTagSet kRepaired{tgTable, tgThead, tgTbody};
constexpr THtTagSet kTable{tgTable};
constexpr THtTagSet kRow{tgTr};

// A repair that puts an element between this node and the item is made only where the item will then be taken:
// at the depth limit it would come straight back.
bool MayNest(const THtmlParser& parser) { return parser.FStackLevel < kMaxLevel; }

}  // namespace

THtNode* THtmlNode::InternalParse(THtmlParser& parser) {
  if (parser.FStackLevel++ == 0) parser.FTop = this;
  if (!parser.RepeatCurrent) {
    if (!parser.Tag.Empty() && FTag.Empty()) AssignTag(parser.TagRec());
    TagType = parser.TagType;
    ParseAttributes(parser);
    if (parser.TagClosed) return nullptr;
  }
  return ParseContent(parser);
}

THtNode* THtmlNode::ParseContent(THtmlParser& parser) {
  TFrame frame;
  while (parser.NextItem()) {
    if (!parser.IsCloseTag) {
      if (ParseStartTag(parser, frame)) return frame.Result;
    } else if (parser.Tag == FTag && (this != parser.FTop || parser.FTopCloses)) {
      for (int32_t i = parser.IncorrectStack.GetCount(); i-- > 0;)
        if (parser.IncorrectStack.Get<THtNode>(i)->HasAsParent(this)) parser.IncorrectStack.Delete(i);
      LeaveTable();
      break;
    } else if (THtNode* closed = FindClosed(parser)) {
      frame.Result = closed;
      break;
    }
  }
  AfterParse();
  return frame.Result;
}

// Recurses into a child. True: this frame leaves as well, with the result.
bool THtmlNode::Descend(THtmlNode* child, THtmlParser& parser, THtNode*& result) {
  result = child->InternalParse(parser);
  --parser.FStackLevel;
  if (!result) return false;
  // Repairs skip a frame now and then, so the node that goes on may be any ancestor, not only the parent.
  if (result->GetParent() == this || result->HasAsParent(this)) {
    result = nullptr;
    return false;
  }
  AfterParse();
  return true;
}

// Takes anything but a close tag. True: this frame leaves with the result.
bool THtmlNode::ParseStartTag(THtmlParser& parser, TFrame& frame) {
  if (parser.IncorrectStack.GetCount() > 0) {
    parser.RepeatCurrent = true;
    THtmlNode* child = Reopen(parser);
    return child && Descend(child, parser, frame.Result);
  }
  if (parser.TagType != htIdent && parser.TagType != htString) {
    AddSpecial(parser);
    return false;
  }
  if (!parser.Tag.Empty()) {
    const THtTagId id = parser.TagRec().Id;
    if (kVoidTags.Contains(id)) {
      parser.TagClosed = true;
    } else {
      THtmlNode* child = nullptr;
      if (kRepaired.Contains(FTagId) && RepairTable(parser, child)) {
        parser.RepeatCurrent = true;
        return Descend(child, parser, frame.Result);
      }
      THtmlNode* cell = FTagId == tgTr && kLastCellContent.Contains(id) ? LastCell(frame) : nullptr;
      if (cell && MayNest(parser)) {
        parser.RepeatCurrent = true;
        frame.Result = cell->InternalParse(parser);
        --parser.FStackLevel;
        return false;
      }
      if (THtNode* closed = CheckOrder(parser)) {
        parser.RepeatCurrent = true;
        frame.Result = closed;
        return true;
      }
    }
  }
  THtmlNode* child = AddItemChild(parser);
  if (!child) return false;
  if (parser.Tag.Empty()) {
    child->SetContent(parser.Value);
    return false;
  }
  child->AssignTag(parser.TagRec());
  return Descend(child, parser, frame.Result);
}

// An inline element that was closed with its container is built again for the item.
THtmlNode* THtmlNode::Reopen(THtmlParser& parser) {
  const int32_t last = parser.IncorrectStack.GetCount() - 1;
  const auto* element = parser.IncorrectStack.Get<THtNode>(last);
  parser.IncorrectStack.Delete(last);
  THtmlNode* child = AddImplied(element->GetTag(), parser);
  if (child) child->CopyAttributesFrom(element);
  return child;
}

THtmlNode* THtmlNode::AddImplied(const hstring& tag, THtmlParser& parser) {
  const THtNodeClass* nodeClass = GetElementClass(tag, parser.GlobalRoot);
  if (!nodeClass) return nullptr;
  THtNode* child = InternalAddChild(nodeClass);
  child->SetTag(tag);
  return static_cast<THtmlNode*>(child);
}

// Scripts, styles, comments, directives and CDATA sections; anything else is dropped.
void THtmlNode::AddSpecial(THtmlParser& parser) {
  static constexpr hstring kComment = u"!"_hs;
  static constexpr hstring kDirective = u"?"_hs;
  const bool element = (parser.TagType == htScript || parser.TagType == htStyle) && !parser.Tag.Empty();
  if (!element && parser.TagType != htComment && parser.TagType != htDirective && parser.TagType != htCData)
    return;
  const hstring& tag = element ? parser.Tag : parser.TagType == htDirective ? kDirective : kComment;
  const THtNodeClass* nodeClass = GetElementClass(tag, parser.GlobalRoot);
  if (!nodeClass) return;
  auto* child = static_cast<THtmlNode*>(InternalAddChild(nodeClass));
  child->TakeItem(parser);
  if (parser.TagType != htCData) child->ParseAttributes(parser);
}

// Becomes what an item without children says.
void THtmlNode::TakeItem(const THtmlParser& parser) {
  TagType = parser.TagType;
  FContent = parser.Value;
  if (TagType == htScript || TagType == htStyle) AssignTag(parser.TagRec());
  if (TagType == htComment) SetTag(u"!"_hs);
  if (TagType == htDirective) SetTag(u"?"_hs);
}

// A cell without a row, or a paragraph without a cell: the child to go on in.
bool THtmlNode::RepairTable(THtmlParser& parser, THtmlNode*& child) {
  const THtTagId id = parser.TagRec().Id;
  if (kCells.Contains(id)) {
    child = AddImplied(u"tr"_hs, parser);
  } else if (id == tgP && MayNest(parser)) {
    THtmlNode* row = AddImplied(u"tr"_hs, parser);
    child = row ? row->AddImplied(u"td"_hs, parser) : nullptr;
  }
  return child != nullptr;
}

// The last cell of a row. Children that were looked at once are not looked at again.
THtmlNode* THtmlNode::LastCell(TFrame& frame) const {
  if (GetCount() < frame.Scanned) frame.Scanned = 0;
  int32_t i = GetCount();
  while (i-- > frame.Scanned && !kCells.Contains(GetNode(i)->FTagId)) {}
  if (i >= frame.Scanned || frame.Scanned == 0) frame.LastCell = i;
  frame.Scanned = GetCount();
  return frame.LastCell >= 0 ? GetNode(frame.LastCell) : nullptr;
}

// The node up to which the item closes open elements, or null.
THtNode* THtmlNode::CheckOrder(THtmlParser& parser) {
  const THtTagId id = parser.TagRec().Id;
  THtNode* closed = nullptr;
  if (id == tgTr && FTagId == tgTr)
    closed = FloatUpOver(kRow, true, parser.Root);
  else if (FTagId == tgTr && kLastCellContent.Contains(id))
    closed = nullptr;
  else if (id == tgTd)
    closed = FloatUpTo(kRow, parser.Root);
  else
    closed = CheckTagOrder(parser.Tag, parser.Root);
  if (!closed && parser.FStackLevel > kMaxLevel) closed = FParent;
  return WithinReach(closed, parser);
}

// A node above what is parsed into cannot be closed by this parse: all open elements below the top are closed
// instead. Null when that is none.
THtNode* THtmlNode::WithinReach(THtNode* node, const THtmlParser& parser) const {
  if (!node || node->HasAsParent(parser.FTop)) return node;
  const THtNode* below = this;
  if (below == parser.FTop) return nullptr;
  while (below->GetParent() != parser.FTop) below = below->GetParent();
  return const_cast<THtNode*>(below);
}

// A new child for a text or tag; null when such nodes are not wanted.
THtmlNode* THtmlNode::AddItemChild(THtmlParser& parser) {
  const THtNodeClass* nodeClass = GetElementClass(parser.Tag, parser.GlobalRoot);
  if (!nodeClass) return nullptr;
  THtNode* table = FParent;
  const bool beforeTable = FTagId == tgTbody && parser.TagClosed && !parser.Tag.Empty() &&
                           parser.TagRec().Id != tgTr && table && table->GetParent();
  if (!beforeTable) return static_cast<THtmlNode*>(InternalAddChild(nodeClass));
  THtNode* child = table->GetParent()->InternalAddChild(nodeClass);
  table->GetParent()->GetNodes()->MoveLastBefore(table);
  return static_cast<THtmlNode*>(child);
}

THtNode* THtmlNode::FloatUpTo(const THtTagSet& tags, const THtNode* root) {
  THtNode* below = nullptr;
  for (THtmlNode* node = this; node && node->FParent != node && node != root; node = node->GetParent()) {
    if (tags.Contains(node->FTagId)) return below;
    below = node;
  }
  return nullptr;
}

THtNode* THtmlNode::FloatUpOver(const THtTagSet& tags, bool crossCells, const THtNode* root) {
  for (THtmlNode* node = this; node && node->FParent != node && node != root; node = node->GetParent()) {
    if (!crossCells && kCellBorders.Contains(node->FTagId)) return nullptr;
    if (tags.Contains(node->FTagId)) return node;
  }
  return nullptr;
}

THtNode* THtmlNode::CheckTagOrder(const hstring& tag, THtmlNode* root) {
  const THtTagId id = HtFindTagId(tag);
  if (FTagId == tgTr && !kRowContent.Contains(id)) return FloatUpOver(kTable, true, root);
  if (tag[0] == u't') {
    if (id == tgThead || id == tgTbody) return FloatUpTo(kTable, root);
    if (id == tgTr) {
      THtNode* closed = FloatUpTo(kRowGroups, root);
      return closed || kRowGroups.Contains(FTagId) ? closed : FloatUpOver(kRow, true, root);
    }
    if (kCells.Contains(id)) return FloatUpTo(kRow, root);
    return id == tgTable && FTagId == tgTable ? FloatUpOver(kTable, true, root) : nullptr;
  }
  switch (id) {
    case tgLi: return FloatUpTo({tgUl, tgOl}, root);
    case tgDt: return FloatUpTo({tgDl}, root);
    case tgDd: {
      THtNode* closed = FloatUpTo({tgDl}, root);
      return closed ? closed : FloatUpOver({tgDd}, false, root);
    }
    case tgBody: return FloatUpOver({tgHead}, false, root);
    case tgA: return FloatUpOver({tgA}, false, root);
    default: break;
  }
  if (FTagId == tgHead && !kHeadContent.Contains(id)) return FloatUpOver({tgHead}, false, root);
  return kParagraphEnders.Contains(id) ? FloatUpOver({tgP}, false, root) : nullptr;
}

// The open element that a close tag closes; null for a stray one. Inline elements that it closes on the way are
// noted for reopening.
THtNode* THtmlNode::FindClosed(THtmlParser& parser) {
  THtObjectList& stack = parser.IncorrectStack;
  const THtTagId id = parser.TagRec().Id;
  for (int32_t i = stack.GetCount(); i-- > 0;)
    if (stack.Get<THtNode>(i)->GetTag() == parser.Tag) stack.Delete(i);
  const int32_t remembered = stack.GetCount();

  // Without FTopCloses the walk ends below the top; with it, at the top.
  const THtNode* end = parser.FTopCloses ? parser.FTop->GetParent() : parser.FTop;
  for (THtmlNode* node = this; node && node != end; node = node->GetParent()) {
    if (kClosedWithinTable.Contains(id) && node->FTagId == tgTable) break;
    if (!kTableParts.Contains(id) && kTableParts.Contains(node->FTagId)) break;
    if (id == tgSpan && node->FTagId == tgDiv) break;
    if (node->FTagId == tgBody || node->FTagId == tgHtml) break;
    for (THtTagId part : {tgTr, tgTbody})
      if (id == tgTable && node != end && node->FTagId == part && node->FParent) node = node->GetParent();
    if (node == end) break;
    if (node->FTag == parser.Tag) return node;
    if (kReopened.Contains(node->FTagId)) stack.Add(node);
  }
  while (stack.GetCount() > remembered) stack.Delete(stack.GetCount() - 1);
  return nullptr;
}

// An element that stands in a table or row where it does not belong goes behind the table when it closes.
void THtmlNode::LeaveTable() {
  if (!FParent) return;
  if (FParent->GetTagId() == tgTable && FParent->GetParent() && !kTableContent.Contains(FTagId))
    return MoveTo(FParent->GetParent());
  if (FParent->GetTagId() != tgTr || kCells.Contains(FTagId)) return;
  THtNode* table = UpTo(u"table"_hs);
  if (table && table->GetParent()) MoveTo(table->GetParent());
}

void THtmlNode::MoveTo(THtNode* parent) {
  FParent->GetNodes()->RemoveItem(this);
  FParent = parent;
  parent->GetNodes()->Add(this);
}

}  // namespace ht
