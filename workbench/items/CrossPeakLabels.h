// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/Spectrum.h"

#include "items/CustomPlot.h"

/// Crosses and labels at the peaks of a 2D spectrum. A label that would cover another is left out, the highest peaks
/// choosing first; the crosses all stay.
class CrossPeakLabels : public QCPAbstractItem {
    Q_OBJECT

public:
    CrossPeakLabels(QCustomPlot *plot, QCPAxis *f2, QCPAxis *f1);

    /// Peaks without a label get their cross alone.
    void addPeaks(const QList<SpectrumPeak> &peaks, const QColor &crossColor);

    double selectTest(const QPointF &pos, bool onlySelectable, QVariant *details = nullptr) const override;

protected:
    void draw(QCPPainter *painter) override;

private:
    QRectF peakArea(const SpectrumPeak &peak, const QPointF &at) const;

    QPointer<QCPAxis> m_f2;
    QPointer<QCPAxis> m_f1;
    struct Mark {
        SpectrumPeak peak;
        QColor color;
    };
    QList<Mark> m_marks; ///< the highest first
};
