#include "document.h"

#include <charconv>
#include <cstdio>
#include <unistd.h>

#include "htruntime/codepage.h"
#include "htruntime/filestream.h"

using namespace ht;

namespace {

constexpr size_t kBlock = size_t{1} << 20;
constexpr size_t kMuch = 50 * kBlock;

void ShowProgress(const char* what, size_t bytes) {
  if (bytes > kMuch && isatty(STDERR_FILENO))
    std::fprintf(stderr, "\rhtdoc: %s %zu MB ", what, bytes / kBlock);
}

void EndProgress(size_t bytes) {
  if (bytes > kMuch && isatty(STDERR_FILENO)) std::fprintf(stderr, "\r\x1b[K");
}

// What --encoding asks for: heDefault without it, else the encoding and, for heANSI, the code page.
THtmlEncoding AskedEncoding(const TArguments& arguments, int32_t& page) {
  page = 0;
  const std::string_view name = arguments.Value(kEncodingOption.Name);
  if (!arguments.Has(kEncodingOption.Name)) return heDefault;
  if (name == "utf-8") return heUTF8;
  if (name == "utf-16") return heUTF16;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), page);
  if (error != std::errc() || end != name.data() + name.size() || !HtCodePageExists(page))
    throw EUsage("unknown encoding " + std::string(name));
  return heANSI;
}

THtMarkupText Decode(const TArguments& arguments, std::string_view bytes) {
  int32_t page;
  const THtmlEncoding encoding = AskedEncoding(arguments, page);
  return encoding == heDefault ? HtDecodeMarkup(bytes) : HtDecodeMarkup(bytes, encoding, page);
}

}  // namespace

std::string ReadInput(const std::string& fileName) {
  std::unique_ptr<TFileStream> file;
  if (fileName != "-") file = std::make_unique<TFileStream>(HtFromUtf8(fileName), fmOpenRead);
  const auto read = [&](char* buffer) {
    if (file) return static_cast<size_t>(file->Read(buffer, static_cast<int64_t>(kBlock)));
    const size_t count = std::fread(buffer, 1, kBlock, stdin);
    if (count == 0 && std::ferror(stdin)) throw EStreamError(u"Cannot read standard input");
    return count;
  };
  std::string bytes;
  for (size_t count = 1; count > 0;) {
    const size_t size = bytes.size();
    bytes.resize(size + kBlock);
    count = read(bytes.data() + size);
    bytes.resize(size + count);
    ShowProgress("read", bytes.size());
  }
  return bytes;
}

hstring ReadText(const TArguments& arguments, const std::string& fileName) {
  int32_t page;
  const THtmlEncoding encoding = AskedEncoding(arguments, page);
  const std::string bytes = ReadInput(fileName);
  return encoding == heDefault ? HtDecodeText(bytes) : HtDecodeMarkup(bytes, encoding, page).Text;
}

std::unique_ptr<THtmlNode> ReadDocument(const TArguments& arguments, const std::string& fileName) {
  auto root = std::make_unique<THtmlNode>();
  ReadDocument(arguments, fileName, *root);
  return root;
}

void ReadDocument(const TArguments& arguments, const std::string& fileName, THtmlNode& root) {
  const std::string bytes = ReadInput(fileName);
  const THtMarkupText text = Decode(arguments, bytes);
  ShowProgress("parsing", bytes.size());
  root.Parse(text.Text, text.EncodingKnown);
  EndProgress(bytes.size());
}
