// SPDX-License-Identifier: BSD-3-Clause
#include "Built.h"
#include "Failure.h"
#include "FakeHost.h"
#include "support/HostContract.h"
#include "support/IPlugin_v1_4.h"
#include "support/MetaTypes.h"

#include <QtTest>

static QStringList logged;
static QString water; // a file
static QPointer<QObject> plugin;

static QPluginLoader &loader()
{
    static QPluginLoader loader(built(u"plugins/libmagresfilefilter.so"));
    return loader;
}

/// The library's plug-in for the host that is there, in place of the last one.
static IPlugin_v1_4 *loadPlugin()
{
    delete plugin;
    plugin = loader().instance();
    if (!plugin)
        qFatal("%s", qPrintable(loader().errorString()));
    return qobject_cast<IPlugin_v1_4 *>(plugin);
}

static QList<QGraphicsWidget *> read(const QString &fileName, QObject *reader = plugin)
{
    return call(reader, "fileFilter_read", QList<QGraphicsWidget *>(), fileName, QRectF(10, 20, 30, 40));
}

/// A host in which the plug-in has read a file.
class OpenedHost : public FakeHost {
public:
    explicit OpenedHost(const QString &file = water, bool isHeadless = true, const QByteArray &without = "-",
                        const QString &language = {})
        : FakeHost(without)
    {
        window->language = language;
        qApp->setProperty("isHeadless", isHeadless);
        loadPlugin();
        items = read(file);
    }

    QList<QGraphicsWidget *> items;
};

static void makeSpectrum(const FakeHost &host, const QString &nucleus = {})
{
    if (!nucleus.isEmpty())
        QSettings().setValue(u"magresPlugin/nucF2"_s, nucleus);
    tell(host.scene->table, "createSpectrum");
}

/// What a command tells the user.
static QString report(const char *method)
{
    logged.clear();
    tell(plugin, method);
    return logged.join(u'|');
}

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

/// The message that selects these atoms.
static QVariantMap aboutAtoms(const QVariantList &atoms, int type = 22)
{
    return {{u"type"_s, type}, {u"data"_s, atoms}};
}

static QVariantMap experimental(const QList<double> &positions, const QList<double> &positionsF1 = {})
{
    QVariantList peaks;
    for (qsizetype i = 0; i < positions.size(); ++i) {
        const DoubleVector position{positions[i], positionsF1.value(i)};
        peaks.append(QVariantMap{{u"Pos"_s, QVariant::fromValue(position)}, {u"Height"_s, 1.0}});
    }
    return {{u"Peaks"_s, QVariantMap{{u"PeakList"_s, peaks}}}};
}

/// Hands on the map with one of its values replaced by one of another type, for every value at every depth.
static void eachWithAnything(const QVariantMap &map, const std::function<void(const QVariantMap &)> &use)
{
    const QVariantList numbered{1, u"x"_s, QVariant()};
    const QVariantMap keyed{{u"0"_s, 1}, {u"x"_s, QVariantMap{{u"pos"_s, 7}}}};
    for (auto it = map.begin(); it != map.end(); ++it) {
        const auto replaced = [&](const QVariant &value) {
            QVariantMap changed = map;
            changed.insert(it.key(), value);
            use(changed);
        };
        for (const QVariant &other : QVariantList{QVariant(), 5, std::nan(""), u"text"_s, numbered, keyed})
            replaced(other);
        if (it->typeId() == QMetaType::QVariantMap)
            eachWithAnything(it->toMap(), replaced);
    }
}

static const QString stackHint =
    u"Error\nThis function requires experimental and MAGRES spectra in the same stack. Both "
    "spectra should have the same number of the compound peaks.\n\n"_s;

/// Somebody at the screen: notes what opens, title and text, and answers it.
class User : public QTimer {
public:
    using Answer = std::function<void(QDialog *)>;

    explicit User(Answer answer = &QDialog::accept) : m_answer(std::move(answer))
    {
        callOnTimeout([this] { look(); });
        start(0);
    }

    QStringList seen;

private:
    void look()
    {
        const QPointer<QDialog> dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        if (const auto *box = qobject_cast<QMessageBox *>(dialog)) {
            const bool whole = box->standardButtons() == QMessageBox::Ok && qobject_cast<QMainWindow *>(box->parent());
            const QStringList kinds{u"?"_s, u"result"_s, u"?"_s, u"failure"_s, u"?"_s};
            seen.append((whole ? kinds[box->icon()] : u"odd box"_s) + u": "_s + box->windowTitle() + u'\n'
                        + box->text());
            return dialog->accept();
        }
        seen.append(dialog->windowTitle());
        m_answer(dialog);
    }

    Answer m_answer;
};

