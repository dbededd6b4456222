// SPDX-License-Identifier: BSD-3-Clause
#include "cli/CliErrors.h"
#include "cli/OptionValues.h"
#include "cli/SimulateOptions.h"
#include "host/NucleusTables.h"
#include "io/PeakListFile.h"

#include <QtTest>

using namespace Qt::StringLiterals;

using PeakListFile::Peak;

namespace {

constexpr double refused = std::numeric_limits<double>::quiet_NaN();

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

struct Finished {
    int status;
    QString output;
    QString errors;
};

Finished runProgram(const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(name));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(WORKBENCH_PROGRAM), arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {-1, {}, process.errorString()};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

} // namespace

class TestCli : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void number_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value"); // not a number: refused
        QTest::newRow("integer") << "12" << 12.0;
        QTest::newRow("negative") << "-1.5e-3" << -1.5e-3;
        QTest::newRow("plus") << "+4" << 4.0;
        for (const char *bad : {"", "12.3abc", "1,5", " 1", "0x10", "nan", "inf", "1e999", "+-1", "--1"})
            QTest::newRow(bad) << bad << refused;
    }
    void number()
    {
        QFETCH(QString, text);
        QFETCH(double, value);
        if (std::isnan(value))
            QVERIFY_THROWS_EXCEPTION(UsageError, OptionValues::number(u"--x"_s, text));
        else
            QCOMPARE(OptionValues::number(u"--x"_s, text), value);
    }

    void range_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("from");
        QTest::addColumn<double>("to");
        QTest::newRow("falling") << "200:-20" << 200.0 << -20.0;
        QTest::newRow("rising, negative") << "-5:10" << -5.0 << 10.0;
        QTest::newRow("both negative") << "-5.5:-10" << -5.5 << -10.0;
        for (const char *bad : {"200", ":", "1:", ":1", "1:1", "1:2:3", "1-2", "a:b"})
            QTest::newRow(bad) << bad << refused << refused;
    }
    void range()
    {
        QFETCH(QString, text);
        QFETCH(double, from);
        QFETCH(double, to);
        if (std::isnan(from))
            QVERIFY_THROWS_EXCEPTION(UsageError, OptionValues::range(u"--x"_s, text));
        else
            QCOMPARE(OptionValues::range(u"--x"_s, text), std::make_pair(from, to));
    }

    void points_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("offered");
        for (const char *good : {"128", "8192", "67108864"})
            QTest::newRow(good) << good << true;
        for (const char *bad : {"0", "-128", "64", "100", "8129", "134217728", "99999999999", "128.0", "1e3"})
            QTest::newRow(bad) << bad << false;
    }
    void points()
    {
        QFETCH(QString, text);
        QFETCH(bool, offered);
        if (offered)
            QCOMPARE(OptionValues::points(u"--x"_s, text), text.toInt());
        else
            QVERIFY_THROWS_EXCEPTION(UsageError, OptionValues::points(u"--x"_s, text));
    }

    void optionForms()
    {
        const NucleusTables tables;
        const auto parse = [&](const char *text) {
            return SimulateOptions::parse(CommandLine(SimulateOptions::specs(), words(text)), tables);
        };
        for (const char *form :
             {"--nucleus 13C --slope -0.98 --range -5:10", "--nucleus=13C --slope=-0.98 --range=-5:10"}) {
            const SimulateOptions options = parse(form);
            QCOMPARE(options.dimension[0].nucleus, u"13C"_s);
            QCOMPARE(options.dimension[0].slope.value(), -0.98);
            QCOMPARE(options.dimension[0].range.value(), std::make_pair(-5.0, 10.0));
            QVERIFY(!options.dimension[0].points);
            QVERIFY(!options.twoDimensional);
        }
        QVERIFY(parse("--nucleus 13C --nucleus-f1 1H").twoDimensional);
        QVERIFY(!parse("--nucleus 13C --nucleus-f1 1H").homonuclear());
        QCOMPARE(parse("--nucleus 13C --dims 2").dimension[1].nucleus, u"1H"_s);
        QVERIFY(parse("--nucleus 1H --dims 2 --linewidth 20 --linewidth-f1 20").homonuclear());
        const SimulateOptions isotopes = parse("--nucleus 1H --isotope O=17O --isotope Cu=65Cu");
        QCOMPARE(isotopes.isotopes.value(u"Cu"_s), u"65Cu"_s);
        QCOMPARE(isotopes.isotopes.size(), 2);
    }

    void wrongUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named");
        const auto row = [](const char *arguments, const char *named) {
            QTest::newRow(arguments) << words(arguments) << QString::fromUtf8(named);
        };
        row("--nonsense", "nonsense");
        row("table", "FILE");
        row("table a b", "\"b\"");
        row("table a --format xml", "--format");
        row("table a --isotope O", "--isotope");
        row("table a --isotope O=16O", "--isotope");
        row("table a --isotope C=13C", "it has none");
        row("table a --plugin-path", "plugin-path");
        row("simulate a", "--nucleus");
        row("simulate a --nucleus", "nucleus");
        row("simulate a --nucleus 13C --nonsense", "nonsense");
        row("simulate a --nucleus carbon", "--nucleus");
        row("simulate a --nucleus 12C", "13C");
        row("simulate a --nucleus 13C --nucleus 1H", "--nucleus");
        row("simulate a --nucleus 13C --points 1000", "67108864");
        row("simulate a --nucleus 13C --linewidth 0", "--linewidth");
        row("simulate a --nucleus 13C --frequency -1", "--frequency");
        row("simulate a --nucleus 13C --average all", "--average");
        row("simulate a --nucleus 13C --dims 3", "--dims");
        row("simulate a --nucleus 13C --correlation rss", "--correlation");
        row("simulate a --nucleus 13C --dims 1 --nucleus-f1 1H", "--nucleus-f1");
        row("simulate a --nucleus 1H --nucleus-f1 1H --reference 30 --reference-f1 31", "--reference-f1");
        row("simulate a --nucleus 13C -o x.txt", "x.txt");
        row("simulate a --nucleus 13C -o x", "-o");
        row("simulate a --nucleus 13C -o x.csv -o ./x.csv", "-o");
        row("fit a --nucleus 13C", "--experiment");
        row("rmsd a --nucleus 13C --experiment e -o x.csv", "'o'");
        row("render a", "-o");
        row("render a -o x.csv", "x.csv");
        row("render a -o x.png --reference 3", "--reference");
    }
    void wrongUsage()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        const Finished finished = runProgram(arguments);
        QCOMPARE(finished.status, 2);
        QVERIFY2(finished.errors.contains(named), qPrintable(finished.errors));
        QVERIFY(finished.output.isEmpty());
    }

    void fitGivesTheSpectrumOfTheFittedReference_data()
    {
        QTest::addColumn<QString>("nuclei");
        QTest::addColumn<QString>("given"); // options of the range
        QTest::newRow("1D") << "--nucleus 13C"
                            << "";
        QTest::newRow("1D, range given") << "--nucleus 13C"
                                         << "--range 200:-20";
        QTest::newRow("2D") << "--nucleus 1H --nucleus-f1 13C --points 128 --points-f1 128"
                            << "";
        QTest::newRow("2D, one range given") << "--nucleus 1H --nucleus-f1 13C --points 128 --points-f1 128"
                                             << "--range-f1 200:0";
    }
    /// Outputs of a fit are those of a simulation with the reference that came out: also the range follows.
    void fitGivesTheSpectrumOfTheFittedReference()
    {
        QFETCH(QString, nuclei);
        QFETCH(QString, given);
        const QTemporaryDir directory;
        const QString file = QStringLiteral(SAMPLES "/acetic-acid.magres");
        const auto path = [&](const char *name) { return directory.filePath(QLatin1String(name)); };
        const auto read = [](const QString &name) {
            QFile opened(name);
            return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
        };
        const auto run = [&](const QString &command, const QString &options, const char *name) {
            const QStringList words = (u"%1 %2 "_s.arg(nuclei, given) + options).split(u' ', Qt::SkipEmptyParts);
            return runProgram(QStringList{command, file} + words
                              + QStringList{u"-o"_s, path(name) + u".json"_s, u"-o"_s, path(name) + u".csv"_s});
        };
        QCOMPARE(run(u"simulate"_s, {}, "plain").status, 0);
        // The experiment: the simulated peaks, moved.
        QByteArray list;
        const QJsonObject plain = QJsonDocument::fromJson(read(path("plain.json"))).object();
        const bool plane = nuclei.contains("f1"_L1);
        for (const QJsonValue &peak : plain[u"peaks"].toArray()) {
            list += QByteArray::number(peak[u"pos"][0].toDouble() - 60, 'g', 17);
            list +=
                plane ? ',' + QByteArray::number(peak[u"pos"][1].toDouble() + 70, 'g', 17) + '\n' : QByteArray("\n");
        }
        QFile experiment(path("experiment.csv"));
        QVERIFY(experiment.open(QIODevice::WriteOnly) && experiment.write(list) == list.size());
        experiment.close();

        const Finished fit = run(u"fit"_s, u"--experiment "_s + experiment.fileName(), "fit");
        QVERIFY2(fit.status == 0, qPrintable(fit.errors));
        QVERIFY2(fit.output.startsWith("New reference\n"_L1), qPrintable(fit.output));
        const QJsonObject fitted = QJsonDocument::fromJson(read(path("fit.json"))).object();
        QString references;
        const char *options[] = {"--reference", "--reference-f1"};
        for (int d = 0; d < (plane ? 2 : 1); ++d) {
            const double value = fitted[u"parameters"][u"ref"][fitted[u"nuclei"][d].toString()].toDouble();
            QVERIFY(std::abs(value - (d == 0 ? 40 : 170)) < 1e-6);
            references += u" %1 %2"_s.arg(QLatin1String(options[d])).arg(value, 0, 'g', 17);
        }
        QCOMPARE(run(u"simulate"_s, references, "again").status, 0);
        const QByteArray data = read(path("fit.csv"));
        QVERIFY(!data.isEmpty());
        QVERIFY(data == read(path("again.csv")));
    }

    void failures_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        QTest::newRow("missing") << words("table no-such-file") << "no-such-file does not exist";
        QTest::newRow("directory") << words("table /") << "directory";
        QTest::newRow("device") << words("table /dev/null") << "/dev/null";
        QTest::newRow("missing peak list") << words("fit / --nucleus 13C --experiment nowhere.csv") << "nowhere.csv";
        QTest::newRow("window without display") << words("a.magres") << "magres-workbench simulate";
        QTest::newRow("no plug-ins") << words("table / --plugin-path /nowhere") << "/nowhere";
    }
    void failures()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        const Finished finished = runProgram(arguments);
        QCOMPARE(finished.status, 1);
        QVERIFY2(finished.errors.contains(message), qPrintable(finished.errors));
        QVERIFY(finished.output.isEmpty());
    }

    void helpTellsOfEveryOption()
    {
        QVERIFY(runProgram({u"--version"_s}).output.startsWith(u"magres-workbench "));
        QVERIFY(runProgram({u"--help"_s}).output.contains(u"render FILE -o PAGE"));
        const Finished finished = runProgram(words("simulate --help"));
        QCOMPARE(finished.status, 0);
        for (const OptionSpec &option : SimulateOptions::specs())
            QVERIFY2(finished.output.contains(CommandLine::shown(option.name) + u' '), option.name);
        QVERIFY(finished.output.contains(u"--plugin-path DIR"));
    }

    void peakLists_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("dimensions");
        QTest::addColumn<QList<Peak>>("peaks");
        QTest::addColumn<QString>("message");
        const auto good = [](const char *name, const char *text, int dimensions, const QList<Peak> &peaks) {
            QTest::newRow(name) << QByteArray(text) << dimensions << peaks << QString();
        };
        const auto bad = [](const char *name, const char *text, int dimensions, const char *message) {
            QTest::newRow(name) << QByteArray(text) << dimensions << QList<Peak>() << QString::fromUtf8(message);
        };
        good("positions", "10\n20.5\n", 1, {{10, 0, 1}, {20.5, 0, 1}});
        good("heights, header, comments", "position,height\n# c\n 10 , 2 # why\n\n-5,-1", 1, {{10, 0, 2}, {-5, 0, -1}});
        good("two dimensions", "3.5,60\n1.2,15,4\n", 2, {{3.5, 60, 1}, {1.2, 15, 4}});
        good("DOS line ends and byte order mark", "\xEF\xBB\xBFppm\r\n1\r\n2\r\n", 1, {{1, 0, 1}, {2, 0, 1}});
        good("old Mac line ends", "1\r2", 1, {{1, 0, 1}, {2, 0, 1}});
        bad("empty", "# nothing\n", 1, "no peaks");
        bad("one dimension for two", "position,height\n1,2\n", 2, "line 1: this is a list of 1D peaks");
        bad("two dimensions for one", "f2,f1\n1,2\n", 1, "line 1: this is a list of 2D peaks");
        bad("header only", "position\n", 1, "no peaks");
        bad("second header", "ppm\nppm\n1", 1, "line 2");
        bad("half a number", "1\n12.3abc\n", 1, "line 2: expected a number, found \"12.3abc\"");
        bad("half a number first", "12.3abc\n", 1, "line 1");
        bad("not a number", "nan\n", 1, "line 1");
        bad("infinite", "1,inf\n", 1, "line 1");
        bad("decimal comma read as height", "1,5,2\n", 1, "found 3 fields");
        bad("one field in two dimensions", "1\n", 2, "position,position_f1");
        bad("binary", "\1\2", 1, "line 1");
    }
    void peakLists()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, dimensions);
        QFETCH(QList<Peak>, peaks);
        QFETCH(QString, message);
        QString shown;
        QList<Peak> found;
        try {
            const auto parsed = PeakListFile::parse(text, u"exp.csv"_s, dimensions);
            found = QList<Peak>(parsed.begin(), parsed.end());
        } catch (const std::exception &error) {
            shown = QString::fromUtf8(error.what());
        }
        QVERIFY2(found == peaks, qPrintable(shown));
        QCOMPARE(shown.isEmpty(), message.isEmpty());
        QVERIFY2(shown.contains(message), qPrintable(shown));
        QVERIFY(shown.isEmpty() || shown.contains(u"exp.csv"));
    }
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
