// SPDX-License-Identifier: BSD-3-Clause
#include "Crystals.h"
#include "Failure.h"
#include "Literal.h"
#include "TestData.h"
#include "reading/Bonds.h"
#include "reading/MoleculeCompletion.h"

#include <QTest>

#include <cstring>

using namespace Magres;
using namespace Qt::StringLiterals;

namespace {

using Crystals::Crystal;
using Crystals::Random;

QList<double> cubic(double edge)
{
    return {edge, 0, 0, 0, edge, 0, 0, 0, edge};
}

/// Completes twice, as reading does, and compares with the literal procedure after each time. Empty when all agrees.
QString differenceFromLiteral(Crystal crystal)
{
    const std::vector<double> radii = Literal::covalentRadii(crystal.atoms);
    Magres::detectBonds(crystal.atoms);
    QList<MagresAtom> literal = crystal.atoms;
    for (int round = 1; round <= 2; ++round) {
        Magres::completeMolecules(crystal.atoms, crystal.lattice);
        Literal::completeMolecules(literal, crystal.lattice, radii);
        for (qsizetype i = 0; i < literal.size(); ++i) {
            if (std::memcmp(&crystal.atoms.at(i).pos, &literal.at(i).pos, sizeof(Position)) != 0)
                return u"position of atom %1 in round %2"_s.arg(i).arg(round);
            if (crystal.atoms.at(i).bonds != literal.at(i).bonds)
                return u"bonds of atom %1 in round %2"_s.arg(i).arg(round);
        }
    }
    return {};
}

/// A few molecules' worth of atoms, at random in a random cell and wrapped into it or not, now and then with oddities.
/// `coarse` puts atoms and lattice on multiples of a number that makes distances fall on the limits of bonds.
Crystal randomCrystal(Random &random, bool coarse)
{
    const double unit = 0.0682; // H-H bonds end at 0.682 Angstrom
    const auto number = [&](double low, double high) {
        const double value = random.uniform(low, high);
        return coarse ? unit * std::round(value / unit) : value;
    };
    Crystal crystal;
    const double edge = random.uniform(1.0, 6.0);
    for (int i = 0; i < 9; ++i)
        crystal.lattice.append(i % 4 == 0 ? number(0.7 * edge, 1.3 * edge) : number(-0.3, 0.3));
    constexpr const char *species[] = {"H", "H", "C", "O", "Na", "Ne", "Ar"};
    const int kinds = coarse ? 1 + random.below(3) : 1 + random.below(7);
    const int count = 1 + random.below(28);
    const double far = random.below(8) == 0 ? std::exp2(random.below(60)) : 0.0; // where rounding shows
    for (int i = 0; i < count; ++i) {
        Position p;
        for (std::size_t axis = 0; axis < 3; ++axis)
            p[axis] = far + number(0.0, edge);
        if (i > 0 && random.below(3) == 0) { // next to another one
            p = crystal.atoms.at(random.below(i)).pos;
            p[std::size_t(random.below(3))] += coarse ? 10 * unit * (random.below(3) - 1) : random.uniform(-1.2, 1.2);
        }
        if (random.below(60) == 0)
            p[std::size_t(random.below(3))] =
                std::array{notANumber, infinity, -infinity, 1e17, -1e17, 1e308}[std::size_t(random.below(6))];
        crystal.atoms.append(atomAt(species[random.below(kinds)], p));
    }
    if (random.below(20) == 0)
        crystal.lattice[random.below(9)] =
            std::array{notANumber, infinity, 1e17, 1e308, -1e308}[std::size_t(random.below(5))];
    return crystal;
}

/// Hydrogens on both sides of a translation so long that their positions round to quarters of an Angstrom: bonds within
/// a molecule break and form when it moves.
Crystal roundedCrystal(Random &random)
{
    constexpr double edge = 0x1p50;
    Crystal crystal;
    crystal.lattice = {edge, 0, 0, 0, 50, 0, 0, 0, 50};
    const int count = 2 + random.below(14);
    for (int i = 0; i < count; ++i) {
        const double side = random.below(2) == 0 ? 0.0 : edge;
        crystal.atoms.append(
            atomAt("H", {side + random.uniform(0.0, 4.0), random.uniform(0.0, 0.4), random.uniform(0.0, 0.2)}));
    }
    return crystal;
}

} // namespace

