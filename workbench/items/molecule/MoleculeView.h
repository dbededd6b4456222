// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Molecule.h"

#include <QFont>
#include <QPointF>
#include <QQuaternion>
#include <QRectF>
#include <QSet>
#include <QStringList>

class QPainter;

namespace Workbench {

/// A molecule as balls and sticks with its unit cell, seen without perspective; depth shows by order and by haze.
/// Screen axes: x to the right, y upwards, z towards the viewer.
class MoleculeView {
public:
    void setMolecule(const Molecule &molecule);
    const Molecule &molecule() const { return m_molecule; }

    /// The area to draw in; the molecule is fitted into it.
    void setArea(const QRectF &area);
    /// Back to the orientation and size chosen for the molecule.
    void resetView();
    /// Turns about the screen's axes by the drag from one point to another.
    void rotate(const QPointF &from, const QPointF &to);
    void zoom(double factor);
    QQuaternion rotation() const { return m_rotation; }
    double zoomFactor() const { return m_zoom; }
    /// Back to an orientation and zoom that the view had once.
    void setRotation(const QQuaternion &rotation, double zoomFactor);

    void setSelection(const QSet<int> &atoms) { m_selection = atoms; }
    const QSet<int> &selection() const { return m_selection; }
    /// Written on the atoms as far as they do not cover one another. Empty: none.
    void setLabels(const QStringList &labels) { m_labels = labels; }
    void setCellVisible(bool visible) { m_cellVisible = visible; }
    bool cellVisible() const { return m_cellVisible; }
    void setHydrogensVisible(bool visible) { m_hydrogensVisible = visible; }
    bool hydrogensVisible() const { return m_hydrogensVisible; }

    void paint(QPainter *painter) const;
    /// The front atom there, -1 for none.
    int atomAt(const QPointF &pos) const;
    /// Where the atom's centre is drawn.
    QPointF atomPosition(int atom) const;

private:
    struct Primitive {
        enum Kind { CellEdge, HalfBond, Ball } kind;
        float depth; ///< screen z, Angstrom
        int index; ///< atom; for a half bond the atom at its near end
        QPointF from, to; ///< pixels
    };

    QVector3D turned(const QVector3D &v) const { return m_rotation.rotatedVector(v); }
    QPointF project(const QVector3D &turnedPosition) const;
    double scale() const { return m_fitScale * m_zoom; }
    QQuaternion startOrientation() const;
    void fit();
    void addCell(std::vector<Primitive> &primitives) const;
    void addBonds(std::vector<Primitive> &primitives) const;
    double haze(float depth) const;
    /// Neither hidden nor impossible to draw.
    bool isShown(const Molecule::Atom &atom) const;
    void drawBall(QPainter *painter, const Primitive &ball, bool flat) const;
    QFont labelFont(int element) const;
    QRectF labelArea(const Primitive &ball) const;
    /// The atoms whose labels are not covered by labels further to the front.
    QSet<int> readableLabels(const std::vector<Primitive> &backToFront) const;
    void drawLabel(QPainter *painter, const Primitive &ball) const;
    void drawHalfBond(QPainter *painter, const Primitive &bond) const;
    void drawCellLabels(QPainter *painter) const;

    Molecule m_molecule;
    QRectF m_area;
    QQuaternion m_rotation;
    QPointF m_centre; ///< pixels: where the molecule's centre is drawn
    double m_fitScale = 1.0; ///< pixels per Angstrom
    double m_zoom = 1.0;
    float m_depthRange = 1.0f; ///< Angstrom, half of it before and half behind the centre
    QSet<int> m_selection;
    QStringList m_labels;
    bool m_cellVisible = true;
    bool m_hydrogensVisible = true;
};

} // namespace Workbench
