#include "htcanvas/bitmapdata.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <sstream>

#include "htcanvas/bitmaprows.h"
#include "htruntime/exception.h"
#include "htruntime/stream.h"
#include "rects.h"

using namespace ht;

namespace {

// Bytes in hexadecimal, blanks left out.
std::vector<uint8_t> Hex(std::string text) {
  std::erase(text, ' ');
  std::vector<uint8_t> bytes;
  for (size_t i = 0; i < text.size(); i += 2)
    bytes.push_back(static_cast<uint8_t>(std::stoul(text.substr(i, 2), nullptr, 16)));
  return bytes;
}

THtBitmapBytes Bytes(const std::string& hex) { return THtBitmapBytes::Copied(Hex(hex)); }

struct TBitmap : THtBitmapData {
  TBitmap(int32_t width, int32_t height, int32_t bits, const std::vector<uint8_t>& bytes)
      : THtBitmapData(width, height, bits) {
    std::ranges::copy(bytes, FData.begin());
  }
};

std::vector<uint8_t> RandomBytes(size_t count) {
  static std::mt19937 random(7);
  std::vector<uint8_t> bytes(count);
  for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random());
  return bytes;
}

// Pixels in hexadecimal, without zeros in front.
std::string Text(const THtBitmapData& bitmap) {
  std::ostringstream text;
  text << std::hex << std::uppercase;
  for (int32_t y = 0; y < bitmap.FHeight; ++y)
    for (int32_t x = 0; x < bitmap.FWidth; ++x)
      text << (text.tellp() > 0 ? " " : "") << bitmap.GetPixel(x, y);
  return text.str();
}

// Turns the top bit of what it is asked for, and counts.
class TCountingSpace : public THtColorSpace {
 public:
  TCountingSpace(int32_t components, bool bulk) : FComponents(components), FBulk(bulk) {}
  uint32_t ConvertColor(uint32_t color) const override {
    ++Asked;
    return color ^ 0x80000000;
  }
  int32_t InComponentCount() const override { return FComponents; }
  bool IsIdentity() const override { return false; }
  bool Convert8to32(const uint8_t* source, uint32_t* target, int32_t, int32_t, int32_t width) const override {
    if (FBulk) std::copy_n(source, width, target);
    return FBulk;
  }
  mutable int Asked = 0;

 private:
  int32_t FComponents;
  bool FBulk;
};

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
  const THtBitmapBytes whole = Bytes("01020304 05060708");
  THtBitmapData bitmap;
  bitmap.SetData(whole, 3, 2, 8);  // stride 4 fits
  EXPECT_TRUE(bitmap.FData.SameStorage(whole));
  // Rows of 3 bytes; rows of 13, which are above 12 and so count as rows of 3.
  for (const char* rows : {"010203 040506", "010203040506 0000000000 0000000000 0000000000 0000000000"}) {
    bitmap.SetData(Bytes(rows), 3, 2, 8);
    EXPECT_EQ(Text(bitmap), "1 2 3 4 5 6");
  }
  bitmap.SetData(Bytes("01AA 02BB 03CC"), 1, 1, 48);
  EXPECT_EQ(bitmap.FBits, 32);
  EXPECT_EQ(Text(bitmap), "CCBBAA");
  EXPECT_THROW(bitmap.SetData(Bytes("0102030405"), 1, 1, 48), EAssertionFailed);
  EXPECT_THROW(bitmap.SetData(whole, 1, 1, 49), EAssertionFailed);
  bitmap.SetData(whole, 3, 0, 8);
  EXPECT_TRUE(bitmap.FData.Empty());
}

