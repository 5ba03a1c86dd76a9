#pragma once

#include "htruntime/stream.h"

namespace ht {

HT_ENUM(TFileMode, uint8_t, fmOpenRead, fmOpenWrite, fmOpenReadWrite, fmCreate);
/// What others may do with the file meanwhile: everything, only read, nothing. It holds among those who ask for it:
/// shDenyNone asks for nothing and is refused nothing.
HT_ENUM(TFileShare, uint8_t, shDenyNone, shDenyWrite, shExclusive);

/// A file, without a buffer. fmCreate makes the file, or empties it, and opens it for reading and writing.
///
/// Raises EFileStreamError, the system's reason behind the name:
///   "Cannot open file \"%s\". %s"
///   "Cannot create file \"%s\". %s"
/// and, later, EStreamError "Stream read error" or "Stream write error" when the system refuses.
class TFileStream : public TStream {
  HT_CLASS(TFileStream, TStream)

 public:
  TFileStream(const hstring& fileName, TFileMode mode, TFileShare share = shDenyNone);
  ~TFileStream() override;

  int64_t Read(void* buffer, int64_t count) override;
  int64_t Write(const void* buffer, int64_t count) override;
  /// A place before the start raises EStreamError "Stream seek error".
  int64_t Seek(int64_t offset, TSeekOrigin origin) override;
  /// 0 for what is no file on a disk: a pipe, a device.
  int64_t GetSize() override;
  void SetSize(int64_t size) override;

  const hstring& GetFileName() const { return FFileName; }

 private:
  hstring FFileName;
  int FHandle = -1;

  /// 0, or the system's error code.
  int Open(TFileMode mode, TFileShare share);
};

}  // namespace ht
