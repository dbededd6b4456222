// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/StackedTraces.h"

#include "items/PeakLabelBand.h"
#include "items/SpectrumLine.h"

#include <QCoreApplication>

namespace {

constexpr double stackDistance = 1.12; // of the common height

QString tr(const char *text)
{
    return QCoreApplication::translate("StackedTraces", text);
}

} // namespace

StackedTraces::StackedTraces(QCustomPlot *plot, const QList<PlotEntry> &entries)
    : m_axisRect(new QCPAxisRect(plot, true)), m_ppm(m_axisRect->axis(QCPAxis::atBottom)),
      m_intensity(m_axisRect->axis(QCPAxis::atLeft)), m_band(new PeakLabelBand(plot, m_ppm, m_intensity))
{
    QCPLayoutGrid *layout = plot->plotLayout();
    layout->setRowSpacing(0);
    layout->addElement(0, 0, m_band);
    layout->addElement(1, 0, m_axisRect);
    layout->setRowStretchFactor(0, 0.001);
    m_axisRect->setMinimumMargins(QMargins(12, 0, 14, 4));
    m_axisRect->setRangeDrag(Qt::Horizontal);
    m_axisRect->setRangeZoom(Qt::Horizontal);
    m_axisRect->axis(QCPAxis::atTop)->setVisible(false);
    m_axisRect->axis(QCPAxis::atRight)->setVisible(false);
    plot->xAxis = m_ppm;
    plot->yAxis = m_intensity;

    PlotStyle::setUpAxis(m_ppm, entries.first().spectrum.axes.first().label());
    m_ppm->setRangeReversed(true);
    if (entries.size() == 1) {
        PlotStyle::setUpAxis(m_intensity, tr("Intensity / arb. units"));
    } else {
        PlotStyle::setUpPlainAxis(m_intensity);
        m_intensity->setLabel(tr("Intensity, each scaled to its maximum"));
    }
    addTraces(entries);
    if (entries.size() > 1)
        PlotStyle::makeLegend(plot, {m_lines.cbegin(), m_lines.cend()});
    resetRanges();
}

void StackedTraces::addTraces(const QList<PlotEntry> &entries)
{
    QList<PeakLabelBand::Peak> labels;
    double offset = 0;
    for (const PlotEntry &entry : entries) {
        auto *line = new SpectrumLine(m_ppm, m_intensity);
        line->setTrace(entry.spectrum.axes.first(), entry.spectrum.data);
        line->setPen(QPen(entry.color, 1.2));
        line->setName(entry.name);
        if (entries.size() > 1) {
            const double height = line->valueBounds().size();
            const double scale = height > 0 ? 1 / height : 1;
            line->setPlacement(scale, offset - scale * line->valueBounds().lower);
            offset += stackDistance;
        }
        m_lines.append(line);
        for (const SpectrumPeak &peak : entry.spectrum.peaks)
            labels.append({peak.f2, line->heightAt(peak.f2), peak.label, entry.color});
    }
    m_band->setPeaks(labels);
}

void StackedTraces::resetRanges()
{
    bool found = false;
    QCPRange keys = m_lines.first()->getKeyRange(found);
    QCPRange values = m_lines.first()->getValueRange(found);
    for (const SpectrumLine *line : std::as_const(m_lines)) {
        keys.expand(line->getKeyRange(found));
        values.expand(line->getValueRange(found));
    }
    if (values.size() <= 0)
        values = QCPRange(values.lower - 0.1, values.upper + 1);
    m_ppm->setRange(keys);
    m_intensity->setRange(values.lower - 0.03 * values.size(), values.upper + 0.02 * values.size());
}

QList<QCPRange> StackedTraces::ranges() const
{
    return {m_ppm->range()};
}

void StackedTraces::setRanges(const QList<QCPRange> &ranges)
{
    if (ranges.size() == 1)
        m_ppm->setRange(ranges.first());
}

bool StackedTraces::fitLayout()
{
    PlotStyle::fitTicks(m_ppm);
    if (m_intensity->ticks())
        PlotStyle::fitTicks(m_intensity);
    const int before = m_band->minimumSize().height();
    m_band->fitHeight();
    return m_band->minimumSize().height() != before;
}
