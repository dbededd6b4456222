// SPDX-License-Identifier: BSD-3-Clause
#include "fitting/ReferenceFit.h"

#include "fitting/PeakPairing.h"
#include "parameters/Texts.h"
#include "support/MetaTypes.h"
#include "support/TPluginError.h"

#include <algorithm>
#include <cmath>

namespace Magres {
namespace {

double position(const QVariantMap &peak, size_t dimension)
{
    const QVariant value = peak.value(QStringLiteral("Pos"));
    const DoubleVector positions = value.value<DoubleVector>();
    if (!positions.empty())
        return dimension < positions.size() ? positions[dimension] : 0.0;
    return value.toList().value(qsizetype(dimension), 0.0).toDouble();
}

void requireNumbers(const QList<double> &values, const QString &message)
{
    const auto found = std::find_if_not(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
    if (found != values.end())
        throw TPluginError(message.arg(found - values.begin() + 1));
}

/// Throws TPluginError when a number that counts is none. Weights that add up to zero are another matter: they give
/// results that are not numbers.
void requireNumbers(const PeakColumns &columns, bool twoD)
{
    const QString noPosition = Texts::tr("Peak %1 of the MAGRES spectrum has no position");
    const QString noMeasuredPosition = Texts::tr("Peak %1 of the experimental spectrum has no position");
    requireNumbers(columns.simulatedF2, noPosition);
    requireNumbers(columns.heights, Texts::tr("Peak %1 of the MAGRES spectrum has no height"));
    requireNumbers(columns.experimentalF2, noMeasuredPosition);
    if (twoD) {
        requireNumbers(columns.simulatedF1, noPosition);
        requireNumbers(columns.experimentalF1, noMeasuredPosition);
    }
}

QString number(double value)
{
    return QString::number(value, 'g', 6);
}

void shift(QList<double> &positions, double offset)
{
    for (double &p : positions)
        p += offset;
}

/// Adds the offset to the nucleus's reference. Returns the text that says so.
QString moveReference(MagresSpecParams &parameters, const QString &nucleus, double offset, const QString &message)
{
    const double old = parameters.referenceOf(nucleus);
    parameters.ref.insert(nucleus, old + offset);
    return message.arg(number(old), number(old + offset));
}

} // namespace

PeakColumns peakColumns(const QVariantList &simulated, const QVariantList &experimental)
{
    if (simulated.size() != experimental.size())
        throw TPluginError(Texts::tr("The MAGRES spectrum has %1 compound peaks and the experimental spectrum has %2")
                               .arg(simulated.size())
                               .arg(experimental.size()));
    PeakColumns columns;
    for (qsizetype i = 0; i < simulated.size(); ++i) {
        const QVariantMap model = simulated[i].toMap();
        const QVariantMap measured = experimental[i].toMap();
        columns.simulatedF2.append(position(model, 0));
        columns.simulatedF1.append(position(model, 1));
        columns.heights.append(model.value(QStringLiteral("Height")).toDouble());
        columns.experimentalF2.append(position(measured, 0));
        columns.experimentalF1.append(position(measured, 1));
    }
    return columns;
}

QString fitReference(PeakColumns columns, const AxisUnits &units, MagresSpecParams &parameters)
{
    const bool twoD = parameters.isTwoD();
    requireNumbers(columns, twoD);
    const bool bothReferences = twoD && parameters.nucF1 != parameters.nucF2;
    const auto rmsdF2 = [&] { return pairedRmsd(columns.simulatedF2, columns.experimentalF2, columns.heights); };
    const auto rmsdF1 = [&] { return pairedRmsd(columns.simulatedF1, columns.experimentalF1, columns.heights); };
    const double oldF2 = rmsdF2();
    const double oldF1 = twoD ? rmsdF1() : 0.0;

    const double offsetF2 = pairedOffset(columns.simulatedF2, columns.experimentalF2, columns.heights);
    QString report =
        moveReference(parameters, parameters.nucF2, offsetF2,
                      bothReferences ? Texts::tr("Direct dimension reference is changed from %1 ppm to %2 ppm")
                                     : Texts::tr("Reference is changed from %1 ppm to %2 ppm"));
    shift(columns.simulatedF2, offsetF2);
    if (!bothReferences)
        return report + Texts::tr("\n\nOld RMSD: %1 %2").arg(number(oldF2), units.F2)
            + Texts::tr("\nNew RMSD: %1 %2").arg(number(rmsdF2()), units.F2);

    const double offsetF1 = pairedOffset(columns.simulatedF1, columns.experimentalF1, columns.heights);
    report += moveReference(parameters, parameters.nucF1, offsetF1,
                            Texts::tr("\nIndirect dimension reference is changed from %1 ppm to %2 ppm"));
    shift(columns.simulatedF1, offsetF1);
    // The blank that the first line lacks before its last unit is missing on purpose: scripts read these lines.
    return report
        + Texts::tr("\n\nOld RMSD. Direct dimension: %1 %2, indirect dimension: %3%4")
              .arg(number(oldF2), units.F2, number(oldF1), units.F1)
        + Texts::tr("\nNew RMSD: Direct dimension: %1 %2, indirect dimension: %3 %4")
              .arg(number(rmsdF2()), units.F2, number(rmsdF1()), units.F1);
}

QString rmsdReport(const PeakColumns &columns, const AxisUnits &units, const MagresSpecParams &parameters)
{
    requireNumbers(columns, parameters.isTwoD());
    const double rmsdF2 = pairedRmsd(columns.simulatedF2, columns.experimentalF2, columns.heights);
    if (!parameters.isTwoD())
        return Texts::tr("RMSD: %1 %2").arg(number(rmsdF2), units.F2);
    const double rmsdF1 = pairedRmsd(columns.simulatedF1, columns.experimentalF1, columns.heights);
    return Texts::tr("RMSD (direct dimension): %1 %2").arg(number(rmsdF2), units.F2)
        + Texts::tr("\nRMSD (indirect dimension): %1 %2").arg(number(rmsdF1), units.F1);
}

} // namespace Magres
