#include "htmlcss/selectorreader.h"

#include "htmlpars/lower.h"

namespace ht {

namespace {

constexpr char16_t kConditionSeparator = 1;

bool IsTagType(TCSSTokenType type) {
  switch (type) {
    case ctIdent:
    case ctAtKeyword:
    case ctString:
    case ctNumber:
    case ctPercentage:
    case ctDimension: return true;
    default: return false;
  }
}

}  // namespace

std::unique_ptr<TCSSSelector> THtSelectorReader::Read() {
  auto current = std::make_unique<TCSSSelector>();
  while (!AtEnd()) {
    if (FIndex > 0) current = std::make_unique<TCSSSelector>(std::move(current));
    SkipSpaces();
    ReadCombinator(*current);
    ReadTag(*current);
    ReadRest(*current, 0);
    // Closers that stand alone must not stop the scan.
    if (Is(ctClosePar) || Is(ctCloseBr) || Is(ctSlash)) ++FIndex;
  }
  return current;
}

void THtSelectorReader::SkipSpaces() {
  while (Is(ctSpace)) ++FIndex;
}

// Moves behind the next token of the type, or to the end.
void THtSelectorReader::SkipBehind(TCSSTokenType type) {
  while (!AtEnd() && !Is(type)) ++FIndex;
  if (!AtEnd()) ++FIndex;
}

void THtSelectorReader::ReadCombinator(TCSSSelector& compound) {
  if (!Is(ctDelimiter) || IsText(u".") || IsText(u"*")) return;
  if (IsText(u"+"))
    compound.Position = spSibling;
  else if (IsText(u">"))
    compound.Position = spChild;
  else if (IsText(u"~"))
    compound.Position = spAllSiblings;
  ++FIndex;
  SkipSpaces();
}

void THtSelectorReader::ReadTag(TCSSSelector& compound) {
  if (AtEnd() || !(IsTagType(Token().CType) || IsText(u"*"))) return;
  compound.Tag = std::move(Token().Name);
  hLower(compound.Tag);
  compound.Universal = compound.Tag == u"*";
  ++FIndex;
}

void THtSelectorReader::ReadRest(TCSSSelector& compound, int depth) {
  std::u16string condition;
  while (!AtEnd() && ReadPart(compound, condition, depth)) {}
  compound.Condition = condition;
}

// Reads one class, id, pseudo-class or condition. False at any other token, which stays.
bool THtSelectorReader::ReadPart(TCSSSelector& compound, std::u16string& condition, int depth) {
  switch (Token().CType) {
    case ctColon: ReadPseudo(compound, depth); return true;
    case ctHash:
      compound.ID = std::move(Token().Name);
      ++FIndex;
      return true;
    case ctFunction:
    case ctOpenPar:
      ++FIndex;
      ReadCondition(condition, ctClosePar);
      return true;
    case ctOpenBr:
      ++FIndex;
      if (!condition.empty()) condition += kConditionSeparator;
      ReadCondition(condition, ctCloseBr);
      return true;
    default: break;
  }
  if (!IsText(u".")) return false;
  ++FIndex;
  if (Is(ctIdent)) {
    compound.AddClass(Token().Name);
    ++FIndex;
  }
  return true;
}

// Appends all texts up to the closing token, which is stepped over.
void THtSelectorReader::ReadCondition(std::u16string& condition, TCSSTokenType end) {
  for (; !AtEnd() && !Is(end); ++FIndex) condition.append(Token().Name);
  if (!AtEnd()) ++FIndex;
}

void THtSelectorReader::ReadPseudo(TCSSSelector& compound, int depth) {
  ++FIndex;
  if (Is(ctColon)) ++FIndex;
  if (AtEnd()) return;
  const hstring name = Token().Name;
  ++FIndex;
  if (!Is(ctOpenPar)) {
    compound.AddPseudo(name, nullptr);
    return;
  }
  ++FIndex;
  SkipSpaces();
  if (AtEnd() || Is(ctClosePar)) {
    compound.AddPseudo(name, nullptr);
    SkipBehind(ctClosePar);
  } else if (name != u"not") {
    compound.AddPseudo(name, &Token());
    SkipBehind(ctClosePar);
  } else if (depth < kDeepestNegation) {
    ReadNegation(compound, depth + 1);
  } else {
    SkipBehind(ctClosePar);
  }
}

// The argument of `:not()`: everything but a tag.
void THtSelectorReader::ReadNegation(TCSSSelector& compound, int depth) {
  TCSSSelector& negation = *compound.Nots.emplace_back(std::make_unique<TCSSSelector>());
  std::u16string condition;
  while (!AtEnd() && !Is(ctClosePar) && !Is(ctCloseBr))
    if (!ReadPart(negation, condition, depth)) ++FIndex;
  if (!AtEnd()) ++FIndex;
  negation.Condition = condition;
}

}  // namespace ht
