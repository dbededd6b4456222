// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/PlotOptions.h"

#include <QDialog>

class QDoubleSpinBox;
class QSpinBox;

namespace Workbench {

/// Asks for the heights of contour lines. Every change is told at once, so that it can be seen; who cancels wants the
/// earlier ones back.
class ContourLevelsDialog : public QDialog {
    Q_OBJECT

public:
    explicit ContourLevelsDialog(const ContourLevels &levels, QWidget *parent = nullptr);

Q_SIGNALS:
    void changed(const ContourLevels &levels);

private:
    void setLevels(const ContourLevels &levels);

    QDoubleSpinBox *m_lowest;
    QDoubleSpinBox *m_factor;
    QSpinBox *m_count;
};

} // namespace Workbench
