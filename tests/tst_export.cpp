// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "data/JsonValues.h"
#include "formats/OutputFiles.h"
#include "formats/SpectrumExport.h"
#include "formats/TableExport.h"
#include "data/ExperimentalSpectrum.h"
#include "items/plot/NmrData.h"
#include "support/MetaTypes.h"

#include <QtTest>

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

    void jsonValues()
    {
        QCOMPARE(toJson(std::numeric_limits<double>::quiet_NaN()), QJsonValue());
        const DoubleVector vector{1, std::numeric_limits<double>::infinity()};
        QCOMPARE(toJson(QVariant::fromValue(vector)), QJsonValue(QJsonArray{1, QJsonValue()}));
        const QVariantMap nested{{u"m"_s, QVariantList{QVariantHash{{u"k"_s, 1}}}}};
        QCOMPARE(toJson(nested)[u"m"_s][0][u"k"_s], QJsonValue(1));
    }

    void alignedText()
    {
        const QString text =
            TableExport::alignedText({u"Name"_s, u"x"_s}, {{u"C1"_s, u"1.5"_s}, {u"Carbon"_s, u"-10.25"_s}});
        QCOMPARE(text, u"Name         x\n------  ------\nC1         1.5\nCarbon  -10.25\n"_s);
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
