// SPDX-License-Identifier: BSD-3-Clause
#include "Crystals.h"
#include "Failure.h"
#include "analysis/comparison/Agreement.h"
#include "analysis/comparison/Assignment.h"
#include "analysis/comparison/ConfigurationAverage.h"
#include "analysis/comparison/CrossPeakPairing.h"
#include "analysis/comparison/Lattice.h"
#include "analysis/comparison/PeakComparison.h"
#include "analysis/comparison/PoolProbabilities.h"
#include "analysis/comparison/ShiftCalibration.h"
#include "analysis/comparison/SiteColumns.h"
#include "analysis/comparison/SiteTable.h"
#include "analysis/comparison/TensorValues.h"
#include "analysis/comparison/UniqueSites.h"
#include "data/Nuclides.h"
#include "data/structure/MagresText.h"
#include "parameters/NuclearProperties.h"
#include "parameters/Nuclei.h"
#include "reading/MagresParser.h"

#include <numbers>
#include <numeric>
#include <set>

using namespace Qt::StringLiterals;
using namespace Workbench;
using Crystals::Random;

namespace {

bool isClose(double value, double expected, double tolerance = 1e-9)
{
    if (std::abs(value - expected) <= tolerance * std::max(1.0, std::abs(expected)))
        return true;
    qWarning("%.15g instead of %.15g", value, expected);
    return false;
}

double normal(Random &random)
{
    return std::sqrt(-2 * std::log(1 - random.uniform(0, 1))) * std::cos(2 * std::numbers::pi * random.uniform(0, 1));
}

/// The way of every file: the plug-in's parser, the document's map, the workbench's value.
CrystalStructure structureOf(const QByteArray &text)
{
    Magres::MagresData data;
    Magres::parseMagres(text, data);
    return CrystalStructure::fromData(data.toMap());
}

std::vector<ComparedSite> sitesOf(const std::vector<double> &shieldings)
{
    std::vector<ComparedSite> sites;
    for (double shielding : shieldings)
        sites.push_back({u"C%1"_s.arg(sites.size() + 1), {}, shielding, 1, 1});
    return sites;
}

std::vector<MeasuredLine> linesOf(const std::vector<double> &shifts)
{
    std::vector<MeasuredLine> lines;
    for (double shift : shifts)
        lines.push_back({shift, {}, {}});
    return lines;
}

double leastSquares(const std::vector<ComparedSite> &sites, const std::vector<MeasuredLine> &lines,
                    const std::vector<std::vector<int>> &of, const Agreement::Options &options = {})
{
    return Agreement::of(sites, lines, of, options).leastSquares;
}

/// Every way to give each of so many sites a line.
template <typename Call>
void eachWay(std::size_t sites, std::size_t lines, Call call)
{
    std::vector<std::vector<int>> of(sites, {0});
    for (std::size_t i = 0; i < sites;) {
        call(of);
        for (i = 0; i < sites && ++of[i][0] == int(lines); ++i)
            of[i][0] = 0;
    }
}

/// Over every way that `isAllowed`.
template <typename Condition>
double leastOfAll(const std::vector<ComparedSite> &sites, const std::vector<MeasuredLine> &lines, Condition isAllowed,
                  const Agreement::Options &options = {})
{
    double least = 1e300;
    eachWay(sites.size(), lines.size(), [&](const std::vector<std::vector<int>> &of) {
        if (isAllowed(of))
            least = std::min(least, leastSquares(sites, lines, of, options));
    });
    return least;
}

std::vector<int> nucleiOfLines(const std::vector<ComparedSite> &sites, const std::vector<std::vector<int>> &of,
                               std::size_t lines)
{
    std::vector<int> nuclei(lines);
    for (std::size_t i = 0; i < sites.size(); ++i)
        for (int line : of[i])
            nuclei[std::size_t(line)] += sites[i].nuclei;
    return nuclei;
}

QList<SpectrumPeak> peaksAt(const std::vector<double> &shifts)
{
    QList<SpectrumPeak> peaks;
    for (double shift : shifts)
        peaks.append({QUuid::createUuid(), {}, shift});
    return peaks;
}

std::vector<double> uniform(Random &random, int count, double low, double high)
{
    std::vector<double> values;
    for (int i = 0; i < count; ++i)
        values.push_back(random.uniform(low, high));
    return values;
}

/// Carbons apart from one another, without a cell.
CrystalStructure carbons(const std::vector<double> &shieldings)
{
    CrystalStructure structure;
    for (double iso : shieldings) {
        const int i = int(structure.atoms.size());
        const Tensor3 tensor{iso, 0, 0, 0, iso, 0, 0, 0, iso};
        structure.atoms.push_back({u"C"_s, {u"C%1"_s.arg(i + 1)}, i + 1, i, {3.0 * i, 0, 0}, tensor, {}, {}});
    }
    return structure;
}

/// P2_1/c, four molecules of one carbon with a methyl-like triple of hydrogens and one more hydrogen.
CrystalStructure monoclinicCrystal(int copiesAlongA = 1, double distortion = 0)
{
    const double a = 7.1, b = 8.3, c = 9.7, beta = 101 * std::numbers::pi / 180;
    CrystalStructure crystal;
    crystal.lattice = LatticeVectors{{{a, 0, 0}, {0, b, 0}, {c * std::cos(beta), 0, c * std::sin(beta)}}};
    const Lattice lattice = *Lattice::of(*crystal.lattice);
    (*crystal.lattice)[0][0] *= copiesAlongA;
    QHash<QString, int> numbers;
    for (const auto &[element, fraction, shielding] :
         {std::tuple(u"C"_s, Vector3{0.21, 0.13, 0.32}, 150), std::tuple(u"H"_s, Vector3{0.33, 0.19, 0.28}, 27),
          std::tuple(u"H"_s, Vector3{0.12, 0.19, 0.40}, 28), std::tuple(u"H"_s, Vector3{0.15, 0.04, 0.25}, 29),
          std::tuple(u"H"_s, Vector3{0.61, 0.37, 0.11}, 20)}) {
        const auto [x, y, z] = fraction;
        const Vector3 images[] = {{x, y, z}, {-x, y + 0.5, 0.5 - z}, {-x, -y, -z}, {x, 0.5 - y, z + 0.5}}; // of P2_1/c
        for (int i = 0; i < 4 * copiesAlongA; ++i) {
            const Vector3 &image = images[i % 4];
            const int number = ++numbers[element];
            const double iso = shielding + (i % 4 == 3 ? distortion : 0);
            Vector3 place = lattice.cartesian({image[0] + i / 4, image[1], image[2]});
            place[0] += 0.004 * (i % 2); // as unsharp as files are
            const Tensor3 tensor{iso + 3, 1, 2, 1, iso - 1, 0.5, 2, 0.5, iso - 2};
            const QString label = element + QString::number(number);
            crystal.atoms.push_back({element, {label}, number, int(crystal.atoms.size()), place, tensor, {}, {}});
        }
    }
    return crystal;
}

} // namespace

