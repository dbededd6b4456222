// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/SpectrumEntry.h"

#include <QObject>
#include <QSet>

#include <optional>

namespace Workbench {

/// The spectra stacked in one NMR item, each with its data map as plug-ins and readers hand it over.
class NmrData : public QObject {
    Q_OBJECT
    Q_PROPERTY(QList<QUuid> entryIds READ entryIds NOTIFY entriesChanged)
    Q_PROPERTY(QUuid activeEntryId READ activeEntryId WRITE setActiveEntryId NOTIFY activeEntryChanged)

public:
    explicit NmrData(QObject *parent = nullptr);

    /// In the order of the stack.
    QList<QUuid> entryIds() const;
    /// Null when there is no entry.
    QUuid activeEntryId() const { return m_stack.activeId; }
    /// An unknown id changes nothing.
    void setActiveEntryId(const QUuid &entry);

    /// The first entry becomes the active one.
    QUuid addEntry(const QVariantMap &data, const QString &name);
    /// The next entry becomes active if the active one goes.
    void removeEntry(const QUuid &entry);
    QVariantMap entry(const QUuid &entry) const;
    QString entryName(const QUuid &entry) const;
    /// No edit of its own, unless `what` names one.
    void setEntryName(const QUuid &entry, const QString &name, const QString &what = {});
    /// Valid until the stack changes; an empty one for an unknown id.
    const SpectrumEntry &stackEntry(const QUuid &entry) const;
    /// Valid until the entry changes; an empty spectrum for an unknown id.
    const Spectrum &spectrum(const QUuid &entry) const;
    /// As NmrStack::shown(); an empty one without entries.
    const SpectrumEntry &shownEntry() const;
    const Spectrum &shownSpectrum() const { return shownEntry().spectrum; }
    /// Made by a plug-in, from parameters that it could make it from again.
    bool isSimulated(const QUuid &entry) const;
    /// The first such entry; null when there is none.
    QUuid simulatedEntry() const;
    /// Replaces the peaks of an entry, as an edit of that name.
    void setEntryPeaks(const QUuid &entry, const QVariantMap &peaks, const QString &what);
    /// Puts a value of the workbench's own, for which plug-ins have no use, into the entry's data. An edit of that
    /// name, which continues the last one when that was of the same name and entry.
    void setEntryValue(const QUuid &entry, const QString &key, const QVariant &value, const QString &what);
    /// Puts a parameter hash where entryOrigParams() finds it.
    void setEntryOrigParams(const QUuid &entry, const QString &format, const QVariantHash &parameters);

    const NmrStack &stack() const { return m_stack; }
    /// The next edit is called so and begins with the present state, whatever is set in between.
    void announceEdit(const QString &what);
    /// None is to come any more. True when none has come, with the state that was announced back in place.
    bool withdrawEdit();
    /// Puts an earlier state back; no edit of its own.
    void setStack(const NmrStack &stack);

    /// Replaces the entry's data; an unknown id becomes a new entry. An entry that was removed, while a plug-in worked
    /// on it perhaps, stays away.
    Q_INVOKABLE void insertSpectrum(QUuid entry, QVariantMap data);
    /// The parameters from which the format's plug-in made the entry, empty for entries that it did not make.
    Q_INVOKABLE QVariantHash entryOrigParams(QUuid entry, QString format);
    /// The entry's "Peaks" map.
    Q_INVOKABLE QVariantMap entryPeakList(QUuid entry);
    Q_INVOKABLE QString xUnitsString();
    Q_INVOKABLE QString yUnitsString();

Q_SIGNALS:
    /// Entries were added or removed.
    void entriesChanged();
    void entryChanged(const QUuid &entry);
    void activeEntryChanged(const QUuid &entry);
    /// edited() follows, after signals in answer to which the user may come to work with something else.
    void aboutToBeEdited();
    /// Entries were added or removed, or the data of one replaced; `what` names the edit for an undo menu.
    /// One that sets a value names its entry: it continues the last edit of the same entry and name.
    void edited(const QString &what, const NmrStack &before, const QUuid &entry = {});

private:
    using Entry = NmrStack::Entry;

    const Entry *find(const QUuid &id) const;
    Entry *find(const QUuid &id);
    void append(const QUuid &id, const QVariantMap &data, const QString &name);

    void noteEdit(const QString &what, const NmrStack &before);

    NmrStack m_stack;
    std::optional<std::pair<QString, NmrStack>> m_announced;
    QSet<QUuid> m_removed;
};

} // namespace Workbench
