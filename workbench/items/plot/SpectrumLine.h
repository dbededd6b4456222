// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/PlacedTrace.h"
#include "data/Spectrum.h"

namespace Workbench {

/// A trace over a ppm axis, drawn from the shared points: no copy, and no more detail than the device can show.
class SpectrumLine : public PlacedTrace {
    Q_OBJECT

public:
    using PlacedTrace::PlacedTrace;

    /// The first vector of `data` is drawn.
    void setTrace(const SpectrumAxis &axis, const QList<DoubleVector> &data);
    /// The larger of the two points around the position.
    double heightAt(double ppm) const override;
    QCPRange getKeyRange(bool &found, QCP::SignDomain domain = QCP::sdBoth) const override;

protected:
    bool isEmpty() const override { return values().empty(); }
    void draw(QCPPainter *painter) override;
    void drawLegendIcon(QCPPainter *painter, const QRectF &rect) const override;

private:
    std::span<const double> values() const;

    SpectrumAxis m_axis;
    QList<DoubleVector> m_data;
};

} // namespace Workbench
