// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "WindowTest.h"

#include "document/DocumentState.h"
#include "document/PageExport.h"
#include "document/UndoCommands.h"
#include "formats/DocumentFile.h"
#include "formats/ExperimentFile.h"
#include "host/DataEngine.h"
#include "window/RecentFiles.h"

namespace {

using Points = QList<DoubleVector>;

const QString saved = QStringLiteral(SAMPLES "/paracetamol-13C.magresdoc");

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A file in order but for its value, which has one type.
QByteArray claim(const QByteArray &type, const QByteArray &hex)
{
    const QByteArray contents =
        '\1' + QByteArray(1, char(type.size())) + QByteArray(3, '\0') + type + '\0' + QByteArray::fromHex(hex);
    QByteArray header = QByteArray::fromHex("894d47440d0a1a0a010000000000000000000000");
    qToLittleEndian(qint64(contents.size()), header.data() + 12);
    Checksum checksum;
    checksum.add(contents.constData(), contents.size());
    checksum.add(header.constData(), header.size());
    return header + contents + checksum.result();
}

Document smallDocument()
{
    const QUuid id = QUuid::createUuid(), other = QUuid::createUuid();
    const QVariantMap raw{{u"DataPoints"_s, QVariant::fromValue(Points{{1.5, -0.0, qQNaN()}, {}})}};
    const Document::Spectra stack{{{id, u"one"_s, raw}, {other, u"two"_s, {{u"RawData"_s, raw}}}}, other};
    return {{{id, u"title"_s, QRectF(1, 2, 300, 400), {}, {}, stack}}, {{{u"ID"_s, id}}}, id, id, {}};
}

} // namespace

class TestDocument : public WindowTest {
    Q_OBJECT

    const QString m_path = m_files.path("a&b.magresdoc");

    QByteArray errorOf(const QByteArray &bytes) const
    {
        m_files.write("a&b.magresdoc", bytes);
        return failure([this] { DocumentFile::read(m_path); });
    }

private Q_SLOTS:
    void valuesComeBack()
    {
        DocumentFile::write(m_path, DocumentFile::read(saved));
        QCOMPARE(bytesOf(m_path), bytesOf(saved));

        Document document = smallDocument();
        document.customData[0][u"δ"_s] = QVariantHash{{u"b"_s, 7u}, {u"a"_s, QString()}, {u"c"_s, ~quint64(0)}};
        DocumentFile::write(m_path, document);
        const Document read = DocumentFile::read(m_path);
        QCOMPARE(read.customData, document.customData);
        const auto &stack = std::get<Document::Spectra>(read.items[0].content).entries;
        const auto raw = stack[1].data[u"RawData"_s].toMap()[u"DataPoints"_s].value<Points>();
        QVERIFY(raw.constData() == stack[0].data[u"DataPoints"_s].value<Points>().constData());
        QVERIFY(1 / raw[0][1] < 0 && qIsNaN(raw[0][2]));

        const QByteArray bytes = bytesOf(m_path);
        document.customData[0][u"long"_s] = QByteArray(1 << 23, 'x');
        QVERIFY_THROWS_EXCEPTION(DocumentFile::Cancelled,
                                 DocumentFile::write(m_path, document, [](double) { return false; }));
        QCOMPARE(bytesOf(m_path), bytes);
    }

    void damageIsNamed()
    {
        const auto row = [this](const char *error, const QByteArray &bytes) {
            const QByteArray found = errorOf(bytes);
            QVERIFY2(found.startsWith(m_path.toUtf8() + ": ") && found.contains(error), found);
        };
        row("not a document", "#$magres-abinitio-v1.0");
        row("cut off", QByteArray::fromHex("894d47440d0a1a0a01000000ffffffffffffffff"));
        row("data end too early", claim("std::vector<signed char>", "00a0724e1809000001"));
        row("4294967295 values are stated", claim("QVariantList", "ffffffff"));
        row("64 deep", claim("QVariantList", QByteArray("0100000000").repeated(100000)));
        row("\"QPixmap\" are not known", claim("QPixmap", ""));
    }

