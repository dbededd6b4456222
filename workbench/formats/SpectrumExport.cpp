// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/SpectrumExport.h"

#include "analysis/PowderEntry.h"
#include "formats/MeasurementFormats.h"
#include "formats/PowderExport.h"
#include "data/Error.h"
#include "data/JsonValues.h"
#include "data/NumberText.h"
#include "data/SpectrumEntry.h"

#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <stdexcept>

namespace Workbench {

namespace SpectrumExport {

namespace {

constexpr qsizetype blockSize = 1 << 20;

const Spectrum &checkedSpectrum(const SpectrumEntry &entry)
{
    const Spectrum &spectrum = entry.spectrum;
    if (spectrum.isEmpty())
        fail(Texts::tr("the spectrum holds no data: %1").arg(spectrum.note));
    return spectrum;
}

/// The positions of all points of an axis as text, each followed by a comma.
std::vector<std::string> axisTexts(const SpectrumAxis &axis)
{
    std::vector<std::string> texts(axis.size);
    for (int i = 0; i < axis.size; ++i) {
        NumberText::append17(texts[i], axis.ppm(i));
        texts[i] += ',';
    }
    return texts;
}

class BlockWriter {
public:
    explicit BlockWriter(QIODevice &device) : m_device(device) { m_block.reserve(blockSize + 256); }
    std::string &text() { return m_block; }
    void lineDone()
    {
        m_block += '\n';
        if (qsizetype(m_block.size()) >= blockSize)
            flush();
    }
    void flush()
    {
        if (m_device.write(m_block.data(), m_block.size()) != qint64(m_block.size()))
            fail(Texts::tr("the data cannot be written: %1").arg(m_device.errorString()));
        m_block.clear();
    }

private:
    QIODevice &m_device;
    std::string m_block;
};

/// The values in Hz of the spectrum's description; null where nobody knows the frequency that they rest on.
QJsonArray inHertz(const QVariantMap &info, const char *key, const QList<SpectrumAxis> &axes)
{
    const auto values = info.value(QLatin1String(key)).value<DoubleVector>();
    QJsonArray array;
    for (qsizetype d = 0; d < axes.size(); ++d)
        array.append(d < qsizetype(values.size()) && axes[d].frequency > 0 ? QJsonValue(values[d]) : QJsonValue());
    return array;
}

QJsonObject peakObject(const QVariantMap &peak, int dimensions)
{
    const auto vectorOf = [&](const char *key) {
        auto values = peak.value(QLatin1String(key)).value<DoubleVector>();
        values.resize(dimensions);
        return toJson(QVariant::fromValue(values));
    };
    return {{QStringLiteral("label"), peak.value(QStringLiteral("PeakLabel")).toString()},
            {QStringLiteral("pos"), vectorOf("Pos")},
            {QStringLiteral("height"), peak.value(QStringLiteral("Height")).toDouble()},
            {QStringLiteral("width"), vectorOf("Width")}};
}

} // namespace

void writeCsv(const SpectrumEntry &entry, QIODevice &device)
{
    const Spectrum &spectrum = checkedSpectrum(entry);
    const std::span<const double> points = spectrum.real();
    const std::vector<std::string> f2 = axisTexts(spectrum.axes[0]);
    const bool plane = spectrum.dimensions() > 1;
    const std::vector<std::string> f1 = plane ? axisTexts(spectrum.axes[1]) : std::vector<std::string>(1);

    BlockWriter out(device);
    out.text() += plane ? "ppm_f2,ppm_f1,intensity" : "ppm,intensity";
    out.lineDone();
    std::size_t i = 0;
    for (const std::string &row : f1) {
        for (const std::string &column : f2) {
            out.text() += column;
            out.text() += row;
            NumberText::append17(out.text(), points[i++]);
            out.lineDone();
        }
    }
    out.flush();
}

void writeJson(const SpectrumEntry &entry, QIODevice &device)
{
    const Spectrum &spectrum = checkedSpectrum(entry);
    const int dimensions = spectrum.dimensions();
    const QVariantMap info = entry.data.value(QStringLiteral("SpecInfo")).toMap();
    QJsonArray nuclei, length, frequencies, axes, peaks;
    for (const SpectrumAxis &axis : spectrum.axes) {
        nuclei.append(axis.isotope().isEmpty() ? QJsonValue() : QJsonValue(axis.isotope()));
        length.append(axis.size);
        frequencies.append(axis.frequency > 0 ? QJsonValue(axis.frequency) : QJsonValue());
        axes.append(QJsonObject{{QStringLiteral("first"), axis.first}, {QStringLiteral("step"), axis.step}});
    }
    for (const QVariant &peak : entry.peakList().value(QStringLiteral("PeakList")).toList())
        peaks.append(peakObject(peak.toMap(), dimensions));
    const auto powder = PowderOrigin::of(entry);
    const QJsonObject object{
        {QStringLiteral("nuclei"), nuclei},
        {QStringLiteral("length"), length},
        {QStringLiteral("frequencies"), frequencies},
        {QStringLiteral("sw"), inHertz(info, "SW", spectrum.axes)},
        {QStringLiteral("ref"), inHertz(info, "SpectrumRef", spectrum.axes)},
        {QStringLiteral("axes"), axes},
        {QStringLiteral("peaks"), peaks},
        {QStringLiteral("parameters"),
         powder ? PowderExport::settingsJson(powder->settings) : toJson(entry.parameters(QStringLiteral("magres")))},
    };
    device.write(QJsonDocument(object).toJson());
}

const QStringList &suffixes()
{
    return suffixesToWrite();
}

void write(const SpectrumEntry &entry, const QString &suffix, QIODevice &device)
{
    const MeasurementFormat *format = formatToWrite(suffix);
    if (!format)
        fail(Texts::tr("the file name must end in .%1").arg(suffixes().join(QLatin1String(", ."))));
    format->write(entry, device);
}

} // namespace SpectrumExport

} // namespace Workbench
