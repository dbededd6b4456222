// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMainWindow>
#include <QMenu>

namespace Workbench {

class DataEngine;
class MainScene;

/// The object through which plug-ins find the rest of the host: the contract's main window. Headless hosts have this
/// one and never show it; the program's window is built on it.
class HostWindow : public QMainWindow {
    Q_OBJECT
    Q_PROPERTY(QString language READ language)
    Q_PROPERTY(QMenu *nmrContextMenu READ nmrContextMenu)
public:
    HostWindow();
    ~HostWindow() override;

    // What plug-ins call by name.
    Q_INVOKABLE QObject *dataEngine() const;
    /// The data of the current NMR item; null when there is none.
    Q_INVOKABLE QObject *getNMRData() const;
    /// The plot of the current NMR item; null when there is none.
    Q_INVOKABLE QObject *nmrPlot() const;
    /// The workbench sells nothing: every product is licensed.
    Q_INVOKABLE bool checkProductLicense(QString product) const;

    /// Two letters, "en".
    QString language() const;
    /// Of all spectra; plug-ins add their menus to it.
    QMenu *nmrContextMenu() const { return m_nmrContextMenu; }

    MainScene *scene() const { return m_scene; }
    DataEngine *documentData() const { return m_data; }

private:
    DataEngine *m_data;
    MainScene *m_scene;
    QMenu *m_nmrContextMenu;
};

} // namespace Workbench
