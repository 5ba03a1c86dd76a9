#pragma once

#include <memory>
#include <vector>

#include "htruntime/object.h"
#include "htutils/geometry.h"

namespace ht {

class THtCanvas;

/// The base of what a viewer keeps from one paint pass to the next.
class THtCache : public TObject {
  HT_CLASS(THtCache, TObject)
};

/// The part of a document around the screen as a ring of horizontal stripes, each an off-screen surface of a concrete
/// canvas. On a scroll the ring turns, and only the stripes that come into it are painted:
///
///   cache.Update(canvas, screenWidth, screenHeight, 256, docWidth, docHeight, scale, x, y);
///   cache.PaintOnCanvas(screen, 0, 0, x, y);
///
/// Sizes of screen and stripes are pixels; those of the document and all places in it are its own units, `scale` pixels each.
/// (x, y) is where the document's corner stands as seen from the view: the view begins at (-x, -y). A derived class supplies
/// the surfaces. A stripe height below 1 counts as 1, a scale that is not above 0 as 1. Belongs to the painting thread.
class THtStripeCache : public THtCache {
  HT_CLASS(THtStripeCache, THtCache)

 public:
  /// Sets the sizes and the number of stripes: what the view needs and one more, never more than the document and one,
  /// nor than 65,536.
  virtual void Init(int32_t screenWidth, int32_t screenHeight, int32_t stripeHeight, int32_t docWidth,
                    int32_t docHeight, float scale);
  /// A surface of StripeWidth times StripeHeight.
  virtual std::unique_ptr<TObject> CreateStripe() = 0;
  /// Gives the stripe the present StripeWidth and StripeHeight.
  virtual void UpdateStripeSize(int32_t index) = 0;
  /// Paints stripes on the target, the first one at (x, y), each further one StripeHeight lower. PaintOnCanvas calls it
  /// once at most.
  virtual void PaintStripe(int32_t first, int32_t last, THtCanvas& target, int32_t x, int32_t y) = 0;
  /// Paints what of the view lies in the ring; (screenLeft, screenTop) is the view's corner on the target.
  virtual void PaintOnCanvas(THtCanvas& target, float screenLeft, float screenTop, float x, float y);
  /// Paints those stripes anew from the document; StripeDocRect tells what belongs on each.
  virtual void FillStripes(THtCanvas& canvas, int32_t first, int32_t last) = 0;
  /// For stripes that have to be painted again for a reason of the derived class. Does nothing here.
  virtual void CheckStripes(THtCanvas& canvas, int32_t first, int32_t last);

  /// Makes the ring fit the view, and paints what is new in it.
  void Update(THtCanvas& canvas, int32_t screenWidth, int32_t screenHeight, int32_t stripeHeight,
              int32_t docWidth, int32_t docHeight, float scale, float x, float y);
  /// Forgets what the stripes hold: the next Update paints all of them.
  void Reset() { FFilled = false; }
  /// Turns the ring: what stands at i goes to i + n, round the end.
  void ShiftStripes(int32_t n);
  /// What part of the document a stripe holds.
  TRectF StripeDocRect(int32_t index) const;
  int32_t Count() const { return static_cast<int32_t>(Stripes.size()); }

  std::vector<std::unique_ptr<TObject>> Stripes;  // top to bottom
  int32_t ScreenHeight = 0, ScreenWidth = 0;
  int32_t StripeWidth = 0, StripeHeight = 1;
  int32_t DocWidth = 0, DocHeight = 0;
  int32_t TotalStripeHeight = 0;
  float StripesDocTop = 0, StripesDocLeft = 0;  // where the first stripe stands in the document
  float DocScale = 1;                           // of the view
  float StripeScale = 1;                        // that the stripes were painted at
  uint32_t BackgroundColor = 0;                 // of a stripe

 private:
  bool Holds(float left, float top) const;
  bool Turn(THtCanvas& canvas, float scale, float top);
  void Rebuild(THtCanvas& canvas, float left, float top);
  int32_t StripeAt(double docY, double scale) const;
  int32_t StripesIn(double pixels) const;

  int32_t FSized = 0;  // of so many stripes the size is set
  bool FFilled = false;
};

}  // namespace ht
