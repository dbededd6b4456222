// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/PowderExport.h"

#include "data/Error.h"
#include "data/NumberText.h"

#include <QIODevice>
#include <QJsonArray>
#include <QJsonObject>

namespace Workbench {

namespace PowderExport {

namespace {

QJsonValue rotation(const PowderSettings &settings)
{
    switch (settings.rotation) {
    case Powder::Rotation::Static:
        return 0;
    case Powder::Rotation::MagicAngle:
        return settings.rate;
    case Powder::Rotation::InfiniteRate:
        break;
    }
    return QStringLiteral("infinite");
}

QByteArray quoted(const QString &field)
{
    QByteArray text = field.toUtf8();
    return text.contains(',') || text.contains('"') ? '"' + text.replace("\"", "\"\"") + '"' : text;
}

} // namespace

QJsonObject settingsJson(const PowderSettings &settings)
{
    return {{QStringLiteral("nucleus"), settings.nucleus},
            {QStringLiteral("proton_frequency_MHz"), settings.protonFrequency},
            {QStringLiteral("spinning_Hz"), rotation(settings)},
            {QStringLiteral("reference_ppm"), settings.reference},
            {QStringLiteral("slope"), settings.slope},
            {QStringLiteral("Cq_factor"), settings.couplingScale},
            {QStringLiteral("lorentzian_Hz"), settings.shape.lorentzian},
            {QStringLiteral("gaussian_Hz"), settings.shape.gaussian}};
}

QJsonObject json(const PowderSites &sites, const PowderSettings &settings, const Powder::Spectrum *spectrum)
{
    QJsonArray list;
    for (size_t i = 0; i < sites.sites.size(); ++i) {
        const PowderSite &site = sites.sites[i];
        QJsonObject object{{QStringLiteral("name"), site.name},
                           {QStringLiteral("nuclei"), site.nuclei},
                           {QStringLiteral("shift_ppm"), site.values.shift},
                           {QStringLiteral("span_ppm"), site.values.span},
                           {QStringLiteral("centre_ppm"), site.values.centre},
                           {QStringLiteral("breadth_ppm"), site.values.breadth}};
        if (site.site.coupling) {
            object.insert(QStringLiteral("Cq_MHz"), site.values.coupling);
            object.insert(QStringLiteral("eta"), site.values.asymmetry);
            object.insert(QStringLiteral("QIS_ppm"), site.values.quadrupolarShift);
        }
        if (spectrum) {
            object.insert(QStringLiteral("orientations"), spectrum->sites[i].directions);
            object.insert(QStringLiteral("estimated_error"), spectrum->sites[i].estimatedError);
        }
        list.append(object);
    }
    QJsonObject result = settingsJson(settings);
    result.insert(QStringLiteral("spin"), sites.conditions.spin);
    result.insert(QStringLiteral("larmor_frequency_MHz"), sites.conditions.larmor);
    result.insert(QStringLiteral("model"), sites.limits());
    result.insert(QStringLiteral("notes"), QJsonArray::fromStringList(sites.notes));
    result.insert(QStringLiteral("sites"), list);
    if (spectrum) {
        result.insert(QStringLiteral("axis"),
                      QJsonObject{{QStringLiteral("first"), spectrum->axis.first},
                                  {QStringLiteral("step"), spectrum->axis.step()},
                                  {QStringLiteral("points"), qint64(spectrum->axis.points)}});
        result.insert(QStringLiteral("converged"), spectrum->converged);
    }
    return result;
}

QJsonObject tripleQuantumJson(const PowderSites &sites, const PowderSettings &settings,
                              const ExperimentalSpectrum &plane)
{
    QJsonObject result = json(sites, settings, nullptr), axes;
    QJsonArray list = result[QStringLiteral("sites")].toArray();
    for (qsizetype i = 0; i < list.size(); ++i) {
        const Powder::TripleQuantumPosition position =
            Powder::tripleQuantumPosition(sites.sites[std::size_t(i)].values);
        QJsonObject site = list[i].toObject();
        site.insert(QStringLiteral("delta1_ppm"), position.f1);
        site.insert(QStringLiteral("delta2_ppm"), position.f2);
        list[i] = site;
    }
    result[QStringLiteral("sites")] = list;
    for (std::size_t d = 0; d < plane.dimensions.size(); ++d) {
        const SpectrumDimension &axis = plane.dimensions[d];
        axes.insert(d == 0 ? QStringLiteral("F2") : QStringLiteral("F1"),
                    QJsonObject{{QStringLiteral("first"), axis.first},
                                {QStringLiteral("step"), axis.step},
                                {QStringLiteral("points"), axis.points}});
    }
    result.insert(QStringLiteral("axes"), axes);
    return result;
}

void writeSitesCsv(const PowderSites &sites, const Powder::Spectrum &spectrum, QIODevice &device)
{
    QByteArray text = "ppm";
    for (const PowderSite &site : sites.sites)
        text += ',' + quoted(site.name);
    text += '\n';
    for (size_t i = 0; i < spectrum.axis.points; ++i) {
        NumberText::append17(text, spectrum.axis.at(i));
        for (const Powder::SiteCurve &curve : spectrum.sites) {
            text += ',';
            NumberText::append17(text, curve.values[i]);
        }
        text += '\n';
    }
    if (device.write(text) != text.size())
        fail(Texts::tr("the data cannot be written: %1").arg(device.errorString()));
}

} // namespace PowderExport

} // namespace Workbench
