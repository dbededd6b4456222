// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/molecule/MoleculeView.h"

#include "items/molecule/ElementStyle.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

constexpr double bondRadius = 0.085; // Angstrom
constexpr qreal margin = 14; // pixels around the molecule, room for the letters of the cell's axes
constexpr double largestScale = 70; // pixels per Angstrom: a single atom must not fill the page
constexpr double radiansPerPixel = 0.01;
constexpr int edgePieces = 24; // of a cell edge, so that it passes behind some atoms and before others
constexpr size_t flatAbove = 1500; // balls; more are drawn without gradients, which cost too much then

const QColor cellColor(0x70, 0x78, 0x82);
const QColor axisColors[] = {QColor(0xc6, 0x28, 0x28), QColor(0x2e, 0x7d, 0x32), QColor(0x15, 0x65, 0xc0)};
const QColor selectionColor(0xff, 0x9f, 0x00);

QColor mixed(const QColor &color, const QColor &other, double share)
{
    const auto channel = [share](int a, int b) { return int(std::lround(a + (b - a) * share)); };
    return QColor(channel(color.red(), other.red()), channel(color.green(), other.green()),
                  channel(color.blue(), other.blue()));
}

/// The rotation that brings `right` to the screen's x and the part of `up` across it to the screen's y.
QQuaternion orientation(const QVector3D &right, const QVector3D &up)
{
    const QVector3D x = right.normalized();
    const QVector3D z = QVector3D::crossProduct(x, up).normalized();
    const QVector3D y = QVector3D::crossProduct(z, x);
    if (x.isNull() || z.isNull())
        return {};
    return QQuaternion::fromAxes(x, y, z).conjugated();
}

/// The directions of greatest and second greatest extent: power iteration on the matrix of second moments.
std::pair<QVector3D, QVector3D> principalDirections(const std::vector<Molecule::Atom> &atoms)
{
    QVector3D mean;
    int count = 0;
    for (const auto &atom : atoms) {
        if (atom.drawable) {
            mean += atom.position;
            ++count;
        }
    }
    mean /= float(std::max(count, 1));
    const auto dominant = [&](const QVector3D &without) {
        QVector3D direction(0.91f, 0.33f, 0.25f);
        for (int step = 0; step < 50; ++step) {
            QVector3D next;
            for (const auto &atom : atoms) {
                if (!atom.drawable)
                    continue;
                QVector3D d = atom.position - mean;
                d -= without * QVector3D::dotProduct(d, without);
                next += d * QVector3D::dotProduct(d, direction);
            }
            if (next.isNull())
                break;
            direction = next.normalized();
        }
        return direction;
    };
    const QVector3D first = dominant({});
    return {first, dominant(first)};
}

} // namespace

void MoleculeView::setMolecule(const Molecule &molecule)
{
    m_molecule = molecule;
    resetView();
}

void MoleculeView::setArea(const QRectF &area)
{
    m_area = area;
    fit();
}

void MoleculeView::resetView()
{
    m_rotation = startOrientation();
    m_zoom = 1.0;
    fit();
}

void MoleculeView::setRotation(const QQuaternion &rotation, double zoomFactor)
{
    const float excess = std::abs(rotation.length() - 1.0f);
    // Written so that what is not a number fails as well.
    if (!(excess < 0.01f) || !(zoomFactor > 0.0))
        return;
    // A rotation that was stored comes back to the bit.
    m_rotation = excess < 1e-5f ? rotation : rotation.normalized();
    m_zoom = std::clamp(zoomFactor, 0.2, 30.0);
    fit();
}

QQuaternion MoleculeView::startOrientation() const
{
    // A little off the axis of sight, so that what lies behind one another shows and the cell looks solid.
    const QQuaternion tilt = QQuaternion::fromAxisAndAngle(1, 0, 0, 12) * QQuaternion::fromAxisAndAngle(0, 1, 0, -16);
    if (!m_molecule.cell) {
        const auto [right, up] = principalDirections(m_molecule.atoms);
        return tilt * orientation(right, up);
    }
    // Along the shortest edge, the longest one to the right: the most of the cell's content side by side.
    std::array<int, 3> byLength{1, 2, 3};
    const auto &cell = *m_molecule.cell;
    std::stable_sort(byLength.begin(), byLength.end(),
                     [&](int i, int j) { return cell[i].lengthSquared() > cell[j].lengthSquared() * 1.0001f; });
    return tilt * orientation(cell[byLength[0]], cell[byLength[1]]);
}

