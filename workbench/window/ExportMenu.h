// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/SpinSystem.h"
#include "analysis/comparison/SiteTable.h"
#include "items/SaveDialog.h"

#include <QMenu>

#include <functional>

namespace Workbench {

class DataEngine;
class MainScene;
class TableItem;

/// Writes the page, the current spectrum and the current table to files whose suffix chooses the format.
class ExportMenu : public QMenu {
    Q_OBJECT
public:
    ExportMenu(MainScene *scene, DataEngine *customData, QWidget *window);

    // Errors of these are std::runtime_error; no file is then written.
    void writePage(const QString &fileName) const;
    void writeSpectrum(const QString &fileName) const;
    void writeTable(const QString &fileName) const;
    /// Shifts are those of the table. Returns how many sites it wrote, and with which references.
    QString writeSpinSystem(const QString &fileName, const QStringList &nuclei) const;

    /// Where to propose that a file of this suffix is written.
    void setProposal(const std::function<QString(const QString &suffix)> &path) { m_proposal = path; }

Q_SIGNALS:
    /// What was done, for a status bar.
    void reported(const QString &text);

private:
    /// Asks where to, offering a file type for each suffix, and lets `write` do it. Errors are shown.
    void ask(const QString &title, const FileTypes &types, const std::function<void(const QString &)> &write);
    void askForSpinSystem();
    static SpinSystem::Options spinSystemOptions(const TableItem &table, const QStringList &nuclei,
                                                 const SiteTable::Options &scales);
    QStringList nucleiOfSpectrum() const;
    QString sitesOffered() const;

    MainScene *m_scene;
    DataEngine *m_data;
    QString m_lastDirectory;
    QString m_lastNuclei;
    QAction *m_withNotes;
    std::function<QString(const QString &suffix)> m_proposal;
};

} // namespace Workbench
