// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/SpinSystem.h"

#include "analysis/Contacts.h"
#include "analysis/comparison/Lattice.h"
#include "data/Error.h"
#include "data/Nuclides.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <Eigen/Dense>
#include <Eigen/Eigenvalues>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace Workbench {

namespace {

/// Of R = Rz(alpha) Ry(beta) Rz(gamma).
SpinSystem::Angles eulerAngles(const Eigen::Matrix3d &r)
{
    constexpr double degrees = 180 / std::numbers::pi;
    const double sine = std::hypot(r(2, 0), r(2, 1));
    const double beta = std::atan2(sine, r(2, 2));
    if (sine > 1e-12)
        return {std::atan2(r(1, 2), r(0, 2)) * degrees, beta * degrees, std::atan2(r(2, 1), -r(2, 0)) * degrees};
    // One axis: gamma is nothing of its own.
    return {(r(2, 2) > 0 ? std::atan2(r(1, 0), r(0, 0)) : std::atan2(-r(1, 0), -r(0, 0))) * degrees, beta * degrees, 0};
}

struct Principal {
    double iso, xx, yy, zz;
    SpinSystem::Angles angles;

    double aniso() const { return zz - iso; }
    double eta() const { return aniso() == 0 ? 0 : (yy - xx) / aniso(); }
};

Principal principal(const Tensor3 &tensor)
{
    const Eigen::Matrix3d raw = Eigen::Map<const Eigen::Matrix<double, 3, 3, Eigen::RowMajor>>(tensor.data());
    const Eigen::Matrix3d symmetric = 0.5 * (raw + raw.transpose());
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver(symmetric);
    const double iso = symmetric.trace() / 3;
    std::array<int, 3> order{0, 1, 2};
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        return std::abs(solver.eigenvalues()[a] - iso) < std::abs(solver.eigenvalues()[b] - iso);
    });
    const auto [y, x, z] = order;
    Eigen::Matrix3d toPrincipal; // rows: the principal axes in the crystal frame
    toPrincipal.row(0) = solver.eigenvectors().col(x);
    toPrincipal.row(2) = solver.eigenvectors().col(z);
    toPrincipal.row(1) = toPrincipal.row(2).cross(toPrincipal.row(0));
    return {iso, solver.eigenvalues()[x], solver.eigenvalues()[y], solver.eigenvalues()[z], eulerAngles(toPrincipal)};
}

using ChosenAtoms = std::vector<int>; ///< positions in CrystalStructure::atoms

SpinSystem::Site siteOf(const CrystalAtom &atom, const QString &name, const QString &nucleus,
                        const SpinSystem::Options &options)
{
    SpinSystem::Site site{nucleus, name, {}, {}};
    const double reference = options.references.value(nucleus, 100.0);
    if (options.isComplete)
        site.shift = SpinSystem::Shift{reference};
    if (atom.shielding) {
        const Principal shielding = principal(*atom.shielding);
        const double slope = options.slopes.value(nucleus, -1.0);
        site.shift = {*atom.isotropicShielding() * slope + reference, slope * shielding.aniso(), shielding.eta(),
                      shielding.angles};
    }
    const double moment = Nuclides::table()[nucleus].quadrupoleMoment;
    if (atom.gradient && moment != 0) {
        // e Q Vzz / h for Vzz in atomic units and Q in fm^2, in MHz; the same customary number as in the table.
        constexpr double megahertz = 2.3489;
        const Principal gradient = principal(*atom.gradient);
        site.quadrupole = {gradient.zz * (moment * megahertz) * 1e6, gradient.eta(), gradient.angles};
    }
    return site;
}

/// From one atom to the other, in a lattice to its nearest image.
Vector3 between(const CrystalAtom &from, const CrystalAtom &to, const std::optional<Lattice> &lattice)
{
    if (lattice)
        return lattice->nearestImage(from.position, to.position);
    return {to.position[0] - from.position[0], to.position[1] - from.position[1], to.position[2] - from.position[2]};
}

