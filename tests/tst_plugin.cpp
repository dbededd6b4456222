// SPDX-License-Identifier: BSD-3-Clause
#include "FakeHost.h"
#include "support/HostContract.h"
#include "support/IPlugin_v1_4.h"
#include "support/MetaTypes.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPluginLoader>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

FakeHost::FakeHost(const QByteArray &without)
    : services(std::make_unique<Crippled<FakeServices>>(without)),
      window(std::make_unique<Crippled<FakeWindow>>(without, services.get())),
      scene(new Crippled<FakeScene>(without, without, services.get(), window.get()))
{
    qApp->setProperty("isHeadless", true);
    qApp->setProperty("fileFilters", QVariant::fromValue<QObject *>(services.get()));
    qApp->setProperty("nmrDataTables", QVariant::fromValue<QObject *>(services.get()));
}

FakeHost::~FakeHost()
{
    for (const char *name : {"isHeadless", "fileFilters", "nmrDataTables"})
        qApp->setProperty(name, QVariant());
}

/// The built plug-in library in hosts of several degrees of completeness.
class tst_Plugin : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void embeddedMetadata();
    void methodIndices();
    void answersFromMetadata();
    void metadataCheck_data();
    void metadataCheck();
    void makesTables();
    void contextMenu();
    void readingMakesMoleculeDataAndTable();
    void unreadableFileLeavesNothing();
    void spectrumThroughToFit();
    void eachHostMethodMayBeMissing_data();
    void eachHostMethodMayBeMissing();
    void hostObjectsMayBeMissing();

private:
    QObject *newPlugin();
    QList<QGraphicsWidget *> read(const QString &fileName);
    void makeSpectrum(FakeHost &host) { QMetaObject::invokeMethod(host.scene->table, "createSpectrum"); }
    QString report(const char *method);

    QPluginLoader m_loader{QStringLiteral(PLUGIN_FILE)};
    QTemporaryDir m_settings;
    QString m_file;
};

static QStringList logged;

static void logMessage(QtMsgType, const QMessageLogContext &context, const QString &message)
{
    if (context.category && qstrcmp(context.category, "magres") == 0)
        logged.append(message);
}

void tst_Plugin::initTestCase()
{
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
    qInstallMessageHandler(logMessage);
    m_file = m_settings.filePath(QStringLiteral("water.magres"));
    QFile file(m_file);
    QVERIFY(file.open(QIODevice::WriteOnly));
    // Water, cut by the cell: the second hydrogen lies at the opposite face.
    file.write("#$magres-abinitio-v1.0\n[atoms]\nunits lattice Angstrom\nlattice 8 0 0 0 8 0 0 0 8\n"
               "atom H H 1 0.76 0.59 4\natom H H 2 7.24 0.59 4\natom O O 1 0 0 4\n[/atoms]\n"
               "[magres]\nms H 1 24 0 0 0 25 0 0 0 32\nms H 2 26 0 0 0 27 0 0 0 34\nms O 1 250 0 0 0 290 0 0 0 320\n"
               "efg O 1 -0.9 0 0 0 -0.3 0 0 0 1.2\n[/magres]\n");
}

void tst_Plugin::cleanup()
{
    delete m_loader.instance(); // the next one finds the next host
    QSettings().clear();
    logged.clear();
}

QObject *tst_Plugin::newPlugin()
{
    QObject *plugin = m_loader.instance();
    if (!plugin)
        qFatal("%s", qPrintable(m_loader.errorString()));
    return plugin;
}

QList<QGraphicsWidget *> tst_Plugin::read(const QString &fileName)
{
    QList<QGraphicsWidget *> items;
    QMetaObject::invokeMethod(m_loader.instance(), "fileFilter_read", Q_RETURN_ARG(QList<QGraphicsWidget *>, items),
                              Q_ARG(QString, fileName), Q_ARG(const QRectF &, QRectF()));
    return items;
}

