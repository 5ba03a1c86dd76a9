#pragma once

#include <string>

#include "htruntime/hstring.h"

namespace ht {

// Whole files as text or bytes. All raise the EFileStreamError of a file that cannot be opened.

/// A file's text. UTF-16 behind a mark of either byte order, taken as it lies, little-endian; UTF-16 without a mark
/// when its second byte is 0; UTF-8 behind its mark; else bytes in the system code page. Half a unit at the end is
/// dropped.
hstring FileToStr(const hstring& fileName);
/// A file's bytes: text in the system code page, or of no told encoding.
std::string FileToStrA(const hstring& fileName);
std::string FileToStrR(const hstring& fileName);

/// Writes a file of UTF-16, little-endian behind a mark.
void StrtoFile(std::u16string_view text, const hstring& fileName);
/// Both write the bytes.
void StrtoFileA(std::string_view bytes, const hstring& fileName);
void StrtoFileR(std::string_view bytes, const hstring& fileName);

}  // namespace ht
