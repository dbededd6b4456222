// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "document/DocumentState.h"
#include "document/UndoCommands.h"
#include "document/UndoRecorder.h"
#include "formats/DocumentFile.h"
#include "host/DataEngine.h"
#include "host/MainScene.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"
#include "items/table/TableModel.h"
#include "window/PeakAtomLinks.h"

#include <QBuffer>
#include <QGraphicsSceneMouseEvent>
#include <QRandomGenerator>
#include <QTest>
#include <QTableView>
#include <QUndoStack>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

/// A plug-in's table that a document can keep.
class SmallTable : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE int tableItem_type() const { return 7; }
    Q_INVOKABLE QVariantMap tableItem_toMap() const { return {{u"Rows"_s, 3}}; }
    Q_INVOKABLE QString tableItem_objectTitle() const { return u"A table"_s; }
};

QVariantMap molecule(int number)
{
    QVariantList atoms;
    for (int i = 0; i < 3; ++i)
        atoms.append(QVariantMap{{u"Element"_s, 6}, {u"Position"_s, QVariant::fromValue(DoubleVector{1.5 * i, 0, 0})}});
    return {{u"ID"_s, QUuid::createUuid()}, {u"Atoms"_s, atoms}, {u"Number"_s, number}};
}

QVariantMap spectrum(double height)
{
    const QVariantMap peak{{u"ID"_s, QUuid::createUuid()},
                           {u"Pos"_s, QVariant::fromValue(DoubleVector{height, 0})},
                           {u"Height"_s, height}};
    return {{u"Peaks"_s, QVariantMap{{u"PeakList"_s, QVariantList{peak}}}}, {u"Height"_s, height}};
}

QVariantMap noteOn(const QUuid &entry)
{
    return {
        {u"Origin"_s, entry},
        {u"Shifts"_s, QVariantList{QVariantMap{{u"Nums"_s, QVariantList{1}}, {u"AssignedPeaks"_s, QVariantList()}}}}};
}

} // namespace

/// The undo history against what it promises, step by step of long random sessions.
class TestUndo : public QObject {
    Q_OBJECT

    std::unique_ptr<DataEngine> m_data;
    std::unique_ptr<MainScene> m_scene;
    QRandomGenerator m_random{20};

    QUndoStack &history() { return *m_scene->undoStack(); }

    QByteArray state() const
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        DocumentFile::write(buffer, DocumentState::capture(*m_scene, *m_data, nullptr));
        return buffer.data();
    }

    template <typename Item>
    Item *any()
    {
        QList<Item *> found;
        for (DocumentItem *item : m_scene->documentItems()) {
            if (auto *same = qobject_cast<Item *>(item))
                found.append(same);
        }
        return found.isEmpty() ? nullptr : found[m_random.bounded(int(found.size()))];
    }

    /// As plug-ins do it once a spectrum is in its stack.
    void notePeaks(const QUuid &entry)
    {
        auto *target = any<MoleculeItem>();
        if (!target)
            return;
        QVariantMap map = target->molMap();
        QVariantList notes = map.value(u"NMRAssignments"_s).toList();
        notes.append(noteOn(entry));
        map.insert(u"NMRAssignments"_s, notes);
        target->setMolMap(map);
    }

    void addItem()
    {
        m_scene->createNMRItem({}, spectrum(m_random.bounded(9) + 1), m_random.bounded(2));
        notePeaks(m_scene->currentNmrItem()->nmrData()->entryIds().constFirst());
    }

    void changeSpectra(NmrItem *item)
    {
        NmrData &data = *item->nmrData();
        const QList<QUuid> ids = data.entryIds();
        const QUuid id = ids.isEmpty() ? QUuid() : ids[m_random.bounded(int(ids.size()))];
        const int what = id.isNull() ? 0 : m_random.bounded(ids.size() > 4 ? 2 : 0, 4);
        if (what == 0) {
            data.addEntry(spectrum(m_random.bounded(9) + 1), u"measured"_s);
        } else if (what == 1) {
            data.insertSpectrum(QUuid(), spectrum(m_random.bounded(9) + 1));
            notePeaks(data.entryIds().constLast());
        } else if (what == 2) {
            data.removeEntry(id);
        } else if (m_random.bounded(2)) {
            data.insertSpectrum(id, spectrum(m_random.bounded(9) + 1));
            notePeaks(id);
        } else {
            data.setEntryPeaks(id, spectrum(2)[u"Peaks"_s].toMap(), u"Pick Peaks"_s);
        }
    }

    /// A change that can be undone.
    void change()
    {
        auto *item = any<DocumentItem>();
        const int what = m_random.bounded(10);
        if (!item || (what == 0 && m_scene->documentItems().size() < 9)) {
            addItem();
        } else if (what < 3) {
            removeWithUndo(*m_scene, item);
        } else if (what == 3) {
            const QRectF before = item->geometry();
            item->setGeometry(before.translated(m_random.bounded(100), 5).adjusted(0, 0, 9, 0));
            Q_EMIT item->geometryEdited(before, item->geometry());
        } else if (what == 4) {
            renameWithUndo(*m_scene, item, u"named %1"_s.arg(m_random.bounded(100)));
        } else if (auto *table = what == 5 ? any<TableItem>() : nullptr) {
            const int column = m_random.bounded(table->model()->columnCount());
            table->showColumn(column, table->view()->isColumnHidden(column));
        } else if (auto *nmr = any<NmrItem>()) {
            changeSpectra(nmr);
        }
    }

