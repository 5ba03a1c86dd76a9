#include "htmlcss/cssparser.h"

#include "htmlcss/mediareader.h"
#include "htmlpars/lower.h"

namespace ht {

namespace {

// A sheet's objects take about this many bytes for each character; a short text does without an arena.
constexpr size_t kBytesPerChar = 10;
constexpr size_t kShortText = 1024;

}  // namespace

void TCSSParser::RaiseUnknown() { throw ECSSParserError(u"Unknown token type"_hs); }

TCSSParser::TCSSParser(const hstring& text, bool parseNumbers) : ParseNumbers(parseNumbers) {
  if (text.Size() > kShortText) FArena.emplace(text.Size() * kBytesPerChar);
  if (!text.Empty()) Tokenizer = std::make_unique<TCSSTokenizer>(text, parseNumbers);
}

bool TCSSParser::NextSection() {
  if (!Tokenizer || !NextToken()) return false;
  ClearList();
  Section = std::make_unique<TCSSSection>(true);
  Section->BlockStartPos = Token().StartPos;
  ReadSelectors();
  TCSSSelectors& selectors = Section->Selectors;
  if (selectors.GetCount() > 0) selectors.EndPos = selectors.GetSelector(selectors.GetCount() - 1)->EndPos;
  if (!Eof() && Is(ctBlockStart)) ReadSectionValues();
  Section->BlockEndPos = Token().EndPos;
  Section->MediaSet = MediaSet ? MediaSet : TCSSMediaSet::Default();
  Section->Compile();
  return !Eof() || selectors.GetCount() > 0 || !Section->Values.empty();
}

// Up to the "{" of a rule, or to the end.
void TCSSParser::ReadSelectors() {
  while (!Eof()) {
    switch (Token().CType) {
      case ctIdent:
      case ctHash:
      case ctNumber:
      case ctPercentage:
      case ctDimension:
      case ctFunction:
      case ctColon:
      case ctOpenBr:
      case ctSlash: AddSelector(); break;
      case ctDelimiter:
        if (IsChar(u'*') || IsChar(u'.'))
          AddSelector();
        else
          NextSolidToken();
        break;
      case ctAtKeyword: AddAtKeyword(); break;
      case ctString:
      case ctURI:
      case ctCDO:
      case ctCDC:
      case ctSemicolon:
      case ctOpenPar:
      case ctClosePar:
      case ctCloseBr: SkipSection(); break;
      case ctComment:
      case ctComma:
      case ctSpace: NextSolidToken(); break;
      case ctBlockStart: return;
      case ctBlockEnd: CloseBlock(); break;
      default: RaiseUnknown();
    }
  }
}

// The "}" of `@media` or `@keyframes`.
void TCSSParser::CloseBlock() {
  if (MediaSet && MediaSet->Medias.Empty()) MediaSet->Medias = {cmAll};
  MediaSet = nullptr;
  KeyFrameName.Clear();
  NextSolidToken();
}

void TCSSParser::SkipSection() {
  while (!Is(ctBlockEnd) && NextSolidToken()) {}
  NextSolidToken();
}

void TCSSParser::ParseValue(TCSSTokens& tokens) {
  while (Tokenizer && NextToken()) tokens.Append(TakeToken());
}

// Steps over tokens up to behind one of the type. The last word or string on the way is the name.
void TCSSParser::ReadName(hstring& name, TCSSTokenType end) {
  while (NextSolidToken() && !Is(end))
    if (Is(ctIdent) || Is(ctString)) name = Tokenizer->NewName();
  NextSolidToken();
}

void TCSSParser::AddAtKeyword() {
  const hstring& name = Tokenizer->NewName();
  const auto is = [&name](std::u16string_view keyword) { return HtSameAscii(name, keyword); };
  if (is(u"@media")) {
    AddMedia();
  } else if (is(u"@font-face") || is(u"@page")) {
    if (is(u"@font-face")) Section->FontFace = true;
    AddSelector();
  } else if (is(u"@keyframes")) {
    ReadName(KeyFrameName, ctBlockStart);
  } else if (is(u"@import")) {
    AddImport();
  } else if (is(u"@charset")) {
    ReadName(Charset, ctSemicolon);
  } else {
    SkipSection();
  }
}

void TCSSParser::AddImport() {
  if (!NextSolidToken()) return;
  if (!Is(ctSemicolon)) {
    TCSSImport& import = Imports.emplace_back();
    import.Address = TakeToken();
    while (NextSolidToken() && !Is(ctSemicolon))
      if (Is(ctIdent) || Is(ctString) || Is(ctFunction)) import.Media.Append(TakeToken());
  }
  NextSolidToken();
}

void TCSSParser::AddMedia() {
  if (!MediaSets) MediaSets = std::make_unique<THtObjectList>(true);
  MediaSet = new TCSSMediaSet;
  MediaSets->Add(MediaSet);
  THtMediaReader(*Tokenizer, *MediaSet).Read();
  NextSolidToken();
}

}  // namespace ht
