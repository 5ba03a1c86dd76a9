#include "output.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "htruntime/exception.h"
#include "htruntime/filestream.h"

namespace {

void Check(bool written) {
  if (written) return;
  if (errno == EPIPE) std::_Exit(0);
  throw ht::EStreamError(u"Cannot write the output");
}

}  // namespace

void Print(std::string_view text) { Check(std::fwrite(text.data(), 1, text.size(), stdout) == text.size()); }
void Print(std::u16string_view text) { Print(std::string_view(ht::HtToUtf8(text))); }

void PrintLine(std::u16string_view text) {
  Print(text);
  if (!text.ends_with(u'\n')) Print("\n");
}

void WriteFile(const std::string& name, std::u16string_view text) {
  const std::string bytes = ht::HtToUtf8(text);
  ht::TFileStream file(ht::HtFromUtf8(name), ht::fmCreate);
  file.WriteBuffer(bytes.data(), static_cast<int64_t>(bytes.size()));
}

void FlushOutput() { Check(std::fflush(stdout) == 0); }
