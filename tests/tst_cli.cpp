// SPDX-License-Identifier: BSD-3-Clause
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
        const auto row = [](int status, const char *arguments, const char *named) {
            const Finished run = runProgram(words(arguments));
            QVERIFY2(run.status == status && run.output.isEmpty() && run.errors.contains(QLatin1String(named)),
                     qPrintable(QLatin1String(arguments) + run.output + run.errors));
        };
        row(2, "--nonsense", "nonsense");
        row(2, "table", "FILE");
        row(2, "table a b", "\"b\"");
        row(2, "table a --format xml", "--format");
        row(2, "table a --isotope O=16O", "--isotope");
        row(2, "table a --isotope C=13C", "it has none");
        row(2, "simulate a", "--nucleus");
        row(2, "simulate a --nucleus 12C", "13C");
        row(2, "simulate a --nucleus 13C --nucleus 1H", "--nucleus");
        row(2, "simulate a --nucleus 13C --points 1000", "67108864");
        row(2, "simulate a --nucleus 13C --linewidth 0", "--linewidth");
        row(2, "simulate a --nucleus 13C --correlation rss", "--correlation");
        row(2, "simulate a --nucleus 13C --dims 1 --nucleus-f1 1H", "--nucleus-f1");
        row(2, "simulate a --nucleus 1H --nucleus-f1 1H --reference 30 --reference-f1 31", "--reference-f1");
        row(2, "simulate a --nucleus 13C -o x.txt", "x.txt");
        row(2, "simulate a --nucleus 13C -o x.csv -o ./x.csv", "-o");
        row(2, "fit a --nucleus 13C", "--experiment");
        row(2, "rmsd a --nucleus 13C --experiment e -o x.csv", "'o'");
        row(2, "render a", "-o");
        row(2, "experiment", "FILE");
        row(2, "experiment a b -o x.csv", "one EXP");
        row(2, "experiment a --unit MHz", "--unit");
        row(2, "experiment a -o x.xyz", ".csdf");
        row(2, "render a -o x.png --reference 3", "--reference");
        row(2, "powder a", "--nucleus");
        row(2, "powder a --nucleus 16O", "16O");
        row(2, "powder a --nucleus 27Al --mas 0", "--static");
        row(2, "powder a --nucleus 27Al --mas fast", "--mas");
        row(2, "powder a --nucleus 27Al --mas -5", "is not a rate");
        row(2, "powder a --nucleus 27Al --mas nan", "is not a number");
        row(2, "powder a --nucleus 27Al --linewidth inf", "is not a number");
        row(2, "powder a --nucleus 27Al --range 5:5", "two different numbers");
        row(2, "powder a --nucleus 27Al --range nan:5", "--range");
        row(2, "powder a --nucleus 27Al --points 67108864", "from 2 to 4194304");
        row(2, "powder a --nucleus 27Al --mas 10 --static", "contradict");
        row(2, "powder a --nucleus 27Al --frequency 60000", "10000 MHz");
        row(2, "powder a --nucleus 27Al --linewidth -1", "--linewidth");
        row(2, "powder a --nucleus 27Al --range 2e6:0", "--range");
        row(2, "powder a --nucleus 27Al --points 1", "--points");
        row(2, "powder a --nucleus 27Al --orientations 20000000", "10000000");
        row(2, "powder a --nucleus 27Al --fit", "--experiment");
        row(2, "powder a --nucleus 27Al --experiment e --fit-scale", "--fit");
        row(2, "powder a --nucleus 27Al --mqmas --static", "--static");
        row(2, "powder a --nucleus 27Al --sites-csv -o x.png", ".csv");
        row(2, "powder a --nucleus 27Al -o x.txt", "csdf");
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
            const QTemporaryDir directory;
            const bool plane = given.contains(u"--nucleus-f1"_s);
            const auto read = [&](const QString &name) {
                QFile opened(directory.filePath(name));
                return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
            };
            const auto json = [&](const QString &name) { return QJsonDocument::fromJson(read(name)).object(); };
            const auto run = [&](const QString &command, const QStringList &options, const QString &name) {
                const QString path = directory.filePath(name);
                return runProgram(QStringList{command, QStringLiteral(SAMPLES "/acetic-acid.magres")}
                                  + given.split(u' ') + options
                                  + QStringList{u"-o"_s, path + u".json"_s, u"-o"_s, path + u".csv"_s});
            };
            QCOMPARE(run(u"simulate"_s, {}, u"plain"_s).status, 0);
            // The experiment: the simulated peaks, moved.
            QFile experiment(directory.filePath(u"experiment.csv"_s));
            QVERIFY(experiment.open(QIODevice::WriteOnly));
            for (const QJsonValue &peak : json(u"plain.json"_s)[u"peaks"].toArray()) {
                experiment.write(QByteArray::number(peak[u"pos"][0].toDouble() - 60, 'g', 17));
                if (plane)
                    experiment.write(',' + QByteArray::number(peak[u"pos"][1].toDouble() + 70, 'g', 17));
                experiment.write("\n");
            }
            experiment.close();

            const Finished fit = run(u"fit"_s, {u"--experiment"_s, experiment.fileName()}, u"fit"_s);
            QVERIFY2(fit.status == 0, qPrintable(fit.errors));
            QVERIFY2(fit.output.startsWith("New reference\n"_L1), qPrintable(fit.output));
            const QJsonObject fitted = json(u"fit.json"_s);
            QStringList references;
            for (int d = 0; d < (plane ? 2 : 1); ++d) {
                const double value = fitted[u"parameters"][u"ref"][fitted[u"nuclei"][d].toString()].toDouble();
                QVERIFY(std::abs(value - (d == 0 ? 40 : 170)) < 1e-6);
                references << (d == 0 ? u"--reference"_s : u"--reference-f1"_s) << QString::number(value, 'g', 17);
            }
            QCOMPARE(run(u"simulate"_s, references, u"again"_s).status, 0);
            QVERIFY2(!read(u"fit.csv"_s).isEmpty() && read(u"fit.csv"_s) == read(u"again.csv"_s), qPrintable(given));
        }
    }

    /// What is written and read again lies where it was, in every format.
    void experimentsKeepTheirAxes()
    {
        const QTemporaryDir directory;
        const auto report = [&](const QString &path, const QStringList &outputs) {
            QStringList arguments{u"experiment"_s, path, u"-o"_s, directory.filePath(u"report.json"_s)};
            for (const QString &output : outputs)
                arguments << u"-o"_s << directory.filePath(output);
            const Finished finished = runProgram(arguments);
            if (finished.status != 0)
                qWarning("%s", qPrintable(finished.errors));
            QFile file(directory.filePath(u"report.json"_s));
            return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
        };
        const QStringList copies{u"s.csv"_s, u"s.jdx"_s, u"s.csdf"_s};
        const QJsonObject original = report(QStringLiteral(SAMPLES "/paracetamol-13C-bruker"),
                                            copies + QStringList{u"s.png"_s, u"s.svg"_s, u"s.pdf"_s});
        QCOMPARE(original[u"dimensions"][0][u"points"].toInt(), 4096);
        QCOMPARE(original[u"peaks"].toArray().size(), 8);
        for (const QString &copy : copies) {
            const QJsonObject again = report(directory.filePath(copy), {});
            QCOMPARE(again[u"kind"].toString(), u"spectrum"_s);
            for (const char16_t *end : {u"first", u"last"}) {
                const double there = original[u"dimensions"][0][QStringView(end)].toDouble(),
                             here = again[u"dimensions"][0][QStringView(end)].toDouble();
                QVERIFY2(std::abs(there - here) < 1e-8, qPrintable(copy + QString::number(here - there)));
            }
            QCOMPARE(again[u"peaks"].toArray().size(), 8);
            QVERIFY(std::abs(again[u"peaks"][3][u"pos"][0].toDouble() - original[u"peaks"][3][u"pos"][0].toDouble())
                    < 1e-6);
        }
        for (const char *picture : {"s.png", "s.svg", "s.pdf"})
            QVERIFY2(QFileInfo(directory.filePath(QLatin1String(picture))).size() > 1000, picture);

        // Of several files those that can be read are shown; the assumptions are told where a measurement is used.
        const Finished several = runProgram({u"experiment"_s, directory.filePath(u"s.csv"_s), directory.path()});
        QCOMPARE(several.status, 3);
        const QString axis =
            u"4096 points from %1 to %2 ppm"_s.arg(original[u"dimensions"][0][u"first"].toDouble(), 0, 'f', 4)
                .arg(original[u"dimensions"][0][u"last"].toDouble(), 0, 'f', 4);
        QVERIFY2(several.output.contains(axis) && several.errors.contains(directory.path()),
                 qPrintable(several.output));
        const Finished rmsd = runProgram({u"rmsd"_s, QStringLiteral(SAMPLES "/paracetamol.magres"), u"--nucleus"_s,
                                          u"13C"_s, u"--experiment"_s, directory.filePath(u"s.csv"_s)});
        QVERIFY2(rmsd.errors.contains(u"Read as a spectrum: 4096"), qPrintable(rmsd.errors));
    }

    /// The list that the spectrometer's program picked, when asked for.
    void peaksBesideTheData()
    {
        const QTemporaryDir directory;
        const QString procno = directory.filePath(u"1/pdata/1"_s),
                      source = QStringLiteral(SAMPLES "/paracetamol-13C-bruker");
        QVERIFY(QDir().mkpath(procno) && QFile::copy(source + u"/acqus"_s, directory.filePath(u"1/acqus"_s)));
        for (const char *name : {"1r", "procs", "title"})
            QVERIFY(QFile::copy(source + u"/pdata/1/"_s + QLatin1String(name), procno + u'/' + QLatin1String(name)));
        const QStringList ask{u"experiment"_s, directory.filePath(u"1"_s), u"--peaks"_s, u"file"_s};
        const Finished none = runProgram(ask);
        QVERIFY2(none.status == 1 && none.errors.contains(u"there is no peaklist.xml beside the data"),
                 qPrintable(none.errors));
        QFile list(procno + u"/peaklist.xml"_s);
        QVERIFY(list.open(QIODevice::WriteOnly));
        list.write("<?xml version=\"1.0\"?><PeakList><PeakList1D><Peak1D F1=\"99.5\" "
                   "intensity=\"2\"/></PeakList1D></PeakList>");
        list.close();
        const Finished asked = runProgram(ask), picked = runProgram(ask.mid(0, 2));
        QVERIFY2(asked.output.contains(u"99.5000 ppm") && asked.output.contains(u"13C"), qPrintable(asked.errors));
        QVERIFY(picked.output.contains(u"8 picked"));
        // Of several measurements, those that are such folders.
        const QStringList compare = words("compare " SAMPLES "/paracetamol.magres --average ch3 --unmatched 0 "
                                          "--experiment 1H=" SAMPLES "/paracetamol-1H.csv --experiment");
        const QString folder = u"13C="_s + directory.filePath(u"1"_s);
        QVERIFY(runProgram(compare + QStringList{folder, u"--peaks"_s, u"file"_s}).output.contains(u"13C: 1 lines"));
        QVERIFY(runProgram(compare + QStringList{folder}).output.contains(u"13C: 8 lines"));

        // Numbers of sites go into the copy of a list.
        QFile counted(directory.filePath(u"counted.txt"_s)), copy(directory.filePath(u"copy.csv"_s));
        QVERIFY(counted.open(QIODevice::WriteOnly) && counted.write("shift,count\n10,2\n5,1\n") > 0);
        counted.close();
        const Finished copied = runProgram({u"experiment"_s, counted.fileName(), u"-o"_s, copy.fileName()});
        QVERIFY2(copied.status == 0 && copy.open(QIODevice::ReadOnly), qPrintable(copied.errors));
        QCOMPARE(copy.readAll(), QByteArray("position,height,label,count\n10,1,,2\n5,1,,1\n"));
    }

    /// Files of older writers are repaired on the way to the plug-in, and doubts are told once.
    void magresInTheWild()
    {
        const QTemporaryDir directory;
        const auto read = [&](const QString &name, const QByteArray &text) {
            QFile file(directory.filePath(name));
            if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
                qFatal("no file");
            file.close();
            return runProgram({u"table"_s, file.fileName(), u"--format"_s, u"json"_s});
        };
        QByteArray text =
            "#$magres-abinitio-v1.0\n[atoms]\nunits lattice Angstrom\nunits atom Angstrom\n"
            "lattice 90 0 0 0 90 0 0 0 90\natom H H 99 0 0 0\natom H H 100 9 9 9\n[/atoms]\n"
            "[magres]\nunits ms ppm\nms H 99 30 0 0 0 30 0 0 0 30\nms H100 20 0 0 0 20 0 0 0 20\n[/magres]\n";
        const Finished repaired = read(u"a.magres"_s, text);
        QVERIFY2(repaired.status == 0, qPrintable(repaired.errors));
        const QJsonArray rows = QJsonDocument::fromJson(repaired.output.toUtf8())[u"rows"].toArray();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows[0][u"iso"].toDouble() + rows[1][u"iso"].toDouble(), 50.0);
        QCOMPARE(repaired.errors.count(u"taken apart"), 1);
        QVERIFY(repaired.errors.startsWith(directory.filePath(u"a.magres"_s)));
        const Finished refused = read(u"b.magres"_s, QByteArray(text).replace("ms H100", "ms H101"));
        QVERIFY2(refused.status == 1 && refused.errors.contains(u"Ms record in line ms H101"),
                 qPrintable(refused.errors));
        const Finished bare = read(u"c.magres"_s, text.mid(text.indexOf('\n') + 1));
        QVERIFY2(bare.status == 1 && bare.errors.contains(u"#$magres-abinitio-v1.0"), qPrintable(bare.errors));
    }

    void powderFiles()
    {
        const QTemporaryDir directory;
        const QString csv = directory.filePath(u"al.csv"_s), json = directory.filePath(u"al.json"_s);
        const Finished run = runProgram(
            words("powder " SAMPLES "/berlinite.magres --nucleus 27Al --frequency 400 --mas 12000 --reference "
                  "560 --linewidth 100 --points 6001 --range -100:200 --sites-csv")
            + QStringList{u"-o"_s, csv, u"-o"_s, json});
        QVERIFY2(run.status == 0, qPrintable(run.errors));
        QVERIFY(run.output.contains(u"27Al at 104.3"_s) && run.output.contains(u"no satellites"_s));
        const auto rows = [](const QString &path) {
            QFile file(path);
            std::vector<std::vector<double>> found;
            if (!file.open(QIODevice::ReadOnly))
                return found;
            file.readLine();
            while (!file.atEnd()) {
                found.emplace_back();
                for (const QByteArray &field : file.readLine().trimmed().split(','))
                    found.back().push_back(field.toDouble());
            }
            return found;
        };
        const auto sum = rows(csv), sites = rows(directory.filePath(u"al.sites.csv"_s));
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
        QFile opened(json);
        QVERIFY(opened.open(QIODevice::ReadOnly));
        const QJsonObject site = QJsonDocument::fromJson(opened.readAll())[u"sites"][0].toObject();
        QVERIFY(std::abs(site[u"Cq_MHz"].toDouble() - 3.996737) < 1e-5);
        QVERIFY(std::abs(site[u"shift_ppm"].toDouble() - 47.6) < 1e-3);
        QCOMPARE(site[u"nuclei"].toInt(), 3);
    }

    void powderMessages()
    {
        const auto row = [](const QString &tensors, const QString &options, int status, const QString &message = {}) {
            const QTemporaryDir directory;
            QFile file(directory.filePath(u"a.magres"_s));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("#$magres-abinitio-v1.0\n[atoms]\nunits lattice Angstrom\nlattice 5 0 0 0 5 0 0 0 5\n"
                       "units atom Angstrom\natom Al Al 1 0 0 0\natom H H 1 2 2 2\n[/atoms]\n[magres]\n"
                       "units ms ppm\nunits efg au\n"
                       + tensors.toUtf8() + "[/magres]\n");
            file.close();
            QStringList arguments = words("powder");
            if (!options.contains(u"--points"_s))
                arguments += words("--points 64");
            if (!options.contains(u"--nucleus"_s))
                arguments += words("--nucleus 27Al");
            const QString csv = directory.filePath(u"a.csv"_s);
            const Finished run = runProgram(arguments + options.split(u' ', Qt::SkipEmptyParts)
                                            + QStringList{file.fileName(), u"-o"_s, csv});
            const QByteArray named = (options + run.errors).toUtf8();
            QVERIFY2(run.status == status && QFile::exists(csv) == (status == 0), named);
            QVERIFY2(run.errors.contains(message) && (status == 0) == run.output.contains(u"Breadth"_s), named);
            QFile written(csv);
            const QByteArray numbers = written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
            QVERIFY2(!numbers.contains("nan") && !numbers.contains("inf"), named);
            // That the hydrogen has no tensors is told of every file.
            const bool quiet =
                run.errors.isEmpty() || (run.errors.contains(u"Atoms without") && run.errors.count(u'\n') == 1);
            QVERIFY2(!message.isEmpty() || quiet, named);
        };
        const QString gradient = u"efg Al 1 0.1 0 0 0 0.2 0 0 0 -0.3\n"_s;
        const QString shielding = u"ms Al 1 500 0 0 0 510 0 0 0 520\n"_s;
        row(gradient, u"--reference 30"_s, 0, u"at the reference, 30 ppm"_s);
        row(shielding, {}, 1, u"no electric field gradient"_s);
        row(gradient + shielding, u"--site Al7"_s, 1, u"unique sites are Al1"_s);
        row(gradient + shielding, u"--nucleus 17O"_s, 1, u"no site of 17O"_s);
        row(shielding + u"efg Al 1 0 0 0 0 0 0 0 0 0\n"_s, {}, 0);
        row(gradient + u"ms Al 1 500 0 0 0 500 0 0 0 500\n"_s, {}, 0);
        row(u"efg Al 1 0.5 0 0 0 0.5 0 0 0 -1.0\n"_s + shielding, u"--frequency 100"_s, 0, u"second order"_s);
        row(gradient + u"ms Al 1 nan 0 0 0 510 0 0 0 520\n"_s, {}, 0, u"no shielding of Al1"_s);
        row(gradient + u"ms Al 1 1e30 0 0 0 510 0 0 0 520\n"_s, {}, 1, u"larger than 1000000 ppm"_s);
        row(gradient + shielding, u"--mas 1e-3"_s, 1, u"compute the static spectrum"_s);
        row(gradient + shielding, u"--mas 1e7"_s, 0);
        row(gradient + shielding, u"--frequency 1"_s, 1, u"second order fails"_s);
        row(gradient + shielding, u"--points 4096 --range 900000:900001"_s, 1, u"too narrow for so many points"_s);
        row(gradient + shielding, u"--range 900000:899000"_s, 0);
        row(gradient + shielding, u"--static --orientations 10000000"_s, 0);
        row(shielding + u"efg Al 1 0 0 0 0 0 0 0 0 0\n"_s, u"--linewidth 0"_s, 0);
        row(gradient + shielding, u"--points 2"_s, 0);
        row(gradient, u"--nucleus 1H"_s, 1, u"no shielding"_s);
        row(u"ms H 1 20 0 0 0 25 0 0 0 30\n"_s, u"--nucleus 1H --mqmas"_s, 1, u"triple-quantum"_s);
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
