// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresData.h"
#include "parameters/NuclearProperties.h"
#include "synthesis/MagresSpecParams.h"

#include <vector>

// What the parameter step of a spectrum offers and fills in, with or without a dialog.

namespace Magres {

/// The nuclei of all elements among the atoms, element by element in the order of their first atoms.
QStringList observableNuclei(const MagresData &data);

/// The point counts on offer: powers of two from 2^7 to 2^26.
QList<qint32> offeredPointCounts();
inline constexpr qint32 defaultPoints = 8192;
inline constexpr qint32 defaultPointsF1 = 1024;

/// The record's nucleus of dimension 0 (F2) or 1 (F1), or the fall-back of the dimension for an empty one, if it is on
/// offer; else the first on offer.
QString offeredNucleus(const MagresSpecParams &parameters, int dimension, const QStringList &offered);
/// The number of points, if it is on offer; else the fall-back of the dimension.
qint32 offeredPointCount(qint32 points, int dimension);

/// MHz, of 1H; that of a new record for a number that is not finite.
double protonFrequency(const MagresSpecParams &parameters);
/// Whether the range of the dimension is marked as the user's and can be shown.
bool hasUserRange(const MagresSpecParams &parameters, int dimension);

/// What the user or the fall-backs decide for one dimension.
struct DimensionParameters {
    QString nucleus;
    double reference = 0.0; // ppm
    double slope = 0.0;
    double lineWidth = 0.0; // Hz
    bool quadShift = false;
    qint32 points = defaultPoints;
    std::array<double, 2> range{}; // from, to, ppm
};
/// The record's kind of spectrum says which of its point counts is meant. Without a nucleus the maps of the record stay
/// as they are.
void storeDimension(const DimensionParameters &chosen, int dimension, MagresSpecParams &parameters);

/// Lowest and highest shift, ppm.
struct ShiftRange {
    double lo = 0.0;
    double hi = 0.0;
};

/// The shifts that the sites of one nucleus span, for any reference, slope and frequency. The sites are looked up once,
/// so that a range costs no more than a pass over the sites.
class ShiftRangeInData {
public:
    ShiftRangeInData(const MagresData &data, const QByteArray &nucleus, const NuclearProperties &properties);

    /// Over all sites that have a shielding, without averaging; 0 / 0 if there are none.
    ShiftRange range(double reference, double slope, bool withQuadShift, double protonFrequencyMHz) const;

private:
    QByteArray m_nucleus;
    double m_quadrupoleMoment; // fm^2
    // Per site, apart: only the few nuclei with a second-order shift need the EFG.
    std::vector<double> m_shieldings; // isotropic, ppm
    std::vector<std::optional<MagresTensor>> m_efgs;
};

/// Farther than any shift, ppm: it keeps ranges finite where references are absurd.
inline constexpr double maximumDisplayShift = 1e9;
/// The range to show for a range in data: widened by a tenth at the low end and by a tenth of the then wider range at
/// the high end. Bounds less than 0.01 ppm apart count as equal and are moved apart by 10 ppm each first. From, to,
/// neither farther from 0 than maximumDisplayShift.
std::array<double, 2> displayRange(const ShiftRange &inData);

/// Fills in what the record leaves open, as a user would who opens the parameter dialog and accepts it at once: nuclei
/// that the data holds, references, slopes and line widths, point counts on offer, ranges that are not the user's.
void completeParameters(const MagresData &data, MagresSpecParams &parameters, const NuclearProperties &properties);

} // namespace Magres
