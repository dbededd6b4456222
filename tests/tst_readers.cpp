// SPDX-License-Identifier: BSD-3-Clause
#include "io/readers/AsdfDecoder.h"
#include "io/readers/BrukerReader.h"
#include "io/readers/CsvSpectrumReader.h"
#include "io/readers/JcampReader.h"
#include "io/readers/SpectrumReader.h"
#include "items/Spectrum.h"

#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>

namespace {

const QString samples = QStringLiteral(SAMPLES_DIRECTORY "/");

/// File names, relative to a folder, with their contents.
using Files = QMap<QString, QByteArray>;

void writeFiles(const QString &folder, const Files &files)
{
    for (auto file = files.begin(); file != files.end(); ++file) {
        const QString path = folder + QLatin1Char('/') + file.key();
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile out(path);
        QVERIFY(out.open(QIODevice::WriteOnly));
        QCOMPARE(out.write(*file), file->size());
    }
}

Files readFiles(const QString &folder)
{
    Files files;
    QDirIterator all(folder, QDir::Files, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        QFile file(all.next());
        if (file.open(QIODevice::ReadOnly))
            files.insert(QDir(folder).relativeFilePath(file.fileName()), file.readAll());
    }
    return files;
}

/// A block whose eleven ordinates are 1 but for a 9 at the fourth point of the file.
QByteArray jcamp(const QByteArray &records, const QByteArray &x0 = "10000", const QByteArray &x9 = "0")
{
    return "##TITLE= t\n##JCAMP-DX= 5.00\n##DATA TYPE= NMR SPECTRUM\n##.OBSERVE NUCLEUS= ^13C\n" + records
        + "##FIRSTX= " + x0 + "\n##LASTX= " + x9 + "\n##NPOINTS= 11\n##YFACTOR= 2\n##XYDATA= (X++(Y..Y))\n" + x0
        + " 1 1 1 9 1 1 1 1 1 1 1\n##END=\n";
}

const QByteArray hertz = "##XUNITS= HZ\n##.OBSERVE FREQUENCY= 100\n";
const QByteArray ppm = "##XUNITS= PPM\n##.OBSERVE FREQUENCY= 100\n";

/// An XYDATA block about given lines of a table.
QByteArray table(int points, const QByteArray &lines)
{
    return "##TITLE= t\n##DATA TYPE= NMR SPECTRUM\n##XUNITS= PPM\n##FIRSTX= " + QByteArray::number(points)
        + "\n##LASTX= 1\n##NPOINTS= " + QByteArray::number(points) + "\n##XYDATA= (X++(Y..Y))\n" + lines + "##END=\n";
}

QByteArray parameters(const QList<std::pair<QByteArray, QByteArray>> &values)
{
    QByteArray text = "##TITLE= Parameter file\n$$ a comment\n##$D= (0..3)\n0 1\n2 3\n";
    for (const auto &[name, value] : values)
        text += "##$" + name + "= " + value + '\n';
    return text + "##END=\n";
}

QByteArray processing(int points, int tile, const QByteArray &offset, const QByteArray &nucleus,
                      const QByteArray &more = "##$BYTORDP= 0\n")
{
    return parameters({{"SI", QByteArray::number(points)},
                       {"SF", "100"},
                       {"SW_p", QByteArray::number(points * 50)},
                       {"OFFSET", offset},
                       {"XDIM", QByteArray::number(tile)},
                       {"AXNUC", '<' + nucleus + '>'}})
        + more;
}

template <typename Number> QByteArray binary(const std::vector<Number> &values, bool bigEndian)
{
    QByteArray bytes(qsizetype(values.size() * sizeof(Number)), '\0');
    for (size_t i = 0; i < values.size(); ++i) {
        char *to = bytes.data() + i * sizeof(Number);
        bigEndian ? qToBigEndian(values[i], to) : qToLittleEndian(values[i], to);
    }
    return bytes;
}

/// 5 rows of 6 points, numbered from 0 in reading order with 99 in row 3, column 4; stored in tiles of 4 × 2 points
/// whose padding holds -7.
QByteArray tiledMatrix()
{
    std::vector<qint32> stored(2 * 3 * 8, -7);
    for (int row = 0; row < 5; ++row) {
        for (int column = 0; column < 6; ++column) {
            const int tile = (row / 2) * 2 + column / 4;
            stored[tile * 8 + (row % 2) * 4 + column % 4] = row == 3 && column == 4 ? 99 : row * 6 + column;
        }
    }
    return binary(stored, true);
}

Files bruker1D()
{
    return {{QStringLiteral("acqus"), parameters({{"NUC1", "<29Si>"}})},
            {QStringLiteral("pdata/1/procs"), processing(8, 0, "20", "29Si")},
            {QStringLiteral("pdata/1/1r"), binary<qint32>({0, 1, 2, 30, 2, 1, 0, -1}, false)}};
}

Files bruker2D()
{
    return {{QStringLiteral("acqus"), parameters({{"NUC1", "<1H>"}})},
            {QStringLiteral("pdata/1/procs"), processing(6, 4, "4.5", "1H", "##$BYTORDP= 1\n##$NC_proc= 3\n")},
            {QStringLiteral("pdata/1/proc2s"), processing(5, 2, "30", "13C", "")},
            {QStringLiteral("pdata/1/2rr"), tiledMatrix()}};
}

/// The message with which the call fails; empty when it does not.
template <typename Call> QString failure(const Call &call)
{
    try {
        call();
    } catch (const std::runtime_error &error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

/// What holds for every spectrum that a reader lets through.
bool isSound(const ExperimentalSpectrum &spectrum)
{
    size_t count = 1;
    for (const SpectrumDimension &axis : spectrum.dimensions) {
        count *= axis.points;
        if (axis.points < 2 || !(axis.step < 0) || !std::isfinite(axis.first) || !std::isfinite(axis.width))
            return false;
    }
    const auto finite = [](double v) { return std::isfinite(v); };
    return !spectrum.dimensions.empty() && spectrum.dimensions.size() <= 2 && count == spectrum.data.size()
        && std::all_of(spectrum.data.begin(), spectrum.data.end(), finite);
}

} // namespace

class ReadersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void knownPeak_data();
    void knownPeak();
    void wholeMatrix();
    void sampleLines_data();
    void sampleLines();
    void tableForms_data();
    void tableForms();
    void tableTokens_data();
    void tableTokens();
    void badText_data();
    void badText();
    void badFolder_data();
    void badFolder();
    void damagedInput();
};

void ReadersTest::knownPeak_data()
{
    QTest::addColumn<Files>("files");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QList<double>>("shifts");
    QTest::addColumn<double>("height");
    QTest::addColumn<QString>("nuclei");

    const auto text = [](const char *name, const QByteArray &bytes, const QList<double> &shifts, double height,
                         const char *nuclei) {
        QTest::newRow(name) << Files{{QStringLiteral("s"), bytes}} << QStringLiteral("s") << shifts << height
                            << QString::fromLatin1(nuclei);
    };
    text("JCAMP Hz falling", jcamp(hertz), {70}, 18, "13C");
    text("JCAMP Hz rising", jcamp(hertz, "0", "10000"), {30}, 18, "13C");
    text("JCAMP ppm falling", jcamp(ppm, "95", "85"), {92}, 18, "13C");
    text("JCAMP ppm rising, CR and LF mixed", jcamp(ppm, "-5", "5").replace("5\n", "5\r").replace("H\n", "H\r\n"), {-2},
         18, "13C");
    text("JCAMP ppm without frequency", jcamp("##XUNITS= ppm\n", "95", "85"), {92}, 18, "13C");
    text("JCAMP shift reference falling", jcamp(hertz + "##.SHIFT REFERENCE= INTERNAL, TMS, 11, -20\n"), {50}, 18,
         "13C");
    text("JCAMP shift reference rising", jcamp(hertz + "##.Shift_Reference= EXTERNAL,TMS,1,7.5 $$ ppm\n", "0", "10000"),
         {37.5}, 18, "13C");
    text("JCAMP shift reference over two lines",
         jcamp(hertz + "##.SHIFT REFERENCE= INTERNAL,\n CDCl3, $$ of the solvent\n 1, 77\n"), {47}, 18, "13C");
    text("JCAMP vendor offset", jcamp(hertz + "##$OFFSET= 150\n", "0", "10000"), {80}, 18, "13C");
    text("JCAMP shift reference counts before vendor offset",
         jcamp(hertz + "##$OFFSET= 150\n##.SHIFT REFERENCE= , , 4, 12.5\n"), {12.5}, 18, "13C");
    text("JCAMP first NMR block of a link",
         "$$ three blocks\n##TITLE= all\n##DATA TYPE= LINK\n##BLOCKS= 3\n##TITLE= ir\n##DATA TYPE= INFRARED SPECTRUM\n"
         "##XYDATA= (X++(Y..Y))\n1 1 1\n##END=\n"
             + jcamp(hertz) + jcamp(ppm, "10", "0") + "##END=\n",
         {70}, 18, "13C");
    text(
        "JCAMP ntuples",
        "##TITLE= n\n##DATA TYPE= NMR SPECTRUM\n##.OBSERVE FREQUENCY= 50\n##.OBSERVE NUCLEUS= ^15N\n"
        "##NTUPLES= NMR SPECTRUM\n##SYMBOL= X, R, I, N\n##VAR_DIM= 5, 5, 5, 2\n##UNITS= HZ, ARB, ARB,\n"
        "##FACTOR= 2, 0.5, 3, 1\n##FIRST= 400, 1, 1, 1\n##LAST= 0, 1, 1, 2\n##PAGE= N=1\n"
        "##DATA TABLE= (X++(R..R)), XYDATA $$ real\n200 1 1 8\n50 1 1\n##PAGE= N=2\n##DATA TABLE= (X++(I..I)), XYDATA\n"
        "200 5 6 7 8 9\n##END NTUPLES= NMR SPECTRUM\n##END=\n",
        {4}, 4, "15N");
    text("CSV falling", "\xEF\xBB\xBF# made up\r\nppm,intensity\r12,0\n11.5,1e3 # top\r\n\n11,-2\n", {11.5}, 1000, "");
    text("CSV rising, no header", "-1,0\n0,1\n1, +5 \n2,3\n", {1}, 5, "");
    text("CSV of rounded positions", "ppm,intensity\n0.33,1\n0.67,2\n1.00,4\n1.33,1\n1.67,0\n2.00,0\n", {0.998}, 4, "");
    text("CSV 2D", "ppm_f2,ppm_f1,intensity\n3,50,0\n2,50,1\n1,50,2\n3,40,3\n2,40,9\n1,40,5\n", {2, 40}, 9, "/");
    text("CSV 2D, F2 rising", "ppm_f2,ppm_f1,intensity\n1,50,9\n2,50,1\n3,50,2\n1,40,3\n2,40,0\n3,40,5\n", {1, 50}, 9,
         "/");
    text("CSV 2D, F1 rising", "ppm_f2,ppm_f1,intensity\n3,40,0\n2,40,9\n1,40,2\n3,50,3\n2,50,0\n1,50,5\n", {2, 40}, 9,
         "/");
    text("CSV 2D, both rising", "1,40,0\n2,40,1\n3,40,9\n1,50,3\n2,50,0\n3,50,5\n", {3, 40}, 9, "/");

    const auto folder = [](const char *name, const Files &files, const char *path, const QList<double> &shifts,
                           double height, const char *nuclei) {
        QTest::newRow(name) << files << QString::fromLatin1(path) << shifts << height << QString::fromLatin1(nuclei);
    };
    folder("Bruker by its data file", bruker1D(), "pdata/1/1r", {18.5}, 30, "29Si");
    folder("Bruker by its procs", bruker1D(), "pdata/1/procs", {18.5}, 30, "29Si");
    folder("Bruker by its experiment", bruker1D(), "", {18.5}, 30, "29Si");
    Files files = bruker1D();
    files.insert(QStringLiteral("pdata/10/1r"), "not this one");
    folder("Bruker by its pdata, lowest number", files, "pdata", {18.5}, 30, "29Si");
    files = bruker1D();
    files.remove(QStringLiteral("acqus"));
    files[QStringLiteral("pdata/1/1r")] = binary<qint32>({0, 1, 2, 3, 4, 5, 60, -1}, true);
    files[QStringLiteral("pdata/1/procs")] = processing(8, 0, "20", "27Al", "##$BYTORDP= 1\n##$NC_proc= -2\n");
    folder("Bruker big-endian, scaled, without acqus", files, "pdata/1", {17}, 15, "27Al");
    files[QStringLiteral("pdata/1/1r")] = binary<double>({0, 1, 2, 3.5, 0, 0, 0, -1}, false);
    files[QStringLiteral("pdata/1/procs")] = processing(8, 0, "20", "27Al", "##$BYTORDP= 0\n##$DTYPP= 2\n");
    folder("Bruker doubles", files, "", {18.5}, 3.5, "27Al");
    folder("Bruker 2D in tiles that do not fit", bruker2D(), "", {2.5, 28.5}, 99 * 8, "1H/13C");
}

void ReadersTest::knownPeak()
{
    QFETCH(Files, files);
    QFETCH(QString, path);
    QFETCH(QList<double>, shifts);
    QFETCH(double, height);
    QFETCH(QString, nuclei);

    QTemporaryDir folder;
    writeFiles(folder.path(), files);
    const ExperimentalSpectrum spectrum = openExperimentalSpectrum(folder.filePath(path));
    QVERIFY(isSound(spectrum));
    const auto highest = std::max_element(spectrum.data.begin(), spectrum.data.end());
    QCOMPARE(*highest, height);
    QCOMPARE(qsizetype(spectrum.dimensions.size()), shifts.size());
    const int index = int(highest - spectrum.data.begin());
    const int points2 = spectrum.dimensions[0].points;
    const std::array<int, 2> at{index % points2, index / points2};

    // The host's own reading of the entry, every point of each axis.
    const Spectrum shown = Spectrum::fromMap(toEntryMap(spectrum));
    QVERIFY2(shown.note.isEmpty(), qPrintable(shown.note));
    QCOMPARE(shown.data.at(0), spectrum.data);
    QCOMPARE(shown.dimensions(), int(shifts.size()));
    QStringList names;
    for (qsizetype d = 0; d < shifts.size(); ++d) {
        const SpectrumDimension &axis = spectrum.dimensions[d];
        QVERIFY(std::abs(axis.ppm(at[d]) - shifts[d]) < 1e-9);
        for (int i = 0; i < axis.points; ++i)
            QVERIFY(std::abs(shown.axes[d].ppm(i) - axis.ppm(i)) < 1e-10);
        names.append(axis.nucleus);
        QCOMPARE(shown.axes[d].massNumber > 0 ? QString::number(shown.axes[d].massNumber) + shown.axes[d].element
                                              : QString(),
                 axis.nucleus);
        const auto frequencies = toEntryMap(spectrum)[QStringLiteral("SpecInfo")]
                                     .toMap()[QStringLiteral("SpectrometerFrequencies")]
                                     .value<DoubleVector>();
        QCOMPARE(frequencies[d], axis.frequency > 0 ? axis.frequency : 400.0);
    }
    QCOMPARE(names.join(QLatin1Char('/')), nuclei);
}

void ReadersTest::wholeMatrix()
{
    QTemporaryDir folder;
    writeFiles(folder.path(), bruker2D());
    const ExperimentalSpectrum spectrum = BrukerReader::read(folder.path());
    for (int i = 0; i < 30; ++i)
        QCOMPARE(spectrum.data[i], 8.0 * (i == 22 ? 99 : i));
}

void ReadersTest::sampleLines_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QList<double>>("shifts"); // of a line that stands alone
    QTest::addColumn<QString>("title");
    QTest::newRow("Bruker 1D") << QStringLiteral("paracetamol-13C-bruker") << QList<double>{170.11}
                               << QStringLiteral("13C");
    QTest::newRow("JCAMP AFFN") << QStringLiteral("paracetamol-13C-affn.jdx") << QList<double>{170.11}
                                << QStringLiteral("13C");
    QTest::newRow("JCAMP DIFDUP") << QStringLiteral("paracetamol-1H-difdup.jdx") << QList<double>{9.72}
                                  << QStringLiteral("1H");
    // 172.4 and 30.5 ppm minus the mean shieldings of C8 and of the methyl protons.
    QTest::newRow("Bruker 2D") << QStringLiteral("paracetamol-hetcor-bruker") << QList<double>{24.3, 1.5533}
                               << QStringLiteral("13C-1H");
}

