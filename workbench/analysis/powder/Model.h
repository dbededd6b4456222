// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Powder spectra of single spins: shift anisotropy and, of quadrupolar nuclei, the central transition to second order
/// (half-integer spins) or all transitions to first order (integer spins). No satellites of half-integer spins, no
/// couplings between spins, ideal excitation. Tensors are those of a crystal in one Cartesian frame; no Euler angles.
namespace Workbench::Powder {

/// Nine elements by rows. Only the symmetric part counts.
using Tensor = std::array<double, 9>;

struct Site {
    Tensor shift{}; ///< ppm
    std::optional<Tensor> coupling; ///< e Q V / h in MHz, with its sign; its trace does not count
    double multiplicity = 1; ///< nuclei that give this line
};

enum class Rotation {
    Static,
    MagicAngle, ///< at a finite rate, with spinning sidebands
    InfiniteRate, ///< at the magic angle, without sidebands
};

struct Conditions {
    double spin = 0.5;
    double larmor = 0; ///< MHz, positive: of the nucleus, not of 1H
    Rotation rotation = Rotation::InfiniteRate;
    double rate = 0; ///< Hz
};

/// Widths at half height in Hz; both together give a Voigt profile.
struct LineShape {
    double lorentzian = 30;
    double gaussian = 0;

    bool operator==(const LineShape &) const = default;
};

/// Points at even steps, in ppm, first to last; either may be the larger.
struct Axis {
    double first = 0;
    double last = 0;
    size_t points = 0;

    double step() const { return points > 1 ? (last - first) / double(points - 1) : 0; }
    double at(size_t i) const { return first + double(i) * step(); }
};

struct SiteValues {
    double shift = 0; ///< isotropic chemical shift, ppm
    double span = 0; ///< of the shift tensor: largest less smallest principal value, ppm
    double coupling = 0; ///< Cq, MHz, with its sign
    double asymmetry = 0; ///< of the coupling
    double quadrupolarShift = 0; ///< quadrupole induced shift of the central transition, ppm; 0 of integer spins
    double centre = 0; ///< centre of gravity of the powder pattern, ppm
    double breadth = 0; ///< between the extreme frequencies of the pattern without broadening, ppm; of the centre bands
};

/// Throws std::invalid_argument with what is wrong about it.
void check(const Conditions &conditions);
void check(const Site &site, const Conditions &conditions);

SiteValues siteValues(const Site &site, const Conditions &conditions);

/// By how many Hz the central transition's frequency to second order differs from that of the full Hamiltonian, at the
/// worst of the directions tried (the field is still). Nothing for spins without such a transition and for couplings so
/// large that the levels cannot be told any more.
std::optional<double> secondOrderError(const Site &site, const Conditions &conditions);

/// Positions in a triple quantum MAS spectrum after shearing, ppm, with the F1 axis scaled so that the shift alone is
/// the same in both dimensions: F1 = shift - 10/17 QIS, F2 = shift + QIS (J.-P. Amoureux, C. Fernandez, Solid State NMR
/// 10 (1998) 211; D. Massiot et al., Solid State NMR 6 (1996) 73). QIS is negative.
struct TripleQuantumPosition {
    double f1 = 0;
    double f2 = 0;
};
TripleQuantumPosition tripleQuantumPosition(const SiteValues &values);

/// Called now and then with the part that is done; false ends the computation.
using Progress = std::function<bool(double)>;

} // namespace Workbench::Powder
