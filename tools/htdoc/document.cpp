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

THtMarkupText Decode(const TArguments& arguments, std::string_view bytes) {
  const std::string_view name = arguments.Value(kEncodingOption.Name);
  if (name.empty()) return HtDecodeMarkup(bytes);
  if (name == "utf-8") return HtDecodeMarkup(bytes, heUTF8, 0);
  if (name == "utf-16") return HtDecodeMarkup(bytes, heUTF16, 0);
  int32_t page = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), page);
  if (error != std::errc() || end != name.data() + name.size() || !HtCodePageExists(page))
    throw EUsage("unknown encoding " + std::string(name));
  return HtDecodeMarkup(bytes, heANSI, page);
}

}  // namespace

std::string ReadInput(const std::string& fileName) {
  TFileStream file(fileName == "-" ? u"/dev/stdin"_hs : HtFromUtf8(fileName), fmOpenRead);
  std::string bytes;
  for (size_t read = 1; read > 0;) {
    const size_t size = bytes.size();
    bytes.resize(size + kBlock);
    read = static_cast<size_t>(file.Read(bytes.data() + size, static_cast<int64_t>(kBlock)));
    bytes.resize(size + read);
    ShowProgress("read", bytes.size());
  }
  return bytes;
}

std::unique_ptr<THtmlNode> ReadDocument(const TArguments& arguments, const std::string& fileName) {
  const std::string bytes = ReadInput(fileName);
  const THtMarkupText text = Decode(arguments, bytes);
  ShowProgress("parsing", bytes.size());
  auto root = std::make_unique<THtmlNode>();
  root->Parse(text.Text, text.EncodingKnown);
  EndProgress(bytes.size());
  return root;
}
