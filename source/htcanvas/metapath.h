#pragma once

#include "htcanvas/path.h"

namespace ht {

/// The path of a record. It never changes. May be null.
class THtMetaPath {
 public:
  THtMetaPath() = default;
  /// A copy that shares nothing with the path: what happens to that later does not show.
  explicit THtMetaPath(const THtPath& path);
  /// One that was made of this text.
  THtMetaPath(std::unique_ptr<THtPath> path, hstring text) : FPath(std::move(path)), FText(std::move(text)) {}

  const THtPath* Get() const { return FPath.get(); }
  const THtPath& operator*() const { return *FPath; }
  const THtPath* operator->() const { return FPath.get(); }
  explicit operator bool() const { return FPath != nullptr; }
  /// As SVG path data; of a path that was made of a text, that text. Numbers are rounded when they are written, so that what
  /// is read and written again and again would wander.
  hstring Text() const { return FPath && FText.Empty() ? FPath->AsString() : FText; }

 private:
  std::unique_ptr<THtPath> FPath;
  hstring FText;
};

}  // namespace ht
