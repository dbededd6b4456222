// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/MoleculePacking.h"

#include <QFont>
#include <QHash>
#include <QPixmap>
#include <QPointF>
#include <QQuaternion>
#include <QRectF>
#include <QSet>
#include <QStringList>

class QPainter;

namespace Workbench {

/// A tensor as it is drawn at an atom.
struct TensorShape {
    std::array<double, 3> values{}; ///< principal values; the semi-axes are their magnitudes
    std::array<QVector3D, 3> axes; ///< of unit length
    bool exists = false;
};

/// A line between two atoms of the crystal with a text at its middle.
struct AtomLine {
    AtomImage from;
    AtomImage to;
    QString text;
};

/// A molecule as balls and sticks with its unit cell, or as much of its crystal as is wanted, seen without perspective;
/// depth shows by order and by haze. Screen axes: x to the right, y upwards, z towards the viewer.
/// Atoms are those of the molecule, in the order of the file; images of them in other cells look and act the same.
class MoleculeView {
public:
    void setMolecule(const Molecule &molecule);
    const Molecule &molecule() const { return m_molecule; }
    void setPacking(const Packing &packing);
    const Packing &packing() const { return m_packing; }
    /// As shown: fewer where there would be too many atoms.
    std::array<int, 3> cells() const { return m_packed.cells; }
    size_t shownAtoms() const { return m_packed.molecule.atoms.size(); }

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

    /// By atom; empty for none. The largest magnitude of each element gets a semi-axis of 0.6 Angstrom times the scale.
    void setTensors(const std::vector<TensorShape> &tensors, double scale);
    void setTensorAxesVisible(bool visible) { m_tensorAxesVisible = visible; }
    bool tensorAxesVisible() const { return m_tensorAxesVisible; }
    /// Lines from measurements and to neighbours, wherever these are.
    void setLines(const QList<AtomLine> &lines) { m_lines = lines; }

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
    std::optional<AtomImage> imageAt(const QPointF &pos) const;
    AtomImage firstImage(int atom) const;
    /// Where the atom's centre is drawn: that of its first image.
    QPointF atomPosition(int atom) const;
    /// Angstrom, in the molecule's coordinates.
    QVector3D position(const AtomImage &image) const;

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
    int indexAt(const QPointF &pos) const;
    int atomOf(int index) const { return m_packed.images[size_t(index)].atom; }
    void addCell(std::vector<Primitive> &primitives) const;
    void addCell(std::vector<Primitive> &primitives, const QVector3D &origin, bool first) const;
    void addBonds(std::vector<Primitive> &primitives) const;
    double haze(float depth) const;
    /// Neither hidden nor impossible to draw.
    bool isShown(const Molecule::Atom &atom) const;
    void drawRing(QPainter *painter, const Primitive &ball) const;
    void drawBall(QPainter *painter, const Primitive &ball) const;
    /// From a picture of such a ball, when there are many.
    void drawSprite(QPainter *painter, const Primitive &ball, double resolution) const;
    bool hasTensor(int index) const;
    void drawTensor(QPainter *painter, const Primitive &ball, bool plain) const;
    void drawLines(QPainter *painter) const;
    QFont labelFont(int element) const;
    QRectF labelArea(const Primitive &ball) const;
    /// The atoms whose labels are not covered by labels further to the front.
    QSet<int> readableLabels(const std::vector<Primitive> &backToFront) const;
    void drawLabel(QPainter *painter, const Primitive &ball) const;
    void drawHalfBond(QPainter *painter, const Primitive &bond, bool plain) const;
    void drawCellLabels(QPainter *painter) const;

    Molecule m_molecule;
    Packing m_packing;
    PackedMolecule m_packed;
    std::vector<TensorShape> m_tensors;
    QHash<int, double> m_tensorScale; ///< by element: Angstrom per unit
    bool m_tensorAxesVisible = false;
    QList<AtomLine> m_lines;
    mutable QHash<quint32, QPixmap> m_sprites; ///< by element and haze
    mutable double m_spriteScale = 0; ///< device pixels per Angstrom
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