void ReadersTest::sampleLines()
{
    QFETCH(QString, path);
    QFETCH(QList<double>, shifts);
    QFETCH(QString, title);
    const ExperimentalSpectrum spectrum = openExperimentalSpectrum(samples + path);
    QVERIFY(isSound(spectrum));
    QVERIFY2(spectrum.title.startsWith(QStringLiteral("Synthetic %1 ").arg(title)), qPrintable(spectrum.title));
    // The highest point near the line is the nearest one to it.
    double best = -1e300;
    std::array<double, 2> found{};
    for (size_t i = 0; i < spectrum.data.size(); ++i) {
        const size_t points2 = spectrum.dimensions[0].points;
        const std::array<size_t, 2> at{i % points2, i / points2};
        bool near = spectrum.data[i] > best;
        for (size_t d = 0; d < spectrum.dimensions.size(); ++d)
            near = near
                && std::abs(spectrum.dimensions[d].ppm(at[d]) - shifts[d])
                    < std::max(1.0, -2.4 * spectrum.dimensions[d].step);
        if (!near)
            continue;
        best = spectrum.data[i];
        for (size_t d = 0; d < spectrum.dimensions.size(); ++d)
            found[d] = spectrum.dimensions[d].ppm(at[d]);
    }
    for (qsizetype d = 0; d < shifts.size(); ++d) {
        QVERIFY2(std::abs(found[d] - shifts[d]) <= -0.75 * spectrum.dimensions[d].step,
                 qPrintable(QStringLiteral("%1, expected %2").arg(found[d]).arg(shifts[d])));
    }
}

