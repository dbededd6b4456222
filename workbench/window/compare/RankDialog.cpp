// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/compare/RankDialog.h"

#include "analysis/comparison/PeakComparison.h"
#include "data/Elision.h"
#include "data/NumberText.h"
#include "data/Nuclides.h"
#include "formats/OutputFiles.h"
#include "host/DataEngine.h"
#include "host/MainScene.h"
#include "items/NumberBox.h"
#include "items/SaveDialog.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "window/compare/RankModel.h"
#include "window/compare/ReferenceSets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QThread>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QAction>
#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>

namespace Workbench {

namespace {

enum MeasurementColumn { Name, Nucleus, Sigma };
constexpr int showInterval = 300; // ms: a table that changes faster cannot be read
constexpr const char *averagingNames[] = {"none", "ch3", "xh3"};

/// A peak list that the commands read.
QByteArray peakList(const std::vector<MeasuredLine> &lines)
{
    const bool isCounted = std::any_of(lines.begin(), lines.end(), [](const auto &line) { return line.count; });
    const bool isLabelled =
        std::any_of(lines.begin(), lines.end(), [](const auto &line) { return !line.sites.isEmpty(); });
    QByteArray text = "position";
    text += isLabelled ? ",label" : "";
    text += isCounted ? ",count\n" : "\n";
    for (const MeasuredLine &line : lines) {
        NumberText::append17(text, line.shift);
        if (isLabelled)
            text += ',' + line.sites.join(u'/').toUtf8();
        if (isCounted)
            text += ',' + QByteArray::number(int(line.count.value_or(1)));
        text += '\n';
    }
    return text;
}

} // namespace

RankDialog::RankDialog(MainScene *scene, DataEngine *engine, Program program, IsCandidate isCandidate, QWidget *parent)
    : QDialog(parent),
      m_scene(scene),
      m_data(engine),
      m_program(std::move(program)),
      m_isCandidate(std::move(isCandidate)),
      m_measurements(new QTreeWidget),
      m_candidates(new QLabel),
      m_averaging(new QComboBox),
      m_unmatched(new QSpinBox),
      m_ignoreLabels(new QCheckBox(tr("&Ignore the assignment of lines to sites"))),
      m_useSets(new QCheckBox(tr("Use reference s&ets"))),
      m_progress(new QProgressBar),
      m_status(new QLabel),
      m_table(new QTableView),
      m_model(new RankModel(this)),
      m_showLater(new QTimer(this)),
      m_followLater(new QTimer(this))
{
    setWindowTitle(tr("Rank Structures"));
    setObjectName(QStringLiteral("rankDialog"));
    m_showLater->setSingleShot(true);
    m_showLater->setInterval(showInterval);
    connect(m_showLater, &QTimer::timeout, this, &RankDialog::showRows);
    m_followLater->setSingleShot(true);
    connect(m_followLater, &QTimer::timeout, this, [this] {
        if (isVisible() && !m_running)
            followDocument();
    });
    connect(scene, &MainScene::itemsChanged, m_followLater, qOverload<>(&QTimer::start));
    m_measurements->setObjectName(QStringLiteral("rankMeasurements"));
    m_measurements->setHeaderLabels({tr("Measured"), tr("Nucleus"), tr("Error σ, ppm")});
    m_measurements->headerItem()->setToolTip(Sigma, tr("Root mean square error of calculated shifts; 0: not known"));
    m_measurements->setRootIsDecorated(false);
    m_measurements->setMaximumHeight(130);
    m_table->setObjectName(QStringLiteral("ranking"));
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setAlternatingRowColors(true);
    m_table->setWordWrap(false);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_progress->setTextVisible(false);
    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_status->setWordWrap(true);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_measurements);
    layout->addWidget(createCandidates());
    layout->addWidget(createOptions());
    layout->addWidget(m_table, 1);
    layout->addWidget(m_progress);
    layout->addWidget(m_status);
    layout->addWidget(createButtons());
    connect(m_table, &QTableView::clicked, this, [this](const QModelIndex &index) {
        // With Ctrl and Shift rows are gathered.
        if (!(QGuiApplication::keyboardModifiers() & (Qt::ControlModifier | Qt::ShiftModifier)))
            choose(index);
    });
    auto *copy = new QAction(tr("Copy"), m_table);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, &RankDialog::copyRows);
    m_table->addAction(copy);
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(m_table, &QTableView::activated, this, &RankDialog::choose);
    resize(900, 620);
    followDocument();
    end(QString());
}

