#include "htruntime/hstring.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace ht {

namespace {

constexpr char16_t kReplacement = 0xFFFD;

constexpr bool IsTrail(uint8_t c) { return (c & 0xC0) == 0x80; }

// Decodes the character at `in`, which is not ASCII. An ill-formed piece gives U+FFFD and ends before the
// first byte that cannot go on in it ("maximal subpart" of the Unicode Standard, chapter 3.9).
const uint8_t* DecodeOne(const uint8_t* in, const uint8_t* end, char16_t*& out) {
  const uint8_t lead = *in++;
  if (lead >= 0xC2 && lead < 0xE0) {
    if (in < end && IsTrail(*in)) {
      *out++ = static_cast<char16_t>((lead & 0x1F) << 6 | (*in & 0x3F));
      return in + 1;
    }
  } else if (lead >= 0xE0 && lead < 0xF5) {
    // The second byte is held to a narrower range where a longer form, a surrogate or a number above
    // U+10FFFF would begin.
    const uint8_t low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const uint8_t high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (in < end && *in >= low && *in <= high) {
      uint32_t code = (lead & (lead < 0xF0 ? 0x0Fu : 0x07u)) << 6 | (*in++ & 0x3Fu);
      const int more = lead < 0xF0 ? 1 : 2;
      int read = 0;
      for (; read < more && in < end && IsTrail(*in); ++read) code = code << 6 | (*in++ & 0x3Fu);
      if (read == more) {
        if (code < 0x10000) {
          *out++ = static_cast<char16_t>(code);
        } else {
          *out++ = static_cast<char16_t>(0xD7C0 + (code >> 10));
          *out++ = static_cast<char16_t>(0xDC00 + (code & 0x3FF));
        }
        return in;
      }
    }
  }
  *out++ = kReplacement;
  return in;
}

#ifdef __SSE2__

// Widens 16 bytes at `in` and tells how many of them, from the first, are ASCII. All 16 units are written.
int WidenAscii16(const uint8_t* in, char16_t* out) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
  const __m128i zero = _mm_setzero_si128();
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(bytes, zero));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8), _mm_unpackhi_epi8(bytes, zero));
  return __builtin_ctz(static_cast<unsigned>(_mm_movemask_epi8(bytes)) | 0x10000u);
}

// Reads 16 bytes at `in` as 8 two-byte characters and tells how many of them, from the first, are such. All
// 8 units are written.
int DecodePairs8(const uint8_t* in, char16_t* out) {
  const __m128i words = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
  const __m128i marks = _mm_and_si128(words, _mm_set1_epi16(static_cast<int16_t>(0xC0E0)));
  const __m128i marked = _mm_cmpeq_epi16(marks, _mm_set1_epi16(static_cast<int16_t>(0x80C0)));
  const __m128i tooShort = _mm_cmpeq_epi16(_mm_and_si128(words, _mm_set1_epi16(0x001E)), _mm_setzero_si128());
  const __m128i high = _mm_slli_epi16(_mm_and_si128(words, _mm_set1_epi16(0x001F)), 6);
  const __m128i low = _mm_and_si128(_mm_srli_epi16(words, 8), _mm_set1_epi16(0x003F));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_or_si128(high, low));
  const int good = _mm_movemask_epi8(_mm_andnot_si128(tooShort, marked));
  return __builtin_ctz(~static_cast<unsigned>(good)) / 2;
}

#endif

