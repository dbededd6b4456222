// SPDX-License-Identifier: BSD-3-Clause
#include "Crystals.h"
#include "Program.h"
#include "analysis/comparison/Lattice.h"
#include "analysis/comparison/NucleusComparison.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <numeric>

using namespace Qt::StringLiterals;
using namespace Workbench;
using Crystals::Random;

Q_DECLARE_METATYPE(std::function<std::vector<Workbench::Vector3>(double, double, double)>)

namespace {

constexpr int siteCount = 9; // carbons, and as many protons
constexpr double references[] = {170, 30};

double normal(Random &random)
{
    return std::sqrt(-2 * std::log(1 - random.uniform(0, 1))) * std::cos(2 * std::numbers::pi * random.uniform(0, 1));
}

/// What was measured, and what structures of the pool would give.
struct Pool {
    static constexpr int size = 10;
    std::array<std::vector<double>, 2> shifts; ///< 13C, 1H, ppm, by site
    std::vector<std::array<std::vector<double>, 2>> shieldings; ///< of each structure
    int right = 0;

    explicit Pool(std::uint64_t seed)
    {
        Random random(seed);
        right = random.below(size);
        const double spread[] = {160, 11}, ownError[] = {1.6, 0.25}, otherError[] = {4.5, 0.8};
        for (std::size_t n = 0; n < 2; ++n)
            for (int i = 0; i < siteCount; ++i)
                shifts[n].push_back(random.uniform(0, spread[n]));
        for (int structure = 0; structure < size; ++structure) {
            shieldings.emplace_back();
            for (std::size_t n = 0; n < 2; ++n)
                for (double shift : shifts[n])
                    shieldings.back()[n].push_back(
                        references[n] - shift + (structure == right ? ownError[n] : otherError[n]) * normal(random));
        }
    }
};

/// P-1 with two molecules or P2_1/c with four, the sites at random places, each image of a site with its shielding.
QByteArray crystalText(const std::array<std::vector<double>, 2> &shieldings, bool isMonoclinic, std::uint64_t seed)
{
    Random random(seed);
    QByteArray text = "#$magres-abinitio-v1.0\n[calculation]\ncalc_code CASTEP\ncalc_xcfunctional PBE\n[/calculation]\n"
                      "[atoms]\nunits lattice Angstrom\nunits atom Angstrom\n";
    const double edge = isMonoclinic ? 34 : 27;
    text += "lattice " + QByteArray::number(edge) + " 0 0 0 " + QByteArray::number(edge + 1)
        + (isMonoclinic ? " 0 -3 0 " : " 2 -3 4 ") + QByteArray::number(edge + 2) + '\n';
    const double c[3] = {-3, isMonoclinic ? 0.0 : 4.0, edge + 2}, b[3] = {0, edge + 1, isMonoclinic ? 0.0 : 2.0};
    QByteArray atoms, tensors;
    const char *elements[] = {"C", "H"};
    for (std::size_t n = 0; n < 2; ++n) {
        int number = 0;
        for (int i = 0; i < siteCount; ++i) {
            const double x = random.uniform(0.05, 0.45), y = random.uniform(0.05, 0.2), z = random.uniform(0.05, 0.45);
            std::vector<std::array<double, 3>> images{{x, y, z}, {1 - x, 1 - y, 1 - z}};
            if (isMonoclinic) {
                images.push_back({1 - x, y + 0.5, 0.5 - z});
                images.push_back({x, 0.5 - y, z + 0.5});
            }
            for (const auto &[fx, fy, fz] : images) {
                const QByteArray name = QByteArray(elements[n]) + ' ' + QByteArray::number(++number);
                atoms += "atom " + QByteArray(elements[n]) + ' ' + name;
                for (int axis = 0; axis < 3; ++axis)
                    atoms +=
                        ' ' + QByteArray::number((axis == 0 ? fx * edge : 0) + fy * b[axis] + fz * c[axis], 'f', 9);
                const QByteArray iso = QByteArray::number(shieldings[n][std::size_t(i)], 'f', 9);
                atoms += '\n';
                tensors += "ms " + name + ' ' + iso + " 0 0 0 " + iso + " 0 0 0 " + iso + '\n';
            }
        }
    }
    return text + atoms + "[/atoms]\n[magres]\nunits ms ppm\n" + tensors + "[/magres]\n";
}

/// Sorted shifts of which the closest neighbours have become one line, `merges` times.
std::vector<double> merged(std::vector<double> shifts, int merges)
{
    std::sort(shifts.begin(), shifts.end());
    for (int i = 0; i < merges; ++i) {
        std::size_t closest = 1;
        for (std::size_t k = 1; k < shifts.size(); ++k)
            if (shifts[k] - shifts[k - 1] < shifts[closest] - shifts[closest - 1])
                closest = k;
        shifts[closest - 1] = (shifts[closest - 1] + shifts[closest]) / 2;
        shifts.erase(shifts.begin() + std::ptrdiff_t(closest));
    }
    return shifts;
}

QByteArray peakList(const std::vector<double> &shifts)
{
    QByteArray list = "position\n";
    for (double shift : shifts)
        list += QByteArray::number(shift, 'f', 6) + '\n';
    return list;
}

} // namespace