void addDipoles(SpinSystem &system, const CrystalStructure &structure, const ChosenAtoms &chosen, double cutoff)
{
    const auto lattice = structure.lattice ? Lattice::of(*structure.lattice) : std::nullopt;
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        for (std::size_t j = i + 1; j < chosen.size(); ++j) {
            const Vector3 vector =
                between(structure.atoms[std::size_t(chosen[i])], structure.atoms[std::size_t(chosen[j])], lattice);
            const double distance = length(vector);
            const double coupling = dipolarCoupling(system.sites[i].nucleus, system.sites[j].nucleus, distance);
            if (!(distance <= cutoff) || distance < 1e-3 || coupling == 0)
                continue;
            constexpr double degrees = 180 / std::numbers::pi;
            const SpinSystem::Angles angles{0, std::acos(std::clamp(vector[2] / distance, -1.0, 1.0)) * degrees,
                                            std::atan2(vector[1], -vector[0]) * degrees};
            system.dipoles.push_back({int(i), int(j), coupling, distance, angles});
        }
    }
}

QByteArray fixed(double value, int decimals)
{
    return ' ' + QByteArray::number(value == 0 ? 0.0 : value, 'f', decimals);
}

QByteArray angleText(const SpinSystem::Angles &angles)
{
    return fixed(angles[0], 6) + fixed(angles[1], 6) + fixed(angles[2], 6);
}

/// Rounded, so that the last bits of an eigenvalue do not show.
double rounded(double value, int decimals)
{
    return QByteArray::number(value == 0 ? 0.0 : value, 'f', decimals).toDouble();
}

QString quantity(double value, int decimals, const char *unit)
{
    return QString::number(rounded(value, decimals), 'f', decimals) + QLatin1Char(' ') + QLatin1String(unit);
}

/// A tensor of mrsimulator; its strength under the given name.
QJsonObject tensorObject(const char *name, const QString &strength, double eta, const SpinSystem::Angles &angles)
{
    constexpr double radians = std::numbers::pi / 180;
    return {{QLatin1String(name), strength},
            {QStringLiteral("eta"), rounded(eta, 8)},
            {QStringLiteral("alpha"), quantity(angles[0] * radians, 9, "rad")},
            {QStringLiteral("beta"), quantity(angles[1] * radians, 9, "rad")},
            {QStringLiteral("gamma"), quantity(angles[2] * radians, 9, "rad")}};
}

constexpr const char *conventions =
    "# Conventions\n"
    "#   Principal values: |zz-iso| >= |xx-iso| >= |yy-iso|, eta = (yy-xx)/(zz-iso), for shift and quadrupole alike.\n"
    "#   Shift: iso in ppm from the reference; anisotropy zz-iso in ppm, which is that of the shielding times the\n"
    "#   slope, -1 unless given.\n"
    "#   Quadrupole: Cq = e Q Vzz / h in Hz with its sign.\n"
    "#   Dipole: b = -mu0 hbar gamma_i gamma_j / (8 pi^2 r^3) in Hz (negative for gammas of one sign), to the\n"
    "#   nearest image of the other atom where the file has a lattice; a pair counts once, an atom's own images do "
    "not.\n"
    "#   Euler angles alpha beta gamma in degrees (z, y', z'') lead from the principal axis frame to the Cartesian "
    "frame\n"
    "#   of the crystal: A(crystal) = R^T diag(xx, yy, zz) R with R = Rz(alpha) Ry(beta) Rz(gamma).\n"
    "#   Of tensors that are not symmetric the symmetric part counts.\n";

} // namespace

