// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointer>
#include <QUuid>

class QMenu;
class QMainWindow;

namespace Workbench {

class MainScene;
class NmrItem;

/// What plug-ins do with spectra, as commands of the window: each says why it cannot be done at present, and what takes
/// long is announced before it begins.
class SpectrumCommands : public QObject {
    Q_OBJECT
public:
    /// `nmrMenu`: to which plug-ins add theirs.
    SpectrumCommands(MainScene *scene, QMenu *nmrMenu, QMainWindow *window);

    // Empty when it can be done.
    QString whyNoCreate() const;
    QString whyNoEdit() const;
    QString whyNoAutoReference() const;

    void create();
    void edit();
    void autoReference();
    /// Makes the spectrum anew, in the range of its lines and with everything else as it was.
    void fitRange(NmrItem *item, const QUuid &entry);
    /// Of a note: with this spectrum as the active one.
    void edit(NmrItem *item, const QUuid &entry);
    void autoReference(NmrItem *item);
    void moveToOwnPlot(NmrItem *item, const QUuid &entry);

Q_SIGNALS:
    /// What is being done, for a status bar.
    void reported(const QString &text);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAction *ofPlugin(const QString &text) const;
    /// Runs an action of a plug-in, which may ask something and then work for long.
    void run(QAction *action, const QString &what);
    void announce(const QString &what);
    /// Whether the user wants so many points computed.
    bool isWanted(const NmrItem &item, const QUuid &entry) const;
    /// The spectrum that the commands for the current item work on; null when there is none.
    QUuid simulatedIn(const NmrItem *item) const;

    MainScene *m_scene;
    QMenu *m_nmrMenu;
    QMainWindow *m_window;
    QString m_running;
    bool m_acceptsAtOnce = false; ///< the plug-in's dialog, unseen
};

} // namespace Workbench
