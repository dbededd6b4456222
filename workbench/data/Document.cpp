// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/Document.h"

#include "data/Error.h"

#include "data/PrintableText.h"

#include <QCoreApplication>
#include <QSet>

#include <cmath>
#include <stdexcept>

namespace Workbench {

namespace {

// Of the file's form.
const QString idKey = QStringLiteral("ID");
const QString itemsKey = QStringLiteral("Items");
const QString customDataKey = QStringLiteral("CustomData");
const QString activeKey = QStringLiteral("Active");
const QString currentSpectraKey = QStringLiteral("CurrentSpectra");
const QString currentTableKey = QStringLiteral("CurrentTable");
const QString kindKey = QStringLiteral("Kind");
const QString titleKey = QStringLiteral("Title");
const QString geometryKey = QStringLiteral("Geometry");
const QString linksKey = QStringLiteral("Links");
const QString descriptionKey = QStringLiteral("Description");
const QString viewKey = QStringLiteral("View");
const QString typeKey = QStringLiteral("Type");
const QString pluginIdKey = QStringLiteral("PluginID");
const QString pluginNameKey = QStringLiteral("PluginName");
const QString mapKey = QStringLiteral("Map");
const QString entriesKey = QStringLiteral("Entries");
const QString nameKey = QStringLiteral("Name");
const QString dataKey = QStringLiteral("Data");

const QString moleculeKind = QStringLiteral("Molecule");
const QString tableKind = QStringLiteral("Table");
const QString spectraKind = QStringLiteral("Spectra");

/// Scene units: some ten thousand pages.
constexpr double farthest = 1e7;

[[noreturn]] void failAt(const QString &place, const QString &what)
{
    fail(printable(QStringLiteral("%1: %2").arg(place, what)));
}

template <typename T>
T required(const QVariantMap &map, const QString &key, const QString &place)
{
    const QVariant value = map.value(key);
    if (value.metaType() != QMetaType::fromType<T>()) {
        const QString found = value.isValid() ? QString::fromLatin1(value.metaType().name()) : Texts::tr("nothing");
        failAt(place,
               Texts::tr("\"%1\" is %2, expected %3")
                   .arg(key, found, QString::fromLatin1(QMetaType::fromType<T>().name())));
    }
    return value.value<T>();
}

QUuid requiredId(const QVariantMap &map, const QString &place, QSet<QUuid> &known)
{
    const auto id = required<QUuid>(map, idKey, place);
    if (id.isNull() || known.contains(id))
        failAt(place, Texts::tr("its \"ID\" is null or not its own"));
    known.insert(id);
    return id;
}

/// Calls handle(map, place) for each map of the list.
template <typename Handle>
void forEachMap(const QVariantMap &map, const QString &key, const QString &place, Handle handle)
{
    const auto list = required<QVariantList>(map, key, place);
    for (qsizetype i = 0; i < list.size(); ++i) {
        const QString inside = QStringLiteral("%1[%2]").arg(key).arg(i);
        if (list[i].metaType() != QMetaType::fromType<QVariantMap>())
            failAt(inside, Texts::tr("a map was expected"));
        handle(list[i].toMap(), inside);
    }
}

QVariantMap toMap(const Document::Molecule &molecule)
{
    return {{kindKey, moleculeKind}, {descriptionKey, molecule.description}};
}

QVariantMap toMap(const Document::Table &table)
{
    return {{kindKey, tableKind},
            {typeKey, table.type},
            {pluginIdKey, table.pluginId},
            {pluginNameKey, table.pluginName},
            {mapKey, table.map}};
}

QVariantMap toMap(const Document::Spectra &spectra)
{
    QVariantList entries;
    for (const Document::Spectra::Entry &entry : spectra.entries)
        entries.append(QVariantMap{{idKey, entry.id}, {nameKey, entry.name}, {dataKey, entry.data}});
    return {{kindKey, spectraKind}, {entriesKey, entries}, {activeKey, spectra.activeEntry}};
}

Document::Molecule moleculeFromMap(const QVariantMap &map, const QUuid &id, const QString &place)
{
    Document::Molecule molecule{required<QVariantMap>(map, descriptionKey, place)};
    if (molecule.description.value(idKey).toUuid() != id)
        failAt(place, Texts::tr("the \"ID\" of its description is another one"));
    return molecule;
}

Document::Spectra spectraFromMap(const QVariantMap &map, const QString &place)
{
    Document::Spectra spectra;
    QSet<QUuid> ids;
    forEachMap(map, entriesKey, place, [&](const QVariantMap &entry, const QString &inside) {
        const QString entryPlace = place + u'.' + inside;
        spectra.entries.append({requiredId(entry, entryPlace, ids), required<QString>(entry, nameKey, entryPlace),
                                required<QVariantMap>(entry, dataKey, entryPlace)});
    });
    spectra.activeEntry = required<QUuid>(map, activeKey, place);
    if (!ids.contains(spectra.activeEntry) && !(ids.isEmpty() && spectra.activeEntry.isNull()))
        failAt(place, Texts::tr("its active spectrum is none of its spectra"));
    return spectra;
}

QRectF geometryFromMap(const QVariantMap &map, const QString &place)
{
    const auto rect = required<QRectF>(map, geometryKey, place);
    for (const double edge : {rect.left(), rect.top(), rect.right(), rect.bottom()}) {
        // Written so that what is not a number fails as well.
        if (!(std::abs(edge) <= farthest))
            failAt(place, Texts::tr("its place is %1, expected within %2 of the first page").arg(edge).arg(farthest));
    }
    return rect.normalized();
}

Document::Item itemFromMap(const QVariantMap &map, const QString &place, QSet<QUuid> &ids)
{
    Document::Item item{requiredId(map, place, ids),
                        required<QString>(map, titleKey, place),
                        geometryFromMap(map, place),
                        required<QList<QUuid>>(map, linksKey, place),
                        required<QVariantMap>(map, viewKey, place),
                        {}};
    const auto kind = required<QString>(map, kindKey, place);
    if (kind == moleculeKind) {
        item.content = moleculeFromMap(map, item.id, place);
    } else if (kind == tableKind) {
        item.content =
            Document::Table{required<int>(map, typeKey, place), required<QString>(map, pluginIdKey, place),
                            required<QString>(map, pluginNameKey, place), required<QVariantMap>(map, mapKey, place)};
    } else if (kind == spectraKind) {
        item.content = spectraFromMap(map, place);
    } else {
        failAt(place, Texts::tr("an item of the kind \"%1\" is not known").arg(kind.left(80)));
    }
    return item;
}

} // namespace

QVariantMap Document::toMap() const
{
    QVariantList itemMaps;
    for (const Item &item : items) {
        QVariantMap map = std::visit([](const auto &content) { return Workbench::toMap(content); }, item.content);
        map.insert(idKey, item.id);
        map.insert(titleKey, item.title);
        map.insert(geometryKey, item.geometry);
        map.insert(linksKey, QVariant::fromValue(item.links));
        map.insert(viewKey, item.view);
        itemMaps.append(map);
    }
    return {{itemsKey, itemMaps},
            {customDataKey, QVariantList(customData.begin(), customData.end())},
            {activeKey, activeItem},
            {currentSpectraKey, currentSpectra},
            {currentTableKey, currentTable}};
}

Document Document::fromMap(const QVariantMap &map)
{
    Document document;
    const QString whole = Texts::tr("the document");
    QSet<QUuid> ids;
    forEachMap(map, itemsKey, whole, [&](const QVariantMap &item, const QString &place) {
        document.items.append(itemFromMap(item, place, ids));
    });
    const auto checkKnown = [&ids](const QUuid &id, const QString &place) {
        if (!ids.contains(id))
            failAt(place, Texts::tr("it names the item %1, which is not there").arg(id.toString()));
    };
    for (qsizetype i = 0; i < document.items.size(); ++i) {
        for (const QUuid &link : document.items[i].links)
            checkKnown(link, QStringLiteral("%1[%2].%3").arg(itemsKey).arg(i).arg(linksKey));
    }
    for (const auto &[key, member] : {std::pair{activeKey, &Document::activeItem},
                                      {currentSpectraKey, &Document::currentSpectra},
                                      {currentTableKey, &Document::currentTable}}) {
        document.*member = required<QUuid>(map, key, whole);
        if (!(document.*member).isNull())
            checkKnown(document.*member, key);
    }
    QSet<QUuid> dataIds;
    forEachMap(map, customDataKey, whole, [&](const QVariantMap &data, const QString &place) {
        requiredId(data, place, dataIds);
        document.customData.append(data);
    });
    return document;
}

} // namespace Workbench
