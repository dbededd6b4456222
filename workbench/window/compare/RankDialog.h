// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/ReferenceSet.h"
#include "ranking/RankCrew.h"
#include "ranking/ShiftRanking.h"
#include "window/compare/CompareOptions.h"
#include "window/compare/DocumentChoices.h"

#include <QDialog>
#include <QTemporaryDir>

#include <functional>
#include <memory>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QSpinBox;
class QTableView;
class QTimer;
class QTreeWidget;
class QTreeWidgetItem;

namespace Workbench {

class DataEngine;
class MainScene;
class RankModel;

/// Ranks structures by measured lines of the document: those that lie on the page, or files, which workers read in
/// processes of their own so that the document stays as it is. The table fills while it runs.
class RankDialog : public QDialog {
    Q_OBJECT
public:
    /// What makes a worker.
    struct Program {
        QString path;
        QString pluginDirectory;
    };
    /// Whether files of this name can be candidates.
    using IsCandidate = std::function<bool(const QString &path)>;

    RankDialog(MainScene *scene, DataEngine *engine, Program program, IsCandidate isCandidate, QWidget *parent);
    ~RankDialog() override;

    /// Measurements and structures of the document as it is now; a ranking that is done stays. While the dialog is
    /// visible and nothing runs it follows by itself.
    void followDocument();
    void setFiles(const QStringList &files);
    /// All candidates in it, not those in folders below.
    void setFolder(const QString &folder);
    void usePage();

    void start();
    void cancel();
    bool isRunning() const { return m_running; }
    RankModel *model() const { return m_model; }
    /// What was done, or why nothing was.
    QString status() const;
    struct Compared {
        QUuid entry; ///< the measurement
        CompareOptions options; ///< that compare it with one structure as it was here
    };
    const std::vector<Compared> &compared() const { return m_compared; }

Q_SIGNALS:
    void structureChosen(const QUuid &table);
    void fileChosen(const QString &path);
    /// The table is whole, or what there was to be had.
    void ranked();

protected:
    void done(int result) override;

private:
    struct Lines {
        MeasurementChoice choice;
        NucleusMeasurement measurement;
        std::optional<ReferenceSet> set;
    };

    QWidget *createCandidates();
    QWidget *createOptions();
    QWidget *createButtons();
    void fillMeasurements();
    QComboBox *nucleusBox(QTreeWidgetItem *row) const;
    QDoubleSpinBox *sigmaBox(QTreeWidgetItem *row) const;
    void chooseFiles();
    void chooseFolder();
    void tellCandidates();
    std::vector<Lines> chosenLines() const;
    ShiftRanking ranking(const std::vector<Lines> &lines) const;
    QStringList workerArguments(const std::vector<Lines> &lines);
    void startFiles(const std::vector<Lines> &lines);
    void rankNextOfPage();
    void showRows();
    void end(const QString &text);
    QString doubtsAbout(const std::vector<RankRow> &rows) const;
    void choose(const QModelIndex &index);
    void copyRows();
    void save();
    void enableButtons();

    MainScene *m_scene;
    DataEngine *m_data;
    const Program m_program;
    const IsCandidate m_isCandidate;
    QTreeWidget *m_measurements;
    QLabel *m_candidates;
    QComboBox *m_averaging;
    QSpinBox *m_unmatched;
    QCheckBox *m_ignoreLabels;
    QCheckBox *m_useSets;
    QProgressBar *m_progress;
    QLabel *m_status;
    QTableView *m_table;
    RankModel *m_model;
    QPushButton *m_start = nullptr;
    QPushButton *m_cancel = nullptr;
    QPushButton *m_save = nullptr;
    QTimer *m_showLater;
    QTimer *m_followLater; ///< runs while the list may be another one than the document's

    QStringList m_files; ///< empty: those of the page
    QString m_directory;
    bool m_running = false;
    QString m_singleNucleus;
    std::vector<Compared> m_compared;
    ShiftRanking m_ranking;
    std::vector<ReferenceSet> m_sets; ///< that the ranking uses
    QList<StructureChoice> m_page; ///< being ranked
    std::vector<RankRow> m_rows; ///< of the page
    QHash<QString, QUuid> m_tables; ///< of the page, by the name in the ranking
    std::unique_ptr<QTemporaryDir> m_folder; ///< peak lists and settings of workers
    std::unique_ptr<RankCrew> m_crew;
};

} // namespace Workbench
