// SPDX-License-Identifier: BSD-3-Clause
#include "synthesis/PeakList.h"

#include "parameters/Nuclei.h"
#include "parameters/Texts.h"
#include "support/TPluginError.h"
#include "synthesis/PartnerSearch.h"
#include "synthesis/Sites.h"
#include "synthesis/Xh3Averaging.h"

#include <algorithm>

namespace Magres {
namespace {

/// The shifts of all sites, ppm.
std::vector<double> shiftsOf(const QList<Site> &sites, const ShiftRule &rule)
{
    std::vector<double> shifts;
    shifts.reserve(size_t(sites.size()));
    for (const Site &site : sites) {
        const double shift = site.shielding ? rule.shift(site.shielding->iso(), site.efg) : std::nan("");
        if (!std::isfinite(shift))
            throw TPluginError(
                Texts::tr("Atom %1 has no chem. shift").arg(QString::fromLatin1(site.atom->labels.join(','))));
        shifts.push_back(shift);
    }
    return shifts;
}

QList<SpectrumPeak> singleSitePeaks(const QList<Site> &sites, const std::vector<double> &shifts)
{
    QList<SpectrumPeak> peaks;
    peaks.reserve(sites.size());
    for (qsizetype i = 0; i < sites.size(); ++i) {
        SpectrumPeak &peak = peaks.emplaceBack();
        peak.positionF2 = shifts[size_t(i)];
        peak.labelsF2 = sites[i].atom->labels;
        peak.atomsF2 = {sites[i].atom->recordNo};
    }
    return peaks;
}

QList<SpectrumPeak> crossPeaks(const QList<Site> &sitesF2, const std::vector<double> &shiftsF2,
                               const QList<Site> &sitesF1, const std::vector<double> &shiftsF1,
                               const PartnerSearch &partners)
{
    QList<SpectrumPeak> peaks;
    for (qsizetype a = 0; a < sitesF2.size(); ++a) {
        const Partner found = partners.of(sitesF2[a].atom->pos);
        if (found.site < 0)
            continue;
        SpectrumPeak &peak = peaks.emplaceBack();
        peak.positionF2 = shiftsF2[size_t(a)];
        peak.positionF1 = shiftsF1[size_t(found.site)];
        peak.height = found.coupling;
        peak.labelsF2 = sitesF2[a].atom->labels;
        peak.labelsF1 = sitesF1[found.site].atom->labels;
        peak.atomsF2 = {sitesF2[a].atom->recordNo};
        peak.atomsF1 = {sitesF1[found.site].atom->recordNo};
    }
    return peaks;
}

} // namespace

QList<SpectrumPeak> makePeaks(const MagresData &data, const MagresSpecParams &parameters,
                              const NuclearProperties &properties)
{
    const ShiftRule ruleF2 = shiftRule(parameters, 0, properties);
    const QList<Site> sitesF2 = sitesOf(data, ruleF2.nucleus);
    const std::vector<double> shiftsF2 = shiftsOf(sitesF2, ruleF2);
    // The groups are made of hydrogens: other nuclei have nothing to average.
    const QList<Xh3Group> groups = xh3Groups(data, AveragingMode(parameters.avIdx));
    const QList<Xh3Group> groupsF2 = elementOf(ruleF2.nucleus) == "H" ? groups : QList<Xh3Group>();
    if (!parameters.isTwoD())
        return averagedSitePeaks(singleSitePeaks(sitesF2, shiftsF2), groupsF2);

    const ShiftRule ruleF1 = shiftRule(parameters, 1, properties);
    const QList<Site> sitesF1 = sitesOf(data, ruleF1.nucleus);
    const std::vector<double> shiftsF1 = shiftsOf(sitesF1, ruleF1);
    const QList<Xh3Group> groupsF1 = elementOf(ruleF1.nucleus) == "H" ? groups : QList<Xh3Group>();
    const PartnerSearch partners(sitesF1, data.lattice, DipolarCoupling(ruleF2.nucleus, ruleF1.nucleus),
                                 CorrelationMode(parameters.corr));
    const QList<SpectrumPeak> peaks = crossPeaks(sitesF2, shiftsF2, sitesF1, shiftsF1, partners);
    return averagedCrossPeaks(averagedCrossPeaks(peaks, groupsF2, 0, sitesF2, shiftsF2), groupsF1, 1, sitesF1,
                              shiftsF1);
}

void sortPeaks(QList<SpectrumPeak> &peaks)
{
    std::stable_sort(peaks.begin(), peaks.end(), [](const SpectrumPeak &a, const SpectrumPeak &b) {
        return a.positionF2 != b.positionF2 ? a.positionF2 > b.positionF2 : a.positionF1 > b.positionF1;
    });
}

} // namespace Magres
