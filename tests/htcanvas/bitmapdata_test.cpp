#include "htcanvas/bitmapdata.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <random>

#include "htcanvas/bitmaprows.h"
#include "htruntime/exception.h"
#include "htruntime/stream.h"

using namespace ht;

namespace {

THtBitmapBytes Bytes(const std::vector<uint8_t>& bytes) { return THtBitmapBytes::Copied(bytes); }

void Fill(THtBitmapData& bitmap, int32_t width, int32_t height, int32_t bits,
          const std::vector<uint8_t>& bytes) {
  bitmap.Create(width, height, bits);
  std::ranges::copy(bytes, bitmap.FData.begin());
}

std::vector<uint8_t> RandomBytes(size_t count) {
  static std::mt19937 random(7);
  std::vector<uint8_t> bytes(count);
  for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random());
  return bytes;
}

std::vector<uint32_t> Pixels(const THtBitmapData& bitmap) {
  std::vector<uint32_t> pixels;
  for (int32_t y = 0; y < bitmap.FHeight; ++y)
    for (int32_t x = 0; x < bitmap.FWidth; ++x) pixels.push_back(bitmap.GetPixel(x, y));
  return pixels;
}

using TPixels = std::vector<uint32_t>;

// Answers what it was asked, with the low byte replaced, and counts.
class TCountingSpace : public THtColorSpace {
 public:
  explicit TCountingSpace(int32_t components = 3, bool bulk = false) : FComponents(components), FBulk(bulk) {}
  uint32_t ConvertColor(uint32_t color) const override {
    ++Asked;
    return color ^ 0x80000000;
  }
  int32_t InComponentCount() const override { return FComponents; }
  bool IsIdentity() const override { return false; }
  bool Convert8to32(const uint8_t* source, uint32_t* target, int32_t stride, int32_t height,
                    int32_t width) const override {
    for (int32_t y = 0; FBulk && y < height; ++y)
      for (int32_t x = 0; x < width; ++x) target[y * width + x] = source[y * stride + x];
    return FBulk;
  }
  mutable int Asked = 0;

 private:
  int32_t FComponents;
  bool FBulk;
};

template <class E>
hstring MessageOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const E& e) {
    return e.Message;
  }
  return u"nothing";
}

TEST(BitmapData, StridesAreWholeWords) {
  const struct {
    int32_t Width, Bits, Stride;
  } kRows[] = {{3, 1, 4}, {5, 24, 16}, {33, 1, 8}, {0, 8, 0}, {1, 32, 4}, {9, 4, 8}, {3, 16, 8}};
  for (const auto& row : kRows) EXPECT_EQ(THtBitmapData::CalcStride(row.Width, row.Bits), row.Stride);
  EXPECT_THROW(THtBitmapData(1 << 20, 1 << 20, 32), ERangeError);
  EXPECT_THROW(THtBitmapData(1, 1, 0), EAssertionFailed);
  EXPECT_THROW(THtBitmapData(1, 1, 49), EAssertionFailed);
}

TEST(BitmapData, PixelsOfEachDepth) {
  const struct {
    int32_t Bits;
    uint32_t Set, Read, Cleared;  // written and read back; after Clear(0x01020304)
  } kRows[] = {{1, 5, 1, 1},
               {8, 0x1FF, 0xFF, 4},
               {24, 0x12345678, 0x345678, 0x345678},
               {32, 0x12345678, 0x12345678, 0x01020304},
               {4, 5, 0, 0},
               {16, 5, 0, 0}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Bits);
    THtBitmapData bitmap(9, 2, row.Bits);
    bitmap.SetPixel(8, 1, row.Set);
    EXPECT_EQ(bitmap.GetPixel(8, 1), row.Read);
    EXPECT_EQ(bitmap.GetPixel(7, 1), 0u);
    for (const TPoint& p : {TPoint{-1, 0}, {9, 0}, {0, -1}, {0, 2}}) {
      bitmap.SetPixel(p.X, p.Y, 0xFFFFFFFF);
      EXPECT_EQ(bitmap.GetPixel(p.X, p.Y), 0u);
    }
    bitmap.Clear(0x01020304);
    EXPECT_EQ(bitmap.GetPixel(8, 1), row.Cleared);
  }
}

