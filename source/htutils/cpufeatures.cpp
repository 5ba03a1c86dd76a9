#include "htutils/cpufeatures.h"

namespace ht {

const THtCPUFeatures& HtCPUFeatures() {
#if defined(__x86_64__) || defined(__i386__)
  static const THtCPUFeatures kFeatures{__builtin_cpu_supports("sse2") != 0,
                                        __builtin_cpu_supports("sse4.2") != 0,
                                        __builtin_cpu_supports("avx2") != 0};
#else
  static const THtCPUFeatures kFeatures;
#endif
  return kFeatures;
}

}  // namespace ht
