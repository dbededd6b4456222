// SPDX-License-Identifier: BSD-3-Clause
#include "TestNuclei.h"
#include "parameters/DipolarCoupling.h"
#include "parameters/ElementTable.h"
#include "parameters/MagresTensor.h"
#include "parameters/Nuclei.h"
#include "parameters/TensorIndex.h"

#include <QTest>

#include <cmath>
#include <complex>

using namespace Magres;
using namespace Qt::StringLiterals;

static bool near(double actual, double expected, double relative = 1e-12)
{
    return std::abs(actual - expected) <= relative * std::max(1.0, std::abs(expected));
}

static Tensor diagonal(double x, double y, double z)
{
    return {x, 0, 0, 0, y, 0, 0, 0, z};
}

/// The rows of a table of facts by their first column. Comments and the header are left out.
static QMap<QByteArray, QByteArrayList> facts(const char *name)
{
    QFile file(QStringLiteral(FACTS) + QLatin1Char('/') + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s", qPrintable(file.fileName()));
    QMap<QByteArray, QByteArrayList> rows;
    bool header = true;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (!line.startsWith('#') && !std::exchange(header, false))
            rows.insert(line.split('\t').first(), line.split('\t').mid(1));
    }
    return rows;
}

class tst_Parameters : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void derivedValues()
    {
        struct Case {
            Tensor tensor;
            std::vector<double> principal; // yy, xx, zz
            std::array<double, 3> shielding; // iso, aniso, assym
            std::array<double, 3> efg; // eq, qassym, Cq for 10 fm^2
        };
        for (const auto &[tensor, principal, shielding, efg] :
             {Case{diagonal(10, 20, 60), {20, 10, 60}, {30, 45, 1.0 / 3.0}, {60, -1.0 / 6.0, 60 * (10 * 2.3489)}},
              Case{diagonal(-0.1, -0.2, 0.3), {-0.1, -0.2, 0.3}, {0, 0.45, 1.0 / 3.0}, {0.3, 1.0 / 3.0, 7.0467}},
              Case{diagonal(0.1, 0.2, -0.3), {0.1, 0.2, -0.3}, {0, -0.45, 1.0 / 3.0}, {0.3, 1.0 / 3.0, 7.0467}},
              // eigenvalues 1 and 3 of the upper block, 8 alone; the antisymmetric part counts
              Case{{2, 1, 0, 1, 2, 0, 0, 0, 8}, {3, 1, 8}, {4, 6, 0.5}, {8, -0.25, 8 * 23.489}},
              Case{{2, 2, 0, 0.5, 2, 0, 0, 0, 8}, {3, 1, 8}, {4, 6, 0.5}, {8, -0.25, 8 * 23.489}},
              // all zero; singular, which keeps its trace
              Case{diagonal(0, 0, 0), {}, {0, 0, 0}, {0, 0, 0}}, Case{diagonal(3, 6, 0), {}, {3, 0, 0}, {0, 0, 0}}}) {
            const MagresTensor t({"C1"}, 1, tensor);
            QCOMPARE(t.principalValues.has_value(), !principal.empty());
            for (size_t i = 0; i < principal.size(); ++i)
                QVERIFY(near((*t.principalValues)[i], principal[i]));
            QVERIFY(near(t.iso(), shielding[0]) && near(t.aniso(), shielding[1]) && near(t.assym(), shielding[2]));
            QVERIFY(near(t.eq(), efg[0]) && near(t.qassym(), efg[1]) && near(t.Cq(10.0), efg[2]));
            QCOMPARE(t.Cq(0.0), 0.0);
        }
    }

    void principalValuesDoNotTurnWithTheAxes()
    {
        const std::array<double, 3> values{-31.0, 12.5, 140.0};
        for (double angle = 0.1; angle < 3.0; angle += 0.37) {
            const double c = std::cos(angle), s = std::sin(angle);
            // first about z, then about x
            const double r[3][3] = {{c, -s, 0}, {c * s, c * c, -s}, {s * s, s * c, c}};
            Tensor turned{};
            for (size_t i = 0; i < 9; ++i)
                for (size_t k = 0; k < 3; ++k)
                    turned[i] += r[i / 3][k] * values[k] * r[i % 3][k];
            const auto found = Magres::principalValues(turned);
            QVERIFY(found && near((*found)[0], 12.5, 1e-10) && near((*found)[1], -31.0, 1e-10)
                    && near((*found)[2], 140.0, 1e-10));
        }
    }

    void cubicRootsSolveTheEquation()
    {
        // three real roots, one real root, a double root, a triple root
        const std::array<double, 4> equations[] = {{-1, 6, -11, 6}, {2, -3, 5, 7}, {1, -5, 8, -4}, {1, -6, 12, -8}};
        for (const auto &[a, b, c, d] : equations) {
            const auto roots = Magres::solveCubic({a, b, c, d});
            QVERIFY(roots.has_value());
            for (size_t i = 0; i < 3; ++i) {
                const std::complex<double> x(roots->re[i], roots->im[i]);
                QVERIFY(std::abs(((a * x + b) * x + c) * x + d) < 1e-9);
            }
        }
        QVERIFY(!Magres::solveCubic({0, 1, 2, 3}));
        QVERIFY(!Magres::solveCubic({1, 2, 3, 0}));
    }

    void secondOrderShift()
    {
        const MagresTensor efg({"N1"}, 1, diagonal(-0.2, -0.3, 0.5)); // eta = 0.2
        // The factor goes with (C sqrt(1 + eta^2) / nu)^2, in ppm.
        for (const auto &[isotope, moment, m, factor] :
             {std::tuple("14N", 2.044, 1, 0.075e6), std::tuple("2H", 0.286, 1, 0.075e6),
              std::tuple("6Li", -0.0808, 0, 0.075e6), std::tuple("14N", 2.044, 2, 19.0 * 0.075e6),
              std::tuple("27Al", 14.66, 1, 0.0), std::tuple("14n", 2.044, 1, 0.0)}) {
            const double ratio = 0.5 * moment * 2.3489 / 43.4;
            QVERIFY(near(efg.secondOrderQuadShift(isotope, moment, 43.4, m), factor * ratio * ratio * 1.04, 1e-9));
        }
    }

    void dipolarCouplings()
    {
        // mu0 hbar gamma^2 / (4 pi^2 r^3) for two protons 1 Angstrom apart; with the inverse cube of the distance.
        QVERIFY(near(Magres::DipolarCoupling("1H", "1H")(1.0), -240.24, 1e-5));
        QVERIFY(near(Magres::DipolarCoupling("1H", "1H")(2.0), -240.24 / 8.0, 1e-5));
        const double ratio = 188.64 / 750.03;
        QVERIFY(near(Magres::DipolarCoupling("13C", "1H")(1.09) / Magres::DipolarCoupling("1H", "1H")(1.09), ratio));
        QCOMPARE(Magres::DipolarCoupling("99Xx", "1H")(1.5), Magres::DipolarCoupling("1H", "1H")(1.5));
        QVERIFY(std::isinf(Magres::DipolarCoupling("1H", "1H")(0.0)));
    }

    void constantsAgainstFacts()
    {
        // Fe and Co have high spin here and low spin there; Lu and Hf are interchanged here.
        const QByteArrayList otherRadius{"Fe", "Co", "Lu", "Hf"};
        const auto radii = facts("covalent_radii.tsv");
        int known = 0;
        for (auto it = radii.begin(); it != radii.end(); ++it) {
            if (Magres::atomicNumber(it.key()) < 0)
                continue;
            ++known;
            QCOMPARE(Magres::atomicNumber(it.key()), it->at(0).toInt());
            if (!otherRadius.contains(it.key()))
                QVERIFY2(near(Magres::covalentRadius(it.key()), it->at(1).toDouble()), it.key());
        }
        QCOMPARE(Magres::covalentRadius("Lu"), radii["Hf"][1].toDouble());
        QCOMPARE(Magres::covalentRadius("Hf"), radii["Lu"][1].toDouble());
        QVERIFY(Magres::covalentRadius("Fe") == 1.52 && Magres::covalentRadius("Co") == 1.5);
        QCOMPARE(known, 81);

        // The table's frequencies are magnetogyric ratios times a field, so without the chemical shift of a standard,
        // which grows with the nuclear charge. These rows are off by more than that:
        const QByteArrayList otherRatio{"3He", "67Zn", "99Ru", "101Ru", "187Os", "189Os", "209Bi"};
        const auto ratios = facts("frequency_ratios.tsv");
        QCOMPARE(ratios.size(), 88);
        for (auto it = ratios.begin(); it != ratios.end(); ++it) {
            const double ratio = Magres::isotopeFrequency(it.key()) / 750.03 / (it->at(0).toDouble() / 100.0);
            const double tolerance = Magres::massNumber(it.key()) < 50 ? 0.002 : 0.02;
            QVERIFY2((std::abs(ratio - 1.0) < tolerance) != otherRatio.contains(it.key()), it.key());
        }

        const auto nuclides = facts("nuclides.tsv");
        const TestNuclei properties;
        for (auto it = properties.nuclei.begin(); it != properties.nuclei.end(); ++it) {
            const QByteArrayList values = nuclides.value(it.key());
            QVERIFY2(it->spin == QString::fromLatin1(values.at(0)) && it->quadrupoleMoment == values[1].toDouble()
                         && it->abundance == values[2].toDouble(),
                     it.key());
        }
        // Every nucleus that the host is told of by code is one, and the codes go by element and mass.
        QMap<int, QByteArray> coded;
        for (auto it = nuclides.begin(); it != nuclides.end(); ++it)
            coded.insert(Magres::nucleusCode(it.key()), it.key());
        coded.remove(-1);
        QVERIFY(coded.size() == 118 && coded.firstKey() == 1 && coded.lastKey() == 118);
        const auto place = [](const QByteArray &nucleus) {
            return std::pair(Magres::atomicNumber(Magres::elementOf(nucleus)), Magres::massNumber(nucleus));
        };
        QVERIFY(std::is_sorted(coded.begin(), coded.end(),
                               [&](const QByteArray &a, const QByteArray &b) { return place(a) < place(b); }));
    }

    /// Widths in ppm and couplings of spectra in documents rest on every digit of the frequencies: the sum, weighted by
    /// mass numbers, is that of the table as it was adopted.
    void frequenciesStayAsTheyAre()
    {
        qint64 sum = 0;
        for (const QByteArray &element : facts("covalent_radii.tsv").keys())
            for (const QByteArray &name : Magres::isotopes(element)) {
                QCOMPARE(Magres::elementOf(name), element);
                sum += std::llround(Magres::isotopeFrequency(name) * 100) * Magres::massNumber(name);
            }
        QCOMPARE(sum, 135474883);
    }

    void tiesOfPrincipalValues()
    {
        // The outer two lie equally far from the mean; solveCubic() gives the larger first, so that it becomes xx.
        QCOMPARE(MagresTensor({"C1"}, 1, diagonal(3, 4, 5)).aniso(), -1.5);
        QCOMPARE(MagresTensor({"C1"}, 1, diagonal(-1, -2, -3)).aniso(), -1.5);
    }

    void nuclei()
    {
        QCOMPARE(Magres::isotopeFrequency("41K"), 750.03);
        QVERIFY(near(Magres::spectrometerFrequency("13C", 600.0), 600.0 * 188.64 / 750.03));
        QCOMPARE(Magres::nucleusCode("Undef"), 0);
        QCOMPARE(Magres::nucleusCode("13c"), -1);
        QCOMPARE(Magres::massNumber("Undef"), 0);
        QCOMPARE(Magres::massNumber("x27Al5"), 27);
        QCOMPARE(Magres::elementOf("Undef"), QByteArray("Undef"));
        QCOMPARE(Magres::isotopes("Xyz"), QByteArrayList());

        const QVariantList maps = Magres::nucleides("13C", "");
        QCOMPARE(maps[0].toMap(), (QVariantMap{{u"Isotope"_s, 13}, {u"Name"_s, u"C"_s}}));
        QCOMPARE(Magres::nucleusName(maps[0].toMap()) + Magres::nucleusName(maps[1].toMap()), QByteArray("13C1H"));
    }

    void elements()
    {
        for (const char *unknown : {"Ar", "Tc", "Ce", "Pm", "Po", "c", ""})
            QVERIFY2(Magres::atomicNumber(unknown) == -1 && Magres::covalentRadius(unknown) == -1.0, unknown);
    }

    void quadrupolarIsotopes()
    {
        TestNuclei properties;
        for (const auto &[element, abundance63Cu, abundance65Cu, expected] :
             {std::tuple("Al", 0.0, 0.0, "27Al"), std::tuple("C", 0.0, 0.0, ""), std::tuple("N", 0.0, 0.0, "14N"),
              std::tuple("Xyz", 0.0, 0.0, ""), std::tuple("Cu", 69.17, 30.83, "63Cu"),
              std::tuple("Cu", 30.0, 70.0, "65Cu"), std::tuple("Cu", 50.0, 50.0, "63Cu"),
              std::tuple("Cu", 60.6, 60.1, "65Cu"), // within a percent
              std::tuple("Cu", 0.5, 0.3, "65Cu"), std::tuple("Cu", 0.0, 0.0, "")}) {
            properties.nuclei["27Al"].abundance = abundance63Cu; // the only one is taken, however rare
            properties.nuclei["63Cu"].abundance = abundance63Cu;
            properties.nuclei["65Cu"].abundance = abundance65Cu;
            QCOMPARE(Magres::defaultQuadrupolarIsotope(element, properties), expected);

            // The choice is made once, and a choice that is there stands.
            QVariantMap choices;
            QCOMPARE(Magres::chosenQuadrupolarIsotope(element, choices, properties), expected);
            choices.insert(QLatin1String(element), u"7Li"_s);
            QCOMPARE(Magres::chosenQuadrupolarIsotope(element, choices, properties), "7Li");
        }
    }

    void tensorsAreFoundByLabelAndIndex()
    {
        QList<MagresTensor> tensors{{{"H"}, 2, diagonal(1, 1, 2)},
                                    {{"H"}, 1, diagonal(3, 3, 4)},
                                    {{"H"}, 2, diagonal(5, 5, 6)},
                                    {{"C"}, 1, diagonal(7, 7, 8)}};
        // In any order of the list.
        for (int turn = 0; turn < 4; ++turn) {
            std::rotate(tensors.begin(), tensors.begin() + 1, tensors.end());
            const Magres::TensorIndex index(tensors);
            const auto xx = [](const MagresTensor *found) { return found ? found->tensor[0] : 0.0; };
            QCOMPARE(xx(index.find({"H"}, 2)), 1.0);
            QCOMPARE(xx(index.find({"H"}, 1)), 3.0);
            QCOMPARE(xx(index.find({"H"})), 3.0);
            QCOMPARE(xx(index.findNearest({"H"}, 2)), 1.0);
            QCOMPARE(xx(index.findNearest({"C"}, 2)), 7.0);
            QCOMPARE(index.find({"C"}, 2), nullptr);
            QCOMPARE(index.findNearest({"h"}, 1), nullptr);
        }
    }
};

QTEST_GUILESS_MAIN(tst_Parameters)
#include "tst_parameters.moc"
