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

struct Finished {
    int status;
    QString output;
    QString errors;
};

/// The locale is that of the user's messages.
Finished runProgram(const QStringList &arguments, const QString &locale = u"C.UTF-8"_s)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(name));
    environment.insert(u"LC_ALL"_s, locale);
    process.setProcessEnvironment(environment);
    process.start(built(u"magres-workbench"), arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {-1, {}, process.errorString()};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
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

    void languages()
    {
        const auto row = [](const char *locale, const char *arguments, int status, const char *told) {
            const Finished run = runProgram(words(arguments), QLatin1String(locale));
            QVERIFY2(run.status == status && (run.output + run.errors).contains(QString::fromUtf8(told)),
                     qPrintable(QLatin1String(arguments) + run.output + run.errors));
        };
        row("C", "simulate a --language de", 2, "Option --nucleus ist nötig\nAufruf: ");
        row("C", "--language=de simulate a", 2, "Option --nucleus ist nötig");
        row("de_DE.UTF-8", "simulate a", 2, "Option --nucleus ist nötig");
        row("de_DE.UTF-8", "simulate a --language en", 2, "option --nucleus is required");
        row("fr_FR.UTF-8", "simulate a", 2, "option --nucleus is required");
        row("de_DE.UTF-8", "--nonsense", 2, "Aufruf: magres-workbench [FILE]...");
        row("de_DE.UTF-8", "", 1, "keine Anzeige");
        row("C", "table a --language fr", 2, "\"fr\" is not one of: en, de");
        // While it runs: by the workbench, a worker of its own, and the plug-in.
        row("de_DE.UTF-8", "table /nowhere", 1, "Die Datei /nowhere gibt es nicht");
        row("de_DE.UTF-8", "rank --merge /nowhere", 1, "diese Datei gibt es nicht");
        row("de_DE.UTF-8",
            "fit " SAMPLES "/paracetamol.magres --nucleus 13C --experiment " SAMPLES "/paracetamol-13C.csv", 0,
            "Neuer RMSD: ");
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

    void refusals()
    {
        const auto row = [](int status, const QByteArray &arguments, const char *named) {
            const Finished run = runProgram(words(arguments));
            QVERIFY2(run.status == status && run.output.isEmpty() && run.errors.contains(QLatin1String(named)),
                     arguments + (run.output + run.errors).toUtf8());
        };
        for (const auto &[arguments, named] :
             {std::pair("--nonsense", "nonsense"), std::pair("table", "FILE"), std::pair("table a b", "\"b\""),
              std::pair("table a --format xml", "--format"), std::pair("table a --isotope O=16O", "--isotope"),
              std::pair("table a --isotope C=13C", "it has none"), std::pair("simulate a", "--nucleus"),
              std::pair("simulate a --nucleus 12C", "13C"),
              std::pair("simulate a --nucleus 1H --nucleus-f1 1H --reference 30 --reference-f1 31", "--reference-f1"),
              std::pair("fit a --nucleus 13C", "--experiment"),
              std::pair("rmsd a --nucleus 13C --experiment e -o x.csv", "'o'"), std::pair("render a", "-o"),
              std::pair("experiment", "FILE"), std::pair("experiment a b -o x.csv", "one EXP"),
              std::pair("experiment a --unit MHz", "--unit"), std::pair("experiment a -o x.xyz", ".csdf"),
              std::pair("render a -o x.png --reference 3", "--reference"), std::pair("powder a", "--nucleus"),
              std::pair("powder a --nucleus 16O", "16O")})
            row(2, arguments, named);
        for (const auto &[options, named] :
             {std::pair("--nucleus 1H", "--nucleus"), std::pair("--points 1000", "67108864"),
              std::pair("--linewidth 0", "--linewidth"), std::pair("--correlation rss", "--correlation"),
              std::pair("--dims 1 --nucleus-f1 1H", "--nucleus-f1"), std::pair("-o x.txt", "x.txt"),
              std::pair("-o x.csv -o ./x.csv", "-o")})
            row(2, QByteArray("simulate a --nucleus 13C ") + options, named);
        for (const auto &[options, named] :
             {std::pair("--mas 0", "--static"), std::pair("--mas fast", "--mas"),
              std::pair("--mas -5", "is not a rate"), std::pair("--mas nan", "is not a number"),
              std::pair("--linewidth inf", "is not a number"), std::pair("--range 5:5", "two different numbers"),
              std::pair("--range nan:5", "--range"), std::pair("--points 67108864", "from 2 to 4194304"),
              std::pair("--mas 10 --static", "contradict"), std::pair("--frequency 60000", "10000 MHz"),
              std::pair("--linewidth -1", "--linewidth"), std::pair("--range 2e6:0", "--range"),
              std::pair("--points 1", "--points"), std::pair("--orientations 20000000", "10000000"),
              std::pair("--fit", "--experiment"), std::pair("--experiment e --fit-scale", "--fit"),
              std::pair("--mqmas --static", "--static"), std::pair("--sites-csv -o x.png", ".csv"),
              std::pair("-o x.txt", "csdf")})
            row(2, QByteArray("powder a --nucleus 27Al ") + options, named);
        row(1, "table no-such-file", "no-such-file does not exist");
        row(1, "table /", "directory");
        row(1, "table /dev/null", "/dev/null");
        row(1, "fit / --nucleus 13C --experiment nowhere.csv", "nowhere.csv");
        // What the plug-in cannot pair, another command can.
        row(1, "rmsd " SAMPLES "/paracetamol.magres --nucleus 1H --experiment " SAMPLES "/paracetamol-1H.csv",
            "/paracetamol.magres --nucleus 1H --experiment " SAMPLES "/paracetamol-1H.csv` pairs different numbers");
        row(1, "experiment nowhere.csv", "nowhere.csv");
        row(1, "--reference-set nowhere.json a.magres", "nowhere.json");
        row(2, "--reference-set nowhere.json table a.magres", "behind the command");
        row(1, "a.magres", "magres-workbench simulate"); // a window without a display
        row(1, "table / --plugin-path /nowhere", "/nowhere");
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

    /// What is written and read again lies where it was, in every format.
    void experimentsKeepTheirAxes()
    {
        Program program;
        const auto report = [&](const QByteArray &line) {
            program.run("experiment -o @report.json " + line);
            return QJsonDocument::fromJson(program.read("report.json")).object();
        };
        const QJsonObject original = report(SAMPLES "/paracetamol-13C-bruker -o @s.csv -o @s.jdx -o @s.csdf -o @s.png "
                                                    "-o @s.svg -o @s.pdf");
        QCOMPARE(original[u"dimensions"][0][u"points"].toInt(), 4096);
        QCOMPARE(original[u"peaks"].toArray().size(), 8);
        for (const char *copy : {"@s.csv", "@s.jdx", "@s.csdf"}) {
            const QJsonObject again = report(copy);
            QCOMPARE(again[u"kind"].toString(), u"spectrum"_s);
            for (const char16_t *end : {u"first", u"last"}) {
                const double there = original[u"dimensions"][0][QStringView(end)].toDouble(),
                             here = again[u"dimensions"][0][QStringView(end)].toDouble();
                QVERIFY2(std::abs(there - here) < 1e-8, copy);
            }
            QCOMPARE(again[u"peaks"].toArray().size(), 8);
            QVERIFY(std::abs(again[u"peaks"][3][u"pos"][0].toDouble() - original[u"peaks"][3][u"pos"][0].toDouble())
                    < 1e-6);
        }
        for (const char *picture : {"s.png", "s.svg", "s.pdf"})
            QVERIFY2(program.read(picture).size() > 1000, picture);

        // Of several files those that can be read are shown; the assumptions are told where a measurement is used.
        const QByteArray several = program.run("experiment @s.csv @");
        const QString axis =
            u"4096 points from %1 to %2 ppm"_s.arg(original[u"dimensions"][0][u"first"].toDouble(), 0, 'f', 4)
                .arg(original[u"dimensions"][0][u"last"].toDouble(), 0, 'f', 4);
        QVERIFY2(program.status == 3 && several.contains(axis.toUtf8()), several);
        QVERIFY2(program.errors.contains(program.path("").toUtf8()), program.errors);
        program.run("rmsd " SAMPLES "/paracetamol.magres --nucleus 13C --experiment @s.csv");
        QVERIFY2(program.errors.contains("Read as a spectrum: 4096"), program.errors);
    }

    /// The list that the spectrometer's program picked, when asked for.
    void peaksBesideTheData()
    {
        Program program;
        const QString procno = program.path("1/pdata/1/"), source = QStringLiteral(SAMPLES "/paracetamol-13C-bruker/");
        QVERIFY(QDir().mkpath(procno) && QFile::copy(source + u"acqus"_s, program.path("1/acqus")));
        for (const QString &name : {u"1r"_s, u"procs"_s, u"title"_s})
            QVERIFY(QFile::copy(source + u"pdata/1/"_s + name, procno + name));
        program.run("experiment @1 --peaks file");
        QVERIFY2(program.status == 1 && program.errors.contains("there is no peaklist.xml beside the data"),
                 program.errors);
        program.write("1/pdata/1/peaklist.xml",
                      "<?xml version=\"1.0\"?><PeakList><PeakList1D><Peak1D F1=\"99.5\" intensity=\"2\"/></PeakList1D>"
                      "</PeakList>");
        const QByteArray asked = program.run("experiment @1 --peaks file");
        QVERIFY2(asked.contains("99.5000 ppm") && asked.contains("13C"), program.errors);
        QVERIFY(program.run("experiment @1").contains("8 picked"));
        // Of several measurements, those that are such folders.
        const QByteArray compare =
            "compare " SAMPLES "/paracetamol.magres --average ch3 --unmatched 0 --experiment 1H=" SAMPLES
            "/paracetamol-1H.csv --experiment 13C=@1";
        QVERIFY(program.run(compare + " --peaks file").contains("13C: 1 lines"));
        QVERIFY(program.run(compare).contains("13C: 8 lines"));

        // Numbers of sites go into the copy of a list.
        program.write("counted.txt", "shift,count\n10,2\n5,1\n");
        program.run("experiment @counted.txt -o @copy.csv");
        QCOMPARE(program.read("copy.csv"), QByteArray("position,height,label,count\n10,1,,2\n5,1,,1\n"));
    }

    /// Files of older writers are repaired on the way to the plug-in, and doubts are told once.
    void magresInTheWild()
    {
        Program program;
        const auto read = [&](const QByteArray &name, const QByteArray &text) {
            program.write(name, text);
            return QJsonDocument::fromJson(program.run("table --format json @" + name))[u"rows"].toArray();
        };
        const QByteArray text =
            "#$magres-abinitio-v1.0\n[atoms]\nunits lattice Angstrom\nunits atom Angstrom\n"
            "lattice 90 0 0 0 90 0 0 0 90\natom H H 99 0 0 0\natom H H 100 9 9 9\n[/atoms]\n"
            "[magres]\nunits ms ppm\nms H 99 30 0 0 0 30 0 0 0 30\nms H100 20 0 0 0 20 0 0 0 20\n[/magres]\n";
        const QJsonArray rows = read("a.magres", text);
        QVERIFY2(rows.size() == 2, program.errors);
        QCOMPARE(rows[0][u"iso"].toDouble() + rows[1][u"iso"].toDouble(), 50.0);
        QCOMPARE(program.errors.count("taken apart"), 1);
        QVERIFY(program.errors.startsWith(program.path("a.magres").toUtf8()));
        read("b.magres", QByteArray(text).replace("ms H100", "ms H101"));
        QVERIFY2(program.status == 1 && program.errors.contains("Ms record in line ms H101"), program.errors);
        read("c.magres", text.mid(text.indexOf('\n') + 1));
        QVERIFY2(program.status == 1 && program.errors.contains("#$magres-abinitio-v1.0"), program.errors);
    }

    void powderFiles()
    {
        Program program;
        const QByteArray told = program.run(
            "powder " SAMPLES "/berlinite.magres --nucleus 27Al --frequency 400 --mas 12000 --reference 560 "
            "--linewidth 100 --points 6001 --range -100:200 --sites-csv -o @al.csv -o @al.json");
        QVERIFY2(told.contains("27Al at 104.3") && told.contains("no satellites"), program.errors);
        const auto rows = [&](const char *name) {
            std::vector<std::vector<double>> found;
            for (const QByteArray &line : program.read(name).trimmed().split('\n').mid(1)) {
                found.emplace_back();
                for (const QByteArray &field : line.split(','))
                    found.back().push_back(field.toDouble());
            }
            return found;
        };
        const auto sum = rows("al.csv"), sites = rows("al.sites.csv");
        QCOMPARE(sum.size(), size_t(6001));
        QCOMPARE(sites.size(), sum.size());
        QVERIFY(std::abs(sum.front()[0] - 200) < 1e-9 && std::abs(sum.back()[0] + 100) < 1e-9);
        double area = 0;
        for (size_t i = 0; i < sum.size(); ++i) {
            QVERIFY(sites[i].size() == 2 && std::abs(sites[i][1] - sum[i][1]) < 1e-12);
            area += sum[i][1] * 0.05;
        }
        // Three aluminium atoms in the cell; sidebands and wings lie beyond the range.
        QVERIFY2(area > 2.5 && area < 3, qPrintable(QString::number(area)));
        const QJsonObject site = QJsonDocument::fromJson(program.read("al.json"))[u"sites"][0].toObject();
        QVERIFY(std::abs(site[u"Cq_MHz"].toDouble() - 3.996737) < 1e-5);
        QVERIFY(std::abs(site[u"shift_ppm"].toDouble() - 47.6) < 1e-3);
        QCOMPARE(site[u"nuclei"].toInt(), 3);
    }

    void powderMessages()
    {
        const auto row = [](const QByteArray &tensors, const QByteArray &options, int status,
                            const char *message = "") {
            Program program;
            program.write("a.magres",
                          "#$magres-abinitio-v1.0\n[atoms]\nunits lattice Angstrom\nlattice 5 0 0 0 5 0 0 0 5\n"
                          "units atom Angstrom\natom Al Al 1 0 0 0\natom H H 1 2 2 2\n[/atoms]\n[magres]\n"
                          "units ms ppm\nunits efg au\n"
                              + tensors + "[/magres]\n");
            QByteArray line = "powder @a.magres -o @a.csv " + options;
            if (!options.contains("--points"))
                line += " --points 64";
            if (!options.contains("--nucleus"))
                line += " --nucleus 27Al";
            const QByteArray output = program.run(line), numbers = program.read("a.csv"), &errors = program.errors;
            QVERIFY2(program.status == status && numbers.isEmpty() == (status != 0), line + errors);
            QVERIFY2(errors.contains(message) && (status == 0) == output.contains("Breadth"), line + errors);
            QVERIFY2(!numbers.contains("nan") && !numbers.contains("inf"), line);
            // That the hydrogen has no tensors is told of every file.
            const bool quiet = errors.isEmpty() || (errors.contains("Atoms without") && errors.count('\n') == 1);
            QVERIFY2(*message || quiet, line + errors);
        };
        const QByteArray gradient = "efg Al 1 0.1 0 0 0 0.2 0 0 0 -0.3\n";
        const QByteArray shielding = "ms Al 1 500 0 0 0 510 0 0 0 520\n";
        row(gradient, "--reference 30", 0, "at the reference, 30 ppm");
        row(shielding, {}, 1, "no electric field gradient");
        row(gradient + shielding, "--site Al7", 1, "unique sites are Al1");
        row(gradient + shielding, "--nucleus 17O", 1, "no site of 17O");
        row(shielding + "efg Al 1 0 0 0 0 0 0 0 0 0\n", {}, 0);
        row(gradient + "ms Al 1 500 0 0 0 500 0 0 0 500\n", {}, 0);
        row("efg Al 1 0.5 0 0 0 0.5 0 0 0 -1.0\n" + shielding, "--frequency 100", 0, "second order");
        row(gradient + "ms Al 1 nan 0 0 0 510 0 0 0 520\n", {}, 0, "no shielding of Al1");
        row(gradient + "ms Al 1 1e30 0 0 0 510 0 0 0 520\n", {}, 1, "larger than 1000000 ppm");
        row(gradient + shielding, "--mas 1e-3", 1, "compute the static spectrum");
        row(gradient + shielding, "--mas 1e7", 0);
        row(gradient + shielding, "--frequency 1", 1, "second order fails");
        row(gradient + shielding, "--points 4096 --range 900000:900001", 1, "too narrow for so many points");
        row(gradient + shielding, "--range 900000:899000", 0);
        row(gradient + shielding, "--static --orientations 10000000", 0);
        row(shielding + "efg Al 1 0 0 0 0 0 0 0 0 0\n", "--linewidth 0", 0);
        row(gradient + shielding, "--points 2", 0);
        row(gradient, "--nucleus 1H", 1, "no shielding");
        row("ms H 1 20 0 0 0 25 0 0 0 30\n", "--nucleus 1H --mqmas", 1, "triple-quantum");
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
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
