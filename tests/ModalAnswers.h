// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDialog>
#include <QList>
#include <QMessageBox>
#include <QObject>

#include <functional>

/// Answers the modal dialogs and message boxes that the program opens, in the order in which they are announced.
/// Whatever opens unannounced is closed, and fails the running test, as does a dialog that its answer leaves open.
/// Dialogs of progress are left alone.
class ModalAnswers : public QObject {
    Q_OBJECT

public:
    using Answer = std::function<void(QDialog *)>;

    ModalAnswers();

    /// A dialog of this title opens next, after those announced already.
    void expect(const QString &title, Answer answer);
    /// A message box with this text, in full; OK is clicked.
    void expectBox(QMessageBox::Icon icon, const QString &title, const QString &text);

    /// Announced and not seen yet, by title.
    QStringList missing() const;
    void forget() { m_expected.clear(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Expected {
        QString title;
        Answer answer;
    };

    void answer(QDialog *dialog);

    QList<Expected> m_expected;
};
