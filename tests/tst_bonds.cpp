// SPDX-License-Identifier: BSD-3-Clause
#include "Crystals.h"
#include "Literal.h"
#include "reading/BondCriterion.h"
#include "reading/BondKernel.h"
#include "reading/Bonds.h"

#include <QTest>

#include <limits>

using namespace Magres;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

MagresAtom atomAt(const char *species, double x, double y = 0.0, double z = 0.0)
{
    MagresAtom atom;
    atom.type = species;
    atom.pos = {x, y, z};
    return atom;
}

/// Atoms of mixed species, known and unknown, so dense that many pairs are near their limits.
QList<MagresAtom> randomAtoms(int count, std::uint64_t seed)
{
    constexpr const char *species[] = {"H", "C", "O", "Na", "Ar", "Xyz"};
    constexpr double odd[] = {notANumber, infinity, -infinity, 1e200, -1e200, 1e308, 5e-324, -0.0};
    Crystals::Random random(seed);
    QList<MagresAtom> atoms;
    for (int i = 0; i < count; ++i) {
        const double edge = 2.0 * std::cbrt(count);
        MagresAtom atom =
            atomAt(species[random.below(6)], random.uniform(0, edge), random.uniform(0, edge), random.uniform(0, edge));
        if (random.below(10) == 0)
            atom.pos[std::size_t(random.below(3))] = odd[random.below(8)];
        if (i > 0 && random.below(10) == 0)
            atom.pos = atoms.at(random.below(i)).pos;
        atoms.append(atom);
    }
    return atoms;
}

} // namespace

class tst_bonds : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pairs()
    {
        // Radii: H 0.31, C 0.76, Na 1.66; none for Ar and Xyz.
        for (const auto &[a, b, distance, bonded] :
             {std::tuple("H", "H", 0.65, true), std::tuple("H", "H", 0.70, false), std::tuple("C", "C", 1.671, true),
              std::tuple("C", "C", 1.673, false), std::tuple("H", "Na", 2.166, true),
              std::tuple("H", "Na", 2.168, false), std::tuple("C", "C", 0.0, true), std::tuple("Ar", "C", 0.5, false),
              std::tuple("Xyz", "Xyz", 0.0, false), std::tuple("C", "C", infinity, false),
              std::tuple("C", "C", notANumber, false), std::tuple("C", "C", 1e200, false)}) { // squares overflow
            QList<MagresAtom> atoms = {atomAt(a, 0.0), atomAt(b, 0.0, distance)};
            atoms[0].bonds = {7}; // what was there before goes
            Magres::detectBonds(atoms);
            QCOMPARE(atoms.at(0).bonds, bonded ? QList<qint32>{1} : QList<qint32>{});
            QCOMPARE(atoms.at(1).bonds, bonded ? QList<qint32>{0} : QList<qint32>{});
        }
    }

    void limitIsThatOfTheExpression()
    {
        const QByteArrayList species = {"H", "He", "C", "N", "O", "Si", "Na", "K", "Cs", "U"};
        for (const QByteArray &a : species) {
            for (const QByteArray &b : species) {
                const double R = Magres::covalentRadius(a) + Magres::covalentRadius(b);
                const auto bonded = [R](double squared) {
                    const double D = std::sqrt(squared);
                    return R > D || 0.1 * R > std::abs(D - R);
                };
                const double limit = Magres::BondCriterion::largestSquaredDistance(R);
                QVERIFY(bonded(limit));
                QVERIFY(!bonded(std::nextafter(limit, infinity)));
                // No gap below and no island above, as far as rounding could make any.
                double below = limit;
                double above = std::nextafter(limit, infinity);
                for (int i = 0; i < 50; ++i) {
                    QVERIFY(bonded(below = std::nextafter(below, 0.0)));
                    QVERIFY(!bonded(above = std::nextafter(above, infinity)));
                }
            }
        }
    }

    void variantsEqualTheLiteralProcedure_data()
    {
        QTest::addColumn<QList<MagresAtom>>("atoms");
        for (int count : {0, 1, 2, 7, 8, 9, 31, 32, 33, 250})
            QTest::addRow("%d random atoms", count) << randomAtoms(count, std::uint64_t(count) + 1);
        QTest::addRow("molecules") << Crystals::molecular(300).atoms;
        QTest::addRow("framework") << Crystals::framework(300).atoms;
        QTest::addRow("all in one place") << QList<MagresAtom>(60, atomAt("C", 1.0, 2.0, 3.0));
    }

    void variantsEqualTheLiteralProcedure()
    {
        QFETCH(QList<MagresAtom>, atoms);
        QList<MagresAtom> literal = atoms;
        Literal::detectBonds(literal, Literal::covalentRadii(literal));
        for (Magres::InstructionSet set : Magres::instructionSets) {
            if (!Magres::isSupported(set))
                continue;
            Magres::detectBonds(set, atoms);
            for (qsizetype i = 0; i < atoms.size(); ++i)
                QCOMPARE(atoms.at(i).bonds, literal.at(i).bonds);
        }
    }
};

QTEST_GUILESS_MAIN(tst_bonds)
#include "tst_bonds.moc"
