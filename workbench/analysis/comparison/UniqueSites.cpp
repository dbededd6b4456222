// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/UniqueSites.h"

#include "analysis/comparison/Lattice.h"
#include "analysis/comparison/SymmetryProbe.h"
#include "data/Error.h"

#include <spglib.h>

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>

namespace Workbench {
namespace {

/// Which atoms belong together.
class Classes {
public:
    explicit Classes(std::size_t size) : m_parent(size) { std::iota(m_parent.begin(), m_parent.end(), 0); }

    int root(int i)
    {
        while (m_parent[std::size_t(i)] != i)
            i = m_parent[std::size_t(i)] = m_parent[std::size_t(m_parent[std::size_t(i)])];
        return i;
    }
    /// The smaller index becomes the root of both.
    void join(int a, int b)
    {
        const auto [low, high] = std::minmax({root(a), root(b)});
        m_parent[std::size_t(high)] = low;
    }

private:
    std::vector<int> m_parent;
};

using Dataset = std::unique_ptr<SpglibDataset, decltype(&spg_free_dataset)>;

Dataset symmetry(const CrystalStructure &structure, const Lattice &lattice, double tolerance)
{
    double columns[3][3];
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            columns[axis][i] = lattice.vectors()[i][axis];
    const std::size_t size = structure.atoms.size();
    const auto positions = std::make_unique<double[][3]>(size);
    std::vector<int> types;
    QHash<QString, int> typeOf;
    for (std::size_t i = 0; i < size; ++i) {
        const CrystalAtom &atom = structure.atoms[i];
        const Vector3 fractional = lattice.fractional(atom.position);
        if (!std::all_of(fractional.begin(), fractional.end(), [](double f) { return std::isfinite(f); }))
            return {nullptr, spg_free_dataset};
        std::copy(fractional.begin(), fractional.end(), positions[i]);
        if (!typeOf.contains(atom.element))
            typeOf.insert(atom.element, int(typeOf.size()) + 1);
        types.push_back(typeOf.value(atom.element));
    }
    return {spg_get_dataset(columns, positions.get(), types.data(), int(size), tolerance), spg_free_dataset};
}

void joinBySymmetry(const CrystalStructure &structure, double tolerance, Classes &classes, UniqueSites &result)
{
    if (structure.atoms.size() > UniqueSites::mostAtoms) {
        result.warnings.append(
            Texts::tr("with more than %1 atoms the space group is not looked for: every atom counts as a site "
                      "of its own")
                .arg(UniqueSites::mostAtoms));
        return;
    }
    const auto lattice = Lattice::of(*structure.lattice);
    if (lattice && !mayHaveSymmetry(structure, *lattice, tolerance)) {
        result.spaceGroup = QStringLiteral("P1 (1)");
        return;
    }
    const Dataset dataset = lattice ? symmetry(structure, *lattice, tolerance) : Dataset(nullptr, spg_free_dataset);
    if (!dataset || dataset->n_atoms != int(structure.atoms.size())) {
        result.warnings.append(Texts::tr(
            "the space group could not be found (atoms too close to each other?): every atom counts as a site of its "
            "own"));
        return;
    }
    for (int i = 0; i < dataset->n_atoms; ++i)
        classes.join(dataset->crystallographic_orbits[i], i);
    result.spaceGroup =
        QStringLiteral("%1 (%2)").arg(QLatin1String(dataset->international_symbol)).arg(dataset->spacegroup_number);
}

bool areEqual(const std::optional<Tensor3> &a, const std::optional<Tensor3> &b)
{
    constexpr double rounding = 1e-6;
    if (!a || !b)
        return !a && !b;
    return std::equal(a->begin(), a->end(), b->begin(), [](double x, double y) { return std::abs(x - y) <= rounding; });
}

/// Equivalent atoms of a free molecule share what the calculation, or its author, has written for one of them.
void joinByTensors(const CrystalStructure &structure, Classes &classes)
{
    std::vector<int> order;
    for (int i = 0; i < int(structure.atoms.size()); ++i)
        if (structure.atoms[std::size_t(i)].shielding || structure.atoms[std::size_t(i)].gradient)
            order.push_back(i);
    // Neighbours in the order of the isotropic value are the only ones to compare.
    const auto iso = [&](int i) {
        return structure.atoms[std::size_t(i)].isotropicShielding().value_or(std::numeric_limits<double>::max());
    };
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return iso(a) < iso(b); });
    for (std::size_t i = 0; i < order.size(); ++i) {
        const CrystalAtom &atom = structure.atoms[std::size_t(order[i])];
        for (std::size_t k = i + 1; k < order.size() && iso(order[k]) - iso(order[i]) <= 1e-5; ++k) {
            const CrystalAtom &other = structure.atoms[std::size_t(order[k])];
            if (atom.element == other.element && areEqual(atom.shielding, other.shielding)
                && areEqual(atom.gradient, other.gradient))
                classes.join(order[i], order[k]);
        }
    }
}

