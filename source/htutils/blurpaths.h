#pragma once

#include "htutils/blur.h"

namespace ht::detail {

/// Blurs the columns from `from` up to but not including `to`, for which no column that is read lies outside the row.
void BlurColumnsPlain(const TRGBA* source, const TKernel& kernel, TRGBA* target, int32_t from, int32_t to);

#if defined(__x86_64__)
#define HT_BLUR_AVX2 1
/// The same, as far as it goes: returns the first column that is left to do. For processors with AVX2.
int32_t BlurColumnsAVX2(const TRGBA* source, const TKernel& kernel, TRGBA* target, int32_t from, int32_t to);
#endif

}  // namespace ht::detail
