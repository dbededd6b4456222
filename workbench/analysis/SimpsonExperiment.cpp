// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/SimpsonExperiment.h"

#include "data/Error.h"

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

struct Sampling {
    double width = 0; ///< Hz
    qint64 points = 0;
};

/// Sidebands fall on each other when they fold if the width is a multiple of the rate.
Sampling samplingOf(const PowderSites &sites, const PowderSettings &settings)
{
    constexpr double margin = 1.2;
    constexpr qint64 fewest = 1024, most = 1 << 20;
    const std::vector<Powder::Site> plain = sites.plain();
    const auto axis = Powder::fittingAxis(plain, sites.conditions, settings.shape, 1024);
    const double reach = std::max(std::abs(axis->first), std::abs(axis->last)) * sites.conditions.larmor;
    Sampling sampling;
    const double unit = settings.rotation == Powder::Rotation::MagicAngle ? settings.rate : 1000;
    sampling.width = std::max(2.0, std::ceil(2 * margin * reach / unit)) * unit;
    // Until the signal has decayed to a thousandth or so.
    const double decay = std::max({settings.shape.lorentzian, 0.5 * settings.shape.gaussian, 1.0});
    while (sampling.points < std::max(double(fewest), sampling.width * 2.5 / decay) && sampling.points < most)
        sampling.points = std::max(fewest, 2 * sampling.points);
    return sampling;
}

} // namespace

QByteArray simpsonExperiment(const PowderSites &sites, const PowderSettings &settings)
{
    if (sites.sites.size() != 1)
        fail(
            Texts::tr("a complete input computes one site, for all spins of a file are computed as one coupled system: "
                      "choose one atom"));
    if (settings.rotation == Powder::Rotation::InfiniteRate)
        fail(Texts::tr("a complete input needs a spinning rate, or a sample at rest"));
    const bool isStatic = settings.rotation == Powder::Rotation::Static;
    const bool isCentral = sites.conditions.spin > 1 && std::fmod(2 * sites.conditions.spin, 2) == 1;
    const Sampling sampling = samplingOf(sites, settings);
    const QByteArray width = QByteArray::number(sampling.width, 'f', 3);
    const auto line = [](const char *name, const QByteArray &value) {
        return "  " + QByteArray(name).leftJustified(17) + value + '\n';
    };
    // The last number of faddlb: 0 Lorentzian, 1 Gaussian.
    const auto broadening = [](double hertz, int gaussian) {
        return hertz > 0
            ? "  faddlb $f " + QByteArray::number(hertz, 'g', 10) + ' ' + QByteArray::number(gaussian) + '\n'
            : QByteArray();
    };
    return "\npar {\n" + line("proton_frequency", QByteArray::number(settings.protonFrequency * 1e6, 'f', 0))
        + line("start_operator", "I1x") + line("detect_operator", isCentral ? "I1c" : "I1p") + line("method", "direct")
        + line("crystal_file", isStatic ? "zcw28656" : "zcw4180") + line("gamma_angles", isStatic ? "1" : "32")
        + line("spin_rate", isStatic ? QByteArray("0") : QByteArray::number(settings.rate, 'f', 3)) + line("sw", width)
        + line("np", QByteArray::number(sampling.points)) + line("verbose", "0") + "}\n\nproc pulseq {} {\n"
        + "  global par\n  acq_block {\n    delay [expr 1.0e6/$par(sw)]\n  }\n}\n\nproc main {} {\n  global par\n"
        + "  set f [fsimpson]\n  fzerofill $f " + QByteArray::number(4 * sampling.points) + '\n'
        + broadening(settings.shape.lorentzian, 0) + broadening(settings.shape.gaussian, 1)
        + "  fft $f\n  fsave $f $par(name).spe\n}\n";
}

} // namespace Workbench
