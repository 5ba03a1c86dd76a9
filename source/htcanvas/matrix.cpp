#include "htcanvas/matrix.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "htruntime/format.h"
#include "htruntime/rounding.h"
#include "htutils/faststring.h"
#include "htutils/numbers.h"
#include "htutils/samevalue.h"

namespace ht {

namespace {

constexpr int32_t kDecimals = 4;
constexpr float kSingular = 0.0001f;

double Radians(double degrees) { return degrees * std::numbers::pi / 180; }

bool Same(float a, float b) { return SameValue(a, b); }

hstring Decimal(float value) { return HtFormatDecimal(value, kDecimals); }

int32_t ToInt(double value) {
  return static_cast<int32_t>(std::clamp<double>(HtRoundEven(value), INT32_MIN, INT32_MAX));
}

}  // namespace

void THtMatrixData::Init(float a, float b, float c, float d, float e, float f) {
  Data = {a, b, c, d, e, f};
  UpdateFlags();
}

void THtMatrixData::UpdateFlags() {
  constexpr float kNoRotation = 1e-6f, kNegative = -1e-7f;
  if (!SameValue(Data[1], 0, kNoRotation) || !SameValue(Data[2], 0, kNoRotation))
    Flags = mfRotation;
  else if (Data[0] < kNegative || Data[3] < kNegative)
    Flags = mfNegativeScale;
  else if (!Same(Data[0], 1) || !Same(Data[3], 1))
    Flags = mfScale;
  else
    Flags = Same(Data[4], 0) && Same(Data[5], 0) ? mfIdentity : mfTranslation;
}

void THtMatrixData::CreateRotation(float angle) {
  const auto sine = static_cast<float>(std::sin(Radians(angle)));
  const auto cosine = static_cast<float>(std::cos(Radians(angle)));
  Init(cosine, sine, -sine, cosine, 0, 0);
}

void THtMatrixData::Translate(float dx, float dy) {
  Data[4] += dx;
  Data[5] += dy;
  if (Flags == mfIdentity && !(Same(dx, 0) && Same(dy, 0))) Flags = mfTranslation;
}

void THtMatrixData::Scale(float sx, float sy) {
  for (size_t i = 0; i < 6; i += 2) {
    Data[i] *= sx;
    Data[i + 1] *= sy;
  }
  UpdateFlags();
}

void THtMatrixData::Rotate(float angle) {
  THtMatrixData rotation;
  rotation.CreateRotation(angle);
  rotation.Multiply(*this);
  *this = rotation;
}

void THtMatrixData::Multiply(const THtMatrixData& m) {
  constexpr float kNegative = -1e-8f;
  if (m.Flags == mfIdentity) return;
  const std::array<float, 6> old = Data;
  for (size_t i = 0; i < 2; ++i) Data[4 + i] += m.Data[4] * old[i] + m.Data[5] * old[2 + i];
  switch (m.Flags) {
    case mfIdentity: break;
    case mfTranslation:
      if (Flags == mfIdentity) Flags = mfTranslation;
      break;
    case mfScale:
    case mfNegativeScale:
      Data[0] *= m.Data[0];
      Data[1] *= m.Data[0];
      Data[2] *= m.Data[3];
      Data[3] *= m.Data[3];
      if (Flags == mfIdentity || Flags == mfTranslation)
        Flags = Data[0] < kNegative || Data[3] < kNegative ? mfNegativeScale : mfScale;
      else
        UpdateFlags();
      break;
    case mfRotation:
      for (size_t k = 0; k < 4; k += 2)
        for (size_t i = 0; i < 2; ++i) Data[k + i] = m.Data[k] * old[i] + m.Data[k + 1] * old[2 + i];
      UpdateFlags();
      break;
  }
}

void THtMatrixData::Adjoint() {
  const std::array<float, 6> d = Data;
  Data = {d[3], -d[1], -d[2], d[0], d[2] * d[5] - d[4] * d[3], -(d[0] * d[5] - d[4] * d[1])};
}

bool THtMatrixData::Inverse() {
  const float determinant = Determinant();
  if (std::fabs(determinant) < kSingular || !std::isfinite(determinant)) {
    Reset();
    return true;
  }
  Adjoint();
  for (float& value : Data) value /= determinant;
  UpdateFlags();
  return true;
}

void THtMatrixData::Decompose(float& scaleX, float& scaleY, float& skew, float& angle) const {
  scaleX = std::hypot(Data[0], Data[1]);
  const float a = scaleX != 0 ? Data[0] / scaleX : Data[0];
  const float b = scaleX != 0 ? Data[1] / scaleX : Data[1];
  skew = a * Data[2] + b * Data[3];
  scaleY = std::hypot(Data[2] - a * skew, Data[3] - b * skew);
  if ((a * Data[3] - b * Data[2]) * scaleX * scaleY < 0) scaleY = -scaleY;
  angle = static_cast<float>(std::atan2(b, a) * 180 / std::numbers::pi);
  if (angle < 0) angle += 360;
}

float THtMatrixData::RotationAngle() const {
  float scaleX, scaleY, skew, angle;
  Decompose(scaleX, scaleY, skew, angle);
  return angle;
}

float THtMatrixData::ScaleFactor() const { return std::hypot(Data[1], Data[0]); }
float THtMatrixData::XScale() const { return std::fabs(Data[0]) + std::fabs(Data[1]); }
float THtMatrixData::YScale() const { return std::fabs(Data[2]) + std::fabs(Data[3]); }

bool THtMatrixData::SameScaleRotate(const THtMatrixData& m) const {
  constexpr float kTolerance = 1e-6f;
  return std::equal(Data.begin(), Data.begin() + 4, m.Data.begin(),
                    [](float a, float b) { return SameValue(a, b, kTolerance); });
}

TPointF THtMatrixData::TransformPoint(const TPointF& point) const {
  return {point.X * Data[0] + point.Y * Data[2] + Data[4], point.X * Data[1] + point.Y * Data[3] + Data[5]};
}

TPoint THtMatrixData::TransformPoint(const TPoint& point) const {
  const double x = point.X, y = point.Y;
  return {ToInt(x * Data[0] + y * Data[2] + Data[4]), ToInt(x * Data[1] + y * Data[3] + Data[5])};
}

TRectF THtMatrixData::TransformRect(const TRectF& rect) const {
  switch (Flags) {
    case mfIdentity: return rect;
    case mfTranslation:
      return {rect.Left + Data[4], rect.Top + Data[5], rect.Right + Data[4], rect.Bottom + Data[5]};
    case mfScale:
      return {rect.Left * Data[0] + Data[4], rect.Top * Data[3] + Data[5], rect.Right * Data[0] + Data[4],
              rect.Bottom * Data[3] + Data[5]};
    default: break;
  }
  const TPointF a = TransformPoint(TPointF{rect.Left, rect.Top});
  const TPointF b = TransformPoint(TPointF{rect.Right, rect.Bottom});
  TRectF box{std::min(a.X, b.X), std::min(a.Y, b.Y), std::max(a.X, b.X), std::max(a.Y, b.Y)};
  if (Same(Data[1], 0) && Same(Data[2], 0)) return box;
  for (const TPointF& corner : {TPointF{rect.Right, rect.Top}, TPointF{rect.Left, rect.Bottom}}) {
    const TPointF p = TransformPoint(corner);
    box = {std::min(box.Left, p.X), std::min(box.Top, p.Y), std::max(box.Right, p.X),
           std::max(box.Bottom, p.Y)};
  }
  return box;
}

hstring THtMatrixData::AsString(bool px) const {
  TFastString text(64);
  const auto add = [&](std::u16string_view before, float value) {
    text.Add(before);
    text.Add(static_cast<double>(value), kDecimals, false);
  };
  const bool scales = Flags == mfScale || Flags == mfNegativeScale;
  if (Flags == mfRotation || (scales && (Data[4] != 0 || Data[5] != 0))) {
    for (size_t i = 0; i < 6; ++i) add(i == 0 ? u"matrix(" : u",", Data[i]);
    text.AddChar(u')');
    return text.GetAsString();
  }
  if (!Same(Data[4], 0) || !Same(Data[5], 0)) {
    add(u"translate(", Data[4]);
    add(px ? u"px," : u",", Data[5]);
    text.Add(px ? u"px)" : u")");
  }
  if (scales) {
    add(u" scale(", Data[0]);
    add(u",", Data[3]);
    text.AddChar(u')');
  }
  return text.GetAsString();
}

hstring THtMatrixData::AsStringScaleRotate() const {
  if (HasRotation())
    return HtFormat(u"matrix(%s,%s,%s,%s,0,0)", Decimal(Data[0]), Decimal(Data[1]), Decimal(Data[2]),
                    Decimal(Data[3]));
  if (Same(Data[0], 1) && Same(Data[3], 1)) return {};
  return HtFormat(u" scale(%s,%s)", Decimal(Data[0]), Decimal(Data[3]));
}

// Objects

std::unique_ptr<THtCustomMatrix> THtCustomMatrix::CreateScaled(float sx, float sy) {
  return std::make_unique<THtCustomMatrix>(sx, 0.f, 0.f, sy, 0.f, 0.f);
}

std::unique_ptr<THtCustomMatrix> THtCustomMatrix::CreateRotation(float angle) {
  auto matrix = std::make_unique<THtCustomMatrix>();
  matrix->Matrix.CreateRotation(angle);
  return matrix;
}

std::unique_ptr<THtCustomMatrix> THtCustomMatrix::Clone() const {
  auto matrix = std::make_unique<THtCustomMatrix>();
  matrix->Matrix = Matrix;
  return matrix;
}

hstring THtCustomMatrix::AsString(bool px) const {
  const std::array<float, 6>& d = Matrix.Data;
  if (HasRotation())
    return HtFormat(u"matrix(%s,%s,%s,%s,%s,%s)", Decimal(d[0]), Decimal(d[1]), Decimal(d[2]), Decimal(d[3]),
                    Decimal(d[4]), Decimal(d[5]));
  hstring text;
  if (!Same(d[4], 0) || !Same(d[5], 0))
    text = HtFormat(px ? u" translate(%spx,%spx)" : u" translate(%s,%s)", Decimal(d[4]), Decimal(d[5]));
  if (!Same(d[0], 1) || !Same(d[3], 1)) text += HtFormat(u" scale(%s,%s)", Decimal(d[0]), Decimal(d[3]));
  return text;
}

THtCustomMatrixStack::THtCustomMatrixStack(bool ownsObjects)
    : THtObjectList(ownsObjects), CurrentMatrix(std::make_unique<THtCustomMatrix>()) {}

void THtCustomMatrixStack::SaveState() {
  auto copy = CurrentMatrix->Clone();
  Add(CurrentMatrix.release());
  CurrentMatrix = std::move(copy);
}

void THtCustomMatrixStack::RestoreState() {
  CurrentMatrix.reset(static_cast<THtCustomMatrix*>(Extract(LastItem<THtCustomMatrix>())));
}

}  // namespace ht
