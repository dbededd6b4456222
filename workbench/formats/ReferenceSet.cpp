// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/ReferenceSet.h"

#include "data/Error.h"
#include "data/Nuclides.h"
#include "data/ReaderText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace Workbench {
namespace {

constexpr const char *formatName = "shift reference set";

QJsonObject regression(const ShiftCalibration &calibration)
{
    return {{QStringLiteral("reference"), calibration.reference},
            {QStringLiteral("reference_error"), calibration.referenceError},
            {QStringLiteral("slope"), calibration.slope},
            {QStringLiteral("slope_error"), calibration.slopeError},
            {QStringLiteral("covariance"), calibration.covariance},
            {QStringLiteral("rmse"), calibration.rmse},
            {QStringLiteral("leave_one_out"), calibration.leaveOneOut},
            {QStringLiteral("sites"), calibration.points}};
}

double number(const QJsonObject &object, const char *key, const QString &fileName)
{
    const QJsonValue value = object.value(QLatin1String(key));
    if (!value.isDouble())
        fail(fileName, Texts::tr("a site has no number called \"%1\"").arg(QLatin1String(key)));
    return value.toDouble();
}

} // namespace

void ReferenceSet::fill(std::optional<double> &reference, std::optional<double> &slope) const
{
    reference = reference.value_or(calibration.reference);
    slope = slope.value_or(calibration.slope);
}

QString ReferenceSet::doubtAbout(const CalculationMethod &other, const QString &name) const
{
    if (other.agreesWith(method))
        return {};
    return Texts::tr("%1: calculated with %2, but the reference set of %3 with %4")
        .arg(name, other.text(), nucleus, method.text());
}

QByteArray ReferenceSet::toJson() const
{
    QJsonObject calculated;
    if (!method.code.isEmpty())
        calculated.insert(QStringLiteral("code"), method.code);
    if (!method.version.isEmpty())
        calculated.insert(QStringLiteral("version"), method.version);
    if (!method.functional.isEmpty())
        calculated.insert(QStringLiteral("functional"), method.functional);
    if (method.cutoff)
        calculated.insert(QStringLiteral("cutoff_eV"), *method.cutoff);
    QJsonArray data;
    for (const Source &source : sources)
        data.append(QJsonObject{{QStringLiteral("file"), source.file},
                                {QStringLiteral("site"), source.site},
                                {QStringLiteral("shielding"), source.point.shielding},
                                {QStringLiteral("shift"), source.point.shift}});
    return QJsonDocument(QJsonObject{{QStringLiteral("format"), QLatin1String(formatName)},
                                     {QStringLiteral("nucleus"), nucleus},
                                     {QStringLiteral("method"), calculated},
                                     {QStringLiteral("regression"), regression(calibration)},
                                     {QStringLiteral("data"), data}})
        .toJson();
}

ReferenceSet ReferenceSet::read(const QString &fileName)
{
    constexpr qint64 largest = 64 << 20;
    return fromJson(ReaderText::readFile(fileName, largest), fileName);
}

ReferenceSet ReferenceSet::fromJson(const QByteArray &text, const QString &fileName)
{
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(text, &error).object();
    if (error.error != QJsonParseError::NoError && text.trimmed().startsWith('{'))
        fail(fileName, Texts::tr("byte %1: %2").arg(QString::number(error.offset), error.errorString()));
    if (object.value(QStringLiteral("format")).toString() != QLatin1String(formatName))
        fail(fileName, Texts::tr("expected a reference set, as calibrate writes it"));
    ReferenceSet set;
    set.nucleus = object.value(QStringLiteral("nucleus")).toString();
    if (!Nuclides::table().contains(set.nucleus))
        fail(fileName, Texts::tr("\"%1\" is not an NMR nucleus").arg(set.nucleus));
    const QJsonObject calculated = object.value(QStringLiteral("method")).toObject();
    set.method.code = calculated.value(QStringLiteral("code")).toString();
    set.method.version = calculated.value(QStringLiteral("version")).toString();
    set.method.functional = calculated.value(QStringLiteral("functional")).toString();
    if (const QJsonValue cutoff = calculated.value(QStringLiteral("cutoff_eV")); cutoff.isDouble())
        set.method.cutoff = cutoff.toDouble();
    std::vector<ShiftCalibration::Point> points;
    for (const QJsonValue &value : object.value(QStringLiteral("data")).toArray()) {
        const QJsonObject site = value.toObject();
        points.push_back({number(site, "shielding", fileName), number(site, "shift", fileName)});
        set.sources.push_back({site.value(QStringLiteral("file")).toString(),
                               site.value(QStringLiteral("site")).toString(), points.back()});
    }
    try {
        set.calibration = ShiftCalibration::of(points);
    } catch (const std::exception &reason) {
        fail(fileName, QString::fromUtf8(reason.what()));
    }
    return set;
}

} // namespace Workbench
