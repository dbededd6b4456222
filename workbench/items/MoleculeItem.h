// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/DocumentItem.h"
#include "items/MoleculeView.h"

/// A molecule on the page, made from a molecule description. Its id is the description's "ID". A click selects an atom
/// and tells the linked items, with Ctrl it toggles; dragging turns, the wheel zooms, a double click puts it back.
class MoleculeItem : public DocumentItem {
    Q_OBJECT

public:
    explicit MoleculeItem(const QVariantMap &description, QGraphicsItem *parent = nullptr);

    /// The description, with whatever else was stored in it.
    Q_INVOKABLE QVariantMap molMap() const;
    /// The id stays what it was.
    Q_INVOKABLE void setMolMap(QVariantMap description);

    /// Atom positions, 0-based, in the order of the file.
    QSet<int> selectedAtoms() const { return m_view.selection(); }
    /// Selects without telling anybody. Positions that the molecule does not have are left out.
    void setSelectedAtoms(const QSet<int> &atoms);
    /// In item coordinates.
    QPointF atomPosition(int atom) const { return m_view.atomPosition(atom); }

    /// How the molecule is turned and zoomed and what is shown of it, for documents.
    QVariantMap viewState() const;
    /// Missing or senseless values leave the view as it is.
    void setViewState(const QVariantMap &state);

    void receiveMessage(const QVariantMap &message) override;

protected:
    void paintContent(QPainter *painter, const QRectF &content, bool pageOutput) override;
    void layoutContent(const QRectF &content) override;
    void fillContextMenu(QMenu *menu) override;

    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;
    void wheelEvent(QGraphicsSceneWheelEvent *event) override;

private:
    void selectByClick(int atom, bool toggle);
    void resetView();

    QVariantMap m_description;
    MoleculeView m_view;
    bool m_rotating = false;
    bool m_pressedInside = false;
};