TEST(BitmapData, SetDataSharesOrCopies) {
  const THtBitmapBytes whole = Bytes({1, 2, 3, 4, 5, 6, 7, 8});
  THtBitmapData bitmap;
  bitmap.SetData(whole, 3, 2, 8);  // stride 4 fits
  EXPECT_TRUE(bitmap.FData.SameStorage(whole));
  bitmap.SetData(Bytes({1, 2, 3, 4, 5, 6}), 3, 2, 8);  // stride 3
  EXPECT_EQ(Pixels(bitmap), (TPixels{1, 2, 3, 4, 5, 6}));
  bitmap.SetData(Bytes(std::vector<uint8_t>(26, 9)), 3, 2, 8);  // 13 bytes a row are above 12: rows of 3
  EXPECT_EQ(bitmap.FData.Count(), 8);
  bitmap.SetData(Bytes({1, 0xAA, 2, 0xBB, 3, 0xCC}), 1, 1, 48);
  EXPECT_EQ(bitmap.FBits, 32);
  EXPECT_EQ(Pixels(bitmap), TPixels{0x00CCBBAA});
  EXPECT_THROW(bitmap.SetData(Bytes({1, 2, 3, 4, 5}), 1, 1, 48), EAssertionFailed);
  EXPECT_THROW(bitmap.SetData(whole, 1, 1, 49), EAssertionFailed);
  bitmap.SetData(whole, 3, 0, 8);
  EXPECT_TRUE(bitmap.FData.Empty());
}

TEST(BitmapData, To32Bits) {
  const struct {
    int32_t Bits;
    std::vector<uint8_t> Bytes;
    TPixels Plain, Through;  // without a colour space, and with one that turns the top bit
  } kRows[] = {
      {1, {0xA0}, {0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF}, {0x80000001, 0x80000000, 0x80000001}},
      {4, {0xF1, 0x08}, {0xFF111111, 0xFFFFFFFF, 0xFF888888}, {0x80000001, 0x8000000F, 0x80000008}},
      {8, {0, 0x12, 0xFF}, {0xFF000000, 0xFF121212, 0xFFFFFFFF}, {0x80000000, 0x92121212, 0x7FFFFFFF}},
      {16,
       {0x1F, 0x00, 0x00, 0x7C, 0x01, 0x04},
       {0xFF0000FF, 0xFFFF0000, 0xFF080008},
       {0x7F0000FF, 0x7FFF0000, 0x7F080008}},
      {24,
       {1, 2, 3, 4, 5, 6, 4, 5, 6},
       {0xFF030201, 0xFF060504, 0xFF060504},
       {0x7F030201, 0x7F060504, 0x7F060504}},
      {32,
       {1, 2, 3, 4, 1, 2, 3, 4, 5, 6, 7, 8},
       {0x04030201, 0x04030201, 0x08070605},
       {0x84030201, 0x84030201, 0x88070605}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Bits);
    THtBitmapData bitmap;
    const THtColorSpace identity;
    for (const THtColorSpace* space : {static_cast<const THtColorSpace*>(nullptr), &identity}) {
      Fill(bitmap, 3, 1, row.Bits, row.Bytes);
      bitmap.Convertto32(space);
      EXPECT_EQ(Pixels(bitmap), row.Plain);
      EXPECT_EQ(bitmap.FBits, 32);
      EXPECT_EQ(bitmap.FStride, 12);
    }
    Fill(bitmap, 3, 1, row.Bits, row.Bytes);
    const TCountingSpace space;
    bitmap.Convertto32(&space);
    EXPECT_EQ(Pixels(bitmap), row.Through);
    if (row.Bits == 24) {
      EXPECT_EQ(space.Asked, 2) << "neighbours that are equal are asked for once";
    }
  }
}

