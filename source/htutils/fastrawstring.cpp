#include "htutils/fastrawstring.h"

#include <bit>

namespace ht {

namespace {

constexpr bool IsSurrogate(uint32_t unit) { return (unit & 0xF800) == 0xD800; }
constexpr bool IsHighSurrogate(uint32_t unit) { return (unit & 0xFC00) == 0xD800; }

char Trail(uint32_t code, int shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); }

// What a pair gives: any number. The forms are those of RFC 2279, which go on to 31 bits.
char* EncodePair(uint32_t code, char* out) {
  constexpr struct {
    uint32_t Below;
    uint8_t Lead, LeadBits;
  } kForms[] = {{0x80, 0x00, 0x7F},     {0x800, 0xC0, 0x1F},     {0x10000, 0xE0, 0x0F},
                {0x200000, 0xF0, 0x07}, {0x4000000, 0xF8, 0x03}, {0, 0xFC, 0x01}};
  int trails = 0;
  while (trails < 5 && code >= kForms[trails].Below) ++trails;
  *out++ = static_cast<char>(kForms[trails].Lead | (code >> 6 * trails & kForms[trails].LeadBits));
  while (trails > 0) *out++ = Trail(code, 6 * --trails);
  return out;
}

// Narrows units below 128, four a step: a 64-bit word holds them without a vector unit. Stops at the first other.
char* EncodeAscii(const char16_t*& in, const char16_t* end, char* out) {
  while (std::endian::native == std::endian::little && end - in >= 4) {
    uint64_t units;
    std::memcpy(&units, in, sizeof(units));
    if (units & 0xFF80FF80FF80FF80) break;
    units |= units >> 8;  // the bytes of each half side by side
    const auto low = static_cast<uint32_t>(units & 0xFFFF),
               high = static_cast<uint32_t>(units >> 32 & 0xFFFF);
    const uint32_t bytes = low | high << 16;
    std::memcpy(out, &bytes, sizeof(bytes));
    in += 4;
    out += 4;
  }
  while (in < end && *in < 128) *out++ = static_cast<char>(*in++);
  return out;
}

}  // namespace

TFastRawString& TFastRawString::AddUTF8(std::u16string_view text) {
  char* const start = Room(3 * text.size());  // a pair takes at most 6 bytes
  char* out = start;
  const char16_t* in = text.data();
  const char16_t* const end = in + text.size();
  while (in < end) {
    if (*in < 128) {
      out = EncodeAscii(in, end, out);
      continue;
    }
    const uint32_t code = *in++;
    if (code < 0x800) {
      *out++ = static_cast<char>(0xC0 | code >> 6);
      *out++ = Trail(code, 0);
    } else if (!IsSurrogate(code)) {
      *out++ = static_cast<char>(0xE0 | code >> 12);
      *out++ = Trail(code, 6);
      *out++ = Trail(code, 0);
    } else if (in < end) {
      const uint32_t other = *in++;
      const uint32_t high = IsHighSurrogate(code) ? code : other, low = high == code ? other : code;
      out = EncodePair(((high - 0xD800) << 10) + (low - 0xDC00) + 0x10000, out);
    }
  }
  Advance(static_cast<size_t>(out - start));
  return *this;
}

void TFastRawString::ToString(std::string& text) const {
  text.resize(static_cast<size_t>(GetTotalLen()));
  CopyTo(text.data(), 0);
}

std::string TFastRawString::GetAsString() const {
  std::string text;
  ToString(text);
  return text;
}

THtBytes TFastRawString::AsBytes() const {
  THtBytes bytes(static_cast<size_t>(GetTotalLen()));
  CopyTo(reinterpret_cast<char*>(bytes.data()), 0);
  return bytes;
}

}  // namespace ht
