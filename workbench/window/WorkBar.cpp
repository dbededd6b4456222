// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/WorkBar.h"

namespace Workbench {

WorkBar::WorkBar(QWidget *parent) : QToolBar(tr("Tool Bar"), parent)
{
    setObjectName(QStringLiteral("workBar"));
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setMovable(false);
}

QAction *WorkBar::add(const QString &text, const QString &what, const std::function<void()> &run,
                      const std::function<QString()> &whyNot)
{
    QAction *action = addAction(text);
    connect(action, &QAction::triggered, this, run);
    m_steps.append({action, what, whyNot});
    return action;
}

void WorkBar::showEvent(QShowEvent *event)
{
    // Plug-ins have come since the bar was made.
    refresh();
    QToolBar::showEvent(event);
}

void WorkBar::enterEvent(QEnterEvent *event)
{
    refresh();
    QToolBar::enterEvent(event);
}

void WorkBar::refresh()
{
    for (const Step &step : std::as_const(m_steps)) {
        const QString reason = step.whyNot ? step.whyNot() : QString();
        step.action->setEnabled(reason.isEmpty());
        QString tip = step.what;
        if (const QKeySequence keys = step.action->shortcut(); !keys.isEmpty())
            tip += QStringLiteral(" (%1)").arg(keys.toString(QKeySequence::NativeText));
        if (!reason.isEmpty())
            tip += tr("\nNot now: %1").arg(reason);
        step.action->setToolTip(tip);
        step.action->setStatusTip(reason);
    }
}

} // namespace Workbench

#include "moc_WorkBar.cpp"
