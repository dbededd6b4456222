// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/HertzTicker.h"

namespace Workbench {

void HertzTicker::generate(const QCPRange &range, const QLocale &locale, QChar formatChar, int precision,
                           QVector<double> &ticks, QVector<double> *subTicks, QVector<QString> *tickLabels)
{
    const QCPRange hertz(range.lower * m_frequency, range.upper * m_frequency);
    QCPAxisTicker::generate(hertz, locale, formatChar, precision, ticks, subTicks, tickLabels);
    const auto toPpm = [this](QVector<double> &places) {
        for (double &place : places)
            place /= m_frequency;
    };
    toPpm(ticks);
    if (subTicks)
        toPpm(*subTicks);
}

} // namespace Workbench
