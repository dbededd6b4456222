// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/Agreement.h"

#include "analysis/comparison/ShiftPoint.h"
#include "analysis/powder/GslErrors.h"
#include "data/Error.h"

#include <gsl/gsl_cdf.h>

#include <cmath>

namespace Workbench {

ChiSquare ChiSquare::of(double value, int degreesOfFreedom)
{
    ChiSquare result{value, degreesOfFreedom, {}};
    if (degreesOfFreedom > 0 && std::isfinite(value)) {
        returnGslErrors();
        result.p = gsl_cdf_chisq_Q(value, degreesOfFreedom);
    }
    return result;
}

QString ChiSquare::pText() const
{
    if (!p)
        return {};
    return *p < 1e-4 ? QStringLiteral("p < 0.0001") : QStringLiteral("p = %1").arg(*p, 0, 'g', 3);
}

Agreement Agreement::of(const std::vector<ComparedSite> &sites, const std::vector<MeasuredLine> &lines,
                        const std::vector<std::vector<int>> &linesOf, const Options &options)
{
    Agreement result;
    for (int i = 0; i < int(sites.size()); ++i) {
        SitePair pair{i, linesOf[std::size_t(i)], 0, 0};
        for (int line : pair.lines)
            pair.measured += lines[std::size_t(line)].shift / double(pair.lines.size());
        if (!pair.lines.empty())
            result.pairs.push_back(pair);
    }
    if (result.pairs.empty())
        fail(Texts::tr("no site has a measured line"));

    const double n = double(result.pairs.size());
    const auto shielding = [&](const SitePair &pair) { return sites[std::size_t(pair.site)].shielding; };
    std::vector<ShiftPoint> points;
    for (const SitePair &pair : result.pairs)
        points.push_back({shielding(pair), pair.measured});
    const ShiftMoments moments = ShiftMoments::of(points);
    result.meanShielding = moments.shielding;
    result.slope = options.slope.value_or(moments.slope(-1.0, options.reference));
    result.plainReference = moments.reference(result.slope);
    result.degreesOfFreedom = int(result.pairs.size()) - (options.reference ? 0 : 1) - (options.slope ? 0 : 1);

    double sum = 0, nuclei = 0;
    for (const SitePair &pair : result.pairs) {
        const double weight = sites[std::size_t(pair.site)].nuclei;
        sum += weight * (pair.measured - result.slope * shielding(pair));
        nuclei += weight;
    }
    result.reference = options.reference.value_or(sum / nuclei);
    const double centre = options.reference.value_or(result.plainReference);
    double squares = 0;
    for (SitePair &pair : result.pairs) {
        pair.calculated = result.reference + result.slope * shielding(pair);
        const double fromCentre = centre + result.slope * shielding(pair) - pair.measured;
        squares += pair.difference() * pair.difference();
        result.leastSquares += fromCentre * fromCentre;
        if (std::abs(pair.difference()) > std::abs(result.largest))
            result.largest = pair.difference();
    }
    result.rmsd = std::sqrt(squares / n);
    return result;
}

ChiSquare Agreement::chiSquare(double sigma) const
{
    return ChiSquare::of(leastSquares / (sigma * sigma), degreesOfFreedom);
}

std::optional<double> usualError(const QString &nucleus)
{
    constexpr std::pair<const char *, double> errors[] = {{"1H", 0.33}, {"13C", 2.2}, {"15N", 5.4}, {"17O", 7.2}};
    for (const auto &[name, error] : errors)
        if (nucleus == QLatin1String(name))
            return error;
    return std::nullopt;
}

} // namespace Workbench