TEST(BitmapData, To32Bits) {
  const struct {
    int32_t Bits;
    const char *Bytes, *Plain, *Through;  // without a colour space, and with one that turns the top bit
    int Asked;
    int32_t Components = 3;
    bool Bulk = false;
  } kRows[] = {
      {1, "A0", "FFFFFFFF FF000000 FFFFFFFF", "80000001 80000000 80000001", 2},
      {4, "F1 08", "FF111111 FFFFFFFF FF888888", "80000001 8000000F 80000008", 16},
      {8, "00 12 FF", "FF000000 FF121212 FFFFFFFF", "80000000 92121212 7FFFFFFF", 256},
      {8, "00 12 FF", "FF000000 FF121212 FFFFFFFF", "0 12 FF", 0, 3, true},
      {16, "1F00 007C 0104", "FF0000FF FFFF0000 FF080008", "7F0000FF 7FFF0000 7F080008", 3},
      {16, "2143 2143 0080", "FF84CE08 FF84CE08 FF000000", "C4332211 C4332211 8000000", 2, 4},
      {24, "010203 040506 040506", "FF030201 FF060504 FF060504", "7F030201 7F060504 7F060504", 2},
      {32, "01020304 01020304 05060708", "4030201 4030201 8070605", "84030201 84030201 88070605", 2},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Bits);
    const THtColorSpace identity;
    const TCountingSpace counting(row.Components, row.Bulk);
    const THtColorSpace* const kSpaces[] = {nullptr, &identity, &counting};
    for (const THtColorSpace* space : kSpaces) {
      TBitmap bitmap(3, 1, row.Bits, Hex(row.Bytes));
      bitmap.Convertto32(space);
      EXPECT_EQ(Text(bitmap), space == &counting ? row.Through : row.Plain);
      EXPECT_EQ(bitmap.FStride, 12);
    }
    EXPECT_EQ(counting.Asked, row.Asked);
  }
  EXPECT_EQ(THtColorSpace().ConvertFloat(1, 0.5f, 0, 1), 0x000080FFu);
}

TEST(BitmapData, Masks) {
  const struct {
    int32_t Bits;
    const char *Mask, *Masked;
    const char16_t* Refused;  // by Convertto32Mask
  } kRows[] = {
      {1, "40", "30201 FF060504", nullptr},
      {2, "90", "2030201 1060504", u"Mask bits 2"},
      {4, "3C", "C030201 3060504", u"Mask bits 4"},
      {8, "11 22", "11030201 22060504", nullptr},
      {32, "11090909 22090909", "11030201 22060504", u"Mask bits 32"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Bits);
    const TBitmap mask(2, 1, row.Bits, Hex(row.Mask));
    TBitmap bitmap(2, 1, 24, Hex("010203 040506")), other(2, 1, 24, Hex("010203 040506"));
    bitmap.ApplyMask(mask);
    EXPECT_EQ(Text(bitmap), row.Masked);
    const hstring message = MessageOf<EHtException>([&] { other.Convertto32Mask(mask); });
    EXPECT_EQ(message, row.Refused ? row.Refused : u"");
    if (!row.Refused) {
      EXPECT_EQ(Text(other), row.Masked);
    }
  }
}

TEST(BitmapData, Operations) {
  using TData = THtBitmapData;
  static constexpr TRect kCrops[] = {{1, -5, 3, 1}, {3, 0, 12, 1}, {2, 0, 1, 1}};
  const struct {
    int32_t Width, Height, Bits;
    const char* Bytes;
    void (*Do)(TData&);
    const char* Pixels;
  } kRows[] = {
      {3, 2, 8, "01020300 04050600", [](TData& b) { b.Resize(6, 1); }, "1 1 2 3 3 3"},  // ties to even
      {3, 1, 8, "01020300", [](TData& b) { b.Resize(0, 5); }, "1 2 3"},
      {3, 1, 8, "01020300", [](TData& b) { b.Resize(5, 0); }, "1 2 3"},
      {3, 1, 8, "01020300", [](TData& b) { b.Resize(3, 1); }, "1 2 3"},
      {2, 1, 24, "010203 040506", [](TData& b) { b.Resize(1, 1); }, "30201 60504"},  // not at this depth
      {4, 1, 4, "2143", [](TData& b) { b.Resize(2, 1), b.Convert4to8(); }, "1 3"},
      {1, 1, 32, "01020304", [](TData& b) { b.Resize(1, 2); }, "4030201 4030201"},
      {3, 2, 8, "01020300 04050600", [](TData& b) { b.FlipVertical(); }, "4 5 6 1 2 3"},
      {3, 2, 8, "01020300 04050600", [](TData& b) { b.Crop(kCrops[0]); }, "2 3"},
      {12, 1, 1, "5A50", [](TData& b) { b.Crop(kCrops[1]); }, "1 1 0 1 0 0 1 0 1"},
      {3, 1, 8, "01020300", [](TData& b) { b.Crop(kCrops[2]); }, ""},
      {1, 1, 24, "010203", [](TData& b) { b.BGRtoRGB(); }, "10203"},
      {1, 1, 32, "01020304", [](TData& b) { b.InvertComponents(); }, "FBFCFDFE"},
      {2, 1, 8, "03 C8", [](TData& b) { b.ApplyColorMask(0xFF123456); }, "3123456 C8123456"},
      {5, 1, 24, "0A141E 0B141E 0A151E 0A141F 08141E",
       [](TData& b) { b.ApplyColorRangeMask(30, 30, 0, 20, 9, 10); },
       "1E140A FF1E140B FF1E150A FF1F140A FF1E1408"},
      {2, 1, 32, "01020304 05060708", [](TData& b) { b.Convertto8(); }, "4 8"},
      {3, 1, 32, "00000000 000000FF 000000FF", [](TData& b) { b.CMYKtoRGBA(); },
       "FFFFFFFF FF231F20 FF231F20"},
      // Stretched: columns 0, round(0.5) = 0, 1 and min(round(1.5), 1).
      {4, 1, 32, "01000000 02000000 03000000 04000000",
       [](TData& b) {
         b.ApplyMask(TBitmap(2, 1, 8, {7, 8}));
       },
       "7000001 7000002 8000003 8000004"},
  };
  for (const auto& row : kRows) {
    TBitmap bitmap(row.Width, row.Height, row.Bits, Hex(row.Bytes));
    row.Do(bitmap);
    EXPECT_EQ(Text(bitmap), row.Pixels) << &row - kRows;
    EXPECT_EQ(bitmap.FStride, THtBitmapData::CalcStride(bitmap.FWidth, bitmap.FBits));
  }
  TData flat(2, 1, 24), single(2, 2, 32);
  EXPECT_TRUE(single.IsSingleColor() && TData(0, 3, 32).IsSingleColor());
  single.SetPixel(1, 1, 1);
  EXPECT_FALSE(single.IsSingleColor());
  EXPECT_EQ(MessageOf<EHtException>([&] { flat.Convertto8(); }), u"Bitness not supported");
  EXPECT_EQ(MessageOf<EHtException>([&] { (void)flat.IsSingleColor(); }), u"Only 32 bit image is supported");
  EXPECT_THROW(flat.ConverttoMask(), EAssertionFailed);
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
}

