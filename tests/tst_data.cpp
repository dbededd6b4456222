// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "data/Document.h"
#include "data/ExperimentalSpectrum.h"
#include "data/MoleculePacking.h"
#include "data/Nuclides.h"
#include "data/PeakAssignments.h"
#include "data/PeakListEdit.h"
#include "data/ReaderText.h"
#include "data/SpectrumEntry.h"
#include "formats/DocumentFile.h"

#include <set>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

using Points = QList<DoubleVector>;
using Bond = std::pair<int, int>;

QVariantMap map()
{
    return {};
}

template <typename Value, typename... Rest>
QVariantMap map(const char *key, const Value &value, const Rest &...rest)
{
    QVariantMap all = map(rest...);
    all.insert(QLatin1String(key), QVariant::fromValue(value));
    return all;
}

QVariantMap atomMap(const QVariant &x, double y, double z, int element, const QList<int> &neighbours = {})
{
    return map("X", x, "Y", y, "Z", z, "El", element, "NB.Num", neighbours);
}

/// Atoms of three elements anywhere around a skewed cell, some of them bonded, one that cannot be drawn, and four near
/// a face: 0.005 and 0.02 Angstrom off it, on either side.
Molecule scattered()
{
    Molecule molecule;
    const QVector3D a(6.1f, 0.2f, -0.4f), b(-1.3f, 7.2f, 0.3f), c(0.9f, -2.1f, 8.3f), origin(0.7f, -1.1f, 2.3f);
    molecule.cell = {origin, a, b, c};
    std::mt19937 random(3);
    std::uniform_real_distribution<float> place(-1.9f, 2.9f);
    for (int i = 0; i < 40; ++i)
        molecule.atoms.push_back(
            {i % 3 == 0 ? 8 : i % 3, origin + a * place(random) + b * place(random) + c * place(random), true});
    molecule.atoms[7] = {2, {}, false};
    const QVector3D normal = QVector3D::crossProduct(a, b).normalized();
    for (const float off : {-0.005f, 0.005f, -0.02f, 0.02f})
        molecule.atoms.push_back({1, origin + a * 0.31f + b * (0.47f + 7 * off) + normal * off, true});
    molecule.atoms.push_back({1, molecule.atoms[0].position + QVector3D(0.06f, 0, 0), true}); // one of two half sites
    for (const auto &[i, length] : {std::pair(0, 1.5f), std::pair(3, 2.4f), std::pair(4, 1.9f), std::pair(5, 2.1f)}) {
        const int j = int(molecule.atoms.size());
        molecule.atoms.push_back({i == 4 ? 8 : 1, molecule.atoms[size_t(i)].position + QVector3D(length, 0, 0), true});
        molecule.bonds.emplace_back(i, j);
    }
    return molecule;
}

/// By all pairs.
std::set<Bond> nearPairs(const PackedMolecule &packed, const Molecule &original, bool all)
{
    const auto elements = [](const auto &x, const auto &y) { return std::minmax({x.element, y.element}); };
    std::map<Bond, float> longest;
    for (const auto &[i, j] : original.bonds) {
        const auto &x = original.atoms[size_t(i)], &y = original.atoms[size_t(j)];
        longest[elements(x, y)] = std::max(longest[elements(x, y)], (x.position - y.position).length());
    }
    std::set<Bond> bonds;
    const auto &atoms = packed.molecule.atoms;
    for (size_t i = 0; i < atoms.size(); ++i)
        for (size_t j = 0; j < i; ++j) {
            const float distance = (atoms[i].position - atoms[j].position).length();
            if (distance > 0.1f && distance <= 1.05f * longest[elements(atoms[i], atoms[j])] && atoms[i].drawable
                && atoms[j].drawable && (all || packed.images[i].cell != packed.images[j].cell))
                bonds.emplace(int(j), int(i));
        }
    return bonds;
}

Document wholeDocument()
{
    const auto id = [](const char *digit) {
        return QUuid(u"{0000000%1-0000-4000-8000-000000000000}"_s.arg(QLatin1String(digit)));
    };
    const QVariantMap points = map("DataPoints", Points{{1, 2, 3}, {}});
    Document document;
    const auto add = [&](const char *digit, const QRectF &place, const QList<QUuid> &links, const auto &content) {
        document.items.append({id(digit), u"title"_s, place, links, map("k", 5), content});
    };
    add("1", {1, 2, 30, 40}, {id("3")}, Document::Molecule{map("ID", id("1"))});
    add("2", {-5, 6, 70, 80}, {}, Document::Table{4, u"plug"_s, u"Plug"_s, map("k", 0.5)});
    add("3", {9, 10, 110, 120}, {id("1"), id("2")},
        Document::Spectra{{{id("1"), u"one"_s, points}, {id("2"), u"two"_s, points}}, id("2")});
    document.customData = {map("ID", id("1"), "x", 5), map("ID", id("2"))};
    document.activeItem = document.currentTable = id("2");
    document.currentSpectra = id("3");
    return document;
}

} // namespace

