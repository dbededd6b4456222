// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/DocumentItem.h"
#include "items/molecule/MoleculeView.h"
#include "data/PeakAssignments.h"

#include <optional>

namespace Workbench {

/// A molecule on the page, made from a molecule description. Its id is the description's "ID". A click selects an atom
/// and tells the linked items, with Ctrl it toggles; dragging turns, the wheel zooms while it is the current item, a
/// double click puts it back.
class MoleculeItem : public DocumentItem {
    Q_OBJECT

public:
    /// What is written on the atoms: the element, that and the number in the file from 1, or the file's own labels as a
    /// linked table has them.
    enum class Labels { None, Elements, Numbers, FileLabels };
    Q_ENUM(Labels)

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

    /// Which peaks plug-ins have assigned to the atoms.
    const PeakAssignments &assignments() const;

    Labels labels() const { return m_labels; }
    void setLabels(Labels labels);
    QVariantMap viewSettings() const override;
    void setViewSettings(const QVariantMap &settings) override;

    void receiveMessage(const QVariantMap &message) override;

Q_SIGNALS:
    void assignmentsChanged();

protected:
    void paintContent(QPainter *painter, const QRectF &content, bool pageOutput) override;
    void layoutContent(const QRectF &content) override;
    void fillContextMenu(QMenu *menu) override;
    void keyPressEvent(QKeyEvent *event) override;

    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;
    void wheelEvent(QGraphicsSceneWheelEvent *event) override;

private:
    void selectByClick(int atom, bool toggle);
    void resetView();
    void fillLabelMenu(QMenu *menu);
    QStringList labelTexts() const;
    QStringList fileLabels() const;

    QVariantMap m_description;
    mutable std::optional<PeakAssignments> m_assignments; ///< read when asked for
    Labels m_labels = Labels::None;
    MoleculeView m_view;
    bool m_rotating = false;
    bool m_pressedInside = false;
};

} // namespace Workbench
