// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/ItemNotes.h"

#include "analysis/PowderEntry.h"
#include "data/Elision.h"
#include "document/UndoCommands.h"
#include "host/MainScene.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "window/SpectrumCommands.h"
#include "window/compare/ReferenceSets.h"

#include <QGraphicsView>
#include <QMessageBox>
#include <QPushButton>

namespace Workbench {

namespace {

constexpr int mostShown = 1500; // characters

} // namespace

ItemNotes::ItemNotes(MainScene *scene, SpectrumCommands *commands)
    : QObject(scene), m_scene(scene), m_commands(commands)
{
    connect(scene, &MainScene::itemAdded, this, &ItemNotes::watch);
}

void ItemNotes::setPowderCommand(const QString &text, std::function<void(NmrItem *, const QUuid &)> run,
                                 std::function<void(NmrItem *, const QUuid &)> edit)
{
    m_powderText = text;
    m_powder = std::move(run);
    m_editPowder = std::move(edit);
}

void ItemNotes::watch(DocumentItem *item)
{
    const auto updateIt = [this, item] { update(item); };
    connect(item, &DocumentItem::doubtsChanged, this, updateIt);
    if (const auto *nmr = qobject_cast<NmrItem *>(item)) {
        connect(nmr->nmrData(), &NmrData::entriesChanged, this, updateIt);
        connect(nmr->nmrData(), &NmrData::entryChanged, this, updateIt);
    }
    update(item);
}

void ItemNotes::update(DocumentItem *item) const
{
    auto *nmr = qobject_cast<NmrItem *>(item);
    QList<ItemNote> notes = nmr ? remarks(nmr) : QList<ItemNote>();
    if (const QStringList &doubts = item->doubts(); !doubts.isEmpty()) {
        const QString text = doubts.size() == 1
            ? doubts.constFirst()
            : tr("%1 (and %n more doubt(s) about the file)", nullptr, int(doubts.size()) - 1).arg(doubts.constFirst());
        notes.prepend({text, tr("Read..."), [this, at = QPointer<DocumentItem>(item)] {
                           if (at)
                               readDoubts(at);
                       }});
    }
    if (!notes.isEmpty() || !item->notes().isEmpty())
        item->setNotes(notes);
}

void ItemNotes::readDoubts(DocumentItem *item) const
{
    QWidget *window = m_scene->views().isEmpty() ? nullptr : m_scene->views().constFirst()->window();
    QMessageBox box(QMessageBox::Warning, tr("Doubts about the file"),
                    tr("%1 was opened. What is doubtful in it:").arg(item->title()), QMessageBox::Close, window);
    box.setTextFormat(Qt::PlainText);
    const QString all = item->doubts().join(QLatin1String("\n\n"));
    box.setInformativeText(elided(all, mostShown));
    if (all.size() > mostShown)
        box.setDetailedText(all);
    const QPushButton *dismiss = box.addButton(tr("&Dismiss Note"), QMessageBox::ActionRole);
    box.setDefaultButton(QMessageBox::Close);
    const QPointer<DocumentItem> stillThere(item);
    box.exec();
    if (stillThere && box.clickedButton() == dismiss)
        dismissDoubtsWithUndo(*m_scene, item);
}

QList<ItemNote> ItemNotes::remarks(NmrItem *item) const
{
    const NmrData &data = *item->nmrData();
    const QList<QUuid> ids = data.entryIds();
    const bool besideMeasurement = ids.size() == 2
        && std::count_if(ids.cbegin(), ids.cend(), [&](const QUuid &id) { return data.isSimulated(id); }) == 1;
    QList<ItemNote> notes;
    const QList<SpectrumRemark> found = remarksOn(data.stack());
    const bool isMixed = std::any_of(found.begin(), found.end(), [](const SpectrumRemark &remark) {
        return remark.kind == SpectrumRemark::OtherAxes;
    });
    for (const SpectrumRemark &remark : found) {
        ItemNote note{remark.text, {}, {}};
        const auto offer = [&](const QString &action, std::function<void(NmrItem *, const QUuid &)> run) {
            note.action = action;
            // The item may be gone when somebody clicks.
            note.run = [at = QPointer<NmrItem>(item), entry = remark.entry, run] {
                if (at)
                    run(at, entry);
            };
        };
        const auto edit = [commands = m_commands](NmrItem *at, const QUuid &entry) { commands->edit(at, entry); };
        switch (remark.kind) {
        case SpectrumRemark::Undersampled:
            offer(tr("Edit Spectrum..."), edit);
            break;
        case SpectrumRemark::BeyondRange:
            offer(tr("Fit Range"),
                  [commands = m_commands](NmrItem *at, const QUuid &entry) { commands->fitRange(at, entry); });
            break;
        case SpectrumRemark::PlaceholderReference:
            if (m_editPowder && PowderOrigin::of(data.stackEntry(remark.entry)))
                offer(tr("Set Reference..."), m_editPowder);
            else if (besideMeasurement && !isMixed)
                offer(tr("Auto reference"),
                      [commands = m_commands](NmrItem *at, const QUuid &) { commands->autoReference(at); });
            else
                offer(tr("Set Reference..."), edit);
            break;
        case SpectrumRemark::CrossPeaksOnOneAxis:
            break;
        case SpectrumRemark::OtherAxes:
            offer(tr("Plot of Its Own"),
                  [commands = m_commands](NmrItem *at, const QUuid &entry) { commands->moveToOwnPlot(at, entry); });
            break;
        case SpectrumRemark::QuadrupolarLines:
            if (m_powder)
                offer(m_powderText, m_powder);
            break;
        }
        notes.append(note);
    }
    for (const SpectrumEntry &entry : data.stack().entries) {
        for (const QString &doubt : ReferenceSets::doubtsAbout(entry, *m_scene)) {
            const bool isNew =
                std::none_of(notes.begin(), notes.end(), [&](const ItemNote &note) { return note.text == doubt; });
            if (isNew)
                notes.append({doubt, {}, {}});
        }
    }
    return notes;
}

} // namespace Workbench

#include "moc_ItemNotes.cpp"
