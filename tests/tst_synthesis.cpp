// SPDX-License-Identifier: BSD-3-Clause
#include "Crystals.h"
#include "Failure.h"
#include "Literal.h"
#include "TestData.h"
#include "TestNuclei.h"
#include "parameters/DipolarCoupling.h"
#include "parameters/MapConversion.h"
#include "parameters/Nuclei.h"
#include "reading/Bonds.h"
#include "support/TPluginError.h"
#include "synthesis/ParameterStep.h"
#include "synthesis/PeakList.h"
#include "synthesis/Sites.h"
#include "synthesis/SpectrumRecord.h"

#include <QtTest>

#include <cmath>
#include <numeric>

using namespace Magres;
using namespace Qt::StringLiterals;

static bool near(double actual, double expected, double tolerance = 1e-9)
{
    return std::abs(actual - expected) <= tolerance;
}

/// A methyl group, an amine group and a lone hydrogen in a row; the shielding of hydrogen n is n ppm, of others 101
/// ppm.
static MagresData methylamine(const QByteArray &withoutShielding = {})
{
    static const struct {
        const char *element;
        int number;
        Position position;
    } sites[] = {{"C", 1, {0, 0, 0}},
                 {"H", 1, {-0.36, 1.03, 0}},
                 {"H", 2, {-0.36, -0.51, 0.89}},
                 {"H", 3, {-0.36, -0.51, -0.89}},
                 {"N", 1, {1.47, 0, 0}},
                 {"H", 4, {1.81, 0.95, 0}},
                 {"H", 5, {1.81, -0.48, 0.82}},
                 {"H", 6, {1.81, -0.48, -0.82}},
                 {"H", 7, {1.47, 0, 4.0}}};
    MagresData data;
    for (const auto &[element, number, position] : sites) {
        MagresAtom &atom = addAtom(data, element, number);
        atom.pos = position;
        const double shielding = *element == 'H' ? number : 101;
        if (atom.labels[0] != withoutShielding)
            data.shieldings.append({atom.labels, number, {shielding, 0, 0, 0, shielding, 0, 0, 0, shielding + 1e-3}});
    }
    Magres::detectBonds(data.atoms);
    return data;
}

static MagresSpecParams parametersFor(const QString &nucF2, const QString &nucF1 = {})
{
    MagresSpecParams p;
    p.nucF2 = nucF2;
    p.nucF1 = nucF1;
    p.specType = nucF1.isNull() ? 0 : 1;
    p.ref = {{u"1H"_s, 30.0}, {u"13C"_s, 170.0}};
    return p;
}

/// The cross peaks against those of every pair, with every image tried.
static void comparePartners(const MagresData &data, const std::array<Position, 3> &cell)
{
    for (const auto &[f2, f1, mode] :
         {std::tuple("13C", "1H", 0), std::tuple("1H", "1H", 0), std::tuple("1H", "13C", 0), std::tuple("13C", "1H", 1),
          std::tuple("1H", "1H", 1), std::tuple("1H", "13C", 1)}) {
        const Magres::DipolarCoupling coupling(f2, f1);
        MagresSpecParams p = parametersFor(QString::fromLatin1(f2), QString::fromLatin1(f1));
        p.corr = mode;
        const QList<SpectrumPeak> peaks = Magres::makePeaks(data, p, TestNuclei());
        auto peak = peaks.begin();
        for (const MagresAtom &a : data.atoms) {
            double strongest = 0.0, sumOfSquares = 0.0;
            QByteArrayList partner;
            for (const MagresAtom &b : data.atoms) {
                const double r = Literal::shortestImage(Magres::minus(a.pos, b.pos), cell);
                if (a.type != Magres::elementOf(f2) || b.type != Magres::elementOf(f1) || a.recordNo == b.recordNo
                    || (mode == 0 && r >= 3.0))
                    continue;
                const double d = std::abs(coupling(r));
                sumOfSquares += d * d;
                if (d > strongest * (1.0 + 1e-9)) {
                    strongest = d;
                    partner = b.labels;
                }
            }
            if (partner.isEmpty())
                continue;
            QVERIFY(peak != peaks.end());
            QCOMPARE(peak->labelsF2, a.labels);
            QCOMPARE(peak->labelsF1, partner);
            QVERIFY(near(peak->height / (mode == 1 ? std::sqrt(sumOfSquares) : strongest), 1.0, 1e-8));
            ++peak;
        }
        QVERIFY(peak == peaks.end() && !peaks.isEmpty());
    }
}

