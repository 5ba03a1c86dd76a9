#include "htmlcss/csstokenizer.h"

#include <array>
#include <cmath>

#include "htmlpars/lower.h"

namespace ht {

namespace {

// What the first character of a token leads to.
enum TFirst : uint8_t {
  kDelimiter,
  kEnd,
  kSpace,
  kIdent,
  kMinus,
  kDigit,
  kDot,
  kSlash,
  kQuote,
  kHash,
  kAt,
  kOpenPar,
  kClosePar,
  kComma,
  kColon,
  kSemicolon,
  kOpenBr,
  kCloseBr,
  kBlockStart,
  kBlockEnd
};

struct TCharTable {
  std::array<TFirst, 256> First{};
  std::array<bool, 256> InIdent{};

  constexpr TCharTable() {
    const auto set = [this](std::u16string_view chars, TFirst first) {
      for (char16_t c : chars) First[c] = first;
    };
    for (char16_t c = 0; c < 256; ++c)
      InIdent[c] = HtIsAsciiLetter(c) || HtIsDigit(c) || c == u'-' || c == u'\\' || c == u'_';
    for (size_t c = 0; c < 256; ++c)
      if (InIdent[c]) First[c] = kIdent;
    set(u"\t\n\r ", kSpace);
    set(u"0123456789", kDigit);
    set(u"\"'", kQuote);
    First[0] = kEnd;
    First[u'-'] = kMinus;
    First[u'.'] = kDot;
    First[u'/'] = kSlash;
    First[u'#'] = kHash;
    First[u'@'] = kAt;
    First[u'('] = kOpenPar;
    First[u')'] = kClosePar;
    First[u','] = kComma;
    First[u':'] = kColon;
    First[u';'] = kSemicolon;
    First[u'['] = kOpenBr;
    First[u']'] = kCloseBr;
    First[u'{'] = kBlockStart;
    First[u'}'] = kBlockEnd;
  }
};
constexpr TCharTable kChars;

bool InIdent(char16_t c) { return c >= 256 || kChars.InIdent[c]; }

constexpr int HexDigit(char16_t c) {
  if (HtIsDigit(c)) return c - u'0';
  const char16_t lower = HtAsciiLower(c);
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

// The unit that the letters at `p` stand for, as far as they have to be looked at; muNone if there is none.
TMeasureUnit UnitAt(const char16_t* p) {
  const char16_t second = HtAsciiLower(p[1]);
  const auto ends = [p] { return !HtIsAsciiLetter(p[2]) && !HtIsDigit(p[2]); };
  switch (HtAsciiLower(*p)) {
    case u'c': return second == u'm' && ends() ? muCM : muNone;
    case u'd': return second == u'e' && p[2] == u'g' ? muDeg : muNone;
    case u'e': return second == u'm' && ends() ? muEM : second == u'x' ? muEX : muNone;
    case u'i': return second == u'n' && ends() ? muIN : muNone;
    case u'm': return second == u'm' ? muMM : second == u's' ? muMS : muNone;
    case u'p': return second == u'c' ? muPC : second == u't' ? muPt : second == u'x' ? muPX : muNone;
    case u'r': return second == u'e' && p[2] == u'm' ? muREM : muNone;
    case u's': return muS;
    case u'v': return second == u'w' ? muVW : muVH;
    default: return muNone;
  }
}

void AddCodePoint(std::u16string& text, uint32_t c) {
  if (c > 0xFFFF) {
    text += static_cast<char16_t>(0xD7C0 + (c >> 10));
    c = 0xDC00 | (c & 0x3FF);
  }
  text += static_cast<char16_t>(c);
}

}  // namespace

TCSSTokenizer::TCSSTokenizer(const hstring& text, bool parseNumbers)
    : Parser(text), ParseNumbers(parseNumbers), FStart(Parser.p), FTexts(text.Size()) {
  Parser.SkipBlanks();
}

bool TCSSTokenizer::NextToken() { return StartToken() && ReadToken(); }

bool TCSSTokenizer::NextSolidToken() { return SkipSpaceAndComments() && StartToken() && ReadToken(); }

bool TCSSTokenizer::StartToken() {
  if (*Parser.p == 0) {
    Eof = true;
    return false;
  }
  Token.StartPos = CursorPos();
  Token.SetColor(0);
  Token.Flags = 0;
  Token.MUnit = muNone;
  return true;
}

bool TCSSTokenizer::ReadToken() {
  const char16_t c = *Parser.p;
  bool result = true;
  switch (c < 256 ? kChars.First[c] : kIdent) {
    case kEnd:
    case kDelimiter: Next(ctDelimiter); break;
    case kSpace: result = ReadSpace(); break;
    case kIdent: ReadIdent(); break;
    case kMinus: HtIsDigit(Parser.p[1]) || Parser.p[1] == u'.' ? ReadNumber() : ReadIdent(); break;
    case kDigit: ReadNumber(); break;
    case kDot: HtIsDigit(Parser.p[1]) ? ReadNumber() : Next(ctDelimiter); break;
    case kSlash: Parser.p[1] == u'*' ? ReadComment() : Next(ctSlash); break;
    case kQuote: ReadString(); break;
    case kHash: ReadHash(); break;
    case kAt: ReadAt(); break;
    case kOpenPar: Next(ctOpenPar); break;
    case kClosePar: Next(ctClosePar); break;
    case kComma: Next(ctComma); break;
    case kColon: Next(ctColon); break;
    case kSemicolon: Next(ctSemicolon); break;
    case kOpenBr: Next(ctOpenBr); break;
    case kCloseBr: Next(ctCloseBr); break;
    case kBlockStart: Next(ctBlockStart); break;
    case kBlockEnd: Next(ctBlockEnd); break;
  }
  Token.EndPos = CursorPos() - 1;
  return result;
}

void TCSSTokenizer::Next(TCSSTokenType type) {
  Token.CType = type;
  Token.Name = TCSSTokenTexts::OfChar(*Parser.p);
  Parser.Next();
}

// False, as NextToken is, for spaces that reach the end.
bool TCSSTokenizer::SkipSpaceAndComments() {
  for (;;) {
    const char16_t* p = Parser.p;
    if (*p < 256 && kChars.First[*p] == kSpace) {
      while (*p < 33 && *p != 0) ++p;
      Parser.p = p;
      Token.CType = ctSpace;
      if (*p == 0) return false;
    } else if (*p == u'/' && p[1] == u'*') {
      SkipComment();
    } else {
      return true;
    }
  }
}

bool TCSSTokenizer::ReadSpace() {
  const char16_t* start = Parser.p;
  while (*Parser.p < 33 && *Parser.p != 0) ++Parser.p;
  Token.CType = ctSpace;
  SetName(start);
  return *Parser.p != 0;
}

// Steps over "/*" and up to behind "*/", or to the end.
void TCSSTokenizer::SkipComment() {
  const char16_t* p = Parser.p + 2;
  while (*p != 0 && !(*p == u'*' && p[1] == u'/')) ++p;
  Parser.p = *p == 0 ? p : p + 2;
}

void TCSSTokenizer::ReadComment() {
  const char16_t* start = Parser.p + 2;
  SkipComment();
  const bool closed = Parser.p - start >= 2 && Parser.p[-1] == u'/' && Parser.p[-2] == u'*';
  Token.CType = ctComment;
  Token.Name = HtPoolText({start, Parser.p - (closed ? 2 : 0)});
}

void TCSSTokenizer::ReadHash() {
  ++Parser.p;
  ReadIdent();
  Token.CType = ctHash;
}

void TCSSTokenizer::ReadAt() {
  ++Parser.p;
  ReadIdent();
  Token.CType = ctAtKeyword;
  Token.Name = hstring::Concat(u"@", Token.Name);
}

void TCSSTokenizer::ReadIdent() {
  Token.SetFloat(0);
  ReadRun(InIdent);
  Token.CType = Token.Name.Empty() ? ctSpace : ctIdent;
  if (*Parser.p == u'(') ReadFunction();
}

void TCSSTokenizer::ReadString() {
  Token.CType = ctString;
  const char16_t quote = *Parser.p++;
  ReadRun([quote](char16_t c) { return c != quote && c != u'\r' && c != 0; });
  if (*Parser.p != 0) ++Parser.p;
}

// Reads the name up to the first character that is not `inside`. A text is built only once there is an escape.
template <class TInside>
void TCSSTokenizer::ReadRun(TInside inside) {
  const char16_t* p = Parser.p;
  const char16_t* run = p;
  while (inside(*p) && *p != u'\\') ++p;
  Parser.p = p;
  if (!inside(*p)) {
    SetName(run);
    return;
  }
  std::u16string text;
  while (inside(*Parser.p)) {
    if (*Parser.p == u'\\') {
      text.append(run, Parser.p++);
      const bool goesOn = ReadEscape(text);
      run = Parser.p;
      if (!goesOn) break;
    } else {
      ++Parser.p;
    }
  }
  text.append(run, Parser.p);
  Token.Name = FTexts.Of(text.data(), text.size());
}

// Behind a backslash: adds what the escape stands for. False at the end of the text.
bool TCSSTokenizer::ReadEscape(std::u16string& text) {
  const char16_t c = *Parser.p;
  switch (c) {
    case 0: return false;
    case u'\r': Parser.p += Parser.p[1] == u'\n' ? 2 : 1; break;
    case u' ':
    case u'"':
    case u'\\':
      text += c;
      ++Parser.p;
      break;
    default: AddCodePoint(text, Escape());
  }
  return true;
}

uint32_t TCSSTokenizer::Escape() {
  const char16_t*& p = Parser.p;
  uint32_t value = 0;
  int digits = 0;
  for (int digit; digits < 6 && (digit = HexDigit(*p)) >= 0; ++digits, ++p)
    value = value << 4 | static_cast<uint32_t>(digit);
  if (digits == 0) return *p == 0 ? 0 : *p++;
  if (*p == u' ') ++p;
  return value > 0x10FFFF ? value & 0xFFFF : value;
}

// At the "(" behind a name. It stays, except that of `url(`.
void TCSSTokenizer::ReadFunction() {
  if (HtSameAscii(Token.Name, u"url")) {
    ReadAddress();
    return;
  }
  Token.CType = ctFunction;
  hLower(Token.Name);
}

void TCSSTokenizer::ReadAddress() {
  Parser.Next();
  Parser.SkipBlanks();
  const char16_t c = *Parser.p;
  if (c == u'"' || c == u'\'') {
    ReadURI();
    Parser.Skipto(u')');
    Parser.Next();
  } else if (c != u')') {
    Parser.ReadtoChar(u')', Token.Name, true);
  }
  Token.CType = ctURI;
}

void TCSSTokenizer::ReadURI() {
  const char16_t quote = *Parser.p++;
  const char16_t* start = Parser.p;
  while (*Parser.p != quote && *Parser.p != 0) ++Parser.p;
  Token.CType = ctString;
  SetName(start);
  if (*Parser.p != 0) ++Parser.p;
}

void TCSSTokenizer::ReadNumber() {
  Token.CType = ctNumber;
  const char16_t* start = Parser.p;
  if (ParseNumbers) {
    const double value = Parser.ReadNumEx();
    Token.SetFloat(std::abs(value) < kLargestNumber ? static_cast<float>(value) : 0.0f);
  } else {
    while (HtIsDigit(*Parser.p) || *Parser.p == u'+' || *Parser.p == u'-' || *Parser.p == u'.') ++Parser.p;
  }
  if (!ReadPercent() && HtIsAsciiLetter(*Parser.p)) ReadUnit();
  SetName(start);
}

// One character may stand between the number and the sign.
bool TCSSTokenizer::ReadPercent() {
  const char16_t* p = Parser.p;
  if (*p != u'%' && (*p == 0 || *++p != u'%')) return false;
  Parser.p = p + 1;
  Token.CType = ctPercentage;
  Token.MUnit = muPercent;
  return true;
}

void TCSSTokenizer::ReadUnit() {
  Token.CType = ctDimension;
  Token.MUnit = UnitAt(Parser.p);
  if (Token.MUnit != muNone) {
    while (HtIsAsciiLetter(*Parser.p)) ++Parser.p;
    return;
  }
  // A colour without its number sign comes here: the colour reader takes it as a word.
  Token.SetFloat(0);
  while (HexDigit(*Parser.p) >= 0) ++Parser.p;
  Token.CType = ctIdent;
}

}  // namespace ht
