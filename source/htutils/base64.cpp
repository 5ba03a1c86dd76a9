#include "htutils/base64.h"

#include <algorithm>
#include <array>

namespace ht {

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr size_t kLineBytes = 57;  // 76 characters

constexpr size_t EncodedSize(size_t count) { return (count + 2) / 3 * 4; }

template <class TUnit>
TUnit* Encode(const uint8_t* in, size_t count, TUnit* out) {
  const auto digit = [](unsigned bits) { return static_cast<TUnit>(kAlphabet[bits & 63]); };
  for (; count >= 3; count -= 3, in += 3) {
    const unsigned bits = in[0] << 16 | in[1] << 8 | in[2];
    *out++ = digit(bits >> 18);
    *out++ = digit(bits >> 12);
    *out++ = digit(bits >> 6);
    *out++ = digit(bits);
  }
  if (count > 0) {
    const unsigned bits = in[0] << 16 | (count == 2 ? in[1] << 8 : 0);
    *out++ = digit(bits >> 18);
    *out++ = digit(bits >> 12);
    *out++ = count == 2 ? digit(bits >> 6) : TUnit('=');
    *out++ = TUnit('=');
  }
  return out;
}

constexpr size_t EncodedLinesSize(size_t count) {
  return count == 0 ? 0 : EncodedSize(count) + (count - 1) / kLineBytes * 2;
}

template <class TUnit>
void EncodeLines(const uint8_t* in, size_t count, TUnit* out) {
  for (; count > kLineBytes; in += kLineBytes, count -= kLineBytes) {
    out = Encode(in, kLineBytes, out);
    *out++ = TUnit('\r');
    *out++ = TUnit('\n');
  }
  Encode(in, count, out);
}

const uint8_t* Bytes(std::string_view text) { return reinterpret_cast<const uint8_t*>(text.data()); }

hstring TextLines(const uint8_t* in, size_t count) {
  hstring text = hstring::Uninitialized(EncodedLinesSize(count));
  EncodeLines(in, count, text.Unique());
  return text;
}

constexpr uint8_t kNoDigit = 64;

// The six bits of a character, or kNoDigit.
constexpr std::array<uint8_t, 128> kDigits = [] {
  std::array<uint8_t, 128> digits{};
  digits.fill(kNoDigit);
  for (uint8_t i = 0; i < 64; ++i) digits[static_cast<uint8_t>(kAlphabet[i])] = i;
  return digits;
}();

template <class TUnit>
THtBytes Decode(const TUnit* in, size_t count) {
  THtBytes bytes;
  bytes.reserve(count / 4 * 3 + 3);
  unsigned bits = 0;
  int filled = 0;  // digits of the present group of four
  for (const TUnit* end = in + count; in != end && *in != TUnit('='); ++in) {
    const uint8_t digit =
        static_cast<unsigned>(*in) < kDigits.size() ? kDigits[static_cast<size_t>(*in)] : kNoDigit;
    if (digit == kNoDigit) continue;
    bits = bits << 6 | digit;
    if (++filled < 4) continue;
    for (int shift : {16, 8, 0}) bytes.push_back(static_cast<uint8_t>(bits >> shift));
    filled = 0;
  }
  if (filled >= 2) bytes.push_back(static_cast<uint8_t>(bits >> (filled * 6 - 8)));
  if (filled == 3) bytes.push_back(static_cast<uint8_t>(bits >> 2));
  return bytes;
}

}  // namespace

hstring Base64EncodeString(std::u16string_view text) {
  const std::string bytes = HtToUtf8(text);
  return TextLines(Bytes(bytes), bytes.size());
}

std::string Base64EncodeString(std::string_view bytes) {
  std::string text(EncodedLinesSize(bytes.size()), 0);
  EncodeLines(Bytes(bytes), bytes.size(), text.data());
  return text;
}

hstring Base64EncodeBytes(const THtBytes& bytes) { return TextLines(bytes.data(), bytes.size()); }

hstring Base64EncodeNoLF(const THtBytes& bytes) {
  hstring text = hstring::Uninitialized(EncodedSize(bytes.size()));
  Encode(bytes.data(), bytes.size(), text.Unique());
  return text;
}

THtBytes Base64DecodetoBytes(std::u16string_view text) { return Decode(text.data(), text.size()); }
THtBytes Base64DecodetoBytes(const THtBytes& bytes) { return Decode(bytes.data(), bytes.size()); }
hstring Base64DecodeString(std::u16string_view text) {
  return HtFromUtf8(HtBytesView(Base64DecodetoBytes(text)));
}

}  // namespace ht
