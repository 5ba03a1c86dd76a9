#pragma once

#include <vector>

#include "htmlcss/measure.h"
#include "htmlcss/tokensequence.h"

namespace ht {

HT_ENUM(TTransformType, uint8_t, ttNone, ttTranslate, ttTranslateX, ttTranslateY, ttTranslateZ, ttTranslate3d,
        ttRotate, ttRotateX, ttSkew, ttScale, ttScaleX, ttScaleY, ttMatrix);

/// One function of a `transform`.
struct TTransformItem {
  TTransformType TransformType = ttNone;
  std::vector<TMeasure> Values;
};

/// A `transform` and its origin. The measures of translations refer to RefWidth and RefHeight, so that a transform is not
/// to be copied while one is being resolved.
struct TTransform {
  float RefWidth = 0, RefHeight = 0;
  std::vector<TTransformItem> Items;
  TBaseElementStyle* Style = nullptr;
  TMeasure OriginX, OriginY;

  void Decode(TCSSTokenSequence& sequence);
  void DecodeOrigin(TCSSTokenSequence& sequence);
  /// No functions, and an origin of 0.
  void Reset();

  /// The value of the first item that has one, for reading and writing; with `create` one that changes nothing is added
  /// where there is none, else null. Valid until an item is added.
  TMeasure* TranslateX(bool create);
  TMeasure* TranslateY(bool create);
  TMeasure* ScaleX(bool create);
  TMeasure* ScaleY(bool create);
  TMeasure* Rotate(bool create);
  TMeasure* RotateX(bool create);

 private:
  struct TPlace;

  TMeasure* Find(std::initializer_list<TPlace> places, bool create, float neutral);
  void TakeBox();
};

}  // namespace ht
