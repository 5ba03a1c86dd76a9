#pragma once

#include <cstdint>
#include <string_view>

namespace ht {

/// The colour, 0xAARRGGBB, of a system colour index.
using TThemeColorProc = uint32_t (*)(uint32_t index);

/// The system colours in force. At the start: HtPlatformSysColor with red and blue exchanged and alpha 255.
TThemeColorProc HtThemeColorProc();
/// Replaces them for the whole library; null brings back the start value. Not locked: call it before other
/// threads use colours.
void HtSetThemeColorProc(TThemeColorProc proc);

/// The colour of a system colour name ("window", "ButtonFace") by the proc in force; 0 if there is no such
/// name. The case of ASCII letters does not count.
uint32_t HtStringtoSysColor(std::u16string_view name);

/// The platform's own colour for an index, 0x00BBGGRR; 0 (black) for an index that it does not know. On a
/// platform without system colours: those of the classic desktop, indexes 0 to 30.
uint32_t HtPlatformSysColor(uint32_t index);

}  // namespace ht