/// The built plug-in library in hosts of several degrees of completeness.
class tst_Plugin : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        qInstallMessageHandler(logMessage);
        // Water, cut by the cell: the second hydrogen lies at the opposite face.
        water = magresFile(
            "[atoms]\nunits lattice Angstrom\nlattice 8 0 0 0 8 0 0 0 8\n"
            "atom H H 1 0.76 0.59 4\natom H H 2 7.24 0.59 4\natom O O 1 0 0 4\n[/atoms]\n"
            "[magres]\nms H 1 24 0 0 0 25 0 0 0 32\nms H 2 26 0 0 0 27 0 0 0 34\nms O 1 250 0 0 0 290 0 0 0 320\n"
            "efg O 1 -0.9 0 0 0 -0.3 0 0 0 1.2\n[/magres]\n",
            u"water.magres"_s);
    }

    void cleanup()
    {
        delete plugin; // the next one finds the next host
        QSettings().clear();
        logged.clear();
    }

    void metadata()
    {
        const QJsonObject all = loader().metaData();
        QCOMPARE(all.value("IID"_L1).toString(), u"org.toran.IPlugin/1.0"_s);
        QCOMPARE(all.value("className"_L1).toString(), u"TMagresFileFilterPlugin"_s);
        QCOMPARE(
            all.value("MetaData"_L1).toObject(),
            json("{'dependencies': [{'name': 'TORAN', 'version': [3, 1, 6227]}, {'name': 'Qt', 'version': [6, 5]}],"
                 "'description': {'en': 'MARGES file filter (<a href=\\\"https://www.ccpnc.ac.uk/docs/magres\\\">"
                 "https://www.ccpnc.ac.uk/docs/magres</a>)'}, 'id': '{77640B09-B92F-48EB-9CA8-C684B41E57EB}',"
                 "'name': 'MAGRES File Filter Plugin', 'version': [2, 1, 8283]}"));
        // Older hosts ask for their own version of the interface.
        loadPlugin();
        QVERIFY(qobject_cast<IPlugin *>(plugin) && qobject_cast<IPlugin_v1_1 *>(plugin)
                && qobject_cast<IPlugin_v1_2 *>(plugin) && qobject_cast<IPlugin_v1_3 *>(plugin));
    }

    void methodsAndMenu()
    {
        FakeHost host;
        loadPlugin();
        const QMetaObject *meta = plugin->metaObject();
        // With what those answer that only say what the plug-in is.
        QStringList methods;
        for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
            const QMetaMethod method = meta->method(i);
            methods.append(QString::fromLatin1(method.methodSignature()));
            if (method.parameterCount() > 0 || method.returnType() == QMetaType::Void)
                continue;
            QVariant answer(method.returnMetaType());
            method.invoke(plugin, QGenericReturnArgument(method.typeName(), answer.data()));
            methods.last() += u" "_s + answer.toString();
        }
        QCOMPARE(methods.join(u"; "_s),
                 u"updateSpectrum(); autoRef(); calcRmsd(); fileFilter_adapterClass() TPluginFileFilterAdapter; "
                 "fileFilter_customFormat() 1002; fileFilter_canRead() true; fileFilter_canWrite() false; "
                 "fileFilter_name() MAGRES files; fileFilter_extensions() *.magres; fileFilter_matching(QString); "
                 "fileFilter_dataType() 4; fileFilter_read(QString,QRectF); fileFilter_storageType() 1"_s);
        QCOMPARE(call(plugin, "fileFilter_matching", false, water), true);
        QCOMPARE(call(plugin, "fileFilter_matching", true, built(u"plugins/libmagresfilefilter.so")), false);

        QCOMPARE(host.services->filter, plugin);
        const QMenu *menu = host.window->menu.actions().value(0)->menu();
        QVERIFY(menu->title() == u"MAGRES" && !menu->icon().isNull());
        QCOMPARE(texts(menu), (QStringList{u"Edit Spectrum..."_s, u"Auto reference"_s, u"RMSD"_s}));
    }

    void metadataCheck()
    {
        const FakeHost host;
        static const struct {
            const char *dependencies, *rest;
            bool accepted;
            const char *shown;
        } rows[] = {
            {"'name': 'qT', 'version': [6, 5, 3]", "", true, "N"},
            {"'name': 'Qt', 'version': [6, 4]", "", false, ""},
            {"'name': 'Qt', 'version': [6, 6]", "", false, ""},
            {"'name': 'Qt', 'version': [5, 15]}, {'name': 'Qt', 'version': [6, 5]", "", false, ""},
            {"'name': 5, 'version': 'x'", "", false, ""},
            {"", ", 'dependencies': {'name': 'Qt', 'version': [6, 5]}", false, ""},
            {"'name': 'QT', 'version': [6, 5]", ", 'display_name': 'D', 'product': {'name': 'licensed'}", true, "D"},
            {"'name': 'QT', 'version': [6, 5]", ", 'product': {'name': 'x'}", false, "N"}};
        for (const auto &[dependencies, rest, accepted, shown] : rows) {
            IPlugin_v1_4 *interface = loadPlugin();
            const QByteArray text = QByteArray("{'dependencies': [{") + dependencies + "}], 'name': 'N'" + rest + '}';
            QVERIFY2(interface->setMetaData(json(text)) == accepted, text);
            QCOMPARE(interface->display_name(), QLatin1String(shown));
            QCOMPARE(interface->name(), plugin->objectName());
        }
    }

    void descriptionInTheHostsLanguage()
    {
        QWidget decoy;
        decoy.setObjectName(u"mainWindow"_s); // of that name, but no window of a host
        FakeHost host;
        IPlugin_v1_4 *interface = loadPlugin();
        QVERIFY(interface->setMetaData(
            json("{'dependencies': [{'name': 'Qt', 'version': [6, 5]}], 'id': 'I', 'version': [7, 8, 9], 'name': 'N',"
                 "'command_line_options': ['a', 2], 'description': {'en': 'E', 'de': 'D', 'fr': ''}}")));
        for (const auto &[language, text] :
             {std::pair("", "E"), std::pair("de", "D"), std::pair("fr", "E"), std::pair("it", "E")}) {
            host.window->language = QLatin1String(language);
            QCOMPARE(interface->description(), QLatin1String(text));
        }
        QCOMPARE(interface->version(), qMakePair(7, 8));
        QCOMPARE(interface->id() + interface->name() + plugin->objectName(), u"INN"_s);
        QCOMPARE(interface->command_line_options(), (QVariantList{u"a"_s, 2.0}));
    }

    void makesTables()
    {
        const OpenedHost host;
        auto *interface = qobject_cast<IPlugin_v1_4 *>(plugin);
        QVERIFY(interface->canCreateItem(66542) && !interface->canCreateItem(66541));
        QCOMPARE(interface->createItem(66541), nullptr);
        const std::unique_ptr<QObject> table(interface->createItem(66542));
        QCOMPARE(call(table.get(), "tableItem_type", 0), 66542);

        // Restored from a document: only the identity of the data is kept.
        const QVariantMap kept{{u"DataID"_s, host.services->data.firstKey()}};
        for (const auto &[map, rows] : {std::pair(QVariantMap(), 0), std::pair(kept, 3)}) {
            tell(table.get(), "tableItem_fromMap", map);
            QCOMPARE(call(table.get(), "tableModel_rowCount", -1), rows);
        }
        QCOMPARE(call(table.get(), "tableModel_toMap", QVariantMap()), kept);

        // As in a host without windows.
        FakeItem item;
        tell<QGraphicsWidget *, QAbstractItemView *, QAbstractItemModel *>(table.get(), "tableItem_init", &item,
                                                                           nullptr, nullptr);
        tell(table.get(), "tableItem_onLMessage", aboutAtoms({0}));
        for (const char *slot : {"onSelectionChanged", "onDataChanged"})
            QVERIFY(tell(table.get(), slot));
        QCOMPARE(item.messages, QVariantList{aboutAtoms({})});
        QCOMPARE(call(table.get(), "tableModel_rowCount", -1), 3);
    }

    void readingMakesMoleculeDataAndTable()
    {
        const OpenedHost host;
        QCOMPARE(host.items, (QList<QGraphicsWidget *>{host.scene->molecule, host.scene->tableItem}));
        QCOMPARE(host.scene->tableItem->linked, host.scene->molecule);
        makeSpectrum(host, u"1H"_s);
        QCOMPARE(host.scene->placed,
                 (QStringList{u"molecule 10,20 30x40 0"_s, u"table 0,0 0x0 0"_s, u"spectrum 0,0 100x100 1"_s}));
        QCOMPARE(host.scene->dataItems, QList<QGraphicsWidget *>{nullptr}); // with the document itself
        const QVariantMap data = host.services->data.first();
        QCOMPARE(data.value(u"molItemID"_s).toUuid(), host.scene->molecule->id);

        QCOMPARE(texts(host.scene->tableItem->menu),
                 (QStringList{u"MAGRES"_s, u"Create spectrum..."_s, u"Set Quadrupolar Isotope..."_s}));
        QVERIFY(!host.scene->tableItem->menu->actions()[0]->icon().isNull());

        // Rows tell the molecule which atoms are selected, and are selected by its messages.
        host.scene->view->selectRow(2);
        QCOMPARE(host.scene->tableItem->messages.last().toMap(), aboutAtoms({2}));
        const qsizetype sent = host.scene->tableItem->messages.size();
        tell(host.scene->table, "tableItem_onLMessage", aboutAtoms({0, 1, 77}));
        QCOMPARE(host.scene->view->selectionModel()->selectedRows().size(), 2);
        QCOMPARE(host.scene->tableItem->messages.size(), sent);
    }

    /// Seven carbons in a row, cut by two faces, in an order of the file in which the parts find each other only the
    /// second time.
    void moleculesThatTwoFacesCut()
    {
        const OpenedHost host(
            magresFile("[atoms]\nlattice 10 0 0 0 10 0 0 0 10\natom C C 1 0.5 0.5 5\natom C C 2 2 0.5 5\n"
                       "atom C C 3 3.5 0.5 5\natom C C 4 7.5 9 5\natom C C 5 7.5 7.5 5\natom C C 6 9 0.5 5\n"
                       "atom C C 7 7.5 0.5 5\n"));
        QStringList atoms;
        for (const QVariant &entry : host.scene->molecule->molecule.value(u"Atoms"_s).toList()) {
            const QVariantMap atom = entry.toMap();
            for (const auto &[before, key] : {std::pair(' ', u"X"_s), std::pair(',', u"Y"_s), std::pair(',', u"Z"_s)})
                atoms.append(QLatin1Char(before) + atom[key].toString());
            for (int bonded : atom[u"NB.Num"_s].value<QList<int>>())
                atoms.append(u'-' + QString::number(bonded));
        }
        QCOMPARE(atoms.join(QString()),
                 u" 10.5,0.5,5-1-5 12,0.5,5-0-2 13.5,0.5,5-1 7.5,-1,5-4-6 7.5,-2.5,5-3 9,0.5,5-0-6 7.5,0.5,5-3-5"_s);
    }

    void tableAnswersItsHost()
    {
        const OpenedHost host;
        QObject *table = host.scene->table;
        QCOMPARE(call(table, "tableItem_sharedDataIds", QList<QUuid>()), host.services->data.keys());
        QCOMPARE(call(table, "tableItem_sharedDataOwner", false), true);
        QCOMPARE(call(table, "tableItem_objectTitle", QString()), u"MAGRES Table"_s);
        QCOMPARE(call(table, "tableItem_defTitle", QString()), u"MAGRES Table"_s);
        QCOMPARE(call(table, "tableItem_settingsKey", QString()), u"MagresTable"_s);
        QCOMPARE(call(table, "tableItem_itemChange", QVariant(), 9, QVariant(u"value"_s)).toString(), u"value"_s);

        const FakeModel &model = *host.scene->model;
        const auto row = [&](int number, int role) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column)
                cells.append(model.index(number, column).data(role).toString());
            return cells.join(u'|');
        };
        QCOMPARE(row(0, Qt::DisplayRole), u"H|H1|27.000|7.500|0.20|||"_s);
        QCOMPARE(row(2, Qt::DisplayRole), u"O|O1|286.667|-55.000|0.82|1.200|0.50|-7.210"_s);
        QVERIFY(row(2, Qt::EditRole).startsWith(u"O|O1|286.66666666666"_s));
        QCOMPARE(model.index(2, 2).data(Qt::EditRole).typeId(), QMetaType::Double);
        QCOMPARE(model.index(0, 7).data(), QVariant());
        QCOMPARE(row(2, Qt::ToolTipRole), u"|||||||Isotope: 17O"_s);
        QCOMPARE(row(0, Qt::ToolTipRole), u"|||||||"_s);
        QCOMPARE(row(2, Qt::DecorationRole), u"|||||||"_s);
        const auto rawId = [&](const QModelIndex &index) { return call(table, "tableModel_rawId", QUuid(), index); };
        QVariantList ids;
        for (const QVariant &entry : call(table, "tableModel_rows", QVariantList()))
            ids.append(entry.toMap()[u"ID"_s]);
        QCOMPARE(ids, (QVariantList{rawId(model.index(0, 0)), rawId(model.index(1, 0)), rawId(model.index(2, 0))}));
        QVERIFY(ids[0] != ids[2]);
        const QStandardItemModel larger(9, 9);
        for (const QModelIndex &outside : {QModelIndex(), larger.index(3, 0), larger.index(0, 8)})
            QVERIFY(!model.data(outside, Qt::DisplayRole).isValid());
        QVERIFY(rawId(larger.index(3, 0)).isNull() && rawId({}).isNull());

        const auto header = [&](int column, Qt::Orientation orientation, int role) {
            return call(table, "tableModel_headerData", QVariant(), column, orientation, role).toString();
        };
        QStringList headers;
        for (int column = 0; column < 9; ++column)
            headers.append(header(column, Qt::Horizontal, Qt::DisplayRole));
        QCOMPARE(headers.join(u'|'), u"Element|Labels|Iso, ppm|Aniso, ppm|η|eQ|η(Q)|Cq, MHz|"_s);
        QCOMPARE(header(0, Qt::Vertical, Qt::DisplayRole) + header(0, Qt::Horizontal, Qt::EditRole), QString());
    }

    /// Column codes and decimals by what the file has.
    void tableColumns()
    {
        for (const auto &[records, expected] :
             {std::pair("", "0 -1 0 1 -1 0"), std::pair("ms", "0 -1 0 1 -1 0 2 3 0 3 3 0 4 2 0"),
              std::pair("efg", "0 -1 0 1 -1 0 5 3 0 6 2 0 7 3 0")}) {
            const OpenedHost host(magresFile(QByteArray("[atoms]\natom C C 1 0 0 0\n[/atoms]\n[magres]\n") + records
                                             + " C 1 1 0 0 0 2 0 0 0 4\n"));
            QStringList columns;
            for (const QVariant &entry : call(host.scene->table, "tableModel_columns", QVariantList())) {
                const QVariantMap column = entry.toMap();
                for (const QString &key : {u"Type"_s, u"Digits"_s, u"Units"_s})
                    columns.append(column[key].toString());
            }
            QCOMPARE(columns.join(u' '), QLatin1String(expected));
        }
    }

    /// Messages of other kinds select nothing; those about atoms bring the first row into view.
    void selectedRowsComeIntoView()
    {
        QByteArray atoms;
        for (int i = 1; i <= 60; ++i)
            atoms += "atom C C " + QByteArray::number(i) + ' ' + QByteArray::number(9 * i) + " 0 0\n";
        const OpenedHost host(magresFile("[atoms]\n" + atoms));
        QTableView *view = host.scene->view.get();
        view->resize(300, 120);
        view->show();
        for (const auto &[type, rows, ranges] : {std::tuple(21, 0, 0), std::tuple(22, 4, 2)}) {
            tell(host.scene->table, "tableItem_onLMessage", aboutAtoms({55, 41, 42, 40}, type));
            QCOMPARE(view->selectionModel()->selectedRows().size(), rows);
            QCOMPARE(view->selectionModel()->selection().size(), ranges); // few, since their number costs time
            const QPoint row40 = view->visualRect(view->model()->index(40, 0)).center();
            QCOMPARE(view->viewport()->rect().contains(row40), type == 22);
        }
    }

    void stacksThatCannotBeCompared()
    {
        const QString neither = u"Neither of the spectra is generated from MAGRES"_s;
        const QString both = u"Both spectra are generated from MAGRES. One should be experimental"_s;
        const QString gone = u"The document has no MAGRES data"_s;
        const QString counts = u"The MAGRES spectrum has 2 compound peaks and the experimental spectrum has 3"_s;
        const QString zero = u"There are 0 spectra in this plot. Two is expected"_s;
        const QString one = u"There is 1 spectrum in this plot. Two is expected"_s;
        const QString three = u"There are 3 spectra in this plot. Two is expected"_s;
        const struct {
            QString entries; // M: simulated, with two peaks; a number: measured, with as many
            bool hasData;
            QString reference, rmsd; // why there is none
        } rows[] = {{u""_s, true, zero, zero},          {u"M"_s, false, one, one},    {u"M22"_s, true, three, three},
                    {u"23"_s, false, neither, neither}, {u"MM"_s, false, both, both}, {u"M3"_s, false, gone, counts},
                    {u"3M"_s, true, counts, counts},    {u"M2"_s, true, {}, {}},      {u"2M"_s, true, {}, {}},
                    {u"2M"_s, false, gone, {}}};
        for (const auto &[entries, hasData, reference, rmsd] : rows) {
            const OpenedHost host;
            QSettings().setValue(u"magresPlugin/ref"_s, QVariantMap{{u"1H"_s, 31.0}});
            for (QChar entry : entries) {
                if (entry == u'M')
                    makeSpectrum(host, u"1H"_s);
                else
                    host.services->addEntry(experimental(QList<double>{4.75, 2.25, 7.0}.first(entry.digitValue())));
            }
            if (!hasData)
                host.services->data.clear();
            const auto before = host.services->entries;
            QCOMPARE(report("calcRmsd"), rmsd.isEmpty() ? u"RMSD\nRMSD: 0.559017 ppm"_s : stackHint + rmsd);
            QVERIFY(host.services->entries == before);
            QCOMPARE(report("autoRef"),
                     reference.isEmpty() ? u"New reference\nReference is changed from 31 ppm to 31.5 ppm\n\n"
                                           "Old RMSD: 0.559017 ppm\nNew RMSD: 0.25 ppm"_s
                                         : stackHint + reference);
            QCOMPARE(host.services->entries == before, !reference.isEmpty());
        }
    }

    /// Two dimensions with unlike nuclei and units; the molecule's notes of both, beside those of another spectrum.
    void twoDimensionsThroughToFit()
    {
        const OpenedHost host;
        QSettings().setValue(u"magresPlugin/nucF1"_s, u"17O"_s);
        QSettings().setValue(u"magresPlugin/specType"_s, 1);
        QSettings().setValue(u"magresPlugin/ref"_s, QVariantMap{{u"1H"_s, 31.0}, {u"17O"_s, 286.0}});
        makeSpectrum(host, u"1H"_s);
        QCOMPARE(logged, QStringList());
        const QUuid entry = host.services->activeEntryId;
        const QVariantList peaks = host.services->entryPeakList(entry).value(u"PeakList"_s).toList();
        QCOMPARE(peaks.size(), 2);
        const auto notes = [&] { return host.scene->molecule->molecule.value(u"NMRAssignments"_s).toList(); };
        QVariantList expected;
        for (int dimension = 0; dimension < 2; ++dimension) {
            QVariantList shifts;
            for (int i = 0; i < 2; ++i) {
                const QVariantMap peak = peaks[i].toMap();
                const double position = peak[u"Pos"_s].value<DoubleVector>()[size_t(dimension)];
                shifts.append(QVariantMap{{u"ACount"_s, 1},
                                          {u"AssignedPeaks"_s, QVariantList{peak[u"ID"_s]}},
                                          {u"Nums"_s, QVariantList{dimension == 0 ? i : 2}},
                                          {u"Value"_s, position},
                                          {u"Value.Error"_s, 0.0},
                                          {u"Value.Method"_s, u"MAGRES"_s}});
            }
            const QVariantMap nucleus{{u"Isotope"_s, dimension == 0 ? 1 : 17},
                                      {u"Name"_s, dimension == 0 ? u"H"_s : u"O"_s}};
            expected.append(
                QVariantMap{{u"Nucleus"_s, nucleus}, {u"Origin"_s, entry}, {u"Shifts"_s, shifts}, {u"SpecType"_s, 1}});
        }
        QCOMPARE(notes(), expected);
        QVERIFY(qAbs(peaks[0].toMap()[u"Pos"_s].value<DoubleVector>()[1] - (286.0 - 860.0 / 3.0)) < 1e-9);

        // A second spectrum, and the first once more: each keeps one set of notes.
        QSettings().setValue(u"magresPlugin/specType"_s, 0);
        makeSpectrum(host);
        const QUuid other = host.services->entryIds.last();
        QCOMPARE(notes().size(), 3);
        host.services->activeEntryId = entry;
        QCOMPARE(report("updateSpectrum"), QString());
        QList<QUuid> origins;
        for (const QVariant &note : notes())
            origins.append(note.toMap()[u"Origin"_s].toUuid());
        QCOMPARE(origins, (QList<QUuid>{other, entry, entry}));

        host.services->entryIds = {entry};
        host.services->addEntry(experimental({2.5, 4.5}, {-1.0 / 6.0, 5.0 / 6.0}));
        QCOMPARE(report("calcRmsd"),
                 u"RMSD\nRMSD (direct dimension): 0.5 ppm\nRMSD (indirect dimension): 1.11803 kHz"_s);
        QCOMPARE(report("autoRef"),
                 u"New reference\nDirect dimension reference is changed from 31 ppm to 31.5 ppm\n"
                 "Indirect dimension reference is changed from 286 ppm to 287 ppm\n\n"
                 "Old RMSD. Direct dimension: 0.5 ppm, indirect dimension: 1.11803kHz\n"
                 "New RMSD: Direct dimension: 0 ppm, indirect dimension: 0.5 kHz"_s);
    }

    /// Fits compare the spectra of the item whose menu was opened; an edit is one of the current spectrum.
    void activeItemDecides()
    {
        const OpenedHost host;
        makeSpectrum(host, u"1H"_s);
        host.services->addEntry(experimental({2.5, 4.5}));
        FakeServices none;
        auto *item = new FakeItem;
        host.scene->addItem(item);
        for (QObject *spectra : {static_cast<QObject *>(nullptr), static_cast<QObject *>(&none)}) {
            item->spectra = spectra;
            Q_EMIT host.scene->activeItemChanged(item);
            QCOMPARE(report("calcRmsd").contains(u"There are 0 spectra"_s), spectra != nullptr);
            QCOMPARE(report("updateSpectrum"), QString());
        }
        delete item;
        QVERIFY(report("calcRmsd").startsWith(u"RMSD\n"_s));
    }

    void dialogsAndBoxes()
    {
        const OpenedHost host(water, false);
        const auto seen = [](QObject *object, const char *command, const User::Answer &answer = &QDialog::accept) {
            const User user(answer);
            tell(object, command);
            return user.seen;
        };
        const auto choose = [](const char *nucleus) {
            return [nucleus](QDialog *open) {
                open->findChild<QComboBox *>(u"fCbNucF2"_s)->setCurrentText(QLatin1String(nucleus));
                open->accept();
            };
        };
        const QString dialog = u"MAGRES parameters"_s;
        const QString failure = u"failure: Interrupted\nThe spectrum cannot be %1: Canceled"_s;
        QCOMPARE(seen(host.scene->table, "createSpectrum", &QDialog::reject),
                 (QStringList{dialog, failure.arg(u"generated"_s)}));
        QVERIFY(host.services->entries.isEmpty());
        QCOMPARE(seen(host.scene->table, "createSpectrum", choose("1H")), QStringList{dialog});
        QCOMPARE(host.services->entries.size(), 1);
        const auto before = host.services->entries;
        QCOMPARE(seen(plugin, "updateSpectrum", &QDialog::reject), (QStringList{dialog, failure.arg(u"updated"_s)}));
        QVERIFY(host.services->entries == before);
        QCOMPARE(seen(plugin, "updateSpectrum", choose("2H")), QStringList{dialog});
        QCOMPARE(host.services->entryOrigParams(host.services->activeEntryId, u"magres"_s)[u"nucF2"_s].toString(),
                 u"2H"_s);

        QCOMPARE(seen(plugin, "calcRmsd"),
                 QStringList{u"failure: "_s + stackHint + u"There is 1 spectrum in this plot. Two is expected"_s});
        host.services->addEntry(experimental({72.0, 74.0}));
        QCOMPARE(seen(plugin, "calcRmsd"), QStringList{u"result: RMSD\nRMSD: 1 ppm"_s});
        QCOMPARE(seen(plugin, "autoRef"),
                 QStringList{u"result: New reference\nReference is changed from 100 ppm to 101 ppm\n\n"
                             "Old RMSD: 1 ppm\nNew RMSD: 0 ppm"_s});
        QCOMPARE(logged, QStringList());
    }

    /// An element's isotope, chosen once, is that of the table and of the files that are read later.
    void chosenIsotope()
    {
        const QString file = magresFile("[atoms]\natom C C 1 0 0 0\natom Cl Cl 1 9 0 0\n[/atoms]\n[magres]\n"
                                        "efg C 1 1 0 0 0 1 0 0 0 -2\nefg Cl 1 1 0 0 0 1 0 0 0 -2\n");
        const OpenedHost host(file, false);
        const auto tip = [&] { return host.scene->model->index(1, 4).data(Qt::ToolTipRole).toString(); };
        QCOMPARE(tip(), u"Isotope: 35Cl"_s);
        for (const auto &[code, isotope, calls] :
             {std::tuple(QDialog::Rejected, u"35Cl"_s, ""),
              std::tuple(QDialog::Accepted, u"37Cl"_s, "delCustomData setCustomData")}) {
            const User user([code = code](QDialog *dialog) {
                dialog->findChild<QComboBox *>(u"fCbIso"_s)->setCurrentText(u"37Cl"_s);
                dialog->done(code);
            });
            trace.calls.clear();
            tell(host.scene->table, "setQuadIsotope");
            QCOMPARE(user.seen, QStringList{u"Select quadrupolar isotope"_s});
            QCOMPARE(tip(), u"Isotope: "_s + isotope);
            trace.calls.removeIf([](const QByteArray &name) { return !name.endsWith("CustomData"); });
            QCOMPARE(trace.calls.join(' '), calls);
        }
        const QVariantMap chosen{{u"Cl"_s, u"37Cl"_s}};
        QCOMPARE(host.services->data.first().value(u"QIso"_s).toMap(), chosen);
        QCOMPARE(QSettings().value(u"magresPlugin/QIso"_s).toMap(), chosen);
        QCOMPARE(host.scene->dataItems, QList<QGraphicsWidget *>(3, nullptr));
        QCOMPARE(host.scene->model->index(1, 4).data().toString(), u"-30.230"_s); // 2 * -6.435 * 2.3489
        host.services->data.clear();
        read(file);
        QCOMPARE(tip(), u"Isotope: 37Cl"_s);
    }

    void spectrumThroughToFit()
    {
        const OpenedHost host;
        int waited = 0;
        trace.interruption = [&] {
            const QCursor *cursor = QGuiApplication::overrideCursor();
            waited += cursor && cursor->shape() == Qt::WaitCursor;
        };
        trace.interrupted = "createNMRItem";
        QSettings().setValue(u"magresPlugin/ref"_s, QVariantMap{{u"1H"_s, 31.0}});
        makeSpectrum(host, u"1H"_s);
        QVERIFY(waited == 1 && logged.isEmpty());
        trace.interrupted = "insertSpectrum";
        const QUuid entry = host.services->activeEntryId;
        const QVariantHash made = host.services->entryOrigParams(entry, u"magres"_s);
        QCOMPARE(made.value(u"pts"_s).toInt(), 8192);
        QCOMPARE(QSettings().value(u"magresPlugin/pts"_s).toInt(), 8192);

        // What an entry of the plug-in's menu tells the user.
        const auto chosen = [&](int item) {
            logged.clear();
            host.window->menu.actions().value(0)->menu()->actions().value(item)->trigger();
            return logged.join(u'|');
        };
        QCOMPARE(chosen(0), QString());
        QCOMPARE(host.services->resets, 1);
        QCOMPARE(host.services->entryOrigParams(entry, u"magres"_s), made);
        const QVariantMap updated = host.services->entries.value(entry);
        QVERIFY(updated.contains(u"RawData"_s));
        QVERIFY(updated.value(u"SpecInfo"_s).toMap().value(u"OriginalParameters"_s, 1).isNull());
        QCOMPARE(host.scene->molecule->molecule.value(u"NMRAssignments"_s).toList().size(), 1);

        host.services->addEntry(experimental({2.25, 4.75}));
        QVERIFY(chosen(1).startsWith(u"New reference"_s));
        // The fitted reference is this spectrum's alone, and all else in it as it was.
        QVariantHash fitted = host.services->entryOrigParams(entry, u"magres"_s);
        QVERIFY(fitted.value(u"ref"_s) != made.value(u"ref"_s));
        fitted.insert(u"ref"_s, made.value(u"ref"_s));
        QCOMPARE(fitted, made);
        QCOMPARE(QSettings().value(u"magresPlugin/ref"_s).toMap().value(u"1H"_s).toDouble(), 31.0);
        QCOMPARE(chosen(2), u"RMSD\nRMSD: 0.25 ppm"_s);
        QCOMPARE(host.services->resets, 1); // fits leave the plot's view alone
        QVERIFY(waited == 3 && !QGuiApplication::overrideCursor());
    }

    void eachHostMethodMayBeMissing_data()
    {
        hostMethodsMayThrowOrRefuse_data();
        // Properties are found by name as methods are.
        for (const char *property : {"language", "nmrContextMenu", "entryIds", "activeEntryId", "id"})
            QTest::newRow(property) << QByteArray(property);
    }

    void eachHostMethodMayBeMissing()
    {
        QFETCH(QByteArray, method);
        const OpenedHost host(water, true, method);
        QCOMPARE(host.services->filter, method == "addPluginFilter" ? nullptr : plugin.data());
        QCOMPARE(host.items.size(), method == "createMolItem" || method == "addCustomTableItem" ? 1 : 2);
        QCOMPARE(host.services->data.size(), method == "setCustomData" ? 0 : 1);

        if (host.scene->table)
            makeSpectrum(host, u"1H"_s);
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
            const OpenedHost host;
            makeSpectrum(host, u"1H"_s);
            host.services->addEntry(experimental({2.5, 4.5}));
            const auto data = host.services->data;
            (throws ? trace.throwing : trace.refusing) = method;
            trace.throwsNoStdException = !standard;

            // These come after the spectrum is there.
            const bool comesLate = QByteArrayList{"getNMRData", "molMap", "setMolMap", "fullReset"}.contains(method);
            for (const QByteArray command : {"createSpectrum", "updateSpectrum", "autoRef", "calcRmsd"}) {
                trace.calls.clear();
                logged.clear();
                const QList<QUuid> before = host.services->entries.keys();
                tell(command == "createSpectrum" ? host.scene->table : plugin, command);
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
    void readingMayFail()
    {
        const QString broken = magresFile("[atoms]\natom C C 1 0 0 0\natom H H 1 0 0\n");
        for (const char *method :
             {"createMolItem", "setCustomData", "addCustomTableItem", "linkObject", "beginResetModel"}) {
            FakeHost host;
            loadPlugin();
            QCOMPARE(failure([&] { read(broken); }), "Atom record in line atom H H 1 0 0 cannot be parsed");
            QVERIFY(host.scene->items().isEmpty() && host.services->data.isEmpty());
            trace.throwing = method;
            QCOMPARE(failure([&] { read(water); }), "the host's own trouble");
            trace.throwing.clear();
            QCOMPARE(read(water).size(), 2);
        }
    }

    /// Every value of the maps that hosts keep, replaced by values of other types.
    void mapsMayHoldAnything()
    {
        const OpenedHost host;
        makeSpectrum(host, u"1H"_s);
        host.services->addEntry(experimental({2.5, 4.5}));
        const auto entries = host.services->entries;
        const auto data = host.services->data;
        const QUuid made = host.services->entryIds[0], measured = host.services->entryIds[1];
        int cases = 0;
        const auto runEachWay = [&](const QVariantMap &map, const std::function<void(const QVariantMap &)> &store) {
            eachWithAnything(map, [&](const QVariantMap &changed) {
                store(changed);
                tell(host.scene->table, "tableItem_fromMap", QVariantMap{{u"DataID"_s, data.firstKey()}});
                makeSpectrum(host);
                for (const char *command : {"updateSpectrum", "autoRef", "calcRmsd"}) {
                    const auto before = host.services->entries;
                    const QString told = report(command);
                    // Either the spectrum is a whole one, or nothing changed and somebody was told.
                    const QVariantMap spectrum = host.services->entries.value(made);
                    QVERIFY(host.services->entries != before
                                ? !spectrum[u"DataPoints"_s].isNull() && !spectrum[u"Peaks"_s].toMap().isEmpty()
                                : !told.isEmpty() || qstrcmp(command, "updateSpectrum") == 0);
                }
                host.services->entries = entries;
                host.services->entryIds.resize(2);
                host.services->data = data;
                ++cases;
            });
        };
        runEachWay(data.first(), [&](const QVariantMap &map) { host.services->data.first() = map; });
        const QVariant parameters = host.services->entryOrigParams(made, u"magres"_s);
        runEachWay(parameters.toMap(), [&](const QVariantMap &map) {
            const QMap<QString, QVariantHash> stored{{u"magres"_s, QVariant(map).toHash()}};
            QVariantMap entry = entries.value(made);
            QVariantMap info = entry.value(u"SpecInfo"_s).toMap();
            info.insert(u"OriginalParameters"_s, QVariant::fromValue(stored));
            entry.insert(u"SpecInfo"_s, info);
            host.services->entries[made] = entry;
        });
        runEachWay(experimental({2.5, 4.5}), [&](const QVariantMap &map) { host.services->entries[measured] = map; });
        QVERIFY(cases > 300);
    }

    /// Lists of ids in another form, data whose map names another id, and nothing that is remembered from one command
    /// to the next.
    void hostsMayStoreOtherwise()
    {
        const OpenedHost host;
        host.services->idsAsVariants = true;
        const QUuid asked = host.services->data.firstKey();
        QVariantMap &data = host.services->data.first();
        data.insert(u"ID"_s, QUuid::createUuid());
        makeSpectrum(host, u"1H"_s);
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
        QVariantMap first = shieldings.first().toMap();
        first.insert(u"tensor"_s, QVariant::fromValue(DoubleVector{26, 0, 0, 0, 24, 0, 0, 0, 34})); // 27 ppm before
        shieldings.insert(shieldings.firstKey(), first);
        data.insert(u"shieldings"_s, shieldings);
        QCOMPARE(report("updateSpectrum"), QString());
        QVERIFY2(qAbs(before - highest() - 1.0) < 1e-9, qPrintable(QString::number(before - highest())));
        host.services->data.clear();
        QVERIFY(report("updateSpectrum").contains(u"The document has no MAGRES data"_s));
    }

    /// While a dialog is open, its user and the host go on.
    void thingsMayGoWhileADialogIsOpen()
    {
        enum Effect { Works, LacksData, Any };
        const std::pair<Effect, std::function<void(FakeHost &)>> events[] = {
            {Works, [](FakeHost &) {}},
            {Works, [](FakeHost &host) { delete host.scene->table; }},
            {Works, [](FakeHost &host) { delete std::exchange(host.scene->nmr, nullptr); }},
            {LacksData, [](FakeHost &host) { host.services->data.clear(); }},
            {LacksData,
             [](FakeHost &host) {
                 host.services.reset();
                 host.window->services = host.scene->services = nullptr;
                 qApp->setProperty("nmrDataTables", QVariant());
             }},
            {Any, [](FakeHost &host) { delete std::exchange(host.scene, nullptr); }},
            {Any, [](FakeHost &host) { host.window.reset(); }}};
        const QString failed = u"failure: Interrupted\nThe spectrum cannot be %1: The document has no MAGRES data"_s;
        for (const auto &[effect, happen] : events)
            for (const auto &[command, told, spectra] : {std::tuple("createSpectrum", failed.arg(u"generated"_s), 2),
                                                         std::tuple("setQuadIsotope", QString(), 1),
                                                         std::tuple("updateSpectrum", failed.arg(u"updated"_s), 1)}) {
                OpenedHost host;
                makeSpectrum(host, u"1H"_s);
                qApp->setProperty("isHeadless", false); // and again for a host with a user
                loadPlugin();
                read(water);
                const User user([&, happen = happen](QDialog *dialog) {
                    const QPointer<QDialog> stillThere = dialog;
                    happen(host);
                    if (stillThere)
                        stillThere->accept();
                });
                trace.calls.clear();
                tell(qstrcmp(command, "updateSpectrum") == 0 ? plugin : host.scene->table, command);
                QVERIFY2(!user.seen.isEmpty(), command);
                if (effect != Any)
                    QCOMPARE(user.seen.mid(1).join(u'|'), effect == Works ? QString() : told);
                if (effect == Works) {
                    QCOMPARE(host.services->entries.size(), spectra);
                    QCOMPARE(trace.calls.contains("setCustomData"), qstrcmp(command, "setQuadIsotope") == 0);
                }
            }
    }

    void pluginMayBeLoadedTwiceAndAgain()
    {
        const OpenedHost host;
        const QString copy = m_settings.filePath(u"libcopy.so"_s);
        QVERIFY(QFile::exists(copy) || QFile::copy(built(u"plugins/libmagresfilefilter.so"), copy));
        QPluginLoader second(copy);
        const std::unique_ptr<QObject> twin(second.instance());
        QVERIFY2(twin, qPrintable(second.errorString()));
        QCOMPARE(host.window->menu.actions().size(), 2);
        const QPointer<QObject> table = host.scene->table;
        loader().unload();
        delete plugin;
        // Its tables stay in the document, and harmless.
        for (const char *slot : {"createSpectrum", "setQuadIsotope"})
            tell(table, slot);
        tell(table, "tableItem_fromMap", QVariantMap());
        QCOMPARE(call(table, "tableModel_rowCount", 0), 3);
        QCOMPARE(host.window->menu.actions().size(), 1);
        QCOMPARE(read(water, twin.get()).size(), 2);
        loadPlugin();
        QCOMPARE(read(water).size(), 2);
        // The molecule's twin, as in a document that was opened a second time.
        FakeItem *original = host.scene->molecule;
        auto *image = new FakeItem;
        image->id = original->id;
        image->molecule = original->molecule;
        host.scene->addItem(image);
        makeSpectrum(host, u"1H"_s);
        QVERIFY(original->molecule.contains(u"NMRAssignments"_s) != image->molecule.contains(u"NMRAssignments"_s));
    }

    void german()
    {
        {
            const OpenedHost french(water, true, "-", u"fr"_s);
            QVERIFY(report("updateSpectrum").startsWith(u"Interrupted\n"_s));
        }
        const OpenedHost host(water, false, "-", u"de_AT"_s);
        QCOMPARE(host.scene->tableItem->menu->actions().value(1)->text(), u"Spektrum erzeugen..."_s);
        QCOMPARE(call(host.scene->table, "tableItem_defTitle", QString()), u"MAGRES-Tabelle"_s);
        QCOMPARE(host.scene->model->index(2, 7).data(Qt::ToolTipRole).toString(), u"Isotop: 17O"_s);
        QString hint;
        const User user([&](QDialog *dialog) {
            if (const auto *label = dialog->findChild<QLabel *>(u"fLbSpecHintF2"_s))
                hint = label->text();
            dialog->reject();
        });
        makeSpectrum(host);
        tell(host.scene->table, "setQuadIsotope");
        report("calcRmsd");
        QCOMPARE(user.seen.mid(0, 3),
                 (QStringList{u"MAGRES-Parameter"_s,
                              u"failure: Unterbrochen\nDas Spektrum kann nicht erzeugt werden: Abgebrochen"_s,
                              u"Quadrupolares Isotop wählen"_s}));
        QVERIFY2(user.seen.value(3).startsWith(u"failure: Fehler\nDiese Funktion braucht ein experimentelles"_s)
                     && user.seen.value(3).endsWith(u"In diesem Plot sind 0 Spektren. Es müssen zwei sein"_s),
                 qPrintable(user.seen.value(3)));
        QVERIFY2(hint.startsWith(u"Bereich der Daten: "_s), qPrintable(hint));
        const QString broken = magresFile("[atoms]\natom H H 1\n");
        QCOMPARE(failure([&] { read(broken); }), "Der Atom-Eintrag in der Zeile atom H H 1 ist nicht lesbar");
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
        const OpenedHost host(magresFile("[atoms]\n" + atoms + "[/atoms]\n[magres]\n" + tensors + "[/magres]\n"),
                              false);
        const auto row = [&] { return host.scene->model->index(0, 5).data().toString(); };
        QCOMPARE(row(), u"1.000"_s);
        const QVariantMap stored = host.services->data.first();
        const User user;
        tell(host.scene->table, "setQuadIsotope");
        QCOMPARE(row(), u"1.000"_s);
        QVariantMap kept = host.services->data.first();
        QCOMPARE(kept.take(u"QIso"_s).toMap(), (QVariantMap{{u"O"_s, u"17O"_s}}));
        QCOMPARE(kept.value(u"atoms"_s), stored.value(u"atoms"_s));
        host.scene->view->selectRow(0); // which stands for all of its label
        QCOMPARE(host.scene->tableItem->messages.last().toMap().value(u"data"_s).toList().size(), 12);

        makeSpectrum(host, u"17O"_s);
        const QVariantMap note = host.scene->molecule->molecule.value(u"NMRAssignments"_s).toList().value(0).toMap();
        const QVariantList shifts = note.value(u"Shifts"_s).toList();
        QCOMPARE(shifts.size(), 12);
        for (const QVariant &entry : shifts) {
            const QVariantMap shift = entry.toMap();
            const QVariantList atomNos = shift[u"Nums"_s].toList();
            QVERIFY(atomNos.size() == 1 && shift[u"AssignedPeaks"_s].toList().size() == 1);
            const int atom = atomNos[0].toInt();
            const double iso = (atom < 12 ? atom + 1 : atom) / 3.0;
            QVERIFY(qAbs(shift[u"Value"_s].toDouble() - (100.0 - iso)) < 1e-9);
        }
    }

    void hostObjectsMayBeMissing()
    {
        // No host at all.
        IPlugin_v1_4 *interface = loadPlugin();
        QVERIFY(interface->setMetaData(loader().metaData().value("MetaData"_L1).toObject()));
        QVERIFY(!interface->description().isEmpty());
        QCOMPARE(read(water).size(), 0);

        // A window without scene; services that are gone.
        for (int missing = 0; missing < 3; ++missing) {
            FakeHost host;
            if (missing == 0)
                delete host.scene;
            if (missing == 1)
                host.window->services = nullptr;
            if (missing == 2)
                qApp->setProperty("nmrDataTables", QVariant());
            loadPlugin();
            QCOMPARE(read(water).size(), missing == 0 ? 0 : 2);
            QVERIFY(!report("updateSpectrum").isEmpty() && !report("autoRef").isEmpty());
            delete plugin;
        }
    }

private:
    /// A file of these blocks.
    QString magresFile(const QByteArray &blocks, const QString &name = u"made.magres"_s) const
    {
        return writtenFile(m_settings, name, "#$magres-abinitio-v1.0\n" + blocks);
    }

    QTemporaryDir m_settings;
};

QTEST_MAIN(tst_Plugin)
#include "tst_plugin.moc"
