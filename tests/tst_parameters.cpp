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

using namespace Qt::StringLiterals;

using Magres::Tensor;

static bool near(double actual, double expected, double relative = 1e-12)
{
    return std::abs(actual - expected) <= relative * std::max(1.0, std::abs(expected));
}

static Tensor diagonal(double x, double y, double z)
{
    return {x, 0, 0, 0, y, 0, 0, 0, z};
}

class tst_Parameters : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void derivedValues_data()
    {
        QTest::addColumn<QList<double>>("tensor");
        QTest::addColumn<QList<double>>("principal"); // yy, xx, zz
        QTest::addColumn<QList<double>>("shielding"); // iso, aniso, assym
        QTest::addColumn<QList<double>>("efg"); // eq, qassym, Cq for 10 fm^2

        using L = QList<double>;
        QTest::newRow("shielding") << L{10, 0, 0, 0, 20, 0, 0, 0, 60} << L{20, 10, 60} << L{30, 45, 1.0 / 3.0}
                                   << L{60, -1.0 / 6.0, 60 * (10 * 2.3489)};
        QTest::newRow("field gradient") << L{-0.1, 0, 0, 0, -0.2, 0, 0, 0, 0.3} << L{-0.1, -0.2, 0.3}
                                        << L{0, 0.45, 1.0 / 3.0} << L{0.3, 1.0 / 3.0, 7.0467};
        QTest::newRow("negative largest component") << L{0.1, 0, 0, 0, 0.2, 0, 0, 0, -0.3} << L{0.1, 0.2, -0.3}
                                                    << L{0, -0.45, 1.0 / 3.0} << L{0.3, 1.0 / 3.0, 7.0467};
        QTest::newRow("coupled off-diagonals") // eigenvalues 1 and 3 of the upper block, 8 alone
            << L{2, 1, 0, 1, 2, 0, 0, 0, 8} << L{3, 1, 8} << L{4, 6, 0.5} << L{8, -0.25, 8 * 23.489};
        QTest::newRow("antisymmetric part counts") // block [[2, 2], [0.5, 2]] has the eigenvalues 1 and 3 as well
            << L{2, 2, 0, 0.5, 2, 0, 0, 0, 8} << L{3, 1, 8} << L{4, 6, 0.5} << L{8, -0.25, 8 * 23.489};
        QTest::newRow("all zero") << L{0, 0, 0, 0, 0, 0, 0, 0, 0} << L{} << L{0, 0, 0} << L{0, 0, 0};
        QTest::newRow("singular keeps its trace") << L{3, 0, 0, 0, 6, 0, 0, 0, 0} << L{} << L{3, 0, 0} << L{0, 0, 0};
    }

    void derivedValues()
    {
        QFETCH(QList<double>, tensor);
        QFETCH(QList<double>, principal);
        QFETCH(QList<double>, shielding);
        QFETCH(QList<double>, efg);
        Tensor elements;
        std::copy(tensor.begin(), tensor.end(), elements.begin());
        const MagresTensor t({"C1"}, 1, elements);
        QCOMPARE(t.principalValues.has_value(), !principal.isEmpty());
        for (int i = 0; i < principal.size(); ++i)
            QVERIFY2(near((*t.principalValues)[size_t(i)], principal[i]), qPrintable(QString::number(i)));
        QVERIFY(near(t.iso(), shielding[0]));
        QVERIFY(near(t.aniso(), shielding[1]));
        QVERIFY(near(t.assym(), shielding[2]));
        QVERIFY(near(t.eq(), efg[0]));
        QVERIFY(near(t.qassym(), efg[1]));
        QVERIFY(near(t.Cq(10.0), efg[2]));
        QCOMPARE(t.Cq(0.0), 0.0);
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
            QVERIFY(found.has_value());
            QVERIFY(near((*found)[0], 12.5, 1e-10));
            QVERIFY(near((*found)[1], -31.0, 1e-10));
            QVERIFY(near((*found)[2], 140.0, 1e-10));
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

    void secondOrderShift_data()
    {
        QTest::addColumn<QByteArray>("isotope");
        QTest::addColumn<double>("moment");
        QTest::addColumn<int>("m");
        QTest::addColumn<double>("factor"); // times (C sqrt(1 + eta^2) / nu)^2 in ppm

        QTest::newRow("14N") << QByteArray("14N") << 2.044 << 1 << 0.075e6;
        QTest::newRow("2H") << QByteArray("2H") << 0.286 << 1 << 0.075e6;
        QTest::newRow("6Li") << QByteArray("6Li") << -0.0808 << 0 << 0.075e6;
        QTest::newRow("other transition") << QByteArray("14N") << 2.044 << 2 << 19.0 * 0.075e6;
        QTest::newRow("27Al") << QByteArray("27Al") << 14.66 << 1 << 0.0;
        QTest::newRow("14n") << QByteArray("14n") << 2.044 << 1 << 0.0;
    }

    void secondOrderShift()
    {
        QFETCH(QByteArray, isotope);
        QFETCH(double, moment);
        QFETCH(int, m);
        QFETCH(double, factor);
        const MagresTensor efg({"N1"}, 1, diagonal(-0.2, -0.3, 0.5)); // eta = 0.2
        const double coupling = 0.5 * moment * 2.3489;
        const double ratio = coupling / 43.4;
        QVERIFY(near(efg.secondOrderQuadShift(isotope, moment, 43.4, m), factor * ratio * ratio * 1.04, 1e-9));
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

    void nuclei()
    {
        QCOMPARE(Magres::isotopeFrequency("3He"), 800.01);
        QCOMPARE(Magres::isotopeFrequency("235U"), 13.43);
        QCOMPARE(Magres::isotopeFrequency("41K"), 750.03);
        QVERIFY(near(Magres::spectrometerFrequency("13C", 600.0), 600.0 * 188.64 / 750.03));
        QCOMPARE(Magres::nucleusCode("Undef"), 0);
        QCOMPARE(Magres::nucleusCode("27Al"), 18);
        QCOMPARE(Magres::nucleusCode("235U"), 118);
        QCOMPARE(Magres::nucleusCode("13c"), -1);
        QCOMPARE(Magres::massNumber("Undef"), 0);
        QCOMPARE(Magres::massNumber("x27Al5"), 27);
        QCOMPARE(Magres::elementOf("Undef"), QByteArray("Undef"));
        QCOMPARE(Magres::elementOf("235U"), QByteArray("U"));
        QCOMPARE(Magres::isotopes("Cu"), (QByteArrayList{"63Cu", "65Cu"}));
        QCOMPARE(Magres::isotopes("B"), (QByteArrayList{"10B", "11B"}));
        QCOMPARE(Magres::isotopes("Xyz"), QByteArrayList());

        const QVariantList maps = Magres::nucleides("13C", "");
        QCOMPARE(maps.size(), 2);
        QCOMPARE(Magres::nucleusName(maps[0].toMap()), QByteArray("13C"));
        QCOMPARE(maps[0].toMap().value(u"Isotope"_s).toInt(), 13);
        QCOMPARE(Magres::nucleusName(maps[1].toMap()), QByteArray("1H"));
    }

    void elements()
    {
        QCOMPARE(Magres::atomicNumber("K"), 19);
        QCOMPARE(Magres::covalentRadius("U"), 1.96);
        for (const char *unknown : {"Ar", "Tc", "Ce", "Pm", "Po", "c", ""}) {
            QCOMPARE(Magres::atomicNumber(unknown), -1);
            QCOMPARE(Magres::covalentRadius(unknown), -1.0);
        }
    }

    void quadrupolarIsotopes_data()
    {
        QTest::addColumn<QByteArray>("element");
        QTest::addColumn<double>("abundance63Cu");
        QTest::addColumn<double>("abundance65Cu");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("one") << QByteArray("Al") << 0.0 << 0.0 << QByteArray("27Al");
        QTest::newRow("spin 1/2 only") << QByteArray("C") << 0.0 << 0.0 << QByteArray();
        QTest::newRow("spin 1") << QByteArray("N") << 0.0 << 0.0 << QByteArray("14N");
        QTest::newRow("more abundant first") << QByteArray("Cu") << 69.17 << 30.83 << QByteArray("63Cu");
        QTest::newRow("more abundant last") << QByteArray("Cu") << 30.0 << 70.0 << QByteArray("65Cu");
        QTest::newRow("equal whole percents") << QByteArray("Cu") << 50.0 << 50.0 << QByteArray("63Cu");
        QTest::newRow("within a percent") << QByteArray("Cu") << 60.6 << 60.1 << QByteArray("65Cu");
        QTest::newRow("unknown element") << QByteArray("Xyz") << 0.0 << 0.0 << QByteArray();
    }

    void quadrupolarIsotopes()
    {
        QFETCH(QByteArray, element);
        QFETCH(double, abundance63Cu);
        QFETCH(double, abundance65Cu);
        QFETCH(QByteArray, expected);
        TestNuclei properties;
        properties.nuclei["63Cu"].abundance = abundance63Cu;
        properties.nuclei["65Cu"].abundance = abundance65Cu;
        QCOMPARE(Magres::defaultQuadrupolarIsotope(element, properties), expected);

        // The choice is made once, and a choice that is there stands.
        QVariantMap choices;
        QCOMPARE(Magres::chosenQuadrupolarIsotope(element, choices, properties), expected);
        choices.insert(QString::fromLatin1(element), u"7Li"_s);
        QCOMPARE(Magres::chosenQuadrupolarIsotope(element, choices, properties), QByteArray("7Li"));
    }

    void tensorsAreFoundByLabelAndIndex()
    {
        const QList<MagresTensor> tensors{{{"H"}, 2, diagonal(1, 1, 2)},
                                          {{"H"}, 1, diagonal(3, 3, 4)},
                                          {{"H"}, 2, diagonal(5, 5, 6)},
                                          {{"C"}, 1, diagonal(7, 7, 8)}};
        const Magres::TensorIndex index(tensors);
        QCOMPARE(index.find({"H"}, 2), &tensors[0]);
        QCOMPARE(index.find({"H"}, 1), &tensors[1]);
        QCOMPARE(index.find({"H"}), &tensors[0]);
        QCOMPARE(index.find({"C"}, 2), nullptr);
        QCOMPARE(index.find({"h"}), nullptr);
    }
};

QTEST_GUILESS_MAIN(tst_Parameters)
#include "tst_parameters.moc"