RankDialog::~RankDialog() = default;

QWidget *RankDialog::createCandidates()
{
    auto *box = new QWidget;
    auto *row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const char *name, const QString &text, const QString &tip, auto act) {
        auto *button = new QPushButton(text);
        button->setObjectName(QLatin1String(name));
        button->setToolTip(tip);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, act);
        row->addWidget(button);
    };
    m_candidates->setObjectName(QStringLiteral("rankCandidates"));
    m_candidates->setTextFormat(Qt::PlainText);
    row->addWidget(m_candidates, 1);
    add("rankPage", tr("Of the &Page"), tr("The structures that are open"), &RankDialog::usePage);
    add("rankFiles", tr("&Files..."), tr("Calculations, which are read without being opened"),
        &RankDialog::chooseFiles);
    add("rankFolder", tr("F&older..."), tr("All calculations in a folder"), &RankDialog::chooseFolder);
    return box;
}

QWidget *RankDialog::createOptions()
{
    m_averaging->setObjectName(QStringLiteral("rankAveraging"));
    m_unmatched->setObjectName(QStringLiteral("rankUnmatched"));
    m_ignoreLabels->setObjectName(QStringLiteral("rankIgnoreLabels"));
    m_useSets->setObjectName(QStringLiteral("rankUseSets"));
    m_averaging->addItems({tr("no groups"), tr("CH3"), tr("XH3")});
    m_averaging->setToolTip(tr("Groups of three hydrogens that turn fast enough to give one line"));
    m_unmatched->setRange(0, LinePairing::mostUnmatched);
    m_unmatched->setToolTip(tr("So many lines may be left out where more were measured than there are sites"));
    m_useSets->setToolTip(tr("Slope, and what is known of the reference, from the reference sets that were chosen"));
    auto *box = new QWidget;
    auto *row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const QString &text, QWidget *field) {
        auto *label = new QLabel(text);
        label->setBuddy(field);
        row->addWidget(label);
        row->addWidget(field);
    };
    add(tr("&Average:"), m_averaging);
    add(tr("&Leave out lines:"), m_unmatched);
    row->addWidget(m_ignoreLabels);
    row->addWidget(m_useSets);
    row->addStretch(1);
    return box;
}

QWidget *RankDialog::createButtons()
{
    auto *box = new QWidget;
    auto *row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const char *name, const QString &text, auto act) {
        auto *button = new QPushButton(text);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, act);
        row->addWidget(button);
        return button;
    };
    row->addStretch(1);
    m_start = add("rankStart", tr("&Rank"), &RankDialog::start);
    m_cancel = add("rankCancel", tr("&Cancel"), &RankDialog::cancel);
    m_save = add("rankSave", tr("&Save Table..."), &RankDialog::save);
    add("rankClose", tr("Close"), &QDialog::reject);
    m_start->setDefault(true);
    return box;
}

void RankDialog::followDocument()
{
    for (const DocumentItem *item : m_scene->documentItems()) {
        const auto *plot = qobject_cast<const NmrItem *>(item);
        const NmrData *shown = plot ? plot->nmrData() : nullptr;
        if (!shown)
            continue;
        connect(shown, &NmrData::entriesChanged, m_followLater, qOverload<>(&QTimer::start), Qt::UniqueConnection);
        connect(shown, &NmrData::entryChanged, m_followLater, qOverload<>(&QTimer::start), Qt::UniqueConnection);
    }
    fillMeasurements();
    tellCandidates();
    enableButtons();
}

QComboBox *RankDialog::nucleusBox(QTreeWidgetItem *row) const
{
    return static_cast<QComboBox *>(m_measurements->itemWidget(row, Nucleus));
}

QDoubleSpinBox *RankDialog::sigmaBox(QTreeWidgetItem *row) const
{
    return static_cast<QDoubleSpinBox *>(m_measurements->itemWidget(row, Sigma));
}

