// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/DocumentItem.h"
#include "items/molecule/MoleculeView.h"
#include "data/PeakAssignments.h"

#include <functional>
#include <optional>

namespace Workbench {

struct Contact;

/// A molecule on the page, made from a molecule description. Its id is the description's "ID". A click selects an atom
/// and tells the linked items, with Ctrl it toggles; dragging turns, the wheel zooms while it is the current item, a
/// double click puts it back. While it measures, clicks on two, three and four atoms give a distance, an angle and a
/// torsion angle.
class MoleculeItem : public DocumentItem {
    Q_OBJECT

public:
    /// What is written on the atoms: the element, that and the number in the file from 1, or the file's own labels as a
    /// linked table has them.
    enum class Labels { None, Elements, Numbers, FileLabels };
    Q_ENUM(Labels)

    /// Which tensors stand at the atoms as ellipsoids: the shielding, what it has beyond its isotropic part, or the
    /// electric field gradient.
    enum class Tensors { None, Shielding, Anisotropy, Gradient };
    Q_ENUM(Tensors)

    /// Gives a data set of the document by its id.
    using DataSource = std::function<QVariantMap(const QUuid &)>;

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
    void setPacking(const Packing &packing);
    const Packing &packing() const { return m_view.packing(); }

    /// Where the tensors of a linked table's data set come from.
    void setDataSource(const DataSource &source) { m_dataSource = source; }
    void setTensors(Tensors tensors);
    Tensors tensors() const { return m_tensors; }
    void setTensorSize(double factor);

    void setMeasuring(bool measuring);
    bool isMeasuring() const { return m_measuring; }
    void removeMeasurements();
    /// Distances in Angstrom, angles in degrees: "C1–O2  1.234 Å".
    QStringList measurements() const;

    /// Lists the nearest atoms of the first selected one, in whichever cell, with their dipolar couplings.
    void setContactsVisible(bool visible);
    bool contactsVisible() const { return m_contactsVisible; }
    /// A line each, tab-separated, under a header; empty without a selected atom.
    QString contactsText() const;
    void copyContacts() const;

    QVariantMap viewSettings() const override;
    QVariantMap madeSettings() const override;
    void setViewSettings(const QVariantMap &settings) override;

    void receiveMessage(const QVariantMap &message, const DocumentItem *sender) override;
    void paintPicture(QPainter *painter, const QRectF &area) override;

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
    void fillCrystalMenu(QMenu *menu);
    void fillTensorMenu(QMenu *menu);
    void askForCells();
    QStringList labelTexts() const;
    QStringList fileLabels() const;
    /// As labels name it, otherwise by element and number.
    QString atomName(int atom) const;

    /// The shapes of the wanted tensors, by atom; empty where the data have none.
    std::vector<TensorShape> tensorShapes(Tensors tensors) const;
    void readTensors();

    void measure(const std::optional<AtomImage> &picked);
    /// The next click starts another; a single atom measures nothing and goes.
    void endMeasurement();
    QString measurementText(const QList<AtomImage> &atoms) const;
    QString measuredValue(const QList<AtomImage> &atoms) const;
    std::vector<Contact> contacts() const;
    int contactAtom() const;
    void updateLines();
    void paintContacts(QPainter *painter, const QRectF &content) const;
    void paintCaption(QPainter *painter, const QRectF &content) const;

    QVariantMap m_description;
    mutable std::optional<PeakAssignments> m_assignments; ///< read when asked for
    Labels m_labels = Labels::None;
    MoleculeView m_view;
    DataSource m_dataSource;
    Tensors m_tensors = Tensors::None;
    double m_tensorSize = 1.0;
    bool m_tensorsRead = true;
    QList<QList<AtomImage>> m_measurements; ///< 2 to 4 atoms each; the last one may have a single one while it is made
    bool m_measuring = false;
    bool m_measurementEnded = false; ///< the next click starts another
    bool m_contactsVisible = false;
    bool m_rotating = false;
    bool m_pressedInside = false;
};

} // namespace Workbench
