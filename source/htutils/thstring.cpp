#include "htutils/thstring.h"

#include <algorithm>

#include "htruntime/latin1.h"

namespace ht {

namespace {

hstring FromUnits(const THtBytes& bytes, size_t low, size_t high) {
  const size_t count = bytes.size() / 2;
  hstring text = hstring::Uninitialized(count);
  char16_t* units = text.Unique();
  for (size_t i = 0; i < count; ++i)
    units[i] = static_cast<char16_t>(bytes[2 * i + low] | bytes[2 * i + high] << 8);
  return text;
}

}  // namespace

hstring THString::ANSIBytestoString(const THtBytes& bytes, int32_t start, int32_t count) {
  const auto from = std::min(static_cast<size_t>(std::max(start, 0)), bytes.size());
  const size_t left = bytes.size() - from;
  const size_t length = count < 0 ? left : std::min(static_cast<size_t>(count), left);
  hstring text = hstring::Uninitialized(length);
  if (length) HtWidenLatin1(bytes.data() + from, length, text.Unique());
  return text;
}

void THString::ANSIBytestoString(const THtBytes& bytes, hstring& text, int32_t start, int32_t count) {
  text = ANSIBytestoString(bytes, start, count);
}

THtBytes THString::StringtoANSIBytes(std::u16string_view text) {
  THtBytes bytes(text.size());
  HtNarrowLatin1(text.data(), text.size(), bytes.data());
  return bytes;
}

hstring THString::UnicodeBytestoString(const THtBytes& bytes) { return FromUnits(bytes, 0, 1); }

hstring THString::BEUnicodeBytestoString(const THtBytes& bytes) { return FromUnits(bytes, 1, 0); }

}  // namespace ht
