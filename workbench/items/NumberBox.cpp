// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/NumberBox.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>

#include <algorithm>

namespace Workbench {

QValidator::State NumberBox::validate(QString &text, int &position) const
{
    // Qt would take the other mark for one of groups and drop it: 172,4 would be 1724.
    const QString point = locale().decimalPoint();
    if (decimals() > 0 && !text.contains(point))
        text.replace(point == u"," ? u'.' : u',', point);
    text.replace(QChar(0x2212), u'-');
    // What is pasted brings blanks and its unit along.
    static const QRegularExpression pasted(QStringLiteral("^\\s*([-+]?[\\d.,]+)\\s*(?:ppm|[kM]?Hz)?\\s*$"));
    const QString own = suffix();
    const QRegularExpressionMatch match = pasted.match(text.endsWith(own) ? text.chopped(own.size()) : text);
    if (match.hasMatch())
        text = match.captured(1) + own;
    position = std::min(position, int(text.size()));
    return QDoubleSpinBox::validate(text, position);
}

bool NumberBox::event(QEvent *event)
{
    // Without typing to take back, Undo and Redo are the document's.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if ((key->matches(QKeySequence::Undo) && !lineEdit()->isUndoAvailable())
            || (key->matches(QKeySequence::Redo) && !lineEdit()->isRedoAvailable())) {
            event->ignore();
            return false;
        }
    }
    return QDoubleSpinBox::event(event);
}

} // namespace Workbench

#include "moc_NumberBox.cpp"