namespace {

/// Ordinates written in one of the forms, a few on each line, with X the number of points still to come.
QByteArray encoded(const std::vector<int> &values, bool differences, bool duplicates, bool squeezed, const char *blank)
{
    const char *squeezedDigits[] = {"@ABCDEFGHI", "@abcdefghi"};
    const char *differenceDigits[] = {"%JKLMNOPQR", "%jklmnopqr"};
    const auto coded = [](int value, const char *const digits[2]) {
        QByteArray text = QByteArray::number(std::abs(value));
        text[0] = digits[value < 0][text[0] - '0'];
        return text;
    };
    const int total = int(values.size());
    QByteArray lines;
    for (int start = 0; start < total;) {
        const bool check = differences && start > 0;
        const int origin = check ? start - 1 : start;
        lines += QByteArray::number(total - origin);
        lines += squeezed ? coded(values[origin], squeezedDigits) : blank + QByteArray::number(values[origin]);
        const int end = std::min(total, start + 17);
        for (int i = origin + 1; i < end;) {
            const auto step = [&](int k) { return differences ? values[k] - values[k - 1] : values[k]; };
            int run = 1;
            while (duplicates && i + run < end && step(i + run) == step(i))
                ++run;
            // The form without signs needs them here, the one with blanks does not.
            lines += differences ? coded(step(i), differenceDigits)
                : squeezed       ? coded(step(i), squeezedDigits)
                                 : (*blank || step(i) < 0 ? blank : "+") + QByteArray::number(step(i));
            if (run > 1) {
                QByteArray count = QByteArray::number(run);
                count[0] = " STUVWXYZs"[count[0] - '0'];
                lines += count;
            }
            i += run;
        }
        lines += "\n";
        start = end;
    }
    return lines;
}

} // namespace