TEST(BitmapData, ColorSpacesOfOtherKinds) {
  THtBitmapData bitmap;
  Fill(bitmap, 1, 1, 16, {0x21, 0x43});  // four fields of 4 bits
  bitmap.Convertto32(std::make_unique<TCountingSpace>(4).get());
  EXPECT_EQ(Pixels(bitmap), TPixels{0x44332211u ^ 0x80000000});
  Fill(bitmap, 2, 1, 8, {7, 9});
  const TCountingSpace bulk(3, true);
  bitmap.Convertto32(&bulk);
  EXPECT_EQ(Pixels(bitmap), (TPixels{7, 9}));
  EXPECT_EQ(bulk.Asked, 0);
  const THtColorSpace identity;
  EXPECT_EQ(identity.ConvertFloat(1, 0.5f, 0, 1), 0x000080FFu);
}

TEST(BitmapData, Masks) {
  const struct {
    int32_t Bits;
    std::vector<uint8_t> Mask;
    TPixels Masked;
  } kRows[] = {
      {1, {0x40}, {0x00030201, 0xFF060504}},
      {2, {0x90}, {0x02030201, 0x01060504}},
      {4, {0x3C}, {0x0C030201, 0x03060504}},
      {8, {0x11, 0x22}, {0x11030201, 0x22060504}},
      {32, {0x11, 9, 9, 9, 0x22, 9, 9, 9}, {0x11030201, 0x22060504}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Bits);
    THtBitmapData mask, bitmap;
    Fill(mask, 2, 1, row.Bits, row.Mask);
    Fill(bitmap, 2, 1, 24, {1, 2, 3, 4, 5, 6});
    bitmap.ApplyMask(mask);
    EXPECT_EQ(Pixels(bitmap), row.Masked);
    Fill(bitmap, 2, 1, 24, {1, 2, 3, 4, 5, 6});
    if (row.Bits == 1 || row.Bits == 8) {
      bitmap.Convertto32Mask(mask);
      EXPECT_EQ(Pixels(bitmap), row.Masked);
    } else {
      const hstring expected = row.Bits == 2   ? u"Mask bits 2"
                               : row.Bits == 4 ? u"Mask bits 4"
                                               : u"Mask bits 32";
      EXPECT_EQ(MessageOf<EHtException>([&] { bitmap.Convertto32Mask(mask); }), expected);
    }
  }
}

TEST(BitmapData, MasksOfAnotherSizeAreStretched) {
  THtBitmapData mask, bitmap(4, 2, 32);
  Fill(mask, 2, 1, 1, {0x40});
  bitmap.Clear(0xFFABCDEF);
  bitmap.ApplyMask(mask);
  // Columns 0, round(0.5) = 0, 1 and min(round(1.5), 1) of the mask.
  EXPECT_EQ(Pixels(bitmap), (TPixels{0x00ABCDEF, 0x00ABCDEF, 0xFFABCDEF, 0xFFABCDEF, 0x00ABCDEF, 0x00ABCDEF,
                                     0xFFABCDEF, 0xFFABCDEF}));
  EXPECT_EQ(mask.FWidth, 2);

  Fill(bitmap, 2, 1, 8, {3, 200});
  bitmap.ApplyColorMask(0xFF123456);
  EXPECT_EQ(Pixels(bitmap), (TPixels{0x03123456, 0xC8123456}));
  Fill(bitmap, 3, 1, 24, {10, 20, 30, 11, 20, 30, 10, 20, 31});
  bitmap.ApplyColorRangeMask(30, 30, 0, 20, 9, 10);
  EXPECT_EQ(Pixels(bitmap), (TPixels{0x001E140A, 0xFF1E140B, 0xFF1F140A}));
}

TEST(BitmapData, AlphaBecomesAMask) {
  THtBitmapData bitmap;
  Fill(bitmap, 2, 1, 32, {1, 2, 3, 4, 5, 6, 7, 8});
  bitmap.Convertto8();
  EXPECT_EQ(bitmap.FBits, 8);
  EXPECT_EQ(Pixels(bitmap), (TPixels{4, 8}));
  THtBitmapData other(2, 1, 24);
  EXPECT_EQ(MessageOf<EHtException>([&] { other.Convertto8(); }), u"Bitness not supported");
  EXPECT_EQ(MessageOf<EHtException>([&] { (void)other.IsSingleColor(); }), u"Only 32 bit image is supported");
  EXPECT_THROW(other.ConverttoMask(), EAssertionFailed);
}

