#include "htmlpars/lower.h"

#include <gtest/gtest.h>

using namespace ht;

TEST(Lower, OnlyAsciiLettersChange) {
  for (void (*lower)(hstring&) : {hLower, vLower}) {
    hstring text = u"@AZ[`az{ \u00C9\u0416\u212A"_hs;
    lower(text);
    EXPECT_EQ(text, u"@az[`az{ \u00C9\u0416\u212A");
    lower(text = hstring());
    EXPECT_TRUE(text.Empty());
  }
}

TEST(Lower, SharedTextsAreCopiedBeforeTheyChange) {
  const hstring lowCase(u"div"), mixedCase(u"Div");
  hstring low = lowCase, mixed = mixedCase;
  hLower(low);
  EXPECT_TRUE(low.SameStorage(lowCase));
  hLower(mixed);
  EXPECT_EQ(mixed, u"div");
  EXPECT_EQ(mixedCase, u"Div");
  vLower(low);
  EXPECT_FALSE(low.SameStorage(lowCase));
}
