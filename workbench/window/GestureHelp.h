// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

namespace Workbench {

/// What mouse and keyboard do, on one page: gestures cannot be seen in a menu.
class GestureHelp : public QDialog {
    Q_OBJECT
public:
    explicit GestureHelp(QWidget *parent);
};

} // namespace Workbench