/// What a command tells the user.
QString tst_Plugin::report(const char *method)
{
    logged.clear();
    QMetaObject::invokeMethod(m_loader.instance(), method);
    return logged.join(QLatin1Char('|'));
}

void tst_Plugin::embeddedMetadata()
{
    const QJsonObject all = m_loader.metaData();
    QCOMPARE(all.value(QLatin1String("IID")).toString(), QStringLiteral("org.toran.IPlugin/1.0"));
    QCOMPARE(all.value(QLatin1String("className")).toString(), QStringLiteral("TMagresFileFilterPlugin"));
    const QByteArray expected = R"json({
        "dependencies": [{"name": "TORAN", "version": [3, 1, 6227]}, {"name": "Qt", "version": [6, 5]}],
        "description": {"en": "MARGES file filter (<a href=\"https://www.ccpnc.ac.uk/docs/magres\">https://www.ccpnc.ac.uk/docs/magres</a>)"},
        "id": "{77640B09-B92F-48EB-9CA8-C684B41E57EB}",
        "name": "MAGRES File Filter Plugin",
        "version": [2, 1, 8283]})json";
    QCOMPARE(all.value(QLatin1String("MetaData")).toObject(), QJsonDocument::fromJson(expected).object());
}

void tst_Plugin::methodIndices()
{
    FakeHost host;
    const QMetaObject *meta = newPlugin()->metaObject();
    QCOMPARE(meta->className(), "TMagresFileFilterPlugin");
    const QByteArrayList expected{"updateSpectrum()",
                                  "autoRef()",
                                  "calcRmsd()",
                                  "fileFilter_adapterClass()",
                                  "fileFilter_customFormat()",
                                  "fileFilter_canRead()",
                                  "fileFilter_canWrite()",
                                  "fileFilter_name()",
                                  "fileFilter_extensions()",
                                  "fileFilter_matching(QString)",
                                  "fileFilter_dataType()",
                                  "fileFilter_read(QString,QRectF)",
                                  "fileFilter_storageType()"};
    QCOMPARE(meta->methodCount() - meta->methodOffset(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
        QCOMPARE(meta->method(meta->methodOffset() + i).methodSignature(), expected[i]);

    const auto answer = [&](const char *method, auto value) {
        QMetaObject::invokeMethod(
            m_loader.instance(), method,
            QReturnArgument<decltype(value)>(QMetaType::fromType<decltype(value)>().name(), value));
        return value;
    };
    QCOMPARE(answer("fileFilter_adapterClass", QString()), QStringLiteral("TPluginFileFilterAdapter"));
    QCOMPARE(answer("fileFilter_customFormat", 0), 1002);
    QCOMPARE(answer("fileFilter_canRead", false), true);
    QCOMPARE(answer("fileFilter_canWrite", true), false);
    QCOMPARE(answer("fileFilter_name", QString()), QStringLiteral("MAGRES files"));
    QCOMPARE(answer("fileFilter_extensions", QString()), QStringLiteral("*.magres"));
    QCOMPARE(answer("fileFilter_dataType", 0), 4);
    QCOMPARE(answer("fileFilter_storageType", 0), 1);
}

void tst_Plugin::answersFromMetadata()
{
    FakeHost host;
    auto *plugin = qobject_cast<IPlugin_v1_4 *>(newPlugin());
    QVERIFY(plugin);
    QCOMPARE(plugin->name(), QString());
    QVERIFY(plugin->setMetaData(m_loader.metaData().value(QLatin1String("MetaData")).toObject()));
    QCOMPARE(plugin->name(), QStringLiteral("MAGRES File Filter Plugin"));
    QCOMPARE(plugin->display_name(), plugin->name());
    QCOMPARE(m_loader.instance()->objectName(), plugin->name());
    QCOMPARE(plugin->version(), qMakePair(2, 1));
    QCOMPARE(plugin->id(), QStringLiteral("{77640B09-B92F-48EB-9CA8-C684B41E57EB}"));
    QVERIFY(plugin->command_line_options().isEmpty());
    host.window->language = QStringLiteral("de");
    QVERIFY(plugin->description().startsWith(QStringLiteral("MARGES file filter (<a href=")));
    // Older hosts ask for their own version of the interface.
    QVERIFY(qobject_cast<IPlugin *>(m_loader.instance()) && qobject_cast<IPlugin_v1_1 *>(m_loader.instance())
            && qobject_cast<IPlugin_v1_2 *>(m_loader.instance()) && qobject_cast<IPlugin_v1_3 *>(m_loader.instance()));
}

void tst_Plugin::metadataCheck_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << QByteArray(R"({"name": "N", "dependencies": [{"name": "qT", "version": [6, 5, 3]}]})")
                           << true << "N";
    QTest::newRow("Qt 6.4") << QByteArray(R"({"name": "N", "dependencies": [{"name": "Qt", "version": [6, 4]}]})")
                            << false << "";
    QTest::newRow("Qt 6.6") << QByteArray(R"({"name": "N", "dependencies": [{"name": "Qt", "version": [6, 6]}]})")
                            << false << "";
    QTest::newRow("first Qt counts") << QByteArray(R"({"dependencies": [{"name": "Qt", "version": [5, 15]},
                                                                          {"name": "Qt", "version": [6, 5]}]})")
                                     << false << "";
    QTest::newRow("no dependencies") << QByteArray(R"({"name": "N"})") << false << "";
    QTest::newRow("broken") << QByteArray(R"({"dependencies": {"name": 5, "version": "x"}})") << false << "";
    QTest::newRow("licensed product") << QByteArray(
        R"({"name": "N", "display_name": "D", "product": {"name": "licensed"},
                                        "dependencies": [{"name": "QT", "version": [6, 5]}]})")
                                      << true << "D";
    QTest::newRow("other product") << QByteArray(R"({"name": "N", "product": {"name": "x"},
                                        "dependencies": [{"name": "QT", "version": [6, 5]}]})")
                                   << false << "N";
}

