#pragma once

#include <cstdint>
#include <string_view>

#include "htutils/platformcolors.h"

namespace ht {

/// The colour, 0xAARRGGBB, of a system colour index.
using TThemeColorProc = uint32_t (*)(uint32_t index);

/// The system colours in force. At the start: Win2Color of HtPlatformSysColor.
TThemeColorProc HtThemeColorProc();
/// Replaces them for the whole library; null brings back the start value. Not locked: call it before other
/// threads use colours.
void HtSetThemeColorProc(TThemeColorProc proc);

/// The colour of a system colour name ("window", "ButtonFace") by the proc in force; 0 if there is no such
/// name. The case of ASCII letters does not count.
uint32_t HtStringtoSysColor(std::u16string_view name);

}  // namespace ht
