// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/PowderSites.h"

#include "data/Error.h"
#include "data/Nuclides.h"

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

bool isHalfInteger(double spin)
{
    return std::fmod(2 * spin, 2) == 1;
}

Powder::Tensor scaled(const Tensor3 &tensor, double factor)
{
    Powder::Tensor result;
    std::transform(tensor.begin(), tensor.end(), result.begin(), [=](double element) { return factor * element; });
    return result;
}

/// The atoms that stand for a site each: the one whose tensors are shown, or the one that was named.
struct Chosen {
    const UniqueSite *site;
    int atom;
    QString name;
};

std::vector<Chosen> chosenSites(const CrystalStructure &structure, const std::vector<UniqueSite> &all,
                                const PowderSettings &settings)
{
    std::vector<Chosen> chosen;
    std::vector<bool> isFound(size_t(settings.labels.size()), settings.labels.isEmpty());
    for (const UniqueSite &site : all) {
        int named = settings.labels.isEmpty() ? site.shown : -1;
        for (qsizetype i = 0; i < settings.labels.size(); ++i) {
            for (int atom : site.atoms) {
                if (!structure.isNamed(atom, settings.labels[i]))
                    continue;
                isFound[size_t(i)] = true;
                if (named < 0)
                    named = atom;
            }
        }
        if (named < 0)
            continue;
        QString name = site.name;
        if (named != site.shown)
            name = structure.name(named) + (site.nuclei() > 1 ? QStringLiteral(" ×%1").arg(site.nuclei()) : QString());
        chosen.push_back({&site, named, name});
    }
    for (qsizetype i = 0; i < settings.labels.size(); ++i) {
        if (isFound[size_t(i)])
            continue;
        QStringList names;
        for (const UniqueSite &site : all)
            names.append(structure.name(site.atoms.front()));
        fail(Texts::tr("there is no %1 site %2; unique sites are %3")
                 .arg(settings.nucleus, settings.labels[i], names.join(QLatin1String(", "))));
    }
    return chosen;
}

/// What is not to be trusted about a site.
void addWarnings(const PowderSite &site, const PowderSites &sites, const PowderSettings &settings, QStringList &notes)
{
    const Powder::Conditions &conditions = sites.conditions;
    if (conditions.spin < 0.75 || !site.site.coupling || site.values.coupling == 0)
        return;
    if (!isHalfInteger(conditions.spin)) {
        if (std::abs(site.values.coupling) > 0.1 * conditions.larmor)
            notes.append(Texts::tr("%1: Cq is %2 MHz at a Larmor frequency of %3 MHz; a pattern to first order is a "
                                   "rough one")
                             .arg(site.name)
                             .arg(site.values.coupling, 0, 'f', 3)
                             .arg(conditions.larmor, 0, 'f', 3));
        return;
    }
    const auto error = Powder::secondOrderError(site.site, conditions);
    const double width = std::max(settings.shape.lorentzian, settings.shape.gaussian);
    if (!error)
        notes.append(
            Texts::tr("%1: Cq is %2 MHz at a Larmor frequency of %3 MHz; second order fails, the pattern means "
                      "nothing")
                .arg(site.name)
                .arg(site.values.coupling, 0, 'f', 3)
                .arg(conditions.larmor, 0, 'f', 3));
    else if (*error > width)
        notes.append(Texts::tr("%1: what second order leaves out moves the line by up to %2 Hz, more than its width of "
                               "%3 Hz; a higher field is needed for a pattern that is true to it")
                         .arg(site.name)
                         .arg(*error, 0, 'f', 0)
                         .arg(width));
}

QString joined(const QStringList &names)
{
    constexpr qsizetype most = 8;
    return names.size() <= most
        ? names.join(QLatin1String(", "))
        : names.mid(0, most).join(QLatin1String(", ")) + Texts::tr(" and %1 more").arg(names.size() - most);
}

