// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/PlotContent.h"
#include "items/plot/SharedLabel.h"

namespace Workbench {

/// Crosses and labels at the peaks of a 2D spectrum. Peaks at one place, those of equivalent sites, have one cross and
/// one label. A label that would cover another is left out, the highest peaks choosing first; the crosses all stay.
class CrossPeakLabels : public QCPAbstractItem {
    Q_OBJECT

public:
    CrossPeakLabels(QCustomPlot *plot, QCPAxis *f2, QCPAxis *f1);

    void setCrossesVisible(bool visible) { m_crossesVisible = visible; }
    void setLabelsVisible(bool visible) { m_labelsVisible = visible; }
    /// Peaks without a label get their cross alone.
    void addPeaks(const QList<SpectrumPeak> &peaks, const QColor &crossColor);

    /// The labels that are drawn at the present size and ranges, with their places.
    QList<LabelArea> areas() const;
    QStringList visibleTexts() const;

    double selectTest(const QPointF &pos, bool onlySelectable, QVariant *details = nullptr) const override;

protected:
    void draw(QCPPainter *painter) override;

private:
    struct Mark {
        SpectrumPeak peak;
        QColor color;
    };
    /// Peaks at one place of the screen.
    struct Place {
        QPointF at; ///< pixels
        QRectF area; ///< kept clear of labels
        QColor color;
        SharedLabel shared;
    };
    struct PlacedLabel {
        QRectF area;
        SharedLabel shared;
    };

    QRectF peakArea(const SpectrumPeak &peak, const QPointF &at) const;
    QList<Place> places() const;
    QList<PlacedLabel> placedLabels(const QList<Place> &places) const;

    QPointer<QCPAxis> m_f2;
    QPointer<QCPAxis> m_f1;
    QList<Mark> m_marks; ///< the highest first
    bool m_crossesVisible = true;
    bool m_labelsVisible = true;
};

} // namespace Workbench
