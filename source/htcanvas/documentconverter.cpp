#include "htcanvas/documentconverter.h"

#include <algorithm>

#include "htruntime/exception.h"
#include "htruntime/filestream.h"
#include "htruntime/unicode.h"
#include "htutils/faststringlist.h"

namespace ht {

namespace {

class TImageDecoderRec : public TObject {
  HT_CLASS(TImageDecoderRec, TObject)

 public:
  THtImageDecodeProc Decode = nullptr;
};

struct TRegistries {
  TRegistries() {
    Decoders.OwnsObjects = true;
    Decoders.SetSorted(true);
  }

  THtDocumentConverter Converters;
  TIntf<IHtDocumentFormatQualifier> Qualifier;
  TIntf<IHtImageConverter> ImageConverter;
  TFastStringList Decoders;  // of TImageDecoderRec
};

TRegistries& Registries() {
  static TRegistries registries;
  return registries;
}

// The first record that is asked for; null if there is none.
template <class TIs>
THtDocumentConverterRec* FindRec(const TIs& is) {
  const THtDocumentConverter& list = Registries().Converters;
  for (int32_t i = 0; i < list.GetCount(); ++i)
    if (auto* record = list.Get<THtDocumentConverterRec>(i); is(*record)) return record;
  return nullptr;
}

// In upper case with its point; empty for a name without one.
hstring Extension(std::u16string_view fileName) {
  const size_t at = fileName.find_last_of(u"./\\:");
  return at == fileName.npos || fileName[at] != u'.' ? hstring() : HtUpperCase(fileName.substr(at));
}

hstring WithoutPoint(std::u16string_view extension) {
  return extension.substr(extension.starts_with(u'.') ? 1 : 0);
}

// Formats whose names say all.
hstring FormatOf(const hstring& fileName) {
  const hstring extension = Extension(fileName);
  for (const std::u16string_view known : {u".EMF", u".WMF", u".HTML", u".TXT"})
    if (extension == known) return WithoutPoint(extension);
  return extension == u".HTM" ? u"HTML"_hs : THtDocumentConverter::GetFileFormat(fileName);
}

TIntf<IHtDocumentConverter> ConverterOf(const hstring& format) {
  return format.Empty() ? nullptr : THtDocumentConverter::GetConverter(format);
}

}  // namespace

void THtDocumentConverter::RegisterConverter(const hstring& fileType, const hstring& fileExt,
                                             const hstring& name, TIntf<IHtDocumentConverter> converter) {
  if (auto* known = FindRec([&](const auto& record) { return record.FileType == fileType; })) {
    known->Converter = std::move(converter);
    return;
  }
  auto record = std::make_unique<THtDocumentConverterRec>();
  record->FileType = fileType;
  record->FileExt = fileExt;
  record->Name = name;
  record->Converter = std::move(converter);
  Registries().Converters.Add(record.get());
  record.release();
}

void THtDocumentConverter::UnRegisterConverter(const TClass* converterClass) {
  const auto is = [&](const auto& record) {
    return record.Converter && record.Converter->ConverterClass() == converterClass;
  };
  if (auto* record = FindRec(is)) Registries().Converters.Remove(record);
}

void THtDocumentConverter::RegisterFormatQualifier(TIntf<IHtDocumentFormatQualifier> qualifier) {
  Registries().Qualifier = std::move(qualifier);
}

void THtDocumentConverter::RegisterImageConverter(TIntf<IHtImageConverter> converter) {
  Registries().ImageConverter = std::move(converter);
}

void THtDocumentConverter::UnRegisterImageConverter() { RegisterImageConverter(nullptr); }
TIntf<IHtImageConverter> THtDocumentConverter::ImageConverter() { return Registries().ImageConverter; }

void THtDocumentConverter::RegisterDecoder(const hstring& name, THtImageDecodeProc decode) {
  TFastStringList& decoders = Registries().Decoders;
  const hstring key = HtUpperCase(name);
  int32_t index = decoders.IndexOf(key);
  if (index < 0) index = decoders.AddObject(key, new TImageDecoderRec);
  static_cast<TImageDecoderRec*>(decoders.GetObject(index))->Decode = decode;
}

THtImageDecodeProc THtDocumentConverter::GetDecoder(const hstring& name) {
  const TFastStringList& decoders = Registries().Decoders;
  const int32_t index = decoders.IndexOf(HtUpperCase(name));
  return index < 0 ? nullptr : static_cast<TImageDecoderRec*>(decoders.GetObject(index))->Decode;
}

int32_t THtDocumentConverter::ConverterCount() { return Registries().Converters.GetCount(); }

const THtDocumentConverterRec& THtDocumentConverter::Converters(int32_t index) {
  return *Registries().Converters.Get<THtDocumentConverterRec>(index);
}

TIntf<IHtDocumentConverter> THtDocumentConverter::GetConverter(const hstring& fileType) {
  const hstring type = HtUpperCase(WithoutPoint(fileType));
  const auto* record = FindRec([&](const auto& r) { return HtUpperCase(r.FileType) == type; });
  return record ? record->Converter : nullptr;
}

hstring THtDocumentConverter::GetStreamFormat(TStream& stream) {
  if (!Registries().Qualifier) return {};
  const int64_t position = stream.GetPosition();
  hstring format = Registries().Qualifier->GetFormat(stream);
  stream.SetPosition(position);
  return format;
}

hstring THtDocumentConverter::GetFileFormat(const hstring& fileName) {
  if (!Registries().Qualifier) return {};
  TFileStream file(fileName, fmOpenRead, shDenyWrite);
  return GetStreamFormat(file);
}

hstring THtDocumentConverter::FiletoHTML(const hstring& fileName) {
  hstring html, format = FormatOf(fileName);
  if (format.Empty()) format = WithoutPoint(Extension(fileName));
  if (const auto converter = ConverterOf(format)) converter->FiletoHTML(fileName, html, {});
  return html;
}

hstring THtDocumentConverter::StreamtoHTML(TStream& stream, hstring format) {
  hstring html;
  if (format.Empty()) format = GetStreamFormat(stream);
  if (const auto converter = ConverterOf(format)) converter->StreamtoHTML(stream, html, {});
  return html;
}

hstring THtDocumentConverter::FiletoText(const hstring& fileName, const THtGetImageData& onImage) {
  hstring text;
  const auto converter = ConverterOf(FormatOf(fileName));
  if (!converter) return text;
  TFileStream file(fileName, fmOpenRead, shDenyWrite);
  converter->StreamtoText(file, text, onImage, {});
  return text;
}

hstring THtDocumentConverter::StreamtoText(TStream& stream, const THtGetImageData& onImage) {
  hstring text;
  if (const auto converter = ConverterOf(GetStreamFormat(stream)))
    converter->StreamtoText(stream, text, onImage, {});
  return text;
}

}  // namespace ht
