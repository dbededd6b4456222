// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/SpectrumRemarks.h"

#include "analysis/PowderEntry.h"
#include "data/Error.h"
#include "data/Nuclides.h"

#include <QCoreApplication>

#include <algorithm>
#include <bit>
#include <cmath>

namespace Workbench {

namespace {

const QString magresFormat = QStringLiteral("magres");
/// Of two points a line width. Widths that were chosen to be just that must pass.
constexpr double fullSampling = 0.99;
constexpr int mostPoints1D = 1 << 20;

QString nameOf(const SpectrumAxis &axis, int dimension, int dimensions)
{
    const QString nucleus = axis.nucleus();
    return dimensions == 1 ? nucleus : QStringLiteral("F%1 (%2)").arg(dimension == 0 ? 2 : 1).arg(nucleus);
}

double widthOf(const SpectrumPeak &peak, int dimension)
{
    return dimension == 0 ? peak.widthF2 : peak.widthF1;
}

double positionOf(const SpectrumPeak &peak, int dimension)
{
    return dimension == 0 ? peak.f2 : peak.f1;
}

/// A number as one would say it: "62", "0.8".
QString few(double value)
{
    return QString::number(value, 'g', value >= 100 ? 3 : 2);
}

/// Rounded up to two digits: what must suffice.
double roundedUp(double value)
{
    const double unit = std::pow(10.0, std::floor(std::log10(value)) - 1);
    return std::ceil(value / unit - 1e-9) * unit;
}

QStringList undersampled(const Spectrum &spectrum)
{
    QStringList texts;
    for (int d = 0; d < spectrum.dimensions(); ++d) {
        const SpectrumAxis &axis = spectrum.axes[d];
        double narrowest = 0;
        for (const SpectrumPeak &peak : spectrum.peaks) {
            if (const double width = widthOf(peak, d); width > 0 && (narrowest == 0 || width < narrowest))
                narrowest = width;
        }
        const double points = narrowest / std::abs(axis.step);
        if (!(narrowest > 0) || !(points < 2 * fullSampling))
            continue;
        const double needed = 2 / points * axis.size;
        QStringList cures;
        if (needed <= mostPoints1D)
            cures.append(Texts::tr("%1 points").arg(qint64(std::bit_ceil(quint64(std::ceil(needed))))));
        if (axis.frequency > 0)
            cures.append(Texts::tr("a line width of %1 Hz").arg(roundedUp(2 * std::abs(axis.step) * axis.frequency)));
        cures.append(Texts::tr("a narrower range"));
        texts.append(
            Texts::tr("%1: %2 points a line width, so that lines are missing or of the wrong height; %3 mends it")
                .arg(nameOf(axis, d, spectrum.dimensions()), few(points), cures.join(Texts::tr(" or "))));
    }
    return texts;
}

int countBeyond(const Spectrum &spectrum)
{
    const auto isBeyond = [&](const SpectrumPeak &peak) {
        for (int d = 0; d < spectrum.dimensions(); ++d) {
            const SpectrumAxis &axis = spectrum.axes[d];
            const auto [low, high] = std::minmax({axis.first, axis.last()});
            if (positionOf(peak, d) < low || positionOf(peak, d) > high)
                return true;
        }
        return false;
    };
    return int(std::count_if(spectrum.peaks.cbegin(), spectrum.peaks.cend(), isBeyond));
}

/// Each nucleus of the spectrum once.
QList<SpectrumAxis> nucleiOf(const Spectrum &spectrum)
{
    QList<SpectrumAxis> axes;
    for (const SpectrumAxis &axis : spectrum.axes) {
        if (axes.isEmpty() || axes.constFirst().nucleus() != axis.nucleus())
            axes.append(axis);
    }
    return axes;
}

} // namespace

QList<SpectrumRemark> remarksOn(const SpectrumEntry &entry)
{
    QList<SpectrumRemark> remarks;
    const Spectrum &spectrum = entry.spectrum;
    if (spectrum.isEmpty() || !entry.isSimulated())
        return remarks;
    const auto add = [&](SpectrumRemark::Kind kind, const QString &text) { remarks.append({kind, entry.id, text}); };
    if (const int beyond = countBeyond(spectrum))
        add(SpectrumRemark::BeyondRange,
            Texts::tr("%1 of %2 peaks lie outside of the computed range").arg(beyond).arg(spectrum.peaks.size()));
    if (const QStringList texts = undersampled(spectrum); !texts.isEmpty())
        add(SpectrumRemark::Undersampled, texts.join(QLatin1String(". ")));

    const auto addPlaceholder = [&](const QStringList &nuclei) {
        add(SpectrumRemark::PlaceholderReference,
            Texts::tr("The reference of %1 is a placeholder, %2 ppm: positions mean nothing yet, only distances do")
                .arg(nuclei.join(Texts::tr(" and ")))
                .arg(placeholderReference));
    };
    if (const auto powder = PowderOrigin::of(entry)) {
        if (powder->settings.reference == placeholderReference)
            addPlaceholder({spectrum.axes.front().nucleus()});
        return remarks;
    }
    const QVariantMap references = entry.parameters(magresFormat).value(QStringLiteral("ref")).toMap();
    QStringList placeholders, quadrupolar;
    for (const SpectrumAxis &axis : nucleiOf(spectrum)) {
        if (references.value(axis.isotope(), placeholderReference).toDouble() == placeholderReference)
            placeholders.append(axis.nucleus());
        if (const Nuclide nuclide = Nuclides::table()[axis.isotope()]; nuclide.isQuadrupolar())
            quadrupolar.append(Texts::tr("%1 (spin %2)").arg(axis.nucleus(), nuclide.spin));
    }
    if (!placeholders.isEmpty())
        addPlaceholder(placeholders);
    if (!quadrupolar.isEmpty())
        add(SpectrumRemark::QuadrupolarLines,
            Texts::tr(
                "%1: measured lines are quadrupolar powder patterns and look different from the simple lines drawn")
                .arg(quadrupolar.join(Texts::tr(" and "))));
    return remarks;
}

QList<SpectrumRemark> remarksOn(const NmrStack &stack)
{
    // A site's curve is made and mended with its sum, which says it for all of them.
    QList<const SpectrumEntry *> wholes;
    for (const SpectrumEntry &entry : stack.entries) {
        const auto powder = PowderOrigin::of(entry);
        const bool isPart = powder
            && std::any_of(stack.entries.cbegin(), stack.entries.cend(),
                           [&](const SpectrumEntry &other) { return other.id == powder->sum; });
        if (entry.isSimulated() && !isPart)
            wholes.append(&entry);
    }
    QList<SpectrumRemark> all;
    const QStringList simulated = wholes.isEmpty() ? QStringList() : wholes.constFirst()->nuclei();
    for (const SpectrumEntry &entry : stack.entries) {
        if (!entry.isSimulated() && !shareAxes(entry.nuclei(), simulated))
            all.append({SpectrumRemark::OtherAxes, entry.id,
                        Texts::tr("%1 is a spectrum of other nuclei or dimensions than what is simulated here: its "
                                  "positions mean nothing on these axes")
                            .arg(entry.name)});
    }
    const bool onOneAxis = stack.shown() && stack.shown()->axes().size() == 1;
    for (const SpectrumEntry &entry : stack.entries) {
        if (onOneAxis && entry.spectrum.isEmpty() && entry.nuclei().size() == 2)
            all.append({SpectrumRemark::CrossPeaksOnOneAxis, entry.id,
                        Texts::tr("%1 is a list of cross peaks: only their F2 positions are drawn on this axis")
                            .arg(entry.name)});
    }
    for (const SpectrumEntry *entry : std::as_const(wholes)) {
        for (SpectrumRemark remark : remarksOn(*entry)) {
            if (wholes.size() > 1)
                remark.text = QStringLiteral("%1: %2").arg(entry->name, remark.text);
            all.append(remark);
        }
    }
    return all;
}

} // namespace Workbench
