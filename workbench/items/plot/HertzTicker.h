// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/CustomPlot.h"

namespace Workbench {

/// Numbers an axis whose coordinates are ppm in Hz.
class HertzTicker : public QCPAxisTicker {
public:
    /// Frequency of the nucleus, MHz: Hz per ppm.
    explicit HertzTicker(double frequency) : m_frequency(frequency) { }

    void generate(const QCPRange &range, const QLocale &locale, QChar formatChar, int precision, QVector<double> &ticks,
                  QVector<double> *subTicks, QVector<QString> *tickLabels) override;

private:
    double m_frequency;
};

} // namespace Workbench
