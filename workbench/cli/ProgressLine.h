// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QString>

namespace Workbench {

/// One line on standard error that is written anew as work goes on, and gone at the end. Shows nothing where standard
/// error is no terminal.
class ProgressLine {
public:
    ProgressLine();
    ~ProgressLine() { clear(); }
    Q_DISABLE_COPY_MOVE(ProgressLine)

    /// Not more often than the eye can follow.
    void show(int done, qsizetype all, const QString &what);
    void clear();

private:
    bool m_isTerminal;
    bool m_shown = false;
    QElapsedTimer m_sinceShown;
};

} // namespace Workbench
