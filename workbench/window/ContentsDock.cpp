// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/ContentsDock.h"

#include "analysis/PowderEntry.h"
#include "data/Error.h"
#include "data/structure/CrystalStructure.h"
#include "document/UndoCommands.h"
#include "host/DataEngine.h"
#include "host/MainScene.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"

#include <QGraphicsView>
#include <QHeaderView>
#include <QInputDialog>
#include <QMenu>
#include <QMimeData>
#include <QKeyEvent>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace Workbench {

namespace {

// Of a node: the item that it stands for, and the spectrum in it.
constexpr int itemRole = Qt::UserRole;
constexpr int entryRole = Qt::UserRole + 1;

class Tree : public QTreeWidget {
public:
    std::function<void()> rename;
    std::function<void()> remove;

protected:
    bool event(QEvent *event) override
    {
        // These keys mean the tree's entry while it has the focus, and not the window's item.
        if (event->type() == QEvent::ShortcutOverride && commandOf(static_cast<QKeyEvent *>(event)->key())) {
            event->accept();
            return true;
        }
        return QTreeWidget::event(event);
    }

    void keyPressEvent(QKeyEvent *event) override
    {
        if (const auto *command = commandOf(event->key()))
            (*command)();
        else
            QTreeWidget::keyPressEvent(event);
    }

    QStringList mimeTypes() const override { return {ContentsDock::mimeType()}; }

    QMimeData *mimeData(const QList<QTreeWidgetItem *> &nodes) const override
    {
        const QUuid entry = nodes.isEmpty() ? QUuid() : nodes.constFirst()->data(0, entryRole).toUuid();
        if (entry.isNull())
            return nullptr;
        auto *dragged = new QMimeData;
        dragged->setData(ContentsDock::mimeType(),
                         nodes.constFirst()->data(0, itemRole).toUuid().toByteArray() + ' ' + entry.toByteArray());
        return dragged;
    }

private:
    const std::function<void()> *commandOf(int key) const
    {
        return key == Qt::Key_F2 ? &rename : key == Qt::Key_Delete ? &remove : nullptr;
    }
};

double length(const Vector3 &vector)
{
    return std::hypot(vector[0], vector[1], vector[2]);
}

double angle(const Vector3 &a, const Vector3 &b)
{
    const double product = a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
    return std::acos(product / (length(a) * length(b))) * 180 / M_PI;
}

QString cellText(const LatticeVectors &cell)
{
    const auto number = [](double value, int decimals) { return QString::number(value, 'f', decimals); };
    QStringList angles;
    for (const auto &[i, j] : std::array<std::pair<int, int>, 3>{{{1, 2}, {0, 2}, {0, 1}}})
        angles.append(number(angle(cell[size_t(i)], cell[size_t(j)]), 1) + u'°');
    return ContentsDock::tr("a, b, c = %1, %2, %3 Å\nα, β, γ = %4")
        .arg(number(length(cell[0]), 2), number(length(cell[1]), 2), number(length(cell[2]), 2),
             angles.join(QLatin1String(", ")));
}

} // namespace

const QString &ContentsDock::mimeType()
{
    static const QString type = QStringLiteral("application/x-magres-workbench-spectrum");
    return type;
}

ContentsDock::ContentsDock(MainScene *scene, DataEngine *engine, QWidget *parent)
    : QDockWidget(tr("Contents"), parent), m_scene(scene), m_data(engine)
{
    auto *keyTree = new Tree;
    keyTree->rename = [this] { rename(m_tree->currentItem()); };
    keyTree->remove = [this] { remove(m_tree->currentItem()); };
    m_tree = keyTree;
    setObjectName(QStringLiteral("contentsDock"));
    m_tree->setObjectName(QStringLiteral("contents"));
    m_tree->setAccessibleName(tr("Contents of the document"));
    m_tree->setHeaderHidden(true);
    m_tree->setDragEnabled(true);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tree->setTextElideMode(Qt::ElideMiddle);
    setWidget(m_tree);
    connect(m_tree, &QTreeWidget::itemActivated, this, &ContentsDock::activate);
    connect(m_tree, &QTreeWidget::itemChanged, this, &ContentsDock::setHidden);
    connect(m_tree, &QWidget::customContextMenuRequested, this, &ContentsDock::openMenu);
    connect(scene, &MainScene::itemAdded, this, &ContentsDock::watch);
    connect(scene, &MainScene::itemsChanged, this, &ContentsDock::updateLater);
    fill();
}

