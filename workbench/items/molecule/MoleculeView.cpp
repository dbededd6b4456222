// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/molecule/MoleculeView.h"

#include "items/molecule/ElementStyle.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPaintEngine>
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
constexpr size_t spritesAbove = 300; // balls; more are drawn from pictures of each kind
constexpr size_t plainAbove = 1500; // balls; more have bonds without an outline and tensors without their circles
constexpr quint32 hazeSteps = 32;
constexpr double largestSemiAxis = 0.6; // Angstrom
constexpr double smallestSemiAxis = 0.02;

const QColor cellColor(0x70, 0x78, 0x82);
const QColor axisColors[] = {QColor(0xc6, 0x28, 0x28), QColor(0x2e, 0x7d, 0x32), QColor(0x15, 0x65, 0xc0)};
const QColor selectionColor(0xff, 0x9f, 0x00);
const QColor measuringColor(0x8e, 0x24, 0xaa);
const QColor positiveColor(0x15, 0x4a, 0x9c);
const QColor negativeColor(0xc6, 0x3d, 0x00);

QColor mixed(const QColor &color, const QColor &other, double share)
{
    const auto channel = [share](int a, int b) { return int(std::lround(a + (b - a) * share)); };
    return QColor(channel(color.red(), other.red()), channel(color.green(), other.green()),
                  channel(color.blue(), other.blue()));
}

void paintBall(QPainter *painter, const QPointF &centre, double radius, int element, double fog)
{
    const QColor color = mixed(ElementStyle::color(element), Qt::white, fog);
    const QColor rim = mixed(mixed(color, Qt::black, 0.45), Qt::white, fog);
    painter->setPen(QPen(rim, std::clamp(radius * 0.06, 0.4, 1.0)));
    QRadialGradient gradient(centre, radius * 1.05, centre - QPointF(radius * 0.35, radius * 0.4));
    gradient.setColorAt(0, mixed(color, Qt::white, 0.75));
    gradient.setColorAt(0.35, color);
    gradient.setColorAt(1, mixed(color, Qt::black, 0.38));
    painter->setBrush(gradient);
    painter->drawEllipse(centre, radius, radius);
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
    m_packed = PackedMolecule::of(m_molecule, m_packing);
    resetView();
}

void MoleculeView::setPacking(const Packing &packing)
{
    if (packing == m_packing)
        return;
    m_packing = packing;
    m_packed = PackedMolecule::of(m_molecule, m_packing);
    fit();
}

