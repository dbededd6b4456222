// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCollator>

namespace Workbench {

/// Compares labels as people do: C2 before C10.
inline QCollator naturalOrder()
{
    QCollator collator(QLocale(QLocale::English)); // the C locale knows no numbers
    collator.setNumericMode(true);
    return collator;
}

} // namespace Workbench
