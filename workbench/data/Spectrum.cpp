// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/Spectrum.h"

#include "data/Error.h"
#include "data/Nuclides.h"

#include <QCoreApplication>

#include <cmath>

namespace Workbench {

namespace {

/// An updated entry may hold the points inside its raw data only.
QVariant field(const QVariantMap &entry, const QString &key)
{
    const auto own = entry.constFind(key);
    return own != entry.constEnd() ? *own : entry.value(QStringLiteral("RawData")).toMap().value(key);
}

/// NaN for an entry that there is not.
double number(const QVariantMap &specInfo, const QString &key, int dimension)
{
    const auto values = specInfo.value(key).value<DoubleVector>();
    return dimension < int(values.size()) ? values[dimension] : std::nan("");
}

/// Plug-ins write the nucleus as "13C" in the name, or the symbol in the name and the mass number as the isotope.
void readNucleus(const QVariantMap &nucleus, SpectrumAxis &axis)
{
    QString digits;
    for (const QString &key : {QStringLiteral("Name"), QStringLiteral("Isotope")}) {
        QString letters;
        for (QChar c : nucleus.value(key).toString()) {
            if (c.isDigit())
                digits += c;
            else if (c.isLetter())
                letters += c;
        }
        if (axis.element.isEmpty())
            axis.element = letters;
        if (axis.massNumber == 0)
            axis.massNumber = digits.toInt();
        digits.clear();
    }
}

/// Documents of version 2.1.0 have no marks. Their stand-in is told from a frequency only where no magnet gives it.
bool isStandIn(const QVariantMap &specInfo, int dimension, double frequency, const QString &isotope)
{
    constexpr double strongestMagnet = 1500.0; // MHz of 1H
    const QVariant marks = specInfo.value(Spectrum::standInKey());
    if (marks.isValid()) {
        const auto values = marks.value<SignedCharVector>();
        return dimension < int(values.size()) && values[dimension] != 0;
    }
    const Nuclide nuclide = Nuclides::table()[isotope];
    return frequency == Spectrum::standInFrequency && nuclide.isKnown()
        && nuclide.larmorFrequency(strongestMagnet) < frequency;
}

bool readAxis(const QVariantMap &specInfo, int dimension, SpectrumAxis &axis)
{
    const double width = number(specInfo, QStringLiteral("SW"), dimension);
    const double reference = number(specInfo, QStringLiteral("SpectrumRef"), dimension);
    const double frequency = number(specInfo, QStringLiteral("SpectrometerFrequencies"), dimension);
    // The carrier includes the reference offset. Hz over MHz is ppm.
    const double carrier = reference * 1e-6 + frequency;
    axis.first = (width * 0.5 + reference) / carrier;
    axis.step = -width / axis.size / carrier;
    const QVariantList nuclei = specInfo.value(QStringLiteral("Nucleides")).toList();
    if (dimension < nuclei.size())
        readNucleus(nuclei.at(dimension).toMap(), axis);
    axis.frequency = isStandIn(specInfo, dimension, frequency, axis.isotope()) ? 0.0 : frequency;
    return std::isfinite(axis.first) && std::isfinite(axis.step) && axis.step < 0.0;
}

QList<SpectrumPeak> readPeaks(const QVariantMap &entry)
{
    QList<SpectrumPeak> peaks;
    for (const QVariant &value :
         field(entry, QStringLiteral("Peaks")).toMap().value(QStringLiteral("PeakList")).toList()) {
        const QVariantMap map = value.toMap();
        const auto position = map.value(QStringLiteral("Pos")).value<DoubleVector>();
        if (position.empty())
            continue;
        const auto width = map.value(QStringLiteral("Width")).value<DoubleVector>();
        const auto at = [](const DoubleVector &values, size_t i) { return i < values.size() ? values[i] : 0.0; };
        SpectrumPeak peak;
        peak.id = map.value(QStringLiteral("ID")).toUuid();
        peak.label = map.value(QStringLiteral("PeakLabel")).toString();
        peak.f2 = at(position, 0);
        peak.f1 = at(position, 1);
        peak.height = map.value(QStringLiteral("Height")).toDouble();
        peak.widthF2 = at(width, 0);
        peak.widthF1 = at(width, 1);
        if (std::isfinite(peak.f2) && std::isfinite(peak.f1) && std::isfinite(peak.height))
            peaks.append(peak);
    }
    return peaks;
}

QString raisedDigits(int value)
{
    constexpr char16_t raised[] = u"⁰¹²³⁴⁵⁶⁷⁸⁹";
    QString text;
    for (QChar digit : QString::number(value))
        text += QChar(raised[digit.digitValue()]);
    return text;
}

} // namespace

QString SpectrumAxis::nucleus() const
{
    if (element.isEmpty())
        return {};
    return massNumber > 0 ? raisedDigits(massNumber) + element : element;
}

QString SpectrumAxis::isotope() const
{
    return massNumber > 0 && !element.isEmpty() ? QString::number(massNumber) + element : QString();
}

QString SpectrumAxis::label() const
{
    const QString name = nucleus();
    return name.isEmpty() ? Texts::tr("Chemical shift / ppm") : Texts::tr("%1 chemical shift / ppm").arg(name);
}

std::span<const double> Spectrum::real() const
{
    if (isEmpty())
        return {};
    return data.first();
}

Spectrum Spectrum::fromMap(const QVariantMap &entry)
{
    Spectrum spectrum;
    spectrum.peaks = readPeaks(entry);
    const auto length = field(entry, QStringLiteral("Length")).value<QList<int>>();
    spectrum.data = field(entry, QStringLiteral("DataPoints")).value<QList<DoubleVector>>();
    const QVariantMap specInfo = field(entry, QStringLiteral("SpecInfo")).toMap();

    const int n2 = length.value(0, 0);
    const int n1 = length.value(1, 1);
    if (spectrum.data.isEmpty() || spectrum.data.constFirst().empty()) {
        spectrum.note = Texts::tr("The spectrum has no data points");
    } else if (n2 < 2 || n1 < 1 || qint64(n2) * n1 != qint64(spectrum.data.constFirst().size())) {
        spectrum.note = Texts::tr("The spectrum has %1 points where its dimensions, %2 by %3, say otherwise")
                            .arg(spectrum.data.constFirst().size())
                            .arg(n2)
                            .arg(n1);
    } else {
        for (int dimension = 0; dimension < (n1 > 1 ? 2 : 1); ++dimension) {
            SpectrumAxis axis;
            axis.size = dimension == 0 ? n2 : n1;
            if (!readAxis(specInfo, dimension, axis)) {
                spectrum.note =
                    Texts::tr("The spectrum has no valid frequency, width and reference for its dimension F%1")
                        .arg(2 - dimension);
                spectrum.axes.clear();
                break;
            }
            spectrum.axes.append(axis);
        }
    }
    return spectrum;
}

} // namespace Workbench
