// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/SiteTable.h"

#include <QObject>

#include <memory>

namespace Workbench {

class DataEngine;
class DocumentItem;
class MainScene;
class TableItem;

/// Gives the tables of a scene what their further columns show: the structure behind them, with reference, slope and
/// frequency of the spectrum that the user works with, else of the last one on the page, that was made from it.
class TableSites : public QObject {
    Q_OBJECT
public:
    TableSites(MainScene *scene, DataEngine *data);

    /// For nuclei without a spectrum, by nucleus and by element.
    void setStart(const QMap<QString, SiteTable::Scale> &scales);

    /// To be called when shifts may have become others; tables that show none are left alone.
    void refresh();

    /// How the shieldings of the table's structure become shifts now, whoever shows them.
    SiteTable::Options optionsOf(const TableItem &table) const;

private:
    void watch(DocumentItem *item);
    std::shared_ptr<const SiteTable> sitesOf(const TableItem &table);

    MainScene *m_scene;
    DataEngine *m_data;
    QMap<QString, SiteTable::Scale> m_start;
    QHash<QUuid, SiteTable::Options> m_options; ///< of the tables that have asked, by their items
};

} // namespace Workbench
