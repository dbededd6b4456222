// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/SiteTable.h"

#include <QAbstractTableModel>
#include <QPointer>
#include <QUuid>

#include <functional>
#include <memory>

namespace Workbench {

/// Shows a plug-in's table object, which is reached by name only, as an item model. A table object that offers too
/// little, or is deleted, shows as an empty table. Behind the plug-in's columns there may be those of siteColumns(),
/// which are computed when somebody looks.
class TableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit TableModel(QObject *table, QObject *parent = nullptr);

    /// Null for no table. The model does not own it.
    void setTable(QObject *table);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// The plug-in's code of the column and its decimal places, -1 for text. -1 as well for a column that there is not,
    /// or that is not the plug-in's.
    int columnCode(int column) const;
    int columnDigits(int column) const;
    /// What a column is called in documents: the plug-in's code, or the name of the site column.
    QString columnKey(int column) const;
    /// -1 for none.
    int columnOfKey(const QString &key) const;
    /// Null for the plug-in's own columns.
    const SiteColumn *siteColumnAt(int column) const;
    /// What the column's values are called in the plug-in's row maps.
    QStringList rowKeys(int column) const;

    /// Where the values of site columns come from; null for nowhere. Asked when it is needed, until it is told that
    /// there are others.
    using SiteSource = std::function<std::shared_ptr<const SiteTable>()>;
    void offerSiteColumns();
    void setSiteSource(const SiteSource &source);
    void forgetSites();
    /// Whether there are values.
    bool hasSites() const { return sites() != nullptr; }
    std::optional<double> siteValue(int row, const SiteColumn &column) const;

    QUuid rawId(const QModelIndex &index) const;

    /// What a plug-in brackets its changes with. Calls may be nested; an end without a begin is ignored.
    Q_INVOKABLE void beginResetModel();
    Q_INVOKABLE void endResetModel();

private:
    /// A number as one reads it: no negative zero, and a dash for what means nothing. The plug-in's cells stay.
    QString shownNumber(const QModelIndex &index, const QString &text) const;
    int columnValue(int column, const char *key) const;
    QVariant siteData(int row, const SiteColumn &column, int role) const;
    bool isNumeric(int column) const;
    const SiteTable *sites() const;
    int atomOfRow(int row) const;
    void readShape();

    QPointer<QObject> m_table;
    // Asked for at every cell, and the same from one reset to the next.
    int m_rowCount = 0;
    int m_columnCount = 0;
    QVariantList m_columns;
    int m_resetDepth = 0;

    bool m_offersSites = false;
    SiteSource m_siteSource;
    // Made when they are needed.
    mutable std::optional<std::shared_ptr<const SiteTable>> m_sites;
    mutable std::vector<int> m_atoms; ///< of the rows
};

} // namespace Workbench
