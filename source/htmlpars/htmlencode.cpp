#include "htmlpars/htmlencode.h"

#include <algorithm>
#include <array>
#include <bit>
#include <tuple>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "htmlpars/charclasses.h"
#include "htmlpars/entityreverse.h"
#include "htutils/faststring.h"

namespace ht {

namespace {

enum TForm : uint8_t { efText, efAttr, efAttrNumeric };

struct TUnitRange {
  char16_t First, Last;
  constexpr bool Contains(uint32_t c) const { return c >= First && c <= Last; }
};

// Where a unit above 255 may be written as something else in text: where the entity table has names outside
// the blocks that are never named, and the high surrogates.
constexpr std::array<TUnitRange, 4> kSpecialRanges{
    {{0x0250, 0x036F}, {0x20A0, 0x2AFF}, {0xD800, 0xDBFF}, {0xFB00, 0xFBFF}}};

constexpr bool InSpecialRange(uint32_t c) {
  return std::any_of(std::begin(kSpecialRanges), std::end(kSpecialRanges),
                     [c](const TUnitRange& range) { return range.Contains(c); });
}

constexpr bool AllNamesInSpecialRanges() {
  constexpr uint32_t kValues[] = {
#define HT_ENTITY(name, value) value,
#include "htmlpars/entities.inc"
#undef HT_ENTITY
  };
  return std::all_of(std::begin(kValues), std::end(kValues),
                     [](uint32_t c) { return c > 0xFFFF || HtNeverNamed(c) || InSpecialRange(c); });
}
static_assert(AllNamesInSpecialRanges());

// The units below 256 that are escaped, as a table.
template <TForm Form>
constexpr std::array<bool, 256> MakeEscaped() {
  std::array<bool, 256> escaped{};
  for (size_t c = 0; c <= (Form == efText ? 8 : 9); ++c) escaped[c] = true;
  for (char16_t c : {u'&', u'<', u'>', u'\u00A0'}) escaped[c] = true;
  escaped[u'"'] = Form != efText;
  return escaped;
}
template <TForm Form>
constexpr std::array<bool, 256> kEscaped = MakeEscaped<Form>();

template <TForm Form>
constexpr bool IsClean(char16_t c) {
  return c < 256 ? !kEscaped<Form>[c] : Form != efText || !InSpecialRange(c);
}

#ifdef __SSE2__
__m128i IsUnit(__m128i units, char16_t c) {
  return _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(c)));
}

__m128i IsInRange(__m128i units, TUnitRange range) {
  const __m128i offsets = _mm_sub_epi16(units, _mm_set1_epi16(static_cast<short>(range.First)));
  const __m128i width = _mm_set1_epi16(static_cast<short>(range.Last - range.First));
  return _mm_cmpeq_epi16(_mm_subs_epu16(offsets, width), _mm_setzero_si128());
}

template <class... TMask>
__m128i AnyOf(__m128i mask, TMask... masks) {
  ((mask = _mm_or_si128(mask, masks)), ...);
  return mask;
}

// Two bits for each of eight units that is not clean. Packs and no loops: not every compiler unrolls those.
template <TForm Form>
unsigned UncleanBits(const char16_t* p) {
  const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  __m128i unclean = AnyOf(IsInRange(units, {0, Form == efText ? u'\x8' : u'\x9'}), IsUnit(units, u'&'),
                          IsUnit(units, u'<'), IsUnit(units, u'>'), IsUnit(units, u'\u00A0'));
  if constexpr (Form == efText)
    unclean = std::apply([&](auto... ranges) { return AnyOf(unclean, IsInRange(units, ranges)...); },
                         kSpecialRanges);
  else
    unclean = AnyOf(unclean, IsUnit(units, u'"'));
  return static_cast<unsigned>(_mm_movemask_epi8(unclean));
}
#endif

// The first unit that is not clean. Most text has none, so this is the whole cost of writing it.
template <TForm Form>
const char16_t* SkipClean(const char16_t* p, const char16_t* end) {
#ifdef __SSE2__
  for (; end - p >= 8; p += 8)
    if (const unsigned bits = UncleanBits<Form>(p)) return p + std::countr_zero(bits) / 2;
#endif
  while (p < end && IsClean<Form>(*p)) ++p;
  return p;
}

// What is written for one unit or pair.
class TEscape {
 public:
  // Takes the unit at `p`, which is before `end`, and steps over it.
  template <TForm Form>
  static TEscape Take(const char16_t*& p, const char16_t* end) {
    TEscape escape;
    const char16_t* start = p;
    const char16_t c = *p++;
    if (c < 256)
      escape.PutLatin1(c, Form);
    else if (IsHighSurrogate(c) && p < end && *p >= 0xDC00 && *p <= 0xDFFF)
      escape.PutPair(c, *p++);
    else if (const PHtmlEntity row = HtEntityReverseDictionary().FindEntity(c))
      escape.Put(u"&").Put(row->Name).Put(u";");
    else
      escape.PutUnit(c);
    escape.FTaken = p - start;
    return escape;
  }

