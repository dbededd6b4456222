// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/StackMenu.h"

#include "data/Elision.h"
#include "data/Error.h"
#include "data/Nuclides.h"
#include "host/MainScene.h"
#include "formats/ExperimentFile.h"
#include "formats/SpectrumReader.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/PeakEditor.h"
#include "window/FrequencyDialog.h"

#include <QActionGroup>
#include <QFileDialog>
#include <QGraphicsView>
#include <QMessageBox>
#include <QPointer>
#include <QSettings>

namespace Workbench {

namespace {

const QString protonFrequencyKey = QStringLiteral("window/protonFrequency"); // MHz, as it was answered last

/// What was taken for granted in reading it, behind what is reported.
QString assumed(const Experiment &experiment)
{
    return experiment.notes().isEmpty() ? QString() : u' ' + experiment.notes().join(u' ');
}

qsizetype dimensionsOf(const Measurement &measurement)
{
    if (const auto *spectrum = std::get_if<ExperimentalSpectrum>(&measurement))
        return qsizetype(spectrum->dimensions.size());
    return std::get<MeasuredPeaks>(measurement).dimensions;
}

bool isSilent(const Measurement &measurement, qsizetype dimension)
{
    if (const auto *spectrum = std::get_if<ExperimentalSpectrum>(&measurement))
        return spectrum->dimensions[size_t(dimension)].nucleus.isEmpty();
    return std::get<MeasuredPeaks>(measurement).nuclei[size_t(dimension)].isEmpty();
}

/// With what was taken for granted, which the status line tells only once.
QVariantMap entryWithNotes(const Experiment &experiment, const QList<SpectrumPeak> &simulated)
{
    QVariantMap entry = experiment.beside(simulated);
    if (!experiment.notes().isEmpty())
        entry.insert(SpectrumEntry::notesKey(), experiment.notes());
    return entry;
}

/// A table of several nuclei that makes no cross peaks is read for that of the plot, which may be null.
Measurement readBeside(const NmrItem *plot, const QString &path, ReadOptions options = {})
{
    const QList<SpectrumAxis> axes = plot ? plot->nmrData()->shownSpectrum().axes : QList<SpectrumAxis>();
    try {
        return readMeasurement(path, options);
    } catch (const FrequencyNeeded &) {
        throw;
    } catch (const std::exception &) {
        if (axes.size() != 1)
            throw;
        options.nucleus = axes.constFirst().isotope();
        return readMeasurement(path, options);
    }
}

} // namespace

struct StackMenu::Found {
    Experiment experiment;
    QString name;
    QPointer<NmrItem> plot; ///< null: none that takes it
};

ReadOptions StackMenu::optionsOf(const std::optional<Answer> &answer, int dimensions)
{
    ReadOptions options = answer ? answer->options : ReadOptions();
    options.dimensions = dimensions > 0 || !answer ? dimensions : int(answer->nuclei.size());
    return options;
}

StackMenu::StackMenu(MainScene *scene, QWidget *window)
    : QMenu(window),
      m_scene(scene),
      m_activeMenu(new QMenu(tr("Active &Spectrum"), this)),
      m_removeMenu(new QMenu(tr("Remo&ve Spectrum"), this))
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
    try {
        // Nobody has pointed at this plot: what does not belong there goes elsewhere.
        if (item && fitsOnto(path, *item))
            return addExperiment(path, item);
        if (const auto found = find(path))
            put(*found);
    } catch (const std::exception &error) {
        QMessageBox::critical(parentWidget(), tr("%1 cannot be added").arg(QFileInfo(path).fileName()),
                              elided(QString::fromUtf8(error.what())));
    }
}

void StackMenu::add(const Experiment &experiment, const QString &name, NmrItem &item)
{
    NmrData &data = *item.nmrData();
    const QUuid id = data.addEntry(entryWithNotes(experiment, data.shownSpectrum().peaks), name);
    Q_EMIT reported(tr("%1: %n peak(s) added", nullptr, int(data.spectrum(id).peaks.size())).arg(name)
                    + QStringLiteral(". ") + PeakEditor::counts(data) + u'.' + assumed(experiment));
}

