// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "formats/BrukerReader.h"
#include "formats/CsdmFile.h"
#include "formats/JcampReader.h"
#include "formats/MeasurementReport.h"
#include "formats/SpectrumReader.h"
#include "data/Spectrum.h"

#include <stdexcept>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

/// File names, relative to a folder, with their contents.
using Files = QMap<QString, QByteArray>;

void writeFiles(const QString &folder, const Files &files)
{
    for (auto file = files.begin(); file != files.end(); ++file) {
        const QString path = folder + u'/' + file.key();
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile out(path);
        QVERIFY(out.open(QIODevice::WriteOnly));
        QCOMPARE(out.write(*file), file->size());
    }
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

/// 26 ordinates as differences of every digit, with repeats and checks.
const QByteArray differences = "26@JKLMNOPQR\n17D5jklmnopqr\n8@J0VjT%\n1C8\n";

/// An XYDATA block about given lines of a table.
QByteArray table(int points, const QByteArray &lines)
{
    return "##TITLE= t\n##DATA TYPE= NMR SPECTRUM\n##XUNITS= PPM\n##FIRSTX= " + QByteArray::number(points)
        + "\n##LASTX= 1\n##NPOINTS= " + QByteArray::number(points) + "\n##XYDATA= (X++(Y..Y))\n" + lines + "##END=\n";
}

/// A spectrum in pairs, 40 points from 20 ppm down in steps of 0.5 with a 9 at 16 ppm, under a record of its own.
QByteArray pairs(const QByteArray &record, const QByteArray &units)
{
    QByteArray text = "##TITLE= t\n##DATA TYPE= NMR SPECTRUM\n##$.OBSERVE FREQUENCY= 100\n##$.OBSERVE NUCLEUS= ^13C\n"
                      "##XUNITS= "
        + units + "\n##NPOINTS= 40\n##FIRSTX= 0.5\n##LASTX= 20\n##" + record + '\n';
    const double scale = units.contains("HZ") ? 100 : 1;
    for (int i = 0; i < 40; ++i)
        text += QByteArray::number(scale * (20 - 0.5 * i)) + (i % 2 ? ", " : " ") + (i == 8 ? "9\n" : "1\n");
    return text + "##END=\n";
}

QByteArray plane2D()
{
    return u"##TITLE= n\n##DATA TYPE= nD NMR SPECTRUM\n##.OBSERVE FREQUENCY= 100\n##.OBSERVE NUCLEUS= ^1H\n##NUM DIM= 2\n##.NUCLEUS= 13C, 1H\n##NTUPLES= nD NMR SPECTRUM\n##VAR_NAME= FREQUENCY1, FREQUENCY2, SPECTRUM\n##SYMBOL= F1, F2, Y\n##VAR_TYPE= INDEPENDENT, INDEPENDENT, DEPENDENT\n##VAR_FORM= AFFN, AFFN, ASDF\n##VAR_DIM= 2, 3, 3\n##UNITS= PPM, PPM, ARBITRARY UNITS\n##FACTOR= 1, 1, 1\n##FIRST= 50, 3, 1\n##LAST= 25, 1, 5\n##PAGE= F1=50\n##DATA TABLE= (F2++(Y..Y)), PROFILE\n3 1 2 3\n##PAGE= F1=25\n##DATA TABLE= (F2++(Y..Y)), PROFILE\n3 4 9 5\n##END NTUPLES= nD NMR SPECTRUM\n##END=\n"_s
        .toUtf8();
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

template <typename Number>
QByteArray binary(const std::vector<Number> &values, bool bigEndian)
{
    QByteArray bytes(qsizetype(values.size() * sizeof(Number)), '\0');
    for (size_t i = 0; i < values.size(); ++i) {
        char *to = bytes.data() + i * sizeof(Number);
        bigEndian ? qToBigEndian(values[i], to) : qToLittleEndian(values[i], to);
    }
    return bytes;
}

/// JSON with apostrophes for quotation marks.
QByteArray csdm(const QByteArray &dimensions, const QByteArray &variable)
{
    QByteArray text = "{'csdm': {'version': '1.0', 'dimensions': [" + dimensions + "], 'dependent_variables': [{";
    return (text += variable + "}]}}").replace('\'', '"');
}

/// The middle, at 100 MHz, is 0 Hz and 0 ppm; the highest of eight numbers is two steps of 1 ppm above it.
const QByteArray hertzAxis =
    R"({'type': 'linear', 'count': 8, 'increment': '100 Hz', 'coordinates_offset': '-0.4 kHz', 'origin_offset': '100 MHz', 'label': '13C'})";
const QByteArray eightNumbers =
    "'type': 'internal', 'numeric_type': 'float64', 'encoding': 'none', 'components': [[1, 2, 3, 4, 5, 6, 70, 8]]";
const QByteArray ppmAxis = "{'type': 'linear', 'count': 4, 'increment': '-1 ppm', 'coordinates_offset': '10 ppm'}";

template <typename Number>
QByteArray base64(const QByteArray &type, const std::vector<Number> &values)
{
    return "'type': 'internal', 'encoding': 'base64', 'numeric_type': '" + type + "', 'components': ['"
        + binary(values, false).toBase64() + "']";
}

QByteArray simpson(const QByteArray &records)
{
    return "SIMP\nNP=4\nSW=400\n" + records + "TYPE=SPE\nDATA\n1 0\n2 0\n30 0\n4 0\nEND\n";
}

/// 5 rows of 6 points, numbered from 0 in reading order; stored in tiles of 4 × 2 points whose padding holds -7.
QByteArray tiledMatrix()
{
    std::vector<qint32> stored(2 * 3 * 8, -7);
    for (int i = 0; i < 30; ++i) {
        const int row = i / 6, column = i % 6, tile = (row / 2) * 2 + column / 4;
        stored[tile * 8 + (row % 2) * 4 + column % 4] = i;
    }
    return binary(stored, true);
}

Files bruker1D()
{
    return {{u"acqus"_s, parameters({{"NUC1", "<29Si>"}})},
            {u"pdata/1/procs"_s, processing(8, 0, "20", "29Si")},
            {u"pdata/1/1r"_s, binary<qint32>({0, 1, 2, 30, 2, 1, 0, -1}, false)}};
}

Files bruker2D()
{
    return {{u"acqus"_s, parameters({{"NUC1", "<1H>"}})},
            {u"pdata/1/procs"_s, processing(6, 4, "4.5", "1H", "##$BYTORDP= 1\n##$NC_proc= 3\n")},
            {u"pdata/1/proc2s"_s, processing(5, 2, "30", "13C", "")},
            {u"pdata/1/2rr"_s, tiledMatrix()}};
}

/// Shifts of the highest point, F2 first.
QList<double> highestPoint(const ExperimentalSpectrum &spectrum)
{
    int index = int(std::max_element(spectrum.data.begin(), spectrum.data.end()) - spectrum.data.begin());
    QList<double> shifts;
    for (const SpectrumDimension &axis : spectrum.dimensions) {
        shifts.append(axis.ppm(index % axis.points));
        index /= axis.points;
    }
    return shifts;
}

} // namespace

class ReadersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void knownPeak()
    {
        const auto folder = [](const char *name, const Files &files, const char *path, const QList<double> &shifts,
                               double height, const char *nuclei, double frequency = 0) {
            const QTemporaryDir directory;
            writeFiles(directory.path(), files);
            ReadOptions options;
            options.frequency = {frequency, frequency};
            const ExperimentalSpectrum spectrum =
                openExperimentalSpectrum(directory.filePath(QLatin1String(path)), options);
            const QList<double> found = highestPoint(spectrum);
            QCOMPARE(found.size(), shifts.size());
            QVERIFY2(*std::max_element(spectrum.data.begin(), spectrum.data.end()) == height, name);
            if (!*path && shifts.size() == 2)
                for (int i = 0; i < 30; ++i) // of the matrix in tiles
                    QCOMPARE(spectrum.data[i], 8.0 * i);

            // The host's own reading of the entry, every point of each axis; written and read again it is the same.
            const Spectrum shown = Spectrum::fromMap(toEntryMap(spectrum));
            writeFiles(directory.path(), {{u"copy"_s, CsdmFile::written(spectrum)}});
            const ExperimentalSpectrum copy = openExperimentalSpectrum(directory.filePath(u"copy"_s), options);
            QVERIFY2(shown.data.at(0) == spectrum.data && copy.data == spectrum.data, name);
            QStringList names;
            for (qsizetype d = 0; d < shifts.size(); ++d) {
                const SpectrumDimension &axis = spectrum.dimensions[d], &again = copy.dimensions[d];
                QVERIFY2(std::abs(found[d] - shifts[d]) < 1e-9, name);
                QVERIFY2(std::abs(again.first - axis.first) < 1e-9 && std::abs(again.step - axis.step) < 1e-12, name);
                QVERIFY2(again.nucleus == axis.nucleus && axis.step < 0 && std::isfinite(axis.width), name);
                for (int i = 0; i < axis.points; ++i)
                    QVERIFY2(std::abs(shown.axes[d].ppm(i) - axis.ppm(i)) < 1e-10, name);
                names.append(axis.nucleus);
            }
            QVERIFY2(names.join(u'/') == QLatin1String(nuclei), name);
        };
        const auto text = [=](const char *name, const QByteArray &bytes, const QList<double> &shifts,
                              double height = 18, const char *nuclei = "13C", double frequency = 0) {
            folder(name, {{u"s"_s, bytes}}, "s", shifts, height, nuclei, frequency);
        };
        text("Hz falling", jcamp(hertz), {70});
        text("Hz rising", jcamp(hertz, "0", "10000"), {30});
        text("ppm falling", jcamp(ppm, "95", "85"), {92});
        text("ppm rising, CR and LF mixed", jcamp(ppm, "-5", "5").replace("5\n", "5\r").replace("H\n", "H\r\n"), {-2});
        text("shift reference rising", jcamp(hertz + "##.Shift_Reference= EXTERNAL,TMS,1,7.5 $$ ppm\n", "0", "10000"),
             {37.5});
        text("vendor offset", jcamp(hertz + "##$OFFSET= 150\n", "0", "10000"), {80});
        text("shift reference counts before vendor offset",
             jcamp(hertz + "##$OFFSET= 150\n##.SHIFT REFERENCE= , , 4, 12.5\n"), {12.5});
        text("vendor axis, in Hz of its own frequency",
             jcamp(hertz + "##$OFFSET= 150\n##$SF= 100.01\n##$SW_p= 11000\n"), {150 - 3 * 1000 / 100.01});
        text("shift reference in parentheses", jcamp(hertz + "##.SHIFT REFERENCE= (INTERNAL, TMS, 4, 12.5)\n"), {12.5});
        text("shift reference without a point", jcamp(hertz + "##.SHIFT REFERENCE= INTERNAL, TMS, 0, 12.5\n"), {70});
        text("unit in parentheses", jcamp(QByteArray(ppm).replace("PPM", "(ppm)"), "95", "85"), {92});
        text("without the number of points", jcamp(ppm, "95", "85").replace("##NPOINTS= 11\n", ""), {92});
        text("with the distance of points for the last one",
             jcamp(ppm, "95", "85").replace("##LASTX= 85", "##DELTAX= -1"), {92});
        text("decimal commas",
             jcamp(ppm, "9", "-1").replace("X= 9\n", "X= 9,5\n").replace("X= -1", "X= -0,5").replace("100", "100,0"),
             {6.5});
        text("shift reference with a decimal comma", jcamp(hertz + "##.SHIFT REFERENCE= (INTERNAL, TMS, 4, 12,5)\n"),
             {12.5});
        text("X that counts down", jcamp(ppm, "95", "85").replace("\n95 1", "\n10 1"), {92});
        text("2D ntuples", plane2D(), {2, 25}, 9, "1H/13C");
        text("unit beside the frequency", jcamp(QByteArray(hertz).replace("100", "100 MHz")), {70});
        text("small letters", jcamp(hertz).toLower().replace("13c", "13C"), {70});
        text("data type with a nucleus", jcamp(hertz).replace("NMR SPECTRUM", "13C NMR SPECTRUM"), {70});
        text("without a data type", jcamp(hertz).replace("##DATA TYPE= NMR SPECTRUM\n", ""), {70});
        text("nucleus of the vendor", jcamp(hertz).replace(".OBSERVE NUCLEUS= ^13C", "$NUC1= <13C>"), {70});
        text("unit with points", jcamp(QByteArray(ppm).replace("PPM", "p.p.m. ($$ shift)"), "95", "85"), {92});
        text("spectrum as a peak table", pairs("PEAK TABLE= (XY..XY)", "Chemical shift (ppm)"), {16}, 9);
        text("spectrum as points, in Hz", pairs("XYPOINTS= (XY..XY)", "HZ"), {16}, 9);
        text("spectrum as data of points", pairs("XYDATA= (XY..XY)", "PPM"), {16}, 9);
        text("ntuples of points",
             pairs("NTUPLES= NMR SPECTRUM\n##SYMBOL= X,Y\n##UNITS= ppm,arb\n##PAGE= N=1\n##DATA TABLE= (XY..XY), PEAKS",
                   "PPM"),
             {16}, 9);
        text("ntuples of points with an imaginary part",
             pairs("NTUPLES= NMR SPECTRUM\n##SYMBOL= X,R,I\n##UNITS= ppm,arb,arb\n##PAGE= N=1\n"
                   "##DATA TABLE= (XRI..XRI), PEAKS",
                   "PPM")
                 .replace("1\n", "1 -3\n")
                 .replace("9\n", "9 -3\n")
                 .replace("N=1 -3", "N=1"),
             {16}, 9);
        text("first NMR block of a link",
             "$$ three blocks\n##TITLE= all\n##DATA TYPE= LINK\n##BLOCKS= 3\n##TITLE= ir\n"
             "##DATA TYPE= INFRARED SPECTRUM\n##XYDATA= (X++(Y..Y))\n1 1 1\n##END=\n"
                 + jcamp(hertz) + jcamp(ppm, "10", "0") + "##END=\n",
             {70});
        const QByteArray pages =
            u"##TITLE= n\n##DATA TYPE= NMR SPECTRUM\n##.OBSERVE FREQUENCY= 50\n##.OBSERVE NUCLEUS= ^15N\n##NTUPLES= NMR SPECTRUM\n##SYMBOL= X, R, I, N\n##VAR_DIM= 5, 5, 5, 2\n##UNITS= HZ, ARB, ARB,\n##FACTOR= 2, 0.5, 3, 1\n##FIRST= 400, 1, 1, 1\n##LAST= 0, 1, 1, 2\n##PAGE= N=1\n##DATA TABLE= (X++(R..R)), XYDATA $$ real\n200 1 1 8\n50 1 1\n##PAGE= N=2\n##DATA TABLE= (X++(I..I)), XYDATA\n200 5 6 7 8 9\n##END NTUPLES= NMR SPECTRUM\n##END=\n"_s
                .toUtf8();
        text("several ntuples", pages, {4}, 4, "15N");
        // The imaginary part first, and alone.
        const QByteArray imaginary =
            pages.mid(pages.indexOf("##PAGE= N=2"), pages.indexOf("##END N") - pages.indexOf("##PAGE= N=2"));
        text("imaginary ntuple first",
             QByteArray(pages)
                 .remove(pages.indexOf(imaginary), imaginary.size())
                 .insert(pages.indexOf("##PAGE= N=1"), imaginary),
             {4}, 4, "15N");
        const QTemporaryDir place;
        writeFiles(place.path(), {{u"i.jdx"_s, QByteArray(pages).replace("(X++(R..R))", "(X++(I..I))")}});
        QVERIFY(failure([&] { readMeasurement(place.filePath(u"i.jdx"_s), {}); }).contains("the imaginary part alone"));

        text("CSDM, numbers", csdm(hertzAxis, eightNumbers), {2}, 70);
        const auto axis = [](QByteArray made, const char *from, const char *to) { return made.replace(from, to); };
        for (const char *unit : {"100 1/s", "100 (1/s)", "100 s^-1", "0.1 kHz", "1e-4 MHz", "1e-7 GHz"})
            text(unit, csdm(axis(hertzAxis, "100 Hz", unit), eightNumbers), {2}, 70);
        text("CSDM, coordinates from the middle",
             csdm(axis(hertzAxis, "-0.4 kHz'", "0 Hz', 'complex_fft': true"), eightNumbers), {2}, 70);
        text("CSDM, 0 ppm beside the middle", // which is at 1000 Hz and 100 MHz
             csdm(axis(hertzAxis, "-0.4 kHz", "600 Hz"), eightNumbers), {1200 / 99.999}, 70);
        text("CSDM, frequency told", csdm(axis(hertzAxis, "'origin_offset': '100 MHz',", ""), eightNumbers), {4}, 70,
             "13C", 50);
        text("CSDM, ratios",
             csdm(axis(axis(ppmAxis, "-1 ppm", "-1e-6"), "10 ppm", "10e-6"), base64<qint8>("int8", {1, 2, 30, 4})), {8},
             30, "");
        text("CSDM, base64, linear × monotonic",
             csdm(ppmAxis + ", {'type': 'monotonic', 'coordinates': ['1 ppm', '2 ppm']}",
                  base64<float>("float32", {0, 0, 0, 0, 0, 0, 9, 0})),
             {8, 2}, 9, "/");
        text("CSDM, complex", csdm(ppmAxis, base64<double>("complex128", {0, 9, 0, 9, 5, 9, 0, 9})), {8}, 5, "");
        for (const QByteArray &values :
             {base64<qint8>("int8", {1, 2, 30, -4}), base64<qint16>("int16", {1, 2, 30, -4}),
              base64<qint32>("int32", {1, 2, 30, -4}), base64<qint64>("int64", {1, 2, 30, -4}),
              base64<quint8>("uint8", {1, 2, 30, 4}), base64<quint16>("uint16", {1, 2, 30, 4}),
              base64<quint32>("uint32", {1, 2, 30, 4}), base64<quint64>("uint64", {1, 2, 30, 4}),
              base64<double>("float64", {1, 2, 30, 4})})
            text(values, csdm(ppmAxis, values), {8}, 30, "");
        const QByteArray external =
            csdm(hertzAxis,
                 "'type': 'external', 'numeric_type': 'float64', 'encoding': 'raw', 'components_url': 'file:./v.dat'");
        folder("CSDM, values beside it",
               {{u"s"_s, external}, {u"v.dat"_s, binary<double>({1, 2, 3, 4, 5, 6, 70, 8}, false)}}, "s", {2}, 70,
               "13C");
        text("SIMPSON", simpson({}), {0}, 30, "", 100);
        text("SIMPSON, reference", simpson("REF=500\n"), {5}, 30, "", 100);

        folder("Bruker by its data file", bruker1D(), "pdata/1/1r", {18.5}, 30, "29Si");
        Files files = bruker1D();
        // A stale name of the nucleus, and a row along F1 of a plane: SF is 100 MHz in all.
        files[u"acqus"_s] = parameters({{"NUC1", "<1H>"}, {"SFO1", "100.1"}});
        folder("Bruker, stale name", files, "pdata/1", {18.5}, 30, "1H");
        files[u"acqus"_s] = parameters({{"NUC1", "<1H>"}, {"SFO1", "500.1"}});
        folder("Bruker, another axis", files, "pdata/1", {18.5}, 30, "29Si");
        files = bruker1D();
        files.remove(u"acqus"_s);
        files[u"pdata/1/1r"_s] = binary<qint32>({0, 1, 2, 3, 4, 5, 60, -1}, true);
        files[u"pdata/1/procs"_s] = processing(8, 0, "20", "27Al", "##$BYTORDP= 1\n##$NC_proc= -2\n");
        folder("Bruker big-endian, scaled, without acqus", files, "pdata/1", {17}, 15, "27Al");
        files[u"pdata/1/1r"_s] = binary<double>({0, 1, 2, 3.5, 0, 0, 0, -1}, false);
        files[u"pdata/1/procs"_s] = processing(8, 0, "20", "27Al", "##$BYTORDP= 0\n##$DTYPP= 2\n");
        folder("Bruker doubles", files, "", {18.5}, 3.5, "27Al");
        folder("Bruker 2D in tiles that do not fit", bruker2D(), "", {2, 28}, 29 * 8, "1H/13C");
    }

    /// All that is told of a file: axes, peaks, and what was assumed.
    void reports()
    {
        const auto check = [](const char *name, const Files &files, const QString &path, const char *report) {
            const QTemporaryDir folder;
            writeFiles(folder.path(), files);
            ReadOptions options;
            options.frequency = {100, 40};
            QString told;
            const QByteArray refused =
                failure([&] { told = MeasurementReport(readMeasurement(folder.filePath(path), options)).text(); });
            QStringList lines = told.split(u'\n', Qt::SkipEmptyParts);
            for (QString &line : lines)
                line = line.simplified();
            told = lines.join(u" | ");
            QVERIFY2(refused.isEmpty() && told == QString::fromUtf8(report), name + refused + told.toUtf8());
        };
        const auto row = [&](const char *name, const QByteArray &text, const char *report) {
            check(name, {{u"s.x"_s, text}}, u"s.x"_s, report);
        };
        const auto lines = [](int count, int high, const auto &start) {
            QByteArray text;
            for (int i = 0; i < count; ++i)
                text += start(i) + QByteArray::number(i == high ? 50 : i % 2) + '\n';
            return text;
        };
        QByteArray plane = plane2D();
        plane.replace("UNITS= PPM, PPM", "UNITS= HZ, HZ")
            .replace("##NUM DIM",
                     "##$OFFSET= 7\n##$OFFSET= 55\n##$SF= 100\n##$SF= 25\n##$SW_p= 3\n##$SW_p= 50\n##NUM DIM");
        row("JCAMP 2D", plane.replace("F1=25\n", "F1=-60\n"),
            R"(Format JCAMP-DX | Title n | F2 1H, 100.0000 MHz, 3 points from 7.0000 to 6.9800 ppm, 0.01 ppm apart | F1 13C, 25.0000 MHz, 2 points from 55.0000 to 54.0000 ppm, 1 ppm apart | Noise 0 around 0 | Peaks 0 picked | Note The row at line 26 says that it lies at -60, by its place that is 25: the rows were placed by their count.)");
        row("JCAMP 2D, one frequency", QByteArray(plane).replace("##$SF", "##$SG").replace("13C, 1H", "15N, 1H"),
            R"(Format JCAMP-DX | Title n | F2 1H, 100.0000 MHz, 3 points from 0.0300 to 0.0100 ppm, 0.01 ppm apart | F1 15N, 10.1368 MHz, 2 points from 4.9325 to 2.4663 ppm, 2.46627 ppm apart | Noise 0 around 0 | Peaks 0 picked | Note 0 Hz was taken as 0 ppm: the file names no reference. | Note The file names no frequency for F1: 10.136767 MHz of 15N follows from the observe frequency and the ratio of the nuclei. | Note 0 Hz was taken as 0 ppm: the file names no reference. | Note The row at line 26 says that it lies at -60, by its place that is 25: the rows were placed by their count.)");
        row("JCAMP statements that differ",
            jcamp(hertz + "##$OFFSET= 150\n##$SF= 100\n##$SW_p= 11000\n##.SHIFT REFERENCE= , , 4, 12.5\n", "11000",
                  "1000"),
            R"(Format JCAMP-DX | Title t | F2 13C, 100.0000 MHz, 11 points from 150.0000 to 50.0000 ppm, 10 ppm apart | Noise 6.08928 around 4 | Peaks 0 picked | Note The file's statements about its axis differ: by $OFFSET, $SF, $SW_p the first point lies at 150.0000 ppm, which was taken; by .SHIFT REFERENCE it would lie at 42.5000 ppm and the last one -107.5 ppm off.)");
        row("JCAMP width that differs",
            jcamp(hertz + "##$OFFSET= 150\n##$SF= 100\n##$SW_p= 15000\n##.SHIFT REFERENCE= , , 0, 12.5\n", "0",
                  "10000"),
            R"(Format JCAMP-DX | Title t | F2 13C, 100.0000 MHz, 11 points from 100.0000 to 0.0000 ppm, 10 ppm apart | Noise 4.98888 around 4 | Peaks 0 picked | Note $SW_p and $SF make a width of 150 ppm, the table has one of 110 ppm: $OFFSET was not used. | Note .SHIFT REFERENCE names point 0, points count from 1: it was not used. | Note 0 Hz was taken as 0 ppm: the file names no reference.)");
        row("JCAMP of an odd place",
            jcamp(hertz + "##$OFFSET= 150\n##$SF= 100\n##$SW_p= 12000\n##$SI= 16\n", "0", "10000")
                .replace("\n0 1", "\n5000 1"),
            R"(Format JCAMP-DX | Title t | F2 13C, 100.0000 MHz, 11 points from 150.0000 to 50.0000 ppm, 10 ppm apart | Noise 4.98888 around 4 | Peaks 0 picked | Note Line 16 says that it begins at X = 5000, by its place that is 0: the points were placed by their count.)");
        row("JCAMP peaks in kHz",
            u"##TITLE= a µ\n##DATA TYPE= NMR PEAK ASSIGNMENTS\n##.OBSERVE FREQUENCY= 50,5 MHz\n##.OBSERVE NUCLEUS= ^31P\n##XUNITS= KHZ\n##XFACTOR= 2\n##YFACTOR= 0.5\n##PEAK ASSIGNMENTS= (XYA)\n(1.01, 7, <P1, P2>)\n(-0.505, 9, <>) (0.1, -3, <c>)\n##END=\n"_s
                .toUtf8(),
            R"(Format JCAMP-DX peak list | Title a µ | F2 31P | Peaks 3 | 40.0000 ppm 3.5 P1, P2 | -20.0000 ppm 4.5 | 3.9604 ppm -1.5 c | Note 0 Hz was taken as 0 ppm: the file names no reference. | Note The comma in ##.OBSERVEFREQUENCY= 50,5 was taken for a decimal point.)");
        row("CSDM",
            QByteArray(
                R"({'csdm': {'description': ' a  b ', 'dimensions': [{'type': 'linear', 'count': 3, 'increment': '-2e-6', 'coordinates_offset': '5e-6', 'label': '27Al'},{'type': 'linear', 'count': 2, 'increment': '0.01', 'coordinates_offset': '0.05', 'complex_fft': true, 'description': 'of 17O'}],'dependent_variables': [{'type': 'internal', 'numeric_type': 'int16', 'encoding': 'base64', 'components': ['AQACAAMA//8EAAUA', 'AA==']}, {}]}})")
                .replace('\'', '"'),
            R"(Format CSDM | Title a b | F2 27Al, 100.0000 MHz, 3 points from 5.0000 to 1.0000 ppm, 2 ppm apart | F1 17O, 40.0000 MHz, 2 points from 0.0500 to 0.0400 ppm, 0.01 ppm apart | Noise 0 around 0 | Peaks 0 picked | Note A dimension names no unit: its small numbers were taken as ratios, of which 1e-6 is 1 ppm. | Note A dimension names no unit: it was taken as ppm. | Note Of 2 dependent variables the first one was read. | Note Of 2 components the first one was read.)");
        row("SIMPSON 2D",
            "SIMP\nNP=3\nSW=300\nNI=2\nSW1=800\nREF=-50\nREF1=100\nTYPE=SPE\nDATA\n1 0\n2 0\n9 0\n4 0\n5 0\n6 0\nEND\n",
            R"(Format SIMPSON | Title s | F2 100.0000 MHz, 3 points from 0.0000 to -2.0000 ppm, 1 ppm apart | F1 40.0000 MHz, 2 points from 2.5000 to -7.5000 ppm, 10 ppm apart | Noise 0 around 0 | Peaks 0 picked | Note Hz were divided by 100 MHz; 0 Hz was taken as 0 ppm. | Note Hz were divided by 40 MHz; 0 Hz was taken as 0 ppm.)");
        row("text in kHz",
            "# 13C, 62.5 MHz\nFrequency (kHz)\tI\n"
                + lines(40, 12, [](int i) { return QByteArray::number(5 - 0.25 * i) + '\t'; }),
            R"(Format text table | Title s | F2 13C, 100.0000 MHz, 40 points from 50.0000 to -47.5000 ppm, 2.5 ppm apart | Noise 0.563436 around 0.5 | Peaks 1 picked | 20.0000 ppm 49.5 | Note Read as a spectrum: 40 evenly spaced positions. | Note Positions in kHz were divided by 100 MHz; 0 Hz was taken as 0 ppm.)");
        row("text, region",
            "# F1LEFT = 40 ppm. F1RIGHT = 20 ppm.\n# F2LEFT = 9 ppm. F2RIGHT = 2 ppm.\n# NROWS = 3\n# NCOLS = 8\n"
                + lines(24, 13, [](int) { return QByteArray(); }),
            R"(Format text, region and intensities | Title s | F2 8 points from 9.0000 to 2.0000 ppm, 1 ppm apart | F1 3 points from 40.0000 to 20.0000 ppm, 10 ppm apart | Noise 0.563436 around 0.5 | Peaks 1 picked | 4.0000 30.0000 ppm 49.5 | Note LEFT and RIGHT were taken as the positions of the first and the last point.)");
        row("publication",
            "Lit.\n31P{1H} NMR (162 MHz, MAS): δ = 12,5 (d, 2J = 30 Hz, 2P, P-1); \u221225,25 to -24,75 (m, 1P) and 3 "
            "(br s, 12P).\nEI-MS 123.4.",
            R"(Format text of a publication | Title s | F2 31P | Peaks 3 | 12.5000 ppm 1 counted 2 times P-1 | -25.0000 ppm 1 | 3.0000 ppm 1 counted 12 times | Note Read as the list of 3 shifts of a publication. | Note Ranges of shifts were replaced by their middles. | Note What follows the full stop was left out: "EI-MS 123.4.".)");
        Files files = bruker2D();
        files[u"pdata/1/title"_s] = "\n \n a b \nc";
        files[u"pdata/12/1r"_s] = files[u"pdata/3/2rr"_s] = "x";
        files[u"acqu2s"_s] = parameters({{"NUC1", "<15N>"}});
        check(
            "Bruker", files, u"pdata/1/2rr"_s,
            R"(Format Bruker | Title a b | F2 1H, 100.0000 MHz, 6 points from 4.5000 to 2.0000 ppm, 0.5 ppm apart | F1 15N, 100.0000 MHz, 5 points from 30.0000 to 28.0000 ppm, 0.5 ppm apart | Noise 0 around 28 | Peaks 0 picked | Note Processing 1 was read; there are also 3, 12.)");
        const QString list = u"pdata/1/peaklist.xml"_s;
        files[list] =
            R"(<?xml version='1.0'?><PeakList><PeakList2D><Peak2D F1='60' F2='3.5' intensity='2' annotation='a'/></PeakList2D><PeakList2D><Peak2D F1='50' F2='2.5' intensity='4'/></PeakList2D></PeakList>)";
        check(
            "Bruker peaks", files, list,
            R"(Format Bruker peak list | Title a b | F2 1H | F1 15N | Peaks 2 | 3.5000 60.0000 ppm 2 a | 2.5000 50.0000 ppm 4 | Note The file has 2 lists, their peaks were joined.)");
    }

    void tableTokens()
    {
        using Values = std::vector<double>;
        for (const auto &[lines, values] :
             {std::pair("5 1E+2 2.5e1\n3 -3.5E-1 .5 4.\n", Values{100, 25, -0.35, 0.5, 4}),
              std::pair("4 1E2 2e1\n", Values{1, 52, 2, -51}), // E is a digit behind a whole number
              std::pair("5A0JTk\n", Values{10, 11, 12, 10}),
              std::pair("14A0SB0S2\n", Values{10, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20}),
              std::pair("5, 1, -2,3\n2, 4, 5\n", Values{1, -2, 3, 4, 5}),
              std::pair("5+1-22+3\n2+4-5\n", Values{1, -22, 3, 4, -5}),
              std::pair("6@A1b2i\n2IT\n", Values{0, 11, -22, -9, 9, 9}),
              std::pair("3AJJ\n1C\n", Values{1, 2, 3}), // check alone on the last line
              std::pair("2 7 $$ 8\n\n$$ 9\n1 6\n", Values{7, 6}),
              std::pair(differences.constData(), Values{0,  1,  3,  6,  10, 15, 21, 28, 36, 45, 44, 42, 39,
                                                        35, 30, 24, 17, 9,  0,  10, 20, 30, 40, 39, 38, 38})}) {
            const Measurement read = JcampReader::parse(table(int(values.size()), lines), u"f"_s);
            QCOMPARE(std::get<ExperimentalSpectrum>(read).data, values);
        }
    }

    /// "?" stands for "/s, line ".
    void badInput()
    {
        const QByteArray plane = plane2D();
        const QByteArray spe = "SIMP\nNP=2\nSW=800\nTYPE=SPE\nDATA\n1 0\n2 0\nEND\n";
        const auto number = [](const char *from, const char *to) {
            return csdm(QByteArray(hertzAxis).replace(from, to), eightNumbers);
        };
        const auto values = [](const char *from, const char *to) {
            return csdm(hertzAxis, QByteArray(eightNumbers).replace(from, to));
        };
        const auto external = [](const QByteArray &url) {
            return csdm(hertzAxis,
                        "'type': 'external', 'numeric_type': 'float64', 'encoding': 'raw', 'components_url': '" + url
                            + '\'');
        };
        const std::pair<QByteArray, const char *> texts[] = {
            {table(6, "6AJJJ\n3EJJ\n"),
             "?9: the Y-check fails: the line begins with 5 where the line before ended with 4"},
            {table(6, "6AJJJ\n3DJ\n"), "?9: the data end after 5 points where 6 were announced"},
            {table(4, "4AJJJJ\n"), "?8: there are more points than the 4 that were announced"},
            {table(2, "2 1 1234\n").chopped(10), "?8: the file ends within this line, ##END= was expected"},
            {table(12, "12 1 2 3\n3 4 5 6\n"), "?9: the data end after 6 points where 12 were announced"},
            {table(30, "30 1 1 1 1 1 1 1 1 1 1\n10 1 1 1 1 1 1 1 1 1 1\n").replace("##NPOINTS= 30\n", ""),
             R"(?8: the record ##NPOINTS= is missing, and of the 20 points that the table holds the one here would lie at 14.73684211, not at 10 as the line says)"},
            {table(6, "6 1 2 3\n3 4 5 6\n").replace("##LASTX= 1", "##DELTAX= 1"),
             "?9: by ##DELTAX= this line begins at X = 9, it says 3"},
            {table(4, "4AZ00000000000000\n"),
             "?8: an ordinate is repeated 800000000000000 times where 3 points are left of the 4 announced"},
            {table(2, "2 1 1\n").replace("NPOINTS= 2", "NPOINTS= 200000000"),
             "?6: 200000000 points cannot be, between 2 and 1048576 were expected"},
            {jcamp(ppm, "1000000000", "0"), "/s: an axis of 11 points from 1e+09 to 0 ppm is not that of a spectrum"},
            {"SIMP\nNP=2.5\nSW=8000\nTYPE=SPE\nDATA\n1 0\n2 0\nEND\n", "/s: NP=2.5, NI=1 are no size of a spectrum"},
            {"# LEFT = 9 ppm. RIGHT = 0 ppm.\n# SIZE = 1e300\n1\n2\n", "/s: 0 × 1 points cannot be"},
            {"shift,count\n9,100000\n8,100000\n7,1\n", "?4: more than 200000 peaks are too many"},
            {QByteArray("\177ELF\0\0", 6),
             R"(/s: this is no measurement that can be read: expected a Bruker folder or its file 1r or 2rr, JCAMP-DX, CSDM, SIMPSON or text with ppm and intensity)"},

            {table(3, "3 1 ? 2\n"), "?8: a point has no ordinate (\"?\"), a number was expected"},
            {table(3, "3J1\n"), "?8: the line begins with a difference, an ordinate was expected"},
            {table(3, "3S1\n"), "?8: a repeat count stands where an ordinate was expected"},
            {table(9, "9ATT\n"), "?8: a repeat count stands where an ordinate was expected"},
            {table(9, "9AT.5\n"), "?8: an ordinate is repeated 2.5 times where 8 points are left of the 9 announced"},
            {table(3, "3 1\n2\n1 5\n"), "?9: no ordinate follows the X value"},
            {table(3, "3 1 x 2\n"), "?8: expected an ordinate, found \"x 2\""},
            {table(3, "A 1 2\n"), "?8: expected a number, found \"A 1 2\""},
            {table(3, "3 1 2 3\n").replace("LASTX= 1", "LASTX= 3"),
             "?1: the first and the last X value (3, 3) span no axis"},
            {table(3, "3 1 2 3\n").replace("NPOINTS= 3", "NPOINTS= x"),
             "?6: expected a number for NPOINTS, found \"x\""},
            {table(3, "3 1 2 3\n").replace("##XUNITS= PPM", ""),
             "?1: the block that begins here has no record ##XUNITS="},
            {table(3, "3 1 2 3\n").replace("PPM", "SECONDS"), "?3: expected X values in HZ or PPM, found \"SECONDS\""},
            {table(3, "3 1 2 3\n").replace("PPM", "KHZ"),
             R"(?1: X values in Hz need the record ##.OBSERVE FREQUENCY=, or the frequency of 0 ppm in MHz must be given)"},
            {jcamp(hertz).replace("= 100\n", "= -100 MHz\n"), "?6: expected a frequency in MHz, found -100"},
            {jcamp(ppm).replace("(X++(Y..Y))", "(X++(R..R))"),
             "?11: expected a table (X++(Y..Y)), found \"(X++(R..R))\""},
            {jcamp(ppm, "95", "85").replace("YFACTOR= 2", "YFACTOR= 1e308"),
             "?11: an ordinate times its factor (1e+308) is too large"},
            {jcamp(hertz).replace("NMR SPECTRUM", "NMR FID"),
             R"(?1: this is an FID, a spectrum was expected: transform it with the spectrometer's software and export the spectrum)"},
            {jcamp(hertz).replace("NMR SPECTRUM", "MASS SPECTRUM"),
             R"(/s: expected a block with the data type "NMR SPECTRUM" and a table, or one with peaks, found "MASS SPECTRUM")"},
            {"##TITLE= t\n##DATA TYPE= NMR SPECTRUM\n##END=\n",
             "?1: the spectrum that begins here has no table (X++(Y..Y)) or (XY..XY)"},
            {"##JCAMP-DX= 5\n##END=\n", "/s: a JCAMP-DX file was expected, no record ##TITLE= was found"},
            {"##TITLE= t\n##DATA TYPE= NMR PEAK TABLE\n##PEAK TABLE= (ABX)\n1 2 3\n##END=\n",
             "?3: expected peaks (XY..XY) or (XYA), found \"(ABX)\""},
            {"##TITLE= t\n##DATA TYPE= NMR PEAK TABLE\n##NPOINTS= 3\n##PEAK TABLE= (XY..XY)\n1, 2 3, 4\n##END=\n",
             "?4: 3 peaks were announced, 2 are there"},
            {"##TITLE= t\n##DATA TYPE= NMR PEAK TABLE\n##PEAK TABLE= (XYA)\n(1, 2, <a>)\n(3, b, <4>)\n##END=\n",
             "?5: expected a number, found \"b\""},
            {QByteArray(plane).replace("SYMBOL= F1, F2", "SYMBOL= F1, G2"),
             "?9: the table's symbol \"F2\" is not in this list"},
            {QByteArray(plane).replace("VAR_DIM= 2", "VAR_DIM= 3"), "?1: 3 rows were announced, 2 are there"},
            {QByteArray(plane).replace("##END N",
                                       "##PAGE= F1=0\n##DATA TABLE= (F2++(Y..Y)), PROFILE\n3 4 9 5\n##END N"),
             "?24: there are more rows than the 2 announced"},
            {QByteArray(plane).replace("VAR_DIM= 2, 3", "VAR_DIM= 1048576, 3"),
             "?12: 3 × 1048576 points are more than the file can hold"},
            {QByteArray(plane).replace("DATA TABLE=", "DATA=").replace("VAR_DIM", "DATA TABLE= (F1, F2)\n##VAR_DIM"),
             "?1: the block that begins here has no table (X++(R..R))"},
            {QByteArray(spe).replace("SW", "WS"), "/s: the line SW= is missing before DATA"},
            {QByteArray(spe).replace("=800", "=8oo"), "?3: expected a number, found \"8oo\""},
            {QByteArray(spe).replace("DATA", "FORMAT=BINARY\nDATA"),
             "/s: the points are in binary form: save the spectrum as text (fsave without -binary)"},
            {QByteArray(spe).replace("2 0", "2"), "?7: expected a real and an imaginary part, found \"2\""},
            {QByteArray(spe).replace("2 0", "2 0\n3 0"), "?8: there are more points than the 2 announced"},
            {QByteArray(spe).replace("END\n", ""), "/s: the data end after 2 points where 2 and END were expected"},
            {QByteArray(spe).replace("NP=2", "NP=1"), "/s: NP=1, NI=1 are no size of a spectrum"},
            {QByteArray(spe).replace("SPE", "FID"),
             "/s: expected TYPE=SPE, found \"FID\": transform the FID (fft) and save the spectrum"},
            {external("file:../v.dat"), "/s: the values lie at \"file:../v.dat\", a file beside this one was expected"},
            {external("file:///etc/passwd"),
             "/s: the values lie at \"file:///etc/passwd\", a file beside this one was expected"},
            {csdm("{'type': 'monotonic', 'coordinates': ['1 ppm', '2 ppm', '4 ppm']}", eightNumbers),
             "/s: the coordinates of a monotonic dimension are not evenly spaced, as those of a spectrum must be"},
            {csdm("{'type': 'monotonic', 'coordinates': ['1 ppm', '2 ppm', '3 ppm']}", eightNumbers),
             "/s: there are 8 numbers, the dimensions make 3"},
            {number("100 Hz", "1 s"), "/s: increment is in s: a spectrum in Hz or ppm was expected"},
            {csdm({}, eightNumbers), "/s: expected one or two dimensions, found 0"},
            {csdm(hertzAxis + ',' + hertzAxis + ',' + hertzAxis, eightNumbers),
             "/s: expected one or two dimensions, found 3"},
            {csdm(hertzAxis, eightNumbers).replace("dependent", "independent"), "/s: there are no dependent variables"},
            {number("8", "1"), "/s: a dimension of 1 points is none of a spectrum"},
            {number("8", "2.5"), "/s: a dimension of 2.5 points is none of a spectrum"},
            {number("linear", "labeled"), "/s: expected a linear or a monotonic dimension, found \"labeled\""},
            {number("-0.4 kHz", "3 ppm"), "/s: increment and coordinates_offset differ in their units"},
            {number("100 Hz", "1-2 Hz"), "/s: increment: expected a number with its unit, found \"1-2 Hz\""},
            {values("float64", "float16"), "/s: numeric_type \"float16\" is not known"},
            {values("none", "raw"), "/s: encoding \"raw\" was found, base64, raw or none was expected"},
            {csdm(hertzAxis,
                  "'type': 'internal', 'numeric_type': 'float64', 'encoding': 'base64', 'components': ['%%']"),
             "/s: the values are no base64 text"},
            {csdm(hertzAxis,
                  "'type': 'internal', 'numeric_type': 'float64', 'encoding': 'base64', 'components': ['AAA=']"),
             "/s: the values have 2 bytes, the dimensions make 64"},
            {values("70", "null"), "/s: value 6 is no number"},
            {"{\"csdm\": }", "/s: byte 10: object is missing after a comma"},
            {number("origin_offset", "other"),
             R"(/s: the dimension is in Hz and has no origin_offset: the frequency of 0 ppm in MHz is needed to make ppm of it and must be given)"}};
        const auto check = [](const Files &files, const QString &path, const char *expected) {
            const QTemporaryDir folder;
            writeFiles(folder.path(), files);
            ReadOptions options; // of those that never tell their frequency
            options.frequency[0] = files.value(path).startsWith("SIMP") ? 100 : 0;
            const QByteArray message =
                *expected == '?' ? QByteArray("/s, line ") + (expected + 1) : QByteArray(expected);
            QCOMPARE(failure([&] { openExperimentalSpectrum(folder.filePath(path), options); }),
                     folder.path().toUtf8() + message);
        };
        for (const auto &[text, message] : texts)
            check({{u"s"_s, text}}, u"s"_s, message);

        // An empty text to look for stands for a missing file.
        const std::tuple<const char *, const char *, const char *, const char *> folders[] = {
            {"procs", "", "", "/pdata/1/procs: there is no such file"},
            {"2rr", "", "",
             ": no processed data were found here: expected a file 1r or 2rr, in this folder or in pdata/1"},
            {"2rr", "\xf9", "",
             R"(/pdata/1/2rr: the file has 174 bytes where the parameters (SI = 6 × 5, XDIM = 4 × 2, 4 bytes a point) make 192)"},
            {"proc2s", "##$OFFSET=", "##$O=", "/pdata/1/proc2s: the parameter OFFSET is missing"},
            {"procs", "SI= 6", "SI= 1000000000",
             "/pdata/1/procs, line 6: SI: expected 2 to 268435456 points, found 1000000000"},
            {"procs", "SI= 6", "SI= 268435456",
             "/pdata/1/2rr: 1610612736 points (SI = 268435456 × 5, XDIM = 4 × 2) are too many"},
            {"procs", "BYTORDP= 1", "BYTORDP= 2",
             "/pdata/1/procs, line 13: BYTORDP: expected 0 (little endian) or 1 (big endian), found 2"},
            {"procs", "BYTORDP= 1", "BYTORDP= 1\n##$DTYPP= 1",
             "/pdata/1/procs, line 14: DTYPP: expected 0 (32-bit integers) or 2 (doubles), found 1"},
            {"procs", "NC_proc= 3", "NC_proc= -501",
             "/pdata/1/procs, line 14: NC_proc: expected an exponent of two of at most 500, found -501"},
            {"proc2s", "SF= 100", "SF= 0", "/pdata/1/proc2s, line 7: SF: expected a frequency in MHz, found 0"},
            {"proc2s", "SW_p= 250", "SW_p= -1", "/pdata/1/proc2s, line 8: SW_p: expected a width in Hz, found -1"},
            {"procs", "XDIM= 4", "XDIM= 7",
             "/pdata/1/procs, line 10: XDIM: expected a block of at most 6 points, found 7"},
            {"proc2s", "SI= 5", "SI= 1", "/pdata/1/proc2s, line 6: SI: expected 2 to 268435456 points, found 1"},
            {"procs", "SI= 6", "SI= six", "/pdata/1/procs, line 6: expected a number for SI, found \"six\""},
            {"proc2s", "##$SI= 5", "##$FT_mod= 0\n##$FTSIZE= 0\n##$SI= 5",
             R"(/pdata/1/proc2s, line 6: FT_mod: F1 was not Fourier-transformed, so this is a series of spectra and no 2D spectrum: extract the row that you want as a 1D spectrum (rsr in TopSpin))"}};
        for (const auto &[file, from, to, message] : folders) {
            Files files = bruker2D();
            const QString path = u"pdata/1/"_s + QLatin1String(file);
            *from ? void(files[path].replace(from, to)) : void(files.remove(path));
            check(files, {}, message);
        }
    }
};

QTEST_GUILESS_MAIN(ReadersTest)
#include "tst_readers.moc"
