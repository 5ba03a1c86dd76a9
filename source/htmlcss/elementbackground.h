#pragma once

#include "htmlcss/cssenums.h"
#include "htmlcss/gradient.h"
#include "htruntime/object.h"

namespace ht {

HT_ENUM(TBackgroundSize, uint8_t, bsAuto, bsSize, bsCover, bsContain);

/// What is drawn behind an element, its colour apart: an image or a gradient, and where it stands. Lengths refer to the
/// content box of the element.
class TElementBackground : public TObject {
  HT_CLASS(TElementBackground, TObject)

 public:
  TElementBackground() = default;
  /// That of an element: its measures refer to the style and its element.
  explicit TElementBackground(TBaseElementStyle& style);

  /// Reads the first layer of a `background`. A vendor's own gradient changes nothing; what is not known is passed over.
  void Parse(TCSSTokenSequence& sequence);
  void DecodeRadialGradient(TCSSTokenSequence& sequence);
  /// Takes over everything but what the measures belong to.
  void Assign(const TElementBackground& other);
  /// Leaves neither image nor gradient.
  void Reset();
  /// There is an image or a gradient.
  bool Present() const { return !Gradient.Stops.empty() || !Image.Empty(); }

  hstring Image;   // an address
  hstring Second;  // goes with Image
  TGradient Gradient;
  TBackgroundRepeat Repeat = brRepeat;
  TBackgroundOrigin Origin = boPaddingBox;
  TBackgroundAttachment Attachment = baScroll;
  TBackgroundSize SizeMode = bsAuto;
  TMeasure SizeX, SizeY;
  TMeasure PositionX, PositionY;
  /// What a relative address of the image refers to.
  hstring BaseURL;

 private:
  struct TPosition;

  bool ParseToken(TCSSTokenSequence& sequence, TPosition& position);
  void ParseWord(TCSSTokenSequence& sequence, TPosition& position);
  bool ParseFunction(TCSSTokenSequence& sequence);

  TBaseElementStyle* FStyle = nullptr;
};

}  // namespace ht
