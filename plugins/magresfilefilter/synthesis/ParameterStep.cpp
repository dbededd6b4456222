// SPDX-License-Identifier: BSD-3-Clause
#include "synthesis/ParameterStep.h"

#include "parameters/Nuclei.h"
#include "synthesis/Sites.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Magres {
namespace {

DimensionParameters completeDimension(const MagresData &data, const MagresSpecParams &parameters, int dimension,
                                      const QStringList &nuclei, const NuclearProperties &properties)
{
    DimensionParameters complete;
    complete.nucleus = offeredNucleus(parameters, dimension, nuclei);
    complete.reference = parameters.referenceOf(complete.nucleus);
    complete.slope = parameters.slopeOf(complete.nucleus);
    complete.lineWidth = parameters.lineWidthOf(complete.nucleus, dimension);
    complete.quadShift = parameters.quadShift(dimension);
    const qint32 pointsF2 = parameters.isTwoD() ? parameters.ptsF2 : parameters.pts;
    complete.points = offeredPointCount(dimension == 0 ? pointsF2 : parameters.ptsF1, dimension);
    if (hasUserRange(parameters, dimension)) {
        complete.range = dimension == 0 ? parameters.RangeF2 : parameters.RangeF1;
    } else {
        const ShiftRangeInData inData(data, complete.nucleus.toLatin1(), properties);
        complete.range =
            displayRange(inData.range(complete.reference, complete.slope, complete.quadShift, parameters.freq));
    }
    return complete;
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

QString offeredNucleus(const MagresSpecParams &parameters, int dimension, const QStringList &offered)
{
    const QString fallBack = dimension == 0 ? QStringLiteral("13C") : QStringLiteral("1H");
    const QString &nucleus = dimension == 0 ? parameters.nucF2 : parameters.nucF1;
    const QString &wanted = nucleus.isEmpty() ? fallBack : nucleus;
    return offered.contains(wanted) ? wanted : offered.value(0);
}

qint32 offeredPointCount(qint32 points, int dimension)
{
    return offeredPointCounts().contains(points) ? points : dimension == 0 ? defaultPoints : defaultPointsF1;
}

double protonFrequency(const MagresSpecParams &parameters)
{
    return std::isfinite(parameters.freq) ? parameters.freq : MagresSpecParams{}.freq;
}

bool hasUserRange(const MagresSpecParams &parameters, int dimension)
{
    const auto [from, to] = dimension == 0 ? parameters.RangeF2 : parameters.RangeF1;
    const bool marked = dimension == 0 ? parameters.RangeF2User : parameters.RangeF1User;
    return marked && std::isfinite(from) && std::isfinite(to);
}

void storeDimension(const DimensionParameters &chosen, int dimension, MagresSpecParams &parameters)
{
    const bool direct = dimension == 0;
    (direct ? parameters.nucF2 : parameters.nucF1) = chosen.nucleus;
    parameters.qShift = {direct ? chosen.quadShift : parameters.quadShift(0),
                         direct ? parameters.quadShift(1) : chosen.quadShift};
    if (!chosen.nucleus.isEmpty()) {
        parameters.ref.insert(chosen.nucleus, chosen.reference);
        parameters.slope.insert(chosen.nucleus, chosen.slope);
        parameters.lw.insert(chosen.nucleus, chosen.lineWidth);
    }
    qint32 &pointsF2 = parameters.isTwoD() ? parameters.ptsF2 : parameters.pts;
    (direct ? pointsF2 : parameters.ptsF1) = chosen.points;
    (direct ? parameters.RangeF2 : parameters.RangeF1) = chosen.range;
}

ShiftRangeInData::ShiftRangeInData(const MagresData &data, const QByteArray &nucleus,
                                   const NuclearProperties &properties)
    : m_nucleus(nucleus), m_quadrupoleMoment(properties.quadrupoleMoment(nucleus))
{
    for (const Site &site : sitesOf(data, nucleus))
        if (site.shielding) {
            m_shieldings.push_back(site.shielding->iso());
            m_efgs.push_back(site.efg ? std::optional(*site.efg) : std::nullopt);
        }
}

ShiftRange ShiftRangeInData::range(double reference, double slope, bool withQuadShift, double protonFrequencyMHz) const
{
    const ShiftRule rule{
        m_nucleus,         reference, slope, withQuadShift, spectrometerFrequency(m_nucleus, protonFrequencyMHz),
        m_quadrupoleMoment};
    double lo = std::numeric_limits<double>::infinity();
    double hi = -lo;
    for (std::size_t i = 0; i < m_shieldings.size(); ++i) {
        const double shift = rule.shift(m_shieldings[i], withQuadShift && m_efgs[i] ? &*m_efgs[i] : nullptr);
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
    const double to = hi + 0.1 * (hi - from);
    return {std::clamp(from, -maximumDisplayShift, maximumDisplayShift),
            std::clamp(to, -maximumDisplayShift, maximumDisplayShift)};
}

void completeParameters(const MagresData &data, MagresSpecParams &parameters, const NuclearProperties &properties)
{
    const bool twoD = parameters.isTwoD();
    parameters.specType = qint32(twoD ? SpectrumKind::TwoD : SpectrumKind::OneD);
    parameters.freq = protonFrequency(parameters);
    if (parameters.avIdx < qint32(AveragingMode::None) || parameters.avIdx > qint32(AveragingMode::AllXh3))
        parameters.avIdx = qint32(AveragingMode::None);
    parameters.RangeF2User = hasUserRange(parameters, 0);
    parameters.RangeF1User = hasUserRange(parameters, 1);

    const QStringList nuclei = observableNuclei(data);
    const DimensionParameters f2 = completeDimension(data, parameters, 0, nuclei, properties);
    if (!twoD) {
        storeDimension(f2, 0, parameters);
        return;
    }
    // Both dimensions are looked at before either is stored. F1 comes last: it wins where both have one nucleus.
    const DimensionParameters f1 = completeDimension(data, parameters, 1, nuclei, properties);
    storeDimension(f2, 0, parameters);
    storeDimension(f1, 1, parameters);
    if (parameters.corr != qint32(CorrelationMode::RssDipolar))
        parameters.corr = qint32(CorrelationMode::StrongestDipolar);
}

} // namespace Magres
