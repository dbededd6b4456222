// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/PlotContent.h"

namespace Workbench {

/// Integrals and distances that a user has marked in a plot, with their numbers.
class PlotMarks : public QCPAbstractItem {
    Q_OBJECT

public:
    /// `f1` is null in one dimension. Integrals are those of the entries; frequencies those of `axes`.
    PlotMarks(QCustomPlot *plot, QCPAxis *f2, QCPAxis *f1, const QList<PlotEntry> &entries,
              const QList<SpectrumAxis> &axes, const PlotOptions &options);

    /// As they are written beside the marks.
    QStringList integralTexts() const;
    QStringList distanceTexts() const;

    double selectTest(const QPointF &pos, bool onlySelectable, QVariant *details = nullptr) const override;

    /// "1.25 ppm, 125.0 Hz"; without a known frequency ppm alone.
    static QString distanceText(const SpectrumAxis &axis, double ppm);

protected:
    void draw(QCPPainter *painter) override;

private:
    struct Region {
        double from;
        double to;
        QString text;
        QColor color;
    };

    QPointF pixel(const QPointF &place) const;
    void drawText(QCPPainter *painter, const QPointF &centre, const QString &text, const QColor &color) const;

    QPointer<QCPAxis> m_f2;
    QPointer<QCPAxis> m_f1;
    QList<Region> m_regions;
    QList<DistanceMark> m_distances;
    QList<SpectrumAxis> m_axes;
};

} // namespace Workbench
