// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

namespace Workbench {

/// The user guide beside the program's window.
class GuideWindow : public QDialog {
    Q_OBJECT
public:
    explicit GuideWindow(QWidget *parent);
};

} // namespace Workbench
