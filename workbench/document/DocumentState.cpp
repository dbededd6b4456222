// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/DocumentState.h"

#include "data/Error.h"

#include "host/DataEngine.h"
#include "host/MainScene.h"
#include "document/MissingTable.h"
#include "host/PluginManager.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "data/PluginCall.h"
#include "items/table/TableItem.h"
#include "support/IPlugin_v1_3.h"

#include <QCoreApplication>
#include <QUndoStack>

#include <algorithm>
#include <memory>

namespace Workbench {

namespace {

using Items = std::vector<std::unique_ptr<DocumentItem>>;

// In the view settings of every item.
const QString sourceKey = QStringLiteral("Source");
const QString sourceNoteKey = QStringLiteral("SourceNote");
const QString methodKey = QStringLiteral("Method");
const QString doubtsKey = QStringLiteral("Doubts");
const QString hiddenKey = QStringLiteral("Hidden");
const QString nameKey = QStringLiteral("Name");
const QString workspaceKey = QStringLiteral("Workspace"); // scene units

Document::Table captureTable(QObject *table, const PluginManager *plugins)
{
    if (const auto *missing = qobject_cast<MissingTable *>(table))
        return missing->table();
    Document::Table captured{
        callPlugin<int>(table, "tableItem_type()"), {}, {}, callPlugin<QVariantMap>(table, "tableItem_toMap()")};
    if (IPlugin_v1_3 *maker = plugins ? plugins->itemMaker(captured.type) : nullptr) {
        captured.pluginId = maker->id();
        captured.pluginName = maker->name();
    }
    return captured;
}

Document::Spectra captureStack(const NmrStack &stack)
{
    Document::Spectra captured;
    for (const NmrStack::Entry &entry : stack.entries)
        captured.entries.append({entry.id, entry.name, entry.data});
    captured.activeEntry = stack.activeId;
    return captured;
}

Document::Item captureItem(const DocumentItem *item, const MainScene &scene, const PluginManager *plugins)
{
    const DocumentItem::Place place = scene.placeOf(*item);
    Document::Item captured{item->id(), item->contentTitle(), place.page, {}, item->viewSettings(), {}};
    const auto keep = [&](const QString &key, const QVariant &value, bool isSet) {
        if (isSet)
            captured.view.insert(key, value);
    };
    keep(sourceKey, item->source(), !item->source().isEmpty());
    keep(sourceNoteKey, item->sourceNote(), !item->sourceNote().isEmpty());
    keep(methodKey, item->method().toMap(), !item->method().isEmpty());
    keep(doubtsKey, item->doubts(), !item->doubts().isEmpty());
    keep(hiddenKey, true, !item->isVisible());
    keep(nameKey, item->givenName(), !item->givenName().isEmpty());
    keep(workspaceKey, place.workspace, !place.workspace.isEmpty());
    // In the order of the page: which link came first is no part of the document.
    const QList<DocumentItem *> linked = item->linkedItems();
    for (DocumentItem *other : scene.documentItems()) {
        if (linked.contains(other))
            captured.links.append(other->id());
    }
    if (const auto *molecule = qobject_cast<const MoleculeItem *>(item)) {
        captured.content = Document::Molecule{molecule->molMap()};
    } else if (const auto *table = qobject_cast<const TableItem *>(item)) {
        captured.content = captureTable(table->table(), plugins);
        if (const auto *missing = qobject_cast<MissingTable *>(table->table()))
            captured.title = missing->title();
    } else if (const auto *spectra = qobject_cast<const NmrItem *>(item)) {
        captured.content = captureStack(spectra->nmrData()->stack());
    }
    return captured;
}

QUuid idOf(const DocumentItem *item)
{
    return item ? item->id() : QUuid();
}

/// Makes items without putting them on a page.
class ItemMaker {
public:
    ItemMaker(const PluginManager *plugins, QStringList &notes) : m_plugins(plugins), m_notes(notes) { }

    std::unique_ptr<DocumentItem> make(const Document::Item &item) const
    {
        auto made = std::visit([&](const auto &content) { return make(item, content); }, item.content);
        if (!isMissing(made.get()))
            made->setTitle(item.title);
        made->setSource(item.view.value(sourceKey).toString());
        made->setSourceNote(item.view.value(sourceNoteKey).toString());
        made->setMethod(CalculationMethod::fromMap(item.view.value(methodKey).toMap()));
        made->setDoubts(item.view.value(doubtsKey).toStringList());
        made->setVisible(!item.view.value(hiddenKey).toBool());
        made->setGivenName(item.view.value(nameKey).toString());
        made->setPlace({item.geometry, item.view.value(workspaceKey).toRectF()});
        return made;
    }

private:
    static bool isMissing(const DocumentItem *item)
    {
        const auto *table = qobject_cast<const TableItem *>(item);
        return table && qobject_cast<MissingTable *>(table->table());
    }