/// What the file has not got, for all sites together.
class Missing {
public:
    void add(const CrystalAtom &atom, const QString &name, bool isQuadrupolar, bool isDrawn)
    {
        if (!isDrawn)
            m_left.append(name);
        else if (!atom.shielding)
            m_shieldings.append(name);
        else if (isQuadrupolar && !atom.gradient)
            m_gradients.append(name);
    }
    QStringList notes(double reference, bool isQuadrupolar) const
    {
        QStringList notes;
        if (!m_shieldings.isEmpty())
            notes.append(Texts::tr("no shielding of %1: drawn at the reference, %2 ppm")
                             .arg(joined(m_shieldings))
                             .arg(reference));
        if (!m_gradients.isEmpty())
            notes.append(Texts::tr("no electric field gradient of %1: drawn with shift anisotropy alone")
                             .arg(joined(m_gradients)));
        if (!m_left.isEmpty())
            notes.append((isQuadrupolar ? Texts::tr("neither shielding nor electric field gradient of %1: left out")
                                        : Texts::tr("no shielding of %1: left out"))
                             .arg(joined(m_left)));
        return notes;
    }

private:
    QStringList m_shieldings, m_gradients, m_left;
};

Nuclide checkedNuclide(const PowderSettings &settings)
{
    const Nuclide nuclide = Nuclides::table()[settings.nucleus];
    if (!nuclide.isKnown())
        fail(Texts::tr("\"%1\" is not an NMR nucleus").arg(settings.nucleus));
    if (nuclide.larmorFrequency(1) <= 0)
        fail(Texts::tr("the frequency of %1 is not known here").arg(settings.nucleus));
    return nuclide;
}

} // namespace

PowderSites PowderSites::of(const CrystalStructure &structure, const PowderSettings &settings)
{
    return of(structure, UniqueSites::of(structure, {}), settings);
}

PowderSites PowderSites::of(const CrystalStructure &structure, const UniqueSites &unique,
                            const PowderSettings &settings)
{
    const Nuclide nuclide = checkedNuclide(settings);
    const QString element = Nuclides::element(settings.nucleus);
    PowderSites result;
    result.nucleus = settings.nucleus;
    result.conditions = {nuclide.spinNumber(), nuclide.larmorFrequency(settings.protonFrequency), settings.rotation,
                         settings.rate};
    Powder::check(result.conditions);

    const std::vector<UniqueSite> all = unique.ofElement(element);
    if (all.empty())
        fail(Texts::tr("there is no site of %1; there is %2").arg(settings.nucleus, structure.formula()));
    result.notes = unique.warnings;
    const bool isQuadrupolar = nuclide.isQuadrupolar();
    // e Q Vzz / h for Vzz in atomic units and Q in fm^2, in MHz; the same customary number as in the table.
    const double megahertz = nuclide.quadrupoleMoment * 2.3489 * settings.couplingScale;
    Missing missing;
    bool anyGradient = false;
    for (const Chosen &chosen : chosenSites(structure, all, settings)) {
        const CrystalAtom &atom = structure.atoms[size_t(chosen.atom)];
        PowderSite site{chosen.name, structure.name(chosen.atom), chosen.site->nuclei(), {}, {}};
        site.site.multiplicity = chosen.site->nuclei();
        if (atom.shielding)
            site.site.shift = scaled(*atom.shielding, settings.slope);
        for (size_t i : {0, 4, 8})
            site.site.shift[i] += settings.reference;
        if (isQuadrupolar && atom.gradient)
            site.site.coupling = scaled(*atom.gradient, megahertz);
        anyGradient = anyGradient || site.site.coupling;
        const bool isDrawn = atom.shielding || site.site.coupling;
        missing.add(atom, chosen.name, isQuadrupolar, isDrawn);
        if (!isDrawn)
            continue;
        Powder::check(site.site, result.conditions);
        site.values = Powder::siteValues(site.site, result.conditions);
        result.sites.push_back(std::move(site));
    }
    if (result.sites.empty())
        fail(isQuadrupolar ? Texts::tr("the %1 sites have neither shielding nor electric field gradient tensors")
                                 .arg(settings.nucleus)
                           : Texts::tr("the %1 sites have no shielding tensors").arg(settings.nucleus));
    if (isQuadrupolar && !anyGradient)
        fail(Texts::tr("the %1 sites have no electric field gradient tensors, without which the line of a nucleus of "
                       "spin %2 has no known shape")
                 .arg(settings.nucleus, nuclide.spin));
    result.notes += missing.notes(settings.reference, isQuadrupolar);
    for (const PowderSite &site : result.sites)
        addWarnings(site, result, settings, result.notes);
    return result;
}

