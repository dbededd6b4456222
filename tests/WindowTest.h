// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "ModalAnswers.h"
#include "Program.h"
#include "WorkbenchUser.h"

#include "cli/PrivateSettings.h"
#include "host/MainScene.h"
#include "host/PluginManager.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/table/TableItem.h"
#include "items/table/TableModel.h"
#include "window/DocumentController.h"
#include "window/MainView.h"
#include "window/WMainWindow.h"
#include "window/WindowApplication.h"
#include "window/WorkBar.h"

#include <QtTest>
#include <QtWidgets>

using namespace Workbench;
using namespace Qt::StringLiterals;

/// The window with the built plug-in in it, and what its tests do again and again.
class WindowTest : public QObject {
    Q_OBJECT

protected:
    /// A window of its own, shown.
    void start();
    /// An empty page in the window, which is made when there is none; settings as at first.
    void clear();

    WMainWindow &window() const { return m_host->window(); }
    MainScene &scene() const { return m_host->scene(); }
    QUndoStack &history() const { return *scene().undoStack(); }
    NmrItem *plot() const { return scene().currentNmrItem(); }
    NmrData *data() const { return plot()->nmrData(); }
    TableItem *table() const { return scene().currentTableItem(); }
    MoleculeItem *molecule() const { return qobject_cast<MoleculeItem *>(table()->linkedItems().value(0)); }
    QString said() const { return window().statusBar()->currentMessage(); }
    /// The document as it would be saved.
    QByteArray state() const;

    static QString sample(const QString &name) { return QStringLiteral(SAMPLES "/") + name; }
    void open(const QString &name) const { window().openFiles({sample(name)}); }
    /// An entry by its text without mnemonic; null when there is none.
    static QAction *entry(const QWidget *menu, const QString &text);
    /// A menu of the bar, as it opens.
    QMenu *menu(const QString &title) const;
    /// Of the bar and of each of its menus, the letters that two of their entries have as mnemonics.
    QStringList doubledMnemonicsOfMenus() const;
    /// A command of the tool bar.
    QAction *command(const QString &text) const;
    /// The dialog of this title opens next, is filled in and accepted; gives the text, if it is a message box.
    void accept(const QString &title, const Inputs &inputs = {}, QString *text = nullptr);
    /// Through the plug-in's dialog.
    NmrItem *createSpectrum(const Inputs &inputs = {{"fCbNucF2", u"13C"_s}});

    const PrivateSettings m_settings;
    Program m_files;
    std::unique_ptr<WindowApplication> m_host;
    ModalAnswers m_dialogs;

private Q_SLOTS:
    void cleanup();
    void cleanupTestCase() { m_host.reset(); }
};
