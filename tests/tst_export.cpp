// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "data/JsonValues.h"
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

QJsonObject json(const QVariantMap &map)
{
    return QJsonDocument::fromJson(written(SpectrumExport::writeJson, map)).object();
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
        table.rows = {carbon, QVariantMap{{u"type"_s, u"H"_s}, {u"iso"_s, -2.0}}};
        table.extraKeys = QStringList{u"own"_s};
        table.hiddenKeys = QStringList{u"aniso"_s, u"assym"_s, u"eq"_s, u"qassym"_s, u"qIso"_s};
        const auto text = [&](const char *format) {
            return flat(TableExport::write(table, *TableExport::formatOfName(QLatin1String(format))));
        };
        QCOMPARE(text("csv"),
                 u"type,labels,atomNos,iso,Cq,own / C,\"C1 C,2\",1 2,0.10000000000000001,,\"a\"\"b\" / H,,,-2,, / "_s);
        QCOMPARE(text("text"), u"Atom    σ / ----  --- / C1    1.5 / N / "_s);
        QCOMPARE(
            compact(text("json").remove(u" / "_s).toUtf8()),
            u"{\"columns\":[\"Atom\",\"σ\"],\"rows\":[{\"atomNos\":[1,2],\"iso\":0.1,\"labels\":[\"C1\",\"C,2\"],\"own\":\"a\\\"b\",\"type\":\"C\"},{\"iso\":-2,\"type\":\"H\"}]}"_s);
        QVERIFY(!TableExport::formatOfName(u"xml"_s));
    }

    void measurements()
    {
        const ExperimentalSpectrum spectrum{
            u"a"_s, {{u"13C"_s, 100, 0, 9, -2, 3}, {{}, 0, 0, 50, -10, 2}}, {1, 2, 3, 4, 5, 6}, u"F"_s, {u"n"_s}};
        const MeasurementReport plane(spectrum),
            list(MeasuredPeaks{
                u"l"_s, 2, {{u"1H"_s, QString()}}, {{1.5, 20, 3, u"a,b"_s}, {2.5, 30, 4, u"c\"d"_s, 3}}, u"G"_s, {}}),
            line(MeasuredPeaks{u"l"_s, 1, {}, {{0.1, 0, 3, u"x"_s}}, u"G"_s, {}});
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
        QCOMPARE(peaksOf(line), u"position,height,label / 0.10000000000000001,3,x / "_s);
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
        const auto readText = [path = folder.filePath(u"set"_s)](const QByteArray &text) {
            QFile file(path);
            if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
                qFatal("no file");
            file.close();
            return ReferenceSet::read(path);
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
};

QTEST_GUILESS_MAIN(TestExport)
#include "tst_export.moc"
