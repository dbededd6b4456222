// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/NoteBar.h"

#include <QCursor>
#include <QFontMetricsF>
#include <QGraphicsSceneHoverEvent>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

// The page is white whatever the desktop's palette.
const QColor backgroundColor(0xff, 0xf7, 0xdc);
const QColor lineColor(0xe6, 0xd5, 0x94);
const QColor textColor(0x4a, 0x38, 0x00);
const QColor actionColor(0x0b, 0x57, 0x99);
constexpr double signWidth = 24;
constexpr double padding = 4;
constexpr int mostLines = 3;

/// Sizes in pixels: points would follow the resolution of the paint device and not the page's scale.
QFont noteFont()
{
    QFont font;
    font.setPixelSize(11);
    return font;
}

double actionWidth(const ItemNote &note)
{
    return note.action.isEmpty() ? 0 : QFontMetricsF(noteFont()).horizontalAdvance(note.action) + 20;
}

} // namespace

NoteBar::NoteBar(QGraphicsItem *parent) : QGraphicsItem(parent)
{
    setAcceptHoverEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton);
}

void NoteBar::setNotes(const QList<ItemNote> &notes)
{
    m_notes = notes;
    layOut();
}

void NoteBar::setWidth(double width)
{
    m_width = width;
    layOut();
}

void NoteBar::layOut()
{
    prepareGeometryChange();
    const QFontMetricsF metrics(noteFont());
    m_rows.clear();
    m_height = 0;
    QStringList all;
    for (const ItemNote &note : std::as_const(m_notes)) {
        const QRectF room(0, 0, std::max(40.0, m_width - signWidth - actionWidth(note) - padding), 1e4);
        const double needed = metrics.boundingRect(room, Qt::TextWordWrap, note.text).height();
        const double height = std::ceil(std::min(needed, mostLines * metrics.lineSpacing()) + 2 * padding);
        m_rows.append(QRectF(0, m_height, m_width, height));
        m_height += height;
        all.append(note.text);
    }
    setToolTip(all.join(QLatin1String("\n\n")));
    update();
}

QRectF NoteBar::actionRect(qsizetype note) const
{
    if (m_notes[note].action.isEmpty())
        return {};
    const QRectF row = m_rows[note];
    return QRectF(row.right() - actionWidth(m_notes[note]), row.top(), actionWidth(m_notes[note]), row.height());
}

void NoteBar::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->setRenderHint(QPainter::Antialiasing);
    for (qsizetype i = 0; i < m_notes.size(); ++i) {
        const QRectF row = m_rows[i];
        painter->fillRect(row, backgroundColor);
        painter->setPen(QPen(lineColor, 1));
        painter->drawLine(row.bottomLeft(), row.bottomRight());
        QFont font = noteFont();
        painter->setFont(font);
        painter->setPen(textColor);
        painter->drawEllipse(QPointF(signWidth / 2, row.top() + padding + 7), 6.5, 6.5);
        painter->drawText(QRectF(0, row.top() + padding, signWidth, 14), Qt::AlignCenter, QStringLiteral("!"));
        const QRectF action = m_onPaper ? QRectF() : actionRect(i);
        painter->drawText(row.adjusted(signWidth, padding, -action.width() - padding, -padding + 1),
                          Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, m_notes[i].text);
        if (action.isEmpty())
            continue;
        font.setBold(true);
        font.setUnderline(true);
        painter->setFont(font);
        painter->setPen(actionColor);
        painter->drawText(action, Qt::AlignCenter, m_notes[i].action);
    }
}

qsizetype NoteBar::actionAt(const QPointF &pos) const
{
    for (qsizetype i = 0; i < m_notes.size(); ++i) {
        if (actionRect(i).contains(pos))
            return i;
    }
    return -1;
}

void NoteBar::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    event->setAccepted(actionAt(event->pos()) >= 0);
}

void NoteBar::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    const qsizetype note = actionAt(event->pos());
    // A copy: what it does may replace the notes.
    if (const auto run = note < 0 ? nullptr : m_notes[note].run)
        run();
}

void NoteBar::hoverMoveEvent(QGraphicsSceneHoverEvent *event)
{
    setCursor(actionAt(event->pos()) < 0 ? Qt::ArrowCursor : Qt::PointingHandCursor);
}

} // namespace Workbench