QList<NmrItem *> StackMenu::plotsWithCalculation() const
{
    QList<NmrItem *> plots;
    for (DocumentItem *item : m_scene->documentItems()) {
        // A measurement joins a calculation, not another measurement.
        if (auto *plot = qobject_cast<NmrItem *>(item); plot && !plot->nmrData()->simulatedEntry().isNull())
            plots.append(plot);
    }
    // Where one works now, before all others.
    std::stable_sort(plots.begin(), plots.end(), [this](const NmrItem *a, const NmrItem *b) {
        return (a == m_scene->currentNmrItem()) > (b == m_scene->currentNmrItem());
    });
    return plots;
}

std::optional<Experiment> StackMenu::fitting(const QString &path, const Measurement &measurement, const NmrItem &item,
                                             const std::optional<Answer> &answer)
{
    const Spectrum &shown = item.nmrData()->shownSpectrum();
    if (shown.isEmpty())
        return std::nullopt;
    QStringList nuclei;
    std::vector<double> frequencies;
    for (const SpectrumAxis &axis : shown.axes) {
        nuclei.append(axis.isotope());
        frequencies.push_back(axis.frequency);
    }
    if (answer && answer->nuclei != nuclei)
        return std::nullopt;
    const QString name = QFileInfo(path).fileName();
    try {
        const bool isAsRead = dimensionsOf(measurement) == nuclei.size();
        // A folder may hold data of several dimensions; a file read in fewer would lose some.
        if (!isAsRead && !QFileInfo(path).isDir())
            return std::nullopt;
        Measurement taken = isAsRead ? measurement : readMeasurement(path, optionsOf(answer, int(nuclei.size())));
        // Where the data are silent and nobody was asked, the name may tell.
        for (qsizetype d = 0; !answer && d < std::min(dimensionsOf(taken), nuclei.size()); ++d) {
            if (isSilent(taken, d) && Nuclides::table().namesOtherThan(nuclei[d], name))
                return std::nullopt;
        }
        return Experiment(std::move(taken), name, nuclei, frequencies);
    } catch (const std::exception &) {
        return std::nullopt;
    }
}

bool StackMenu::fitsOnto(const QString &path, const NmrItem &item)
{
    try {
        return fitting(path, readBeside(&item, path), item, std::nullopt).has_value();
    } catch (const FrequencyNeeded &) {
        // The plot's frequency is as good as any, where it has one of that nucleus.
        const SpectrumAxis axis = item.nmrData()->shownSpectrum().axes.value(0);
        return axis.frequency > 0 && !Nuclides::table().namesOtherThan(axis.isotope(), QFileInfo(path).fileName());
    } catch (const std::exception &) {
        return false;
    }
}

StackMenu::Found StackMenu::place(const QString &path, const std::optional<Answer> &answer) const
{
    const QString name = QFileInfo(path).fileName();
    // Of which nuclei and how many dimensions it is, the file knows.
    const ReadOptions options = optionsOf(answer, 0);
    Measurement measurement = readBeside(plotsWithCalculation().value(0), path, options);
    for (NmrItem *plot : plotsWithCalculation()) {
        if (auto experiment = fitting(path, measurement, *plot, answer))
            return {*std::move(experiment), name, plot};
    }
    const qsizetype dimensions = dimensionsOf(measurement);
    QStringList nuclei = answer ? answer->nuclei : QStringList();
    nuclei.resize(dimensions);
    return {Experiment(std::move(measurement), name, nuclei,
                       {options.frequency.begin(), options.frequency.begin() + dimensions}),
            name, nullptr};
}

