// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/PowderEntry.h"

#include "data/Nuclides.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

const QString powderFormat = QStringLiteral("powder");
const QString simulatedFormat = QStringLiteral("magres");
const QString dataKey = QStringLiteral("magresDataId");
const QString sumKey = QStringLiteral("partOf");

// In the order of Powder::Rotation; files hold these.
const QStringList rotations{QStringLiteral("static"), QStringLiteral("mas"), QStringLiteral("infinite")};

QVariantHash toHash(const PowderOrigin &origin)
{
    const PowderSettings &settings = origin.settings;
    QVariantHash hash{{dataKey, origin.dataId},
                      {QStringLiteral("nucleus"), settings.nucleus},
                      {QStringLiteral("freq"), settings.protonFrequency},
                      {QStringLiteral("rotation"), rotations[int(settings.rotation)]},
                      {QStringLiteral("rate"), settings.rate},
                      {QStringLiteral("sites"), settings.labels},
                      {QStringLiteral("ref"), settings.reference},
                      {QStringLiteral("slope"), settings.slope},
                      {QStringLiteral("scale"), settings.couplingScale},
                      {QStringLiteral("lorentzian"), settings.shape.lorentzian},
                      {QStringLiteral("gaussian"), settings.shape.gaussian},
                      {QStringLiteral("pts"), settings.points},
                      {QStringLiteral("siteCurves"), settings.siteCurves}};
    if (!origin.sum.isNull())
        hash.insert(sumKey, origin.sum);
    if (settings.range) {
        hash.insert(QStringLiteral("from"), settings.range->first);
        hash.insert(QStringLiteral("to"), settings.range->second);
    }
    return hash;
}

/// Documents come from anywhere.
bool isSensible(const PowderSettings &settings)
{
    const auto isWithin = [](double value, double low, double high) { return value >= low && value <= high; };
    return Nuclides::table().contains(settings.nucleus) && isWithin(settings.protonFrequency, 1, 1e4)
        && isWithin(settings.rate, 0, 1e7) && isWithin(std::abs(settings.reference), 0, 1e6)
        && isWithin(std::abs(settings.slope), 0, 1e3) && isWithin(std::abs(settings.couplingScale), 0, 1e3)
        && isWithin(settings.shape.lorentzian, 0, 1e9) && isWithin(settings.shape.gaussian, 0, 1e9)
        && isWithin(settings.points, 2, double(Powder::mostPoints))
        && (!settings.range
            || (isWithin(std::abs(settings.range->first), 0, 1e6) && isWithin(std::abs(settings.range->second), 0, 1e6)
                && settings.range->first != settings.range->second));
}

} // namespace

std::optional<PowderOrigin> PowderOrigin::of(const SpectrumEntry &entry)
{
    const QVariantHash hash = entry.parameters(powderFormat);
    const auto number = [&](const char *key) { return hash.value(QLatin1String(key)).toDouble(); };
    const qsizetype rotation = rotations.indexOf(hash.value(QStringLiteral("rotation")).toString());
    if (rotation < 0)
        return std::nullopt;
    PowderOrigin origin;
    origin.dataId = hash.value(dataKey).toUuid();
    PowderSettings &settings = origin.settings;
    settings.nucleus = hash.value(QStringLiteral("nucleus")).toString();
    settings.protonFrequency = number("freq");
    settings.rotation = Powder::Rotation(rotation);
    settings.rate = number("rate");
    settings.labels = hash.value(QStringLiteral("sites")).toStringList();
    settings.reference = number("ref");
    settings.slope = number("slope");
    settings.couplingScale = number("scale");
    settings.shape = {number("lorentzian"), number("gaussian")};
    settings.points = hash.value(QStringLiteral("pts")).toInt();
    settings.siteCurves = hash.value(QStringLiteral("siteCurves")).toBool();
    origin.sum = hash.value(sumKey).toUuid();
    if (hash.contains(QStringLiteral("from")) && hash.contains(QStringLiteral("to")))
        settings.range = {number("from"), number("to")};
    return isSensible(settings) ? std::optional(origin) : std::nullopt;
}

