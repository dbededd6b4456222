// SPDX-License-Identifier: BSD-3-Clause
#include "ModalAnswers.h"

#include "WorkbenchUser.h"

#include <QtTest>
#include <QtWidgets>

namespace {

QString described(const QDialog *dialog)
{
    const auto *box = qobject_cast<const QMessageBox *>(dialog);
    return dialog->windowTitle() + (box ? QStringLiteral(": ") + box->text() : QString());
}

} // namespace

ModalAnswers::ModalAnswers()
{
    QCoreApplication::instance()->installEventFilter(this);
}

void ModalAnswers::expect(const QString &title, Answer answer)
{
    m_expected.append({title, std::move(answer)});
}

void ModalAnswers::expectBox(QMessageBox::Icon icon, const QString &title, const QString &text)
{
    expect(title, [icon, text](QDialog *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        QVERIFY2(box, "expected a message box");
        QCOMPARE(box->text(), text);
        QCOMPARE(box->icon(), icon);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    });
}

QStringList ModalAnswers::missing() const
{
    QStringList titles;
    for (const Expected &expected : m_expected)
        titles.append(expected.title);
    return titles;
}

bool ModalAnswers::eventFilter(QObject *watched, QEvent *event)
{
    // When the dialog runs its event loop. Whether work takes long enough for a progress dialog is up to the machine.
    if (event->type() == QEvent::Show && !qobject_cast<QProgressDialog *>(watched))
        if (auto *dialog = qobject_cast<QDialog *>(watched);
            dialog && dialog->isModal() && !dialog->testAttribute(Qt::WA_DontShowOnScreen))
            QTimer::singleShot(0, dialog, [this, dialog] { answer(dialog); });
    return false;
}

void ModalAnswers::answer(QDialog *dialog)
{
    const QPointer<QDialog> open(dialog);
    const QString what = described(dialog);
    if (m_expected.isEmpty()) {
        userFailed(QStringLiteral("Nobody expects a dialog here: ") + what);
    } else if (const Expected next = m_expected.takeFirst(); dialog->windowTitle() != next.title) {
        userFailed(QStringLiteral("\"%1\" was to open, not \"%2\"").arg(next.title, what));
    } else {
        if (QGuiApplication::overrideCursor())
            userFailed(QStringLiteral("The wait cursor is shown over the dialog: ") + what);
        next.answer(dialog);
        if (!open || !open->isVisible())
            return;
        userFailed(QStringLiteral("The dialog stays open: ") + what);
    }
    if (open)
        open->reject();
}

#include "moc_ModalAnswers.cpp"