/// Structures held against lines: what the program prints, and how sure it is.
class TestCompare : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        for (int i = 0; i < Pool::size; ++i)
            m_files.append(m_program.write("s" + QByteArray::number(i) + ".magres",
                                           crystalText(m_pool.shieldings[std::size_t(i)], i % 2, 7 + i)));
        m_program.write("c.csv", peakList(m_pool.shifts[0]));
        m_program.write("h.csv", peakList(m_pool.shifts[1]));
        m_program.write("few.txt", "s1 0\n");
    }

    void sitesOfSpaceGroups_data()
    {
        using Images = std::function<std::vector<Vector3>(double, double, double)>;
        QTest::addColumn<LatticeVectors>("cell");
        QTest::addColumn<Images>("images");
        const LatticeVectors triclinic{{{9, 0, 0}, {2, 10, 0}, {-3, 1, 12}}},
            monoclinic{{{9, 0, 0}, {0, 10, 0}, {-3, 0, 12}}},
            hexagonal{{{9, 0, 0}, {-4.5, 9 * std::sqrt(0.75), 0}, {0, 0, 12}}},
            cubic{{{11, 0, 0}, {0, 11, 0}, {0, 0, 11}}};
        const auto row = [](const char *group, const LatticeVectors &cell, const Images &images) {
            QTest::newRow(group) << cell << images;
        };
        using List = std::vector<Vector3>;
        row("P1 (1)", triclinic, [](double x, double y, double z) { return List{{x, y, z}}; });
        row("P-1 (2)", triclinic, [](double x, double y, double z) { return List{{x, y, z}, {-x, -y, -z}}; });
        row("P2_1 (4)", monoclinic, [](double x, double y, double z) { return List{{x, y, z}, {-x, y + 0.5, -z}}; });
        row("Pc (7)", monoclinic, [](double x, double y, double z) { return List{{x, y, z}, {x, -y, z + 0.5}}; });
        row("P3 (143)", hexagonal, [](double x, double y, double z) {
            return List{{x, y, z}, {-y, x - y, z}, {y - x, -x, z}};
        });
        row("R3 (146)", cubic, [](double x, double y, double z) { return List{{x, y, z}, {z, x, y}, {y, z, x}}; });
    }
    /// In cells as they are and in skewed ones, with atoms that are a little off.
    void sitesOfSpaceGroups()
    {
        QFETCH(LatticeVectors, cell);
        using Images = std::function<std::vector<Vector3>(double, double, double)>;
        QFETCH(Images, images);
        for (int seed = 1; seed <= 40; ++seed) {
            Random random{std::uint64_t(seed)};
            const Lattice plain = *Lattice::of(cell);
            CrystalStructure structure;
            structure.lattice = cell;
            for (std::size_t axis = 0; seed % 2 && axis < 3; ++axis) {
                (*structure.lattice)[1][axis] -= cell[0][axis];
                (*structure.lattice)[2][axis] += 2 * cell[0][axis];
            }
            for (int i = 0; i < siteCount; ++i)
                for (const Vector3 &image : images(random.uniform(0, 1), random.uniform(0, 1), random.uniform(0, 1))) {
                    CrystalAtom atom;
                    atom.element = i % 4 ? u"C"_s : u"N"_s;
                    atom.labels = QStringList{u"X%1"_s.arg(structure.atoms.size())};
                    atom.position = plain.cartesian(image);
                    for (double &coordinate : atom.position)
                        coordinate += random.uniform(-0.002, 0.002);
                    structure.atoms.push_back(atom);
                }
            const UniqueSites unique = UniqueSites::of(structure, {});
            QCOMPARE(unique.sites.size(), std::size_t(siteCount));
            QCOMPARE(unique.spaceGroup, QString::fromLatin1(QTest::currentDataTag()));
        }
    }

    void theRightOneIsFirstInEveryMode_data()
    {
        QTest::addColumn<QByteArray>("list");
        QTest::addColumn<QByteArray>("options");
        QTest::addColumn<QString>("pairing");
        const std::vector<double> &shifts = m_pool.shifts[0];
        QByteArray named = "position,site\n", counted = "position,count\n";
        for (int i = 0; i < siteCount; ++i)
            named += QByteArray::number(shifts[std::size_t(i)]) + (i < 3 ? "," : ",C")
                + (i < 3 ? QByteArray() : QByteArray::number(2 * i + 1)) + '\n';
        const std::vector<double> sorted = merged(shifts, 0), fewer = merged(shifts, 2);
        for (std::size_t i = 0; i + 1 < sorted.size(); ++i)
            counted += i == 0 ? QByteArray::number((sorted[0] + sorted[1]) / 2) + ",2\n"
                              : QByteArray::number(sorted[i + 1]) + ",1\n";
        std::vector<double> more = shifts;
        more.push_back(77.7);
        QTest::newRow("equal") << peakList(shifts) << QByteArray() << u"equal"_s;
        QTest::newRow("overlap") << peakList(fewer) << QByteArray() << u"overlap"_s;
        QTest::newRow("counts") << counted << QByteArray() << u"overlap by counts"_s;
        QTest::newRow("unmatched") << peakList(more) << QByteArray(" --unmatched 1") << u"unmatched"_s;
        QTest::newRow("labels ignored") << named << QByteArray(" --ignore-labels") << u"equal"_s;
    }
    /// Cells with two and with four molecules, one list.
    void theRightOneIsFirstInEveryMode()
    {
        QFETCH(QByteArray, list);
        QFETCH(QByteArray, options);
        QFETCH(QString, pairing);
        m_program.write("list.csv", list);
        const QJsonArray rows = rank("--experiment 13C=@list.csv" + options);
        QCOMPARE(rows.size(), Pool::size);
        QCOMPARE(rows[0][u"file"].toString(), m_files[m_pool.right]);
        QCOMPARE(rows[0][u"pairing"].toString(), pairing);
        QCOMPARE(rows[0][u"sites"].toInt(), siteCount);
        double sum = 0;
        for (const QJsonValue &row : rows)
            sum += row[u"probability"].toDouble();
        QVERIFY(std::abs(sum - 1) < 1e-9);
    }

    /// In cells of two molecules, labels C1, C3, C5… are the sites.
    void namedLinesGoWhereTheySay()
    {
        // The wrong way round: what was assigned is not put right.
        QByteArray list = "position,site\n";
        for (int i = 0; i < siteCount; ++i)
            list += QByteArray::number(m_pool.shifts[0][std::size_t(siteCount - 1 - i)]) + ",C"
                + QByteArray::number(2 * i + 1) + '\n';
        m_program.write("named.csv", list);
        const QJsonObject nucleus = compare(0, "--experiment 13C=@named.csv");
        QCOMPARE(nucleus[u"pairing"].toString(), u"assigned"_s);
        for (const QJsonValue &pair : nucleus[u"pairs"].toArray()) {
            const int site = QStringView(pair[u"atoms"][0].toString()).mid(1).toInt() / 2;
            QVERIFY(std::abs(pair[u"measured"].toDouble() - m_pool.shifts[0][std::size_t(siteCount - 1 - site)])
                    < 1e-3);
        }
        m_program.write("named.csv", list.replace(",C1\n", ",C99\n"));
        m_program.run("compare --experiment 13C=@named.csv", {m_files[0]});
        QVERIFY(m_program.status == 1 && m_program.errors.contains("C99"));
    }

    /// Several nuclei add up, energies weigh in; parts, processes and lists of files change nothing.
    void severalNuclei()
    {
        const QByteArray experiments = "--experiment 13C=@c.csv --experiment 1H=@h.csv ";
        const QJsonArray carbon = rank("--experiment 13C=@c.csv"), proton = rank("--experiment 1H=@h.csv"),
                         both = rank(experiments);
        QCOMPARE(both[0][u"file"].toString(), m_files[m_pool.right]);
        const auto of = [](const QJsonArray &rows, const QString &file) {
            return std::find_if(rows.begin(), rows.end(), [&](const QJsonValue &row) { return row[u"file"] == file; });
        };
        for (const QJsonValue &row : both) {
            const QString file = row[u"file"].toString();
            for (const char *column : {"log_likelihood", "log_likelihood_wide", "chi2", "dof"}) {
                const QLatin1String name(column);
                const double sum = (*of(carbon, file))[name].toDouble() + (*of(proton, file))[name].toDouble();
                QVERIFY(std::abs(row[name].toDouble() - sum) < 1e-9 * std::abs(sum) + 1e-12);
            }
            QVERIFY(std::abs(row[u"13C_rmsd"].toDouble() - (*of(carbon, file))[u"rmsd"].toDouble()) < 1e-9);
            // σ = 2.2 and 0.33 ppm; p of a χ² with an even number of degrees of freedom is a finite sum.
            const double half = row[u"chi2"].toDouble() / 2;
            double term = std::exp(-half), p = 0;
            for (int k = 0; k < row[u"dof"].toInt() / 2; term *= half / ++k)
                p += term;
            QVERIFY(std::abs(row[u"p"].toDouble() - p) < 1e-9);
            QCOMPARE(row[u"fit"].toString(),
                     row[u"13C_p"].toDouble() < 1e-3 || row[u"1H_p"].toDouble() < 1e-3 || p < 1e-3 ? u"bad"_s
                                                                                                   : u"ok"_s);
        }

        QByteArray energies = "structure energy\n";
        for (int i = 0; i < Pool::size; ++i)
            energies += "s" + QByteArray::number(i) + ' ' + (i == m_pool.right ? "40" : "0") + '\n';
        m_program.write("energies.txt", energies);
        const QJsonArray cold = rank(experiments + "--energies @energies.txt --temperature 20");
        QVERIFY(cold[0][u"file"].toString() != m_files[m_pool.right]);
        const QJsonArray hot = rank(experiments + "--energies @energies.txt --temperature 1e9");
        QVERIFY(std::abs(hot[0][u"probability"].toDouble() - both[0][u"probability"].toDouble()) < 1e-6);

        const QByteArray all = m_program.run("rank --format csv " + experiments, m_files);
        QCOMPARE(
            m_program.run("rank --format csv --jobs 2 --files-from - " + experiments, {}, m_files.join(u'\n').toUtf8()),
            all);
        m_program.write("1.csv", m_program.run("rank --format csv " + experiments, m_files.first(4)));
        m_program.write("2.csv", m_program.run("rank --format csv " + experiments, m_files.mid(4)));
        QCOMPARE(m_program.run("rank --merge --format csv @2.csv @1.csv"), all);
        m_program.write("2.csv", m_program.run("rank --format csv --sigma 1H=0.4 " + experiments, m_files.mid(4)));
        m_program.run("rank --merge @1.csv @2.csv");
        QVERIFY(m_program.status == 1 && m_program.errors.contains("another σ"));
    }

    /// Averages over many pools; a single one may be lucky.
    void mergedLinesMakeLessSure()
    {
        constexpr int pools = 150;
        std::vector<double> given;
        for (int merges : {0, 2, 4, 6}) {
            double sum = 0;
            for (int seed = 1; seed <= pools; ++seed) {
                const Pool pool{std::uint64_t(seed)};
                std::vector<double> likelihoods;
                NucleusMeasurement measurement;
                measurement.nucleus = u"1H"_s;
                measurement.sigma = 0.33;
                for (double shift : merged(pool.shifts[1], merges))
                    measurement.lines.push_back({shift, {}, {}});
                for (const auto &shieldings : pool.shieldings) {
                    CrystalStructure structure;
                    for (double iso : shieldings[1]) {
                        CrystalAtom atom;
                        atom.element = u"H"_s;
                        atom.labels = QStringList{u"H%1"_s.arg(structure.atoms.size())};
                        atom.shielding = Tensor3{iso, 0, 0, 0, iso, 0, 0, 0, iso};
                        structure.atoms.push_back(atom);
                    }
                    const NucleusComparison comparison =
                        NucleusComparison::of(structure, UniqueSites::of(structure, {0}), measurement);
                    likelihoods.push_back(*comparison.logLikelihood(measurement, 1));
                }
                sum += poolProbabilities(likelihoods, std::vector<double>(Pool::size))[std::size_t(pool.right)];
            }
            given.push_back(sum / pools);
        }
        qInfo("mean probability of the right structure: %.3f %.3f %.3f %.3f", given[0], given[1], given[2], given[3]);
        QVERIFY(given[0] > 0.8 && std::is_sorted(given.rbegin(), given.rend()));
    }

    void numbersOfAComparison_data()
    {
        QTest::addColumn<QByteArray>("options");
        QTest::addColumn<int>("sites");
        QTest::addColumn<int>("dof");
        QTest::newRow("one nucleus") << QByteArray("--nucleus 13C --experiment " SAMPLES "/paracetamol-13C.csv") << 8
                                     << 7;
        QTest::newRow("picked") << QByteArray("--nucleus 13C --experiment " SAMPLES "/paracetamol-13C-bruker") << 8
                                << 7;
        QTest::newRow("slope fitted") << QByteArray("--nucleus 13C --slope fit --experiment " SAMPLES
                                                    "/paracetamol-13C.csv")
                                      << 8 << 6;
        QTest::newRow("reference given") << QByteArray("--reference 30.4 --average ch3 --experiment 1H=" SAMPLES
                                                       "/paracetamol-1H.csv")
                                         << 7 << 7;
        QTest::newRow("methyl") << QByteArray("--average ch3 --experiment 1H=" SAMPLES "/paracetamol-1H.csv") << 7 << 6;
        QTest::newRow("each place once") << QByteArray("--experiment 1H=" SAMPLES "/paracetamol-1H.csv") << 9 << 8;
        QTest::newRow("no symmetry") << QByteArray("--symmetry-tolerance 0 --experiment 13C=" SAMPLES
                                                   "/paracetamol-13C.csv")
                                     << 32 << 31;
    }
    /// What is printed of the whole follows from what is printed of the pairs.
    void numbersOfAComparison()
    {
        QFETCH(QByteArray, options);
        QFETCH(int, sites);
        QFETCH(int, dof);
        const QByteArray output =
            m_program.run("compare --format json " + options, {QStringLiteral(SAMPLES "/paracetamol.magres")});
        QVERIFY2(m_program.status == 0, m_program.errors);
        QVERIFY2(m_program.errors.contains("/paracetamol-1"), m_program.errors); // what was assumed about the file
        const QJsonObject nucleus = QJsonDocument::fromJson(output)[u"nuclei"][0].toObject();
        const QJsonArray pairs = nucleus[u"pairs"].toArray();
        QCOMPARE(pairs.size(), sites);
        QCOMPARE(nucleus[u"dof"].toInt(), dof);
        double squares = 0, sum = 0, weighted = 0, nuclei = 0, largest = 0;
        for (const QJsonValue &pair : pairs) {
            const double difference = pair[u"calculated"].toDouble() - pair[u"measured"].toDouble();
            QVERIFY(std::abs(pair[u"calculated"].toDouble() - nucleus[u"reference"].toDouble()
                             - nucleus[u"slope"].toDouble() * pair[u"shielding"].toDouble())
                    < 1e-9);
            squares += difference * difference;
            sum += difference;
            weighted += difference * pair[u"nuclei"].toDouble();
            nuclei += pair[u"nuclei"].toDouble();
            largest = std::max(largest, std::abs(difference));
        }
        const bool isGiven = nucleus[u"referenceIsGiven"].toBool();
        QVERIFY(isGiven || std::abs(weighted) < 1e-8);
        QCOMPARE(nuclei, nucleus[u"nucleus"] == u"13C"_s ? 32.0 : 36.0);
        QVERIFY(std::abs(nucleus[u"rmsd"].toDouble() - std::sqrt(squares / sites)) < 1e-9);
        QVERIFY(std::abs(std::abs(nucleus[u"largestDifference"].toDouble()) - largest) < 1e-9);
        const double sigma = nucleus[u"sigma"].toDouble(), about = isGiven ? 0 : sum * sum / sites;
        QVERIFY(std::abs(nucleus[u"chi2"].toDouble() - (squares - about) / (sigma * sigma)) < 1e-8);
    }

    /// A set gives other commands its line, and knows how it was made.
    void calibration()
    {
        const QByteArray arguments = "calibrate " + compounds() + " --nucleus 13C -o @set.json -o @set.png";
        const QByteArray report = m_program.run(arguments);
        QVERIFY2(m_program.status == 0 && report.contains("Leave-one-out"), m_program.errors);
        QVERIFY(m_program.read("set.png").startsWith("\x89PNG"));
        const QJsonDocument set = QJsonDocument::fromJson(m_program.read("set.json"));
        const double reference = set[u"regression"][u"reference"].toDouble(),
                     slope = set[u"regression"][u"slope"].toDouble();
        // Normal equations.
        double zero = 0, first = 0;
        for (const QJsonValue &point : set[u"data"].toArray()) {
            const double x = point[u"shielding"].toDouble(), rest = point[u"shift"].toDouble() - reference - slope * x;
            zero += rest;
            first += rest * x;
        }
        QVERIFY(std::abs(zero) < 1e-7 && std::abs(first) < 1e-5 && slope != -1);
        QCOMPARE(set[u"method"][u"code"].toString(), u"CASTEP"_s);

        const QStringList file{m_files[0]};
        const QByteArray scale =
            " --reference=" + QByteArray::number(reference, 'g', 17) + " --slope=" + QByteArray::number(slope, 'g', 17);
        for (const QByteArray command : {"simulate --nucleus 13C", "rmsd --nucleus 13C --experiment @all.csv"}) {
            m_program.write("all.csv", peakList(m_pool.shifts[0]) + peakList(m_pool.shifts[0]).mid(9));
            const QByteArray bySet = m_program.run(command + " --reference-set @set.json", file);
            QVERIFY2(m_program.status == 0 && !m_program.errors.contains("calculated"), m_program.errors);
            QCOMPARE(bySet, m_program.run(command + scale, file));
        }
        QJsonObject nucleus = compare(0, "--experiment 13C=@c.csv --reference-set @set.json");
        QCOMPARE(nucleus[u"reference"].toDouble(), reference);
        QVERIFY(nucleus[u"referenceIsGiven"].toBool());
        // A reference that is known tells more than one in a window.
        QVERIFY(rank("--experiment 13C=@c.csv --reference-set @set.json")[0][u"log_likelihood"].toDouble()
                > rank("--experiment 13C=@c.csv --slope " + QByteArray::number(slope, 'g', 17))[0][u"log_likelihood"]
                      .toDouble());

        QFile other(m_files[1]);
        QVERIFY(other.open(QIODevice::ReadOnly));
        m_program.write("other.magres", other.readAll().replace("PBE", "LDA"));
        m_program.run("compare @other.magres --experiment 13C=@c.csv --reference-set @set.json");
        QVERIFY(m_program.status == 0 && m_program.errors.contains("LDA"));
        m_program.run("calibrate " + compounds() + " @other.magres=@c.csv --nucleus 13C");
        QVERIFY(m_program.status == 1 && m_program.errors.contains("LDA"));
        m_program.run("calibrate --mix-methods " + compounds() + " @other.magres=@c.csv --nucleus 13C");
        QCOMPARE(m_program.status, 0);
    }

    /// Cross peaks that lie where the simulation has them, but for the references, which are found again.
    void crossPeaks()
    {
        m_program.run("simulate " SAMPLES
                      "/paracetamol.magres --nucleus 13C --nucleus-f1 1H --average ch3 -o @hetcor.json");
        const QJsonArray peaks = QJsonDocument::fromJson(m_program.read("hetcor.json"))[u"peaks"_s].toArray();
        QSet<QByteArray> places;
        for (const QJsonValue &peak : peaks)
            places.insert(QByteArray::number(peak[u"pos"_s][0].toDouble() + 72.5, 'f', 3) + ','
                          + QByteArray::number(peak[u"pos"_s][1].toDouble() - 69.25, 'f', 3) + '\n');
        QCOMPARE(places.size(), 8);
        m_program.write("hetcor.csv", "f2,f1\n" + QByteArrayList(places.begin(), places.end()).join());
        const QByteArray line =
            "compare " SAMPLES
            "/paracetamol.magres --nucleus 13C --nucleus-f1 1H --experiment @hetcor.csv --average ch3 ";
        const QJsonDocument report = QJsonDocument::fromJson(m_program.run(line + "--format json"));
        QCOMPARE(report[u"pairing"_s].toString(), u"equal"_s);
        for (const auto &[d, reference, sites] : {std::tuple(0, 172.5, 8), std::tuple(1, 30.75, 7)}) {
            const QJsonValue dimension = report[u"dimensions"_s][d];
            QVERIFY(std::abs(dimension[u"reference"_s].toDouble() - reference) < 1e-3);
            QVERIFY(dimension[u"rmsd"_s].toDouble() < 1e-3);
            // Two carbons have the same proton, which counts once.
            QCOMPARE(dimension[u"dof"_s].toInt(), sites - 1);
        }
        for (const QJsonValue &pair : report[u"pairs"_s].toArray())
            for (int d = 0; d < 2; ++d)
                QVERIFY(std::abs(pair[u"calculated"_s][d].toDouble() - pair[u"measured"_s][d].toDouble()) < 2e-3);
        // One too many is refused, or left out.
        m_program.write("hetcor.csv", "f2,f1\n90,12\n" + QByteArrayList(places.begin(), places.end()).join());
        m_program.run(line);
        QVERIFY(m_program.status == 1 && m_program.errors.contains("9 cross peaks were measured"));
        const QJsonDocument more = QJsonDocument::fromJson(m_program.run(line + "--unmatched 1 --format json"));
        QCOMPARE(more[u"leftOut"_s][0][0].toDouble(), 90.0);

        // Peaks that name their sites belong there, even where others fit better; the rest is paired as ever.
        const QJsonArray pairs = report[u"pairs"_s].toArray();
        const auto row = [&](int place, const QByteArray &name) {
            const QJsonValue measured = pairs[place][u"measured"_s];
            return QByteArray::number(measured[0].toDouble(), 'g', 10) + ','
                + QByteArray::number(measured[1].toDouble(), 'g', 10) + ",1," + name + '\n';
        };
        const auto siteOf = [&](int place, int d) {
            return pairs[place][u"sites"_s][d].toString().section(u' ', 0, 0).toUtf8();
        };
        QByteArray rows;
        for (int i = 2; i < 8; ++i)
            rows += row(i, {});
        const QByteArray first = siteOf(0, 0) + '-' + siteOf(0, 1), second = siteOf(1, 1) + '/' + siteOf(1, 0);
        m_program.write("named.csv", "f2,f1,height,label\n" + row(0, second) + row(1, first) + rows);
        const QByteArray named =
            "compare " SAMPLES
            "/paracetamol.magres --nucleus 13C --nucleus-f1 1H --experiment @named.csv --average ch3 --format json ";
        const QJsonDocument assigned = QJsonDocument::fromJson(m_program.run(named));
        QVERIFY2(m_program.status == 0, m_program.errors);
        QCOMPARE(assigned[u"pairing"_s].toString(), u"2 assigned, equal"_s);
        for (int i : {0, 1})
            QCOMPARE(assigned[u"pairs"_s][i][u"measured"_s], pairs[1 - i][u"measured"_s]);
        QCOMPARE(QJsonDocument::fromJson(m_program.run(named + "--ignore-labels"))[u"pairing"_s].toString(),
                 u"equal"_s);
        // Nothing but names: the others have no line.
        m_program.write("named.csv", "f2,f1,height,label\n" + row(0, first) + row(1, second));
        const QJsonDocument two = QJsonDocument::fromJson(m_program.run(named));
        QVERIFY(two[u"pairing"_s].toString() == u"assigned" && two[u"without"_s].toArray().size() == 6);
        m_program.write("named.csv", "f2,f1,height,label\n" + row(0, "C99-H1") + row(1, {}));
        m_program.run(named);
        QVERIFY2(m_program.status == 1 && m_program.errors.contains("\"C99\""), m_program.errors);

        // A reference that is given stays, and what it is off by is in the differences. A picture beside the table.
        const QJsonDocument fixed = QJsonDocument::fromJson(
            m_program.run(line + "--unmatched 1 --reference 13C=171 -o @fixed.json -o @fixed.svg").isEmpty()
                ? m_program.read("fixed.json")
                : QByteArray());
        QCOMPARE(fixed[u"dimensions"_s][0][u"reference"_s].toDouble(), 171.0);
        QVERIFY(fixed[u"dimensions"_s][0][u"referenceIsGiven"_s].toBool());
        QVERIFY(!fixed[u"dimensions"_s][1][u"referenceIsGiven"_s].toBool());
        QVERIFY(std::abs(fixed[u"dimensions"_s][0][u"rmsd"_s].toDouble() - 1.5) < 1e-3);
        QVERIFY(m_program.read("fixed.svg").contains("F1, 1H"));
    }

    void averageOfConfigurations()
    {
        auto shieldings = m_pool.shieldings[0];
        for (double &shielding : shieldings[0])
            shielding += 3;
        m_program.write("moved.magres", crystalText(shieldings, false, 7));
        m_program.run("average @s0.magres @moved.magres -o @mean.magres -o @errors.csv");
        QVERIFY2(m_program.status == 0, m_program.errors);
        const auto iso = [&](const QByteArray &file) {
            const QByteArray json = m_program.run("table --format json @" + file);
            return QJsonDocument::fromJson(json)[u"rows"][0][u"iso"].toDouble();
        };
        QVERIFY(std::abs(iso("mean.magres") - iso("s0.magres") - 1.5) < 1e-9);
        // Two values 3 ppm apart: (3 / √2) / √2.
        QVERIFY(m_program.read("errors.csv").contains("1.5"));
        QVERIFY(m_program.read("mean.magres").contains("2 configurations"));
        m_program.run("average @s0.magres @s1.magres -o @no.magres");
        QVERIFY(m_program.status == 1 && m_program.errors.contains("72 atoms")
                && m_program.read("no.magres").isEmpty());
    }

    void tableOfSites()
    {
        const QByteArray json =
            m_program.run("table --format json --unique --columns multiplicity,span,delta11,delta33,x "
                          "--reference 13C=170 " SAMPLES "/paracetamol.magres");
        const QJsonArray rows = QJsonDocument::fromJson(json)[u"rows"].toArray();
        QCOMPARE(rows.size(), 20);
        int atoms = 0;
        for (const QJsonValue &row : rows) {
            QCOMPARE(row[u"multiplicity"].toInt(), row[u"atoms"].toArray().size());
            QCOMPARE(row[u"site"].toString(), row[u"atoms"][0].toString() + u" ×4"_s);
            QVERIFY(std::abs(row[u"delta11"].toDouble() - row[u"delta33"].toDouble() - row[u"span"].toDouble()) < 1e-9);
            atoms += row[u"atoms"].toArray().size();
        }
        QCOMPARE(atoms, 80);
        const QByteArray csv =
            m_program.run("table --format csv --columns pq --isotope O=17O " SAMPLES "/berlinite.magres");
        QVERIFY(csv.startsWith("type,labels,") && csv.left(csv.indexOf('\n')).endsWith(",qIso,pq")
                && csv.count('\n') == 19);
    }

    void refusals_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("named");
        const auto row = [](int status, const char *arguments, const char *named) {
            QTest::newRow(arguments) << status << QByteArray(named);
        };
        row(2, "compare @s0.magres --experiment @c.csv", "names no nucleus");
        row(2, "compare @s0.magres --experiment 13C=@c.csv --experiment 13C=@h.csv", "twice");
        row(2, "compare @s0.magres --experiment 13C=@c.csv --reference 1H=30", "1H");
        row(2, "compare @s0.magres --experiment 13C=@c.csv -o x.jpg", ".json");
        row(1, "compare @s0.magres --experiment 17O=@c.csv", "no site of 17O");
        row(1, "compare @s0.magres --experiment 13C=@nowhere.csv", "no such file");
        row(2, "rank @s0.magres --experiment 13C=@c.csv --experiment 19F=@h.csv", "--sigma 19F");
        row(2, "rank @s0.magres --experiment 13C=@c.csv --slope fit", "--slope");
        row(2, "rank @s0.magres --experiment 13C=@c.csv --temperature 30", "--energies");
        row(1, "rank @s0.magres --experiment 13C=@c.csv --energies @few.txt", "no energy of");
        row(1, "rank --files-from @nowhere --experiment 13C=@c.csv", "nowhere");
        row(2, "rank --experiment 13C=@c.csv", "FILE");
        row(2, "calibrate @s0.magres --nucleus 13C", "FILE=EXP");
        row(1, "simulate @s0.magres --nucleus 13C --reference-set @c.csv", "c.csv");
        row(2, "table @s0.magres --columns span,spin", "skew");
        row(2, "average @s0.magres -o x.txt", ".magres");
        row(1, "simulate @s0.magres --nucleus 27Al", "it has sites of 13C, 1H, 2H\n");
    }
    void refusals()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, named);
        const QByteArray output = m_program.run(QTest::currentDataTag());
        QVERIFY2(output.isEmpty() && m_program.status == status && m_program.errors.contains(named), m_program.errors);
    }

private:
    QJsonArray rank(const QByteArray &options)
    {
        const QByteArray json = m_program.run("rank --format json " + options, m_files);
        if (m_program.status != 0)
            qWarning("%s", m_program.errors.constData());
        return QJsonDocument::fromJson(json)[u"rows"].toArray();
    }
    QJsonObject compare(int file, const QByteArray &options)
    {
        const QByteArray json = m_program.run("compare --format json " + options, {m_files[file]});
        if (m_program.status != 0)
            qWarning("%s", m_program.errors.constData());
        return QJsonDocument::fromJson(json)[u"nuclei"][0].toObject();
    }
    QByteArray compounds() const { return "@s0.magres=@c.csv @s2.magres=@c.csv"; }

    const Pool m_pool{5};
    Program m_program;
    QStringList m_files;
};

QTEST_GUILESS_MAIN(TestCompare)
#include "tst_compare.moc"
