// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/MeasurementReport.h"

#include "analysis/PeakPicking.h"
#include "data/Error.h"
#include "data/NumberText.h"
#include "formats/ExperimentFile.h"

#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace Workbench {

using namespace Qt::StringLiterals;

namespace {

QString line(const QString &name, const QString &value)
{
    constexpr int nameWidth = 10;
    return u"  "_s + name.leftJustified(nameWidth) + value + u'\n';
}

QString shortened(double value)
{
    return QString::number(value, 'g', 6);
}

QString axisText(const SpectrumDimension &axis)
{
    QStringList parts;
    if (!axis.nucleus.isEmpty())
        parts.append(axis.nucleus);
    if (axis.frequency > 0.0)
        parts.append(Texts::tr("%1 MHz").arg(axis.frequency, 0, 'f', 4));
    parts.append(Texts::tr("%1 points from %2 to %3 ppm, %4 ppm apart")
                     .arg(axis.points)
                     .arg(axis.first, 0, 'f', 4)
                     .arg(axis.ppm(axis.points - 1), 0, 'f', 4)
                     .arg(shortened(-axis.step)));
    return parts.join(u", "_s);
}

QString axisName(int d)
{
    return d == 0 ? u"F2"_s : u"F1"_s;
}

/// Quoted where a comma or a quote would end it.
QString csvField(const QString &text)
{
    // Read again, a bare #1 would be a comment.
    if (!text.contains(u',') && !text.contains(u'"')
        && (text.isEmpty() || !QStringView(u"#%!;").contains(text.front())))
        return text;
    return u'"' + QString(text).replace(u'"', u"\"\""_s) + u'"';
}

} // namespace

MeasurementReport::MeasurementReport(Measurement measurement) : m_measurement(std::move(measurement))
{
    if (const auto *spectrum = std::get_if<ExperimentalSpectrum>(&m_measurement))
        m_peaks = ExperimentFile::pickedPeaks(*spectrum);
    else
        m_peaks = std::get<MeasuredPeaks>(m_measurement).peaks;
}

int MeasurementReport::dimensions() const
{
    const auto *spectrum = std::get_if<ExperimentalSpectrum>(&m_measurement);
    return spectrum ? int(spectrum->dimensions.size()) : std::get<MeasuredPeaks>(m_measurement).dimensions;
}

const QString &MeasurementReport::title() const
{
    return std::visit([](const auto &any) -> const QString & { return any.title; }, m_measurement);
}

const QString &MeasurementReport::format() const
{
    return std::visit([](const auto &any) -> const QString & { return any.format; }, m_measurement);
}

const QStringList &MeasurementReport::notes() const
{
    return std::visit([](const auto &any) -> const QStringList & { return any.notes; }, m_measurement);
}

QString MeasurementReport::text() const
{
    constexpr size_t mostPeaks = 40;
    QString text = line(Texts::tr("Format"), format()) + line(Texts::tr("Title"), title());
    const auto *spectrum = std::get_if<ExperimentalSpectrum>(&m_measurement);
    if (spectrum) {
        for (int d = 0; d < dimensions(); ++d)
            text += line(axisName(d), axisText(spectrum->dimensions[size_t(d)]));
        const PeakPicking::Noise noise = PeakPicking::noise(spectrum->data);
        text += line(Texts::tr("Noise"),
                     Texts::tr("%1 around %2").arg(shortened(noise.deviation), shortened(noise.baseline)));
    } else {
        const auto &nuclei = std::get<MeasuredPeaks>(m_measurement).nuclei;
        for (int d = 0; d < dimensions(); ++d)
            text += line(axisName(d), nuclei[size_t(d)].isEmpty() ? Texts::tr("nucleus unknown") : nuclei[size_t(d)]);
    }
    text += line(Texts::tr("Peaks"),
                 spectrum ? Texts::tr("%1 picked").arg(m_peaks.size()) : QString::number(m_peaks.size()));
    for (size_t i = 0; i < std::min(m_peaks.size(), mostPeaks); ++i) {
        const MeasuredPeak &peak = m_peaks[i];
        QString row = QString::number(peak.f2, 'f', 4).rightJustified(22);
        if (dimensions() == 2)
            row += QString::number(peak.f1, 'f', 4).rightJustified(12);
        row += u" ppm"_s + shortened(peak.height).rightJustified(14);
        if (peak.count > 1)
            row += Texts::tr("  counted %1 times").arg(peak.count);
        text += row + (peak.label.isEmpty() ? QString() : u"  "_s + peak.label) + u'\n';
    }
    if (m_peaks.size() > mostPeaks)
        text += Texts::tr("%1 more").arg(m_peaks.size() - mostPeaks).rightJustified(22) + u'\n';
    for (const QString &note : notes())
        text += line(Texts::tr("Note"), note);
    return text;
}

