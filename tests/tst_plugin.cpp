// SPDX-License-Identifier: BSD-3-Clause
#include "Built.h"
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

static QVariantMap experimental(const QList<double> &positions, const QList<double> &positionsF1 = {})
{
    QVariantList peaks;
    for (qsizetype i = 0; i < positions.size(); ++i) {
        const DoubleVector position{positions[i], positionsF1.value(i)};
        peaks.append(QVariantMap{{u"Pos"_s, QVariant::fromValue(position)}, {u"Height"_s, 1.0}});
    }
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
        auto *box = qobject_cast<QMessageBox *>(dialog);
        if (!box) {
            seen.append(dialog->windowTitle());
            m_answer(dialog);
            return;
        }
        const bool whole = box->standardButtons() == QMessageBox::Ok && qobject_cast<QMainWindow *>(box->parent());
        const QString kind = box->icon() == QMessageBox::Critical ? u"failure"_s
            : box->icon() == QMessageBox::Information             ? u"result"_s
                                                                  : u"?"_s;
        seen.append((whole ? kind : u"odd box"_s) + u": "_s + box->windowTitle() + u'\n' + box->text());
        box->accept();
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

    void descriptionInTheHostsLanguage()
    {
        QWidget decoy;
        decoy.setObjectName(u"mainWindow"_s); // of that name, but no window of a host
        FakeHost host;
        auto *plugin = qobject_cast<IPlugin_v1_4 *>(newPlugin());
        QVERIFY(plugin->setMetaData(
            json("{'dependencies': [{'name': 'Qt', 'version': [6, 5]}], 'id': 'I', 'version': [7, 8, 9],"
                 "'command_line_options': ['a', 2], 'description': {'en': 'E', 'de': 'D', 'fr': ''}}")));
        for (const auto &[language, text] :
             {std::pair("", "E"), std::pair("de", "D"), std::pair("fr", "E"), std::pair("it", "E")}) {
            host.window->language = QLatin1String(language);
            QCOMPARE(plugin->description(), QLatin1String(text));
        }
        QCOMPARE(plugin->version(), qMakePair(7, 8));
        QCOMPARE(plugin->command_line_options(), (QVariantList{u"a"_s, 2.0}));
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

        QCOMPARE(host.scene->model->index(0, 7).data(), QVariant());
        QCOMPARE(texts(host.scene->tableItem->menu),
                 (QStringList{u"MAGRES"_s, u"Create spectrum..."_s, u"Set Quadrupolar Isotope..."_s}));
        QVERIFY(!host.scene->tableItem->menu->actions()[0]->icon().isNull());

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

    /// Seven carbons in a row, cut by two faces, in an order of the file in which the parts find each other only the
    /// second time.
    void moleculesThatTwoFacesCut()
    {
        FakeHost host;
        newPlugin();
        read(magresFile("[atoms]\nlattice 10 0 0 0 10 0 0 0 10\natom C C 1 0.5 0.5 5\natom C C 2 2 0.5 5\n"
                        "atom C C 3 3.5 0.5 5\natom C C 4 7.5 9 5\natom C C 5 7.5 7.5 5\natom C C 6 9 0.5 5\n"
                        "atom C C 7 7.5 0.5 5\n"));
        QStringList atoms;
        for (const QVariant &entry : host.scene->molecule->molecule.value(u"Atoms"_s).toList()) {
            const QVariantMap atom = entry.toMap();
            QStringList bonds;
            for (int bonded : atom.value(u"NB.Num"_s).value<QList<int>>())
                bonds.append(QString::number(bonded));
            atoms.append(u"%1,%2,%3 %4"_s.arg(atom[u"X"_s].toDouble())
                             .arg(atom[u"Y"_s].toDouble())
                             .arg(atom[u"Z"_s].toDouble())
                             .arg(bonds.join(u'+')));
        }
        QCOMPARE(atoms.join(u' '),
                 u"10.5,0.5,5 1+5 12,0.5,5 0+2 13.5,0.5,5 1 7.5,-1,5 4+6 7.5,-2.5,5 3 9,0.5,5 0+6 7.5,0.5,5 3+5"_s);
    }

    /// As in a host without windows.
    void tableWithoutAView()
    {
        FakeHost host;
        auto *plugin = qobject_cast<IPlugin_v1_4 *>(newPlugin());
        read(m_file);
        const std::unique_ptr<QObject> table(plugin->createItem(66542));
        FakeItem item;
        QMetaObject::invokeMethod(table.get(), "tableItem_fromMap",
                                  Q_ARG(QVariantMap, (QVariantMap{{u"DataID"_s, host.services->data.firstKey()}})));
        QMetaObject::invokeMethod(table.get(), "tableItem_init", Q_ARG(QGraphicsWidget *, &item),
                                  Q_ARG(QAbstractItemView *, nullptr), Q_ARG(QAbstractItemModel *, nullptr));
        const QVariantMap message{{u"type"_s, 22}, {u"data"_s, QVariantList{0}}};
        QMetaObject::invokeMethod(table.get(), "tableItem_onLMessage", Q_ARG(QVariantMap, message));
        for (const char *slot : {"onSelectionChanged", "onDataChanged"})
            QVERIFY(QMetaObject::invokeMethod(table.get(), slot));
        QCOMPARE(item.messages, (QVariantList{QVariantMap{{u"type"_s, 22}, {u"data"_s, QVariantList()}}}));
        QCOMPARE(call(table.get(), "tableModel_rowCount", -1), 3);
    }

    void tableAnswersItsHost()
    {
        FakeHost host;
        newPlugin();
        read(m_file);
        QObject *table = host.scene->table;
        QCOMPARE(call(table, "tableItem_sharedDataIds", QList<QUuid>()), host.services->data.keys());
        QCOMPARE(call(table, "tableItem_sharedDataOwner", false), true);
        QCOMPARE(call(table, "tableItem_objectTitle", QString()), u"MAGRES Table"_s);
        QCOMPARE(call(table, "tableItem_defTitle", QString()), u"MAGRES Table"_s);
        QCOMPARE(call(table, "tableItem_settingsKey", QString()), u"MagresTable"_s);
        QVariant passedOn;
        QMetaObject::invokeMethod(table, "tableItem_itemChange", Q_RETURN_ARG(QVariant, passedOn), Q_ARG(int, 9),
                                  Q_ARG(QVariant, u"value"_s));
        QCOMPARE(passedOn.toString(), u"value"_s);

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
        QCOMPARE(row(2, Qt::ToolTipRole), u"|||||||Isotope: 17O"_s);
        QCOMPARE(row(0, Qt::ToolTipRole), u"|||||||"_s);
        QCOMPARE(row(2, Qt::DecorationRole), u"|||||||"_s);
        QCOMPARE(rawId(table, model.index(2, 0)).toString(),
                 call(table, "tableModel_rows", QVariantList())[2].toMap()[u"ID"_s].toString());
        QVERIFY(rawId(table, model.index(0, 0)) != rawId(table, model.index(2, 0)));
        const QStandardItemModel larger(9, 9);
        for (const QModelIndex &outside : {QModelIndex(), larger.index(3, 0), larger.index(0, 8)})
            QVERIFY(!model.data(outside, Qt::DisplayRole).isValid());
        QVERIFY(rawId(table, larger.index(3, 0)).isNull() && rawId(table, {}).isNull());

        const auto header = [&](int column, Qt::Orientation orientation, int role) {
            QVariant text;
            QMetaObject::invokeMethod(table, "tableModel_headerData", Q_RETURN_ARG(QVariant, text), Q_ARG(int, column),
                                      Q_ARG(Qt::Orientation, orientation), Q_ARG(int, role));
            return text.toString();
        };
        QStringList headers;
        for (int column = 0; column < 9; ++column)
            headers.append(header(column, Qt::Horizontal, Qt::DisplayRole));
        QCOMPARE(headers.join(u'|'), u"Element|Labels|Iso, ppm|Aniso, ppm|η|eQ|η(Q)|Cq, MHz|"_s);
        QVERIFY(header(0, Qt::Vertical, Qt::DisplayRole).isEmpty()
                && header(0, Qt::Horizontal, Qt::EditRole).isEmpty());
    }

    /// Column codes and decimals by what the file has.
    void tableColumns()
    {
        for (const auto &[records, expected] :
             {std::pair("", "0:-1 1:-1"), std::pair("ms C 1 1 0 0 0 2 0 0 0 4\n", "0:-1 1:-1 2:3 3:3 4:2"),
              std::pair("efg C 1 1 0 0 0 2 0 0 0 4\n", "0:-1 1:-1 5:3 6:2 7:3")}) {
            delete m_loader.instance();
            FakeHost host;
            newPlugin();
            read(magresFile("[atoms]\natom C C 1 0 0 0\n[/atoms]\n[magres]\n" + QByteArray(records)));
            QStringList columns;
            for (const QVariant &entry : call(host.scene->table, "tableModel_columns", QVariantList())) {
                const QVariantMap column = entry.toMap();
                QCOMPARE(column.value(u"Units"_s, -1).toInt(), 0);
                columns.append(column.value(u"Type"_s).toString() + u':' + column.value(u"Digits"_s).toString());
            }
            QCOMPARE(columns.join(u' '), QLatin1String(expected));
        }
    }

    /// Messages of other kinds select nothing; those about atoms bring the first row into view.
    void selectedRowsComeIntoView()
    {
        FakeHost host;
        newPlugin();
        QByteArray atoms;
        for (int i = 1; i <= 60; ++i)
            atoms += "atom C C " + QByteArray::number(i) + ' ' + QByteArray::number(9 * i) + " 0 0\n";
        read(magresFile("[atoms]\n" + atoms));
        QTableView *view = host.scene->view.get();
        view->resize(300, 120);
        view->show();
        const auto isShown = [&](int row) {
            return view->viewport()->rect().contains(view->visualRect(view->model()->index(row, 0)).center());
        };
        for (const auto &[type, selected] : {std::pair(21, 0), std::pair(22, 2)}) {
            const QVariantMap message{{u"type"_s, type}, {u"data"_s, QVariantList{55, 40}}};
            QMetaObject::invokeMethod(host.scene->table, "tableItem_onLMessage", Q_ARG(QVariantMap, message));
            QCOMPARE(view->selectionModel()->selectedRows().size(), selected);
            QCOMPARE(isShown(40), selected == 2);
        }
    }

    void readingPlacesItems()
    {
        FakeHost host;
        newPlugin();
        QCOMPARE(call(m_loader.instance(), "fileFilter_matching", false, m_file), true);
        QCOMPARE(call(m_loader.instance(), "fileFilter_matching", true, built(u"plugins/libmagresfilefilter.so")),
                 false);
        read(m_file);
        QSettings().setValue(u"magresPlugin/nucF2"_s, u"1H"_s);
        makeSpectrum(host);
        QCOMPARE(host.scene->placed,
                 (QStringList{u"molecule 10,20 30x40 0"_s, u"table 0,0 0x0 0"_s, u"spectrum 0,0 100x100 1"_s}));
        QCOMPARE(host.scene->dataItems, QList<QGraphicsWidget *>{nullptr}); // with the document itself
    }

    void stacksThatCannotBeCompared_data()
    {
        QTest::addColumn<QString>("entries"); // M: simulated, with two peaks; a number: measured, with as many
        QTest::addColumn<bool>("hasData");
        QTest::addColumn<QString>("reference"); // why there is none
        QTest::addColumn<QString>("rmsd");
        const QString neither = u"Neither of the spectra is generated from MAGRES"_s;
        const QString both = u"Both spectra are generated from MAGRES. One should be experimental"_s;
        const QString gone = u"The document has no MAGRES data"_s;
        const QString counts = u"The MAGRES spectrum has 2 compound peaks and the experimental spectrum has 3"_s;
        const auto many = [](int n) { return u"There are %1 spectra in this plot. Two is expected"_s.arg(n); };
        const QString one = u"There is 1 spectrum in this plot. Two is expected"_s;
        const auto row = [](const char *entries, bool hasData, const QString &reference, const QString &rmsd) {
            QTest::addRow("%s%s", entries, hasData ? "" : ", data gone")
                << QString::fromLatin1(entries) << hasData << reference << rmsd;
        };
        row("", true, many(0), many(0));
        row("M", false, one, one);
        row("M22", true, many(3), many(3));
        row("23", false, neither, neither);
        row("MM", false, both, both);
        row("M3", false, gone, counts);
        row("3M", true, counts, counts);
        row("M2", true, {}, {});
        row("2M", true, {}, {});
        row("2M", false, gone, {});
    }

    void stacksThatCannotBeCompared()
    {
        QFETCH(QString, entries);
        QFETCH(bool, hasData);
        QFETCH(QString, reference);
        QFETCH(QString, rmsd);
        FakeHost host;
        newPlugin();
        read(m_file);
        QSettings().setValue(u"magresPlugin/nucF2"_s, u"1H"_s);
        QSettings().setValue(u"magresPlugin/ref"_s, QVariantMap{{u"1H"_s, 31.0}});
        for (QChar entry : entries) {
            if (entry == u'M')
                makeSpectrum(host);
            else
                host.services->addEntry(experimental(QList<double>{4.75, 2.25, 7.0}.first(entry.digitValue())));
        }
        if (!hasData)
            host.services->data.clear();
        const auto before = host.services->entries;
        QCOMPARE(report("calcRmsd"), rmsd.isEmpty() ? u"RMSD\nRMSD: 0.559017 ppm"_s : stackHint + rmsd);
        QVERIFY(host.services->entries == before);
        const QString fitted = report("autoRef");
        if (!reference.isEmpty())
            QCOMPARE(fitted, stackHint + reference);
        else
            QVERIFY2(fitted.startsWith(u"New reference\nReference is changed from 31 ppm to 31.5 ppm\n"_s),
                     qPrintable(fitted));
        QCOMPARE(host.services->entries == before, !reference.isEmpty());
    }

    /// Two dimensions with unlike nuclei and units; the molecule's notes of both, beside those of another spectrum.
    void twoDimensionsThroughToFit()
    {
        FakeHost host;
        newPlugin();
        read(m_file);
        for (const auto &[key, value] : {std::pair("nucF2", QVariant(u"1H"_s)), std::pair("nucF1", QVariant(u"17O"_s)),
                                         std::pair("specType", QVariant(1)),
                                         std::pair("ref", QVariant(QVariantMap{{u"1H"_s, 31.0}, {u"17O"_s, 286.0}}))})
            QSettings().setValue(u"magresPlugin/"_s + QLatin1String(key), value);
        makeSpectrum(host);
        QCOMPARE(logged, QStringList());
        const QUuid entry = host.services->activeEntryId;
        const QVariantList peaks = host.services->entryPeakList(entry).value(u"PeakList"_s).toList();
        QCOMPARE(peaks.size(), 2);
        const auto notes = [&] { return host.scene->molecule->molecule.value(u"NMRAssignments"_s).toList(); };
        QCOMPARE(notes().size(), 2);
        for (int dimension = 0; dimension < 2; ++dimension) {
            const QVariantMap note = notes()[dimension].toMap();
            QCOMPARE(note.keys(), (QStringList{u"Nucleus"_s, u"Origin"_s, u"Shifts"_s, u"SpecType"_s}));
            QCOMPARE(note[u"Origin"_s].toUuid(), entry);
            QCOMPARE(note[u"SpecType"_s].toInt(), 1);
            QCOMPARE(
                note[u"Nucleus"_s].toMap(),
                (QVariantMap{{u"Isotope"_s, dimension == 0 ? 1 : 17}, {u"Name"_s, dimension == 0 ? u"H"_s : u"O"_s}}));
            const QVariantList shifts = note[u"Shifts"_s].toList();
            QCOMPARE(shifts.size(), 2);
            for (int i = 0; i < 2; ++i) {
                const QVariantMap peak = peaks[i].toMap();
                const double position = peak[u"Pos"_s].value<DoubleVector>()[size_t(dimension)];
                QCOMPARE(shifts[i].toMap(),
                         (QVariantMap{{u"ACount"_s, 1},
                                      {u"AssignedPeaks"_s, QVariantList{peak[u"ID"_s]}},
                                      {u"Nums"_s, QVariantList{dimension == 0 ? i : 2}},
                                      {u"Value"_s, position},
                                      {u"Value.Error"_s, 0.0},
                                      {u"Value.Method"_s, u"MAGRES"_s}}));
            }
        }
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
        FakeHost host;
        newPlugin();
        read(m_file);
        QSettings().setValue(u"magresPlugin/nucF2"_s, u"1H"_s);
        makeSpectrum(host);
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

    void waitCursorWhileItWorks()
    {
        FakeHost host;
        newPlugin();
        read(m_file);
        QSettings().setValue(u"magresPlugin/nucF2"_s, u"1H"_s);
        int waiting = 0;
        trace.interruption = [&] {
            const QCursor *cursor = QGuiApplication::overrideCursor();
            waiting += cursor && cursor->shape() == Qt::WaitCursor;
        };
        trace.interrupted = "createNMRItem";
        makeSpectrum(host);
        QCOMPARE(waiting, 1);
        host.services->addEntry(experimental({2.5, 4.5}));
        trace.interrupted = "insertSpectrum";
        report("updateSpectrum");
        report("autoRef");
        QCOMPARE(waiting, 3);
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
    }

    void dialogsAndBoxes()
    {
        FakeHost host;
        qApp->setProperty("isHeadless", false);
        newPlugin();
        read(m_file);
        const QString dialog = u"MAGRES parameters"_s;
        const auto choose = [](const char *nucleus) {
            return [nucleus](QDialog *open) {
                open->findChild<QComboBox *>(u"fCbNucF2"_s)->setCurrentText(QLatin1String(nucleus));
                open->accept();
            };
        };
        {
            User user(&QDialog::reject);
            makeSpectrum(host);
            QCOMPARE(user.seen,
                     (QStringList{dialog, u"failure: Interrupted\nThe spectrum cannot be generated: Canceled"_s}));
            QVERIFY(host.services->entries.isEmpty());
        }
        {
            User user(choose("1H"));
            makeSpectrum(host);
            QCOMPARE(user.seen, QStringList{dialog});
            QCOMPARE(host.services->entries.size(), 1);
        }
        const auto before = host.services->entries;
        {
            User user(&QDialog::reject);
            report("updateSpectrum");
            QCOMPARE(user.seen,
                     (QStringList{dialog, u"failure: Interrupted\nThe spectrum cannot be updated: Canceled"_s}));
            QVERIFY(host.services->entries == before);
        }
        {
            User user(choose("2H"));
            report("updateSpectrum");
            const QVariantHash kept = host.services->entryOrigParams(host.services->activeEntryId, u"magres"_s);
            QCOMPARE(kept[u"nucF2"_s].toString(), u"2H"_s);
        }
        {
            User user;
            report("calcRmsd");
            host.services->addEntry(experimental({72.0, 74.0}));
            report("calcRmsd");
            report("autoRef");
            QCOMPARE(user.seen.size(), 3);
            QCOMPARE(user.seen[0], u"failure: "_s + stackHint + u"There is 1 spectrum in this plot. Two is expected"_s);
            QCOMPARE(user.seen[1], u"result: RMSD\nRMSD: 1 ppm"_s);
            QVERIFY(user.seen[2].startsWith(u"result: New reference\nReference is changed from 100 ppm to 101 ppm"_s));
        }
        QCOMPARE(logged, QStringList());
    }

    /// An element's isotope, chosen once, is that of the table and of the files that are read later.
    void chosenIsotope()
    {
        const QString file = magresFile("[atoms]\natom C C 1 0 0 0\natom Cl Cl 1 9 0 0\n[/atoms]\n[magres]\n"
                                        "efg C 1 1 0 0 0 1 0 0 0 -2\nefg Cl 1 1 0 0 0 1 0 0 0 -2\n");
        FakeHost host;
        qApp->setProperty("isHeadless", false);
        newPlugin();
        read(file);
        const auto tip = [&] { return host.scene->model->index(1, 4).data(Qt::ToolTipRole).toString(); };
        const auto stored = [&] { return host.services->data.first().value(u"QIso"_s).toMap().value(u"Cl"_s); };
        const auto answer = [](QDialog::DialogCode code) {
            return [code](QDialog *dialog) {
                const auto *element = dialog->findChild<QComboBox *>(u"fCbEl"_s);
                auto *isotope = dialog->findChild<QComboBox *>(u"fCbIso"_s);
                QVERIFY(element->count() == 1 && element->currentText() == u"Cl");
                QVERIFY(isotope->count() == 2 && isotope->currentText() == u"35Cl");
                isotope->setCurrentText(u"37Cl"_s);
                dialog->done(code);
            };
        };
        QCOMPARE(tip(), u"Isotope: 35Cl"_s);
        for (const auto &[code, isotope] :
             {std::pair(QDialog::Rejected, u"35Cl"_s), std::pair(QDialog::Accepted, u"37Cl"_s)}) {
            User user(answer(code));
            trace.calls.clear();
            QMetaObject::invokeMethod(host.scene->table, "setQuadIsotope");
            QCOMPARE(user.seen, QStringList{u"Select quadrupolar isotope"_s});
            QCOMPARE(tip(), u"Isotope: "_s + isotope);
            trace.calls.removeIf([](const QByteArray &name) { return !name.endsWith("CustomData"); });
            QCOMPARE(trace.calls.join(' '),
                     code == QDialog::Accepted ? QByteArray("delCustomData setCustomData") : QByteArray());
        }
        QCOMPARE(stored().toString(), u"37Cl"_s);
        QCOMPARE(host.scene->dataItems, QList<QGraphicsWidget *>(3, nullptr));
        QCOMPARE(host.scene->model->index(1, 4).data().toString(), u"-30.230"_s); // 2 * -6.435 * 2.3489
        QCOMPARE(QSettings().value(u"magresPlugin/QIso"_s).toMap(), (QVariantMap{{u"Cl"_s, u"37Cl"_s}}));
        host.services->data.clear();
        read(file);
        QCOMPARE(tip(), u"Isotope: 37Cl"_s);
    }

    void unreadableFileLeavesNothing()
    {
        FakeHost host;
        newPlugin();
        const QString broken = magresFile("[atoms]\natom C C 1 0 0 0\natom H H 1 0 0\n");
        QCOMPARE(failure([&] { read(broken); }), "Atom record in line atom H H 1 0 0 cannot be parsed");
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

        QCOMPARE(chosen(host, 0), QString());
        QCOMPARE(host.services->resets, 1);
        QCOMPARE(host.services->entryOrigParams(entry, u"magres"_s), made);
        const QVariantMap updated = host.services->entries.value(entry);
        QVERIFY(updated.contains(u"RawData"_s));
        QVERIFY(updated.value(u"SpecInfo"_s).toMap().value(u"OriginalParameters"_s, 1).isNull());
        QCOMPARE(host.scene->molecule->molecule.value(u"NMRAssignments"_s).toList().size(), 1);

        host.services->addEntry(experimental({2.25, 4.75}));
        QCOMPARE(chosen(host, 1),
                 u"New reference\nReference is changed from 31 ppm to 31.5 ppm\n\n"
                 "Old RMSD: 0.559017 ppm\nNew RMSD: 0.25 ppm"_s);
        // The fitted reference is this spectrum's alone.
        QCOMPARE(QSettings().value(u"magresPlugin/ref"_s).toMap().value(u"1H"_s).toDouble(), 31.0);
        QCOMPARE(chosen(host, 2), u"RMSD\nRMSD: 0.25 ppm"_s);
        QCOMPARE(host.services->resets, 1); // fits leave the plot's view alone
    }

    void eachHostMethodMayBeMissing_data()
    {
        methodRows();
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

    void hostMethodsMayThrowOrRefuse_data() { methodRows(); }
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
                User user([&](QDialog *dialog) {
                    const QPointer<QDialog> stillThere = dialog;
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
                    if (stillThere)
                        stillThere->accept();
                });
                QObject *table = host->scene->table;
                trace.calls.clear();
                QMetaObject::invokeMethod(qstrcmp(command, "updateSpectrum") == 0 ? m_loader.instance() : table,
                                          command);
                QVERIFY2(!user.seen.isEmpty(), command);
                const QString told = user.seen.mid(1).join(u'|');
                const bool creates = qstrcmp(command, "createSpectrum") == 0,
                           sets = qstrcmp(command, "setQuadIsotope") == 0;
                const QString failed =
                    u"failure: Interrupted\nThe spectrum cannot be %1: "_s.arg(creates ? u"generated"_s : u"updated"_s);
                if (gone == Nothing || gone == Table || gone == Item) {
                    QCOMPARE(told, QString());
                    QCOMPARE(host->services->entries.size(), creates ? 2 : 1);
                    QVERIFY(!sets || trace.calls.contains("setCustomData"));
                } else if (gone == Data || gone == Spectra)
                    QCOMPARE(told, sets ? QString() : failed + u"The document has no MAGRES data"_s);
            }
    }

    void pluginMayBeLoadedTwiceAndAgain()
    {
        FakeHost host;
        newPlugin();
        const QString copy = m_settings.filePath(u"libcopy.so"_s);
        QVERIFY(QFile::exists(copy) || QFile::copy(built(u"plugins/libmagresfilefilter.so"), copy));
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
        qApp->setProperty("isHeadless", false);
        newPlugin();
        read(m_file);
        QCOMPARE(host.scene->tableItem->menu->actions().value(1)->text(), u"Spektrum erzeugen..."_s);
        QCOMPARE(call(host.scene->table, "tableItem_defTitle", QString()), u"MAGRES-Tabelle"_s);
        QCOMPARE(host.scene->model->index(2, 7).data(Qt::ToolTipRole).toString(), u"Isotop: 17O"_s);
        QString hint;
        User user([&](QDialog *dialog) {
            if (const auto *label = dialog->findChild<QLabel *>(u"fLbSpecHintF2"_s))
                hint = label->text();
            dialog->reject();
        });
        makeSpectrum(host);
        QMetaObject::invokeMethod(host.scene->table, "setQuadIsotope");
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
        delete m_loader.instance();
        host.window->language = u"fr"_s;
        qApp->setProperty("isHeadless", true);
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
        FakeHost host;
        qApp->setProperty("isHeadless", false);
        newPlugin();
        read(magresFile("[atoms]\n" + atoms + "[/atoms]\n[magres]\n" + tensors + "[/magres]\n"));
        const auto row = [&] { return host.scene->model->index(0, 5).data().toString(); };
        QCOMPARE(row(), u"1.000"_s);
        const QVariantMap stored = host.services->data.first();
        const User user;
        QMetaObject::invokeMethod(host.scene->table, "setQuadIsotope");
        QCOMPARE(row(), u"1.000"_s);
        QVariantMap kept = host.services->data.first();
        QCOMPARE(kept.take(u"QIso"_s).toMap(), (QVariantMap{{u"O"_s, u"17O"_s}}));
        QCOMPARE(kept.value(u"atoms"_s), stored.value(u"atoms"_s));
        host.scene->view->selectRow(0); // which stands for all of its label
        QCOMPARE(host.scene->tableItem->messages.last().toMap().value(u"data"_s).toList().size(), 12);

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
    static void methodRows()
    {
        QTest::addColumn<QByteArray>("method");
        for (const HostMethod *method : HostContract::methods)
            QTest::newRow(method->name) << QByteArray(method->name);
    }

    /// What a method without arguments returns, in place of the value given.
    template <typename Value>
    static Value call(QObject *object, const char *method, Value value)
    {
        QMetaObject::invokeMethod(object, method, QReturnArgument<Value>(QMetaType::fromType<Value>().name(), value));
        return value;
    }

    static bool call(QObject *object, const char *method, bool value, const QString &argument)
    {
        QMetaObject::invokeMethod(object, method, Q_RETURN_ARG(bool, value), Q_ARG(QString, argument));
        return value;
    }
    static QUuid rawId(QObject *table, const QModelIndex &index)
    {
        QUuid id;
        QMetaObject::invokeMethod(table, "tableModel_rawId", Q_RETURN_ARG(QUuid, id), Q_ARG(QModelIndex, index));
        return id;
    }

    /// A file of these blocks.
    QString magresFile(const QByteArray &blocks) const
    {
        QFile file(m_settings.filePath(u"made.magres"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write("#$magres-abinitio-v1.0\n" + blocks) < 0)
            qFatal("%s", qPrintable(file.fileName()));
        return file.fileName();
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
                                  Q_ARG(const QRectF &, QRectF(10, 20, 30, 40)));
        return items;
    }

    /// What an entry of the plug-in's menu tells the user.
    static QString chosen(FakeHost &host, int entry)
    {
        logged.clear();
        host.window->menu.actions().value(0)->menu()->actions().value(entry)->trigger();
        return logged.join(u'|');
    }

    void makeSpectrum(FakeHost &host) { QMetaObject::invokeMethod(host.scene->table, "createSpectrum"); }
    /// What a command tells the user.
    QString report(const char *method)
    {
        logged.clear();
        QMetaObject::invokeMethod(m_loader.instance(), method);
        return logged.join(u'|');
    }

    QPluginLoader m_loader{built(u"plugins/libmagresfilefilter.so")};
    QTemporaryDir m_settings;
    QString m_file;
};

QTEST_MAIN(tst_Plugin)
#include "tst_plugin.moc"
