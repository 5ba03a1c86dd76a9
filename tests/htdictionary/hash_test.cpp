#include "htdictionary/hash.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

using namespace ht;

namespace {

template <class TText>
uint32_t PlainShaPerfect(const TText& text) {
  uint32_t h = 0;
  for (auto c : text) h = h * 0x3E0F83E1 + (static_cast<std::make_unsigned_t<decltype(c)>>(c) + 0x59D65D2F);
  return h * 0x90C03487;
}

uint32_t PlainRS(const std::u16string& text) {
  uint32_t a = 63689, h = 0;
  for (char16_t c : text) {
    h = h * a + c;
    a *= 378551;
  }
  return h;
}

}  // namespace

// The unrolled functions against the plain loops, at every length around the steps and with every bit in use.
TEST(Hash, SameAsPlainLoop) {
  std::mt19937 random(1);
  for (int32_t length = 1; length < 40; ++length) {
    std::u16string text;
    std::string bytes;
    for (int32_t i = 0; i < length; ++i) {
      text += static_cast<char16_t>(random());
      bytes += static_cast<char>(random());
    }
    EXPECT_EQ(ShaPerfectHash(text.data(), length), PlainShaPerfect(text)) << length;
    EXPECT_EQ(ShaPerfectHashAsm(text.data(), length), PlainShaPerfect(text)) << length;
    EXPECT_EQ(ShaPerfectHashANSI(bytes.data(), length),
              PlainShaPerfect(std::u8string(bytes.begin(), bytes.end())));
    EXPECT_EQ(RSHash(text.data(), length), PlainRS(text)) << length;
  }
}

TEST(Hash, NothingGivesZero) {
  for (THtStringHashFunc hash : {ShaPerfectHash, ShaPerfectHashAsm, JenkinsHash, RSHash}) {
    EXPECT_EQ(hash(u"abc", 0), 0u);
    EXPECT_EQ(hash(u"abc", -5), 0u);
  }
  EXPECT_EQ(ShaPerfectHashANSI("abc", 0), 0u);
  EXPECT_EQ(ShaPerfectHashAsm(nullptr, 3), 0u);
}

// The published values of the one-at-a-time function.
TEST(Hash, Jenkins) {
  const std::string fox = "The quick brown fox jumps over the lazy dog";
  EXPECT_EQ(JenkinsHashANSI("a", 1), 0xCA2E9442u);
  EXPECT_EQ(JenkinsHashANSI(fox.data(), static_cast<int32_t>(fox.size())), 0x519E91F5u);
  const std::u16string wide(fox.begin(), fox.end());
  EXPECT_EQ(JenkinsHash(wide.data(), static_cast<int32_t>(wide.size())), 0x519E91F5u);
  EXPECT_NE(JenkinsHash(u"\u0161", 1), JenkinsHash(u"\u0061", 1));
}
