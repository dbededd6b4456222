// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/compare/CompareCommands.h"

#include "data/Elision.h"
#include "host/FileFilterRegistry.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/PluginManager.h"
#include "host/TableSites.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"
#include "window/WorkBar.h"
#include "window/compare/ComparePanel.h"
#include "window/compare/RankDialog.h"
#include "window/compare/ReferenceSets.h"
#include "window/compare/SiteLabels.h"

#include <QApplication>
#include <QFileDialog>
#include <QGraphicsView>
#include <QMainWindow>
#include <QMessageBox>
#include <QFileInfo>

namespace Workbench {

namespace {

constexpr int panelWidth = 465;

QString pluginDirectoryOf(const HostApplication *host)
{
    const auto &plugins = host ? host->plugins().plugins() : QList<PluginManager::Plugin>();
    return plugins.isEmpty() ? QString() : QFileInfo(plugins.front().file).absolutePath();
}

} // namespace

CompareCommands::CompareCommands(MainScene *scene, DataEngine *engine, WorkBar *bar, QMainWindow *window)
    : QMenu(window),
      m_scene(scene),
      m_data(engine),
      m_window(window),
      m_panel(new ComparePanel(scene, engine, window)),
      m_referenceSet(new QAction(tr("Reference Se&t..."), this)),
      m_forgetSets(new QAction(tr("Forget Reference Sets"), this))
{
    window->addDockWidget(Qt::RightDockWidgetArea, m_panel);
    window->resizeDocks({m_panel}, {panelWidth}, Qt::Horizontal);
    m_panel->hide();
    connect(m_panel, &ComparePanel::reported, this, &CompareCommands::reported);

    const auto whyNot = [this] { return m_panel->whyNot(); };
    QAction *compare = bar->add(
        tr("Co&mpare..."), tr("Pairs the lines of a measurement with the sites of a structure, whatever their numbers"),
        [this] { m_panel->open(); }, whyNot);
    compare->setIconText(tr("Compare"));
    compare->setShortcut(QKeySequence(tr("Ctrl+Shift+C")));
    QAction *rank = bar->add(
        tr("Ra&nk Structures..."), tr("Which of many structures fits the measured lines best, and how surely"),
        [this] { openRanking(); },
        [this] {
            return measurementsOf(*m_scene).isEmpty()
                ? tr("There is no measurement in one dimension: add a spectrum or a peak list")
                : QString();
        });
    rank->setIconText(tr("Rank Structures"));
    rank->setShortcut(QKeySequence(tr("Ctrl+Shift+R")));
    addActions({compare, rank});
    m_referenceSet->setToolTip(tr("Reference and slope from a set that the command calibrate has written"));
    connect(m_referenceSet, &QAction::triggered, this, &CompareCommands::chooseReferenceSet);
    m_forgetSets->setToolTip(tr("New spectra and comparisons no longer start with reference and slope of a set"));
    connect(m_forgetSets, &QAction::triggered, this, &CompareCommands::forgetReferenceSets);
    m_forgetSets->setEnabled(!ReferenceSets::scales().isEmpty());
    new SiteLabels(scene, engine);
    scene->tableSites()->setStart(ReferenceSets::scales());
    qApp->installEventFilter(this);
}

RankDialog *CompareCommands::rankDialog()
{
    if (m_rank)
        return m_rank;
    const RankDialog::Program program{m_rankProgram.isEmpty() ? QCoreApplication::applicationFilePath() : m_rankProgram,
                                      pluginDirectoryOf(m_host)};
    const auto isCandidate = [this](const QString &path) { return m_host && m_host->fileFilters().matching(path); };
    m_rank = new RankDialog(m_scene, m_data, program, isCandidate, m_window);
    connect(m_rank, &RankDialog::structureChosen, this, &CompareCommands::showRanked);
    connect(m_rank, &RankDialog::fileChosen, this, &CompareCommands::openRanked);
    return m_rank;
}

void CompareCommands::openRanking()
{
    rankDialog()->followDocument();
    m_rank->show();
    m_rank->raise();
    m_rank->activateWindow();
}

void CompareCommands::showRanked(const QUuid &table)
{
    DocumentItem *item = m_scene->item(table);
    if (!item || !m_scene->isOnPage(item)) {
        Q_EMIT reported(tr("This structure is no longer on the page"));
        return;
    }
    m_scene->setActiveItem(item);
    for (QGraphicsView *view : m_scene->views())
        view->ensureVisible(item, 0, 0);
    m_panel->open();
    m_panel->showStructure(table);
    if (m_rank && !m_rank->compared().empty())
        m_panel->showAsRanked(m_rank->compared().front().entry, m_rank->compared().front().options);
}

void CompareCommands::openRanked(const QString &path)
{
    const auto known = [&] {
        const DocumentItem *item = m_scene->item(m_opened.value(QFileInfo(path).canonicalFilePath()));
        return item && m_scene->isOnPage(item) ? item : nullptr;
    };
    if (!known())
        Q_EMIT fileWanted(path);
    if (const DocumentItem *item = known())
        showRanked(item->id());
}

void CompareCommands::rememberFile(const QString &path, const QList<QGraphicsWidget *> &items)
{
    for (QGraphicsWidget *item : items) {
        if (const auto *table = qobject_cast<TableItem *>(item))
            m_opened.insert(QFileInfo(path).canonicalFilePath(), table->id());
    }
}

void CompareCommands::chooseReferenceSet()
{
    const QString file = QFileDialog::getOpenFileName(m_window, tr("Reference Set"), m_directory,
                                                      tr("Reference sets (*.json);;All files (*)"));
    if (file.isEmpty())
        return;
    m_directory = QFileInfo(file).path();
    useReferenceSet(file);
}

void CompareCommands::useReferenceSet(const QString &fileName)
{
    try {
        const ReferenceSet set = ReferenceSets::use(fileName);
        followReferenceSets();
        Q_EMIT reported(tr("%1: new spectra and comparisons start with reference %2 ppm and slope %3 (%4)")
                            .arg(set.nucleus, QString::number(set.calibration.reference, 'f', 2),
                                 QString::number(set.calibration.slope, 'f', 4), set.method.text()));
    } catch (const std::exception &error) {
        QMessageBox::critical(m_window, tr("%1 is no reference set").arg(QFileInfo(fileName).fileName()),
                              elided(QString::fromUtf8(error.what())));
    }
}

void CompareCommands::forgetReferenceSets()
{
    const QStringList nuclei = ReferenceSets::forget();
    followReferenceSets();
    Q_EMIT reported(tr("%1: new spectra and comparisons no longer start with a set").arg(nuclei.join(u", ")));
}

void CompareCommands::followReferenceSets()
{
    m_panel->followReferenceSets();
    const auto scales = ReferenceSets::scales();
    m_scene->tableSites()->setStart(scales);
    m_forgetSets->setEnabled(!scales.isEmpty());
}

bool CompareCommands::isAboutCounts(const QMessageBox &box) const
{
    const NmrItem *item = m_scene->currentNmrItem();
    const NmrData *stack = item ? item->nmrData() : nullptr;
    if (!stack || stack->entryIds().size() != 2 || box.icon() != QMessageBox::Critical)
        return false;
    QList<qsizetype> counts;
    for (const SpectrumEntry &entry : stack->stack().entries)
        counts.append(entry.spectrum.peaks.size());
    return counts[0] != counts[1] && std::all_of(counts.begin(), counts.end(), [&](qsizetype count) {
               return box.text().contains(QString::number(count));
           });
}

bool CompareCommands::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = event->type() == QEvent::Polish ? qobject_cast<QMessageBox *>(watched) : nullptr;
    if (box && box->informativeText().isEmpty() && isAboutCounts(*box))
        box->setInformativeText(
            tr("Compare pairs any numbers of lines and sites: it is in the tool bar and in the menu "
               "Spectrum."));
    return QMenu::eventFilter(watched, event);
}

} // namespace Workbench

#include "moc_CompareCommands.cpp"