class tst_moleculecompletion : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void leavesAtomsAlone()
    {
        Crystal crystal = Crystals::molecular(60);
        Magres::detectBonds(crystal.atoms);
        for (const QList<double> &lattice :
             {QList<double>{}, QList<double>(8, 10.0), QList<double>(10, 10.0), QList<double>(9, 0.0),
              QList<double>{30, 0, 0, 60, 0, 0, 90, 0, 0}, // parallel vectors, out of reach
              QList<double>{notANumber, 0, 0, 0, 10, 0, 0, 0, 10}, QList<double>{10, 0, 0, 0, infinity, 0, 0, 0, 10},
              QList<double>(9, 1e308)}) {
            crystal.lattice = lattice;
            QList<MagresAtom> atoms = crystal.atoms;
            Magres::completeMolecules(atoms, lattice);
            for (qsizetype i = 0; i < atoms.size(); ++i)
                QCOMPARE(atoms.at(i).toMap(), crystal.atoms.at(i).toMap());
        }
    }

    /// Where every translation leaves every atom among all others, as never in a crystal, there is an end.
    void cellsThatAreFarTooSmall()
    {
        Crystal crystal;
        for (int i = 0; i < 3000; ++i) // not bonded, but within the reach of a caesium's bond
            crystal.atoms.append(atomAt("H", {0.75 * (i % 12), 0.75 * (i / 12 % 12), 0.75 * (i / 144)}));
        crystal.atoms.append(atomAt("Cs", {-9, 0, 0}));
        Magres::detectBonds(crystal.atoms);
        QVERIFY(failure([&] { Magres::completeMolecules(crystal.atoms, cubic(0.05)); }).startsWith("Too many atoms"));
        // The same atoms in cells that hold them.
        for (double edge : {16.0, 40.0})
            QCOMPARE(failure([&] { Magres::completeMolecules(crystal.atoms, cubic(edge)); }), QByteArray());
    }

    void equalsLiteral()
    {
        const auto row = [](const char *name, const Crystal &crystal) {
            QVERIFY2(differenceFromLiteral(crystal).isEmpty(), name + differenceFromLiteral(crystal).toUtf8());
        };
        row("molecules", Crystals::molecular(180, 3));
        row("framework", Crystals::framework(120));
        row("nothing", {{}, cubic(10.0)});
        row("coincident atoms", {QList<MagresAtom>(20, atomAt("H", {1, 2, 3})), cubic(5.0)});

        Crystal stretched = Crystals::molecular(60, 5);
        stretched.lattice = {1.5, 0, 0, 3.0, 0, 0, 4.5, 0, 0};
        row("parallel vectors within reach", stretched);

        // A pair that breaks when it moves 2^50 Angstrom, and what it meets there: on the start atom's side or the
        // other's.
        const auto breaking = [](const QList<double> &there) {
            Crystal crystal = {{atomAt("H", {0, 0, 0}), atomAt("H", {0.65, 0, 0})}, {0x1p50, 0, 0, 0, 50, 0, 0, 0, 50}};
            for (double x : there)
                crystal.atoms.append(atomAt("H", {0x1p50 + x, 0, 0}));
            return crystal;
        };
        row("the start atom is left behind", breaking({1.25, 1.75, 2.25}));
        row("the start atom gains enough", breaking({-0.5, -1.0, -1.5}));
        row("both gain", breaking({-0.5, -1.0, -1.5, 1.25, 1.75}));
    }

    /// Anywhere, with distances at the limits of bonds, and with bonds changed by rounding. MAGRES_FUZZ_ROUNDS in the
    /// environment: another number of crystals.
    void randomCrystalsEqualLiteral()
    {
        bool isSet = false;
        const int wanted = qEnvironmentVariableIntValue("MAGRES_FUZZ_ROUNDS", &isSet);
        const int rounds = isSet ? wanted : 300;
        for (int kind = 0; kind < 3; ++kind) {
            int changed = 0;
            for (int seed = 0; seed < rounds; ++seed) {
                Random random(std::uint64_t(seed) + 1);
                Crystal crystal = kind == 2 ? roundedCrystal(random) : randomCrystal(random, kind == 1);
                const QString difference = differenceFromLiteral(crystal);
                QVERIFY2(difference.isEmpty(), qPrintable(u"%1, seed %2"_s.arg(difference).arg(seed)));
                const QList<MagresAtom> before = crystal.atoms;
                Magres::detectBonds(crystal.atoms);
                Magres::completeMolecules(crystal.atoms, crystal.lattice);
                changed += !std::equal(before.begin(), before.end(), crystal.atoms.begin(),
                                       [](const MagresAtom &a, const MagresAtom &b) { return a.pos == b.pos; });
            }
            QVERIFY2(changed > rounds / 4, qPrintable(u"only %1 crystals had anything to move"_s.arg(changed)));
        }
    }
};

QTEST_GUILESS_MAIN(tst_moleculecompletion)
#include "tst_moleculecompletion.moc"
