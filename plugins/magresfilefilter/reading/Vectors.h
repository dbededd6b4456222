// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresAtom.h"

#include <cmath>

namespace Magres {

inline Position plus(const Position &a, const Position &b)
{
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

inline Position minus(const Position &a, const Position &b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

/// v + factor * a
inline Position plusScaled(const Position &v, double factor, const Position &a)
{
    return {v[0] + factor * a[0], v[1] + factor * a[1], v[2] + factor * a[2]};
}

inline double dot(const Position &a, const Position &b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline Position cross(const Position &a, const Position &b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline bool isFinite(const Position &p)
{
    return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

/// Squared distance, summed in the order x, y, z.
inline double squaredDistance(const Position &a, const Position &b)
{
    const Position d = minus(a, b);
    return dot(d, d);
}

} // namespace Magres
