// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "analysis/PeakPicking.h"
#include "analysis/SpinSystem.h"
#include "data/JsonValues.h"
#include "formats/CsdmFile.h"
#include "formats/ExperimentFile.h"
#include "formats/JcampExport.h"
#include "formats/MeasurementReport.h"
#include "formats/OutputFiles.h"
#include "formats/PowderExport.h"
#include "formats/ReferenceSet.h"
#include "formats/SpectrumExport.h"
#include "formats/TableExport.h"
#include "data/ExperimentalSpectrum.h"
#include "data/TableContent.h"
#include "items/plot/NmrData.h"
#include "support/MetaTypes.h"

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

/// A 1H spectrum or, in two dimensions, one of 1H and 13C. Axes with exact numbers: points 2 and 5 ppm apart, about 0
/// ppm.
QVariantMap spectrumMap(int points2, int points1, const DoubleVector &points)
{
    ExperimentalSpectrum spectrum{{}, {{u"1H"_s, 400, 0, 1.0 * points2, -2, points2}}, points};
    if (points1 > 1)
        spectrum.dimensions.push_back({u"13C"_s, 100, 0, 2.5 * points1, -5, points1});
    QVariantMap map = toEntryMap(spectrum);
    QVariantMap info = map.value(u"SpecInfo"_s).toMap();
    const QVariantHash parameters{{u"freq"_s, 400.0},
                                  {u"RangeF2"_s, QVariant::fromValue(DoubleVector{4, -4})},
                                  {u"qShift"_s, QVariant::fromValue(QList<int>{0, 1})}};
    info.insert(u"OriginalParameters"_s, QVariant::fromValue(QMap<QString, QVariantHash>{{u"magres"_s, parameters}}));
    map.insert(u"SpecInfo"_s, info);
    const QVariantMap peak{{u"PeakLabel"_s, u"H1,C2"_s},
                           {u"Pos"_s, QVariant::fromValue(DoubleVector{1.5, 2.5})},
                           {u"Width"_s, QVariant::fromValue(DoubleVector{0.25, 0.5})},
                           {u"Height"_s, 3.0}};
    map.insert(u"Peaks"_s, QVariantMap{{u"PeakList"_s, QVariantList{peak}}});
    return map;
}

template <typename Write>
QByteArray written(Write write, const QVariantMap &map)
{
    const SpectrumEntry entry{QUuid::createUuid(), u"x"_s, map, Spectrum::fromMap(map)};
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    write(entry, buffer);
    return buffer.data();
}

/// On one line.
QString flat(const QByteArray &text)
{
    return QString::fromUtf8(text).replace(u" \n"_s, u"\n"_s).replace(u'\n', u" / "_s);
}

QString compact(const QByteArray &json)
{
    return QString::fromUtf8(QJsonDocument::fromJson(json).toJson(QJsonDocument::Compact));
}

/// Lorentzian lines (their points, heights and full widths) on a base line, with Gaussian noise that is the same at
/// every run.
std::vector<double> trace(int points, const QList<std::array<double, 3>> &lines, double deviation, double baseline = 0)
{
    std::mt19937 random(20);
    std::normal_distribution<double> noise(0, 1);
    std::vector<double> values(points);
    for (int i = 0; i < points; ++i) {
        values[i] = baseline + deviation * noise(random);
        for (const auto &[point, height, width] : lines)
            values[i] += height / (1 + std::pow(2 * (i - point) / width, 2));
    }
    return values;
}

Spectrum spectrumOf(const QString &nucleus, int dimensions = 1)
{
    ExperimentalSpectrum measured;
    for (int d = 0; d < dimensions; ++d)
        measured.dimensions.push_back({nucleus, 100, 0, 200, -1, 4});
    measured.data.resize(dimensions == 2 ? 16 : 4);
    return Spectrum::fromMap(toEntryMap(measured));
}

/// Two lines, at 150.25 and 20 ppm, from 200 ppm downwards in steps of 0.05 ppm.
QByteArray pointsText()
{
    QByteArray text = "ppm,intensity\n";
    const std::vector<double> values = trace(4000, {{995, 10, 8}, {3600, 5, 8}}, 0.02);
    for (size_t i = 0; i < values.size(); ++i)
        text += QByteArray::number(200 - 0.05 * double(i), 'f', 3) + ',' + QByteArray::number(values[i]) + '\n';
    return text;
}

