#include "htruntime/stream.h"

#include <algorithm>
#include <cstring>

#include "htruntime/exception.h"

namespace ht {

namespace {

constexpr int64_t kCopyBlock = 0x10000;

int64_t Sum(int64_t a, int64_t b) {
  int64_t sum;
  if (__builtin_add_overflow(a, b, &sum)) throw EStreamError(u"Stream position out of range");
  return sum;
}

}  // namespace

void TStream::RaiseRead() { throw EStreamError(u"Stream read error"); }
void TStream::RaiseWrite() { throw EStreamError(u"Stream write error"); }

int64_t TStream::GetSize() {
  const int64_t position = Seek(0, soCurrent);
  const int64_t size = Seek(0, soEnd);
  Seek(position, soBeginning);
  return size;
}

void TStream::SetSize(int64_t) { RaiseWrite(); }

void TStream::ReadBuffer(void* buffer, int64_t count) {
  if (count > 0 && Read(buffer, count) != count) RaiseRead();
}

void TStream::WriteBuffer(const void* buffer, int64_t count) {
  if (count > 0 && Write(buffer, count) != count) RaiseWrite();
}

int64_t TStream::CopyFrom(TStream& source, int64_t count) {
  const bool whole = count == 0;
  if (whole) source.SetPosition(0);
  THtBytes block(static_cast<size_t>(whole ? kCopyBlock : std::clamp<int64_t>(count, 0, kCopyBlock)));
  int64_t copied = 0;
  while (whole || copied < count) {
    const auto size = static_cast<int64_t>(block.size());
    const int64_t read = source.Read(block.data(), whole ? size : std::min(size, count - copied));
    if (read <= 0) {
      if (whole) break;
      RaiseRead();
    }
    WriteBuffer(block.data(), read);
    copied += read;
  }
  return copied;
}

THtBytes TStream::ReadToEnd() {
  THtBytes bytes(static_cast<size_t>(GetSize()));
  int64_t read = Read(bytes.data(), static_cast<int64_t>(bytes.size()));
  // A pipe has a size of 0, and a file may grow while it is read.
  while (read == static_cast<int64_t>(bytes.size())) {
    uint8_t more[4096];
    const int64_t count = Read(more, sizeof more);
    bytes.insert(bytes.end(), more, more + count);
    read += count;
    if (count == 0) break;
  }
  bytes.resize(static_cast<size_t>(read));
  return bytes;
}

int64_t TCustomMemoryStream::Read(void* buffer, int64_t count) {
  if (count <= 0 || FPosition < 0 || FPosition >= FSize) return 0;
  count = std::min(count, FSize - FPosition);
  std::memcpy(buffer, FMemory + FPosition, static_cast<size_t>(count));
  FPosition += count;
  return count;
}

int64_t TCustomMemoryStream::Seek(int64_t offset, TSeekOrigin origin) {
  FPosition = Sum(origin == soBeginning ? 0 : origin == soCurrent ? FPosition : FSize, offset);
  return FPosition;
}

void TMemoryStream::Refer() {
  FMemory = FBytes.data();
  FSize = static_cast<int64_t>(FBytes.size());
}

void TMemoryStream::SetBytes(THtBytes bytes) {
  FBytes = std::move(bytes);
  FPosition = 0;
  Refer();
}

int64_t TMemoryStream::Write(const void* buffer, int64_t count) {
  if (count <= 0 || FPosition < 0) return 0;
  const int64_t end = Sum(FPosition, count);
  const auto* bytes = static_cast<const uint8_t*>(buffer);
  if (FPosition > FSize) FBytes.resize(static_cast<size_t>(FPosition));
  const auto inside = std::min(count, static_cast<int64_t>(FBytes.size()) - FPosition);
  std::copy(bytes, bytes + inside, FBytes.begin() + FPosition);
  FBytes.insert(FBytes.end(), bytes + inside, bytes + count);
  Refer();
  FPosition = end;
  return count;
}

void TMemoryStream::SetSize(int64_t size) {
  if (size < 0) RaiseWrite();
  FBytes.resize(static_cast<size_t>(size));
  Refer();
}

void TMemoryStream::Clear() { SetBytes({}); }

THtBytes TBytesStream::TakeBytes() {
  THtBytes bytes = std::move(FBytes);
  Clear();
  return bytes;
}

}  // namespace ht
