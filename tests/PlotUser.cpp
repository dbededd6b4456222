// SPDX-License-Identifier: BSD-3-Clause
#include "PlotUser.h"

#include "WorkbenchUser.h"

#include "window/MainView.h"
#include "window/WMainWindow.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/plot/PlotContent.h"

#include <QApplication>
#include <QTest>
#include <QWindow>

using namespace Workbench;

QPointF PlotUser::topOf(const SpectrumPeak &peak) const
{
    for (const PeakMark &mark : m_item->plot()->content()->peakMarks())
        if (mark.peak.id == peak.id)
            return mark.top;
    userFailed(QStringLiteral("The peak is not in sight"));
    return {};
}

QPoint PlotUser::inViewport(const QPointF &pixel) const
{
    return m_window.view()->mapFromScene(m_item->mapToScene(m_item->contentRect().topLeft() + pixel));
}

QPoint PlotUser::inWindow(const QPointF &pixel) const
{
    return m_window.view()->viewport()->mapTo(&m_window, inViewport(pixel));
}

void PlotUser::click(const QPointF &at, Qt::KeyboardModifiers modifiers, Qt::MouseButton button) const
{
    m_window.view()->ensureVisible(QRectF(m_item->mapToScene(m_item->contentRect().topLeft() + at), QSizeF(1, 1)));
    QTest::mouseClick(m_window.windowHandle(), button, modifiers, inWindow(at));
    // The next click shall make no double click of it, and nobody wait for that.
    QApplication::setDoubleClickInterval(5);
    QTest::qWait(10);
}

void PlotUser::move(const QPointF &to, Qt::MouseButtons held, Qt::KeyboardModifiers modifiers) const
{
    QWidget *viewport = m_window.view()->viewport();
    const QPoint at = inViewport(to);
    QMouseEvent event(QEvent::MouseMove, at, viewport->mapToGlobal(at), Qt::NoButton, held, modifiers);
    QApplication::sendEvent(viewport, &event);
}

void PlotUser::drag(const QPointF &from, const QPointF &to, Qt::KeyboardModifiers modifiers) const
{
    QTest::mousePress(m_window.windowHandle(), Qt::LeftButton, modifiers, inWindow(from));
    move((from + to) / 2, Qt::LeftButton, modifiers);
    move(to, Qt::LeftButton, modifiers);
    QTest::mouseRelease(m_window.windowHandle(), Qt::LeftButton, modifiers, inWindow(to));
}