void ReadersTest::tableForms_data()
{
    QTest::addColumn<QList<bool>>("form"); // differences, duplicates, squeezed
    QTest::addColumn<QByteArray>("blank");
    QTest::newRow("AFFN") << QList<bool>{false, false, false} << QByteArray("  ");
    QTest::newRow("AFFN, commas") << QList<bool>{false, false, false} << QByteArray(", ");
    QTest::newRow("AFFN with repeats") << QList<bool>{false, true, false} << QByteArray(" ");
    QTest::newRow("PAC") << QList<bool>{false, false, false} << QByteArray("");
    QTest::newRow("SQZ") << QList<bool>{false, false, true} << QByteArray("");
    QTest::newRow("SQZ with repeats") << QList<bool>{false, true, true} << QByteArray("");
    QTest::newRow("DIF") << QList<bool>{true, false, true} << QByteArray("");
    QTest::newRow("DIFDUP") << QList<bool>{true, true, true} << QByteArray("");
}

void ReadersTest::tableForms()
{
    QFETCH(QList<bool>, form);
    QFETCH(QByteArray, blank);
    std::mt19937 random(17);
    for (int round = 0; round < 50; ++round) {
        // Steps of all sizes, with flat and even stretches among them. The first one is positive, for PAC.
        std::vector<int> values{int(random() % 1000)};
        const size_t count = 2 + random() % 200;
        int step = 0;
        while (values.size() < count) {
            if (random() % 3 == 0)
                step = int(random() % 3) * (int(random() % 2001) - 1000) * (random() % 5 == 0 ? 997 : 1);
            values.push_back(values.back() + step);
        }
        QByteArray lines = encoded(values, form[0], form[1], form[2], blank);
        if (blank.isEmpty() && !form[2]) {
            // Lines of signed numbers: a plus sign between X and the first ordinate.
            lines.clear();
            for (size_t i = 0; i < count; ++i) {
                lines += (i % 9 ? QByteArray() : (i ? "\n" : "") + QByteArray::number(qulonglong(count - i)))
                    + (values[i] < 0 ? "" : "+") + QByteArray::number(values[i]);
            }
            lines += '\n';
        }
        const ExperimentalSpectrum spectrum = JcampReader::parse(table(int(count), lines), QStringLiteral("f"));
        QCOMPARE(spectrum.data, std::vector<double>(values.begin(), values.end()));
    }
}

