#pragma once

#include <functional>

#include "htruntime/bytes.h"
#include "htruntime/interface.h"
#include "htruntime/stream.h"
#include "htutils/objectlist.h"

namespace ht {

/// Asked for the password of a protected document; false gives up. The library itself passes none.
using THtPasswordRequestEvent = std::function<bool(const hstring& fileName, hstring& password)>;
/// Gives a converter the data of an image that the document names.
using THtGetImageData = std::function<void(const hstring& name, THtBytes& data)>;

/// Turns documents of one format into HTML and text.
class IHtDocumentConverter : public IHtInterface {
 public:
  virtual void FiletoHTML(const hstring& fileName, hstring& html,
                          const THtPasswordRequestEvent& onPassword) = 0;
  virtual void StreamtoHTML(TStream& stream, hstring& html, const THtPasswordRequestEvent& onPassword) = 0;
  virtual void StreamtoText(TStream& stream, hstring& text, const THtGetImageData& onImage,
                            const THtPasswordRequestEvent& onPassword) = 0;
  /// What it is unregistered by.
  virtual const TClass* ConverterClass() = 0;

 protected:
  ~IHtDocumentConverter() = default;
};

/// Tells formats apart by their content.
class IHtDocumentFormatQualifier : public IHtInterface {
 public:
  /// The name of the format, or empty.
  virtual hstring GetFormat(TStream& stream) = 0;

 protected:
  ~IHtDocumentFormatQualifier() = default;
};

/// Kept for hosts; what it can do is between them.
class IHtImageConverter : public IHtInterface {
 protected:
  ~IHtImageConverter() = default;
};

/// Turns the bytes of one image format into those of another; false if it cannot.
using THtImageDecodeProc = bool (*)(const THtBytes& source, THtBytes& target);

/// A converter and the documents it is for.
class THtDocumentConverterRec : public TObject {
  HT_CLASS(THtDocumentConverterRec, TObject)

 public:
  hstring FileType, FileExt, Name;
  TIntf<IHtDocumentConverter> Converter;
};

/// What turns foreign formats into those that the library reads. Hosts register it at start-up:
///
///   THtDocumentConverter::RegisterConverter(u"doc"_hs, u".doc"_hs, u"Documents"_hs, converter);
///   hstring html = THtDocumentConverter::FiletoHTML(u"letter.doc"_hs);
///
/// The registry is one for the process and has no lock: fill it before other threads read it.
class THtDocumentConverter : public THtObjectList {
  HT_CLASS(THtDocumentConverter, THtObjectList)

 public:
  THtDocumentConverter() : THtObjectList(true) {}

  /// A file type that is registered already gets the new converter and keeps the rest. Case counts.
  static void RegisterConverter(const hstring& fileType, const hstring& fileExt, const hstring& name,
                                TIntf<IHtDocumentConverter> converter);
  /// Removes the first converter of that class.
  static void UnRegisterConverter(const TClass* converterClass);
  static void RegisterFormatQualifier(TIntf<IHtDocumentFormatQualifier> qualifier);
  static void RegisterImageConverter(TIntf<IHtImageConverter> converter);
  static void UnRegisterImageConverter();
  static TIntf<IHtImageConverter> ImageConverter();
  /// A name that is registered already gets the new function. Case does not count.
  static void RegisterDecoder(const hstring& name, THtImageDecodeProc decode);
  /// Null if there is none.
  static THtImageDecodeProc GetDecoder(const hstring& name);

  static int32_t ConverterCount();
  /// Index from 0. Raises EListError outside.
  static const THtDocumentConverterRec& Converters(int32_t index);
  /// Null if there is none. The type may have a point in front; case does not count.
  static TIntf<IHtDocumentConverter> GetConverter(const hstring& fileType);
  /// The answer of the qualifier, empty without one. The stream is moved back to where it was.
  static hstring GetStreamFormat(TStream& stream);
  /// Raises EFileStreamError for a file that cannot be read, if there is a qualifier to read it.
  static hstring GetFileFormat(const hstring& fileName);

  // All are empty where nobody knows the format; they raise what the converter raises, and EFileStreamError.

  /// The format is found by the ending of the name where that says enough, else by the content.
  static hstring FiletoHTML(const hstring& fileName);
  /// Without a format it is found by the content.
  static hstring StreamtoHTML(TStream& stream, hstring format = {});
  static hstring FiletoText(const hstring& fileName, const THtGetImageData& onImage = {});
  static hstring StreamtoText(TStream& stream, const THtGetImageData& onImage = {});
};

}  // namespace ht