std::vector<Powder::Site> PowderSites::plain() const
{
    std::vector<Powder::Site> list;
    for (const PowderSite &site : sites)
        list.push_back(site.site);
    return list;
}

QString PowderSites::limits() const
{
    if (conditions.spin < 0.75)
        return Texts::tr("Shift anisotropy alone: no dipolar couplings; ideal excitation.");
    if (!isHalfInteger(conditions.spin))
        return Texts::tr(
            "Quadrupole coupling to first order, all transitions, and shift anisotropy: no second order, no "
            "dipolar couplings or cross terms with them; ideal excitation.");
    return Texts::tr("Central transition only, to second order, with shift anisotropy: no satellites, no dipolar "
                     "couplings or cross terms with them; ideal excitation.");
}

double protonFrequencyOf(const QString &nucleus, double frequency)
{
    const double ratio = Nuclides::table()[nucleus].larmorFrequency(1);
    return frequency > 0 && ratio > 0 ? std::clamp(std::round(frequency / ratio * 100) / 100, 1.0, 1e4) : 0;
}

QString otherField(const PowderSites &sites, const ExperimentalSpectrum &measured)
{
    constexpr double tolerance = 0.02;
    const double frequency = measured.dimensions.front().frequency, own = sites.conditions.larmor;
    if (!(frequency > 0) || std::abs(frequency - own) <= tolerance * own)
        return {};
    return Texts::tr("%1 was measured at %2 MHz, but the spectrum is computed for %3 MHz: lines of quadrupolar nuclei "
                     "and sidebands lie elsewhere")
        .arg(measured.title, QString::number(frequency, 'f', 2), QString::number(own, 'f', 2));
}

QString tooFewPoints(const PowderSites &sites, const Powder::Axis &axis, const Powder::LineShape &shape)
{
    constexpr double fewest = 16; // over a pattern, for its horns and edges
    const double width = std::max(shape.lorentzian, shape.gaussian) / sites.conditions.larmor;
    const double step = std::abs(axis.step());
    for (const PowderSite &site : sites.sites) {
        const double resolved = std::max(width, site.values.breadth / fewest);
        if (resolved > 0 && step > resolved)
            return Texts::tr(
                       "points are %1 ppm apart, too far for the line of %2: it takes more points, or a narrower range")
                .arg(step, 0, 'g', 3)
                .arg(site.name);
    }
    return {};
}

std::optional<Powder::Spectrum> powderSpectrum(const PowderSites &sites, const PowderSettings &settings,
                                               const Powder::Progress &progress)
{
    const std::vector<Powder::Site> plain = sites.plain();
    Powder::Axis axis;
    if (settings.range) {
        const auto [low, high] = std::minmax(settings.range->first, settings.range->second);
        axis = {high, low, size_t(settings.points)};
    } else {
        const auto fitting = Powder::fittingAxis(plain, sites.conditions, settings.shape, size_t(settings.points));
        if (!fitting)
            return std::nullopt;
        axis = *fitting;
    }
    Powder::Accuracy accuracy;
    accuracy.directions = settings.directions;
    accuracy.tolerance = settings.tolerance;
    return Powder::spectrum(plain, sites.conditions, settings.shape, axis, accuracy, progress);
}

ExperimentalSpectrum powderCurve(const PowderSites &sites, const Powder::Axis &axis, const std::vector<double> &values,
                                 const QString &title)
{
    SpectrumDimension dimension{sites.nucleus, sites.conditions.larmor, 0, axis.first, axis.step(), int(axis.points)};
    dimension.width = std::abs(axis.step()) * double(axis.points) * dimension.frequency;
    ExperimentalSpectrum spectrum{title, {dimension}, values};
    orient(spectrum, Texts::tr("the powder spectrum"));
    return spectrum;
}

