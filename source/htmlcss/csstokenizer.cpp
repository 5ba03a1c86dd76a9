#include "htmlcss/csstokenizer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "htmlpars/lower.h"

namespace ht {

namespace {

// What the first character of a token leads to: the type of a token of one character, or one of these.
enum TFirst : uint8_t { kEnd = 64, kSpace, kIdent, kMinus, kDigit, kDot, kSlash, kQuote, kHash, kAt };

struct TCharTable {
  std::array<uint8_t, 256> First{};
  std::array<bool, 256> Plain{};  // of an identifier, but for the backslash

  constexpr TCharTable() {
    const auto set = [this](std::u16string_view chars, uint8_t first) {
      for (char16_t c : chars) First[c] = first;
    };
    for (char16_t c = 0; c < 256; ++c) {
      Plain[c] = HtIsAsciiLetter(c) || HtIsDigit(c) || c == u'-' || c == u'_';
      First[c] = Plain[c] ? uint8_t{kIdent} : uint8_t{ctDelimiter};
    }
    set(u"\t\n\r ", kSpace);
    set(u"0123456789", kDigit);
    set(u"\"'", kQuote);
    First[u'\\'] = kIdent;
    First[0] = kEnd;
    First[u'-'] = kMinus;
    First[u'.'] = kDot;
    First[u'/'] = kSlash;
    First[u'#'] = kHash;
    First[u'@'] = kAt;
    First[u'('] = ctOpenPar;
    First[u')'] = ctClosePar;
    First[u','] = ctComma;
    First[u':'] = ctColon;
    First[u';'] = ctSemicolon;
    First[u'['] = ctOpenBr;
    First[u']'] = ctCloseBr;
    First[u'{'] = ctBlockStart;
    First[u'}'] = ctBlockEnd;
  }
};
constexpr TCharTable kChars;

bool IsPlain(char16_t c) { return c >= 256 || kChars.Plain[c]; }

// The first character that is not plain: eight characters a step, since names are what a sheet mostly consists of.
const char16_t* EndOfPlain(const char16_t* p, const char16_t* end) {
#if defined(__SSE2__)
  const auto all = [](int c) { return _mm_set1_epi16(static_cast<short>(c)); };
  const auto atMost = [](__m128i units, __m128i limit) {
    return _mm_cmpeq_epi16(_mm_subs_epu16(units, limit), _mm_setzero_si128());
  };
  for (; end - p >= 8; p += 8) {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i letters = atMost(_mm_sub_epi16(_mm_or_si128(units, all(0x20)), all('a')), all('z' - 'a'));
    const __m128i digits = atMost(_mm_sub_epi16(units, all('0')), all(9));
    const __m128i marks = _mm_or_si128(_mm_cmpeq_epi16(units, all('-')), _mm_cmpeq_epi16(units, all('_')));
    const __m128i low =
        _mm_andnot_si128(_mm_or_si128(_mm_or_si128(letters, digits), marks), atMost(units, all(255)));
    if (const auto stops = static_cast<uint32_t>(_mm_movemask_epi8(low)))
      return p + std::countr_zero(stops) / 2;
  }
#else
  static_cast<void>(end);
#endif
  while (IsPlain(*p)) ++p;
  return p;
}

bool IsSpace(char16_t c) { return c < 33 && kChars.First[c] == kSpace; }

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

// The character under the cursor is a token of its own.
inline void TCSSTokenizer::Next(TCSSTokenType type) {
  Token.CType = type;
  FText = {Parser.p++, 1};
}

inline void TCSSTokenizer::ReadIdent() {
  const char16_t* start = Parser.p;
  Parser.p = EndOfPlain(start, Parser.pend);
  SetText(start);
  if (*Parser.p == u'\\') ReadEscapedRun(start, IsPlain);
  Token.CType = FText.empty() ? ctSpace : ctIdent;
  if (*Parser.p == u'(') ReadFunction();
}

bool TCSSTokenizer::NextToken() {
  const bool result = Scan();
  if (!Eof) Token.Name = NewName();
  return result;
}

bool TCSSTokenizer::Scan() {
  const char16_t* start = Parser.p;
  const uint8_t first = *start < 256 ? kChars.First[*start] : uint8_t{kIdent};
  if (first == kEnd) {
    Eof = true;
    Token.EndPos = PosOf(start) - 1;  // spaces may have been passed over
    return false;
  }
  static_cast<TCSSTokenHead&>(Token) = {};
  Token.StartPos = PosOf(start);
  bool result = true;
  if (first < kEnd) {
    Next(static_cast<TCSSTokenType>(first));
  } else {
    switch (first) {
      case kIdent: ReadIdent(); break;
      case kSpace: result = ReadSpace(); break;
      case kMinus: HtIsDigit(start[1]) || start[1] == u'.' ? ReadNumber() : ReadIdent(); break;
      case kDigit: ReadNumber(); break;
      case kDot: HtIsDigit(start[1]) ? ReadNumber() : Next(ctDelimiter); break;
      case kSlash: start[1] == u'*' ? ReadComment() : Next(ctSlash); break;
      case kQuote: ReadString(); break;
      case kHash: ReadHash(); break;
      default: ReadAt();
    }
  }
  Token.EndPos = PosOf(Parser.p) - 1;
  return result;
}

// False, as Scan is, for spaces that reach the end.
bool TCSSTokenizer::SkipSpaceAndComments() {
  for (;;) {
    const char16_t* p = Parser.p;
    if (IsSpace(*p)) {
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
  SetText(start);
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
  Token.CType = ctComment;
  SetText(start);
  if (FText.ends_with(u"*/")) FText.remove_suffix(2);
}

void TCSSTokenizer::ReadHash() {
  ++Parser.p;
  ReadIdent();
  Token.CType = ctHash;
}

void TCSSTokenizer::ReadAt() {
  const char16_t* start = Parser.p++;
  ReadIdent();
  Token.CType = ctAtKeyword;
  if (FText.data() == start + 1) {
    FText = {start, FText.size() + 1};
  } else {
    FBuilt = u"@" + std::u16string(FText);
    FText = FBuilt;
  }
}

void TCSSTokenizer::ReadString() {
  Token.CType = ctString;
  const char16_t quote = *Parser.p++;
  const auto plain = [quote](char16_t c) { return c != quote && c != u'\r' && c != u'\\' && c != 0; };
  const char16_t* start = Parser.p;
  while (plain(*Parser.p)) ++Parser.p;
  SetText(start);
  if (*Parser.p == u'\\') ReadEscapedRun(start, plain);
  if (*Parser.p != 0) ++Parser.p;
}

// At the first backslash of a run of plain characters and escapes: from here on the text is built.
template <class TPlain>
void TCSSTokenizer::ReadEscapedRun(const char16_t* start, TPlain plain) {
  FBuilt.clear();
  bool goesOn = true;
  while (goesOn && *Parser.p == u'\\') {
    FBuilt.append(start, Parser.p++);
    goesOn = ReadEscape();
    start = Parser.p;
    while (goesOn && plain(*Parser.p)) ++Parser.p;
  }
  FBuilt.append(start, Parser.p);
  FText = FBuilt;
}

// Behind a backslash: adds what the escape stands for. False at the end of the text.
bool TCSSTokenizer::ReadEscape() {
  const char16_t c = *Parser.p;
  switch (c) {
    case 0: return false;
    case u'\r': Parser.p += Parser.p[1] == u'\n' ? 2 : 1; break;
    case u' ':
    case u'"':
    case u'\\':
      FBuilt += c;
      ++Parser.p;
      break;
    default: AddCodePoint(FBuilt, Escape());
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
  if (FText.size() == 3 && HtSameAscii(FText, u"url")) {
    ReadAddress();
    return;
  }
  Token.CType = ctFunction;
  if (std::none_of(FText.begin(), FText.end(), HtIsAsciiUpper)) return;
  std::u16string lower(FText);
  std::transform(lower.begin(), lower.end(), lower.begin(), HtAsciiLower);
  FBuilt.swap(lower);
  FText = FBuilt;
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
    const char16_t* start = Parser.p;
    Parser.Skipto(u')');
    SetText(start);
    FText = HtTrimRight(FText);
    Parser.Next();
  }
  Token.CType = ctURI;
}

// A quoted address inside `url(`; it has no escapes.
void TCSSTokenizer::ReadURI() {
  const char16_t quote = *Parser.p++;
  const char16_t* start = Parser.p;
  while (*Parser.p != quote && *Parser.p != 0) ++Parser.p;
  Token.CType = ctString;
  SetText(start);
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
  SetText(start);
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
