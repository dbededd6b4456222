// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/compare/ReferenceSets.h"

#include "data/Error.h"

#include <QFileInfo>
#include <QSettings>

namespace Workbench {

namespace {

const QString filesKey = QStringLiteral("referenceSets");

/// Where the plug-in looks for what its next spectrum starts with, by nucleus.
void setStart(QSettings &settings, const QString &key, const QString &nucleus, double value)
{
    QVariantMap values = settings.value(key).toMap();
    values.insert(nucleus, value);
    settings.setValue(key, values);
}

} // namespace

namespace ReferenceSets {

ReferenceSet use(const QString &fileName)
{
    ReferenceSet set = ReferenceSet::read(fileName);
    QSettings settings;
    QVariantMap files = settings.value(filesKey).toMap();
    files.insert(set.nucleus, QFileInfo(fileName).absoluteFilePath());
    settings.setValue(filesKey, files);
    setStart(settings, QStringLiteral("magresPlugin/ref"), set.nucleus, set.calibration.reference);
    setStart(settings, QStringLiteral("magresPlugin/slope"), set.nucleus, set.calibration.slope);
    return set;
}

QString fileOf(const QString &nucleus)
{
    return QSettings().value(filesKey).toMap().value(nucleus).toString();
}

std::optional<ReferenceSet> of(const QString &nucleus)
{
    const QString file = fileOf(nucleus);
    if (file.isEmpty())
        return std::nullopt;
    try {
        ReferenceSet set = ReferenceSet::read(file);
        return set.nucleus == nucleus ? std::optional(std::move(set)) : std::nullopt;
    } catch (const std::exception &) {
        return std::nullopt;
    }
}

PowderSettings powderStart(const QString &nucleus)
{
    PowderSettings settings;
    settings.nucleus = nucleus;
    if (const auto set = of(nucleus)) {
        settings.reference = set->calibration.reference;
        settings.slope = set->calibration.slope;
    }
    return settings;
}

QMap<QString, SiteTable::Scale> scales()
{
    SiteTable::Options found;
    for (const QString &nucleus : QSettings().value(filesKey).toMap().keys()) {
        if (const auto set = of(nucleus))
            found.setScale(nucleus,
                           {set->calibration.reference, set->calibration.slope,
                            Texts::tr("of %1").arg(QFileInfo(fileOf(nucleus)).fileName())});
    }
    return found.scales;
}

} // namespace ReferenceSets

} // namespace Workbench
