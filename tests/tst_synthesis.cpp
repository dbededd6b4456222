// SPDX-License-Identifier: BSD-3-Clause
#include "TestNuclei.h"
#include "parameters/DipolarCoupling.h"
#include "parameters/MapConversion.h"
#include "parameters/Nuclei.h"
#include "reading/Bonds.h"
#include "reading/MagresParser.h"
#include "support/TPluginError.h"
#include "synthesis/ParameterStep.h"
#include "synthesis/PeakList.h"
#include "synthesis/SpectrumRecord.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <numeric>

using namespace Qt::StringLiterals;

static bool near(double actual, double expected, double tolerance = 1e-9)
{
    return std::abs(actual - expected) <= tolerance;
}

/// A methyl group, an amine group and a lone hydrogen in a row; the shielding of hydrogen n is n ppm, of others 100 +
/// No.
static MagresData methylamine(const QByteArray &leaveOut = {})
{
    QByteArray atoms, tensors;
    const auto add = [&](const char *element, int number, double x, double y, double z, double shielding) {
        const QByteArray label = element + QByteArray(" ") + QByteArray::number(number);
        atoms += u"atom %1 %2 %3 %4 %5\n"_s.arg(QLatin1String(element), QString::fromLatin1(label))
                     .arg(x)
                     .arg(y)
                     .arg(z)
                     .toLatin1();
        if (label != leaveOut)
            tensors += u"ms %1 %2 0 0 0 %2 0 0 0 %3\n"_s.arg(QString::fromLatin1(label))
                           .arg(shielding)
                           .arg(shielding + 1e-3)
                           .toLatin1();
    };
    add("C", 1, 0, 0, 0, 101);
    add("H", 1, -0.36, 1.03, 0, 1);
    add("H", 2, -0.36, -0.51, 0.89, 2);
    add("H", 3, -0.36, -0.51, -0.89, 3);
    add("N", 1, 1.47, 0, 0, 102);
    add("H", 4, 1.81, 0.95, 0, 4);
    add("H", 5, 1.81, -0.48, 0.82, 5);
    add("H", 6, 1.81, -0.48, -0.82, 6);
    add("H", 7, 1.47, 0, 4.0, 7);
    MagresData data;
    Magres::parseMagres("[atoms]\n" + atoms + "[/atoms]\n[magres]\n" + tensors + "[/magres]\n", data,
                        [](MagresData &read) { Magres::detectBonds(read.atoms); });
    return data;
}

static MagresSpecParams parametersFor(const char *nucF2, const char *nucF1 = nullptr)
{
    MagresSpecParams p;
    p.nucF2 = QString::fromLatin1(nucF2);
    p.specType = nucF1 ? 1 : 0;
    if (nucF1)
        p.nucF1 = QString::fromLatin1(nucF1);
    p.ref = {{u"1H"_s, 30.0}, {u"13C"_s, 170.0}};
    return p;
}