void MoleculeView::fit()
{
    QRectF extent;
    float nearest = 0;
    float farthestBack = 0;
    const auto include = [&](const QVector3D &p, double radius) {
        const QVector3D t = turned(p);
        const QRectF box(t.x() - radius, t.y() - radius, 2 * radius, 2 * radius);
        extent = extent.isNull() ? box : extent.united(box);
        nearest = std::max(nearest, t.z());
        farthestBack = std::min(farthestBack, t.z());
    };
    for (const auto &atom : m_molecule.atoms) {
        if (atom.drawable)
            include(atom.position, ElementStyle::ballRadius(atom.element));
    }
    if (m_molecule.cell) {
        const auto &[origin, a, b, c] = *m_molecule.cell;
        for (int corner = 0; corner < 8; ++corner)
            include(origin + a * float(corner & 1) + b * float(corner >> 1 & 1) + c * float(corner >> 2 & 1), 0.05);
    }
    m_depthRange = std::max(nearest - farthestBack, 0.1f);
    const QRectF room = m_area.adjusted(margin, margin, -margin, -margin);
    if (extent.isEmpty() || room.isEmpty()) {
        m_centre = m_area.center();
        return;
    }
    m_fitScale = std::min({room.width() / extent.width(), room.height() / extent.height(), largestScale});
    // The extent's y points upwards.
    m_centre = m_area.center() - QPointF(extent.center().x(), -extent.center().y()) * scale();
}

void MoleculeView::rotate(const QPointF &from, const QPointF &to)
{
    const QPointF moved = to - from;
    const QVector3D axis(float(moved.y()), float(moved.x()), 0);
    if (!axis.isNull()) {
        const float degrees = float(axis.length() * radiansPerPixel * 180 / M_PI);
        m_rotation = (QQuaternion::fromAxisAndAngle(axis, degrees) * m_rotation).normalized();
    }
}

void MoleculeView::zoom(double factor)
{
    const double before = m_zoom;
    m_zoom = std::clamp(m_zoom * factor, 0.2, 30.0);
    m_centre = m_area.center() + (m_centre - m_area.center()) * (m_zoom / before);
}

bool MoleculeView::isShown(const Molecule::Atom &atom) const
{
    return atom.drawable && (m_hydrogensVisible || atom.element != 1);
}

QPointF MoleculeView::project(const QVector3D &t) const
{
    return m_centre + QPointF(t.x(), -t.y()) * scale();
}

QPointF MoleculeView::atomPosition(int atom) const
{
    return project(turned(m_molecule.atoms.at(atom).position));
}

int MoleculeView::atomAt(const QPointF &pos) const
{
    int front = -1;
    float depth = 0;
    for (int i = 0; i < int(m_molecule.atoms.size()); ++i) {
        const auto &atom = m_molecule.atoms[i];
        if (!isShown(atom))
            continue;
        const QVector3D t = turned(atom.position);
        const QPointF d = project(t) - pos;
        const double radius = std::max(3.0, ElementStyle::ballRadius(atom.element) * scale());
        if (QPointF::dotProduct(d, d) <= radius * radius && (front < 0 || t.z() > depth)) {
            front = i;
            depth = t.z();
        }
    }
    return front;
}

void MoleculeView::addCell(std::vector<Primitive> &primitives) const
{
    if (!m_molecule.cell || !m_cellVisible)
        return;
    const auto &cell = *m_molecule.cell;
    for (int axis = 0; axis < 3; ++axis) {
        const QVector3D &edge = cell[axis + 1];
        const QVector3D &second = cell[(axis + 1) % 3 + 1];
        const QVector3D &third = cell[(axis + 2) % 3 + 1];
        for (int corner = 0; corner < 4; ++corner) {
            const QVector3D start = cell[0] + second * float(corner & 1) + third * float(corner >> 1);
            for (int piece = 0; piece < edgePieces; ++piece) {
                const QVector3D from = turned(start + edge * (float(piece) / edgePieces));
                const QVector3D to = turned(start + edge * (float(piece + 1) / edgePieces));
                // The three edges at the origin carry the axes' colours.
                primitives.push_back({Primitive::CellEdge, (from.z() + to.z()) / 2, corner == 0 ? axis : -1,
                                      project(from), project(to)});
            }
        }
    }
}