void tst_Plugin::metadataCheck()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, accepted);
    QFETCH(QString, shown);
    FakeHost host;
    auto *plugin = qobject_cast<IPlugin_v1_4 *>(newPlugin());
    QCOMPARE(plugin->setMetaData(QJsonDocument::fromJson(json).object()), accepted);
    QCOMPARE(plugin->display_name(), shown);
}

void tst_Plugin::makesTables()
{
    FakeHost host;
    auto *plugin = qobject_cast<IPlugin_v1_4 *>(newPlugin());
    QVERIFY(plugin->canCreateItem(66542) && !plugin->canCreateItem(66541));
    QCOMPARE(plugin->createItem(66541), nullptr);
    const std::unique_ptr<QObject> table(plugin->createItem(66542));
    QVERIFY(table);

    // Restored from a document: only the identity of the data is kept.
    read(m_file);
    const QUuid dataId = host.services->data.firstKey();
    int type = 0, rows = -1;
    QMetaObject::invokeMethod(table.get(), "tableItem_type", Q_RETURN_ARG(int, type));
    QCOMPARE(type, 66542);
    const QVariantMap kept{{QStringLiteral("DataID"), dataId}};
    QMetaObject::invokeMethod(table.get(), "tableItem_fromMap", Q_ARG(QVariantMap, kept));
    QMetaObject::invokeMethod(table.get(), "tableModel_rowCount", Q_RETURN_ARG(int, rows));
    QCOMPARE(rows, 3);
    QVariantMap saved;
    QMetaObject::invokeMethod(table.get(), "tableModel_toMap", Q_RETURN_ARG(QVariantMap, saved));
    QCOMPARE(saved, kept);
    QMetaObject::invokeMethod(table.get(), "tableItem_fromMap", Q_ARG(QVariantMap, QVariantMap()));
    QMetaObject::invokeMethod(table.get(), "tableModel_rowCount", Q_RETURN_ARG(int, rows));
    QCOMPARE(rows, 0);
}

