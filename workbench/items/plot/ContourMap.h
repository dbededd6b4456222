// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/Decimation.h"
#include "items/plot/PlotContent.h"

#include <memory>

namespace Workbench {

class ContourLines;
class CrossPeakLabels;
class IntensityMap;
class PlacedTrace;
class PlotMarks;

/// Two-dimensional spectra: contours over a colour map of the active one, its projections at top and left. F2 runs to
/// the left, F1 downwards. Peak lists without points are crosses, and sticks in the projections.
class ContourMap : public PlotContent {
public:
    /// `entries` is not empty; all have two dimensions or are peak lists, and the shown one has two.
    ContourMap(QCustomPlot *plot, const QList<PlotEntry> &entries, const PlotOptions &options);
    ~ContourMap() override;

    void resetRanges() override;
    QList<QCPRange> ranges() const override;
    void setRanges(const QList<QCPRange> &ranges) override;
    bool fitLayout() override;
    /// Computes colours and contours for what shows, in the resolution in which it shows.
    void prepare() override;

    QCPAxisRect *mainRect() const override { return m_main; }
    QList<QCPAxis *> ppmAxes() const override { return {m_f2, m_f1}; }
    QList<PeakMark> peakMarks(const QUuid &entry = {}) const override;
    QPointF markPlace(const QUuid &entry, double f2, double f1) const override;
    /// Maps have no scale of heights: 1.
    double heightAt(const QUuid &, const QPointF &) const override { return 1.0; }
    QList<LabelArea> labelAreas() const override;
    QString readOut(const QPointF &pixel) const override;

    CrossPeakLabels *labels() const { return m_labels; }
    PlotMarks *marks() const { return m_marks; }

private:
    struct Layer {
        PlotEntry entry;
        ContourLines *contours;
        std::vector<double> levels;
        double largest; ///< magnitude of the points
    };

    void layOut(QCustomPlot *plot);
    void addProjections(const PlotEntry &entry);
    void addSticks(const PlotEntry &entry);
    void addLayer(const PlotEntry &entry);
    /// Contours, or crosses; gives what stands for the entry in the legend.
    QCPAbstractPlottable *addEntry(const PlotEntry &entry, bool mapped);
    void addDiagonal(QCustomPlot *plot, const QList<SpectrumAxis> &axes);
    Decimation::Grid visibleGrid(const Spectrum &spectrum) const;
    void updateContours(Layer &layer, const Decimation::Grid &grid);
    void updateMap(const Spectrum &spectrum, const Decimation::Grid &grid);

    QCPAxisRect *m_main;
    QCPAxisRect *m_top;
    QCPAxisRect *m_left;
    QCPAxis *m_f2;
    QCPAxis *m_f1;
    std::unique_ptr<QCPMarginGroup> m_margins;
    QList<PlotEntry> m_entries;
    ContourLevels m_levels;
    CrossPeakLabels *m_labels;
    IntensityMap *m_map = nullptr;
    PlotMarks *m_marks = nullptr;
    QList<PlacedTrace *> m_topTraces; ///< one per entry
    QList<PlacedTrace *> m_leftTraces;
    QList<Layer> m_layers;

    // What the grids were made for.
    QSize m_preparedSize;
    QCPRange m_preparedF2;
    QCPRange m_preparedF1;
};

} // namespace Workbench
