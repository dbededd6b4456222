// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "Built.h"

#include <QDialogButtonBox>
#include <QMenu>
#include <QPointF>
#include <QVariant>

#include <utility>

namespace Workbench {
class DocumentItem;
class WMainWindow;
} // namespace Workbench

// What a user does at the workbench with mouse and keyboard. What cannot be done fails the running test.

/// Marks the running test as failed.
void userFailed(const QString &message);

/// A widget of a dialog by its object name.
template <typename Widget>
Widget *part(const QWidget *dialog, const char *name)
{
    auto *widget = dialog->findChild<Widget *>(QString::fromLatin1(name));
    if (!widget)
        qFatal("The dialog has no %s", name);
    return widget;
}

/// Values of a dialog's inputs by their object names: the text of a combo box, the number in a spin box, the state of a
/// check box.
using Inputs = QList<std::pair<const char *, QVariant>>;

/// Enters them: by keys, and check boxes by the mouse.
void fill(QWidget *dialog, const Inputs &values);

/// What a window shows of labels, inputs and buttons: a text for each line from the top, with its parts from the left.
/// What is disabled stands in parentheses; inputs show what they hold and allow: [chosen: choices], [number: least to
/// most by steps, if not of 1]. A mnemonic that leads nowhere has a "!".
QStringList linesOf(const QWidget *window);
/// The visible entries of a menu or bar with their shortcuts: "Text Ctrl+T; (disabled); / for separators; submenu >".
QString entriesOf(const QWidget *menu);

/// The letters that two or more of the shown texts have as mnemonics.
QString doubledMnemonics(const QString &texts);

/// Clicks a button of the dialog's "buttonBox".
void press(QWidget *dialog, QDialogButtonBox::StandardButton button);

/// The item's context menu, opened by the right mouse button in the middle of the item; null if none opens.
QMenu *openContextMenu(Workbench::WMainWindow &window, Workbench::DocumentItem *item);
/// Clicks the entry of this text. For a submenu: opens it, and returns it.
QMenu *clickEntry(QMenu *menu, const QString &text);
/// Opens the item's context menu and clicks through it.
void choose(Workbench::WMainWindow &window, Workbench::DocumentItem *item, const QStringList &path);
