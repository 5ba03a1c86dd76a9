#include "htcanvas/bitmaprows.h"

#include <cstring>
#include <utility>

#include "htutils/cpufeatures.h"

#if defined(__x86_64__)
#define HT_BITMAP_SSSE3 1
#include <immintrin.h>
#endif

namespace ht::detail {

namespace {

void Rgb24To32Plain(const uint8_t* source, uint8_t* target, int32_t count) {
  for (; count > 0; --count, source += 3, target += 4) {
    std::memcpy(target, source, 3);
    target[3] = 255;
  }
}

void Gray8To32Plain(const uint8_t* source, uint8_t* target, int32_t count) {
  for (int32_t x = 0; x < count; ++x) {
    const uint32_t pixel = source[x] * 65793u | 0xFF000000;
    std::memcpy(target + 4 * static_cast<size_t>(x), &pixel, 4);
  }
}

void Bits1To32Plain(const uint8_t* source, uint8_t* target, int32_t count, uint32_t zero, uint32_t one) {
  for (int32_t x = 0; x < count; ++x) {
    const uint32_t pixel = source[x >> 3] >> (7 - (x & 7)) & 1 ? one : zero;
    std::memcpy(target + 4 * static_cast<size_t>(x), &pixel, 4);
  }
}

void Swap24Plain(uint8_t* pixels, int32_t count) {
  for (; count > 0; --count, pixels += 3) std::swap(pixels[0], pixels[2]);
}

void Swap32Plain(uint8_t* pixels, int32_t count) {
  for (; count > 0; --count, pixels += 4) std::swap(pixels[0], pixels[2]);
}

void Mask8Plain(const uint8_t* mask, uint8_t* pixels, int32_t count) {
  for (int32_t x = 0; x < count; ++x) pixels[4 * static_cast<size_t>(x) + 3] = mask[x];
}

void Mask1Plain(const uint8_t* mask, uint8_t* pixels, int32_t count) {
  for (int32_t x = 0; x < count; ++x)
    if ((mask[x >> 3] >> (7 - (x & 7)) & 1) == 0) pixels[4 * static_cast<size_t>(x) + 3] = 0;
}

}  // namespace

const TBitmapRows kPlainBitmapRows{Rgb24To32Plain, Gray8To32Plain, Bits1To32Plain, Swap24Plain,
                                   Swap32Plain,    Mask8Plain,     Mask1Plain};

#ifdef HT_BITMAP_SSSE3

namespace {

#define HT_SSSE3 __attribute__((target("ssse3")))

HT_SSSE3 inline __m128i Load(const uint8_t* from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}
HT_SSSE3 inline void Store(uint8_t* to, __m128i value) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), value);
}

// Sixteen pixels at a time: three loads hold just the bytes of four stores.
HT_SSSE3 void Rgb24To32Vector(const uint8_t* source, uint8_t* target, int32_t count) {
  const __m128i spread = _mm_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1);
  const __m128i alpha = _mm_set1_epi32(static_cast<int32_t>(0xFF000000));
  for (; count >= 16; count -= 16, source += 48, target += 64) {
    const __m128i a = Load(source), b = Load(source + 16), c = Load(source + 32);
    const auto pixels = [&](__m128i bytes)
                            HT_SSSE3 { return _mm_or_si128(_mm_shuffle_epi8(bytes, spread), alpha); };
    Store(target, pixels(a));
    Store(target + 16, pixels(_mm_alignr_epi8(b, a, 12)));
    Store(target + 32, pixels(_mm_alignr_epi8(c, b, 8)));
    Store(target + 48, pixels(_mm_srli_si128(c, 4)));
  }
  Rgb24To32Plain(source, target, count);
}

HT_SSSE3 void Gray8To32Vector(const uint8_t* source, uint8_t* target, int32_t count) {
  const __m128i alpha = _mm_set1_epi8(-1);
  for (; count >= 16; count -= 16, source += 16, target += 64) {
    const __m128i gray = Load(source);
    const __m128i lowPairs = _mm_unpacklo_epi8(gray, gray), highPairs = _mm_unpackhi_epi8(gray, gray);
    const __m128i lowAlpha = _mm_unpacklo_epi8(gray, alpha), highAlpha = _mm_unpackhi_epi8(gray, alpha);
    Store(target, _mm_unpacklo_epi16(lowPairs, lowAlpha));
    Store(target + 16, _mm_unpackhi_epi16(lowPairs, lowAlpha));
    Store(target + 32, _mm_unpacklo_epi16(highPairs, highAlpha));
    Store(target + 48, _mm_unpackhi_epi16(highPairs, highAlpha));
  }
  Gray8To32Plain(source, target, count);
}

// All bits of a lane are set where the bit of the lane is set in the byte: four pixels of the high or the low half.
HT_SSSE3 inline __m128i LanesOf(uint8_t byte, bool low) {
  const __m128i bits = low ? _mm_setr_epi32(8, 4, 2, 1) : _mm_setr_epi32(128, 64, 32, 16);
  return _mm_cmpeq_epi32(_mm_and_si128(_mm_set1_epi32(byte), bits), bits);
}