void MoleculeView::addBonds(std::vector<Primitive> &primitives) const
{
    for (const auto &[i, j] : m_molecule.bonds) {
        if (!isShown(m_molecule.atoms[i]) || !isShown(m_molecule.atoms[j]))
            continue;
        const QVector3D ends[] = {turned(m_molecule.atoms[i].position), turned(m_molecule.atoms[j].position)};
        const QVector3D middle = (ends[0] + ends[1]) / 2;
        const float length = (ends[1] - ends[0]).length();
        for (int side = 0; side < 2; ++side) {
            const int atom = side == 0 ? i : j;
            // From inside the ball's surface, so that a stick towards the viewer leaves it where it does in space.
            const float inside = float(ElementStyle::ballRadius(m_molecule.atoms[atom].element)) * 0.9f;
            if (length <= 2 * inside)
                continue;
            const QVector3D start = ends[side] + (ends[1 - side] - ends[side]) * (inside / length);
            primitives.push_back(
                {Primitive::HalfBond, (start.z() + middle.z()) / 2, atom, project(start), project(middle)});
        }
    }
}

void MoleculeView::paint(QPainter *painter) const
{
    std::vector<Primitive> primitives;
    primitives.reserve(m_molecule.atoms.size() + 2 * m_molecule.bonds.size() + 12 * edgePieces);
    addCell(primitives);
    addBonds(primitives);
    size_t balls = 0;
    for (int i = 0; i < int(m_molecule.atoms.size()); ++i) {
        if (!isShown(m_molecule.atoms[i]))
            continue;
        const QVector3D t = turned(m_molecule.atoms[i].position);
        primitives.push_back({Primitive::Ball, t.z(), i, project(t), {}});
        ++balls;
    }
    std::stable_sort(primitives.begin(), primitives.end(),
                     [](const Primitive &a, const Primitive &b) { return a.depth < b.depth; });

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QSet<int> labelled = readableLabels(primitives);
    for (const Primitive &p : primitives) {
        switch (p.kind) {
        case Primitive::Ball:
            drawBall(painter, p, balls > flatAbove);
            if (labelled.contains(p.index))
                drawLabel(painter, p);
            break;
        case Primitive::HalfBond:
            drawHalfBond(painter, p);
            break;
        case Primitive::CellEdge:
            painter->setPen(QPen(mixed(p.index < 0 ? cellColor : axisColors[p.index], Qt::white, haze(p.depth)),
                                 p.index < 0 ? 0.9 : 1.4, Qt::SolidLine, Qt::FlatCap));
            painter->drawLine(p.from, p.to);
            break;
        }
    }
    drawCellLabels(painter);
    painter->restore();
}

double MoleculeView::haze(float depth) const
{
    return 0.5 * std::clamp(0.5 - double(depth) / m_depthRange, 0.0, 1.0);
}

void MoleculeView::drawBall(QPainter *painter, const Primitive &ball, bool flat) const
{
    const int element = m_molecule.atoms[ball.index].element;
    const double radius = ElementStyle::ballRadius(element) * scale();
    const double fog = haze(ball.depth);
    if (m_selection.contains(ball.index)) {
        painter->setPen(QPen(Qt::white, 1));
        painter->setBrush(selectionColor);
        const double ring = radius + std::max(3.0, 0.12 * scale());
        painter->drawEllipse(ball.from, ring, ring);
    }
    const QColor color = mixed(ElementStyle::color(element), Qt::white, fog);
    const QColor rim = mixed(mixed(color, Qt::black, 0.45), Qt::white, fog);
    painter->setPen(QPen(rim, std::clamp(radius * 0.06, 0.4, 1.0)));
    if (flat) {
        painter->setBrush(color);
    } else {
        QRadialGradient gradient(ball.from, radius * 1.05, ball.from - QPointF(radius * 0.35, radius * 0.4));
        gradient.setColorAt(0, mixed(color, Qt::white, 0.75));
        gradient.setColorAt(0.35, color);
        gradient.setColorAt(1, mixed(color, Qt::black, 0.38));
        painter->setBrush(gradient);
    }
    painter->drawEllipse(ball.from, radius, radius);
}

