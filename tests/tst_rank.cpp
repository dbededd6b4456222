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

    /// Nor does the language change a number; a name of two lines is one.
    void oddSurroundings()
    {
        const QString odd = m_program.path("two\nlines.magres");
        QVERIFY(QFile::copy(m_files[7], odd));
        const QByteArray line = "rank --nucleus 13C --experiment @list.csv --format json",
                         plain = m_program.run(line, {odd});
        QVERIFY2(m_program.status == 0 && plain.contains("two\\nlines.magres"), m_program.errors + plain);
        QCOMPARE(m_program.run(line + " --language de", {odd}), plain);
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