TEST(BitmapData, Sizes) {
  THtBitmapData bitmap;
  const auto start = [&] { Fill(bitmap, 3, 2, 8, {1, 2, 3, 0, 4, 5, 6, 0}); };
  start();
  bitmap.Resize(6, 1);  // columns 0, 0.5, 1, 1.5, 2, 2.5 with ties to even
  EXPECT_EQ(Pixels(bitmap), (TPixels{1, 1, 2, 3, 3, 3}));
  start();
  for (const TPoint& size : {TPoint{0, 5}, {5, 0}, {3, 2}}) bitmap.Resize(size.X, size.Y);
  EXPECT_EQ(Pixels(bitmap), (TPixels{1, 2, 3, 4, 5, 6}));
  bitmap.FlipVertical();
  EXPECT_EQ(Pixels(bitmap), (TPixels{4, 5, 6, 1, 2, 3}));
  bitmap.Crop({1, -5, 3, 1});
  EXPECT_EQ(Pixels(bitmap), (TPixels{5, 6}));
  EXPECT_EQ(bitmap.FStride, 4);
  Fill(bitmap, 12, 1, 1, {0x5A, 0x50});  // 0101 1010 0101
  bitmap.Crop({3, 0, 12, 1});
  EXPECT_EQ(Pixels(bitmap), (TPixels{1, 1, 0, 1, 0, 0, 1, 0, 1}));
  bitmap.Crop({5, 5, 2, 2});
  EXPECT_EQ(bitmap.FWidth, 0);

  Fill(bitmap, 1, 1, 24, {1, 2, 3});
  bitmap.BGRtoRGB();
  bitmap.InvertComponents();
  EXPECT_EQ(Pixels(bitmap), TPixels{0xFEFDFC});
  THtBitmapData single(2, 2, 32);
  EXPECT_TRUE(single.IsSingleColor());
  EXPECT_TRUE(THtBitmapData(0, 3, 32).IsSingleColor());
  single.SetPixel(1, 1, 1);
  EXPECT_FALSE(single.IsSingleColor());
}

TEST(BitmapData, FourInks) {
  const struct {
    uint32_t Inks, Color;
  } kRows[] = {
      {0, 0xFFFFFFFF},          {0xFFFFFFFF, 0xFF000000}, {0xFF000000, 0xFF231F20}, {0x000000FF, 0xFF00ACEF},
      {0x0000FF00, 0xFFEC008B}, {0x00FF0000, 0xFFFFF100}, {0x00FFFF00, 0xFFEC1B24}, {0xFF00FF00, 0xFF240000},
      {0xFFFF0000, 0xFF1B1A00}, {0xFFFFFF00, 0xFF210000}, {0xFF0000FF, 0xFF000E24}, {0x00FF00FF, 0xFF00A64F},
      {0xFFFF00FF, 0xFF001200}, {0x0000FFFF, 0xFF2E3191}, {0xFF00FFFF, 0xFF000001}, {0x00FFFFFF, 0xFF363638},
      {0x00800000, 0xFFFFF87F},  // halfway but for 1/255: 0.9744 and 0.498
  };
  for (const auto& row : kRows) EXPECT_EQ(CMYKtoARGB(row.Inks), row.Color) << std::hex << row.Inks;
  THtBitmapData bitmap;
  Fill(bitmap, 3, 1, 32, {0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0, 255});
  bitmap.CMYKtoRGBA();
  EXPECT_EQ(Pixels(bitmap), (TPixels{0xFFFFFFFF, 0xFF231F20, 0xFF231F20}));
}

