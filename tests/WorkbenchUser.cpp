// SPDX-License-Identifier: BSD-3-Clause
#include "WorkbenchUser.h"

#include "window/MainView.h"
#include "window/WMainWindow.h"
#include "items/DocumentItem.h"

#include <QtTest>
#include <QtWidgets>

using namespace Workbench;

namespace {

/// The text that the combo box shows is not cut off.
bool isReadable(const QComboBox *combo)
{
    QStyleOptionComboBox option;
    option.initFrom(combo);
    const QRect field =
        combo->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo);
    return combo->fontMetrics().horizontalAdvance(combo->currentText()) <= field.width();
}

void chooseByKeys(QComboBox *combo, const QString &text)
{
    QTest::keyClick(combo, Qt::Key_Home);
    for (int i = 1; i < combo->count() && combo->currentText() != text; ++i)
        QTest::keyClick(combo, Qt::Key_Down);
    if (combo->currentText() != text)
        userFailed(QStringLiteral("%1 does not offer \"%2\"").arg(combo->objectName(), text));
    if (!isReadable(combo))
        userFailed(QStringLiteral("%1 has no room for \"%2\"").arg(combo->objectName(), text));
}

void typeNumber(QDoubleSpinBox *box, double number)
{
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(box, box->locale().toString(number, 'f', box->decimals()));
    if (box->value() != number)
        userFailed(QStringLiteral("%1 does not take %2").arg(box->objectName()).arg(number));
}

/// Null for what has no text of its own.
QString screenText(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return label->text() + QLatin1String(label->text().contains(u'&') && !label->buddy() ? " !" : "");
    if (const auto *box = qobject_cast<const QDoubleSpinBox *>(widget))
        return QStringLiteral("[%1: %2 to %3%4]")
            .arg(box->text())
            .arg(box->minimum(), 0, 'f', box->decimals())
            .arg(box->maximum(), 0, 'f', box->decimals())
            .arg(box->singleStep() == 1 ? QString() : QStringLiteral(" by %1").arg(box->singleStep()));
    if (const auto *box = qobject_cast<const QSpinBox *>(widget))
        return QStringLiteral("[%1: %2 to %3]").arg(box->text()).arg(box->minimum()).arg(box->maximum());
    if (const auto *box = qobject_cast<const QCheckBox *>(widget))
        return (box->isChecked() ? QStringLiteral("[x] ") : QStringLiteral("[ ] ")) + box->text();
    if (const auto *button = qobject_cast<const QPushButton *>(widget))
        return QStringLiteral("<%1>").arg(button->text());
    QStringList choices;
    if (const auto *combo = qobject_cast<const QComboBox *>(widget)) {
        for (int i = 0; i < std::min(combo->count(), 12); ++i)
            choices.append(combo->itemText(i));
        return QStringLiteral("[%1: %2]").arg(combo->currentText(), choices.join(QLatin1String(", ")));
    }
    if (const auto *list = qobject_cast<const QListWidget *>(widget)) {
        for (int i = 0; i < list->count(); ++i)
            choices.append((list->item(i)->checkState() ? QStringLiteral("[x] ") : QStringLiteral("[ ] "))
                           + list->item(i)->text());
    }
    return choices.join(u'/');
}

} // namespace

void userFailed(const QString &message)
{
    QTest::qFail(qPrintable(message), __FILE__, __LINE__);
}

void fill(QWidget *dialog, const Inputs &values)
{
    for (const auto &[name, value] : values) {
        auto *input = part<QWidget>(dialog, name);
        if (!input->isVisible() || !input->isEnabled())
            userFailed(QStringLiteral("%1 cannot be reached").arg(QLatin1String(name)));
        else if (auto *combo = qobject_cast<QComboBox *>(input))
            chooseByKeys(combo, value.toString());
        else if (auto *number = qobject_cast<QDoubleSpinBox *>(input))
            typeNumber(number, value.toDouble());
        else if (auto *box = qobject_cast<QCheckBox *>(input); box && box->isChecked() != value.toBool())
            QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    }
}

QStringList linesOf(const QWidget *window)
{
    QList<std::pair<QRect, QString>> parts;
    for (const QWidget *widget : window->findChildren<QWidget *>()) {
        const QString text = widget->isVisible() ? screenText(widget) : QString();
        if (!text.isEmpty())
            parts.append({QRect(widget->mapTo(window, QPoint()), widget->size()),
                          widget->isEnabled() ? text : u'(' + text + u')'});
    }
    std::stable_sort(parts.begin(), parts.end(),
                     [](const auto &a, const auto &b) { return a.first.center().y() < b.first.center().y(); });
    QList<QMap<int, QString>> lines; // by their left edges
    int middle = -1;
    for (const auto &[area, text] : std::as_const(parts)) {
        if (area.top() > middle) {
            lines.append(QMap<int, QString>());
            middle = area.center().y();
        }
        lines.last().insert(area.left(), text);
    }
    QStringList texts;
    for (const QMap<int, QString> &line : std::as_const(lines))
        texts.append(QStringList(line.values()).join(u' '));
    return texts;
}

QString entriesOf(const QWidget *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions()) {
        QString text = action->isSeparator() ? QStringLiteral("/") : action->text().replace(u'\t', u' ');
        if (!action->shortcut().isEmpty())
            text += u' ' + action->shortcut().toString(QKeySequence::PortableText);
        if (action->menu())
            text += QStringLiteral(" >");
        else if (action->isCheckable())
            text.prepend(action->isChecked() ? QStringLiteral("[x] ") : QStringLiteral("[ ] "));
        if (action->isVisible())
            texts.append(action->isEnabled() ? text : u'(' + text + u')');
    }
    return texts.join(QLatin1String("; "));
}

QString doubledMnemonics(const QString &texts)
{
    static const QRegularExpression mnemonic(QStringLiteral("&(\\w)"), QRegularExpression::UseUnicodePropertiesOption);
    QString once, twice;
    for (const QRegularExpressionMatch &match : mnemonic.globalMatch(texts.toLower()))
        (once.contains(match.captured(1)) ? twice : once) += match.captured(1);
    return twice;
}

void press(QWidget *dialog, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(part<QDialogButtonBox>(dialog, "buttonBox")->button(button), Qt::LeftButton);
}

QMenu *openContextMenu(WMainWindow &window, DocumentItem *item)
{
    const QPointF center = item->mapToScene(item->contentRect().center());
    QGraphicsView *view = window.view();
    view->centerOn(center);
    // To the window, as the system does it: the request for a menu comes from there.
    const QPoint place = view->viewport()->mapTo(&window, view->mapFromScene(center));
    QTest::mouseClick(window.windowHandle(), Qt::RightButton, {}, place);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!menu)
        userFailed(QStringLiteral("\"%1\" shows no context menu").arg(item->title()));
    return menu;
}

QMenu *clickEntry(QMenu *menu, const QString &text)
{
    QAction *entry = nullptr;
    for (QAction *action : menu->actions())
        if (action->text() == text)
            entry = action;
    if (!entry || !entry->isEnabled()) {
        userFailed(QStringLiteral("The menu does not offer \"%1\"").arg(text));
        menu->close();
        return nullptr;
    }
    QMenu *submenu = entry->menu();
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
    if (submenu && !QTest::qWaitFor([submenu] { return submenu->isVisible(); }))
        userFailed(QStringLiteral("The submenu \"%1\" does not open").arg(text));
    return submenu;
}

void choose(WMainWindow &window, DocumentItem *item, const QStringList &path)
{
    QMenu *menu = openContextMenu(window, item);
    for (const QString &text : path)
        if (menu)
            menu = clickEntry(menu, text);
}