private Q_SLOTS:
    void init()
    {
        failOnWarningsOfQt();
        m_scene.reset();
        m_data = std::make_unique<DataEngine>();
        m_scene = std::make_unique<MainScene>(m_data.get());
        new UndoRecorder(m_scene.get());
        new PeakAtomLinks(m_scene.get());
        for (int i = 0; i < 2; ++i) {
            QGraphicsWidget *mol = m_scene->createMolItem({}, molecule(i), true);
            qobject_cast<DocumentItem *>(m_scene->addCustomTableItem(new SmallTable, false))->linkObject(mol);
        }
    }

    void undoAndRedoLeadToWhatWas()
    {
        history().clear();
        // Of each step in the history: before it, and when it was undone.
        QList<QByteArray> before, undone(history().undoLimit());
        int steps = 0, undos = 0, redos = 0;
        for (; steps < 10000; ++steps) {
            const int index = history().index();
            const int what = m_random.bounded(20);
            if (what < 6 && history().canUndo()) {
                undone[index - 1] = state();
                history().undo();
                QCOMPARE(history().index(), index - 1);
                QVERIFY2(state() == before[index - 1],
                         qPrintable(u"undo, step %1: %2"_s.arg(steps).arg(history().redoText())));
                ++undos;
            } else if (what < 10 && history().canRedo()) {
                history().redo();
                QCOMPARE(history().index(), index + 1);
                QVERIFY2(state() == undone[index],
                         qPrintable(u"redo, step %1: %2"_s.arg(steps).arg(history().undoText())));
                ++redos;
            } else if (what == 10) {
                // No step of the history: the user clicks on an item.
                m_scene->setActiveItem(any<DocumentItem>());
            } else {
                const QByteArray now = state();
                const QUndoCommand *last = index > 0 ? history().command(index - 1) : nullptr;
                change();
                if (history().index() == index && (index == 0 || history().command(index - 1) == last))
                    continue; // nothing to change
                before.resize(index);
                before.append(now);
                if (before.size() > history().undoLimit())
                    before.removeFirst();
            }
        }
        QVERIFY2(undos > 2000 && redos > 500, qPrintable(u"%1 %2"_s.arg(undos).arg(redos)));
    }

    void deletedAgainAndAgainItIsStillThere()
    {
        for (DocumentItem *item : QList<DocumentItem *>{any<MoleculeItem>(), any<TableItem>()}) {
            const QByteArray whole = state();
            history().setClean();
            for (int i = 0; i < 4; ++i) {
                m_scene->setActiveItem(item);
                removeWithUndo(*m_scene, item);
                QVERIFY(!m_scene->isOnPage(item) && !history().isClean());
                history().undo();
                QVERIFY(m_scene->isOnPage(item) && history().isClean());
            }
            m_scene->setCurrentItems({});
            QVERIFY(state().size() <= whole.size());
        }
    }

    void nobodyKeepsWhatCannotComeBack()
    {
        const QPointer<DocumentItem> deleted = any<MoleculeItem>();
        removeWithUndo(*m_scene, deleted);
        QVERIFY(deleted);
        history().clear();
        QVERIFY(!deleted);

        addItem();
        const QPointer<DocumentItem> added = m_scene->currentNmrItem();
        history().undo();
        QVERIFY(added && !m_scene->isOnPage(added));
        addItem(); // in its place in the history
        QVERIFY(!added);
        const QPointer<DocumentItem> byOthers = m_scene->currentNmrItem();
        delete byOthers;
        history().undo();
        QVERIFY(!m_scene->currentNmrItem());
    }
};

QTEST_MAIN(TestUndo)
#include "tst_undo.moc"
