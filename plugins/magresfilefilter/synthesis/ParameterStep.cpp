// SPDX-License-Identifier: BSD-3-Clause
#include "synthesis/ParameterStep.h"

#include "parameters/Nuclei.h"
#include "synthesis/Sites.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Magres {
namespace {

/// The nucleus of a record, the fall-back for an empty one, or else the first on offer.
QString offeredNucleus(const QString &nucleus, const QString &fallBack, const QStringList &offered)
{
    const QString wanted = nucleus.isEmpty() ? fallBack : nucleus;
    return offered.contains(wanted) ? wanted : offered.value(0);
}

qint32 offeredPoints(qint32 points, qint32 fallBack)
{
    return offeredPointCounts().contains(points) ? points : fallBack;
}

/// The boxes of one dimension.
struct DimensionValues {
    QString nucleus;
    double reference;
    double slope;
    double lineWidth;
};

DimensionValues valuesOf(const MagresSpecParams &parameters, const QString &nucleus, double lineWidthFallBack)
{
    return {nucleus, parameters.ref.value(nucleus, defaultReference).toDouble(),
            parameters.slope.value(nucleus, defaultSlope).toDouble(),
            parameters.lw.value(nucleus, lineWidthFallBack).toDouble()};
}

void store(const DimensionValues &values, MagresSpecParams &parameters)
{
    parameters.ref.insert(values.nucleus, values.reference);
    parameters.slope.insert(values.nucleus, values.slope);
    parameters.lw.insert(values.nucleus, values.lineWidth);
}

std::array<double, 2> rangeOf(const MagresData &data, const DimensionValues &values, bool withQuadShift,
                              double protonFrequencyMHz, const NuclearProperties &properties)
{
    const ShiftRangeInData inData(data, values.nucleus.toLatin1(), properties);
    return displayRange(inData.range(values.reference, values.slope, withQuadShift, protonFrequencyMHz));
}

} // namespace

QStringList observableNuclei(const MagresData &data)
{
    QStringList nuclei;
    for (const QByteArray &element : elements(data))
        for (const QByteArray &isotope : isotopes(element))
            nuclei.append(QString::fromLatin1(isotope));
    return nuclei;
}

QList<qint32> offeredPointCounts()
{
    QList<qint32> counts;
    for (int exponent = 7; exponent <= 26; ++exponent)
        counts.append(1 << exponent);
    return counts;
}

ShiftRangeInData::ShiftRangeInData(const MagresData &data, const QByteArray &nucleus,
                                   const NuclearProperties &properties)
    : m_nucleus(nucleus),
      m_quadrupoleMoment(properties.quadrupoleMoment(nucleus))
{
    for (const Site &site : sitesOf(data, nucleus))
        if (site.shielding)
            m_sites.append({*site.shielding, site.efg ? std::optional(*site.efg) : std::nullopt});
}

ShiftRange ShiftRangeInData::range(double reference, double slope, bool withQuadShift, double protonFrequencyMHz) const
{
    const ShiftRule rule{m_nucleus, reference, slope, withQuadShift,
                         spectrometerFrequency(m_nucleus, protonFrequencyMHz), m_quadrupoleMoment};
    double lo = std::numeric_limits<double>::infinity();
    double hi = -lo;
    for (const Tensors &site : m_sites) {
        const double shift = rule.shift(site.shielding, site.efg ? &*site.efg : nullptr);
        if (!std::isfinite(shift))
            continue;
        lo = std::min(lo, shift);
        hi = std::max(hi, shift);
    }
    return lo <= hi ? ShiftRange{lo, hi} : ShiftRange{};
}

std::array<double, 2> displayRange(const ShiftRange &inData)
{
    constexpr double resolution = 0.01; // ppm, what the boxes of the dialog can show
    auto [lo, hi] = inData;
    if (hi - lo < resolution) {
        lo -= 10.0;
        hi += 10.0;
    }
    const double from = lo - 0.1 * (hi - lo);
    return {from, hi + 0.1 * (hi - from)};
}

void completeParameters(const MagresData &data, MagresSpecParams &parameters, const NuclearProperties &properties)
{
    const bool twoD = parameters.isTwoD();
    parameters.specType = qint32(twoD ? SpectrumKind::TwoD : SpectrumKind::OneD);
    if (parameters.avIdx < qint32(AveragingMode::None) || parameters.avIdx > qint32(AveragingMode::AllXh3))
        parameters.avIdx = qint32(AveragingMode::None);
    if (parameters.corr != qint32(CorrelationMode::RssDipolar))
        parameters.corr = qint32(CorrelationMode::StrongestDipolar);

    const QStringList nuclei = observableNuclei(data);
    const DimensionValues f2 = valuesOf(
        parameters, offeredNucleus(parameters.nucF2, QStringLiteral("13C"), nuclei), defaultLineWidthF2);
    const DimensionValues f1 = valuesOf(
        parameters, offeredNucleus(parameters.nucF1, QStringLiteral("1H"), nuclei), defaultLineWidthF1);
    // Both dimensions are looked at before either is stored, and F1 is stored last: it wins where both have one nucleus.
    const bool quadF2 = parameters.quadShift(0);
    const bool quadF1 = parameters.quadShift(1);

    parameters.nucF2 = f2.nucleus;
    store(f2, parameters);
    qint32 &points = twoD ? parameters.ptsF2 : parameters.pts;
    points = offeredPoints(points, defaultPoints);
    if (!parameters.RangeF2User)
        parameters.RangeF2 = rangeOf(data, f2, quadF2, parameters.freq, properties);
    parameters.qShift = {quadF2, quadF1};
    if (!twoD)
        return;

    parameters.nucF1 = f1.nucleus;
    store(f1, parameters);
    parameters.ptsF1 = offeredPoints(parameters.ptsF1, defaultPointsF1);
    if (!parameters.RangeF1User)
        parameters.RangeF1 = rangeOf(data, f1, quadF1, parameters.freq, properties);
}

} // namespace Magres
