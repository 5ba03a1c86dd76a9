#include "htruntime/hstring.h"

#include <gtest/gtest.h>
#include <map>
#include <stdexcept>
#include <thread>
#include <unordered_set>
#include <vector>

namespace ht {
namespace {

TEST(HString, CopiesShareAndWritingParts) {
  const hstring literal = u"div"_hs;
  hstring copy = literal;
  EXPECT_TRUE(copy.SameStorage(literal));
  copy.Unique()[0] = u'D';
  EXPECT_EQ(copy, u"Div");
  EXPECT_EQ(literal, u"div");

  hstring counted(u"span");
  hstring shared = counted;
  const char16_t* before = counted.Data();
  shared += u's';
  EXPECT_EQ(counted.Data(), before);
  EXPECT_EQ(counted, u"span");
  EXPECT_EQ(shared, u"spans");
  counted.Unique();
  EXPECT_EQ(counted.Data(), before) << "the only owner keeps its storage";
}

TEST(HString, EmptyTextIsNullAndStillReadable) {
  for (const hstring& empty : {hstring(), hstring(u""), u""_hs, hstring(std::u16string_view()),
                               hstring(0, u'x'), hstring::Uninitialized(0), hstring::Concat(u"", u"")}) {
    EXPECT_TRUE(empty.Empty());
    EXPECT_EQ(empty.Length(), 0);
    EXPECT_EQ(*empty.Data(), 0);
    EXPECT_TRUE(empty.SameStorage(hstring()));
  }
}

TEST(HString, EveryOperationKeepsTheClosingZero) {
  hstring text(u"abc");
  const auto check = [&](std::u16string_view expected) {
    EXPECT_EQ(text, expected);
    EXPECT_EQ(text[text.Size()], 0);
  };
  text.SetLength(2);
  check(u"ab");
  text.Append(u"cdefgh");
  check(u"abcdefgh");
  text.Append(text);
  check(u"abcdefghabcdefgh");
  text.Append(text.View().substr(7, 2));
  check(u"abcdefghabcdefghha");
  hstring shared = text;
  text.SetLength(1);
  check(u"a");
  EXPECT_EQ(shared, u"abcdefghabcdefghha");
  text = u"x"_hs + text + u"y" + hstring(2, u'z');
  check(u"xayzz");
  text.SetLength(0);
  check(u"");
  EXPECT_THROW(hstring::Uninitialized(hstring::kMaxLength + 1), std::length_error);
  EXPECT_THROW(text.SetLength(hstring::kMaxLength + 1), std::length_error);
}

TEST(HString, HoldsAnyUnitsAndOrdersByThem) {
  const hstring odd(std::u16string_view(u"\xD800\0\xDC00", 3));
  EXPECT_EQ(odd.Length(), 3);
  EXPECT_EQ(odd[2], 0xDC00);
  EXPECT_LT(u"a"_hs, u"ab"_hs);
  EXPECT_LT(u"Z"_hs, u"a"_hs);
  EXPECT_GT(u"\xFFFF"_hs, u"\xD800"_hs);
  const std::unordered_set<hstring> set{u"a"_hs, hstring(u"a"), u"b"_hs};
  EXPECT_EQ(set.size(), 2u);
}

TEST(HString, CopiesLiveOnManyThreads) {
  const hstring text(u"shared between threads");
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([copy = text] {
      for (int i = 0; i < 20000; ++i) {
        hstring again = copy;
        ASSERT_TRUE(again.SameStorage(copy));
      }
    });
  for (std::thread& thread : threads) thread.join();
  hstring own = text;
  EXPECT_NE(own.Unique(), text.Data()) << "two owners are left";
}

TEST(HString, Trim) {
  EXPECT_EQ(HtTrim(u" \t a b \r\n"), u"a b");
  EXPECT_EQ(HtTrimLeft(u" \x01 a "), u"a ");
  EXPECT_EQ(HtTrimRight(u" a \x20\x1F"), u" a");
  EXPECT_EQ(HtTrim(u" \x01\x20"), u"");
  EXPECT_EQ(HtTrim(u"\xA0x\xA0"), u"\xA0x\xA0");
}

}  // namespace
}  // namespace ht
