// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/NmrData.h"

#include <algorithm>

namespace {

using ParametersByFormat = QMap<QString, QVariantHash>;

const QString specInfoKey = QStringLiteral("SpecInfo");
const QString originalKey = QStringLiteral("OriginalParameters");
const QString rawDataKey = QStringLiteral("RawData");

/// Documents read back from a stream may hold a plain map instead.
ParametersByFormat parametersOf(const QVariant &original)
{
    if (original.metaType() == QMetaType::fromType<ParametersByFormat>())
        return original.value<ParametersByFormat>();
    ParametersByFormat parameters;
    const QVariantMap map = original.toMap();
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        parameters.insert(it.key(), it->toHash());
    return parameters;
}

QVariant originalOf(const QVariantMap &data)
{
    return data.value(specInfoKey).toMap().value(originalKey);
}

} // namespace

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
    m_stack.entries.append({id, name, data, Spectrum::fromMap(data)});
    if (m_stack.activeId.isNull())
        setActiveEntryId(id);
    Q_EMIT entriesChanged();
    Q_EMIT edited(tr("Add Spectrum"), before);
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
    const qsizetype place = it - m_stack.entries.cbegin();
    m_removed.insert(entry);
    m_stack.entries.removeAt(place);
    if (m_stack.activeId == entry) {
        m_stack.activeId =
            m_stack.entries.isEmpty() ? QUuid() : m_stack.entries.at(std::min(place, m_stack.entries.size() - 1)).id;
        Q_EMIT activeEntryChanged(m_stack.activeId);
    }
    Q_EMIT entriesChanged();
    Q_EMIT edited(tr("Remove Spectrum"), before);
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

const Spectrum &NmrData::spectrum(const QUuid &entry) const
{
    static const Spectrum none;
    const Entry *found = find(entry);
    return found ? found->spectrum : none;
}

const Spectrum &NmrData::shownSpectrum() const
{
    const Spectrum &active = spectrum(activeEntryId());
    if (!active.isEmpty())
        return active;
    const auto it = std::find_if(m_stack.entries.cbegin(), m_stack.entries.cend(),
                                 [](const Entry &entry) { return !entry.spectrum.isEmpty(); });
    return it == m_stack.entries.cend() ? active : it->spectrum;
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
    Entry *found = find(entry);
    found->data = data;
    found->spectrum = Spectrum::fromMap(data);
    Q_EMIT entryChanged(entry);
    Q_EMIT edited(tr("Change Spectrum"), before);
}

bool NmrData::isSimulated(const QUuid &entry) const
{
    const Entry *found = find(entry);
    if (!found)
        return false;
    for (const QVariant &original : {originalOf(found->data.value(rawDataKey).toMap()), originalOf(found->data)}) {
        const ParametersByFormat parameters = parametersOf(original);
        if (std::any_of(parameters.cbegin(), parameters.cend(), [](const auto &hash) { return !hash.isEmpty(); }))
            return true;
    }
    return false;
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
    Entry *found = find(entry);
    found->data.insert(QStringLiteral("Peaks"), peaks);
    found->spectrum = Spectrum::fromMap(found->data);
    Q_EMIT entryChanged(entry);
    Q_EMIT edited(what, before);
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
    if (!found)
        return {};
    const QVariantHash updated = parametersOf(originalOf(found->data.value(rawDataKey).toMap())).value(format);
    return updated.isEmpty() ? parametersOf(originalOf(found->data)).value(format) : updated;
}

void NmrData::setEntryOrigParams(const QUuid &entry, const QString &format, const QVariantHash &parameters)
{
    Entry *found = find(entry);
    if (!found)
        return;
    const auto store = [&](QVariantMap &map) {
        QVariantMap specInfo = map.value(specInfoKey).toMap();
        ParametersByFormat all = parametersOf(specInfo.value(originalKey));
        all.insert(format, parameters);
        specInfo.insert(originalKey, QVariant::fromValue(all));
        map.insert(specInfoKey, specInfo);
    };
    if (found->data.contains(rawDataKey)) {
        QVariantMap raw = found->data.value(rawDataKey).toMap();
        store(raw);
        found->data.insert(rawDataKey, raw);
    } else {
        store(found->data);
    }
}

QVariantMap NmrData::entryPeakList(QUuid entry)
{
    const Entry *found = find(entry);
    if (!found)
        return {};
    const QVariantMap peaks = found->data.value(QStringLiteral("Peaks")).toMap();
    if (!peaks.isEmpty())
        return peaks;
    return found->data.value(rawDataKey).toMap().value(QStringLiteral("Peaks")).toMap();
}

QString NmrData::xUnitsString()
{
    return QStringLiteral("ppm");
}

QString NmrData::yUnitsString()
{
    return QStringLiteral("ppm");
}
