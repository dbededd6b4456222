// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>

namespace Workbench {

/// The files opened or saved last, the latest first, kept in the settings. Files that are gone are left out.
class RecentFiles : public QMenu {
    Q_OBJECT
public:
    explicit RecentFiles(QWidget *parent);

    static QStringList files();
    void add(const QString &fileName);

Q_SIGNALS:
    void chosen(const QString &fileName);

private:
    void fill();
};

} // namespace Workbench