void ReadersTest::tableTokens_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QList<double>>("values");
    QTest::newRow("exponents") << QByteArray("5 1E+2 2.5e1\n3 -3.5E-1 .5 4.\n")
                               << QList<double>{100, 25, -0.35, 0.5, 4};
    QTest::newRow("E is a digit behind a whole number") << QByteArray("4 1E2 2e1\n") << QList<double>{1, 52, 2, -51};
    QTest::newRow("E is a digit behind an X with a point")
        << QByteArray("3.0E12T\n1.00e3\n") << QList<double>{512, 512, -53};
    QTest::newRow("X with an exponent") << QByteArray("2.0E+00 7\n1.0E+00 8\n") << QList<double>{7, 8};
    QTest::newRow("repeated difference, then another") << QByteArray("5A0JTk\n") << QList<double>{10, 11, 12, 10};
    QTest::newRow("repeat count of one and of two digits") << QByteArray("14A0SB0S2\n") <<
        [] {
            QList<double> values(13, 20);
            values.prepend(10);
            return values;
        }()
            .mid(0, 13);
    QTest::newRow("difference of zero is checked") << QByteArray("4A%T\n2AJ\n") << QList<double>{1, 1, 1, 2};
    QTest::newRow("check alone on the last line") << QByteArray("3AJJ\n1C\n") << QList<double>{1, 2, 3};
    QTest::newRow("the check point, repeated") << QByteArray("4AJ\n3BU\n") << QList<double>{1, 2, 2, 2};
    QTest::newRow("comments and blank lines") << QByteArray("2 7 $$ 8\n\n$$ 9\n1 6\n") << QList<double>{7, 6};
}