SpinSystem SpinSystem::fromData(const QVariantMap &data, const Options &options)
{
    SpinSystem system;
    const CrystalStructure structure = CrystalStructure::fromData(data);
    const auto isWanted = [&](int atom) {
        return options.labels.isEmpty()
            || std::any_of(options.labels.begin(), options.labels.end(),
                           [&](const QString &label) { return structure.isNamed(atom, label); });
    };
    ChosenAtoms chosen;
    for (const QString &nucleus : options.nuclei) {
        const std::size_t before = chosen.size();
        for (int i = 0; i < int(structure.atoms.size()); ++i) {
            if (structure.atoms[std::size_t(i)].element == Nuclides::element(nucleus) && isWanted(i))
                chosen.push_back(i);
        }
        if (chosen.size() == before)
            fail((options.labels.isEmpty() ? Texts::tr("there is no site of %1")
                                           : Texts::tr("there is no site of %1 among the chosen atoms"))
                     .arg(nucleus));
        if (Nuclides::table()[nucleus].gyromagneticRatio() == 0)
            system.notes.append(
                Texts::tr("the gyromagnetic ratio of %1 is not known here: its dipole couplings are missing")
                    .arg(nucleus));
        for (std::size_t i = before; i < chosen.size() && i < mostSites; ++i) {
            const CrystalAtom &atom = structure.atoms[std::size_t(chosen[i])];
            system.sites.push_back(siteOf(atom, structure.name(chosen[i]), nucleus, options));
            const Site &site = system.sites.back();
            if (options.isComplete && !atom.shielding)
                system.notes.append(Texts::tr("no shielding of %1: drawn at the reference, %2 ppm")
                                        .arg(site.label)
                                        .arg(site.shift->iso));
        }
    }
    for (const QString &label : options.labels) {
        if (std::none_of(chosen.begin(), chosen.end(), [&](int atom) { return structure.isNamed(atom, label); }))
            fail(
                Texts::tr("there is no atom %1 of the nuclei %2").arg(label, options.nuclei.join(QLatin1String(", "))));
    }
    if (chosen.size() > mostSites) {
        fail(Texts::tr("%1 sites are more than the %2 that a spin system may have; choose some of the atoms")
                 .arg(chosen.size())
                 .arg(mostSites));
    }
    for (const Site &site : system.sites) {
        if (!site.shift)
            system.notes.append(Texts::tr("%1 has no shielding: its shift is missing").arg(site.label));
        if (!site.quadrupole && Nuclides::table()[site.nucleus].quadrupoleMoment != 0)
            system.notes.append(
                Texts::tr("%1 has no electric field gradient: its quadrupole coupling is missing").arg(site.label));
    }
    addDipoles(system, structure, chosen, options.cutoff);
    return system;
}

QByteArray SpinSystem::simpson(const QString &title) const
{
    QByteArray text = "# " + title.simplified().toUtf8() + "\n#\n" + conventions + "#\n# Sites\n";
    for (std::size_t i = 0; i < sites.size(); ++i)
        text += "#   " + QByteArray::number(i + 1) + ' ' + sites[i].nucleus.toLatin1() + ' ' + sites[i].label.toUtf8()
            + '\n';
    for (const QString &note : notes)
        text += "# Note: " + note.toUtf8() + '\n';

    QByteArray channels, nuclei;
    for (const Site &site : sites) {
        const QByteArray name = ' ' + site.nucleus.toLatin1();
        if (!(channels + ' ').contains(name + ' '))
            channels += name;
        nuclei += name;
    }
    text += "\nspinsys {\n  channels" + channels + "\n  nuclei" + nuclei + '\n';
    for (std::size_t i = 0; i < sites.size(); ++i) {
        const QByteArray site = ' ' + QByteArray::number(i + 1);
        if (const auto &shift = sites[i].shift)
            text += "  shift" + site + fixed(shift->iso, 6) + 'p' + fixed(shift->aniso, 6) + 'p' + fixed(shift->eta, 8)
                + angleText(shift->angles) + '\n';
        if (const auto &quadrupole = sites[i].quadrupole)
            text += "  quadrupole" + site + " 2" + fixed(quadrupole->Cq, 3) + fixed(quadrupole->eta, 8)
                + angleText(quadrupole->angles) + '\n';
    }
    for (const Dipole &dipole : dipoles)
        text += "  dipole " + QByteArray::number(dipole.i + 1) + ' ' + QByteArray::number(dipole.j + 1)
            + fixed(dipole.coupling, 4) + angleText(dipole.angles) + '\n';
    return text + "}\n";
}

QByteArray SpinSystem::mrsimulator(const QString &title) const
{
    QJsonArray systems;
    for (const Site &site : sites) {
        QJsonObject object{{QStringLiteral("isotope"), site.nucleus}};
        if (const auto &shift = site.shift) {
            object.insert(QStringLiteral("isotropic_chemical_shift"), quantity(shift->iso, 6, "ppm"));
            object.insert(QStringLiteral("shielding_symmetric"),
                          tensorObject("zeta", quantity(-shift->aniso, 6, "ppm"), shift->eta, shift->angles));
        }
        if (const auto &quadrupole = site.quadrupole) {
            object.insert(QStringLiteral("quadrupolar"),
                          tensorObject("Cq", quantity(quadrupole->Cq, 3, "Hz"), quadrupole->eta, quadrupole->angles));
        }
        systems.append(QJsonObject{{QStringLiteral("name"), site.label},
                                   {QStringLiteral("abundance"), QStringLiteral("100 %")},
                                   {QStringLiteral("sites"), QJsonArray{object}}});
    }
    const QJsonObject all{{QStringLiteral("name"), title.simplified()}, {QStringLiteral("spin_systems"), systems}};
    return QJsonDocument(all).toJson();
}

} // namespace Workbench
