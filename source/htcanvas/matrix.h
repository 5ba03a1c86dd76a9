#pragma once

#include <array>

#include "htruntime/enums.h"
#include "htruntime/hstring.h"
#include "htruntime/object.h"
#include "htutils/geometry.h"
#include "htutils/objectlist.h"

namespace ht {

/// What a matrix does, in the order of growing cost. mfScale and those behind it say nothing of a translation.
HT_ENUM(THtMatrixFlag, uint8_t, mfIdentity, mfTranslation, mfScale, mfNegativeScale, mfRotation);

/// An affine map of the plane: x' = x·Data[0] + y·Data[2] + Data[4], y' = x·Data[1] + y·Data[3] + Data[5].
///
/// Translate, Scale and Rotate act behind what the matrix does already, Multiply in front of it:
///
///   THtMatrixData m;          // identity
///   m.Scale(2, 2);
///   m.Translate(10, 0);       // (1, 1) goes to (12, 2)
///   m.Multiply(inner);        // a point goes through `inner` first
///
/// A plain value. Flags are kept true by every operation; who writes Data calls UpdateFlags. Angles are degrees.
struct THtMatrixData {
  std::array<float, 6> Data{1, 0, 0, 1, 0, 0};
  THtMatrixFlag Flags = mfIdentity;

  void Init(float a, float b, float c, float d, float e, float f);
  void Reset() { *this = {}; }
  void CreateRotation(float angle);
  void Translate(float dx, float dy);
  void Scale(float sx, float sy);
  void Rotate(float angle);
  void Multiply(const THtMatrixData& m);
  /// A singular matrix becomes the identity. Always true.
  bool Inverse();
  void Adjoint();
  float Determinant() const { return Data[0] * Data[3] - Data[1] * Data[2]; }
  /// Into a rotation, a skew and a scale. The angle is in [0, 360).
  void Decompose(float& scaleX, float& scaleY, float& skew, float& angle) const;
  float RotationAngle() const;
  float ScaleFactor() const;
  float XScale() const;
  float YScale() const;
  bool HasRotation() const { return Flags == mfRotation; }
  /// The translations do not count.
  bool SameScaleRotate(const THtMatrixData& m) const;
  TPointF TransformPoint(const TPointF& point) const;
  /// To the nearest, of two the even one.
  TPoint TransformPoint(const TPoint& point) const;
  /// The bounding box of what a rectangle becomes. Under a scale without negative factors the corners keep their order.
  TRectF TransformRect(const TRectF& rect) const;
  void UpdateFlags();

  /// As the attribute `transform`; with `px` as the CSS property. Empty for the identity.
  hstring AsString(bool px) const;
  /// Without the translation.
  hstring AsStringScaleRotate() const;
};

/// A matrix as an object.
class THtCustomMatrix : public TObject {
  HT_CLASS(THtCustomMatrix, TObject)

 public:
  THtCustomMatrix() = default;
  THtCustomMatrix(float a, float b, float c, float d, float e, float f) { Matrix.Init(a, b, c, d, e, f); }
  static std::unique_ptr<THtCustomMatrix> CreateScaled(float sx, float sy);
  static std::unique_ptr<THtCustomMatrix> CreateRotation(float angle);

  void Reset() { Matrix.Reset(); }
  void Translate(float dx, float dy) { Matrix.Translate(dx, dy); }
  void Scale(float sx, float sy) { Matrix.Scale(sx, sy); }
  void Rotate(float angle) { Matrix.Rotate(angle); }
  float Determinant() const { return Matrix.Determinant(); }
  bool Inverse() { return Matrix.Inverse(); }
  bool IsIdentity() const { return Matrix.Flags == mfIdentity; }
  std::unique_ptr<THtCustomMatrix> Clone() const;
  template <class TPointType>
  TPointType TransformPoint(const TPointType& point) const {
    return Matrix.TransformPoint(point);
  }
  TRectF TransformRect(const TRectF& rect) const { return Matrix.TransformRect(rect); }
  void Multiply(const THtCustomMatrix& matrix) { Matrix.Multiply(matrix.Matrix); }
  void MultiplyData(const THtMatrixData& matrix) { Matrix.Multiply(matrix); }
  void Assign(const THtCustomMatrix& matrix) { Matrix = matrix.Matrix; }
  const THtMatrixData& GetMatrixData() const { return Matrix; }
  bool HasRotation() const { return Matrix.HasRotation(); }
  /// Not the text of THtMatrixData: a scale with a translation is written as both, with a blank before each.
  hstring AsString(bool px) const;
  hstring AsStringScaleRotate() const { return Matrix.AsStringScaleRotate(); }

  THtMatrixData Matrix;
};

/// Matrices to come back to. Saves and restores have to be balanced.
class THtCustomMatrixStack : public THtObjectList {
  HT_CLASS(THtCustomMatrixStack, THtObjectList)

 public:
  explicit THtCustomMatrixStack(bool ownsObjects = true);

  void SaveState();
  void RestoreState();
  void Multiply(const THtMatrixData& matrix) { CurrentMatrix->MultiplyData(matrix); }

  std::unique_ptr<THtCustomMatrix> CurrentMatrix;
};

}  // namespace ht
