#include "htutils/crc32.h"

#include <array>

namespace ht {

namespace {

constexpr uint32_t kStart = 0xFFFFFFFF;

constexpr std::array<uint32_t, 256> kTable = [] {
  std::array<uint32_t, 256> table{};
  for (uint32_t i = 0; i < table.size(); ++i) {
    uint32_t value = i;
    for (int step = 0; step < 8; ++step) value = value & 1 ? value >> 1 ^ 0xEDB88320 : value >> 1;
    table[i] = value;
  }
  return table;
}();

uint32_t Step(uint32_t crc, uint8_t byte) { return crc >> 8 ^ kTable[(crc ^ byte) & 0xFF]; }

}  // namespace

uint32_t CalcCRC32(const void* pointer, size_t size) noexcept {
  const auto* bytes = static_cast<const uint8_t*>(pointer);
  uint32_t crc = kStart;
  for (size_t i = 0; i < size; ++i) crc = Step(crc, bytes[i]);
  return crc;
}

uint32_t CalcBytesCRC32(const THtBytes& bytes) noexcept { return CalcCRC32(bytes.data(), bytes.size()); }

uint32_t CalcStrCRC32(std::u16string_view text) noexcept {
  uint32_t crc = kStart;
  for (char16_t c : text) {
    if (c == 0) break;
    crc = Step(crc, static_cast<uint8_t>(c));
  }
  return crc;
}

}  // namespace ht
