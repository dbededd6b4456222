// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresData.h"
#include "parameters/NuclearProperties.h"
#include "synthesis/MagresSpecParams.h"

// What the parameter step of a spectrum offers and fills in, with or without a dialog.

namespace Magres {

/// The nuclei of all elements among the atoms, element by element in the order of their first atoms.
QStringList observableNuclei(const MagresData &data);

/// The point counts on offer: powers of two from 2^7 to 2^26.
QList<qint32> offeredPointCounts();
inline constexpr qint32 defaultPoints = 8192;
inline constexpr qint32 defaultPointsF1 = 1024;

/// Lowest and highest shift, ppm.
struct ShiftRange {
    double lo = 0.0;
    double hi = 0.0;
};

/// The shifts that the sites of one nucleus span, for any reference, slope and frequency. The sites are looked up once,
/// so that a range costs no more than a pass over the sites.
class ShiftRangeInData
{
public:
    ShiftRangeInData(const MagresData &data, const QByteArray &nucleus, const NuclearProperties &properties);

    /// Over all sites that have a shielding, without averaging; 0 / 0 if there are none.
    ShiftRange range(double reference, double slope, bool withQuadShift, double protonFrequencyMHz) const;

private:
    struct Tensors {
        MagresTensor shielding;
        std::optional<MagresTensor> efg;
    };

    QByteArray m_nucleus;
    double m_quadrupoleMoment; // fm^2
    QList<Tensors> m_sites;
};

/// The range to show for a range in data: widened by a tenth at the low end and by a tenth of the then wider range at the
/// high end. Bounds less than 0.01 ppm apart count as equal and are moved apart by 10 ppm each first. From, to.
std::array<double, 2> displayRange(const ShiftRange &inData);

/// Fills in what the record leaves open, as a user would who opens the parameter dialog and accepts it at once: nuclei
/// that the data holds, references, slopes and line widths, point counts on offer, ranges that are not the user's.
void completeParameters(const MagresData &data, MagresSpecParams &parameters, const NuclearProperties &properties);

} // namespace Magres
