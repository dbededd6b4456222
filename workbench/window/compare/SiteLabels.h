// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>

namespace Workbench {

class DataEngine;
class DocumentItem;
class MainScene;
struct SpectrumEntry;

/// Labels the peaks of simulated spectra with the sites of their atoms: "C1 ×4" for four atoms that the space group
/// maps onto each other.
class SiteLabels : public QObject {
    Q_OBJECT
public:
    SiteLabels(MainScene *scene, DataEngine *data);

private:
    void watch(DocumentItem *item);
    void updateLater();
    void update();
    const QHash<QString, QString> &namesOf(const SpectrumEntry &entry);

    MainScene *m_scene;
    DataEngine *m_data;
    QHash<QString, QHash<QString, QString>> m_names; ///< by data set and averaging
    bool m_waiting = false;
};

} // namespace Workbench
