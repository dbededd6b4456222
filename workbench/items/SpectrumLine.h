// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/Spectrum.h"

#include "items/CustomPlot.h"

/// A trace over a ppm axis, drawn from the shared points: no copy, and no more detail than the device can show.
class SpectrumLine : public QCPAbstractPlottable {
    Q_OBJECT

public:
    SpectrumLine(QCPAxis *ppmAxis, QCPAxis *intensityAxis);

    /// The first vector of `data` is drawn.
    void setTrace(const SpectrumAxis &axis, const QList<DoubleVector> &data);
    /// Drawn at offset + scale * value.
    void setPlacement(double scale, double offset);
    /// Smallest and largest finite value, 0 included, before the placement.
    QCPRange valueBounds() const { return m_bounds; }
    /// Where the line runs at a position: the larger of the two points around it, placed.
    double heightAt(double ppm) const;

    double selectTest(const QPointF &pos, bool onlySelectable, QVariant *details = nullptr) const override;
    QCPRange getKeyRange(bool &found, QCP::SignDomain domain = QCP::sdBoth) const override;
    QCPRange getValueRange(bool &found, QCP::SignDomain domain = QCP::sdBoth,
                           const QCPRange &keys = QCPRange()) const override;

protected:
    void draw(QCPPainter *painter) override;
    void drawLegendIcon(QCPPainter *painter, const QRectF &rect) const override;

private:
    std::span<const double> values() const;

    SpectrumAxis m_axis;
    QList<DoubleVector> m_data;
    QCPRange m_bounds;
    double m_scale = 1.0;
    double m_offset = 0.0;
};