HT_SSSE3 void Bits1To32Vector(const uint8_t* source, uint8_t* target, int32_t count, uint32_t zero,
                              uint32_t one) {
  const __m128i zeros = _mm_set1_epi32(static_cast<int32_t>(zero));
  const __m128i change = _mm_set1_epi32(static_cast<int32_t>(zero ^ one));
  for (; count >= 8; count -= 8, ++source, target += 32) {
    Store(target, _mm_xor_si128(zeros, _mm_and_si128(change, LanesOf(*source, false))));
    Store(target + 16, _mm_xor_si128(zeros, _mm_and_si128(change, LanesOf(*source, true))));
  }
  Bits1To32Plain(source, target, count, zero, one);
}

// Sixteen pixels at a time, two of which lie across the ends of loads. Stores that overlap the next load would be
// shorter code, and many times slower.
HT_SSSE3 void Swap24Vector(uint8_t* pixels, int32_t count) {
  const __m128i first = _mm_setr_epi8(2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, -1);
  const __m128i middle = _mm_setr_epi8(0, -1, 4, 3, 2, 7, 6, 5, 10, 9, 8, 13, 12, 11, -1, 15);
  const __m128i last = _mm_setr_epi8(-1, 3, 2, 1, 6, 5, 4, 9, 8, 7, 12, 11, 10, 15, 14, 13);
  for (; count >= 16; count -= 16, pixels += 48) {
    const __m128i a = Load(pixels), b = Load(pixels + 16), c = Load(pixels + 32);
    // One byte each comes from a neighbour.
    const __m128i b1 = _mm_slli_si128(_mm_srli_si128(_mm_slli_si128(b, 14), 15), 15);
    const __m128i a15 = _mm_slli_si128(_mm_srli_si128(a, 15), 1);
    const __m128i c0 = _mm_srli_si128(_mm_slli_si128(c, 15), 1);
    const __m128i b14 = _mm_srli_si128(_mm_slli_si128(b, 1), 15);
    Store(pixels, _mm_or_si128(_mm_shuffle_epi8(a, first), b1));
    Store(pixels + 16, _mm_or_si128(_mm_shuffle_epi8(b, middle), _mm_or_si128(a15, c0)));
    Store(pixels + 32, _mm_or_si128(_mm_shuffle_epi8(c, last), b14));
  }
  Swap24Plain(pixels, count);
}

HT_SSSE3 void Swap32Vector(uint8_t* pixels, int32_t count) {
  const __m128i swapped = _mm_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15);
  for (; count >= 4; count -= 4, pixels += 16) Store(pixels, _mm_shuffle_epi8(Load(pixels), swapped));
  Swap32Plain(pixels, count);
}

HT_SSSE3 void Mask8Vector(const uint8_t* mask, uint8_t* pixels, int32_t count) {
  const __m128i colors = _mm_set1_epi32(0x00FFFFFF), none = _mm_setzero_si128();
  for (; count >= 16; count -= 16, mask += 16, pixels += 64) {
    const __m128i alphas = Load(mask);
    const __m128i low = _mm_unpacklo_epi8(none, alphas), high = _mm_unpackhi_epi8(none, alphas);
    const auto put = [&](uint8_t* at, __m128i alpha)
                         HT_SSSE3 { Store(at, _mm_or_si128(_mm_and_si128(Load(at), colors), alpha)); };
    put(pixels, _mm_unpacklo_epi16(none, low));
    put(pixels + 16, _mm_unpackhi_epi16(none, low));
    put(pixels + 32, _mm_unpacklo_epi16(none, high));
    put(pixels + 48, _mm_unpackhi_epi16(none, high));
  }
  Mask8Plain(mask, pixels, count);
}

HT_SSSE3 void Mask1Vector(const uint8_t* mask, uint8_t* pixels, int32_t count) {
  const __m128i colors = _mm_set1_epi32(0x00FFFFFF);
  for (; count >= 8; count -= 8, ++mask, pixels += 32) {
    Store(pixels, _mm_and_si128(Load(pixels), _mm_or_si128(colors, LanesOf(*mask, false))));
    Store(pixels + 16, _mm_and_si128(Load(pixels + 16), _mm_or_si128(colors, LanesOf(*mask, true))));
  }
  Mask1Plain(mask, pixels, count);
}

#undef HT_SSSE3

constexpr TBitmapRows kVectorBitmapRows{Rgb24To32Vector, Gray8To32Vector, Bits1To32Vector, Swap24Vector,
                                        Swap32Vector,    Mask8Vector,     Mask1Vector};

}  // namespace

// Every processor with SSE4.2 has SSSE3.
const TBitmapRows* HtVectorBitmapRows() { return SSE4Enabled() ? &kVectorBitmapRows : nullptr; }

#else

const TBitmapRows* HtVectorBitmapRows() { return nullptr; }

#endif

const TBitmapRows& HtBitmapRows() {
  static const TBitmapRows* const kRows = HtVectorBitmapRows();
  return kRows ? *kRows : kPlainBitmapRows;
}

}  // namespace ht::detail