void ContentsDock::watch(DocumentItem *item)
{
    connect(item, &DocumentItem::titleChanged, this, &ContentsDock::updateLater);
    if (auto *nmr = qobject_cast<NmrItem *>(item)) {
        connect(nmr->nmrData(), &NmrData::entriesChanged, this, &ContentsDock::updateLater);
        connect(nmr->nmrData(), &NmrData::entryChanged, this, &ContentsDock::updateLater);
    }
    updateLater();
}

void ContentsDock::updateLater()
{
    if (m_waiting)
        return;
    m_waiting = true;
    QTimer::singleShot(0, this, &ContentsDock::fill);
}

DocumentItem *ContentsDock::itemOf(const QTreeWidgetItem *node) const
{
    return node ? itemOf(node->data(0, itemRole).toUuid()) : nullptr;
}

DocumentItem *ContentsDock::itemOf(const QUuid &id) const
{
    DocumentItem *item = m_scene->item(id);
    return item && m_scene->isOnPage(item) ? item : nullptr;
}

QUuid ContentsDock::entryOf(const QTreeWidgetItem *node) const
{
    return node ? node->data(0, entryRole).toUuid() : QUuid();
}

QString ContentsDock::describe(const DocumentItem *table) const
{
    const auto *shown = qobject_cast<const TableItem *>(table);
    const QUuid id = shown ? shown->sharedDataIds().value(0) : QUuid();
    const auto known = m_descriptions.constFind(id);
    if (known != m_descriptions.constEnd())
        return *known;
    const CrystalStructure structure = CrystalStructure::fromData(m_data->getDataMap(id));
    QStringList parts;
    if (structure.lattice) {
        parts.append(tr("%1, Z = %2").arg(structure.formula()).arg(structure.formulaUnits()));
        parts.append(cellText(*structure.lattice));
    } else if (!structure.atoms.empty()) {
        parts.append(structure.formula());
    }
    if (!table->sourceNote().isEmpty())
        parts.append(table->sourceNote());
    return m_descriptions[id] = parts.join(u'\n');
}

QTreeWidgetItem *ContentsDock::structureNode(QHash<QString, QTreeWidgetItem *> &nodes, const QString &source)
{
    QTreeWidgetItem *&node = nodes[source];
    if (!node) {
        node = new QTreeWidgetItem(m_tree, {source.isEmpty() ? tr("Without a file") : source});
        node->setExpanded(true);
    }
    return node;
}

QString ContentsDock::simulatedText(const QString &name, const QString &source, const Spectrum &spectrum)
{
    if (name.isEmpty() || name == MainScene::simulatedName(source)) {
        QStringList symbols;
        for (const SpectrumAxis &axis : spectrum.axes)
            symbols.append(axis.nucleus());
        return tr("%1, simulated").arg(symbols.join(u'–'));
    }
    // The file stands above it.
    const QString start = source + QStringLiteral(", ");
    return !source.isEmpty() && name.startsWith(start) ? name.mid(start.size()) : name;
}

