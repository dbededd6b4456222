// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/MoleculeItem.h"

#include "items/AtomSelection.h"
#include "items/ElementStyle.h"
#include "support/MetaTypes.h"

#include <QApplication>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsSceneWheelEvent>
#include <QMap>
#include <QMenu>

#include <cmath>

namespace {

const QString idKey = QStringLiteral("ID");
const QString rotationKey = QStringLiteral("Rotation"); // a quaternion: scalar, x, y, z
const QString zoomKey = QStringLiteral("Zoom");
const QString numbersKey = QStringLiteral("AtomNumbers");

/// Carbon, hydrogen, then the rest by the alphabet: the Hill order, of everything that is drawn or not.
QString formula(const Molecule &molecule)
{
    QMap<QString, int> counts;
    for (const auto &atom : molecule.atoms)
        ++counts[ElementStyle::symbol(atom.element)];
    QStringList symbols = counts.keys();
    if (symbols.contains(QLatin1String("C"))) {
        for (const char *first : {"H", "C"}) {
            if (symbols.removeOne(QLatin1String(first)))
                symbols.prepend(QLatin1String(first));
        }
    }
    QString text;
    for (const QString &symbol : std::as_const(symbols)) {
        text += symbol;
        for (QChar digit : counts[symbol] > 1 ? QString::number(counts[symbol]) : QString())
            text += QChar(0x2080 + digit.digitValue());
    }
    return text;
}

} // namespace

MoleculeItem::MoleculeItem(const QVariantMap &description, QGraphicsItem *parent)
    : DocumentItem(description.value(idKey).toUuid(), parent)
{
    setMolMap(description);
}

QVariantMap MoleculeItem::molMap() const
{
    return m_description;
}

void MoleculeItem::setMolMap(QVariantMap description)
{
    // Storing something beside the atoms must not turn the molecule back or drop the selection.
    const auto geometry = [](const QVariantMap &map) {
        return QVariantList{map.value(QStringLiteral("Atoms")), map.value(QStringLiteral("CrystallographicData"))};
    };
    const bool sameGeometry = !m_description.isEmpty() && geometry(description) == geometry(m_description);
    m_description = description;
    m_description.insert(idKey, id());
    if (sameGeometry)
        return;
    m_view.setMolecule(Molecule::fromDescription(m_description));
    setSelectedAtoms(selectedAtoms());
    const QString text = formula(m_view.molecule());
    setTitle(text.isEmpty() ? tr("Molecule without atoms") : tr("Unit cell: %1").arg(text));
    if (!m_view.molecule().cell && !text.isEmpty())
        setTitle(tr("Molecule: %1").arg(text));
    update();
}

void MoleculeItem::setSelectedAtoms(const QSet<int> &atoms)
{
    QSet<int> known;
    for (int atom : atoms) {
        if (atom >= 0 && atom < int(m_view.molecule().atoms.size()))
            known.insert(atom);
    }
    m_view.setSelection(known);
    update();
}

QVariantMap MoleculeItem::viewState() const
{
    const QQuaternion turn = m_view.rotation();
    return {{rotationKey, QVariant::fromValue(DoubleVector{turn.scalar(), turn.x(), turn.y(), turn.z()})},
            {zoomKey, m_view.zoomFactor()},
            {numbersKey, m_view.numbersVisible()}};
}

void MoleculeItem::setViewState(const QVariantMap &state)
{
    const auto turn = state.value(rotationKey).value<DoubleVector>();
    if (turn.size() == 4) {
        m_view.setRotation(QQuaternion(float(turn[0]), float(turn[1]), float(turn[2]), float(turn[3])),
                           state.value(zoomKey).toDouble());
    }
    m_view.setNumbersVisible(state.value(numbersKey).toBool());
    update();
}

void MoleculeItem::receiveMessage(const QVariantMap &message)
{
    if (AtomSelection::isMessage(message))
        setSelectedAtoms(AtomSelection::fromMessage(message));
}

void MoleculeItem::paintContent(QPainter *painter, const QRectF &, bool)
{
    m_view.paint(painter);
}

void MoleculeItem::layoutContent(const QRectF &content)
{
    m_view.setArea(content);
}

void MoleculeItem::fillContextMenu(QMenu *menu)
{
    QAction *numbers = menu->addAction(tr("Show Atom Numbers"));
    numbers->setCheckable(true);
    numbers->setChecked(m_view.numbersVisible());
    connect(numbers, &QAction::toggled, this, [this](bool on) {
        m_view.setNumbersVisible(on);
        update();
    });
    connect(menu->addAction(tr("Reset View")), &QAction::triggered, this, &MoleculeItem::resetView);
}

void MoleculeItem::resetView()
{
    m_view.resetView();
    update();
}

void MoleculeItem::selectByClick(int atom, bool toggle)
{
    QSet<int> atoms = toggle ? selectedAtoms() : QSet<int>();
    if (atom >= 0 && toggle && atoms.contains(atom))
        atoms.remove(atom);
    else if (atom >= 0)
        atoms.insert(atom);
    if (atoms == selectedAtoms())
        return;
    setSelectedAtoms(atoms);
    sendMessage(AtomSelection::toMessage(atoms));
}

void MoleculeItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    DocumentItem::mousePressEvent(event);
    m_pressedInside = event->button() == Qt::LeftButton && !isTitleBar(event->pos());
    m_rotating = false;
}

void MoleculeItem::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (!m_pressedInside) {
        DocumentItem::mouseMoveEvent(event);
        return;
    }
    const QPointF moved = event->screenPos() - event->buttonDownScreenPos(Qt::LeftButton);
    m_rotating = m_rotating || moved.manhattanLength() >= QApplication::startDragDistance();
    if (m_rotating) {
        m_view.rotate(event->lastPos(), event->pos());
        update();
    }
}

void MoleculeItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    DocumentItem::mouseReleaseEvent(event);
    if (m_pressedInside && !m_rotating)
        selectByClick(m_view.atomAt(event->pos()), event->modifiers().testFlag(Qt::ControlModifier));
    m_pressedInside = false;
}

void MoleculeItem::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    if (m_view.atomAt(event->pos()) < 0)
        resetView();
}

void MoleculeItem::wheelEvent(QGraphicsSceneWheelEvent *event)
{
    m_view.zoom(std::pow(1.0015, event->delta()));
    update();
    event->accept();
}
