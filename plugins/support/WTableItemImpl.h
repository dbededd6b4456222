// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/WrTableItem.h"
#include "support/WrTableModel.h"

#include <QAbstractItemView>
#include <QPointer>

/// Base of a table that a plug-in keeps in the document. The host drives it by name: the item side through methods that
/// begin with tableItem_, the model side through those that begin with tableModel_. The host's table item, its view and
/// its model around the table come in with tableItem_init().
class WTableItemImpl : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Called once the host has built its side. All three objects are the host's.
    Q_INVOKABLE virtual void tableItem_init(QGraphicsWidget *item, QAbstractItemView *view, QAbstractItemModel *model);
    /// The type code under which the plug-in makes such items.
    Q_INVOKABLE virtual int tableItem_type() const = 0;
    /// The document's data sets that the table shows.
    Q_INVOKABLE virtual QList<QUuid> tableItem_sharedDataIds() const { return {}; }
    /// Whether those data sets go when the table goes.
    Q_INVOKABLE virtual bool tableItem_sharedDataOwner() const { return false; }
    /// Host notification, as QGraphicsItem::itemChange.
    Q_INVOKABLE virtual QVariant tableItem_itemChange(int change, const QVariant &value);
    Q_INVOKABLE virtual QVariantMap tableItem_toMap() const { return {}; }
    Q_INVOKABLE virtual void tableItem_fromMap(const QVariantMap &) { }
    Q_INVOKABLE virtual QString tableItem_objectTitle() const = 0;
    Q_INVOKABLE virtual QString tableItem_defTitle() const = 0;
    /// Under which the host keeps its settings of such tables.
    Q_INVOKABLE virtual QString tableItem_settingsKey() const = 0;
    /// Item properties of a new table; the host's own defaults where there are none.
    Q_INVOKABLE virtual QVariantMap tableItem_defProps() const { return {}; }
    /// A message from a linked item.
    Q_INVOKABLE virtual void tableItem_onLMessage(const QVariantMap &) { }

protected Q_SLOTS:
    virtual void onSelectionChanged() { }
    virtual void onDataChanged() { }

protected:
    const WrTableItem &hostItem() const { return m_hostItem; }
    const WrTableModel &hostModel() const { return m_hostModel; }
    QAbstractItemView *view() const { return m_view; }

    /// Rows with a selected cell, ascending.
    QList<int> selectedRows() const;
    /// Selects these rows and no others, and shows the first.
    void selectRows(const QList<int> &rows);

private:
    WrTableItem m_hostItem;
    WrTableModel m_hostModel;
    QPointer<QAbstractItemView> m_view;
};
