#include <gtest/gtest.h>

#include "htruntime/enums.h"
#include "htruntime/exception.h"
#include "htruntime/object.h"

namespace ht {

HT_ENUM(TTestFloat, uint8_t, tfNone, tfLeft, tfRight, tfFootNote);

namespace {

class TShape : public TObject {
  HT_CLASS(TShape, TObject)
};

class TRound : public TShape {
  HT_CLASS(TRound, TShape)
 public:
  explicit TRound(int) {}
};

class TAbstractShape : public TShape {
  HT_CLASS(TAbstractShape, TShape)
  virtual void Draw() = 0;
};

TEST(Classes, KnowTheirNameParentAndInstances) {
  TRound round(1);
  const TObject& object = round;
  EXPECT_EQ(object.ClassName(), u"TRound");
  EXPECT_EQ(object.ClassType(), TRound::Class());
  EXPECT_EQ(TRound::Class()->Parent(), TShape::Class());
  EXPECT_EQ(TObject::Class()->Parent(), nullptr);
  EXPECT_TRUE(object.InheritsFrom(TObject::Class()));
  EXPECT_TRUE(object.InheritsFrom(TRound::Class()));
  EXPECT_FALSE(object.InheritsFrom(TAbstractShape::Class()));
  EXPECT_FALSE(TShape().InheritsFrom(TRound::Class()));

  const std::unique_ptr<TObject> made = TShape::Class()->NewInstance();
  ASSERT_TRUE(made);
  EXPECT_EQ(made->ClassType(), TShape::Class());
  EXPECT_FALSE(TRound::Class()->NewInstance()) << "needs an argument";
  EXPECT_FALSE(TAbstractShape::Class()->NewInstance());
}

TEST(Enums, NamesAndOrdinals) {
  const THtEnumInfo& info = HtEnumOf<TTestFloat>();
  EXPECT_EQ(info.TypeName(), u"TTestFloat");
  EXPECT_EQ(info.Count(), 4);
  EXPECT_EQ(info.NameOf(tfFootNote), u"tfFootNote");
  EXPECT_EQ(info.NameOf(4), u"");
  EXPECT_EQ(info.NameOf(-1), u"");
  EXPECT_EQ(info.Find(u"tfLeft"), tfLeft);
  EXPECT_EQ(info.Find(u"TFLEFT"), tfLeft);
  EXPECT_EQ(info.Find(u"tf", u"footnote"), tfFootNote);
  EXPECT_EQ(info.Find(u"left"), -1);
  EXPECT_EQ(info.Find(u""), -1);
}

TEST(Enums, Sets) {
  using TFloats = TSet<TTestFloat>;
  const TFloats sides{tfLeft, tfRight};
  EXPECT_TRUE(sides.Contains(tfLeft));
  EXPECT_FALSE(sides.Contains(tfNone));
  EXPECT_EQ(sides + TFloats{tfNone}, (TFloats{tfNone, tfLeft, tfRight}));
  EXPECT_EQ(sides - TFloats({tfLeft, tfNone}), TFloats{tfRight});
  EXPECT_EQ(sides * TFloats({tfLeft, tfFootNote}), TFloats{tfLeft});
  EXPECT_TRUE(TFloats{tfLeft} <= sides);
  EXPECT_FALSE(sides <= TFloats{tfLeft});
  EXPECT_TRUE(TFloats() <= sides && TFloats().Empty());
  EXPECT_EQ(sides.Count(), 2);
}

TEST(Exceptions, MessageInBothEncodings) {
  try {
    throw EStringListError(u"größer als \x20AC");
  } catch (const EListError& error) {
    EXPECT_EQ(error.Message, u"größer als \x20AC");
    EXPECT_STREQ(error.what(),
                 "gr\xC3\xB6\xC3\x9F"
                 "er als \xE2\x82\xAC");
  }
}

}  // namespace
}  // namespace ht
