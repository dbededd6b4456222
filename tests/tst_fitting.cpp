// SPDX-License-Identifier: BSD-3-Clause
#include "fitting/PeakPairing.h"
#include "fitting/ReferenceFit.h"
#include "parameters/MapConversion.h"
#include "support/TPluginError.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

using Doubles = QList<double>;

static Magres::PeakColumns columns()
{
    return {{7.0, 3.0}, {100.0, 50.0}, {1.0, 1.0}, {3.5, 7.5}, {52.0, 104.0}};
}

class tst_Fitting : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pairing_data()
    {
        QTest::addColumn<Doubles>("simulated");
        QTest::addColumn<Doubles>("experimental");
        QTest::addColumn<Doubles>("heights");
        QTest::addColumn<double>("offset");
        QTest::addColumn<double>("rmsd");
        QTest::newRow("ranks") << Doubles{10, 20, 30} << Doubles{31, 11, 21} << Doubles{1, 1, 2} << 1.0 << 1.0;
        QTest::newRow("weights") << Doubles{10, 20} << Doubles{22, 11} << Doubles{3, 1} << 1.25 << std::sqrt(7.0 / 4.0);
        QTest::newRow("negative peaks weigh alike")
            << Doubles{10, 20} << Doubles{22, 11} << Doubles{-3, 1} << 1.25 << std::sqrt(7.0 / 4.0);
        QTest::newRow("single") << Doubles{-5} << Doubles{2.5} << Doubles{0.1} << 7.5 << 7.5;
    }

    void pairing()
    {
        QFETCH(Doubles, simulated);
        QFETCH(Doubles, experimental);
        QFETCH(Doubles, heights);
        QFETCH(double, offset);
        QFETCH(double, rmsd);
        // The order of the lists does not matter, as long as heights go with their positions.
        for (int turn = 0; turn < 2; ++turn) {
            QCOMPARE(Magres::pairedOffset(simulated, experimental, heights), offset);
            QCOMPARE(Magres::pairedRmsd(simulated, experimental, heights), rmsd);
            std::reverse(simulated.begin(), simulated.end());
            std::reverse(heights.begin(), heights.end());
        }
    }

    void nothingToWeigh_data()
    {
        QTest::addColumn<Doubles>("positions");
        QTest::newRow("no peaks") << Doubles{};
        QTest::newRow("zero heights") << Doubles{1, 2};
    }

    void nothingToWeigh()
    {
        QFETCH(Doubles, positions);
        const Doubles heights(positions.size(), 0.0);
        QVERIFY(std::isnan(Magres::pairedOffset(positions, positions, heights)));
        QVERIFY(std::isnan(Magres::pairedRmsd(positions, positions, heights)));
    }

    void reports_data()
    {
        QTest::addColumn<QString>("nucF1"); // none in 1D
        QTest::addColumn<QString>("fit");
        QTest::addColumn<QString>("rmsd");
        QTest::addColumn<double>("referenceF1");
        QTest::newRow("1D") << QString()
                            << "Reference is changed from 31 ppm to 31.5 ppm\n\nOld RMSD: 0.5 Xu\nNew RMSD: 0 Xu"
                            << "RMSD: 0.5 Xu" << 170.123456789;
        QTest::newRow("homonuclear")
            << "1H"
            << "Reference is changed from 31 ppm to 31.5 ppm\n\nOld RMSD: 0.5 Xu\nNew RMSD: 0 Xu"
            << "RMSD (direct dimension): 0.5 Xu\nRMSD (indirect dimension): 3.16228 Yu" << 170.123456789;
        QTest::newRow("heteronuclear") << "13C"
                                       << "Direct dimension reference is changed from 31 ppm to 31.5 ppm\n"
                                          "Indirect dimension reference is changed from 170.123 ppm to 173.123 ppm\n\n"
                                          "Old RMSD. Direct dimension: 0.5 Xu, indirect dimension: 3.16228Yu\n"
                                          "New RMSD: Direct dimension: 0 Xu, indirect dimension: 1 Yu"
                                       << "RMSD (direct dimension): 0.5 Xu\nRMSD (indirect dimension): 3.16228 Yu"
                                       << 173.123456789;
    }

    void reports()
    {
        QFETCH(QString, nucF1);
        QFETCH(QString, fit);
        QFETCH(QString, rmsd);
        QFETCH(double, referenceF1);
        MagresSpecParams p;
        p.nucF2 = u"1H"_s;
        p.nucF1 = nucF1;
        p.specType = nucF1.isEmpty() ? 0 : 1;
        p.ref = {{u"1H"_s, 31.0}, {u"13C"_s, 170.123456789}};
        const Magres::AxisUnits units{u"Xu"_s, u"Yu"_s};
        QCOMPARE(Magres::rmsdReport(columns(), units, p), rmsd);
        QCOMPARE(Magres::fitReference(columns(), units, p), fit);
        QCOMPARE(p.ref[u"1H"_s].toDouble(), 31.5);
        QCOMPARE(p.ref[u"13C"_s].toDouble(), referenceF1);
    }

    void fittingTwiceChangesNothing()
    {
        MagresSpecParams p;
        p.nucF2 = u"1H"_s;
        Magres::PeakColumns c = columns();
        Magres::fitReference(c, {}, p);
        const QVariantMap fitted = p.ref;
        for (double &position : c.simulatedF2)
            position += 0.5;
        Magres::fitReference(c, {}, p);
        QCOMPARE(p.ref, fitted);
    }

    void columnsOfPeakLists()
    {
        const auto peak = [](const QVariant &position, double height) {
            return QVariant(QVariantMap{{u"Pos"_s, position}, {u"Height"_s, height}});
        };
        const QVariantList simulated{peak(QVariant::fromValue(DoubleVector{5.0, 6.0}), 2.0),
                                     peak(QVariant::fromValue(DoubleVector{7.0}), -1.0)};
        const QVariantList experimental{peak(QVariantList{5.5, 6.5}, 0.0), QVariantMap()};
        const Magres::PeakColumns c = Magres::peakColumns(simulated, experimental);
        QCOMPARE(c.simulatedF2, (Doubles{5, 7}));
        QCOMPARE(c.simulatedF1, (Doubles{6, 0}));
        QCOMPARE(c.heights, (Doubles{2, -1}));
        QCOMPARE(c.experimentalF2, (Doubles{5.5, 0}));
        QCOMPARE(c.experimentalF1, (Doubles{6.5, 0}));
        try {
            Magres::peakColumns(simulated, {});
            QFAIL("no error");
        } catch (const TPluginError &error) {
            QCOMPARE(error.message(),
                     u"The MAGRES spectrum has 2 compound peaks and the experimental spectrum has 0"_s);
        }
    }
};

QTEST_GUILESS_MAIN(tst_Fitting)
#include "tst_fitting.moc"
