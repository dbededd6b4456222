// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace Workbench {

/// A text fit for a message though it quotes a damaged file: what cannot be printed is replaced. A null character would
/// end the message.
inline QString printable(QString text)
{
    for (QChar &c : text) {
        if (!c.isPrint())
            c = QChar::ReplacementCharacter;
    }
    return text;
}

} // namespace Workbench
