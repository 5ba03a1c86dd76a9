#pragma once

#include "htcanvas/metaresource.h"
#include "htcanvas/path.h"

namespace ht {

class THtCanvas;

// What a record holds, as the canvas that it is replayed on can use it. Things of the canvas's own classes are passed as they
// are; at an opacity other than 1, and for another class, something is made that lives as long as the object here. A solid
// brush and a pen of another class are those that the canvas keeps, good until it is asked for the next.

class TReplayBrush {
 public:
  TReplayBrush(const THtBrush& brush, THtCanvas& canvas, float opacity);
  operator const THtBrush&() const { return *FBrush; }

 private:
  std::unique_ptr<THtBrush> FOwn;
  const THtBrush* FBrush;
};

class TReplayPen {
 public:
  TReplayPen(const THtPen& pen, THtCanvas& canvas, float opacity);
  operator const THtPen&() const { return *FPen; }

 private:
  std::unique_ptr<THtPen> FOwn;
  const THtPen* FPen;
};

/// A path of another class that does not know its figures is empty here.
class TReplayPath {
 public:
  TReplayPath(const THtPath& path, const THtCanvas& canvas);
  operator const THtPath&() const { return *FPath; }

 private:
  std::unique_ptr<THtPath> FOwn;
  const THtPath* FPath;
};

}  // namespace ht
