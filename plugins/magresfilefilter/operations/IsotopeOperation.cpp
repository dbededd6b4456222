// SPDX-License-Identifier: BSD-3-Clause
#include "operations/IsotopeOperation.h"

namespace Magres {

bool chooseQuadrupolarIsotope(const HostContext &host, const QUuid &dataId)
{
    Q_UNUSED(host)
    Q_UNUSED(dataId)
    return false;
}

} // namespace Magres