void tst_Plugin::contextMenu()
{
    FakeHost host;
    newPlugin();
    QCOMPARE(host.services->filter, m_loader.instance());
    QCOMPARE(host.window->menu.actions().size(), 1);
    const QMenu *menu = host.window->menu.actions().first()->menu();
    QCOMPARE(menu->title(), QStringLiteral("MAGRES"));
    QVERIFY(!menu->icon().isNull());
    QStringList texts;
    for (const QAction *action : menu->actions())
        texts.append(action->text());
    QCOMPARE(
        texts,
        (QStringList{QStringLiteral("Edit Spectrum..."), QStringLiteral("Auto reference"), QStringLiteral("RMSD")}));
    menu->actions().last()->trigger();
    QCOMPARE(logged.size(), 1);
}

void tst_Plugin::readingMakesMoleculeDataAndTable()
{
    FakeHost host;
    newPlugin();
    const QList<QGraphicsWidget *> items = read(m_file);
    QCOMPARE(items, (QList<QGraphicsWidget *>{host.scene->molecule, host.scene->tableItem}));
    QCOMPARE(host.scene->tableItem->linked, host.scene->molecule);

    const QVariantList atoms = host.scene->molecule->molecule.value(QStringLiteral("Atoms")).toList();
    QCOMPARE(atoms.size(), 3);
    // The oxygen joined one hydrogen at first; the molecule is whole in the end.
    QCOMPARE(atoms[2].toMap().value(QStringLiteral("NB.Num")).value<QList<int>>().size(), 2);
    const QVariantMap data = host.services->data.first();
    QCOMPARE(data.value(QStringLiteral("molItemID")).toUuid(), host.scene->molecule->id);

    QCOMPARE(host.scene->model->index(2, 0).data().toString(), QStringLiteral("O"));
    QCOMPARE(host.scene->model->index(2, 2).data().toString(), QStringLiteral("286.667"));
    QCOMPARE(host.scene->model->index(2, 7).data(Qt::ToolTipRole).toString(), QStringLiteral("Isotope: 17O"));
    QCOMPARE(host.scene->model->index(0, 7).data(), QVariant());
    QVariant header;
    QMetaObject::invokeMethod(host.scene->table, "tableModel_headerData", Q_RETURN_ARG(QVariant, header), Q_ARG(int, 6),
                              Q_ARG(Qt::Orientation, Qt::Horizontal), Q_ARG(int, Qt::DisplayRole));
    QCOMPARE(header.toString(), QStringLiteral("η(Q)"));
    QStringList actions;
    for (const QAction *action : host.scene->tableItem->menu->actions())
        actions.append(action->text());
    QCOMPARE(actions,
             (QStringList{QStringLiteral("MAGRES"), QStringLiteral("Create spectrum..."),
                          QStringLiteral("Set Quadrupolar Isotope...")}));

    // Rows tell the molecule which atoms are selected, and are selected by its messages.
    host.scene->view->selectRow(2);
    QCOMPARE(host.scene->tableItem->messages.last().toMap(),
             (QVariantMap{{QStringLiteral("type"), 22}, {QStringLiteral("data"), QVariantList{2}}}));
    const QVariantMap message{{QStringLiteral("type"), 22}, {QStringLiteral("data"), QVariantList{0, 1, 77}}};
    const qsizetype sent = host.scene->tableItem->messages.size();
    QMetaObject::invokeMethod(host.scene->table, "tableItem_onLMessage", Q_ARG(QVariantMap, message));
    QCOMPARE(host.scene->view->selectionModel()->selectedRows().size(), 2);
    QCOMPARE(host.scene->tableItem->messages.size(), sent);
}

