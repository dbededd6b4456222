// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/StackedTraces.h"

#include "data/Error.h"

#include "items/plot/PeakLabelBand.h"
#include "items/plot/PeakSticks.h"
#include "items/plot/SpectrumLine.h"

#include <QCoreApplication>

#include <cmath>

namespace Workbench {

namespace {

constexpr double stackDistance = 1.12; // of the common height
constexpr double stickWidth = 1.4; // pixels

QString axisLabel(const QList<PlotEntry> &entries)
{
    for (const PlotEntry &entry : entries) {
        if (!entry.isPeakList())
            return entry.spectrum.axes.first().label();
    }
    return SpectrumAxis().label();
}

} // namespace

StackedTraces::StackedTraces(QCustomPlot *plot, const QList<PlotEntry> &entries, const PlotOptions &options)
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
    m_axisRect->axis(QCPAxis::atTop)->setVisible(false);
    m_axisRect->axis(QCPAxis::atRight)->setVisible(false);
    plot->xAxis = m_ppm;
    plot->yAxis = m_intensity;

    PlotStyle::setUpAxis(m_ppm, axisLabel(entries));
    m_ppm->setRangeReversed(true);
    if (entries.size() == 1) {
        PlotStyle::setUpAxis(m_intensity, Texts::tr("Intensity / arb. units"));
    } else {
        PlotStyle::setUpPlainAxis(m_intensity);
        m_intensity->setPadding(4);
        m_intensity->setLabel(Texts::tr("Relative intensity"));
    }
    addTraces(entries, options);
    if (entries.size() > 1 && options.legend) {
        QList<QCPAbstractPlottable *> lines;
        const QCPAbstractPlottable *active = nullptr;
        for (const Trace &trace : std::as_const(m_traces)) {
            lines.append(trace.line);
            if (trace.entry.active)
                active = trace.line;
        }
        PlotStyle::makeLegend(plot, lines, active);
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
    trace->setName(Texts::tr("%1 (%2 of %3 peaks beyond its range)")
                       .arg(entry.name, QString::number(beyond.size()), QString::number(entry.spectrum.peaks.size())));
    return sticks;
}

void StackedTraces::addSticks(const PlotEntry &entry, const PlacedTrace *line)
{
    QList<SpectrumPeak> onCurve = entry.spectrum.peaks;
    for (SpectrumPeak &peak : onCurve)
        peak.height = line->unplaced(line->heightAt(peak.f2));
    auto *sticks = new PeakSticks(m_ppm, m_intensity);
    sticks->setPeaks(onCurve);
    sticks->setPlacement(line->placed(1) - line->placed(0), line->placed(0));
    QColor color = entry.color;
    color.setAlpha(150);
    sticks->setPen(QPen(color, stickWidth));
}

void StackedTraces::addTraces(const QList<PlotEntry> &entries, const PlotOptions &options)
{
    const bool stacked = entries.size() > 1;
    QList<PeakLabelBand::Peak> labels;
    double offset = 0;
    for (const PlotEntry &entry : entries) {
        PlacedTrace *line = makeTrace(entry);
        line->setName(entry.name);
        PlacedTrace *beyond = nullptr;
        if (stacked) {
            const double height = line->valueBounds().size();
            const double scale = height > 0 ? 1 / height : 1;
            const double base = offset - scale * line->valueBounds().lower;
            line->setPlacement(scale, base);
            if (!entry.isPeakList())
                beyond = makeSticksBeyond(entry, line, base);
            offset += stackDistance;
        }
        if (options.sticks && !entry.isPeakList())
            addSticks(entry, line);
        m_traces.append({entry, line, beyond});
        for (const SpectrumPeak &peak : entry.spectrum.peaks)
            labels.append({peak.f2, topAt(m_traces.last(), peak.f2), peak.label, entry.color, peak.id});
    }
    if (options.labels)
        m_band->setPeaks(labels);
}

void StackedTraces::resetRanges()
{
    bool found = false;
    QCPRange keys = m_traces.first().line->getKeyRange(found);
    QCPRange values = m_traces.first().line->getValueRange(found);
    for (const Trace &trace : std::as_const(m_traces)) {
        keys.expand(trace.line->getKeyRange(found));
        values.expand(trace.line->getValueRange(found));
    }
    if (values.size() <= 0)
        values = QCPRange(values.lower - 0.1, values.upper + 1);
    m_fullIntensity = QCPRange(values.lower - 0.03 * values.size(), values.upper + 0.02 * values.size());
    m_ppm->setRange(keys);
    m_intensity->setRange(m_fullIntensity);
    noteFullRanges();
}

QList<QCPRange> StackedTraces::ranges() const
{
    const auto part = [&](double value) { return (value - m_fullIntensity.lower) / m_fullIntensity.size(); };
    return {m_ppm->range(), QCPRange(part(m_intensity->range().lower), part(m_intensity->range().upper))};
}

void StackedTraces::setRanges(const QList<QCPRange> &ranges)
{
    if (ranges.isEmpty())
        return;
    m_ppm->setRange(ranges.first());
    const auto value = [&](double part) { return m_fullIntensity.lower + part * m_fullIntensity.size(); };
    if (ranges.size() > 1)
        m_intensity->setRange(value(ranges[1].lower), value(ranges[1].upper));
}

void StackedTraces::scaleIntensity(double factor, const QPointF &pixel)
{
    double base = m_traces.first().line->placed(0);
    for (const Trace &trace : std::as_const(m_traces)) {
        const double next = trace.line->placed(0);
        if (next > base && m_intensity->coordToPixel(next) >= pixel.y())
            base = next;
    }
    constexpr double most = 1e6;
    const double size = m_intensity->range().size() / factor;
    if (size < m_fullIntensity.size() * most && size > m_fullIntensity.size() / most)
        m_intensity->scaleRange(1 / factor, base);
}

const StackedTraces::Trace *StackedTraces::find(const QUuid &entry) const
{
    const auto it =
        std::find_if(m_traces.cbegin(), m_traces.cend(), [&](const Trace &trace) { return trace.entry.id == entry; });
    return it == m_traces.cend() ? nullptr : &*it;
}

double StackedTraces::topAt(const Trace &trace, double ppm) const
{
    const double top = trace.line->heightAt(ppm);
    return trace.beyond ? std::max(top, trace.beyond->heightAt(ppm)) : top;
}

QList<PeakMark> StackedTraces::peakMarks(const QUuid &entry) const
{
    QList<PeakMark> marks;
    for (const Trace &trace : m_traces) {
        if (!entry.isNull() && trace.entry.id != entry)
            continue;
        const double foot = m_intensity->coordToPixel(trace.line->placed(0));
        for (const SpectrumPeak &peak : trace.entry.spectrum.peaks) {
            if (m_ppm->range().contains(peak.f2))
                marks.append({trace.entry.id, peak, markPlace(trace.entry.id, peak.f2, 0), foot});
        }
    }
    return marks;
}

QPointF StackedTraces::markPlace(const QUuid &entry, double f2, double) const
{
    const Trace *trace = find(entry);
    const double top = trace ? topAt(*trace, f2) : 0.0;
    // A curve that is higher than the plot leaves it at its upper edge.
    return {m_ppm->coordToPixel(f2), std::max(m_intensity->coordToPixel(top), double(m_axisRect->top()))};
}

double StackedTraces::heightAt(const QUuid &entry, const QPointF &pixel) const
{
    const Trace *trace = find(entry);
    const double value = m_intensity->pixelToCoord(pixel.y());
    return trace ? trace->line->unplaced(value) : value;
}

QList<LabelArea> StackedTraces::labelAreas() const
{
    return m_band->areas();
}

QString StackedTraces::readOut(const QPointF &pixel) const
{
    if (!m_axisRect->rect().contains(pixel.toPoint()))
        return {};
    const double ppm = m_ppm->pixelToCoord(pixel.x());
    for (const Trace &trace : m_traces) {
        if (!trace.entry.active || trace.entry.isPeakList())
            continue;
        const SpectrumAxis &axis = trace.entry.spectrum.axes.first();
        const double point = std::round((ppm - axis.first) / axis.step);
        QString text = (axis.nucleus() + u' ' + ppmText(m_ppm, ppm)).trimmed();
        if (point >= 0 && point < axis.size)
            text += Texts::tr("   intensity %1").arg(trace.entry.spectrum.real()[size_t(point)], 0, 'g', 4);
        return text;
    }
    return ppmText(m_ppm, ppm);
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

} // namespace Workbench