  std::u16string_view View() const { return {FUnits.data(), FLength}; }
  int64_t Overhead() const { return static_cast<int64_t>(FLength) - FTaken; }

 private:
  static constexpr size_t kLongest = 40;  // the longest entity name has 31 units

  TEscape& Put(std::u16string_view text) {
    std::copy(text.begin(), text.end(), FUnits.begin() + FLength);
    FLength += text.size();
    return *this;
  }
  TEscape& PutUnit(char16_t c) { return Put({&c, 1}); }

  void PutLatin1(char16_t c, TForm form) {
    switch (c) {
      case u'"': Put(u"&quot;"); break;
      case u'&': Put(u"&amp;"); break;
      case u'<': Put(u"&lt;"); break;
      case u'>': Put(u"&gt;"); break;
      case u'\u00A0': Put(form == efAttrNumeric ? u"&#160;" : u"&nbsp;"); break;
      default: Put(u"&#").PutUnit(static_cast<char16_t>(u'0' + c)).Put(u";"); break;
    }
  }

  void PutPair(char16_t high, char16_t low) {
    const uint32_t code = 0x10000 + ((high - 0xD800u) << 10) + (low - 0xDC00u);
    Put(u"&#x");
    for (int shift = 20; shift >= 0; shift -= 4) PutUnit(u"0123456789ABCDEF"[code >> shift & 15]);
    Put(u";");
  }

  std::array<char16_t, kLongest> FUnits;
  size_t FLength = 0;
  ptrdiff_t FTaken = 0;
};

template <TForm Form>
int64_t CountOverhead(std::u16string_view text) {
  int64_t overhead = 0;
  const char16_t* end = text.data() + text.size();
  for (const char16_t* p = SkipClean<Form>(text.data(), end); p < end; p = SkipClean<Form>(p, end))
    overhead += TEscape::Take<Form>(p, end).Overhead();
  return overhead;
}

template <TForm Form>
hstring Encode(const hstring& text, int64_t overhead) {
  if (overhead < 0) overhead = CountOverhead<Form>(text);
  if (overhead == 0) return text;
  hstring result = hstring::Uninitialized(text.Size() + static_cast<size_t>(overhead));
  char16_t* out = result.Unique();
  int64_t spare = overhead;
  const auto copy = [&out](const char16_t* first, const char16_t* last) {
    out = std::copy(first, last, out);
  };
  const char16_t* end = text.end();
  for (const char16_t* p = text.begin(); p < end;) {
    const char16_t* start = p;
    p = SkipClean<Form>(p, end);
    copy(start, p);
    if (p == end) break;
    const TEscape escape = TEscape::Take<Form>(p, end);
    spare -= escape.Overhead();
    if (spare < 0) break;
    copy(escape.View().begin(), escape.View().end());
  }
  // The caller's count was that of another text.
  if (spare != 0) return Encode<Form>(text, -1);
  return result;
}

template <TForm Form>
void Append(TFastString& builder, std::u16string_view text) {
  const char16_t* end = text.data() + text.size();
  for (const char16_t* p = text.data(); p < end;) {
    const char16_t* start = p;
    p = SkipClean<Form>(p, end);
    if (p > start) builder.Add({start, static_cast<size_t>(p - start)});
    if (p < end) builder.Add(TEscape::Take<Form>(p, end).View());
  }
}

}  // namespace

hstring HtmlEncode(const hstring& text, int64_t overhead) { return Encode<efText>(text, overhead); }
hstring HtmlEncodeAttr(const hstring& text, int64_t overhead) { return Encode<efAttr>(text, overhead); }
hstring HtmlEncodeAttrNumeric(const hstring& text, int64_t overhead) {
  return Encode<efAttrNumeric>(text, overhead);
}

int64_t HtmlEncodeNodeOverhead(std::u16string_view text) { return CountOverhead<efText>(text); }
int64_t HtmlEncodeAttrOverhead(std::u16string_view text) { return CountOverhead<efAttr>(text); }

void HtAppendEncoded(TFastString& builder, std::u16string_view text) { Append<efText>(builder, text); }
void HtAppendEncodedAttr(TFastString& builder, std::u16string_view text) { Append<efAttr>(builder, text); }
void HtAppendEncodedAttrNumeric(TFastString& builder, std::u16string_view text) {
  Append<efAttrNumeric>(builder, text);
}

}  // namespace ht
