#pragma once

namespace ht {

/// What the processor, and the system under which it runs, can do.
struct THtCPUFeatures {
  bool SSE2 = false;
  bool SSE42 = false;
  /// The system saves the extended registers as well.
  bool AVX2 = false;
};

/// Of this machine; asked once, from any thread.
const THtCPUFeatures& HtCPUFeatures();

inline bool SSE2Enabled() { return HtCPUFeatures().SSE2; }
inline bool SSE4Enabled() { return HtCPUFeatures().SSE42; }

}  // namespace ht
