#pragma once

#include "htruntime/hstring.h"

namespace ht {

/// Takes the first address from a list and returns what is left of the list.
///
///   SplitEmailAdress(u"\"A. Smith\" <a@b.org>, c@d.org"_hs, name, address)
///     // name "A. Smith", address "a@b.org", left ", c@d.org"
///
/// The name is quoted, or all words but the last. A rest begins behind the "," or ">" at which the reading stopped; the
/// comma behind a ">" gives an empty name and address at the next call.
hstring SplitEmailAdress(const hstring& text, hstring& name, hstring& address);

}  // namespace ht