    std::unique_ptr<DocumentItem> make(const Document::Item &, const Document::Molecule &molecule) const
    {
        return std::make_unique<MoleculeItem>(molecule.description);
    }

    std::unique_ptr<DocumentItem> make(const Document::Item &item, const Document::Spectra &spectra) const
    {
        NmrStack stack;
        for (const Document::Spectra::Entry &entry : spectra.entries)
            stack.entries.append({entry.id, entry.name, entry.data, Spectrum::fromMap(entry.data)});
        stack.activeId = spectra.activeEntry;
        auto made = std::make_unique<NmrItem>(item.id);
        made->nmrData()->setStack(stack);
        return made;
    }

    std::unique_ptr<DocumentItem> make(const Document::Item &item, const Document::Table &table) const
    {
        IPlugin_v1_3 *maker = m_plugins ? m_plugins->itemMaker(table.type, table.pluginId) : nullptr;
        std::unique_ptr<QObject> object(maker ? maker->createItem(table.type) : nullptr);
        if (!object) {
            m_notes.append(Texts::tr("The plug-in \"%1\", which made the table \"%2\", is not loaded. The table shows "
                                     "nothing here; saving the document keeps it.")
                               .arg(table.pluginName, item.title));
            object = std::make_unique<MissingTable>(table, item.title);
        }
        auto made = std::make_unique<TableItem>(object.release(), item.id);
        callPlugin(made->table(), "tableItem_fromMap(QVariantMap)", table.map);
        return made;
    }

    const PluginManager *m_plugins;
    QStringList &m_notes;
};

void linkAndShowItems(const Items &items, const Document &document)
{
    QHash<QUuid, DocumentItem *> byId;
    for (const auto &item : items)
        byId.insert(item->id(), item.get());
    for (const Document::Item &item : document.items) {
        for (const QUuid &link : item.links)
            byId.value(item.id)->linkObject(byId.value(link));
    }
    // A molecule's labels may be those of the table beside it.
    for (const Document::Item &item : document.items)
        byId.value(item.id)->setViewSettings(item.view);
}

} // namespace

Document DocumentState::capture(const MainScene &scene, const DataEngine &data, const PluginManager *plugins)
{
    Document document;
    for (const DocumentItem *item : scene.documentItems())
        document.items.append(captureItem(item, scene, plugins));
    QList<QUuid> ids = data.ids();
    std::sort(ids.begin(), ids.end());
    for (const QUuid &id : std::as_const(ids))
        document.customData.append(data.maps().value(id));
    document.activeItem = idOf(qobject_cast<DocumentItem *>(scene.activeItem()));
    document.currentSpectra = idOf(scene.currentNmrItem());
    document.currentTable = idOf(scene.currentTableItem());
    return document;
}

QStringList DocumentState::restore(const Document &document, MainScene &scene, DataEngine &data,
                                   const PluginManager *plugins)
{
    QStringList notes;
    Items items;
    const QHash<QUuid, QVariantMap> dataBefore = data.maps();
    QHash<QUuid, QVariantMap> maps;
    for (const QVariantMap &map : document.customData)
        maps.insert(map.value(QStringLiteral("ID")).toUuid(), map);
    try {
        // Tables look their data up when they are made.
        data.setMaps(maps);
        for (const Document::Item &item : document.items)
            items.push_back(ItemMaker(plugins, notes).make(item));
        linkAndShowItems(items, document);
    } catch (...) {
        items.clear();
        data.setMaps(dataBefore);
        throw;
    }

    scene.removeAll();
    QHash<QUuid, DocumentItem *> placed;
    for (qsizetype i = 0; i < document.items.size(); ++i) {
        DocumentItem *item = items[size_t(i)].release();
        placed.insert(item->id(), item);
        scene.addNew(item, document.items[i].geometry);
    }
    for (const QUuid &id : {document.currentSpectra, document.currentTable, document.activeItem})
        scene.setActiveItem(placed.value(id));
    scene.undoStack()->clear();
    return notes;
}

} // namespace Workbench

#include "moc_MissingTable.cpp"
