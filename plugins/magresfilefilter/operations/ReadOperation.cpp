// SPDX-License-Identifier: BSD-3-Clause
#include "operations/ReadOperation.h"

#include "reading/Bonds.h"
#include "reading/MagresParser.h"
#include "reading/MoleculeCompletion.h"
#include "reading/MoleculeDescription.h"
#include "support/WrTableItem.h"
#include "ui/SettingsScope.h"
#include "ui/WMagresTable.h"

namespace Magres {
namespace {

void makeMoleculesWhole(MagresData &data)
{
    detectBonds(data.atoms);
    // Once per cell face that may cut a molecule; the second time joins what more than one face has cut.
    completeMolecules(data.atoms, data.lattice);
    completeMolecules(data.atoms, data.lattice);
}

} // namespace

QList<QGraphicsWidget *> readIntoDocument(const HostContext &host, MagresCommands &commands, const QString &fileName,
                                          const QRectF &rect)
{
    SettingsScope<MagresData> data;
    readMagresFile(fileName, data, makeMoleculesWhole);

    QList<QGraphicsWidget *> items;
    QGraphicsWidget *molecule = host.scene().createMolItem(rect, moleculeDescription(data), false);
    if (molecule) {
        data.molItemID = WrBaseGraphicsItem(molecule).id();
        items.append(molecule);
    }
    host.scene().setCustomData(data.toMap());

    // The host's item takes the table over.
    auto table = std::make_unique<WMagresTable>(commands, data);
    QGraphicsWidget *tableItem = host.scene().addCustomTableItem(table.get(), false);
    if (!tableItem)
        return items;
    table.release();
    if (molecule)
        WrTableItem(tableItem).linkObject(molecule);
    items.append(tableItem);
    return items;
}

} // namespace Magres
