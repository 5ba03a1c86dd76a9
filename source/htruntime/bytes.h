#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace ht {

/// A byte array that owns its bytes.
using THtBytes = std::vector<uint8_t>;

/// The same bytes as characters; valid while the array is unchanged.
inline std::string_view HtBytesView(const THtBytes& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace ht
