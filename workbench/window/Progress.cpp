// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/Progress.h"

#include "data/Error.h"

#include <QCoreApplication>

#include <algorithm>

namespace Workbench {

namespace {

constexpr int steps = 1000;
constexpr qint64 patience = 500; // ms

} // namespace

Progress::Progress(const QString &what, QWidget *window) : m_window(window), m_text(what)
{
    m_clock.start();
}

bool Progress::step(double fraction)
{
    const bool canShow = m_window && m_window->isVisible() && !qApp->property("isHeadless").toBool();
    if (!m_dialog && canShow && fraction < 1 && m_clock.elapsed() > patience) {
        // Not made earlier: the library's dialog would come up by itself, over a message box perhaps.
        m_dialog = std::make_unique<QProgressDialog>(m_text, Texts::tr("Cancel"), 0, steps, m_window);
        m_dialog->setWindowTitle(Texts::tr("Please wait"));
        m_dialog->setWindowModality(Qt::WindowModal);
        m_dialog->setMinimumDuration(0);
        m_dialog->setAutoClose(false);
        m_dialog->setAutoReset(false);
        m_dialog->show();
    }
    if (!m_dialog)
        return true;
    // Lets the button be pressed.
    m_dialog->setValue(std::clamp(int(fraction * steps), 0, steps));
    return !m_dialog->wasCanceled();
}

void Progress::setText(const QString &what)
{
    m_text = what;
    if (m_dialog)
        m_dialog->setLabelText(what);
}

} // namespace Workbench