// Each place of a small bitmap on another, against the same said pixel by pixel.
TEST(BitmapData, Combinations) {
  const auto random = [](int32_t width, int32_t height, int32_t bits) {
    return RandomBytes(static_cast<size_t>(THtBitmapData::CalcStride(width, bits) * height));
  };
  const std::function<uint32_t(uint32_t, uint32_t)> kOperations[] = {
      std::bit_or(), std::bit_and(), std::bit_xor(), [](uint32_t t, uint32_t s) { return ~(t ^ s); },
      [](uint32_t, uint32_t s) { return s; }};
  for (const int32_t bits : {1, 24})
    for (const THtPixelOperation op : {poOr, poAnd, poXor, poNXor, poCopy})
      for (int32_t x = -14; x < 24; ++x) {
        TBitmap target(21, 3, bits, random(21, 3, bits)), expected(21, 3, bits, {});
        const TBitmap source(13, 2, bits, random(13, 2, bits));
        std::ranges::copy(target.FData, expected.FData.begin());
        const int32_t y = x % 3;
        for (int32_t i = 0; i < 13; ++i)  // what lies outside is not set
          for (int32_t j = 0; j < 2; ++j) {
            const uint32_t pixel = kOperations[op](target.GetPixel(x + i, y + j), source.GetPixel(i, j));
            expected.SetPixel(x + i, y + j, bits == 1 ? pixel & 1 : pixel);
          }
        target.Combine(source, x, y, op);
        ASSERT_EQ(Text(target), Text(expected)) << bits << " bits, operation " << op << ", at " << x;
      }
  THtBitmapData a(1, 1, 1), b(1, 1, 24);
  EXPECT_THROW(a.Combine(b, 0, 0, poOr), EAssertionFailed);
  a.Combine(THtBitmapData(1, 1, 1), INT32_MAX, INT32_MIN, poNXor);  // far away
  EXPECT_EQ(a.GetPixel(0, 0), 0u);
}

TEST(BitmapData, VectorRowsAreThePlainOnes) {
  using TRows = detail::TBitmapRows;
  const TRows* vector = detail::HtVectorBitmapRows();
  if (!vector) GTEST_SKIP() << "no vector code on this processor";
  for (int32_t n = 0; n < 70; ++n) {
    const std::vector<uint8_t> source = RandomBytes(static_cast<size_t>(n) * 4), pixels = RandomBytes(280);
    const uint8_t* from = source.data();
    const std::function<void(const TRows&, uint8_t*)> kCalls[] = {
        [=](const TRows& rows, uint8_t* to) { rows.Rgb24To32(from, to, n); },
        [=](const TRows& rows, uint8_t* to) { rows.Gray8To32(from, to, n); },
        [=](const TRows& rows, uint8_t* to) { rows.Bits1To32(from, to, n, 0x1234, 0xFEDCBA98); },
        [=](const TRows& rows, uint8_t* to) { rows.Swap24(to, n); },
        [=](const TRows& rows, uint8_t* to) { rows.Swap32(to, n); },
        [=](const TRows& rows, uint8_t* to) { rows.Mask8(from, to, n); },
        [=](const TRows& rows, uint8_t* to) { rows.Mask1(from, to, n); }};
    for (const auto& call : kCalls) {
      std::vector<uint8_t> expected = pixels, got = pixels;
      call(detail::kPlainBitmapRows, expected.data());
      call(*vector, got.data());
      EXPECT_EQ(got, expected) << "call " << &call - kCalls << " of " << n << " pixels";
    }
  }
}

