// SPDX-License-Identifier: BSD-3-Clause
#include "reading/Bonds.h"

#include "numerics/Lanes.h"
#include "reading/BondCriterion.h"
#include "reading/BondKernel.h"

#include <limits>
#include <utility>
#include <vector>

namespace Magres {
namespace {

struct FlatPositions {
    const double *x;
    const double *y;
    const double *z;
};

} // namespace

namespace Baseline {
namespace {
#include "reading/BondKernel.inc"
} // namespace
} // namespace Baseline

#if defined(MAGRES_X86_VARIANTS)
#pragma GCC push_options
#pragma GCC target("avx2,fma")
namespace Avx2 {
namespace {
#include "reading/BondKernel.inc"
} // namespace
} // namespace Avx2
#pragma GCC pop_options

#pragma GCC push_options
#pragma GCC target("avx512f")
namespace Avx512 {
namespace {
#include "reading/BondKernel.inc"
} // namespace
} // namespace Avx512
#pragma GCC pop_options
#endif

namespace {

auto findNearFor(InstructionSet set)
{
#if defined(MAGRES_X86_VARIANTS)
    if (set == InstructionSet::Avx512)
        return &Avx512::findNear;
    if (set == InstructionSet::Avx2)
        return &Avx2::findNear;
#endif
    Q_UNUSED(set)
    return &Baseline::findNear;
}

/// Coordinates in one array per axis, padded with what is near nothing, so that kernels read whole vectors.
class Coordinates {
public:
    explicit Coordinates(const QList<MagresAtom> &atoms)
        : m_stride(std::size_t(atoms.size()) + padding),
          m_values(3 * m_stride, std::numeric_limits<double>::quiet_NaN())
    {
        for (std::size_t i = 0; i < std::size_t(atoms.size()); ++i) {
            for (std::size_t axis = 0; axis < 3; ++axis)
                m_values[axis * m_stride + i] = atoms[qsizetype(i)].pos[axis];
        }
    }

    FlatPositions flat() const { return {m_values.data(), m_values.data() + m_stride, m_values.data() + 2 * m_stride}; }

private:
    static constexpr std::size_t padding = 16; // two vectors of the widest kind
    std::size_t m_stride;
    std::vector<double> m_values;
};

/// All bonded pairs (i, j), i < j, in lexicographic order.
std::vector<std::pair<qint32, qint32>> bondedPairs(InstructionSet set, const QList<MagresAtom> &atoms)
{
    const auto findNear = findNearFor(set);
    const BondCriterion criterion(atoms);
    const Coordinates coordinates(atoms);
    const auto count = std::size_t(atoms.size());
    std::vector<qint32> near(count);
    std::vector<std::pair<qint32, qint32>> pairs;
    for (std::size_t i = 0; i < count; ++i) {
        const MagresAtom &atom = atoms[qsizetype(i)];
        const int kind = criterion.kind(qsizetype(i));
        if (criterion.longest(kind) < 0.0)
            continue;
        const std::size_t found =
            findNear(coordinates.flat(), i + 1, count, atom.pos, criterion.longest(kind), near.data());
        for (std::size_t n = 0; n < found; ++n) {
            const qint32 j = near[n];
            if (squaredDistance(atom.pos, atoms[j].pos) <= criterion.limit(kind, criterion.kind(j)))
                pairs.emplace_back(qint32(i), j);
        }
    }
    return pairs;
}

} // namespace

void detectBonds(InstructionSet set, QList<MagresAtom> &atoms)
{
    const auto pairs = bondedPairs(set, std::as_const(atoms));
    std::vector<qint32> degrees(std::size_t(atoms.size()), 0);
    for (const auto &[i, j] : pairs) {
        ++degrees[std::size_t(i)];
        ++degrees[std::size_t(j)];
    }
    MagresAtom *atom = atoms.data();
    for (std::size_t i = 0; i < degrees.size(); ++i) {
        atom[i].bonds = {};
        atom[i].bonds.reserve(degrees[i]);
    }
    // In this order of the pairs every list comes out ascending.
    for (const auto &[i, j] : pairs) {
        atom[i].bonds.append(j);
        atom[j].bonds.append(i);
    }
}

void detectBonds(QList<MagresAtom> &atoms)
{
    detectBonds(fastestInstructionSet(), atoms);
}

} // namespace Magres
