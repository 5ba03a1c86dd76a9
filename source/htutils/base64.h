#pragma once

#include <string>

#include "htruntime/bytes.h"
#include "htruntime/hstring.h"

namespace ht {

// Base64 with the standard alphabet and "=" padding (RFC 4648).

/// In lines of 76 characters with CR LF between them, as MIME asks (RFC 2045). Text is encoded as UTF-8.
hstring Base64EncodeString(std::u16string_view text);
std::string Base64EncodeString(std::string_view bytes);
hstring Base64EncodeBytes(const THtBytes& bytes);
/// In one line.
hstring Base64EncodeNoLF(const THtBytes& bytes);

/// The reverse. Characters outside the alphabet are passed over, and the first "=" ends the reading.
THtBytes Base64DecodetoBytes(std::u16string_view text);
THtBytes Base64DecodetoBytes(const THtBytes& bytes);
/// The bytes decoded as UTF-8.
hstring Base64DecodeString(std::u16string_view text);

}  // namespace ht
