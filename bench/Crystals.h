// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresAtom.h"

#include <cstdint>

// Made-up crystals for tests and benchmarks. The same arguments give the same crystal everywhere.

namespace Crystals {

using Magres::MagresAtom;
using Magres::Position;

struct Crystal {
    QList<MagresAtom> atoms; ///< in file order, sorted by species; no bonds yet
    QList<double> lattice; ///< a, b, c, Angstrom
};

/// Ethanol molecules, randomly turned, in a triclinic cell whose faces cut those that reach across. As many whole
/// molecules as fit into `atoms` atoms, filled up with isolated neon atoms.
Crystal molecular(int atoms, std::uint64_t seed = 1);

/// A cubic network of silicon with oxygen on its edges, bonded across all faces of the cell; about `atoms` atoms.
Crystal framework(int atoms, std::uint64_t seed = 1);

/// Random numbers that do not depend on the standard library's distributions.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed * 2 + 1)
    {
        for (int i = 0; i < 8; ++i)
            next();
    }

    /// Uniform in [low, high).
    double uniform(double low, double high) { return low + (high - low) * (double(next() >> 11) * 0x1p-53); }
    /// Uniform in 0 .. count - 1.
    int below(int count) { return int(next() % std::uint64_t(count)); }

private:
    // xorshift64*: S. Vigna, ACM Trans. Math. Softw. 42 (2016) 30, doi:10.1145/2845077.
    std::uint64_t next()
    {
        m_state ^= m_state >> 12;
        m_state ^= m_state << 25;
        m_state ^= m_state >> 27;
        return m_state * 0x2545F4914F6CDD1Du;
    }
    std::uint64_t m_state;
};

} // namespace Crystals
