// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace Workbench {

/// Takes the middle out of a message that is too long to show: one that quotes a line of a file may be of any length.
inline QString elided(const QString &message, qsizetype longest = 500)
{
    if (message.size() <= longest)
        return message;
    const qsizetype half = longest / 2;
    return message.left(half) + QStringLiteral(" […] ") + message.right(half);
}

} // namespace Workbench
