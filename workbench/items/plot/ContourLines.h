// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/CustomPlot.h"

namespace Workbench {

/// Lines of equal height over two ppm axes.
class ContourLines : public QCPAbstractPlottable {
    Q_OBJECT

public:
    ContourLines(QCPAxis *f2, QCPAxis *f1);

    struct Level {
        bool negative = false;
        QList<QPolygonF> lines; ///< ppm: F2, F1
    };
    void setLevels(const QList<Level> &levels) { m_levels = levels; }
    void setNegativePen(const QPen &pen) { m_negativePen = pen; }
    const QList<Level> &levels() const { return m_levels; }

    double selectTest(const QPointF &pos, bool onlySelectable, QVariant *details = nullptr) const override;
    QCPRange getKeyRange(bool &found, QCP::SignDomain domain = QCP::sdBoth) const override;
    QCPRange getValueRange(bool &found, QCP::SignDomain domain = QCP::sdBoth,
                           const QCPRange &keys = QCPRange()) const override;

protected:
    void draw(QCPPainter *painter) override;
    void drawLegendIcon(QCPPainter *painter, const QRectF &rect) const override;

private:
    QCPRange bounds(bool &found, bool vertical) const;

    QList<Level> m_levels;
    QPen m_negativePen;
};

} // namespace Workbench