class tst_Synthesis : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Every key and value, as spectra in documents keep them and settings files of users have them.
    void keptForms()
    {
        registerSharedMetaTypes();
        const QVariantMap slope{{u"1H"_s, -0.9}}, ref{{u"1H"_s, 31.0}}, lw{{u"14N"_s, 45.0}};
        const auto range = [](double from, double to) { return QVariant::fromValue(DoubleVector{from, to}); };
        QVariantHash kept{{u"corr"_s, 1},           {u"nucF1"_s, u"1H"_s},   {u"nucF2"_s, u"14N"_s},
                          {u"slope"_s, slope},      {u"ref"_s, ref},         {u"lw"_s, lw},
                          {u"avIdx"_s, 2},          {u"freq"_s, 850.25},     {u"pts"_s, 4096},
                          {u"ptsF2"_s, 2048},       {u"ptsF1"_s, 128},       {u"specType"_s, 1},
                          {u"RangeF2User"_s, true}, {u"RangeF1User"_s, true}};
        kept.insert({{u"magresDataId"_s, QUuid::createUuid()}, {u"qShift"_s, QVariant::fromValue(QList<int>{0, 1})}});
        kept.insert({{u"RangeF2"_s, range(-300.5, 12.0)}, {u"RangeF1"_s, range(3.0, 9.0)}});
        MagresSpecParams p;
        p.fromMap(kept);
        QCOMPARE(p.toMap(), kept);
        QCOMPARE((QVariantList{p.corr, p.nucF1, p.nucF2, p.slope, p.ref, p.lw, p.avIdx, p.freq, p.pts, p.ptsF2, p.ptsF1,
                               p.specType}),
                 (QVariantList{1, u"1H"_s, u"14N"_s, slope, ref, lw, 2, 850.25, 4096, 2048, 128, 1}));
        QCOMPARE(p.qShift, (QList<bool>{false, true}));
        QVERIFY(p.RangeF2 == (std::array{-300.5, 12.0}) && p.RangeF1 == (std::array{3.0, 9.0}));
        QCOMPARE(QByteArray(p.toMap()[u"qShift"_s].typeName()), QByteArray("QList<int>"));
        QCOMPARE(QByteArray(p.toMap()[u"RangeF1"_s].typeName()), "std::vector<double,std::allocator<double>>");
        MagresSpecParams back = p;
        back.specType = 0;
        back.RangeF2User = false;
        for (const char *key : {"RangeF1", "RangeF1User", "RangeF2User"})
            QVERIFY2(!back.toMap().contains(QLatin1String(key)), key);
        back.RangeF2User = true;
        back.fromMap({});
        QVERIFY(!back.RangeF2User);

        QTemporaryDir dir;
        QSettings file(dir.filePath(u"settings.ini"_s), QSettings::IniFormat);
        MagresSpecParams ofANewUser;
        ofANewUser.loadSettings(file);
        QCOMPARE((QVariantList{ofANewUser.pts, ofANewUser.ptsF2, ofANewUser.ptsF1, ofANewUser.nucF2, ofANewUser.ref,
                               ofANewUser.freq}),
                 (QVariantList{8129, 1024, 256, QString(), QVariantMap(), 600.0}));
        p.saveSettings(file);
        const QVariantMap settings{{u"nucF1"_s, u"1H"_s}, {u"nucF2"_s, u"14N"_s}, {u"slope"_s, slope},
                                   {u"ref"_s, ref},       {u"lw"_s, lw},          {u"freq"_s, 850.25},
                                   {u"pts"_s, 4096},      {u"ptsF2"_s, 2048},     {u"ptsF1"_s, 128},
                                   {u"avIdx"_s, 2},       {u"specType"_s, 1},     {u"correlation"_s, 1}};
        QVariantMap stored;
        for (const QString &key : file.allKeys())
            stored.insert(QString(key).remove(u"magresPlugin/"_s), file.value(key));
        QCOMPARE(stored, settings);
        MagresSpecParams loaded;
        loaded.loadSettings(file);
        // Of the rest, a new record's.
        kept.insert({{u"magresDataId"_s, QUuid()}, {u"qShift"_s, QVariant::fromValue(QList<int>{0, 0})}});
        kept.insert({{u"RangeF2"_s, range(0.0, 1.0)}, {u"RangeF1"_s, range(0.0, 1.0)}});
        kept.removeIf([](const auto &entry) { return entry.key().endsWith(u"User"_s); });
        QCOMPARE(loaded.toMap(), kept);
    }

    void hashDefaults()
    {
        MagresSpecParams p = parametersFor(u"27Al"_s);
        p.fromMap(hash("{'ref': 'no map', 'freq': 'x'}"));
        QVERIFY(p.qShift.isEmpty() && !p.quadShift(0) && !p.quadShift(1));
        QCOMPARE((QVariantList{p.nucF2, p.nucF1, p.ref, p.freq, p.pts, p.ptsF2, p.ptsF1, p.specType, p.corr, p.avIdx}),
                 (QVariantList{u"1H"_s, u"13C"_s, QVariantMap(), 0.0, 8192, 1024, 512, 0, 0, 0}));

        // Ranges come in pairs: length of the one in F2, kind of spectrum, what is taken over
        for (const auto &[length, kind, from2, from1] :
             {std::tuple(2, 1, 7.0, 5.0), std::tuple(2, 0, 7.0, 0.0), std::tuple(3, 1, 0.0, 0.0)}) {
            p = {};
            p.fromMap({{u"RangeF2"_s, QVariant::fromValue(DoubleVector(size_t(length), 7.0))},
                       {u"RangeF1"_s, QVariant::fromValue(DoubleVector{5.0, 6.0})},
                       {u"specType"_s, kind}});
            QCOMPARE((QList<double>{p.RangeF2[0], p.RangeF1[0]}), (QList<double>{from2, from1}));
        }
    }

    void methylAveraging()
    {
        MagresData data = methylamine();
        data.atoms.swapItemsAt(0, 8); // as in a stored document, which must not show
        QVERIFY(Magres::makePeaks(data, parametersFor(u"27Al"_s), TestNuclei()).isEmpty());
        MagresSpecParams p = parametersFor(u"1H"_s);
        for (const auto &[mode, expected] :
             {std::pair(0, "H1:1 H2:1 H3:1 H4:1 H5:1 H6:1 H7:1"), std::pair(1, "H4:1 H5:1 H6:1 H7:1 H1,H2,H3:4"),
              std::pair(2, "H7:1 H1,H2,H3:4 H4,H5,H6:4"), std::pair(9, "H1:1 H2:1 H3:1 H4:1 H5:1 H6:1 H7:1")}) {
            p.avIdx = mode;
            QByteArrayList found;
            double sum = 0.0;
            for (const SpectrumPeak &peak : Magres::makePeaks(data, p, TestNuclei())) {
                found.append(peak.labelsF2.join(',') + ':' + QByteArray::number(peak.height));
                sum += peak.positionF2 * double(peak.labelsF2.size());
            }
            QCOMPARE(found.join(' '), expected);
            QVERIFY(near(sum, 7 * 30.0 - 28.0 - 7e-3 / 3.0)); // averaging keeps the centre of gravity
        }
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
        MagresSpecParams p = parametersFor(u"1H"_s);
        p.avIdx = 2;
        const QList<SpectrumPeak> peaks = Magres::makePeaks(data, p, TestNuclei());
        // The first group takes all seven, the second that one peak.
        QCOMPARE(peaks.size(), 1);
        QCOMPARE(peaks[0].height, 1.0 + (1.0 + 7.0));
        QCOMPARE(peaks[0].atomsF2, (QList<qint32>{1, 2, 3, 5, 6, 7, 8}));
        // Seen through partners that share a label too, with the atoms in the order of the peaks.
        MagresSpecParams both = parametersFor(u"1H"_s, u"1H"_s);
        both.avIdx = 2;
        const QList<SpectrumPeak> cross = Magres::makePeaks(data, both, TestNuclei());
        QCOMPARE(cross.size(), 1);
        QCOMPARE(cross[0].atomsF2, (QList<qint32>{1, 2, 3, 5, 6, 7}));
        QCOMPARE(cross[0].atomsF1, (QList<qint32>{2, 1, 6, 7, 3, 5}));
        // Without averaging each of them is its own atom's, whatever it is called.
        p.avIdx = 0;
        QList<qint32> atoms;
        for (const SpectrumPeak &peak : Magres::makePeaks(data, p, TestNuclei()))
            atoms += peak.atomsF2;
        QCOMPARE(atoms, (QList<qint32>{1, 2, 3, 5, 6, 7, 8}));
    }

    void partnersWithoutALattice() { comparePartners(methylamine(), {{{1e3, 0, 0}, {0, 1e3, 0}, {0, 0, 1e3}}}); }

    void distancesOfPartners()
    {
        for (const auto &[distance, strongest, rss] :
             {std::tuple(0.0, false, false), std::tuple(0.00099, false, false), std::tuple(0.00101, true, false),
              std::tuple(0.0099, true, false), std::tuple(0.0101, true, true), std::tuple(2.9999, true, true),
              std::tuple(3.0, false, true), std::tuple(400.0, false, true)}) {
            MagresData data = methylamine();
            data.atoms.resize(2); // a carbon and a hydrogen
            data.atoms[1].pos = {0, -distance, 0};
            MagresSpecParams p = parametersFor(u"13C"_s, u"1H"_s);
            QCOMPARE(Magres::makePeaks(data, p, TestNuclei()).size(), strongest ? 1 : 0);
            p.corr = 1;
            QCOMPARE(Magres::makePeaks(data, p, TestNuclei()).size(), rss ? 1 : 0);
        }
    }

    /// Partners and couplings are those of the nearest images, whichever images and lattice vectors the file has, with
    /// another number of cells of the search along each axis.
    void partnersAcrossTheCell()
    {
        static const struct {
            std::array<Position, 3> cell;
            int atoms, images; // the images along each axis that atoms are taken from
            Position from, to;
        } cases[] = {{{{{4.5, 0, 0}, {0.7, 10.5, 0}, {-0.4, 1.1, 23}}}, 150, 1, {-2, -5, -11}, {4, 10, 23}},
                     // almost empty, with the atoms about a corner
                     {{{{60, 0, 0}, {3, 33, 0}, {-2, 4, 90}}}, 40, 1, {-4, -3, -5}, {4, 5, 6}},
                     // so small that atoms are close to their own images
                     {{{{3.4, 0, 0}, {0.3, 4.1, 0}, {-0.2, 0.4, 4.6}}}, 9, 5, {0, 0, 0}, {3, 4, 5}}};
        Crystals::Random random(17);
        for (const auto &[cell, atoms, images, from, to] : cases) {
            for (const std::array<std::size_t, 3> &axes :
                 {std::array<std::size_t, 3>{0, 1, 2}, {2, 1, 0}, {1, 2, 0}, {0, 2, 1}}) {
                std::array<Position, 3> given = {cell[axes[0]], cell[axes[1]], cell[axes[2]]};
                if (axes[2] != 1) {
                    given[2] = Magres::plusScaled(given[2], 23.0, given[0]);
                    given[1] = Magres::plusScaled(given[1], -7.0, given[2]);
                }
                MagresData data;
                for (const Position &vector : given)
                    data.lattice.append({vector[0], vector[1], vector[2]});
                for (int i = 0; i < atoms; ++i) {
                    MagresAtom &atom = addAtom(data, i % 4 == 0 ? "C" : "H", i);
                    for (std::size_t axis = 0; axis < 3; ++axis)
                        atom.pos[axis] = random.uniform(from[axis], to[axis]);
                    for (const Position &vector : cell)
                        atom.pos = Magres::plusScaled(atom.pos, random.below(images) - images / 2, vector);
                    data.shieldings.append({atom.labels, atom.No, {1, 0, 0, 0, 1, 0, 0, 0, 1}});
                }
                comparePartners(data, cell);
            }
        }
    }

    /// Of partners that only the rounding of a lattice translation tells apart, the first one; without a lattice, and
    /// with one that is none, what the numbers say.
    void equalPartnersAcrossTheCell()
    {
        MagresData data = methylamine();
        data.atoms.resize(3); // a carbon and two hydrogens
        data.atoms[0].pos = {0.0, 0.0, 0.0};
        data.atoms[1].pos = {1.0, 0.0, 0.0};
        data.atoms[2].pos = {3.1, 0.0, 0.0}; // of which an image lies at 3.1 - 4.1, less than 1 away in doubles
        for (const CorrelationMode mode : {CorrelationMode::StrongestDipolar, CorrelationMode::RssDipolar}) {
            MagresSpecParams p = parametersFor(u"13C"_s, u"1H"_s);
            p.corr = qint32(mode);
            const auto partner = [&](const QList<double> &lattice) {
                data.lattice = lattice;
                return Magres::makePeaks(data, p, TestNuclei())[0].labelsF1;
            };
            const QList<double> cube = {4.1, 0, 0, 0, 4.1, 0, 0, 0, 4.1};
            QCOMPARE(partner(cube), QByteArrayList{"H1"});
            std::swap(data.atoms[1].pos, data.atoms[2].pos);
            QCOMPARE(partner(cube), QByteArrayList{"H1"});
            for (const QList<double> &none : {QList<double>{}, QList<double>{4.1, 0, 0, 0, 4.1, 0, 8.2, 0, 0}})
                QCOMPARE(partner(none), QByteArrayList{"H2"});
            std::swap(data.atoms[1].pos, data.atoms[2].pos);
        }
    }

    /// Peak by peak: labels, atoms, positions and heights, in the order of the list.
    void averagedCrossPeaks()
    {
        MagresSpecParams p = parametersFor(u"13C"_s, u"1H"_s);
        p.ref = {{u"1H"_s, 30.0}, {u"13C"_s, 200.0}};
        const auto described = [&p] {
            QByteArrayList lines;
            const auto side = [](const QByteArrayList &labels, const QList<qint32> &atoms, double position) {
                QByteArrayList numbers;
                for (qint32 atom : atoms)
                    numbers.append(QByteArray::number(atom));
                return labels.join('+') + '(' + numbers.join('+') + ") " + QByteArray::number(position, 'f', 2);
            };
            for (const SpectrumPeak &peak : Magres::makePeaks(methylamine(), p, TestNuclei()))
                lines.append(side(peak.labelsF2, peak.atomsF2, peak.positionF2) + " x "
                             + side(peak.labelsF1, peak.atomsF1, peak.positionF1) + ": "
                             + QByteArray::number(peak.height, 'f', 3));
            return lines;
        };
        // The carbon has a partner in the group; the hydrogens have the carbon each. Couplings in kHz by the distances,
        // and 1 for each fresh peak.
        p.avIdx = 1;
        QCOMPARE(described(), QByteArrayList{"C1(0) 99.00 x H1+H2+H3(2+1+3) 28.00: 48.031"});
        std::swap(p.nucF2, p.nucF1);
        QCOMPARE(described(),
                 (QByteArrayList{"H4(5) 26.00 x C1(0) 99.00: 7.074", "H5(6) 25.00 x C1(0) 99.00: 7.073",
                                 "H6(7) 24.00 x C1(0) 99.00: 7.073", "H1+H2+H3(1+2+3) 28.00 x C1(0) 99.00: 141.579"}));
        // Averaged in both: partners are the nearest, of which H1 has H2, and H2 and H3 have H1.
        p.nucF1 = u"1H"_s;
        p.corr = 1;
        p.avIdx = 2;
        QCOMPARE(described(),
                 (QByteArrayList{"H1+H2+H3(1+2+3) 28.00 x H1+H2+H3(2+1+3) 28.00: 203.362",
                                 "H7(8) 23.00 x H4+H5+H6(6+5+7) 25.00: 11.038",
                                 "H4+H5+H6(5+7+6) 25.00 x H4+H5+H6(6+7+5) 25.00: 247.539"}));
    }

    void shieldingsThatAreMissingEndIt()
    {
        for (const auto &[without, message] : {std::pair("C1", "Atom C1 has no chem. shift"),
                                               std::pair("H3", "Atom H3 has no chem. shift"), std::pair("N1", "")}) {
            const MagresSpecParams p = parametersFor(u"13C"_s, u"1H"_s);
            QCOMPARE(failure([&] { Magres::makePeaks(methylamine(without), p, TestNuclei()); }), message);
        }
        MagresData data = methylamine();
        data.shieldings[3].tensor[0] = std::nan("");
        QCOMPARE(failure([&] { Magres::makePeaks(data, parametersFor(u"1H"_s), TestNuclei()); }),
                 "Atom H3 has no chem. shift");
    }

    /// The numbers that a record without entries, or with impossible ones, is simulated, shown and fitted with.
    void fallBacks()
    {
        MagresSpecParams p = parametersFor(u"13C"_s);
        p.ref = {{u"1H"_s, std::nan("")}, {u"15N"_s, u"x"_s}};
        p.slope = p.lw = p.ref;
        for (const char *missing : {"13C", "1H"}) {
            const QString nucleus = QLatin1String(missing);
            QCOMPARE((QList<double>{p.referenceOf(nucleus), p.slopeOf(nucleus), p.lineWidthOf(nucleus, 0),
                                    p.lineWidthOf(nucleus, 1)}),
                     (QList<double>{100.0, -1.0, 30.0, 1.0}));
        }
        QCOMPARE(p.referenceOf(u"15N"_s), 0.0);
        QVERIFY(near(Magres::makePeaks(methylamine(), p, TestNuclei())[0].positionF2, -1.0, 1e-3));
        // The synthesis takes no width for granted.
        QCOMPARE(Magres::dimensions(p)[0].lineWidth, 0.0);
        p.nucF2 = u"1H"_s;
        QCOMPARE(Magres::dimensions(p)[0].lineWidth, 30.0);
    }

    void shiftRanges()
    {
        // Neither end is farther out than anybody would look.
        QCOMPARE(Magres::displayRange({-2e12, 3e12}), (std::array{-1e9, 1e9}));

        // lo, hi, from, to: plain, a single value, two that the boxes cannot tell apart, two that they can
        for (const auto &[lo, hi, from, to] :
             {std::array{0.0, 100.0, -10.0, 111.0}, std::array{50.0, 50.0, 38.0, 62.2},
              std::array{50.0, 50.004, 38.0 - 4e-4, 50.004 + 10 + 0.1 * 22.0044},
              std::array{200000.0, 200100.0, 199990.0, 200111.0}, std::array{50.0, 50.02, 49.998, 50.0222}}) {
            const auto range = Magres::displayRange({lo, hi});
            QVERIFY2(near(range[0], from) && near(range[1], to), qPrintable(QString::number(range[0], 'g', 12)));
        }
    }

    void openParametersAreFilledIn()
    {
        const TestNuclei nuclei;
        const MagresData data = methylamine("H7");
        QCOMPARE(Magres::observableNuclei(data), u"13C 1H 2H 14N 15N"_s.split(u' '));

        MagresSpecParams p;
        Magres::completeParameters(data, p, nuclei);
        QCOMPARE((QVariantList{p.nucF2, p.nucF1, p.pts, p.lw, p.ref, p.slope}), // 1D does not touch F1
                 (QVariantList{u"13C"_s, QString(), 8192, QVariantMap{{u"13C"_s, 30.0}}, QVariantMap{{u"13C"_s, 100.0}},
                               QVariantMap{{u"13C"_s, -1.0}}}));
        QVERIFY(near(p.RangeF2[0], -1.0 - 1e-3 / 3.0 - 12.0));

        MagresSpecParams twoD;
        twoD.fromMap(
            hash("{'nucF2': '29Si', 'nucF1': '', 'specType': 1, 'ptsF2': 1000, 'ptsF1': 256, 'ref': {'1H': 30},"
                 "'lw': {'1H': 77}, 'RangeF2User': true}"));
        twoD.RangeF2 = {1.0, 2.0};
        Magres::completeParameters(data, twoD, nuclei);
        QCOMPARE((QVariantList{twoD.nucF2, twoD.nucF1, twoD.ptsF2, twoD.ptsF1, twoD.lw[u"1H"_s]}),
                 (QVariantList{u"13C"_s, u"1H"_s, 8192, 256, 77.0})); // the first on offer
        QCOMPARE(twoD.RangeF2, (std::array<double, 2>{1.0, 2.0}));
        QVERIFY(near(twoD.RangeF1[1], 29.0 - 1e-3 / 3.0 + 0.1 * (5.0 + 0.5))); // H7 has no shielding and does not count
        QCOMPARE(twoD.qShift, (QList<bool>{false, false}));

        MagresSpecParams homonuclear = parametersFor(u"1H"_s, u"1H"_s);
        Magres::completeParameters(data, homonuclear, nuclei);
        QCOMPARE(homonuclear.lw[u"1H"_s].toDouble(), 1.0); // F1 is written last

        // What is left open or impossible, where the fall-backs are not the first on offer.
        MagresData hydrogenFirst = methylamine();
        hydrogenFirst.atoms[0].recordNo = 99;
        QCOMPARE(Magres::observableNuclei(hydrogenFirst).first(), u"1H"_s);
        MagresSpecParams odd;
        odd.fromMap(
            hash("{'nucF2': '', 'nucF1': '', 'specType': 1, 'ptsF2': 1000, 'ptsF1': 1000, 'pts': 8129, 'avIdx': 3,"
                 "'corr': 2, 'freq': 'nan', 'RangeF2User': true, 'RangeF1User': true}"));
        odd.RangeF2 = {5.0, std::nan("")};
        Magres::completeParameters(hydrogenFirst, odd, nuclei);
        QCOMPARE((QVariantList{odd.nucF2, odd.nucF1, odd.freq, odd.ptsF2, odd.ptsF1, odd.avIdx, odd.corr, odd.pts,
                               odd.RangeF2User, odd.RangeF1User}),
                 (QVariantList{u"13C"_s, u"1H"_s, 600.0, 8192, 1024, 0, 0, 8129, false, true}));
        QVERIFY(odd.RangeF2[1] > odd.RangeF2[0] && odd.RangeF1 == (std::array{0.0, 1.0}));
        odd.corr = 1;
        odd.avIdx = 2;
        Magres::completeParameters(hydrogenFirst, odd, nuclei);
        QVERIFY(odd.corr == 1 && odd.avIdx == 2);
        const QList<qint32> counts = Magres::offeredPointCounts();
        QVERIFY(counts.size() == 20 && counts.first() == 128 && counts.last() == 67108864);

        MagresSpecParams empty;
        Magres::completeParameters(MagresData(), empty, nuclei);
        QVERIFY(empty.nucF2.isEmpty() && near(empty.RangeF2[1], 12.2));
    }

    /// Each dimension has its own flag, and in 1D that of the other one stays.
    void quadrupolarFlagsAreOfTheirDimension()
    {
        for (const QList<bool> &flags : {QList<bool>{true, false}, QList<bool>{false, true}})
            for (const QString &nucF1 : {QString(), u"1H"_s}) {
                MagresSpecParams p = parametersFor(u"14N"_s, nucF1);
                p.qShift = flags;
                Magres::completeParameters(methylamine(), p, TestNuclei());
                QCOMPARE(p.qShift, flags);
                QVERIFY(Magres::shiftRule(p, 0, TestNuclei()).withQuadShift == flags[0]
                        && Magres::shiftRule(p, 1, TestNuclei()).withQuadShift == flags[1]);
            }
    }

    /// From the highest shift to the lowest, in F2 first; equal peaks as they were.
    void orderOfPeaks()
    {
        QList<SpectrumPeak> peaks;
        for (const auto &[f2, f1, height] :
             {std::array{5.0, 1.0, 1.0}, std::array{5.0, 3.0, 2.0}, std::array{7.0, 0.0, 3.0},
              std::array{5.0, 3.0, 4.0}, std::array{-1.0, 9.0, 5.0}})
            peaks.append({QUuid(), f2, f1, height, {}, {}, {}, {}});
        Magres::sortPeaks(peaks);
        QList<double> order;
        for (const SpectrumPeak &peak : peaks)
            order.append(peak.height);
        QCOMPARE(order, (QList<double>{3, 2, 4, 1, 5}));
    }

    void axes()
    {
        MagresSpecParams p = parametersFor(u"1H"_s);
        p.pts = 8192;
        for (const std::array<double, 2> &range : {std::array{10.0, 0.0}, std::array{0.0, 10.0}}) {
            p.RangeF2 = range;
            const Magres::SpectrumDimension d = Magres::dimensions(p)[0];
            QVERIFY(near(d.width, 6000.0) && near(d.reference, 3000.0));
            QVERIFY(near(d.axis().first, 6000.0 / 600.003));
            QVERIFY(near(d.axis().step, -6000.0 / 8192 / 600.003));
        }
    }

    void hostRecord()
    {
        const MagresData data = methylamine();
        MagresSpecParams p;
        p.fromMap(
            hash("{'nucF2': '1H', 'nucF1': '13C', 'specType': 1, 'ptsF2': 256, 'ptsF1': 128, 'corr': 1, 'avIdx': 1,"
                 "'ref': {'1H': 30, '13C': 170}, 'lw': {'1H': 300, '13C': 150}}"));
        Magres::completeParameters(data, p, TestNuclei());
        const Magres::GeneratedSpectrum spectrum = Magres::generateSpectrum(data, p, TestNuclei());
        QCOMPARE(spectrum.data[u"Length"_s].value<QList<int>>(), (QList<int>{256, 128, 1, 1, 1, 1, 1, 1}));
        QCOMPARE(spectrum.data[u"SpecInfo"_s].toMap(), spectrum.specInfo);
        const QList<Magres::SpectrumDimension> d = Magres::dimensions(p);
        const auto eight = [](double f2, double f1, double other) {
            return QVariant::fromValue(DoubleVector{f2, f1, other, other, other, other, other, other});
        };
        const QMap<QString, QVariantHash> stored{{u"magres"_s, p.toMap()}};
        QCOMPARE(
            spectrum.specInfo,
            (QVariantMap{{u"OrigFileFormat"_s, 1002},
                         {u"ExperimentType"_s, 148},
                         {u"SpectrumType"_s, QVariant::fromValue(SignedCharVector(8, 1))},
                         {u"SpectrometerFrequencies"_s, eight(600.0 * 750.03 / 750.03, 600.0 * 188.64 / 750.03, 400)},
                         {u"SW"_s, eight(d[0].width, d[1].width, 0)},
                         {u"SpectrumRef"_s, eight(d[0].reference, d[1].reference, 0)},
                         {u"Nucleides"_s, Magres::nucleides("1H", "13C")},
                         {u"OriginalParameters"_s, QVariant::fromValue(stored)}}));
        QCOMPARE(p.magresDataId, data.ID);

        const auto points = spectrum.data[u"DataPoints"_s].value<QList<DoubleVector>>();
        QCOMPARE(points[0].size(), size_t(256 * 128));
        QCOMPARE(points[1], DoubleVector(256 * 128, 0.0));

        const QVariantMap peakMap = spectrum.data[u"Peaks"_s].toMap();
        QCOMPARE(peakMap[u"PosUnits"_s].value<QList<int>>(), (QList<int>{3, 3, 1}));
        const QVariantList peaks = peakMap[u"PeakList"_s].toList();
        QStringList labels;
        double volume = 0.0;
        for (const QVariant &entry : peaks) {
            const QVariantMap peak = entry.toMap();
            const auto position = peak[u"Pos"_s].value<DoubleVector>();
            labels.append(peak[u"PeakLabel"_s].toString() + u' ' + QString::number(position[0], 'f', 2));
            const auto width = peak[u"Width"_s].value<DoubleVector>();
            QVERIFY(near(width[0], 0.5, 1e-4) && near(width[1], 0.9939, 1e-2));
            QVERIFY(peak[u"peakType"_s].toInt() == 1 && !peak[u"ID"_s].toUuid().isNull());
            QCOMPARE(peak[u"ShapePar"_s].value<DoubleVector>(), (DoubleVector{0.0, 0.0}));
            QVERIFY(near(position[1], 69.0, 1e-3));
            volume += peak[u"Height"_s].toDouble() * width[0] * width[1];
        }
        QCOMPARE(labels.join(u' '), u"H1,H2,H3,C1 28.00 H4,C1 26.00 H5,C1 25.00 H6,C1 24.00 H7,C1 23.00"_s);
        // The area under a Gaussian of unit height and width is sqrt(pi / (4 ln 2)).
        const double sum =
            std::accumulate(points[0].begin(), points[0].end(), 0.0) * d[0].axis().step * d[1].axis().step;
        QVERIFY(near(sum / (volume * 3.14159265358979 / (4 * std::log(2.0))), 1.0, 1e-3));
    }

    /// Lorentzians at the sites; one row of a map is a line as well, two are a map.
    void hostRecordOfALine()
    {
        const MagresData data = methylamine();
        for (int rows : {0, 1, 2}) {
            MagresSpecParams p;
            p.fromMap(hash("{'nucF2': '13C', 'nucF1': '1H', 'pts': 64, 'ptsF2': 64, 'ref': {'13C': 170},"
                           "'lw': {'13C': 60, '1H': 60}}"));
            p.RangeF2 = {80.0, 60.0};
            p.specType = rows == 0 ? 0 : 1;
            p.ptsF1 = rows;
            const Magres::GeneratedSpectrum spectrum = Magres::generateSpectrum(data, p, TestNuclei());
            const QVariantMap peak = spectrum.data[u"Peaks"_s].toMap()[u"PeakList"_s].toList()[0].toMap();
            const auto position = peak[u"Pos"_s].value<DoubleVector>();
            const double carrier = Magres::dimensions(p)[0].carrier();
            QVERIFY(near(position[0], 69.0, 1e-3) && near(carrier, 600.0 * 188.64 / 750.03 * (1.0 + 70e-6)));
            if (rows == 0) {
                QCOMPARE(position[1], 0.0);
                QCOMPARE(peak[u"ShapePar"_s].value<DoubleVector>(), (DoubleVector{1.0, 0.0}));
                QCOMPARE(peak[u"Width"_s].value<DoubleVector>(), (DoubleVector{60.0 / carrier, 0.0}));
                QCOMPARE(peak[u"PeakLabel"_s].toString(), u"C1"_s);
            }
            const auto points = spectrum.data[u"DataPoints"_s].value<QList<DoubleVector>>()[0];
            QCOMPARE(points.size(), size_t(rows == 2 ? 128 : 64));
            if (rows == 2) { // Gaussians end
                QCOMPARE(points[0], 0.0);
                break;
            }
            const double height = peak[u"Height"_s].toDouble();
            const auto axis = Magres::dimensions(p)[0].axis();
            for (size_t i = 0; i < points.size(); ++i) {
                const double t = 2.0 * (axis.first + double(i) * axis.step - position[0]) / (60.0 / carrier);
                QVERIFY(near(points[i], height / (1.0 + t * t), 1e-9 * height));
            }
        }
    }

    void impossibleSizes()
    {
        const char *frequency = "The spectrometer frequency must be above 0 MHz";
        for (const auto &[ptsF2, ptsF1, protonFrequency, fromF2, fromF1, message] :
             {std::tuple(1 << 26, 1024, 600.0, 0.0, 0.0,
                         "68719476736 data points are more than the 268435456 that a spectrum can have"),
              std::tuple(65536, 65536, 600.0, 0.0, 0.0,
                         "4294967296 data points are more than the 268435456 that a spectrum can have"),
              std::tuple(0, 128, 600.0, 0.0, 0.0, "A spectrum cannot have 0 points"),
              std::tuple(128, -128, 600.0, 0.0, 0.0, "A spectrum cannot have -128 points"),
              std::tuple(128, 128, 0.0, 0.0, 0.0, frequency), std::tuple(128, 128, -1.0, 0.0, 0.0, frequency),
              std::tuple(1, 1, std::nan(""), 0.0, 0.0, frequency), std::tuple(1, 1, infinity, 0.0, 0.0, frequency),
              std::tuple(128, 128, 600.0, infinity, 0.0, "The range of 1H is not finite"),
              std::tuple(128, 128, 600.0, 0.0, -infinity, "The range of 13C is not finite"),
              std::tuple(128, 128, 600.0, -2.1e6, 0.0, "The range of 1H lies below -1000000 ppm"),
              std::tuple(128, 128, 600.0, 0.0, -2.1e6, "The range of 13C lies below -1000000 ppm"),
              std::tuple(128, 128, 512.0, -2000001.0, 0.0, "The range of 1H lies below -1000000 ppm"), // exactly at it
              std::tuple(128, 128, 600.0, 0.0, 0.0, "")}) {
            MagresSpecParams p = parametersFor(u"1H"_s, u"13C"_s);
            p.ptsF2 = ptsF2;
            p.ptsF1 = ptsF1;
            p.freq = protonFrequency;
            p.RangeF2[0] = fromF2;
            p.RangeF1[0] = fromF1;
            QCOMPARE(failure([&] { Magres::generateSpectrum(methylamine(), p, TestNuclei()); }), message);
        }
    }
};

QTEST_GUILESS_MAIN(tst_Synthesis)
#include "tst_synthesis.moc"
