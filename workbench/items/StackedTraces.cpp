// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/StackedTraces.h"

#include "items/PeakLabelBand.h"
#include "items/PeakSticks.h"
#include "items/SpectrumLine.h"

#include <QCoreApplication>

namespace {

constexpr double stackDistance = 1.12; // of the common height
constexpr double stickWidth = 1.4; // pixels

QString tr(const char *text)
{
    return QCoreApplication::translate("StackedTraces", text);
}

QString axisLabel(const QList<PlotEntry> &entries)
{
    for (const PlotEntry &entry : entries) {
        if (!entry.isPeakList())
            return entry.spectrum.axes.first().label();
    }
    return SpectrumAxis().label();
}

} // namespace

StackedTraces::StackedTraces(QCustomPlot *plot, const QList<PlotEntry> &entries)
    : m_axisRect(new QCPAxisRect(plot, true)),
      m_ppm(m_axisRect->axis(QCPAxis::atBottom)),
      m_intensity(m_axisRect->axis(QCPAxis::atLeft)),
      m_band(new PeakLabelBand(plot, m_ppm, m_intensity))
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

    PlotStyle::setUpAxis(m_ppm, axisLabel(entries));
    m_ppm->setRangeReversed(true);
    if (entries.size() == 1) {
        PlotStyle::setUpAxis(m_intensity, tr("Intensity / arb. units"));
    } else {
        PlotStyle::setUpPlainAxis(m_intensity);
        m_intensity->setPadding(4);
        m_intensity->setLabel(tr("Relative intensity"));
    }
    addTraces(entries);
    if (entries.size() > 1) {
        const auto active = std::find_if(entries.cbegin(), entries.cend(), [](const PlotEntry &e) { return e.active; });
        PlotStyle::makeLegend(plot, {m_traces.cbegin(), m_traces.cend()},
                              active == entries.cend() ? nullptr : m_traces.at(active - entries.cbegin()));
    }
    resetRanges();
}

PlacedTrace *StackedTraces::makeTrace(const PlotEntry &entry) const
{
    if (entry.isPeakList()) {
        auto *sticks = new PeakSticks(m_ppm, m_intensity);
        sticks->setPeaks(entry.spectrum.peaks);
        sticks->setPen(QPen(entry.color, stickWidth));
        return sticks;
    }
    auto *line = new SpectrumLine(m_ppm, m_intensity);
    line->setTrace(entry.spectrum.axes.first(), entry.spectrum.data);
    line->setPen(QPen(entry.color, 1));
    return line;
}

PlacedTrace *StackedTraces::makeSticksBeyond(const PlotEntry &entry, PlacedTrace *trace, double offset) const
{
    bool found = false;
    const QCPRange computed = trace->getKeyRange(found);
    QList<SpectrumPeak> beyond;
    for (const SpectrumPeak &peak : entry.spectrum.peaks) {
        if (!computed.contains(peak.f2))
            beyond.append(peak);
    }
    if (beyond.isEmpty())
        return nullptr;
    auto *sticks = new PeakSticks(m_ppm, m_intensity);
    sticks->setPeaks(beyond);
    sticks->setPen(QPen(entry.color, stickWidth, Qt::DotLine));
    const double height = sticks->valueBounds().size();
    sticks->setPlacement(height > 0 ? 1 / height : 1, offset);
    trace->setName(
        tr("%1 (%2 of %3 peaks beyond its range)").arg(entry.name).arg(beyond.size()).arg(entry.spectrum.peaks.size()));
    return sticks;
}

void StackedTraces::addTraces(const QList<PlotEntry> &entries)
{
    const bool stacked = entries.size() > 1;
    QList<PeakLabelBand::Peak> labels;
    double offset = 0;
    for (const PlotEntry &entry : entries) {
        PlacedTrace *trace = makeTrace(entry);
        trace->setName(entry.name);
        PlacedTrace *beyond = nullptr;
        if (stacked) {
            const double height = trace->valueBounds().size();
            const double scale = height > 0 ? 1 / height : 1;
            const double base = offset - scale * trace->valueBounds().lower;
            trace->setPlacement(scale, base);
            if (!entry.isPeakList())
                beyond = makeSticksBeyond(entry, trace, base);
            offset += stackDistance;
        }
        m_traces.append(trace);
        for (const SpectrumPeak &peak : entry.spectrum.peaks) {
            double top = trace->heightAt(peak.f2);
            if (beyond)
                top = std::max(top, beyond->heightAt(peak.f2));
            labels.append({peak.f2, top, peak.label, entry.color});
        }
    }
    m_band->setPeaks(labels);
}

void StackedTraces::resetRanges()
{
    bool found = false;
    QCPRange keys = m_traces.first()->getKeyRange(found);
    QCPRange values = m_traces.first()->getValueRange(found);
    for (const PlacedTrace *trace : std::as_const(m_traces)) {
        keys.expand(trace->getKeyRange(found));
        values.expand(trace->getValueRange(found));
    }
    if (values.size() <= 0)
        values = QCPRange(values.lower - 0.1, values.upper + 1);
    m_ppm->setRange(keys);
    m_intensity->setRange(values.lower - 0.03 * values.size(), values.upper + 0.02 * values.size());
    noteFullRanges();
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
