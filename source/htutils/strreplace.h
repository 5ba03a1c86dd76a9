#pragma once

#include "htruntime/hstring.h"

namespace ht {

/// Replaces in place. A text without `from` is not touched, so it stays shared.
void ReplaceChar(hstring& text, char16_t from, char16_t to);

/// The text with every `from` replaced, left to right; what is put in is not looked at again. An empty `from` gives
/// the text as it is.
hstring ReplaceStr(const hstring& text, std::u16string_view from, std::u16string_view to);

}  // namespace ht
