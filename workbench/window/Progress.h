// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QProgressDialog>

#include <memory>

namespace Workbench {

/// A bar with a Cancel button for work that takes more than half a second; before that there is none. Usable as a
/// std::function<bool(double)> through std::ref. Without a window that is seen, and headless, it never shows.
class Progress {
public:
    Progress(const QString &what, QWidget *window);

    /// `fraction` of the work is done, 0 to 1. False when the user wants no more.
    bool step(double fraction);
    bool operator()(double fraction) { return step(fraction); }
    /// What is being worked on now.
    void setText(const QString &what);

private:
    QPointer<QWidget> m_window;
    QString m_text;
    QElapsedTimer m_clock;
    std::unique_ptr<QProgressDialog> m_dialog;
};

} // namespace Workbench
