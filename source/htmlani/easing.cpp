#include "htmlani/easing.h"

namespace ht {

float CalculateEase(float t, float b, float c, float d, TCSSTiming timing) {
  switch (timing) {
    case tmEase: {
      const float u = t / (d / 2);
      if (u < 1) return c / 2 * u * u + b;
      const float v = u - 1;
      return -c / 2 * ((v - 2) * v - 1) + b;
    }
    case tmEaseIn: {
      const float u = t / d;
      return c * u * u + b;
    }
    case tmEaseOut: {
      const float u = t / d;
      return -c * u * (u - 2) + b;
    }
    case tmEaseInOut: {
      const float u = t / (d / 2);
      if (u < 1) return c / 2 * u * u * u + b;
      const float v = u - 2;
      return (v * v * v + 2) * (c / 2) + b;
    }
    default: return c * t / d + b;
  }
}

float CalcEase(float start, float end, float percent, TCSSTiming timing) {
  return CalculateEase(percent, start, end - start, 100, timing);
}

}  // namespace ht
