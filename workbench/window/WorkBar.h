// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QToolBar>

#include <functional>

namespace Workbench {

/// The steps of the work, from left to right. What cannot be done at present is grey, and its tooltip says why.
class WorkBar : public QToolBar {
    Q_OBJECT
public:
    explicit WorkBar(QWidget *parent);

    /// `whyNot`: empty while it can be done; null: it always can.
    QAction *add(const QString &text, const QString &what, const std::function<void()> &run,
                 const std::function<QString()> &whyNot = nullptr);
    /// Follows what is current.
    void refresh();

protected:
    void showEvent(QShowEvent *event) override;
    void enterEvent(QEnterEvent *event) override;

private:
    struct Step {
        QAction *action;
        QString what;
        std::function<QString()> whyNot;
    };
    QList<Step> m_steps;
};

} // namespace Workbench
