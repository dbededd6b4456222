// SPDX-License-Identifier: BSD-3-Clause
#include "operations/IsotopeOperation.h"

#include "reading/MagresData.h"
#include "ui/SettingsScope.h"
#include "ui/WMagresQuadIsoDialog.h"

#include <QPointer>

namespace Magres {

bool chooseQuadrupolarIsotope(const HostContext &host, QUuid dataId)
{
    if (host.isHeadless())
        return false;
    const QVariantMap map = host.dataMap(dataId);
    if (map.isEmpty())
        return false;
    SettingsScope<MagresData> data;
    data.fromMap(map);
    // The window may go, and take its dialogs along, while the user looks at this one.
    QPointer<WMagresQuadIsoDialog> dialog = new WMagresQuadIsoDialog(data, host.nuclearProperties(), host.window());
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    const QString element = accepted ? dialog->currentElement() : QString();
    const QString isotope = accepted ? dialog->currentIsotope() : QString();
    delete dialog;
    if (isotope.isEmpty() || host.dataMap(dataId).isEmpty())
        return false;
    data.QIso.insert(element, isotope);
    host.scene().delCustomData(dataId);
    host.scene().setCustomData(data.toMap());
    return true;
}

} // namespace Magres