// Each place of a small bitmap on another, against the same said pixel by pixel.
TEST(BitmapData, Combinations) {
  const auto combined = [](uint32_t t, uint32_t s, THtPixelOperation op, uint32_t all) {
    switch (op) {
      case poOr: return t | s;
      case poAnd: return t & s;
      case poXor: return t ^ s;
      case poNXor: return ~(t ^ s) & all;
      default: return s;
    }
  };
  for (const int32_t bits : {1, 24})
    for (const THtPixelOperation op : {poOr, poAnd, poXor, poNXor, poCopy})
      for (int32_t x = -14; x < 24; ++x) {
        THtBitmapData target, source;
        Fill(target, 21, 3, bits, RandomBytes(static_cast<size_t>(THtBitmapData::CalcStride(21, bits)) * 3));
        Fill(source, 13, 2, bits, RandomBytes(static_cast<size_t>(THtBitmapData::CalcStride(13, bits)) * 2));
        const int32_t y = x % 3;
        TPixels expected = Pixels(target);
        for (int32_t i = 0; i < 13; ++i)
          for (int32_t j = 0; j < 2; ++j)
            if (x + i >= 0 && x + i < 21 && y + j >= 0 && y + j < 3) {
              uint32_t& pixel = expected[static_cast<size_t>((y + j) * 21 + x + i)];
              pixel = combined(pixel, source.GetPixel(i, j), op, bits == 1 ? 1 : 0xFFFFFF);
            }
        target.Combine(source, x, y, op);
        ASSERT_EQ(Pixels(target), expected) << bits << " bits, operation " << op << ", at " << x;
      }
  THtBitmapData a(1, 1, 1), b(1, 1, 24);
  EXPECT_THROW(a.Combine(b, 0, 0, poOr), EAssertionFailed);
  a.Combine(THtBitmapData(1, 1, 1), INT32_MAX, INT32_MIN, poNXor);  // far away
  EXPECT_EQ(a.GetPixel(0, 0), 0u);
}

TEST(BitmapData, VectorRowsAreThePlainOnes) {
  const detail::TBitmapRows* vector = detail::HtVectorBitmapRows();
  if (!vector) GTEST_SKIP() << "no vector code on this processor";
  const detail::TBitmapRows& plain = detail::kPlainBitmapRows;
  for (int32_t count = 0; count < 70; ++count) {
    SCOPED_TRACE(count);
    const std::vector<uint8_t> source = RandomBytes(static_cast<size_t>(count) * 4),
                               pixels = RandomBytes(280);
    const auto same = [&](const auto& call) {
      std::vector<uint8_t> expected = pixels, got = pixels;
      call(plain, expected.data());
      call(*vector, got.data());
      return expected == got;
    };
    using TRows = detail::TBitmapRows;
    const uint8_t* from = source.data();
    EXPECT_TRUE(same([&](const TRows& rows, uint8_t* to) { rows.Rgb24To32(from, to, count); }));
    EXPECT_TRUE(same([&](const TRows& rows, uint8_t* to) { rows.Gray8To32(from, to, count); }));
    EXPECT_TRUE(
        same([&](const TRows& rows, uint8_t* to) { rows.Bits1To32(from, to, count, 0x1234, 0xFEDCBA98); }));
    EXPECT_TRUE(same([&](const TRows& rows, uint8_t* to) { rows.Swap24(to, count); }));
    EXPECT_TRUE(same([&](const TRows& rows, uint8_t* to) { rows.Swap32(to, count); }));
    EXPECT_TRUE(same([&](const TRows& rows, uint8_t* to) { rows.Mask8(from, to, count); }));
    EXPECT_TRUE(same([&](const TRows& rows, uint8_t* to) { rows.Mask1(from, to, count); }));
  }
}

// --- BMP images ---

struct TDib {
  uint32_t Size = 40;
  int32_t Width = 2, Height = 2;
  int Bits = 24;
  uint32_t Compression = 0, ImageSize = 0, Used = 0;

  THtBytes Write(const THtBytes& rest) const {
    THtBytes bytes;
    const auto put = [&](uint32_t value, int count) {
      for (int i = 0; i < count; ++i) bytes.push_back(static_cast<uint8_t>(value >> 8 * i));
    };
    put(Size, 4);
    const int side = Size == 12 ? 2 : 4;
    put(static_cast<uint32_t>(Width), side);
    put(static_cast<uint32_t>(Height), side);
    put(1, 2);
    put(static_cast<uint32_t>(Bits), 2);
    if (Size != 12)
      for (const uint32_t value : {Compression, ImageSize, 0u, 0u, Used, 0u}) put(value, 4);
    bytes.resize(std::max<size_t>(bytes.size(), Size));
    bytes.insert(bytes.end(), rest.begin(), rest.end());
    return bytes;
  }
};

