#pragma once

#include <cstdint>
#include <vector>

namespace ht {

/// A byte array that owns its bytes.
using THtBytes = std::vector<uint8_t>;

}  // namespace ht
