// SPDX-License-Identifier: BSD-3-Clause
#include "Program.h"
#include "cli/CliErrors.h"
#include "cli/OptionValues.h"
#include "cli/SimulateOptions.h"
#include "data/Nuclides.h"

#include <QtTest>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

} // namespace

class TestCli : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void values()
    {
        using namespace OptionValues;
        const QString name = u"--x"_s;
        QCOMPARE(number(name, u"-1.5e-3"_s), -1.5e-3);
        QCOMPARE(number(name, u"+4"_s), 4.0);
        for (const char *bad : {"", "12.3abc", "1,5", " 1", "0x10", "nan", "inf", "1e999", "+-1", "--1"})
            QVERIFY_THROWS_EXCEPTION(UsageError, number(name, QLatin1String(bad)));
        QCOMPARE(range(name, u"200:-20"_s), std::make_pair(200.0, -20.0));
        QCOMPARE(range(name, u"-5.5:-10"_s), std::make_pair(-5.5, -10.0));
        for (const char *bad : {"200", ":", "1:", ":1", "1:1", "1:2:3", "1-2", "a:b"})
            QVERIFY_THROWS_EXCEPTION(UsageError, range(name, QLatin1String(bad)));
        QCOMPARE(points(name, u"128"_s), 128);
        QCOMPARE(points(name, u"67108864"_s), 67108864);
        for (const char *bad : {"0", "-128", "64", "100", "8129", "134217728", "99999999999", "128.0", "1e3"})
            QVERIFY_THROWS_EXCEPTION(UsageError, points(name, QLatin1String(bad)));
    }

    void optionForms()
    {
        const auto parse = [&](const char *text) {
            return SimulateOptions::parse(CommandLine(SimulateOptions::specs(), words(text)));
        };
        for (const char *form :
             {"--nucleus 13C --slope -0.98 --range -5:10", "--nucleus=13C --slope=-0.98 --range=-5:10"}) {
            const SimulateOptions options = parse(form);
            QCOMPARE(options.dimension[0].nucleus, u"13C"_s);
            QCOMPARE(options.dimension[0].slope.value(), -0.98);
            QCOMPARE(options.dimension[0].range.value(), std::make_pair(-5.0, 10.0));
            QVERIFY(!options.dimension[0].points && !options.twoDimensional);
        }
        const SimulateOptions plane = parse("--nucleus 13C --nucleus-f1 1H");
        QVERIFY(plane.twoDimensional && !plane.homonuclear());
        QCOMPARE(parse("--nucleus 13C --dims 2").dimension[1].nucleus, u"1H"_s);
        QVERIFY(parse("--nucleus 1H --dims 2 --linewidth 20 --linewidth-f1 20").homonuclear());
        const SimulateOptions isotopes = parse("--nucleus 1H --isotope O=17O --isotope Cu=65Cu");
        QCOMPARE(isotopes.isotopes.value(u"O"_s) + isotopes.isotopes.value(u"Cu"_s), u"17O65Cu"_s);
    }

    /// Outputs of a fit are those of a simulation with the reference that came out: also the range follows.
    void fitGivesTheSpectrumOfTheFittedReference()
    {
        for (const QString &given :
             {u"--nucleus 13C"_s, u"--nucleus 13C --range 200:-20"_s,
              u"--nucleus 1H --nucleus-f1 13C --points 128 --points-f1 128 --range-f1 200:0"_s}) {
            Program program;
            const bool plane = given.contains(u"--nucleus-f1"_s);
            const auto json = [&](const char *name) { return QJsonDocument::fromJson(program.read(name)).object(); };
            const auto run = [&](const QByteArray &line, const QByteArray &name) {
                return program.run(line + " " SAMPLES "/acetic-acid.magres -o @" + name + ".json -o @" + name + ".csv",
                                   given.split(u' '));
            };
            run("simulate", "plain");
            // The experiment: the simulated peaks, moved.
            QByteArray experiment;
            for (const QJsonValue &peak : json("plain.json")[u"peaks"].toArray()) {
                experiment += QByteArray::number(peak[u"pos"][0].toDouble() - 60, 'g', 17);
                if (plane)
                    experiment += ',' + QByteArray::number(peak[u"pos"][1].toDouble() + 70, 'g', 17);
                experiment += '\n';
            }
            program.write("experiment.csv", experiment);
            const QByteArray told = run("fit --experiment @experiment.csv", "fit");
            QVERIFY2(program.status == 0 && told.startsWith("New reference\n"), program.errors + told);
            const QJsonObject fitted = json("fit.json");
            QByteArray line = "simulate";
            for (int d = 0; d < (plane ? 2 : 1); ++d) {
                const double value = fitted[u"parameters"][u"ref"][fitted[u"nuclei"][d].toString()].toDouble();
                QVERIFY(std::abs(value - (d == 0 ? 40 : 170)) < 1e-6);
                line += (d == 0 ? " --reference " : " --reference-f1 ") + QByteArray::number(value, 'g', 17);
            }
            run(line, "again");
            QVERIFY2(!program.read("fit.csv").isEmpty() && program.read("fit.csv") == program.read("again.csv"),
                     qPrintable(given));
        }
    }
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