/// Atoms that give one line even without symmetry: one, or the protons of a turning group.
struct LineGroup {
    std::vector<int> atoms;
    std::optional<double> shielding;
};

/// By their first atoms.
std::vector<LineGroup> lineGroups(const CrystalStructure &structure, UniqueSites::Averaging averaging)
{
    std::vector<int> groupOf(structure.atoms.size(), -1);
    std::vector<LineGroup> groups;
    for (const CrystalAtom &centre : structure.atoms) {
        const bool turns = averaging == UniqueSites::Averaging::Ch3
            ? centre.element == u"C"
            : averaging == UniqueSites::Averaging::Xh3 && centre.element != u"H";
        if (!turns)
            continue;
        std::vector<int> protons;
        for (int bonded : centre.bonds)
            if (structure.atoms[std::size_t(bonded)].element == u"H")
                protons.push_back(bonded);
        const bool isFree =
            std::all_of(protons.begin(), protons.end(), [&](int p) { return groupOf[std::size_t(p)] < 0; });
        if (protons.size() != 3 || !isFree)
            continue;
        std::sort(protons.begin(), protons.end());
        for (int proton : protons)
            groupOf[std::size_t(proton)] = int(groups.size());
        groups.push_back({protons, {}});
    }
    for (int i = 0; i < int(structure.atoms.size()); ++i)
        if (groupOf[std::size_t(i)] < 0)
            groups.push_back({{i}, {}});
    for (LineGroup &group : groups) {
        double sum = 0;
        int count = 0;
        for (int atom : group.atoms)
            if (const auto iso = structure.atoms[std::size_t(atom)].isotropicShielding()) {
                sum += *iso;
                ++count;
            }
        if (count > 0)
            group.shielding = sum / count;
    }
    std::sort(groups.begin(), groups.end(), [](const LineGroup &a, const LineGroup &b) { return a.atoms < b.atoms; });
    return groups;
}

UniqueSite siteOf(const CrystalStructure &structure, const std::vector<const LineGroup *> &members)
{
    UniqueSite site;
    site.lines = int(members.size());
    double sum = 0;
    int count = 0;
    for (const LineGroup *member : members) {
        site.atoms.insert(site.atoms.end(), member->atoms.begin(), member->atoms.end());
        if (member->shielding) {
            sum += *member->shielding;
            ++count;
        }
    }
    if (count > 0)
        site.shielding = sum / count;
    std::sort(site.atoms.begin(), site.atoms.end());
    site.element = structure.atoms[std::size_t(site.atoms.front())].element;
    const auto tensors = [&](int atom) {
        const CrystalAtom &own = structure.atoms[std::size_t(atom)];
        return int(own.shielding.has_value()) + int(own.gradient.has_value());
    };
    site.shown =
        *std::max_element(site.atoms.begin(), site.atoms.end(), [&](int a, int b) { return tensors(a) < tensors(b); });
    return site;
}

/// Cuts a class, from the lowest shielding on, into sites that spread by no more than they may. Atoms without a
/// shielding go with the first.
std::vector<std::vector<const LineGroup *>> parted(std::vector<const LineGroup *> members)
{
    const auto value = [](const LineGroup *group) {
        return group->shielding.value_or(-std::numeric_limits<double>::infinity());
    };
    std::stable_sort(members.begin(), members.end(),
                     [&](const LineGroup *a, const LineGroup *b) { return value(a) < value(b); });
    std::vector<std::vector<const LineGroup *>> parts(1);
    std::optional<double> lowest;
    for (const LineGroup *member : members) {
        if (member->shielding && lowest && *member->shielding - *lowest > UniqueSites::mostSpread) {
            parts.emplace_back();
            lowest.reset();
        }
        if (!lowest)
            lowest = member->shielding;
        parts.back().push_back(member);
    }
    return parts;
}

/// |Vzz| √(1 + η²/3) of the symmetric part, atomic units: that without the work of eigenvalues.
double gradientStrength(const Tensor3 &gradient)
{
    double squares = 0;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            squares += std::pow((gradient[3 * i + k] + gradient[3 * k + i]) / 2, 2);
    return std::sqrt(squares * 2 / 3);
}

