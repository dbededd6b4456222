// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/compare/ReferenceSets.h"

#include "analysis/PowderEntry.h"
#include "data/Error.h"
#include "host/MainScene.h"
#include "items/DocumentItem.h"
#include "window/compare/DocumentChoices.h"

#include <QFileInfo>
#include <QSettings>

namespace Workbench {

namespace {

const QString filesKey = QStringLiteral("referenceSets"), textsKey = QStringLiteral("referenceSetTexts");
// Where the plug-in looks for what its next spectrum starts with, by nucleus.
const QString startReferenceKey = QStringLiteral("magresPlugin/ref"),
              startSlopeKey = QStringLiteral("magresPlugin/slope");

void keep(QSettings &settings, const QString &key, const QString &nucleus, const QVariant &value)
{
    QVariantMap values = settings.value(key).toMap();
    values.insert(nucleus, value);
    settings.setValue(key, values);
}

/// Unless it is another value by now.
void drop(QSettings &settings, const QString &key, const QString &nucleus, double value)
{
    QVariantMap values = settings.value(key).toMap();
    if (values.value(nucleus).toDouble() == value)
        values.remove(nucleus);
    settings.setValue(key, values);
}

} // namespace

namespace ReferenceSets {

ReferenceSet use(const QString &fileName)
{
    ReferenceSet set = ReferenceSet::read(fileName);
    QSettings settings;
    keep(settings, filesKey, set.nucleus, QFileInfo(fileName).absoluteFilePath());
    keep(settings, textsKey, set.nucleus, set.toJson());
    keep(settings, startReferenceKey, set.nucleus, set.calibration.reference);
    keep(settings, startSlopeKey, set.nucleus, set.calibration.slope);
    return set;
}

QStringList forget()
{
    QSettings settings;
    const QStringList nuclei = settings.value(filesKey).toMap().keys();
    for (const QString &nucleus : nuclei) {
        if (const auto set = of(nucleus)) {
            drop(settings, startReferenceKey, nucleus, set->calibration.reference);
            drop(settings, startSlopeKey, nucleus, set->calibration.slope);
        }
    }
    settings.remove(filesKey);
    settings.remove(textsKey);
    return nuclei;
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
    const QByteArray text = QSettings().value(textsKey).toMap().value(nucleus).toByteArray();
    try {
        // Earlier versions kept the name alone.
        ReferenceSet set = text.isEmpty() ? ReferenceSet::read(file) : ReferenceSet::fromJson(text, file);
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

QStringList doubtsAbout(const SpectrumEntry &entry, const MainScene &scene)
{
    if (!entry.isSimulated())
        return {};
    const DocumentItem *table = nullptr;
    for (const StructureChoice &choice : structuresOf(scene)) {
        if (choice.data == entry.dataId())
            table = scene.item(choice.table);
    }
    const auto powder = PowderOrigin::of(entry);
    const QVariantHash parameters = entry.parameters(QStringLiteral("magres"));
    const QVariantMap references = parameters.value(QStringLiteral("ref")).toMap(),
                      slopes = parameters.value(QStringLiteral("slope")).toMap();
    QStringList doubts;
    for (const QString &nucleus : table ? entry.nuclei() : QStringList()) {
        const auto set = of(nucleus);
        const double reference = powder ? powder->settings.reference : references.value(nucleus).toDouble();
        const double slope = powder ? powder->settings.slope : slopes.value(nucleus).toDouble();
        if (set && reference == set->calibration.reference && slope == set->calibration.slope)
            doubts.append(set->doubtAbout(table->method(), table->source()));
    }
    doubts.removeAll(QString());
    return doubts;
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
