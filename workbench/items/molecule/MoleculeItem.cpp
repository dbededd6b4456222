// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/molecule/MoleculeItem.h"

#include "data/AtomSelection.h"
#include "items/molecule/ElementStyle.h"
#include "data/PluginCall.h"
#include "items/table/TableItem.h"
#include "support/MetaTypes.h"

#include <QActionGroup>
#include <QApplication>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsSceneWheelEvent>
#include <QKeyEvent>
#include <QMap>
#include <QMenu>

#include <cmath>

namespace Workbench {

namespace {

const QString idKey = QStringLiteral("ID");
const QString rotationKey = QStringLiteral("Rotation"); // a quaternion: scalar, x, y, z
const QString zoomKey = QStringLiteral("Zoom");
const QString labelsKey = QStringLiteral("Labels");
const QString cellKey = QStringLiteral("Cell");
const QString hydrogensKey = QStringLiteral("Hydrogens");

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
    m_assignments.reset();
    Q_EMIT assignmentsChanged();
    if (sameGeometry)
        return;
    m_view.setMolecule(Molecule::fromDescription(m_description));
    m_view.setLabels(labelTexts());
    setSelectedAtoms(selectedAtoms());
    const QString text = formula(m_view.molecule());
    setTitle(text.isEmpty() ? tr("Molecule without atoms") : tr("Unit cell: %1").arg(text));
    if (!m_view.molecule().cell && !text.isEmpty())
        setTitle(tr("Molecule: %1").arg(text));
    update();
}

const PeakAssignments &MoleculeItem::assignments() const
{
    if (!m_assignments)
        m_assignments = PeakAssignments::fromMolMap(m_description);
    return *m_assignments;
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
    fillLabelMenu(menu->addMenu(tr("Labels")));
    const auto add = [&](const QString &text, bool on, void (MoleculeView::*set)(bool)) {
        QAction *action = menu->addAction(text);
        action->setCheckable(true);
        action->setChecked(on);
        connect(action, &QAction::toggled, this, [this, set](bool visible) {
            (m_view.*set)(visible);
            update();
        });
    };
    add(tr("Show Unit Cell"), m_view.cellVisible(), &MoleculeView::setCellVisible);
    add(tr("Show Hydrogens"), m_view.hydrogensVisible(), &MoleculeView::setHydrogensVisible);
    connect(menu->addAction(tr("Reset View") + QStringLiteral("\tHome")), &QAction::triggered, this,
            &MoleculeItem::resetView);
}

void MoleculeItem::fillLabelMenu(QMenu *menu)
{
    auto *group = new QActionGroup(menu);
    for (const auto &[text, labels] : {std::pair(tr("None"), Labels::None), std::pair(tr("Element"), Labels::Elements),
                                       std::pair(tr("Element and Number"), Labels::Numbers),
                                       std::pair(tr("Label of the File"), Labels::FileLabels)}) {
        QAction *action = menu->addAction(text);
        action->setCheckable(true);
        action->setActionGroup(group);
        action->setChecked(labels == m_labels);
        action->setEnabled(labels != Labels::FileLabels || !fileLabels().isEmpty());
        action->setVisible(labels != Labels::Numbers || fileLabels().isEmpty());
        connect(action, &QAction::triggered, this, [this, labels = labels] { setLabels(labels); });
    }
}

void MoleculeItem::setLabels(Labels labels)
{
    m_labels = labels;
    m_view.setLabels(labelTexts());
    update();
}

QStringList MoleculeItem::labelTexts() const
{
    if (m_labels == Labels::None)
        return {};
    // A number of our own beside the file's labels would name other atoms than the table does.
    if (const QStringList ofTable = fileLabels();
        m_labels == Labels::FileLabels || (m_labels == Labels::Numbers && !ofTable.isEmpty()))
        return ofTable;
    QStringList texts;
    for (const Molecule::Atom &atom : m_view.molecule().atoms) {
        texts.append(ElementStyle::symbol(atom.element));
        if (m_labels == Labels::Numbers)
            texts.last() += QString::number(texts.size());
    }
    return texts;
}

QStringList MoleculeItem::fileLabels() const
{
    QStringList texts(qsizetype(m_view.molecule().atoms.size()));
    bool any = false;
    for (DocumentItem *item : linkedItems()) {
        auto *table = qobject_cast<TableItem *>(item);
        for (const QVariant &row : table ? table->rowMaps() : QVariantList()) {
            const QString label = row.toMap().value(QStringLiteral("labels")).toStringList().join(u',');
            for (const QVariant &number : row.toMap().value(QStringLiteral("atomNos")).toList()) {
                const int atom = number.toInt();
                if (atom >= 0 && atom < texts.size()) {
                    texts[atom] = label;
                    any = true;
                }
            }
        }
    }
    return any ? texts : QStringList();
}

QVariantMap MoleculeItem::viewSettings() const
{
    const QQuaternion turn = m_view.rotation();
    return {{rotationKey, QVariant::fromValue(DoubleVector{turn.scalar(), turn.x(), turn.y(), turn.z()})},
            {zoomKey, m_view.zoomFactor()},
            {labelsKey, int(m_labels)},
            {cellKey, m_view.cellVisible()},
            {hydrogensKey, m_view.hydrogensVisible()}};
}

void MoleculeItem::setViewSettings(const QVariantMap &settings)
{
    const auto turn = settings.value(rotationKey).value<DoubleVector>();
    if (turn.size() == 4)
        m_view.setRotation(QQuaternion(float(turn[0]), float(turn[1]), float(turn[2]), float(turn[3])),
                           settings.value(zoomKey).toDouble());
    m_view.setCellVisible(settings.value(cellKey, true).toBool());
    m_view.setHydrogensVisible(settings.value(hydrogensKey, true).toBool());
    const int labels = settings.value(labelsKey).toInt();
    setLabels(labels >= 0 && labels <= int(Labels::FileLabels) ? Labels(labels) : Labels::None);
}

void MoleculeItem::keyPressEvent(QKeyEvent *event)
{
    constexpr QPointF step(12, 12); // pixels of a drag
    const auto turn = [&](double x, double y) { m_view.rotate({}, {x * step.x(), y * step.y()}); };
    if (event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier))
        return DocumentItem::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_Left:
        turn(-1, 0);
        break;
    case Qt::Key_Right:
        turn(1, 0);
        break;
    case Qt::Key_Up:
        turn(0, -1);
        break;
    case Qt::Key_Down:
        turn(0, 1);
        break;
    case Qt::Key_Plus:
    case Qt::Key_PageUp:
        m_view.zoom(1.25);
        break;
    case Qt::Key_Minus:
    case Qt::Key_PageDown:
        m_view.zoom(0.8);
        break;
    case Qt::Key_Home:
        return resetView();
    default:
        return DocumentItem::keyPressEvent(event);
    }
    update();
    event->accept();
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
    if (!isCurrent())
        return event->ignore();
    m_view.zoom(std::pow(1.0015, event->delta()));
    update();
    event->accept();
}

} // namespace Workbench
