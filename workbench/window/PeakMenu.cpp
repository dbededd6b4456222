// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/PeakMenu.h"

#include "host/MainScene.h"
#include "window/PickPeaksDialog.h"
#include "formats/ExperimentFile.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/plot/PeakEditor.h"

#include <algorithm>

namespace Workbench {

namespace {

/// Each once, with the labels of all that lie there.
std::vector<PeakListFile::Peak> positionsOf(const QList<SpectrumPeak> &peaks)
{
    std::vector<PeakListFile::Peak> positions;
    for (const SpectrumPeak &peak : peaks) {
        const auto known = std::find_if(positions.begin(), positions.end(),
                                        [&](const PeakListFile::Peak &other) { return other.f2 == peak.f2; });
        if (known == positions.end())
            positions.push_back({peak.f2, peak.f1, peak.height, peak.label});
        else if (const QString between = QStringLiteral(", "); known->label.isEmpty())
            known->label = peak.label;
        else if (!peak.label.isEmpty() && !known->label.split(between).contains(peak.label))
            known->label += between + peak.label;
    }
    return positions;
}

} // namespace

PeakMenu::PeakMenu(MainScene *scene, QWidget *window) : QMenu(window), m_scene(scene)
{
    m_edit = addAction(tr("Edit &Peaks"), QKeySequence(tr("Ctrl+Shift+E")), this, [this](bool on) { edit(on); });
    m_edit->setCheckable(true);
    QAction *pickAction = addAction(tr("Pic&k Peaks..."), QKeySequence(tr("Ctrl+Shift+K")), this, &PeakMenu::pick);
    QAction *count = addAction(tr("&Count Equivalent Sites"), this, &PeakMenu::countSites);
    count->setToolTip(tr("Each measured peak as often as the simulated spectrum has sites there"));
    // Shortcuts work from menus that are not open through the window.
    window->addActions({m_edit, pickAction});
    connect(scene, &MainScene::itemAdded, this, [this](DocumentItem *item) {
        if (auto *nmr = qobject_cast<NmrItem *>(item); nmr && nmr->peakEditor())
            watch(nmr);
    });
    connect(scene, &MainScene::activeItemChanged, this, &PeakMenu::followActiveItem);
}

void PeakMenu::watch(NmrItem *item)
{
    connect(item->peakEditor(), &PeakEditor::activeChanged, this, [this, item](bool active) {
        if (active)
            m_edited = item;
        else if (m_edited == item)
            m_edited = nullptr;
        m_edit->setChecked(m_edited);
    });
}

void PeakMenu::followActiveItem()
{
    if (m_edited && m_scene->activeItem() != m_edited)
        m_edited->peakEditor()->setActive(false);
}

void PeakMenu::edit(bool on)
{
    NmrItem *item = m_scene->currentNmrItem();
    if (!item) {
        m_edit->setChecked(false);
        Q_EMIT reported(tr("There is no spectrum on the page"));
        return;
    }
    // It must have the keyboard.
    m_scene->setActiveItem(item);
    item->peakEditor()->setActive(on);
}

void PeakMenu::pick()
{
    const QPointer<NmrItem> item = m_scene->currentNmrItem();
    const QUuid entry = item ? item->peakEditor()->target() : QUuid();
    if (entry.isNull() || item->nmrData()->spectrum(entry).isEmpty()) {
        Q_EMIT reported(tr("There is no measured spectrum to pick peaks from"));
        return;
    }
    PickPeaksDialog dialog(*item->nmrData(), entry, static_cast<QWidget *>(parent()));
    connect(&dialog, &PickPeaksDialog::picked, item->plot(),
            [&](const QList<QPointF> &places) { item->plot()->setPreview(entry, places); });
    dialog.pick();
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (!item)
        return;
    item->plot()->setPreview({}, {});
    if (accepted) {
        item->nmrData()->setEntryPeaks(entry, dialog.peakMap(), tr("Pick Peaks"));
        Q_EMIT reported(PeakEditor::counts(*item->nmrData()));
    }
}

void PeakMenu::countSites()
{
    NmrItem *item = m_scene->currentNmrItem();
    const QUuid entry = item ? item->peakEditor()->target() : QUuid();
    if (entry.isNull()) {
        Q_EMIT reported(tr("There is no measured spectrum whose peaks could be counted"));
        return;
    }
    NmrData *stack = item->nmrData();
    const QList<SpectrumPeak> &simulated = stack->spectrum(stack->simulatedEntry()).peaks;
    const auto counted = ExperimentFile::countedLike(simulated, positionsOf(stack->spectrum(entry).peaks));
    if (stack->spectrum(entry).dimensions() == 2 || qsizetype(counted.size()) != simulated.size()) {
        Q_EMIT reported(tr("The measured peaks are not as many as the simulated positions that differ. ")
                        + PeakEditor::counts(*stack));
        return;
    }
    stack->setEntryPeaks(entry, PeakListFile::toPeakMap(counted), tr("Count Equivalent Sites"));
    Q_EMIT reported(PeakEditor::counts(*stack));
}

} // namespace Workbench

#include "moc_PeakMenu.cpp"
