#pragma once

#include <vector>

#include "htmlpars/node.h"

namespace ht {

// A small path language over the trees of this library, in the shape of XPath:
//
//   path       an optional "/", an optional "./", and steps separated by "/"; an empty step ("//") makes the step
//              behind it search all descendants
//   step       a tag, "*" (all children, text too), ".." (the parent), "current" (a node given with the call),
//              "text()" (text children) or "@name"; then optionally conditions in one pair of brackets
//   condition  a position, "last()", or comparisons joined by "and", "or", "and not": [@id='x' and n>3 or not b]
//
// Positions count from 0, over the siblings that have a tag. Comparisons are joined from left to right without
// precedence. An operand is a quoted text, a number, "@name", "text()" or a path from the node tested; without an
// operator and a right side it is asked for existence. "<" and its kin compare whole numbers and are false for
// anything else. Whatever makes no sense finds nothing; no path is rejected, but one of more than kMaxTreeDepth steps may
// raise EHtException.

HT_ENUM(TXConditionType, uint8_t, ctEQ, ctNotEQ, ctLess, ctAbove, ctLessEQ, ctAboveEQ, ctIndex);
HT_ENUM(TXBoolOp, uint8_t, boAnd, boOr, boNot);
HT_ENUM(TXPathNodeKind, uint8_t, xkTag, xkAttr, xkAsterisk, xkParent, xkCurrent);

/// One comparison of a step.
struct TXCondition {
  hstring left, right;
  bool leftstr = false, rightstr = false;    // a literal
  bool leftattr = false, rightattr = false;  // the name of an attribute
  TXConditionType ctype = ctEQ;
  int32_t index = 0;    // of ctIndex; -1 is "last()"
  TXBoolOp Op = boAnd;  // joins this condition with the result so far
};

/// One step of a path.
struct TXPathNode {
  TXPathNodeKind Kind = xkTag;
  bool All = false;  // among all descendants
  hstring Tag;       // of the element or attribute; empty for "text()"
  std::vector<TXCondition> Conditions;
  TXPathNode* Next = nullptr;
  TXPathProcessor* Processor = nullptr;
};
using PXPathNode = TXPathNode*;

/// A compiled path, for one walk by THtNode's operations.
class TXPathProcessor {
 public:
  explicit TXPathProcessor(const hstring& path);
  TXPathProcessor(const TXPathProcessor&) = delete;
  TXPathProcessor& operator=(const TXPathProcessor&) = delete;

  /// The path began with "/".
  bool Root = false;
  /// The result of a value walk.
  hstring Value;
  /// The steps in path order.
  std::vector<TXPathNode> Nodes;
  /// What the step "current" stands for.
  THtNode* Current = nullptr;

  const TXPathNode* FirstStep() const { return Nodes.empty() ? nullptr : &Nodes.front(); }
  /// Reads one step at the start of `rest` and takes it off.
  static void ExtractPathPart(std::u16string_view& rest, TXPathNode& step);
  /// Reads what stands between the brackets of a step.
  static void ParseConditions(const hstring& text, TXPathNode& step);

  /// The child under test, its position and the last child of its parent that has a tag: a walk over the children
  /// knows them, so that no test has to count siblings again.
  struct TChildTest {
    const THtNode* Child = nullptr;
    int32_t Index = 0;
    const THtNode* LastTagged = nullptr;
  };
  TChildTest Test;
};

}  // namespace ht
