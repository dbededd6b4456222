// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDoubleSpinBox>

namespace Magres {

/// A number that may be typed or pasted with either decimal mark, whatever the language, with blanks around it and the
/// minus of print.
class NumberBox : public QDoubleSpinBox {
    Q_OBJECT

public:
    using QDoubleSpinBox::QDoubleSpinBox;

    QValidator::State validate(QString &text, int &position) const override;
};

} // namespace Magres
