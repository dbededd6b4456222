// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMap>
#include <QStringList>
#include <QVariantMap>

#include <array>
#include <optional>
#include <vector>

namespace Workbench {

/// The sites of chosen nuclei of a crystal with their interactions, in the conventions of SIMPSON (M. Bak,
/// J. T. Rasmussen, N. C. Nielsen, J. Magn. Reson. 147 (2000) 296).
///
/// Principal values are ordered |zz - iso| >= |xx - iso| >= |yy - iso|; eta = (yy - xx) / (zz - iso). Euler angles
/// (degrees) lead from the principal axis frame to the crystal frame: turn the former about its z by alpha, about the
/// new y by beta, about the new z by gamma. With R = Rz(alpha) Ry(beta) Rz(gamma) a tensor in the crystal frame is R^T
/// diag(xx, yy, zz) R. Tensors that are not symmetric count by their symmetric part.
struct SpinSystem {
    using Angles = std::array<double, 3>; ///< alpha, beta, gamma

    struct Shift {
        double iso = 0; ///< ppm
        double aniso = 0; ///< ppm, zz - iso of the shift: slope * that of the shielding
        double eta = 0;
        Angles angles{};
    };
    struct Quadrupole {
        double Cq = 0; ///< Hz, signed: e Q Vzz / h
        double eta = 0;
        Angles angles{};
    };
    struct Site {
        QString nucleus;
        QString label;
        std::optional<Shift> shift;
        std::optional<Quadrupole> quadrupole;
    };
    struct Dipole {
        int i = 0; ///< sites, from 0
        int j = 0;
        double coupling = 0; ///< Hz, -mu0 hbar gamma_i gamma_j / (8 pi^2 r^3)
        double distance = 0; ///< Angstrom
        Angles angles{};
    };

    std::vector<Site> sites; ///< by nucleus as chosen, then in the order of the file
    std::vector<Dipole> dipoles;
    QStringList notes; ///< what is missing

    struct Options {
        QStringList nuclei;
        QStringList labels; ///< of the atoms wanted; empty: all
        double cutoff = 4; ///< of dipole couplings, Angstrom
        QMap<QString, double> references; ///< by nucleus, ppm; default 100
        QMap<QString, double> slopes; ///< default -1
        bool isComplete = false; ///< a site without a shielding lies at the reference, as it is drawn
    };
    /// More spins than any simulation stands.
    static constexpr int mostSites = 200;

    /// From the map form of a data set. Throws std::runtime_error when there is no such site, or too many.
    static SpinSystem fromData(const QVariantMap &data, const Options &options);

    /// As the input of SIMPSON: a spinsys section, with the conventions as comments at its head.
    QByteArray simpson(const QString &title) const;

    /// As JSON of mrsimulator: one spin system of one site each, without dipole couplings. Anisotropies are minus those
    /// of the shift (zeta = zz - iso of sigma at slope -1); angles in radians, with the meaning that they have here.
    QByteArray mrsimulator(const QString &title) const;
};

} // namespace Workbench
