#pragma once

#include <span>
#include <vector>

#include "htcanvas/matrix.h"

namespace ht {

class THtBrush;
class THtImage;

HT_ENUM(THtBrushKind, uint8_t, hbSolid, hbGradient, hbRadial, hbImage);

/// Class references of brushes. Each Create gives null for a class that has no instances.
class THtBrushClass : public TClass {
 public:
  using TClass::TClass;

  std::unique_ptr<THtBrush> Create(uint32_t color) const;
  std::unique_ptr<THtBrush> CreateGradient(const TRectF& gradientRect, uint32_t color1, uint32_t color2,
                                           float angle, const TRectF& fillRect) const;
  std::unique_ptr<THtBrush> CreateRadialGradient(float offsetX, float offsetY, float cx, float cy, float fx,
                                                 float fy, float radius, const THtMatrixData& matrix) const;

 protected:
  ~THtBrushClass() = default;
};

/// What an area is filled with: a colour, a gradient or an image.
///
///   auto brush = canvas.CanvasClass()->BrushClass()->CreateGradient(line, 0, 0, 90, box);
///   brush->SetGradientColors(positions, colors);
///
/// Colours are 0xAARRGGBB. A raster canvas derives its own brush. The image is borrowed.
class THtBrush : public TObject {
 public:
  using TClassRef = THtBrushClass;
  static const THtBrushClass* Class();
  const TClass* ClassType() const override { return Class(); }
  const THtBrushClass* BrushClass() const { return static_cast<const THtBrushClass*>(ClassType()); }

  virtual uint32_t GetColor() const { return FColor; }
  virtual void SetColor(uint32_t color) { FColor = color; }
  virtual void SetMatrix(const THtMatrixData& matrix) { FMatrix = matrix; }
  /// Called for a new brush of each kind.
  virtual void Create(uint32_t color);
  /// The angle comes into [0, 360). The two colours are for derived classes: the stops come from SetGradientColors.
  virtual void CreateGradient(const TRectF& gradientRect, uint32_t color1, uint32_t color2, float angle,
                              const TRectF& fillRect);
  virtual void CreateRadialGradient(float offsetX, float offsetY, float cx, float cy, float fx, float fy,
                                    float radius, const THtMatrixData& matrix);
  /// Positions ascend from 0 to 1; where they do not reach that far, a stop of the nearest colour is added. Both have the
  /// same number of items.
  virtual void SetGradientColors(std::span<const float> positions, std::span<const uint32_t> colors);
  virtual std::unique_ptr<THtBrush> Clone() const;

  /// The colour of a linear gradient at a point of FillRect.
  uint32_t CalcGradientColor(float x, float y);
  /// The line of a CSS linear gradient in FillRect: its start is Left and Top, its end Right and Bottom.
  TRectF CalcGradientRect() const;

  uint32_t FColor = 0;
  /// The space that gradients are told in.
  THtMatrixData FMatrix;
  THtBrushKind Kind = hbSolid;
  float OffsetX = 0, OffsetY = 0, CX = 0, CY = 0, FX = 0, FY = 0, Radius = 0;  // of a radial gradient
  float Angle = 0;                                                             // of a linear one, in degrees
  TRectF GradientRect;                                                         // its line
  TRectF FillRect;                                                             // the box it is painted into
  std::vector<uint32_t> GradientColors;
  std::vector<float> GradientPositions;
  THtImage* Image = nullptr;
};

}  // namespace ht
