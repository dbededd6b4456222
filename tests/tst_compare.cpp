// SPDX-License-Identifier: BSD-3-Clause
#include "Crystals.h"
#include "Program.h"
#include "analysis/comparison/Lattice.h"
#include "analysis/comparison/UniqueSites.h"

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

/// Places and shieldings of atoms without a cell.
QByteArray atomsText(const QString &element, const std::vector<std::array<double, 4>> &atoms)
{
    QString places, tensors;
    for (const auto &[x, y, z, shielding] : atoms) {
        const QString name = u"%1 %2"_s.arg(element).arg(places.count(u'\n') + 1);
        places += u"atom %1 %2 %3 %4 %5\n"_s.arg(element, name).arg(x).arg(y).arg(z);
        tensors += u"ms %1 %2 1 0 0 %2 0 0 0 %2\n"_s.arg(name).arg(shielding, 0, 'f', 6);
    }
    return u"#$magres-abinitio-v1.0\n[atoms]\nunits atom Angstrom\n%1[/atoms]\n[magres]\nunits ms ppm\n%2[/magres]\n"_s
        .arg(places, tensors)
        .toUtf8();
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
        m_program.write("c4.csv", "position\n" + peakList(m_pool.shifts[0]).mid(9).repeated(4));
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

        // Listed as often as four molecules give them, lines are as good for structures that have two.
        const QJsonArray fourTimes = rank("--experiment 13C=@c4.csv");
        QVERIFY2(m_program.errors.contains(" and 4 more: 13C: the 36 lines lie at 9 places"), m_program.errors);
        QCOMPARE(fourTimes.size(), carbon.size());
        for (const QJsonValue &row : fourTimes) {
            const QJsonValue once = *of(carbon, row[u"file"].toString());
            QCOMPARE(row[u"lines"].toInt(), row[u"peaks_simulated"].toInt() == 36 ? 36 : 9);
            for (const QLatin1String name : {"rmsd"_L1, "chi2"_L1, "dof"_L1, "log_likelihood"_L1, "probability"_L1})
                QVERIFY(std::abs(row[name].toDouble() - once[name].toDouble()) < 1e-6);
        }

        QByteArray energies = "structure;energy\n";
        for (int i = 0; i < Pool::size; ++i)
            energies += "\"s" + QByteArray::number(i) + "\";" + (i == m_pool.right ? "40,0" : "0,0") + " # kJ/mol\n";
        m_program.write("energies.txt", energies);
        m_program.write("unclear.txt", "s0,-12,5\n");
        m_program.run("rank --energies @unclear.txt " + experiments, m_files);
        QVERIFY2(m_program.status == 1 && m_program.errors.contains("unclear.txt, line 1: expected a structure and"),
                 m_program.errors);
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
        // Those that fail and those that are alike stand by their names, wherever they were ranked.
        QStringList more = m_files;
        for (const char *name : {"bad10.magres", "t0.magres", "bad2.magres"})
            more.append(m_program.write(name, *name == 't' ? m_program.read("s0.magres") : QByteArray("x")));
        const QByteArray whole = m_program.run("rank --format csv " + experiments, more);
        m_program.write("3.csv", m_program.run("rank --format csv " + experiments, more.mid(0, 11)));
        m_program.write("4.csv", m_program.run("rank --format csv " + experiments, more.mid(11)));
        QCOMPARE(m_program.run("rank --merge --format csv @4.csv @3.csv"), whole);
        m_program.write("4.csv", m_program.read("1.csv").replace("/s0.", "/./s0."));
        m_program.run("rank --merge @1.csv @4.csv");
        QVERIFY2(m_program.status == 1 && m_program.errors.contains(" stands in "), m_program.errors);
    }

    /// In every format; of two sites with a line in common, one has another of its own before it.
    void sitesWithoutALineAreTold()
    {
        m_program.write("few.csv", "position,site\n169.75,C26\n170,C26/C29\n");
        QCOMPARE(rank("--experiment 13C=@few.csv --ignore-labels")[0][u"pairing"].toString(), u"overlap"_s);
        const QByteArray line = "compare " SAMPLES "/paracetamol.magres --experiment 13C=@few.csv --format ";
        const QJsonValue nucleus = QJsonDocument::fromJson(m_program.run(line + "json"))[u"nuclei"][0];
        for (const QJsonValue &pair : nucleus[u"pairs"].toArray())
            QVERIFY(pair[u"shared"].toBool());
        QCOMPARE(nucleus[u"without"].toArray().size(), 6);
        QByteArray rows = m_program.run(line + "csv"), text = m_program.run(line + "text");
        QCOMPARE(rows.count('\n'), 9);
        for (const QJsonValue &site : nucleus[u"without"].toArray()) {
            const QByteArray name = site[u"site"].toString().toUtf8();
            QVERIFY(rows.contains("assigned," + name + ',') && text.contains(name));
            QVERIFY(site[u"calculated"].toDouble() == nucleus[u"reference"].toDouble() - site[u"shielding"].toDouble());
        }
        // The numbers of a publication, where the file's are those of images.
        m_program.write("few.csv", "position,site\n170.2,C1\n132.1,C2\n123.4,C3\n");
        m_program.run(line + "text");
        QVERIFY2(m_program.status == 1
                     && m_program.errors.contains("3 lines, from 123.4 to 170.2 ppm, are assigned to the site C1 ×4"),
                 m_program.errors);
    }

    /// A reference that is known tells more than one in a window.
    void calibration()
    {
        m_program.run("calibrate @s0.magres=@c4.csv @s2.magres=@c.csv --nucleus 13C -o @set.json -o @set.png");
        QVERIFY2(m_program.status == 0 && m_program.read("set.png").startsWith("\x89PNG"), m_program.errors);
        const QJsonDocument set = QJsonDocument::fromJson(m_program.read("set.json"));
        // A compound of one site has its line where the others tell.
        const double shift = m_pool.shifts[0][0];
        m_program.write("one.magres", atomsText(u"C"_s, {{0, 0, 0, 170 - shift}}));
        m_program.write("one.csv", peakList({shift, shift - 60}));
        const QByteArray text =
            m_program.run("calibrate @s0.magres=@c.csv @one.magres=@one.csv --nucleus 13C --unmatched 1");
        QVERIFY2(text.contains("one.magres, the lines at " + QByteArray::number(shift - 60, 'f', 2) + " ppm\n"), text);
        m_program.write("lda.magres", m_program.read("s0.magres").replace("PBE", "LDA"));
        m_program.run("rank @lda.magres --nucleus 13C --quad-shift --experiment @c.csv --reference-set @set.json");
        QVERIFY2(m_program.errors.contains("but the reference set of 13C with CASTEP, PBE"), m_program.errors);
        const auto likelihood = [&](const QByteArray &options) {
            return rank("--experiment 13C=@c.csv " + options)[0][u"log_likelihood"].toDouble();
        };
        const double slope = set[u"regression"][u"slope"].toDouble();
        QVERIFY(likelihood("--reference-set @set.json") > likelihood("--slope " + QByteArray::number(slope, 'g', 17)));
        // What is given by hand goes before that half of the set, in all commands.
        const QByteArray ofSet[] = {" --reference "
                                        + QByteArray::number(set[u"regression"][u"reference"].toDouble(), 'g', 17),
                                    " --slope " + QByteArray::number(slope, 'g', 17)};
        for (const char *command : {"compare @s0.magres --experiment 13C=@c.csv", "simulate @s0.magres --nucleus 13C",
                                    "powder @s0.magres --nucleus 13C", "spinsystem @s0.magres --nucleus 13C"}) {
            for (const auto &[given, other] : {std::pair(" --slope -0.9", ofSet[0]), {" --reference 175", ofSet[1]}}) {
                const QByteArray expected = m_program.run(command + other + given);
                QVERIFY2(m_program.status == 0 && !expected.isEmpty(), m_program.errors);
                QCOMPARE(m_program.run(command + QByteArray(" --reference-set @set.json") + given), expected);
            }
        }
    }

    /// Cross peaks that lie where the simulation has them, but for the references, which are found again.
    void crossPeaks()
    {
        m_program.run("simulate " SAMPLES
                      "/paracetamol.magres --nucleus 13C --nucleus-f1 1H --average ch3 -o @hetcor.json");
        const QJsonArray peaks = QJsonDocument::fromJson(m_program.read("hetcor.json"))[u"peaks"_s].toArray();
        QSet<QByteArray> places;
        QByteArray list;
        for (const QJsonValue &peak : peaks) {
            const QByteArray place = QByteArray::number(peak[u"pos"_s][0].toDouble() + 72.5, 'f', 3) + ','
                + QByteArray::number(peak[u"pos"_s][1].toDouble() - 69.25, 'f', 3) + '\n';
            places.insert(place);
            list += place;
        }
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
        // As simulate lists them: once for each of four molecules.
        m_program.write("hetcor.csv", "f2,f1\n" + list);
        QCOMPARE(QJsonDocument::fromJson(m_program.run(line + "--format json")), report);
        QVERIFY2(m_program.errors.contains("13C-1H: the 32 lines lie at 8 places"), m_program.errors);
        for (const QJsonValue &pair : report[u"pairs"_s].toArray())
            for (int d = 0; d < 2; ++d)
                QVERIFY(std::abs(pair[u"calculated"_s][d].toDouble() - pair[u"measured"_s][d].toDouble()) < 2e-3);
        // Sites that share a label are told apart by where their peaks lie.
        QByteArray atoms, tensors;
        for (int i = 0; i < 3; ++i) {
            const QByteArray z = QByteArray::number(2 + 4 * i), number = QByteArray::number(i + 1);
            atoms += "atom C A " + number + " 2 " + z + " 2\natom H HA " + number + " 2 " + z + " 3.09\n";
            for (const auto &[name, iso] : {std::pair("ms A ", 60 + 30 * i), std::pair("ms HA ", 22 + 3 * (i % 2))}) {
                const QByteArray value = QByteArray::number(iso);
                tensors += name + number + ' ' + value + " 0 0 0 " + value + " 0 0 0 " + value + '\n';
            }
        }
        m_program.write("shared.magres",
                        "#$magres-abinitio-v1.0\n[atoms]\nunits lattice Angstrom\nunits atom Angstrom\n"
                        "lattice 14 0 0 1 15 0 0.7 1.3 16\n"
                            + atoms + "[/atoms]\n[magres]\nunits ms ppm\n" + tensors + "[/magres]\n");
        m_program.write("shared.csv", "f2,f1\n110,8\n80,5\n50,8\n");
        const QByteArray shared = m_program.run("compare @shared.magres --nucleus 13C --nucleus-f1 1H --experiment "
                                                "@shared.csv --format csv");
        for (const char *row :
             {"\"A.1\",\"HA.1\",1,110,110,8,8,", "\"A.2\",\"HA.2\",1,80,80,5,5,", "\"A.3\",\"HA.1\",1,50,50,8,8,"})
            QVERIFY2(shared.contains(row), shared + m_program.errors);
        // There is one list, of which the nucleus of F2 may be named.
        QCOMPARE(QJsonDocument::fromJson(m_program.run(QByteArray(line).replace("@h", "13C=@h") + "--format json")),
                 report);
        for (const auto &[options, error] :
             {std::pair("compare --nucleus-f1 1H --experiment @no.csv --experiment @c.csv", "--experiment is given 2 "),
              std::pair("rank --quad-shift --experiment 15N=@c.csv", "names 15N, but --nucleus 13C"),
              std::pair("rank --nucleus-f1 1H --experiment @c.csv --slope -1 --slope -2", "--slope is given 2 ")}) {
            m_program.run(options + QByteArray(" --nucleus 13C @s0.magres"));
            QVERIFY2(m_program.status == 2 && m_program.errors.contains(error), m_program.errors);
        }
        // A picture beside the table.
        m_program.run(line + "-o @fixed.json -o @fixed.svg");
        QVERIFY(m_program.read("fixed.svg").contains("F1, 1H") && !m_program.read("fixed.json").isEmpty());
    }

    /// Labels tell a peak from its mirror image, and from that of a site with itself.
    void crossPeaksOfOneNucleus()
    {
        m_program.write("chain.magres", atomsText(u"H"_s, {{0, 0, 0, 26}, {1.8, 0, 0, 21}, {2.9, 2.2, 0, 28}}));
        for (const char *list : {"5.1,10.1,H1-H2\n9.9,4.9,H2-H1\n3.1,9.8,H3-H2", "5.1,10.1,H1-H2\n9.9,4.9,\n3.1,9.8,",
                                 "5.1,10.1,H1-H2\n3.1,9.8,H3-H2", "5.1,10.1,H1-H2\n3.1,9.8,H2-H3"}) {
            m_program.write("chain.csv", QByteArray("f2,f1,label\n") + list);
            const QJsonDocument report = QJsonDocument::fromJson(m_program.run(
                "compare @chain.magres --nucleus 1H --nucleus-f1 1H --experiment @chain.csv --format json"));
            QVERIFY2(m_program.status == 0, m_program.errors);
            for (int d = 0; d < 2; ++d)
                QVERIFY(report[u"dimensions"_s][d][u"rmsd"_s].toDouble() < 0.2);
        }
    }

private:
    QJsonArray rank(const QByteArray &options)
    {
        const QByteArray json = m_program.run("rank --format json " + options, m_files);
        if (m_program.status != 0)
            qWarning("%s", m_program.errors.constData());
        return QJsonDocument::fromJson(json)[u"rows"].toArray();
    }
    const Pool m_pool{5};
    Program m_program;
    QStringList m_files;
};

QTEST_GUILESS_MAIN(TestCompare)
#include "tst_compare.moc"
