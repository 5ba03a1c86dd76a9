#pragma once

#include "htruntime/bytes.h"
#include "htruntime/hstring.h"

namespace ht {

/// Text from bytes and back, unit by unit and without a code page.
class THString {
 public:
  THString() = delete;

  /// Each byte becomes the character of the same number. `start` counts from 0; a negative `count` means to the
  /// end, and both are cut to what is there.
  static void ANSIBytestoString(const THtBytes& bytes, hstring& text, int32_t start, int32_t count);
  static hstring ANSIBytestoString(const THtBytes& bytes, int32_t start = 0, int32_t count = -1);
  /// The low byte of each unit.
  static THtBytes StringtoANSIBytes(std::u16string_view text);
  /// Little-endian UTF-16 without mark; an odd last byte is ignored.
  static hstring UnicodeBytestoString(const THtBytes& bytes);
  /// The same for big-endian.
  static hstring BEUnicodeBytestoString(const THtBytes& bytes);
};

}  // namespace ht