/// Of atoms equivalent by symmetry whose field gradients are not; empty where they are.
QString gradientWarning(const CrystalStructure &structure, const UniqueSite &site, const QString &spaceGroup)
{
    std::vector<std::pair<double, int>> gradients; // with their atoms
    for (int atom : site.atoms)
        if (const auto &gradient = structure.atoms[std::size_t(atom)].gradient)
            gradients.emplace_back(gradientStrength(*gradient), atom);
    if (gradients.empty())
        return {};
    const auto [least, most] = std::minmax_element(gradients.begin(), gradients.end());
    constexpr double noise = 0.01; // atomic units, 0.06 MHz of 17O
    if (most->first - least->first <= std::max(noise, UniqueSites::mostGradientSpread * most->first))
        return {};
    return Texts::tr("%1 and %2 are equivalent by symmetry (%3), but their field gradients are %4 and %5 atomic units: "
                     "the site has that of %6")
        .arg(structure.name(least->second), structure.name(most->second), spaceGroup)
        .arg(least->first, 0, 'f', 3)
        .arg(most->first, 0, 'f', 3)
        .arg(structure.name(site.shown));
}

void nameSites(const CrystalStructure &structure, std::vector<UniqueSite> &sites)
{
    QHash<QStringList, int> sharing;
    for (const CrystalAtom &atom : structure.atoms)
        ++sharing[atom.labels];
    for (UniqueSite &site : sites) {
        const QStringList &labels = structure.atoms[std::size_t(site.atoms.front())].labels;
        // A label that names the site's atoms and no others needs no number.
        const bool isAlone =
            sharing.value(labels) == site.nuclei() && structure.atoms[std::size_t(site.atoms.back())].labels == labels;
        site.name = isAlone ? labels.value(0) : structure.name(site.atoms.front());
        if (site.nuclei() > 1)
            site.name += QStringLiteral(" ×%1").arg(site.nuclei());
    }
}

} // namespace

QString withoutMultiplicity(QString names)
{
    static const QRegularExpression multiplicity(QStringLiteral("\\s*×\\d+"));
    return names.remove(multiplicity);
}

UniqueSites UniqueSites::of(const CrystalStructure &structure, const Options &options)
{
    UniqueSites result;
    Classes classes(structure.atoms.size());
    const std::vector<LineGroup> groups = lineGroups(structure, options.averaging);
    if (options.tolerance > 0 && structure.lattice)
        joinBySymmetry(structure, options.tolerance, classes, result);
    else if (options.tolerance > 0)
        joinByTensors(structure, classes);
    for (const LineGroup &group : groups)
        for (int atom : group.atoms)
            classes.join(group.atoms.front(), atom);

    QHash<int, std::vector<const LineGroup *>> members;
    for (const LineGroup &group : groups)
        members[classes.root(group.atoms.front())].push_back(&group);
    for (const auto &ofClass : members) {
        const auto parts = parted(ofClass);
        for (const auto &part : parts)
            result.sites.push_back(siteOf(structure, part));
        if (parts.size() > 1) {
            const LineGroup *low = parts.front().back(), *high = parts.back().back();
            result.warnings.append(
                Texts::tr(
                    "%1 and %2 are equivalent by symmetry (%3), but their isotropic shieldings are %4 and %5 ppm: they "
                    "count as different sites")
                    .arg(structure.name(low->atoms.front()), structure.name(high->atoms.front()), result.spaceGroup)
                    .arg(*low->shielding, 0, 'f', 2)
                    .arg(*high->shielding, 0, 'f', 2));
        }
    }
    // Protons of a turning group have gradients of their own.
    for (const UniqueSite &site : result.sites) {
        if (site.lines < site.nuclei() || result.spaceGroup.isEmpty())
            continue;
        if (const QString warning = gradientWarning(structure, site, result.spaceGroup); !warning.isEmpty())
            result.warnings.append(warning);
    }
    std::sort(result.sites.begin(), result.sites.end(),
              [](const UniqueSite &a, const UniqueSite &b) { return a.atoms < b.atoms; });
    nameSites(structure, result.sites);
    result.warnings.sort();
    return result;
}

std::vector<UniqueSite> UniqueSites::ofElement(const QString &element) const
{
    std::vector<UniqueSite> chosen;
    std::copy_if(sites.begin(), sites.end(), std::back_inserter(chosen),
                 [&](const UniqueSite &site) { return site.element == element; });
    return chosen;
}

} // namespace Workbench
