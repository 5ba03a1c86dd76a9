#include "htutils/files.h"

#include <algorithm>
#include <bit>

#include "htruntime/bytes.h"
#include "htruntime/codepage.h"
#include "htruntime/filestream.h"

namespace ht {

namespace {

// Units go to and from files as they lie in memory, and files are little-endian.
static_assert(std::endian::native == std::endian::little);

THtBytes ReadFile(const hstring& fileName) { return TFileStream(fileName, fmOpenRead).ReadToEnd(); }

hstring RawUtf16(std::string_view bytes) {
  hstring text = hstring::Uninitialized(bytes.size() / 2);
  if (text.Empty()) return text;
  std::memcpy(text.Unique(), bytes.data(), text.Size() * sizeof(char16_t));
  return text;
}

void WriteFile(const hstring& fileName, const void* bytes, size_t size) {
  TFileStream(fileName, fmCreate).WriteBuffer(bytes, static_cast<int64_t>(size));
}

}  // namespace

hstring FileToStr(const hstring& fileName) {
  const THtBytes file = ReadFile(fileName);
  const std::string_view bytes = HtBytesView(file);
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) return RawUtf16(bytes.substr(2));
  if (bytes.size() > 1 && bytes[1] == 0) return RawUtf16(bytes);
  if (bytes.starts_with("\xEF\xBB")) return HtFromUtf8(bytes.substr(std::min<size_t>(3, bytes.size())));
  return HtBytesToText(bytes, HtSystemCodePage());
}

std::string FileToStrA(const hstring& fileName) { return FileToStrR(fileName); }
std::string FileToStrR(const hstring& fileName) { return std::string(HtBytesView(ReadFile(fileName))); }

void StrtoFile(std::u16string_view text, const hstring& fileName) {
  std::u16string units = u"\xFEFF";
  units += text;
  WriteFile(fileName, units.data(), units.size() * sizeof(char16_t));
}

void StrtoFileA(std::string_view bytes, const hstring& fileName) { StrtoFileR(bytes, fileName); }
void StrtoFileR(std::string_view bytes, const hstring& fileName) {
  WriteFile(fileName, bytes.data(), bytes.size());
}

}  // namespace ht
