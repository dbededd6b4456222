// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/CustomPlot.h"

#include <span>

namespace Workbench {

/// Something that stands over a ppm axis in a stack: drawn at offset + scale * value.
class PlacedTrace : public QCPAbstractPlottable {
    Q_OBJECT

public:
    PlacedTrace(QCPAxis *ppmAxis, QCPAxis *intensityAxis);

    void setPlacement(double scale, double offset);
    double placed(double value) const { return m_offset + m_scale * value; }
    double unplaced(double height) const { return (height - m_offset) / m_scale; }

    /// Smallest and largest finite value, 0 included, before the placement.
    QCPRange valueBounds() const { return m_bounds; }
    /// How high it reaches at a position, placed.
    virtual double heightAt(double ppm) const = 0;

    double selectTest(const QPointF &pos, bool onlySelectable, QVariant *details = nullptr) const override;
    QCPRange getValueRange(bool &found, QCP::SignDomain domain = QCP::sdBoth,
                           const QCPRange &keys = QCPRange()) const override;

protected:
    /// Values that are not finite are passed over.
    void setValueBounds(std::span<const double> values);
    virtual bool isEmpty() const = 0;

private:
    QCPRange m_bounds;
    double m_scale = 1.0;
    double m_offset = 0.0;
};

} // namespace Workbench