ExperimentalSpectrum tripleQuantumSpectrum(const PowderSites &sites, const PowderSettings &settings)
{
    constexpr int mostPlanePoints = 2048, rows = 512;
    PowderSettings fast = settings;
    fast.points = std::min(settings.points, mostPlanePoints);
    const Powder::Spectrum spectrum = *powderSpectrum(sites, fast);
    const double larmor = sites.conditions.larmor;
    double low = INFINITY, high = -INFINITY;
    for (const PowderSite &site : sites.sites) {
        const double f1 = Powder::tripleQuantumPosition(site.values).f1;
        low = std::min(low, f1);
        high = std::max(high, f1);
    }
    // Room for labels and wings; lines of at least two points.
    const double wanted = std::hypot(settings.shape.lorentzian, settings.shape.gaussian) / larmor;
    const double margin = std::max({0.25 * (high - low), 15 * wanted, 1.0});
    const Powder::Axis f1{high + margin, low - margin, rows};
    const double width = std::max(wanted, 2.5 * std::abs(f1.step()));
    ExperimentalSpectrum plane = powderCurve(sites, spectrum.axis, spectrum.sum, Texts::tr("3QMAS"));
    const size_t columns = spectrum.axis.points;
    plane.data.assign(columns * rows, 0.0);
    for (size_t s = 0; s < sites.sites.size(); ++s) {
        const double centre = Powder::tripleQuantumPosition(sites.sites[s].values).f1;
        for (size_t row = 0; row < rows; ++row) {
            const double x = (f1.at(row) - centre) / width;
            const double height = std::exp(-4 * std::log(2.0) * x * x);
            if (height < 1e-12)
                continue;
            for (size_t column = 0; column < columns; ++column)
                plane.data[row * columns + column] += height * spectrum.sites[s].values[column];
        }
    }
    SpectrumDimension indirect = plane.dimensions.front();
    indirect.first = f1.first;
    indirect.step = f1.step();
    indirect.points = rows;
    indirect.width = std::abs(f1.step()) * rows * larmor;
    plane.dimensions.push_back(indirect);
    return plane;
}

std::optional<PowderFit> fitPowder(const PowderSites &sites, const PowderSettings &settings,
                                   const ExperimentalSpectrum &measured, bool withScale,
                                   const Powder::Progress &progress)
{
    const SpectrumDimension &axis = measured.dimensions.front();
    Powder::Measured points;
    for (int i = 0; i < axis.points; ++i)
        points.ppm.push_back(axis.ppm(i));
    points.intensity = measured.data;
    Powder::FitChoice choice;
    choice.lorentzian = settings.shape.lorentzian > 0;
    choice.gaussian = settings.shape.gaussian > 0;
    choice.scale = withScale;
    // Wherever a site's pattern meets the measured points, and where it is: the reference may be anybody's guess.
    const auto [low, high] = std::minmax_element(points.ppm.begin(), points.ppm.end());
    const auto [first, last] =
        std::minmax_element(sites.sites.begin(), sites.sites.end(),
                            [](const PowderSite &a, const PowderSite &b) { return a.values.centre < b.values.centre; });
    double reach = 0;
    for (const PowderSite &site : sites.sites)
        reach = std::max({reach, site.values.span, site.values.breadth});
    const Powder::Moves moves{std::min(*low - last->values.centre - reach, 0.0),
                              std::max(*high - first->values.centre + reach, 0.0)};
    auto fit = Powder::fitSpectrum(sites.plain(), sites.conditions, settings.shape, points, choice, moves, progress);
    if (!fit)
        return std::nullopt;
    PowderFit result{std::move(*fit), settings};
    result.settings.reference += result.fit.reference.value;
    result.settings.shape = {result.fit.lorentzian.value, result.fit.gaussian.value};
    if (withScale)
        result.settings.couplingScale *= result.fit.scale.value;
    return result;
}

} // namespace Workbench
