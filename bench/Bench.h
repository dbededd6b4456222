// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>

namespace Bench {

/// Ends the run: the time of a wrong answer is worth nothing.
inline void require(bool right, const char *what)
{
    if (right)
        return;
    std::fprintf(stderr, "wrong answer: %s\n", what);
    std::exit(1);
}

inline bool sameBits(std::span<const double> a, std::span<const double> b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size_bytes()) == 0;
}

// One per topic, called by main.
void registerBonds();
void registerData();
void registerDocument();
void registerLineShapes();
void registerPowder();
void registerRank();
void registerText();

} // namespace Bench
