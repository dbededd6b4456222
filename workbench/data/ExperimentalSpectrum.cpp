// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/ExperimentalSpectrum.h"

#include "data/Nuclides.h"
#include "data/ReaderText.h"
#include "data/Spectrum.h"
#include "support/MetaTypes.h"

#include <QList>

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

/// Hosts keep this many dimensions in each parameter.
constexpr int hostDimensions = 8;

void reverseRows(std::vector<double> &data, int rowLength)
{
    for (auto row = data.begin(); row != data.end(); row += rowLength)
        std::reverse(row, row + rowLength);
}

void checkAxis(const SpectrumDimension &axis, const QString &source)
{
    constexpr double largestShift = 1e6;
    const double last = axis.ppm(axis.points - 1);
    // Written so that what is not a number fails as well.
    if (!(axis.step < 0.0) || !(last < axis.first) || !(std::abs(axis.first) < largestShift)
        || !(std::abs(last) < largestShift)) {
        ReaderText::fail(source,
                         Texts::tr("an axis of %1 points from %2 to %3 ppm is not that of a spectrum")
                             .arg(axis.points)
                             .arg(axis.first)
                             .arg(last));
    }
}

/// Mass number and symbol apart.
QVariantMap nucleide(const QString &nucleus)
{
    const auto isDigit = [](QChar c) { return c.isDigit(); };
    const auto letters = std::find_if_not(nucleus.begin(), nucleus.end(), isDigit) - nucleus.begin();
    return {{QStringLiteral("Isotope"), nucleus.left(letters).toInt()}, {QStringLiteral("Name"), nucleus.mid(letters)}};
}

} // namespace

void orient(ExperimentalSpectrum &spectrum, const QString &source)
{
    for (size_t d = 0; d < spectrum.dimensions.size(); ++d) {
        SpectrumDimension &axis = spectrum.dimensions[d];
        if (axis.step > 0.0) {
            axis.first = axis.ppm(axis.points - 1);
            axis.step = -axis.step;
            // Turning everything around turns the rows and their order; turning the rows back leaves their order.
            if (d == 1)
                std::reverse(spectrum.data.begin(), spectrum.data.end());
            reverseRows(spectrum.data, spectrum.dimensions[0].points);
        }
        checkAxis(axis, source);
    }
}

QString nucleusName(std::string_view text)
{
    QString mass, symbol;
    // "13C{1H}" is decoupled from the other one.
    for (char c : text.substr(0, text.find('{'))) {
        if (c >= '0' && c <= '9')
            mass += QLatin1Char(c);
        else if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'))
            symbol += symbol.isEmpty() ? QChar(QLatin1Char(c)).toUpper() : QChar(QLatin1Char(c)).toLower();
    }
    return Nuclides::table().contains(mass + symbol) ? mass + symbol : QString();
}

QVariantMap toEntryMap(ExperimentalSpectrum spectrum)
{
    QList<int> length(hostDimensions, 1);
    DoubleVector frequencies(hostDimensions, Spectrum::standInFrequency), widths(hostDimensions, 0.0),
        references(hostDimensions, 0.0);
    SignedCharVector standIns(hostDimensions, 0);
    QVariantList nuclei;
    for (size_t d = 0; d < spectrum.dimensions.size(); ++d) {
        const SpectrumDimension &axis = spectrum.dimensions[d];
        length[d] = axis.points;
        if (axis.frequency > 0.0)
            frequencies[d] = axis.frequency;
        else
            standIns[d] = 1;
        // The host's axis is (width / 2 + reference - i * width / length) / carrier with the carrier
        // frequency + reference * 1e-6. Its centre, reference / carrier, gives the carrier.
        const double centre = axis.ppm(axis.points * 0.5);
        const double carrier = frequencies[d] / (1.0 - centre * 1e-6);
        widths[d] = -axis.step * axis.points * carrier;
        references[d] = centre * carrier;
        nuclei.append(nucleide(axis.nucleus));
    }
    QList<DoubleVector> points;
    const size_t count = spectrum.data.size();
    points.append(std::move(spectrum.data));
    points.append(DoubleVector(count, 0.0));
    const QVariantMap specInfo{
        {QStringLiteral("SpectrometerFrequencies"), QVariant::fromValue(frequencies)},
        {QStringLiteral("SW"), QVariant::fromValue(widths)},
        {QStringLiteral("SpectrumRef"), QVariant::fromValue(references)},
        {QStringLiteral("SpectrumType"), QVariant::fromValue(SignedCharVector(hostDimensions, 1))},
        {QStringLiteral("Nucleides"), nuclei},
        {Spectrum::standInKey(), QVariant::fromValue(standIns)}};
    return {{QStringLiteral("Length"), QVariant::fromValue(length)},
            {QStringLiteral("DataPoints"), QVariant::fromValue(points)},
            {QStringLiteral("SpecInfo"), specInfo}};
}

} // namespace Workbench
