// SPDX-License-Identifier: BSD-3-Clause
#include "operations/IsotopeOperation.h"

#include "reading/MagresData.h"
#include "ui/SettingsScope.h"
#include "ui/WMagresQuadIsoDialog.h"

#include <QPointer>

#include <utility>

namespace Magres {

std::optional<MagresData> chooseQuadrupolarIsotope(const HostContext &host, QUuid dataId)
{
    if (host.isHeadless() || host.dataMap(dataId).isEmpty())
        return std::nullopt;
    SettingsScope<MagresData> data;
    data.assign(host.data(dataId));
    // The window may go, and take its dialogs along, while the user looks at this one.
    QPointer<WMagresQuadIsoDialog> dialog = new WMagresQuadIsoDialog(data, host.nuclearProperties(), host.window());
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    const QString element = accepted ? dialog->currentElement() : QString();
    const QString isotope = accepted ? dialog->currentIsotope() : QString();
    delete dialog;
    QVariantMap map = host.dataMap(dataId);
    if (isotope.isEmpty() || map.isEmpty())
        return std::nullopt;
    data.QIso.insert(element, isotope);
    // Nothing else is written anew: all that the document has of the data set stays as it is, in its order.
    map.insert(QStringLiteral("ID"), dataId);
    map.insert(QStringLiteral("QIso"), data.QIso);
    host.scene().delCustomData(dataId);
    host.scene().setCustomData(map);
    // A copy: what is moved out of the scope is lost to the settings.
    return std::as_const(data);
}

} // namespace Magres
