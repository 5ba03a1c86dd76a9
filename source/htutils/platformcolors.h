#pragma once

#include <cstdint>

namespace ht {

/// The platform's own colour for an index, 0x00BBGGRR; 0 (black) for an index that it does not know. On a
/// platform without system colours: those of the classic desktop, indexes 0 to 30.
uint32_t HtPlatformSysColor(uint32_t index);

}  // namespace ht
