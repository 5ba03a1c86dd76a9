#pragma once

#include "htruntime/hstring.h"

namespace ht {

// Names that more than one file looks up.
inline constexpr hstring HtClassStr = u"class"_hs;
inline constexpr hstring sScript = u"script"_hs;
inline constexpr hstring sStyle = u"style"_hs;
inline constexpr hstring sAsterisk = u"*"_hs;

}  // namespace ht
