// SPDX-License-Identifier: BSD-3-Clause
#include "synthesis/SpectrumRecord.h"

#include "parameters/MapConversion.h"
#include "parameters/Nuclei.h"
#include "parameters/Texts.h"
#include "support/TPluginError.h"
#include "synthesis/PeakList.h"

#include <cmath>
#include <new>

namespace Magres {
namespace {

constexpr int describedDimensions = 8;
constexpr qint64 mostPoints = qint64(1) << 28;
constexpr int experimentType = 148; // a code of the host's

SpectrumDimension dimension(int index, const QString &nucleus, const std::array<double, 2> &range, qint64 points,
                            const MagresSpecParams &parameters)
{
    // The parameter step fills in every width. A record that never saw it shows no lines rather than made-up ones.
    const double lineWidth = parameters.lw.contains(nucleus) ? parameters.lineWidthOf(nucleus, index) : 0.0;
    const double frequency = spectrometerFrequency(nucleus.toLatin1(), parameters.freq);
    const auto [from, to] = range;
    return {nucleus.toLatin1(), frequency, std::abs(from - to) * frequency, (from + to) * frequency * 0.5, points,
            lineWidth};
}

template <typename Number>
QVariant arrayOf(const QList<SpectrumDimension> &dimensions, Number fill, double SpectrumDimension::*member)
{
    std::vector<Number> values(describedDimensions, fill);
    for (qsizetype d = 0; d < dimensions.size(); ++d)
        values[size_t(d)] = dimensions[d].*member;
    return QVariant::fromValue(values);
}

size_t totalPoints(const QList<SpectrumDimension> &dimensions)
{
    qint64 total = 1;
    for (const SpectrumDimension &d : dimensions) {
        if (d.points < 1)
            throw TPluginError(Texts::tr("A spectrum cannot have %1 points").arg(d.points));
        total *= d.points; // counts are 32 bits wide, two of them never overflow
    }
    if (total > mostPoints)
        throw TPluginError(
            Texts::tr("%1 data points are more than the %2 that a spectrum can have").arg(total).arg(mostPoints));
    return size_t(total);
}

void checkAxes(const QList<SpectrumDimension> &dimensions)
{
    for (const SpectrumDimension &d : dimensions) {
        if (!(d.frequency > 0.0) || !std::isfinite(d.frequency))
            throw TPluginError(Texts::tr("The spectrometer frequency must be above 0 MHz"));
        if (!std::isfinite(d.width) || !std::isfinite(d.reference))
            throw TPluginError(Texts::tr("The range of %1 is not finite").arg(QString::fromLatin1(d.nucleus)));
        // Towards -1,000,000 ppm the frequency goes to 0; beyond, the axis would run the wrong way.
        if (!(d.carrier() > 0.0))
            throw TPluginError(
                Texts::tr("The range of %1 lies below -1000000 ppm").arg(QString::fromLatin1(d.nucleus)));
    }
}

std::vector<LinePeak> linePeaks(const QList<SpectrumPeak> &peaks)
{
    std::vector<LinePeak> lines;
    lines.reserve(size_t(peaks.size()));
    for (const SpectrumPeak &peak : peaks)
        lines.push_back({peak.positionF2, peak.positionF1, peak.height});
    return lines;
}

QVariant pairOf(double f2, double f1)
{
    return QVariant::fromValue(DoubleVector{f2, f1});
}

} // namespace

SpectrumAxis SpectrumDimension::axis() const
{
    return {(width * 0.5 + reference) / carrier(), -width / double(points) / carrier()};
}

QList<SpectrumDimension> dimensions(const MagresSpecParams &parameters)
{
    if (!parameters.isTwoD())
        return {dimension(0, parameters.nucF2, parameters.RangeF2, parameters.pts, parameters)};
    return {dimension(0, parameters.nucF2, parameters.RangeF2, parameters.ptsF2, parameters),
            dimension(1, parameters.nucF1, parameters.RangeF1, parameters.ptsF1, parameters)};
}

DimensionDescription describe(const QList<SpectrumDimension> &dimensions, const MagresSpecParams &parameters)
{
    QList<int> lengths(describedDimensions, 1);
    for (qsizetype d = 0; d < dimensions.size(); ++d)
        lengths[d] = int(dimensions[d].points);
    return {{{QStringLiteral("Length"), QVariant::fromValue(lengths)}},
            {{QStringLiteral("SpectrometerFrequencies"), arrayOf(dimensions, 400.0, &SpectrumDimension::frequency)},
             {QStringLiteral("SW"), arrayOf(dimensions, 0.0, &SpectrumDimension::width)},
             {QStringLiteral("SpectrumRef"), arrayOf(dimensions, 0.0, &SpectrumDimension::reference)},
             {QStringLiteral("SpectrumType"), QVariant::fromValue(SignedCharVector(describedDimensions, 1))},
             {QStringLiteral("Nucleides"), nucleides(parameters.nucF2.toLatin1(), parameters.nucF1.toLatin1())},
             {QStringLiteral("ExperimentType"), experimentType}}};
}

QList<DoubleVector> synthesize(const MagresSpecParams &parameters, const QList<SpectrumDimension> &dimensions)
{
    const size_t points = totalPoints(dimensions);
    QList<DoubleVector> data;
    try {
        data.emplaceBack(points, 0.0);
        data.emplaceBack(points, 0.0);
    } catch (const std::bad_alloc &) {
        throw TPluginError(Texts::tr("There is not enough memory for %1 data points").arg(points));
    }
    const std::vector<LinePeak> peaks = linePeaks(parameters.peaks);
    const SpectrumDimension &f2 = dimensions[0];
    // A spectrum of one row is one-dimensional, whatever it was asked for.
    if (dimensions.value(1).points < 2) {
        addLorentzians(peaks, f2.lineWidthPpm(), f2.axis(), data[0]);
    } else {
        const SpectrumDimension &f1 = dimensions[1];
        addGaussians(peaks, f2.lineWidthPpm(), f1.lineWidthPpm(), f2.axis(), f1.axis(), size_t(f2.points), data[0]);
    }
    return data;
}

QVariantMap peakRecord(const MagresSpecParams &parameters, const QList<SpectrumDimension> &dimensions)
{
    const bool lorentzian = dimensions.size() < 2;
    const QVariant width = pairOf(dimensions[0].lineWidthPpm(), lorentzian ? 0.0 : dimensions[1].lineWidthPpm());
    const QVariant lorentzianFractions = pairOf(lorentzian ? 1.0 : 0.0, 0.0);

    QList<SpectrumPeak> peaks = parameters.peaks;
    sortPeaks(peaks);
    QVariantList list;
    list.reserve(peaks.size());
    for (const SpectrumPeak &peak : std::as_const(peaks)) {
        list.append(QVariantMap{
            {QStringLiteral("Height"), peak.height},
            {QStringLiteral("ID"), peak.id},
            {QStringLiteral("PeakLabel"), labelsToStrings(peak.labelsF2 + peak.labelsF1).join(QLatin1Char(','))},
            {QStringLiteral("peakType"), 1},
            {QStringLiteral("Pos"), pairOf(peak.positionF2, peak.positionF1)},
            {QStringLiteral("ShapePar"), lorentzianFractions},
            {QStringLiteral("Width"), width}});
    }
    return {{QStringLiteral("PeakList"), list},
            {QStringLiteral("ID"), QUuid::createUuid()},
            {QStringLiteral("PosUnits"), QVariant::fromValue(QList<int>{3, 3, 1})}};
}

GeneratedSpectrum generateSpectrum(const MagresData &data, MagresSpecParams &parameters,
                                   const NuclearProperties &properties)
{
    const QList<SpectrumDimension> dims = dimensions(parameters);
    checkAxes(dims);
    parameters.magresDataId = data.ID;
    parameters.peaks = makePeaks(data, parameters, properties);

    auto [spectrum, specInfo] = describe(dims, parameters);
    spectrum.insert(QStringLiteral("DataPoints"), QVariant::fromValue(synthesize(parameters, dims)));
    specInfo.insert(QStringLiteral("OrigFileFormat"), customFileFormat);
    specInfo.insert(QStringLiteral("OriginalParameters"),
                    QVariant::fromValue(QMap<QString, QVariantHash>{{QStringLiteral("magres"), parameters.toMap()}}));
    spectrum.insert(QStringLiteral("SpecInfo"), specInfo);
    spectrum.insert(QStringLiteral("Peaks"), peakRecord(parameters, dims));
    return {specInfo, spectrum};
}

} // namespace Magres
