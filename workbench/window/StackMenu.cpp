// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/StackMenu.h"

#include "data/Elision.h"
#include "host/MainScene.h"
#include "formats/ExperimentFile.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/PeakEditor.h"

#include <QActionGroup>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>

#include <optional>

namespace Workbench {

namespace {

/// What was taken for granted in reading it, behind what is reported.
QString assumed(const Experiment &experiment)
{
    return experiment.notes().isEmpty() ? QString() : u' ' + experiment.notes().join(u' ');
}

} // namespace

StackMenu::StackMenu(MainScene *scene, QWidget *window)
    : QMenu(window),
      m_scene(scene),
      m_activeMenu(new QMenu(tr("Active &Spectrum"), this)),
      m_removeMenu(new QMenu(tr("&Remove Spectrum"), this))
{
    addAction(tr("Add &Experimental Spectrum..."), this, &StackMenu::chooseExperiment);
    addAction(tr("Add Bruker &Folder..."), this, &StackMenu::chooseFolder);
    addMenu(m_activeMenu);
    addMenu(m_removeMenu);
    m_next = new QAction(tr("&Next"), this);
    m_next->setShortcut(QKeySequence(tr("Ctrl+PgDown")));
    connect(m_next, &QAction::triggered, this, [this] { activateNext(1); });
    m_previous = new QAction(tr("&Previous"), this);
    m_previous->setShortcut(QKeySequence(tr("Ctrl+PgUp")));
    connect(m_previous, &QAction::triggered, this, [this] { activateNext(-1); });
    // Shortcuts work from menus that are not open through the window.
    window->addActions({m_next, m_previous});
    connect(m_activeMenu, &QMenu::aboutToShow, this, &StackMenu::fillActiveMenu);
    connect(m_removeMenu, &QMenu::aboutToShow, this, &StackMenu::fillRemoveMenu);
}

NmrData *StackMenu::data() const
{
    NmrItem *item = m_scene->currentNmrItem();
    return item ? item->nmrData() : nullptr;
}

void StackMenu::chooseExperiment()
{
    const QPointer<NmrItem> item = m_scene->currentNmrItem();
    const QString filters = (ExperimentFile::nameFilters() << tr("All files (*)")).join(QLatin1String(";;"));
    const QString path =
        QFileDialog::getOpenFileName(parentWidget(), tr("Add Experimental Spectrum"), m_lastDirectory, filters);
    addChosen(path, item);
}

void StackMenu::chooseFolder()
{
    const QPointer<NmrItem> item = m_scene->currentNmrItem();
    const QString path = QFileDialog::getExistingDirectory(parentWidget(), tr("Add Bruker Folder"), m_lastDirectory);
    addChosen(path, item);
}

void StackMenu::addChosen(const QString &path, NmrItem *item)
{
    if (path.isEmpty())
        return;
    m_lastDirectory = QFileInfo(path).path();
    if (item)
        return addExperiment(path, item);
    try {
        addExperimentSomewhere(path);
    } catch (const std::exception &error) {
        QMessageBox::critical(parentWidget(), tr("%1 cannot be added").arg(QFileInfo(path).fileName()),
                              elided(QString::fromUtf8(error.what())));
    }
}

bool StackMenu::tryOnto(const QString &path, NmrItem *item)
{
    NmrData *data = item->nmrData();
    if (data->shownSpectrum().isEmpty())
        return false;
    std::optional<Experiment> experiment;
    try {
        experiment = ExperimentFile::open(path, data->shownSpectrum());
    } catch (const std::exception &) {
        return false;
    }
    add(*experiment, QFileInfo(path).fileName(), *item);
    return true;
}

void StackMenu::add(const Experiment &experiment, const QString &name, NmrItem &item)
{
    NmrData &data = *item.nmrData();
    const QUuid id = data.addEntry(experiment.beside(data.shownSpectrum().peaks), name);
    Q_EMIT reported(tr("%1: %n peak(s) added", nullptr, int(data.spectrum(id).peaks.size())).arg(name)
                    + QStringLiteral(". ") + PeakEditor::counts(data) + u'.' + assumed(experiment));
}

void StackMenu::addExperimentSomewhere(const QString &path)
{
    QList<NmrItem *> plots;
    for (DocumentItem *item : m_scene->documentItems()) {
        if (auto *plot = qobject_cast<NmrItem *>(item))
            plots.append(plot);
    }
    // Where one works now, before all others; but a measurement joins a calculation, not another measurement.
    std::stable_sort(plots.begin(), plots.end(), [this](const NmrItem *a, const NmrItem *b) {
        return (a == m_scene->currentNmrItem()) > (b == m_scene->currentNmrItem());
    });
    for (NmrItem *plot : std::as_const(plots)) {
        if (!plot->nmrData()->simulatedEntry().isNull() && tryOnto(path, plot))
            return;
    }
    // Of which nuclei and how many dimensions it is, the file knows.
    const QString name = QFileInfo(path).fileName();
    std::optional<Experiment> experiment;
    try {
        experiment.emplace(path, QStringList{QString()});
    } catch (const std::exception &) {
        experiment.emplace(path, QStringList{QString(), QString()});
    }
    auto *item = new NmrItem;
    item->nmrData()->addEntry(experiment->beside({}), name);
    m_scene->addNew(item, m_scene->getEmptyRect());
    m_scene->setActiveItem(item);
    Q_EMIT reported(tr("%1 has a plot of its own; a spectrum that is created now joins it. %n peak(s).", nullptr,
                       int(item->nmrData()->shownSpectrum().peaks.size()))
                        .arg(name)
                    + assumed(*experiment));
}

void StackMenu::addExperiment(const QString &path, NmrItem *item)
{
    const QString name = QFileInfo(path).fileName();
    NmrData *target = item ? item->nmrData() : data();
    try {
        if (!target)
            throw std::runtime_error(
                tr("There is no spectrum on the page to put %1 beside: simulate one first.").arg(name).toStdString());
        add(ExperimentFile::open(path, target->shownSpectrum()), name, item ? *item : *m_scene->currentNmrItem());
    } catch (const std::exception &error) {
        QMessageBox::critical(parentWidget(), tr("%1 cannot be added").arg(name),
                              elided(QString::fromUtf8(error.what())));
    }
}

void StackMenu::activateNext(int direction)
{
    NmrData *stack = data();
    const QList<QUuid> ids = stack ? stack->entryIds() : QList<QUuid>();
    if (ids.isEmpty())
        return;
    const qsizetype next = (ids.indexOf(stack->activeEntryId()) + direction + ids.size()) % ids.size();
    stack->setActiveEntryId(ids[next]);
    Q_EMIT reported(tr("Active spectrum: %1").arg(stack->entryName(ids[next])));
}

void StackMenu::addEntryActions(QMenu *menu, const std::function<void(QAction *, const QUuid &)> &setUp)
{
    menu->clear();
    NmrData *stack = data();
    if (!stack)
        return;
    for (const QUuid &id : stack->entryIds()) {
        const QString name = stack->entryName(id);
        // An ampersand of the name is no shortcut.
        QAction *action =
            menu->addAction(name.isEmpty() ? tr("Spectrum") : QString(name).replace(u'&', QLatin1String("&&")));
        setUp(action, id);
    }
}

void StackMenu::fillActiveMenu()
{
    // The group goes with the actions of the last time.
    QActionGroup *group = nullptr;
    addEntryActions(m_activeMenu, [&](QAction *action, const QUuid &id) {
        if (!group)
            group = new QActionGroup(action);
        action->setCheckable(true);
        action->setActionGroup(group);
        action->setChecked(id == data()->activeEntryId());
        connect(action, &QAction::triggered, data(), [stack = data(), id] { stack->setActiveEntryId(id); });
    });
    m_activeMenu->addSeparator();
    m_activeMenu->addActions({m_next, m_previous});
}

void StackMenu::fillRemoveMenu()
{
    addEntryActions(m_removeMenu, [&](QAction *action, const QUuid &id) {
        // The last one goes with its item.
        action->setEnabled(data()->entryIds().size() > 1);
        connect(action, &QAction::triggered, data(), [stack = data(), id] { stack->removeEntry(id); });
    });
}

} // namespace Workbench
