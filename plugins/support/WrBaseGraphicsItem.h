// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/WrObject.h"

#include <QGraphicsWidget>
#include <QUuid>

/// An item on the page. Which methods it has depends on its kind.
class WrBaseGraphicsItem : public WrObject<QGraphicsWidget> {
public:
    using WrObject::WrObject;

    QUuid id() const { return property("id").toUuid(); }

    /// Molecule items: the atoms with what is known of them.
    QVariantMap molMap() const { return call<QVariantMap>(HostContract::molMap); }
    void setMolMap(const QVariantMap &map) const { send(HostContract::setMolMap, map); }

    /// NMR items: the spectra.
    QObject *getNMRData() const { return call<QObject *>(HostContract::itemNMRData); }

    /// Table items: linked items hear each other's messages.
    void linkObject(QObject *other) const { send(HostContract::linkObject, other); }
};
