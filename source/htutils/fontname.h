#pragma once

#include "htruntime/hstring.h"

namespace ht {

/// The font name of a description, "name|weight|style". Without exactly these three parts weight and style are 0.
///
/// A weight that is 0 or no integer is 400; a style is held within 0 to 2, and is 0 if it is no integer.
hstring HtDecodeFontNameStr(std::u16string_view text, int32_t& weight, int32_t& style);

}  // namespace ht
