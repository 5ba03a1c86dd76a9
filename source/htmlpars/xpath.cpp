#include "htmlpars/xpath.h"

#include "htmlpars/lower.h"
#include "htmlpars/stringparser.h"
#include "htruntime/numformat.h"

namespace ht {

namespace {

constexpr bool IsQuote(char16_t c) { return c == u'"' || c == u'\''; }

// Follows quotes and brackets, which hide separators.
class TNesting {
 public:
  // Takes the next character; true outside of quotes.
  bool Take(char16_t c) {
    if (IsQuote(c)) FQuoted = !FQuoted;
    if (FQuoted) return false;
    FDepth += (c == u'[') - (c == u']');
    return true;
  }
  int Depth() const { return FDepth; }

 private:
  bool FQuoted = false;
  int FDepth = 0;
};

bool IsWholeNumber(const hstring& text, int32_t& number) {
  return HtIsDigit(text[0]) && HtTryStrToInt(text, number);
}

// No element name begins like a number, so an operand of a comparison that does is a literal.
bool StartsNumber(std::u16string_view text) {
  if (text.size() > 1 && (text[0] == u'-' || text[0] == u'+' || text[0] == u'.')) text.remove_prefix(1);
  return !text.empty() && HtIsDigit(text[0]);
}

void ReadOperand(TStringParser& parser, hstring& operand, bool& literal, bool& attribute) {
  const char16_t* start = parser.p;
  TNesting nesting;
  for (; !parser.Empty(); ++parser.p) {
    static constexpr TCharSet kStops(u"!<=>");
    const char16_t c = *parser.p;
    if (nesting.Take(c) && nesting.Depth() == 0 && (c < 33 || kStops.Contains(c))) break;
  }
  std::u16string_view text = HtTrim({start, static_cast<size_t>(parser.p - start)});
  literal = !text.empty() && IsQuote(text[0]);
  attribute = !text.empty() && text[0] == u'@';
  if (attribute || literal) text.remove_prefix(1);
  if (literal && !text.empty()) text.remove_suffix(1);
  operand = text;
}

// The word in front of a comparison, if it is one; its first letter is in lower case.
TXBoolOp ReadBoolOp(TStringParser& parser) {
  const auto take = [&parser](std::u16string_view word) {
    if (*parser.p != word[0] || !parser.StartsWith(word)) return false;
    parser.Skip(static_cast<int32_t>(word.size()));
    parser.SkipBlanks();
    return true;
  };
  if (take(u"or ")) return boOr;
  take(u"and ");
  return take(u"not ") ? boNot : boAnd;
}

// False when there is no operator.
bool ReadOperator(TStringParser& parser, TXConditionType& type) {
  const char16_t c = parser.GetCurrent();
  if (c != u'=' && c != u'!' && c != u'<' && c != u'>') return false;
  const bool orEqual = parser.Next() == u'=';
  if (c == u'!') {
    parser.Next();
    type = ctNotEQ;
  } else if (c == u'=') {
    type = ctEQ;
  } else {
    if (orEqual) parser.Next();
    type = c == u'<' ? (orEqual ? ctLessEQ : ctLess) : (orEqual ? ctAboveEQ : ctAbove);
  }
  return true;
}

}  // namespace

TXPathProcessor::TXPathProcessor(const hstring& path) {
  std::u16string_view rest = path;
  Root = rest.starts_with(u'/');
  if (Root) rest.remove_prefix(1);
  if (rest.starts_with(u"./")) rest.remove_prefix(2);
  while (!rest.empty()) ExtractPathPart(rest, Nodes.emplace_back());
  for (size_t i = 0; i < Nodes.size(); ++i) {
    Nodes[i].Processor = this;
    if (i + 1 < Nodes.size()) Nodes[i].Next = &Nodes[i + 1];
  }
}

void TXPathProcessor::ExtractPathPart(std::u16string_view& rest, TXPathNode& step) {
  step.All = rest.starts_with(u'/');
  if (step.All) rest.remove_prefix(1);
  size_t stop = 0;
  size_t bracket = rest.npos;
  for (TNesting nesting; stop < rest.size(); ++stop) {
    const bool outside = nesting.Take(rest[stop]);
    if (outside && rest[stop] == u'/' && nesting.Depth() < 1) break;
    if (outside && rest[stop] == u'[' && bracket == rest.npos) bracket = stop;
  }
  step.Tag = rest.substr(0, std::min(bracket, stop));
  if (bracket != rest.npos && stop - bracket > 1)
    ParseConditions(rest.substr(bracket + 1, stop - bracket - 2), step);
  rest.remove_prefix(std::min(stop + 1, rest.size()));

  if (step.Tag == u"*") {
    step.Kind = xkAsterisk;
  } else if (step.Tag == u"..") {
    step.Kind = xkParent;
  } else if (HtSameAscii(step.Tag, u"current")) {
    step.Kind = xkCurrent;
  } else if (step.Tag == u"text()") {
    step.Tag.Clear();
  } else if (step.Tag[0] == u'@') {
    step.Kind = xkAttr;
    step.Tag = step.Tag.View().substr(1);
  }
}

void TXPathProcessor::ParseConditions(const hstring& text, TXPathNode& step) {
  TXCondition position;
  position.ctype = ctIndex;
  position.index = -1;
  if (IsWholeNumber(text, position.index) || HtSameAscii(text, u"last()")) {
    step.Conditions.push_back(position);
    return;
  }
  for (TStringParser parser(text); !parser.Empty();) {
    TXCondition condition;
    parser.SkipBlanks();
    condition.Op = ReadBoolOp(parser);
    ReadOperand(parser, condition.left, condition.leftstr, condition.leftattr);
    parser.SkipBlanks();
    if (ReadOperator(parser, condition.ctype)) {
      parser.SkipBlanks();
      ReadOperand(parser, condition.right, condition.rightstr, condition.rightattr);
      parser.SkipBlanks();
      condition.leftstr |= !condition.leftattr && StartsNumber(condition.left);
      condition.rightstr |= !condition.rightattr && StartsNumber(condition.right);
    }
    step.Conditions.push_back(condition);
  }
}

// The walks

TIntf<IHtNodeList> THtNode::XPath(const hstring& path, bool firstOnly, THtNode* current) {
  auto* list = new THtNodeList(false, true);
  TIntf<IHtNodeList> result(list);
  TXPathProcessor processor(path);
  processor.Current = current ? current : this;
  if (const TXPathNode* step = processor.FirstStep()) InternalXPath(*step, list, firstOnly);
  return result;
}

void THtNode::XPath(const hstring& path, const THtNodeProcRef& proc) {
  TXPathProcessor processor(path);
  processor.Current = this;
  if (const TXPathNode* step = processor.FirstStep())
    (processor.Root ? Root() : this)->InternalXPathRef(*step, proc);
}

hstring THtNode::XPathValue(const hstring& path, THtNode* current) {
  TXPathProcessor processor(path);
  processor.Current = current ? current : this;
  if (const TXPathNode* step = processor.FirstStep())
    (processor.Root ? Root() : this)->InternalXPath(*step, nullptr, false);
  return processor.Value;
}

namespace {

hstring OperandValue(THtNode& node, const hstring& operand, bool literal, bool attribute, THtNode* current) {
  if (literal) return operand;
  if (attribute) return node.GetAttribute(operand);
  return operand == u"text()" ? node.TextContent() : node.XPathValue(operand, current);
}

bool Compare(TXConditionType type, const hstring& left, const hstring& right) {
  if (type == ctEQ) return left == right;
  if (type == ctNotEQ) return left != right;
  int32_t a, b;
  if (!HtTryStrToInt(left, a) || !HtTryStrToInt(right, b)) return false;
  switch (type) {
    case ctLess: return a < b;
    case ctAbove: return a > b;
    case ctLessEQ: return a <= b;
    default: return a >= b;
  }
}

bool Holds(THtNode& node, const TXCondition& condition, const TXPathProcessor& processor) {
  const hstring& left = condition.left;
  if (condition.ctype == ctIndex) {
    if (!node.GetParent()) return false;
    const TXPathProcessor::TChildTest& test = processor.Test;
    const bool known = test.Child == &node;
    if (condition.index < 0) return (known ? test.LastTagged : node.GetParent()->LastChildTag()) == &node;
    return (known ? test.Index : node.ChildIndex()) == condition.index;
  }
  if (!condition.leftstr && condition.right.Empty()) {
    if (condition.leftattr) return node.HasAttribute(left);
    if (left == u"text()") return !node.TextContent().Empty();
    return node.XPath(left, true, nullptr)->GetCount() > 0;
  }
  const hstring value = OperandValue(node, left, condition.leftstr, condition.leftattr, processor.Current);
  if (condition.right.Empty()) return !value.Empty();
  return Compare(
      condition.ctype, value,
      OperandValue(node, condition.right, condition.rightstr, condition.rightattr, processor.Current));
}

}  // namespace

bool THtNode::EvaluateCondition(const TXPathNode& step) {
  TTreeDepthGuard guard;
  bool result = true;
  for (const TXCondition& condition : step.Conditions) {
    const bool value = Holds(*this, condition, *step.Processor);
    switch (condition.Op) {
      case boAnd: result = result && value; break;
      case boOr: result = result || value; break;
      case boNot: result = result && !value; break;
    }
  }
  return result;
}

namespace {

// Goes on behind a step that names one node.
void WalkFrom(THtNode* node, const TXPathNode& step, THtNodeList* list, bool firstOnly) {
  if (!node) return;
  if (step.Next)
    node->InternalXPath(*step.Next, list, firstOnly);
  else if (list)
    list->Add(node);
  else
    step.Processor->Value = node->TextContent();
}

bool MeetsStep(THtNode* child, const TXPathNode& step, const TXPathProcessor::TChildTest& test) {
  if (step.Kind != xkAsterisk && step.Tag != child->GetTag()) return false;
  if (step.Conditions.empty()) return true;
  step.Processor->Test = test;
  return child->EvaluateCondition(step);
}

}  // namespace

void THtNode::InternalXPath(const TXPathNode& step, THtNodeList* list, bool firstOnly) {
  TTreeDepthGuard guard;
  TXPathProcessor& processor = *step.Processor;
  switch (step.Kind) {
    case xkAttr:
      if (!list)
        processor.Value = GetAttribute(step.Tag);
      else if (HasAttribute(step.Tag))
        list->Add(this);
      return;
    case xkParent: return WalkFrom(FParent, step, list, firstOnly);
    case xkCurrent: return WalkFrom(processor.Current, step, list, firstOnly);
    default: break;
  }
  TXPathProcessor::TChildTest test{nullptr, 0, step.Conditions.empty() ? nullptr : LastChildTag()};
  for (THtNode* child = FirstChild(); child; child = child->NextSibling()) {
    test.Child = child;
    if (MeetsStep(child, step, test)) {
      if (step.Next) {
        child->InternalXPath(*step.Next, list, firstOnly);
      } else if (list) {
        list->Add(child);
        if (firstOnly) return;
      } else {
        processor.Value = child->TextContent();
        if (step.All) child->InternalXPath(step, list, firstOnly);
        return;
      }
    }
    test.Index += !child->GetTag().Empty();
    if (step.All) child->InternalXPath(step, list, firstOnly);
    if (firstOnly && list && list->GetCount() > 0) return;
    if (!processor.Value.Empty()) return;
  }
}

bool THtNode::InternalXPathRef(const TXPathNode& step, const THtNodeProcRef& proc) {
  TTreeDepthGuard guard;
  const auto found = [&](THtNode* node) {
    if (step.Next) return node->InternalXPathRef(*step.Next, proc);
    bool goOn = true;
    proc(node, goOn);
    return goOn;
  };
  if (step.Kind == xkAttr) return true;
  if (step.Kind == xkParent) return !FParent || found(FParent);
  TXPathProcessor::TChildTest test{nullptr, 0, step.Conditions.empty() ? nullptr : LastChildTag()};
  for (int32_t i = 0; i < GetCount(); ++i) {
    THtNode* child = FNodes->GetNode(i);
    test.Child = child;
    if (step.All && !child->InternalXPathRef(step, proc)) return false;
    if (MeetsStep(child, step, test) && !found(child)) return false;
    test.Index += !child->GetTag().Empty();
  }
  return true;
}

}  // namespace ht
