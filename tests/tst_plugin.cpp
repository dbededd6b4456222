// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "FakeHost.h"
#include "support/HostContract.h"
#include "support/IPlugin_v1_4.h"
#include "support/MetaTypes.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

static QStringList logged;

static void logMessage(QtMsgType, const QMessageLogContext &context, const QString &message)
{
    if (context.category && qstrcmp(context.category, "magres") == 0)
        logged.append(message);
}

/// JSON written with single quotes.
static QJsonObject json(QByteArray text)
{
    return QJsonDocument::fromJson(text.replace('\'', '"')).object();
}

static QStringList texts(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions())
        texts.append(action->text());
    return texts;
}

static QVariantMap experimental(const QList<double> &positions)
{
    QVariantList peaks;
    for (double position : positions)
        peaks.append(QVariantMap{{u"Pos"_s, QVariant::fromValue(DoubleVector{position, 0.0})}, {u"Height"_s, 1.0}});
    return {{u"Peaks"_s, QVariantMap{{u"PeakList"_s, peaks}}}};
}

/// Hands on the map with one of its values replaced by one of the others, for every value at every depth.
static void eachWith(const QVariantList &others, const QVariantMap &map,
                     const std::function<void(const QVariantMap &)> &use)
{
    for (auto it = map.begin(); it != map.end(); ++it) {
        const auto replaced = [&](const QVariant &value) {
            QVariantMap changed = map;
            changed.insert(it.key(), value);
            use(changed);
        };
        for (const QVariant &other : others)
            replaced(other);
        if (it->typeId() == QMetaType::QVariantMap)
            eachWith(others, it->toMap(), [&](const QVariantMap &inner) { replaced(inner); });
    }
}