void RankDialog::fillMeasurements()
{
    struct Chosen {
        Qt::CheckState state = Qt::Unchecked;
        QString nucleus;
        double sigma = 0;
    };
    QHash<QUuid, Chosen> before;
    for (int i = 0; i < m_measurements->topLevelItemCount(); ++i) {
        QTreeWidgetItem *row = m_measurements->topLevelItem(i);
        before.insert(row->data(Name, Qt::UserRole).toUuid(),
                      {row->checkState(Name), nucleusBox(row)->currentText(), sigmaBox(row)->value()});
    }
    m_measurements->clear();
    const QList<MeasurementChoice> choices = measurementsOf(*m_scene);
    QStringList checked;
    for (const MeasurementChoice &choice : choices) {
        if (const Chosen chosen = before.value(choice.entry); chosen.state == Qt::Checked)
            checked.append(chosen.nucleus);
    }
    for (const MeasurementChoice &choice : choices) {
        auto *row = new QTreeWidgetItem(m_measurements, {tr("%1: %n line(s)", nullptr, choice.peaks).arg(choice.name)});
        row->setData(Name, Qt::UserRole, choice.entry);
        row->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable);
        auto *nucleus = new QComboBox;
        nucleus->setToolTip(tr("Of which nucleus the lines are"));
        nucleus->addItems(choice.nucleus.isEmpty() ? QStringList{QString()} + Nuclides::table().names()
                                                   : QStringList{choice.nucleus});
        nucleus->setEnabled(choice.nucleus.isEmpty());
        const QString shown = choice.nucleus.isEmpty() ? choice.likelyNucleus : choice.nucleus;
        nucleus->setCurrentText(shown);
        auto *sigma = new NumberBox;
        sigma->setRange(0, 1e4);
        sigma->setSingleStep(0.1); // of 1H it is 0.33 ppm
        sigma->setSpecialValueText(tr("not known"));
        sigma->setValue(usualError(shown).value_or(0));
        connect(nucleus, &QComboBox::currentTextChanged, sigma,
                [sigma](const QString &name) { sigma->setValue(usualError(name).value_or(0)); });
        m_measurements->setItemWidget(row, Nucleus, nucleus);
        m_measurements->setItemWidget(row, Sigma, sigma);
        // One of each nucleus to begin with.
        const bool isFirst = !shown.isEmpty() && !checked.contains(shown);
        row->setCheckState(Name, isFirst ? Qt::Checked : Qt::Unchecked);
        if (const auto chosen = before.constFind(choice.entry); chosen != before.constEnd()) {
            row->setCheckState(Name, chosen->state);
            nucleus->setCurrentText(chosen->nucleus);
            sigma->setValue(chosen->sigma);
        }
        if (row->checkState(Name) == Qt::Checked)
            checked.append(nucleus->currentText());
    }
    m_measurements->header()->resizeSection(Name, 420);
}

void RankDialog::tellCandidates()
{
    const qsizetype page = structuresOf(*m_scene).size();
    m_candidates->setText(m_files.isEmpty() ? tr("Candidates: the %n structure(s) of the page", nullptr, int(page))
                                            : tr("Candidates: %n file(s) in %1", nullptr, int(m_files.size()))
                                                  .arg(QFileInfo(m_files.constFirst()).absolutePath()));
}

void RankDialog::setFiles(const QStringList &files)
{
    m_files = files;
    m_files.removeDuplicates();
    tellCandidates();
    enableButtons();
}

void RankDialog::setFolder(const QString &folder)
{
    QStringList files, others;
    for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files | QDir::Readable, QDir::Name)) {
        if (m_isCandidate(file.filePath()))
            files.append(file.absoluteFilePath());
        else if (file.suffix().toLower() == u"magres")
            others.append(file.fileName());
    }
    if (files.isEmpty())
        m_status->setText(tr("There is no calculation in %1").arg(folder));
    else
        setFiles(files);
    if (!files.isEmpty() && !others.isEmpty())
        m_status->setText(tr("%1 is no MAGRES file by its content and is left out").arg(elided(others.join(u", "))));
}

void RankDialog::usePage()
{
    setFiles({});
}

void RankDialog::chooseFiles()
{
    const QStringList files = QFileDialog::getOpenFileNames(this, tr("Candidates"), m_directory,
                                                            tr("Calculations (*.magres);;All files (*)"));
    if (files.isEmpty())
        return;
    m_directory = QFileInfo(files.constFirst()).path();
    setFiles(files);
}

void RankDialog::chooseFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Folder of Candidates"), m_directory);
    if (folder.isEmpty())
        return;
    m_directory = folder;
    setFolder(folder);
}

