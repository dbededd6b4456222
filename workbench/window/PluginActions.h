// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QMenu>

namespace Workbench {

/// The action of this name or text in a menu or its submenus, mnemonics aside; null when there is none. Plug-ins bring
/// menus with them, and what has no name is known by its text only, which may be translated.
inline QAction *findAction(const QMenu *menu, const QString &text)
{
    for (QAction *action : menu->actions()) {
        if (action->menu()) {
            if (QAction *found = findAction(action->menu(), text))
                return found;
        } else if (action->objectName() == text || action->text().remove(u'&') == text) {
            return action;
        }
    }
    return nullptr;
}

} // namespace Workbench