// --- BMP images ---

struct TDib {
  uint32_t Size = 40;
  int32_t Width = 2, Height = 2;
  int Bits = 24;
  uint32_t Compression = 0, ImageSize = 0, Used = 0;

  THtBytes Write(const THtBytes& rest) const {
    const int side = Size == 12 ? 2 : 4;
    const std::pair<int64_t, int> kFields[] = {
        {Size, 4},        {Width, side},  {Height, side}, {1, 2},    {Bits, 2},
        {Compression, 4}, {ImageSize, 4}, {0, 8},         {Used, 4}, {0, 4}};
    THtBytes bytes;
    for (const auto& [value, count] : kFields)
      for (int i = 0; i < count; ++i) bytes.push_back(static_cast<uint8_t>(value >> 8 * i));
    bytes.resize(Size);
    bytes.insert(bytes.end(), rest.begin(), rest.end());
    return bytes;
  }
};

TEST(BitmapData, BMPs) {
  const std::string four = "010203 040506 0000 070809 010203 0000",
                    two = "0000FF00 09080700 ";  // pixels, colours
  const auto zeros = [](size_t count) { return std::string(2 * count, '0'); };
  const struct {
    TDib Header;
    std::string Rest;
    bool BottomUp;
    const char* Result;  // pixels, or what is wrong
  } kRows[] = {
      {{}, four, false, "30201 60504 90807 30201"},
      {{.Size = 108}, four, true, "90807 30201 30201 60504"},
      {{.Width = -1, .Height = -1, .Bits = 32, .ImageSize = 4}, "01020304", false, "FF030201"},
      {{.Height = 1, .Bits = 1}, two + "40000000", false, "FFFF0000 FF070809"},
      {{.Bits = 1, .ImageSize = 10},
       two + "40000000 80000000 0000",
       true,
       "FF070809 FFFF0000 FFFF0000 FF070809"},
      {{.Height = 1, .Bits = 8, .Used = 2}, two + "01020000", false, "FF070809 FF000000"},
      {{.Size = 12, .Height = 1, .Bits = 1}, "0000FF 090807 40000000", false, "FFFF0000 FF070809"},
      {{.Width = 0, .Height = INT32_MAX}, "", true, ""},
      {{}, zeros(15), false, "Stream read error"},
      {{.ImageSize = 17}, zeros(16), false, "Stream read error"},
      {{.ImageSize = 11}, zeros(11), false, "Stream read error"},
      {{.Bits = 8}, zeros(1000), false, "Stream read error"},
      {{.Bits = 1, .Used = 0xFFFFFFFF}, zeros(1000), false, "Stream read error"},
      {{.Width = INT32_MIN, .Height = INT32_MIN, .Bits = 32}, zeros(16), false, "The bitmap is too large"},
      {{.Bits = 7}, zeros(16), false, "Bitness not supported"},
      {{.Bits = 8, .Compression = 1}, zeros(16), false, "Compression not supported"},
  };
  for (const auto& row : kRows) {
    TBytesStream stream(row.Header.Write(Hex(row.Rest)));
    THtBitmapData bitmap;
    const hstring error = MessageOf<EHtException>([&] { bitmap.LoadfromDIB(stream, {}, 32, row.BottomUp); });
    EXPECT_LE(bitmap.FHeight, 2);
    EXPECT_EQ(error.Empty() ? Text(bitmap) : HtToUtf8(error), row.Result) << &row - kRows;
    EXPECT_EQ(bitmap.FBits, error.Empty() && row.Header.Bits == 24 ? 24 : 32);
  }
  TBytesStream stream(TDib{.Height = 1, .Bits = 8, .Used = 2}.Write(Hex(two)));
  THtBitmapData bitmap;
  bitmap.LoadfromDIB(stream, Bytes("01000000"), 24, false);  // pixels from elsewhere
  EXPECT_EQ(Text(bitmap), "70809 FF0000");
}

}  // namespace
