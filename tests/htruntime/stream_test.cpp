#include "htruntime/stream.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "htruntime/exception.h"
#include "htruntime/filestream.h"

namespace ht {
namespace {

class TTempFile {
 public:
  ~TTempFile() { unlink(HtToUtf8(Name).c_str()); }
  const hstring Name = HtFromUtf8(testing::TempDir() + "ht_stream_" + std::to_string(getpid()) + "_ü.bin");
};

std::string Content(TStream& stream) {
  stream.SetPosition(0);
  const THtBytes bytes = stream.ReadToEnd();
  return {bytes.begin(), bytes.end()};
}

template <class TCall>
hstring MessageOf(TCall call) {
  try {
    call();
  } catch (const EStreamError& error) {
    return error.Message;
  }
  return u"nothing raised"_hs;
}

// The contract, over memory and over a file.
class StreamContract : public testing::TestWithParam<bool> {
 protected:
  TTempFile FFile;
  std::unique_ptr<TStream> FStream =
      GetParam() ? std::unique_ptr<TStream>(std::make_unique<TFileStream>(FFile.Name, fmCreate))
                 : std::make_unique<TMemoryStream>();
};

TEST_P(StreamContract, ReadWriteSeek) {
  TStream& s = *FStream;
  EXPECT_EQ(s.GetSize(), 0);
  EXPECT_EQ(s.Write("abcdef", 6), 6);
  EXPECT_EQ(s.GetPosition(), 6);
  EXPECT_EQ(s.Seek(-2, soEnd), 4);
  EXPECT_EQ(s.Write("XYZ", 3), 3);
  EXPECT_EQ(Content(s), "abcdXYZ");
  EXPECT_EQ(s.Seek(1, soBeginning), 1);
  EXPECT_EQ(s.Seek(1, soCurrent), 2);
  char buffer[10] = {};
  EXPECT_EQ(s.Read(buffer, 10), 5);
  EXPECT_STREQ(buffer, "cdXYZ");
  EXPECT_EQ(s.Read(buffer, 1), 0);
  EXPECT_EQ(s.Read(buffer, 0), 0);
  EXPECT_EQ(s.Read(buffer, -5), 0);
  EXPECT_EQ(s.Write(buffer, -5), 0);
}

TEST_P(StreamContract, BehindTheEnd) {
  TStream& s = *FStream;
  s.WriteBuffer("ab", 2);
  s.SetPosition(4);
  char c;
  EXPECT_EQ(s.Read(&c, 1), 0);
  EXPECT_EQ(s.GetSize(), 2);
  s.WriteBuffer("z", 1);
  EXPECT_EQ(Content(s), std::string("ab\0\0z", 5));
  s.SetSize(3);
  EXPECT_EQ(Content(s), std::string("ab\0", 3));
  s.SetSize(5);
  EXPECT_EQ(Content(s), std::string("ab\0\0\0", 5));
}

TEST_P(StreamContract, ExactReadsAndCopies) {
  TStream& s = *FStream;
  std::string big(200001, 'q');
  big.back() = '!';
  TBytesStream source(THtBytes(big.begin(), big.end()));
  source.SetPosition(77);
  EXPECT_EQ(s.CopyFrom(source, 0), 200001) << "all of it, from its start";
  EXPECT_EQ(Content(s), big);
  source.SetPosition(199999);
  EXPECT_EQ(s.CopyFrom(source, 2), 2);
  source.SetPosition(199999);
  EXPECT_EQ(MessageOf([&] { s.CopyFrom(source, 3); }), u"Stream read error");
  char c[4];
  s.Seek(-3, soEnd);
  EXPECT_EQ(MessageOf([&] { s.ReadBuffer(c, 4); }), u"Stream read error");
  s.ReadBuffer(c, 0);
}

INSTANTIATE_TEST_SUITE_P(MemoryAndFile, StreamContract, testing::Bool());

TEST(MemoryStream, BytesGoInAndOutWithoutACopy) {
  THtBytes bytes{1, 2, 3};
  const uint8_t* place = bytes.data();
  TBytesStream stream(std::move(bytes));
  EXPECT_EQ(stream.GetMemory(), place);
  const THtBytes out = stream.TakeBytes();
  EXPECT_EQ(out.data(), place);
  EXPECT_EQ(stream.GetSize(), 0);
  EXPECT_EQ(stream.GetPosition(), 0);
}

TEST(MemoryStream, BeforeTheStart) {
  TMemoryStream stream;
  stream.WriteBuffer("abc", 3);
  EXPECT_EQ(stream.Seek(-5, soCurrent), -2);
  char c;
  EXPECT_EQ(stream.Read(&c, 1), 0);
  EXPECT_EQ(MessageOf([&] { stream.WriteBuffer("x", 1); }), u"Stream write error");
  EXPECT_EQ(MessageOf([&] { stream.Seek(INT64_MIN, soCurrent); }), u"Stream position out of range");
  EXPECT_EQ(Content(stream), "abc");
}

TEST(FileStream, OpeningAndItsErrors) {
  TTempFile file;
  const hstring name = file.Name;
  const hstring missing = MessageOf([&] { TFileStream(name, fmOpenRead); });
  EXPECT_EQ(missing, u"Cannot open file \""_hs + name + u"\". No such file or directory");
  EXPECT_EQ(MessageOf([&] { TFileStream(u"/nowhere/x", fmCreate); }),
            u"Cannot create file \"/nowhere/x\". No such file or directory");
  EXPECT_EQ(MessageOf([&] { TFileStream(u"/", fmOpenRead); }), u"Cannot open file \"/\". Is a directory");
  EXPECT_NE(MessageOf([&] { TFileStream(hstring(std::u16string_view(u"/\0", 2)), fmOpenRead); }),
            u"nothing raised");

  TFileStream(name, fmCreate).WriteBuffer("old", 3);
  {
    TFileStream reader(name, fmOpenRead);
    EXPECT_EQ(MessageOf([&] { reader.WriteBuffer("x", 1); }), u"Stream write error");
    EXPECT_EQ(MessageOf([&] { reader.SetSize(1); }), u"Stream write error");
    EXPECT_EQ(MessageOf([&] { reader.Seek(-1, soBeginning); }), u"Stream seek error");
    TFileStream writer(name, fmOpenWrite);
    writer.WriteBuffer("N", 1);
    char c;
    EXPECT_EQ(MessageOf([&] { writer.Read(&c, 1); }), u"Stream read error");
    EXPECT_EQ(Content(reader), "Nld");
  }
  TFileStream both(name, fmOpenReadWrite);
  EXPECT_EQ(Content(both), "Nld");
}

TEST(FileStream, Sharing) {
  TTempFile file;
  TFileStream(file.Name, fmCreate).WriteBuffer("kept", 4);
  struct TRow {
    TFileMode mode;
    TFileShare share, other;
    bool refused;  // another reader with `other`
  };
  for (const TRow& row :
       {TRow{fmOpenRead, shDenyWrite, shDenyWrite, false}, TRow{fmOpenRead, shDenyWrite, shExclusive, true},
        TRow{fmOpenReadWrite, shDenyWrite, shDenyWrite, true},
        TRow{fmOpenRead, shExclusive, shDenyWrite, true}, TRow{fmOpenRead, shExclusive, shDenyNone, false}}) {
    TFileStream first(file.Name, row.mode, row.share);
    const bool refused =
        MessageOf([&] { TFileStream(file.Name, fmOpenRead, row.other); }) != u"nothing raised";
    EXPECT_EQ(refused, row.refused) << row.share << " against " << row.other;
  }
  TFileStream holder(file.Name, fmOpenRead, shDenyWrite);
  EXPECT_THROW(TFileStream(file.Name, fmCreate, shExclusive), EFileStreamError);
  EXPECT_EQ(Content(holder), "kept") << "a refused fmCreate empties nothing";
}

TEST(FileStream, ReadsWhatHasNoSize) {
  TFileStream status(u"/proc/self/status", fmOpenRead);
  EXPECT_EQ(status.GetSize(), 0);
  const THtBytes bytes = status.ReadToEnd();
  EXPECT_TRUE(HtBytesView(bytes).starts_with("Name:"));
}

}  // namespace
}  // namespace ht