void ReadersTest::tableTokens()
{
    QFETCH(QByteArray, lines);
    QFETCH(QList<double>, values);
    const auto spectrum = JcampReader::parse(table(int(values.size()), lines), QStringLiteral("f"));
    QCOMPARE(spectrum.data, std::vector<double>(values.begin(), values.end()));
}

void ReadersTest::badText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QByteArray &text, const char *message) {
        QTest::newRow(name) << text << QString::fromUtf8(message);
    };
    row("Y-check", table(6, "6AJJJ\n3EJJ\n"),
        "line 9: the Y-check fails: the line begins with 5 where the line before ended with 4");
    row("too few points", table(6, "6AJJJ\n3DJ\n"), "the data end after 5 points where 6 were announced");
    row("too many points", table(4, "4AJJJJ\n"), "line 8: there are more points than the 4");
    row("cut off", table(8, "8 1 2 3 4\n4 5 6 7 8\n").chopped(17), "line 8: the data end after 4");
    row("cut off within the last number", table(2, "2 1 1234\n").chopped(10), "line 8: the file ends within this line");
    row("a lost line", table(12, "12 1 2 3\n3 4 5 6\n"), "line 9: the line begins at X = 3 where 9 is due");
    row("a repeat of 10^15", table(4, "4AZ00000000000000\n"), "an ordinate is repeated 800000000000000 times");
    row("repeat count first", table(4, "4TA\n"), "line 8: a repeat count stands");
    row("two repeat counts", table(9, "9ATT\n"), "a repeat count stands");
    row("difference first", table(4, "4JJ\n"), "the line begins with a difference");
    row("no ordinate", table(4, "4\n"), "no ordinate follows");
    row("a missing ordinate", table(4, "4 1 ? 2 3\n"), "a point has no ordinate");
    row("a word for a number", table(4, "4 1 #low 2\n"), "expected an ordinate, found \"#low 2\"");
    row("a number too large", table(2, "2 1E+999 1\n"), "expected a number, found \"1E+999 1\"");
    row("10^12 points", table(2, "2 1 1\n").replace("NPOINTS= 2", "NPOINTS= 1000000000000"),
        "line 6: 1000000000000 points cannot be");
    row("more points than bytes explain", table(2, "2 1 1\n").replace("NPOINTS= 2", "NPOINTS= 200000000"),
        "between 2 and 1048576 were expected");
    row("half a point", table(2, "2 1 1\n").replace("NPOINTS= 2", "NPOINTS= 2.5"), "2.5 points cannot be");
    row("not a number of points", table(2, "2 1 1\n").replace("NPOINTS= 2", "NPOINTS= 2x"),
        "expected a number for NPOINTS, found \"2x\"");
    row("no axis", table(2, "2 1 1\n").replace("LASTX= 1", "LASTX= 2"), "span no axis");
    row("an axis beyond all shifts", jcamp(ppm, "1000000000", "0"), "is not that of a spectrum");
    row("no frequency", jcamp("##XUNITS= HZ\n"), "need the record ##.OBSERVE FREQUENCY=");
    row("no frequency in the record", jcamp("##XUNITS= HZ\n##.OBSERVE FREQUENCY= 0\n"),
        "line 6: expected a frequency in MHz");
    row("seconds", jcamp("##XUNITS= SECONDS\n"), "expected X values in HZ or PPM, found \"SECONDS\"");
    row("no units", jcamp("##.OBSERVE FREQUENCY= 100\n"), "has no record ##XUNITS=");
    row("a reference that is no number", jcamp(hertz + "##.SHIFT REFERENCE= , , one, 7\n"), "found \"one\"");
    row("another table", jcamp(hertz).replace("(X++(Y..Y))", "(XY..XY)"),
        "expected a table (X++(Y..Y)), found \"(XY..XY)\"");
    row("infrared", jcamp(hertz).replace("NMR SPECTRUM", "INFRARED SPECTRUM"), "found \"INFRARED SPECTRUM\"");
    row("2D JCAMP", jcamp(hertz).replace("NMR SPECTRUM", "nD NMR SPECTRUM"),
        "(one dimension), found \"nD NMR SPECTRUM\"");
    row("Latin-1 in what is shown", jcamp("##XUNITS= \xB5s\n"), "found \"µS\"");
    row("label alone", "##", "no record ##TITLE=");
    row("uneven", "ppm,intensity\n10,1\n9,1\n8,1\n6,1\n5,1\n",
        "line 5: the points are not evenly spaced: 6 ppm follows 8 ppm where the step is -1 ppm");
    row("doubled point", "10,1\n9,1\n8,1\n8,1\n7,1\n", "line 4: the points are not evenly spaced: 8 ppm follows 8 ppm");
    row("all the same", "1,1\n1,2\n1,3\n", "not evenly spaced");
    row("one point", "ppm,intensity\n1,1\n", "the file has 1");
    row("empty", "", "the file has 0");
    row("a word", "ppm,intensity\n1,1\n2,x1\n", "line 3: expected a number, found \"x1\"");
    row("infinite", "1,1\n2,inf\n", "line 2: expected a number");
    row("a field short", "1,1\n2\n", "line 2: expected \"ppm,intensity\", 2 fields, found 1");
    row("a field more", "1,1\n2,1,1\n", "line 2");
    row("a column in other units", "Hz,intensity\n1,1\n2,1\n", "line 1: expected a number, found \"Hz\"");
    row("rows of unequal length", "3,9,1\n2,9,1\n3,8,1\n2,8,1\n3,7,1\n", "do not make two or more rows");
    row("rows with other positions", "3,9,1\n2,9,1\n3,8,1\n1,8,1\n", "line 4: expected rows of 2 points");
    row("uneven F1", "3,9,1\n2,9,1\n3,8,1\n2,8,1\n3,5,1\n2,5,1\n", "line 5: the points are not evenly spaced");
    row("another kind of file",
        QByteArray("\x7f"
                   "ELF\0\0",
                   6),
        "this is no spectrum that can be read");
}

