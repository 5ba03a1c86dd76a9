#include "htcanvas/documentconverter.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "htruntime/exception.h"

using namespace ht;

namespace {

// The counting of an interface, which an object lends to it.
template <class T>
class TCounted : public TInterfacedObject, public T {
 public:
  int32_t QueryInterface(const TGuid&, void**) override { return kNoInterface; }
  int32_t _AddRef() override { return AddReference(); }
  int32_t _Release() override { return ReleaseReference(); }
};

// Says what it was asked for, and by which name it goes.
class TEcho : public TCounted<IHtDocumentConverter> {
  HT_CLASS(TEcho, TInterfacedObject)

 public:
  explicit TEcho(std::u16string_view name = {}) : FName(name) {}
  void FiletoHTML(const hstring& fileName, hstring& html,
                  const THtPasswordRequestEvent& onPassword) override {
    html = FName + u":" + fileName.View().substr(fileName.View().rfind(u'/') + 1) + (onPassword ? u"!" : u"");
  }
  void StreamtoHTML(TStream& stream, hstring& html, const THtPasswordRequestEvent&) override {
    html = FName + u"<" + Rest(stream) + u">";
  }
  void StreamtoText(TStream& stream, hstring& text, const THtGetImageData& onImage,
                    const THtPasswordRequestEvent&) override {
    text = FName + u"|" + Rest(stream) + (onImage ? u"+" : u"");
  }
  const TClass* ConverterClass() override { return ClassType(); }

 private:
  static hstring Rest(TStream& stream) {
    const THtBytes bytes = stream.ReadToEnd();
    return HtFromUtf8(HtBytesView(bytes));
  }
  hstring FName;
};
class TOtherEcho : public TEcho {
  HT_CLASS(TOtherEcho, TEcho)

 public:
  using TEcho::TEcho;
};

// The format is the first three characters.
class TFirstThree : public TCounted<IHtDocumentFormatQualifier> {
 public:
  hstring GetFormat(TStream& stream) override {
    char mark[3] = {};
    return HtFromUtf8({mark, static_cast<size_t>(stream.Read(mark, 3))});
  }
};

using TConverter = THtDocumentConverter;

TEST(DocumentConverter, FindsTheConverterByNameAndContent) {
  const auto folder = std::filesystem::path(testing::TempDir()) / "htcore_converter";
  std::filesystem::create_directories(folder);
  const auto file = [&](const char* name) {
    std::ofstream(folder / name) << "rtf body";
    return HtFromUtf8((folder / name).string());
  };
  EXPECT_EQ(TConverter::ConverterCount(), 0);
  EXPECT_EQ(TConverter::FiletoHTML(u"missing.doc"_hs), u"");
  TConverter::RegisterConverter(u"doc"_hs, u".doc"_hs, u"Documents"_hs,
                                TIntf<IHtDocumentConverter>(new TEcho(u"old")));
  TConverter::RegisterConverter(u"doc"_hs, u""_hs, u""_hs, TIntf<IHtDocumentConverter>(new TEcho(u"doc")));
  TConverter::RegisterConverter(u"RTF"_hs, u".rtf"_hs, u"Rich"_hs,
                                TIntf<IHtDocumentConverter>(new TOtherEcho(u"rtf")));
  TConverter::RegisterConverter(u"html"_hs, u".htm"_hs, u"Pages"_hs,
                                TIntf<IHtDocumentConverter>(new TEcho(u"html")));
  TConverter::RegisterConverter(u"txt"_hs, u".txt"_hs, u"Texts"_hs,
                                TIntf<IHtDocumentConverter>(new TEcho(u"txt")));
  EXPECT_EQ(TConverter::ConverterCount(), 4);
  EXPECT_EQ(TConverter::Converters(0).Name, u"Documents");
  EXPECT_TRUE(TConverter::GetConverter(u".DOC"_hs));
  EXPECT_FALSE(TConverter::GetConverter(u"..doc"_hs));

  EXPECT_EQ(TConverter::FiletoHTML(file("a.doc")), u"doc:a.doc");  // by its ending: nobody looks inside yet
  EXPECT_EQ(TConverter::FiletoText(file("a.doc")), u"");
  TConverter::RegisterFormatQualifier(TIntf<IHtDocumentFormatQualifier>(new TFirstThree));
  const struct {
    const char* Name;
    const char16_t *Html, *Text;
  } kRows[] = {
      {"a.doc", u"rtf:a.doc", u"rtf|rtf body+"},
      {"a.htm", u"html:a.htm", u"html|rtf body+"},
      {"a.Html", u"html:a.Html", u"html|rtf body+"},
      {"a.TXT", u"txt:a.TXT", u"txt|rtf body+"},
      {"a.wmf", u"", u""},
      {"a", u"rtf:a", u"rtf|rtf body+"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(TConverter::FiletoHTML(file(row.Name)), row.Html);
    EXPECT_EQ(TConverter::FiletoText(file(row.Name), [](const hstring&, THtBytes&) {}), row.Text);
  }
  EXPECT_THROW(TConverter::FiletoHTML(u"missing.doc"_hs), EFileStreamError);
  TBytesStream stream(THtBytes{'r', 't', 'f', '1'});
  EXPECT_EQ(TConverter::StreamtoHTML(stream), u"rtf<rtf1>");
  stream.SetPosition(1);
  EXPECT_EQ(TConverter::StreamtoHTML(stream, u"Doc"_hs), u"doc<tf1>");
  stream.SetPosition(0);
  EXPECT_EQ(TConverter::StreamtoText(stream), u"rtf|rtf1");

  TConverter::UnRegisterConverter(TEcho::Class());
  EXPECT_FALSE(TConverter::GetConverter(u"doc"_hs));
  EXPECT_TRUE(TConverter::GetConverter(u"html"_hs));
  std::filesystem::remove_all(folder);
}

TEST(DocumentConverter, Decoders) {
  const THtImageDecodeProc first = [](const THtBytes&, THtBytes&) { return false; };
  const THtImageDecodeProc second = [](const THtBytes&, THtBytes&) { return true; };
  EXPECT_EQ(TConverter::GetDecoder(u"WebP"_hs), nullptr);
  TConverter::RegisterDecoder(u"webp"_hs, first);
  TConverter::RegisterDecoder(u"WEBP"_hs, second);
  EXPECT_EQ(TConverter::GetDecoder(u"WebP"_hs), second);
}

}  // namespace
