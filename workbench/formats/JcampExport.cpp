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

void addPeaks(Records &records, const QList<SpectrumPeak> &peaks)
{
    QByteArray table("(XYA)");
    for (const SpectrumPeak &peak : peaks) {
        table += "\n(" + number(peak.f2) + ", " + number(peak.height) + ", <"
            + oneLine(peak.label).replace('<', '(').replace('>', ')') + ">)";
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

void checkWritable(const Spectrum &spectrum)
{
    if (spectrum.isEmpty())
        fail(Texts::tr("the spectrum holds no data"));
    if (spectrum.dimensions() != 1)
        fail(Texts::tr("a JCAMP-DX file holds one dimension here and the spectrum has two; .csv holds both"));
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
    const QByteArray nucleus =
        axis.element.isEmpty() ? QByteArray() : QByteArray::number(axis.massNumber) + axis.element.toLatin1();

    Records records;
    records.add("TITLE", oneLine(QString::fromLatin1(nucleus) + u' ' + entry.name));
    records.add("JCAMP-DX", QByteArray("5.01"));
    records.add("DATA TYPE", QByteArray("NMR SPECTRUM"));
    records.add("DATA CLASS", QByteArray("XYDATA"));
    records.add("ORIGIN", oneLine(QStringLiteral("magres-workbench ") + QCoreApplication::applicationVersion()));
    records.add("OWNER", QByteArray("not stated"));
    // What nobody knows is not written.
    if (axis.frequency > 0.0)
        records.add(".OBSERVE FREQUENCY", axis.frequency);
    if (!nucleus.isEmpty())
        records.add(".OBSERVE NUCLEUS", '^' + nucleus);
    addParameters(records, entry.parameters(QStringLiteral("magres")));
    addPeaks(records, spectrum.peaks);
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
    records.add("END", QByteArray());
    if (device.write(records.text) != records.text.size())
        fail(Texts::tr("the data cannot be written: %1").arg(device.errorString()));
}

} // namespace JcampExport

} // namespace Workbench
