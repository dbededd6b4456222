// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/SiteColumns.h"

#include "analysis/comparison/TensorValues.h"
#include "data/Error.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace Workbench {
namespace {

using Value = std::optional<double>;

/// delta11 >= delta22 >= delta33.
std::optional<Vector3> principalShifts(const SiteValues &site)
{
    if (!site.atom.shielding)
        return std::nullopt;
    Vector3 shifts = eigenvalues(*site.atom.shielding);
    for (double &value : shifts)
        value = site.reference + site.slope * value;
    std::sort(shifts.begin(), shifts.end(), std::greater<>());
    return shifts;
}

template <std::size_t Component>
Value principalShift(const SiteValues &site)
{
    const auto shifts = principalShifts(site);
    return shifts ? Value((*shifts)[Component]) : std::nullopt;
}

Value span(const SiteValues &site)
{
    const auto shifts = principalShifts(site);
    return shifts ? Value((*shifts)[0] - (*shifts)[2]) : std::nullopt;
}

Value skew(const SiteValues &site)
{
    const auto shifts = principalShifts(site);
    if (!shifts || (*shifts)[0] == (*shifts)[2])
        return std::nullopt;
    const auto &[d11, d22, d33] = *shifts;
    return 3 * (d22 - (d11 + d22 + d33) / 3) / (d11 - d33);
}

Value signedCq(const SiteValues &site)
{
    if (!site.atom.gradient || site.quadrupoleMoment == 0)
        return std::nullopt;
    return GradientValues(*site.atom.gradient).Cq(site.quadrupoleMoment);
}

Value quadrupolarProduct(const SiteValues &site)
{
    if (!site.atom.gradient || site.quadrupoleMoment == 0)
        return std::nullopt;
    return GradientValues(*site.atom.gradient).quadrupolarProduct(site.quadrupoleMoment);
}

Value inducedShift(const SiteValues &site)
{
    const Value product = quadrupolarProduct(site);
    const bool hasCentralTransition = site.spin > 1 && std::fmod(2 * site.spin, 2) == 1;
    if (!product || !hasCentralTransition || site.larmorFrequency == 0)
        return std::nullopt;
    return quadrupoleInducedShift(*product, site.larmorFrequency, site.spin);
}

Value multiplicity(const SiteValues &site)
{
    return double(site.multiplicity);
}

template <std::size_t Axis>
Value fractional(const SiteValues &site)
{
    return site.lattice ? Value(site.lattice->fractional(site.atom.position)[Axis]) : std::nullopt;
}

using Basis = SiteColumn::Basis;

constexpr SiteColumn columns[] = {
    {"delta11", "δ11, ppm",
     QT_TRANSLATE_NOOP("Texts", "Largest principal shift: reference + slope · σ(ii), with δ11 ≥ δ22 ≥ δ33."), 2,
     Basis::Scale, principalShift<0>},
    {"delta22", "δ22, ppm",
     QT_TRANSLATE_NOOP("Texts", "Middle principal shift: reference + slope · σ(ii), with δ11 ≥ δ22 ≥ δ33."), 2,
     Basis::Scale, principalShift<1>},
    {"delta33", "δ33, ppm",
     QT_TRANSLATE_NOOP("Texts", "Smallest principal shift: reference + slope · σ(ii), with δ11 ≥ δ22 ≥ δ33."), 2,
     Basis::Scale, principalShift<2>},
    {"span", "Ω, ppm", QT_TRANSLATE_NOOP("Texts", "Span of the shift tensor: Ω = δ11 − δ33 (Herzfeld–Berger)."), 2,
     Basis::Scale, span},
    {"skew", "κ",
     QT_TRANSLATE_NOOP("Texts", "Skew of the shift tensor: κ = 3 (δ22 − δiso) / Ω, from −1 to 1 (Herzfeld–Berger)."), 3,
     Basis::Scale, skew},
    {"cq-signed", "Cq (signed), MHz",
     QT_TRANSLATE_NOOP(
         "Texts",
         "Quadrupolar coupling constant with the sign of Vzz: Cq = Vzz · Q · 2.3489 (Vzz in a.u., Q in fm²), "
         "|Vzz| ≥ |Vyy| ≥ |Vxx|."),
     3, Basis::Isotope, signedCq},
    {"pq", "P(Q), MHz", QT_TRANSLATE_NOOP("Texts", "Quadrupolar product: P(Q) = |Cq| · √(1 + η²/3)."), 3,
     Basis::Isotope, quadrupolarProduct},
    {"qis", "δ(QIS), ppm",
     QT_TRANSLATE_NOOP("Texts",
                       "Quadrupole induced shift of the central transition at the Larmor frequency ν: "
                       "−3/40 · (P(Q)/ν)² · (I(I+1) − 3/4) / (I²(2I−1)²) · 10⁶, with P(Q)² = Cq² (1 + η²/3)."),
     2, Basis::Field, inducedShift},
    {"multiplicity", "Multiplicity",
     QT_TRANSLATE_NOOP("Texts", "Number of atoms in the cell that the space group maps onto each other."), 0,
     Basis::Symmetry, multiplicity},
    {"x", "x/a", QT_TRANSLATE_NOOP("Texts", "Fractional coordinate along a; not brought into the cell."), 5,
     Basis::Tensor, fractional<0>},
    {"y", "y/b", QT_TRANSLATE_NOOP("Texts", "Fractional coordinate along b; not brought into the cell."), 5,
     Basis::Tensor, fractional<1>},
    {"z", "z/c", QT_TRANSLATE_NOOP("Texts", "Fractional coordinate along c; not brought into the cell."), 5,
     Basis::Tensor, fractional<2>},
};

} // namespace

std::span<const SiteColumn> siteColumns()
{
    return columns;
}

const SiteColumn *siteColumn(const QString &name)
{
    const auto found = std::find_if(std::begin(columns), std::end(columns),
                                    [&](const SiteColumn &c) { return name == QLatin1String(c.name); });
    return found == std::end(columns) ? nullptr : found;
}

} // namespace Workbench