void tst_Plugin::unreadableFileLeavesNothing()
{
    FakeHost host;
    newPlugin();
    const QString broken = m_settings.filePath(QStringLiteral("broken.magres"));
    QFile file(broken);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#$magres-abinitio-v1.0\n[atoms]\natom H H 1 0 0\n");
    file.close();
    for (const auto &[name, message] :
         {std::pair(broken, QStringLiteral("Atom record in line atom H H 1 0 0 cannot be parsed")),
          std::pair(QStringLiteral("/nowhere/x.magres"), QStringLiteral("File /nowhere/x.magres cannot be opened"))}) {
        try {
            read(name);
            QFAIL("no error");
        } catch (const std::exception &error) {
            QCOMPARE(QString::fromUtf8(error.what()), message);
        }
    }
    QVERIFY(host.scene->items().isEmpty() && host.services->data.isEmpty());
}

static QVariantMap experimental(const QList<double> &positions)
{
    QVariantList peaks;
    for (double position : positions)
        peaks.append(QVariantMap{{QStringLiteral("Pos"), QVariant::fromValue(DoubleVector{position, 0.0})},
                                 {QStringLiteral("Height"), 1.0}});
    return {{QStringLiteral("Peaks"), QVariantMap{{QStringLiteral("PeakList"), peaks}}}};
}

void tst_Plugin::spectrumThroughToFit()
{
    FakeHost host;
    newPlugin();
    read(m_file);
    QSettings().setValue(QStringLiteral("magresPlugin/nucF2"), QStringLiteral("1H"));
    QSettings().setValue(QStringLiteral("magresPlugin/ref"), QVariantMap{{QStringLiteral("1H"), 31.0}});
    makeSpectrum(host);
    QCOMPARE(logged, QStringList());
    const QUuid entry = host.services->activeEntryId;
    const QVariantHash made = host.services->entryOrigParams(entry, QStringLiteral("magres"));
    QCOMPARE(made.value(QStringLiteral("nucF2")).toString(), QStringLiteral("1H"));
    QCOMPARE(made.value(QStringLiteral("pts")).toInt(), 8192);
    QCOMPARE(QSettings().value(QStringLiteral("magresPlugin/pts")).toInt(), 8192);

    // Peaks at 4 and 2 ppm; the molecule knows whose they are.
    const QVariantList peaks = host.services->entryPeakList(entry).value(QStringLiteral("PeakList")).toList();
    QCOMPARE(peaks.size(), 2);
    const QVariantList notes = host.scene->molecule->molecule.value(QStringLiteral("NMRAssignments")).toList();
    QCOMPARE(notes.size(), 1);
    const QVariantMap shift = notes[0].toMap().value(QStringLiteral("Shifts")).toList().first().toMap();
    QCOMPARE(shift.value(QStringLiteral("Nums")).toList(), QVariantList{0});
    QCOMPARE(shift.value(QStringLiteral("AssignedPeaks")).toList(),
             QVariantList{peaks[0].toMap().value(QStringLiteral("ID"))});

    QCOMPARE(report("updateSpectrum"), QString());
    QCOMPARE(host.services->insertions, 1);
    QCOMPARE(host.services->resets, 1);
    QCOMPARE(host.services->entryOrigParams(entry, QStringLiteral("magres")), made);
    const QVariantMap updated = host.services->entries.value(entry);
    QVERIFY(updated.value(QStringLiteral("SpecInfo")).toMap().contains(QStringLiteral("OriginalParameters")));
    QVERIFY(updated.value(QStringLiteral("SpecInfo")).toMap().value(QStringLiteral("OriginalParameters")).isNull());
    QCOMPARE(host.scene->molecule->molecule.value(QStringLiteral("NMRAssignments")).toList().size(), 1);

    host.services->addEntry(experimental({2.25, 4.75}));
    QCOMPARE(report("calcRmsd"), QStringLiteral("RMSD\nRMSD: 0.559017 ppm"));
    QCOMPARE(report("autoRef"),
             QStringLiteral("New reference\nReference is changed from 31 ppm to 31.5 ppm\n\n"
                            "Old RMSD: 0.559017 ppm\nNew RMSD: 0.25 ppm"));
    // The fitted reference is this spectrum's alone.
    QCOMPARE(QSettings().value(QStringLiteral("magresPlugin/ref")).toMap().value(QStringLiteral("1H")).toDouble(),
             31.0);
    QCOMPARE(report("calcRmsd"), QStringLiteral("RMSD\nRMSD: 0.25 ppm"));
    const QVariantHash fitted = host.services->entryOrigParams(entry, QStringLiteral("magres"));
    QCOMPARE(fitted.value(QStringLiteral("ref")).toMap().value(QStringLiteral("1H")).toDouble(), 31.5);
}

