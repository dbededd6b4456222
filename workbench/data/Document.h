// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QRectF>
#include <QString>
#include <QUuid>
#include <QVariantMap>

#include <variant>

namespace Workbench {

/// What is saved of a document, as plain values.
struct Document {
    struct Molecule {
        QVariantMap description; ///< under "ID" the item's id
    };
    struct Table {
        int type = 0; ///< by which a plug-in makes it
        QString pluginId;
        QString pluginName; ///< for messages
        QVariantMap map; ///< of the plug-in
    };
    struct Spectra {
        struct Entry {
            QUuid id;
            QString name;
            QVariantMap data;
        };
        QList<Entry> entries;
        QUuid activeEntry;
    };
    struct Item {
        QUuid id;
        QString title;
        QRectF geometry; ///< on the pages, scene units
        QList<QUuid> links; ///< other items of the document
        QVariantMap view; ///< how it is shown; the item's own keys
        std::variant<Molecule, Table, Spectra> content;
    };

    QList<Item> items; ///< from the back to the front
    QList<QVariantMap> customData; ///< each with its "ID"
    // Items, or null.
    QUuid activeItem;
    QUuid currentSpectra;
    QUuid currentTable;

    /// The form that is kept in files.
    QVariantMap toMap() const;
    /// Throws std::runtime_error with the place of the first value that is missing or out of place.
    static Document fromMap(const QVariantMap &map);
};

} // namespace Workbench
