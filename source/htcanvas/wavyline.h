#pragma once

namespace ht {

/// How far a wavy line goes to the right with each of its strokes, in pixels; above 0.
extern float HtWavyLineStep;

}  // namespace ht
