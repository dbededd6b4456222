// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace Workbench {

/// A text fit for a message or one line of a table though it quotes a damaged file or an odd name: what cannot be
/// printed is replaced. A null character would end the message.
inline QString printable(QString text)
{
    for (QChar &c : text) {
        if (!c.isPrint() && !c.isSurrogate())
            c = QChar::ReplacementCharacter;
    }
    return text;
}

} // namespace Workbench