// Writes at most one unit a byte, so `out` has room for `end - in` units.
char16_t* Decode(const uint8_t* in, const uint8_t* end, char16_t* out) {
#ifdef __SSE2__
  // A run of ASCII or of two-byte characters takes one step for 16 bytes and is cut where it ends by
  // counting, not by branching: the length of words costs no missed branch. The steps write past the cut;
  // there is room, since as many units as bytes are left.
  while (end - in >= 16) {
    if (*in < 0x80) {
      int count;
      do {
        count = WidenAscii16(in, out);
        in += count;
        out += count;
      } while (count == 16 && end - in >= 16);
    } else if (*in < 0xE0) {
      const int count = DecodePairs8(in, out);
      in += count * 2;
      out += count;
      if (count == 0) in = DecodeOne(in, end, out);
    } else if (*in < 0xF0) {
      // Three-byte characters (CJK) come in long runs.
      do {
        const uint32_t code = (in[0] & 0x0Fu) << 12 | (in[1] & 0x3Fu) << 6 | (in[2] & 0x3Fu);
        if (!IsTrail(in[1]) || !IsTrail(in[2]) || code < 0x800 || (code & 0xF800) == 0xD800) {
          in = DecodeOne(in, end, out);
        } else {
          *out++ = static_cast<char16_t>(code);
          in += 3;
        }
      } while (end - in >= 16 && (*in & 0xF0) == 0xE0);
    } else {
      in = DecodeOne(in, end, out);
    }
  }
#endif
  while (in < end) {
    if (*in < 0x80)
      *out++ = *in++;
    else
      in = DecodeOne(in, end, out);
  }
  return out;
}

}  // namespace

hstring HtFromUtf8(std::string_view bytes) {
  hstring result = hstring::Uninitialized(bytes.size());
  if (bytes.empty()) return result;
  const auto* in = reinterpret_cast<const uint8_t*>(bytes.data());
  char16_t* units = result.Unique();
  result.SetLength(static_cast<size_t>(Decode(in, in + bytes.size(), units) - units));
  return result;
}

namespace {

// One slice of output: it stays in the first-level cache on its way into the result.
constexpr size_t kSlice = 3 * 1024;

constexpr bool IsHighSurrogate(char16_t c) { return (c & 0xFC00) == 0xD800; }
constexpr bool IsLowSurrogate(char16_t c) { return (c & 0xFC00) == 0xDC00; }

char* EncodeOne(const char16_t*& in, const char16_t* end, char* out) {
  uint32_t code = *in++;
  if ((code & 0xF800) == 0xD800) {
    if (IsHighSurrogate(static_cast<char16_t>(code)) && in < end && IsLowSurrogate(*in))
      code = 0x10000 + ((code - 0xD800) << 10) + (*in++ - 0xDC00u);
    else
      code = kReplacement;
  }
  if (code < 0x800) {
    *out++ = static_cast<char>(0xC0 | code >> 6);
  } else {
    if (code < 0x10000) {
      *out++ = static_cast<char>(0xE0 | code >> 12);
    } else {
      *out++ = static_cast<char>(0xF0 | code >> 18);
      *out++ = static_cast<char>(0x80 | (code >> 12 & 0x3F));
    }
    *out++ = static_cast<char>(0x80 | (code >> 6 & 0x3F));
  }
  *out++ = static_cast<char>(0x80 | (code & 0x3F));
  return out;
}

// Encodes from `in` on until the text ends or fewer than 16 bytes of room are left.
char* Encode(const char16_t*& in, const char16_t* end, char* out, const char* outEnd) {
  while (in < end && outEnd - out >= 16) {
    if (*in >= 0x80) {
      out = EncodeOne(in, end, out);
      continue;
    }
#ifdef __SSE2__
    if (end - in >= 16) {
      const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
      const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 8));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(a, b));
      // A unit is ASCII when nothing but its low 7 bits is set.
      const __m128i rest = _mm_set1_epi16(static_cast<int16_t>(0xFF80));
      const __m128i zero = _mm_setzero_si128();
      const __m128i asciiA = _mm_cmpeq_epi16(_mm_and_si128(a, rest), zero);
      const __m128i asciiB = _mm_cmpeq_epi16(_mm_and_si128(b, rest), zero);
      const int ascii = _mm_movemask_epi8(_mm_packs_epi16(asciiA, asciiB));
      const int count = __builtin_ctz(~static_cast<unsigned>(ascii));
      in += count;
      out += count;
      continue;
    }
#endif
    *out++ = static_cast<char>(*in++);
  }
  return out;
}

}  // namespace

std::string HtToUtf8(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  const char16_t* in = text.data();
  const char16_t* end = in + text.size();
  char slice[kSlice];
  while (in < end) result.append(slice, Encode(in, end, slice, slice + kSlice));
  return result;
}

}  // namespace ht