void ContentsDock::addSpectra(QHash<QString, QTreeWidgetItem *> &nodes, NmrItem *item)
{
    const NmrData &stack = *item->nmrData();
    QHash<QUuid, QTreeWidgetItem *> sums; // of powder spectra, whose sites hang below
    for (const QUuid &id : stack.entryIds()) {
        const Spectrum &spectrum = stack.spectrum(id);
        QStringList nuclei;
        for (const SpectrumAxis &axis : spectrum.axes) {
            QStringList known{axis.nucleus().isEmpty() ? Texts::tr("nucleus unknown") : axis.nucleus()};
            if (axis.frequency > 0)
                known.append(Texts::tr("%1 MHz").arg(axis.frequency, 0, 'f', 1));
            nuclei.append(known.join(QLatin1String(", ")));
        }
        const QString source = m_scene->sourceOf(stack.stackEntry(id));
        QTreeWidgetItem *node = nullptr;
        if (stack.isSimulated(id)) {
            const auto powder = PowderOrigin::of(stack.stackEntry(id));
            QTreeWidgetItem *sum = powder ? sums.value(powder->sum) : nullptr;
            const QStringList text{simulatedText(stack.entryName(id), source, spectrum)};
            node = sum ? new QTreeWidgetItem(sum, text) : new QTreeWidgetItem(structureNode(nodes, source), text);
            if (powder && !sum)
                sums.insert(id, node);
            if (sum)
                sum->setExpanded(true);
        } else {
            node = new QTreeWidgetItem(m_tree,
                                       {stack.entryName(id).isEmpty() ? tr("Measured spectrum") : stack.entryName(id)});
            auto *detail = new QTreeWidgetItem(node, {spectrum.isEmpty() ? tr("peak list") : nuclei.join(u'\n')});
            // It is what people take hold of.
            detail->setData(0, itemRole, item->id());
            detail->setData(0, entryRole, id);
            node->setExpanded(true);
        }
        node->setData(0, itemRole, item->id());
        node->setData(0, entryRole, id);
        QStringList tip{stack.entryName(id)};
        tip += nuclei;
        tip +=
            tr("%n peak(s)\nin the plot \"%1\"; can be dragged onto another one", nullptr, int(spectrum.peaks.size()))
                .arg(item->title());
        if (const QStringList notes = stack.stackEntry(id).notes(); !notes.isEmpty())
            tip += tr("As it was read:") + QStringLiteral("\n– ") + notes.join(QLatin1String("\n– "));
        tip.removeAll(QString());
        node->setToolTip(0, tip.join(u'\n'));
    }
}

void ContentsDock::fill()
{
    m_waiting = false;
    m_filling = true;
    const QUuid item = m_tree->currentItem() ? m_tree->currentItem()->data(0, itemRole).toUuid() : QUuid();
    const QUuid entry = entryOf(m_tree->currentItem());
    m_tree->clear();
    QHash<QString, QTreeWidgetItem *> nodes;
    const QList<DocumentItem *> all = m_scene->documentItems();
    for (DocumentItem *shown : all) {
        if (qobject_cast<NmrItem *>(shown))
            continue;
        QTreeWidgetItem *parent = structureNode(nodes, shown->source());
        if (qobject_cast<TableItem *>(shown)) {
            const QString description = describe(shown);
            parent->setToolTip(0, description);
            const QStringList lines = description.split(u'\n', Qt::SkipEmptyParts);
            for (qsizetype i = 0; i < lines.size(); ++i) {
                auto *line = new QTreeWidgetItem({lines[i]});
                line->setFlags(Qt::ItemIsEnabled);
                line->setToolTip(0, lines[i]);
                parent->insertChild(int(i), line);
            }
        }
        auto *node =
            new QTreeWidgetItem(parent, {shown->givenName().isEmpty() ? shown->contentTitle() : shown->givenName()});
        node->setData(0, itemRole, shown->id());
        node->setToolTip(0, shown->title());
        node->setCheckState(0, shown->isVisible() ? Qt::Checked : Qt::Unchecked);
    }
    for (DocumentItem *shown : all) {
        if (auto *nmr = qobject_cast<NmrItem *>(shown))
            addSpectra(nodes, nmr);
    }
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it) {
        if (!item.isNull() && (*it)->data(0, itemRole).toUuid() == item && entryOf(*it) == entry) {
            m_tree->setCurrentItem(*it);
            break;
        }
    }
    m_filling = false;
}

void ContentsDock::activate(QTreeWidgetItem *node)
{
    DocumentItem *item = itemOf(node);
    if (!item)
        return;
    if (auto *nmr = qobject_cast<NmrItem *>(item); nmr && !entryOf(node).isNull())
        nmr->nmrData()->setActiveEntryId(entryOf(node));
    m_scene->setActiveItem(item);
    for (QGraphicsView *view : m_scene->views())
        view->ensureVisible(item, 0, 0);
}

