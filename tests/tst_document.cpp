// SPDX-License-Identifier: BSD-3-Clause
#include "ModalAnswers.h"

#include "host/DataEngine.h"
#include "host/DocumentController.h"
#include "host/DocumentState.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/RecentFiles.h"
#include "host/WMainWindow.h"
#include "io/DocumentFile.h"
#include "io/ExperimentFile.h"
#include "io/VariantStream.h"
#include "items/MoleculeItem.h"
#include "items/NmrData.h"
#include "items/NmrItem.h"
#include "items/TableItem.h"
#include "items/TableModel.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

using Points = QList<DoubleVector>;
using Edit = std::function<void(QVariantMap &)>;

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/// A file with a header and a checksum that are in order.
QByteArray fileOf(const QByteArray &contents)
{
    QByteArray header("\x89MGD\r\n\x1a\n\1\0\0\0", 12);
    const qint64 length = qToLittleEndian(qint64(contents.size()));
    header.append(reinterpret_cast<const char *>(&length), sizeof(length));
    Checksum checksum;
    checksum.add(contents.constData(), contents.size());
    checksum.add(header.constData(), header.size());
    return header + contents + checksum.result();
}

QByteArray contentsOf(const std::function<void(QDataStream &)> &write)
{
    QByteArray contents;
    QDataStream out(&contents, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    write(out);
    return contents;
}

/// Contents of one type, without its value's end.
QByteArray claim(const char *type, const std::function<void(QDataStream &)> &value)
{
    return fileOf(contentsOf([&](QDataStream &out) {
        out << quint8(1) << QByteArray(type);
        value(out);
    }));
}

/// One of each kind, linked; the second spectrum has the points of the first.
Document smallDocument()
{
    const QUuid ids[] = {QUuid::createUuid(), QUuid::createUuid(), QUuid::createUuid()};
    const QVariant points = QVariant::fromValue(Points{{1.5, -0.0, std::nan("")}, {0, 0, 0}});
    const QVariantMap raw{{u"DataPoints"_s, points}};
    Document document;
    document.items = {
        {ids[0], u"M"_s, QRectF(1, 2, 300, 400), {ids[1]}, Document::Molecule{{{u"ID"_s, ids[0]}}, {}}},
        {ids[1], u"T"_s, QRectF(500, 2, 300, 400), {ids[0]}, Document::Table{7, u"{id}"_s, u"Gone"_s, {{u"a"_s, 1}}}},
        {ids[2], u"S"_s, QRectF(1, 500, 300, 400), {},
         Document::Spectra{{{ids[0], u"one"_s, raw}, {ids[1], u"two"_s, {{u"RawData"_s, raw}}}}, ids[1]}}};
    document.customData = {{{u"ID"_s, ids[0]}}};
    document.activeItem = document.currentTable = ids[1];
    document.currentSpectra = ids[2];
    return document;
}

QByteArray edited(const Edit &edit)
{
    QVariantMap map = smallDocument().toMap();
    edit(map);
    return fileOf(contentsOf([&](QDataStream &out) { VariantStream::write(out, map); }));
}

Edit inItem(int index, const QString &key, const QVariant &value)
{
    return [=](QVariantMap &map) {
        QVariantList items = map[u"Items"_s].toList();
        QVariantMap item = items[index].toMap();
        item[key] = value;
        items[index] = item;
        map[u"Items"_s] = items;
    };
}

QVariantMap everyType()
{
    return {{u"ID"_s, QUuid::createUuid()}, {u"none"_s, {}}, {u"bool"_s, true}, {u"int"_s, -7}, {u"uint"_s, 7u},
            {u"long"_s, qint64(-1) << 40}, {u"ulong"_s, ~quint64(0)}, {u"double"_s, 0.1}, {u"text"_s, u"δ/ppm"_s},
            {u"null text"_s, QString()}, {u"bytes"_s, QByteArray("\0x", 2)}, {u"point"_s, QPointF(1, 2)},
            {u"rect"_s, QRectF(1, 2, 3, 4)}, {u"vector"_s, QVariant::fromValue(DoubleVector(20000, 0.5))},
            {u"signs"_s, QVariant::fromValue(SignedCharVector{-1, 1})}, {u"texts"_s, QStringList{u"a"_s, {}}},
            {u"byte arrays"_s, QVariant::fromValue(QByteArrayList{"a"})}, {u"map"_s, QVariantMap{{u"π"_s, 3}}},
            {u"ints"_s, QVariant::fromValue(QList<int>{1, -2})}, {u"list"_s, QVariantList{1, u"b"_s, QVariantMap()}},
            {u"doubles"_s, QVariant::fromValue(QList<double>{1.5})}, {u"hash"_s, QVariantHash{{u"b"_s, 1}, {u"a"_s, 2}}},
            {u"ids"_s, QVariant::fromValue(QList<QUuid>{QUuid::createUuid()})},
            {u"by format"_s, QVariant::fromValue(QMap<QString, QVariantHash>{{u"magres"_s, {{u"n"_s, 5}}}})},
            {u"points"_s, QVariant::fromValue(Points{{1, 2}, {}})}, {u"no points"_s, QVariant::fromValue(Points())}};
}

} // namespace

