// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/ProgressLine.h"

#include "cli/Commands.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace Workbench {

namespace {

constexpr int leastInterval = 50; // ms

int terminalWidth()
{
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

/// The end of a text that is too long is the part that differs.
QString fitted(QString text, qsizetype width)
{
    for (QChar &c : text) {
        if (!c.isPrint())
            c = u'?';
    }
    return text.size() <= width ? text : u'…' + text.right(std::max<qsizetype>(width - 1, 0));
}

} // namespace

ProgressLine::ProgressLine() : m_isTerminal(isatty(STDERR_FILENO))
{
}

void ProgressLine::show(int done, qsizetype all, const QString &what)
{
    if (!m_isTerminal || (m_shown && m_sinceShown.elapsed() < leastInterval))
        return;
    const QString count = QStringLiteral("%1/%2 ").arg(done).arg(all);
    printError(QStringLiteral("\r") + count + fitted(what, terminalWidth() - 1 - count.size())
               + QStringLiteral("\x1b[K"));
    m_shown = true;
    m_sinceShown.start();
}

void ProgressLine::clear()
{
    if (m_shown)
        printError(QStringLiteral("\r\x1b[K"));
    m_shown = false;
}

} // namespace Workbench
