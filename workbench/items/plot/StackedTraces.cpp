// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/StackedTraces.h"

#include "data/Error.h"

#include "items/plot/PeakLabelBand.h"
#include "items/plot/PeakSticks.h"
#include "items/plot/PlotMarks.h"
#include "items/plot/SpectrumLine.h"

#include <QCoreApplication>

#include <cmath>

namespace Workbench {

namespace {

constexpr double stackDistance = 1.12; // of the common height
constexpr double stickWidth = 1.4; // pixels

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

    const QList<SpectrumAxis> axes = shownEntry(entries).axes;
    PlotStyle::setUpShiftAxis(m_ppm, axes.value(0), options.hertz);
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
    m_marks = new PlotMarks(plot, m_ppm, nullptr, entries, axes, options);
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

PlacedTrace *StackedTraces::makeSticksBeyond(const PlotEntry &entry, PlacedTrace *trace, double scale,
                                             double offset) const
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
    sticks->setPlacement(height > 0 ? scale / height : scale, offset);
    trace->setName(Texts::tr("%1 (%2 of %3 peaks beyond its range)")
                       .arg(entry.name, QString::number(beyond.size()), QString::number(entry.spectrum.peaks.size())));
    return sticks;
}

PlacedTrace *StackedTraces::addSticks(const PlotEntry &entry, const PlacedTrace *line)
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
    return sticks;
}

void StackedTraces::addTraces(const QList<PlotEntry> &entries, const PlotOptions &options)
{
    const bool stacked = entries.size() > 1;
    double level = 0; // of the lowest point of the next trace
    for (const PlotEntry &entry : entries) {
        const TraceStyle style = options.traces.value(entry.id);
        PlacedTrace *line = makeTrace(entry);
        line->setName(entry.name);
        PlacedTrace *beyond = nullptr;
        const QCPRange bounds = line->valueBounds();
        const double height = bounds.size() > 0 ? bounds.size() : 1;
        m_unit = stacked ? 1 : height;
        const double scale = m_unit / height;
        const double base = stacked && !options.overlay ? level - scale * bounds.lower : 0;
        m_values.expand(QCPRange(base + scale * bounds.lower, base + scale * bounds.upper));
        line->setPlacement(scale * style.scale, base + m_unit * style.offset);
        if (stacked && !entry.isPeakList())
            beyond = makeSticksBeyond(entry, line, style.scale, base + style.offset);
        level += stackDistance;
        PlacedTrace *sticks = options.sticks && !entry.isPeakList() ? addSticks(entry, line) : nullptr;
        m_traces.append({entry, line, beyond, sticks});
    }
    m_labelled = options.labels;
    placeLabels();
}

void StackedTraces::placeLabels()
{
    QList<PeakLabelBand::Peak> labels;
    for (const Trace &trace : m_labelled ? m_traces : QList<Trace>()) {
        for (const SpectrumPeak &peak : trace.entry.spectrum.peaks)
            labels.append({peak.f2, topAt(trace, peak.f2), peak.label, trace.entry.color, peak.id});
    }
    m_band->setPeaks(labels);
}

void StackedTraces::resetRanges()
{
    setZoom(1);
    bool found = false;
    QCPRange keys = m_traces.first().line->getKeyRange(found);
    for (const Trace &trace : std::as_const(m_traces))
        keys.expand(trace.line->getKeyRange(found));
    // That of the traces as they were: one that is dragged must not drag the axis along.
    QCPRange values = m_values;
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
    return {m_ppm->range(), QCPRange(part(m_intensity->range().lower), part(m_intensity->range().upper)),
            QCPRange(0, m_zoom)};
}

void StackedTraces::setRanges(const QList<QCPRange> &ranges)
{
    if (ranges.isEmpty())
        return;
    m_ppm->setRange(ranges.first());
    const auto value = [&](double part) { return m_fullIntensity.lower + part * m_fullIntensity.size(); };
    if (ranges.size() > 1)
        m_intensity->setRange(value(ranges[1].lower), value(ranges[1].upper));
    if (ranges.size() > 2 && m_traces.size() > 1)
        setZoom(ranges[2].upper);
}

void StackedTraces::scaleIntensity(double factor)
{
    constexpr double most = 1e6;
    if (m_traces.size() == 1) {
        // The axis has numbers, which follow.
        const double size = m_intensity->range().size() / factor;
        if (size < m_fullIntensity.size() * most && size > m_fullIntensity.size() / most)
            m_intensity->scaleRange(1 / factor, m_traces.first().line->placed(0));
    } else if (m_zoom * factor < most && m_zoom * factor > 1 / most) {
        setZoom(m_zoom * factor);
    }
}

void StackedTraces::setZoom(double zoom)
{
    for (const Trace &trace : std::as_const(m_traces)) {
        for (PlacedTrace *placed : {trace.line, trace.beyond, trace.sticks}) {
            if (placed)
                placed->setPlacement((placed->placed(1) - placed->placed(0)) * zoom / m_zoom, placed->placed(0));
        }
    }
    m_zoom = zoom;
    placeLabels();
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

QUuid StackedTraces::traceAt(const QPointF &pixel) const
{
    const double ppm = m_ppm->pixelToCoord(pixel.x());
    QUuid nearest;
    double least = std::numeric_limits<double>::infinity();
    for (const Trace &trace : m_traces) {
        const double top = m_intensity->coordToPixel(topAt(trace, ppm));
        const double base = m_intensity->coordToPixel(trace.line->placed(0));
        const double distance = std::abs(pixel.y() - std::clamp(pixel.y(), std::min(top, base), std::max(top, base)));
        if (distance < least) {
            least = distance;
            nearest = trace.entry.id;
        }
    }
    return nearest;
}

double StackedTraces::traceHeightPerPixel() const
{
    return m_intensity->range().size() / std::max(1, m_axisRect->height()) / m_unit;
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