/// The built plug-in library in hosts of several degrees of completeness.
class tst_Plugin : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        qInstallMessageHandler(logMessage);
        m_file = m_settings.filePath(u"water.magres"_s);
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::WriteOnly));
        // Water, cut by the cell: the second hydrogen lies at the opposite face.
        file.write(
            "#$magres-abinitio-v1.0\n[atoms]\nunits lattice Angstrom\nlattice 8 0 0 0 8 0 0 0 8\n"
            "atom H H 1 0.76 0.59 4\natom H H 2 7.24 0.59 4\natom O O 1 0 0 4\n[/atoms]\n"
            "[magres]\nms H 1 24 0 0 0 25 0 0 0 32\nms H 2 26 0 0 0 27 0 0 0 34\nms O 1 250 0 0 0 290 0 0 0 320\n"
            "efg O 1 -0.9 0 0 0 -0.3 0 0 0 1.2\n[/magres]\n");
    }

    void cleanup()
    {
        delete m_loader.instance(); // the next one finds the next host
        QSettings().clear();
        logged.clear();
    }

    void metadata()
    {
        const QJsonObject all = m_loader.metaData();
        QCOMPARE(all.value("IID"_L1).toString(), u"org.toran.IPlugin/1.0"_s);
        QCOMPARE(all.value("className"_L1).toString(), u"TMagresFileFilterPlugin"_s);
        QCOMPARE(
            all.value("MetaData"_L1).toObject(),
            json("{'dependencies': [{'name': 'TORAN', 'version': [3, 1, 6227]}, {'name': 'Qt', 'version': [6, 5]}],"
                 "'description': {'en': 'MARGES file filter (<a href=\\\"https://www.ccpnc.ac.uk/docs/magres\\\">"
                 "https://www.ccpnc.ac.uk/docs/magres</a>)'}, 'id': '{77640B09-B92F-48EB-9CA8-C684B41E57EB}',"
                 "'name': 'MAGRES File Filter Plugin', 'version': [2, 1, 8283]}"));

        FakeHost host;
        auto *plugin = qobject_cast<IPlugin_v1_4 *>(newPlugin());
        QVERIFY(plugin);
        QCOMPARE(plugin->name(), QString());
        QVERIFY(plugin->setMetaData(all.value("MetaData"_L1).toObject()));
        QCOMPARE(plugin->name(), u"MAGRES File Filter Plugin"_s);
        QCOMPARE(plugin->display_name(), plugin->name());
        QCOMPARE(m_loader.instance()->objectName(), plugin->name());
        QCOMPARE(plugin->version(), qMakePair(2, 1));
        QCOMPARE(plugin->id(), u"{77640B09-B92F-48EB-9CA8-C684B41E57EB}"_s);
        QVERIFY(plugin->command_line_options().isEmpty());
        host.window->language = u"de"_s;
        QVERIFY(plugin->description().startsWith(u"MARGES file filter (<a href="_s));
        // Older hosts ask for their own version of the interface.
        QVERIFY(qobject_cast<IPlugin *>(m_loader.instance()) && qobject_cast<IPlugin_v1_1 *>(m_loader.instance())
                && qobject_cast<IPlugin_v1_2 *>(m_loader.instance())
                && qobject_cast<IPlugin_v1_3 *>(m_loader.instance()));
    }

    void methodsAndMenu()
    {
        FakeHost host;
        const QMetaObject *meta = newPlugin()->metaObject();
        QCOMPARE(meta->className(), "TMagresFileFilterPlugin");
        const QByteArrayList expected =
            QByteArray("updateSpectrum() autoRef() calcRmsd() fileFilter_adapterClass() fileFilter_customFormat() "
                       "fileFilter_canRead() fileFilter_canWrite() fileFilter_name() fileFilter_extensions() "
                       "fileFilter_matching(QString) fileFilter_dataType() fileFilter_read(QString,QRectF) "
                       "fileFilter_storageType()")
                .split(' ');
        QCOMPARE(meta->methodCount() - meta->methodOffset(), expected.size());
        for (int i = 0; i < expected.size(); ++i)
            QCOMPARE(meta->method(meta->methodOffset() + i).methodSignature(), expected[i]);

        QCOMPARE(host.services->filter, m_loader.instance());
        const QMenu *menu = host.window->menu.actions().value(0)->menu();
        QVERIFY(menu->title() == u"MAGRES" && !menu->icon().isNull());
        QCOMPARE(texts(menu), (QStringList{u"Edit Spectrum..."_s, u"Auto reference"_s, u"RMSD"_s}));

        const auto answer = [&](const char *method, auto value) { return call(m_loader.instance(), method, value); };
        QCOMPARE(answer("fileFilter_adapterClass", QString()), u"TPluginFileFilterAdapter"_s);
        QCOMPARE(answer("fileFilter_customFormat", 0), 1002);
        QCOMPARE(answer("fileFilter_canRead", false), true);
        QCOMPARE(answer("fileFilter_canWrite", true), false);
        QCOMPARE(answer("fileFilter_name", QString()), u"MAGRES files"_s);
        QCOMPARE(answer("fileFilter_extensions", QString()), u"*.magres"_s);
        QCOMPARE(answer("fileFilter_dataType", 0), 4);
        QCOMPARE(answer("fileFilter_storageType", 0), 1);
    }

    void metadataCheck()
    {
        FakeHost host;
        for (const auto &[dependencies, rest, accepted, shown] :
             {std::tuple("'name': 'qT', 'version': [6, 5, 3]", "'name': 'N'", true, "N"),
              std::tuple("'name': 'Qt', 'version': [6, 4]", "'name': 'N'", false, ""),
              std::tuple("'name': 'Qt', 'version': [6, 6]", "'name': 'N'", false, ""),
              std::tuple("'name': 'Qt', 'version': [5, 15]}, {'name': 'Qt', 'version': [6, 5]", "'name': 'N'", false,
                         ""),
              std::tuple("'name': 5, 'version': 'x'", "'name': 'N'", false, ""),
              std::tuple("", "'name': 'N', 'dependencies': {'name': 'Qt', 'version': [6, 5]}", false, ""),
              std::tuple("'name': 'QT', 'version': [6, 5]",
                         "'name': 'N', 'display_name': 'D', 'product': {'name': 'licensed'}", true, "D"),
              std::tuple("'name': 'QT', 'version': [6, 5]", "'name': 'N', 'product': {'name': 'x'}", false, "N")}) {
            delete m_loader.instance();
            auto *plugin = qobject_cast<IPlugin_v1_4 *>(newPlugin());
            const QByteArray text = QByteArray("{'dependencies': [{") + dependencies + "}], " + rest + '}';
            QVERIFY2(plugin->setMetaData(json(text)) == accepted, text);
            QCOMPARE(plugin->display_name(), QLatin1String(shown));
        }
    }

    void makesTables()
    {
        FakeHost host;
        auto *plugin = qobject_cast<IPlugin_v1_4 *>(newPlugin());
        QVERIFY(plugin->canCreateItem(66542) && !plugin->canCreateItem(66541));
        QCOMPARE(plugin->createItem(66541), nullptr);
        const std::unique_ptr<QObject> table(plugin->createItem(66542));
        QCOMPARE(call(table.get(), "tableItem_type", 0), 66542);

        // Restored from a document: only the identity of the data is kept.
        read(m_file);
        const QVariantMap kept{{u"DataID"_s, host.services->data.firstKey()}};
        for (const auto &[map, rows] : {std::pair(kept, 3), std::pair(QVariantMap(), 0)}) {
            QMetaObject::invokeMethod(table.get(), "tableItem_fromMap", Q_ARG(QVariantMap, map));
            QCOMPARE(call(table.get(), "tableModel_rowCount", -1), rows);
            if (rows > 0)
                QCOMPARE(call(table.get(), "tableModel_toMap", QVariantMap()), kept);
        }
    }

    void readingMakesMoleculeDataAndTable()
    {
        FakeHost host;
        newPlugin();
        const QList<QGraphicsWidget *> items = read(m_file);
        QCOMPARE(items, (QList<QGraphicsWidget *>{host.scene->molecule, host.scene->tableItem}));
        QCOMPARE(host.scene->tableItem->linked, host.scene->molecule);

        const QVariantList atoms = host.scene->molecule->molecule.value(u"Atoms"_s).toList();
        QCOMPARE(atoms.size(), 3);
        // The oxygen joined one hydrogen at first; the molecule is whole in the end.
        QCOMPARE(atoms[2].toMap().value(u"NB.Num"_s).value<QList<int>>().size(), 2);
        const QVariantMap data = host.services->data.first();
        QCOMPARE(data.value(u"molItemID"_s).toUuid(), host.scene->molecule->id);

        QCOMPARE(host.scene->model->index(2, 0).data().toString(), u"O"_s);
        QCOMPARE(host.scene->model->index(2, 2).data().toString(), u"286.667"_s);
        QCOMPARE(host.scene->model->index(2, 7).data(Qt::ToolTipRole).toString(), u"Isotope: 17O"_s);
        QCOMPARE(host.scene->model->index(0, 7).data(), QVariant());
        QVariant header;
        QMetaObject::invokeMethod(host.scene->table, "tableModel_headerData", Q_RETURN_ARG(QVariant, header),
                                  Q_ARG(int, 6), Q_ARG(Qt::Orientation, Qt::Horizontal), Q_ARG(int, Qt::DisplayRole));
        QCOMPARE(header.toString(), u"η(Q)"_s);
        QCOMPARE(texts(host.scene->tableItem->menu),
                 (QStringList{u"MAGRES"_s, u"Create spectrum..."_s, u"Set Quadrupolar Isotope..."_s}));

        // Rows tell the molecule which atoms are selected, and are selected by its messages.
        host.scene->view->selectRow(2);
        QCOMPARE(host.scene->tableItem->messages.last().toMap(),
                 (QVariantMap{{u"type"_s, 22}, {u"data"_s, QVariantList{2}}}));
        const QVariantMap message{{u"type"_s, 22}, {u"data"_s, QVariantList{0, 1, 77}}};
        const qsizetype sent = host.scene->tableItem->messages.size();
        QMetaObject::invokeMethod(host.scene->table, "tableItem_onLMessage", Q_ARG(QVariantMap, message));
        QCOMPARE(host.scene->view->selectionModel()->selectedRows().size(), 2);
        QCOMPARE(host.scene->tableItem->messages.size(), sent);
    }

    void unreadableFileLeavesNothing()
    {
        FakeHost host;
        newPlugin();
        QFile file(m_settings.filePath(u"broken.magres"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("#$magres-abinitio-v1.0\n[atoms]\natom C C 1 0 0 0\natom H H 1 0 0\n");
        file.close();
        QCOMPARE(failure([&] { read(file.fileName()); }), "Atom record in line atom H H 1 0 0 cannot be parsed");
        QVERIFY(host.scene->items().isEmpty() && host.services->data.isEmpty());
    }

    void spectrumThroughToFit()
    {
        FakeHost host;
        newPlugin();
        read(m_file);
        QSettings().setValue(u"magresPlugin/nucF2"_s, u"1H"_s);
        QSettings().setValue(u"magresPlugin/ref"_s, QVariantMap{{u"1H"_s, 31.0}});
        makeSpectrum(host);
        QCOMPARE(logged, QStringList());
        const QUuid entry = host.services->activeEntryId;
        const QVariantHash made = host.services->entryOrigParams(entry, u"magres"_s);
        QCOMPARE(made.value(u"pts"_s).toInt(), 8192);
        QCOMPARE(QSettings().value(u"magresPlugin/pts"_s).toInt(), 8192);

        // Peaks at 4 and 2 ppm; the molecule knows whose they are.
        const QVariantList peaks = host.services->entryPeakList(entry).value(u"PeakList"_s).toList();
        QCOMPARE(peaks.size(), 2);
        const QVariantList notes = host.scene->molecule->molecule.value(u"NMRAssignments"_s).toList();
        QCOMPARE(notes.size(), 1);
        const QVariantMap shift = notes[0].toMap().value(u"Shifts"_s).toList().first().toMap();
        QCOMPARE(shift.value(u"Nums"_s).toList(), QVariantList{0});
        QCOMPARE(shift.value(u"AssignedPeaks"_s).toList(), QVariantList{peaks[0].toMap().value(u"ID"_s)});

        QCOMPARE(report("updateSpectrum"), QString());
        QCOMPARE(host.services->resets, 1);
        QCOMPARE(host.services->entryOrigParams(entry, u"magres"_s), made);
        const QVariantMap updated = host.services->entries.value(entry);
        QVERIFY(updated.contains(u"RawData"_s));
        QVERIFY(updated.value(u"SpecInfo"_s).toMap().value(u"OriginalParameters"_s, 1).isNull());
        QCOMPARE(host.scene->molecule->molecule.value(u"NMRAssignments"_s).toList().size(), 1);

        host.services->addEntry(experimental({2.25, 4.75}));
        QCOMPARE(report("autoRef"),
                 u"New reference\nReference is changed from 31 ppm to 31.5 ppm\n\n"
                 "Old RMSD: 0.559017 ppm\nNew RMSD: 0.25 ppm"_s);
        // The fitted reference is this spectrum's alone.
        QCOMPARE(QSettings().value(u"magresPlugin/ref"_s).toMap().value(u"1H"_s).toDouble(), 31.0);
        QCOMPARE(report("calcRmsd"), u"RMSD\nRMSD: 0.25 ppm"_s);
    }

    void eachHostMethodMayBeMissing_data()
    {
        QTest::addColumn<QByteArray>("method");
        for (const HostMethod *method : HostContract::methods)
            QTest::newRow(method->name) << QByteArray(method->name);
        // Properties are found by name as methods are.
        for (const char *property : {"language", "nmrContextMenu", "entryIds", "activeEntryId", "id"})
            QTest::newRow(property) << QByteArray(property);
    }

    void eachHostMethodMayBeMissing()
    {
        QFETCH(QByteArray, method);
        FakeHost host(method);
        QObject *plugin = newPlugin();
        QCOMPARE(host.services->filter, method == "addPluginFilter" ? nullptr : plugin);
        const QList<QGraphicsWidget *> items = read(m_file);
        QCOMPARE(items.size(), method == "createMolItem" || method == "addCustomTableItem" ? 1 : 2);
        QCOMPARE(host.services->data.size(), method == "setCustomData" ? 0 : 1);

        QSettings().setValue(u"magresPlugin/nucF2"_s, u"1H"_s);
        if (host.scene->table)
            makeSpectrum(host);
        const bool hasData = method != "setCustomData" && method != "getDataMap" && method != "dataEngine";
        const bool hasSpectrum = hasData && method != "addCustomTableItem" && method != "createNMRItem";
        QCOMPARE(host.services->entries.size(), hasSpectrum ? 1 : 0);
        if (!hasData)
            QVERIFY(logged.value(0).contains(u"The document has no MAGRES data"_s));

        // An item whose spectrum cannot be told is as good as none.
        const bool takesSpectrum = hasSpectrum && method != "getNMRData" && method != "activeEntryId";
        if (host.scene->table)
            QCOMPARE(logged.isEmpty(), takesSpectrum);
        if (host.scene->molecule && (!takesSpectrum || method == "molMap"))
            QVERIFY(!host.scene->molecule->molecule.contains(u"NMRAssignments"_s));

        const bool findsSpectrum = takesSpectrum && method != "entryOrigParams";
        QCOMPARE(report("updateSpectrum").isEmpty(), findsSpectrum);
        host.services->addEntry(experimental({2.5, 4.5}));
        const bool findsStack =
            hasSpectrum && method != "getNMRData" && method != "entryOrigParams" && method != "entryIds";
        QCOMPARE(report("calcRmsd").startsWith(u"RMSD"_s), findsStack);
        report("autoRef");
    }

    void hostMethodsMayThrowOrRefuse_data()
    {
        QTest::addColumn<QByteArray>("method");
        for (const HostMethod *method : HostContract::methods)
            QTest::newRow(method->name) << QByteArray(method->name);
    }

    void hostMethodsMayThrowOrRefuse()
    {
        QFETCH(QByteArray, method);
        for (const auto &[throws, standard] :
             {std::pair(true, true), std::pair(true, false), std::pair(false, false)}) {
            delete m_loader.instance();
            QSettings().setValue(u"magresPlugin/nucF2"_s, u"1H"_s);
            FakeHost host;
            newPlugin();
            read(m_file);
            makeSpectrum(host);
            host.services->addEntry(experimental({2.5, 4.5}));
            const auto data = host.services->data;
            (throws ? trace.throwing : trace.refusing) = method;
            trace.throwsNoStdException = !standard;

            // These come after the spectrum is there.
            const bool comesLate = QByteArrayList{"getNMRData", "molMap", "setMolMap", "fullReset"}.contains(method);
            for (const char *command : {"createSpectrum", "updateSpectrum", "autoRef", "calcRmsd"}) {
                trace.calls.clear();
                logged.clear();
                const QList<QUuid> before = host.services->entries.keys();
                QObject *target =
                    qstrcmp(command, "createSpectrum") == 0 ? host.scene->table.data() : m_loader.instance();
                QMetaObject::invokeMethod(target, command);
                if (!throws || !trace.calls.contains(method))
                    continue;
                QVERIFY2(logged.join(u' ').contains(standard ? u"the host's own trouble"_s : u"Unknown error"_s),
                         command);
                if (!comesLate)
                    QCOMPARE(host.services->entries.keys(), before);
            }
            QCOMPARE(host.services->data, data);
            QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
        }
    }

    /// A failing read leaves no table behind and can be repeated.
    void readingMayFailInTheHost()
    {
        for (const char *method :
             {"createMolItem", "setCustomData", "addCustomTableItem", "linkObject", "beginResetModel"}) {
            delete m_loader.instance();
            FakeHost host;
            newPlugin();
            trace.throwing = method;
            QCOMPARE(failure([&] { read(m_file); }), "the host's own trouble");
            trace.throwing.clear();
            QCOMPARE(read(m_file).size(), 2);
        }
    }

    /// Every value of the maps that hosts keep, replaced by values of other types.
    void mapsMayHoldAnything()
    {
        const QVariantList wrong{QVariant(),
                                 5,
                                 std::nan(""),
                                 u"text"_s,
                                 QVariantList{1, u"x"_s, QVariant()},
                                 QVariantMap{{u"0"_s, 1}, {u"x"_s, QVariantMap{{u"pos"_s, 7}}}}};
        FakeHost host;
        newPlugin();
        read(m_file);
        QSettings().setValue(u"magresPlugin/nucF2"_s, u"1H"_s);
        makeSpectrum(host);
        host.services->addEntry(experimental({2.5, 4.5}));
        const auto entries = host.services->entries;
        const auto data = host.services->data;
        const QVariantMap table{{u"DataID"_s, data.firstKey()}};
        int cases = 0;
        const auto runAll = [&] {
            QMetaObject::invokeMethod(host.scene->table, "tableItem_fromMap", Q_ARG(QVariantMap, table));
            makeSpectrum(host);
            for (const char *command : {"updateSpectrum", "autoRef", "calcRmsd"}) {
                logged.clear();
                const auto before = host.services->entries;
                QMetaObject::invokeMethod(m_loader.instance(), command);
                // Either the spectrum is a whole one, or nothing changed and somebody was told.
                const QVariantMap spectrum = host.services->entries.value(host.services->entryIds[0]);
                if (host.services->entries != before)
                    QVERIFY(!spectrum.value(u"DataPoints"_s).isNull() && !spectrum.value(u"Peaks"_s).toMap().isEmpty());
                else
                    QVERIFY(!logged.isEmpty() || qstrcmp(command, "updateSpectrum") == 0);
            }
            host.services->entries = entries;
            host.services->entryIds.resize(2);
            host.services->data = data;
            ++cases;
        };
        const auto replaceEach = [&](const QVariantMap &map, const auto &store) {
            eachWith(wrong, map, [&](const QVariantMap &changed) {
                store(changed);
                runAll();
            });
        };
        replaceEach(data.first(), [&](const QVariantMap &map) { host.services->data.first() = map; });
        const QUuid made = host.services->entryIds[0];
        const QVariantHash parameters = host.services->entryOrigParams(made, u"magres"_s);
        QVariantMap asMap;
        for (auto it = parameters.begin(); it != parameters.end(); ++it)
            asMap.insert(it.key(), it.value());
        replaceEach(asMap, [&](const QVariantMap &map) {
            QVariantHash hash;
            for (auto it = map.begin(); it != map.end(); ++it)
                hash.insert(it.key(), it.value());
            QVariantMap entry = entries.value(made);
            QVariantMap info = entry.value(u"SpecInfo"_s).toMap();
            info.insert(u"OriginalParameters"_s, QVariant::fromValue(QMap<QString, QVariantHash>{{u"magres"_s, hash}}));
            entry.insert(u"SpecInfo"_s, info);
            host.services->entries[made] = entry;
        });
        replaceEach(experimental({2.5, 4.5}),
                    [&](const QVariantMap &map) { host.services->entries[host.services->entryIds[1]] = map; });
        QVERIFY(cases > 200);
    }

    /// Lists of ids in another form, data whose map names another id, and nothing that is remembered from one command
    /// to the next.
    void hostsMayStoreOtherwise()
    {
        FakeHost host;
        host.services->idsAsVariants = true;
        newPlugin();
        read(m_file);
        const QUuid asked = host.services->data.firstKey();
        QVariantMap &data = host.services->data.first();
        data.insert(u"ID"_s, QUuid::createUuid());
        QSettings().setValue(u"magresPlugin/nucF2"_s, u"1H"_s);
        makeSpectrum(host);
        const QUuid made = host.services->activeEntryId;
        QCOMPARE(host.services->entryOrigParams(made, u"magres"_s).value(u"magresDataId"_s).toUuid(), asked);
        host.services->addEntry(experimental({2.5, 4.5}));
        QCOMPARE(report("updateSpectrum"), QString());
        QVERIFY(report("autoRef").startsWith(u"New reference"_s));

        const auto highest = [&] {
            const QVariantList peaks = host.services->entryPeakList(made).value(u"PeakList"_s).toList();
            return peaks.first().toMap().value(u"Pos"_s).value<DoubleVector>().at(0);
        };
        const double before = highest();
        QVariantMap shieldings = data.value(u"shieldings"_s).toMap();
        for (QVariant &shielding : shieldings) {
            QVariantMap map = shielding.toMap();
            auto tensor = map.value(u"tensor"_s).value<DoubleVector>();
            for (int i : {0, 4, 8})
                tensor.at(i) += 3.0;
            map.insert(u"tensor"_s, QVariant::fromValue(tensor));
            shielding = map;
        }
        data.insert(u"shieldings"_s, shieldings);
        QCOMPARE(report("updateSpectrum"), QString());
        QVERIFY2(qAbs(before - highest() - 3.0) < 1e-9, qPrintable(QString::number(before - highest())));
        host.services->data.clear();
        QVERIFY(report("updateSpectrum").contains(u"The document has no MAGRES data"_s));
    }

    /// While a dialog is open, its user and the host go on.
    void thingsMayGoWhileADialogIsOpen()
    {
        enum { Nothing, Table, Item, Data, Spectra, Scene, Window };
        for (int gone : {Nothing, Table, Item, Data, Spectra, Scene, Window})
            for (const char *command : {"createSpectrum", "setQuadIsotope", "updateSpectrum"}) {
                delete m_loader.instance();
                QSettings().setValue(u"magresPlugin/nucF2"_s, u"1H"_s);
                auto host = std::make_unique<FakeHost>();
                newPlugin();
                read(m_file);
                makeSpectrum(*host);
                delete m_loader.instance(); // and again for a host with a user
                qApp->setProperty("isHeadless", false);
                newPlugin();
                read(m_file);
                bool done = false;
                QTimer user;
                connect(&user, &QTimer::timeout, this, [&] {
                    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
                    if (!dialog)
                        return;
                    const QPointer<QDialog> stillThere = dialog;
                    if (!std::exchange(done, true)) {
                        if (gone == Table)
                            delete host->scene->table;
                        else if (gone == Item)
                            delete std::exchange(host->scene->nmr, nullptr);
                        else if (gone == Data)
                            host->services->data.clear();
                        else if (gone == Spectra)
                            host->services.reset(), host->window->services = host->scene->services = nullptr,
                                                    qApp->setProperty("nmrDataTables", QVariant());
                        else if (gone == Scene)
                            delete std::exchange(host->scene, nullptr);
                        else if (gone == Window)
                            host->window.reset();
                    }
                    if (stillThere)
                        stillThere->accept();
                });
                user.start(0);
                QObject *table = host->scene->table;
                QMetaObject::invokeMethod(qstrcmp(command, "updateSpectrum") == 0 ? m_loader.instance() : table,
                                          command);
                QVERIFY2(done, command);
                if (gone == Nothing && qstrcmp(command, "setQuadIsotope") == 0) {
                    const QVariantMap kept = host->services->data.last();
                    QVERIFY(kept.value(u"QIso"_s).toMap().contains(u"O"_s)
                            || kept.value(u"QIso"_s).toMap().contains(u"H"_s));
                }
            }
    }

    void pluginMayBeLoadedTwiceAndAgain()
    {
        FakeHost host;
        newPlugin();
        const QString copy = m_settings.filePath(u"libcopy.so"_s);
        QVERIFY(QFile::exists(copy) || QFile::copy(QStringLiteral(PLUGIN_FILE), copy));
        QPluginLoader second(copy);
        QObject *twin = second.instance();
        QVERIFY2(twin, qPrintable(second.errorString()));
        QCOMPARE(host.window->menu.actions().size(), 2);
        read(m_file);
        const QPointer<QObject> table = host.scene->table;
        const QPointer<QObject> first = m_loader.instance();
        m_loader.unload();
        delete first;
        // Its tables stay in the document, and harmless.
        for (const char *slot : {"createSpectrum", "setQuadIsotope"})
            QMetaObject::invokeMethod(table, slot);
        QMetaObject::invokeMethod(table, "tableItem_fromMap", Q_ARG(QVariantMap, QVariantMap()));
        QCOMPARE(call(table, "tableModel_rowCount", 0), 3);
        QCOMPARE(host.window->menu.actions().size(), 1);
        QCOMPARE(read(m_file, twin).size(), 2);
        newPlugin();
        QCOMPARE(read(m_file).size(), 2);
        // The molecule's twin, as in a document that was opened a second time.
        FakeItem *original = host.scene->molecule;
        auto *image = new FakeItem;
        image->id = original->id;
        image->molecule = original->molecule;
        host.scene->addItem(image);
        QSettings().setValue(u"magresPlugin/nucF2"_s, u"1H"_s);
        makeSpectrum(host);
        QVERIFY(original->molecule.contains(u"NMRAssignments"_s) != image->molecule.contains(u"NMRAssignments"_s));
        delete twin;
    }

    void german()
    {
        FakeHost host;
        host.window->language = u"de_AT"_s;
        newPlugin();
        read(m_file);
        QCOMPARE(host.scene->tableItem->menu->actions().value(1)->text(), u"Spektrum erzeugen..."_s);
        QVERIFY(report("updateSpectrum").startsWith(u"Unterbrochen\nDas Spektrum kann nicht aktualisiert werden: "_s));
        delete m_loader.instance();
        host.window->language = u"fr"_s;
        newPlugin();
        QVERIFY(report("updateSpectrum").startsWith(u"Interrupted\n"_s));
    }

    /// Unlike oxygens that share a label, more than nine so that the lists come back in another order.
    void atomsWithOneLabel()
    {
        QByteArray atoms, tensors;
        for (int i = 1; i <= 12; ++i) {
            const QByteArray n = QByteArray::number(i);
            atoms += "atom O O " + n + ' ' + n + "0 0 0\n" + (i == 12 ? "atom C Cx 1 0 50 0\n" : "");
            tensors += "ms O " + n + ' ' + n + " 0 0 0 0 0 0 0 0\nefg O " + n + " -" + n + " 0 0 0 -" + n + " 0 0 0 "
                + n + '\n';
        }
        QFile file(m_settings.filePath(u"oxygens.magres"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("#$magres-abinitio-v1.0\r\n[atoms]\n" + atoms + "[/atoms]\n[magres]\n" + tensors + "[/magres]\n");
        file.close();
        FakeHost host;
        qApp->setProperty("isHeadless", false);
        newPlugin();
        read(file.fileName());
        const auto row = [&] { return host.scene->model->index(0, 5).data().toString(); };
        QCOMPARE(row(), u"1.000"_s);
        const QVariantMap stored = host.services->data.first();
        QTimer user;
        connect(&user, &QTimer::timeout, this, [] {
            if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
                dialog->accept();
        });
        user.start(0);
        QMetaObject::invokeMethod(host.scene->table, "setQuadIsotope");
        QCOMPARE(row(), u"1.000"_s);
        QVariantMap kept = host.services->data.first();
        QCOMPARE(kept.take(u"QIso"_s).toMap(), (QVariantMap{{u"O"_s, u"17O"_s}}));
        QCOMPARE(kept.value(u"atoms"_s), stored.value(u"atoms"_s));

        QSettings().setValue(u"magresPlugin/nucF2"_s, u"17O"_s);
        makeSpectrum(host);
        const QVariantMap note = host.scene->molecule->molecule.value(u"NMRAssignments"_s).toList().value(0).toMap();
        const QVariantList shifts = note.value(u"Shifts"_s).toList();
        QCOMPARE(shifts.size(), 12);
        for (const QVariant &shift : shifts) {
            const int atom = shift.toMap().value(u"Nums"_s).toList().value(0).toInt();
            const double iso = (atom < 12 ? atom + 1 : atom) / 3.0;
            QVERIFY(qAbs(shift.toMap().value(u"Value"_s).toDouble() - (100.0 - iso)) < 1e-9);
            QCOMPARE(shift.toMap().value(u"Nums"_s).toList().size(), 1);
            QCOMPARE(shift.toMap().value(u"AssignedPeaks"_s).toList().size(), 1);
        }
    }

    void hostObjectsMayBeMissing()
    {
        // No host at all.
        QObject *plugin = newPlugin();
        auto *interface = qobject_cast<IPlugin_v1_4 *>(plugin);
        QVERIFY(interface->setMetaData(m_loader.metaData().value("MetaData"_L1).toObject()));
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
            QVERIFY(!report("updateSpectrum").isEmpty() && !report("autoRef").isEmpty());
            delete m_loader.instance();
        }
    }

private:
    /// What a method without arguments returns, in place of the value given.
    template <typename Value>
    static Value call(QObject *object, const char *method, Value value)
    {
        QMetaObject::invokeMethod(object, method, QReturnArgument<Value>(QMetaType::fromType<Value>().name(), value));
        return value;
    }

    QObject *newPlugin()
    {
        QObject *plugin = m_loader.instance();
        if (!plugin)
            qFatal("%s", qPrintable(m_loader.errorString()));
        return plugin;
    }

    QList<QGraphicsWidget *> read(const QString &fileName, QObject *plugin = nullptr)
    {
        QList<QGraphicsWidget *> items;
        QMetaObject::invokeMethod(plugin ? plugin : m_loader.instance(), "fileFilter_read",
                                  Q_RETURN_ARG(QList<QGraphicsWidget *>, items), Q_ARG(QString, fileName),
                                  Q_ARG(const QRectF &, QRectF()));
        return items;
    }

    void makeSpectrum(FakeHost &host) { QMetaObject::invokeMethod(host.scene->table, "createSpectrum"); }
    /// What a command tells the user.
    QString report(const char *method)
    {
        logged.clear();
        QMetaObject::invokeMethod(m_loader.instance(), method);
        return logged.join(u'|');
    }

    QPluginLoader m_loader{QStringLiteral(PLUGIN_FILE)};
    QTemporaryDir m_settings;
    QString m_file;
};

QTEST_MAIN(tst_Plugin)
#include "tst_plugin.moc"
