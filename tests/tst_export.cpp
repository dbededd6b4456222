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
    const QVariantList nuclides{
        QVariantMap{{QStringLiteral("Isotope"), 1}, {QStringLiteral("Name"), QStringLiteral("H")}},
        QVariantMap{{QStringLiteral("Isotope"), 13}, {QStringLiteral("Name"), QStringLiteral("C")}}};
    const QVariantHash parameters{{QStringLiteral("freq"), 400.0},
                                  {QStringLiteral("RangeF2"), QVariant::fromValue(DoubleVector{4, -4})},
                                  {QStringLiteral("qShift"), QVariant::fromValue(QList<int>{0, 1})}};
    const QVariantMap peak{{QStringLiteral("PeakLabel"), QStringLiteral("H1,C2")},
                           {QStringLiteral("Pos"), QVariant::fromValue(DoubleVector{1.5, 2.5})},
                           {QStringLiteral("Width"), QVariant::fromValue(DoubleVector{0.25, 0.5})},
                           {QStringLiteral("Height"), 3.0}};
    const QMap<QString, QVariantHash> original{{QStringLiteral("magres"), parameters}};
    return {
        {QStringLiteral("Length"), QVariant::fromValue(length)},
        {QStringLiteral("DataPoints"), QVariant::fromValue(QList<DoubleVector>{points, DoubleVector(points.size())})},
        {QStringLiteral("SpecInfo"),
         QVariantMap{{QStringLiteral("SpectrometerFrequencies"), QVariant::fromValue(frequencies)},
                     {QStringLiteral("SW"), QVariant::fromValue(widths)},
                     {QStringLiteral("SpectrumRef"), QVariant::fromValue(references)},
                     {QStringLiteral("Nucleides"), nuclides},
                     {QStringLiteral("OriginalParameters"), QVariant::fromValue(original)}}},
        {QStringLiteral("Peaks"), QVariantMap{{QStringLiteral("PeakList"), QVariantList{peak}}}}};
}

QByteArray csv(const QVariantMap &map)
{
    NmrData data;
    const QUuid entry = data.addEntry(map, QStringLiteral("x"));
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    SpectrumExport::writeCsv(data, entry, buffer);
    return buffer.data();
}

QJsonObject json(const QVariantMap &map)
{
    NmrData data;
    const QUuid entry = data.addEntry(map, QStringLiteral("x"));
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
        QCOMPARE(plane[QStringLiteral("nuclei")], QJsonValue(QJsonArray{QStringLiteral("1H"), QStringLiteral("13C")}));
        QCOMPARE(plane[QStringLiteral("length")], QJsonValue(QJsonArray{2, 2}));
        QCOMPARE(plane[QStringLiteral("frequencies")], QJsonValue(QJsonArray{400, 100}));
        QCOMPARE(plane[QStringLiteral("sw")], QJsonValue(QJsonArray{1600, 1000}));
        QCOMPARE(plane[QStringLiteral("axes")][1],
                 QJsonValue(QJsonObject{{QStringLiteral("first"), 5}, {QStringLiteral("step"), -5}}));
        QCOMPARE(plane[QStringLiteral("peaks")][0],
                 QJsonValue(QJsonObject{{QStringLiteral("label"), QStringLiteral("H1,C2")},
                                        {QStringLiteral("pos"), QJsonArray{1.5, 2.5}},
                                        {QStringLiteral("height"), 3},
                                        {QStringLiteral("width"), QJsonArray{0.25, 0.5}}}));
        QCOMPARE(plane[QStringLiteral("parameters")],
                 QJsonValue(QJsonObject{{QStringLiteral("freq"), 400},
                                        {QStringLiteral("RangeF2"), QJsonArray{4, -4}},
                                        {QStringLiteral("qShift"), QJsonArray{0, 1}}}));
        // One dimension: one entry in each array.
        const QJsonObject line = json(spectrumMap(4, 1, {1, 2, 3, 4}));
        QCOMPARE(line[QStringLiteral("nuclei")], QJsonValue(QJsonArray{QStringLiteral("1H")}));
        QCOMPARE(line[QStringLiteral("peaks")][0][QStringLiteral("pos")], QJsonValue(QJsonArray{1.5}));
    }

    void jsonValues()
    {
        QCOMPARE(toJson(std::numeric_limits<double>::quiet_NaN()), QJsonValue());
        const DoubleVector vector{1, std::numeric_limits<double>::infinity()};
        QCOMPARE(toJson(QVariant::fromValue(vector)), QJsonValue(QJsonArray{1, QJsonValue()}));
        QCOMPARE(toJson(QStringList{QStringLiteral("a")}), QJsonValue(QJsonArray{QStringLiteral("a")}));
        const QVariantMap nested{{QStringLiteral("m"), QVariantList{QVariantHash{{QStringLiteral("k"), 1}}}}};
        QCOMPARE(toJson(nested)[QStringLiteral("m")][0][QStringLiteral("k")], QJsonValue(1));
    }

    void alignedText()
    {
        const QString text = TableExport::alignedText(
            {QStringLiteral("Name"), QStringLiteral("x")},
            {{QStringLiteral("C1"), QStringLiteral("1.5")}, {QStringLiteral("Carbon"), QStringLiteral("-10.25")}});
        QCOMPARE(text, QStringLiteral("Name         x\n------  ------\nC1         1.5\nCarbon  -10.25\n"));
    }

    /// When one of several files cannot be written, the others do not appear, and what was there before stays.
    void allFilesOrNone()
    {
        QTemporaryDir directory;
        const QString kept = directory.filePath(QStringLiteral("kept.csv"));
        {
            OutputFiles files;
            files.open(kept).write("old");
            QVERIFY(!QFile::exists(kept));
            files.commit();
        }
        try {
            OutputFiles files;
            files.open(kept).write("new");
            files.open(directory.filePath(QStringLiteral("no/such/place.csv")));
            QFAIL("a file in a missing directory was opened");
        } catch (const std::exception &error) {
            QVERIFY(QByteArray(error.what()).contains("place.csv"));
        }
        QFile file(kept);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("old"));
        QCOMPARE(QDir(directory.path()).entryList(QDir::Files), QStringList{QStringLiteral("kept.csv")});
    }
};

QTEST_GUILESS_MAIN(TestExport)
#include "tst_export.moc"