void ContentsDock::rename(QTreeWidgetItem *node)
{
    DocumentItem *item = itemOf(node);
    if (!item)
        return;
    auto *nmr = qobject_cast<NmrItem *>(item);
    const QUuid id = item->id(), entry = entryOf(node);
    const QString before = nmr ? nmr->nmrData()->entryName(entry) : item->title();
    bool accepted = false;
    const QString name =
        QInputDialog::getText(window(), tr("Rename"), tr("Name:"), QLineEdit::Normal, before, &accepted).trimmed();
    // While the dialog was open the tree may have been filled anew: the node is gone then.
    if (!accepted || name == before || itemOf(id) != item)
        return;
    if (!nmr)
        renameWithUndo(*m_scene, item, name);
    else if (!name.isEmpty())
        nmr->nmrData()->setEntryName(entry, name, tr("Rename Spectrum"));
}

void ContentsDock::remove(QTreeWidgetItem *node)
{
    DocumentItem *item = itemOf(node);
    if (!item)
        return;
    // The last spectrum of a plot goes with it.
    auto *nmr = qobject_cast<NmrItem *>(item);
    if (nmr && nmr->nmrData()->entryIds().size() > 1)
        nmr->nmrData()->removeEntry(entryOf(node));
    else
        removeWithUndo(*m_scene, item);
}

void ContentsDock::setHidden(QTreeWidgetItem *node)
{
    DocumentItem *item = m_filling ? nullptr : itemOf(node);
    if (!item)
        return;
    item->setVisible(node->checkState(0) == Qt::Checked);
    m_scene->updatePages();
}

void ContentsDock::openMenu(const QPoint &pos)
{
    QTreeWidgetItem *node = m_tree->itemAt(pos);
    if (!itemOf(node))
        return;
    auto *menu = new QMenu(m_tree);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // The tree may be filled anew while the menu is open: nodes go, the current one is found again.
    m_tree->setCurrentItem(node);
    const auto add = [&](const QString &text, void (ContentsDock::*act)(QTreeWidgetItem *)) {
        menu->addAction(text, this, [this, act] { (this->*act)(m_tree->currentItem()); });
    };
    add(tr("&Go There\tEnter"), &ContentsDock::activate);
    add(tr("&Rename...\tF2"), &ContentsDock::rename);
    // Spectra have no box: a plot goes as a whole.
    if (node->data(0, Qt::CheckStateRole).isValid()) {
        QAction *show = menu->addAction(tr("&Show"));
        show->setCheckable(true);
        show->setChecked(node->checkState(0) == Qt::Checked);
        connect(show, &QAction::toggled, this, [this](bool on) {
            if (m_tree->currentItem())
                m_tree->currentItem()->setCheckState(0, on ? Qt::Checked : Qt::Unchecked);
        });
    }
    add(tr("Re&move\tDel"), &ContentsDock::remove);
    menu->popup(m_tree->viewport()->mapToGlobal(pos));
}

bool ContentsDock::dropOnto(const QByteArray &dragged, NmrItem *target)
{
    const QList<QByteArray> ids = dragged.split(' ');
    auto *from = ids.size() == 2 ? qobject_cast<NmrItem *>(m_scene->item(QUuid(ids[0]))) : nullptr;
    if (!from || !target) {
        Q_EMIT reported(tr("Spectra can be dropped onto plots"));
        return false;
    }
    const SpectrumEntry entry = from->nmrData()->stackEntry(QUuid(ids[1]));
    if (from == target) {
        Q_EMIT reported(tr("%1 is in this plot already").arg(entry.name));
        return false;
    }
    const QStringList there = target->nmrData()->shownEntry().nuclei();
    if (!shareAxes(entry.nuclei(), there)) {
        if (entry.nuclei().size() == 2 && entry.nuclei() == QStringList(there.rbegin(), there.rend()))
            Q_EMIT reported(tr("%1 has its axes the other way round: F2 is %2, in this plot %3")
                                .arg(entry.name, entry.nuclei().constFirst(), there.constFirst()));
        else
            Q_EMIT reported(tr("%1 is a spectrum of other nuclei or dimensions than this plot").arg(entry.name));
        return false;
    }
    target->nmrData()->addEntry(entry.data, entry.name);
    m_scene->setActiveItem(target);
    Q_EMIT reported(tr("%1 is in the plot \"%2\" now, too").arg(entry.name, target->title()));
    return true;
}

} // namespace Workbench

#include "moc_ContentsDock.cpp"
