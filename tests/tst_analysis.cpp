// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "analysis/Contacts.h"
#include "analysis/PeakPicking.h"
#include "analysis/PowderEntry.h"
#include "analysis/SimpsonExperiment.h"
#include "analysis/SpectrumRemarks.h"
#include "analysis/SpinSystem.h"
#include "analysis/powder/Lattice.h"
#include "support/MetaTypes.h"

using namespace Qt::StringLiterals;
using namespace Workbench;

namespace {

constexpr Tensor3 shielding{540, 12, -7, 4, 565, 9, -3, 1, 520};
constexpr Tensor3 gradient{0.12, 0.05, -0.02, 0.05, -0.31, 0.03, -0.02, 0.03, 0.19};
constexpr Tensor3 otherGradient{0.08, -0.01, 0.04, -0.01, 0.02, 0.06, 0.04, 0.06, -0.10};

bool isNear(double value, double expected, double tolerance = 1e-6)
{
    if (std::abs(value - expected) <= tolerance * std::max(1.0, std::abs(expected)))
        return true;
    qWarning("%.12g instead of %.12g", value, expected);
    return false;
}

/// A free molecule: equal tensors are one site.
CrystalStructure structureOf(const QList<std::tuple<QString, std::optional<Tensor3>, std::optional<Tensor3>>> &atoms)
{
    CrystalStructure structure;
    QHash<QString, int> numbers;
    for (const auto &[element, ms, efg] : atoms) {
        CrystalAtom atom;
        atom.element = element;
        atom.number = ++numbers[element];
        atom.labels = QStringList{element + QString::number(atom.number)};
        atom.record = int(structure.atoms.size());
        atom.position = {1.5 * atom.record, 0.3 * atom.record * atom.record, 0};
        atom.shielding = ms;
        atom.gradient = efg;
        structure.atoms.push_back(atom);
    }
    return structure;
}

CrystalStructure aluminium()
{
    return structureOf({{u"H"_s, shielding, {}},
                        {u"Al"_s, shielding, gradient},
                        {u"Al"_s, {}, otherGradient},
                        {u"Al"_s, shielding, gradient},
                        {u"Al"_s, shielding, {}},
                        {u"Al"_s, {}, {}}});
}

PowderSettings aluminiumSettings()
{
    PowderSettings settings;
    settings.nucleus = u"27Al"_s;
    settings.protonFrequency = 400;
    settings.reference = 560;
    settings.slope = -0.9;
    settings.couplingScale = 1.1;
    return settings;
}

/// Every peak the slow way: how far it must go down on either side, by looking.
std::vector<PeakPicking::Peak> picked(const std::vector<double> &v, const PeakPicking::Options &options)
{
    const auto [baseline, deviation] = PeakPicking::noise(v);
    const double highest = *std::max_element(v.begin(), v.end()) - baseline;
    const double least = std::max(options.noiseFactor * deviation, options.leastHeight * highest);
    std::vector<PeakPicking::Peak> found;
    for (int i = 1; i + 1 < int(v.size()); ++i) {
        int last = i;
        while (last + 1 < int(v.size()) && v[size_t(last + 1)] == v[size_t(i)])
            ++last;
        const double top = v[size_t(i)];
        if (v[size_t(i - 1)] >= top || last + 1 == int(v.size()) || v[size_t(last + 1)] >= top
            || top < baseline + least)
            continue;
        double saddle = -INFINITY;
        for (int step : {-1, 1}) {
            double low = top;
            // Of equal ones the last goes on to what is higher.
            const double end = step < 0 ? std::nextafter(top, INFINITY) : top;
            for (int k = (step < 0 ? i : last) + step; k >= 0 && k < int(v.size()) && v[size_t(k)] < end; k += step)
                low = std::min(low, v[size_t(k)]);
            saddle = std::max(saddle, low);
        }
        if (top - saddle < options.noiseFactor * deviation)
            continue;
        PeakPicking::Peak peak{(i + last) / 2.0, top - baseline};
        if (i == last) { // Newton's interpolation through three points
            const double a = v[size_t(i - 1)] - top, b = v[size_t(i + 1)] - top;
            const double x = (a - b) / (2 * (a + b));
            peak = {i + x, top + (b - a) / 2 * x + (a + b) / 2 * x * x - baseline};
        }
        found.push_back(peak);
    }
    std::stable_sort(found.begin(), found.end(), [](const auto &a, const auto &b) { return a.height > b.height; });
    std::vector<PeakPicking::Peak> kept;
    for (const auto &peak : found)
        if (std::all_of(kept.begin(), kept.end(),
                        [&](const auto &other) { return std::abs(other.point - peak.point) >= options.leastDistance; }))
            kept.push_back(peak);
    std::sort(kept.begin(), kept.end(), [](const auto &a, const auto &b) { return a.point < b.point; });
    return kept;
}

SpectrumEntry entryOf(const QList<SpectrumAxis> &axes, const QList<SpectrumPeak> &peaks, const QVariantHash &parameters)
{
    SpectrumEntry entry{QUuid::createUuid(), u"name"_s, {}, {}};
    entry.spectrum.axes = axes;
    entry.spectrum.peaks = peaks;
    if (!parameters.isEmpty())
        entry.setParameters(u"magres"_s, parameters);
    return entry;
}

SpectrumPeak peakAt(double f2, double f1, double widthF2, double widthF1)
{
    return {{}, {}, f2, f1, 0, widthF2, widthF1};
}

QStringList textsOf(const QList<SpectrumRemark> &remarks)
{
    QStringList texts;
    for (const SpectrumRemark &remark : remarks)
        texts.append(QString::number(remark.kind) + u' ' + remark.text);
    return texts;
}

} // namespace

