// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QUuid>

namespace Workbench {

class DocumentItem;
class MainScene;
class MoleculeItem;
class NmrItem;
class TableItem;

/// What a document has that can be held against each other.

struct StructureChoice {
    QUuid table; ///< the item
    QUuid data; ///< the data set
    QString name;
};

struct MeasurementChoice {
    QUuid item;
    QUuid entry;
    QString name;
    QString nucleus; ///< "13C"; empty where neither the spectrum nor its plot says it
    QString likelyNucleus; ///< by its name, where nothing else says it
    int peaks = 0;
};

/// In the order of the page.
QList<StructureChoice> structuresOf(const MainScene &scene);
/// Measured spectra and peak lists of one dimension that have peaks.
QList<MeasurementChoice> measurementsOf(const MainScene &scene);
/// Of the item alone.
QList<MeasurementChoice> measurementsOf(const NmrItem &item);
/// The table whose data set the simulated spectrum of the plot was made from; null when there is none.
QUuid structureOf(const MainScene &scene, const NmrItem &item);
/// The molecule beside the table; null when there is none.
MoleculeItem *moleculeOf(const TableItem &table);

} // namespace Workbench
