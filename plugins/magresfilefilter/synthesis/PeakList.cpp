// SPDX-License-Identifier: BSD-3-Clause
#include "synthesis/PeakList.h"

#include "parameters/DipolarCoupling.h"
#include "parameters/Nuclei.h"
#include "parameters/Texts.h"
#include "support/TPluginError.h"
#include "synthesis/Sites.h"
#include "synthesis/Xh3Averaging.h"

#include <algorithm>
#include <cmath>

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

/// Positions of sites as flat arrays.
struct Coordinates {
    explicit Coordinates(const QList<Site> &sites)
    {
        for (const Site &site : sites) {
            x.push_back(site.atom->pos[0]);
            y.push_back(site.atom->pos[1]);
            z.push_back(site.atom->pos[2]);
        }
    }

    std::vector<double> x, y, z;
};

/// The F1 partner of an F2 site, and the coupling by which it was chosen or that all partners have together, kHz.
struct Correlation {
    qsizetype partner = -1;
    double coupling = 0.0;
};

/// Calls `use(partner, distance)` for every site of F1.
template <typename Use>
void forEachDistance(const Coordinates &f2, size_t a, const Coordinates &f1, Use use)
{
    const double x = f2.x[a], y = f2.y[a], z = f2.z[a];
    for (size_t b = 0; b < f1.x.size(); ++b) {
        const double dx = x - f1.x[b];
        const double dy = y - f1.y[b];
        const double dz = z - f1.z[b];
        use(qsizetype(b), std::sqrt(dx * dx + dy * dy + dz * dz));
    }
}

/// The partner with the largest absolute coupling among those nearer than 3 Angstrom; the first of equals.
Correlation strongestPartner(const Coordinates &f2, size_t a, const Coordinates &f1, const DipolarCoupling &coupling)
{
    Correlation best;
    forEachDistance(f2, a, f1, [&](qsizetype b, double r) {
        if (!(r > 0.001 && r < 3.0))
            return;
        const double strength = std::abs(coupling(r));
        if (best.partner < 0 || strength > best.coupling)
            best = {b, strength};
    });
    return best;
}

/// The root of the sum of the squared couplings to all sites but the site itself; the partner is the one that
/// contributes most, the first of equals.
Correlation rssPartner(const Coordinates &f2, size_t a, const Coordinates &f1, const DipolarCoupling &coupling)
{
    Correlation sum;
    double strongest = 0.0;
    forEachDistance(f2, a, f1, [&](qsizetype b, double r) {
        if (!(r > 0.01))
            return;
        const double strength = std::abs(coupling(r));
        sum.coupling += strength * strength;
        if (sum.partner < 0 || strength > strongest) {
            sum.partner = b;
            strongest = strength;
        }
    });
    sum.coupling = std::sqrt(sum.coupling);
    return sum;
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
                               const DipolarCoupling &coupling, CorrelationMode mode)
{
    const Coordinates f2(sitesF2);
    const Coordinates f1(sitesF1);
    QList<SpectrumPeak> peaks;
    for (qsizetype a = 0; a < sitesF2.size(); ++a) {
        const Correlation found = mode == CorrelationMode::RssDipolar ? rssPartner(f2, size_t(a), f1, coupling)
                                                                      : strongestPartner(f2, size_t(a), f1, coupling);
        if (found.partner < 0)
            continue;
        SpectrumPeak &peak = peaks.emplaceBack();
        peak.positionF2 = shiftsF2[size_t(a)];
        peak.positionF1 = shiftsF1[size_t(found.partner)];
        peak.height = found.coupling;
        peak.labelsF2 = sitesF2[a].atom->labels;
        peak.labelsF1 = sitesF1[found.partner].atom->labels;
        peak.atomsF2 = {sitesF2[a].atom->recordNo};
        peak.atomsF1 = {sitesF1[found.partner].atom->recordNo};
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
        return averaged(singleSitePeaks(sitesF2, shiftsF2), groupsF2);

    const ShiftRule ruleF1 = shiftRule(parameters, 1, properties);
    const QList<Site> sitesF1 = sitesOf(data, ruleF1.nucleus);
    const std::vector<double> shiftsF1 = shiftsOf(sitesF1, ruleF1);
    const QList<Xh3Group> groupsF1 = elementOf(ruleF1.nucleus) == "H" ? groups : QList<Xh3Group>();
    const QList<SpectrumPeak> peaks =
        crossPeaks(sitesF2, shiftsF2, sitesF1, shiftsF1, DipolarCoupling(ruleF2.nucleus, ruleF1.nucleus),
                   CorrelationMode(parameters.corr));
    return averaged(averaged(peaks, groupsF2, 0, sitesF2, shiftsF2), groupsF1, 1, sitesF1, shiftsF1);
}

void sortPeaks(QList<SpectrumPeak> &peaks)
{
    std::stable_sort(peaks.begin(), peaks.end(), [](const SpectrumPeak &a, const SpectrumPeak &b) {
        return a.positionF2 != b.positionF2 ? a.positionF2 > b.positionF2 : a.positionF1 > b.positionF1;
    });
}

} // namespace Magres
