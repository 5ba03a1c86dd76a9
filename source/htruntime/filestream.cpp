#include "htruntime/filestream.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "htruntime/exception.h"
#include "htruntime/format.h"

namespace ht {

namespace {

constexpr int kFlags[] = {O_RDONLY, O_WRONLY, O_RDWR, O_RDWR | O_CREAT};
static_assert(std::size(kFlags) == HtEnumCount(TFileMode{}));

// What one system call may move; larger counts are cut by the system anyway.
constexpr int64_t kMaxTransfer = 0x40000000;

size_t Portion(int64_t left) { return static_cast<size_t>(std::min(left, kMaxTransfer)); }

int LockOf(TFileMode mode, TFileShare share) {
  // Who denies others the writing and writes himself tolerates no second one of his kind.
  return share == shDenyWrite && mode == fmOpenRead ? LOCK_SH : LOCK_EX;
}

}  // namespace

TFileStream::TFileStream(const hstring& fileName, TFileMode mode, TFileShare share) : FFileName(fileName) {
  const int error = Open(mode, share);
  if (error == 0) return;
  if (FHandle >= 0) close(FHandle);
  const hstring reason = HtFromUtf8(std::generic_category().message(error));
  throw EFileStreamError(
      HtFormat(mode == fmCreate ? u"Cannot create file \"%s\". %s" : u"Cannot open file \"%s\". %s", fileName,
               reason));
}

TFileStream::~TFileStream() { close(FHandle); }

int TFileStream::Open(TFileMode mode, TFileShare share) {
  const std::string name = HtToUtf8(FFileName);
  if (name.find('\0') != name.npos) return ENOENT;
  do {
    FHandle = open(name.c_str(), kFlags[mode] | O_CLOEXEC, 0666);
  } while (FHandle < 0 && errno == EINTR);
  if (FHandle < 0) return errno;

  struct stat info;
  if (fstat(FHandle, &info) != 0) return errno;
  if (S_ISDIR(info.st_mode)) return EISDIR;
  if (share != shDenyNone && flock(FHandle, LockOf(mode, share) | LOCK_NB) != 0) return errno;
  // Emptied only now: a file that another one holds stays as it is.
  if (mode == fmCreate && S_ISREG(info.st_mode) && ftruncate(FHandle, 0) != 0) return errno;
  return 0;
}

int64_t TFileStream::Read(void* buffer, int64_t count) {
  auto* bytes = static_cast<uint8_t*>(buffer);
  int64_t done = 0;
  while (done < count) {
    const ssize_t read = ::read(FHandle, bytes + done, Portion(count - done));
    if (read == 0) break;
    if (read > 0)
      done += read;
    else if (errno != EINTR)
      RaiseRead();
  }
  return done;
}

int64_t TFileStream::Write(const void* buffer, int64_t count) {
  const auto* bytes = static_cast<const uint8_t*>(buffer);
  int64_t done = 0;
  while (done < count) {
    const ssize_t written = ::write(FHandle, bytes + done, Portion(count - done));
    if (written >= 0)
      done += written;
    else if (errno != EINTR)
      RaiseWrite();
  }
  return done;
}

int64_t TFileStream::Seek(int64_t offset, TSeekOrigin origin) {
  constexpr int kOrigins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
  const off_t position = lseek(FHandle, offset, kOrigins[origin]);
  if (position < 0) throw EStreamError(u"Stream seek error");
  return position;
}

int64_t TFileStream::GetSize() {
  struct stat info;
  return fstat(FHandle, &info) == 0 ? info.st_size : 0;
}

void TFileStream::SetSize(int64_t size) {
  if (ftruncate(FHandle, size) != 0) RaiseWrite();
}

}  // namespace ht
