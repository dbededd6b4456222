// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGraphicsItem>
#include <QString>

#include <functional>

namespace Workbench {

/// Something that one should know about what an item shows, with at most one thing to do about it.
struct ItemNote {
    QString text;
    QString action; ///< as on a button; empty for none
    std::function<void()> run;
};

/// The notes of an item below its title, one under the other, each with its action at the right.
class NoteBar : public QGraphicsItem {
public:
    explicit NoteBar(QGraphicsItem *parent);

    void setNotes(const QList<ItemNote> &notes);
    const QList<ItemNote> &notes() const { return m_notes; }
    void setWidth(double width);
    /// Whatever is painted on.
    void setOnPaper(bool onPaper) { m_onPaper = onPaper; }

    /// 0 without notes.
    double height() const { return m_height; }
    /// Where the action of a note can be clicked; empty when it has none.
    QRectF actionRect(qsizetype note) const;

    QRectF boundingRect() const override { return QRectF(0, 0, m_width, m_height); }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;

private:
    qsizetype actionAt(const QPointF &pos) const;
    void layOut();

    QList<ItemNote> m_notes;
    QList<QRectF> m_rows;
    double m_width = 0;
    double m_height = 0;
    bool m_onPaper = false;
};

} // namespace Workbench