QByteArray MeasurementReport::json() const
{
    QJsonObject object{{u"format"_s, format()},
                       {u"title"_s, title()},
                       {u"kind"_s, hasPoints() ? u"spectrum"_s : u"peaks"_s},
                       {u"notes"_s, QJsonArray::fromStringList(notes())}};
    QJsonArray axes, peaks;
    const auto known = [](const QString &nucleus) { return nucleus.isEmpty() ? QJsonValue() : QJsonValue(nucleus); };
    if (const auto *spectrum = std::get_if<ExperimentalSpectrum>(&m_measurement)) {
        for (const SpectrumDimension &axis : spectrum->dimensions)
            axes.append(QJsonObject{{u"nucleus"_s, known(axis.nucleus)},
                                    {u"frequency"_s, axis.frequency > 0.0 ? QJsonValue(axis.frequency) : QJsonValue()},
                                    {u"points"_s, axis.points},
                                    {u"first"_s, axis.first},
                                    {u"last"_s, axis.ppm(axis.points - 1)},
                                    {u"step"_s, axis.step}});
        const PeakPicking::Noise noise = PeakPicking::noise(spectrum->data);
        object[u"noise"_s] = QJsonObject{{u"deviation"_s, noise.deviation}, {u"baseline"_s, noise.baseline}};
    } else {
        for (int d = 0; d < dimensions(); ++d)
            axes.append(QJsonObject{{u"nucleus"_s, known(std::get<MeasuredPeaks>(m_measurement).nuclei[size_t(d)])}});
    }
    for (const MeasuredPeak &peak : m_peaks) {
        QJsonArray position{peak.f2};
        if (dimensions() == 2)
            position.append(peak.f1);
        QJsonObject one{{u"pos"_s, position}, {u"height"_s, peak.height}, {u"label"_s, peak.label}};
        if (peak.count > 0)
            one[u"count"_s] = peak.count;
        peaks.append(one);
    }
    object[u"dimensions"_s] = axes;
    object[u"peaks"_s] = peaks;
    return QJsonDocument(object).toJson();
}

SpectrumEntry MeasurementReport::entry() const
{
    const auto &measured = std::get<ExperimentalSpectrum>(m_measurement);
    SpectrumEntry entry;
    entry.name = title();
    entry.data = toEntryMap(measured);
    entry.data.insert(u"Peaks"_s, PeakListFile::toPeakMap(m_peaks));
    entry.spectrum = Spectrum::fromMap(entry.data);
    for (qsizetype d = 0; d < entry.spectrum.axes.size(); ++d) {
        SpectrumAxis &axis = entry.spectrum.axes[d];
        const SpectrumDimension &exact = measured.dimensions[size_t(d)];
        axis.first = exact.first;
        axis.step = exact.step;
    }
    return entry;
}

void MeasurementReport::writePeaks(QIODevice &device) const
{
    const bool counted =
        std::any_of(m_peaks.begin(), m_peaks.end(), [](const MeasuredPeak &peak) { return peak.count > 0; });
    QByteArray text = dimensions() == 2 ? "position,position_f1,height,label" : "position,height,label";
    text += counted ? ",count\n" : "\n";
    for (const MeasuredPeak &peak : m_peaks) {
        NumberText::append17(text, peak.f2);
        if (dimensions() == 2)
            NumberText::append17(text += ',', peak.f1);
        NumberText::append17(text += ',', peak.height);
        text += ',' + csvField(peak.label).toUtf8();
        text += counted ? ',' + QByteArray::number(std::max(peak.count, 1)) + '\n' : QByteArray("\n");
    }
    if (device.write(text) != text.size())
        fail(Texts::tr("the data cannot be written: %1").arg(device.errorString()));
}

} // namespace Workbench