class tst_Comparison : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void structure()
    {
        // Twelve atoms and more: the map's order is that of texts. One tensor has a number that no atom has.
        QByteArray text = "#$magres-abinitio-v1.0\n[atoms]\nlattice 5 0 0 0 6 0 0 0 7\n";
        for (int i = 1; i <= 12; ++i)
            text += "atom O OX " + QByteArray::number(i) + " 0 0 " + QByteArray::number(0.5 * i) + '\n';
        text += "atom C CY 1 1 2 3\n[/atoms]\n[magres]\nms OX 3 1 0 0 0 2 0 0 0 6\nms CY 9 10 0 0 0 10 0 0 0 10\n"
                "ms OX 4 5 0 0 0 9 0 0 0 9\nms OX 4 5 0 0 0 -8 0 0 0 9\nms OX 4 6 0 0 0 0 0 0 0 0\n"
                "efg OX 2 nan 0 0 0 1 0 0 0 1\n[/magres]\n";
        const CrystalStructure s = structureOf(text);
        QCOMPARE(s.atoms.size(), 13u);
        for (int i = 0; i < 12; ++i)
            QCOMPARE(s.atoms[std::size_t(i)].position[2], 0.5 * (i + 1));
        QCOMPARE(s.atoms[2].isotropicShielding(), 3.0);
        QCOMPARE(s.atoms[3].isotropicShielding(), 2.0); // the lowest of three, as in the plug-in's spectra
        QVERIFY(!s.atoms[0].shielding); // its label has some, but not with its number
        QVERIFY(!s.atoms[12].shielding);
        QVERIFY(!s.atoms[1].gradient); // it is not a number
        QCOMPARE(s.name(11), u"OX.12"_s);
        QVERIFY(s.isNamed(11, u"OX"_s) && !s.isNamed(11, u"OX.1"_s));
        QCOMPARE(s.formula(), u"CO12"_s);
        const CrystalStructure crystal = monoclinicCrystal();
        QCOMPARE(crystal.formula(), u"C4H16"_s);
        QCOMPARE(crystal.formulaUnits(), 4);
        QCOMPARE(crystal.name(19), u"H16"_s);
    }

    void textIsReadBack()
    {
        for (
            const CrystalStructure &s :
            {monoclinicCrystal(),
             structureOf(
                 u"#$magres-abinitio-v1.0\n[atoms]\natom H HM 1 0.1 0 0\natom H HM 2 0 0.3 0\n[/atoms]\n[magres]\nms HM 1 1 2 3 4 5 6 7 8 9\nms HM 2 1 2 3 4 5 6 7 8 10\nefg HM 1 0.1 0 0 0 0.1 0 0 0 -0.2\n[/magres]\n"_s
                     .toUtf8())}) {
            const CalculationMethod method{u"CODE"_s, u"1.2"_s, u"PBE"_s, 680.0};
            const QByteArray written = magresText(s, method, {u"one # of two\nlines"_s});
            const CrystalStructure back = structureOf(written);
            QVERIFY(back.lattice == s.lattice);
            QCOMPARE(back.atoms.size(), s.atoms.size());
            for (int i = 0; i < int(s.atoms.size()); ++i) {
                const CrystalAtom &a = s.atoms[std::size_t(i)], &b = back.atoms[std::size_t(i)];
                QVERIFY(a.position == b.position && a.shielding == b.shielding && a.gradient == b.gradient);
                QCOMPARE(back.name(i), s.name(i));
            }
            QCOMPARE(CalculationMethod::fromText(written).text(), u"CODE, PBE, 680 eV"_s);
        }
    }

    void calculationMethods()
    {
        const auto method = [](const char *lines) {
            return CalculationMethod::fromText("#$magres-abinitio-v1.0\n[calculation]\n" + QByteArray(lines)
                                               + "\n[/calculation]\n");
        };
        for (const auto &[lines, text] :
             {std::pair("calc_code CASTEP\ncalc_xcfunctional  PBE   \nunits calc_cutoffenergy Hartree\n"
                        "calc_cutoffenergy 2.5E+01",
                        "CASTEP, PBE, 680 eV"),
              std::pair("calc_cutoffenergy 25", "680 eV"), // the format's own unit
              std::pair("calc_code QE\ncalc_cutoffenergy 50.0 Ry", "QE, 680 eV"),
              std::pair("calc_cutoffenergy  80 furlong", "unknown method"), std::pair("calc_code", "unknown method")})
            QCOMPARE(method(lines).text(), QLatin1String(text));
        const auto pbe = method("calc_xcfunctional PBE\ncalc_cutoffenergy 25");
        QVERIFY(pbe.agreesWith(method("calc_xcfunctional pbe\ncalc_code CASTEP\ncalc_cutoffenergy 25.001")));
        QVERIFY(!pbe.agreesWith(method("calc_xcfunctional RPBE")));
        QVERIFY(!pbe.agreesWith(method("calc_cutoffenergy 30")));
        QVERIFY(pbe.agreesWith({}));
        // A file that knows nothing hides no difference between others.
        CommonMethod common;
        for (const auto &[file, lines, other, known] :
             {std::tuple("a", "", "", "unknown method"), std::tuple("b", "calc_xcfunctional PBE", "", "PBE"),
              std::tuple("c", "calc_code CASTEP", "", "CASTEP, PBE"),
              std::tuple("d", "calc_code CASTEP\ncalc_xcfunctional LDA", "b", "CASTEP, PBE"),
              std::tuple("e", "calc_code QE", "c", "CASTEP, PBE")}) {
            const auto differs = common.add(QLatin1String(file), method(lines));
            QCOMPARE(differs ? differs->file : QString(), QLatin1String(other));
            QCOMPARE(common.method().text(), QLatin1String(known));
        }
    }

    /// Against every image far around, in cells as flat and skewed as nobody would choose.
    void nearestImages()
    {
        Random random(5);
        for (const LatticeVectors &cell : {LatticeVectors{{{4, 0, 0}, {0, 5, 0}, {0, 0, 6}}},
                                           LatticeVectors{{{4, 0, 0}, {7.7, 3, 0}, {9.1, 5.2, 5}}},
                                           LatticeVectors{{{3, 0, 0}, {8.9, 2.5, 0}, {-5.9, -4.9, 3.1}}}}) {
            const Lattice lattice = *Lattice::of(cell);
            for (int trial = 0; trial < 200; ++trial) {
                const Vector3 f{random.uniform(-2, 2), random.uniform(-2, 2), random.uniform(-2, 2)};
                const Vector3 p = lattice.cartesian(f);
                double least = 1e9;
                for (int a = -12; a <= 12; ++a)
                    for (int b = -12; b <= 12; ++b)
                        for (int c = -6; c <= 6; ++c)
                            least = std::min(least, length(lattice.cartesian({f[0] + a, f[1] + b, f[2] + c})));
                QVERIFY(isClose(lattice.distance({0, 0, 0}, p), least));
                for (std::size_t i = 0; i < 3; ++i)
                    QVERIFY(isClose(lattice.fractional(p)[i], f[i]));
            }
        }
        QVERIFY(!Lattice::of({{{1, 0, 0}, {2, 0, 0}, {0, 0, 1}}}));
        QVERIFY(!Lattice::of({{{1, 0, 0}, {0, std::nan(""), 0}, {0, 0, 1}}}));
    }

    void uniqueSites()
    {
        using A = UniqueSites::Averaging;
        for (const auto &[copies, distortion, tolerance, averaging, sites, warnings] :
             {std::tuple(1, 0.0, 0.02, A::None, "C1 ×4, H1 ×4, H5 ×4, H9 ×4, H13 ×4", 0),
              std::tuple(2, 0.0, 0.02, A::None, "C1 ×8, H1 ×8, H9 ×8, H17 ×8, H25 ×8", 0),
              std::tuple(1, 0.0, 0.02, A::Ch3, "C1 ×4, H1 ×12, H13 ×4", 0),
              std::tuple(1, 0.3, 0.02, A::Xh3, "C1 ×4, H1 ×12, H13 ×4", 0),
              std::tuple(1, 2.0, 0.02, A::Ch3, "C1 ×3, C4, H1 ×9, H4 ×3, H13 ×3, H16", 3),
              std::tuple(1, 0.0, 0.0, A::Ch3, "C1, C2, C3, C4, H1 ×3, H2 ×3, H3 ×3, H4 ×3, H13, H14, H15, H16", 0)}) {
            CrystalStructure s = monoclinicCrystal(copies, distortion);
            for (int i = 0, n = 4 * copies; i < n; ++i)
                s.atoms[std::size_t(i)].bonds = {n + i, 2 * n + i, 3 * n + i};
            const auto unique = UniqueSites::of(s, {tolerance, averaging});
            QStringList names;
            int atoms = 0;
            for (const UniqueSite &site : unique.sites) {
                names.append(site.name);
                atoms += site.nuclei();
            }
            QCOMPARE(names.join(", "_L1), QString::fromUtf8(sites));
            QCOMPARE(atoms, 20 * copies);
            QCOMPARE(unique.warnings.size(), warnings);
            QCOMPARE(unique.spaceGroup, tolerance > 0 ? u"P2_1/c (14)"_s : u""_s);
            if (averaging != A::None && distortion == 0 && tolerance > 0) {
                QVERIFY(isClose(*unique.sites[1].shielding, 28));
                QCOMPARE(unique.sites[1].lines, 4);
            }
        }
    }

    /// Tensors that the space group does not make equal: gradients differ, or an atom lacks its own.
    void tensorsOfUniqueSites()
    {
        CrystalStructure s = monoclinicCrystal();
        for (std::size_t i = 0; i < 4; ++i)
            s.atoms[i].gradient = Tensor3{0.5, 0, 0, 0, 0.5, 0, 0, 0, i == 2 ? -1.1 : -1.0};
        UniqueSites unique = UniqueSites::of(s, {});
        QCOMPARE(unique.sites[0].nuclei(), 4);
        QCOMPARE(unique.warnings.join(u'\n'),
                 u"C1 and C3 are equivalent by symmetry (P2_1/c (14)), but their field gradients are 1.000 and 1.068 "
                 "atomic units: the site has that of C1"_s);
        (*s.atoms[2].gradient)[8] = -1.04;
        s.atoms[0].gradient.reset();
        unique = UniqueSites::of(s, {});
        QCOMPARE(unique.warnings, QStringList());
        QCOMPARE(unique.sites[0].shown, 1);
        QCOMPARE(unique.sites[0].name, u"C1 ×4"_s);
    }

    /// What the columns take for an element must be what the plug-in's own column takes.
    void usualIsotopes()
    {
        struct : Magres::NuclearProperties {
            const Nuclides &table = Nuclides::table();
            QString spin(const QByteArray &name) const override { return table[QString::fromLatin1(name)].spin; }
            double quadrupoleMoment(const QByteArray &) const override { return 0; }
            double naturalAbundance(const QByteArray &name) const override
            {
                return table[QString::fromLatin1(name)].abundance;
            }
        } properties;
        std::set<QString> elements;
        for (const QString &nucleus : Nuclides::table().names())
            elements.insert(Nuclides::element(nucleus));
        QVERIFY(elements.size() > 80);
        for (const QString &element : elements)
            QCOMPARE(Nuclides::table().usualQuadrupolarIsotope(element),
                     QString::fromLatin1(Magres::defaultQuadrupolarIsotope(element.toLatin1(), properties)));
        QCOMPARE(Nuclides::table().usualQuadrupolarIsotope(u"B"_s), u"11B"_s);
        CrystalStructure s = monoclinicCrystal();
        s.atoms[0].element = u"B"_s;
        for (const SiteColumn &column : siteColumns())
            if (column.basis == SiteColumn::Basis::Isotope)
                QCOMPARE(SiteTable(s, {}).basis(column, 0), u"11B"_s);
    }

    void uniqueSitesWithoutSymmetry()
    {
        CrystalStructure molecule = structureOf(
            u"#$magres-abinitio-v1.0\n[atoms]\natom H HM 1 0 0 0\natom H HM 2 1 0 0\natom H HO 1 2 0 0\natom C C 1 3 0 0\n[/atoms]\n[magres]\nms HM 1 1 2 3 4 5 6 7 8 9\nms HM 2 1 2 3 4 5 6.0000005 7 8 9\nms HO 1 2 2 3 4 4 6 7 8 9\n[/magres]\n"_s
                .toUtf8());
        UniqueSites unique = UniqueSites::of(molecule, {});
        QCOMPARE(unique.sites.size(), 3u); // HO has the same mean, but not the same tensor
        QCOMPARE(unique.sites[0].name, u"HM ×2"_s);
        QVERIFY(!unique.sites[2].shielding);

        // Two atoms in one place: no space group, no failure either.
        CrystalStructure impossible = monoclinicCrystal();
        impossible.atoms[1].position = impossible.atoms[0].position;
        unique = UniqueSites::of(impossible, {});
        QCOMPARE(unique.sites.size(), 20u);
        QVERIFY2(unique.warnings.value(0).contains("space group"_L1), qPrintable(unique.warnings.join(u'\n')));
        for (double wrong : {0.0, std::nan(""), 1e300}) {
            impossible.lattice = LatticeVectors{{{wrong, 0, 0}, {0, wrong, 0}, {0, 0, wrong}}};
            QCOMPARE(UniqueSites::of(impossible, {}).sites.size(), 20u);
        }

        CrystalStructure large = monoclinicCrystal(151);
        unique = UniqueSites::of(large, {});
        QCOMPARE(unique.sites.size(), 3020u);
        QCOMPARE(unique.warnings.size(), 1);
    }

    /// Fewer lines than sites, as many, and more, against every way: each site and each line has one, or as many lines
    /// as are left over have none, if these may be. On every third trial at a known reference.
    void placesAlone()
    {
        Random random(11);
        for (int trial = 0; trial < 250; ++trial) {
            const int n = 1 + random.below(trial % 2 ? 4 : 7), m = 1 + random.below(trial % 2 ? 7 : std::min(n, 5)),
                      more = std::max(m - n, 0);
            const auto sites = sitesOf(uniform(random, n, 0, 60));
            const auto lines = linesOf(uniform(random, m, 100, 160));
            if (more > 0) {
                const QByteArray refusal = failure([&] { LinePairing::of(sites, lines, {-1.0, more - 1}); });
                QVERIFY2(refusal.contains(QByteArray::number(m)) && refusal.contains(QByteArray::number(n)), refusal);
            }
            const Agreement::Options scale{-1.0, trial % 3 ? std::nullopt : std::optional(170.0)};
            const LinePairing pairing = LinePairing::of(sites, lines, {-1.0, more, scale.reference});
            QVERIFY(more > 0 || pairing.mode == (m == n ? LinePairing::Mode::Equal : LinePairing::Mode::Overlap));
            QCOMPARE(int(pairing.leftOut.size()), more);
            const auto isAllowed = [&](const auto &of) {
                const auto nuclei = nucleiOfLines(sites, of, lines.size());
                return std::count(nuclei.begin(), nuclei.end(), 0) == more;
            };
            const double least = leastOfAll(sites, lines, isAllowed, scale);
            QVERIFY(isClose(leastSquares(sites, lines, pairing.linesOf, scale), least));
        }
    }

    /// Nuclei of several sizes, shared out exactly.
    void overlapByCounts()
    {
        Random random(12);
        int shared = 0, refused = 0;
        for (int trial = 0; trial < 150; ++trial) {
            auto sites = sitesOf(uniform(random, 6, 20, 32));
            for (ComparedSite &site : sites)
                site.nuclei = random.below(2) ? 4 : 12;
            auto lines = linesOf(uniform(random, 3, 0, 12));
            // In half of the trials, counts that some way of sharing out has.
            std::vector<int> share(3);
            for (std::size_t i = 0; i < 6; ++i)
                share[i % 3] += sites[i].nuclei;
            for (std::size_t k = 0; k < 3; ++k)
                lines[k].count = trial % 2 ? share[k] / 4.0 : 1 + random.below(4);
            const double total = *lines[0].count + *lines[1].count + *lines[2].count;
            const double factor = (share[0] + share[1] + share[2]) / total;
            const double least = leastOfAll(sites, lines, [&](const auto &of) {
                const auto nuclei = nucleiOfLines(sites, of, 3);
                return std::equal(nuclei.begin(), nuclei.end(), lines.begin(),
                                  [&](int number, const MeasuredLine &line) {
                                      return std::abs(number - *line.count * factor) < 1e-9;
                                  });
            });
            if (least == 1e300) {
                QVERIFY(!failure([&] { LinePairing::of(sites, lines, {}); }).isEmpty());
                ++refused;
            } else {
                const LinePairing pairing = LinePairing::of(sites, lines, {});
                QVERIFY(pairing.byCounts);
                QVERIFY(isClose(leastSquares(sites, lines, pairing.linesOf), least));
                ++shared;
            }
        }
        QVERIFY(shared > 75 && refused > 10);
    }

    /// Of a reference that is known to within an error: the likeliest pairs of all.
    void pairsKnowTheReference()
    {
        Random random(23);
        NucleusMeasurement measured;
        measured.nucleus = u"13C"_s;
        measured.unmatched = 1;
        measured.calibration = ShiftCalibration::of({{20, 150.6}, {90, 79.4}, {160, 10.6}});
        measured.scale.slope = measured.calibration->slope;
        for (int trial = 0; trial < 60; ++trial) {
            const int n = 3 + random.below(3), m = trial % 2 ? n - 1 : n + 1;
            const CrystalStructure structure = carbons(uniform(random, n, 20, 160));
            measured.lines = linesOf(uniform(random, m, 0, 160));
            measured.sigma = trial % 4 < 2 ? 2.2 : 20.0;
            NucleusComparison other = NucleusComparison::of(structure, UniqueSites::of(structure, {}), measured);
            const double found = *other.logLikelihood(measured, 1);
            double most = -1e300;
            eachWay(std::size_t(n), std::size_t(m), [&](const auto &of) {
                const auto nuclei = nucleiOfLines(other.sites, of, std::size_t(m));
                if (std::count(nuclei.begin(), nuclei.end(), 0) != std::max(m - n, 0))
                    return;
                other.agreement = Agreement::of(other.sites, measured.lines, of, measured.scale);
                most = std::max(most, *other.logLikelihood(measured, 1));
            });
            QVERIFY(isClose(found, most));
        }
    }

    void assignedLines()
    {
        auto sites = sitesOf({100, 50, 20, 60});
        sites[3].labels = {u"CM"_s};
        auto lines = linesOf({71, 151, 112, 119});
        lines[2].sites = {u"CM"_s};
        LinePairing pairing = LinePairing::of(sites, lines, {});
        using Pairs = std::vector<std::vector<int>>;
        QCOMPARE(pairing.linesOf, (Pairs{{0}, {3}, {1}, {2}}));
        QCOMPARE(pairing.text(), u"1 assigned, equal"_s);
        // Two carbons under one line, one left to the rest; against the order of the shifts.
        lines = linesOf({150, 71});
        lines[0].sites = {u"C1"_s, u"C2"_s};
        pairing = LinePairing::of(sites, lines, {});
        QCOMPARE(pairing.linesOf, (Pairs{{0}, {0}, {1}, {1}}));
        lines[1].sites = {u"C3"_s};
        pairing = LinePairing::of(sites, lines, {});
        QCOMPARE(pairing.linesOf, (Pairs{{0}, {0}, {1}, {}})); // the fourth was not seen
        QCOMPARE(pairing.text(), u"assigned"_s);
        lines[1].sites = {u"C9"_s};
        QVERIFY(failure([&] { LinePairing::of(sites, lines, {}); }).contains("C9"));
        // The names that tables of sites print.
        QCOMPARE(assignedSites(u"C1 ×4/C2  ×12, C3×2 C4"_s), (QStringList{u"C1"_s, u"C2"_s, u"C3"_s, u"C4"_s}));
        // Counts of lines that name sites count too.
        lines = linesOf({71, 151, 112});
        lines[0].sites = {u"C1"_s};
        for (const auto &[counts, pairs] : {std::pair(std::array{2, 1, 1}, Pairs{{0}, {2}, {1}, {0}}),
                                            std::pair(std::array{1, 1, 2}, Pairs{{0}, {2}, {1}, {2}}),
                                            std::pair(std::array{3, 3, 6}, Pairs{{0}, {2}, {1}, {2}})}) {
            for (std::size_t k = 0; k < 3; ++k)
                lines[k].count = counts[k];
            QCOMPARE(LinePairing::of(sites, lines, {}).linesOf, pairs);
        }
        lines[0].sites = {u"C1"_s, u"C2"_s};
        QVERIFY(
            failure([&] { LinePairing::of(sites, lines, {}); }).contains("stands for 1 nuclei, but the sites that it"));
        // A label that several sites bear names all of them, unless two lines have it.
        sites = sitesOf({100, 50, 20});
        sites[0].commonLabels = sites[1].commonLabels = {u"CX"_s};
        lines = linesOf({95, 150});
        lines[0].sites = {u"CX"_s};
        QCOMPARE(LinePairing::of(sites, lines, {}).linesOf, (Pairs{{0}, {0}, {1}}));
        lines[1].sites = {u"CX"_s};
        QVERIFY(failure([&] { LinePairing::of(sites, lines, {}); }).contains("several sites are called: C1, C2"));
        // A line for each atom; sites of two and of one, in the order of shifts.
        sites = sitesOf({100, 50});
        sites[0].lines = sites[0].nuclei = 2;
        QCOMPARE(LinePairing::of(sites, linesOf({122, 70, 71}), {}).linesOf, (Pairs{{1, 2}, {0}}));
    }

    /// What a user does with lines at a plot, on random structures: the line goes where it is put, no other line is
    /// left without a site for that, and what nobody has touched stays without a name.
    void linesAreMovedByHand()
    {
        Random random(17);
        for (int trial = 0; trial < 300; ++trial) {
            const int n = 3 + random.below(5), m = 2 + random.below(n - 1);
            const CrystalStructure structure = carbons(uniform(random, n, 0, 150));
            const UniqueSites unique = UniqueSites::of(structure, {});
            QList<SpectrumPeak> peaks = peaksAt(uniform(random, m, 20, 170));
            NucleusMeasurement options;
            options.nucleus = u"13C"_s;
            PeakComparison compared = PeakComparison::of(structure, unique, options, peaks);
            QSet<int> touched;
            for (int move = 0; move < 4; ++move) {
                const auto &linesOf = compared.comparison.pairing.linesOf;
                const int from = random.below(n), to = random.below(n);
                const std::vector<int> lines = linesOf[std::size_t(from)];
                if (from == to || lines.empty())
                    continue;
                for (const auto &[line, label] : compared.labelsAfter(lines, random.below(2) ? from : -1, to)) {
                    peaks[line].label = label;
                    touched.insert(line);
                }
                compared = PeakComparison::of(structure, unique, options, peaks);
                QCOMPARE(compared.comparison.pairing.linesOf[std::size_t(to)], lines);
                std::vector<int> sitesOfLine(std::size_t(m), 0);
                for (const auto &own : compared.comparison.pairing.linesOf)
                    for (int line : own)
                        ++sitesOfLine[std::size_t(line)];
                QVERIFY(std::find(sitesOfLine.begin(), sitesOfLine.end(), 0) == sitesOfLine.end());
            }
            for (int k = 0; k < m; ++k)
                QVERIFY(touched.contains(k) || peaks[k].label.isEmpty());
        }
    }

    void peaksAtOnePlaceAreCounts()
    {
        const CrystalStructure crystal = monoclinicCrystal();
        const UniqueSites unique = UniqueSites::of(crystal, {});
        NucleusMeasurement protons;
        protons.nucleus = u"1H"_s;
        protons.scale.reference = 31;
        const auto compare = [&](const std::vector<double> &shifts) {
            return PeakComparison::of(crystal, unique, protons, peaksAt(shifts));
        };
        // Four sites of four protons; calculated 11, 4, 3 and 2 ppm.
        PeakComparison compared = compare({11, 11, 4, 4, 3, 3, 2, 2});
        QCOMPARE(compared.comparison.pairing.text(), u"equal"_s);
        QCOMPARE(compared.peaks.size(), 4U);
        // One to three: by the numbers, against what lies nearer.
        compared = compare({4, 3, 3, 3});
        QCOMPARE(compared.comparison.pairing.text(), u"overlap by counts"_s);
        QCOMPARE(compared.comparison.pairing.linesOf[3], std::vector<int>{0});
        QCOMPARE(compared.comparison.pairing.linesOf[0], std::vector<int>{1});
        // Numbers that cannot be, and more than there are sites: places alone.
        compared = compare({11, 11, 3, 3, 3});
        QCOMPARE(compared.comparison.pairing.text(), u"overlap"_s);
        QCOMPARE(compared.measurement.lines.size(), 2U);
        // At the reference that is known 4 goes with 11, at the best one with 3 and 2.
        QVERIFY(
            isClose(compare({4.3, 2.4}).comparison.agreement.leastSquares, 0.3 * 0.3 + 6.7 * 6.7 + 0.4 * 0.4 + 0.36));
    }

    /// Lists are read in one way: a place listed several times counts as often, where these counts can be met.
    void placesListedSeveralTimes()
    {
        for (const auto &[sites, text] : {std::pair(12, "overlap by counts"), {11, "overlap"}, {6, "equal"}}) {
            Random random(24);
            const CrystalStructure structure = carbons(uniform(random, sites, 20, 160));
            const UniqueSites unique = UniqueSites::of(structure, {});
            NucleusMeasurement measured;
            measured.nucleus = u"13C"_s;
            const std::vector<double> shifts{148, 148, 110, 110, 110, 80};
            const auto peaks = PeakComparison::of(structure, unique, measured, peaksAt(shifts)).comparison.agreement;
            measured.lines = linesOf(shifts);
            const auto lines = NucleusComparison::ofPlaces(structure, unique, measured);
            QCOMPARE(lines.pairing.text(), QLatin1String(text));
            QVERIFY(isClose(lines.agreement.leastSquares, peaks.leastSquares));
        }
    }

    /// A slope that is fitted along is found again, however far it is from the start.
    void slopeIsFitted()
    {
        Random random(14);
        for (double slope : {-0.8, -1.0, -1.15}) {
            const auto sites = sitesOf(uniform(random, 14, 20, 160));
            std::vector<double> shifts;
            for (std::size_t i = 0; i < sites.size(); ++i)
                if (i != 5) // which falls upon a neighbour
                    shifts.push_back(170 + slope * sites[i].shielding);
            std::sort(shifts.begin(), shifts.end());
            const auto lines = linesOf(shifts);
            const LinePairing pairing = LinePairing::of(sites, lines, {std::nullopt, 0});
            const Agreement agreement = Agreement::of(sites, lines, pairing.linesOf, {std::nullopt, {}});
            QVERIFY(isClose(agreement.slope, slope, 0.05));
            QCOMPARE(agreement.degreesOfFreedom, 12);
            const LinePairing known = LinePairing::of(sites, lines, {std::nullopt, 0, 170.0});
            QVERIFY(isClose(Agreement::of(sites, lines, known.linesOf, {std::nullopt, 170.0}).slope, slope, 0.05));
        }
        // Among lines of no site, against all choices of falling slope.
        const Agreement::Options scale{std::nullopt, {}};
        for (int trial = 0; trial < 80; ++trial) {
            const auto sites = sitesOf(uniform(random, 4, 0, 170));
            auto lines = linesOf(uniform(random, 3, 0, 170));
            for (const ComparedSite &site : sites)
                lines.push_back({168 - 0.95 * site.shielding + 0.3 * normal(random), {}, {}});
            const double least = leastOfAll(
                sites, lines,
                [&](const auto &of) {
                    return Agreement::of(sites, lines, of, scale).slope < 0
                        && std::set(of.begin(), of.end()).size() == 4;
                },
                scale);
            QVERIFY(isClose(leastSquares(sites, lines, LinePairing::of(sites, lines, {std::nullopt, 3}).linesOf, scale),
                            least));
        }
    }

    void assignment()
    {
        Random random(15);
        for (int trial = 0; trial < 300; ++trial) {
            CostMatrix matrix{1 + random.below(5), 0, {}};
            matrix.columns = matrix.rows + random.below(3);
            // Small whole numbers: many equal costs.
            for (int i = 0; i < matrix.rows * matrix.columns; ++i)
                matrix.costs.push_back(trial % 2 ? random.uniform(-3, 3) : random.below(4));
            std::vector<int> order(std::size_t(matrix.columns));
            std::iota(order.begin(), order.end(), 0);
            const auto cost = [&](const std::vector<int> &columns) {
                double sum = 0;
                for (int row = 0; row < matrix.rows; ++row)
                    sum += matrix.at(row, columns[std::size_t(row)]);
                return sum;
            };
            double least = 1e300;
            do
                least = std::min(least, cost(order));
            while (std::next_permutation(order.begin(), order.end()));
            std::vector<int> found = cheapestAssignment(matrix);
            QVERIFY(isClose(cost(found), least));
            std::sort(found.begin(), found.end());
            QVERIFY(std::adjacent_find(found.begin(), found.end()) == found.end());
        }
    }

    /// Both coordinates at once, against every way to give each measured peak a calculated one.
    void crossPeaks()
    {
        Random random(16);
        CrossPeakPairing::Options options;
        options.sigma = {0.33, 2.2};
        options.unmatched = 2;
        const auto squares = [&](const auto &calculated, const auto &measured, const std::vector<int> &lines) {
            double sum = 0;
            for (std::size_t d = 0; d < 2; ++d) {
                double mean = 0;
                for (std::size_t i = 0; i < lines.size(); ++i)
                    mean += (measured[std::size_t(lines[i])][d] - calculated[i][d]) / double(lines.size());
                for (std::size_t i = 0; i < lines.size(); ++i) {
                    const double r = (measured[std::size_t(lines[i])][d] - calculated[i][d] - mean) / options.sigma[d];
                    sum += r * r;
                }
            }
            return sum;
        };
        int missed = 0;
        for (int trial = 0; trial < 100; ++trial) {
            const int m = 2 + random.below(3), n = m + random.below(7 - m) - (trial % 5 == 0 ? 1 : 0);
            std::vector<PlanePoint> calculated, measured;
            for (int i = 0; i < n; ++i)
                calculated.push_back({random.uniform(-30, -20), random.uniform(-160, -20)});
            for (int k = 0; k < m; ++k)
                measured.push_back({calculated[std::size_t(k % n)][0] + 30.5 + 0.33 * normal(random),
                                    calculated[std::size_t(k % n)][1] + 172 + 2.2 * normal(random)});
            const CrossPeakPairing pairing = CrossPeakPairing::of(calculated, measured, options);
            double least = 1e300;
            eachWay(calculated.size(), measured.size(), [&](const std::vector<std::vector<int>> &of) {
                std::vector<int> lines;
                for (const auto &own : of)
                    lines.push_back(own[0]);
                if (int(std::set(lines.begin(), lines.end()).size()) == std::min(m, n))
                    least = std::min(least, squares(calculated, measured, lines));
            });
            const double found = squares(calculated, measured, pairing.lineOf);
            QVERIFY(found >= least - 1e-9);
            missed += found > least + 1e-9;
            QCOMPARE(int(pairing.leftOut.size()), std::max(m - n, 0));
        }
        QVERIFY2(missed <= 1, qPrintable(QString::number(missed))); // local minima of few, random peaks
        // One reference weighs both dimensions by their sigmas, 400 to 9; what is known stands.
        const auto offset = [&] { return CrossPeakPairing::of({{-10, -20}}, {{21, 53}}, options).offset; };
        QVERIFY(isClose(offset()[0], 31) && isClose(offset()[1], 73));
        options.oneReference = true;
        QVERIFY(isClose(offset()[0], (400 * 31 + 9 * 73) / 409.0) && offset()[0] == offset()[1]);
        options.offset[1] = 70;
        QVERIFY(isClose(offset()[0], (400 * 31 + 9 * 73) / 409.0) && offset()[1] == 70);
        QVERIFY(failure([&] {
                    CrossPeakPairing::of({{0, 0}}, {{0, 0}, {1, 1}, {2, 2}, {3, 3}}, options);
                }).contains('4'));
    }

    void agreement()
    {
        auto sites = sitesOf({30, 28, 25});
        sites[0].nuclei = 3;
        const auto lines = linesOf({1, 2, 6});
        const std::vector<std::vector<int>> of{{0}, {1}, {2}};
        const Agreement a = Agreement::of(sites, lines, of, {});
        // Sums of measured and shielding: 31, 30, 31.
        QVERIFY(isClose(a.reference, (3 * 31 + 30 + 31) / 5.0) && isClose(a.plainReference, 92 / 3.0));
        QVERIFY(isClose(a.leastSquares, 2 / 3.0));
        const double d = a.reference - 31, e = a.reference - 30;
        QVERIFY(isClose(a.rmsd, std::sqrt((2 * d * d + e * e) / 3)) && isClose(a.largest, e));
        QCOMPARE(a.degreesOfFreedom, 2);
        QVERIFY(isClose(*a.chiSquare(0.5).p, std::exp(-0.5 * (2 / 3.0) / 0.25))); // two degrees of freedom
        const Agreement fixed = Agreement::of(sites, lines, of, {-1.0, 30.0});
        QVERIFY(isClose(fixed.leastSquares, 2.0));
        QCOMPARE(fixed.degreesOfFreedom, 3);
        // Through the reference: sums of the products with the shielding, and of its squares.
        const Agreement through = Agreement::of(sites, lines, of, {std::nullopt, 30.0});
        QVERIFY(isClose(through.slope, -(30 * 29 + 28 * 28 + 25 * 24) / (900.0 + 784 + 625)));
        QCOMPARE(through.degreesOfFreedom, 2);
        for (const auto &[value, degrees, p] :
             {std::tuple(3.2, 4, 0.524930946786), std::tuple(30.0, 7, 9.49597250813e-05),
              std::tuple(0.5, 1, 0.479500122187)}) // scipy.stats.chi2.sf
            QVERIFY(isClose(*ChiSquare::of(value, degrees).p / p, 1, 1e-10));
        QVERIFY(!ChiSquare::of(0, 0).p);
    }

    void calibration()
    {
        const std::vector<ShiftCalibration::Point> points{{150.0, 21.9}, {120.5, 50.1}, {45.25, 126.3},
                                                          {10.0, 160.2}, {-3.5, 175.0}, {88.0, 83.1}};
        const auto c = ShiftCalibration::of(points);
        // numpy.linalg.lstsq, leaving out by repeated fits, scipy.stats.t
        for (const auto &[value, expected] :
             {std::pair(c.reference, 170.951036384), std::pair(c.slope, -0.997211988549),
              std::pair(c.referenceError, 0.444283499948), std::pair(c.slopeError, 0.00502386554062),
              std::pair(c.covariance, -0.00172573200734), std::pair(c.rmse, 0.69017781328),
              std::pair(c.leaveOneOut, 0.912309794339), std::pair(c.lineVariance(60), 0.081161197338),
              std::pair(c.prediction(60).shift, 111.118317070761),
              std::pair(c.prediction(60).high - c.prediction(60).shift, 2.073070645661)})
            QVERIFY(isClose(value, expected, 1e-10));
        QVERIFY(!failure([&] { ShiftCalibration::of({points[0], points[1]}); }).isEmpty());
        QVERIFY(!failure([&] { ShiftCalibration::of({{5, 1}, {5, 2}, {5, 3}}); }).isEmpty());
    }

    void likelihood()
    {
        // Of differences 1.2, -0.3, 0.8, 0.1 with σ = 0.5; scipy: integral over the reference, multivariate normal.
        const Evidence evidence{4, 1.37, 0.45, 0.5};
        QVERIFY(isClose(logLikelihood(evidence, {}), -7.10625351205, 1e-10));
        QVERIFY(isClose(logLikelihood(evidence, {20, {{0.4, 0.7}}}), -4.73507129234, 1e-10));
        // One member of 5000 kJ/mol more than another has no chance, and nothing overflows.
        const auto p = poolProbabilities({-1e5, -1e5, std::nan("")}, boltzmannWeights({5000, 0, 0}, 298.15));
        QCOMPARE(p, (std::vector<double>{0, 1, 0}));
        const auto q = poolProbabilities({0, 0}, boltzmannWeights({0, 2.4789570296}, 298.15)); // RT
        QVERIFY(!std::signbit(boltzmannWeights({0}, 298.15).front())); // which a table would print
        QVERIFY(isClose(q[0] / q[1], std::numbers::e));
    }

    /// Of the structures given a probability, as many are right: pools of rivals of one made-up crystal, with the
    /// reference unknown and two nuclei.
    void probabilitiesAreCalibrated()
    {
        Random random(17);
        constexpr int members = 6, sites = 9;
        std::array<double, 5> count{}, right{}, expected{}, variance{}; // of fifths of the probability
        for (int pool = 0; pool < 1000; ++pool) {
            const std::size_t truth = std::size_t(random.below(members));
            std::vector<double> logs(members);
            for (double sigma : {0.33, 2.2}) {
                const double reference = random.uniform(160, 180);
                std::vector<std::vector<ComparedSite>> rivals(members,
                                                              sitesOf(uniform(random, sites, 20, 20 + 400 * sigma)));
                for (auto &rival : rivals)
                    for (ComparedSite &site : rival)
                        site.shielding += 0.5 * sigma * normal(random);
                std::vector<MeasuredLine> lines;
                for (const ComparedSite &site : rivals[truth])
                    lines.push_back({reference - site.shielding + sigma * normal(random), {}, {site.name}});
                for (std::size_t i = 0; i < members; ++i) {
                    const Agreement a =
                        Agreement::of(rivals[i], lines, LinePairing::of(rivals[i], lines, {}).linesOf, {});
                    logs[i] += logLikelihood({sites, a.leastSquares, a.plainReference, sigma}, {});
                }
            }
            const auto probabilities = poolProbabilities(logs, std::vector<double>(members, 0.0));
            for (std::size_t i = 0; i < members; ++i) {
                const double p = probabilities[i];
                const std::size_t bin = std::min<std::size_t>(std::size_t(p * 5), 4);
                ++count[bin];
                right[bin] += i == truth;
                expected[bin] += p;
                variance[bin] += p * (1 - p);
            }
        }
        for (std::size_t bin = 0; bin < 5; ++bin)
            QVERIFY2(count[bin] > 100 && std::abs(right[bin] - expected[bin]) < 3 * std::sqrt(variance[bin]),
                     qPrintable(u"%1 right of %2 expected"_s.arg(right[bin]).arg(expected[bin])));
    }

    /// The mean's own axis is (1, 2, 2) / 3, along which the errors of its gradient count; what left the cell is moved
    /// back.
    void averages()
    {
        const CrystalStructure first = monoclinicCrystal();
        ConfigurationAverage average;
        CrystalStructure next;
        for (int i : {-1, 1, 0}) {
            next = first;
            for (CrystalAtom &atom : next.atoms) {
                atom.gradient = Tensor3{-0.4, 0.4, 0.4, 0.4, 0.2, 0.8, 0.4, 0.8, 0.2};
                for (std::size_t e = 0; e < 9; ++e) {
                    (*atom.shielding)[e] += i * double(e + 1);
                    (*atom.gradient)[e] += 0.003 * i * double(e + 1);
                }
            }
            next.atoms[3].position[1] += i == 0 ? 0.3 : 0.1 * i + (i > 0 ? (*first.lattice)[1][1] : 0);
            average.add(next, u"step %1"_s.arg(i));
        }
        const CrystalAtom mean = average.mean().atoms[3];
        const double root = std::sqrt(3);
        QVERIFY(isClose(*mean.isotropicShielding(), 150) && isClose(*average.errors()[3].shielding, 5 / root));
        QVERIFY(isClose(GradientValues(*mean.gradient).Vzz, 1.2));
        QVERIFY(isClose(*average.errors()[3].gradient, 0.003 * 145 / 9 / root));
        QVERIFY(isClose(mean.position[1], first.atoms[3].position[1] + 0.1));

        CrystalStructure other = first;
        QVERIFY(failure([&] { average.add(other, u"b"_s); }).contains("electric field gradient of C1"));
        other.atoms.pop_back();
        QVERIFY(failure([&] { average.add(other, u"b"_s); }).contains("19 atoms"));
        other = next;
        other.atoms[4].element = u"D"_s;
        QVERIFY(failure([&] { average.add(other, u"b"_s); }).contains("atom 5"));
        other = next;
        std::swap(other.atoms[4].number, other.atoms[5].number);
        std::swap(other.atoms[4].labels, other.atoms[5].labels);
        QVERIFY(failure([&] { average.add(other, u"b"_s); }).contains("atom 5"));
        QCOMPARE(average.count(), 3);
        // Names of another program, in the same order.
        for (CrystalAtom &atom : other.atoms)
            atom.labels = {u"X"_s + atom.element};
        average.add(other, u"b"_s);
        QCOMPARE(average.mean().atoms[4].labels, first.atoms[4].labels);
    }

    /// Numbers of numpy.
    void columns()
    {
        CrystalAtom atom;
        atom.position = {1, 2, 3};
        atom.shielding = Tensor3{40, 5, -3, 1, -20, 8, 7, 2, 95};
        atom.gradient = Tensor3{0.3, 0.1, -0.2, 0.1, -0.7, 0.05, -0.2, 0.05, 0.4};
        const Lattice lattice = *Lattice::of({{{4, 0, 0}, {0, 4, 0}, {2, 0, 4}}});
        const SiteValues site{atom, &lattice, 4, 170, -0.97, -2.558, 2.5, 67.8};
        for (const auto &[name, expected] :
             {std::pair("delta11", 189.746694931), std::pair("delta22", 131.143329315),
              std::pair("delta33", 77.5599757543), std::pair("span", 112.186719177),
              std::pair("skew", -0.0447469370088), std::pair("cq-signed", 4.29234090374),
              std::pair("pq", 4.50970146249), std::pair("qis", -26.5452884339), std::pair("multiplicity", 4.0),
              std::pair("x", -0.125), std::pair("y", 0.5), std::pair("z", 0.75)})
            QVERIFY2(isClose(siteColumn(QLatin1String(name))->value(site).value(), expected), name);
        // The order is that of the shifts, whatever the slope's sign.
        SiteValues rising = site;
        rising.slope = 0.97;
        QVERIFY(isClose(siteColumn(u"delta11"_s)->value(rising).value(), 262.4400242457));
        QVERIFY(isClose(siteColumn(u"skew"_s)->value(rising).value(), 0.0447469370088));
        QVERIFY(!siteColumn(u"delta"_s));
        const CrystalAtom bare;
        for (const SiteColumn &column : siteColumns())
            QVERIFY(column.value({bare}).has_value() == (QByteArray(column.name) == "multiplicity"));
        // The textbook's -6000 and -25000 (P/ν)² of I = 5/2 and 3/2.
        QVERIFY(isClose(quadrupoleInducedShift(1, 100, 2.5), -0.6));
        QVERIFY(isClose(quadrupoleInducedShift(1, 100, 1.5), -2.5));
        QCOMPARE(quadrupoleInducedShift(1, 100, 1), 0.0);
    }
};

QTEST_APPLESS_MAIN(tst_Comparison)
#include "tst_comparison.moc"
