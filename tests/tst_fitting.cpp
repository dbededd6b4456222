// SPDX-License-Identifier: BSD-3-Clause
#include "fitting/PeakPairing.h"
#include "fitting/ReferenceFit.h"
#include "parameters/MapConversion.h"
#include "support/TPluginError.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using Doubles = QList<double>;

class tst_Fitting : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pairing_data();
    void pairing();
    void nothingToWeigh_data();
    void nothingToWeigh();
    void reports_data();
    void reports();
    void fittingTwiceChangesNothing();
    void columnsOfPeakLists();
};

void tst_Fitting::pairing_data()
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

void tst_Fitting::pairing()
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

void tst_Fitting::nothingToWeigh_data()
{
    QTest::addColumn<Doubles>("positions");
    QTest::newRow("no peaks") << Doubles{};
    QTest::newRow("zero heights") << Doubles{1, 2};
}

void tst_Fitting::nothingToWeigh()
{
    QFETCH(Doubles, positions);
    const Doubles heights(positions.size(), 0.0);
    QVERIFY(std::isnan(Magres::pairedOffset(positions, positions, heights)));
    QVERIFY(std::isnan(Magres::pairedRmsd(positions, positions, heights)));
}

static Magres::PeakColumns columns()
{
    return {{7.0, 3.0}, {100.0, 50.0}, {1.0, 1.0}, {3.5, 7.5}, {52.0, 104.0}};
}

void tst_Fitting::reports_data()
{
    QTest::addColumn<QString>("nucF1"); // none in 1D
    QTest::addColumn<QString>("fit");
    QTest::addColumn<QString>("rmsd");
    QTest::addColumn<double>("referenceF1");
    QTest::newRow("1D") << QString()
                        << "Reference is changed from 31 ppm to 31.5 ppm\n\nOld RMSD: 0.5 Xu\nNew RMSD: 0 Xu"
                        << "RMSD: 0.5 Xu" << 170.123456789;
    QTest::newRow("homonuclear") << "1H"
                                 << "Reference is changed from 31 ppm to 31.5 ppm\n\nOld RMSD: 0.5 Xu\nNew RMSD: 0 Xu"
                                 << "RMSD (direct dimension): 0.5 Xu\nRMSD (indirect dimension): 3.16228 Yu"
                                 << 170.123456789;
    QTest::newRow("heteronuclear") << "13C"
                                   << "Direct dimension reference is changed from 31 ppm to 31.5 ppm\n"
                                      "Indirect dimension reference is changed from 170.123 ppm to 173.123 ppm\n\n"
                                      "Old RMSD. Direct dimension: 0.5 Xu, indirect dimension: 3.16228Yu\n"
                                      "New RMSD: Direct dimension: 0 Xu, indirect dimension: 1 Yu"
                                   << "RMSD (direct dimension): 0.5 Xu\nRMSD (indirect dimension): 3.16228 Yu"
                                   << 173.123456789;
}

void tst_Fitting::reports()
{
    QFETCH(QString, nucF1);
    QFETCH(QString, fit);
    QFETCH(QString, rmsd);
    QFETCH(double, referenceF1);
    MagresSpecParams p;
    p.nucF2 = QStringLiteral("1H");
    p.nucF1 = nucF1;
    p.specType = nucF1.isEmpty() ? 0 : 1;
    p.ref = {{QStringLiteral("1H"), 31.0}, {QStringLiteral("13C"), 170.123456789}};
    const Magres::AxisUnits units{QStringLiteral("Xu"), QStringLiteral("Yu")};
    QCOMPARE(Magres::rmsdReport(columns(), units, p), rmsd);
    QCOMPARE(Magres::fitReference(columns(), units, p), fit);
    QCOMPARE(p.ref[QStringLiteral("1H")].toDouble(), 31.5);
    QCOMPARE(p.ref[QStringLiteral("13C")].toDouble(), referenceF1);
}

void tst_Fitting::fittingTwiceChangesNothing()
{
    MagresSpecParams p;
    p.nucF2 = QStringLiteral("1H");
    Magres::PeakColumns c = columns();
    Magres::fitReference(c, {}, p);
    const QVariantMap fitted = p.ref;
    for (double &position : c.simulatedF2)
        position += 0.5;
    Magres::fitReference(c, {}, p);
    QCOMPARE(p.ref, fitted);
}

void tst_Fitting::columnsOfPeakLists()
{
    const auto peak = [](const QVariant &position, double height) {
        return QVariant(QVariantMap{{QStringLiteral("Pos"), position}, {QStringLiteral("Height"), height}});
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
                 QStringLiteral("The MAGRES spectrum has 2 compound peaks and the experimental spectrum has 0"));
    }
}

QTEST_GUILESS_MAIN(tst_Fitting)
#include "tst_fitting.moc"
