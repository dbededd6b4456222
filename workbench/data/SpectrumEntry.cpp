// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/SpectrumEntry.h"

#include <algorithm>

namespace Workbench {

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

QVariantHash SpectrumEntry::parameters(const QString &format) const
{
    const QVariantHash updated = parametersOf(originalOf(data.value(rawDataKey).toMap())).value(format);
    return updated.isEmpty() ? parametersOf(originalOf(data)).value(format) : updated;
}

void SpectrumEntry::setParameters(const QString &format, const QVariantHash &parameters)
{
    const auto store = [&](QVariantMap &map) {
        QVariantMap specInfo = map.value(specInfoKey).toMap();
        ParametersByFormat all = parametersOf(specInfo.value(originalKey));
        all.insert(format, parameters);
        specInfo.insert(originalKey, QVariant::fromValue(all));
        map.insert(specInfoKey, specInfo);
    };
    if (data.contains(rawDataKey)) {
        QVariantMap raw = data.value(rawDataKey).toMap();
        store(raw);
        data.insert(rawDataKey, raw);
    } else {
        store(data);
    }
}

bool SpectrumEntry::isSimulated() const
{
    for (const QVariant &original : {originalOf(data.value(rawDataKey).toMap()), originalOf(data)}) {
        const ParametersByFormat parameters = parametersOf(original);
        if (std::any_of(parameters.cbegin(), parameters.cend(), [](const auto &hash) { return !hash.isEmpty(); }))
            return true;
    }
    return false;
}

QUuid SpectrumEntry::dataId() const
{
    for (const QString &format : {QStringLiteral("magres"), QStringLiteral("powder")}) {
        const QUuid made = parameters(format).value(QStringLiteral("magresDataId")).toUuid();
        if (!made.isNull())
            return made;
    }
    return {};
}

QStringList SpectrumEntry::nuclei() const
{
    QStringList names;
    for (const SpectrumAxis &axis : spectrum.axes)
        names.append(axis.isotope());
    if (!names.isEmpty() || spectrum.peaks.isEmpty())
        return names;
    names = data.value(nucleiKey()).toStringList();
    const bool plane = std::any_of(spectrum.peaks.begin(), spectrum.peaks.end(),
                                   [](const SpectrumPeak &peak) { return peak.f1 != 0.0; });
    names.resize(plane ? 2 : 1);
    return names;
}

QList<SpectrumAxis> SpectrumEntry::axes() const
{
    if (!spectrum.isEmpty())
        return spectrum.axes;
    QList<SpectrumAxis> axes;
    for (const QString &nucleus : nuclei()) {
        const auto symbol = std::find_if(nucleus.begin(), nucleus.end(), [](QChar c) { return c.isLetter(); });
        SpectrumAxis axis;
        axis.massNumber = QStringView(nucleus.begin(), symbol).toInt();
        axis.element = QString(symbol, nucleus.end() - symbol);
        axes.append(axis);
    }
    return axes;
}

const SpectrumEntry *NmrStack::shown() const
{
    const auto rank = [this](const SpectrumEntry &entry) {
        const int content = !entry.spectrum.isEmpty() ? 2 : !entry.spectrum.peaks.isEmpty() ? 1 : 0;
        return 2 * content + (entry.id == activeId ? 1 : 0);
    };
    const auto first = std::max_element(entries.begin(), entries.end(),
                                        [&](const auto &a, const auto &b) { return rank(a) < rank(b); });
    return first == entries.end() ? nullptr : &*first;
}

bool shareAxes(const QStringList &nuclei, const QStringList &others)
{
    const auto fits = [](const QString &a, const QString &b) { return a.isEmpty() || b.isEmpty() || a == b; };
    return nuclei.isEmpty() || others.isEmpty()
        || std::equal(nuclei.begin(), nuclei.end(), others.begin(), others.end(), fits);
}

QVariantMap SpectrumEntry::peakList() const
{
    const QVariantMap peaks = data.value(QStringLiteral("Peaks")).toMap();
    return peaks.isEmpty() ? data.value(rawDataKey).toMap().value(QStringLiteral("Peaks")).toMap() : peaks;
}

} // namespace Workbench