void MoleculeView::setTensors(const std::vector<TensorShape> &tensors, double scale)
{
    m_tensors = tensors;
    m_tensorScale.clear();
    QHash<int, double> largest;
    for (size_t atom = 0; atom < std::min(tensors.size(), m_molecule.atoms.size()); ++atom) {
        double &most = largest[m_molecule.atoms[atom].element];
        for (double value : tensors[atom].values)
            most = std::max(most, tensors[atom].exists ? std::abs(value) : 0.0);
    }
    for (auto it = largest.cbegin(); it != largest.cend(); ++it)
        m_tensorScale.insert(it.key(), *it > 0 ? scale * largestSemiAxis / *it : 0.0);
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
    for (const auto &atom : m_packed.molecule.atoms) {
        if (atom.drawable)
            include(atom.position, ElementStyle::ballRadius(atom.element));
    }
    if (m_packed.molecule.cell) {
        const auto &[origin, a, b, c] = *m_packed.molecule.cell;
        const auto &[na, nb, nc] = m_packed.cells;
        for (int corner = 0; corner < 8; ++corner)
            include(origin + a * float((corner & 1) * na) + b * float((corner >> 1 & 1) * nb)
                        + c * float((corner >> 2 & 1) * nc),
                    0.05);
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
    const int index = m_packed.first.at(size_t(atom));
    return index < 0 ? m_centre : project(turned(m_packed.molecule.atoms[size_t(index)].position));
}

AtomImage MoleculeView::firstImage(int atom) const
{
    const int index = m_packed.first.at(size_t(atom));
    return index < 0 ? AtomImage{atom, {}} : m_packed.images[size_t(index)];
}

QVector3D MoleculeView::position(const AtomImage &image) const
{
    QVector3D position = m_molecule.atoms.at(size_t(image.atom)).position;
    for (size_t axis = 0; axis < 3 && m_molecule.cell; ++axis)
        position += (*m_molecule.cell)[axis + 1] * float(image.cell[axis]);
    return position;
}

int MoleculeView::indexAt(const QPointF &pos) const
{
    int front = -1;
    float depth = 0;
    for (int i = 0; i < int(m_packed.molecule.atoms.size()); ++i) {
        const auto &atom = m_packed.molecule.atoms[size_t(i)];
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

int MoleculeView::atomAt(const QPointF &pos) const
{
    const int index = indexAt(pos);
    return index < 0 ? -1 : atomOf(index);
}

std::optional<AtomImage> MoleculeView::imageAt(const QPointF &pos) const
{
    const int index = indexAt(pos);
    return index < 0 ? std::nullopt : std::optional(m_packed.images[size_t(index)]);
}

void MoleculeView::addCell(std::vector<Primitive> &primitives) const
{
    if (!m_packed.molecule.cell || !m_cellVisible)
        return;
    const auto &cell = *m_packed.molecule.cell;
    for (int c = 0; c < m_packed.cells[2]; ++c)
        for (int b = 0; b < m_packed.cells[1]; ++b)
            for (int a = 0; a < m_packed.cells[0]; ++a)
                addCell(primitives, cell[0] + cell[1] * float(a) + cell[2] * float(b) + cell[3] * float(c),
                        a + b + c == 0);
}

void MoleculeView::addCell(std::vector<Primitive> &primitives, const QVector3D &origin, bool first) const
{
    const auto &cell = *m_packed.molecule.cell;
    for (int axis = 0; axis < 3; ++axis) {
        const QVector3D &edge = cell[axis + 1];
        const QVector3D &second = cell[(axis + 1) % 3 + 1];
        const QVector3D &third = cell[(axis + 2) % 3 + 1];
        for (int corner = 0; corner < 4; ++corner) {
            const QVector3D start = origin + second * float(corner & 1) + third * float(corner >> 1);
            for (int piece = 0; piece < edgePieces; ++piece) {
                const QVector3D from = turned(start + edge * (float(piece) / edgePieces));
                const QVector3D to = turned(start + edge * (float(piece + 1) / edgePieces));
                // The three edges at the first origin carry the axes' colours.
                primitives.push_back({Primitive::CellEdge, (from.z() + to.z()) / 2, first && corner == 0 ? axis : -1,
                                      project(from), project(to)});
            }
        }
    }
}

void MoleculeView::addBonds(std::vector<Primitive> &primitives) const
{
    for (const auto &[i, j] : m_packed.molecule.bonds) {
        if (!isShown(m_packed.molecule.atoms[i]) || !isShown(m_packed.molecule.atoms[j]))
            continue;
        const QVector3D ends[] = {turned(m_packed.molecule.atoms[i].position),
                                  turned(m_packed.molecule.atoms[j].position)};
        const QVector3D middle = (ends[0] + ends[1]) / 2;
        const float length = (ends[1] - ends[0]).length();
        for (int side = 0; side < 2; ++side) {
            const int atom = side == 0 ? i : j;
            // From inside the ball's surface, so that a stick towards the viewer leaves it where it does in space.
            const float inside = float(ElementStyle::ballRadius(m_packed.molecule.atoms[atom].element)) * 0.9f;
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
    primitives.reserve(m_packed.molecule.atoms.size() + 2 * m_packed.molecule.bonds.size() + 12 * edgePieces);
    addCell(primitives);
    addBonds(primitives);
    size_t balls = 0;
    for (int i = 0; i < int(m_packed.molecule.atoms.size()); ++i) {
        if (!isShown(m_packed.molecule.atoms[i]))
            continue;
        const QVector3D t = turned(m_packed.molecule.atoms[i].position);
        primitives.push_back({Primitive::Ball, t.z(), i, project(t), {}});
        ++balls;
    }
    std::stable_sort(primitives.begin(), primitives.end(),
                     [](const Primitive &a, const Primitive &b) { return a.depth < b.depth; });

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const double resolution = std::hypot(painter->worldTransform().m11(), painter->worldTransform().m12())
        * painter->device()->devicePixelRatioF();
    const QPaintEngine *engine = painter->paintEngine();
    const bool sprites = balls > spritesAbove && engine && engine->type() == QPaintEngine::Raster;
    const QSet<int> labelled = readableLabels(primitives);
    for (const Primitive &p : primitives) {
        switch (p.kind) {
        case Primitive::Ball:
            drawRing(painter, p);
            if (hasTensor(p.index))
                drawTensor(painter, p, balls > plainAbove);
            else if (sprites)
                drawSprite(painter, p, resolution);
            else
                drawBall(painter, p);
            if (labelled.contains(p.index))
                drawLabel(painter, p);
            break;
        case Primitive::HalfBond:
            drawHalfBond(painter, p, balls > plainAbove);
            break;
        case Primitive::CellEdge:
            painter->setPen(QPen(mixed(p.index < 0 ? cellColor : axisColors[p.index], Qt::white, haze(p.depth)),
                                 p.index < 0 ? 0.9 : 1.4, Qt::SolidLine, Qt::FlatCap));
            painter->drawLine(p.from, p.to);
            break;
        }
    }
    drawCellLabels(painter);
    drawLines(painter);
    painter->restore();
}

double MoleculeView::haze(float depth) const
{
    return 0.5 * std::clamp(0.5 - double(depth) / m_depthRange, 0.0, 1.0);
}

void MoleculeView::drawRing(QPainter *painter, const Primitive &ball) const
{
    if (!m_selection.contains(atomOf(ball.index)))
        return;
    const int element = m_packed.molecule.atoms[size_t(ball.index)].element;
    const double radius = hasTensor(ball.index) ? largestSemiAxis : ElementStyle::ballRadius(element);
    painter->setPen(QPen(Qt::white, 1));
    painter->setBrush(selectionColor);
    const double ring = radius * scale() + std::max(3.0, 0.12 * scale());
    painter->drawEllipse(ball.from, ring, ring);
}

void MoleculeView::drawBall(QPainter *painter, const Primitive &ball) const
{
    const int element = m_packed.molecule.atoms[size_t(ball.index)].element;
    paintBall(painter, ball.from, ElementStyle::ballRadius(element) * scale(), element, haze(ball.depth));
}

void MoleculeView::drawSprite(QPainter *painter, const Primitive &ball, double resolution) const
{
    if (m_spriteScale != resolution * scale()) {
        m_sprites.clear();
        m_spriteScale = resolution * scale();
    }
    const int element = m_packed.molecule.atoms[size_t(ball.index)].element;
    const quint32 step = quint32(haze(ball.depth) * 2 * (hazeSteps - 1));
    QPixmap &sprite = m_sprites[quint32(element) * hazeSteps + step];
    const double radius = ElementStyle::ballRadius(element) * scale();
    if (sprite.isNull()) {
        const int size = 2 * int(std::ceil((radius + 1) * resolution)) + 1;
        sprite = QPixmap(size, size);
        sprite.fill(Qt::transparent);
        sprite.setDevicePixelRatio(resolution);
        QPainter once(&sprite);
        once.setRenderHint(QPainter::Antialiasing);
        const double middle = size / (2 * resolution);
        paintBall(&once, {middle, middle}, radius, element, step / (2.0 * (hazeSteps - 1)));
    }
    const double half = sprite.width() / (2 * resolution);
    painter->drawPixmap(ball.from - QPointF(half, half), sprite);
}

bool MoleculeView::hasTensor(int index) const
{
    const size_t atom = size_t(atomOf(index));
    return atom < m_tensors.size() && m_tensors[atom].exists && m_tensorScale.value(m_molecule.atoms[atom].element) > 0;
}

void MoleculeView::drawTensor(QPainter *painter, const Primitive &ball, bool plain) const
{
    const int atom = atomOf(ball.index);
    const int element = m_molecule.atoms[size_t(atom)].element;
    const TensorShape &tensor = m_tensors[size_t(atom)];
    std::array<QVector3D, 3> axes; // on the screen
    std::array<double, 3> lengths{}; // pixels
    double xx = 0, xy = 0, yy = 0; // what the ellipsoid's outline is: the root of this matrix, applied to a circle
    for (size_t k = 0; k < 3; ++k) {
        axes[k] = turned(tensor.axes[k]);
        lengths[k] = std::max(std::abs(tensor.values[k]) * m_tensorScale.value(element), smallestSemiAxis) * scale();
        const double square = lengths[k] * lengths[k];
        xx += square * double(axes[k].x()) * double(axes[k].x());
        xy -= square * double(axes[k].x()) * double(axes[k].y()); // the screen's y points downwards
        yy += square * double(axes[k].y()) * double(axes[k].y());
    }
    const double mean = (xx + yy) / 2, spread = std::hypot((xx - yy) / 2, xy);
    const double major = std::sqrt(mean + spread), minor = std::sqrt(std::max(mean - spread, 0.0));
    const QColor color = mixed(ElementStyle::color(element), Qt::white, haze(ball.depth));
    painter->save();
    painter->translate(ball.from);
    painter->rotate(std::atan2(2 * xy, xx - yy) / 2 * 180 / M_PI);
    QRadialGradient gradient(0.5, 0.5, 0.55, 0.35, 0.35);
    gradient.setCoordinateMode(QGradient::ObjectBoundingMode);
    gradient.setColorAt(0, mixed(color, Qt::white, 0.7));
    gradient.setColorAt(0.5, color);
    gradient.setColorAt(1, mixed(color, Qt::black, 0.3));
    painter->setBrush(gradient);
    const QColor ink = mixed(mixed(color, Qt::black, 0.6), Qt::white, haze(ball.depth));
    painter->setPen(QPen(ink, 0.8));
    painter->drawEllipse(QPointF(), major, minor);
    painter->restore();

    // The sections through two axes each, their front halves.
    for (size_t k = 0; k < 3 && !plain; ++k) {
        const size_t a = (k + 1) % 3, b = (k + 2) % 3;
        const double facing = std::atan2(double(axes[b].z()) / lengths[b], double(axes[a].z()) / lengths[a]);
        QPolygonF arc;
        constexpr int pieces = 24;
        for (int i = 0; i <= pieces; ++i) {
            const double angle = facing + M_PI * (double(i) / pieces - 0.5);
            const double ca = lengths[a] * std::cos(angle), cb = lengths[b] * std::sin(angle);
            arc.append(ball.from
                       + QPointF(ca * double(axes[a].x()) + cb * double(axes[b].x()),
                                 -ca * double(axes[a].y()) - cb * double(axes[b].y())));
        }
        painter->setPen(QPen(ink, 0.7));
        painter->drawPolyline(arc);
    }
    for (size_t k = 0; k < 3 && m_tensorAxesVisible; ++k) {
        const QPointF end = QPointF(double(axes[k].x()), -double(axes[k].y())) * (1.2 * lengths[k]);
        const bool negative = tensor.values[k] < 0;
        painter->setPen(QPen(negative ? negativeColor : positiveColor, 1.6, negative ? Qt::DashLine : Qt::SolidLine));
        painter->drawLine(ball.from - end, ball.from + end);
    }
}

void MoleculeView::drawLines(QPainter *painter) const
{
    QFont font;
    font.setPixelSize(12);
    font.setBold(true);
    const auto shown = [&](const AtomImage &image) {
        return image.atom >= 0 && image.atom < int(m_molecule.atoms.size());
    };
    for (const AtomLine &line : m_lines) {
        if (!shown(line.from) || !shown(line.to))
            continue;
        const QPointF from = project(turned(position(line.from) + m_packed.shift));
        const QPointF to = project(turned(position(line.to) + m_packed.shift));
        painter->setPen(QPen(measuringColor, 1.6, Qt::DashLine));
        painter->drawLine(from, to);
        // Where the neighbour itself is not shown, its place is.
        if (std::find(m_packed.images.begin(), m_packed.images.end(), line.to) == m_packed.images.end()) {
            const int element = m_molecule.atoms[size_t(line.to.atom)].element;
            painter->setPen(QPen(measuringColor, 1, Qt::DotLine));
            painter->setBrush(mixed(ElementStyle::color(element), Qt::white, 0.6));
            const double radius = ElementStyle::ballRadius(element) * scale();
            painter->drawEllipse(to, radius, radius);
        }
        if (line.text.isEmpty())
            continue;
        QPainterPath path;
        path.addText((from + to) / 2 - QFontMetricsF(font).tightBoundingRect(line.text).center(), font, line.text);
        painter->strokePath(path, QPen(QColor(255, 255, 255, 230), 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->fillPath(path, measuringColor.darker(130));
    }
}

QFont MoleculeView::labelFont(int element) const
{
    QFont font;
    font.setPixelSize(int(std::clamp(ElementStyle::ballRadius(element) * scale() * 0.8, 8.0, 14.0)));
    return font;
}

QRectF MoleculeView::labelArea(const Primitive &ball) const
{
    QRectF area = QFontMetricsF(labelFont(m_packed.molecule.atoms[size_t(ball.index)].element))
                      .tightBoundingRect(m_labels.value(atomOf(ball.index)));
    area.moveCenter(ball.from);
    return area;
}

QSet<int> MoleculeView::readableLabels(const std::vector<Primitive> &backToFront) const
{
    QSet<int> readable;
    std::vector<QRectF> taken;
    for (auto p = backToFront.rbegin(); p != backToFront.rend() && !m_labels.isEmpty(); ++p) {
        if (p->kind != Primitive::Ball || m_labels.value(atomOf(p->index)).isEmpty())
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
    const QFont font = labelFont(m_packed.molecule.atoms[size_t(ball.index)].element);
    const QString text = m_labels.value(atomOf(ball.index));
    QPainterPath path;
    path.addText(ball.from - QFontMetricsF(font).tightBoundingRect(text).center(), font, text);
    // Readable on dark balls, on light ones and beside them.
    painter->strokePath(path, QPen(QColor(255, 255, 255, 210), 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->fillPath(path, Qt::black);
}

void MoleculeView::drawHalfBond(QPainter *painter, const Primitive &bond, bool plain) const
{
    const int element = m_packed.molecule.atoms[size_t(bond.index)].element;
    const QColor color = mixed(ElementStyle::color(element), Qt::white, haze(bond.depth));
    const double width = std::max(1.2, 2 * bondRadius * scale());
    painter->setPen(QPen(mixed(color, Qt::black, plain ? 0.2 : 0.4), width, Qt::SolidLine, Qt::FlatCap));
    painter->drawLine(bond.from, bond.to);
    if (plain)
        return;
    painter->setPen(QPen(color, std::max(0.6, width - 1.6), Qt::SolidLine, Qt::FlatCap));
    painter->drawLine(bond.from, bond.to);
}

void MoleculeView::drawCellLabels(QPainter *painter) const
{
    if (!m_packed.molecule.cell || !m_cellVisible)
        return;
    const auto &cell = *m_packed.molecule.cell;
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