    void everyFlipAndCutIsNoticed()
    {
        DocumentFile::write(m_path, smallDocument());
        const QByteArray whole = bytesOf(m_path);
        for (qsizetype i = 0; i < whole.size(); ++i) {
            QByteArray flipped = whole;
            flipped[i] = char(flipped[i] ^ (1 << i % 8));
            QVERIFY2(!errorOf(flipped).isEmpty() && !errorOf(whole.first(i)).isEmpty(), QByteArray::number(i));
        }
        QVERIFY(!errorOf(whole + '\0').isEmpty() && errorOf(whole).isEmpty());
    }

    void missingPluginLosesNothing()
    {
        DataEngine data;
        MainScene scene(&data);
        QCOMPARE(DocumentState::restore(DocumentFile::read(saved), scene, data, nullptr).size(), 1);
        DocumentFile::write(m_path, DocumentState::capture(scene, data, nullptr));
        QCOMPARE(bytesOf(m_path), bytesOf(saved));
    }

    void picturesOfPages()
    {
        DataEngine data;
        MainScene scene(&data);
        using PageExport::Format;
        scene.setLayout(MainScene::Layout::Workspace);
        const QGraphicsWidget *plot = scene.createNMRItem({38, 1300, 717.7, 360}, {}, false);
        const QRectF inWindow = plot->geometry();
        scene.addRect({100, 200, 50, 40}, Qt::NoPen, Qt::red);
        scene.addRect({600, 2105, 30, 20}, Qt::NoPen, Qt::blue);
        const auto page = [&](Format format) {
            QBuffer buffer;
            buffer.open(QIODevice::WriteOnly);
            PageExport::writePage(scene, buffer, format, PageExport::Notes::Hidden);
            return buffer.data();
        };
        // Two pixels a unit of 1/96 inch, two pages of A4 below each other.
        const QImage image = QImage::fromData(page(Format::Png));
        QCOMPARE(image.size(), QSize(1587, 4490));
        QCOMPARE(QSize(image.dotsPerMeterX(), image.dotsPerMeterY()), QSize(7559, 7559));
        for (const auto &[inside, colour] : {std::pair(QRect(202, 402, 96, 76), qRgb(255, 0, 0)),
                                             std::pair(QRect(1202, 4212, 56, 36), qRgb(0, 0, 255))}) {
            QVERIFY(image.pixel(inside.topLeft()) == colour && image.pixel(inside.bottomRight()) == colour);
            QCOMPARE(image.pixel(inside.topLeft() - QPoint(5, 0)), qRgb(255, 255, 255));
            QCOMPARE(image.pixel(inside.bottomRight() + QPoint(0, 5)), qRgb(255, 255, 255));
        }
        QVERIFY(page(Format::Svg).contains("viewBox=\"0 0 793.7 2245\""));
        QCOMPARE(page(Format::Pdf).count("/MediaBox [0 0 595"), 2);
        // The window has seen nothing of it.
        QVERIFY(scene.layout() == MainScene::Layout::Workspace && plot->geometry() == inWindow);
        QCOMPARE(PageExport::formatOf(u"a.b.PNG"_s), Format::Png);
        QCOMPARE(failure([] { PageExport::formatOf(u"pdf"_s); }), "the file name must end in .png, .svg or .pdf");
    }

