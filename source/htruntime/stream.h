#pragma once

#include "htruntime/bytes.h"
#include "htruntime/enums.h"
#include "htruntime/object.h"

namespace ht {

HT_ENUM(TSeekOrigin, uint8_t, soBeginning, soCurrent, soEnd);

/// A sequence of bytes that is read, written or both from a position on. Sizes and positions are in bytes and
/// count from 0. A stream serves one thread.
///
/// A new kind of stream overrides Read, Write and Seek, and SetSize where its size can change.
class TStream : public TObject {
  HT_CLASS(TStream, TObject)

 public:
  /// Reads up to `count` bytes and moves behind them. Returns how many: fewer than asked at the end only, and 0 for
  /// a count below 1.
  virtual int64_t Read(void* buffer, int64_t count) = 0;
  /// Writes up to `count` bytes and moves behind them. Returns how many: fewer than asked when the stream takes no
  /// more, and 0 for a count below 1.
  virtual int64_t Write(const void* buffer, int64_t count) = 0;
  /// Moves to a place counted from the start, the position or the end, and returns the new position. A place
  /// behind the end is allowed: nothing is read there, and a write fills the gap with zeros.
  virtual int64_t Seek(int64_t offset, TSeekOrigin origin) = 0;

  int64_t GetPosition() { return Seek(0, soCurrent); }
  void SetPosition(int64_t position) { Seek(position, soBeginning); }
  /// By a seek to the end and back.
  virtual int64_t GetSize();
  /// Cuts the stream, or lengthens it by zeros. Raises EStreamError "Stream write error" where the size is fixed.
  virtual void SetSize(int64_t size);

  /// Reads exactly `count` bytes. Raises EStreamError "Stream read error".
  void ReadBuffer(void* buffer, int64_t count);
  /// Writes exactly `count` bytes. Raises EStreamError "Stream write error".
  void WriteBuffer(const void* buffer, int64_t count);
  /// Writes `count` bytes of another stream from its position on; with a count of 0 all of it, from its start.
  /// Returns how many. Raises EStreamError "Stream read error" when it has fewer, "Stream write error" when this
  /// stream takes no more.
  int64_t CopyFrom(TStream& source, int64_t count);
  /// Everything from the position to the end.
  THtBytes ReadToEnd();

 protected:
  [[noreturn]] static void RaiseRead();
  [[noreturn]] static void RaiseWrite();
};

/// A stream over one block of memory. A position before the start is possible; nothing is read there.
class TCustomMemoryStream : public TStream {
  HT_CLASS(TCustomMemoryStream, TStream)

 public:
  int64_t Read(void* buffer, int64_t count) override;
  int64_t Seek(int64_t offset, TSeekOrigin origin) override;
  int64_t GetSize() override { return FSize; }
  /// The first byte; valid until the stream changes.
  uint8_t* GetMemory() const { return FMemory; }

 protected:
  uint8_t* FMemory = nullptr;
  int64_t FSize = 0;
  int64_t FPosition = 0;
};

/// A growing stream over memory of its own.
class TMemoryStream : public TCustomMemoryStream {
  HT_CLASS(TMemoryStream, TCustomMemoryStream)

 public:
  /// Nothing is written before the start.
  int64_t Write(const void* buffer, int64_t count) override;
  void SetSize(int64_t size) override;
  /// Releases the memory; the position is 0 again.
  void Clear();

 protected:
  void SetBytes(THtBytes bytes);

  THtBytes FBytes;

 private:
  void Refer();
};

/// A memory stream whose bytes are given in and taken out without a copy.
class TBytesStream : public TMemoryStream {
  HT_CLASS(TBytesStream, TMemoryStream)

 public:
  TBytesStream() = default;
  explicit TBytesStream(THtBytes bytes) { SetBytes(std::move(bytes)); }

  const THtBytes& GetBytes() const { return FBytes; }
  /// Leaves the stream empty.
  THtBytes TakeBytes();
};

}  // namespace ht
