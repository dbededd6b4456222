// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/ContourMap.h"

#include "data/Error.h"

#include "items/plot/ContourLines.h"
#include "items/plot/Contours.h"
#include "items/plot/CrossPeakLabels.h"
#include "items/plot/IntensityMap.h"
#include "items/plot/PeakSticks.h"
#include "items/plot/PlotMarks.h"
#include "items/plot/SpectrumLine.h"

#include <QCoreApplication>

#include <cmath>

namespace Workbench {

namespace {

constexpr double projectionShare = 0.16; // of the plot's height
constexpr int smallestProjection = 24; // pixels
constexpr int largestProjection = 80;

/// White where nothing is; pale enough for lines and letters on top. Negative values redden.
QCPColorGradient mapGradient(bool negative)
{
    QCPColorGradient gradient;
    gradient.clearColorStops();
    if (negative) {
        gradient.setColorStopAt(0.0, QColor(0xe8, 0x90, 0x80));
        gradient.setColorStopAt(0.35, QColor(0xf8, 0xe0, 0xda));
        gradient.setColorStopAt(0.5, Qt::white);
        gradient.setColorStopAt(0.65, QColor(0xdc, 0xe8, 0xf6));
    } else {
        gradient.setColorStopAt(0.0, Qt::white);
        gradient.setColorStopAt(0.3, QColor(0xdc, 0xe8, 0xf6));
    }
    gradient.setColorStopAt(1.0, QColor(0x86, 0xb2, 0xe0));
    gradient.setLevelCount(201); // odd: one of them is the white in the middle
    return gradient;
}

/// The points of an axis that a range shows, and one more on either side.
Decimation::PointRange visiblePoints(const SpectrumAxis &axis, const QCPRange &range)
{
    const auto point = [&](double ppm) { return std::clamp((ppm - axis.first) / axis.step, -1.0, double(axis.size)); };
    return {std::clamp(int(std::floor(point(range.upper))) - 1, 0, axis.size - 1),
            std::clamp(int(std::ceil(point(range.lower))) + 1, 0, axis.size - 1)};
}

} // namespace

ContourMap::ContourMap(QCustomPlot *plot, const QList<PlotEntry> &entries, const PlotOptions &options)
    : m_main(new QCPAxisRect(plot, true)),
      m_top(new QCPAxisRect(plot, true)),
      m_left(new QCPAxisRect(plot, true)),
      m_f2(m_main->axis(QCPAxis::atBottom)),
      m_f1(m_main->axis(QCPAxis::atRight)),
      m_margins(std::make_unique<QCPMarginGroup>(plot)),
      m_entries(entries),
      m_levels(options.contours.bounded()),
      m_labels(new CrossPeakLabels(plot, m_f2, m_f1))
{
    layOut(plot);
    const PlotEntry &shown = shownEntry(entries);
    PlotStyle::setUpShiftAxis(m_f2, shown.axes[0], options.hertz);
    PlotStyle::setUpShiftAxis(m_f1, shown.axes[1], options.hertz);
    m_f2->setRangeReversed(true);
    m_f1->setRangeReversed(true);

    m_map = new IntensityMap(m_f2, m_f1);
    m_map->setLayer(QStringLiteral("background"));
    m_map->setVisible(false);
    addDiagonal(plot, shown.axes);
    m_labels->setLayer(QStringLiteral("overlay"));
    m_labels->setCrossesVisible(options.crosses);
    m_labels->setLabelsVisible(options.labels);
    QList<QCPAbstractPlottable *> named;
    const QCPAbstractPlottable *active = nullptr;
    for (const PlotEntry &entry : entries) {
        named.append(addEntry(entry, &entry == &shown));
        if (entry.active)
            active = named.last();
    }
    if (entries.size() > 1 && options.legend)
        PlotStyle::makeLegend(plot, named, active);
    m_marks = new PlotMarks(plot, m_f2, m_f1, entries, shown.axes, options);
    resetRanges();
}

ContourMap::~ContourMap() = default;

void ContourMap::layOut(QCustomPlot *plot)
{
    QCPLayoutGrid *layout = plot->plotLayout();
    layout->setRowSpacing(2);
    layout->setColumnSpacing(2);
    layout->addElement(0, 1, m_top);
    layout->addElement(1, 0, m_left);
    layout->addElement(1, 1, m_main);
    layout->setRowStretchFactor(0, 0.001);
    layout->setColumnStretchFactor(0, 0.001);
    m_top->setMarginGroup(QCP::msLeft | QCP::msRight, m_margins.get());
    m_left->setMarginGroup(QCP::msTop | QCP::msBottom, m_margins.get());
    m_main->setMarginGroup(QCP::msLeft | QCP::msRight | QCP::msTop | QCP::msBottom, m_margins.get());
    for (QCPAxisRect *rect : {m_top, m_left, m_main})
        rect->setMinimumMargins(QMargins(0, 0, 0, 0));
    m_top->setMinimumMargins(QMargins(0, 6, 0, 0));
    m_left->setMinimumMargins(QMargins(6, 0, 0, 0));

    for (QCPAxis *axis : m_main->axes())
        PlotStyle::setUpPlainAxis(axis);
    for (QCPAxisRect *rect : {m_top, m_left}) {
        for (QCPAxis *axis : rect->axes())
            axis->setVisible(false);
    }
    plot->xAxis = m_f2;
    plot->yAxis = m_f1;

    QCPAxis *topPpm = m_top->axis(QCPAxis::atBottom);
    QCPAxis *leftPpm = m_left->axis(QCPAxis::atRight);
    topPpm->setRangeReversed(true);
    leftPpm->setRangeReversed(true);
    // Intensity grows away from the map.
    m_left->axis(QCPAxis::atBottom)->setRangeReversed(true);
    const auto follow = [](QCPAxis *follower) {
        return [follower](const QCPRange &range) { follower->setRange(range); };
    };
    QObject::connect(m_f2, static_cast<void (QCPAxis::*)(const QCPRange &)>(&QCPAxis::rangeChanged), topPpm,
                     follow(topPpm));
    QObject::connect(m_f1, static_cast<void (QCPAxis::*)(const QCPRange &)>(&QCPAxis::rangeChanged), leftPpm,
                     follow(leftPpm));
}

QCPAbstractPlottable *ContourMap::addEntry(const PlotEntry &entry, bool mapped)
{
    if (entry.isPeakList()) {
        addSticks(entry);
        m_labels->addPeaks(entry.spectrum.peaks, entry.color);
        return m_topTraces.last();
    }
    addProjections(entry);
    addLayer(entry);
    QCPAbstractPlottable *contours = m_layers.last().contours;
    if (mapped) {
        m_labels->addPeaks(entry.spectrum.peaks, QColor(0x30, 0x30, 0x30));
        // The map's spectrum comes first: its colours lie beneath the contours of all.
        m_layers.move(m_layers.size() - 1, 0);
    }
    return contours;
}

void ContourMap::addSticks(const PlotEntry &entry)
{
    const auto add = [&](QCPAxis *ppm, QCPAxis *intensity, const QList<SpectrumPeak> &peaks) {
        auto *sticks = new PeakSticks(ppm, intensity);
        sticks->setPeaks(peaks);
        const double height = sticks->valueBounds().size();
        sticks->setPlacement(height > 0 ? 1 / height : 1, 0);
        sticks->setPen(QPen(entry.color, 1));
        sticks->setName(entry.name);
        return sticks;
    };
    QList<SpectrumPeak> turned = entry.spectrum.peaks;
    for (SpectrumPeak &peak : turned)
        std::swap(peak.f2, peak.f1);
    m_topTraces.append(add(m_top->axis(QCPAxis::atBottom), m_top->axis(QCPAxis::atLeft), entry.spectrum.peaks));
    m_leftTraces.append(add(m_left->axis(QCPAxis::atRight), m_left->axis(QCPAxis::atBottom), turned));
}

void ContourMap::addProjections(const PlotEntry &entry)
{
    const auto &axes = entry.spectrum.axes;
    auto projections = Decimation::projections(entry.spectrum.real(), axes[0].size);
    const auto add = [&](QCPAxis *ppm, QCPAxis *intensity, const SpectrumAxis &axis, std::vector<double> &&values) {
        auto *line = new SpectrumLine(ppm, intensity);
        line->setTrace(axis, {std::move(values)});
        const double height = line->valueBounds().size();
        line->setPlacement(height > 0 ? 1 / height : 1, 0);
        line->setPen(QPen(entry.color, 1));
        return line;
    };
    m_topTraces.append(
        add(m_top->axis(QCPAxis::atBottom), m_top->axis(QCPAxis::atLeft), axes[0], std::move(projections.columns)));
    m_leftTraces.append(
        add(m_left->axis(QCPAxis::atRight), m_left->axis(QCPAxis::atBottom), axes[1], std::move(projections.rows)));
}

void ContourMap::addLayer(const PlotEntry &entry)
{
    auto *contours = new ContourLines(m_f2, m_f1);
    contours->setName(entry.name);
    contours->setPen(QPen(entry.color, 0.8));
    contours->setNegativePen(QPen(entry.color.lighter(170), 0.8, Qt::DashLine));
    // The heights belong to the whole spectrum: they must not move while one zooms.
    const std::span<const double> points = entry.spectrum.real();
    double largest = 0;
    for (double value : points)
        largest = std::isfinite(value) ? std::max(largest, std::abs(value)) : largest;
    m_layers.append(
        {entry, contours, Contours::levels(points, m_levels.lowest, m_levels.factor, m_levels.count), largest});
}

void ContourMap::addDiagonal(QCustomPlot *plot, const QList<SpectrumAxis> &axes)
{
    if (axes[0].element.isEmpty() || axes[0].nucleus() != axes[1].nucleus())
        return;
    auto *diagonal = new QCPItemStraightLine(plot);
    diagonal->setClipAxisRect(m_main);
    for (QCPItemPosition *position : {diagonal->point1, diagonal->point2})
        position->setAxes(m_f2, m_f1);
    diagonal->point1->setCoords(0, 0);
    diagonal->point2->setCoords(1, 1);
    diagonal->setPen(QPen(QColor(0xa0, 0xa6, 0xae), 0.8, Qt::DashLine));
}

void ContourMap::resetRanges()
{
    const auto full = [](const QList<PlacedTrace *> &traces) {
        bool found = false;
        QCPRange range = traces.first()->getKeyRange(found);
        for (const PlacedTrace *trace : traces)
            range.expand(trace->getKeyRange(found));
        return range;
    };
    setRanges({full(m_topTraces), full(m_leftTraces)});
    noteFullRanges();
    for (QCPAxis *axis : {m_top->axis(QCPAxis::atLeft), m_left->axis(QCPAxis::atBottom)}) {
        QCPRange values(0, 0);
        bool found = false;
        for (const PlacedTrace *trace : axis == m_top->axis(QCPAxis::atLeft) ? m_topTraces : m_leftTraces)
            values.expand(trace->getValueRange(found));
        axis->setRange(values.size() > 0 ? QCPRange(values.lower - 0.04, values.upper + 0.04) : QCPRange(-0.1, 1));
    }
}

QList<QCPRange> ContourMap::ranges() const
{
    return {m_f2->range(), m_f1->range()};
}

void ContourMap::setRanges(const QList<QCPRange> &ranges)
{
    if (ranges.size() != 2)
        return;
    m_f2->setRange(ranges[0]);
    m_f1->setRange(ranges[1]);
}

Decimation::Grid ContourMap::visibleGrid(const Spectrum &spectrum) const
{
    return Decimation::blockMaxima(spectrum.real(), spectrum.axes[0].size,
                                   visiblePoints(spectrum.axes[0], m_f2->range()),
                                   visiblePoints(spectrum.axes[1], m_f1->range()), m_main->width(), m_main->height());
}

QList<PeakMark> ContourMap::peakMarks(const QUuid &entry) const
{
    QList<PeakMark> marks;
    for (const PlotEntry &shown : m_entries) {
        if (!entry.isNull() && shown.id != entry)
            continue;
        for (const SpectrumPeak &peak : shown.spectrum.peaks) {
            if (!m_f2->range().contains(peak.f2) || !m_f1->range().contains(peak.f1))
                continue;
            const QPointF at = markPlace(shown.id, peak.f2, peak.f1);
            marks.append({shown.id, peak, at, at.y()});
        }
    }
    return marks;
}

QPointF ContourMap::markPlace(const QUuid &, double f2, double f1) const
{
    return {m_f2->coordToPixel(f2), m_f1->coordToPixel(f1)};
}

QList<LabelArea> ContourMap::labelAreas() const
{
    return m_labels->areas();
}

QString ContourMap::readOut(const QPointF &pixel) const
{
    if (!m_main->rect().contains(pixel.toPoint()))
        return {};
    const PlotEntry &shown = shownEntry(m_entries);
    const auto &axes = shown.axes;
    const double f2 = m_f2->pixelToCoord(pixel.x()), f1 = m_f1->pixelToCoord(pixel.y());
    QString text = (axes[0].nucleus() + u' ' + ppmText(m_f2, f2)).trimmed() + QStringLiteral("   ")
        + (axes[1].nucleus() + u' ' + ppmText(m_f1, f1)).trimmed();
    if (shown.isPeakList())
        return text;
    const double column = std::round((f2 - axes[0].first) / axes[0].step);
    const double row = std::round((f1 - axes[1].first) / axes[1].step);
    if (column >= 0 && column < axes[0].size && row >= 0 && row < axes[1].size) {
        const double value = shown.spectrum.real()[size_t(row) * size_t(axes[0].size) + size_t(column)];
        text += Texts::tr("   intensity %1").arg(value, 0, 'g', 4);
    }
    return text;
}

bool ContourMap::fitLayout()
{
    PlotStyle::fitTicks(m_f2);
    PlotStyle::fitTicks(m_f1);
    const int height = m_main->parentPlot()->viewport().height();
    const int size = std::clamp(int(projectionShare * height), smallestProjection, largestProjection);
    if (m_top->minimumSize().height() == size)
        return false;
    m_top->setMinimumSize(0, size);
    m_top->setMaximumSize(QWIDGETSIZE_MAX, size);
    m_left->setMinimumSize(size, 0);
    m_left->setMaximumSize(size, QWIDGETSIZE_MAX);
    return true;
}

void ContourMap::prepare()
{
    const QSize size = m_main->rect().size();
    if (size.isEmpty() || (size == m_preparedSize && m_f2->range() == m_preparedF2 && m_f1->range() == m_preparedF1))
        return;
    m_preparedSize = size;
    m_preparedF2 = m_f2->range();
    m_preparedF1 = m_f1->range();
    for (Layer &layer : m_layers) {
        const Decimation::Grid grid = visibleGrid(layer.entry.spectrum);
        if (&layer == &m_layers.first())
            updateMap(layer.entry.spectrum, grid);
        updateContours(layer, grid);
    }
}

void ContourMap::updateContours(Layer &layer, const Decimation::Grid &grid)
{
    const auto &axes = layer.entry.spectrum.axes;
    QList<ContourLines::Level> levels;
    for (double level : layer.levels) {
        ContourLines::Level drawn{level < 0, {}};
        for (QPolygonF &line : Contours::lines(grid.cells, grid.columns, grid.rows, level)) {
            for (QPointF &p : line) {
                p = QPointF(axes[0].ppm(grid.firstColumn + p.x() * grid.columnStep),
                            axes[1].ppm(grid.firstRow + p.y() * grid.rowStep));
            }
            drawn.lines.append(std::move(line));
        }
        levels.append(std::move(drawn));
    }
    layer.contours->setLevels(levels);
}

void ContourMap::updateMap(const Spectrum &spectrum, const Decimation::Grid &grid)
{
    m_map->setVisible(grid.columns > 1 && grid.rows > 1);
    if (!m_map->visible())
        return;
    const auto range = [](const SpectrumAxis &axis, double first, double step, int cells) {
        return QCPRange(axis.ppm(first + (cells - 1) * step), axis.ppm(first));
    };
    // The library counts cells from low to high ppm, spectra the other way.
    QCPColorMapData *data = m_map->data();
    data->setSize(grid.columns, grid.rows);
    data->setRange(range(spectrum.axes[0], grid.firstColumn, grid.columnStep, grid.columns),
                   range(spectrum.axes[1], grid.firstRow, grid.rowStep, grid.rows));
    for (int row = 0; row < grid.rows; ++row) {
        for (int column = 0; column < grid.columns; ++column)
            data->setCell(grid.columns - 1 - column, grid.rows - 1 - row, grid.cell(column, row));
    }
    const auto &levels = m_layers.first().levels;
    const bool negative = std::any_of(levels.begin(), levels.end(), [](double level) { return level < 0; });
    const double largest = m_layers.first().largest;
    m_map->setGradient(mapGradient(negative));
    m_map->setDataRange(largest > 0 ? QCPRange(negative ? -largest : 0, largest) : QCPRange(0, 1));
}

} // namespace Workbench