class tst_Synthesis : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hashFormKeepsTheRecord()
    {
        MagresSpecParams p = parametersFor("14N", "1H");
        p.corr = 1;
        p.qShift = {true, false};
        p.slope = {{u"14N"_s, -1.1}};
        p.lw = {{u"14N"_s, 55.5}};
        p.avIdx = 2;
        p.freq = 850.25;
        p.RangeF2 = {-300.5, 12.0};
        p.RangeF1 = {3.0, 9.0};
        p.RangeF1User = true;
        p.pts = 4096;
        p.ptsF2 = 2048;
        p.ptsF1 = 128;
        p.magresDataId = QUuid::createUuid();

        const QVariantHash hash = p.toMap();
        QVERIFY(!hash.contains(u"RangeF2User"_s));
        QCOMPARE(QByteArray(hash[u"qShift"_s].typeName()), QByteArray("QList<int>"));
        QCOMPARE(QByteArray(hash[u"RangeF1"_s].typeName()), QByteArray("std::vector<double,std::allocator<double>>"));
        MagresSpecParams back;
        back.RangeF2User = true;
        back.fromMap(hash);
        QCOMPARE(back.toMap(), hash);
        QCOMPARE(back.qShift, (QList<bool>{true, false}));
        QCOMPARE(back.RangeF1, p.RangeF1);

        p.specType = 0;
        const QVariantHash oneD = p.toMap();
        QVERIFY(!oneD.contains(u"RangeF1"_s) && !oneD.contains(u"RangeF1User"_s));
    }

    void hashDefaults()
    {
        MagresSpecParams p = parametersFor("27Al");
        p.fromMap({{u"ref"_s, u"no map"_s}, {u"freq"_s, u"x"_s}});
        QCOMPARE(p.nucF2, u"1H"_s);
        QCOMPARE(p.nucF1, u"13C"_s);
        QVERIFY(p.qShift.isEmpty() && !p.quadShift(0) && !p.quadShift(1));
        QVERIFY(p.ref.isEmpty());
        QCOMPARE(p.freq, 0.0);
        QCOMPARE((QList<int>{p.pts, p.ptsF2, p.ptsF1, p.specType}), (QList<int>{8192, 1024, 512, 0}));
    }

    void rangesComeInPairs()
    {
        struct Case {
            size_t lengthF2;
            int kind;
            double from2, from1;
        };
        for (const Case &c : {Case{2, 1, 7, 5}, Case{2, 0, 7, 0}, Case{3, 1, 0, 0}, Case{0, 1, 0, 0}}) {
            MagresSpecParams p;
            p.fromMap({{u"RangeF2"_s, QVariant::fromValue(DoubleVector(c.lengthF2, 7.0))},
                       {u"RangeF1"_s, QVariant::fromValue(DoubleVector{5.0, 6.0})},
                       {u"specType"_s, c.kind}});
            QCOMPARE(p.RangeF2[0], c.from2);
            QCOMPARE(p.RangeF1[0], c.from1);
        }
    }

    void settings()
    {
        QTemporaryDir dir;
        QSettings file(dir.filePath(u"settings.ini"_s), QSettings::IniFormat);
        MagresSpecParams fresh;
        fresh.loadSettings(file);
        QCOMPARE((QList<int>{fresh.pts, fresh.ptsF2, fresh.ptsF1}), (QList<int>{8129, 1024, 256}));
        QVERIFY(fresh.nucF2.isEmpty() && fresh.ref.isEmpty());

        MagresSpecParams p = parametersFor("13C", "1H");
        p.avIdx = 1;
        p.corr = 1;
        p.freq = 400.13;
        p.qShift = {true, true};
        p.RangeF2User = true;
        p.saveSettings(file);
        MagresSpecParams back;
        back.loadSettings(file);
        QCOMPARE(back.ref, p.ref);
        QCOMPARE(back.freq, 400.13);
        QCOMPARE((QList<int>{back.avIdx, back.corr, back.specType}), (QList<int>{1, 1, 1}));
        QVERIFY(!back.quadShift(0) && !back.RangeF2User);

        for (const QString &key : file.allKeys())
            file.setValue(key, u"nonsense"_s);
        back.loadSettings(file);
        QVERIFY(back.ref.isEmpty() && back.freq == 0.0 && back.pts == 0);
    }

    void peaksOfSites()
    {
        MagresData data;
        data.fromMap(methylamine().toMap()); // key order, which must not show
        data.atoms.swapItemsAt(0, 8);
        const QList<SpectrumPeak> peaks = Magres::makePeaks(data, parametersFor("1H"), TestNuclei());
        QCOMPARE(peaks.size(), 7);
        for (int i = 0; i < 7; ++i) {
            QVERIFY(near(peaks[i].positionF2, 30.0 - (i + 1) - 1e-3 / 3.0));
            QCOMPARE(peaks[i].labelsF2, QByteArrayList{"H" + QByteArray::number(i + 1)});
            QCOMPARE(peaks[i].height, 1.0);
        }
        QCOMPARE(Magres::makePeaks(data, parametersFor("27Al"), TestNuclei()).size(), 0);
    }

    void methylAveraging_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("labels");
        QTest::addColumn<QList<double>>("heights");
        QTest::newRow("none") << 0 << u"H1 H2 H3 H4 H5 H6 H7"_s.split(u' ') << QList<double>(7, 1.0);
        QTest::newRow("CH3") << 1 << u"H4 H5 H6 H7 H1,H2,H3"_s.split(u' ') << QList<double>{1, 1, 1, 1, 4};
        QTest::newRow("XH3") << 2 << u"H7 H1,H2,H3 H4,H5,H6"_s.split(u' ') << QList<double>{1, 4, 4};
        QTest::newRow("unknown mode") << 9 << u"H1 H2 H3 H4 H5 H6 H7"_s.split(u' ') << QList<double>(7, 1.0);
    }

    void methylAveraging()
    {
        QFETCH(int, mode);
        QFETCH(QStringList, labels);
        QFETCH(QList<double>, heights);
        MagresSpecParams p = parametersFor("1H");
        p.avIdx = mode;
        QStringList found;
        QList<double> foundHeights;
        double sum = 0.0;
        for (const SpectrumPeak &peak : Magres::makePeaks(methylamine(), p, TestNuclei())) {
            found.append(Magres::labelsToStrings(peak.labelsF2).join(u','));
            foundHeights.append(peak.height);
            sum += peak.positionF2 * double(peak.labelsF2.size());
        }
        QCOMPARE(found, labels);
        QCOMPARE(foundHeights, heights);
        QVERIFY(near(sum, 7 * 30.0 - 28.0 - 7e-3 / 3.0)); // averaging keeps the centre of gravity
    }

    void sharedLabelsMerge()
    {
        MagresData data = methylamine();
        for (MagresAtom &atom : data.atoms)
            if (atom.type == "H")
                atom.labels = {"H"};
        for (MagresTensor &tensor : data.shieldings)
            if (tensor.labels[0].startsWith('H'))
                tensor.labels = {"H"};
        MagresSpecParams p = parametersFor("1H");
        p.avIdx = 2;
        const QList<SpectrumPeak> peaks = Magres::makePeaks(data, p, TestNuclei());
        // The first group takes all seven, the second that one peak.
        QCOMPARE(peaks.size(), 1);
        QCOMPARE(peaks[0].height, 1.0 + (1.0 + 7.0));
    }

    void correlations_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QByteArray>("nucF2");
        QTest::addColumn<QByteArray>("nucF1");
        QTest::addColumn<QStringList>("pairs");
        QTest::newRow("strongest C-H: first of equals")
            << 0 << QByteArray("13C") << QByteArray("1H") << QStringList{u"C1 H2"_s};
        QTest::newRow("RSS C-H") << 1 << QByteArray("13C") << QByteArray("1H") << QStringList{u"C1 H2"_s};
        QTest::newRow("strongest H-C: H7 is too far")
            << 0 << QByteArray("1H") << QByteArray("13C") << u"H1 C1,H2 C1,H3 C1,H4 C1,H5 C1,H6 C1"_s.split(u',');
        QTest::newRow("RSS H-C: no bound")
            << 1 << QByteArray("1H") << QByteArray("13C") << u"H1 C1,H2 C1,H3 C1,H4 C1,H5 C1,H6 C1,H7 C1"_s.split(u',');
        QTest::newRow("not with itself") << 1 << QByteArray("13C") << QByteArray("13C") << QStringList();
    }

    void correlations()
    {
        QFETCH(int, mode);
        QFETCH(QByteArray, nucF2);
        QFETCH(QByteArray, nucF1);
        QFETCH(QStringList, pairs);
        MagresSpecParams p = parametersFor(nucF2.constData(), nucF1.constData());
        p.corr = mode;
        const MagresData data = methylamine();
        QStringList found;
        for (const SpectrumPeak &peak : Magres::makePeaks(data, p, TestNuclei())) {
            found.append(QString::fromLatin1(peak.labelsF2[0] + ' ' + peak.labelsF1[0]));
            double sumOfSquares = 0.0, strongest = 0.0;
            for (const MagresAtom &a : data.atoms) {
                for (const MagresAtom &b : data.atoms) {
                    if (a.labels != peak.labelsF2 || b.type != Magres::elementOf(nucF1) || a.recordNo == b.recordNo)
                        continue;
                    const double d = Magres::DipolarCoupling(nucF2, nucF1)(Magres::atomDistance(a, b));
                    sumOfSquares += d * d;
                    strongest = std::max(strongest, std::abs(d));
                }
            }
            QVERIFY(near(peak.height / (mode == 1 ? std::sqrt(sumOfSquares) : strongest), 1.0));
        }
        QCOMPARE(found, pairs);

        // Exactly 3 Angstrom is too far for a strongest partner, and of equal partners the first counts.
        if (mode == 0 && nucF2 == "13C") {
            MagresData line;
            Magres::parseMagres(
                "[atoms]\natom C C 1 0 0 0\natom H H 1 3 0 0\natom H H 2 0 2 0\natom H H 3 0 0 2\n[/atoms]\n"
                "[magres]\nms C 1 1 0 0 0 2 0 0 0 3\nms H 1 1 0 0 0 2 0 0 0 3\nms H 2 1 0 0 0 2 0 0 0 4\n"
                "ms H 3 1 0 0 0 2 0 0 0 5\n[/magres]\n",
                line);
            QCOMPARE(Magres::makePeaks(line, p, TestNuclei())[0].labelsF1, QByteArrayList{"H2"});
            line.atoms.removeLast();
            line.atoms.removeLast();
            QCOMPARE(Magres::makePeaks(line, p, TestNuclei()).size(), 0);
        }
    }

    void averagingOfCrossPeaks()
    {
        MagresSpecParams p = parametersFor("1H", "1H");
        p.avIdx = 2;
        p.corr = 1;
        const MagresData data = methylamine();
        const QList<SpectrumPeak> single = [&] {
            MagresSpecParams none = p;
            none.avIdx = 0;
            return Magres::makePeaks(data, none, TestNuclei());
        }();
        QCOMPARE(single.size(), 7);
        const QList<SpectrumPeak> merged = Magres::makePeaks(data, p, TestNuclei());
        double heights = 0.0;
        for (const SpectrumPeak &peak : merged) {
            heights += peak.height;
            if (peak.labelsF2.size() == 3)
                QVERIFY(near(peak.positionF2, peak.labelsF2[0] == "H1" ? 28.0 - 1e-3 / 3.0 : 25.0 - 1e-3 / 3.0));
            if (peak.labelsF1.size() == 3)
                QVERIFY(near(peak.positionF1, peak.labelsF1[0] == "H1" ? 28.0 - 1e-3 / 3.0 : 25.0 - 1e-3 / 3.0));
        }
        // Every site and every partner but H7 is in a group; each merging step adds 1.0 for its fresh peak.
        for (const SpectrumPeak &peak : merged)
            QVERIFY(peak.labelsF1.size() == 3 && (peak.labelsF2.size() == 3 || peak.labelsF2 == QByteArrayList{"H7"}));
        double singleHeights = 0.0;
        for (const SpectrumPeak &peak : single)
            singleHeights += peak.height;
        QVERIFY(heights > singleHeights + double(merged.size()) - 1e-9);
        QVERIFY(near(std::remainder(heights - singleHeights, 1.0), 0.0));
    }

    void missingShieldingEndsIt()
    {
        for (const auto &[without, message] : {std::pair("C 1", "Atom C1 has no chem. shift"),
                                               std::pair("H 3", "Atom H3 has no chem. shift"), std::pair("N 1", "")}) {
            QString found;
            try {
                Magres::makePeaks(methylamine(without), parametersFor("13C", "1H"), TestNuclei());
            } catch (const TPluginError &error) {
                found = error.message();
            }
            QCOMPARE(found, QLatin1String(message));
        }
    }

    void shiftRanges()
    {
        // lo, hi, from, to: plain, a single value, two that the boxes cannot tell apart, two that they can
        for (const auto &[lo, hi, from, to] : {std::array{0.0, 100.0, -10.0, 111.0}, std::array{50.0, 50.0, 38.0, 62.2},
                                               std::array{50.0, 50.004, 38.0 - 4e-4, 50.004 + 10 + 0.1 * 22.0044},
                                               std::array{50.0, 50.02, 49.998, 50.0222}}) {
            const auto range = Magres::displayRange({lo, hi});
            QVERIFY2(near(range[0], from) && near(range[1], to), qPrintable(QString::number(range[0], 'g', 12)));
        }
    }

    void openParametersAreFilledIn()
    {
        const TestNuclei nuclei;
        const MagresData data = methylamine("H 7");
        QCOMPARE(Magres::observableNuclei(data), u"13C 1H 2H 14N 15N"_s.split(u' '));

        MagresSpecParams p;
        Magres::completeParameters(data, p, nuclei);
        QCOMPARE(p.nucF2, u"13C"_s);
        QVERIFY(p.nucF1.isEmpty()); // 1D does not touch F1
        QCOMPARE(p.pts, 8192);
        QCOMPARE(p.lw[u"13C"_s].toDouble(), 30.0);
        QCOMPARE(p.ref[u"13C"_s].toDouble(), 100.0);
        QVERIFY(near(p.RangeF2[0], -1.0 - 1e-3 / 3.0 - 12.0));

        MagresSpecParams twoD = parametersFor("29Si", "");
        twoD.ptsF2 = 1000;
        twoD.ptsF1 = 256;
        twoD.RangeF2 = {1.0, 2.0};
        twoD.RangeF2User = true;
        twoD.qShift.clear();
        twoD.lw = {{u"1H"_s, 77.0}};
        Magres::completeParameters(data, twoD, nuclei);
        QCOMPARE(twoD.nucF2, u"13C"_s); // the first on offer
        QCOMPARE(twoD.nucF1, u"1H"_s);
        QCOMPARE((QList<int>{twoD.ptsF2, twoD.ptsF1}), (QList<int>{8192, 256}));
        QCOMPARE(twoD.RangeF2, (std::array<double, 2>{1.0, 2.0}));
        QVERIFY(near(twoD.RangeF1[1], 29.0 - 1e-3 / 3.0 + 0.1 * (5.0 + 0.5))); // H7 has no shielding and does not count
        QCOMPARE(twoD.lw[u"1H"_s].toDouble(), 77.0);
        QCOMPARE(twoD.qShift, (QList<bool>{false, false}));

        MagresSpecParams homonuclear = parametersFor("1H", "1H");
        Magres::completeParameters(data, homonuclear, nuclei);
        QCOMPARE(homonuclear.lw[u"1H"_s].toDouble(), 1.0); // F1 is written last

        MagresSpecParams empty;
        Magres::completeParameters(MagresData(), empty, nuclei);
        QVERIFY(empty.nucF2.isEmpty() && near(empty.RangeF2[0], -12.0) && near(empty.RangeF2[1], 12.2));
    }

    void axes()
    {
        MagresSpecParams p = parametersFor("1H");
        p.freq = 600.0;
        p.pts = 8192;
        for (const std::array<double, 2> range : {std::array{10.0, 0.0}, std::array{0.0, 10.0}}) {
            p.RangeF2 = range;
            const Magres::SpectrumDimension d = Magres::dimensions(p)[0];
            QVERIFY(near(d.width, 6000.0) && near(d.reference, 3000.0));
            QVERIFY(near(d.axis().first, 6000.0 / 600.003));
            QVERIFY(near(d.axis().step, -6000.0 / 8192 / 600.003));
        }
    }

    void hostRecord()
    {
        MagresData data = methylamine();
        MagresSpecParams p = parametersFor("1H", "13C");
        p.ptsF2 = 256;
        p.ptsF1 = 128;
        p.corr = 1;
        p.avIdx = 1;
        p.lw = {{u"1H"_s, 300.0}, {u"13C"_s, 150.0}};
        Magres::completeParameters(data, p, TestNuclei());
        const Magres::GeneratedSpectrum spectrum = Magres::generateSpectrum(data, p, TestNuclei());

        QCOMPARE(spectrum.data[u"Length"_s].value<QList<int>>(), (QList<int>{256, 128, 1, 1, 1, 1, 1, 1}));
        const QVariantMap info = spectrum.data[u"SpecInfo"_s].toMap();
        QCOMPARE(info, spectrum.specInfo);
        QCOMPARE(info[u"OrigFileFormat"_s].toInt(), 1002);
        QCOMPARE(info[u"ExperimentType"_s].toInt(), 148);
        QCOMPARE(info[u"SpectrumType"_s].value<SignedCharVector>(), SignedCharVector(8, 1));
        const auto frequencies = info[u"SpectrometerFrequencies"_s].value<DoubleVector>();
        QVERIFY(frequencies.size() == 8 && near(frequencies[0], 600.0) && near(frequencies[1], 600 * 188.64 / 750.03)
                && frequencies[2] == 400.0);
        const auto stored = info[u"OriginalParameters"_s].value<QMap<QString, QVariantHash>>();
        QCOMPARE(stored[u"magres"_s], p.toMap());
        QCOMPARE(stored[u"magres"_s][u"magresDataId"_s].toUuid(), data.ID);

        const auto points = spectrum.data[u"DataPoints"_s].value<QList<DoubleVector>>();
        QCOMPARE(points.size(), 2);
        QCOMPARE(points[0].size(), size_t(256 * 128));
        QCOMPARE(points[1], DoubleVector(256 * 128, 0.0));

        const QVariantMap peakMap = spectrum.data[u"Peaks"_s].toMap();
        QCOMPARE(peakMap[u"PosUnits"_s].value<QList<int>>(), (QList<int>{3, 3, 1}));
        const QVariantList peaks = peakMap[u"PeakList"_s].toList();
        QCOMPARE(peaks.size(), 5); // H4 to H7 and the methyl group
        QCOMPARE(peaks[0].toMap()[u"PeakLabel"_s].toString(), u"H1,H2,H3,C1"_s);
        QCOMPARE(peaks[4].toMap()[u"PeakLabel"_s].toString(), u"H7,C1"_s);
        double previous = 1e9;
        double volume = 0.0;
        for (const QVariant &entry : peaks) {
            const QVariantMap peak = entry.toMap();
            const auto position = peak[u"Pos"_s].value<DoubleVector>();
            QVERIFY(position[0] < previous);
            previous = position[0];
            const auto width = peak[u"Width"_s].value<DoubleVector>();
            QVERIFY(near(width[0], 0.5, 1e-4) && near(width[1], 0.9939, 1e-2));
            QCOMPARE(peak[u"peakType"_s].toInt(), 1);
            QVERIFY(!peak[u"ID"_s].toUuid().isNull());
            volume += peak[u"Height"_s].toDouble() * width[0] * width[1];
        }
        // The area under a Gaussian of unit height and width is sqrt(pi / (4 ln 2)).
        const QList<Magres::SpectrumDimension> d = Magres::dimensions(p);
        const double sum =
            std::accumulate(points[0].begin(), points[0].end(), 0.0) * d[0].axis().step * d[1].axis().step;
        QVERIFY(near(sum / (volume * 3.14159265358979 / (4 * std::log(2.0))), 1.0, 1e-3));
    }

    void impossibleSizes()
    {
        struct Case {
            int ptsF2, ptsF1;
            double frequency = 600.0, from = 0.0;
        };
        const double infinite = std::numeric_limits<double>::infinity();
        for (const Case &c : {Case{1 << 26, 1024}, Case{65536, 65536}, Case{0, 128}, Case{128, -128},
                              Case{128, 128, 0.0}, Case{128, 128, std::nan("")}, Case{128, 128, 600.0, infinite}}) {
            MagresSpecParams p = parametersFor("1H", "13C");
            p.ptsF2 = c.ptsF2;
            p.ptsF1 = c.ptsF1;
            p.freq = c.frequency;
            p.RangeF2[0] = c.from;
            QVERIFY_THROWS_EXCEPTION(TPluginError, Magres::generateSpectrum(methylamine(), p, TestNuclei()));
        }
    }
};

QTEST_GUILESS_MAIN(tst_Synthesis)
#include "tst_synthesis.moc"
