#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ht {

/// A byte array that owns its bytes.
using THtBytes = std::vector<uint8_t>;

/// The same bytes as characters; valid as long as they are.
inline std::string_view HtBytesView(const uint8_t* bytes, size_t count) {
  return {reinterpret_cast<const char*>(bytes), count};
}
inline std::string_view HtBytesView(const THtBytes& bytes) { return HtBytesView(bytes.data(), bytes.size()); }

}  // namespace ht