/// Computations on plain values, against known numbers and slow second ways.
class TestAnalysis : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void peaks()
    {
        std::mt19937 random(3);
        std::normal_distribution<double> noise(0, 1);
        std::uniform_real_distribution<double> uniform(0, 1);
        size_t all = 0;
        for (int trial = 0; trial < 60; ++trial) {
            const PeakPicking::Options options{trial % 3 * 2.0, trial % 4 * 0.05, 1.0 + trial % 5};
            std::vector<double> values(size_t(300 + trial), 40 - trial);
            for (int line = 0; line < 12; ++line) {
                const double place = 300 * uniform(random), height = 30 * uniform(random),
                             width = 1 + 9 * uniform(random);
                for (size_t i = 0; i < values.size(); ++i)
                    values[i] += height / (1 + std::pow((double(i) - place) / width, 2));
            }
            for (double &value : values) // on every second trial in whole numbers, with flat tops
                value = trial % 2 ? value + noise(random) : std::round(value + noise(random));
            values.front() = values.back() = 0; // no line is cut off
            const auto expected = picked(values, options), found = PeakPicking::pick(values, options);
            QCOMPARE(found.size(), expected.size());
            all += found.size();
            for (size_t i = 0; i < found.size(); ++i)
                QVERIFY(isNear(found[i].point, expected[i].point, 1e-9)
                        && isNear(found[i].height, expected[i].height, 1e-9));
        }
        QVERIFY(all > 300);
    }

    /// At the limits and just beyond each, without noise; lines at the ends, numbers that are none.
    void peakLimits()
    {
        using Points = std::vector<std::pair<size_t, double>>;
        for (const auto &[points, count] : {std::pair(Points{{50, 100}, {90, 3.01}}, 2U),
                                            {{{50, 100}, {90, 2.99}}, 1U},
                                            {{{50, 100}, {53, 80}}, 2U},
                                            {{{50, 100}, {52, 80}}, 1U},
                                            {{{1, 100}, {198, 80}}, 2U},
                                            {{{0, 100}, {199, 80}}, 0U},
                                            {{{60, 7}, {61, 4}, {64, std::nan("")}}, 1U},
                                            {{{60, 7}, {61, 7}, {90, 8}, {92, 8}}, 2U}}) {
            std::vector<double> values(200, 5.0);
            for (const auto &[i, height] : points)
                values[i] += height;
            QCOMPARE(PeakPicking::pick(values).size(), count);
        }
    }

    /// The top that a click means: the highest in reach, else the one uphill.
    void summits()
    {
        const std::vector<double> slope{0, 1, 3, 2, 5, 4, 9};
        const std::tuple<double, double, int> line[] = {{1.4, 1, 2}, {1.6, 2.4, 4}, {0, 0, 2},  {5.4, 0.4, 6},
                                                        {4.4, 0, 4}, {9, 1, 6},     {-7, 3, 2}, {2.6, 0.4, 2}};
        for (const auto &[from, reach, expected] : line)
            QCOMPARE(std::round(PeakPicking::summit(slope, from, reach)->point), expected);
        const std::vector<double> plane{0, 1, 0, 0, 2, //
                                        1, 6, 1, 4, 0, //
                                        0, 1, 0, 3, 7, //
                                        8, 0, 0, 0, 0};
        const std::array<double, 6> map[] = {{1.2, 0.9, 0, 0, 1, 1}, {2, 1, 1, 0, 1, 1}, {2, 1, 1, 2, 1, 1},
                                             {2, 1, 2, 1, 4, 2},     {3, 0, 0, 0, 4, 2}, {0, 2, 0, 1, 0, 3},
                                             {9, 9, 1, 1, 4, 2}};
        for (const auto &[column, row, wide, high, c, r] : map) {
            const auto found = PeakPicking::summit2D(plane, 5, column, row, wide, high);
            QVERIFY(std::round(found->column) == c && std::round(found->row) == r);
        }
        const std::vector<double> broken(9, std::nan(""));
        QVERIFY(!PeakPicking::summit({}, 0, 1) && !PeakPicking::summit(slope, broken[0], 1)
                && !PeakPicking::summit(broken, 4, 2));
        QVERIFY(!PeakPicking::summit2D(slope, 0, 0, 0, 1, 1) && !PeakPicking::summit2D(slope, 7, 1, broken[0], 1, 1));
    }

    void contacts()
    {
        Molecule molecule;
        const std::tuple<int, QVector3D, bool> atoms[] = {
            {1, {}, true}, {6, {4.5f, 1, 1}, true}, {7, {0, 0, 4}, true}, {8, {1, 1, 1}, false}};
        for (const auto &[element, place, isDrawable] : atoms)
            molecule.atoms.push_back({element, place, isDrawable});
        QVERIFY(nearestContacts(molecule, 0, 4, 9).size() == 1 && nearestContacts(molecule, 0, 3.999, 9).empty());
        molecule.cell = std::array{QVector3D(9, 9, 9), QVector3D(5, 0, 0), QVector3D(1, 6, 0), QVector3D(0.5, 2, 7)};
        QStringList found;
        for (const auto &[image, distance] : nearestContacts(molecule, 0, 5.2, 4))
            found.append(QString::asprintf("%d (%d %d %d) %.3f", image.atom, image.cell[0], image.cell[1],
                                           image.cell[2], distance));
        QCOMPARE(found.join(u", "_s),
                 u"1 (-1 0 0) 1.500, 2 (0 0 -1) 3.640, 2 (0 0 0) 4.000, 1 (0 0 0) 4.717"_s); // numpy
        const auto far = nearestContacts(molecule, 1, 14.5, 1000);
        const auto sum = [](double before, const Contact &contact) { return before + contact.distance; };
        QVERIFY(far.size() == 177 && isNear(std::accumulate(far.begin(), far.end(), 0.0, sum), 1914.84606));
        for (int atom : {-1, 3, 4})
            QVERIFY(nearestContacts(molecule, atom, 9, 9).empty());
        molecule.cell->at(3) = {2, 6, 0}; // flat
        QCOMPARE(nearestContacts(molecule, 0, 4.8, 9).size(), 2U);
        // By abundance, spin 1/2 before others, and only with a known frequency.
        QCOMPARE(usualNucleus(u"Cl"_s) + usualNucleus(u"Sn"_s) + usualNucleus(u"Xe"_s) + usualNucleus(u"Xx"_s),
                 u"35Cl119Sn129Xe"_s);
    }

    void powderSites()
    {
        const PowderSites sites = PowderSites::of(aluminium(), aluminiumSettings());
        QCOMPARE(sites.conditions.spin, 2.5);
        QVERIFY(isNear(sites.conditions.larmor, 400 * 195.59 / 750, 1e-12));
        // numpy; the breadth from minima and maxima of means over the rotor period by scipy.optimize
        const std::tuple<const char *, int, std::array<double, 7>> expected[] = {
            {"Al1 ×2", 2, {72.5, 44.7862852, -12.0364996, 0.232791621, -81.3272304, -8.82723038, 184.721244}},
            {"Al2", 1, {560, 0, -5.02571999, 0.33601854, -14.4511421, 545.548858, 33.2797974}},
            {"Al4", 1, {72.5, 44.7862852, 0, 0, 0, 72.5, 0}}};
        QCOMPARE(sites.sites.size(), std::size(expected));
        for (size_t i = 0; i < std::size(expected); ++i) {
            const auto &[name, nuclei, v] = expected[i];
            const Powder::SiteValues &s = sites.sites[i].values;
            QCOMPARE(sites.sites[i].name, QString::fromUtf8(name));
            QCOMPARE(sites.sites[i].label, QString::fromUtf8(name).left(3));
            QVERIFY(sites.sites[i].nuclei == nuclei && sites.plain()[i].multiplicity == nuclei);
            const std::array<double, 7> values{s.shift,  s.span,   s.coupling, s.asymmetry, s.quadrupolarShift,
                                               s.centre, s.breadth};
            for (size_t k = 0; k < 7; ++k)
                QVERIFY2(isNear(values[k], v[k]), qPrintable(u"%1 of %2"_s.arg(k).arg(i)));
        }
        QCOMPARE(sites.notes,
                 (QStringList{u"no shielding of Al2: drawn at the reference, 560 ppm"_s,
                              u"no electric field gradient of Al4: drawn with shift anisotropy alone"_s,
                              u"neither shielding nor electric field gradient of Al5: left out"_s}));

        // One by its second atom, in the file's order; the name is that of the atom asked for.
        PowderSettings settings = aluminiumSettings();
        settings.labels = QStringList{u"Al2"_s, u"Al3"_s};
        const PowderSites two = PowderSites::of(aluminium(), settings);
        QCOMPARE(two.sites.size(), 2U);
        QCOMPARE(two.sites[0].name + u' ' + two.sites[0].label + u' ' + two.sites[1].name, u"Al3 ×2 Al3 Al2"_s);
        // Exact energies of the spin in 26 directions, by numpy.
        settings.labels = QStringList{u"Al1"_s};
        settings.protonFrequency = 200;
        QCOMPARE(
            PowderSites::of(aluminium(), settings).notes,
            QStringList{
                u"Al1 ×2: what second order leaves out moves the line by up to 68 Hz, more than its width of 30 Hz; a higher field is needed for a pattern that is true to it"_s});
        settings.shape = {1, 68};
        QCOMPARE(PowderSites::of(aluminium(), settings).notes, QStringList());
        settings.protonFrequency = 5;
        QCOMPARE(
            PowderSites::of(aluminium(), settings).notes,
            QStringList{
                u"Al1 ×2: Cq is -12.036 MHz at a Larmor frequency of 1.304 MHz; second order fails, the pattern means nothing"_s});
        // To first order: Cq of 14N above a tenth of the Larmor frequency is too much.
        CrystalStructure nitrogen = structureOf({{u"N"_s, shielding, gradient}});
        settings = PowderSettings();
        settings.nucleus = u"14N"_s;
        const auto notesAt = [&](double frequency) {
            settings.protonFrequency = frequency;
            return PowderSites::of(nitrogen, settings).notes;
        };
        // 0.317767 a.u. × 2.044 fm² × 2.3489 = 1.52564 MHz, a tenth of 15.2564 MHz.
        const double limit = 15.2564 / 0.07229;
        QCOMPARE(notesAt(limit * 1.01), QStringList());
        QCOMPARE(
            notesAt(100),
            QStringList{
                u"N1: Cq is -1.526 MHz at a Larmor frequency of 7.229 MHz; a pattern to first order is a rough one"_s});
        QCOMPARE(notesAt(limit * 0.99).size(), 1);
        CrystalStructure many;
        for (int i = 0; i < 10; ++i)
            many.atoms.push_back(
                structureOf({{u"Al"_s, {}, Tensor3{0.1, 0, 0, 0, 0.2 + 0.01 * i, 0, 0, 0, -0.3}}}).atoms[0]);
        for (int i = 0; i < 10; ++i)
            many.atoms[size_t(i)].labels = QStringList{u"Al%1"_s.arg(i)};
        QCOMPARE(
            PowderSites::of(many, aluminiumSettings()).notes[0],
            u"no shielding of Al0, Al1, Al2, Al3, Al4, Al5, Al6, Al7 and 2 more: drawn at the reference, 560 ppm"_s);
        for (const auto &[nucleus, message] :
             {std::pair("27Xx", "\"27Xx\" is not an NMR nucleus"), {"17O", "there is no site of 17O; there is Al5H"}}) {
            settings.nucleus = QLatin1String(nucleus);
            QVERIFY2(failure([&] { PowderSites::of(aluminium(), settings); }).contains(message),
                     failure([&] { PowderSites::of(aluminium(), settings); }));
        }
    }

    /// Ranges, directions and orders of axes; the ridges lie at F1 of each site.
    void powderSpectra()
    {
        const PowderSites sites = PowderSites::of(aluminium(), aluminiumSettings());
        PowderSettings settings = aluminiumSettings();
        settings.shape = {400, 300};
        settings.points = 512;
        settings.range = {-300, 700};
        settings.directions = 3000;
        const auto found = powderSpectrum(sites, settings);
        QVERIFY(found->axis.first == 700 && found->axis.last == -300 && found->axis.points == 512);
        QCOMPARE(found->sites[0].directions, Powder::directionCount(Powder::rowsForDirections(3000)));
        const ExperimentalSpectrum curve = powderCurve(sites, found->axis, found->sum, u"title"_s);
        QCOMPARE(curve.data, found->sum);
        QVERIFY(curve.title == u"title" && curve.dimensions[0].nucleus == u"27Al" && curve.dimensions[0].points == 512);
        QVERIFY(isNear(curve.dimensions[0].width, 1000.0 / 511 * 512 * sites.conditions.larmor, 1e-12));
        QVERIFY(isNear(curve.dimensions[0].frequency, sites.conditions.larmor, 1e-12));

        const ExperimentalSpectrum plane = tripleQuantumSpectrum(sites, settings);
        const SpectrumDimension &f1 = plane.dimensions[1];
        QVERIFY(plane.dimensions.size() == 2 && f1.points == 512 && f1.step < 0 && plane.data.size() == 512 * 512);
        // F1 of the sites: shift - 10/17 QIS.
        const double ridges[] = {72.5 + 10.0 / 17 * 81.3272304, 560 + 10.0 / 17 * 14.4511421, 72.5};
        QVERIFY(isNear(f1.first, ridges[1] + 0.25 * (ridges[1] - ridges[2]), 1e-6)
                && isNear(f1.ppm(511), 72.5 - 0.25 * (ridges[1] - ridges[2]), 1e-6));
        QVERIFY(isNear(f1.width, -f1.step * 512 * sites.conditions.larmor, 1e-9));
        // Gaussian ridges, at least two and a half steps wide, of each site's curve.
        const double width = std::max(500 / sites.conditions.larmor, 2.5 * std::abs(f1.step));
        for (int row : {5, 40, 200, 411, 480, 511}) {
            for (int column : {10, 111, 322}) {
                double expected = 0;
                for (size_t s = 0; s < 3; ++s)
                    expected += std::pow(2.0, -4 * std::pow((f1.ppm(row) - ridges[s]) / width, 2))
                        * found->sites[s].values[size_t(column)];
                QVERIFY(isNear(plane.data[size_t(row * 512 + column)], expected, 1e-8));
            }
        }

        // A fit finds its way back, and tells it as settings.
        PowderSettings start = settings;
        start.shape = {0, 350};
        start.reference += 6;
        PowderSettings made = settings;
        made.shape = {0, 500};
        made.couplingScale = 1.122;
        const PowderSites truth = PowderSites::of(aluminium(), made);
        ExperimentalSpectrum measured = powderCurve(truth, found->axis, powderSpectrum(truth, made)->sum, {});
        for (double &value : measured.data)
            value *= 40;
        const auto fit = fitPowder(PowderSites::of(aluminium(), start), start, measured, true);
        QVERIFY(isNear(fit->settings.reference, 560, 1e-4) && isNear(fit->settings.shape.gaussian, 500, 5e-3));
        QVERIFY(isNear(fit->settings.couplingScale, 1.122, 1e-3) && isNear(fit->fit.intensity, 40, 1e-3));
        QCOMPARE(fit->settings.shape.lorentzian, 0.0);
        QCOMPARE(fit->fit.lorentzian.error, 0.0);
    }

    void powderEntries()
    {
        const PowderSites sites = PowderSites::of(aluminium(), aluminiumSettings());
        PowderOrigin origin{QUuid::createUuid(), aluminiumSettings(), {}};
        PowderSettings &s = origin.settings;
        s.rotation = Powder::Rotation::MagicAngle;
        s.rate = 12500;
        s.labels = QStringList{u"Al1"_s, u"Al2"_s};
        s.shape = {150, 70};
        s.points = 128;
        s.siteCurves = true;
        s.range = {-250, 650};
        const Powder::Spectrum spectrum = *powderSpectrum(sites, s);
        SpectrumEntry entry{QUuid::createUuid(), u"sum"_s, powderEntry(sites, spectrum, origin), {}};
        entry.spectrum = Spectrum::fromMap(entry.data);
        const auto back = PowderOrigin::of(entry);
        QVERIFY(back && back->settings == s && back->dataId == origin.dataId && back->sum.isNull());
        const ExperimentalSpectrum measured = asMeasured(entry);
        QVERIFY(measured.title == u"sum" && measured.data == spectrum.sum && measured.dimensions[0].nucleus == u"27Al");
        QVERIFY(isNear(measured.dimensions[0].first, 650, 1e-9)
                && isNear(measured.dimensions[0].step, -900.0 / 127, 1e-9));
        QVERIFY(measured.dimensions[0].points == 128
                && isNear(measured.dimensions[0].frequency, sites.conditions.larmor, 1e-9));

        // Limits of what a document may say; just beyond each it says nothing.
        const std::tuple<const char *, double, double> limits[] = {
            {"freq", 1, 0.99},       {"freq", 1e4, 10001},  {"rate", 0, -1},           {"rate", 1e7, 1.001e7},
            {"ref", -1e6, -1.001e6}, {"slope", -1e3, 1001}, {"scale", 1e3, -1001},     {"lorentzian", 1e9, 1.001e9},
            {"gaussian", 0, -0.1},   {"pts", 2, 1},         {"pts", 4194304, 4194305}, {"from", 1e6, 1.001e6},
            {"to", -1e6, -1.001e6},  {"to", -251, -250}};
        const QVariantHash stored = entry.parameters(u"powder"_s);
        for (const auto &[key, within, beyond] : limits) {
            for (double value : {within, beyond}) {
                QVariantHash changed = stored;
                changed[QLatin1String(key)] = value;
                entry.setParameters(u"powder"_s, changed);
                QVERIFY2(PowderOrigin::of(entry).has_value() == (value == within), key);
            }
        }
        for (const char *key : {"nucleus", "rotation"}) {
            QVariantHash changed = stored;
            changed[QLatin1String(key)] = u"99Xx"_s;
            entry.setParameters(u"powder"_s, changed);
            QVERIFY2(!PowderOrigin::of(entry), key);
        }
        entry.setParameters(u"powder"_s, stored);

        // Curves of sites stand behind their sum, in the place of those that it had.
        NmrStack stack{{{QUuid::createUuid(), u"before"_s, {}, {}}, entry, {QUuid::createUuid(), u"behind"_s, {}, {}}},
                       QUuid::createUuid()};
        const auto names = [](const NmrStack &of) {
            QStringList list;
            for (const SpectrumEntry &e : of.entries)
                list.append(e.name);
            return list.join(u' ');
        };
        NmrStack with = withSiteCurves(stack, entry.id, sites, spectrum, origin);
        QCOMPARE(names(with), u"before sum Al1 ×2 Al2 Al4 behind"_s);
        QCOMPARE(with.activeId, entry.id); // the one that was active is not there
        with.activeId = with.entries.last().id;
        for (size_t i = 0; i < 3; ++i) {
            const SpectrumEntry &part = with.entries[2 + qsizetype(i)];
            const auto made = PowderOrigin::of(part);
            QVERIFY(made && made->sum == entry.id && made->settings.labels == QStringList{sites.sites[i].label});
            QVERIFY(
                std::equal(part.spectrum.real().begin(), part.spectrum.real().end(), spectrum.sites[i].values.begin()));
        }
        const NmrStack again = withSiteCurves(with, entry.id, sites, spectrum, origin);
        QVERIFY(names(again) == names(with) && again.activeId == with.activeId);
        // A site that is still there keeps its curve, and what a user did to it; the active curve stays so.
        with.activeId = with.entries[3].id;
        PowderSites fewer = sites;
        fewer.sites.erase(fewer.sites.begin());
        Powder::Spectrum others = spectrum;
        others.sites.erase(others.sites.begin());
        const NmrStack left = withSiteCurves(with, entry.id, fewer, others, origin);
        QVERIFY(left.entries.size() == 5 && left.entries[2].id == with.entries[3].id
                && left.entries[3].id == with.entries[4].id && left.activeId == with.activeId);
        PowderSites one = sites;
        one.sites.resize(1);
        QCOMPARE(names(withSiteCurves(with, entry.id, one, spectrum, origin)), u"before sum behind"_s);
        PowderSites twelve = sites;
        twelve.sites.resize(12, sites.sites[0]);
        Powder::Spectrum curves = spectrum;
        curves.sites.resize(13, spectrum.sites[0]);
        QCOMPARE(withSiteCurves(stack, entry.id, twelve, curves, origin).entries.size(), 15);
        twelve.sites.push_back(sites.sites[0]);
        QCOMPARE(withSiteCurves(stack, entry.id, twelve, curves, origin).entries.size(), 3);

        // A dialog starts from the simulated spectrum beside it.
        const QVariantMap references{{u"13C"_s, 171.5}, {u"1H"_s, 31.0}}, slopes{{u"13C"_s, -0.97}};
        SpectrumEntry simulated =
            entryOf({{200, -1, 9, 13, u"C"_s, 188.64 * 500 / 750}}, {}, {{u"ref"_s, references}, {u"slope"_s, slopes}});
        PowderSettings like = powderSettingsLike(simulated);
        QVERIFY(like.nucleus == u"13C" && isNear(like.protonFrequency, 500, 2e-5) && like.reference == 171.5
                && like.slope == -0.97);
        simulated.setParameters(u"magres"_s, {{u"freq"_s, 399.97}});
        like = powderSettingsLike(simulated);
        QVERIFY(like.protonFrequency == 399.97 && like.reference == 100 && like.slope == -1);
        simulated.setParameters(u"magres"_s, {{u"freq"_s, 0.5}});
        QVERIFY(isNear(powderSettingsLike(simulated).protonFrequency, 500, 2e-5));
        simulated.spectrum.axes[0].frequency = 0;
        QCOMPARE(powderSettingsLike(simulated).protonFrequency, 600.0);
        QCOMPARE(powderSettingsLike({}).nucleus, QString());
    }

    void remarks()
    {
        const SpectrumAxis carbon{200, -0.2, 1001, 13, u"C"_s, 150}, oxygen{90, -0.5, 201, 17, u"O"_s, 80},
            proton{10, -0.05, 301, 1, u"H"_s, 600};
        SpectrumAxis bare = carbon;
        bare.frequency = 0;
        const QVariantHash given{{u"ref"_s, QVariantMap{{u"13C"_s, 170.0}, {u"1H"_s, 30.0}, {u"17O"_s, 287.0}}}},
            half{{u"ref"_s, QVariantMap{{u"13C"_s, 170.0}, {u"1H"_s, 100.0}}}}, unsaid{{u"x"_s, 1}};
        const QString missing = u" points a line width, so that lines are missing or of the wrong height; "_s,
                      placeholder = u" is a placeholder, 100 ppm: positions mean nothing yet, only distances do"_s,
                      wide = u" points or a line width of 60 Hz or a narrower range mends it"_s;
        const auto row = [](const QList<SpectrumAxis> &axes, const QList<SpectrumPeak> &peaks,
                            const QVariantHash &parameters, const QStringList &expected) {
            QCOMPARE(textsOf(remarksOn(entryOf(axes, peaks, parameters))), expected);
        };
        row({carbon}, {peakAt(200, 0, 0.4, 0), peakAt(0, 0, 0.9, 0)}, given, {});
        row({carbon}, {peakAt(300, 0, 0.1, 0)}, {}, {}); // measured
        row({}, {}, given, {});
        row({carbon}, {peakAt(200.01, 0, 0.4, 0), peakAt(-0.01, 0, 0.4, 0), peakAt(50, 0, 0, 0)}, given,
            {u"1 2 of 3 peaks lie outside of the computed range"_s});
        row({carbon}, {peakAt(50, 0, 0.397, 0)}, given, {}); // all but two points
        row({carbon}, {peakAt(50, 0, 0.9, 0), peakAt(60, 0, 0.124, 0)}, given,
            {u"0 ¹³C: 0.62"_s + missing + u"4096"_s + wide});
        row({bare}, {peakAt(50, 0, 1.9e-4, 0)}, given,
            {u"0 ¹³C: 0.00095"_s + missing + u"a narrower range mends it"_s});
        row({proton, carbon}, {peakAt(5, 201, 0.2, 0.8), peakAt(11, 100, 0.2, 0.07)}, given,
            {u"1 2 of 2 peaks lie outside of the computed range"_s,
             u"0 F1 (¹³C): 0.35"_s + missing + u"8192"_s + wide});
        row({proton, carbon}, {}, half, {u"2 The reference of ¹H"_s + placeholder});
        row({proton, carbon}, {}, unsaid, {u"2 The reference of ¹H and ¹³C"_s + placeholder});
        row({oxygen, oxygen}, {}, given,
            {u"3 ¹⁷O (spin 5/2): measured lines are quadrupolar powder patterns and look different from the simple lines drawn"_s});
        // Of several simulated entries, which one is meant.
        const SpectrumEntry first = entryOf({carbon}, {peakAt(300, 0, 0, 0)}, given);
        const QString beyond = u"1 of 1 peaks lie outside of the computed range"_s;
        QCOMPARE(textsOf(remarksOn(NmrStack{{first, entryOf({carbon}, {}, {})}, {}})), QStringList{u"1 "_s + beyond});
        QCOMPARE(textsOf(remarksOn(NmrStack{{entryOf({proton}, {}, given), first}, {}})),
                 QStringList{u"1 name: "_s + beyond});
        // Cross peaks beside a spectrum of one dimension.
        SpectrumEntry list = entryOf({}, {}, {});
        list.spectrum.peaks = {peakAt(8, 120, 0, 0)};
        const QString flat = u" is a list of cross peaks: only their F2 positions are drawn on this axis"_s;
        QCOMPARE(textsOf(remarksOn(NmrStack{{list, entryOf({proton}, {}, {})}, {}})),
                 QStringList{u"4 "_s + list.name + flat});
        QCOMPARE(textsOf(remarksOn(NmrStack{{list}, {}})), QStringList());
        QCOMPARE(textsOf(remarksOn(NmrStack{{list, entryOf({proton, carbon}, {}, {})}, {}})), QStringList());
        SpectrumEntry powder = entryOf({{200, -1, 9, 27, u"Al"_s, 104}}, {}, {});
        for (double reference : {560.0, 100.0}) {
            PowderOrigin origin{{}, aluminiumSettings(), {}};
            origin.settings.reference = reference;
            powder.data =
                powderEntry(PowderSites::of(aluminium(), origin.settings), {{1, 0, 2}, {0, 0}, {}, true}, origin);
            QCOMPARE(textsOf(remarksOn(powder)),
                     reference == 560 ? QStringList() : QStringList{u"2 The reference of ²⁷Al"_s + placeholder});
            // Its sites' curves add nothing to what it says.
            SpectrumEntry part = powder;
            part.id = QUuid::createUuid();
            origin.sum = powder.id = QUuid::createUuid();
            part.data =
                powderEntry(PowderSites::of(aluminium(), origin.settings), {{1, 0, 2}, {0, 0}, {}, true}, origin);
            QCOMPARE(textsOf(remarksOn(NmrStack{{powder, part, part}, {}})), textsOf(remarksOn(powder)));
            QCOMPARE(remarksOn(NmrStack{{part, part}, {}}).size(), reference == 560 ? 0 : 2);
        }
    }

    void completeInput()
    {
        PowderSettings settings = aluminiumSettings();
        settings.labels = QStringList{u"Al2"_s};
        settings.rotation = Powder::Rotation::MagicAngle;
        settings.rate = 12500;
        settings.shape = {120, 80};
        const auto lines = [&](const CrystalStructure &structure) {
            const QByteArray text = simpsonExperiment(PowderSites::of(structure, settings), settings);
            return QString::fromUtf8(text.simplified());
        };
        const QString rest =
            u" verbose 0 } proc pulseq {} { global par acq_block { delay [expr 1.0e6/$par(sw)] } } proc main {} { global par set f [fsimpson] fzerofill $f "_s;
        // The line reaches to 560 ppm and some sidebands, 1.2 times that on either side, in multiples of the rate;
        // as many points as the decay takes, and four times these.
        QCOMPARE(
            lines(aluminium()),
            u"par { proton_frequency 400000000 start_operator I1x detect_operator I1c method direct crystal_file zcw4180 gamma_angles 32 spin_rate 12500.000 sw 200000.000 np 8192"_s
                + rest + u"32768 faddlb $f 120 0 faddlb $f 80 1 fft $f fsave $f $par(name).spe }"_s);
        settings.rotation = Powder::Rotation::Static;
        settings.nucleus = u"1H"_s;
        settings.labels.clear();
        settings.shape = {0, 4000};
        settings.reference = 540;
        settings.slope = -1;
        // From -27.6 ppm, where the pattern begins, and the line's wings down to a thousandth; a whole number of kHz.
        QCOMPARE(
            lines(aluminium()),
            u"par { proton_frequency 400000000 start_operator I1x detect_operator I1p method direct crystal_file zcw28656 gamma_angles 1 spin_rate 0 sw 38000.000 np 1024"_s
                + rest + u"4096 faddlb $f 4000 1 fft $f fsave $f $par(name).spe }"_s);
        settings.rotation = Powder::Rotation::InfiniteRate;
        QVERIFY(failure([&] { lines(aluminium()); }).contains("needs a spinning rate"));
        settings.nucleus = u"27Al"_s;
        QVERIFY(failure([&] { lines(aluminium()); }).contains("choose one atom"));
    }
};

QTEST_APPLESS_MAIN(TestAnalysis)
#include "tst_analysis.moc"
