#include "htcanvas/matrix.h"

#include <gtest/gtest.h>

#include "rects.h"

namespace ht {
namespace {

using TNumbers = std::array<float, 6>;

THtMatrixData Matrix(const TNumbers& n) {
  THtMatrixData m;
  m.Init(n[0], n[1], n[2], n[3], n[4], n[5]);
  return m;
}

TEST(Matrix, FlagsAndTexts) {
  const struct {
    TNumbers Numbers;
    THtMatrixFlag Flags;
    const char *Text, *Object, *ScaleRotate;
  } cases[] = {
      {{1, 0, 0, 1, 0, 0}, mfIdentity, "", "", ""},
      {{1, 0, 0, 1, 3.5f, 0}, mfTranslation, "translate(3.5,0)", " translate(3.5,0)", ""},
      {{2, 0, 0, 2, 0, 0}, mfScale, " scale(2,2)", " scale(2,2)", " scale(2,2)"},
      {{2, 0, 0, 2, 1, 1}, mfScale, "matrix(2,0,0,2,1,1)", " translate(1,1) scale(2,2)", " scale(2,2)"},
      {{-1, 0, 0, 1, 0, 0}, mfNegativeScale, " scale(-1,1)", " scale(-1,1)", " scale(-1,1)"},
      {{0, 1, -1, 0, .25f, 0},
       mfRotation,
       "matrix(0,1,-1,0,.25,0)",
       "matrix(0,1,-1,0,.25,0)",
       "matrix(0,1,-1,0,0,0)"}};
  for (const auto& c : cases) {
    const THtMatrixData m = Matrix(c.Numbers);
    THtCustomMatrix object;
    object.MultiplyData(m);
    EXPECT_EQ(m.Flags, c.Flags) << c.Text;
    EXPECT_EQ(object.Matrix.Flags, c.Flags);
    EXPECT_EQ(HtToUtf8(m.AsString(false)), c.Text);
    EXPECT_EQ(HtToUtf8(m.AsString(true)), m.Flags == mfTranslation ? "translate(3.5px,0px)" : c.Text);
    EXPECT_EQ(HtToUtf8(object.AsString(false)), c.Object);
    EXPECT_EQ(HtToUtf8(m.AsStringScaleRotate()), c.ScaleRotate);
  }
}

// Every product and inverse against the plain formula, and the flags against the numbers.
TEST(Matrix, Products) {
  const TNumbers all[] = {{1, 0, 0, 1, 0, 0},    {1, 0, 0, 1, 5, -3}, {2, 0, 0, 3, 0, 0},
                          {2, 0, 0, .5f, 4, 1},  {-1, 0, 0, 2, 1, 1}, {0, 1, -1, 0, 10, 20},
                          {1, .5f, .2f, 1, 7, 8}};
  const TPointF p{3, -4};
  for (const TNumbers& a : all)
    for (const TNumbers& b : all) {
      THtMatrixData m = Matrix(a);
      m.Multiply(Matrix(b));
      EXPECT_EQ(Text(m.TransformPoint(p)), Text(Matrix(a).TransformPoint(Matrix(b).TransformPoint(p))));
      THtMatrixData fresh = m, inverse = m;
      fresh.UpdateFlags();
      EXPECT_TRUE(m.Flags == fresh.Flags || m.Flags == mfScale || m.Flags == mfTranslation);
      EXPECT_TRUE(inverse.Inverse());
      EXPECT_EQ(Text(inverse.TransformPoint(m.TransformPoint(p))), "3,-4");
    }
}

TEST(Matrix, ActsBehind) {
  THtMatrixData m;
  m.Scale(2, 3);
  m.Translate(10, 0);
  EXPECT_EQ(Text(m.TransformPoint(TPointF{1, 1})), "12,3");
  m.Rotate(90);
  EXPECT_EQ(Text(m.TransformPoint(TPointF{1, 1})), "-3,12");
  EXPECT_NEAR(m.RotationAngle(), 90, 1e-4);
  THtMatrixData singular = Matrix({1, 1, 1, 1, 5, 5}), none;
  EXPECT_TRUE(singular.Inverse());
  EXPECT_EQ(singular.Flags, mfIdentity);
  none.CreateRotation(0);
  EXPECT_EQ(none.Flags, mfIdentity);
}

TEST(Matrix, Parts) {
  THtMatrixData m;
  m.Scale(2, -3);
  m.Rotate(330);
  float sx, sy, skew, angle;
  m.Decompose(sx, sy, skew, angle);
  EXPECT_EQ(Words("parts", sx, sy, skew, angle, m.ScaleFactor()), "parts 2 -3 0 330 2");
  const THtMatrixData leaning = Matrix({3, -4, 1, 2, 0, 0});
  EXPECT_EQ(Words("scales", leaning.XScale(), leaning.YScale()), "scales 7 3");
  EXPECT_TRUE(Matrix({1, 2, 3, 4, 5, 6}).SameScaleRotate(Matrix({1, 2, 3, 4, 0, 0})));
  EXPECT_EQ(Matrix({1, 0, 0, 1, .5f, 1.5f}).TransformPoint(TPoint{0, 0}), (TPoint{0, 2}));  // ties to even
}

TEST(Matrix, Rectangles) {
  const TRectF rect{1, 2, 3, 5};
  EXPECT_EQ(Matrix({1, 0, 0, 1, 10, 20}).TransformRect(rect), (TRectF{11, 22, 13, 25}));
  EXPECT_EQ(Matrix({2, 0, 0, 2, 0, 0}).TransformRect({3, 5, 1, 2}), (TRectF{6, 10, 2, 4}));  // order kept
  EXPECT_EQ(Matrix({-1, 0, 0, 1, 0, 0}).TransformRect(rect), (TRectF{-3, 2, -1, 5}));
  EXPECT_EQ(Matrix({0, 1, -1, 0, 0, 0}).TransformRect(rect), (TRectF{-5, 1, -2, 3}));
}

TEST(Matrix, Stack) {
  THtCustomMatrixStack stack;
  stack.Multiply(Matrix({1, 0, 0, 1, 5, 0}));
  stack.SaveState();
  stack.Multiply(Matrix({2, 0, 0, 2, 0, 0}));
  EXPECT_EQ(stack.CurrentMatrix->Matrix.Data[0], 2);
  stack.RestoreState();
  EXPECT_EQ(HtToUtf8(stack.CurrentMatrix->AsString(false)), " translate(5,0)");
  EXPECT_EQ(stack.GetCount(), 0);
}

}  // namespace
}  // namespace ht
