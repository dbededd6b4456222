// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/MainScene.h"
#include "items/plot/NmrData.h"
#include "items/table/TableItem.h"

#include <QUndoCommand>

#include <utility>

namespace Workbench {

class DocumentItem;
class MoleculeItem;
class NmrItem;

// What of an item a step of the undo history can change. Each type says how the value is read and how it is set.

/// What each molecule notes about the peaks of spectra. Plug-ins note that after a change.
using PeakNotes = QList<std::pair<QUuid, QVariant>>;

/// Whether the item is on the page, and the notes on peaks.
struct ItemPresence {
    struct Value {
        bool onPage = false;
        PeakNotes notes;
    };
    static Value get(const MainScene &scene, const DocumentItem &item);
    static void set(MainScene &scene, DocumentItem &item, const Value &value);
};

struct ItemPlace {
    using Value = DocumentItem::Place;
    static Value get(const MainScene &scene, const DocumentItem &item);
    static void set(MainScene &scene, DocumentItem &item, const Value &place);
};

struct ItemName {
    using Value = QString;
    static Value get(const MainScene &scene, const DocumentItem &item);
    static void set(MainScene &scene, DocumentItem &item, const Value &name);
};

/// What was doubtful in its file, for as long as it is to be seen.
struct ItemDoubts {
    using Value = QStringList;
    static Value get(const MainScene &scene, const DocumentItem &item);
    static void set(MainScene &scene, DocumentItem &item, const Value &doubts);
};

/// The spectra of an NMR item, with the notes on their peaks.
struct ItemSpectra {
    struct Value {
        NmrStack stack;
        PeakNotes notes;
    };
    static Value get(const MainScene &scene, const DocumentItem &item);
    static void set(MainScene &scene, DocumentItem &item, const Value &value);
};

/// Which columns a table shows.
struct ItemColumns {
    using Value = TableColumns;
    static Value get(const MainScene &scene, const DocumentItem &item);
    static void set(MainScene &scene, DocumentItem &item, const Value &columns);
};

/// A change of one value of an item, made already when the command is. Undo and redo are the same: they put the kept
/// value there and keep the one that they find, and with it what the user was working with, so that neither can lead to
/// a state that was not there before.
template <typename Property>
class ItemCommand : public QUndoCommand {
public:
    using Value = typename Property::Value;

    /// `before` and `currentBefore`: before the change. One of a part, such as a spectrum of a plot, makes one step
    /// with the next of the same item, part and name: the value goes through many on its way.
    ItemCommand(MainScene *scene, const DocumentItem *item, const QString &what, Value before,
                const MainScene::CurrentItems &currentBefore, const QUuid &part = {});

    void redo() override;
    void undo() override;
    int id() const override { return m_part.isNull() ? -1 : 1; }
    bool mergeWith(const QUndoCommand *next) override;

private:
    void exchange(const MainScene::CurrentItems &current);

    ItemHold m_hold;
    Value m_other;
    // What is current is no part of the change: clicks between undo and redo alter neither of these.
    const MainScene::CurrentItems m_currentBefore;
    MainScene::CurrentItems m_currentAfter; ///< when it was last undone
    bool m_done = true;
    const QUuid m_part;
};

extern template class ItemCommand<ItemPresence>;
extern template class ItemCommand<ItemPlace>;
extern template class ItemCommand<ItemName>;
extern template class ItemCommand<ItemDoubts>;
extern template class ItemCommand<ItemSpectra>;
extern template class ItemCommand<ItemColumns>;

// Changes that the user makes; undoable.
void removeWithUndo(MainScene &scene, DocumentItem *item);
/// An empty name gives the item its own title again.
void renameWithUndo(MainScene &scene, DocumentItem *item, const QString &name);
/// Those that were placed by hand go back into their rows.
void arrangeWithUndo(MainScene &scene, const QString &what);
void dismissDoubtsWithUndo(MainScene &scene, DocumentItem *item);

} // namespace Workbench