void tst_Plugin::eachHostMethodMayBeMissing_data()
{
    QTest::addColumn<QByteArray>("method");
    for (const HostMethod *method : HostContract::methods)
        QTest::newRow(method->name) << QByteArray(method->name);
}

void tst_Plugin::eachHostMethodMayBeMissing()
{
    QFETCH(QByteArray, method);
    FakeHost host(method);
    QObject *plugin = newPlugin();
    QCOMPARE(host.services->filter, method == "addPluginFilter" ? nullptr : plugin);
    const QList<QGraphicsWidget *> items = read(m_file);
    QCOMPARE(items.size(), method == "createMolItem" || method == "addCustomTableItem" ? 1 : 2);
    QCOMPARE(host.services->data.size(), method == "setCustomData" ? 0 : 1);

    QSettings().setValue(QStringLiteral("magresPlugin/nucF2"), QStringLiteral("1H"));
    if (host.scene->table)
        makeSpectrum(host);
    const bool hasData = method != "setCustomData" && method != "getDataMap" && method != "dataEngine";
    const bool hasSpectrum = hasData && method != "addCustomTableItem" && method != "createNMRItem";
    QCOMPARE(host.services->entries.size(), hasSpectrum ? 1 : 0);
    if (!hasData)
        QVERIFY(logged.value(0).contains(QStringLiteral("The document has no MAGRES data")));

    const bool findsSpectrum = hasSpectrum && method != "getNMRData" && method != "entryOrigParams";
    QCOMPARE(report("updateSpectrum").isEmpty(), findsSpectrum);
    host.services->addEntry(experimental({2.5, 4.5}));
    const bool canFit =
        hasSpectrum && method != "getNMRData" && method != "entryOrigParams" && method != "entryPeakList";
    QCOMPARE(report("calcRmsd").startsWith(QStringLiteral("RMSD")), canFit || method == "entryPeakList");
    report("autoRef");
}

void tst_Plugin::hostObjectsMayBeMissing()
{
    // No host at all.
    QObject *plugin = newPlugin();
    auto *interface = qobject_cast<IPlugin_v1_4 *>(plugin);
    QVERIFY(interface->setMetaData(m_loader.metaData().value(QLatin1String("MetaData")).toObject()));
    QVERIFY(!interface->description().isEmpty());
    QCOMPARE(read(m_file).size(), 0);

    // A window without scene; services that are gone.
    for (int missing = 0; missing < 3; ++missing) {
        delete m_loader.instance();
        FakeHost host;
        if (missing == 0)
            delete host.scene;
        if (missing == 1)
            host.window->services = nullptr;
        if (missing == 2)
            qApp->setProperty("nmrDataTables", QVariant());
        newPlugin();
        QCOMPARE(read(m_file).size(), missing == 0 ? 0 : 2);
        logged.clear();
        QMetaObject::invokeMethod(m_loader.instance(), "updateSpectrum");
        QMetaObject::invokeMethod(m_loader.instance(), "autoRef");
        QCOMPARE(logged.size(), 2);
        delete m_loader.instance();
    }
}

QTEST_MAIN(tst_Plugin)
#include "tst_plugin.moc"
