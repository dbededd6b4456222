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
#include <numbers>
#include <numeric>

using namespace Qt::StringLiterals;
using namespace Workbench;
using Crystals::Random;

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

    /// In cells as they are and in skewed ones, with atoms that are a little off.
    void sitesOfSpaceGroups()
    {
        const LatticeVectors triclinic{{{9, 0, 0}, {2, 10, 0}, {-3, 1, 12}}},
            monoclinic{{{9, 0, 0}, {0, 10, 0}, {-3, 0, 12}}},
            hexagonal{{{9, 0, 0}, {-4.5, 9 * std::sqrt(0.75), 0}, {0, 0, 12}}},
            cubic{{{11, 0, 0}, {0, 11, 0}, {0, 0, 11}}};
        const auto row = [](const char *group, const LatticeVectors &cell, const auto &images) {
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
                    for (const Vector3 &image :
                         images(random.uniform(0, 1), random.uniform(0, 1), random.uniform(0, 1))) {
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
                QCOMPARE(unique.spaceGroup, QLatin1String(group));
            }
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

    /// Cells with two and with four molecules, one list.
    void theRightOneIsFirstInEveryMode()
    {
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
        for (const auto &[list, options, pairing] :
             {std::tuple(peakList(shifts), "", "equal"), std::tuple(peakList(fewer), "", "overlap"),
              std::tuple(counted, "", "overlap by counts"), std::tuple(peakList(more), " --unmatched 1", "unmatched"),
              std::tuple(named, " --ignore-labels", "equal")}) {
            m_program.write("list.csv", list);
            const QJsonArray rows = rank(QByteArray("--experiment 13C=@list.csv") + options);
            QCOMPARE(rows.size(), Pool::size);
            QCOMPARE(rows[0][u"file"].toString(), m_files[m_pool.right]);
            QCOMPARE(rows[0][u"pairing"].toString(), QLatin1String(pairing));
            QCOMPARE(rows[0][u"sites"].toInt(), siteCount);
            double sum = 0;
            for (const QJsonValue &row : rows)
                sum += row[u"probability"].toDouble();
            QVERIFY(std::abs(sum - 1) < 1e-9);
        }
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
            const double p = row[u"p"].toDouble();
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

    /// What is printed of the whole follows from what is printed of the pairs.
    void numbersOfAComparison()
    {
        const char *carbon = "--experiment 13C=" SAMPLES "/paracetamol-13C.csv",
                   *proton = "--experiment 1H=" SAMPLES "/paracetamol-1H.csv";
        for (const auto &[options, experiment, sites, dof] :
             {std::tuple("--nucleus 13C ", "--experiment " SAMPLES "/paracetamol-13C.csv", 8, 7),
              std::tuple("--nucleus 13C ", "--experiment " SAMPLES "/paracetamol-13C-bruker", 8, 7),
              std::tuple("--slope fit ", carbon, 8, 6), std::tuple("--reference 30.4 --average ch3 ", proton, 7, 7),
              std::tuple("--average ch3 ", proton, 7, 6), std::tuple("", proton, 9, 8),
              std::tuple("--symmetry-tolerance 0 ", carbon, 32, 31)}) {
            const QByteArray output = m_program.run(QByteArray("compare --format json ") + options + experiment,
                                                    {QStringLiteral(SAMPLES "/paracetamol.magres")});
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
    }

    /// A set gives other commands its line, and knows how it was made.
    void calibration()
    {
        const QByteArray arguments = "calibrate " + compounds() + " --nucleus 13C -o @set.json -o @set.png";
        const QByteArray report = m_program.run(arguments);
        QVERIFY2(m_program.status == 0 && !report.isEmpty(), m_program.errors);
        QVERIFY(m_program.read("set.png").startsWith("\x89PNG"));
        const QJsonDocument set = QJsonDocument::fromJson(m_program.read("set.json"));
        const double reference = set[u"regression"][u"reference"].toDouble(),
                     slope = set[u"regression"][u"slope"].toDouble();
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

        // A reference that is given stays. A picture beside the table.
        m_program.run(line + "--unmatched 1 --reference 13C=171 -o @fixed.json -o @fixed.svg");
        const QJsonDocument fixed = QJsonDocument::fromJson(m_program.read("fixed.json"));
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
        m_program.run("average @s0.magres @moved.magres -o @mean.magres");
        QVERIFY2(m_program.status == 0, m_program.errors);
        const auto iso = [&](const QByteArray &file) {
            const QByteArray json = m_program.run("table --format json @" + file);
            return QJsonDocument::fromJson(json)[u"rows"][0][u"iso"].toDouble();
        };
        QVERIFY(std::abs(iso("mean.magres") - iso("s0.magres") - 1.5) < 1e-9);
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
    }

    /// Everything that commands print, on the output and behind it on the error channel. A free molecule of three
    /// carbons and four hydrogens, no two numbers alike. Means, sums of squares and likelihoods by numpy, regressions
    /// by numpy.linalg.lstsq with Student's t from scipy, principal values by numpy.linalg.eigvalsh.
    void outputs()
    {
        const auto row = [&](const char *name, const char *arguments, const char *printed, const char *file = "") {
            QByteArray all = m_program.run(arguments);
            all += m_program.errors + (*file ? m_program.read(file) : QByteArray());
            if (QByteArray(arguments).startsWith("spinsystem"))
                all.remove(0, all.indexOf("# Sites"));
            QVERIFY2(all == printed, QByteArray(name) + ": " + all);
        };
        const auto molecule = [&](const char *file, double c1, double c3, double h2) {
            const std::tuple<const char *, std::array<double, 6>> atoms[] = {
                {"C 1", {0, 0, 0, c1, 20, -10}},   {"C 2", {1.5, 0, 0, 91, 60, -15}},
                {"C 3", {0, 0, 2.1, c3, -30, 75}}, {"H 1", {-0.6, -0.9, 0, 27.4, 3, 1}},
                {"H 2", {2.1, 0.9, 0, h2, -4, 2}}, {"H 3", {0.2, 0.3, 3.1, 22.1, 5, -3}},
                {"H 4", {-5, 1, 1, 29.6, 1, -2}}};
            QByteArray positions, tensors;
            for (const auto &[name, v] : atoms) {
                const auto [x, y, z, iso, a, b] = v;
                const QString species = QString::fromLatin1(name).section(u' ', 0, 0);
                positions += u"atom %1 %2 %3 %4 %5\n"_s.arg(species, QLatin1String(name)).arg(x).arg(y).arg(z).toUtf8();
                if (iso != 0)
                    tensors += u"ms %1 %2 2 3 1 %3 -4 0 5 %4\n"_s.arg(QLatin1String(name))
                                   .arg(iso + a, 0, 'g', 12)
                                   .arg(iso + b, 0, 'g', 12)
                                   .arg(iso - a - b, 0, 'g', 12)
                                   .toUtf8();
            }
            m_program.write(
                file,
                "#$magres-abinitio-v1.0\n[calculation]\ncalc_code CODE\ncalc_xcfunctional PBE\n[/calculation]\n"
                "[atoms]\nunits atom Angstrom\n"
                    + positions + "[/atoms]\n[magres]\nunits ms ppm\n" + tensors + "[/magres]\n");
        };
        molecule("m.magres", 150, 12.5, 24.9);
        molecule("m2.magres", 151.5, 12.5, 25.65);
        molecule("k.magres", 153, 15, 24.9);
        molecule("bad.magres", 0, 12.5, 24.9);
        m_program.write("c2.csv", "position,site\n50,C1\n161,C3\n");
        m_program.write("c3.csv", "position\n21.5\n80\n161\n");
        m_program.write("c4.csv", "position\n20\n79\n120\n160.5\n");
        m_program.write("h.csv", "position,count\n9.1,1\n6.0,3\n");
        m_program.write("p4.csv", "f2,f1\n161,9.2\n80,6.1\n100,8\n21,4.4\n");
        m_program.write("en.txt", "m 5\nk.magres,1.5\nbad;2\n");
        row("two nuclei", "compare m.magres --experiment 13C=c3.csv --experiment 1H=h.csv --sigma 1H=0.5",
            R"(13C: 3 lines, 3 sites. Pairing: equal
Reference 172.00 ppm (fitted), slope -1 (given)

Site  Nuclei  Calculated, ppm  Measured, ppm  Difference, ppm  Line
----  ------  ---------------  -------------  ---------------  ----
C3         1           159.50         161.00            -1.50
C2         1            81.00          80.00             1.00
C1         1            22.00          21.50             0.50

RMSD 1.08 ppm, largest difference -1.50 ppm (C3)
χ² 0.72 with 2 degrees of freedom, p = 0.697, for σ = 2.2 ppm

1H: 2 lines, 4 sites. Pairing: overlap by counts
Reference 32.77 ppm (fitted), slope -1 (given)

Site  Nuclei  Calculated, ppm  Measured, ppm  Difference, ppm  Line
----  ------  ---------------  -------------  ---------------  ------
H3         1            10.67           9.10             1.57
H2         1             7.88           6.00             1.88  shared
H1         1             5.38           6.00            -0.62  shared
H4         1             3.17           6.00            -2.83  shared

RMSD 1.90 ppm, largest difference -2.83 ppm (H4)
χ² 57.47 with 3 degrees of freedom, p < 0.0001, for σ = 0.5 ppm
magres-workbench compare: c3.csv: Read as a list of 3 peaks.
magres-workbench compare: h.csv: Read as a list of 2 peaks.
)");
        row("left out",
            "compare m.magres --experiment 13C=c4.csv --unmatched 1 --slope 13C=fit "
            "--experiment 1H=h.csv --reference 1H=31 --format csv",
            R"(nucleus,pairing,site,atoms,nuclei,shielding,calculated,measured,difference,reference,slope
13C,unmatched,C3,C3,1,12.5,160.13421425944412,160.5,-0.36578574055587865,172.91793201281985,-1.0226974202700572
13C,unmatched,C2,C2,1,91,79.852466768244639,79,0.85246676824463918,172.91793201281985,-1.0226974202700572
13C,unmatched,C1,C1,1,150,19.513318972311282,20,-0.4866810276887179,172.91793201281985,-1.0226974202700572
13C,unmatched,,,,,,120,,172.91793201281985,-1.0226974202700572
1H,overlap by counts,H3,H3,1,22.100000000000005,8.899999999999995,9.0999999999999996,-0.20000000000000462,31,-1
1H,overlap by counts,H2,H2,1,24.899999999999995,6.100000000000005,6,0.10000000000000497,31,-1
1H,overlap by counts,H1,H1,1,27.399999999999995,3.600000000000005,6,-2.399999999999995,31,-1
1H,overlap by counts,H4,H4,1,29.600000000000005,1.399999999999995,6,-4.600000000000005,31,-1
magres-workbench compare: c4.csv: Read as a list of 4 peaks.
magres-workbench compare: h.csv: Read as a list of 2 peaks.
)");
        row("without a line", "compare m.magres --experiment 13C=c2.csv --reference 171",
            R"(13C: 2 lines, 3 sites. Pairing: assigned
Reference 171.00 ppm (given), slope -1 (given)

Site  Nuclei  Calculated, ppm  Measured, ppm  Difference, ppm  Line
----  ------  ---------------  -------------  ---------------  ----
C3         1           158.50         161.00            -2.50
C1         1            21.00          50.00           -29.00

RMSD 20.58 ppm, largest difference -29.00 ppm (C1)
χ² 175.05 with 2 degrees of freedom, p < 0.0001, for σ = 2.2 ppm
Without a line: C2
magres-workbench compare: c2.csv: Read as a list of 2 peaks.
)");
        row("cross peaks", "compare m.magres --nucleus 13C --nucleus-f1 1H --experiment p4.csv --unmatched 1",
            R"(13C-1H: 4 cross peaks measured, 3 of the structure. Pairing: unmatched

F2 site  F1 site  F2 calculated  F2 measured  F2 difference  F1 calculated  F1 measured  F1 difference
-------  -------  -------------  -----------  -------------  -------------  -----------  -------------
C3       H3              159.33       161.00          -1.67           9.27         9.20           0.07
C2       H2               80.83        80.00           0.83           6.47         6.10           0.37
C1       H1               21.83        21.00           0.83           3.97         4.40          -0.43

F2 (13C): reference 171.83 ppm (fitted), 3 sites, RMSD 1.18 ppm, largest difference -1.67 ppm, χ² 0.86 with 2 degrees of freedom, p = 0.65
F1 (1H): reference 31.37 ppm (fitted), 3 sites, RMSD 0.33 ppm, largest difference -0.43 ppm, χ² 3.00 with 2 degrees of freedom, p = 0.223
Left out: 100.00, 8.00 ppm
magres-workbench compare: p4.csv: Read as a list of 4 peaks.
magres-workbench compare: p4.csv: The file names no unit: the positions were taken as ppm.
)");
        row("cross peaks, csv",
            "compare m.magres --nucleus 13C --nucleus-f1 1H --experiment p4.csv "
            "--unmatched 1 --reference 13C=171 --format csv",
            R"(pairing,site_f2,site_f1,peaks,calculated_f2,measured_f2,calculated_f1,measured_f1
unmatched,"C3","H3",1,158.5,161,9.2666666666666657,9.1999999999999993
unmatched,"C2","H2",1,80,80,6.4666666666666828,6.0999999999999996
unmatched,"C1","H1",1,21,21,3.9666666666666828,4.4000000000000004
unmatched,,,,,100,,8
magres-workbench compare: p4.csv: Read as a list of 4 peaks.
magres-workbench compare: p4.csv: The file names no unit: the positions were taken as ppm.
)");
        row("calibrate", "calibrate m.magres=c3.csv m.magres=c2.csv --nucleus 13C",
            R"(shift = reference + slope · shielding, 13C, 5 sites, 2 file(s), CODE, PBE

File      Lines  Sites  Pairing
--------  -----  -----  --------
m.magres      3      3  equal
m.magres      2      3  assigned

Reference            170.8122 ± 9.4847 ppm
Slope                -0.9148 ± 0.0916
Covariance           -0.6983 ppm
RMSE (n - 2)         12.6219 ppm
Leave-one-out error  16.7940 ppm

Shielding, ppm  Shift, ppm  95 % from      to
--------------  ----------  ---------  ------
         12.50      159.38     110.79  207.97
         83.20       94.70      50.70  138.70
        150.00       33.59     -14.53   81.71
magres-workbench calibrate: c3.csv: Read as a list of 3 peaks.
magres-workbench calibrate: c2.csv: Read as a list of 2 peaks.
)");
        row("average", "average m.magres m2.magres m2.magres -o e.csv",
            R"(Mean of 3 configurations of 7 atoms
atom,element,shielding,shielding_error,efg_error
C1,C,151,0.5,
C2,C,91,0,
C3,C,12.5,0,
H1,H,27.399999999999995,0,
H2,H,25.399999999999995,0.25,
H3,H,22.100000000000005,0,
H4,H,29.600000000000005,0,
)",
            "e.csv");
        row("rank", "rank m.magres k.magres bad.magres --nucleus 13C --experiment c3.csv --reference 170",
            R"(Rank  RMSD, ppm  Reference, ppm  Offset, ppm  Peaks  Experimental  Pairing  χ²/dof     p  Fit  Probability  with σ × 1.5  File        Message
----  ---------  --------------  -----------  -----  ------------  -------  ------  ----  ---  -----------  ------------  ----------  ------------------------
   1     1.0801        172.0000       2.0000      3             3  equal      0.36   0.7  ok        0.7308        0.6092  m.magres
   2     2.0950        173.8333       3.8333      3             3  equal      1.36  0.26  ok        0.2692        0.3908  k.magres
                                                                                                                          bad.magres  atom C1 has no shielding
magres-workbench rank: c3.csv: Read as a list of 3 peaks.
bad.magres: Atoms without ms: 1 of 7 (the first one C 1).
magres-workbench rank: 1 of 3 files failed
)");
        row("energies",
            "rank m.magres k.magres bad.magres --experiment 13C=c3.csv --experiment "
            "1H=h.csv --energies en.txt --temperature 200",
            R"(Rank  Probability  with σ × 1.5  χ²/dof        p  Fit  13C RMSD, ppm  13C ref., ppm  13C pairing  1H RMSD, ppm  1H ref., ppm  1H pairing         File        Message
----  -----------  ------------  ------  -------  ---  -------------  -------------  -----------  ------------  ------------  -----------------  ----------  ------------------------
   1       0.7514        0.8404   26.93  2.4e-27  bad         2.0950       173.8333  equal              1.8952       32.7750  overlap by counts  k.magres
   2       0.2486        0.1596   26.53  6.5e-27  bad         1.0801       172.0000  equal              1.8952       32.7750  overlap by counts  m.magres
                                                                                                                                                 bad.magres  atom C1 has no shielding
magres-workbench rank: c3.csv: Read as a list of 3 peaks.
magres-workbench rank: h.csv: Read as a list of 2 peaks.
bad.magres: Atoms without ms: 1 of 7 (the first one C 1).
magres-workbench rank: 1 of 3 files failed
)");
        row("sites", "table m.magres --columns skew,span,x --unique --reference 13C=171",
            R"(Site  Atoms  Element  Labels  Iso, ppm  Aniso, ppm     η       κ  Ω, ppm  x/a
----  -----  -------  ------  --------  ----------  ----  ------  ------  ---
C1    C1     C        C1       150.000      30.122  0.00   0.945   30.65
C2    C2     C        C2        91.000      90.043  0.48   0.429  105.08
C3    C3     C        C3        12.500     112.280  0.20   0.746  120.17
H1    H1     H        H1        27.400       5.610  0.00  -0.075    8.42
H2    H2     H        H2        24.900      -5.916  0.00  -0.580    7.76
H3    H3     H        H3        22.100       8.046  0.00   0.765    8.92
H4    H4     H        H4        29.600       2.587  0.00   0.159    5.54
)");
        row("plane", "simulate m.magres --nucleus 13C --nucleus-f1 1H --reference 171",
            R"(Line width: 49.0371 Hz (13C), 42.5391 Hz (1H)
Labels  13C, ppm  1H, ppm   Height
------  --------  -------  -------
C3,H3    158.500   77.900  50.3018
C2,H2     80.000   75.100  47.7444
C1,H1     21.000   72.600  47.7444
Note: The reference of ¹H is a placeholder, 100 ppm: positions mean nothing yet, only distances do
)");
        row("patterns", "powder m.magres --nucleus 13C --static --frequency 400 --reference 171",
            R"(13C at 100.6080 MHz (1H: 400 MHz), static; Lorentzian 30 Hz, Gaussian 0 Hz; reference 171 ppm, slope -1
Site  Nuclei  Shift, ppm  Centre, ppm  Span, ppm  Breadth, ppm
----  ------  ----------  -----------  ---------  ------------
C1         1      21.000       21.000     30.652        30.652
C2         1      80.000       80.000    105.081       105.081
C3         1     158.500      158.500    120.173       120.173
Shift anisotropy alone: no dipolar couplings; ideal excitation.
)");
        row("spins",
            "spinsystem m.magres --nucleus 13C --nucleus 1H --atoms C1,H3,C3 --reference "
            "13C=171 --slope 13C=-0.95 --cutoff 2.5",
            R"(# Sites
#   1 13C C1
#   2 13C C3
#   3 1H H3

spinsys {
  channels 13C 1H
  nuclei 13C 13C 1H
  shift 1 28.500000p -20.151762p 0.04209252 135.073125 87.107727 177.104035
  shift 2 159.125000p -75.023689p 0.20360780 -174.364880 89.751070 90.821826
  shift 3 77.900000p -5.594789p 0.18703451 102.475905 78.347124 169.423012
  dipole 1 2 -820.0909 0.000000 0.000000 180.000000
  dipole 2 3 -25144.9182 0.000000 19.827029 123.690068
}
)");
        row("nuclei", "complete-words -- simulate m.magres --nucleus 1", "13C\n1H\n");
        row("options", "complete-words -- simulate --nucleus 13C m.magres --r",
            "--reference\n--range\n--reference-f1\n--range-f1\n--reference-set\n");
        row("values", "complete-words -- simulate m.magres --average=c", "--average=ch3\n");
        row("commands", "complete-words -- r", "rmsd\nrender\nrank\n");
    }

    void refusals()
    {
        const auto row = [&](int status, const char *arguments, const char *named) {
            QVERIFY2(m_program.run(arguments).isEmpty() && m_program.status == status, arguments + m_program.errors);
            QVERIFY2(m_program.errors.contains(named), arguments + m_program.errors);
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