void ReadersTest::badText()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, message);
    QTemporaryDir folder;
    writeFiles(folder.path(), {{QStringLiteral("s"), text}});
    const QString path = folder.filePath(QStringLiteral("s"));
    const QString found = failure([&] { openExperimentalSpectrum(path); });
    QVERIFY2(found.contains(message), qPrintable(found));
    QVERIFY2(found.startsWith(path), qPrintable(found));
}

void ReadersTest::badFolder_data()
{
    QTest::addColumn<QString>("file"); // in pdata/1
    QTest::addColumn<QByteArray>("from"); // empty: the file is removed
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const char *file, const char *from, const char *to, const char *message) {
        QTest::newRow(name) << QString::fromLatin1(file) << QByteArray(from) << QByteArray(to)
                            << QString::fromUtf8(message);
    };
    row("no procs", "procs", "", "", "procs: there is no such file");
    row("no proc2s", "proc2s", "", "", "proc2s: there is no such file");
    row("no data", "2rr", "", "", "no processed data were found here");
    row("data cut", "2rr", "\xf9", "",
        "bytes where the parameters (SI = 6 × 5, XDIM = 4 × 2, 4 bytes a point) make 192");
    row("another size", "procs", "SI= 6", "SI= 9",
        "the file has 192 bytes where the parameters (SI = 9 × 5, XDIM = 4 × 2, 4 bytes a point) make 288");
    row("no size", "procs", "##$SI=", "##$SX=", "the parameter SI is missing");
    row("no reference", "proc2s", "##$OFFSET=", "##$O=", "proc2s: the parameter OFFSET is missing");
    row("no byte order", "procs", "##$BYTORDP=", "##$B=", "the parameter BYTORDP is missing");
    row("another byte order", "procs", "BYTORDP= 1", "BYTORDP= 2", "BYTORDP: expected 0");
    row("another type", "procs", "##END", "##$DTYPP= 1\n##END", "DTYPP: expected 0 (32-bit integers)");
    row("size of a matrix of 10^18 points", "procs", "SI= 6", "SI= 1000000000", "SI: expected 2 to 268435456");
    row("size beyond 32 bits", "procs", "SI= 6", "SI= 100000000000",
        "expected a number for SI, found \"100000000000\"");
    row("too many in all", "procs", "SI= 6", "SI= 268435456", "points (SI = 268435456 × 5, XDIM = 4 × 2) are too many");
    row("tile beyond the matrix", "proc2s", "XDIM= 2", "XDIM= 6",
        "XDIM: expected a block of at most 5 points, found 6");
    row("negative tile", "proc2s", "XDIM= 2", "XDIM= -2", "XDIM: expected");
    row("no frequency", "procs", "SF= 100", "SF= 0", "procs, line 7: SF: expected a frequency");
    row("negative width", "procs", "SW_p= ", "SW_p= -", "SW_p: expected a width");
    row("a reference that is no number", "procs", "OFFSET= 4.5", "OFFSET= 4,5",
        "expected a number for OFFSET, found \"4,5\"");
    row("scale beyond doubles", "procs", "NC_proc= 3", "NC_proc= 3000", "NC_proc: expected an exponent");
}

