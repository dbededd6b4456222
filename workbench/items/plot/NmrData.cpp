// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/NmrData.h"

#include <algorithm>
#include <utility>

namespace Workbench {

NmrData::NmrData(QObject *parent) : QObject(parent)
{
    // Unless the types are known by name, the property and the arguments cannot be reached by name either.
    qRegisterMetaType<QList<QUuid>>();
    registerSharedMetaTypes();
}

const NmrData::Entry *NmrData::find(const QUuid &id) const
{
    const auto it =
        std::find_if(m_stack.entries.cbegin(), m_stack.entries.cend(), [&](const Entry &e) { return e.id == id; });
    return it == m_stack.entries.cend() ? nullptr : &*it;
}

NmrData::Entry *NmrData::find(const QUuid &id)
{
    const auto it =
        std::find_if(m_stack.entries.begin(), m_stack.entries.end(), [&](const Entry &e) { return e.id == id; });
    return it == m_stack.entries.end() ? nullptr : &*it;
}

QList<QUuid> NmrData::entryIds() const
{
    QList<QUuid> ids;
    for (const Entry &entry : m_stack.entries)
        ids.append(entry.id);
    return ids;
}

void NmrData::setActiveEntryId(const QUuid &entry)
{
    if (m_stack.activeId == entry || !find(entry))
        return;
    m_stack.activeId = entry;
    Q_EMIT activeEntryChanged(entry);
}

void NmrData::append(const QUuid &id, const QVariantMap &data, const QString &name)
{
    const NmrStack before = m_stack;
    Q_EMIT aboutToBeEdited();
    m_stack.entries.append({id, name, data, Spectrum::fromMap(data)});
    if (m_stack.activeId.isNull())
        setActiveEntryId(id);
    Q_EMIT entriesChanged();
    noteEdit(tr("Add Spectrum"), before);
}

QUuid NmrData::addEntry(const QVariantMap &data, const QString &name)
{
    const QUuid id = QUuid::createUuid();
    append(id, data, name);
    return id;
}

void NmrData::removeEntry(const QUuid &entry)
{
    const auto it =
        std::find_if(m_stack.entries.cbegin(), m_stack.entries.cend(), [&](const Entry &e) { return e.id == entry; });
    if (it == m_stack.entries.cend())
        return;
    const NmrStack before = m_stack;
    Q_EMIT aboutToBeEdited();
    const qsizetype place = it - m_stack.entries.cbegin();
    m_removed.insert(entry);
    m_stack.entries.removeAt(place);
    if (m_stack.activeId == entry) {
        m_stack.activeId =
            m_stack.entries.isEmpty() ? QUuid() : m_stack.entries.at(std::min(place, m_stack.entries.size() - 1)).id;
        Q_EMIT activeEntryChanged(m_stack.activeId);
    }
    Q_EMIT entriesChanged();
    noteEdit(tr("Remove Spectrum"), before);
}

void NmrData::noteEdit(const QString &what, const NmrStack &before)
{
    const auto announced = std::exchange(m_announced, std::nullopt);
    Q_EMIT edited(announced ? announced->first : what, announced ? announced->second : before);
}

bool NmrData::withdrawEdit()
{
    const auto announced = std::exchange(m_announced, std::nullopt);
    if (announced)
        setStack(announced->second);
    return announced.has_value();
}

void NmrData::announceEdit(const QString &what)
{
    m_announced = {what, m_stack};
}

void NmrData::setEntryName(const QUuid &entry, const QString &name, const QString &what)
{
    const NmrStack before = m_stack;
    Q_EMIT aboutToBeEdited();
    Entry *found = find(entry);
    if (!found || found->name == name)
        return;
    found->name = name;
    Q_EMIT entryChanged(entry);
    if (!what.isEmpty())
        noteEdit(what, before);
}

QVariantMap NmrData::entry(const QUuid &entry) const
{
    const Entry *found = find(entry);
    return found ? found->data : QVariantMap();
}

QString NmrData::entryName(const QUuid &entry) const
{
    const Entry *found = find(entry);
    return found ? found->name : QString();
}

const SpectrumEntry &NmrData::stackEntry(const QUuid &entry) const
{
    static const SpectrumEntry none;
    const Entry *found = find(entry);
    return found ? *found : none;
}

const Spectrum &NmrData::spectrum(const QUuid &entry) const
{
    return stackEntry(entry).spectrum;
}

const SpectrumEntry &NmrData::shownEntry() const
{
    static const SpectrumEntry none;
    const SpectrumEntry *shown = m_stack.shown();
    return shown ? *shown : none;
}

void NmrData::insertSpectrum(QUuid entry, QVariantMap data)
{
    if (!find(entry)) {
        if (m_removed.contains(entry))
            return;
        append(entry.isNull() ? QUuid::createUuid() : entry, data, QString());
        return;
    }
    const NmrStack before = m_stack;
    Q_EMIT aboutToBeEdited();
    Entry *found = find(entry);
    found->data = data;
    found->spectrum = Spectrum::fromMap(data);
    Q_EMIT entryChanged(entry);
    noteEdit(tr("Change Spectrum"), before);
}

bool NmrData::isSimulated(const QUuid &entry) const
{
    const Entry *found = find(entry);
    return found && found->isSimulated();
}

QUuid NmrData::simulatedEntry() const
{
    const QList<QUuid> ids = entryIds();
    const auto it = std::find_if(ids.cbegin(), ids.cend(), [this](const QUuid &id) { return isSimulated(id); });
    return it == ids.cend() ? QUuid() : *it;
}

void NmrData::setEntryPeaks(const QUuid &entry, const QVariantMap &peaks, const QString &what)
{
    if (!std::as_const(*this).find(entry))
        return;
    const NmrStack before = m_stack;
    Q_EMIT aboutToBeEdited();
    Entry *found = find(entry);
    found->data.insert(QStringLiteral("Peaks"), peaks);
    found->spectrum = Spectrum::fromMap(found->data);
    Q_EMIT entryChanged(entry);
    noteEdit(what, before);
}

void NmrData::setEntryValue(const QUuid &entry, const QString &key, const QVariant &value, const QString &what)
{
    const Entry *now = std::as_const(*this).find(entry);
    if (!now || now->data.value(key) == value)
        return;
    const NmrStack before = m_stack;
    Q_EMIT aboutToBeEdited();
    find(entry)->data.insert(key, value);
    Q_EMIT entryChanged(entry);
    Q_EMIT edited(what, before, entry);
}

void NmrData::setStack(const NmrStack &stack)
{
    const QList<QUuid> idsBefore = entryIds();
    const QUuid activeBefore = activeEntryId();
    m_stack = stack;
    const QList<QUuid> ids = entryIds();
    for (const QUuid &id : idsBefore) {
        if (!ids.contains(id))
            m_removed.insert(id);
    }
    if (ids != idsBefore)
        Q_EMIT entriesChanged();
    else
        for (const QUuid &id : idsBefore)
            Q_EMIT entryChanged(id);
    if (activeEntryId() != activeBefore)
        Q_EMIT activeEntryChanged(activeEntryId());
}

QVariantHash NmrData::entryOrigParams(QUuid entry, QString format)
{
    const Entry *found = find(entry);
    return found ? found->parameters(format) : QVariantHash();
}

void NmrData::setEntryOrigParams(const QUuid &entry, const QString &format, const QVariantHash &parameters)
{
    if (Entry *found = find(entry))
        found->setParameters(format, parameters);
}

QVariantMap NmrData::entryPeakList(QUuid entry)
{
    const Entry *found = find(entry);
    return found ? found->peakList() : QVariantMap();
}

QString NmrData::xUnitsString()
{
    return QStringLiteral("ppm");
}

QString NmrData::yUnitsString()
{
    return QStringLiteral("ppm");
}

} // namespace Workbench

#include "moc_NmrData.cpp"
