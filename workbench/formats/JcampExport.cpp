// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/JcampExport.h"

#include "data/Error.h"
#include "data/JsonValues.h"
#include "data/NumberText.h"
#include "data/SpectrumEntry.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace Workbench {

namespace JcampExport {

namespace {

constexpr qsizetype longestLine = 80;
constexpr double largestOrdinate = std::numeric_limits<qint32>::max();

QByteArray number(double value)
{
    QByteArray text;
    NumberText::append17(text, value);
    return text;
}

/// On one line, and without what would begin a comment or a record.
QByteArray oneLine(const QString &text)
{
    return text.simplified().replace(QLatin1String("$$"), QLatin1String("$ $")).toUtf8();
}

QByteArray json(const QVariant &value)
{
    const QByteArray text = QJsonDocument(QJsonArray{toJson(value)}).toJson(QJsonDocument::Compact);
    return text.mid(1, text.size() - 2).replace("$$", "$\\u0024");
}

class Records {
public:
    void add(const char *label, const QByteArray &value) { text += "##" + QByteArray(label) + "= " + value + '\n'; }
    void add(const char *label, double value) { add(label, number(value)); }

    QByteArray text;
};

void addPeaks(Records &records, const QList<SpectrumPeak> &peaks, int dimensions)
{
    QByteArray table(dimensions == 2 ? "(F2F1YA)" : "(XYA)");
    for (const SpectrumPeak &peak : peaks) {
        table += "\n(" + number(peak.f2) + (dimensions == 2 ? ", " + number(peak.f1) : QByteArray()) + ", "
            + number(peak.height) + ", <" + oneLine(peak.label).replace('<', '(').replace('>', ')') + ">)";
    }
    records.add("$PEAKS", table);
}

void addParameters(Records &records, const QVariantHash &parameters)
{
    QStringList keys = parameters.keys();
    keys.sort();
    for (const QString &key : keys)
        records.add("$MAGRES_" + key.toLatin1(), json(parameters.value(key)));
}

/// Lines of at most eighty characters, each with the X of its first point.
QByteArray table(const SpectrumAxis &axis, std::span<const double> points, double factor)
{
    QByteArray text, line;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const QByteArray ordinate = ' ' + QByteArray::number(qint64(std::llround(points[i] / factor)));
        if (line.size() + ordinate.size() > longestLine)
            text += std::exchange(line, {}) + '\n';
        if (line.isEmpty())
            line = QByteArray::number(axis.ppm(double(i)), 'f', 8);
        line += ordinate;
    }
    return text + line;
}

void addTrace(Records &records, const SpectrumAxis &axis, std::span<const double> points, double factor)
{
    const auto [lowest, highest] = std::minmax_element(points.begin(), points.end());
    records.add("XUNITS", QByteArray("PPM"));
    records.add("YUNITS", QByteArray("ARBITRARY UNITS"));
    records.add("XFACTOR", 1.0);
    records.add("YFACTOR", factor);
    records.add("FIRSTX", axis.first);
    records.add("LASTX", axis.last());
    records.add("DELTAX", axis.step);
    records.add("MINX", axis.last());
    records.add("MAXX", axis.first);
    records.add("MINY", *lowest);
    records.add("MAXY", *highest);
    records.add("FIRSTY", points[0]);
    records.add("NPOINTS", QByteArray::number(axis.size));
    records.add("XYDATA", "(X++(Y..Y))\n" + table(axis, points, factor));
}

/// A page for each row of F2, from the first one along F1.
void addPlane(Records &records, const QList<SpectrumAxis> &axes, std::span<const double> points, double factor)
{
    const SpectrumAxis &f2 = axes[0], &f1 = axes[1];
    const auto [lowest, highest] = std::minmax_element(points.begin(), points.end());
    const auto all = [](const QByteArray &ofF1, const QByteArray &ofF2, const QByteArray &ofPoints) {
        return ofF1 + ", " + ofF2 + ", " + ofPoints;
    };
    const QByteArray size2 = QByteArray::number(f2.size);
    records.add("NUM DIM", QByteArray("2"));
    if (!f1.isotope().isEmpty() && !f2.isotope().isEmpty())
        records.add(".NUCLEUS", QString(f1.isotope() + QLatin1String(", ") + f2.isotope()).toLatin1());
    if (f1.frequency > 0.0 && f2.frequency > 0.0) {
        // MHz of 0 ppm, once for each dimension as the spectrometers' programs do: the standard has no record for F1.
        records.add("$SF", f2.frequency);
        records.add("$SF", f1.frequency);
    }
    records.add("NTUPLES", QByteArray("nD NMR SPECTRUM"));
    records.add("VAR_NAME", QByteArray("FREQUENCY1, FREQUENCY2, SPECTRUM"));
    records.add("SYMBOL", QByteArray("F1, F2, Y"));
    records.add("VAR_TYPE", QByteArray("INDEPENDENT, INDEPENDENT, DEPENDENT"));
    records.add("VAR_FORM", QByteArray("AFFN, AFFN, ASDF"));
    records.add("VAR_DIM", all(QByteArray::number(f1.size), size2, size2));
    records.add("UNITS", QByteArray("PPM, PPM, ARBITRARY UNITS"));
    records.add("FACTOR", all("1", "1", number(factor)));
    records.add("FIRST", all(number(f1.first), number(f2.first), number(points.front())));
    records.add("LAST", all(number(f1.last()), number(f2.last()), number(points.back())));
    records.add("MIN", all(number(f1.last()), number(f2.last()), number(*lowest)));
    records.add("MAX", all(number(f1.first), number(f2.first), number(*highest)));
    for (int row = 0; row < f1.size; ++row) {
        records.add("PAGE", "F1=" + number(f1.ppm(row)));
        records.add("DATA TABLE",
                    "(F2++(Y..Y)), PROFILE\n"
                        + table(f2, points.subspan(size_t(row) * size_t(f2.size), size_t(f2.size)), factor));
    }
    records.add("END NTUPLES", QByteArray("nD NMR SPECTRUM"));
}

void checkWritable(const Spectrum &spectrum)
{
    if (spectrum.isEmpty())
        fail(Texts::tr("the spectrum holds no data"));
    const std::span<const double> points = spectrum.real();
    if (!std::all_of(points.begin(), points.end(), [](double y) { return std::isfinite(y); }))
        fail(Texts::tr("the spectrum has points that are not numbers, which JCAMP-DX cannot hold"));
}

} // namespace

