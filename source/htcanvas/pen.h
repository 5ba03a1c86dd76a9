#pragma once

#include <span>
#include <vector>

#include "htruntime/enums.h"
#include "htruntime/object.h"

namespace ht {

class THtPen;

HT_ENUM(THtPenStyle, uint8_t, hpsSolid, hpsDash, hpsDot, hpsDashDot, hpsDashDotDot, hpsClear);
HT_ENUM(THtLineJoin, uint8_t, ljMiter, ljBevel, ljRound);
HT_ENUM(THtLineCap, uint8_t, lcFlat, lcSquare, lcRound);
HT_ENUM(THtLineDrawMode, uint8_t, ldmCopy, ldmXOR);

/// Class references of pens.
class THtPenClass : public TClass {
 public:
  using TClass::TClass;

  /// Null for a class that has no instances.
  std::unique_ptr<THtPen> Create(uint32_t color, float width) const;

 protected:
  ~THtPenClass() = default;
};

/// What a line is drawn with. Colours are 0xAARRGGBB, widths pixels. A raster canvas derives its own pen.
class THtPen : public TObject {
 public:
  using TClassRef = THtPenClass;
  static const THtPenClass* Class();
  const TClass* ClassType() const override { return Class(); }
  const THtPenClass* PenClass() const { return static_cast<const THtPenClass*>(ClassType()); }

  virtual uint32_t GetColor() const { return FColor; }
  virtual float GetWidth() const { return FWidth; }
  /// The line runs inside of the figure; false here.
  virtual bool GetAlignInset() const { return false; }
  virtual THtPenStyle GetPenStyle() const { return FPenStyle; }
  virtual THtLineJoin GetLineJoin() const { return FLineJoin; }
  virtual float GetDashOffset() const { return FDashOffset; }
  virtual THtLineCap GetLineCap() const { return FLineCap; }
  virtual void SetColor(uint32_t color) { FColor = color; }
  virtual void SetWidth(float width) { FWidth = width; }
  virtual void SetAlignInset(bool) {}
  virtual void SetPenStyle(THtPenStyle style) { FPenStyle = style; }
  virtual void SetLineJoin(THtLineJoin join) { FLineJoin = join; }
  virtual void SetDashOffset(float offset) { FDashOffset = offset; }
  virtual void SetLineCap(THtLineCap cap) { FLineCap = cap; }
  /// Called for a new pen.
  virtual void Create(uint32_t color, float width);
  /// The first highIndex + 1 of the values, in pixels, become the dash pattern; -1 for none. The width must not be 0.
  virtual void SetDashes(std::span<const float> values, int32_t highIndex);
  virtual std::unique_ptr<THtPen> Clone() const;
  virtual void Assign(const THtPen& pen);

  THtLineJoin FLineJoin = ljMiter;
  THtLineCap FLineCap = lcFlat;
  uint32_t FColor = 0;
  float FWidth = 0;
  THtPenStyle FPenStyle = hpsSolid;
  float FDashOffset = 0;
  THtLineDrawMode FMode = ldmCopy;
  std::vector<float> Dashes;  // in widths of the pen

 private:
  void AssignLine(const THtPen& pen);
};

}  // namespace ht
