#include "htmlpars/stringparser.h"

#include <algorithm>

#include "htmlpars/charclasses.h"
#include "htmlpars/lower.h"

namespace ht {

void TStringParser::Init(hstring text) {
  s = std::move(text);
  p = Begin();
  pend = p + s.Length();
}

int32_t TStringParser::QueryInterface(const TGuid& id, void** result) {
  const bool known = id == IStringParser::kGuid || id == IHtInterface::kGuid;
  *result = known ? static_cast<IStringParser*>(this) : nullptr;
  if (known) _AddRef();
  return known ? kInterfaceFound : kNoInterface;
}

void TStringParser::Skip(int32_t count) {
  const ptrdiff_t steps = std::clamp<ptrdiff_t>(count, Begin() - p, pend - p);
  p += steps;
}

void TStringParser::Skipto(char16_t c) { p = std::find(p, pend, c); }

void TStringParser::SkipEndBlanks() {
  size_t length = s.Size();
  while (length > 0 && (s[length - 1] == u'\r' || s[length - 1] == u'\n' || s[length - 1] == u' ')) --length;
  if (length == s.Size()) return;
  const size_t position = std::min(static_cast<size_t>(p - Begin()), length);
  Init(hstring(s.Data(), length));
  p += position;
}

int32_t TStringParser::Line() const { return static_cast<int32_t>(std::count(Begin(), p, u'\n')); }

int32_t TStringParser::CharPos(char16_t c) const {
  const char16_t* found = std::find(p, pend, c);
  return found == pend ? 0 : static_cast<int32_t>(found - p) + 1;
}

bool TStringParser::StartsWith(std::u16string_view lowerCaseText) const {
  if (static_cast<size_t>(pend - p) < lowerCaseText.size()) return false;
  for (size_t i = 0; i < lowerCaseText.size(); ++i)
    if (HtAsciiLower(p[i]) != lowerCaseText[i]) return false;
  return true;
}

void TStringParser::ReadWord(hstring& text, bool skipBlanks) {
  static constexpr TCharSet kStops(u" \r\n\t,()");
  if (skipBlanks) SkipBlanks();
  const char16_t* start = p;
  Next();
  while (p < pend && !kStops.Contains(*p)) ++p;
  text = From(start);
}

bool TStringParser::ReadParam(hstring& text) {
  static constexpr TCharSet kStops(u",()");
  text.Clear();
  SkipBlanks();
  if (Empty()) return false;
  if (*p == u',' || *p == u'(') ++p;
  if (*p == u')') {
    ++p;
    return false;
  }
  const char16_t* start = p;
  while (p < pend && !kStops.Contains(*p)) ++p;
  text = From(start);
  return true;
}

void TStringParser::ReadtoChar(char16_t c, hstring& text, bool trim) {
  if (trim) SkipBlanks();
  const char16_t* start = p;
  while (p < pend && *p == c) ++p;
  Skipto(c);
  text = trim ? hstring(HtTrimRight({start, static_cast<size_t>(p - start)})) : From(start);
  if (trim) Next();
}

void TStringParser::ReadtoChars(const TCharSet& set, hstring& text) {
  SkipBlanks();
  const char16_t* start = p;
  while (p < pend && !set.Contains(*p)) ++p;
  text = From(start);
}

void TStringParser::ReadtoWordBreak(hstring& text) {
  static constexpr std::u16string_view kClosing = u"!),.:;?]}，、。—ˇЁ〃々～…’”〕〉》」』〗】";
  const auto isBreaker = [](char16_t c) { return c == u'-' || c == u'/' || IsChinese(c); };
  const auto takeWord = [&] {
    while (p < pend && *p != u' ' && !isBreaker(*p)) ++p;
  };
  const char16_t* start = p;
  if (p < pend && isBreaker(*p)) ++p;
  while (p < pend && *p == u' ') ++p;
  takeWord();
  if (p < pend && IsChinese(*p) && p[1] != 0 && kClosing.find(p[1]) != kClosing.npos) {
    ++p;
    takeWord();
  }
  text = From(start);
}

void TStringParser::ReadLn(hstring& text) {
  const char16_t* start = p;
  while (p < pend && *p != u'\r' && *p != u'\n') ++p;
  text = From(start);
  if (p < pend) p += p[0] == u'\r' && p[1] == u'\n' ? 2 : 1;
}

}  // namespace ht
