#include "htcanvas/image.h"

#include <algorithm>

#include "htruntime/codepage.h"
#include "htruntime/stream.h"

namespace ht {

namespace {

using namespace std::literals;

constexpr size_t kShortest = 6;

bool StartsWith(const THtBytes& bytes, std::string_view mark, size_t shortest = kShortest) {
  return bytes.size() >= shortest && HtBytesView(bytes).starts_with(mark);
}

struct TFormatTest {
  bool (*Test)(const THtBytes& bytes);
  THtImageFormat Format;
};

bool IsIcon(const THtBytes& bytes) { return StartsWith(bytes, "\0\0\1\0"sv); }
bool LooksLikeTIFF(const THtBytes& bytes) { return StartsWith(bytes, "II") || StartsWith(bytes, "MM"); }

constexpr TFormatTest kFormats[] = {
    {&THtImage::IsJPEG, hifJPEG},  {&THtImage::IsPNG, hifPNG}, {&THtImage::IsGIF, hifGIF},
    {&THtImage::IsBMP, hifBitmap}, {&THtImage::IsSVG, hifSVG}, {&IsIcon, hifIcon},
    {&LooksLikeTIFF, hifTIFF},
};

}  // namespace

const THtImageClass* THtImage::Class() {
  static constexpr TClassOf<THtImage> kClass(u"THtImage",
                                             []() -> const TClass* { return TBaseHtImage::Class(); });
  return &kClass;
}

std::unique_ptr<THtImage> THtImageClass::Create(const hstring& url) const {
  std::unique_ptr<THtImage> image(static_cast<THtImage*>(NewInstance().release()));
  if (image && !url.Empty()) image->OnLoaded(url);
  return image;
}

std::unique_ptr<THtImage> THtImageClass::Create(const THtBytes& bytes) const {
  std::unique_ptr<THtImage> image(static_cast<THtImage*>(NewInstance().release()));
  if (image && !bytes.empty()) image->OnLoaded(bytes, false);
  return image;
}

THtImage::~THtImage() {
  if (!MetaShared) delete Meta;
}

void THtImage::OnLoaded(const hstring& text) { OnLoaded(HtNarrowText(text), false); }
void THtImage::OnLoaded(const THtBytes& bytes, bool) { GetFormat(bytes); }

bool THtImage::IsJPEG(const THtBytes& bytes) { return StartsWith(bytes, "\xFF\xD8"); }
bool THtImage::IsPNG(const THtBytes& bytes) { return StartsWith(bytes, "\x89PNG\r"); }
bool THtImage::IsGIF(const THtBytes& bytes) { return StartsWith(bytes, "GIF"); }
bool THtImage::IsBMP(const THtBytes& bytes) { return StartsWith(bytes, "BM"); }

bool THtImage::IsTIFF(const THtBytes& bytes) {
  constexpr size_t kShortestTIFF = 10;
  constexpr uint8_t kMark = 0x2A;
  return (StartsWith(bytes, "II", kShortestTIFF) && bytes[2] == kMark) ||
         (StartsWith(bytes, "MM", kShortestTIFF) && bytes[3] == kMark);
}

bool THtImage::IsSVG(const THtBytes& bytes) {
  if (StartsWith(bytes, "<?xml")) return true;
  const auto is = [&](size_t index, char lower) { return (bytes[index] | 0x20) == lower; };
  return StartsWith(bytes, "<") && is(1, 's') && (bytes[2] == 'v' || (bytes[2] == 'V' && is(3, 'g')));
}

bool THtImage::IsImage(const THtBytes& bytes) {
  constexpr size_t kShortestMeta = 11;
  return IsJPEG(bytes) || IsPNG(bytes) || IsGIF(bytes) || IsBMP(bytes) || IsTIFF(bytes) ||
         StartsWith(bytes, "\1\0\0\1"sv, kShortestMeta);
}

void THtImage::GetFormat(const THtBytes& bytes) {
  const auto found = std::find_if(std::begin(kFormats), std::end(kFormats),
                                  [&](const TFormatTest& row) { return row.Test(bytes); });
  if (found != std::end(kFormats)) Format = found->Format;
}

THtBytes THtImage::AsBytes() {
  const std::unique_ptr<TStream> data = GetImageData();
  if (!data) return {};
  if (auto* bytes = dynamic_cast<TBytesStream*>(data.get())) return bytes->TakeBytes();
  data->SetPosition(0);
  return data->ReadToEnd();
}

THtImages::~THtImages() {
  for (int32_t i = 0; i < GetCount(); ++i) {
    auto* image = static_cast<THtImage*>(GetObject(i));
    if (image && !image->Persistent) delete image;
  }
}

THtImage* THtImages::FindImage(std::u16string_view name) const {
  const int32_t index = IndexOf(name);
  return index < 0 ? nullptr : static_cast<THtImage*>(GetObject(index));
}

}  // namespace ht
