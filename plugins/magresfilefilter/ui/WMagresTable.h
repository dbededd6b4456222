// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresData.h"
#include "support/WTableItemImpl.h"
#include "ui/MagresCommands.h"

#include <memory>

class QAction;
class QMenu;

/// The table of NMR parameters of one data set of the document. It keeps the identity of the data set and the rows made
/// from it, not the data.
class WMagresTable : public WTableItemImpl {
    Q_OBJECT

public:
    /// The host's type code of MAGRES tables.
    static constexpr int itemType = 66542;
    /// Type of a message that carries a selection of atoms in "data": a list of positions in the file, from 0.
    static constexpr int atomSelectionMessage = 22;

    /// A table that is to be restored. Once the plug-in behind the commands is gone, the table keeps what it shows and
    /// does nothing more.
    explicit WMagresTable(Magres::MagresCommands &commands);
    /// A table of data that has just been stored in the document. Gives elements without a chosen isotope their default
    /// one in data.QIso.
    WMagresTable(Magres::MagresCommands &commands, Magres::MagresData &data);
    ~WMagresTable() override;

    void tableItem_init(QGraphicsWidget *item, QAbstractItemView *view, QAbstractItemModel *model) override;
    int tableItem_type() const override { return itemType; }
    QList<QUuid> tableItem_sharedDataIds() const override { return {m_dataId}; }
    bool tableItem_sharedDataOwner() const override { return true; }
    QVariantMap tableItem_toMap() const override;
    void tableItem_fromMap(const QVariantMap &map) override;
    QString tableItem_objectTitle() const override { return tableItem_defTitle(); }
    QString tableItem_defTitle() const override { return tr("MAGRES Table"); }
    QString tableItem_settingsKey() const override { return QStringLiteral("MagresTable"); }
    void tableItem_onLMessage(const QVariantMap &message) override;

    /// Maps with "Type" (column code), "Digits" (decimals; -1: not a number) and "Units" (0).
    Q_INVOKABLE QVariantList tableModel_columns() const { return m_columns; }
    Q_INVOKABLE int tableModel_rowCount() const { return int(m_rows.size()); }
    Q_INVOKABLE int tableModel_columnCount() const { return int(m_columns.size()); }
    Q_INVOKABLE QVariant tableModel_headerData(int section, Qt::Orientation orientation, int role) const;
    Q_INVOKABLE QVariant tableModel_data(const QModelIndex &index, int role) const;
    Q_INVOKABLE QVariantMap tableModel_toMap() const { return tableItem_toMap(); }
    Q_INVOKABLE void tableModel_fromMap(const QVariantMap &map) { tableItem_fromMap(map); }
    /// The row's "ID"; null for an index that is not in the table.
    Q_INVOKABLE QUuid tableModel_rawId(const QModelIndex &index) const;
    /// All rows with their values in full precision.
    Q_INVOKABLE QVariantList tableModel_rows() const { return m_rows; }

public Q_SLOTS:
    void createSpectrum();
    void setQuadIsotope();

protected Q_SLOTS:
    void onSelectionChanged() override;
    void onDataChanged() override;

private:
    void reload();
    void show(Magres::MagresData &data);
    void offerContextMenu();

    /// Null when the plug-in is gone.
    Magres::MagresCommands *commands() const { return m_plugin ? m_commands : nullptr; }

    Magres::MagresCommands *m_commands;
    QPointer<QObject> m_plugin;
    QUuid m_dataId;
    QVariantList m_rows;
    QVariantList m_columns;
    bool m_rowsAreNew = false; ///< made of the data that was read a moment ago; not to be read back for the host
    bool m_selectingFromMessage = false;
    std::unique_ptr<QMenu> m_contextMenu;
};
