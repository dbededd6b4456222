// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <QMenu>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>

namespace Workbench {

class Experiment;
class MainScene;
class NmrData;
class NmrItem;

/// What can be done with the stack of spectra in the current NMR item: put an experiment onto it, choose the active
/// spectrum, take one off.
class StackMenu : public QMenu {
    Q_OBJECT
public:
    StackMenu(MainScene *scene, QWidget *window);

    /// Onto the item. Errors are shown in a message box.
    void addExperiment(const QString &path, NmrItem *item);
    /// A measurement and where it goes.
    struct Found;
    /// The current plot or another one that takes it, else none. Asks for what the file does not say; nothing when the
    /// user does not say it either. Throws std::exception.
    std::shared_ptr<const Found> find(const QString &path);
    /// Onto that plot, else as a plot of its own.
    void put(const Found &found);
    /// Asks for the file, which then goes onto the current plot or gets one of its own.
    void chooseExperiment();
    /// The same for a Bruker folder: dialogs of the system take either files or folders.
    void chooseFolder();

Q_SIGNALS:
    /// What was done, for a status bar.
    void reported(const QString &text);

private:
    /// Null when there is no NMR item.
    NmrData *data() const;
    /// What the user has answered to a question about a file.
    struct Answer {
        ReadOptions options;
        QStringList nuclei;
    };
    std::optional<Answer> ask(const QString &path, const FrequencyNeeded &needed, const NmrItem *beside);
    /// `dimensions` 0: as many as were asked about, else any.
    static ReadOptions optionsOf(const std::optional<Answer> &answer, int dimensions);
    /// Nothing when the measurement, of the path, does not fit the plot.
    static std::optional<Experiment> fitting(const QString &path, const Measurement &measurement, const NmrItem &item,
                                             const std::optional<Answer> &answer);
    static bool fitsOnto(const QString &path, const NmrItem &item);
    QList<NmrItem *> plotsWithCalculation() const;
    Found place(const QString &path, const std::optional<Answer> &answer) const;
    /// Errors are shown in a message box. Nothing for an empty path; `item` may be null.
    void addChosen(const QString &path, NmrItem *item);
    void add(const Experiment &experiment, const QString &name, NmrItem &item);
    void activateNext(int direction);
    void fillActiveMenu();
    void fillRemoveMenu();
    void addEntryActions(QMenu *menu, const std::function<void(QAction *, const QUuid &)> &setUp);

    MainScene *m_scene;
    QMenu *m_activeMenu;
    QMenu *m_removeMenu;
    QAction *m_next;
    QAction *m_previous;
    QString m_lastDirectory;
};

} // namespace Workbench
