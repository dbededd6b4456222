// SPDX-License-Identifier: BSD-3-Clause
#include "Crystals.h"
#include "MagresText.h"
#include "Program.h"
#include <QtTest>
using namespace Magres;
using namespace Qt::StringLiterals;

/// The program's rank over candidates made on the spot: the right one and others with shieldings off by some ppm.
class TestRank : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir(m_program.path("")).mkpath(u"plugins"_s));
        for (const QString &file : {built(u"plugins/libmagresfilefilter.so"), built(u"../tests/stubs/libgoodstub.so")})
            QVERIFY(QFile::copy(file, m_program.path("plugins/") + QFileInfo(file).fileName()));
        const MagresData right = MagresText::crystalData(27);
        for (int i = 0; i < 200; ++i) {
            Crystals::Random random(std::uint64_t(i + 1));
            MagresData data = right;
            for (MagresTensor &shielding : data.shieldings)
                shielding.tensor[4] += i == m_right ? 0.0 : random.uniform(-9.0, 9.0);
            m_files.append(
                m_program.write("c" + QByteArray::number(i) + ", \"x\".magres", MagresText::magresText(data)));
        }
        QByteArray list;
        for (const MagresTensor &shielding : right.shieldings)
            if (shielding.labels[0].startsWith('C'))
                list += QByteArray::number(168.5 - shielding.iso(), 'g', 17) + '\n';
        m_program.write("list.csv", list);
        m_program.write("plane.csv", list.replace("\n", ",5\n"));
    }

    void theRightOneIsFirst()
    {
        const QByteArray other = MagresText::magresText(MagresText::crystalData(18));
        MagresData huge = MagresText::crystalData(27);
        for (MagresTensor &shielding : huge.shieldings)
            shielding.tensor[4] *= 1e200;
        // By name, as the table has them.
        const QList<std::pair<QString, QByteArray>> faults{
            {m_program.write("half.magres", other.left(other.size() / 2)), "line"},
            {m_program.write("huge.magres", MagresText::magresText(huge)), "rmsd is beyond all numbers"},
            {m_program.write("kill.stub", "stub-kill"), "the program crashed"},
            {m_program.path("nowhere"), "does not exist"},
            {m_program.write("other.magres", other), "6 lines were measured, but the structure has only 4 sites"},
            {m_program.path("plugins"), "directory"}};
        QStringList files = m_files;
        for (qsizetype i = 0; i < faults.size(); ++i)
            files.insert(20 + 30 * i, faults[i].first);

        const QByteArray one = rank(files, "1");
        QVERIFY2(m_program.errors.endsWith("magres-workbench rank: 6 of 206 files failed\n"), m_program.errors);
        const QByteArrayList lines = one.split('\n');
        QVERIFY(lines[1].startsWith("1,\"" + m_files[m_right].toUtf8().replace('"', "\"\"") + "\",168.5"));
        const auto rmsd = [](const QByteArray &line) { return line.split(',').rbegin()[17].toDouble(); };
        for (int i = 2; i <= 200; ++i)
            QVERIFY(lines[i].startsWith(QByteArray::number(i) + ',') && rmsd(lines[i]) >= rmsd(lines[i - 1]));
        for (qsizetype i = 0; i < faults.size(); ++i) {
            const QByteArray row = lines.value(201 + i), start = ',' + faults[i].first.toUtf8() + ',';
            QVERIFY2(row.startsWith(start) && row.contains(faults[i].second), row);
        }
        QCOMPARE(rank(files, "2"), one);
        m_program.write("1.csv", rank(files.first(90), "1"));
        m_program.write("2.csv", rank(files.mid(90), "2"));
        QCOMPARE(m_program.run("rank --format csv --merge @1.csv @2.csv"), one);
        QCOMPARE(m_program.status, 3);
    }

    /// As the plug-in's own report has them, to its digits; in 2D both dimensions, and their mean in Hz.
    void numbersAreThePluginsOwn()
    {
        const QByteArray fit = m_program.run("fit --nucleus 13C --experiment @list.csv", {m_files[7]});
        const auto ranked = [&](const char *options) {
            return QJsonDocument::fromJson(m_program.run(options, {m_files[7]}))[u"rows"][0].toObject();
        };
        const QJsonObject row = ranked("rank --nucleus 13C --experiment @list.csv --format json");
        QVERIFY2(fit.contains(u"to %1 ppm"_s.arg(row[u"reference"].toDouble()).toUtf8()), fit);
        QVERIFY2(fit.contains(u"New RMSD: %1 ppm"_s.arg(row[u"rmsd"].toDouble()).toUtf8()), fit);
        QCOMPARE(row[u"offset"].toDouble(), row[u"reference"].toDouble() - 100);
        QCOMPARE(ranked("rank --nucleus 13C --experiment @list.csv --format json --language de"), row);
        // A name of two lines is one.
        QFile::copy(m_files[7], m_program.path("two\nlines.magres"));
        const QByteArray named =
            m_program.run("rank --nucleus 13C --experiment @list.csv", {m_program.path("two\nlines.magres")});
        QVERIFY2(m_program.status == 0 && named.contains("two\nlines.magres"), m_program.errors);
        const QJsonObject plane = ranked("rank --nucleus 13C --nucleus-f1 1H --experiment @plane.csv --format json");
        const double f2 = plane[u"rmsd_f2"].toDouble(), f1 = plane[u"rmsd_f1"].toDouble() * 750.03 / 188.64;
        QCOMPARE(f2, row[u"rmsd"].toDouble());
        QCOMPARE(plane[u"rmsd"].toDouble(), std::sqrt((f2 * f2 + f1 * f1) / 2));
    }

private:
    QByteArray rank(const QStringList &files, const char *jobs)
    {
        const QByteArray line = "rank --nucleus 13C --experiment @list.csv --format csv --plugin-path @plugins";
        return m_program.run(line + " --jobs " + jobs, files);
    }

    const int m_right = 137;
    Program m_program;
    QStringList m_files;
};

QTEST_GUILESS_MAIN(TestRank)
#include "tst_rank.moc"
