#pragma once

#include <cstdlib>

/// What a fuzzer finds wrong ends the run.
inline void Require(bool holds) {
  if (!holds) std::abort();
}
