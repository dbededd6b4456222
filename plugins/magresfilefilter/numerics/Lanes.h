// SPDX-License-Identifier: BSD-3-Clause
#pragma once

// One vector of doubles per instruction set, in namespaces with the same names inside. A kernel is written once, in an
// .inc file that uses these names, and included into each namespace between the same MAGRES_TARGET pragmas, so that the
// compiler generates it for that instruction set; the choice is made at run time. Arithmetic on lanes is the compiler's
// own
// (+ - * /): never contracted, hence the same bits in every variant.

#include <cstddef>

#if defined(__x86_64__)
#include <immintrin.h>
#define MAGRES_X86_VARIANTS 1
#endif

namespace Magres::Baseline {

using Lanes = double __attribute__((vector_size(16)));
constexpr std::size_t laneCount = 2;
constexpr bool hasFusedMultiplyAdd = false;

inline Lanes broadcast(double value)
{
    return Lanes{value, value};
}
inline Lanes load(const double *from)
{
    return Lanes{from[0], from[1]};
}
inline void store(double *to, Lanes lanes)
{
    to[0] = lanes[0];
    to[1] = lanes[1];
}
/// Bit i is set where a[i] <= b[i].
inline unsigned lessOrEqual(Lanes a, Lanes b)
{
#if defined(__SSE2__)
    return unsigned(_mm_movemask_pd(_mm_cmple_pd(a, b)));
#else
    return (a[0] <= b[0] ? 1u : 0u) | (a[1] <= b[1] ? 2u : 0u);
#endif
}
/// Not called: there is no fused operation here.
inline Lanes multiplyAdd(Lanes a, Lanes b, Lanes c)
{
    return a * b + c;
}

} // namespace Magres::Baseline

#if defined(MAGRES_X86_VARIANTS)

#pragma GCC push_options
#pragma GCC target("avx2,fma")
namespace Magres::Avx2 {

using Lanes = __m256d;
constexpr std::size_t laneCount = 4;
constexpr bool hasFusedMultiplyAdd = true;

inline Lanes broadcast(double value)
{
    return _mm256_set1_pd(value);
}
inline Lanes load(const double *from)
{
    return _mm256_loadu_pd(from);
}
inline void store(double *to, Lanes lanes)
{
    _mm256_storeu_pd(to, lanes);
}
inline unsigned lessOrEqual(Lanes a, Lanes b)
{
    return unsigned(_mm256_movemask_pd(_mm256_cmp_pd(a, b, _CMP_LE_OQ)));
}
/// a * b + c, rounded once.
inline Lanes multiplyAdd(Lanes a, Lanes b, Lanes c)
{
    return _mm256_fmadd_pd(a, b, c);
}

} // namespace Magres::Avx2
#pragma GCC pop_options

#pragma GCC push_options
#pragma GCC target("avx512f")
namespace Magres::Avx512 {

using Lanes = __m512d;
constexpr std::size_t laneCount = 8;
constexpr bool hasFusedMultiplyAdd = true;

inline Lanes broadcast(double value)
{
    return _mm512_set1_pd(value);
}
inline Lanes load(const double *from)
{
    return _mm512_loadu_pd(from);
}
inline void store(double *to, Lanes lanes)
{
    _mm512_storeu_pd(to, lanes);
}
inline unsigned lessOrEqual(Lanes a, Lanes b)
{
    return _mm512_cmp_pd_mask(a, b, _CMP_LE_OQ);
}
/// a * b + c, rounded once.
inline Lanes multiplyAdd(Lanes a, Lanes b, Lanes c)
{
    return _mm512_fmadd_pd(a, b, c);
}

} // namespace Magres::Avx512
#pragma GCC pop_options

#endif
