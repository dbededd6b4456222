// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QUuid>

#include <optional>

class QMainWindow;

namespace Workbench {

class DataEngine;
class MainScene;
class NmrItem;
struct PowderOrigin;
struct PowderMade;

/// The window's own powder spectra: made from the calculation behind a table, changed afterwards.
class PowderCommands : public QObject {
    Q_OBJECT
public:
    PowderCommands(MainScene *scene, DataEngine *data, QMainWindow *window);

    // Empty when it can be done.
    QString whyNoCreate() const;
    QString whyNoEdit() const;

    /// From the current table; a plot of its own, or beside a measurement that waits for it.
    void create();
    /// What an entry shows that a plug-in has simulated, as a powder spectrum beside it.
    void createLike(NmrItem *item, const QUuid &entry);
    /// That of the current plot.
    void edit();
    void edit(NmrItem *item, const QUuid &entry);

Q_SIGNALS:
    void reported(const QString &text);

private:
    /// Fills in the dialog; nothing when the user cancels or the calculation is gone, and the user knows.
    std::optional<PowderMade> ask(const PowderOrigin &origin, const NmrItem *item, const QUuid &itself);
    /// Behind the entry of the sum, as part of the edit that was made last.
    void putSiteCurves(NmrItem *item, const QUuid &sum, const PowderMade &made);
    QUuid powderIn(const NmrItem *item) const;
    QString nameOf(const PowderOrigin &origin, const QVariantMap &entry) const;

    MainScene *m_scene;
    DataEngine *m_data;
    QMainWindow *m_window;
};

} // namespace Workbench
