// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/WrObject.h"

#include <QUuid>

/// The spectra of one NMR item.
class WrNMRData : public WrObject<QObject> {
public:
    using WrObject::WrObject;

    /// Whatever kind of list the host keeps them in.
    QList<QUuid> entryIds() const
    {
        QList<QUuid> ids;
        for (const QVariant &id : property("entryIds").toList())
            ids.append(id.toUuid());
        return ids;
    }
    QUuid activeEntryId() const { return property("activeEntryId").toUuid(); }

    /// Replaces the data of an entry.
    void insertSpectrum(const QUuid &entry, const QVariantMap &data) const
    {
        send(HostContract::insertSpectrum, entry, data);
    }
    /// What the maker of the spectrum stored with it under a format's name; empty for spectra of other origin.
    QVariantHash entryOrigParams(const QUuid &entry, const QString &format) const
    {
        return call<QVariantHash>(HostContract::entryOrigParams, entry, format);
    }
    /// The peaks are in "PeakList".
    QVariantMap entryPeakList(const QUuid &entry) const
    {
        return call<QVariantMap>(HostContract::entryPeakList, entry);
    }
    QString xUnitsString() const { return call<QString>(HostContract::xUnitsString); }
    QString yUnitsString() const { return call<QString>(HostContract::yUnitsString); }
};