QList<double> positions(const QVariantMap &entry)
{
    QList<double> found;
    for (const SpectrumPeak &peak : Spectrum::fromMap(entry).peaks)
        found.append(peak.f2);
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace

class TestExport : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerSharedMetaTypes(); }

    void csvOfSpectra()
    {
        QCOMPARE(written(SpectrumExport::writeCsv, spectrumMap(4, 1, {0.1, 1, -2.5, 1e-300})),
                 QByteArray("ppm,intensity\n4,0.10000000000000001\n2,1\n0,-2.5\n-2,1e-300\n"));
        QCOMPARE(written(SpectrumExport::writeCsv, spectrumMap(2, 2, {1, 2, 3, 4})),
                 QByteArray("ppm_f2,ppm_f1,intensity\n2,5,1\n0,5,2\n2,0,3\n0,0,4\n"));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, written(SpectrumExport::writeCsv, {}));
    }

    void jsonOfSpectra()
    {
        const auto json = [](const QVariantMap &map) {
            return QJsonDocument::fromJson(written(SpectrumExport::writeJson, map)).object();
        };
        const QJsonObject expected = QJsonDocument::fromJson(R"({"nuclei": ["1H", "13C"], "length": [2, 2],
            "frequencies": [400, 100], "sw": [1600, 1000], "ref": [0, 0],
            "axes": [{"first": 2, "step": -2}, {"first": 5, "step": -5}],
            "peaks": [{"label": "H1,C2", "pos": [1.5, 2.5], "height": 3, "width": [0.25, 0.5]}],
            "parameters": {"freq": 400, "RangeF2": [4, -4], "qShift": [0, 1]}})")
                                         .object();
        QCOMPARE(json(spectrumMap(2, 2, {1, 2, 3, 4})), expected);
        // One dimension: one entry in each array.
        const QJsonObject line = json(spectrumMap(4, 1, {1, 2, 3, 4}));
        QCOMPARE(line[u"nuclei"_s], QJsonValue(QJsonArray{u"1H"_s}));
        QCOMPARE(line[u"peaks"_s][0][u"pos"_s], QJsonValue(QJsonArray{1.5}));
        // What nobody knows is not made up.
        const QVariantMap unknown = toEntryMap({{}, {{{}, 0, 0, 4, -2, 4}}, {1, 2, 3, 4}});
        for (const char *key : {"nuclei", "frequencies", "sw", "ref"})
            QCOMPARE(json(unknown)[QLatin1String(key)], QJsonValue(QJsonArray{QJsonValue()}));
        QVERIFY(!written(JcampExport::write, unknown).contains("FREQUENCY"));
        QVERIFY(!written(CsdmFile::write, unknown).contains("Hz"));
    }

    void jcampOfSpectra()
    {
        const auto records = [](const QVariantMap &map) {
            const QString text = flat(written(JcampExport::write, map));
            return text.mid(text.indexOf(u"##.OBS"));
        };
        QCOMPARE(
            records(spectrumMap(4, 1, {0.1, 1, -2.5, 1e-300})),
            u"##.OBSERVE FREQUENCY= 400 / ##.OBSERVE NUCLEUS= ^1H / ##$MAGRES_RangeF2= [4,-4] / ##$MAGRES_freq= 400 / ##$MAGRES_qShift= [0,1] / ##$PEAKS= (XYA) / (1.5, 3, <H1,C2>) / ##XUNITS= PPM / ##YUNITS= ARBITRARY UNITS / ##XFACTOR= 1 / ##YFACTOR= 1.1641532188114492e-09 / ##FIRSTX= 4 / ##LASTX= -2 / ##DELTAX= -2 / ##MINX= -2 / ##MAXX= 4 / ##MINY= -2.5 / ##MAXY= 1 / ##FIRSTY= 0.10000000000000001 / ##NPOINTS= 4 / ##XYDATA= (X++(Y..Y)) / 4.00000000 85899346 858993459 -2147483647 0 / ##END= / "_s);
        QCOMPARE(
            records(spectrumMap(3, 2, {10, 20, 30, 40, 50, 60})),
            u"##.OBSERVE FREQUENCY= 400 / ##.OBSERVE NUCLEUS= ^1H / ##$MAGRES_RangeF2= [4,-4] / ##$MAGRES_freq= 400 / ##$MAGRES_qShift= [0,1] / ##$PEAKS= (F2F1YA) / (1.5, 2.5, 3, <H1,C2>) / ##NUM DIM= 2 / ##.NUCLEUS= 13C, 1H / ##$SF= 400 / ##$SF= 100 / ##NTUPLES= nD NMR SPECTRUM / ##VAR_NAME= FREQUENCY1, FREQUENCY2, SPECTRUM / ##SYMBOL= F1, F2, Y / ##VAR_TYPE= INDEPENDENT, INDEPENDENT, DEPENDENT / ##VAR_FORM= AFFN, AFFN, ASDF / ##VAR_DIM= 2, 3, 3 / ##UNITS= PPM, PPM, ARBITRARY UNITS / ##FACTOR= 1, 1, 2.7939677251474782e-08 / ##FIRST= 5, 3, 10 / ##LAST= 0, -1, 60 / ##MIN= 0, -1, 10 / ##MAX= 5, 3, 60 / ##PAGE= F1=5 / ##DATA TABLE= (F2++(Y..Y)), PROFILE / 3.00000000 357913941 715827882 1073741824 / ##PAGE= F1=0 / ##DATA TABLE= (F2++(Y..Y)), PROFILE / 3.00000000 1431655765 1789569706 2147483647 / ##END NTUPLES= nD NMR SPECTRUM / ##END= / "_s);
        // Lines of eighty characters hold six ordinates behind their X.
        const QByteArray many = written(JcampExport::write, spectrumMap(100, 1, DoubleVector(100, 1.0)));
        QCOMPARE(many.count("0000 2147483647"), 17);
        QVERIFY(many.contains("\n88.00000000" + QByteArray(" 2147483647").repeated(6) + "\n76.00000000 2"));
        QCOMPARE(failure([] {
                     written(JcampExport::write, spectrumMap(2, 1, {1, qQNaN()}));
                 }),
                 QByteArray("the spectrum has points that are not numbers, which JCAMP-DX cannot hold"));
    }

    void tables()
    {
        TableContent table;
        table.titles = QStringList{u"Atom"_s, u"σ"_s};
        table.cells = {{u"C1"_s, u"1.5"_s}, {u"N"_s, QString()}};
        const QVariantMap carbon{{u"type"_s, u"C"_s},
                                 {u"labels"_s, QStringList{u"C1"_s, u"C,2"_s}},
                                 {u"atomNos"_s, QVariantList{1, 2}},
                                 {u"iso"_s, 0.1},
                                 {u"own"_s, u"a\"b"_s},
                                 {u"ID"_s, 7}};
        table.rows = {carbon, QVariantMap{{u"type"_s, u"H"_s}, {u"iso"_s, -2.0}, {u"new"_s, 1}, {u"b"_s, 4.0}}};
        table.extraKeys = QStringList{u"own"_s};
        table.hiddenKeys = QStringList{u"aniso"_s, u"assym"_s, u"b"_s, u"eq"_s, u"qassym"_s, u"qIso"_s};
        const auto text = [&](const char *format) {
            return flat(TableExport::write(table, *TableExport::formatOfName(QLatin1String(format))));
        };
        QCOMPARE(
            text("csv"),
            u"type,labels,atomNos,iso,Cq,new,own / C,\"C1 C,2\",1 2,0.10000000000000001,,,\"a\"\"b\" / H,,,-2,,1, / "_s);
        QCOMPARE(text("text"), u"Atom    σ / ----  --- / C1    1.5 / N / "_s);
        QCOMPARE(
            compact(text("json").remove(u" / "_s).toUtf8()),
            u"{\"columns\":[\"Atom\",\"σ\"],\"rows\":[{\"atomNos\":[1,2],\"iso\":0.1,\"labels\":[\"C1\",\"C,2\"],\"own\":\"a\\\"b\",\"type\":\"C\"},{\"iso\":-2,\"new\":1,\"type\":\"H\"}]}"_s);
        QVERIFY(!TableExport::formatOfName(u"xml"_s));
        QCOMPARE(TableExport::alignedText({u"File"_s, u"n"_s}, {{u"a\nb"_s, u"1"_s}}),
                 u"File  n\n----  -\na\uFFFDb   1\n"_s);
    }

    void measurements()
    {
        const ExperimentalSpectrum spectrum{
            u"a"_s, {{u"13C"_s, 100, 0, 9, -2, 3}, {{}, 0, 0, 50, -10, 2}}, {1, 2, 3, 4, 5, 6}, u"F"_s, {u"n"_s}};
        const MeasurementReport plane(spectrum),
            list(MeasuredPeaks{
                u"l"_s, 2, {{u"1H"_s, QString()}}, {{1.5, 20, 3, u"a,b"_s}, {2.5, 30, 4, u"c\"d"_s, 3}}, u"G"_s, {}}),
            line(MeasuredPeaks{u"l"_s, 1, {}, {{0.1, 0, 3, u"#1"_s}}, u"G"_s, {}});
        const auto peaksOf = [](const MeasurementReport &report) {
            QBuffer buffer;
            buffer.open(QIODevice::WriteOnly);
            report.writePeaks(buffer);
            return flat(buffer.data());
        };
        QCOMPARE(
            compact(plane.json()),
            u"{\"dimensions\":[{\"first\":9,\"frequency\":100,\"last\":5,\"nucleus\":\"13C\",\"points\":3,\"step\":-2},{\"first\":50,\"frequency\":null,\"last\":40,\"nucleus\":null,\"points\":2,\"step\":-10}],\"format\":\"F\",\"kind\":\"spectrum\",\"noise\":{\"baseline\":0,\"deviation\":0},\"notes\":[\"n\"],\"peaks\":[],\"title\":\"a\"}"_s);
        QCOMPARE(
            compact(list.json()),
            u"{\"dimensions\":[{\"nucleus\":\"1H\"},{\"nucleus\":null}],\"format\":\"G\",\"kind\":\"peaks\",\"notes\":[],\"peaks\":[{\"height\":3,\"label\":\"a,b\",\"pos\":[1.5,20]},{\"count\":3,\"height\":4,\"label\":\"c\\\"d\",\"pos\":[2.5,30]}],\"title\":\"l\"}"_s);
        QCOMPARE(peaksOf(list),
                 u"position,position_f1,height,label,count / 1.5,20,3,\"a,b\",1 / 2.5,30,4,\"c\"\"d\",3 / "_s);
        QCOMPARE(peaksOf(line), u"position,height,label / 0.10000000000000001,3,\"#1\" / "_s);
        // The entry's axes are the file's to the last digit, and its frequency is not made up.
        const SpectrumEntry entry = plane.entry();
        QVERIFY(entry.spectrum.axes[1].first == 50 && entry.spectrum.axes[1].step == -10
                && entry.spectrum.axes[1].frequency == 0);
        QVERIFY(entry.name == u"a" && entry.spectrum.axes[0].nucleus() == u"¹³C" && entry.spectrum.real()[5] == 6);
    }

    /// The regression by numpy's least squares.
    void referenceSets()
    {
        ReferenceSet set;
        set.nucleus = u"13C"_s;
        set.method = {u"CODE"_s, u"1.2"_s, u"PBE"_s, 680.5};
        set.sources = {{u"f"_s, u"C1"_s, {10, 161}}, {u"f"_s, u"C2"_s, {100, 70}}, {u"g"_s, u"C1"_s, {150, 19}}};
        const QTemporaryDir folder;
        const auto readText = [&](const QByteArray &text) {
            return ReferenceSet::read(writtenFile(folder, u"set"_s, text));
        };
        const QByteArray text = set.toJson();
        const ReferenceSet read = readText(text);
        QCOMPARE(
            compact(read.toJson()).section(u"\"regression\""_s, 0, 0),
            u"{\"data\":[{\"file\":\"f\",\"shielding\":10,\"shift\":161,\"site\":\"C1\"},{\"file\":\"f\",\"shielding\":100,\"shift\":70,\"site\":\"C2\"},{\"file\":\"g\",\"shielding\":150,\"shift\":19,\"site\":\"C1\"}],\"format\":\"shift reference set\",\"method\":{\"code\":\"CODE\",\"cutoff_eV\":680.5,\"functional\":\"PBE\",\"version\":\"1.2\"},\"nucleus\":\"13C\","_s);
        const QJsonObject regression = QJsonDocument::fromJson(read.toJson())[u"regression"_s].toObject();
        for (const auto &[name, value] :
             {std::pair("reference", 171.205298013), std::pair("slope", -1.013907285),
              std::pair("reference_error", 0.239145299), std::pair("slope_error", 0.002294107),
              std::pair("covariance", -0.00045612), std::pair("rmse", 0.230174135),
              std::pair("leave_one_out", 0.553523115), std::pair("sites", 3.0)})
            QVERIFY2(std::abs(regression[QLatin1String(name)].toDouble() - value) < 1e-8, name);
        for (const auto &[from, to, message] :
             {std::tuple("13C", "13X", "\"13X\" is not an NMR nucleus"),
              std::tuple("shift reference set", "set", "expected a reference set, as calibrate writes it"),
              std::tuple("\"shielding\"", "\"s\"", "a site has no number called \"shielding\""),
              std::tuple("\"shift\"", "\"s\"", "a site has no number called \"shift\"")})
            QCOMPARE(failure([&, from = from, to = to] { readText(QByteArray(text).replace(from, to)); }),
                     folder.filePath(u"set"_s).toUtf8() + ": " + message);
    }

    void powderFiles()
    {
        PowderSites sites{u"27Al"_s, {}, {}, {u"n"_s}};
        sites.conditions.spin = 2.5;
        sites.conditions.larmor = 104.25;
        sites.sites = {{u"Al1 ×2"_s, u"Al1"_s, 2, {{}, Powder::Tensor{}, 2}, {1, 2, 3, 0.5, -5, 6, 7}},
                       {u"a,b"_s, u"b"_s, 1, {}, {11, 12, 13, 14, 15, 16, 17}}};
        PowderSettings settings;
        settings.nucleus = u"27Al"_s;
        settings.rotation = Powder::Rotation::MagicAngle;
        settings.rate = 12500;
        settings.slope = -0.5;
        settings.couplingScale = 1.5;
        settings.shape = {20, 30};
        const Powder::Spectrum spectrum{
            {10, -10, 3}, {4, 5, 6}, {{{1, 2, 0.1}, 100, 0.25}, {{3, 4, 5}, 200, 0.5}}, false};
        QCOMPARE(
            compact(QJsonDocument(PowderExport::json(sites, settings, &spectrum)).toJson()),
            u"{\"Cq_factor\":1.5,\"axis\":{\"first\":10,\"points\":3,\"step\":-10},\"converged\":false,\"gaussian_Hz\":30,\"larmor_frequency_MHz\":104.25,\"lorentzian_Hz\":20,\"model\":\"Central transition only, to second order, with shift anisotropy: no satellites, no dipolar couplings or cross terms with them; ideal excitation.\",\"notes\":[\"n\"],\"nucleus\":\"27Al\",\"proton_frequency_MHz\":600,\"reference_ppm\":100,\"sites\":[{\"Cq_MHz\":3,\"QIS_ppm\":-5,\"breadth_ppm\":7,\"centre_ppm\":6,\"estimated_error\":0.25,\"eta\":0.5,\"name\":\"Al1 ×2\",\"nuclei\":2,\"orientations\":100,\"shift_ppm\":1,\"span_ppm\":2},{\"breadth_ppm\":17,\"centre_ppm\":16,\"estimated_error\":0.5,\"name\":\"a,b\",\"nuclei\":1,\"orientations\":200,\"shift_ppm\":11,\"span_ppm\":12}],\"slope\":-0.5,\"spin\":2.5,\"spinning_Hz\":12500}"_s);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        PowderExport::writeSitesCsv(sites, spectrum, buffer);
        QCOMPARE(flat(buffer.data()), u"ppm,Al1 ×2,\"a,b\" / 10,1,3 / 0,2,4 / -10,0.10000000000000001,5 / "_s);
        settings.rotation = Powder::Rotation::Static;
        QCOMPARE(PowderExport::json(sites, settings, nullptr)[u"spinning_Hz"_s], QJsonValue(0));
        settings.rotation = Powder::Rotation::InfiniteRate;
        QCOMPARE(PowderExport::json(sites, settings, nullptr)[u"spinning_Hz"_s], QJsonValue(u"infinite"_s));
        QVERIFY(!PowderExport::json(sites, settings, nullptr).contains(u"axis"_s));
    }

    void jsonValues()
    {
        QCOMPARE(toJson(std::numeric_limits<double>::quiet_NaN()), QJsonValue());
        const DoubleVector vector{1, std::numeric_limits<double>::infinity()};
        QCOMPARE(toJson(QVariant::fromValue(vector)), QJsonValue(QJsonArray{1, QJsonValue()}));
        const QVariantMap nested{{u"m"_s, QVariantList{QVariantHash{{u"k"_s, 1}}}}};
        QCOMPARE(toJson(nested)[u"m"_s][0][u"k"_s], QJsonValue(1));
    }

    /// When one of several files cannot be written, the others do not appear, and what was there before stays.
    void allFilesOrNone()
    {
        QTemporaryDir directory;
        const QString kept = directory.filePath(u"kept.csv"_s);
        {
            OutputFiles files;
            files.open(kept).write("old");
            QVERIFY(!QFile::exists(kept));
            files.commit();
        }
        const QByteArray message = failure([&] {
            OutputFiles files;
            files.open(kept).write("new");
            files.open(directory.filePath(u"no/such/place.csv"_s));
        });
        QVERIFY2(message.contains("place.csv"), message);
        QFile file(kept);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("old"));
        QCOMPARE(QDir(directory.path()).entryList(QDir::Files), QStringList{u"kept.csv"_s});
    }

    // --- measurements that come in

    /// Nothing but a base line, with noise and without, and too few or no numbers.
    void nothingIsPickedOfNothing()
    {
        for (double deviation : {0.0, 1.0})
            QVERIFY(PeakPicking::pick(trace(2048, {}, deviation, -50)).empty());
        for (size_t size = 0; size < 4; ++size)
            QVERIFY(PeakPicking::pick(std::vector<double>(size, 1.0)).empty());
        QVERIFY(PeakPicking::pick(std::vector<double>(100, std::nan(""))).empty());
        QVERIFY(PeakPicking::pick2D({}, 0).empty());
        // A broad line with noise on its flanks is one.
        QCOMPARE(PeakPicking::pick(trace(2048, {{1000, 10, 300}}, 0.2, -50)).size(), 1U);
    }

    /// 64 parts of a known scatter on slopes: the quietest quarter counts, its median scatter and its mean.
    void noiseIsThatOfTheQuietestQuarter()
    {
        std::vector<double> values;
        for (int part = 0; part < 64; ++part) {
            const int rank = part * 37 % 64; // by scatter
            for (int i = 0; i < 8; ++i) {
                const int pattern[] = {1, -1, -1, 1, 1, -1, -1, 1}; // no mean, no slope, 8 squares
                values.push_back(rank + (rank + 1) * pattern[i] + 5 * (i - 3.5));
            }
        }
        const PeakPicking::Noise noise = PeakPicking::noise(values);
        QVERIFY(std::abs(noise.baseline - 7.5) < 1e-9); // of 0 to 15
        QVERIFY(std::abs(noise.deviation - 9 * std::sqrt(8.0 / 6)) < 1e-9);
    }

    /// Parabolas: their vertex is known exactly, between the points and along each axis.
    void topsAreVertices()
    {
        const auto bell = [](double x, double centre, double curvature) { return curvature * std::pow(x - centre, 2); };
        std::vector<double> line(400, -2.0);
        for (int i = 90; i < 110; ++i)
            line[size_t(i)] = std::max(-2.0, 10 - bell(i, 100.3, 0.5));
        for (const auto &peak : {PeakPicking::pick(line).at(0), *PeakPicking::summit(line, 103, 5)}) {
            QVERIFY(std::abs(peak.point - 100.3) < 1e-9);
            QVERIFY(std::abs(peak.height - 12) < 1e-9); // above the base line
        }
        constexpr int columns = 64, rows = 32;
        std::vector<double> map(columns * rows, 0.0);
        const auto add = [&](double column, double row, double height) {
            for (int r = 0; r < rows; ++r)
                for (int c = 0; c < columns; ++c)
                    map[size_t(r * columns + c)] += std::max(0.0, height - bell(c, column, 0.5) - bell(r, row, 0.25));
        };
        add(50.3, 20.6, 6);
        add(12.8, 9.2, 3);
        const auto peaks = PeakPicking::pick2D(map, columns);
        QCOMPARE(peaks.size(), size_t(2));
        for (const auto &[peak, column, row, height] :
             {std::tuple(peaks[0], 50.3, 20.6, 6.0), std::tuple(peaks[1], 12.8, 9.2, 3.0),
              std::tuple(*PeakPicking::summit2D(map, columns, 11, 8, 3, 3), 12.8, 9.2, 3.0)}) {
            QVERIFY(std::hypot(peak.column - column, peak.row - row) < 1e-9);
            QVERIFY(std::abs(peak.height - height) < 1e-9);
        }
    }

    /// Hz, from -mu0 hbar gamma gamma / (8 pi^2 r^3) by hand, with the gyromagnetic ratios of R. K. Harris et al., Pure
    /// Appl. Chem. 73 (2001) 1795.
    void signsOfDipolarCouplings()
    {
        for (const auto &[a, b, distance, expected] :
             {std::tuple("1H", "1H", 1.5, -35591.16), std::tuple("13C", "1H", 1.09, -23328.18),
              std::tuple("15N", "1H", 1.02, 11477.42), std::tuple("15N", "13C", 1.34, 1273.14),
              std::tuple("15N", "17O", 2.2, -155.13)}) {
            QVariantMap atoms;
            for (const auto &[nucleus, place] : {std::pair(a, 0.0), std::pair(b, distance)})
                atoms.insert(QString::number(atoms.size()),
                             QVariantMap{{u"type"_s, QByteArray(nucleus + (isdigit(nucleus[1]) ? 2 : 1))},
                                         {u"labels"_s, QStringList{QString::number(place)}},
                                         {u"recordNo"_s, int(atoms.size())},
                                         {u"pos"_s, QVariant::fromValue(DoubleVector{0, place, 0})}});
            SpinSystem::Options options;
            options.nuclei = QStringList{QLatin1String(a), QLatin1String(b)};
            options.nuclei.removeDuplicates();
            const SpinSystem system = SpinSystem::fromData({{u"atoms"_s, atoms}}, options);
            QCOMPARE(system.dipoles.size(), size_t(1));
            QVERIFY2(std::abs(system.dipoles[0].coupling / expected - 1) < 1e-3, a);
        }
    }

    void pickedPeaksCountAsTheirSites()
    {
        using L = QList<double>;
        for (const auto &[simulated, picked, expected] :
             {std::tuple(L{90, 50.001, 50, 50.002}, L{20, 30}, L{30, 20, 20, 20}),
              std::tuple(L{50, 50.5}, L{1, 2}, L{2, 1}), std::tuple(L{50, 50, 60, 70}, L{1, 2}, L{1, 2}), // too few
              std::tuple(L{50, 50}, L{1, 2}, L{1, 2}), std::tuple(L{}, L{}, L{})}) {
            QList<SpectrumPeak> sites;
            for (double ppm : simulated)
                sites.append({{}, {}, ppm});
            std::vector<PeakListFile::Peak> peaks;
            for (double ppm : picked)
                peaks.push_back({ppm});
            L counted;
            for (const auto &peak : ExperimentFile::countedLike(sites, peaks))
                counted.append(peak.f2);
            QCOMPARE(counted, expected);
        }
    }

    void filesThatAreExperiments()
    {
        const QTemporaryDir folder;
        QString found;
        for (const QString &name : u"a.JDX x/1r peaklist.xml a.csdfe a.json a.magres 2r csv"_s.split(u' '))
            found += ExperimentFile::isExperiment(name) ? u'+' : u'-';
        QCOMPARE(found, u"++++----"_s);
        QVERIFY(ExperimentFile::isExperiment(folder.path()));
    }

    /// The file's own frequency goes before that of the simulated spectrum, which stands in where the file is silent.
    void frequenciesOfHertz()
    {
        const QTemporaryDir directory;
        QByteArray text = "Hz,intensity\n";
        for (int i = 0; i < 40; ++i)
            text += QByteArray::number(8000 - 100 * i) + (i == 13 ? ",90\n" : i % 2 ? ",1\n" : ",0\n");
        const auto axis = [&](const QByteArray &above, const std::vector<double> &frequencies) {
            const QString path = writtenFile(directory, u"hz.csv"_s, above + text);
            return Spectrum::fromMap(Experiment(path, {u"13C"_s}, frequencies).beside({})).axes[0];
        };
        QVERIFY(std::abs(axis({}, {50}).first - 160) < 1e-9);
        QVERIFY(std::abs(axis("# 40 MHz\n", {50}).first - 200) < 1e-9);
        QCOMPARE(axis("# 40 MHz\n", {50}).frequency, 40.0);
        for (const std::vector<double> &none : {std::vector<double>{}, {0.0}})
            QVERIFY(failure([&] { axis({}, none); }).contains("frequency of 0 ppm in MHz is needed"));
    }

    /// Peaks of several sites stand there as often; notes say how they came about.
    void pointsAndPeaksComeIn()
    {
        const QTemporaryDir directory;
        const QString list = writtenFile(directory, u"l.csv"_s, "ppm,height,count\n150,2,3\n20,5,1\n"),
                      points = writtenFile(directory, u"p.csv"_s, pointsText());
        const QVariantMap entry = ExperimentFile::read(points, spectrumOf(u"13C"_s));
        QCOMPARE(Spectrum::fromMap(entry).axes[0].nucleus(), u"¹³C"_s);
        const QList<double> found = positions(entry);
        QVERIFY(found.size() == 2 && std::abs(found[0] - 20) < 0.05 && std::abs(found[1] - 150.25) < 0.05);
        QVERIFY(Spectrum::fromMap(entry).dimensions() == 1);
        QVERIFY(Spectrum::fromMap(ExperimentFile::read(list, spectrumOf(u"13C"_s))).isEmpty());
        const Experiment experiment(list, {u"13C"_s});
        QCOMPARE(positions(experiment.beside({})), (QList<double>{20, 150, 150, 150}));
        QCOMPARE(experiment.notes(), (QStringList{u"Read as a list of 2 peaks."_s}));
        QCOMPARE(ExperimentFile::peaks(list, {u"13C"_s}).peaks[0].count, 3);
        const MeasuredPeaks picked = ExperimentFile::peaks(points, {u"13C"_s});
        QVERIFY(picked.nuclei[0] == u"13C" && picked.dimensions == 1 && picked.title == u"p");
        QCOMPARE(picked.notes.join(u' '),
                 u"Read as a spectrum: 4000 evenly spaced positions. 2 peaks were picked from the spectrum."_s);
        QVERIFY(std::abs(picked.peaks[0].f2 - 150.25) < 0.05 && std::abs(picked.peaks[0].height / 10 - 1) < 0.1);
        // Two simulated sites at one shift and one at the other.
        QList<SpectrumPeak> sites(3);
        sites[0].f2 = sites[2].f2 = 30;
        sites[1].f2 = 60;
        QCOMPARE(positions(Experiment(points, {u"13C"_s}).beside(sites)).size(), 3);
        QCOMPARE(failure([&] { ExperimentFile::peaks(writtenFile(directory, u"h.csv"_s, "1H ppm\n5\n"), {u"13C"_s}); }),
                 QByteArray("h.csv is a spectrum of 1H, the plot shows one of 13C"));
    }

    void spectraThatDoNotFitAreRefused()
    {
        const QString samples = QStringLiteral(SAMPLES);
        const QString proton = samples + u"/paracetamol-1H-difdup.jdx"_s;
        for (const auto &[path, shown, message] :
             {std::tuple(proton, spectrumOf(u"13C"_s), "is a spectrum of 1H"),
              std::tuple(proton, spectrumOf(u"1H"_s, 2), "1 dimension"),
              std::tuple(samples + u"/paracetamol-1H.csv"_s, spectrumOf(u"1H"_s, 2), "has 1 dimension"),
              std::tuple(samples, Spectrum(), "no spectrum to put"),
              std::tuple(u"/nowhere.csv"_s, spectrumOf(u"1H"_s), "/nowhere.csv")}) {
            const QByteArray text = failure([&, path = path, shown = shown] { ExperimentFile::read(path, shown); });
            QVERIFY2(text.contains(message), text);
        }
    }
};

QTEST_GUILESS_MAIN(TestExport)
#include "tst_export.moc"
