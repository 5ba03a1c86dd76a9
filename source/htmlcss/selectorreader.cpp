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
  const int32_t startPos = Token().StartPos;
  FEndPos = Token().EndPos;
  std::unique_ptr<TCSSSelector> current;
  for (; !AtEnd(); SkipSpaces()) {
    current = std::make_unique<TCSSSelector>(std::move(current));
    ReadCombinator(*current);
    ReadTag(*current);
    ReadRest(*current);
    // Closers that stand alone must not stop the scan.
    if (Is(ctClosePar) || Is(ctCloseBr) || Is(ctSlash)) Next();
  }
  if (FBroken) return nullptr;
  current->StartPos = startPos;
  current->EndPos = FEndPos;
  current->DetermineTestProc();
  return current;
}

// Moves to the next token that counts, spaces included.
void THtSelectorReader::Next() {
  while (FTokenizer.Scan()) {
    switch (Token().CType) {
      case ctUnknown:
      case ctComment:
      case ctSlash: continue;
      case ctBlockStart:
      case ctComma: FAtEnd = true; return;
      case ctSemicolon:
      case ctBlockEnd:
      case ctURI:
      case ctCDO:
      case ctCDC: FAtEnd = FBroken = true; return;
      case ctSpace: return;
      default: FEndPos = Token().EndPos; return;
    }
  }
  FAtEnd = true;
}

void THtSelectorReader::SkipSpaces() {
  while (Is(ctSpace)) Next();
}

// Moves behind the next token of the type, or to the end.
void THtSelectorReader::SkipBehind(TCSSTokenType type) {
  while (!AtEnd() && !Is(type)) Next();
  if (!AtEnd()) Next();
}

void THtSelectorReader::ReadCombinator(TCSSSelector& compound) {
  if (!Is(ctDelimiter) || IsChar(u'.') || IsChar(u'*')) return;
  if (IsChar(u'+'))
    compound.Position = spSibling;
  else if (IsChar(u'>'))
    compound.Position = spChild;
  else if (IsChar(u'~'))
    compound.Position = spAllSiblings;
  Next();
  SkipSpaces();
}

void THtSelectorReader::ReadTag(TCSSSelector& compound) {
  if (AtEnd() || !(IsTagType(Token().CType) || IsChar(u'*'))) return;
  compound.Tag = FTokenizer.NewName();
  hLower(compound.Tag);
  compound.Universal = IsChar(u'*');
  Next();
}

void THtSelectorReader::ReadRest(TCSSSelector& compound) {
  std::u16string condition;
  while (!AtEnd() && ReadPart(compound, condition, 0)) {}
  compound.Condition = condition;
}

// Reads one class, id, pseudo-class or condition. False at any other token, which stays.
bool THtSelectorReader::ReadPart(TCSSSelector& compound, std::u16string& condition, int depth) {
  switch (Token().CType) {
    case ctColon: ReadPseudo(compound, depth); return true;
    case ctHash:
      compound.ID = FTokenizer.NewName();
      Next();
      return true;
    case ctFunction:
    case ctOpenPar: ReadCondition(condition, ctClosePar); return true;
    case ctOpenBr:
      if (!condition.empty()) condition += kConditionSeparator;
      ReadCondition(condition, ctCloseBr);
      return true;
    default:
      if (!IsChar(u'.')) return false;
      Next();
      if (!Is(ctIdent)) return true;
      compound.AddClass(FTokenizer.NewName());
      Next();
      return true;
  }
}

// Appends all texts behind the current token, up to the closing one, which is stepped over.
void THtSelectorReader::ReadCondition(std::u16string& condition, TCSSTokenType end) {
  for (Next(); !AtEnd() && !Is(end); Next()) condition.append(FTokenizer.Text());
  if (!AtEnd()) Next();
}

void THtSelectorReader::ReadPseudo(TCSSSelector& compound, int depth) {
  Next();
  if (Is(ctColon)) Next();
  if (AtEnd()) return;
  const hstring name = FTokenizer.NewName();
  Next();
  if (Is(ctOpenPar))
    ReadArgument(compound, name, depth);
  else
    compound.AddPseudo(name);
}

void THtSelectorReader::ReadArgument(TCSSSelector& compound, const hstring& name, int depth) {
  Next();
  SkipSpaces();
  if (name == u"not" && !AtEnd() && !Is(ctClosePar)) {
    if (depth < kDeepestNegation) return ReadNegation(compound, depth + 1);
  } else if (AtEnd() || Is(ctClosePar)) {
    compound.AddPseudo(name);
  } else {
    const TCSSToken argument(Token(), FTokenizer.NewName());
    compound.AddPseudo(name, &argument);
  }
  SkipBehind(ctClosePar);
}

// The argument of `:not()`: everything but a tag.
void THtSelectorReader::ReadNegation(TCSSSelector& compound, int depth) {
  TCSSSelector& negation = *compound.Nots.emplace_back(std::make_unique<TCSSSelector>());
  std::u16string condition;
  while (!AtEnd() && !Is(ctClosePar) && !Is(ctCloseBr))
    if (!ReadPart(negation, condition, depth)) Next();
  if (!AtEnd()) Next();
  negation.Condition = condition;
}

}  // namespace ht
