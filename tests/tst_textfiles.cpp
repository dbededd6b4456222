// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "formats/EvenAxis.h"
#include "formats/MagresCheck.h"
#include "formats/SpectrumReader.h"

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

constexpr int points = 64;

/// 100, 99.5, 99 … times `scale`, with peaks of 50 at 95 and of -30 at 80.
struct Shape {
    const char *separator = ",";
    char point = '.';
    const char *quote = "";
    const char *end = "\n";
    double scale = 1.0;
};

QByteArray number(double value, const Shape &shape)
{
    return shape.quote + QByteArray::number(value, 'f', 3).replace('.', shape.point) + shape.quote;
}

double position(int i)
{
    return 100.0 - 0.5 * i;
}

double intensity(int i)
{
    return i == 10 ? 50.0 : i == 40 ? -30.0 : 1.0 + 0.001 * i;
}

QByteArray table(const Shape &shape, const QByteArray &header = {})
{
    QByteArray text = header;
    for (int i = 0; i < points; ++i)
        text += number(position(i) * shape.scale, shape) + shape.separator + number(intensity(i), shape) + shape.end;
    return text;
}

/// Rows of any columns: x stands for the position, y for the intensity, n for the number, h for Hz at 125 MHz.
QByteArray columns(const char *pattern, const QByteArray &header = {})
{
    QByteArray text = header;
    for (int i = 0; i < points; ++i) {
        for (const char *c = pattern; *c; ++c)
            text += QByteArray::number(*c == 'x'       ? position(i)
                                           : *c == 'y' ? intensity(i)
                                           : *c == 'h' ? 125.0 * position(i)
                                           : *c == 'n' ? i + 1.0
                                                       : -0.25,
                                       'g', 10)
                + (c[1] ? " " : "\n");
    }
    return text;
}

QByteArray wide(const QByteArray &text, bool bigEndian)
{
    QStringEncoder encoder(bigEndian ? QStringEncoder::Utf16BE : QStringEncoder::Utf16LE,
                           QStringConverter::Flag::WriteBom);
    return encoder(QString::fromUtf8(text));
}

/// JSON and XML with apostrophes for quotation marks.
QByteArray quoted(QByteArray text)
{
    return text.replace('\'', '"');
}

Measurement readBytes(const QTemporaryDir &folder, const QByteArray &bytes, const ReadOptions &options = {})
{
    return readMeasurement(writtenFile(folder, u"file"_s, bytes), options);
}

/// "7.26/133.3 =5 C1 #2; …": F2, F1, height, label and count.
QString listed(const MeasuredPeaks &list)
{
    QStringList peaks;
    for (const MeasuredPeak &peak : list.peaks)
        peaks.append((QString::number(peak.f2, 'g', 10) + (list.dimensions == 2 ? u"/%1 "_s.arg(peak.f1) : u" "_s)
                      + (peak.height != 1 ? u"=%1 "_s.arg(peak.height, 0, 'g', 10) : QString()) + peak.label
                      + (peak.count > 0 ? u" #%1"_s.arg(peak.count) : QString()))
                         .simplified());
    return peaks.join(u"; "_s);
}

/// The peaks of a text, or why it is refused, without the path.
QString outcome(const QByteArray &text, const ReadOptions &options = {})
{
    const QTemporaryDir folder;
    QString peaks;
    const QByteArray refused =
        failure([&] { peaks = listed(std::get<MeasuredPeaks>(readBytes(folder, text, options))); });
    return refused.isEmpty() ? peaks : QString::fromUtf8(refused.mid(folder.filePath(u"file"_s).toUtf8().size() + 2));
}

ReadOptions withFrequency(double megahertz, const QString &unit = {})
{
    ReadOptions options;
    options.frequency = {megahertz, megahertz};
    options.unit = unit;
    return options;
}

const QByteArray head = "#$magres-abinitio-v1.0\n";
const QByteArray tensor = " 30 0 0 0 31 0 0 0 32\n";

QByteArray atom(const QByteArray &label, int index, const QByteArray &species = {})
{
    const QByteArray element = species.isEmpty() ? label.left(1) : species;
    return "atom " + element + ' ' + label + ' ' + QByteArray::number(index) + " 0 0 " + QByteArray::number(index)
        + '\n';
}

QByteArray atomsBlock(const QByteArray &atoms)
{
    return "[atoms]\nunits lattice Angstrom\nunits atom Angstrom\nlattice 9 0 0 0 9 0 0 0 9\n" + atoms + "[/atoms]\n";
}

QByteArray magresBlock(const QByteArray &records)
{
    return "[magres]\nunits ms ppm\nunits efg au\n" + records + "[/magres]\n";
}

/// As every program writes it.
QByteArray usual()
{
    return head + atomsBlock(atom("H", 1) + atom("C", 100))
        + magresBlock("ms H 1" + tensor + "ms C 100" + tensor + "efg H 1" + tensor + "efg C 100" + tensor
                      + "isc H 1 C 100" + tensor);
}

} // namespace

class TestTextFiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The same spectrum in every shape.
    void spectra()
    {
        const QTemporaryDir folder;
        const auto row = [&](const char *name, const QByteArray &text, const char *note = "",
                             const ReadOptions &options = {}) {
            const Measurement read = readBytes(folder, text, options);
            const auto *spectrum = std::get_if<ExperimentalSpectrum>(&read);
            QVERIFY2(spectrum && spectrum->data.size() == size_t(points), name);
            QVERIFY2(spectrum->data[10] == 50.0 && spectrum->data[40] == -30.0, name);
            QVERIFY2(std::abs(spectrum->dimensions[0].ppm(10) - 95.0) < 1e-9, name);
            QVERIFY2(std::abs(spectrum->dimensions[0].ppm(40) - 80.0) < 1e-9, name);
            const QByteArray notes = spectrum->notes.join(u' ').toUtf8();
            QVERIFY2(notes.contains(note), name + notes);
        };
        row("comma", table({}), "taken as ppm");
        row("tab", table({"\t"}));
        row("blanks", table({"   "}));
        row("semicolon", table({";"}));
        row("semicolon, decimal commas", table({";", ','}));
        row("semicolon between blanks, decimal commas", table({" ; ", ','}));
        row("tab, decimal commas", table({"\t", ','}));
        row("blank, decimal commas", table({" ", ','}));
        row("comma and blank", table({", "}));
        row("quoted", table({",", '.', "\""}, "\"Chemical Shift (ppm)\",\"Intensity\"\n"));
        row("quoted, decimal commas between commas", table({",", ',', "\""}));
        row("CRLF", table({",", '.', "", "\r\n"}, "ppm,intensity\r\n"));
        row("CR", table({"\t", '.', "", "\r"}));
        row("UTF-8 with a mark", "\xEF\xBB\xBF" + table({}, "ppm,intensity\n"));
        row("UTF-16, little-endian", wide(table({"\t"}, "δ(13C)\tCP\n"), false), "Column \"CP\"");
        row("UTF-16, big-endian", wide(table({"\t"}, "ppm\treal\n"), true));
        row("UTF-16, of several blocks",
            wide(("# " + QByteArray(3000, '-') + "\n").repeated(500) + table({"\t"}), false));
        row("Latin-1", table({"\t"}, "# Gr\xF6\xDF\x65\nppm\theight\n"));
        row("every mark of a comment", table({" "}, "% a\n! b\n; c\n# d\n"));
        row("names in any case, in brackets", table({"\t"}, "SHIFT [PPM]\tINTENSITY [a.u.]\n"));
        row("lines without names above", table({","}, "my sample\nmeasured on Monday\n"), "passed over");
        row("a name of its own for the intensity", table({}, "ppm,glycine\n"), "glycine");
        QByteArrayList rising = table({}).trimmed().split('\n');
        std::reverse(rising.begin(), rising.end());
        row("rising", rising.join('\n') + '\n');
        row("x, real, imaginary", columns("xyi"), "imaginary part was left out");
        row("number, intensity, Hz, ppm", columns("nyhx"), "number, intensity, Hz and ppm");
        row("the same with names", columns("nyhx", "Point Intensity Hz ppm\n"), "not used: \"Hz\"");
        row("names in another order", columns("yx", "intensity ppm\n"));
        row("a trace named by its temperature", table({}, "ppm,298 K\n"), "Column \"298 K\" was taken");
        row("a fit beside the measurement", columns("xyi", "ppm,exp,calc\n").replace(',', ' '),
            "Column \"exp\" was taken");
        row("a column of numbers without a name", columns("nxy", ",ppm,glycine\n"), "Column \"glycine\" was taken");
        row("Hz", table({",", '.', "", "\n", 100.0}, "Frequency (Hz),Intensity\n"), "divided by 100 MHz",
            withFrequency(100));
        row("kHz", table({",", '.', "", "\n", 0.1}, "kHz,Intensity\n"), "divided by 100 MHz", withFrequency(100));
        row("Hz, told", table({",", '.', "", "\n", 100.0}), "divided by 100 MHz", withFrequency(100, u"Hz"_s));
        row("Hz, the file tells the frequency", table({",", '.', "", "\n", 100.0}, "# 100.0 MHz\nHz,y\n"),
            "divided by 100 MHz");
        QByteArray region = "# LEFT = 100.0 ppm. RIGHT = 68.5 ppm.\n# SIZE = 64 ( = number of points)\n#\n";
        for (int i = 0; i < points; ++i)
            region += QByteArray::number(intensity(i)) + '\n';
        row("region and intensities", region, "LEFT and RIGHT");
        row("region, decimal commas",
            QByteArray(region).replace(".0 ppm", ",0 ppm").replace("68.5", "68,5").replace("1.0", "1,0"));
        row("region in Hz, the file tells the frequency",
            "# 100.0 MHz\n" + QByteArray(region).replace("100.0 ppm", "10,000.0 hz").replace("68.5 ppm", "6850 hz"),
            "divided by 100 MHz");
        row("region in Hz", QByteArray(region).replace("100.0 ppm", "10000.0 Hz").replace("68.5 ppm", "6850 Hz"),
            "divided by 100 MHz", withFrequency(100));
        row("separators at the end of each line", table({",", '.', "", ",\n"}, "ppm,intensity,\n"));
        row("the unit in each row", table({" ppm ", '.', "", "\n"}));
        row("exponents of Fortran", table({" "}).replace("50.000", "5.0D+01"));
        row("minus signs of print, blanks that do not break", table({"\xC2\xA0"}).replace("-", "\xE2\x88\x92"));
        row("columns behind a record", table({"\t"}, "##freq 100\nppm\n"));
    }

    /// Whole numbers, 0.7 apart before they were rounded: the line by numpy.polyfit.
    void roundedPositions()
    {
        std::vector<double> positions;
        for (int i = 0; i < 20; ++i)
            positions.push_back(std::floor(100.5 - 0.7 * i));
        Precision whole;
        whole.add("100");
        const auto axis = evenAxis(positions, whole);
        QVERIFY(axis && axis->rounded && std::abs(axis->first - 100.042857142857) < 1e-9);
        QVERIFY(std::abs(axis->step + 0.69924812030) < 1e-9);
        QVERIFY(!evenAxis(positions, {1, 3}));
        positions[9] -= 1.5;
        QVERIFY(!evenAxis(positions, whole));
    }

    /// A table with names and without, and one whose F1 runs faster.
    void planes()
    {
        QByteArray region = "# F1LEFT = 40 ppm. F1RIGHT = 10 ppm.\n# F2LEFT = 9 ppm. F2RIGHT = 2 ppm.\n"
                            "# NROWS = 4 ( = a)\n# NCOLS = 8 ( = b)\n#\n",
                   named = "ppm_f2,ppm_f1,intensity\n", unnamed, turned;
        for (int r = 0; r < 4; ++r) {
            region += "# row = " + QByteArray::number(r) + '\n';
            for (int c = 0; c < 8; ++c) {
                const QByteArray value = QByteArray::number(10 * r + c) + '\n';
                const QByteArray f2 = QByteArray::number(9 - c), f1 = QByteArray::number(40 - 10 * r);
                region += value;
                named += f2 + ',' + f1 + ',' + value;
                unnamed += f2 + ' ' + f1 + ' ' + value;
            }
        }
        for (int c = 0; c < 8; ++c)
            for (int r = 0; r < 4; ++r)
                turned += QByteArray::number(9 - c) + '\t' + QByteArray::number(40 - 10 * r) + '\t'
                    + QByteArray::number(10 * r + c) + '\n';
        for (const QByteArray &text : {region, named, unnamed, turned}) {
            const Measurement read = readBytes(QTemporaryDir(), text);
            const auto &spectrum = std::get<ExperimentalSpectrum>(read);
            QCOMPARE(spectrum.dimensions.size(), size_t(2));
            for (int i = 0; i < 32; ++i)
                QCOMPARE(spectrum.data[size_t(i)], 10.0 * (i / 8) + i % 8);
            QCOMPARE(spectrum.dimensions[0].ppm(3), 6.0);
            QCOMPARE(spectrum.dimensions[1].ppm(2), 20.0);
        }
    }

    void peaks()
    {
        const QTemporaryDir folder;
        const auto row = [&](const QByteArray &text, const char *expected, const char *note = "") {
            const Measurement read = readBytes(folder, text);
            const auto *list = std::get_if<MeasuredPeaks>(&read);
            QVERIFY2(list && list->title == u"file", text);
            QCOMPARE(listed(*list), QString::fromUtf8(expected));
            QVERIFY2(list->notes.join(u' ').contains(QString::fromUtf8(note)), text + list->notes.join(u' ').toUtf8());
        };
        for (const char *header : {"position,intensity", "ppm,intensity", "(ppm),I", "δ(1H),h", "Shift,Height", ""})
            row(QByteArray(header) + "\n10.5,3\n20.25,4\n", "10.5 =3; 20.25 =4", "list of 2 peaks");
        row("\"10.5\",\"3\"\n\"20.25\",\"4\"\n", "10.5 =3; 20.25 =4");
        row("δ(1H)\n10.5\n20.25\n", "10.5; 20.25");
        row("10.5\n20.25", "10.5; 20.25", "taken as ppm");
        row("21783.4\n6929.9\n", "21783.4; 6929.9", "if these are Hz");
        row("position,position_f1,height\n1.5,20,3\n2.5,30,4\n", "1.5/20 =3; 2.5/30 =4");
        row("position,height\n# c\n 10 , 2 # why\n\n-5,-1", "10 =2; -5 =-1");
        // Commas within numbers and between fields.
        row("C1\t170,2\nC2\t133,3\nC3\t21,5\n", "170.2 C1; 133.3 C2; 21.5 C3");
        row("C 1,170\nC 2,133\nC 3,21\n", "170 C 1; 133 C 2; 21 C 3");
        row("170,2 ppm\n133,3 ppm\n21,5 ppm\n", "170.2; 133.3; 21.5");
        row("170.2±0.1,5\n133.3±0.2,4\n", "170.2 =5; 133.3 =4", "Errors of the positions");
        row("8.2±0.1;120.1±0.2;5\n7.1±0.1;110.3±0.2;4\n", "8.2/120.1 =5; 7.1/110.3 =4");
        row("No. ppm\n3 170.2\n1 133.3\n2 21.5\n", "170.2; 133.3; 21.5");
        row("δH\tmult (J in Hz)\n7.26\td (7.1)\n3.1\ts\n", "7.26; 3.1");
        row("7.26 d 8.0 Hz\n3.1 t 7.0 Hz\n", "7.26 =8; 3.1 =7");
        row("1\r2", "1; 2");
        row("1\n2,3\n", "1; 2 =3", "without a height (1)");
        row("1,2\n5,\n3,4\n", "1 =2; 5; 3 =4", "without a height (1)"); // no decimal commas
        // Counts of some tell nothing of the others.
        for (const char *text :
             {"ppm,count\n150,1\n110,\n70,2\n", "ppm;count\n150;1\n110\n70;2\n", "ppm\tcount\n150\t1\n110\t\n70\t2\n"})
            row(text, "150; 110; 70", "told of 2 of the 3");
        row("3.5,60\n1.2,15,4\n", "3.5/60; 1.2/15 =4", "position in F2, position in F1");
        row("label,F2 (ppm),F1 (ppm),height\nA,3.5,60,2\nB,1.2,15,4\n", "3.5/60 =2 A; 1.2/15 =4 B");
        // Names of columns begin with an empty one, and the last field of a row may be empty.
        row("\tppm\tIntensity\tWidth\tType\tAnnotation\n1\t7.26\t500.5\t1.2\tSolvent\t\n2\t3.1\t300\t1\tCompound\tH1\n",
            "7.26 =500.5 Solvent; 3.1 =300 Compound H1", "not used: \"Width\"");
        row("No.\tppm\tHz\tHeight\n1\t173.2\t21783.4\t3\n2\t55.1\t6929.9\t1\n", "173.2 =3; 55.1");
        row("C1 173.2 ppm\nC2 \u22125.1 ppm\n", "173.2 C1; -5.1 C2");
        row("2,6-H\t7.45\n3,5-H\t7.12\n", "7.45 2,6-H; 7.12 3,5-H");
        row("Site;δ\nC1;170,2 ppm\nC2;133,3 ppm\n", "170.2 C1; 133.3 C2");
        row("ppm,Int,sites\n170.2,5,1\n133.3,4\n", "170.2 =5; 133.3 =4", "peaks: they were not used.");
        row("1H NMR (400 MHz) δ 7.26 (d, 2H), 4.12 (s).", "7.26; 4.12", "told of 1 of the 2");
        // Tables and running text of publications.
        row("Table S2. 1H shifts (ppm), 9.4 T\nH1 9.4\nH2 2.2(1)\nH3 1.15 ± 0.05\nH4 7.0–7.5\n",
            "9.4 H1; 2.2 H2; 1.15 H3; 7.25 H4", "Errors of the positions were left out. Ranges of shifts");
        row("| Site | δ (ppm) |\n|---|---|\n| C1 | 170.2 |\n| C2 | 133.3 |\n", "170.2 C1; 133.3 C2");
        row("C1 & 170.2 \\\\\nC2 & 133.3 \\\\\n", "170.2 C1; 133.3 C2");
        row("#\tppm\tHz\tIntensity\n1\t3.5\t350\t7\n2\t1.5\t150\t2\n3\t0.5\t50\t4\n", "3.5 =7; 1.5 =2; 0.5 =4",
            "not used: \"Hz\"");
        row("1H NMR, 400, CDCl3\n7.26, 3\n2.31, 9\n", "7.26 =3; 2.31 =9");
        row("¹³C NMR (101 MHz, DMSO-d₆) δ 170.2 (C-1), 133.3 (d, J = 12.3 Hz, C-2),\n128.0–127.6 (m, 2C) and 21.5 ppm. "
            "HRMS (ESI) calcd 123.4567.\n",
            "170.2 C-1; 133.3 C-2; 127.8; 21.5", "left out: \"HRMS");
        row("1H NMR (400 MHz, CDCl3): δ 7.26 (s, 1H, H-3), 2.31 (br s, 3H)\n", "7.26 H-3 #1; 2.31 #3");
        row("13C NMR (101 MHz): δ 170.2 (br. s, C-1), 133.3 (arom. CH), 21.5 (CH3). Mp 120 °C.",
            "170.2 C-1; 133.3 arom. CH; 21.5 CH3", "left out: \"Mp");
        row("The 13C CP/MAS NMR spectrum shows signals at 170.2, 133.3 and 21.5 ppm.", "170.2; 133.3; 21.5");
        row("13C NMR, 101 MHz, DMSO-d6, ppm 170.2, 133.3 (C2), 21.5\n", "170.2; 133.3 C2; 21.5");
        row("13C CPMAS: 170.2, 133.3, 21.5 ppm", "170.2; 133.3; 21.5", "the numbers of the only line");
        row("Atom,δ11,δ22,δ33,δiso\nC1,250,180,80.6,170.2\nC2,230,150,19.9,133.3\n", "170.2 C1; 133.3 C2");
        row("δiso = 170.1, 154.3 and 134.5 ppm", "170.1; 154.3; 134.5");
        // Without what stands before the shifts: brackets with letters tell them from columns.
        row("170.1 (s, C=O); 154.3; 134.5 (2C, d),\n20.4 ppm", "170.1 C=O; 154.3; 134.5; 20.4", "told of 1 of the 4");
        row("7.26 (s, 1H), 3.10 (s)", "7.26; 3.1", "told of 1 of the 2");
        row("δ 170.2, 133.3,", "170.2; 133.3");
        row("1H: 7.26 (s, 1H), 3.10 (s, 3H)", "7.26 #1; 3.1 #3");
        row("170.2(1), 133.3(2), 20.4(1)", "170.2; 133.3; 20.4", "Errors of the positions");
        row("170.2(1) (C1), 133.3(2) (C2)", "170.2 C1; 133.3 C2", "Errors of the positions");
        row("C1 170.2, C2: 133.3, CH3 = 20", "170.2 C1; 133.3 C2; 20 CH3");
        row("13C: C1 170,2(1); C2 133,3", "170.2 C1; 133.3 C2", "Errors of the positions");
        row("13C NMR: δ ca. 170.2 (C1), ~133.3(2) (C2), 20.4 (3).", "170.2 C1; 133.3 C2; 20.4 3",
            "Errors of the positions");
        row("δ/ppm\nca. 170.2\n≈133.3\n~20.4\n", "170.2; 133.3; 20.4");
        row("Site;ppm\nC1;ca. 170,2\nC2;~ 133,3\n", "170.2 C1; 133.3 C2");
        row("7.26 (s, 1 H) 3.10 (t, J = 7 Hz,\n3 H)", "7.26 #1; 3.1 #3", "names no unit");
        // Beside the shifts multiplets are no names, but names may stand behind them.
        row("Shift\tMult.\tSite\n170.1\ts\tC25\n22.7\tbr q\tC29\n", "170.1 C25; 22.7 C29");
        row("7.26 ppm (d, J = 8.1 Hz, 2H)\n3.1 ppm (s, 3H)\n", "7.26 #2; 3.1 #3");
        row("7.26\tdd (8.1, 2.0), H-3\n3.1\ts\n", "7.26 H-3; 3.1");
        row("ppm;Site\n170,1 (s);C25\n22,7 (br q);C29\n", "170.1 C25; 22.7 C29");
        row("ppm\tsite\n170.1\ts\n22.7\tq\n", "170.1 s; 22.7 q");
        row("170.1\ta\n22.7\td\n", "170.1 a; 22.7 d");
        row("3.5(1), 60(2)\n1.2(1), 15(2)\n", "3.5 =60; 1.2 =15");
        row("δF −110.2; −120.5 (m)", "-110.2; -120.5");
        row("δF −110.2 to −112.2 (m), −120.5–121.5 (m), 0.25–−0.75 (m)", "-111.2; -121; -0.25", "Ranges");
        row("F1 −110.2–112.2\nF2 −0.5–0.25\nF3 −1.5\n", "-111.2 F1; -0.125 F2; -1.5 F3", "Ranges");
        row("13C{1H} NMR (C6D6, 75.5 MHz): δ = 170,2; 133,3\n", "170.2; 133.3");
        // Shifts in one line; three numbers that do not fall may be the columns of a cross peak.
        for (const char *line : {"170.2, 133.3, 20.4", "170.2 133.3 20.4\n", "13C: 170,2; 133,3; 20,4",
                                 "170,2 133,3 20,4", "# from the paper\n[170.2, 133.3, 20.4]"})
            row(line, "170.2; 133.3; 20.4", "the numbers of the only line are shifts");
        row("20.4 133.3 150.1 170.2", "20.4; 133.3; 150.1; 170.2");
        row("8.1 120.5 3000", "8.1/120.5 =3000");
        QVERIFY(outcome("20.4 170.2 133.3 150.1").startsWith(u"line 1: four columns"_s));
        row("Atom A B\nC1 170.2 3\nC2 20.4 21\n", "170.2 =3 C1; 20.4 =21 C2",
            "Column \"B\" was taken as the intensity.");
        row("ppm\theight\n170.2\t\"1,234,567\"\n20.1\t300\n", "170.2 =1234567; 20.1 =300");
        // Commas of numbers, and commas between them.
        row("10,2\n20,1\n", "10 =2; 20", "\"10,2\" is a peak at 10");
        row("ppm\n173,2\n55,1\n", "173.2; 55.1");
        row("\"173,2\"\n\"55,1\"\n", "173.2; 55.1");
        row("173,2 C1\n55,1 C2\n", "173.2 C1; 55.1 C2");
        // Lists of other programs: names of several words, Hz and points beside ppm, settings above.
        row("   Assignment       w1       w2   Data Height\n\n  A1N-HN   110.5   8.25   300\n  G2N-HN   105.5   7.5   "
            "200\n",
            "8.25/110.5 =300 A1N-HN; 7.5/105.5 =200 G2N-HN");
        row(u"DU=/nmr, USER=me, NAME=x, EXPNO=10, PROCNO=1\nF1=220.0ppm, F2=-10.0ppm, MI=0.1cm, MAXI=99.0cm, PC=1.4\n\n  #   ADDRESS    FREQUENCY   INTENSITY\n              [Hz]    [PPM]\n\n  1   2411.2  17312.5  173.125   5.5\n  2   5411.5   5100.0   51.000  10.0\n  3   6200.0   2075.0   20.750   7.5\n"_s
                .toUtf8(),
            "173.125 =5.5; 51 =10; 20.75 =7.5", "number, point, Hz, ppm and height");
        row("Peak\tRegion\tIndex (F1)\tν(F1) [ppm]\tν(F1) [Hz]\tIntensity [abs]\tIntensity [rel]\tHalf width [ppm]\n"
            "1\t1\t2411.2\t173.125\t17312.5\t5500\t0.5\t0.4\n2\t1\t5411.5\t51\t5100\t9900\t1\t0.3\n",
            "173.125 =5500; 51 =9900", "\"Region\", \"Index (F1)\", \"ν(F1) [Hz]\", \"Intensity [rel]\", \"Half");
        row("Atom\tδiso (exp) / ppm\tσiso (calc) / ppm\tδiso (calc) / "
            "ppm\nC1\t170.2\t1.2\t169.1\nC2\t20.4\t152.1\t19.8\n",
            "170.2 C1; 20.4 C2", "not used: \"σiso (calc) / ppm\", \"δiso (calc) / ppm\"");
        row("1H NMR (500 MHz, CHLOROFORM-d) δ ppm 3.10 (d, J(HF)=3.5 Hz, 3 H) 7.26 (s, 1 H)", "3.1 #3; 7.26 #1");
        row("Atom\tδcalc (ppm)\nC1\t169.1\nC2\t19.8\n", "169.1 C1; 19.8 C2");
        row("Site δiso (ppm) ΔCSA (ppm) CQ/MHz η I (%)\nAl1 -10.5 20.1 5.1 0.3 55\nAl2 12.5 15.2 2.2 0.8 45\n",
            "-10.5 =55 Al1; 12.5 =45 Al2", "not used: \"ΔCSA (ppm)\", \"CQ/MHz\", \"η\"");
        row("δ (ppm)  I\n20.6 ± 0.1  5\n51.2 ± 0.2  10\n", "20.6 =5; 51.2 =10", "Errors of the positions");
        const QByteArray commas = "##TITLE= file\n##DATA TYPE= NMR PEAK TABLE\n##XUNITS= PPM\n##NPOINTS= 2\n"
                                  "##PEAK TABLE= (XY..XY)\n170,2 5,5\n133,3 4,5\n##END=\n";
        row(commas, "170.2 =5.5; 133.3 =4.5", "taken for decimal points");
        row(QByteArray(commas).replace("= 2", "= 4"), "170 =2; 5 =5; 133 =3; 4 =5");
        row(commas + commas, "170.2 =5.5; 133.3 =4.5", "2 spectra and lists of peaks");
        row(quoted(
                R"(<?xml version='1.0'?><PeakList><PeakList1D><Peak1D F1='173.2' intensity='2.5' type='0' annotation='C1'/> <Peak1D F1='55.1' intensity='1' type='0'/></PeakList1D></PeakList>)"),
            "173.2 =2.5 C1; 55.1");
    }

    /// A field that is no number, and fields that are empty.
    void oddFields()
    {
        const auto no = [](int line, const char *field) {
            return u"line %1: expected a number, found \"%2\""_s.arg(line).arg(QString::fromUtf8(field));
        };
        for (const char *odd : {"> 133", "n. b.", "133,3*", "Ca. 133"}) {
            for (const QByteArray &separator : {QByteArray(";"), QByteArray("\t")}) {
                QByteArrayList lines{"ppm;Int", "170,2;5", odd + QByteArray(";4"), "21,5;3", "20,5;2"};
                for (int place : {2, 1, 4}) {
                    std::swap(lines[2], lines[place]);
                    QCOMPARE(outcome(lines.join('\n').replace(";", separator)), no(place + 1, odd));
                    std::swap(lines[2], lines[place]);
                }
            }
        }
        const auto row = [](const QByteArray &text, const QString &expected) { QCOMPARE(outcome(text), expected); };
        row("ppm;Int\n170,2;5\n133,3;4\n21,5;3\nSumme;12\n", no(5, "Summe"));
        row("Nr\tppm\n1\t170,2*\n2\t133,3\n3\t21,5\n", no(2, "170,2*"));
        row("170,2*;5\n133,3;4\n", no(1, "170,2*"));
        row("Name;ppm;Int\nC1;170,2;5\nSum;;12\n", no(3, ""));
        row("Site,exp,calc\nC1,,171.2\nC2,133.3,132.3\nC3,21.5,22.5\n", no(2, ""));
        row("ppm;Int\n170,2;5\n133,3-134,1;4\n\xE2\x80\xAF"
            "21,5\xE2\x80\x89;3\n",
            u"170.2 =5; 133.7 =4; 21.5 =3"_s);
        // The first row is as good as any other one.
        row("Name\tppm\tInt\nC25\t170.2\t\nC13\t133.3\t5\nC29\t21.5\t6\n", u"170.2 C25; 133.3 =5 C13; 21.5 =6 C29"_s);
        row("Name\tppm\tInt\nC13\t133.3\t5\nC25\t170.2\nC29\t21.5\t6\n", u"133.3 =5 C13; 170.2 C25; 21.5 =6 C29"_s);
        for (const char *calculated : {"", "n.d.", "–"})
            row("Site,δexp,δcalc\nC1,170.2," + QByteArray(calculated) + "\nC2,133.3,132.3\nC3,21.5,22.5\n",
                u"170.2 C1; 133.3 C2; 21.5 C3"_s);
        for (const char *empty : {";;\n", ";;\n;;\n"})
            row("Probe 5;;\n;;\nName;ppm;Int\nC1;170,2;5\nC2;133,3;4\n" + QByteArray(empty),
                u"170.2 =5 C1; 133.3 =4 C2"_s);
        row("ppm,Int\n200,5\n190,n.a.\n180,4\n170,3\n", no(3, "n.a."));
        // Titles, which may hold numbers.
        row("Sample,7\nTemperature,298 K\n170.2,5\n133.3,4\n", u"170.2 =5; 133.3 =4"_s);
        row("Nucleus,13C\n170.2,5\n133.3,4\n", u"170.2 =5; 133.3 =4"_s);
        row("170.2 C1 br\n133.3 C2\n21.5 C3\n",
            u"line 1: expected 2 fields as in the lines below, found 3; if this is a title, begin it with #"_s);
        row("1' 170,2\n2' 133,3\n", u"170.2 1'; 133.3 2'"_s);
        // Columns with few numbers.
        row("2024 data\n170.2 5\n133.3 4\n",
            u"line 1: expected a number, found \"data\"; if this is a title, begin it with #"_s);
        row("Name;ppm;Int\nC1;170,2;\nC2;133,3;\nC3;21,5;6\n", u"170.2 C1; 133.3 C2; 21.5 =6 C3"_s);
        row("Site,ppm,Note\nC1,170.2,133.3\nC2,133.3,\nC3,21.5,\n", u"170.2 C1 133.3; 133.3 C2; 21.5 C3"_s);
        row("1;170,2;5\n2;133,3;\n3;21,5;3\n", u"170.2 =5; 133.3; 21.5 =3"_s);
        row("ppm,height\n170.2,strong\n133.3,weak\n", no(2, "strong"));
        // Marks of comments and quotes within fields.
        row("Number\t#\tPosition F1\tPosition F2\tHeight\n1\t1\t8.25\t120.5\t9\n2\t2\t7.5\t118.5\t5\n",
            u"120.5/8.25 =9; 118.5/7.5 =5"_s);
        row("Site,ppm,int\nC2\",170.2,5\n\"a \"\"q\"\", b\",133.3,4\n", u"170.2 =5 C2\"; 133.3 =4 a \"q\", b"_s);
    }

    /// Publications list the shifts of an atom, and of those bound to it, in one row.
    void severalNuclei()
    {
        const QByteArray rows = "C1,170.2,-,/C2,132.1,,/C3,123.4,7.2,/H4,n.d.,9.1,–/N1,,,135.5";
        const auto read = [](const QByteArray &names, QByteArray body, const QString &nucleus) {
            return outcome(names + '\n' + body.replace('/', '\n'), {0, nucleus, {}, {}});
        };
        const QByteArray markdown =
            "|Atom|13C|1H|15N|\n|:--|--:|---|---|\n|" + QByteArray(rows).replace(',', '|').replace("/", "|\n|") + '|';
        for (const auto &[nucleus, expected] :
             {std::pair(u"13C"_s, u"170.2 C1; 132.1 C2; 123.4 C3"_s), std::pair(u"1H"_s, u"7.2 C3; 9.1 H4"_s),
              std::pair(u"15N"_s, u"135.5 N1"_s)}) {
            QCOMPARE(read("Atom,13C,1H,15N", rows, nucleus), expected);
            QCOMPARE(read("Atom,δ(13C)/ppm,δ(1H)/ppm,δ(15N)/ppm", rows, nucleus), expected);
            QCOMPARE(outcome(markdown, {0, nucleus, {}, {}}), expected);
        }
        const Measurement named =
            readBytes(QTemporaryDir(), "No,type,13C,1H\n7,C,170.2,\n8,CH,123.4,7.2\n", {0, u"1H"_s, {}, {}});
        QVERIFY(std::get<MeasuredPeaks>(named).notes.contains(u"Rows without a shift of 1H (1) were left out: 7."_s));
        const QByteArray compared = "C1,170.2,171.1,,/C3,123.4,124.1,7.2,7.3";
        QCOMPARE(read("Atom,13C exp,13C calc,1H exp,1H calc", compared, u"1H"_s), u"7.2 C3"_s);
        QCOMPARE(read("Atom,13C calc,13C exp,1H calc,1H exp", compared, u"13C"_s), u"171.1 C1; 124.1 C3"_s);
        // Numbers may be those of atoms or of cross peaks.
        QCOMPARE(read("No,13C,1H", "1,170.2,/2,123.4,7.2", u"1H"_s), u"7.2"_s);
        QCOMPARE(read("No,1H,13C", "1,7.2,123.4/2,6.6,120", u"13C"_s), u"7.2/123.4; 6.6/120"_s);
        QCOMPARE(read("Atom,1H,13C,int", "C3,7.2,123.4,5/C4,6.6,120,4", u"13C"_s), u"7.2/123.4 =5 C3; 6.6/120 =4 C4"_s);
    }

    /// Differences, errors, widths and calculated shifts beside the shifts.
    void namesOfColumns()
    {
        const auto row = [](const QByteArray &header, const QByteArray &values, const char *expected) {
            QByteArrayList lines{header};
            for (const QByteArray &line : values.split('/'))
                lines.append(line);
            for (const QByteArray &separator : {QByteArray(","), QByteArray("\t"), QByteArray(" | ")})
                QCOMPARE(outcome(lines.join('\n').replace(",", separator)), QString::fromUtf8(expected));
        };
        for (const char *name : {"Δ", "Difference (ppm)", "Deviation (ppm)", "Δδ (ppm)", "Residual / ppm"}) {
            row("Site,exp,calc," + QByteArray(name), "C1,170.2,171.2,1.0/C2,133.3,132.3,-1.0", "170.2 C1; 133.3 C2");
            row("Site,δexp,δcalc," + QByteArray(name), "C1,170.2,171.2,1.0/C2,133.3,132.3,-1.0", "170.2 C1; 133.3 C2");
        }
        row("Site,exp,calc,LSR (ppm)", "C1,170.2,171.2,1.0/C2,133.3,132.3,-1.0", "170.2 C1; 133.3 C2");
        row("Atom,d(13C),mult", "1,170.5,C/2,133.5,CH", "170.5 1 C; 133.5 2 CH");
        row("Atom,δber / ppm,δexp / ppm", "C1,171.2,170.2/C2,132.3,133.3", "170.2 C1; 133.3 C2");
        row("exp,calc,ppm", "1,2,170.5/4,3,133.5", "170.5; 133.5 =4");
        for (const char *name : {"± (ppm)", "Fehler (ppm)", "Std (ppm)", "LB (ppm)", "Halbwertsbreite [ppm]", "δ(ber.)",
                                 "δ(theo.)", "Theor. Verschiebung (ppm)", "δ Form II (ppm)"})
            row("Atom,δ (ppm)," + QByteArray(name), "C1,170.2,1.5/C2,133.3,0.5", "170.2 C1; 133.3 C2");
        // Names tell the error, the standard or the span beside the shift.
        for (const char *name :
             {"δiso (±0.1 ppm)", "Shift (ppm) ± 0.1", "Chemical shift vs std (ppm)", "δ (ppm; std. TMS)"})
            row(name + QByteArray(",Int"), "170.2,5/133.3,4", "170.2 =5; 133.3 =4");
        for (const char *other : {"Ω (ppm)", "δQIS (ppm)", "δaniso (ppm)", "δCG (ppm)", "Range (ppm)", "MAE (ppm)", "κ",
                                  "Start (ppm)", "CASTEP (ppm)", "VASP δ"})
            row("Site," + QByteArray(other) + ",δiso (ppm)", "C1,150,170.2/C2,130,133.3", "170.2 C1; 133.3 C2");
        for (const char *calculated : {"CASTEP", "PBE", "calc.", "sim", "δ calc. (ppm)"})
            for (const char *measured : {"Exp.", "meas."})
                row("Site," + QByteArray(calculated) + ',' + measured, "C1,171.2,170.2/C2,132.3,133.3",
                    "170.2 C1; 133.3 C2");
        row("Site,calc,NMR", "C1,171.2,170.2/C2,132.3,133.3", "170.2 C1; 133.3 C2");
        row("Height,ChemShift", "5,170.2/4,133.3", "170.2 =5; 133.3 =4");
        row("Site,Linewidth (ppm),Intensity", "A,1.5,20/B,1.7,30",
            "line 2: none of the columns \"Site\", \"Linewidth (ppm)\", \"Intensity\" is named as that of the "
            "positions: a "
            "name such as \"ppm\" or \"δ\" in the header line tells which one it is");
        for (const char *position : {"Position", "Pos."})
            row(position + QByteArray(",δC"), "2,160.8/4,116.2/5,110.5", "160.8; 116.2; 110.5");
        row("Position,δC", "C1,160.8/C2,116.2", "160.8 C1; 116.2 C2");
        row("Site,δiso,|Δ|", "C1,170.2,1.0/C2,133.3,1.5", "170.2 C1; 133.3 C2");
        row("Nr.,Verschiebung,Intensität,Halbwertsbreite [Hz]", "1,170.5,10,50/2,133.5,20,60", "170.5 =10; 133.5 =20");
        row("δ1H,δ13C", "7.5,133.5/2.5,21.5", "7.5/133.5; 2.5/21.5");
        row("Signal,13C,1H", "C1,133.5,7.5/C2,21.5,2.5", "133.5/7.5 C1; 21.5/2.5 C2");
        row("ppm,13C", "170.5,10/133.5,20", "170.5 =10; 133.5 =20");
        row("No.,13C,DEPT,1H", "1,170.2,C,/2,133.5,CH,7.5/3,21.5,CH3,2.5", "line 2: expected a number, found \"\"");
        QCOMPARE(outcome("Position\tδC, type\tδH\n1\t170.2, C\t\n2\t133.3, CH\t7.26\n3\t21.5, CH3\t2.1\n"),
                 u"line 2: expected a number, found \"170.2, C\""_s);
        row("Position,δC,δH", "1,170.5,9.5/2,133.5,7.5/3,21.5,2.5", "170.5/9.5; 133.5/7.5; 21.5/2.5");
        QCOMPARE(
            outcome(
                "   Assignment    w1     w2   Data Height   lw1 (hz)   lw2 (hz)\n\n  A1N-HN  110.5  8.25  300  22.1  "
                "12.1\n  G2N-HN  105.5  7.5  200  20.5  11.5\n"),
            u"8.25/110.5 =300 A1N-HN; 7.5/105.5 =200 G2N-HN"_s);
    }

    /// A "#" may mark a comment or name the first column; what is no axis, another number of names, two structures
    /// side by side and tables that lie on their side are refused.
    void odd()
    {
        const auto row = [](const QByteArray &text, const char *expected) {
            const QString got = outcome(text), wanted = QString::fromUtf8(expected);
            QCOMPARE(got.startsWith(u"line "_s) ? got.left(wanted.size()) : got, wanted);
        };
        const char *const three = "170.2 =5; 133.3 =4; 20.4 =3";
        const auto numbered = [&](QByteArray text) { row(text.replace("_", "\t"), three); };
        numbered("#_ppm_Intensity_Annotation\n1_170.2_5_\n2_133.3_4_\n3_20.4_3_\n");
        numbered(
            "#_Address_Freq [Hz]_Freq [ppm]_Intensity\n1_12_17128_170.2_5\n2_15_13415_133.3_4\n4_30_2053_20.4_3\n");
        numbered("# ppm Intensity Width Annotation\n1_170.2_5_1.2_\n2_133.3_4_1.2_\n3_20.4_3_1_\n");
        row("#,ppm,Hz,Int,\n1,170.2,17128.9,5,\n2,133.3,13415.4,4,\n", "170.2 =5; 133.3 =4");
        row("#\tppm\n1\t170\n2\t133\n", "170; 133");
        row("#\tppm\tInt\n170\t5\t\n133\t4\t\n", "170 =5; 133 =4");
        row("# ppm Int\n170 5\n133 4\n", "170 =5; 133 =4");
        // A minus of print may have a blank behind it; a hyphen there may be any dash.
        for (const char *text :
             {"T1 − 110.2\nT2 101.3\n", "T1\t− 110.2\nT2\t101.3\n", "T1,−\u2009110.2\nT2,101.3\n",
              "T1;- 110.2\nT2;101.3\n", "T1 & $- 110.2$ \\\\[2pt]\nT2 & $101.3$ \\\\\n\\bottomrule\n"})
            row(text, "-110.2 T1; 101.3 T2");
        for (const char *text : {"T1 - 110.2\nT2 - 101.3\n", "- 110.2\n- 101.3\n"})
            row(text, "line 2: a minus must stand right before its number");
        row("29Si MAS NMR: δ = − 110.2, − 101.3 ppm", "-110.2; -101.3");
        row("T1 −110.2 to −110.8\nT2 101.1 – 101.3\n", "-110.5 T1; 101.2 T2");
        row("C1 170.2 – 0.5\nC2 133.3 – 0.7\n", "170.2 =0.5 C1 –; 133.3 =0.7 C2 –");
        row("77Se NMR: δ 1,234.5, 890.1", "1234.5; 890.1");
        row("1H NMR δ 7.26 (s, 1H); 3,10 (s, 3H)",
            "line 1: expected a shift such as 7.26 or 7.26 (2H), found \"3,10\"");
        row("1H NMR δ 7,26 (d, J = 8.2 Hz); 3,10 (s)", "7.26; 3.1");
        // Atoms by symbol and number.
        row("C 1 170.2\nC 2 133.3\nN 1 21.5\n", "170.2 C 1; 133.3 C 2; 21.5 N 1");
        row("C 170 0.53\nC 133 1\nN 35 0.7\n", "170 =0.53 C; 133 C; 35 =0.7 N");
        // F1 has several names.
        for (const char *names :
             {"δF1,δF2", "δ1,δ2", "DQ (ppm),SQ (ppm)", "Indirect (ppm),Direct (ppm)", "ω1 (ppm),ω2 (ppm)"})
            row(names + QByteArray("\n120.1,8.4\n118.2,7.5\n"), "8.4/120.1; 7.5/118.2");
        for (const char *names :
             {"Point,Intensity", "Time,Real", "Zeit/ms,FID", "Field (T),Amplitude", "2theta,Intensity"})
            row(names + QByteArray("\n1,5\n2,7\n3,9\n"), "line 2: none of the columns ");
        row("C1 170.2,5\nC2 133.3,4\n", "line 1: expected a number, found \"C1 170.2\"");
        row("17120.12 Hz,5\n13409.98 Hz,4\n", "line 1: expected a number, found \"Hz,5\"");
        row("ppm,Int\n1,702,5\n1,333,4\n", "line 1: 2 names of columns stand above rows of 3 fields");
        row("Site\tForm I\tForm II\nC1\t170.2\t171.2\nC2\t133.3\t134.3\n", "line 2: none of the columns ");
        row("Atom\t1\t2\nC1\t170.2\t171.2\nC2\t133.3\t134.3\n", "line 1: 2 columns of numbers need a header line");
        for (const char *text :
             {"δ/ppm\t170.2\t133.3\t20.4\nI\t5\t4\t3\n", "exp,170.2,133.3,20.4\ncalc,171.2,134.3,21\n"})
            row(text, "line 1: the table lies on its side, one peak a line was expected");
        for (const char *text : {"C1;−60,7\nC2;−62,65\n", "C1\t–60,7\nC2\t–62,65\n", "C1 −60,7\nC2 −62,65\n",
                                 "−60,7 | C1\n−62,65 | C2\n", "−60,7(1) C1\n−62,65(2) C2\n"})
            row(text, "-60.7 C1; -62.65 C2");
        row("160,59(1)\n121,10(2)\n", "160.59; 121.1");
        row("160.59(1)\n7(1)\n", "160.59; 7");
        row("ppm,fit,exp,diff\n170.2,5,6,1\n133.3,4,3,1\n", "170.2 =6; 133.3 =3");
        row("calc ppm,calc int,exp ppm,exp int\n171,9,170.2,5\n132,8,133.3,4\n", "170.2 =5; 133.3 =4");
        for (const char *line :
             {"# 13C on a 400 MHz spectrometer", "# 13C, 100.577 MHz, CQ = 3.2 MHz", "# 13C, Frequency (MHz): 100.577"})
            QVERIFY(outcome(line + QByteArray("\nHz,Int\n17117,5\n13400,4\n")).startsWith(u"170.1"_s));
        row("29Si NMR (CDCl3): δ (ppm)\n–66.37, –132.85.", "-66.37; -132.85");
        row("Atom,δ,nH\nA,3.5,3\nB,1.2,2\n", "3.5 A #3; 1.2 B #2");
        row("C1,170.2\nC2,133.3\nMax,2.5\nRMSD,1.2\n", "170.2 C1; 133.3 C2");
        row("std 0\nC1 170\nmax 20\n", "0 std; 170 C1; 20 max");
        // What looks alike and is something else.
        row("#\tppm\n170.2\t5\n133.3\t4\n", "170.2 =5; 133.3 =4");
        row("Atom exp lit calc\nC1 170.2 - 171.0\nC2 133.3 133.9 134.1\nC3 20.4 20 21\n",
            "170.2 C1; 133.3 C2; 20.4 C3");
        row("No. Assign ppm Int\n1 - 170.2 5\n2 C2 133.3 4\n", "170.2 =5 -; 133.3 =4 C2");
        row("# 13C\n170.2 5\n133.3 4\n# CP from 1H, 2 ms\n", "170.2 =5; 133.3 =4");
        row("F1 -110.2 5\nF2 -101.3 4\n", "-110.2 =5 F1; -101.3 =4 F2");
        row("C 21 1234.5\nC 133 2345.6\nC 170 999.1\n", "21 =1234.5 C; 133 =2345.6 C; 170 =999.1 C");
        row("high field shift (ppm),Int\n-5,3\n-7,4\n", "-5 =3; -7 =4");
        row("ppm,delay 1,delay 2\n170,5,3\n133,4,2\n", "170 =5; 133 =4");
        row("A - -110.2\nB - -101.3\n", "-110.2 A -; -101.3 B -");
        row("Atom,δ1,δ2\nC1,170.2,171.1\nC2,133.3,134\n", "170.2 C1; 133.3 C2");
        row("Field (ppm),Intensity\n170.2,5\n133.3,4\n", "170.2 =5; 133.3 =4");
        row("13C NMR chemical shift/ppm, intensity\n170.2, 5\n", "170.2 =5");
        row("#,\n170.2,5\n133.3,4\n", "170.2 =5; 133.3 =4");
        row("2,6\t128.1\n3,5\t130.2\n4\t133.3\t7\t8\n", "line 3: expected 2 fields as in the lines before, found 4");
        row("Residue,NH\nA1,8.25\nG2,7.9\n", "8.25 A1; 7.9 G2");
        row("13C{1H} NMR: δ 170.2¹, 133.3", "line 1: expected a shift such as 7.26 or 7.26 (2H), found \"170.2¹\"");
        row("1H data\n13C NMR: δ 170.2, 133.3", "170.2; 133.3");
        // Groups of digits that begin behind the lines that tell what the columns are.
        QByteArray many = "ppm;Int\n";
        for (int i = 0; i < 1200; ++i)
            many += QByteArray::number(1200 - i) + ",5;" + (i == 1100 ? "200.300" : "99") + '\n';
        const QTemporaryDir folder;
        const auto spectrum = std::get<ExperimentalSpectrum>(readBytes(folder, many));
        QCOMPARE(*std::max_element(spectrum.data.begin(), spectrum.data.end()), 200300);
        row("# 13C\n170.2 5\n133.3 4\n# 1H\n7.2 3\n", "line 4: there is more than one list of shifts");
    }

    /// A mark between groups of digits is one in all of its column.
    void groupedDigits()
    {
        const auto row = [](const QByteArray &text, const char *expected) {
            QCOMPARE(outcome(text), QString::fromUtf8(expected));
        };
        const char *const three = "170.2 =1234.5; 133.3 =2000; 21.5 =999.1";
        row("ppm;Int\n170,2;1.234,5\n133,3;2.000,0\n21,5;999,1\n", three);
        row("\"ppm\";\"Int\"\n\"170,2\";\"1.234,5\"\n\"133,3\";\"2.000,0\"\n\"21,5\";\"999,1\"\n", three);
        row("ppm,Int\n170.2,\"1,234.5\"\n133.3,\"2,000.0\"\n21.5,999.1\n", three);
        for (const char *mark : {"'", "\xE2\x80\x99", " ", "\xC2\xA0", "\xE2\x80\xAF"})
            row(QByteArray("ppm\tInt\n170.2\t1_234.5\n133.3\t2_000.0\n21.5\t999.1\n").replace("_", mark), three);
        row("ppm,Int\n170.2,\"8,453\"\n133.3,\"9,990,100\"\n", "170.2 =8453; 133.3 =9990100");
        row("ppm\tInt\n170.2\t1,234\n133.3\t999\n", "170.2 =1234; 133.3 =999");
        row("ppm;Int\n170,2;1.234\n133,3;999\n", "170.2 =1234; 133.3 =999");
        row("ppm;Int\n170,2;0.844\n133,3;1.007\n", "170.2 =0.844; 133.3 =1.007");
        row("ppm;Int\n170,256;5\n133,312;4\n", "170.256 =5; 133.312 =4");
        row("ppm;Int\n170.256;5,5\n133.312;4,5\n", "170.256 =5.5; 133.312 =4.5");
        row("ppm\tInt\n170.2\t50%\n133.3\t100 %\n", "170.2 =50; 133.3 =100");
        row("ppm;Int\n170,123;1.234\n133,456;2.345\n", "170.123 =1234; 133.456 =2345");
        row("Site\tppm\nC1\t170.2\nC2,C6\t128 127\n", "line 3: expected a number, found \"128 127\"");
        row("ppm;Int\n170,2;1.234.567\n133,3;12.5\n", "line 3: expected a number, found \"12.5\"");
        QByteArray text = "ppm;Intensität\n";
        for (int i = 0; i < points; ++i)
            text += QByteArray::number(position(i), 'f', 4).replace('.', ',') + (i == 9 ? ";9.986.118\n" : ";8.555\n");
        const Measurement read = readBytes(QTemporaryDir(), text);
        const auto &spectrum = std::get<ExperimentalSpectrum>(read);
        QCOMPARE(spectrum.data[9], 9986118.0);
        QCOMPARE(spectrum.data[63], 8555.0);
        QCOMPARE(spectrum.dimensions[0].ppm(9), 95.5);
    }

    /// Titles and comments above the rows, of which the nearest may be their names.
    void linesAbove()
    {
        const char *const peaks = "170.2 =5; 133.3 =4";
        for (const char *title :
             {"# LB 20", "# Phase corrected", "Residual spectrum", "# Integral region", "# LB [Hz] 20",
              "# peak assignment", "# 13C, linewidth 20", "# carrier offset in Hz: 1000, 100.6 MHz",
              "# Chemical shifts", "# 13C shifts", "Peak positions", "LB 20", "1H MAS, 60 kHz"}) {
            for (const char *names : {"", "ppm_intensity\n", "Shift_Height\nppm_a.u.\n"}) {
                for (const char *separator : {",", "\t", ";", " "}) {
                    QByteArray text = QByteArray(title) + '\n' + names + "170.2_5\n133.3_4\n";
                    QCOMPARE(outcome(text.replace("_", separator)), QString::fromUtf8(peaks));
                }
            }
        }
        for (const char *remark : {"\tsample 1\n", "\t13C CPMAS 10 kHz\n", "Comments\tGlycine 10 kHz\n"})
            QCOMPARE(outcome("Chemical Shift\tIntensity\nppm\ta.u.\n" + QByteArray(remark) + "170.2\t5\n133.3\t4\n"),
                     QString::fromUtf8(peaks));
        QCOMPARE(outcome("CSA\tδiso\nppm\tppm\n120\t170.2\n110\t133.3\n"), u"170.2; 133.3"_s);
        QCOMPARE(outcome("Site\t13C\t1H\n\tδ / ppm\tδ / ppm\nC1\t170.2\t7.5\nC2\t133.3\t2.5\n"),
                 u"170.2/7.5 C1; 133.3/2.5 C2"_s);
        for (const char *names : {"No. ppm", "Peak ppm", "ppm int"})
            QCOMPARE(outcome(names + QByteArray("\n1 170.2 5\n2 133.3 4\n3 21.5 3\n")),
                     u"170.2 =5; 133.3 =4; 21.5 =3"_s);
        // The position of the first row is as good as that of any other one.
        for (const char *first : {"174.2 br 5", "174 nd", "7.26 1H s", "174.2 5 K", "174.2 9.4 T", "64"})
            QVERIFY(outcome(first + QByteArray("\n133.3 4\n21.5 3\n")).startsWith(u"line 1: expected "));
        const Measurement read = readBytes(QTemporaryDir(), "my sample\nMonday\nppm,int\n170.2,5\n");
        QVERIFY(std::get<MeasuredPeaks>(read).notes.contains(
            u"Lines above the table that were passed over (2): \"my sample\", \"Monday\"."_s));
    }

    void nuclei()
    {
        for (const auto &[text, nucleus] :
             {std::pair(QByteArray("# T=298K\n170.2\n133.3\n"), u""_s),
              {"# LB = 100Hz\nppm,int\n170.2,1\n133.3,2\n", u""_s},
              {"# 16K points of 13C, 298K\n170.2\n133.3\n", u"13C"_s},
              {"δC\n170.2\n133.3\n", u"13C"_s},
              {"¹³C NMR: δ 170.2, 133.3\n", u"13C"_s},
              {"¹⁰B NMR: δ 17.2, 13.3\n", u"10B"_s},
              {quoted("##TITLE= a\n##DATA TYPE= NMR PEAK TABLE\n##.OBSERVE NUCLEUS= 13C{1H}\n##XUNITS= PPM\n"
                      "##YUNITS= ARB\n##PEAK TABLE= (XY..XY)\n173.2, 5\n##END=\n"),
               u"13C"_s}})
            QCOMPARE(std::get<MeasuredPeaks>(readBytes(QTemporaryDir(), text)).nuclei[0], nucleus);
        for (const auto &[label, nucleus] : {std::pair("298K", u""_s), {"100K, 27Al", u"27Al"_s}}) {
            const QByteArray csdm = quoted(
                QByteArray(
                    "{'csdm': {'version': '1.0', 'dimensions': [{'type': 'linear', 'count': 4, 'increment': '1 Hz', "
                    "'origin_offset': '100 MHz', 'label': '")
                + label
                + "'}], 'dependent_variables': [{'type': 'internal', 'numeric_type': 'float64', 'encoding': 'none', "
                  "'quantity_type': 'scalar', 'components': [[1, 2, 3, 4]]}]}}");
            QCOMPARE(std::get<ExperimentalSpectrum>(readBytes(QTemporaryDir(), csdm)).dimensions[0].nucleus, nucleus);
        }
        const Measurement read = readBytes(QTemporaryDir(), "13C, 100,6 MHz\nHz\tInt\n17102\t1\n10060\t2\n");
        QCOMPARE(listed(std::get<MeasuredPeaks>(read)), u"170; 100 =2"_s);
    }

    void refusals()
    {
        const QTemporaryDir folder;
        const auto row = [&](const QByteArray &message, const QByteArray &text) {
            QCOMPARE(failure([&] { readBytes(folder, text); }), folder.filePath(u"file"_s).toUtf8() + message);
        };
        const auto foreign = [](const QByteArray &name) {
            return ": this is data of " + name
                + R"(, which cannot be read here: open it in the software that it belongs to and export the processed spectrum as JCAMP-DX (.jdx) or as text with ppm and intensity)";
        };
        const QByteArray nothing =
            R"(: this is no measurement that can be read: expected a Bruker folder or its file 1r or 2rr, JCAMP-DX, CSDM, SIMPSON or text with ppm and intensity)";
        QByteArrayList lines = table({}, "ppm,intensity\n").split('\n');
        const auto changed = [&](int line, const QByteArray &text) {
            QByteArrayList copy = lines;
            copy[line] = text;
            return copy.join('\n');
        };
        row(", line 22: expected a number, found \"89.5x\"", changed(21, "89.5x,1"));
        row(", line 22: expected 2 fields as in the lines before, found 1", changed(21, "89.5"));
        row(", line 22: expected 2 fields as in the lines before, found 3", changed(21, "89.5,1,2"));
        row(", line 23: the points are not evenly spaced: 89.5 follows 90.5 where the step is -0.5", changed(21, ""));
        row(R"(, line 2: the positions are in Hz: the frequency of 0 ppm in MHz is needed to make ppm of them and must be given)",
            table({}, "Hz,intensity\n"));
        row(", line 2: the positions are frequencies without a unit: ppm, Hz or kHz must be given",
            table({}, "frequency,intensity\n"));
        row(R"(, line 1: the first column counts the points, a position in ppm or Hz was expected; if these are positions, say so in a header line "ppm,intensity")",
            columns("ny"));
        row(", line 1: 5 columns of numbers need a header line that names them, such as \"ppm,intensity\"",
            columns("xyiii"));
        row(": the data end after 1 points where 4 were announced",
            "# LEFT = 9 ppm. RIGHT = 2 ppm.\n# SIZE = 4 ( = number of points)\n1\n");
        row(", line 1: a row has 128 fields: a position and an intensity a line were expected",
            table({" ", '.', "", " "}));
        row(", line 2: expected a number, found \"3-4.5\"", "F1 1.5\nF2 3-4.5\nF3 3.5\n");
        row(": the file holds no peaks", "# nothing\n");
        row(", line 1: expected a number, found \"12.3abc\"", "12.3abc\n");
        row(", line 1: expected a number, found \"inf\"", "1,inf\n");
        row(", line 2: expected a shift such as 7.26 or 7.26 (2H), found \"foo\"",
            "In CDCl3:\n13C NMR: δ 170.2, foo, 133.3\n");
        row(", line 1: there is more than one list of shifts: each needs a file of its own",
            "1H NMR δ 9.7 (1H), 7.3 (2H), 6.7\n13C NMR δ 168.1, 153.0\n");
        row(", line 1: there is more than one list of shifts: each needs a file of its own",
            "1H NMR δ 7.2, 7.1. 13C NMR (100 MHz) δ 120.1, 119.2.\n");
        row(", line 1: expected a number, found \"CPMAS: 170.2\"", "CPMAS: 170.2, 133.3, 21.5 ppm\n");
        row(", line 1: no table of numbers was found, expected \"ppm,intensity\" or peaks",
            "Dear all,\nplease find 3 peaks below.\nRegards\n");
        row(", line 1: no table of numbers was found, expected \"ppm,intensity\" or peaks",
            "Dear colleague,\nthe spectrum\nfollows\n");
        row(": the positions are in Hz: the frequency of 0 ppm in MHz is needed to make ppm of them and must be given",
            "SIMP\nNP=2\nSW=800\nTYPE=SPE\nDATA\n1 0\n2 0\nEND\n");
        row(", line 1: peaks of one and of two dimensions are mixed",
            quoted(
                R"(<?xml version='1.0'?><PeakList><Peak1D F1='1' intensity='1'/><Peak2D F1='1' F2='1' intensity='1'/> </PeakList>)"));
        row(foreign("JEOL Delta (.jdf)"), QByteArray("JEOL.NMR\0\0", 10));
        row(": this is a calculation (MAGRES), a measurement was expected",
            "#$magres-abinitio-v1.0\n[atoms]\natom H H 1 0 0 0\n");
        row(foreign("UCSF (Sparky)"), QByteArray("UCSF NMR\0\2", 10));
        row(foreign("NMReDATA"), "x\n>  <NMREDATA_1D_13C>\n173.2, L=C1\\\n");
        row(nothing, quoted("\n{'spectra': [{'x': [1, 2, 3], 'y': [4, 5, 6]}]}"));
        row(nothing, "<?xml version='1.0'?>\n<nmrML>\n1 2\n3 4\n</nmrML>\n");
        row(foreign("ssNake"), quoted("{'dataReal': [1, 2], 'freq': [1]}"));
        row(R"(, line 1: four columns without names were expected to be number, intensity, Hz and ppm; a header line such as "ppm,intensity" tells what they are)",
            "1 2 3 4.5\n2 3 4 5.5\n3 4 5 7.5\n");
        row(R"(, line 2: a single column of numbers without a name: intensities have no axis here; if these are positions of peaks, say so in a header line "ppm")",
            "\n" + QByteArray("1.5\n").repeated(257));
        for (const QByteArray count : {"0", "1.5", "100001"})
            row(", line 3: expected a count of sites from 1 on, found " + count,
                "ppm,count\n8,100000\n9," + count + "\n");
        const auto grid = [](int rows, int columns, int wrong, int left) {
            QByteArray text = "ppm_f2,ppm_f1,intensity\n";
            for (int i = 0; i < rows * columns - left; ++i)
                text += QByteArray::number(9 - i % columns + (i == wrong ? 0.125 : 0)) + ','
                    + QByteArray::number(50 - i / columns) + ",1\n";
            return text;
        };
        row(", line 22: expected rows of 8 points with the same positions", grid(5, 8, 20, 0));
        row(": 39 points do not make two or more rows of 8 points", grid(5, 8, -1, 1));
        row(", line 34: expected rows of 11 points with the same positions",
            grid(4, 11, -1, 0).replace("-1,48,1\n", ""));
        const QByteArray region = "# LEFT = 9 ppm. RIGHT = 8.5 ppm.\n# SIZE = 2\n1\n";
        row(R"(: the positions are in Hz: the frequency of 0 ppm in MHz is needed to make ppm of them and must be given)",
            QByteArray(region).replace("ppm", "Hz"));
        row(", line 5: there are more points than the 2 announced", region + "2\n3\n");
        row(", line 4: expected one intensity, found \"1 2\"", region + "1 2\n");
        row(": 1 × 1 points cannot be", QByteArray(region).replace("= 2", "= 1"));
        QByteArray uneven = "ppm,intensity\n";
        for (int i = 0; i < 2001; ++i)
            uneven += QByteArray::number(i * i) + ",1\n";
        row(", line 2: the points are not evenly spaced: 0 follows 0 where the step is 2001", uneven);
    }

    /// Data of other software, known by their names and their files, and what to do with them.
    void foreignData()
    {
        QByteArray pipe(2048, '\0');
        qToLittleEndian<float>(2.345f, pipe.data() + 8);
        for (const auto &[files, contents, opened, message] :
             {std::tuple("s.fid/fid s.fid/procpar", QByteArray("x"), "s.fid", "Varian/Agilent"),
              {"s.fid/fid s.fid/procpar", "x", "s.fid/fid", "Varian/Agilent"},
              {"10/fid 10/acqus", "x", "10", "process them in TopSpin"},
              {"11/ser 11/acqus", "x", "11/ser", "process them in TopSpin"},
              {"m/acqu.par m/data.1d", "x", "m", "Magritek"},
              {"data.1d", "x", "data.1d", "Magritek"},
              {"s.mnova", "x", "s.mnova", "MestReNova"},
              {"s.nmrium", "{\"spectra\": []}", "s.nmrium", "NMRium"},
              {"s.mat", "MATLAB 5.0 MAT-file", "s.mat", "ssNake"},
              {"s.xlsx", "PK\x03\x04", "s.xlsx", "a spreadsheet, which cannot"},
              {"s.zip", "PK\x03\x04", "s.zip", "unpack it"},
              {"s.ft2", pipe, "s.ft2", "NMRPipe"}}) {
            const QTemporaryDir folder;
            for (const QString &file : QString::fromLatin1(files).split(u' ')) {
                QVERIFY(QDir(folder.path()).mkpath(QFileInfo(file).path()));
                writtenFile(folder, file, contents);
            }
            const QString path = folder.filePath(QLatin1String(opened));
            const QString found = QString::fromUtf8(failure([&] { readMeasurement(path); }));
            QVERIFY2(found.contains(QLatin1String(message)), qPrintable(found));
        }
    }

    // --- calculations

    /// Repaired to nothing: left alone.
    void repairs()
    {
        const auto row = [](const char *name, const QByteArray &text, const QByteArray &repaired) {
            const MagresCheck::Findings findings = MagresCheck::examine(text);
            QVERIFY2(findings.repaired == repaired, name + findings.repaired);
            const QString told = findings.warnings.join(u' ');
            QVERIFY2(told.contains(u"taken apart") == (!repaired.isEmpty() && text.contains('\n')), name);
            if (qstrcmp(name, "both kinds") == 0)
                QCOMPARE(
                    told,
                    u"Label and index stand together in 2 records (the first one: C100 in line 13); they were taken apart, each in the only way that names an atom of the file."_s);
            QVERIFY2(repaired.isEmpty() || MagresCheck::examine(repaired).repaired.isEmpty(), name);
        };
        QByteArray fused = usual();
        fused.replace("ms C 100", "ms C100").replace("efg C 100", "efg C100");
        row("nothing to repair", usual(), {});
        row("both kinds", fused, usual());
        row("Windows", QByteArray(fused).replace("\n", "\r\n"), usual().replace("\n", "\r\n"));
        row("angle brackets and tabs", QByteArray(fused).replace("[", "<").replace("]", ">").replace(" ", "\t"),
            usual()
                .replace("[", "<")
                .replace("]", ">")
                .replace(" ", "\t")
                .replace("ms\tC\t", "ms\tC ")
                .replace("efg\tC\t", "efg\tC "));
        row("lines of old Macs", usual().replace('\n', '\r'), usual());
        row("the atoms last", head + magresBlock("ms C100" + tensor) + atomsBlock(atom("C", 100)),
            head + magresBlock("ms C 100" + tensor) + atomsBlock(atom("C", 100)));

        const auto one = [&](const QByteArray &name, const QByteArray &atoms) {
            return head + atomsBlock(atoms) + magresBlock("ms " + name + tensor);
        };
        row("a label with a digit", one("H1100", atom("H1", 100) + atom("H", 1)),
            one("H1 100", atom("H1", 100) + atom("H", 1)));
        row("two ways to take it apart", one("H1100", atom("H1", 100) + atom("H", 1100)), {});
        row("no such atom", one("H101", atom("H", 100)), {});
        row("one of two is not certain",
            head + atomsBlock(atom("H", 100) + atom("H", 101)) + magresBlock("ms H100" + tensor + "ms H102" + tensor),
            {});
        row("an index does not begin with 0", one("H100", atom("H1", 0)), {});
        row("another fault", one("H100 x", atom("H", 100)), {});
        row("records of a block that nobody reads",
            head + atomsBlock(atom("H", 100)) + "[other]\nms H100" + tensor + "[/other]\n", {});
    }

    /// All there are.
    void warnings()
    {
        const auto row = [](const char *name, const QByteArray &text, const QStringList &warnings) {
            const QStringList found = MagresCheck::examine(text).warnings;
            QVERIFY2(found == warnings, name + found.join(u'\n').toUtf8());
        };
        const QByteArray atoms = atomsBlock(atom("H", 1) + atom("C", 1)),
                         tensors = magresBlock("ms H 1" + tensor + "ms C 1" + tensor);
        row("none", usual(), {});
        row("angle brackets, a closing mark of the other kind",
            head + QByteArray(atoms).replace("[atoms]", "<atoms>") + tensors, {});
        row("no atoms", head + magresBlock({}),
            {u"There is no block [atoms]."_s,
             u"There is neither a shielding (ms) nor an electric-field gradient (efg)."_s});
        row("no tensors", head + atoms, {u"There is no block [magres]."_s});
        row("cut off", head + atoms + QByteArray(tensors).replace("[/magres]\n", ""),
            {u"The block [magres] that begins in line 9 is not closed: the file may have been cut off."_s});
        row("swallowed", head + QByteArray(atoms).replace("[/atoms]\n", "") + tensors,
            {u"The block [atoms] that begins in line 2 is not closed where [magres] begins in line 8, which was therefore read as a part of it."_s});
        row("twice", head + atoms + atoms + tensors,
            {u"There are 2 blocks [atoms]: the atoms of all of them were read as one structure."_s,
             u"Atoms with the label and index of another one: 2 (the first one H 1). Their tensors cannot be told apart."_s});
        row("no elements",
            head + atomsBlock(atom("H", 1, "H:1") + atom("C", 1) + atom("D", 1) + atom("CL", 1, "CL")) + tensors,
            {u"Atoms of a species that is no element or has no isotopes with a spin: 3 (the first one H:1). They are missing in spectra."_s,
             u"Atoms without ms: 2 of 4 (the first one D 1)."_s});
        row("beyond Latin-1",
            head + atomsBlock(atom("C\u03b1", 1, "C") + atom("C\u03b2", 1, "C") + atom("C\u00e9", 1, "C"))
                + magresBlock("ms C\u03b1 1" + tensor + "ms C\u03b2 1" + tensor + "ms C\u00e9 1" + tensor),
            {u"Labels with characters beyond Latin-1, each of which is read as a question mark: 2 (the first one C\u03b1). They may not be told apart."_s,
             u"Atoms with the label and index of another one: 1 (the first one C? 1). Their tensors cannot be told apart."_s,
             u"Atoms with more than one ms: 1 of 2 (the first one C? 1). Of their tensors the one that compares lowest, element by element, counts."_s});
        row("no numbers",
            head + QByteArray(atoms).replace("0 0 1\n", "0 inf 1\n") + QByteArray(tensors).replace(" 31 ", " -NaN "),
            {u"Records with \"nan\" or \"inf\" for a number: 4 (the first one atom H 1). They count as missing where a spectrum is made."_s});
        row("orphans",
            head + atoms + magresBlock("ms H 1" + tensor + "ms C 1" + tensor + "ms C 2" + tensor + "efg N 1" + tensor),
            {u"Tensors that belong to no atom of the file: 2 (the first one ms C 2)."_s,
             u"Atoms without efg: 2 of 2 (the first one H 1)."_s});
        row("more than one", head + atoms + tensors + magresBlock("ms C 1" + tensor + "ms C 1" + tensor),
            {u"Atoms with more than one ms: 1 of 2 (the first one C 1). Of their tensors the one that compares lowest, element by element, counts."_s});
        const QString order =
            u"The block [atoms] has to stand before [magres], and an index without a sign or leading zeros."_s;
        const QByteArray labelled = atomsBlock(atom("C1", 1, "C") + atom("C11", 1, "C")),
                         ofLabelled = magresBlock("ms C1 1" + tensor + "ms C11 1" + tensor);
        row("labels in order", head + labelled + ofLabelled, {});
        row("labels that come second", head + ofLabelled + labelled,
            {u"Tensors that do not reach the atom that they name: 2 (the first one ms C1 1). "_s + order,
             u"Atoms without ms: 1 of 2 (the first one C1 1)."_s});
        row("elements that come second", head + tensors + atoms, {});
        row("leading zeros", head + atoms + magresBlock("ms H 01" + tensor + "ms C 1" + tensor),
            {u"Tensors that do not reach the atom that they name: 1 (the first one ms H 01). "_s + order,
             u"Atoms without ms: 1 of 2 (the first one H 1)."_s});
        row("leading zeros behind labels", head + labelled + QByteArray(ofLabelled).replace(" 1 ", " 01 "), {});
        row("without", head + atoms + magresBlock("ms H 1" + tensor),
            {u"Atoms without ms: 1 of 2 (the first one C 1)."_s});
        row("no units", QByteArray(head + atoms + tensors).replace("units", "#nits"),
            {u"Units that were not checked: lattice has none, taken as Angstrom, atom has none, taken as Angstrom, ms has none, taken as ppm."_s});
        row("other units", QByteArray(head + atoms + tensors).replace("lattice Angstrom", "lattice Bohr"),
            {u"Units that were not checked: lattice in Bohr, taken as Angstrom."_s});
        row("units that come second",
            QByteArray(head + atoms + tensors).replace("units ms ppm", "units ms ppm\nunits ms au"),
            {u"Units that were not checked: ms in au, taken as ppm."_s});
    }

    void firstLine()
    {
        QVERIFY(MagresCheck::isMagres(usual()));
        const QByteArray rest = usual().mid(head.size());
        for (const auto &[text, why] :
             {std::pair(rest, "this one with \"[atoms]\": if the line was lost"),
              std::pair(QByteArray("\xEF\xBB\xBF") + usual(), "byte order mark"),
              std::pair(QByteArray("\xFF\xFE#\0$\0", 6), "byte order mark"),
              std::pair(QByteArray("\n ") + usual(), "empty lines stand before it"),
              std::pair(QByteArray("H    1 Coordinates      0.1 0.2 0.3   A\n"), "older version"),
              std::pair(QByteArray(), "this one with \"\"")}) {
            QVERIFY(!MagresCheck::isMagres(text));
            const QString told = MagresCheck::whyNotMagres(text);
            QVERIFY2(told.startsWith(u"a MAGRES file begins with") && told.contains(QLatin1String(why)),
                     qPrintable(told));
        }
    }
};

QTEST_GUILESS_MAIN(TestTextFiles)
#include "tst_textfiles.moc"
