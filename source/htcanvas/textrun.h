#pragma once

#include "htmlpars/charclasses.h"
#include "htutils/objectlist.h"

namespace ht {

class THtTextRun;

/// What is known of a piece of text. The split sets trfSpace, trfBlank, the two breaks, trfLineBreak and trfTab; the others
/// are for a layout.
HT_ENUM(THtTextRunFlag, uint8_t, trfSpace, trfBlank, trfRTL, trfBreakBefore, trfBreakAfter, trfLineBreak,
        trfProhibitRightBreak, trfProhibitLeftBreak, trfHidden, trfProcessed, trfBlock, trfOutofFlow,
        trfInlineStart, trfInlineEnd, trfCollapsible, trfText, trfSpellIncorrect, trfHyphen, trfTab);
using THtTextRunFlags = TSet<THtTextRunFlag>;

/// Class references of text runs.
class THtTextRunClass : public TClass {
 public:
  using TClass::TClass;

 protected:
  ~THtTextRunClass() = default;
};

/// A piece of a text that stays together. A layout may derive its own.
class THtTextRun : public TObject {
 public:
  using TClassRef = THtTextRunClass;
  static const THtTextRunClass* Class();
  const TClass* ClassType() const override { return Class(); }

  int32_t Start = 0;  // from 1, in UTF-16 units
  int32_t Count = 0;  // units
  int32_t Line = 0;
  float LogicalWidth = 0;
  THtTextRunFlags Flags;
  THtTextRunBidi Bidi = bdLTR;
};

/// The runs of a text, which it owns.
class THtTextRuns : public THtObjectList {
  HT_CLASS(THtTextRuns, THtObjectList)

 public:
  THtTextRuns() : THtObjectList(true) {}

  THtTextRun* GetRun(int32_t index) const { return Get<THtTextRun>(index); }

  float FontScale = 1;
};

/// A text that a concrete canvas has prepared for drawing.
class THtTextObject : public TObject {
 public:
  bool Ellipsis = false, Shadow = false;
  float ShadowX = 0, ShadowY = 0;
  uint32_t ShadowColor = 0;

  virtual void SetColor(uint32_t color) = 0;
  virtual void SetStyle(uint32_t style) = 0;
  virtual void SetAlignment(int32_t alignment) = 0;
};

}  // namespace ht
