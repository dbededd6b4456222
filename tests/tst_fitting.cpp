// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "fitting/PeakPairing.h"
#include "fitting/ReferenceFit.h"
#include "parameters/MapConversion.h"
#include "support/TPluginError.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Magres;
using namespace Qt::StringLiterals;

using Doubles = QList<double>;

static Magres::PeakColumns columns()
{
    return {{7.0, 3.0}, {100.0, 50.0}, {1.0, 1.0}, {3.5, 7.5}, {52.0, 104.0}};
}

static MagresSpecParams record(const char *nucF1, int kind)
{
    MagresSpecParams parameters;
    parameters.fromMap({{u"nucF2"_s, u"1H"_s}, {u"nucF1"_s, QLatin1String(nucF1)}, {u"specType"_s, kind}});
    return parameters;
}

class tst_Fitting : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pairing()
    {
        const double weighted = std::sqrt(7.0 / 4.0);
        for (auto [simulated, experimental, heights, offset, rmsd] :
             {std::tuple(Doubles{10, 20, 30}, Doubles{31, 11, 21}, Doubles{1, 1, 2}, 1.0, 1.0),
              std::tuple(Doubles{10, 20}, Doubles{22, 11}, Doubles{3, 1}, 1.25, weighted),
              std::tuple(Doubles{10, 20}, Doubles{22, 11}, Doubles{-3, 1}, 1.25, weighted),
              std::tuple(Doubles{-5}, Doubles{2.5}, Doubles{0.1}, 7.5, 7.5)}) {
            // The order of the lists does not matter, as long as heights go with their positions.
            for (int turn = 0; turn < 2; ++turn) {
                QCOMPARE(Magres::pairedOffset(simulated, experimental, heights), offset);
                QCOMPARE(Magres::pairedRmsd(simulated, experimental, heights), rmsd);
                std::reverse(simulated.begin(), simulated.end());
                std::reverse(heights.begin(), heights.end());
            }
        }
        // Of simulated peaks in one place, the first gets the largest.
        QCOMPARE(Magres::pairedOffset({10, 10, 10}, {11, 13, 12}, {5, 1, 2}), 24.0 / 8.0 - 5.0 / 8.0);
        for (const Doubles &nothingToWeigh : {Doubles{}, Doubles{0, 0}}) {
            QVERIFY(std::isnan(Magres::pairedOffset(nothingToWeigh, nothingToWeigh, nothingToWeigh)));
            QVERIFY(std::isnan(Magres::pairedRmsd(nothingToWeigh, nothingToWeigh, nothingToWeigh)));
        }
    }

    void reports()
    {
        const char *oneReference = "Reference is changed from 31 ppm to 31.5 ppm\n\nOld RMSD: 0.5 Xu\nNew RMSD: 0 Xu";
        const char *twoReferences = "Direct dimension reference is changed from 31 ppm to 31.5 ppm\n"
                                    "Indirect dimension reference is changed from 170.123 ppm to 173.123 ppm\n\n"
                                    "Old RMSD. Direct dimension: 0.5 Xu, indirect dimension: 3.16228Yu\n"
                                    "New RMSD: Direct dimension: 0 Xu, indirect dimension: 1 Yu";
        const char *bothRmsds = "RMSD (direct dimension): 0.5 Xu\nRMSD (indirect dimension): 3.16228 Yu";
        for (const auto &[nucF1, fit, rmsd, referenceF1] :
             {std::tuple("", oneReference, "RMSD: 0.5 Xu", 170.123456789),
              std::tuple("1H", oneReference, bothRmsds, 170.123456789),
              std::tuple("13C", twoReferences, bothRmsds, 173.123456789)}) {
            MagresSpecParams p = record(nucF1, *nucF1 ? 1 : 0);
            p.ref = {{u"1H"_s, 31.0}, {u"13C"_s, 170.123456789}};
            const Magres::AxisUnits units{u"Xu"_s, u"Yu"_s};
            QCOMPARE(Magres::rmsdReport(columns(), units, p), QLatin1String(rmsd));
            QCOMPARE(Magres::fitReference(columns(), units, p), QLatin1String(fit));
            QCOMPARE(p.ref[u"1H"_s].toDouble(), 31.5);
            QCOMPARE(p.ref[u"13C"_s].toDouble(), referenceF1);
        }
    }

    void recordWithoutReference()
    {
        MagresSpecParams p = record("", 0);
        // Axis units are the host's and may hold anything.
        QCOMPARE(Magres::fitReference(columns(), {u"%2"_s, {}}, p),
                 u"Reference is changed from 100 ppm to 100.5 ppm\n\nOld RMSD: 0.5 %2\nNew RMSD: 0 %2"_s);
    }

    void positionsThatAreNoNumbersChangeNothing()
    {
        const double none = std::nan("");
        const QByteArray simulated = "Peak 2 of the MAGRES spectrum has no position";
        const QByteArray measured = "Peak 2 of the experimental spectrum has no position";
        for (auto [column, kind, nucF1, message] :
             {std::tuple(&Magres::PeakColumns::simulatedF2, 0, "13C", simulated),
              std::tuple(&Magres::PeakColumns::experimentalF2, 1, "1H", measured),
              std::tuple(&Magres::PeakColumns::simulatedF1, 1, "13C", simulated),
              std::tuple(&Magres::PeakColumns::experimentalF1, 1, "13C", measured),
              std::tuple(&Magres::PeakColumns::heights, 0, "",
                         QByteArray("Peak 2 of the MAGRES spectrum has no height"))}) {
            Magres::PeakColumns broken = columns();
            (broken.*column)[1] = none;
            MagresSpecParams p = record(nucF1, kind);
            QCOMPARE(failure([&] { Magres::fitReference(broken, {}, p); }), message);
            QCOMPARE(failure([&] { Magres::rmsdReport(broken, {}, p); }), message);
            QVERIFY(p.ref.isEmpty());
        }
        // The second position of a 1D peak does not count.
        Magres::PeakColumns oneD = columns();
        oneD.simulatedF1 = oneD.experimentalF1 = {none, none};
        QCOMPARE(Magres::rmsdReport(oneD, {}, {}), u"RMSD: 0.5 "_s);
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
        QCOMPARE((QList<Doubles>{c.simulatedF2, c.simulatedF1, c.heights, c.experimentalF2, c.experimentalF1}),
                 (QList<Doubles>{{5, 7}, {6, 0}, {2, -1}, {5.5, 0}, {6.5, 0}}));
        QCOMPARE(failure([&] { Magres::peakColumns(simulated, {}); }),
                 "The MAGRES spectrum has 2 compound peaks and the experimental spectrum has 0");
    }
};

QTEST_GUILESS_MAIN(tst_Fitting)
#include "tst_fitting.moc"