class TestData : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void moleculesFromDescriptions()
    {
        const QVariantList atoms{atomMap(1.0, 2, 3, 6, {4, 1, 1, 3, 0, -1, 5}),
                                 atomMap(4.0, -2, 8.5, 1, {0}),
                                 atomMap(-1e5, 1e5, 0.5, 8),
                                 atomMap(u"far"_s, 1, 1, 7, {0}),
                                 atomMap(2.0, -100001, 0, 7, {1}),
                                 atomMap(-3.0, 0, 0, 2, {1})};
        const auto description = [&](const DoubleVector &lattice) {
            return map("Atoms", atoms, "CrystallographicData", map("Lattice", lattice));
        };
        const Molecule molecule = Molecule::fromDescription(description({9, 1, 2, -3, 8, 4, 5, -6, 7}));
        const QVector3D centre((4 - 1e5) / 2, (1e5 - 2) / 2, 4.25);
        QStringList places;
        for (const Molecule::Atom &atom : molecule.atoms) {
            const QVector3D place = atom.drawable ? atom.position + centre : atom.position;
            places.append(QString::asprintf("%d %.1f %.1f %.1f", atom.drawable ? atom.element : 0, place.x(), place.y(),
                                            place.z()));
        }
        const QString expected =
            u"6 1.0 2.0 3.0|1 4.0 -2.0 8.5|8 -100000.0 100000.0 0.5|0 0.0 0.0 0.0|0 0.0 0.0 0.0|2 -3.0 0.0 0.0"_s;
        QCOMPARE(places.join(u'|'), expected);
        QCOMPARE(molecule.bonds, (std::vector<Bond>{{0, 1}, {0, 5}, {1, 5}}));
        QVERIFY((molecule.cell->at(0) + centre).length() < 0.02f);
        QVERIFY(*molecule.cell
                == (std::array{molecule.cell->at(0), QVector3D(9, 1, 2), QVector3D(-3, 8, 4), QVector3D(5, -6, 7)}));
        for (const DoubleVector &lattice : {DoubleVector(8, 1.0), DoubleVector{9, 1, 2, -3, 8, 4, 5, qQNaN(), 7}})
            QVERIFY(!Molecule::fromDescription(description(lattice)).cell);
        QVERIFY(Molecule::fromDescription(map("Atoms", u"CH"_s)).atoms.empty());
    }

    /// Against every translation far around and every pair of atoms.
    void packing()
    {
        const Molecule original = scattered();
        const auto &[origin, a, b, c] = *original.cell;
        const double volume = QVector3D::dotProduct(a, QVector3D::crossProduct(b, c));
        const std::array rows{QVector3D::crossProduct(b, c) / volume, QVector3D::crossProduct(c, a) / volume,
                              QVector3D::crossProduct(a, b) / volume};
        for (const auto &[contents, cells] : {std::pair(Packing::Contents::Cell, std::array{1, 1, 1}),
                                              std::pair(Packing::Contents::Cell, std::array{2, 1, 3}),
                                              std::pair(Packing::Contents::Molecules, std::array{3, 2, 1})}) {
            const bool inCell = contents == Packing::Contents::Cell;
            const PackedMolecule packed = PackedMolecule::of(original, {contents, cells});
            QCOMPARE(packed.cells, cells);
            std::vector<AtomImage> images;
            std::vector<int> first;
            for (int atom = 0; atom < int(original.atoms.size()); ++atom) {
                const auto &[element, place, drawable] = original.atoms[size_t(atom)];
                first.push_back(int(images.size()));
                for (int n = 0; n < 17 * 17 * 17; ++n) {
                    const std::array cell{n % 17 - 8, n / 17 % 17 - 8, n / 289 - 8};
                    bool inside = drawable || first.back() == int(images.size());
                    for (size_t k = 0; k < 3 && drawable; ++k) {
                        const double f = QVector3D::dotProduct(place - origin, rows[k]) + cell[k],
                                     near = 0.01 * rows[k].length();
                        inside &= inCell ? f >= -near && f <= cells[k] + near : cell[k] >= 0 && cell[k] < cells[k];
                    }
                    if (inside)
                        images.push_back({atom, cell});
                }
            }
            images[size_t(first[7])].cell = packed.images[size_t(packed.first[7])].cell; // nowhere
            QVERIFY(packed.images == images && packed.first == first);
            std::set<Bond> bonds = nearPairs(packed, original, inCell);
            QVERIFY(bonds.size() > 20);
            for (int copy = 0; copy < 6 && !inCell; ++copy)
                for (const auto &[i, j] : original.bonds)
                    bonds.emplace(6 * i + copy, 6 * j + copy - 5); // behind the one that has a single image
            const auto &found = packed.molecule.bonds;
            QVERIFY(std::set(found.begin(), found.end()) == bonds && found.size() == bonds.size());
            std::vector<float> places[3];
            for (size_t i = 0; i < images.size(); ++i) {
                const auto &image = packed.molecule.atoms[i], &source = original.atoms[size_t(images[i].atom)];
                QVERIFY(image.element == source.element && image.drawable == source.drawable);
                const auto &[x, y, z] = images[i].cell;
                const QVector3D place = source.position + a * float(x) + b * float(y) + c * float(z) + packed.shift;
                QVERIFY((image.position - place).length() < 1e-4f || !image.drawable);
                for (int k = 0; k < 3 && image.drawable; ++k)
                    places[k].push_back(place[k]);
            }
            for (const auto &along : places) // about the middle
                QVERIFY(std::abs(*std::min_element(along.begin(), along.end())
                                 + *std::max_element(along.begin(), along.end()))
                        < 1e-3f);
            QVERIFY((packed.molecule.cell->at(0) - origin - packed.shift).length() < 1e-5f);
            QCOMPARE(packed.molecule.cell->at(3), c);
        }
    }

    void packingIsBounded()
    {
        const auto cellsOf = [](size_t atoms, const std::array<int, 3> &wanted) {
            Molecule molecule;
            molecule.atoms.assign(atoms, {6, {1, 1, 1}, true});
            molecule.cell = {QVector3D(), {4, 0, 0}, {0, 5, 0}, {0, 0, 6}};
            return PackedMolecule::of(molecule, {Packing::Contents::Molecules, wanted}).cells;
        };
        using Cells = std::array<int, 3>;
        QCOMPARE(cellsOf(2, {200, 0, 99}), (Cells{99, 1, 99}));
        QCOMPARE(cellsOf(7, {99, 1, 99}), (Cells{84, 1, 85})); // 7 × 84 × 85 = 49980
        QCOMPARE(cellsOf(5000, {2, 5, 1}), (Cells{2, 5, 1})); // as many as there may be
        QCOMPARE(cellsOf(60000, {1, 2, 1}), (Cells{1, 1, 1}));
        Molecule same = scattered();
        for (const auto &[flat, packing] : {std::pair(false, Packing()), std::pair(true, Packing{{}, {2, 2, 2}})}) {
            if (flat)
                (*same.cell)[3] = (*same.cell)[1] * 2 - (*same.cell)[2];
            const PackedMolecule packed = PackedMolecule::of(same, packing);
            QVERIFY(packed.molecule.bonds == same.bonds && packed.molecule.atoms[9].position == same.atoms[9].position);
            QVERIFY(packed.first[9] == 9 && packed.images[9] == (AtomImage{9, {}}) && packed.cells == (Cells{1, 1, 1}));
        }
    }

    /// IUPAC's frequency ratios; the ratio of 2H and the spin as everybody knows them.
    void nuclides()
    {
        const Nuclides &table = Nuclides::table();
        QCOMPARE(table.isotopes(u"H"_s), (QStringList{u"1H"_s, u"2H"_s, u"3H"_s}));
        QCOMPARE(table.quadrupolarIsotopes(u"H"_s), QStringList{u"2H"_s});
        QCOMPARE(table.namedIn(u"x-13C_27Al 13C 1H, 999Xx 5Hz 113C 15Nn 17O"_s),
                 (QStringList{u"13C"_s, u"27Al"_s, u"1H"_s, u"17O"_s}));
        for (const char *carbon : {"1H-13C CP/MAS", "1H→13C CP MAS", "1H decoupled 13C", "{1H}13C", "^13C{^1H}", "¹³C",
                                   "δC", "13C NMR, 1H-decoupled", "16K points of 13C, 298K"})
            QCOMPARE(table.observedIn(QString::fromUtf8(carbon)), u"13C"_s);
        for (const char *none : {"1H and 13C", "1H-13C HSQC", "LB = 100Hz", "glycine"})
            QCOMPARE(table.observedIn(QString::fromUtf8(none)), QString());
        QVERIFY(Nuclides::element(u"27Al"_s) == u"Al" && table[u"27Al"_s].spinNumber() == 2.5);
        QVERIFY(table[u"2H"_s].spinNumber() == 1 && table[u"17O"_s].quadrupoleMoment == -2.558);
        QCOMPARE(table[u"13C"_s].abundance, 1.11);
        QVERIFY(std::abs(table[u"15N"_s].gyromagneticRatio() / -2.7126e7 - 1) < 4e-4); // shielded in its standard
        QCOMPARE(table[u"13C"_s].larmorFrequency(375), 188.64 / 2);
        QVERIFY(std::abs(table[u"3He"_s].larmorFrequency(500) - 380.897185) < 1e-6); // has no other ratio
        QVERIFY(!table[u"14C"_s].isKnown() && !table[u"14C"_s].isQuadrupolar() && !table.contains(u"14C"_s));
    }

    void atomsOfPeaks()
    {
        const QUuid e = QUuid::createUuid(), f = QUuid::createUuid(), p = QUuid::createUuid(), q = QUuid::createUuid();
        const auto shift = [](const QVariantList &atoms, const QList<QUuid> &peaks) {
            return map("Nums", atoms, "AssignedPeaks", QVariantList(peaks.begin(), peaks.end()));
        };
        const QVariantList notes{map("Origin", e, "Shifts", QVariantList{shift({3, 5}, {p}), shift({7}, {p, q})}),
                                 map("Origin", f, "Shifts", QVariantList{shift({0}, {q})})};
        const QVariantMap molecule = map("NMRAssignments", notes, "k", 1);
        const PeakAssignments found = PeakAssignments::fromMolMap(molecule);
        QVERIFY(found.knows(p) && found.knows(q) && !found.knows(e));
        QCOMPARE(found.atomsOf({p}), (QSet<int>{3, 5, 7}));
        QCOMPARE(found.atomsOf({p, q}), (QSet<int>{0, 3, 5, 7}));
        QCOMPARE(found.peaksOf({0, 3}), (QSet<QUuid>{p, q}));
        QCOMPARE(found.peaksOf({5}), QSet<QUuid>{p});
        QCOMPARE(PeakAssignments::withNotes(PeakAssignments::notes(molecule), map("k", 1)), molecule);
        QCOMPARE(PeakAssignments::withNotes({}, molecule), map("k", 1));
    }

    void peakListsChange()
    {
        QVariantMap peaks = PeakListEdit::added({{u"kept"_s, 5}}, {1.5, -2.5, 7});
        peaks = PeakListEdit::added(peaks, {3, 4, 5});
        QCOMPARE(peaks[u"kept"_s], QVariant(5));
        QCOMPARE(peaks[u"PosUnits"_s], QVariant::fromValue(QList<int>{3, 3, 1})); // ppm
        const QVariant listId = peaks[u"ID"_s];
        const auto peak = [&](int i) { return peaks[u"PeakList"_s].toList().value(i).toMap(); };
        const QUuid first = peak(0)[u"ID"_s].toUuid(), second = peak(1)[u"ID"_s].toUuid();
        QVERIFY(!listId.toUuid().isNull() && !first.isNull() && first != second);
        const auto expected = [](const QUuid &id, const DoubleVector &place, double height, const QString &label) {
            return map("ID", id, "Pos", place, "Height", height, "peakType", 1, "PeakLabel", label);
        };
        QCOMPARE(peak(0), expected(first, {1.5, -2.5}, 7, {}));
        peaks[u"PosUnits"_s] = 8;
        peaks = PeakListEdit::labelled(peaks, {{second, u"C2"_s}});
        peaks = PeakListEdit::moved(peaks, {second}, {-1, -2, -3});
        QCOMPARE(peak(0), expected(first, {1.5, -2.5}, 7, {}));
        QCOMPARE(peak(1), expected(second, {-1, -2}, -3, u"C2"_s));
        peaks = PeakListEdit::removed(peaks, {first, QUuid::createUuid()});
        QCOMPARE(peak(0)[u"ID"_s].toUuid(), second);
        QVERIFY(peaks[u"PeakList"_s].toList().size() == 1 && peaks[u"ID"_s] == listId && peaks[u"PosUnits"_s] == 8);
    }

    /// Where the host's parameters put the points: its carrier is the frequency and the reference offset together.
    void spectraFromMaps()
    {
        const auto nucleus = [](const QVariant &name, const QVariant &isotope) {
            return map("Name", name, "Isotope", isotope);
        };
        const auto info = [](const DoubleVector &width, const DoubleVector &reference, const QVariantList &nuclei) {
            return map("SW", width, "SpectrumRef", reference, "SpectrometerFrequencies", DoubleVector{100, 50},
                       "Nucleides", nuclei);
        };
        const QVariantMap usual = info({4000, 900}, {500, -100}, {nucleus(u"C"_s, 13), nucleus(u"15N"_s, {})});
        const auto entry = [&](const QVariantMap &changes = {}) {
            QVariantMap all =
                map("Length", QList<int>{4, 3, 1}, "DataPoints", Points{DoubleVector(12, 1.0)}, "SpecInfo", usual);
            all.insert(changes);
            return all;
        };
        const Spectrum plane = Spectrum::fromMap(map("RawData", entry()));
        QCOMPARE(plane.dimensions(), 2);
        const double carrier = 100.0005, carrier1 = 49.9999;
        QCOMPARE(plane.axes[0].first, 2500 / carrier);
        QCOMPARE(plane.axes[0].last(), (2500 - 3000) / carrier);
        QCOMPARE(plane.axes[1].first, 350 / carrier1);
        QCOMPARE(plane.axes[1].step, -300 / carrier1);
        QCOMPARE(plane.axes[1].frequency, 50.0);
        QCOMPARE(plane.axes[0].label(), u"¹³C chemical shift / ppm"_s);
        QCOMPARE(plane.axes[1].nucleus(), u"¹⁵N"_s);
        QString names;
        for (const QVariantMap &one :
             {nucleus(u"27Al"_s, u"1H"_s), nucleus(u"Al"_s, u"27"_s), nucleus(u"Al"_s, {}), nucleus({}, u"6Li"_s)}) {
            const SpectrumAxis axis =
                Spectrum::fromMap(entry(map("SpecInfo", info({4000, 900}, {500, -100}, {one})))).axes[0];
            names += u"%1|%2|%3 "_s.arg(axis.isotope(), axis.element, axis.nucleus());
        }
        QCOMPARE(names, u"27Al|Al|²⁷Al 27Al|Al|²⁷Al |Al|Al 6Li|Li|⁶Li "_s);
        QCOMPARE(SpectrumAxis().label(), u"Chemical shift / ppm"_s);
        // A stand-in is no frequency, though ppm are counted from it. Without marks, what no magnet gives is one.
        const auto frequencyOf = [&](const QVariant &name, const QVariant &marks) {
            QVariantMap changed = info({4000, 900}, {500, -100}, {nucleus(name, {})});
            changed.insert(map("SpectrometerFrequencies", DoubleVector{400, 50}, "StandInFrequencies", marks));
            const SpectrumAxis axis = Spectrum::fromMap(entry(map("SpecInfo", changed))).axes[0];
            return std::abs(axis.first - 2500 / 400.0005) < 1e-12 ? axis.frequency : -1.0;
        };
        const auto marks = [](signed char f2) { return QVariant::fromValue(SignedCharVector{f2, 0}); };
        QVERIFY(frequencyOf(u"1H"_s, marks(1)) == 0 && frequencyOf(u"13C"_s, marks(0)) == 400);
        QVERIFY(frequencyOf(u"1H"_s, {}) == 400 && frequencyOf({}, {}) == 400 && frequencyOf(u"13C"_s, {}) == 0);
        const auto length = [](const QList<int> &lengths) { return map("Length", lengths); };
        for (const auto &[change, note] :
             {std::pair(map("DataPoints", QVariant()), "no data points"),
              std::pair(length({1, 12}), "12 points where its dimensions, 1 by 12, say otherwise"),
              std::pair(length({5}), "12 points where its dimensions, 5 by 1, say otherwise"),
              std::pair(map("SpecInfo", info({4000, 0}, {500, -100}, {})),
                        "no valid frequency, width and reference for its dimension F1"),
              std::pair(map("SpecInfo", info({4000, 900}, {}, {})),
                        "no valid frequency, width and reference for its dimension F2")}) {
            const Spectrum nothing = Spectrum::fromMap(entry(change));
            QCOMPARE(nothing.note, u"The spectrum has "_s + QLatin1String(note));
            QVERIFY(nothing.isEmpty() && nothing.real().empty());
        }
        QCOMPARE(Spectrum::fromMap(entry(length({6, 2}))).real().size(), size_t(12));
        QCOMPARE(Spectrum::fromMap(entry(length({12}))).dimensions(), 1);
        const auto peak = [](const DoubleVector &place, const DoubleVector &width, double height) {
            return map("Pos", place, "Width", width, "Height", height);
        };
        const QVariantList list{peak({1, 2}, {3, 4}, 5),  peak({}, {}, 1),        peak({6}, {7}, 8),
                                peak({1, qInf()}, {}, 1), peak({qQNaN()}, {}, 1), peak({1}, {}, qQNaN())};
        QString found;
        for (const SpectrumPeak &p : Spectrum::fromMap(map("Peaks", map("PeakList", list))).peaks)
            found += u"%1 %2 %3 %4 %5;"_s.arg(p.f2).arg(p.f1).arg(p.height).arg(p.widthF2).arg(p.widthF1);
        QCOMPARE(found, u"1 2 5 3 4;6 0 8 7 0;"_s);
    }

    /// Made parameters lie in the raw data once an entry has been updated.
    void parametersOfEntries()
    {
        SpectrumEntry entry;
        QVERIFY(!entry.isSimulated());
        entry.setParameters(u"magres"_s, {{u"a"_s, 1}});
        entry.setParameters(u"other"_s, {});
        QCOMPARE(entry.parameters(u"magres"_s), (QVariantHash{{u"a"_s, 1}}));
        QVERIFY(entry.isSimulated() && entry.parameters(u"other"_s).isEmpty() && !entry.data.contains(u"RawData"_s));
        entry.data = {{u"RawData"_s, entry.data}, {u"SpecInfo"_s, entry.data[u"SpecInfo"_s]}};
        entry.setParameters(u"magres"_s, {{u"a"_s, 2}});
        QCOMPARE(entry.parameters(u"magres"_s), (QVariantHash{{u"a"_s, 2}}));
        entry.data.remove(u"RawData"_s);
        QCOMPARE(entry.parameters(u"magres"_s), (QVariantHash{{u"a"_s, 1}}));
        // As a stream gives it back.
        entry.data = map("SpecInfo", map("OriginalParameters", map("f", QVariantHash{{u"b"_s, 3}})));
        QVERIFY(entry.isSimulated() && entry.parameters(u"f"_s)[u"b"_s] == 3);
        entry.data = map("Peaks", map("own", 1), "RawData", map("Peaks", map("raw", 2)));
        QCOMPARE(entry.peakList(), map("own", 1));
        entry.data.remove(u"Peaks"_s);
        QCOMPARE(entry.peakList(), map("raw", 2));
    }

    void documentsNameWhatIsWrong()
    {
        const auto replaced = [](auto self, const QVariant &tree, const QString &at,
                                 const QVariant &value) -> QVariant {
            const QString key = at.section(u'.', 0, 0), rest = at.section(u'.', 1);
            QVariantList list = tree.toList();
            QVariantMap all = tree.toMap();
            QVariant &changed = list.isEmpty() ? all[key] : list[key.toInt()];
            changed = rest.isEmpty() ? value : self(self, changed, rest, value);
            return list.isEmpty() ? QVariant(all) : list;
        };
        const auto row = [&](const QByteArray &message, const char *path, const QVariant &value) {
            const QVariantMap document =
                replaced(replaced, wholeDocument().toMap(), QLatin1String(path), value).toMap();
            QCOMPARE(failure([&] { QVERIFY2(Document::fromMap(document).toMap() == document, path); }), message);
        };
        const QVariant id(wholeDocument().items[0].id), stranger(QUuid(u"{90000000-0000-4000-8000-000000000000}"_s));
        row("", "Items.2.Title", u"other"_s);
        row("the document: \"Items\" is nothing, expected QVariantList", "Items", {});
        row("Items[1]: a map was expected", "Items.1", 5);
        row("Items[1]: \"Title\" is int, expected QString", "Items.1.Title", 5);
        row("Items[1]: its \"ID\" is null or not its own", "Items.1.ID", id);
        row("Items[0]: its \"ID\" is null or not its own", "Items.0.ID", QUuid());
        row("Items[0]: the \"ID\" of its description is another one", "Items.0.Description.ID", stranger);
        row("Items[2].Entries[1]: its \"ID\" is null or not its own", "Items.2.Entries.1.ID", id);
        row("Items[2].Entries[0]: \"Data\" is nothing, expected QVariantMap", "Items.2.Entries.0.Data", {});
        row("Items[2]: its active spectrum is none of its spectra", "Items.2.Active", stranger);
        row("Items[2]: its active spectrum is none of its spectra", "Items.2.Active", QUuid());
        row("Items[2]: its active spectrum is none of its spectra", "Items.2.Entries", QVariantList());
        row("Items[1]: its place is 1e+08, expected within 1e+07 of the first page", "Items.1.Geometry",
            QRectF(1e8, 0, 1, 1));
        row("Items[1]: its place is -1e+08, expected within 1e+07 of the first page", "Items.1.Geometry",
            QRectF(0, 0, 1, -1e8));
        row("Items[1]: its place is nan, expected within 1e+07 of the first page", "Items.1.Geometry",
            QRectF(0, 0, qQNaN(), 1));
        row("", "Items.1.Geometry", QRectF(1e7, -1e7, 0, 5));
        row("Items[1]: an item of the kind \"Cube\" is not known", "Items.1.Kind", u"Cube"_s);
        const QByteArray gone = ": it names the item {90000000-0000-4000-8000-000000000000}, which is not there";
        row("Items[2].Links" + gone, "Items.2.Links",
            QVariant::fromValue(QList<QUuid>{id.toUuid(), stranger.toUuid()}));
        row("CurrentTable" + gone, "CurrentTable", stranger);
        row("", "CurrentTable", QUuid());
        row("CustomData[1]: its \"ID\" is null or not its own", "CustomData.1.ID", id);
    }

    /// Every kind of value, through the bytes of a file; what is between them, and how it is told and stopped.
    void documentsThroughAFile()
    {
        Document document = wholeDocument();
        QVariant deep = 1;
        for (int i = 0; i < 61; ++i)
            deep = QVariantList{deep};
        using Formats = QMap<QString, QVariantHash>;
        document.customData[1] =
            map("ID", document.items[1].id, "bool", true, "uint", 4000000000u, "long", qlonglong(-5) << 40, "ulong",
                ~qulonglong(3), "bytes", QByteArray("a\0b", 3), "point", QPointF(1.5, -2), "signs",
                SignedCharVector{1, -1, 5}, "texts", QStringList{u"δ"_s, {}, u"b"_s}, "blobs",
                QByteArrayList{"x", "", "yz"}, "ints", QList<int>{7, -8}, "doubles", QList<double>{0.1, -1e300}, "none",
                QVariant(), "deep", deep, "hash", QVariantHash{{u"k"_s, 1}, {u"l"_s, 0.1}}, "formats",
                Formats{{u"m"_s, {{u"n"_s, 2}}}});
        const auto bytesOf = [](const Document &written, const DocumentProgress &progress = {}) {
            QBuffer buffer;
            buffer.open(QIODevice::ReadWrite);
            DocumentFile::write(buffer, written, progress);
            return buffer.data();
        };
        const auto read = [](QByteArray bytes, const DocumentProgress &progress = {}) {
            QBuffer buffer(&bytes);
            buffer.open(QIODevice::ReadOnly);
            return DocumentFile::read(buffer, progress);
        };
        document.items[2].geometry = QRectF(9, 10, -110, 120);
        const QByteArray bytes = bytesOf(document);
        QCOMPARE(bytes.first(12), QByteArray("\x89MGD\r\n\x1a\n\1\0\0\0", 12));
        QCOMPARE(qFromLittleEndian<qint64>(bytes.constData() + 12), bytes.size() - 20 - 16);
        const Document back = read(bytes);
        QCOMPARE(back.items[2].geometry, QRectF(-101, 10, 110, 120));
        document.items[2].geometry = back.items[2].geometry;
        QVERIFY(back.toMap() == document.toMap() && bytesOf(back) == bytesOf(document));
        document.customData[1][u"deep"_s] = QVariantList{deep};
        QCOMPARE(failure([&] { bytesOf(document); }),
                 "CustomData[1].deep" + QByteArray("[0]").repeated(61)
                     + ": lists and maps lie more than 64 deep in each other");
        document.customData[1][u"deep"_s] = QSize(1, 2);
        QCOMPARE(failure([&] { bytesOf(document); }),
                 QByteArray("CustomData[1].deep: a value of the type QSize cannot be kept in a document"));

        // In pieces below and beyond what is copied at once.
        document.customData[1] = map("ID", document.items[1].id);
        std::mt19937 random(1);
        for (const qsizetype size : {65535, 65536, 65537, 5 << 20, 3, 9 << 20, 100000})
            document.customData[1].insert(QString::number(size), QByteArray(size, char(random())));
        auto &entries = std::get<Document::Spectra>(document.items[2].content).entries;
        entries[1].data = map("DataPoints", Points{DoubleVector(1 << 20, 0.5), DoubleVector(1 << 19, 2.5)});
        std::vector<double> told;
        const auto tell = [&](double part) { return told.push_back(part), true; };
        const QByteArray large = bytesOf(document, tell);
        QVERIFY(told.size() >= 3 && told.size() <= 7 && std::is_sorted(told.begin(), told.end()) && told.back() == 1);
        told.clear();
        QVERIFY(read(large, tell).toMap() == document.toMap());
        QVERIFY(told.size() >= 3 && told.size() <= 7 && std::is_sorted(told.begin(), told.end()));
        QVERIFY(told.front() > 0.1 && told.front() < 0.5 && told.back() > 0.7 && told.back() <= 1);
        for (int last : {0, 1, 2}) {
            int left = last;
            QVERIFY_THROWS_EXCEPTION(DocumentFile::Cancelled, read(large, [&](double) { return left-- > 0; }));
            left = last;
            QVERIFY_THROWS_EXCEPTION(DocumentFile::Cancelled, bytesOf(document, [&](double) { return left-- > 0; }));
        }
        const auto version = [&](char number) {
            return failure([&] { read(QByteArray(bytes).replace(8, 1, QByteArray(1, number))); });
        };
        QCOMPARE(
            version(2),
            QByteArray(
                R"(the document is of format version 2, written by a newer program; this one reads versions up to 1)"));
        QCOMPARE(version(0), QByteArray("there is no format version 0 of documents"));
        QCOMPARE(failure([&] { read(bytes.first(11)); }), QByteArray("the file is cut off after 11 bytes"));
        // Of an empty input, as its authors publish it.
        QCOMPARE(Checksum().result().toHex(), QByteArray("99aa06d3014798d86001c324468d497f"));
    }

    /// Lines of all ends, cut anywhere into the blocks that are read, against lines of the whole text.
    void linesOfFiles()
    {
        const QByteArray block(1 << 20, '-');
        const auto linesOf = [](const QByteArray &text) {
            QBuffer buffer;
            buffer.setData(text);
            buffer.open(QIODevice::ReadOnly);
            QByteArrayList lines;
            for (ReaderText::FileLines file(buffer, u"f"_s); file.next();) {
                lines.append(QByteArray(file.line().data(), qsizetype(file.line().size())));
                if (lines.last().endsWith('\r'))
                    lines.last().chop(1);
                if (file.number() != lines.size())
                    qFatal("the lines are miscounted");
            }
            return lines;
        };
        for (int shift = -3; shift <= 1; ++shift) {
            const QByteArray first = block.first(block.size() + shift - 600000), second = block.first(600000);
            for (const QByteArray &end : {QByteArray("\n"), QByteArray("\r\n"), QByteArray("\r")})
                QCOMPARE(linesOf(first + "\n" + second + end + "b\xC2\xA0" + 'c' + end + end + "d"),
                         (QByteArrayList{first, second, "b  c", "", "d"}));
            QCOMPARE(linesOf("\xEF\xBB\xBF" + first + '\n' + second.chopped(5) + "\xC2\xA0x\r"),
                     (QByteArrayList{first, second.chopped(5) + "  x"}));
        }
        QCOMPARE(linesOf(""), QByteArrayList());
        QCOMPARE(failure([&] { linesOf("a\n" + block + block + block); }),
                 QByteArray("f, line 2: this line is longer than 1048576 bytes"));
        QByteArray lines;
        for (ReaderText::Lines text("\xEF\xBB\xBFx\r\ry\r\nz\n\n", 4); text.next();)
            lines +=
                QByteArray::number(text.number()) + QByteArray(text.line().data(), qsizetype(text.line().size())) + ' ';
        QCOMPARE(lines, QByteArray("5x 6 7y 8z 9 "));
        QCOMPARE(ReaderText::excerpt(" " + std::string(40, 'x') + "\t"), u'"' + QString(40, u'x') + u'"');
        QCOMPARE(ReaderText::excerpt(std::string(41, 'x')), u'"' + QString(40, u'x') + QStringLiteral("…\""));
        QCOMPARE(ReaderText::decoded("\xC2\xB5"), u"µ"_s);
        QCOMPARE(ReaderText::decoded("\xB5"), u"µ"_s);
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"f"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("\xFE\xFF\0a\0b", 6) == 6);
        file.close();
        QCOMPARE(ReaderText::readText(path, 6), QByteArray("ab"));
        QCOMPARE(ReaderText::readStart(path, 4), QByteArray("a"));
        QVERIFY(ReaderText::readStart(folder.path(), 4).isEmpty());
        QCOMPARE(failure([&] { ReaderText::readFile(path, 5); }),
                 path.toUtf8() + ": the file has 6 bytes, at most 5 were expected");
        QCOMPARE(failure([&] { ReaderText::readFile(folder.path(), 5); }),
                 folder.path().toUtf8() + ": this is not a regular file");
    }

    void namesOfNuclei()
    {
        for (const auto &[text, name] : {std::pair("13C", "13C"), std::pair("^13c", "13C"), std::pair("al27", "27Al"),
                                         std::pair("<29SI>", "29Si"), std::pair("off", ""), std::pair("1", ""),
                                         std::pair("1024Xx", ""), std::pair("13Car", ""), std::pair("195Pt", "195Pt")})
            QCOMPARE(nucleusName(text), QLatin1String(name));
    }

    /// Two axes that rise, each turned by itself and both; the data go with them.
    void axesAreTurned()
    {
        for (int turned = 0; turned < 4; ++turned) {
            const bool f2 = turned & 1, f1 = turned & 2;
            const SpectrumDimension fast{{}, 0, 0, f2 ? 5.0 : 9.0, f2 ? 2.0 : -2.0, 3},
                slow{{}, 0, 0, f1 ? 40.0 : 50.0, f1 ? 10.0 : -10.0, 2};
            ExperimentalSpectrum spectrum{{}, {fast, slow}, {}};
            for (int i = 0; i < 6; ++i)
                spectrum.data.push_back((f2 ? 2 - i % 3 : i % 3) + 3 * (f1 ? 1 - i / 3 : i / 3));
            orient(spectrum, u"s"_s);
            QCOMPARE(spectrum.data, (std::vector<double>{0, 1, 2, 3, 4, 5}));
            const auto &[x, y] = std::tie(spectrum.dimensions[0], spectrum.dimensions[1]);
            QVERIFY(x.first == 9 && x.step == -2 && y.first == 50 && y.step == -10);
        }
        for (const auto &[first, step, message] :
             {std::tuple(1.0, 0.0, "s: an axis of 3 points from 1 to 1 ppm is not that of a spectrum"),
              std::tuple(1e6, -5.0, "s: an axis of 3 points from 1e+06 to 999990 ppm is not that of a spectrum"),
              std::tuple(0.0, -5e5, "s: an axis of 3 points from 0 to -1e+06 ppm is not that of a spectrum"),
              std::tuple(999999.0, -1.0, "")}) {
            ExperimentalSpectrum spectrum{{}, {{{}, 0, 0, first, step, 3}}, {1, 2, 3}};
            QCOMPARE(failure([&] { orient(spectrum, u"s"_s); }), QByteArray(message));
        }
    }
};

QTEST_GUILESS_MAIN(TestData)
#include "tst_data.moc"
