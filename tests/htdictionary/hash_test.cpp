#include "htdictionary/hash.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

using namespace ht;

namespace {

template <class TText>
uint32_t PlainShaPerfect(const TText& text) {
  uint32_t h = 0;
  for (auto c : text) h = h * 0x3E0F83E1 + (c + 0x59D65D2F);
  return h * 0x90C03487;
}

uint32_t PlainRS(const std::u16string& text) {
  uint32_t b = 378551, a = 63689, h = 0;
  for (char16_t c : text) h = h * a + c, a *= b;
  return h;
}

}  // namespace

// Against the plain loops, at every length around the unrolled steps, with every bit in use.
TEST(Hash, SameAsPlainLoop) {
  std::mt19937 random(1);
  std::u16string text;
  std::basic_string<unsigned char> bytes;
  for (int32_t length = 0; length < 40; ++length) {
    const auto* const chars = reinterpret_cast<const char*>(bytes.data());
    EXPECT_EQ(ShaPerfectHash(text.data(), length), PlainShaPerfect(text)) << length;
    EXPECT_EQ(ShaPerfectHashAsm(text.data(), length), PlainShaPerfect(text)) << length;
    EXPECT_EQ(ShaPerfectHashANSI(chars, length), PlainShaPerfect(bytes)) << length;
    EXPECT_EQ(RSHash(text.data(), length), PlainRS(text)) << length;
    text += static_cast<char16_t>(random());
    bytes += static_cast<unsigned char>(random());
  }
  for (THtStringHashFunc hash : {ShaPerfectHash, ShaPerfectHashAsm, JenkinsHash, RSHash})
    EXPECT_EQ(hash(u"abc", -5), 0u);
  EXPECT_EQ(ShaPerfectHashAsm(nullptr, 3), 0u);
}

// The published values of the one-at-a-time function.
TEST(Hash, Jenkins) {
  const std::string fox = "The quick brown fox jumps over the lazy dog";
  const std::u16string wide(fox.begin(), fox.end());
  EXPECT_EQ(JenkinsHashANSI("a", 1), 0xCA2E9442u);
  EXPECT_EQ(JenkinsHashANSI(fox.data(), 43), 0x519E91F5u);
  EXPECT_EQ(JenkinsHash(wide.data(), 43), 0x519E91F5u);
}
