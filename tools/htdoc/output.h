#pragma once

#include <string>
#include <string_view>

/// Writes to standard output: UTF-8, unpaired surrogates as U+FFFD. When nobody reads on, the program ends quietly;
/// any other failure raises EStreamError.
void Print(std::u16string_view text);
void Print(std::string_view text);
/// The text, and a line end unless it has one.
void PrintLine(std::u16string_view text);
/// Makes a file of the text in UTF-8. Raises EFileStreamError.
void WriteFile(const std::string& name, std::u16string_view text);
/// Writes what is still held back.
void FlushOutput();