TEST(BitmapData, ReadsBMPs) {
  const THtBytes two{0, 0, 0xFF, 0, 9, 8, 7, 0};  // red, and 0x070809
  const auto with = [](THtBytes a, const THtBytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
  };
  const THtBytes ones{0x40, 0, 0, 0, 0x80, 0, 0, 0};
  const struct {
    const char* Name;
    TDib Header;
    THtBytes Rest;
    bool BottomUp;
    TPixels Pixels;
  } kRows[] = {
      {"24 bits",
       {},
       {1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 1, 2, 3, 0, 0},
       false,
       {0x030201, 0x060504, 0x090807, 0x030201}},
      {"bottom up, v4",
       {.Size = 108},
       {1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 1, 2, 3, 0, 0},
       true,
       {0x090807, 0x030201, 0x030201, 0x060504}},
      {"32 bits, upside down",
       {.Width = -1, .Height = -1, .Bits = 32, .ImageSize = 4},
       {1, 2, 3, 4},
       false,
       {0xFF030201}},
      {"1 bit", {.Bits = 1}, with(two, ones), false, {0xFFFF0000, 0xFF070809, 0xFF070809, 0xFFFF0000}},
      {"1 bit, bottom up, padded",
       {.Bits = 1, .ImageSize = 10},
       with(two, with(ones, {0, 0})),
       true,
       {0xFF070809, 0xFFFF0000, 0xFFFF0000, 0xFF070809}},
      {"8 bits of 2 colours",
       {.Height = 1, .Bits = 8, .Used = 2},
       with(two, {1, 2, 0, 0}),
       false,
       {0xFF070809, 0xFF000000}},
      {"core",
       {.Size = 12, .Height = 1, .Bits = 1},
       {0, 0, 0xFF, 9, 8, 7, 0x40, 0, 0, 0},
       false,
       {0xFFFF0000, 0xFF070809}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Name);
    TBytesStream stream(row.Header.Write(row.Rest));
    THtBitmapData bitmap;
    bitmap.LoadfromDIB(stream, {}, 32, row.BottomUp);
    EXPECT_EQ(Pixels(bitmap), row.Pixels);
    EXPECT_EQ(bitmap.FBits, row.Header.Bits <= 8 ? 32 : row.Header.Bits);
  }
  TBytesStream stream(TDib{.Height = 1, .Bits = 8, .Used = 2}.Write(two));
  THtBitmapData bitmap;
  bitmap.LoadfromDIB(stream, Bytes({1, 0, 0, 0}), 24, false);  // pixels from elsewhere
  EXPECT_EQ(Pixels(bitmap), (TPixels{0x070809, 0xFF0000}));
}

TEST(BitmapData, BadBMPsAreRefused) {
  TBytesStream empty(TDib{.Width = 0, .Height = INT32_MAX}.Write({}));
  THtBitmapData nothing;
  nothing.LoadfromDIB(empty, {}, 32, true);
  EXPECT_EQ(nothing.FHeight, 0);
  const struct {
    TDib Header;
    size_t Rest;
    const char16_t* Message;
  } kRows[] = {
      {{}, 15, u"Stream read error"},
      {{.ImageSize = 17}, 16, u"Stream read error"},
      {{.ImageSize = 11}, 11, u"Stream read error"},
      {{.Bits = 8}, 1000, u"Stream read error"},
      {{.Bits = 1, .Used = 0xFFFFFFFF}, 1000, u"Stream read error"},
      {{.Width = INT32_MIN, .Height = INT32_MIN, .Bits = 32}, 16, u"The bitmap is too large"},
      {{.Bits = 7}, 16, u"Bitness not supported"},
      {{.Bits = 8, .Compression = 1}, 16, u"Compression not supported"},
  };
  for (const auto& row : kRows) {
    TBytesStream stream(row.Header.Write(THtBytes(row.Rest)));
    THtBitmapData bitmap;
    EXPECT_EQ(MessageOf<EHtException>([&] { bitmap.LoadfromDIB(stream, {}, 32, false); }), row.Message);
  }
}

}  // namespace
