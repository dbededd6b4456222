// SPDX-License-Identifier: BSD-3-Clause
#include "io/JsonValues.h"
#include "io/OutputFiles.h"
#include "io/SpectrumExport.h"
#include "io/TableExport.h"
#include "items/NmrData.h"
#include "support/MetaTypes.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// Axes with exact numbers: F2 from 4 ppm in steps of -2, F1 from 10 ppm in steps of -5.
QVariantMap spectrumMap(int points2, int points1, const DoubleVector &points)
{
    QList<int> length(8, 1);
    length[0] = points2;
    length[1] = points1;
    DoubleVector frequencies(8, 400.0), widths(8, 0.0), references(8, 0.0);
    frequencies[1] = 100;
    widths[0] = 2 * points2 * 400.0;
    references[0] = 0;
    widths[1] = 5 * points1 * 100.0;
    const QVariantList nuclides{QVariantMap{{u"Isotope"_s, 1}, {u"Name"_s, u"H"_s}},
                                QVariantMap{{u"Isotope"_s, 13}, {u"Name"_s, u"C"_s}}};
    const QVariantHash parameters{{u"freq"_s, 400.0},
                                  {u"RangeF2"_s, QVariant::fromValue(DoubleVector{4, -4})},
                                  {u"qShift"_s, QVariant::fromValue(QList<int>{0, 1})}};
    const QVariantMap peak{{u"PeakLabel"_s, u"H1,C2"_s},
                           {u"Pos"_s, QVariant::fromValue(DoubleVector{1.5, 2.5})},
                           {u"Width"_s, QVariant::fromValue(DoubleVector{0.25, 0.5})},
                           {u"Height"_s, 3.0}};
    const QMap<QString, QVariantHash> original{{u"magres"_s, parameters}};
    return {{u"Length"_s, QVariant::fromValue(length)},
            {u"DataPoints"_s, QVariant::fromValue(QList<DoubleVector>{points, DoubleVector(points.size())})},
            {u"SpecInfo"_s,
             QVariantMap{{u"SpectrometerFrequencies"_s, QVariant::fromValue(frequencies)},
                         {u"SW"_s, QVariant::fromValue(widths)},
                         {u"SpectrumRef"_s, QVariant::fromValue(references)},
                         {u"Nucleides"_s, nuclides},
                         {u"OriginalParameters"_s, QVariant::fromValue(original)}}},
            {u"Peaks"_s, QVariantMap{{u"PeakList"_s, QVariantList{peak}}}}};
}

QByteArray csv(const QVariantMap &map)
{
    NmrData data;
    const QUuid entry = data.addEntry(map, u"x"_s);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    SpectrumExport::writeCsv(data, entry, buffer);
    return buffer.data();
}

QJsonObject json(const QVariantMap &map)
{
    NmrData data;
    const QUuid entry = data.addEntry(map, u"x"_s);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    SpectrumExport::writeJson(data, entry, buffer);
    return QJsonDocument::fromJson(buffer.data()).object();
}

} // namespace

class TestExport : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerSharedMetaTypes(); }

    void csvOfSpectra()
    {
        QCOMPARE(csv(spectrumMap(4, 1, {0.1, 1, -2.5, 1e-300})),
                 QByteArray("ppm,intensity\n4,0.10000000000000001\n2,1\n0,-2.5\n-2,1e-300\n"));
        QCOMPARE(csv(spectrumMap(2, 2, {1, 2, 3, 4})),
                 QByteArray("ppm_f2,ppm_f1,intensity\n2,5,1\n0,5,2\n2,0,3\n0,0,4\n"));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, csv({}));
    }

    void jsonOfSpectra()
    {
        const QJsonObject plane = json(spectrumMap(2, 2, {1, 2, 3, 4}));
        QCOMPARE(plane[u"nuclei"_s], QJsonValue(QJsonArray{u"1H"_s, u"13C"_s}));
        QCOMPARE(plane[u"length"_s], QJsonValue(QJsonArray{2, 2}));
        QCOMPARE(plane[u"frequencies"_s], QJsonValue(QJsonArray{400, 100}));
        QCOMPARE(plane[u"sw"_s], QJsonValue(QJsonArray{1600, 1000}));
        QCOMPARE(plane[u"axes"_s][1], QJsonValue(QJsonObject{{u"first"_s, 5}, {u"step"_s, -5}}));
        QCOMPARE(plane[u"peaks"_s][0],
                 QJsonValue(QJsonObject{{u"label"_s, u"H1,C2"_s},
                                        {u"pos"_s, QJsonArray{1.5, 2.5}},
                                        {u"height"_s, 3},
                                        {u"width"_s, QJsonArray{0.25, 0.5}}}));
        QCOMPARE(plane[u"parameters"_s],
                 QJsonValue(QJsonObject{
                     {u"freq"_s, 400}, {u"RangeF2"_s, QJsonArray{4, -4}}, {u"qShift"_s, QJsonArray{0, 1}}}));
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
        QCOMPARE(toJson(QStringList{u"a"_s}), QJsonValue(QJsonArray{u"a"_s}));
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
        try {
            OutputFiles files;
            files.open(kept).write("new");
            files.open(directory.filePath(u"no/such/place.csv"_s));
            QFAIL("a file in a missing directory was opened");
        } catch (const std::exception &error) {
            QVERIFY(QByteArray(error.what()).contains("place.csv"));
        }
        QFile file(kept);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("old"));
        QCOMPARE(QDir(directory.path()).entryList(QDir::Files), QStringList{u"kept.csv"_s});
    }
};

QTEST_GUILESS_MAIN(TestExport)
#include "tst_export.moc"
