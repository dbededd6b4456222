// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>

class QDoubleSpinBox;

namespace Magres {

/// The number in a spin box. The box shows it rounded, but as long as nobody changes what is shown the number keeps its
/// full precision, also where it lies outside the limits of the box.
class SpinBoxNumber : public QObject {
    Q_OBJECT

public:
    /// The box becomes the parent.
    explicit SpinBoxNumber(QDoubleSpinBox *box);

    /// Emits nothing.
    void setValue(double value);
    /// setValue(), with the limits of the box moved as far as the number needs, up to the limits given.
    void setValueWithin(double value, double lowest, double highest);
    double value() const { return m_value; }

Q_SIGNALS:
    /// The box shows another number than before. Pressing Enter in a box is no edit, though the box reports its value.
    void edited();

private:
    void onBoxChanged(double shown);

    QDoubleSpinBox *m_box;
    double m_value;
    double m_shown;
};

} // namespace Magres