class TestDocument : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_directory.path());
        QCoreApplication::setOrganizationName(u"tests"_s);
    }

    void everyTypeComesBack()
    {
        Document document = smallDocument();
        document.customData.append(everyType());
        DocumentFile::write(m_path, document);
        const Document read = DocumentFile::read(m_path);
        QCOMPARE(read.customData[1], document.customData[1]);
        const auto &stack = std::get<Document::Spectra>(read.items[2].content).entries;
        const auto raw = stack[1].data[u"RawData"_s].toMap()[u"DataPoints"_s].value<Points>();
        QCOMPARE(raw.constData(), stack[0].data[u"DataPoints"_s].value<Points>().constData());
        QVERIFY(std::signbit(raw[0][1]) && std::isnan(raw[0][2]));
        const QByteArray bytes = bytesOf(m_path);
        DocumentFile::write(m_path, read);
        QCOMPARE(bytesOf(m_path), bytes);

        document.customData[0][u"colour"_s] = QVariant::fromValue(QSize());
        QVERIFY(errorOf([&] { DocumentFile::write(m_path, document); }).contains("CustomData[0].colour: "));
        QVERIFY(errorOf([&] { DocumentFile::write(m_path, smallDocument(), [](double) { return false; }); }).isEmpty());
        document.customData = {{{u"ID"_s, QUuid::createUuid()}, {u"long"_s, QByteArray(1 << 23, 'x')}}};
        QVERIFY_THROWS_EXCEPTION(DocumentFile::Cancelled,
                                 DocumentFile::write(m_path, document, [](double) { return false; }));
        QVERIFY(bytesOf(m_path).size() < 10000);
    }

    void damageIsNamed_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("error");
        const auto row = [](const char *name, const QByteArray &bytes, const char *error) {
            QTest::newRow(name) << bytes << QByteArray(error);
        };
        row("other file", "#$magres-abinitio-v1.0", "not a document");
        row("newer", QByteArray("\x89MGD\r\n\x1a\n\2\0\0\0\0\0\0\0\0\0\0\0", 20), "version 2, written by a newer");
        row("absurd length", QByteArray("\x89MGD\r\n\x1a\n\1\0\0\0\xff\xff\xff\xff\xff\xff\xff\xff", 20), "cut off");
        row("one byte more", edited({[](auto &) {}}) + '\0', "damaged");
        row("numbers", claim("std::vector<double,std::allocator<double>>",
                             [](auto &out) { out << quint8(0) << qint64(1e12) << 1.0; }), "the data end too early");
        row("negative count", claim("std::vector<double,std::allocator<double>>",
                                    [](auto &out) { out << quint8(0) << qint64(-1); }), "the data are damaged");
        row("values", claim("QVariantList", [](auto &out) { out << quint8(0) << ~0u; }), "4294967295 values are stated");
        row("keys", claim("QVariantMap", [](auto &out) { out << quint8(0) << ~0u; }), "4294967295 values are stated");
        row("text", claim("QString", [](auto &out) { out << quint8(0) << 0xfffffff0u; }), "the data end too early");
        row("integers", claim("QList<int>", [](auto &out) { out << quint8(0) << 1000000000u; }), "values are stated");
        row("deep", claim("QVariantList", [](auto &out) {
                for (int i = 0; i < 1000000; ++i)
                    out << quint8(0) << 1u;
            }), "more than 64 deep");
        row("no such type", claim("QPixmap", [](auto &) { }), "\"QPixmap\" are not known");
        row("type number", claim("QString", [](auto &out) { out << quint8(9); }), "type 9 where 1 types");
        row("a number alone", claim("int", [](auto &out) { out << quint8(0) << 1; }), "\"Items\" is nothing");
        row("kind", edited(inItem(0, u"Kind"_s, u"Video"_s)), "Items[0]: an item of the kind \"Video\"");
        row("no data", edited(inItem(2, u"Entries"_s, QVariantList{QVariantMap()})), "Items[2].Entries[0]: \"ID\"");
        row("geometry", edited(inItem(1, u"Geometry"_s, QRectF(0, 0, std::nan(""), 1))), "Items[1]: its place");
        row("link", edited(inItem(0, u"Links"_s, QVariant::fromValue(QList<QUuid>{QUuid()}))), "Items[0].Links");
        row("active", edited({[](auto &map) { map[u"Active"_s] = QUuid::createUuid(); }}), "Active: it names");
        row("data", edited({[](auto &map) { map[u"CustomData"_s] = QVariantList{1}; }}), "CustomData[0]: a map");
    }
    void damageIsNamed()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, error);
        writeBytes(m_path, bytes);
        const QByteArray found = errorOf([&] { DocumentFile::read(m_path); });
        QVERIFY2(found.startsWith(m_path.toUtf8() + ": ") && found.contains(error), found);
    }

    void everyFlipAndCutIsNoticed()
    {
        DocumentFile::write(m_path, smallDocument());
        const QByteArray whole = bytesOf(m_path);
        for (qsizetype i = 0; i < whole.size(); ++i) {
            QByteArray flipped = whole;
            flipped[i] = char(flipped[i] ^ (1 << i % 8));
            for (const QByteArray &bytes : {flipped, whole.first(i)}) {
                writeBytes(m_path, bytes);
                QVERIFY2(!errorOf([&] { DocumentFile::read(m_path); }).isEmpty(), QByteArray::number(i));
            }
        }
    }

    void missingPluginLosesNothing()
    {
        Document document = smallDocument();
        DataEngine data;
        MainScene scene(&data);
        const QStringList notes = DocumentState::restore(document, scene, data, nullptr);
        QCOMPARE(notes.size(), 1);
        QVERIFY(notes[0].contains(u"\"Gone\""));
        DocumentFile::write(m_path, document);
        const Document again = DocumentState::capture(scene, data, nullptr);
        QCOMPARE(std::get<Document::Table>(again.items[1].content).map, (QVariantMap{{u"a"_s, 1}}));
        QCOMPARE(again.items[1].title, u"T"_s);
        QCOMPARE(again.items[0].links, document.items[0].links);
        QCOMPARE(scene.currentNmrItem()->nmrData()->activeEntryId(), document.items[1].id);
    }

    void reopenedDocumentIsAsBefore()
    {
        HostApplication host(false);
        host.loadPlugins(QStringLiteral(PLUGIN_DIRECTORY));
        WMainWindow &window = host.window();
        window.openFiles({QStringLiteral(SAMPLES "/paracetamol.magres")});
        ModalAnswers answers;
        const auto accept = [](QDialog *dialog) { dialog->accept(); };
        answers.expect(u"MAGRES parameters"_s, accept);
        command(host.scene().currentTableItem()->contextMenu(), u"Create spectrum..."_s);
        NmrData *stack = host.scene().currentNmrItem()->nmrData();
        stack->addEntry(ExperimentFile::read(QStringLiteral(SAMPLES "/paracetamol-13C.csv"), stack->shownSpectrum()),
                        u"Measured"_s);
        const auto ask = [&](const QString &name, const QString &title) {
            QString text;
            answers.expect(title, [&](QDialog *dialog) {
                if (auto *box = qobject_cast<QMessageBox *>(dialog))
                    text = box->text();
                dialog->accept();
            });
            NmrItem *item = host.scene().currentNmrItem();
            host.scene().setActiveItem(item);
            command(item->contextMenu(), name);
            return text;
        };
        ask(u"Auto reference"_s, u"New reference"_s);
        const QString rmsd = ask(u"RMSD"_s, u"RMSD"_s);
        QVERIFY(!rmsd.isEmpty() && window.isWindowModified());
        const auto points = [&] { return host.scene().currentNmrItem()->nmrData()->stack().entries[0].spectrum.data; };
        const QList<DoubleVector> before = points();

        QVERIFY(window.document()->saveTo(m_path) && !window.isWindowModified());
        const QByteArray bytes = bytesOf(m_path);
        ask(u"Edit Spectrum..."_s, u"MAGRES parameters"_s);
        const QList<DoubleVector> updated = points();
        QVERIFY(window.isWindowModified());
        host.scene().undoStack()->undo();
        QVERIFY(!window.isWindowModified() && points() == before);
        window.document()->newDocument();
        QVERIFY(host.scene().documentItems().isEmpty() && window.documentData()->ids().isEmpty());
        window.openFiles({m_path});
        QVERIFY(!window.isWindowModified() && window.windowTitle().startsWith(u"test.magresdoc[*]"));
        QCOMPARE(host.scene().currentTableItem()->model()->rowCount(), 80);
        QVERIFY(points() == before);
        QVERIFY(window.document()->saveTo(m_path));
        QVERIFY(bytesOf(m_path) == bytes);

        QCOMPARE(ask(u"RMSD"_s, u"RMSD"_s), rmsd);
        ask(u"Edit Spectrum..."_s, u"MAGRES parameters"_s);
        QVERIFY(points() == updated && window.isWindowModified());
        ask(u"Auto reference"_s, u"New reference"_s);
        QVERIFY(answers.missing().isEmpty());

        // Whatever the answer, what was saved stays as it is unless it is saved.
        for (const auto button : {QMessageBox::Cancel, QMessageBox::Discard}) {
            answers.expect(u"Unsaved Changes"_s,
                           [&](QDialog *box) { qobject_cast<QMessageBox *>(box)->button(button)->click(); });
            QCOMPARE(window.close(), button == QMessageBox::Discard);
            QVERIFY(bytesOf(m_path) == bytes && host.scene().documentItems().size() == 3);
        }
        writeBytes(m_path, bytes.chopped(1));
        answers.expect(u"Unsaved Changes"_s,
                       [](QDialog *box) { qobject_cast<QMessageBox *>(box)->button(QMessageBox::Discard)->click(); });
        answers.expect(u"test.magresdoc cannot be opened"_s, accept);
        window.openFiles({m_path});
        QVERIFY(host.scene().documentItems().size() == 3 && window.isWindowModified());
        answers.expect(u"Unsaved Changes"_s,
                       [](QDialog *box) { qobject_cast<QMessageBox *>(box)->button(QMessageBox::Save)->click(); });
        window.document()->newDocument();
        QVERIFY(DocumentFile::read(m_path).items.size() == 3 && host.scene().documentItems().isEmpty());
        QVERIFY(answers.missing().isEmpty());
    }

    void sampleOpens()
    {
        const Document sample = DocumentFile::read(QStringLiteral(SAMPLES "/paracetamol-13C.magresdoc"));
        QCOMPARE(sample.items.size(), 3);
        const auto &stack = std::get<Document::Spectra>(sample.items[2].content);
        const Spectrum spectrum = Spectrum::fromMap(stack.entries[0].data);
        QCOMPARE(spectrum.axes[0].size, 512);
        QCOMPARE(spectrum.peaks.size(), 32);
    }

    void recentFilesAreThose()
    {
        RecentFiles recent(nullptr);
        QSettings().remove(u"recentFiles"_s);
        for (int i = 0; i < 12; ++i) {
            const QString path = m_directory.filePath(u"a&%1"_s.arg(i));
            writeBytes(path, "x");
            recent.add(path);
        }
        QVERIFY(QFile::remove(m_directory.filePath(u"a&11"_s)));
        QCOMPARE(RecentFiles::files().size(), 9);
        Q_EMIT recent.aboutToShow();
        QVERIFY(recent.actions()[0]->text().endsWith(u"a&&10"));
        recent.actions().constLast()->trigger();
        QVERIFY(RecentFiles::files().isEmpty());
    }

private:
    template <typename Work>
    static QByteArray errorOf(Work work)
    {
        try {
            work();
        } catch (const std::exception &error) {
            return error.what();
        }
        return {};
    }

    /// Of the menu or its submenus.
    static void command(QMenu *menu, const QString &text)
    {
        for (QAction *action : menu->actions()) {
            if (action->text() == text)
                return action->trigger();
            if (action->menu())
                command(action->menu(), text);
        }
    }

    QTemporaryDir m_directory;
    QString m_path = m_directory.filePath(u"test.magresdoc"_s);
};

QTEST_MAIN(TestDocument)
#include "tst_document.moc"