namespace {

QVariantMap entryOf(const PowderSites &sites, const Powder::Axis &axis, const std::vector<double> &values,
                    const PowderOrigin &origin)
{
    SpectrumEntry entry;
    entry.data = toEntryMap(powderCurve(sites, axis, values, {}));
    entry.setParameters(powderFormat, toHash(origin));
    return entry.data;
}

} // namespace

QVariantMap powderEntry(const PowderSites &sites, const Powder::Spectrum &spectrum, const PowderOrigin &origin)
{
    return entryOf(sites, spectrum.axis, spectrum.sum, origin);
}

NmrStack withSiteCurves(NmrStack stack, const QUuid &sum, const PowderSites &sites, const Powder::Spectrum &spectrum,
                        const PowderOrigin &origin)
{
    QHash<QStringList, QUuid> ids; // of the curves before, by label
    stack.entries.removeIf([&](const SpectrumEntry &entry) {
        const auto made = PowderOrigin::of(entry);
        if (!made || made->sum != sum)
            return false;
        ids.insert(made->settings.labels, entry.id);
        return true;
    });
    const auto isThere = [&](const QUuid &id) {
        return std::any_of(stack.entries.cbegin(), stack.entries.cend(),
                           [&](const SpectrumEntry &entry) { return entry.id == id; });
    };
    const bool wanted =
        origin.settings.siteCurves && sites.sites.size() >= 2 && sites.sites.size() <= mostSiteCurves && isThere(sum);
    qsizetype place = 1
        + std::distance(stack.entries.cbegin(),
                        std::find_if(stack.entries.cbegin(), stack.entries.cend(),
                                     [&](const SpectrumEntry &entry) { return entry.id == sum; }));
    for (size_t i = 0; wanted && i < sites.sites.size(); ++i) {
        PowderOrigin part = origin;
        part.sum = sum;
        part.settings.labels = {sites.sites[i].label};
        const QVariantMap data = entryOf(sites, spectrum.axis, spectrum.sites[i].values, part);
        const QUuid known = ids.take(part.settings.labels);
        stack.entries.insert(
            place++,
            {known.isNull() ? QUuid::createUuid() : known, sites.sites[i].name, data, Spectrum::fromMap(data)});
    }
    if (!isThere(stack.activeId))
        stack.activeId = sum;
    return stack;
}

PowderSettings powderSettingsLike(const SpectrumEntry &simulated)
{
    PowderSettings settings;
    if (simulated.spectrum.isEmpty())
        return settings;
    const SpectrumAxis &axis = simulated.spectrum.axes.front();
    settings.nucleus = axis.isotope();
    if (const double frequency = protonFrequencyOf(settings.nucleus, axis.frequency); frequency > 0)
        settings.protonFrequency = frequency;
    const QVariantHash parameters = simulated.parameters(simulatedFormat);
    if (const double frequency = parameters.value(QStringLiteral("freq")).toDouble();
        frequency >= 1 && frequency <= 1e4)
        settings.protonFrequency = frequency;
    const auto take = [&](const char *key, double &value) {
        const QVariantMap byNucleus = parameters.value(QLatin1String(key)).toMap();
        value = byNucleus.value(settings.nucleus, value).toDouble();
    };
    take("ref", settings.reference);
    take("slope", settings.slope);
    return settings;
}

ExperimentalSpectrum asMeasured(const SpectrumEntry &entry)
{
    ExperimentalSpectrum measured;
    measured.title = entry.name;
    if (entry.spectrum.dimensions() != 1)
        return measured;
    const SpectrumAxis &axis = entry.spectrum.axes.front();
    SpectrumDimension dimension;
    dimension.nucleus = axis.isotope();
    dimension.frequency = axis.frequency;
    dimension.first = axis.first;
    dimension.step = axis.step;
    dimension.points = axis.size;
    measured.dimensions.push_back(dimension);
    const auto points = entry.spectrum.real();
    measured.data.assign(points.begin(), points.end());
    return measured;
}

} // namespace Workbench
