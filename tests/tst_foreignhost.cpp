// SPDX-License-Identifier: BSD-3-Clause
#include "Built.h"
#include "FakeHost.h"
#include "foreignhost/ForeignHost.h"

#include <QTest>

/// The map as a host hands it out that has stored and restored the numbers under its own name of their type.
static QVariant restored(const QVariant &value)
{
    if (QByteArrayView(value.typeName()).startsWith("std::vector<double"))
        return ForeignHost::variantOf(ForeignHost::numbers(value));
    if (value.typeId() != QMetaType::QVariantMap)
        return value;
    QVariantMap map = value.toMap();
    for (QVariant &entry : map)
        entry = restored(entry);
    return map;
}

static QVariant peakAt(double position)
{
    return QVariantMap{{u"Pos"_s, ForeignHost::variantOf(std::vector<double>{position, 0.0})}, {u"Height"_s, 1.0}};
}

/// A host that is built without our headers. Types are registered for the whole process, so each order has a run of the
/// program: with "before" on the command line the host uses its types before the plug-in is loaded.
class tst_ForeignHost : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void numbersCrossBothWays()
    {
        QTemporaryDir directory;
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, directory.path());
        QSettings().setValue(u"magresPlugin/nucF2"_s, u"1H"_s);
        QFile file(directory.filePath(u"two.magres"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("#$magres-abinitio-v1.0\n[atoms]\natom H H 1 0.5 0 4\natom H H 2 3 4 5\n[/atoms]\n"
                   "[magres]\nms H 1 24 0 0 0 25 0 0 0 32\nms H 2 26 0 0 0 27 0 0 0 34\n[/magres]\n");
        file.close();

        FakeHost host;
        QPluginLoader loader(built(u"plugins/libmagresfilefilter.so"));
        QObject *plugin = loader.instance();
        QVERIFY2(plugin, qPrintable(loader.errorString()));
        QVERIFY(tell(plugin, "fileFilter_read", file.fileName(), QRectF()));
        QVariantMap &data = host.services->data.first();
        const QVariant position = data[u"atoms"_s].toMap()[u"0"_s].toMap()[u"pos"_s];
        QCOMPARE(QByteArray(position.typeName()), "std::vector<double,std::allocator<double>>");
        QCOMPARE(ForeignHost::numbers(position), (std::vector<double>{0.5, 0, 4}));

        data = restored(data).toMap();
        tell(host.scene->table, "tableItem_fromMap", QVariantMap{{u"DataID"_s, host.services->data.firstKey()}});
        QCOMPARE(host.scene->model->index(1, 2).data().toString(), u"29.000"_s);

        tell(host.scene->table, "createSpectrum");
        const QUuid entry = host.services->activeEntryId;
        const auto points = ForeignHost::lists(host.services->entries.value(entry).value(u"DataPoints"_s));
        QCOMPARE(points.size(), 2);
        QCOMPARE(points[0].size(), size_t(8192));
        QVERIFY(*std::max_element(points[0].begin(), points[0].end()) > 0.9);

        // Peaks at 73 and 71 ppm against measured ones, whose positions are the host's.
        host.services->addEntry({{u"Peaks"_s, QVariantMap{{u"PeakList"_s, QVariantList{peakAt(72), peakAt(74)}}}}});
        tell(plugin, "autoRef");
        const QVariantHash fitted = host.services->entryOrigParams(entry, u"magres"_s);
        QCOMPARE(fitted.value(u"ref"_s).toMap().value(u"1H"_s).toDouble(), 101.0);
        delete plugin;
    }
};

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "before") == 0) {
        ForeignHost::useTypes();
        --argc;
    }
    tst_ForeignHost test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_foreignhost.moc"
