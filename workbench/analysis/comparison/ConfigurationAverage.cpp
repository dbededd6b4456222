// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/ConfigurationAverage.h"

#include "analysis/comparison/Lattice.h"
#include "analysis/comparison/TensorValues.h"
#include "data/Error.h"

#include <algorithm>
#include <cmath>

namespace Workbench {
namespace {

std::array<double, 6> symmetricElements(const Tensor3 &t)
{
    return {t[0], t[4], t[8], (t[1] + t[3]) / 2, (t[2] + t[6]) / 2, (t[5] + t[7]) / 2};
}

void accumulate(Tensor3 &sum, const Tensor3 &tensor, const Tensor3 &first)
{
    for (std::size_t i = 0; i < sum.size(); ++i)
        sum[i] += tensor[i] - first[i];
}

std::optional<Tensor3> meanOf(const std::optional<Tensor3> &first, const Tensor3 &sum, int count)
{
    if (!first)
        return std::nullopt;
    Tensor3 mean = *first;
    for (std::size_t i = 0; i < mean.size(); ++i)
        mean[i] += sum[i] / count;
    return mean;
}

bool areNamedAlike(const CrystalAtom &a, const CrystalAtom &b)
{
    return a.labels == b.labels && a.number == b.number;
}

bool anyIsNamedLike(const CrystalAtom &atom, const CrystalStructure &structure)
{
    return std::any_of(structure.atoms.begin(), structure.atoms.end(),
                       [&](const CrystalAtom &other) { return areNamedAlike(atom, other); });
}

} // namespace

void ConfigurationAverage::Moments::add(const Tensor3 &tensor, const Tensor3 &first)
{
    const auto now = symmetricElements(tensor), before = symmetricElements(first);
    std::array<double, 6> d;
    for (std::size_t i = 0; i < 6; ++i)
        d[i] = now[i] - before[i];
    for (std::size_t i = 0; i < 6; ++i) {
        sum[i] += d[i];
        for (std::size_t k = 0; k < 6; ++k)
            product[i][k] += d[i] * d[k];
    }
}

double ConfigurationAverage::Moments::standardError(const std::array<double, 6> &factors, int count) const
{
    double squares = 0;
    for (std::size_t i = 0; i < 6; ++i)
        for (std::size_t k = 0; k < 6; ++k)
            squares += factors[i] * factors[k] * (product[i][k] - sum[i] * sum[k] / count);
    return std::sqrt(std::max(squares, 0.0) / (double(count) * (count - 1)));
}

void ConfigurationAverage::check(const CrystalStructure &structure, const QString &name) const
{
    if (structure.atoms.size() != m_first.atoms.size())
        fail(Texts::tr("%1 has %2 atoms, but %3 has %4")
                 .arg(name, QString::number(structure.atoms.size()), m_firstName,
                      QString::number(m_first.atoms.size())));
    if (structure.lattice.has_value() != m_first.lattice.has_value())
        fail(Texts::tr("only one of %1 and %2 has a lattice").arg(m_firstName, name));
    for (int i = 0; i < int(structure.atoms.size()); ++i) {
        const CrystalAtom &atom = structure.atoms[std::size_t(i)], &first = m_first.atoms[std::size_t(i)];
        if (atom.element != first.element || (!areNamedAlike(atom, first) && anyIsNamedLike(atom, m_first)))
            fail(Texts::tr("atom %1 is %2 in %3, but %4 in %5")
                     .arg(i + 1)
                     .arg(structure.name(i), name, m_first.name(i), m_firstName));
        if (atom.shielding.has_value() != first.shielding.has_value())
            fail(Texts::tr("only one of %1 and %2 has a shielding of %3").arg(m_firstName, name, m_first.name(i)));
        if (atom.gradient.has_value() != first.gradient.has_value())
            fail(Texts::tr("only one of %1 and %2 has an electric field gradient of %3")
                     .arg(m_firstName, name, m_first.name(i)));
    }
}

void ConfigurationAverage::add(const CrystalStructure &structure, const QString &name)
{
    if (m_count == 0) {
        m_first = structure;
        m_firstName = name;
        m_sums.assign(structure.atoms.size(), {});
    }
    check(structure, name);
    ++m_count;
    const auto lattice = structure.lattice ? Lattice::of(*structure.lattice) : std::nullopt;
    for (std::size_t i = 0; structure.lattice && i < 3; ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            m_latticeSum[i][axis] += (*structure.lattice)[i][axis];
    for (std::size_t i = 0; i < m_sums.size(); ++i) {
        const CrystalAtom &atom = structure.atoms[i], &first = m_first.atoms[i];
        Sums &sums = m_sums[i];
        for (std::size_t axis = 0; axis < 3; ++axis)
            sums.displacement[axis] += lattice ? lattice->nearestImage(first.position, atom.position)[axis]
                                               : atom.position[axis] - first.position[axis];
        if (atom.shielding) {
            accumulate(sums.shielding, *atom.shielding, *first.shielding);
            sums.shieldingMoments.add(*atom.shielding, *first.shielding);
        }
        if (atom.gradient) {
            accumulate(sums.gradient, *atom.gradient, *first.gradient);
            sums.gradientMoments.add(*atom.gradient, *first.gradient);
        }
    }
}

CrystalStructure ConfigurationAverage::mean() const
{
    CrystalStructure mean = m_first;
    if (mean.lattice)
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t axis = 0; axis < 3; ++axis)
                (*mean.lattice)[i][axis] = m_latticeSum[i][axis] / m_count;
    for (std::size_t i = 0; i < m_sums.size(); ++i) {
        CrystalAtom &atom = mean.atoms[i];
        for (std::size_t axis = 0; axis < 3; ++axis)
            atom.position[axis] += m_sums[i].displacement[axis] / m_count;
        atom.shielding = meanOf(atom.shielding, m_sums[i].shielding, m_count);
        atom.gradient = meanOf(atom.gradient, m_sums[i].gradient, m_count);
    }
    return mean;
}

std::vector<ConfigurationAverage::AtomErrors> ConfigurationAverage::errors() const
{
    const CrystalStructure mean = this->mean();
    std::vector<AtomErrors> errors(m_sums.size());
    for (std::size_t i = 0; m_count > 1 && i < errors.size(); ++i) {
        const CrystalAtom &atom = mean.atoms[i];
        if (atom.shielding)
            errors[i].shielding =
                m_sums[i].shieldingMoments.standardError({1 / 3.0, 1 / 3.0, 1 / 3.0, 0, 0, 0}, m_count);
        if (atom.gradient) {
            const auto [x, y, z] = GradientValues(*atom.gradient).zAxis;
            errors[i].gradient = m_sums[i].gradientMoments.standardError(
                {x * x, y * y, z * z, 2 * x * y, 2 * x * z, 2 * y * z}, m_count);
        }
    }
    return errors;
}

} // namespace Workbench