void ReadersTest::badFolder()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QString, message);
    Files files = bruker2D();
    const QString name = QStringLiteral("pdata/1/") + file;
    QVERIFY(files[name].contains(from));
    from.isEmpty() ? void(files.remove(name)) : void(files[name].replace(from, to));
    QTemporaryDir folder;
    writeFiles(folder.path(), files);
    const QString found = failure([&] { openExperimentalSpectrum(folder.path()); });
    QVERIFY2(found.contains(message), qPrintable(found));
    QVERIFY2(found.startsWith(folder.path()), qPrintable(found));
}

/// Bytes changed, cut out, doubled or put in from a set that means something to the readers.
void ReadersTest::damagedInput()
{
    std::mt19937 random(4);
    const auto damage = [&](QByteArray bytes) {
        const QByteArray meaningful("0123456789+-.,eE@AJZs%#$=?<>()\n\r\0\xff\xc3 ", 39);
        for (int n = 1 + random() % 4; n > 0 && !bytes.isEmpty(); --n) {
            const qsizetype at = random() % bytes.size();
            const qsizetype length = 1 + random() % 40;
            switch (random() % 5) {
            case 0:
                bytes.truncate(at);
                break;
            case 1:
                bytes.remove(at, length);
                break;
            case 2:
                bytes.insert(at, bytes.mid(random() % bytes.size(), length));
                break;
            default:
                bytes[at] = meaningful[random() % meaningful.size()];
                break;
            }
        }
        return bytes;
    };
    QTemporaryDir folder;
    Files texts = readFiles(samples);
    texts.removeIf([](const auto &file) { return !file.key().endsWith(QStringLiteral(".jdx")); });
    texts.insert(QStringLiteral("csv"), "ppm,intensity\n5,1\n4,2\n3,5\n2,2\n1,1\n");
    texts.insert(QStringLiteral("csv2"), "ppm_f2,ppm_f1,intensity\n3,50,0\n2,50,1\n1,50,2\n3,40,3\n2,40,9\n1,40,5\n");
    texts.insert(QStringLiteral("jcamp"), jcamp(hertz + "##.SHIFT REFERENCE= INTERNAL, TMS, 11, -20\n"));
    const Files matrix = bruker2D();
    int read = 0, refused = 0;
    const auto attempt = [&](const QString &path) {
        const QString message = failure([&] {
            QVERIFY(isSound(openExperimentalSpectrum(path)));
            ++read;
        });
        refused += !message.isEmpty();
        QVERIFY(message.size() < 600 + path.size());
    };
    for (int round = 0; round < 1500; ++round) {
        const auto text = std::next(texts.begin(), random() % texts.size());
        writeFiles(folder.path(), {{QStringLiteral("text"), damage(*text)}});
        attempt(folder.filePath(QStringLiteral("text")));
        if (round % 3)
            continue;
        Files files = matrix;
        const auto file = std::next(files.begin(), random() % files.size());
        *file = damage(*file);
        writeFiles(folder.filePath(QStringLiteral("bruker")), files);
        attempt(folder.filePath(QStringLiteral("bruker")));
    }
    QCOMPARE(read + refused, 2000);
    QVERIFY2(read > 100 && refused > 500, qPrintable(QStringLiteral("%1 read, %2 refused").arg(read).arg(refused)));
}

QTEST_GUILESS_MAIN(ReadersTest)
#include "tst_readers.moc"
