// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/WrBaseGraphicsItem.h"

#include <QMenu>

/// The host's table item around a plug-in's table object.
class WrTableItem : public WrBaseGraphicsItem {
public:
    using WrBaseGraphicsItem::WrBaseGraphicsItem;

    /// To all items that are linked to the table.
    void sendMessage(const QVariant &message) const { send(HostContract::sendMessage, message); }
    /// The code of the column that is shown in a section.
    int colId(int section) const { return call<int>(HostContract::colId, qint8(section)); }
    /// Hands over the table's own context menu.
    void typeCntxtMenu(QMenu *menu) const { send(HostContract::typeCntxtMenu, menu); }
};
