#pragma once

#include <string>
#include <vector>

#include "htcanvas/canvas.h"
#include "htutils/faststring.h"

// Rectangles and numbers as short texts, for tables and logs.

namespace ht {

inline std::string Text(double value) {
  TFastString text(32);
  text.Add(value, 3, true);
  return HtToUtf8(text.GetAsString());
}

template <class T>
std::string Text(const THtRectOf<T>& r) {
  std::string text;
  for (const T side : {r.Left, r.Top, r.Right, r.Bottom})
    text += (text.empty() ? "" : ",") + Text(static_cast<double>(side));
  return text;
}

inline std::string Text(const std::vector<TRect>& rects) {
  std::string text;
  for (const TRect& r : rects) text += (text.empty() ? "" : " ") + Text(r);
  return text;
}

}  // namespace ht
