// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGraphicsItem>
#include <QSizeF>
#include <QString>

#include <functional>

namespace Workbench {

/// Something that one should know about what an item shows, with at most one thing to do about it.
struct ItemNote {
    QString text;
    QString action; ///< as on a button; empty for none
    std::function<void()> run;
};

/// The notes of an item below its title, one under the other, each with its action at the right. Where there is no room
/// for all of them, the last line says how many more there are and shows them when it is clicked.
class NoteBar : public QGraphicsItem {
public:
    explicit NoteBar(QGraphicsItem *parent);

    void setNotes(const QList<ItemNote> &notes);
    const QList<ItemNote> &notes() const { return m_notes; }
    /// The width of the bar, and the height that it may have before notes are folded away.
    void setRoom(const QSizeF &room);
    /// Is called when a click has changed the height.
    void setResized(std::function<void()> resized) { m_resized = std::move(resized); }
    /// Whatever is painted on.
    void setOnPaper(bool onPaper) { m_onPaper = onPaper; }

    /// 0 without notes.
    double height() const { return m_height; }
    /// Where the action of a line can be clicked; empty when it has none.
    QRectF actionRect(qsizetype line) const;

    QRectF boundingRect() const override { return QRectF(0, 0, m_room.width(), m_height); }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;

private:
    qsizetype actionAt(const QPointF &pos) const;
    void layOut();
    void add(const ItemNote &line, double height);

    QList<ItemNote> m_notes;
    QList<ItemNote> m_lines; ///< the notes that show, and the one for the rest
    QList<QRectF> m_rows; ///< of the lines
    qsizetype m_shown = 0; ///< how many notes show
    std::function<void()> m_resized;
    QSizeF m_room;
    bool m_unfolded = false;
    double m_height = 0;
    bool m_onPaper = false;
};

} // namespace Workbench
