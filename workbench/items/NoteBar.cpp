// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/NoteBar.h"

#include "data/Error.h"

#include <QCoreApplication>
#include <QCursor>
#include <QFontMetricsF>
#include <QGraphicsSceneHoverEvent>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

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

/// The text, or as many of its words as there is room for.
QString fitted(const QString &text, const QSizeF &room)
{
    const QFontMetricsF metrics(noteFont());
    const auto fits = [&](const QString &shown) {
        return metrics.boundingRect(QRectF(0, 0, room.width(), 1e4), Qt::TextWordWrap, shown).height() <= room.height();
    };
    QString shown = text;
    while (!fits(shown)) {
        const qsizetype end = text.lastIndexOf(u' ', shown.size() - 2);
        if (end <= 0)
            return text;
        shown = text.left(end) + QChar(0x2026);
    }
    return shown;
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

void NoteBar::setRoom(const QSizeF &room)
{
    m_room = room;
    layOut();
}

void NoteBar::add(const ItemNote &line, double height)
{
    m_lines.append(line);
    m_rows.append(QRectF(0, m_height, m_room.width(), height));
    m_height += height;
}

void NoteBar::layOut()
{
    if (m_notes.isEmpty() && m_lines.isEmpty())
        return; // as most items are, in commands too, which resize them file after file
    prepareGeometryChange();
    const QFontMetricsF metrics(noteFont());
    QStringList all;
    std::vector<double> heights;
    for (const ItemNote &note : std::as_const(m_notes)) {
        const QRectF room(0, 0, std::max(40.0, m_room.width() - signWidth - actionWidth(note) - padding), 1e4);
        const double needed = metrics.boundingRect(room, Qt::TextWordWrap, note.text).height();
        heights.push_back(std::ceil(std::min(needed, mostLines * metrics.lineSpacing()) + 2 * padding));
        all.append(note.text);
    }
    setToolTip(all.join(QLatin1String("\n\n")));

    const double oneLine = std::ceil(metrics.lineSpacing() + 2 * padding);
    const double needed = std::accumulate(heights.begin(), heights.end(), 0.0);
    const bool isTooHigh = heights.size() > 1 && needed > m_room.height();
    std::size_t shown = heights.size();
    if (isTooHigh && !m_unfolded) {
        double used = heights[0] + oneLine;
        for (shown = 1; shown < heights.size() && used + heights[shown] <= m_room.height(); ++shown)
            used += heights[shown];
    }
    m_lines.clear();
    m_rows.clear();
    m_height = 0;
    for (std::size_t i = 0; i < shown; ++i)
        add(m_notes[qsizetype(i)], heights[i]);
    m_shown = m_lines.size();
    if (isTooHigh) {
        const int rest = int(heights.size() - shown);
        add({rest > 0 ? Texts::tr("and %n more note(s)", nullptr, rest) : QString(),
             m_unfolded ? Texts::tr("Show Fewer") : Texts::tr("Show All"),
             [this] {
                 m_unfolded = !m_unfolded;
                 layOut();
                 if (m_resized)
                     m_resized();
             }},
            oneLine);
    }
    update();
}

QRectF NoteBar::actionRect(qsizetype line) const
{
    if (m_lines[line].action.isEmpty())
        return {};
    const QRectF row = m_rows[line];
    return QRectF(row.right() - actionWidth(m_lines[line]), row.top(), actionWidth(m_lines[line]), row.height());
}

void NoteBar::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->setRenderHint(QPainter::Antialiasing);
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
        const QRectF row = m_rows[i];
        painter->fillRect(row, backgroundColor);
        painter->setPen(QPen(lineColor, 1));
        painter->drawLine(row.bottomLeft(), row.bottomRight());
        QFont font = noteFont();
        painter->setFont(font);
        painter->setPen(textColor);
        if (i < m_shown) {
            painter->drawEllipse(QPointF(signWidth / 2, row.top() + padding + 7), 6.5, 6.5);
            painter->drawText(QRectF(0, row.top() + padding, signWidth, 14), Qt::AlignCenter, QStringLiteral("!"));
        }
        const QRectF action = m_onPaper ? QRectF() : actionRect(i);
        const QRectF room = row.adjusted(signWidth, padding, -action.width() - padding, -padding + 1);
        painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap,
                          fitted(m_lines[i].text, room.size()));
        if (action.isEmpty())
            continue;
        font.setBold(true);
        font.setUnderline(true);
        painter->setFont(font);
        painter->setPen(actionColor);
        painter->drawText(action, Qt::AlignCenter, m_lines[i].action);
    }
}

qsizetype NoteBar::actionAt(const QPointF &pos) const
{
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
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
    if (const auto run = note < 0 ? nullptr : m_lines[note].run)
        run();
}

void NoteBar::hoverMoveEvent(QGraphicsSceneHoverEvent *event)
{
    setCursor(actionAt(event->pos()) < 0 ? Qt::ArrowCursor : Qt::PointingHandCursor);
}

} // namespace Workbench
