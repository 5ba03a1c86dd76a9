#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ht::detail {

/// A page of one byte a character. Undefined bytes have places of their own among the private-use characters, so
/// that widening loses nothing.
struct TSingleBytePage {
  std::array<char16_t, 256> Widened{};  // byte to unit, one to one
  std::array<char16_t, 256> Text{};     // the same with U+FFFD for undefined bytes

  /// The byte of a unit, -1 if there is none.
  int ByteOf(char16_t unit) const;
  void Define(int byte, char16_t unit);

 private:
  // Two steps: the high byte of a unit selects a block, its low byte the entry. Block 0 is empty, and an entry
  // of 0 stands for none but in the block of U+0000.
  static constexpr size_t kBlocks = 16;
  std::array<uint8_t, 256> FBlockOf{};
  std::array<std::array<uint8_t, 256>, kBlocks> FBytes{};
  uint8_t FBlockCount = 1;
};

/// The tables of a single-byte page, made at the first call; null for a page of another kind.
const TSingleBytePage* SingleBytePage(int32_t page);

/// The page of a charset's name as locales write it ("UTF-8", "ISO8859-2", "CP1251"); 0 if there is none.
int32_t PageOfCharset(std::string_view name);

}  // namespace ht::detail
