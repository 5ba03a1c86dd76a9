#pragma once

#include <functional>
#include <string>
#include <vector>

#include "htcanvas/canvas.h"
#include "htutils/faststring.h"

// Scenes, and rectangles, numbers and messages as short texts, for tables and logs.

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

inline std::string Text(const TPointF& p) { return Text(double{p.X}) + "," + Text(double{p.Y}); }

inline std::string Text(const std::vector<TRect>& rects) {
  std::string text;
  for (const TRect& r : rects) text += (text.empty() ? "" : " ") + Text(r);
  return text;
}

inline THtCanvasScene NewScene(const TRect& viewPort = {0, 0, 100, 100}, float scale = 1) {
  THtCanvasScene scene;
  scene.Init(viewPort, nullptr);
  scene.Scale = scale;
  return scene;
}

template <class... T>
std::string Words(const std::string& first, T... numbers) {
  std::string text = first;
  ((text += " " + Text(static_cast<double>(numbers))), ...);
  return text;
}

/// Of the exception that the call raises; empty without one.
template <class E>
hstring MessageOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const E& e) {
    return e.Message;
  }
  return {};
}

}  // namespace ht
