// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QUuid>
#include <QVariantMap>

namespace Workbench {

/// The document's custom data: maps of plug-ins, kept under their "ID" and otherwise not looked into.
class DataEngine : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Empty when there is no such data set.
    Q_INVOKABLE QVariantMap getDataMap(QUuid id) const { return m_maps.value(id); }

    /// Stores the map under its "ID", replacing an earlier one. False: the map has no valid "ID".
    bool insert(const QVariantMap &map);
    void remove(const QUuid &id);
    QList<QUuid> ids() const { return m_maps.keys(); }

    const QHash<QUuid, QVariantMap> &maps() const { return m_maps; }
    /// All of the document's data become these; each key is its map's "ID".
    void setMaps(const QHash<QUuid, QVariantMap> &maps);

Q_SIGNALS:
    void changed();

private:
    QHash<QUuid, QVariantMap> m_maps;
};

} // namespace Workbench
