// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/WrObject.h"

#include <QGraphicsScene>
#include <QGraphicsWidget>
#include <QRectF>
#include <QUuid>

/// The document page with its items and the data kept along with them.
class WrMainScene : public WrObject<QGraphicsScene> {
public:
    using WrObject::WrObject;

    QGraphicsWidget *createMolItem(const QRectF &rect, const QVariantMap &description, bool interactive) const
    {
        return call<QGraphicsWidget *>(HostContract::createMolItem, rect, description, interactive);
    }
    QGraphicsWidget *createNMRItem(const QRectF &rect, const QVariantMap &spectrum, bool interactive) const
    {
        return call<QGraphicsWidget *>(HostContract::createNMRItem, rect, spectrum, interactive);
    }
    QGraphicsWidget *addCustomTableItem(QObject *table, bool interactive) const
    {
        return call<QGraphicsWidget *>(HostContract::addCustomTableItem, table, interactive);
    }
    /// Without an item the map is kept with the document itself, under its "ID".
    void setCustomData(const QVariantMap &map, QGraphicsWidget *item = nullptr) const
    {
        send(HostContract::setCustomData, map, item);
    }
    void delCustomData(const QUuid &id, QGraphicsWidget *item = nullptr) const
    {
        send(HostContract::delCustomData, id, item);
    }
    QRectF getEmptyRect() const { return call<QRectF>(HostContract::getEmptyRect); }

    /// The item on the page whose property "id" is this one; null if there is none.
    QGraphicsWidget *itemWithId(const QUuid &id) const
    {
        if (!object())
            return nullptr;
        for (QGraphicsItem *item : object()->items())
            if (item->isWidget() && static_cast<QGraphicsWidget *>(item)->property("id").toUuid() == id)
                return static_cast<QGraphicsWidget *>(item);
        return nullptr;
    }
};