std::optional<StackMenu::Answer> StackMenu::ask(const QString &path, const FrequencyNeeded &needed,
                                                const NmrItem *beside)
{
    FrequencyDialog::Proposal proposal{{}, QSettings().value(protonFrequencyKey).toDouble()};
    if (const NmrData *data = beside ? beside->nmrData() : nullptr; data && !data->shownSpectrum().isEmpty()) {
        const SpectrumAxis &axis = data->shownSpectrum().axes.constFirst();
        const QString nucleus = axis.isotope();
        const double ratio = std::abs(Nuclides::table()[nucleus].frequencyRatio);
        // Simulations know the spectrometer by its name, and their nuclei without the shift of a standard.
        const QVariantHash simulated = data->stackEntry(data->simulatedEntry()).parameters(QStringLiteral("magres"));
        proposal.nucleus = nucleus;
        if (const double named = simulated.value(QStringLiteral("freq")).toDouble(); named > 0)
            proposal.protonFrequency = named;
        else if (ratio > 0 && axis.frequency > 0)
            proposal.protonFrequency = axis.frequency * 100 / ratio;
    }
    FrequencyDialog dialog(path, needed, proposal, parentWidget());
    if (dialog.exec() != QDialog::Accepted) {
        Q_EMIT reported(tr("%1 was not opened").arg(QFileInfo(path).fileName()));
        return std::nullopt;
    }
    QSettings().setValue(protonFrequencyKey, dialog.protonFrequency());
    return Answer{dialog.readOptions(), dialog.nuclei()};
}

std::shared_ptr<const StackMenu::Found> StackMenu::find(const QString &path)
{
    try {
        return std::make_shared<const Found>(place(path, std::nullopt));
    } catch (const FrequencyNeeded &needed) {
        const auto answer = ask(path, needed, plotsWithCalculation().value(0));
        return answer ? std::make_shared<const Found>(place(path, answer)) : nullptr;
    }
}

void StackMenu::put(const Found &found)
{
    if (found.plot)
        return add(found.experiment, found.name, *found.plot);
    auto *item = new NmrItem;
    item->nmrData()->addEntry(entryWithNotes(found.experiment, {}), found.name);
    m_scene->addNew(item, m_scene->getEmptyRect());
    m_scene->setActiveItem(item);
    for (QGraphicsView *view : m_scene->views())
        view->ensureVisible(item, 0, 0);
    const QStringList nuclei = item->nmrData()->shownEntry().nuclei();
    const QStringList turned(nuclei.rbegin(), nuclei.rend());
    for (const DocumentItem *other : m_scene->documentItems()) {
        const auto *plot = qobject_cast<const NmrItem *>(other);
        if (nuclei.size() == 2 && nuclei != turned && plot && plot->nmrData()->shownEntry().nuclei() == turned)
            return Q_EMIT reported(
                tr("%1 has a plot of its own: its axes lie the other way round. A spectrum that is created with "
                   "%2 as its direct nucleus (F2) joins it.")
                    .arg(found.name, nuclei.constFirst())
                + assumed(found.experiment));
    }
    Q_EMIT reported(tr("%1 has a plot of its own; a spectrum that is created now joins it. %n peak(s).", nullptr,
                       int(item->nmrData()->shownSpectrum().peaks.size()))
                        .arg(found.name)
                    + assumed(found.experiment));
}

void StackMenu::addExperiment(const QString &path, NmrItem *item)
{
    const QString name = QFileInfo(path).fileName();
    try {
        try {
            add(ExperimentFile::open(path, item->nmrData()->shownSpectrum()), name, *item);
        } catch (const FrequencyNeeded &needed) {
            const QPointer<NmrItem> stillThere(item);
            const auto answer = ask(path, needed, item);
            if (!answer || !stillThere)
                return;
            if (const auto experiment = fitting(path, readMeasurement(path, optionsOf(answer, 0)), *item, answer))
                add(*experiment, name, *item);
            else
                fail(tr("%1 is a spectrum of %2, which the plot does not show")
                         .arg(name, answer->nuclei.join(QStringLiteral(", "))));
        }
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

#include "moc_StackMenu.cpp"