std::vector<RankDialog::Lines> RankDialog::chosenLines() const
{
    std::vector<Lines> all;
    const QList<MeasurementChoice> choices = measurementsOf(*m_scene);
    for (int i = 0; i < m_measurements->topLevelItemCount(); ++i) {
        QTreeWidgetItem *row = m_measurements->topLevelItem(i);
        const auto choice = std::find_if(choices.begin(), choices.end(), [&](const MeasurementChoice &each) {
            return each.entry == row->data(Name, Qt::UserRole).toUuid();
        });
        if (row->checkState(Name) != Qt::Checked || choice == choices.end())
            continue;
        const QString nucleus = nucleusBox(row)->currentText();
        const double sigma = sigmaBox(row)->value();
        if (nucleus.isEmpty())
            throw std::runtime_error(
                tr("Of which nucleus is %1? Choose it in the list").arg(choice->name).toStdString());
        if (std::any_of(all.begin(), all.end(),
                        [&](const Lines &other) { return other.measurement.nucleus == nucleus; }))
            throw std::runtime_error(tr("Two measurements are of %1: choose one of them").arg(nucleus).toStdString());
        Lines lines;
        lines.choice = *choice;
        lines.measurement.nucleus = nucleus;
        lines.measurement.unmatched = m_unmatched->value();
        if (sigma > 0)
            lines.measurement.sigma = sigma;
        const auto *item = qobject_cast<const NmrItem *>(m_scene->item(choice->item));
        lines.measurement.lines = PeakComparison::linesOf(item->nmrData()->spectrum(choice->entry).peaks);
        if (m_ignoreLabels->isChecked()) {
            for (MeasuredLine &line : lines.measurement.lines)
                line.sites.clear();
        }
        if (m_useSets->isChecked())
            lines.set = ReferenceSets::of(nucleus);
        if (lines.set) {
            lines.measurement.scale.slope = lines.set->calibration.slope;
            lines.measurement.calibration = lines.set->calibration;
        }
        all.push_back(std::move(lines));
    }
    if (all.empty())
        throw std::runtime_error(tr("Choose a measurement in the list").toStdString());
    const auto isUnknown = [](const Lines &lines) { return !lines.measurement.sigma; };
    if (all.size() > 1 && std::any_of(all.begin(), all.end(), isUnknown))
        throw std::runtime_error(tr("Several nuclei are weighed by their errors: give the σ of each").toStdString());
    return all;
}

ShiftRanking RankDialog::ranking(const std::vector<Lines> &lines) const
{
    ShiftRanking ranking;
    ranking.sites.averaging = UniqueSites::Averaging(m_averaging->currentIndex());
    for (const Lines &each : lines) {
        const auto &set = each.measurement.calibration;
        ranking.measurements.push_back(each.measurement);
        ranking.startReferences.push_back(set ? set->reference : ShiftRanking::usualReference);
    }
    return ranking;
}

QStringList RankDialog::workerArguments(const std::vector<Lines> &lines)
{
    m_folder = std::make_unique<QTemporaryDir>();
    QStringList arguments{QStringLiteral("rank-worker"),
                          QStringLiteral("--average=") + QLatin1String(averagingNames[m_averaging->currentIndex()]),
                          QStringLiteral("--settings=") + m_folder->path(),
                          QStringLiteral("--plugin-path=") + m_program.pluginDirectory};
    if (m_unmatched->value() > 0)
        arguments.append(QStringLiteral("--unmatched=") + QString::number(m_unmatched->value()));
    for (const Lines &each : lines) {
        const QString nucleus = each.measurement.nucleus;
        const QString name = m_folder->filePath(nucleus + QStringLiteral(".csv"));
        OutputFiles files;
        files.open(name).write(peakList(each.measurement.lines));
        arguments.append(QStringLiteral("--experiment=%1=%2").arg(nucleus, name));
        if (each.measurement.sigma) {
            QByteArray sigma;
            NumberText::append17(sigma, *each.measurement.sigma);
            arguments.append(QStringLiteral("--sigma=%1=%2").arg(nucleus, QString::fromLatin1(sigma)));
        }
        if (each.set) {
            const QString set = m_folder->filePath(nucleus + QStringLiteral(".json"));
            files.open(set).write(each.set->toJson());
            arguments.append(QStringLiteral("--reference-set=") + set);
        }
        files.commit();
    }
    return arguments;
}