void write(const SpectrumEntry &entry, QIODevice &device)
{
    const Spectrum &spectrum = entry.spectrum;
    checkWritable(spectrum);
    const SpectrumAxis &axis = spectrum.axes[0];
    const std::span<const double> points = spectrum.real();
    const auto [lowest, highest] = std::minmax_element(points.begin(), points.end());
    const double most = std::max(std::abs(*lowest), std::abs(*highest));
    // Too small a spectrum would make a factor that is no longer an exact quotient.
    const double factor = most > std::numeric_limits<double>::min() * largestOrdinate ? most / largestOrdinate : 1.0;
    const QByteArray nucleus = axis.isotope().toLatin1();
    const bool isPlane = spectrum.dimensions() == 2;

    Records records;
    const QString start = QString::fromLatin1(nucleus) + u' ';
    records.add("TITLE", oneLine(entry.name.startsWith(start) ? entry.name : start + entry.name));
    records.add("JCAMP-DX", QByteArray(isPlane ? "6.0" : "5.01"));
    records.add("DATA TYPE", QByteArray(isPlane ? "nD NMR SPECTRUM" : "NMR SPECTRUM"));
    records.add("DATA CLASS", QByteArray(isPlane ? "NTUPLES" : "XYDATA"));
    records.add("ORIGIN", oneLine(QStringLiteral("magres-workbench ") + QCoreApplication::applicationVersion()));
    records.add("OWNER", QByteArray("not stated"));
    // What nobody knows is not written.
    if (axis.frequency > 0.0)
        records.add(".OBSERVE FREQUENCY", axis.frequency);
    if (!nucleus.isEmpty())
        records.add(".OBSERVE NUCLEUS", '^' + nucleus);
    addParameters(records, entry.parameters(QStringLiteral("magres")));
    addPeaks(records, spectrum.peaks, spectrum.dimensions());
    if (isPlane)
        addPlane(records, spectrum.axes, points, factor);
    else
        addTrace(records, axis, points, factor);
    records.add("END", QByteArray());
    if (device.write(records.text) != records.text.size())
        fail(Texts::tr("the data cannot be written: %1").arg(device.errorString()));
}

} // namespace JcampExport

} // namespace Workbench