QFont MoleculeView::labelFont(int element) const
{
    QFont font;
    font.setPixelSize(int(std::clamp(ElementStyle::ballRadius(element) * scale() * 0.8, 8.0, 14.0)));
    return font;
}

QRectF MoleculeView::labelArea(const Primitive &ball) const
{
    QRectF area =
        QFontMetricsF(labelFont(m_molecule.atoms[ball.index].element)).tightBoundingRect(m_labels.value(ball.index));
    area.moveCenter(ball.from);
    return area;
}

QSet<int> MoleculeView::readableLabels(const std::vector<Primitive> &backToFront) const
{
    QSet<int> readable;
    std::vector<QRectF> taken;
    for (auto p = backToFront.rbegin(); p != backToFront.rend() && !m_labels.isEmpty(); ++p) {
        if (p->kind != Primitive::Ball || m_labels.value(p->index).isEmpty())
            continue;
        const QRectF area = labelArea(*p).adjusted(-1, -1, 1, 1);
        if (std::any_of(taken.begin(), taken.end(), [&](const QRectF &other) { return other.intersects(area); }))
            continue;
        taken.push_back(area);
        readable.insert(p->index);
    }
    return readable;
}

void MoleculeView::drawLabel(QPainter *painter, const Primitive &ball) const
{
    const QFont font = labelFont(m_molecule.atoms[ball.index].element);
    const QString text = m_labels.value(ball.index);
    QPainterPath path;
    path.addText(ball.from - QFontMetricsF(font).tightBoundingRect(text).center(), font, text);
    // Readable on dark balls, on light ones and beside them.
    painter->strokePath(path, QPen(QColor(255, 255, 255, 210), 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->fillPath(path, Qt::black);
}

void MoleculeView::drawHalfBond(QPainter *painter, const Primitive &bond) const
{
    const QColor color = mixed(ElementStyle::color(m_molecule.atoms[bond.index].element), Qt::white, haze(bond.depth));
    const double width = std::max(1.2, 2 * bondRadius * scale());
    painter->setPen(QPen(mixed(color, Qt::black, 0.4), width, Qt::SolidLine, Qt::FlatCap));
    painter->drawLine(bond.from, bond.to);
    painter->setPen(QPen(color, std::max(0.6, width - 1.6), Qt::SolidLine, Qt::FlatCap));
    painter->drawLine(bond.from, bond.to);
}

void MoleculeView::drawCellLabels(QPainter *painter) const
{
    if (!m_molecule.cell || !m_cellVisible)
        return;
    const auto &cell = *m_molecule.cell;
    QFont font;
    font.setPixelSize(13);
    font.setItalic(true);
    font.setBold(true);
    painter->setFont(font);
    const QPointF origin = project(turned(cell[0]));
    const QPointF middle = project(turned(cell[0] + (cell[1] + cell[2] + cell[3]) / 2));
    // Just outside the cell, away from its middle.
    const auto draw = [&](const QPointF &at, const QString &letter, const QColor &color) {
        const QPointF outward = at - middle;
        const double length = std::hypot(outward.x(), outward.y());
        const QPointF centre = at + (length > 0 ? outward * (9 / length) : QPointF(0, -9));
        QPainterPath path;
        const QRectF box = QFontMetricsF(font).tightBoundingRect(letter);
        path.addText(centre - box.center(), font, letter);
        painter->strokePath(path, QPen(Qt::white, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->fillPath(path, color);
    };
    draw(origin, QStringLiteral("0"), cellColor);
    for (int axis = 0; axis < 3; ++axis) {
        if (!cell[axis + 1].isNull())
            draw(project(turned(cell[0] + cell[axis + 1])), QString(QChar(u'a' + axis)), axisColors[axis]);
    }
}

} // namespace Workbench
