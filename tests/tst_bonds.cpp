// SPDX-License-Identifier: BSD-3-Clause
#include "Crystals.h"
#include "Failure.h"
#include "Literal.h"
#include "TestData.h"
#include "reading/BondCriterion.h"
#include "reading/Bonds.h"
#include "reading/NearestImage.h"

#include <QTest>

using namespace Magres;

namespace {

using Cell = std::array<Position, 3>;

/// Whether many distances at once are the same bits as each alone, with every instruction set. All NaN count as one.
bool agreeAtOnce(const NearestImage &images, const Position &from, const PositionColumns &points)
{
    std::vector<double> squared(points.size());
    for (InstructionSet set : instructionSets) {
        if (!isSupported(set))
            continue;
        images.squaredDistances(set, from, points, squared);
        for (std::size_t i = 0; i < squared.size(); ++i) {
            const double one = images.distance(from, points[i]);
            if (std::sqrt(squared[i]) != one && !(std::isnan(squared[i]) && std::isnan(one)))
                return false;
        }
    }
    return true;
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
        MagresAtom atom = atomAt(species[random.below(6)],
                                 {random.uniform(0, edge), random.uniform(0, edge), random.uniform(0, edge)});
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
            QList<MagresAtom> atoms = {atomAt(a, {}), atomAt(b, {0, distance, 0})};
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

    void equalsTheLiteralProcedure()
    {
        const auto check = [](const char *name, QList<MagresAtom> atoms) {
            QList<MagresAtom> literal = atoms;
            Literal::detectBonds(literal, Literal::covalentRadii(literal));
            Magres::detectBonds(atoms);
            for (qsizetype i = 0; i < atoms.size(); ++i)
                QVERIFY2(atoms.at(i).bonds == literal.at(i).bonds, name + QByteArray::number(i));
        };
        for (int count : {0, 1, 2, 7, 8, 9, 31, 32, 33, 250})
            check("random, of these: ", randomAtoms(count, std::uint64_t(count) + 1));
        check("molecules: ", Crystals::molecular(300).atoms);
        check("framework: ", Crystals::framework(300).atoms);
        // Neighbours almost as far apart as cells of the search are wide, in every direction.
        for (std::size_t axis : {0, 1, 2}) {
            QList<MagresAtom> chain;
            for (int i = 0; i < 700; ++i) {
                chain.append(atomAt("H", {-200, 50, 50}));
                chain.last().pos[axis] += 0.6819 * i;
            }
            check("chain: ", chain);
        }
        check("all in one place: ", QList<MagresAtom>(60, atomAt("C", {1, 2, 3})));
    }

    void tooManyBondsAreRefused()
    {
        QList<MagresAtom> atoms(501, atomAt("C", {1, 2, 3}));
        Magres::detectBonds(atoms);
        QCOMPARE(atoms.constFirst().bonds.size(), 500);
        atoms.append(atomAt("H", {1.5, 2, 3}));
        atoms.last().No = 7;
        const QByteArray told = failure([&] { Magres::detectBonds(atoms); });
        QVERIFY2(told.contains("more than 500 bonds"), told);
        QCOMPARE(atoms.constFirst().bonds.size(), 500);
        QVERIFY(atoms.constLast().bonds.isEmpty());
    }

    /// However the lattice is described: other vectors of it, up to thousands of times as long, whose parallelepiped is
    /// as flat as that makes it. Cubic, face-centred, body-centred, hexagonal, triclinic, a needle and a plate.
    void nearestImages()
    {
        const double h = 2.1;
        for (const Cell &cell :
             {Cell{{{4, 0, 0}, {0, 4, 0}, {0, 0, 4}}}, Cell{{{0, h, h}, {h, 0, h}, {h, h, 0}}},
              Cell{{{-h, h, h}, {h, -h, h}, {h, h, -h}}}, Cell{{{5, 0, 0}, {-2.5, 2.5 * std::sqrt(3.0), 0}, {0, 0, 7}}},
              Cell{{{5, 0.3, 0}, {2.4, 6, 0.2}, {-2.2, 2.7, 8}}}, Cell{{{2, 0, 0}, {0.9, 2, 0}, {0.8, -0.7, 60}}},
              Cell{{{50, 0, 0}, {13, 45, 0}, {1, 2, 2}}}}) {
            Crystals::Random random(11);
            for (int round = 0; round < 60; ++round) {
                Cell skewed = cell;
                for (int step = round % 7; step > 0; --step) {
                    const auto to = std::size_t(random.below(3));
                    const double factor = random.below(2) == 0 ? random.below(5) - 2 : random.below(101) - 50;
                    skewed[to] = Magres::plusScaled(skewed[to], factor, skewed[(to + 1 + std::size_t(step % 2)) % 3]);
                }
                QList<double> lattice;
                double longest = 0.0;
                for (const Position &vector : skewed) {
                    lattice.append({vector[0], vector[1], vector[2]});
                    longest = std::max(longest, std::sqrt(Magres::dot(vector, vector)));
                }
                if (longest > 1e4)
                    continue;
                const Magres::NearestImage images(lattice);
                QVERIFY(images.isPeriodic());
                PositionColumns points;
                for (int i = 0; i < 30; ++i) {
                    const double spread = i % 3 == 0 ? 100.0 : 4.0;
                    const Position v = {random.uniform(-spread, spread), random.uniform(-spread, spread),
                                        random.uniform(-spread, spread)};
                    const double expected = Literal::shortestImage(v, cell);
                    points.append(v);
                    const double found = images.distance(v, {});
                    // A rounding error of the longest vector counts as often as it takes to make it short.
                    QVERIFY2(
                        std::abs(found - expected) < 1e-12 + 1e-14 * longest * longest,
                        qPrintable(
                            QStringLiteral("off by %1 in a cell as long as %2").arg(found - expected).arg(longest)));
                }
                for (const Position &from : {Position{}, points[7]})
                    QVERIFY(agreeAtOnce(images, from, points));
            }
        }
    }

    void noImages()
    {
        for (const QList<double> &lattice :
             {QList<double>{}, QList<double>(8, 10.0), QList<double>(9, 0.0), QList<double>(9, 1e308),
              QList<double>{30, 0, 0, 60, 0, 0, 90, 0, 0}, // on a line
              QList<double>{1.1, 2.3, 0.7, 3.7, 0.1, 0.4, 4.8, 2.4, 1.1}, // in a plane, but for rounding
              QList<double>{1e17, 3e16, 7, 3e16, 9e15, 2, 1, 0, 1e17}, QList<double>{5, 0, 0, 0, 5, 0, 0, 0, 0},
              QList<double>{0.01, 0, 0, 0, 5, 0, 0, 0, 5}, QList<double>{5, 0, 0, 0, 1e-300, 0, 0, 0, 1e150},
              QList<double>{notANumber, 0, 0, 0, 10, 0, 0, 0, 10}, QList<double>{10, 0, 0, 0, infinity, 0, 0, 0, 10}}) {
            const Magres::NearestImage images(lattice);
            QVERIFY(!images.isPeriodic());
            QCOMPARE(images.distance({30, 0, 4}, {0, 0, 0}), std::sqrt(916.0));
            QVERIFY(agreeAtOnce(images, {30, 0, 4}, {{0, infinity, 1}, {0, 0, notANumber}, {0, -1e300, 2}}));
        }
        // Far away there is no telling, but there is an end.
        const Magres::NearestImage images({5, 1, 0, 0, 5, 1, 2, 0, 5});
        for (double far : {1e15, 1e17, 1e200, 1e308, infinity, notANumber}) {
            images.distance({far, -far, 1.0}, {0.5, far, -1.0});
            QVERIFY(agreeAtOnce(images, {far, -far, 1.0}, {{0.5, 1, far}, {far, 2, -far}, {-1.0, 3, 0.0}}));
        }
    }
};

QTEST_GUILESS_MAIN(tst_bonds)
#include "tst_bonds.moc"