void RankDialog::start()
{
    if (m_running)
        return;
    try {
        const std::vector<Lines> lines = chosenLines();
        m_ranking = ranking(lines);
        m_singleNucleus = lines.front().measurement.nucleus;
        m_compared.clear();
        m_sets.clear();
        for (const Lines &each : lines) {
            CompareOptions options;
            options.nucleus = each.measurement.nucleus;
            options.averaging = m_averaging->currentIndex();
            options.sigma = each.measurement.sigma.value_or(0);
            options.unmatched = each.measurement.unmatched;
            if (each.set) {
                options.slopeKind = CompareOptions::OfSet;
                options.slope = each.set->calibration.slope;
                m_sets.push_back(*each.set);
            }
            m_compared.push_back({each.choice.entry, options});
        }
        m_rows.clear();
        m_tables.clear();
        m_crew.reset();
        if (!m_files.isEmpty()) {
            startFiles(lines);
        } else {
            m_page = structuresOf(*m_scene);
            if (m_page.isEmpty())
                throw std::runtime_error(tr("There is no structure on the page").toStdString());
            QTimer::singleShot(0, this, &RankDialog::rankNextOfPage);
        }
    } catch (const std::exception &error) {
        m_status->setText(QString::fromUtf8(error.what()));
        return;
    }
    m_running = true;
    m_model->setRows({}, m_ranking.layout(), m_singleNucleus);
    m_status->setText(tr("Ranking..."));
    m_progress->setRange(0, int(m_files.isEmpty() ? m_page.size() : m_files.size()));
    m_progress->setValue(0);
    enableButtons();
}

void RankDialog::startFiles(const std::vector<Lines> &lines)
{
    RankCrew::Plan plan;
    plan.program = m_program.path;
    plan.arguments = workerArguments(lines);
    plan.workers = std::max(1, QThread::idealThreadCount());
    plan.layout = m_ranking.layout();
    m_crew = std::make_unique<RankCrew>(plan, m_files);
    connect(m_crew.get(), &RankCrew::fileDone, this, [this] {
        m_progress->setValue(m_crew->done());
        if (!m_showLater->isActive())
            m_showLater->start();
    });
    connect(m_crew.get(), &RankCrew::finished, this,
            [this] { end(m_crew->done() == 0 ? m_crew->startFailure() : QString()); });
    m_crew->start();
}

void RankDialog::rankNextOfPage()
{
    if (!m_running)
        return;
    const StructureChoice choice = m_page[qsizetype(m_rows.size())];
    RankRow row;
    // Two of one name would be one to whom reads the table.
    row.file = m_tables.contains(choice.name) ? tr("%1 (%2)").arg(choice.name).arg(m_rows.size() + 1) : choice.name;
    try {
        m_ranking.compare(CrystalStructure::fromData(m_data->getDataMap(choice.data)), row);
    } catch (const std::exception &error) {
        row.fail(error);
    }
    m_tables.insert(row.file, choice.table);
    m_rows.push_back(std::move(row));
    m_progress->setValue(int(m_rows.size()));
    if (qsizetype(m_rows.size()) == m_page.size())
        return end(QString());
    if (!m_showLater->isActive())
        m_showLater->start();
    QTimer::singleShot(0, this, &RankDialog::rankNextOfPage);
}

void RankDialog::showRows()
{
    std::vector<RankRow> rows = m_rows;
    if (m_crew) {
        const auto isDone = [](const RankRow &row) { return !row.failed() || !row.message.isEmpty(); };
        std::copy_if(m_crew->rows().begin(), m_crew->rows().end(), std::back_inserter(rows), isDone);
    }
    const QString basis = m_ranking.basis();
    for (RankRow &row : rows)
        row.basis = row.failed() ? QString() : basis;
    const QModelIndex current = m_table->currentIndex();
    const QString file = current.isValid() ? m_model->rows()[std::size_t(current.row())].file : QString();
    m_model->setRows(std::move(rows), m_ranking.layout(), m_singleNucleus);
    m_table->resizeColumnsToContents();
    for (std::size_t i = 0; !file.isEmpty() && i < m_model->rows().size(); ++i) {
        if (m_model->rows()[i].file == file)
            m_table->setCurrentIndex(m_model->index(int(i), 0));
    }
}

void RankDialog::cancel()
{
    if (!m_running)
        return;
    if (m_crew)
        m_crew->cancel();
    else
        end(QString());
}

