// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDoubleSpinBox>

namespace Workbench {

/// A number in a dialog, with a comma or a point for its decimal mark whatever the language, as tables and papers have
/// it; also with blanks around it and the minus of print.
class NumberBox : public QDoubleSpinBox {
    Q_OBJECT

public:
    using QDoubleSpinBox::QDoubleSpinBox;

    QValidator::State validate(QString &text, int &position) const override;

protected:
    bool event(QEvent *event) override;
};

} // namespace Workbench
