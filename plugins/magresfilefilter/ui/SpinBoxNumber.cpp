// SPDX-License-Identifier: BSD-3-Clause
#include "ui/SpinBoxNumber.h"

#include <QDoubleSpinBox>
#include <QSignalBlocker>

namespace Magres {

SpinBoxNumber::SpinBoxNumber(QDoubleSpinBox *box)
    : QObject(box), m_box(box), m_value(box->value()), m_shown(box->value())
{
    connect(box, &QDoubleSpinBox::valueChanged, this, &SpinBoxNumber::onBoxChanged);
}

void SpinBoxNumber::setValue(double value)
{
    const QSignalBlocker blocker(m_box);
    m_box->setValue(value);
    m_shown = m_box->value();
    m_value = value;
}

void SpinBoxNumber::setValueWithin(double value, double lowest, double highest)
{
    const double shown = qBound(lowest, value, highest);
    m_box->setRange(qMin(m_box->minimum(), shown), qMax(m_box->maximum(), shown));
    setValue(value);
}

void SpinBoxNumber::onBoxChanged(double shown)
{
    if (shown == m_shown)
        return;
    m_shown = shown;
    m_value = shown;
    Q_EMIT edited();
}

} // namespace Magres

#include "moc_SpinBoxNumber.cpp"