void RankDialog::end(const QString &failure)
{
    const bool wasRunning = std::exchange(m_running, false);
    m_showLater->stop();
    if (wasRunning) {
        showRows();
        const auto &rows = m_model->rows();
        const auto failed = std::count_if(rows.begin(), rows.end(), [](const RankRow &row) { return row.failed(); });
        QString text = int(rows.size()) < m_progress->maximum()
            ? tr("Cancelled: %1 of %2 structures were compared").arg(rows.size()).arg(m_progress->maximum())
            : tr("%n structure(s)", nullptr, int(rows.size()));
        if (failed > 0)
            text += tr(", %n failed: the last column says why", nullptr, int(failed));
        text += tr(". Probabilities are relative to this pool: they say nothing about structures that are not in it");
        for (const QString &note : RankTable::notesOn(rows, m_model->layout()))
            text += QStringLiteral(". ") + note;
        text += doubtsAbout(rows);
        m_status->setText(failure.isEmpty() ? text : elided(failure));
        m_folder.reset();
    }
    enableButtons();
    m_followLater->start();
    if (wasRunning)
        Q_EMIT ranked();
}

/// About methods of calculation other than those of the sets, of the best structures.
QString RankDialog::doubtsAbout(const std::vector<RankRow> &rows) const
{
    constexpr std::size_t mostRead = 100;
    QStringList doubts;
    for (std::size_t i = 0; i < std::min(rows.size(), mostRead) && !m_sets.empty(); ++i) {
        const QString &file = rows[i].file;
        const auto table = m_tables.constFind(file);
        const DocumentItem *item = table == m_tables.constEnd() ? nullptr : m_scene->item(*table);
        const CalculationMethod method = item ? item->method() : CalculationMethod::fromFile(file);
        for (const ReferenceSet &set : m_sets)
            doubts.append(set.doubtAbout(method, QFileInfo(file).fileName()));
    }
    doubts.removeAll(QString());
    if (doubts.isEmpty())
        return {};
    return QStringLiteral(". ") + doubts.constFirst()
        + (doubts.size() > 1 ? tr(" (and %n more)", nullptr, int(doubts.size()) - 1) : QString());
}

QString RankDialog::status() const
{
    return m_status->text();
}

void RankDialog::enableButtons()
{
    m_start->setEnabled(!m_running && m_measurements->topLevelItemCount() > 0);
    m_start->setToolTip(m_measurements->topLevelItemCount() > 0
                            ? QString()
                            : tr("There is no measurement in one dimension on the page: add one first"));
    m_cancel->setEnabled(m_running);
    m_save->setEnabled(!m_running && m_model->rowCount() > 0);
    m_progress->setVisible(m_running);
    const bool hasSets = std::any_of(Nuclides::table().names().begin(), Nuclides::table().names().end(),
                                     [](const QString &nucleus) { return !ReferenceSets::fileOf(nucleus).isEmpty(); });
    m_useSets->setVisible(hasSets);
}

void RankDialog::choose(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    const RankRow &row = m_model->rows()[std::size_t(index.row())];
    if (const auto table = m_tables.constFind(row.file); table != m_tables.constEnd())
        Q_EMIT structureChosen(*table);
    else
        Q_EMIT fileChosen(row.file);
}

void RankDialog::copyRows()
{
    // Columns apart by tabs, as spreadsheets take them; all rows where none is selected.
    const QModelIndexList selected = m_table->selectionModel()->selectedRows();
    QStringList lines;
    const auto add = [&](const auto &cell) {
        QStringList cells{cell(-1)};
        for (int column = 0; column < m_model->columnCount(); ++column)
            cells.append(cell(column));
        lines.append(cells.join(u'\t'));
    };
    add([&](int column) {
        return column < 0 ? tr("Rank") : m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    });
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (selected.isEmpty() || selected.contains(m_model->index(row, 0)))
            add([&](int column) {
                return column < 0 ? m_model->headerData(row, Qt::Vertical, Qt::DisplayRole).toString()
                                  : m_model->index(row, column).data().toString();
            });
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

void RankDialog::save()
{
    const FileTypes types = tableTypes() + FileTypes{{tr("Text table"), QStringLiteral("txt")}};
    const QString path = askForFileToSave(this, tr("Save Table"), QStringLiteral("ranking.csv"), filtersOf(types));
    if (path.isEmpty())
        return;
    try {
        const auto format =
            TableExport::formatOfName(QFileInfo(path).suffix().toLower()).value_or(TableExport::Format::Text);
        OutputFiles files;
        files.open(path).write(RankTable::write(m_model->rows(), m_model->layout(), format));
        files.commit();
        m_status->setText(tr("%1 is written").arg(path));
    } catch (const std::exception &error) {
        QMessageBox::critical(this, tr("The table cannot be saved"), elided(QString::fromUtf8(error.what())));
    }
}

void RankDialog::done(int result)
{
    cancel();
    QDialog::done(result);
}

} // namespace Workbench

#include "moc_RankDialog.cpp"