    void reopenedDocumentIsAsBefore()
    {
        start();
        QString said;
        const auto expect = [&](const QString &title, QMessageBox::StandardButton button = QMessageBox::Ok) {
            m_dialogs.expect(title, [&said, button](QDialog *dialog) {
                auto *box = qobject_cast<QMessageBox *>(dialog);
                said = box ? box->text() : QString();
                box ? box->button(button)->click() : dialog->accept();
            });
        };
        const auto points = [&] { return data()->stack().entries[0].spectrum.data; };
        const auto command = [&](const QString &name, const QString &title) {
            expect(title);
            choose(window(), plot(), {u"MAGRES"_s, name});
        };
        window().openFiles({saved});
        NmrData *stack = data();
        stack->addEntry(ExperimentFile::read(QStringLiteral(SAMPLES "/paracetamol-13C.csv"), stack->shownSpectrum()),
                        {});
        command(u"Auto reference"_s, u"New reference"_s);
        QVERIFY(window().isWindowModified() && window().document()->saveTo(m_path) && !window().isWindowModified());
        NmrPlot *const shown = plot()->plot();
        PlotOptions levels = shown->options();
        levels.contours.lowest *= 2;
        shown->setOptions(levels); // as Contour Levels does
        QTRY_VERIFY(window().isWindowModified());
        levels.contours.lowest /= 2;
        shown->setOptions(levels);
        QTRY_VERIFY(!window().isWindowModified());
        const QByteArray bytes = bytesOf(m_path);
        command(u"RMSD"_s, u"RMSD"_s);
        const QString rmsd = said;
        command(u"Edit Spectrum..."_s, u"MAGRES parameters"_s);
        const Points updated = points();
        scene().undoStack()->undo();
        QVERIFY(points() != updated && !window().isWindowModified());

        window().document()->newDocument();
        window().openFiles({m_path});
        QVERIFY(window().document()->saveTo(m_path) && bytesOf(m_path) == bytes);
        // What was made of an item is work as well; from where one looks is not. All items go back in one step.
        const auto isModified = [&] { return window().document()->isModified(); };
        QKeyEvent turn(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier);
        scene().sendEvent(molecule(), &turn);
        table()->setFilter(u"C"_s);
        QVERIFY(!isModified());
        for (const bool isShown : {false, true}) { // what is hidden is kept with the document
            molecule()->setVisible(isShown);
            QCOMPARE(isModified(), !isShown);
        }
        for (const QString &shown : {u"Peak Sticks"_s, u"Peak Labels"_s}) {
            choose(window(), plot(), {u"Show"_s, shown});
            QVERIFY(isModified());
            choose(window(), plot(), {u"Show"_s, shown});
            QVERIFY(!isModified());
        }
        const QRectF byHand(70, 80, 500, 400);
        for (DocumentItem *item : std::initializer_list<DocumentItem *>{plot(), molecule()})
            scene().setPlace(*item, {item->place().page, byHand});
        entry(menu(u"View"_s), u"Arrange Items"_s)->trigger();
        QVERIFY(isModified() && plot()->place().workspace.isEmpty() && molecule()->place().workspace.isEmpty());
        history().undo();
        QVERIFY(!isModified() && plot()->place().workspace == byHand && molecule()->place().workspace == byHand);
        // What is deleted then keeps its place.
        const DocumentItem *deleted = plot();
        removeWithUndo(scene(), plot());
        entry(menu(u"View"_s), u"Arrange Items"_s)->trigger();
        history().undo();
        history().undo();
        QVERIFY(scene().isOnPage(deleted) && deleted->place().workspace == byHand);
        entry(menu(u"View"_s), u"Arrange Items"_s)->trigger();
        table()->setFilter({});
        command(u"RMSD"_s, u"RMSD"_s);
        QVERIFY(said == rmsd && said.startsWith(u"RMSD: "));
        command(u"Edit Spectrum..."_s, u"MAGRES parameters"_s);
        QVERIFY(points() == updated && window().isWindowModified());

        expect(u"Unsaved Changes"_s, QMessageBox::Cancel);
        QVERIFY(!window().close() && bytesOf(m_path) == bytes && !errorOf(bytes.chopped(1)).isEmpty());
        expect(u"Unsaved Changes"_s, QMessageBox::Discard);
        expect(u"a&b.magresdoc cannot be opened"_s);
        window().openFiles({m_path});
        QVERIFY(points() == updated && window().isWindowModified());
        // What another program has written there is not replaced unasked.
        const QByteArray others = bytesOf(m_path);
        expect(u"Unsaved Changes"_s, QMessageBox::Save);
        expect(u"Changed Elsewhere"_s, QMessageBox::Cancel);
        window().document()->newDocument();
        QVERIFY(bytesOf(m_path) == others && points() == updated && window().isWindowModified());
        expect(u"Unsaved Changes"_s, QMessageBox::Save);
        expect(u"Changed Elsewhere"_s, QMessageBox::Save);
        window().document()->newDocument();
        QVERIFY(DocumentFile::read(m_path).items.size() == 3 && scene().documentItems().isEmpty());
        RecentFiles recent(nullptr);
        recent.add(u"gone"_s);
        QCOMPARE(recent.files(), (QStringList{m_path, QFileInfo(saved).absoluteFilePath()}));
        QVERIFY(recent.actions()[0]->text().endsWith(u"a&&b.magresdoc"));
    }
};

QTEST_MAIN(TestDocument)
#include "tst_document.moc"
