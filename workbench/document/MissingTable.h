// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Document.h"

#include <QObject>

namespace Workbench {

/// Stands in a table item for the table of a plug-in that is not loaded: without rows, and keeping what the document
/// has of the table, so that it is whole again where the plug-in is.
class MissingTable : public QObject {
    Q_OBJECT
public:
    MissingTable(const Document::Table &table, const QString &title) : m_table(table), m_title(title) { }

    const Document::Table &table() const { return m_table; }
    /// Of the table itself.
    QString title() const { return m_title; }

    // What table items call by name.
    Q_INVOKABLE QString tableItem_objectTitle() const
    {
        return tr("%1 (the plug-in \"%2\" is not loaded)").arg(m_title, m_table.pluginName);
    }

private:
    Document::Table m_table;
    QString m_title;
};

} // namespace Workbench
