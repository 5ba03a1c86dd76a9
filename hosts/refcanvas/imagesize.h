#pragma once

#include "htruntime/bytes.h"

namespace ht {

/// Width and height in pixels, by the header of a PNG, JPEG, GIF or BMP image. False for other data, and for a header that
/// is cut off or gives no size.
bool ReadImageSize(const THtBytes& bytes, int32_t& width, int32_t& height);

}  // namespace ht
