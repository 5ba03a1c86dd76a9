#pragma once

#include <memory>
#include <string>

#include "arguments.h"
#include "htmlpars/htmlpars.h"
#include "htutils/faststring.h"

/// The options that every command with a document takes.
constexpr TOption kEncodingOption{"--encoding", true};
#define HTDOC_ENCODING_HELP                                                                \
  "  --encoding NAME  read the file as utf-8, utf-16 or the code page of that number; a\n" \
  "                   charset inside the document is then ignored\n"

/// The bytes of a file; "-" is standard input. Shows its progress on a terminal where there is much to read. Raises
/// EFileStreamError or EStreamError.
std::string ReadInput(const std::string& fileName);

/// The text of a file that is no document. Raises EUsage for an encoding that does not exist.
ht::hstring ReadText(const TArguments& arguments, const std::string& fileName);

/// The document of a file, parsed. Raises EUsage for an encoding that does not exist.
std::unique_ptr<ht::THtmlNode> ReadDocument(const TArguments& arguments, const std::string& fileName);
/// The same into a node of the caller's.
void ReadDocument(const TArguments& arguments, const std::string& fileName, ht::THtmlNode& root);
